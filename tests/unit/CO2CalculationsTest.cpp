#include "cars/CO2Calculations.h"

#include "cars/CarBenefit.h"
#include "edition/CarRates.h"
#include "frame/Failure.h"

#include <gtest/gtest.h>

#include <string>

namespace quillmere {
namespace {

constexpr auto Recent = "01/03/2008";

/// The rate that a figure as entered earns.
int RateOf(int entered, const char* fuel, const char* regDate = Recent)
{
    return PercentagesOf(ReadCar({.registrationDate = regDate, .fuel = fuel, .co2 = std::to_string(entered)})).H;
}

TEST(CO2Calculations, EveryRowOfTheTableGivesItsColumn)
{
    struct Row {
        int figure, petrol, diesel;
    };
    constexpr Row rows[] = {
        {130, 15, 18}, {135, 16, 19}, {140, 17, 20}, {145, 18, 21}, {150, 19, 22}, {155, 20, 23}, {160, 21, 24},
        {165, 22, 25}, {170, 23, 26}, {175, 24, 27}, {180, 25, 28}, {185, 26, 29}, {190, 27, 30}, {195, 28, 31},
        {200, 29, 32}, {205, 30, 33}, {210, 31, 34}, {215, 32, 35}, {220, 33, 35}, {225, 34, 35}, {230, 35, 35},
    };
    ASSERT_EQ(edition::CO2Table.size(), std::size(rows));
    for (const Row& row : rows) {
        for (const char* petrol : {"P", "B", "C", "G", "H"})
            EXPECT_EQ(RateOf(row.figure, petrol), row.petrol) << row.figure << petrol;
        EXPECT_EQ(RateOf(row.figure, "D"), row.diesel) << row.figure;
        EXPECT_EQ(RateOf(row.figure + 4, "D"), row.figure == 230 ? 35 : row.diesel) << row.figure + 4;
    }
}

TEST(CO2Calculations, FiguresAroundTheBandsGetTheRateOfTheirBand)
{
    struct Case {
        int entered, petrol, diesel;
    };
    for (const Case& c : {Case{0, 5, 8}, Case{75, 5, 8}, Case{76, 5, 8}, Case{77, 5, 8}, Case{78, 5, 8}, Case{79, 5, 8},
                          Case{80, 10, 13}, Case{120, 10, 13}, Case{121, 15, 18}, Case{129, 15, 18}, Case{130, 15, 18},
                          Case{134, 15, 18}, Case{135, 16, 19}, Case{230, 35, 35}, Case{234, 35, 35}, Case{235, 35, 35},
                          Case{400, 35, 35}}) {
        EXPECT_EQ(RateOf(c.entered, "P"), c.petrol) << c.entered;
        EXPECT_EQ(RateOf(c.entered, "D"), c.diesel) << c.entered;
    }
}

TEST(CO2Calculations, AFigureEnteredAt79EarnsTheRateOf75)
{
    EXPECT_EQ(GetCO2Percentage(75, "P", DateOf(Recent), true), 5);
    EXPECT_EQ(RateOf(79, "P"), 5);
    EXPECT_EQ(RateOf(79, "D"), 8);
}

TEST(CO2Calculations, AFigureThatIsNotInTheTableGivesNothing)
{
    EXPECT_EQ(GetCO2Percentage(152, "P", DateOf(Recent), false), 0);
}

TEST(CO2Calculations, LetterLIsDieselFrom2006On)
{
    EXPECT_EQ(RateOf(150, "L", "31/12/2005"), 19);
    EXPECT_EQ(RateOf(150, "L", "01/01/2006"), 22);
    EXPECT_EQ(GetEnginePercentage(1500, "L", DateOf("31/12/2005")), 25);
    EXPECT_EQ(GetEnginePercentage(1500, "L", DateOf("01/01/2006")), 28);
}

TEST(CO2Calculations, EngineSizesFallInTheirColumn)
{
    struct Case {
        std::int32_t engine;
        int petrol, diesel, older;
    };
    for (const Case& c : {Case{0, 15, 18, 15}, Case{1400, 15, 18, 15}, Case{1401, 25, 28, 22}, Case{2000, 25, 28, 22},
                          Case{2001, 35, 35, 32}, Case{9999, 35, 35, 32}, Case{2147483647, 35, 35, 32}}) {
        for (const char* letter : {"C", "G", "H", "P"}) {
            EXPECT_EQ(GetEnginePercentage(c.engine, letter, DateOf("01/01/1998")), c.petrol) << c.engine << letter;
            EXPECT_EQ(GetEnginePercentage(c.engine, letter, DateOf("31/12/1997")), c.older) << c.engine << letter;
        }
        EXPECT_EQ(GetEnginePercentage(c.engine, "D", DateOf("01/01/1998")), c.diesel) << c.engine;
        EXPECT_EQ(GetEnginePercentage(c.engine, "D", DateOf("31/12/1997")), c.older) << c.engine;
        EXPECT_EQ(GetEnginePercentage(c.engine, "L", DateOf("31/12/1997")), c.older) << c.engine;
    }
}

TEST(CO2Calculations, BiFuelAndElectricHaveNoEngineRateWhateverTheDate)
{
    for (const char* letter : {"B", "E"})
        for (const char* date : {"31/12/1997", "01/01/1998", "01/01/2010"})
            EXPECT_EQ(GetEnginePercentage(1800, letter, DateOf(date)), 0) << letter << date;
}

TEST(CO2Calculations, OnlyThreeLettersAreReduced)
{
    EXPECT_EQ(GetFuelReduction("B"), 2);
    EXPECT_EQ(GetFuelReduction("G"), 2);
    EXPECT_EQ(GetFuelReduction("H"), 3);
    for (const char* letter : {"C", "D", "E", "L", "P", "", "h"})
        EXPECT_EQ(GetFuelReduction(letter), 0) << letter;
}

TEST(CO2Calculations, ADateThatCannotBeReadIsARuntimeFailure)
{
    EXPECT_THROW(ReadCar({.registrationDate = "31/31/2008", .fuel = "P"}), Failure);
}

} // namespace
} // namespace quillmere
