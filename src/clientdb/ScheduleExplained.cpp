#include "clientdb/ScheduleExplained.h"

#include "frame/Text.h"

#include <cstddef>
#include <fmt/format.h>

namespace quillmere {

namespace {

/// What stands in a column of a line, as a step of its own.
ExplainedStep LineStep(const ScheduleColumn& column, const std::string& description, std::size_t line,
                       const std::string& amount)
{
    return {.name = fmt::format("{} {}", column.box, line),
            .says = fmt::format("Line {}{}{}: {}", line, description.empty() ? "" : ", ", description,
                                Trim(column.caption)),
            .result = FigureText(ReadAmount(amount))};
}

/// The total of a column from what stands in its lines.
Explained ColumnExplained(const ScheduleColumn& column, const std::vector<ExplainedStep>& lines,
                          const std::string& total, std::string_view source)
{
    return ExplainLines(lines, {.name = std::string(column.total),
                                .box = std::string(column.total),
                                .says = fmt::format("Total of {}", Trim(column.caption)),
                                .result = FigureText(ReadAmount(total)),
                                .source = std::string(source)});
}

} // namespace

Explained ExplainSchedule(const ScheduleShape& shape, const std::vector<std::string>& descriptions,
                          const std::vector<ScheduleLine>& lines, std::string_view source)
{
    std::vector<ScheduleLine> worked = lines;
    const ScheduleTotals totals = RecalculateSchedule(worked, shape.kind);
    std::vector<ExplainedStep> costs, taxes, cashes;
    for (std::size_t line = 1; line <= worked.size(); ++line) {
        const ScheduleLine& amounts = worked[line - 1];
        const std::string description = Trim(descriptions[line - 1]);
        if (!amounts.cost.empty())
            costs.push_back(LineStep(shape.cost, description, line, amounts.cost));
        if (!amounts.tax.empty())
            taxes.push_back(LineStep(shape.tax, description, line, amounts.tax));
        if (!shape.cash.Exists() || (amounts.cash.empty() && amounts.cost.empty()))
            continue;
        ExplainedStep cash = LineStep(shape.cash, description, line, amounts.cash);
        cash.box = fmt::format("{}({})", shape.cash.box, line);
        cash.source = source;
        if (amounts.cash.empty()) {
            cash.result.clear();
            cash.says += ", none where more was made good than it cost";
        } else {
            cash.sum = WithFigures("{cost} - {tax}", [&](std::string_view which) {
                return FigureText(ReadAmount(which == "cost" ? amounts.cost : amounts.tax));
            });
            cash.uses = {fmt::format("{} {}", shape.cost.box, line), fmt::format("{} {}", shape.tax.box, line)};
        }
        cashes.push_back(std::move(cash));
    }
    Explained explained;
    if (shape.cost.Exists())
        explained.Append(ColumnExplained(shape.cost, costs, totals.cost, source));
    if (shape.tax.Exists())
        explained.Append(ColumnExplained(shape.tax, taxes, totals.tax, source));
    if (shape.cash.Exists())
        explained.Append(ColumnExplained(shape.cash, cashes, totals.cash, source));
    return explained;
}

Explained ExplainSchedule(const ScheduleShape& shape, const ScheduleColumn& description, const ScheduleCells& cells,
                          std::string_view source)
{
    const auto text = [&](const ScheduleColumn& column, int line) {
        return column.Exists() ? cells(column, line) : std::string();
    };
    std::vector<std::string> descriptions;
    std::vector<ScheduleLine> lines;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        descriptions.push_back(text(description, line));
        lines.push_back({text(shape.cost, line), text(shape.tax, line), text(shape.cash, line)});
    }
    return ExplainSchedule(shape, descriptions, lines, source);
}

} // namespace quillmere
