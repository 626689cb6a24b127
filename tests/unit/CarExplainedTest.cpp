#include "cars/CarExplained.h"

#include "AnyFacts.h"
#include "support/SumOfWords.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace quillmere::test {
namespace {

TEST(CarExplained, TellsACarWithTheEmployeesOwnFigures)
{
    const Explained explained = ExplainCar({.registrationDate = "01/02/2008",
                                            .fuel = "D",
                                            .co2 = "152",
                                            .dateFrom = "01/10/2010",
                                            .listPrice = "19000",
                                            .accessories = "500",
                                            .privateUse = "100.50"},
                                           false);
    const ExplainedStep& fullYear = *explained.StepOf("PBox");
    EXPECT_EQ(fullYear.Letter(), "P");
    EXPECT_EQ(fullYear.SumInWords(), "19,500 x 22 / 100, rounded down to whole pounds");
    EXPECT_EQ(fullYear.result, "4,290");
    EXPECT_EQ(fullYear.source, "ITEPA 2003 s.121(1) step 6");
    EXPECT_EQ(explained.StepOf("HBox")->says, "Percentage of the table for 150 g/km, diesel rate");
    EXPECT_EQ(explained.StepOf("QBox")->sum, "(06/04/2010 to 30/09/2010)");
    EXPECT_EQ(explained.StepOf("FCashEqu")->result, "2,096.50");
    EXPECT_EQ(explained.StepOf("FFuelEqu")->result, "");
}

TEST(CarExplained, ShowsOfABoxOnlyWhatLeadsToIt)
{
    const Explained explained = ExplainCar({.registrationDate = "01/02/2008", .fuel = "P", .co2 = "200"}, true);
    const auto names = [](const Explained& chain) {
        std::string joined;
        for (const ExplainedStep& step : chain.steps)
            joined += step.name + " ";
        return joined;
    };
    EXPECT_EQ(names(explained.ChainTo("EBox")), "A B C D E ");
    EXPECT_EQ(names(explained.ChainTo("FFuelEqu")), "letter figure G H J M N Q V W X Y fuel benefit ");
    EXPECT_TRUE(explained.ChainTo("FListPrice").steps.empty());
}

// ---- where the authority differs ----

/// The note of a car about a figure; fails the test if there is none.
ExplainedNote NoteAbout(std::string_view figure, const CarTexts& boxes)
{
    const Explained explained = ExplainCar(boxes, true);
    for (const ExplainedNote& note : explained.notes)
        if (note.about == figure)
            return note;
    ADD_FAILURE() << "no note about " << figure;
    return {};
}

TEST(CarExplained, NotesTheExactFigureBetweenTheLowBands)
{
    const ExplainedNote note =
        NoteAbout("H", {.registrationDate = "01/02/2008", .fuel = "D", .co2 = "76", .listPrice = "10000"});
    EXPECT_EQ(note.result, "13");
    EXPECT_EQ(note.source, "EIM24605");
    EXPECT_TRUE(ExplainCar({.registrationDate = "01/02/2008", .fuel = "D", .co2 = "75"}, true).notes.empty());
    EXPECT_TRUE(ExplainCar({.registrationDate = "01/02/2008", .fuel = "D", .co2 = "80"}, true).notes.empty());
}

TEST(CarExplained, NotesTheOlderCarThatHasNoPercentage)
{
    EXPECT_EQ(NoteAbout("N", {.registrationDate = "01/02/1997", .fuel = "E", .engine = "1800"}).result, "22");
    EXPECT_EQ(NoteAbout("N", {.registrationDate = "01/02/1997", .fuel = "B", .engine = "2800"}).source, "EIM24975");
}

TEST(CarExplained, NotesTheBiFuelCarWithoutAFigure)
{
    const ExplainedNote note =
        NoteAbout("N", {.registrationDate = "01/02/2008", .fuel = "B", .noCO2 = true, .engine = "1800"});
    EXPECT_EQ(note.result, "23");
    EXPECT_EQ(note.sum, "25 - 2");
}

TEST(CarExplained, NotesFuelWithdrawnOnTheLastDayOfTheYear)
{
    const ExplainedNote note = NoteAbout("X", {.registrationDate = "01/02/2008",
                                               .fuel = "P",
                                               .co2 = "200",
                                               .dateFrom = "16/04/2010",
                                               .dateWithdrawn = "05/04/2011"});
    EXPECT_EQ(note.result, "10");
    EXPECT_EQ(note.source, "EIM25565");
}

TEST(CarExplained, NotesThePenceOfTheResult)
{
    const ExplainedNote note = NoteAbout(
        "cash equivalent",
        {.registrationDate = "01/02/2008", .fuel = "P", .co2 = "200", .listPrice = "10000", .privateUse = "0.40"});
    EXPECT_EQ(note.result, "2,899");
}

// ---- the contract ----

RC_GTEST_PROP(CarExplainedProperty, EverySumGivesTheRulesFigure, ())
{
    CarTexts car = AnyCar();
    if (*rc::gen::inRange(0, 5) == 0)
        car.fuel.clear();
    RC_ASSERT(FaultOf(ExplainCar(car, *rc::gen::arbitrary<bool>())) == "");
}

RC_GTEST_PROP(CarExplainedProperty, EveryWorkedOutBoxHasAStep, ())
{
    CarTexts car = AnyCar();
    const Explained explained = ExplainCar(car, *rc::gen::arbitrary<bool>());
    for (const std::string_view box : {"CBox", "EBox", "NBox", "PBox", "QBox", "RBox", "SBox", "UBox", "FCashEqu",
                                       "VBox", "WBox", "XBox", "YBox", "FFuelEqu"})
        RC_ASSERT(explained.StepOf(box) != nullptr);
}

} // namespace
} // namespace quillmere::test
