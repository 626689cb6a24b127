#include "clientdb/Schedule.h"

#include "edition/Edition.h"
#include "frame/KeyFilters.h"
#include "frame/Text.h"

namespace quillmere {

Schedule::Schedule(Screen& screen, std::span<const ScheduleColumn> columns) : screen(screen), columns(columns)
{
    using Use = ScheduleColumn::Use;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        for (const ScheduleColumn& column : columns) {
            if (!column.Exists())
                continue;
            const bool amount = column.use != Use::Description;
            Box& added = screen.AddBox({.field = column.field,
                                        .filter = amount ? SignedMoneyKeyFilter : nullptr,
                                        .readOnly = column.use == Use::Computed,
                                        .amount = amount,
                                        .monospaced = true},
                                       std::string(column.box), line);
            added.SetSpoken(Trim(column.caption) + ", line " + std::to_string(line));
        }
    }
    BoxList list{.columns = {}, .last = LinesOfASchedule};
    for (const ScheduleColumn& column : columns)
        if (column.Exists())
            list.columns.emplace_back(column.box);
    screen.SetList(std::move(list));
}

void Schedule::OnLeaveAmount(const Screen::Operation& operation)
{
    for (const ScheduleColumn& column : columns)
        if (column.Exists() && column.use != ScheduleColumn::Use::Description)
            screen.OnLeave(column.box, operation);
}

bool Schedule::HasDescription() const
{
    for (const ScheduleColumn& column : columns)
        if (column.use == ScheduleColumn::Use::Description)
            for (int line = 1; line <= LinesOfASchedule; ++line)
                if (!At(column, line).Empty())
                    return true;
    return false;
}

void RewriteAndAdd(std::string& amount, Amount& total)
{
    if (amount.empty())
        return;
    const Amount value = ReadAmount(amount);
    total += value;
    amount = AmountText(value, edition::FormatMoneyBlankZero);
}

namespace {

/// Works out the cash equivalent of a line before its cost and tax are rewritten.
void WorkOutCash(ScheduleLine& line, Amount& cashTotal)
{
    line.cash.clear();
    if (line.cost.empty() && line.tax.empty())
        return;
    const Amount net = ReadAmount(line.cost) - ReadAmount(line.tax);
    if (!IsNonNegative(net))
        return;
    cashTotal += net;
    line.cash = AmountText(net, edition::FormatMoneyZero);
}

} // namespace

ScheduleTotals RecalculateSchedule(std::span<ScheduleLine> lines, ScheduleKind kind)
{
    Amount cost, tax, cash;
    for (ScheduleLine& line : lines) {
        line.cost = Trim(line.cost);
        line.tax = Trim(line.tax);
        if (kind != ScheduleKind::TaxOnly && line.cost.empty())
            line.tax.clear();
        if (kind == ScheduleKind::CostTaxAndCash)
            WorkOutCash(line, cash);
        RewriteAndAdd(line.cost, cost);
        RewriteAndAdd(line.tax, tax);
    }
    ScheduleTotals totals{.cost = AmountText(cost, edition::FormatMoneyBlankZero),
                          .tax = AmountText(tax, edition::FormatMoneyBlankZero),
                          .cash = {}};
    if (kind == ScheduleKind::CostTaxAndCash) {
        const bool bothShow = !totals.cost.empty() && !totals.tax.empty();
        totals.cash = AmountText(cash, bothShow ? edition::FormatMoneyZero : edition::FormatMoneyBlankZero);
    }
    return totals;
}

} // namespace quillmere
