#pragma once

#include "clientdb/Notepad.h"
#include "clientdb/Schedule.h"

#include <array>
#include <span>
#include <string_view>

namespace quillmere {

/// One schedule notepad: what distinguishes it from the others. Its own table has its name.
struct NotepadMember {
    std::string_view name;
    std::string_view section;              ///< opens the caption; the employee's and the employer's name follow
    std::array<ScheduleColumn, 4> columns; ///< description, cost, tax, cash
    ScheduleKind kind = ScheduleKind::CostTaxAndCash;

    std::array<std::string_view, 3> totalFields; ///< of P11D, for cost, tax and cash
    std::string_view describedField = {};        ///< of P11D, reads "As per attached"; none: nothing is said there
    /// Field of P11D that is emptied in place of the total's own where there is no total; none: the total's own.
    std::string_view emptiedInstead = {};

    std::string_view inputTitle = {}; ///< none: the tax may exceed the cost
    std::string_view okTitle;
    std::string_view loadingTitle;

    constexpr const ScheduleColumn& Cost() const { return columns[1]; }
    constexpr const ScheduleColumn& Tax() const { return columns[2]; }
    constexpr const ScheduleColumn& Cash() const { return columns[3]; }
};

/// The fifteen schedule notepads, in the order of the form.
std::span<const NotepadMember> Notepads();

/// A list of up to twenty like items behind a section of the form. It hands one total a column back to the page and to
/// the employee's record, and tells the page whether any line has a description.
class ScheduleNotepad : public Notepad {
public:
    ScheduleNotepad(Session& session, const NotepadMember& member);

    void Activate() override { WorkOut(); }

private:
    void ShowPage(const Recordset& page) override;
    void Recalculate() override;
    /// A line whose tax exceeds its cost is told of; an empty box counts as nothing.
    bool MayStore() override;
    std::vector<Result> Results(const Recordset& own) const override;
    void Delete() override;

    const NotepadMember& member;
    Schedule schedule;
};

} // namespace quillmere
