// The lines of a schedule and their totals.
#include "clientdb/Schedule.h"

#include "edition/Edition.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <vector>

namespace quillmere {
namespace {

constexpr std::string_view Nought = "      0.00";

struct LineCase {
    std::string_view what;
    ScheduleLine typed, shown;
    ScheduleTotals totals;
};

void PrintTo(const LineCase& lineCase, std::ostream* out)
{
    *out << lineCase.what;
}

class OneLine : public ::testing::TestWithParam<LineCase> {};

TEST_P(OneLine, IsShownAndAddedUp)
{
    std::array<ScheduleLine, 1> lines{GetParam().typed};
    const ScheduleTotals totals = RecalculateSchedule(lines, ScheduleKind::CostTaxAndCash);
    EXPECT_EQ(lines[0].cost, GetParam().shown.cost);
    EXPECT_EQ(lines[0].tax, GetParam().shown.tax);
    EXPECT_EQ(lines[0].cash, GetParam().shown.cash);
    EXPECT_EQ(totals.cost, GetParam().totals.cost);
    EXPECT_EQ(totals.tax, GetParam().totals.tax);
    EXPECT_EQ(totals.cash, GetParam().totals.cash);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OneLine,
    ::testing::Values(
        LineCase{"an empty line", {}, {}, {}},
        LineCase{
            "a cost alone", {" 12.5 ", "", ""}, {"     12.50", "", "     12.50"}, {"     12.50", "", "     12.50"}},
        LineCase{"a tax with no cost is dropped", {"", "7", "3"}, {}, {}},
        LineCase{"a cost with a tax of the same size shows the noughts",
                 {"10.00", "10.00", ""},
                 {"     10.00", "     10.00", std::string(Nought)},
                 {"     10.00", "     10.00", std::string(Nought)}},
        LineCase{"a tax above the cost leaves the result blank",
                 {"5", "7", "1"},
                 {"      5.00", "      7.00", ""},
                 {"      5.00", "      7.00", std::string(Nought)}},
        LineCase{
            "a nought alone shows its result until the next run", {"0", "", ""}, {"", "", std::string(Nought)}, {}},
        LineCase{"a cost below nothing", {"(5)", "", ""}, {"    (5.00)", "", ""}, {"    (5.00)", "", ""}},
        LineCase{"a tax below nothing adds to the result",
                 {"5", "-2", ""},
                 {"      5.00", "    (2.00)", "      7.00"},
                 {"      5.00", "    (2.00)", "      7.00"}},
        LineCase{"more than ten characters are cut",
                 {"12345678.99", "", ""},
                 {"12345678.9", "", "12345678.9"},
                 {"12345678.9", "", "12345678.9"}},
        LineCase{"a result is of the figures as typed",
                 {"1000", "250.505", ""},
                 {"   1000.00", "    250.51", "    749.50"},
                 {"   1000.00", "    250.51", "    749.50"}}));

TEST(Schedule, AddsWhatWasTypedWhileLinesShowPence)
{
    std::vector<ScheduleLine> lines(3, {"0.004", "", ""});
    const ScheduleTotals totals = RecalculateSchedule(lines, ScheduleKind::CostTaxAndCash);
    EXPECT_EQ(lines[0].cost, "");
    EXPECT_EQ(totals.cost, "      0.01");
    EXPECT_EQ(totals.cash, "      0.01");
}

TEST(Schedule, ShowsNoughtsInTheCashTotalOnlyBesideBothOthers)
{
    std::vector<ScheduleLine> lines{{"10", "", ""}, {"(10)", "", ""}};
    EXPECT_EQ(RecalculateSchedule(lines, ScheduleKind::CostTaxAndCash).cost, "");
    lines = {{"0", "", ""}};
    EXPECT_EQ(RecalculateSchedule(lines, ScheduleKind::CostTaxAndCash).cash, "");
}

TEST(Schedule, WorksNothingOutWhereThereIsNoCashColumn)
{
    std::vector<ScheduleLine> lines{{"5", "7", ""}, {"", "3", ""}};
    const ScheduleTotals totals = RecalculateSchedule(lines, ScheduleKind::CostAndTax);
    EXPECT_EQ(lines[0].cash, "");
    EXPECT_EQ(lines[1].tax, "");
    EXPECT_EQ(totals.cost, "      5.00");
    EXPECT_EQ(totals.tax, "      7.00");
    EXPECT_EQ(totals.cash, "");
}

TEST(Schedule, KeepsATaxWhereThereIsNoCostColumn)
{
    std::vector<ScheduleLine> lines{{"", "3", ""}, {"", "-3", ""}};
    const ScheduleTotals totals = RecalculateSchedule(lines, ScheduleKind::TaxOnly);
    EXPECT_EQ(lines[0].tax, "      3.00");
    EXPECT_EQ(lines[1].tax, "    (3.00)");
    EXPECT_EQ(totals.tax, "");
    EXPECT_EQ(totals.cash, "");
}

/// An amount in pence as a user might type it.
rc::Gen<std::string> TypedAmount()
{
    return rc::gen::map(rc::gen::inRange(-100'000, 1'000'000), [](int pence) {
        return FormatAmount(Amount::FromUnits(std::int64_t{pence} * 100), edition::FormatMoneyBlankZero);
    });
}

RC_GTEST_PROP(Schedule, ChangesNothingAtASecondRun, ())
{
    std::vector<ScheduleLine> lines(static_cast<std::size_t>(LinesOfASchedule));
    for (ScheduleLine& line : lines)
        line = {*TypedAmount(), *TypedAmount(), ""};
    const ScheduleTotals first = RecalculateSchedule(lines, ScheduleKind::CostTaxAndCash);
    const std::vector<ScheduleLine> shown = lines;
    const ScheduleTotals second = RecalculateSchedule(lines, ScheduleKind::CostTaxAndCash);
    RC_ASSERT(first.cost == second.cost && first.tax == second.tax && first.cash == second.cash);
    for (std::size_t line = 0; line < lines.size(); ++line) {
        RC_ASSERT(lines[line].cost == shown[line].cost);
        RC_ASSERT(lines[line].tax == shown[line].tax);
        RC_ASSERT(lines[line].cash == shown[line].cash);
        RC_ASSERT(!ReadAmount(lines[line].cash).IsNegative());
    }
}

RC_GTEST_PROP(Schedule, TotalsAreTheSumsOfTheLines, ())
{
    std::vector<ScheduleLine> lines(static_cast<std::size_t>(LinesOfASchedule));
    for (ScheduleLine& line : lines)
        line = {*TypedAmount(), *TypedAmount(), ""};
    const ScheduleTotals totals = RecalculateSchedule(lines, ScheduleKind::CostTaxAndCash);
    Amount cost, tax, cash;
    for (const ScheduleLine& line : lines) {
        cost += ReadAmount(line.cost);
        tax += ReadAmount(line.tax);
        cash += ReadAmount(line.cash);
    }
    RC_ASSERT(ReadAmount(totals.cost) == cost);
    RC_ASSERT(ReadAmount(totals.tax) == tax);
    RC_ASSERT(ReadAmount(totals.cash) == cash);
}

} // namespace
} // namespace quillmere
