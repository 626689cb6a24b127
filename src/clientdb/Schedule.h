#pragma once

#include "frame/Amount.h"
#include "frame/ScheduleLines.h"
#include "frame/Screen.h"

#include <span>
#include <string>
#include <string_view>

/// Schedules: lists of up to twenty lines behind one box of a form, stored as numbered fields of one record. What the
/// schedules of the pages and those of the declaration have in common.
namespace quillmere {

/// One column of a schedule. A column that a schedule lacks is left empty.
struct ScheduleColumn {
    enum class Use {
        Description,
        Entered,  ///< an amount that the user types
        Computed, ///< an amount that follows from the others
    };

    std::string_view box = {};     ///< name of the array of its twenty boxes
    std::string_view field = {};   ///< stem of its twenty fields
    std::string_view caption = {}; ///< stands over the column
    std::string_view total = {};   ///< the control under the column that shows its total
    Use use = Use::Entered;

    constexpr bool Exists() const { return !box.empty(); }
};

/// The lines of a schedule on its screen.
class Schedule {
public:
    /// Makes the boxes on `screen`, line by line, after those that are there. `columns` must outlive the schedule.
    Schedule(Screen& screen, std::span<const ScheduleColumn> columns);

    Box& At(const ScheduleColumn& column, int line) const { return screen.box(column.box, line); }
    std::span<const ScheduleColumn> Columns() const { return columns; }

    /// Runs the operation when an amount of any line is left.
    void OnLeaveAmount(const Screen::Operation& operation);
    /// True if any line has a description.
    bool HasDescription() const;

private:
    Screen& screen;
    std::span<const ScheduleColumn> columns;
};

/// Brings an amount that is there to amount form and adds it to `total`. A zero goes blank.
void RewriteAndAdd(std::string& amount, Amount& total);

/// The amounts of one line as its boxes show them.
struct ScheduleLine {
    std::string cost, tax, cash;
};

/// The texts under the columns.
struct ScheduleTotals {
    std::string cost, tax, cash;
};

/// Which amounts a schedule has, and so how a line is worked out.
enum class ScheduleKind {
    CostTaxAndCash, ///< the cash equivalent of a line is its cost less the tax, and never negative
    CostAndTax,     ///< nothing is worked out for a line
    TaxOnly,
};

/// Rewrites the lines in amount form, works out their cash equivalents and adds the columns up. A tax with no cost is
/// dropped where there is a cost column.
ScheduleTotals RecalculateSchedule(std::span<ScheduleLine> lines, ScheduleKind kind);

} // namespace quillmere
