#include "cars/CarBenefit.h"

#include "AnyFacts.h"
#include "edition/Edition.h"
#include "frame/Failure.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace quillmere {
namespace {

/// A petrol car of 2008 with a figure of 121 and so a percentage of 15, there all year.
CarWorking WorkedOut(const CarTexts& texts)
{
    return CarBenefit(ReadCar(texts));
}

CarTexts PlainCar()
{
    return {.registrationDate = "01/02/2008", .fuel = "P", .co2 = "121", .listPrice = "20000"};
}

CarTexts With(const std::function<void(CarTexts&)>& change)
{
    CarTexts facts = PlainCar();
    change(facts);
    return facts;
}

Amount Pounds(std::int64_t pounds)
{
    return Amount::WholePounds(pounds);
}

std::string Shown(Amount amount)
{
    return AmountText(amount, edition::FormatMoneyBlankZero);
}

TEST(CarBenefit, TheCapComesAfterTheContributions)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) {
        f.listPrice = "60000";
        f.accessories = "30000";
        f.contribution = "4000";
    }));
    EXPECT_EQ(working.C, Pounds(90000));
    EXPECT_EQ(working.E, Pounds(80000));
}

TEST(CarBenefit, ContributionsAboveThePriceLeaveNoPrice)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) {
        f.listPrice = "3000";
        f.contribution = "3000.01";
    }));
    EXPECT_EQ(working.E, Amount());
    EXPECT_EQ(working.cashEquivalent, Amount());
}

struct PercentageCase {
    const char* name;
    std::function<void(CarTexts&)> change;
    CarPercentages expected;
};

TEST(CarBenefit, PercentagesFollowTheRoadOfTheCar)
{
    const std::vector<PercentageCase> cases = {
        {"petrol at 120", [](CarTexts& f) { f.co2 = "120"; }, {.G = 120, .H = 10, .N = 10}},
        {"diesel at 120", [](CarTexts& f) { f.co2 = "120", f.fuel = "D"; }, {.G = 120, .H = 13, .N = 13}},
        {"petrol at 121", [](CarTexts&) {}, {.G = 120, .H = 15, .N = 15}},
        {"diesel at 121", [](CarTexts& f) { f.fuel = "D"; }, {.G = 120, .H = 18, .N = 18}},
        {"petrol at 79", [](CarTexts& f) { f.co2 = "79"; }, {.G = 75, .H = 5, .N = 5}},
        {"diesel at 80", [](CarTexts& f) { f.co2 = "80", f.fuel = "D"; }, {.G = 80, .H = 13, .N = 13}},
        {"a figure of nought", [](CarTexts& f) { f.co2 = "0"; }, {.G = 0, .H = 5, .N = 5}},
        {"hybrid at 150",
         [](CarTexts& f) { f.co2 = "150", f.fuel = "H"; },
         {.G = 150, .H = 19, .J = 3, .M = 3, .N = 16}},
        {"hybrid at 152",
         [](CarTexts& f) { f.co2 = "152", f.fuel = "H"; },
         {.G = 150, .H = 19, .J = 3, .M = 3, .N = 16}},
        {"gas at 150", [](CarTexts& f) { f.co2 = "150", f.fuel = "G"; }, {.G = 150, .H = 19, .J = 2, .M = 2, .N = 17}},
        {"bi-fuel at 150",
         [](CarTexts& f) { f.co2 = "150", f.fuel = "B"; },
         {.G = 150, .H = 19, .J = 2, .M = 2, .N = 17}},
        {"converted at 150", [](CarTexts& f) { f.co2 = "150", f.fuel = "C"; }, {.G = 150, .H = 19, .N = 19}},
        {"hybrid at 110", [](CarTexts& f) { f.co2 = "110", f.fuel = "H"; }, {.G = 110, .H = 10, .N = 10}},
        {"clean diesel of 2005",
         [](CarTexts& f) { f.co2 = "150", f.fuel = "L", f.registrationDate = "31/12/2005"; },
         {.G = 150, .H = 19, .N = 19}},
        {"clean diesel of 2006",
         [](CarTexts& f) { f.co2 = "150", f.fuel = "L", f.registrationDate = "01/01/2006"; },
         {.G = 150, .H = 22, .N = 22}},
        {"electric with the tick", [](CarTexts& f) { f.co2 = "", f.fuel = "E", f.noCO2 = true; }, {}},
        {"electric with a figure", [](CarTexts& f) { f.co2 = "200", f.fuel = "E"; }, {}},
        {"electric of 1997", [](CarTexts& f) { f.co2 = "", f.fuel = "E", f.registrationDate = "01/05/1997"; }, {}},
        {"bi-fuel by engine",
         [](CarTexts& f) { f.co2 = "", f.fuel = "B", f.noCO2 = true, f.engine = "1800"; },
         {.J = 2, .N = -2}},
        {"hybrid by engine",
         [](CarTexts& f) { f.co2 = "", f.fuel = "H", f.noCO2 = true, f.engine = "1401"; },
         {.H = 25, .J = 3, .N = 22}},
        {"diesel of 1998 by engine, 1400",
         [](CarTexts& f) {
             f.co2 = "", f.fuel = "D", f.noCO2 = true, f.engine = "1400", f.registrationDate = "01/01/1998";
         },
         {.H = 18, .N = 18}},
        {"diesel of 1998 by engine, 2001",
         [](CarTexts& f) {
             f.co2 = "", f.fuel = "D", f.noCO2 = true, f.engine = "2001", f.registrationDate = "01/01/1998";
         },
         {.H = 35, .N = 35}},
        {"diesel of 1997, 1400",
         [](CarTexts& f) { f.co2 = "", f.fuel = "D", f.engine = "1400", f.registrationDate = "31/12/1997"; },
         {.N = 15}},
        {"diesel of 1997, 1401",
         [](CarTexts& f) { f.co2 = "", f.fuel = "D", f.engine = "1401", f.registrationDate = "31/12/1997"; },
         {.N = 22}},
        {"diesel of 1997, 2001",
         [](CarTexts& f) { f.co2 = "", f.fuel = "D", f.engine = "2001", f.registrationDate = "31/12/1997"; },
         {.N = 32}},
        {"hybrid of 1997 is not reduced",
         [](CarTexts& f) { f.co2 = "", f.fuel = "H", f.engine = "1401", f.registrationDate = "31/12/1997"; },
         {.N = 22}},
        {"engine size to the nearest even",
         [](CarTexts& f) { f.co2 = "", f.noCO2 = true, f.engine = "1400.5"; },
         {.H = 15, .N = 15}},
        {"engine size rounded up",
         [](CarTexts& f) { f.co2 = "", f.noCO2 = true, f.engine = "1400.6"; },
         {.H = 25, .N = 25}},
        {"neither figure nor tick", [](CarTexts& f) { f.co2 = ""; }, {}},
    };
    for (const PercentageCase& c : cases)
        EXPECT_EQ(WorkedOut(With(c.change)).percentages, c.expected) << c.name;
}

TEST(CarBenefit, ABiFuelCarByEngineEndsNegativeAndIsChargedNothing)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) {
        f.co2 = "";
        f.fuel = "B";
        f.noCO2 = true;
        f.registrationDate = "01/06/2005";
    }));
    EXPECT_EQ(working.P, Pounds(-400));
    EXPECT_EQ(working.U, Pounds(-400));
    EXPECT_EQ(working.cashEquivalent, Amount());
    EXPECT_EQ(working.V, Pounds(-360));
    EXPECT_EQ(working.fuelEquivalent, -360);
}

TEST(CarBenefit, ANewerCarWithoutFigureAndTickIsChargedNothing)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) { f.co2 = "", f.engine = "1800"; }));
    EXPECT_EQ(working.percentages.N, 0);
    EXPECT_EQ(working.P, Amount());
    EXPECT_EQ(working.cashEquivalent, Amount());
}

TEST(CarBenefit, TheFullYearIsCutToPoundsAfterAThousandth)
{
    EXPECT_EQ(FullYearBenefit(Pounds(20000), 16), Pounds(3200));
    EXPECT_EQ(FullYearBenefit(ReadAmount("21333.33"), 15), Pounds(3200));
    EXPECT_EQ(FullYearBenefit(ReadAmount("21333.32"), 15), Pounds(3199));
    EXPECT_EQ(FullYearBenefit(Pounds(20000), -2), Pounds(-400));
    EXPECT_EQ(FullYearBenefit(ReadAmount("20000.30"), -2), Pounds(-401));
}

TEST(CarBenefit, ThePriceThatFallsShortInDoublesStaysShort)
{
    EXPECT_EQ(FullYearBenefit(ReadAmount("819.98"), 5), Pounds(40));
}

TEST(CarBenefit, DeductionsAreRoundedUpFromAThousandthOn)
{
    EXPECT_EQ(DeductionForDays(Pounds(3650), 30), Pounds(300));
    EXPECT_EQ(DeductionForDays(Pounds(1000), 30), Pounds(83));
    EXPECT_EQ(DeductionForDays(Pounds(366), 1), Pounds(2)) << "the least fraction there is, a day's pound";
    EXPECT_EQ(DeductionForDays(Pounds(2700), 30), Pounds(222));
    EXPECT_EQ(DeductionForDays(Pounds(2700), 0), Amount());
    EXPECT_EQ(DeductionForDays(Pounds(-360), 10), Pounds(-9));
}

TEST(CarBenefit, ACarThatIsThereAllYearLosesNothing)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) { f.dateFrom = "06/04/2010", f.dateTo = "05/04/2011"; }));
    EXPECT_EQ(working.Q, 0);
    EXPECT_EQ(working.R, Amount());
    EXPECT_EQ(working.S, working.P);
    EXPECT_EQ(working.P, Pounds(3000));
}

struct DaysCase {
    const char* name;
    std::function<void(CarTexts&)> change;
    int expected;
};

TEST(CarBenefit, UnavailableDaysAreAddedAsTheyStand)
{
    const std::vector<DaysCase> cases = {
        {"from 1 May", [](CarTexts& f) { f.dateFrom = "01/05/2010"; }, 25},
        {"to 31 March", [](CarTexts& f) { f.dateTo = "31/03/2011"; }, 5},
        {"one period",
         [](CarTexts& f) {
             f.periods[0] = {"01/01/2011", "31/01/2011"};
         },
         31},
        {"a row with one date",
         [](CarTexts& f) {
             f.periods[0] = {"01/01/2011", ""}, f.periods[1] = {"", "31/01/2011"};
         },
         0},
        {"overlapping periods",
         [](CarTexts& f) {
             f.periods[0] = f.periods[3] = {"01/01/2011", "31/01/2011"};
         },
         62},
        {"a period outside the days of availability",
         [](CarTexts& f) {
             f.dateTo = "31/12/2010", f.periods[2] = {"01/01/2011", "31/01/2011"};
         },
         95 + 31},
        {"a last day after the end of the year", [](CarTexts& f) { f.dateTo = "15/04/2011"; }, -10},
    };
    for (const DaysCase& c : cases)
        EXPECT_EQ(WorkedOut(With(c.change)).Q, c.expected) << c.name;
}

TEST(CarBenefit, StackedPeriodsPassTheYearAndTheResultIsHeldAtNothing)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) { f.periods.fill({"06/04/2010", "05/04/2011"}); }));
    EXPECT_EQ(working.Q, 4 * 365);
    EXPECT_EQ(working.R, Pounds(12000));
    EXPECT_EQ(working.S, Pounds(-9000));
    EXPECT_EQ(Shown(working.U), " (9000.00)");
    EXPECT_EQ(working.cashEquivalent, Amount());
}

TEST(CarBenefit, PaymentsAboveTheBenefitShowInBracketsAndTheResultIsNothing)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) { f.privateUse = "3000.50"; }));
    EXPECT_EQ(Shown(working.U), "    (0.50)");
    EXPECT_EQ(working.cashEquivalent, Amount());
}

TEST(CarBenefit, WithoutRegistrationOrFuelOnlyThePriceIsLeft)
{
    for (const auto& change : {std::function<void(CarTexts&)>([](CarTexts& f) { f.registrationDate = ""; }),
                               std::function<void(CarTexts&)>([](CarTexts& f) { f.fuel = ""; })}) {
        CarTexts facts = With([](CarTexts& f) {
            f.privateUse = "100";
            f.contribution = "1000";
            f.dateFrom = "01/05/2010";
        });
        change(facts);
        const CarWorking working = WorkedOut(facts);
        EXPECT_EQ(working.C, Pounds(20000));
        EXPECT_EQ(working.E, Pounds(19000));
        EXPECT_EQ(working.percentages, CarPercentages());
        EXPECT_EQ(working.Q, 0);
        EXPECT_EQ(working.T, Amount()) << "a payment typed too early is wiped";
        EXPECT_EQ(working.U, Amount());
        EXPECT_EQ(working.fuelDays, FuelDays());
        EXPECT_EQ(working.Y, Amount());
        EXPECT_EQ(working.fuelEquivalent, 0);
    }
}

TEST(CarBenefit, WithoutFuelLetterAWithdrawalIsStillCounted)
{
    const CarWorking working = WorkedOut(With([](CarTexts& f) { f.fuel = "", f.dateWithdrawn = "05/10/2010"; }));
    EXPECT_EQ(working.fuelDays, (FuelDays{.W = 182, .X = 182}));
    EXPECT_EQ(working.Y, Amount());
}

struct FuelCase {
    const char* name;
    std::function<void(CarTexts&)> change;
    FuelDays days;
    int y, figure;
};

TEST(CarFuel, TheChargeIsReducedByTheDaysWithoutFuel)
{
    const std::vector<FuelCase> cases = {
        {"all year", [](CarTexts&) {}, {}, 0, 2700},
        {"unavailable for 30 days",
         [](CarTexts& f) {
             f.periods[0] = {"01/06/2010", "30/06/2010"};
         },
         {0, 30},
         222,
         2478},
        {"withdrawn on 5 October", [](CarTexts& f) { f.dateWithdrawn = "05/10/2010"; }, {182, 182}, 1347, 1353},
        {"the same, unavailable in January",
         [](CarTexts& f) {
             f.dateWithdrawn = "05/10/2010", f.periods[1] = {"01/01/2011", "31/01/2011"};
         },
         {151, 182},
         1347,
         1353},
        {"the same, fuel reinstated",
         [](CarTexts& f) {
             f.dateWithdrawn = "05/10/2010", f.reinstated = true, f.periods[1] = {"01/01/2011", "31/01/2011"};
         },
         {0, 31},
         230,
         2470},
        {"unavailable before the withdrawal",
         [](CarTexts& f) {
             f.dateWithdrawn = "05/10/2010", f.periods[0] = {"01/06/2010", "30/06/2010"};
         },
         {182, 212},
         1569,
         1131},
        {"withdrawn on the last day of the car",
         [](CarTexts& f) { f.dateWithdrawn = "31/12/2010", f.dateTo = "31/12/2010"; },
         {0, 95},
         703,
         1997},
        {"withdrawn after the car's last day",
         [](CarTexts& f) { f.dateWithdrawn = "10/01/2011", f.dateTo = "31/12/2010"; },
         {},
         0,
         2700},
        {"withdrawn on the last day of the year",
         [](CarTexts& f) { f.dateWithdrawn = "05/04/2011", f.dateFrom = "16/04/2010"; },
         {},
         0,
         2700},
        {"the same with the year in two digits",
         [](CarTexts& f) { f.dateWithdrawn = "05/04/11", f.dateFrom = "16/04/2010"; },
         {0, 10},
         74,
         2626},
    };
    for (const FuelCase& c : cases) {
        const CarWorking working = WorkedOut(With(c.change));
        EXPECT_EQ(working.V, Pounds(2700)) << c.name;
        EXPECT_EQ(working.fuelDays, c.days) << c.name;
        EXPECT_EQ(working.Y, Pounds(c.y)) << c.name;
        EXPECT_EQ(working.fuelEquivalent, c.figure) << c.name;
    }
}

TEST(CarFuel, TheHighestPercentageGives6300)
{
    EXPECT_EQ(WorkedOut(With([](CarTexts& f) { f.co2 = "400"; })).fuelEquivalent, 6300);
}

TEST(CarBenefit, WholeNumbersThatLeave16BitsAreARuntimeFailure)
{
    const auto overflows = [](const std::function<void(CarTexts&)>& change) {
        try {
            WorkedOut(With(change));
        } catch (const Failure& failure) {
            return failure.Number() == 6 && std::string(failure.what()) == "Overflow";
        }
        return false;
    };
    EXPECT_TRUE(overflows([](CarTexts& f) { f.co2 = "32768"; }));
    EXPECT_FALSE(overflows([](CarTexts& f) { f.co2 = "32767"; }));
    EXPECT_TRUE(overflows([](CarTexts& f) { f.dateTo = "05/04/2111"; })) << "36,525 days too many";
    EXPECT_FALSE(overflows([](CarTexts& f) { f.co2 = "400", f.dateTo = "05/04/2015"; })) << "a fuel figure of 31,517";
    EXPECT_TRUE(overflows([](CarTexts& f) { f.co2 = "400", f.dateTo = "05/04/2016"; })) << "a fuel figure of 37,834";
}

TEST(CarBenefit, ATextThatIsNoDateIsARuntimeFailure)
{
    EXPECT_THROW(WorkedOut(With([](CarTexts& f) { f.registrationDate = "99/99/2008"; })), Failure);
    EXPECT_THROW(WorkedOut(With([](CarTexts& f) { f.dateWithdrawn = "soon"; })), Failure);
    EXPECT_THROW(WorkedOut(With([](CarTexts& f) { f.dateFrom = "soon"; })), Failure);
    EXPECT_THROW(WorkedOut(With([](CarTexts& f) { f.dateTo = "soon"; })), Failure);
    EXPECT_THROW(WorkedOut(With([](CarTexts& f) { f.periods[3] = {"soon", "05/04/2011"}; })), Failure);
}

TEST(CarBenefit, ATextThatDecidesNothingIsPassedOver)
{
    EXPECT_NO_THROW(WorkedOut(With([](CarTexts& f) { f.periods[3] = {"soon", ""}; })));
    EXPECT_NO_THROW(WorkedOut(With([](CarTexts& f) { f.dateWithdrawn = "soon", f.reinstated = true; })));
    EXPECT_NO_THROW(WorkedOut(With([](CarTexts& f) { f.co2 = "99999", f.fuel = "E"; })));
    const auto uncharged = [](const std::function<void(CarTexts&)>& change) {
        CarTexts texts = With(change);
        texts.fuel.clear();
        return WorkedOut(texts);
    };
    EXPECT_NO_THROW(uncharged([](CarTexts& f) { f.registrationDate = f.dateFrom = f.dateTo = "soon"; }));
    EXPECT_THROW(uncharged([](CarTexts& f) { f.dateTo = "soon", f.dateWithdrawn = "05/10/2010"; }), Failure);
    EXPECT_EQ(uncharged([](CarTexts& f) {
                  f.periods[0] = {"soon", "later"}, f.periods[1] = {"01/12/2010", "31/12/2010"};
                  f.dateWithdrawn = "05/10/2010";
              }).fuelDays.W,
              182 - 31);
}

TEST(CarTotals, SixEmptyCarsGiveAnEmptyTotal)
{
    const CarTotal total = TotalOfCars({});
    EXPECT_FALSE(total.any);
    EXPECT_EQ(total.Text(), "");
}

TEST(CarTotals, ACarOfNothingShowsItsZero)
{
    EXPECT_EQ(TotalOfCars({"", "      0.00"}).Text(), "      0.00");
}

TEST(CarTotals, AFigureInParenthesesIsTakenOff)
{
    EXPECT_EQ(TotalOfCars({"   2700.00", "", "  (360.00)", "", "", "      1.50"}).Text(), "   2341.50");
    EXPECT_EQ(TotalOfCars({"", "", "", "", "", "  (360.00)"}).Text(), "  (360.00)");
}

// ---- properties ----

using test::AnyCar;

RC_GTEST_PROP(CarBenefitProperty, TheResultIsNeverNegative, ())
{
    RC_ASSERT(!WorkedOut(AnyCar()).cashEquivalent.IsNegative());
}

RC_GTEST_PROP(CarBenefitProperty, NoDayIsCountedTwice, ())
{
    const CarTexts facts = AnyCar();
    const CarWorking working = WorkedOut(facts);

    std::array<bool, 365> unavailable{}, noFuel{};
    const Day start = *ReadDate(edition::TaxYearStart);
    const auto index = [&](const std::string& text) { return DaysBetween(start, *ReadDate(text)); };
    for (int day = 0; day < 365; ++day) {
        const Day date = start + std::chrono::days(day);
        bool off = day < index(facts.dateFrom) || day > index(facts.dateTo);
        for (const UnavailablePeriod& period : facts.periods)
            off = off || (!period.first.empty() && date >= *ReadDate(period.first) && date <= *ReadDate(period.last));
        unavailable[day] = off;
        noFuel[day] = off || (!facts.dateWithdrawn.empty() && day > index(facts.dateWithdrawn));
    }
    RC_ASSERT(working.Q == std::ranges::count(unavailable, true));
    if (facts.dateWithdrawn != edition::TaxYearEnd)
        RC_ASSERT(working.fuelDays.X == std::ranges::count(noFuel, true));
}

RC_GTEST_PROP(CarBenefitProperty, TheFuelFigureLiesBetweenNothingAndTheFullCharge, ())
{
    const CarWorking working = WorkedOut(AnyCar());
    if (working.percentages.N >= 0) {
        RC_ASSERT(working.fuelEquivalent >= 0);
        RC_ASSERT(Pounds(working.fuelEquivalent) <= working.V);
    }
}

RC_GTEST_PROP(CarBenefitProperty, TheDeductionIsTheDaysShareRoundedUpByLessThanAPound, ())
{
    const std::int64_t pounds = *rc::gen::inRange(0, 30000);
    const auto days = static_cast<std::int16_t>(*rc::gen::inRange(0, 366));
    const std::int64_t deduction = DeductionForDays(Pounds(pounds), days).Units() / 10000;
    // With 365 as the divisor no fraction is under a thousandth, so this is the plain round-up.
    RC_ASSERT(deduction == (pounds * days + 364) / 365);
}

} // namespace
} // namespace quillmere
