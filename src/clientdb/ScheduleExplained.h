#pragma once

#include "clientdb/Schedule.h"
#include "frame/Explained.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// The columns of a schedule as it has them; one that it lacks does not exist.
struct ScheduleShape {
    ScheduleColumn cost, tax, cash;
    ScheduleKind kind = ScheduleKind::CostTaxAndCash;
};

/// How the cash equivalents of a schedule's lines and its totals came about; the lines that are empty are passed over.
/// A box of a line is named with its number: "Cash(3)". `source` is the section of the Act.
Explained ExplainSchedule(const ScheduleShape& shape, const std::vector<std::string>& descriptions,
                          const std::vector<ScheduleLine>& lines, std::string_view source);

/// The text of a column in one of the lines, from 1.
using ScheduleCells = std::function<std::string(const ScheduleColumn& column, int line)>;

/// The same of wherever the cells of a whole schedule stand.
Explained ExplainSchedule(const ScheduleShape& shape, const ScheduleColumn& description, const ScheduleCells& cells,
                          std::string_view source);

} // namespace quillmere
