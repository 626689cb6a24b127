#include "cars/CarSheet.h"

#include "frame/Failure.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace quillmere {
namespace {

/// A reference database with one rate in each column: 20 and 23, whatever the figure.
std::string FixedRates(int, SheetColumn column)
{
    return column == SheetColumn::Column1 ? "20" : "23";
}

/// For cars whose figure must not be looked up.
std::string NoLookUp(int figure, SheetColumn)
{
    ADD_FAILURE() << "looked up " << figure;
    return {};
}

CarSheetFacts PlainSheet()
{
    CarSheetFacts facts{.fuelTick = true};
    facts.car.registrationDate = "01/02/2008";
    facts.car.fuel = "P";
    facts.car.co2 = "160";
    facts.car.listPrice = "20000";
    return facts;
}

CarSheetFacts With(const std::function<void(CarSheetFacts&)>& change)
{
    CarSheetFacts facts = PlainSheet();
    change(facts);
    return facts;
}

Amount Pounds(std::int64_t pounds)
{
    return Amount::WholePounds(pounds);
}

TEST(CarSheet, TheFuelMultiplierIs14400)
{
    EXPECT_EQ(CarSheet(PlainSheet(), NoLookUp).V, Pounds(2160));
}

TEST(CarSheet, TheFuelDeductionIsDividedBy366AndTheCarsBy365)
{
    const CarSheetWorking working = CarSheet(With([](CarSheetFacts& f) {
                                                 f.car.periods[0] = {"01/06/2010", "30/06/2010"};
                                             }),
                                             NoLookUp);
    EXPECT_EQ(working.Q, 30);
    EXPECT_EQ(working.R, ReadAmount("246.5753")) << "3000 x 30 / 365";
    EXPECT_EQ(working.S, ReadAmount("2753.4247"));
    EXPECT_EQ(working.Y, ReadAmount("177.0492")) << "2160 x 30 / 366";
    EXPECT_EQ(working.Z, ReadAmount("1982.9508"));
}

TEST(CarSheet, NothingIsRoundedToPounds)
{
    const CarSheetWorking working = CarSheet(With([](CarSheetFacts& f) { f.car.listPrice = "21333.33"; }), NoLookUp);
    EXPECT_EQ(working.P, ReadAmount("3199.9995"));
    EXPECT_EQ(working.carBenefit, ReadAmount("3199.9995"));
}

TEST(CarSheet, SevenLettersAndNoneAreAccepted)
{
    for (const char* letter : {"D", "P", "E", "L", "H", "B", "C", ""})
        EXPECT_TRUE(IsSheetFuelLetter(letter)) << letter;
    for (const char* letter : {"G", "X", "d", "DP"})
        EXPECT_FALSE(IsSheetFuelLetter(letter)) << letter;
}

TEST(CarSheet, AnOlderCarGoesByItsEngineAndNothingElse)
{
    struct Case {
        const char* engine;
        int rate;
    };
    for (const char* letter : {"P", "D", "E", "B", "H"})
        for (const Case& c : {Case{"1400", 15}, Case{"1401", 22}, Case{"2000", 22}, Case{"2001", 32}}) {
            const CarSheetWorking working = CarSheet(With([&](CarSheetFacts& f) {
                                                         f.car.registrationDate = "31/12/1997";
                                                         f.car.fuel = letter;
                                                         f.car.engine = c.engine;
                                                     }),
                                                     NoLookUp);
            EXPECT_EQ(working.N, c.rate) << letter << c.engine;
            EXPECT_EQ(working.G + working.H + working.J + working.fullDiscount, 0) << letter;
        }
}

TEST(CarSheet, WithoutAFigureTheEngineDecides)
{
    struct Case {
        const char *letter, *engine;
        int basic, discount;
    };
    for (const Case& c : {Case{"P", "1400", 15, 0}, Case{"L", "1401", 25, 0}, Case{"C", "2000", 25, 1},
                          Case{"B", "2001", 35, 1}, Case{"H", "1400", 15, 2}, Case{"D", "1400", 18, 0},
                          Case{"D", "1401", 28, 0}, Case{"D", "2001", 35, 0}, Case{"E", "2001", 15, 6}}) {
        const CarSheetWorking working = CarSheet(With([&](CarSheetFacts& f) {
                                                     f.car.co2 = "";
                                                     f.car.fuel = c.letter;
                                                     f.car.engine = c.engine;
                                                 }),
                                                 NoLookUp);
        EXPECT_EQ(working.H, c.basic) << c.letter << c.engine;
        EXPECT_EQ(working.J, c.discount) << c.letter;
        EXPECT_EQ(working.fullDiscount, 0) << c.letter;
        EXPECT_EQ(working.N, c.basic - c.discount) << c.letter;
    }
}

TEST(CarSheet, AnElectricCarGoesByItsLetterWhateverItsFigure)
{
    EXPECT_EQ(CarSheet(With([](CarSheetFacts& f) { f.car.fuel = "E"; }), NoLookUp).N, 9);
}

TEST(CarSheet, FiguresAreRoundedByTheirLastDigit)
{
    struct Case {
        const char* text;
        int figure;
    };
    for (const Case& c : {Case{"160", 160}, Case{"161", 160}, Case{"164", 160}, Case{"165", 165}, Case{"166", 165},
                          Case{"169", 165}, Case{"", 0}})
        EXPECT_EQ(SheetFigure(c.text), c.figure) << c.text;
    EXPECT_THROW(SheetFigure("99995"), Failure);
}

TEST(CarSheet, AFigureOfTwoDigitsGainsOne)
{
    EXPECT_EQ(SheetFigure("98"), 985);
    EXPECT_EQ(SheetFigure("92"), 920);
    EXPECT_EQ(SheetFigure("90"), 90);
    EXPECT_EQ(CarSheet(With([](CarSheetFacts& f) { f.car.co2 = "98"; }), NoLookUp).N, 35);
}

TEST(CarSheet, RatesBetweenTheLimitsComeFromTheReferenceDatabase)
{
    struct Case {
        const char *letter, *co2;
        int rate;
    };
    for (const Case& c : {Case{"P", "160", 15}, Case{"L", "164", 15}, Case{"P", "165", 20}, Case{"H", "200", 20},
                          Case{"C", "265", 20}, Case{"B", "269", 20}, Case{"P", "270", 35}, Case{"D", "164", 18},
                          Case{"D", "166", 23}, Case{"D", "265", 23}, Case{"D", "270", 35}})
        EXPECT_EQ(CarSheet(With([&](CarSheetFacts& f) { f.car.fuel = c.letter, f.car.co2 = c.co2; }), FixedRates).H,
                  c.rate)
            << c.letter << c.co2;
}

TEST(CarSheet, TheRoundedFigureIsLookedUp)
{
    std::vector<int> asked;
    const auto lookUp = [&asked](int figure, SheetColumn) {
        asked.push_back(figure);
        return std::string();
    };
    EXPECT_EQ(CarSheet(With([](CarSheetFacts& f) { f.car.co2 = "178"; }), lookUp).H, 0) << "no such row";
    EXPECT_EQ(asked, std::vector<int>{175});
}

TEST(CarSheet, DiscountsWithAFigure)
{
    struct Case {
        const char *letter, *co2;
        int discount, full;
    };
    for (const Case& c :
         {Case{"H", "200", 2, 0}, Case{"C", "120", 1, 0}, Case{"B", "200", 1, 0}, Case{"P", "100", 0, 0},
          Case{"L", "100", 0, 0}, Case{"H", "140", 2, 0}, Case{"H", "135", 2, 0}, Case{"H", "125", 2, 1},
          Case{"H", "126", 2, 1}, Case{"B", "105", 1, 2}, Case{"B", "100", 1, 2}, Case{"H", "30", 2, 5},
          Case{"D", "100", 0, 0}}) {
        const CarSheetWorking working =
            CarSheet(With([&](CarSheetFacts& f) { f.car.fuel = c.letter, f.car.co2 = c.co2; }), FixedRates);
        EXPECT_EQ(working.J, c.discount) << c.letter << c.co2;
        EXPECT_EQ(working.fullDiscount, c.full) << c.letter << c.co2;
        EXPECT_EQ(working.N, working.H - c.discount - c.full) << c.letter << c.co2;
    }
}

TEST(CarSheet, PricesAreHeldAsOnTheColumns)
{
    EXPECT_EQ(
        CarSheet(With([](CarSheetFacts& f) { f.car.listPrice = "90000", f.car.contribution = "4000"; }), NoLookUp).E,
        Pounds(80000));
    EXPECT_EQ(CarSheet(With([](CarSheetFacts& f) { f.car.contribution = "20001"; }), NoLookUp).E, Amount());
    EXPECT_EQ(CarSheet(With([](CarSheetFacts& f) { f.car.accessories = "1000"; }), NoLookUp).total, Pounds(21000));
}

TEST(CarSheet, WithoutTheTickThereIsNoFuel)
{
    const CarSheetWorking working = CarSheet(With([](CarSheetFacts& f) {
                                                 f.fuelTick = false;
                                                 f.car.dateTo = "31/03/2011";
                                             }),
                                             NoLookUp);
    EXPECT_EQ(working.Q, 5);
    EXPECT_EQ(working.fuelDays.X, 0);
    for (const Amount amount : {working.V, working.Y, working.Z})
        EXPECT_TRUE(amount.IsZero());
}

TEST(CarSheet, WithoutRegistrationOnlyThePriceIsLeft)
{
    const CarSheetWorking working = CarSheet(With([](CarSheetFacts& f) { f.car.registrationDate = ""; }), NoLookUp);
    EXPECT_EQ(working.E, Pounds(20000));
    EXPECT_EQ(working.N, 0);
    EXPECT_EQ(working.carBenefit, Amount());
    EXPECT_EQ(working.Z, Amount());
}

TEST(CarSheet, PaymentsAndWithdrawalAreThoseOfTheColumns)
{
    const CarSheetWorking working = CarSheet(With([](CarSheetFacts& f) {
                                                 f.car.privateUse = "3000.50";
                                                 f.car.dateWithdrawn = "05/10/2010";
                                             }),
                                             NoLookUp);
    EXPECT_EQ(working.U, ReadAmount("(0.50)"));
    EXPECT_EQ(working.carBenefit, Amount());
    EXPECT_EQ(working.fuelDays, (FuelDays{.W = 182, .X = 182}));
}

TEST(CarSheet, LongMakesAreShortened)
{
    EXPECT_EQ(MakeAndModel("ROLLS-ROYCE AND BENTLEY MOTOR CARS", "ARNAGE"), "R-ROYCE & BENTLEY ARNAGE");
    EXPECT_EQ(MakeAndModel("MG ROVER GROUP LTD", "75"), "MG ROVER 75");
    EXPECT_EQ(MakeAndModel("MORGAN MOTOR COMPANY", "PLUS 8"), "MORGAN PLUS 8");
    EXPECT_EQ(MakeAndModel("MORGAN", "PLUS 8"), "MORGAN PLUS 8");
}

} // namespace
} // namespace quillmere
