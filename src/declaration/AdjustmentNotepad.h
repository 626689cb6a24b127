#pragma once

#include "clientdb/Notepad.h"
#include "clientdb/Schedule.h"
#include "declaration/DeclarationWords.h"

#include <array>
#include <string_view>

namespace quillmere {

/// One of the two schedules behind section 4 of the declaration: what is particular to it.
struct AdjustmentSchedule {
    std::string_view name; ///< of the screen and of its table
    std::string_view caption;
    std::string_view timer;
    std::array<ScheduleColumn, 2> columns; ///< the description and the amount
    std::string_view target;               ///< fields of the declaration that take the result
    std::string_view targetDescription;
    std::string_view loadingError;

    constexpr const ScheduleColumn& AmountColumn() const { return columns[1]; }
};

inline constexpr ScheduleColumn AdjustmentDescription{
    .box = "Description", .field = "Description", .caption = "Description", .use = ScheduleColumn::Use::Description};

constexpr ScheduleColumn AdjustmentAmount(std::string_view box, std::string_view caption, std::string_view total)
{
    return {.box = box, .field = box, .caption = caption, .total = total};
}

inline constexpr auto AdjustmentSchedules = std::to_array<AdjustmentSchedule>({
    {.name = "P11DBNotepad1",
     .caption = "P11D (B) Notepad 1",
     .timer = "BNotepad1",
     .columns = {AdjustmentDescription, AdjustmentAmount("AmountAdded", words::AmountToBeAdded, "AmountAddedTotal")},
     .target = "Section4BBox",
     .targetDescription = "Section4BDesc",
     .loadingError = "P11D(B) Notepad 1 - loading error"},
    {.name = "P11DBNotepad2",
     .caption = "P11D (B) Notepad 2",
     .timer = "BNotepad2",
     .columns = {AdjustmentDescription,
                 AdjustmentAmount("AmountDeducted", words::AmountToBeDeducted, "AmountDeductedTotal")},
     .target = "Section4CBox",
     .targetDescription = "Section4CDesc",
     .loadingError = "P11D(B) Notepad 2 - loading error"},
});

/// A schedule of up to twenty lines, each a description and an amount. Its total and whether there is any description
/// go to the declaration.
class AdjustmentNotepad : public Notepad {
public:
    AdjustmentNotepad(Session& session, const AdjustmentSchedule& schedule);

    bool Load() override;

private:
    Recordset OpenOwn(Database& database) const override;
    void Recalculate() override;
    std::vector<Result> Results(const Recordset& own) const override;
    bool HandOver(const std::vector<Result>& results) override;
    void Delete() override;

    const AdjustmentSchedule& schedule;
    Schedule lines;
};

} // namespace quillmere
