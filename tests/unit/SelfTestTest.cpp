// The published examples and the known differences: one list for the window and for this test.
#include "review/SelfTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace quillmere::review {
namespace {

using edition::CalculatorExample;
using edition::CalculatorExamples;

TEST(SelfTest, EveryPublishedFigureComesOutButThoseThatAreKnownToDiffer)
{
    for (const CalculatorExample& example : CalculatorExamples) {
        SCOPED_TRACE(example.code);
        const WorkedExample worked = WorkOut(example);
        EXPECT_EQ(worked.got, example.ours.empty() ? example.expected : example.ours);
        EXPECT_EQ(worked.verdict, example.ours.empty() ? Verdict::Passes : Verdict::Differs);
    }
}

TEST(SelfTest, EveryExampleSaysWhereItStandsAndEveryDifferenceWhy)
{
    std::set<std::string_view> codes;
    for (const CalculatorExample& example : CalculatorExamples) {
        SCOPED_TRACE(example.code);
        EXPECT_TRUE(codes.insert(example.code).second);
        EXPECT_FALSE(example.words.empty());
        EXPECT_FALSE(example.source.empty());
        EXPECT_EQ(example.ours.empty(), example.why.empty());
        EXPECT_NE(example.ours, example.expected);
    }
}

TEST(SelfTest, NoCalculatorIsLeftOut)
{
    std::map<char, int> numbered;
    for (const CalculatorExample& example : CalculatorExamples)
        if (std::ranges::all_of(example.code.substr(1), [](char digit) { return digit >= '0' && digit <= '9'; }))
            ++numbered[example.code.front()];
    const std::map<char, int> expected{{'C', 12}, {'F', 7}, {'V', 4}, {'L', 4}, {'A', 3},
                                       {'M', 4},  {'R', 1}, {'N', 1}, {'D', 8}};
    EXPECT_EQ(numbered, expected);
}

TEST(SelfTest, AnExampleThatDoesNotComeOutFails)
{
    CalculatorExample example = CalculatorExamples.front();
    example.expected = "N=11; charge=1500.00";
    const WorkedExample worked = WorkOut(example);
    EXPECT_EQ(worked.verdict, Verdict::Fails);
    EXPECT_EQ(worked.got, "N=10; charge=1500.00");
    example.ours = "N=12; charge=1500.00";
    EXPECT_EQ(WorkOut(example).verdict, Verdict::Fails);
}

TEST(SelfTest, MistakesInTheListAreNotPassedOver)
{
    const CalculatorExample good = CalculatorExamples.front();
    CalculatorExample example = good;
    example.rule = "carriage";
    EXPECT_THROW(WorkOut(example), std::logic_error);
    example = good;
    example.facts = "fuel=P; colour=red";
    EXPECT_THROW(WorkOut(example), std::logic_error);
    example = good;
    example.expected = "ZZ=1";
    EXPECT_THROW(WorkOut(example), std::logic_error);
}

TEST(SelfTest, FiguresReadAsWords)
{
    EXPECT_EQ(FiguresInWords("N=10; charge=1500.00"), "N 10, charge 1500.00");
    EXPECT_EQ(FiguresInWords(""), "");
}

} // namespace
} // namespace quillmere::review
