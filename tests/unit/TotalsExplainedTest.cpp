// Schedules, and the employer's declaration.
#include "AnyFacts.h"
#include "clientdb/ScheduleExplained.h"
#include "declaration/Class1AExplained.h"
#include "support/SumOfWords.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fmt/format.h>

namespace quillmere::test {
namespace {

const ScheduleShape Shape{.cost = {.box = "Cost", .caption = "Cost", .total = "CostTotal"},
                          .tax = {.box = "Tax", .caption = "Amount good", .total = "TaxTotal"},
                          .cash = {.box = "Cash", .caption = "Cash Equ", .total = "CashTotal"}};

TEST(ScheduleExplained, TellsEachLineAndTheTotals)
{
    const Explained explained =
        ExplainSchedule(Shape, {"Car", "Boat", ""}, {{"100", "30", ""}, {"20.50", "", ""}, {}}, "ITEPA 2003 s.203");
    EXPECT_EQ(explained.StepOf("Cash(1)")->sum, "100 - 30");
    EXPECT_EQ(explained.StepOf("Cash(1)")->says, "Line 1, Car: Cash Equ");
    const ExplainedStep& total = *explained.StepOf("CashTotal");
    EXPECT_EQ(total.sum, "70 + 20.50");
    EXPECT_EQ(total.result, "90.50");
    EXPECT_EQ(explained.ChainTo("CashTotal").steps.size(), 6U);
    EXPECT_EQ(explained.StepOf("Cash(3)"), nullptr);
}

RC_GTEST_PROP(ScheduleExplainedProperty, EverySumGivesTheRulesFigure, ())
{
    std::vector<ScheduleLine> lines(20);
    for (ScheduleLine& line : lines) {
        if (*rc::gen::arbitrary<bool>())
            line.cost = fmt::format("{}.{:02}", AnySignedPounds(900), *rc::gen::inRange(0, 100));
        if (*rc::gen::arbitrary<bool>())
            line.tax = AnyPounds(500);
    }
    ScheduleShape shape = Shape;
    shape.kind = *rc::gen::elementOf(std::vector{ScheduleKind::CostTaxAndCash, ScheduleKind::CostAndTax});
    if (shape.kind == ScheduleKind::CostAndTax)
        shape.cash = {};
    RC_ASSERT(FaultOf(ExplainSchedule(shape, std::vector<std::string>(20), lines, "s")) == "");
}

TEST(Class1AExplained, TellsWhoseBenefitsBoxAIsMadeOf)
{
    const std::vector<LiableBenefit> benefits{{"Jane Smith", "GVan", Amount::WholePounds(3000)},
                                              {"Peter Cooper", "ICashEqu", Amount::WholePounds(250)}};
    const Explained explained =
        ExplainLiableBenefits(benefits, [](std::string_view field) { return "box " + std::string(field); });
    EXPECT_EQ(explained.steps.front().says, "Jane Smith: box GVan");
    EXPECT_EQ(explained.StepOf("Section1BoxA")->sum, "3,000 + 250");
    EXPECT_EQ(explained.StepOf("Section1BoxA")->result, "3,250");
}

TEST(Class1AExplained, TellsThePublishedContributions)
{
    const Explained explained = ExplainContributions({.benefits = Amount::WholePounds(156500)});
    EXPECT_EQ(explained.StepOf("Section1BoxC")->sum, "156,500 x 12.8 / 100");
    EXPECT_EQ(explained.StepOf("Section1BoxC")->result, "20,032");
}

RC_GTEST_PROP(Class1AExplainedProperty, EverySumGivesTheRulesFigure, ())
{
    std::vector<LiableBenefit> benefits;
    for (int count = *rc::gen::inRange(0, 40); count > 0; --count)
        benefits.push_back({"E", "GVan", Amount::FromUnits(100LL * *rc::gen::inRange(-99999, 9999999))});
    RC_ASSERT(FaultOf(ExplainLiableBenefits(benefits, [](std::string_view field) { return std::string(field); })) ==
              "");
    const auto amount = [] { return Amount::FromUnits(100LL * *rc::gen::inRange(0, 9999999)); };
    RC_ASSERT(FaultOf(ExplainContributions({.benefits = *rc::gen::arbitrary<bool>() ? amount() : Amount(),
                                            .adjusted = *rc::gen::arbitrary<bool>(),
                                            .added = amount(),
                                            .deducted = amount()})) == "");
}

} // namespace
} // namespace quillmere::test
