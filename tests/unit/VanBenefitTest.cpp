#include "calculators/VanBenefit.h"

#include "AnyFacts.h"
#include "edition/Edition.h"
#include "frame/Dates.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace quillmere {
namespace {

using enum VanDate;

/// Dates in the order From1, To1, From2, To2, From3, To3, Withdrawn.
VanDates Dates(std::array<std::string, 7> texts)
{
    return {std::move(texts)};
}

VanFacts Van(std::array<std::string, 7> dates = {})
{
    return {.registrationNumber = "A1 VAN", .dates = Dates(std::move(dates)), .fuelTick = true};
}

Amount Pounds(std::int64_t pounds)
{
    return Amount::WholePounds(pounds);
}

TEST(VanBenefit, AVanWithoutDatesIsChargedForTheYear)
{
    const VanWorking working = VanBenefit(Van());
    EXPECT_EQ(working.A, Pounds(3000));
    EXPECT_EQ(working.E, 0);
    EXPECT_EQ(working.F, Amount());
    EXPECT_EQ(working.G, Pounds(3000));
    EXPECT_EQ(working.K, Pounds(3000));
    EXPECT_EQ(working.M, Pounds(3000));
    EXPECT_EQ(working.P, Pounds(550));
    EXPECT_EQ(working.X, Pounds(550));
}

TEST(VanBenefit, WithoutRegistrationNumberOnlyTheDayOfWithdrawalIsLeft)
{
    VanFacts facts =
        Van({"06/07/2010", "01/03/2011", "01/08/2010", "31/08/2010", "01/10/2010", "31/10/2010", "01/02/2011"});
    facts.registrationNumber = "";
    facts.percentage = "30";
    facts.payments = "20";
    const VanWorking working = VanBenefit(facts);
    EXPECT_EQ(working.dates, Dates({"", "", "", "", "", "", "01/02/2011"}));
    for (const Amount amount : {working.A, working.F, working.G, working.H, working.J, working.K, working.L, working.M,
                                working.P, working.T, working.V, working.W, working.X})
        EXPECT_TRUE(amount.IsZero());
    EXPECT_EQ(working.E + working.R + working.S, 0);
}

TEST(VanBenefit, DaysBeforeAndAfterDoNotCountTheDateInTheBox)
{
    EXPECT_EQ(VanBenefit(Van({"06/04/2010"})).B, 0);
    EXPECT_EQ(VanBenefit(Van({"", "04/04/2011"})).B, 1);
    EXPECT_EQ(VanBenefit(Van({"", "05/04/2011"})).B, 0);
    const VanWorking working = VanBenefit(Van({"06/07/2010"}));
    EXPECT_EQ(working.B, 91);
    EXPECT_EQ(working.F, Pounds(748));
    EXPECT_EQ(working.G, Pounds(2252));
}

TEST(VanBenefit, FurtherPeriodsCountFromThirtyDaysOn)
{
    EXPECT_EQ(VanBenefit(Van({"", "", "01/06/2010", "30/06/2010"})).C, 30);
    EXPECT_EQ(VanBenefit(Van({"", "", "01/06/2010", "29/06/2010"})).C, 0);
    EXPECT_EQ(VanBenefit(Van({"", "", "01/06/2010", ""})).C, 0);
    const VanWorking working =
        VanBenefit(Van({"16/04/2010", "", "01/06/2010", "30/06/2010", "01/08/2010", "31/08/2010"}));
    EXPECT_EQ(working.D, 31);
    EXPECT_EQ(working.E, 10 + 30 + 31);
}

TEST(VanBenefit, TheQuotientIsBroughtToFourDecimalsBeforeItIsRoundedUp)
{
    EXPECT_EQ(RoundUpToPounds(Amount::FromDouble(8.00001)), Pounds(8));
    EXPECT_EQ(RoundUpToPounds(Amount::FromDouble(8.0001)), Pounds(9));
    EXPECT_EQ(RoundUpToPounds(Pounds(8)), Pounds(8));
    EXPECT_EQ(RoundUpToPounds(ReadAmount("(8.5)")), Pounds(-8));
}

TEST(VanBenefit, SharingIsRoundedUpToPounds)
{
    VanFacts facts = Van();
    facts.percentage = "33.33";
    const VanWorking working = VanBenefit(facts);
    EXPECT_EQ(working.J, Pounds(1000));
    EXPECT_EQ(working.K, Pounds(2000));
    facts.percentage = "a third";
    EXPECT_EQ(VanBenefit(facts).J, Amount());
}

TEST(VanBenefit, PaymentsTakeTheChargeToNothingAtMost)
{
    VanFacts facts = Van();
    facts.payments = "3000.01";
    EXPECT_EQ(VanBenefit(facts).M, Amount());
    EXPECT_EQ(VanBenefit(facts).K, Pounds(3000));
    facts.payments = "1000.50";
    EXPECT_EQ(VanBenefit(facts).M, ReadAmount("1999.50"));
    EXPECT_EQ(VanBenefit(facts).X, Pounds(550)) << "payments do not reach the fuel";
}

TEST(VanBenefit, APercentageAboveAHundredLeavesANegativeFuelCharge)
{
    VanFacts facts = Van();
    facts.percentage = "150";
    const VanWorking working = VanBenefit(facts);
    EXPECT_EQ(working.W, Pounds(825));
    EXPECT_EQ(working.X, Pounds(-275));
    EXPECT_EQ(working.K, Pounds(-1500));
    EXPECT_EQ(working.M, Amount());
}

TEST(VanBenefit, TheFuelPercentageIsDividedBeforeItIsMultiplied)
{
    // 550 at 46.9091% is 258.00005 and at 2.9091% 16.00005: the doubles of this order fall above and below the tie,
    // those of the other order the other way round.
    VanFacts facts = Van();
    facts.percentage = "46.9091";
    EXPECT_EQ(VanBenefit(facts).W, Pounds(259));
    facts.percentage = "2.9091";
    EXPECT_EQ(VanBenefit(facts).W, Pounds(16));
}

TEST(VanBenefit, WithoutTheTickThereIsNoFuel)
{
    VanFacts facts = Van({"", "", "", "", "", "", "01/10/2010"});
    facts.fuelTick = false;
    const VanWorking working = VanBenefit(facts);
    EXPECT_EQ(working.M, Pounds(3000));
    for (const Amount amount : {working.P, working.T, working.V, working.W, working.X})
        EXPECT_TRUE(amount.IsZero());
    EXPECT_EQ(working.R, 0);
    EXPECT_EQ(working.S, 0);
}

struct WithdrawnCase {
    const char* name;
    std::array<std::string, 7> dates;
    int r;
    const char* left; ///< the day of withdrawal afterwards
};

TEST(VanFuel, DaysAfterWithdrawal)
{
    const std::vector<WithdrawnCase> cases = {
        {"not withdrawn", {}, 0, ""},
        {"to the end of the year", {"", "", "", "", "", "", "31/03/2011"}, 5, "31/03/2011"},
        {"to the last day of the van", {"", "31/12/2010", "", "", "", "", "30/11/2010"}, 31, "30/11/2010"},
        {"before the second period",
         {"", "31/12/2010", "01/07/2010", "31/07/2010", "", "", "20/06/2010"},
         10 + 153,
         "20/06/2010"},
        {"before both periods",
         {"", "31/12/2010", "01/07/2010", "31/07/2010", "01/09/2010", "30/09/2010", "20/06/2010"},
         10 + 31 + 92,
         "20/06/2010"},
        {"between the periods",
         {"", "31/12/2010", "01/07/2010", "31/07/2010", "01/09/2010", "30/09/2010", "20/08/2010"},
         11 + 92,
         "20/08/2010"},
        {"after both periods",
         {"", "31/12/2010", "01/07/2010", "31/07/2010", "01/09/2010", "30/09/2010", "20/12/2010"},
         11,
         "20/12/2010"},
        {"after the only period", {"", "", "01/07/2010", "31/07/2010", "", "", "31/03/2011"}, 5, "31/03/2011"},
        {"half a third period does not count",
         {"", "31/12/2010", "01/07/2010", "31/07/2010", "01/09/2010", "", "20/08/2010"},
         133,
         "20/08/2010"},
        {"the last day of the year", {"", "", "", "", "", "", "05/04/2011"}, 0, ""},
        {"the last day of the van", {"", "31/12/2010", "", "", "", "", "31/12/2010"}, 0, ""},
        {"before the van came", {"01/06/2010", "", "", "", "", "", "31/05/2010"}, 0, ""},
        {"after the van went", {"", "31/12/2010", "", "", "", "", "01/01/2011"}, 0, ""},
        {"the first day of the second period", {"", "", "01/07/2010", "31/07/2010", "", "", "01/07/2010"}, 0, ""},
        {"the last day of the second period", {"", "", "01/07/2010", "31/07/2010", "", "", "31/07/2010"}, 0, ""},
        {"the last day of the third period",
         {"", "", "01/07/2010", "31/07/2010", "01/09/2010", "30/09/2010", "30/09/2010"},
         0,
         ""},
        {"no date at all", {"", "", "", "", "", "", "then"}, 0, ""},
    };
    for (const WithdrawnCase& c : cases) {
        const VanWorking working = VanBenefit(Van(c.dates));
        EXPECT_EQ(working.R, c.r) << c.name;
        EXPECT_EQ(working.S, working.E + c.r) << c.name;
        EXPECT_EQ(working.dates[Withdrawn], c.left) << c.name;
    }
}

TEST(VanFuel, TheFindingSaysWhetherTheWorkStartsAgain)
{
    EXPECT_EQ(CheckVanWithdrawn(Dates({"", "31/12/2010", "", "", "", "", "31/12/2010"})),
              VanWithdrawnCheck::EmptiedAndRestart);
    EXPECT_EQ(CheckVanWithdrawn(Dates({"", "", "", "", "", "", "05/04/2010"})), VanWithdrawnCheck::EmptiedAndRestart);
    EXPECT_EQ(CheckVanWithdrawn(Dates({"", "", "01/07/2010", "31/07/2010", "", "", "15/07/2010"})),
              VanWithdrawnCheck::Emptied);
    EXPECT_EQ(CheckVanWithdrawn(Dates({"", "", "01/07/2010", "", "", "", "01/07/2010"})), VanWithdrawnCheck::Stands)
        << "half a period holds no day";
    EXPECT_EQ(CheckVanWithdrawn(Dates({})), VanWithdrawnCheck::Stands);
}

TEST(VanFuel, FuelWithdrawnOnTheLastDayIsChargedInFull)
{
    const VanWorking working = VanBenefit(Van({"", "31/12/2010", "", "", "", "", "31/12/2010"}));
    EXPECT_EQ(working.S, 95);
    EXPECT_EQ(working.T, Pounds(144));
    EXPECT_EQ(working.X, Pounds(406));
}

TEST(VanFuel, ACountOfTrulyNoughtFallsBackToAllDaysToTheEnd)
{
    // Withdrawn on the eve of a period that runs to the last day: no day is left uncounted, and all 31 are counted
    // again.
    const VanWorking working = VanBenefit(Van({"", "31/12/2010", "01/12/2010", "31/12/2010", "", "", "30/11/2010"}));
    EXPECT_EQ(working.C, 31);
    EXPECT_EQ(working.R, 31);
}

TEST(VanFuel, TheDatesOfAShortPeriodCountAfterWithdrawal)
{
    const VanWorking working = VanBenefit(Van({"", "31/12/2010", "01/07/2010", "10/07/2010", "", "", "20/06/2010"}));
    EXPECT_EQ(working.C, 0);
    EXPECT_EQ(working.R, 10 + 174) << "the ten days of the period are in neither";
}

struct EntryCase {
    const char* name;
    VanDate left;
    std::array<std::string, 7> now, expected;
};

TEST(VanDates, EveryBoxIsHeldToItsRules)
{
    const std::vector<EntryCase> cases = {
        // The tests of every box.
        {"standard form", From1, {"1/6/10"}, {"01/06/2010"}},
        {"no date", From1, {"31/6/10"}, {""}},
        {"before the year", From1, {"5/4/10"}, {""}},
        {"after the year", To1, {"", "6/4/11"}, {""}},
        {"withdrawal is tested like the others", Withdrawn, {"", "", "", "", "", "", "6/4/11"}, {}},
        {"a withdrawal outside the van's days stands for now",
         Withdrawn,
         {"01/06/2010", "", "", "", "", "", "1/5/10"},
         {"01/06/2010", "", "", "", "", "", "01/05/2010"}},
        // The first pair.
        {"From1 on To1", From1, {"1/6/10", "01/06/2010"}, {"", "01/06/2010"}},
        {"From1 the day before To1", From1, {"31/5/10", "01/06/2010"}, {"31/05/2010", "01/06/2010"}},
        {"To1 before From1", To1, {"01/06/2010", "31/5/10"}, {"01/06/2010", ""}},
        {"To1 alone", To1, {"", "6/4/10"}, {"", "06/04/2010"}},
        {"From1 alone on the last day", From1, {"5/4/11"}, {"05/04/2011"}},
        // The second period.
        {"From2 without a first pair", From2, {"", "", "1/6/10"}, {}},
        {"From2 with From1", From2, {"06/04/2010", "", "1/6/10"}, {"06/04/2010", "", "01/06/2010"}},
        {"From2 with To1", From2, {"", "31/12/2010", "1/6/10"}, {"", "31/12/2010", "01/06/2010"}},
        {"To2 needs no first pair", To2, {"", "", "", "1/6/10"}, {"", "", "", "01/06/2010"}},
        {"29 days", To2, {"06/04/2010", "", "01/06/2010", "29/6/10"}, {"06/04/2010", "", "01/06/2010", ""}},
        {"30 days", To2, {"06/04/2010", "", "01/06/2010", "30/6/10"}, {"06/04/2010", "", "01/06/2010", "30/06/2010"}},
        {"29 days by the first date",
         From2,
         {"06/04/2010", "", "2/6/10", "30/06/2010"},
         {"06/04/2010", "", "", "30/06/2010"}},
        {"reversed", To2, {"06/04/2010", "", "01/06/2010", "1/5/10"}, {"06/04/2010", "", "01/06/2010", ""}},
        {"From2 before From1", From2, {"01/06/2010", "", "31/5/10"}, {"01/06/2010", ""}},
        {"From2 on From1", From2, {"01/06/2010", "", "1/6/10"}, {"01/06/2010", "", "01/06/2010"}},
        {"From2 28 days before To1", From2, {"", "29/06/2010", "1/6/10"}, {"", "29/06/2010"}},
        {"From2 29 days before To1", From2, {"", "30/06/2010", "1/6/10"}, {"", "30/06/2010", "01/06/2010"}},
        {"From2 28 days before the end of the year", From2, {"06/04/2010", "", "8/3/11"}, {"06/04/2010"}},
        {"From2 29 days before the end of the year",
         From2,
         {"06/04/2010", "", "7/3/11"},
         {"06/04/2010", "", "07/03/2011"}},
        {"To2 after To1", To2, {"", "31/12/2010", "", "1/1/11"}, {"", "31/12/2010"}},
        {"To2 on To1", To2, {"", "31/12/2010", "", "31/12/10"}, {"", "31/12/2010", "", "31/12/2010"}},
        {"To2 on From1", To2, {"01/06/2010", "", "", "1/6/10"}, {"01/06/2010"}},
        {"To2 on the first day of the year", To2, {"", "31/12/2010", "", "6/4/10"}, {"", "31/12/2010"}},
        {"To2 after From3 takes the third period away",
         To2,
         {"06/04/2010", "", "01/06/2010", "2/8/10", "01/08/2010", "31/08/2010"},
         {"06/04/2010", "", "01/06/2010", "02/08/2010", "", ""}},
        {"To2 on From3",
         To2,
         {"06/04/2010", "", "01/06/2010", "1/8/10", "01/08/2010", "31/08/2010"},
         {"06/04/2010", "", "01/06/2010", "01/08/2010", "01/08/2010", "31/08/2010"}},
        // The third period.
        {"From3 without a second period", From3, {"06/04/2010", "", "", "", "1/8/10"}, {"06/04/2010"}},
        {"From3 with To2",
         From3,
         {"06/04/2010", "", "", "30/06/2010", "1/8/10"},
         {"06/04/2010", "", "", "30/06/2010", "01/08/2010"}},
        {"third of 29 days",
         To3,
         {"06/04/2010", "", "01/06/2010", "30/06/2010", "01/08/2010", "29/8/10"},
         {"06/04/2010", "", "01/06/2010", "30/06/2010", "01/08/2010", ""}},
        {"third of 30 days",
         To3,
         {"06/04/2010", "", "01/06/2010", "30/06/2010", "01/08/2010", "30/8/10"},
         {"06/04/2010", "", "01/06/2010", "30/06/2010", "01/08/2010", "30/08/2010"}},
        {"third of 29 days by the first date",
         From3,
         {"06/04/2010", "", "01/06/2010", "30/06/2010", "2/8/10", "30/08/2010"},
         {"06/04/2010", "", "01/06/2010", "30/06/2010", "", "30/08/2010"}},
        {"From3 28 days after From2",
         From3,
         {"06/04/2010", "", "01/06/2010", "", "29/6/10"},
         {"06/04/2010", "", "01/06/2010"}},
        {"From3 29 days after From2",
         From3,
         {"06/04/2010", "", "01/06/2010", "", "30/6/10"},
         {"06/04/2010", "", "01/06/2010", "", "30/06/2010"}},
        {"From3 before To2",
         From3,
         {"06/04/2010", "", "01/06/2010", "31/07/2010", "30/7/10"},
         {"06/04/2010", "", "01/06/2010", "31/07/2010"}},
        {"From3 on To2",
         From3,
         {"06/04/2010", "", "01/06/2010", "31/07/2010", "31/7/10"},
         {"06/04/2010", "", "01/06/2010", "31/07/2010", "31/07/2010"}},
        {"From3 28 days before To1",
         From3,
         {"", "29/08/2010", "01/06/2010", "30/06/2010", "1/8/10"},
         {"", "29/08/2010", "01/06/2010", "30/06/2010"}},
        {"From3 29 days before To1",
         From3,
         {"", "30/08/2010", "01/06/2010", "30/06/2010", "1/8/10"},
         {"", "30/08/2010", "01/06/2010", "30/06/2010", "01/08/2010"}},
        {"To3 before To2",
         To3,
         {"06/04/2010", "", "", "30/06/2010", "", "29/6/10"},
         {"06/04/2010", "", "", "30/06/2010"}},
        {"To3 on To2",
         To3,
         {"06/04/2010", "", "", "30/06/2010", "", "30/6/10"},
         {"06/04/2010", "", "", "30/06/2010", "", "30/06/2010"}},
        {"To3 after To1", To3, {"", "31/12/2010", "", "", "", "1/1/11"}, {"", "31/12/2010"}},
        {"To3 on To1", To3, {"", "31/12/2010", "", "", "", "31/12/10"}, {"", "31/12/2010", "", "", "", "31/12/2010"}},
        {"To3 on From1", To3, {"01/06/2010", "", "", "", "", "1/6/10"}, {"01/06/2010"}},
        // A changed first pair runs the later periods again.
        {"a later From1 takes the second period", From1, {"2/6/10", "", "01/06/2010", "30/06/2010"}, {"02/06/2010"}},
        {"an earlier To1 takes the third period alone",
         To1,
         {"", "29/8/10", "01/06/2010", "30/06/2010", "01/08/2010", "30/08/2010"},
         {"", "29/08/2010", "01/06/2010", "30/06/2010"}},
        {"with the second period the third goes too",
         From1,
         {"2/6/10", "", "01/06/2010", "30/06/2010", "01/08/2010", "30/08/2010"},
         {"02/06/2010"}},
        {"a half-filled period loses its one date", To1, {"", "15/6/10", "", "30/06/2010"}, {"", "15/06/2010"}},
        {"a first date that was emptied counts as changed", From1, {"rubbish", "", "01/06/2010", "30/06/2010"}, {}},
        {"the first pair cleared by hand", From1, {"", "", "01/06/2010", "30/06/2010"}, {}},
    };
    for (const EntryCase& c : cases) {
        VanDates before = Dates(c.now);
        before[c.left] = "07/04/2010"; // something else stood there
        EXPECT_EQ(LeaveVanDate(before, Dates(c.now), c.left), Dates(c.expected)) << c.name;
    }
}

TEST(VanDates, AnUnchangedFirstPairLeavesTheLaterPeriodsAlone)
{
    // Such a record does not come from the boxes, but a database may hold it.
    const VanDates misfit = Dates({"02/06/2010", "", "01/06/2010", "30/06/2010"});
    EXPECT_EQ(LeaveVanDate(misfit, misfit, From1), misfit);
    VanDates retyped = misfit;
    retyped[From1] = "2/6/10";
    EXPECT_EQ(LeaveVanDate(misfit, retyped, From1), misfit) << "the same day in another form is no change";
}

TEST(VanDates, AFirstDateThatWasEmptiedCountsAsChangedEvenWhereTheBoxWasEmpty)
{
    const VanDates before = Dates({"", "", "01/06/2010", "30/06/2010"});
    VanDates now = before;
    now[From1] = "31/6/10";
    EXPECT_EQ(LeaveVanDate(before, now, From1), Dates({}));
    EXPECT_EQ(LeaveVanDate(before, before, From1), before);
}

TEST(VanTotals, BothTotalsAddTheThreeVans)
{
    const VanTotals totals = TotalOfVans({"   3000.00", "   1500.00", ""}, {"    550.00", "", "    100.50"});
    EXPECT_EQ(totals.van, "   4500.00");
    EXPECT_EQ(totals.fuel, "    650.50");
    EXPECT_EQ(totals.storedVan, totals.van);
    EXPECT_EQ(totals.storedFuel, totals.fuel);
}

TEST(VanTotals, VanOneAloneDecidesWhatIsStored)
{
    const VanTotals totals = TotalOfVans({"", "   1500.00", ""}, {"", "    550.00", ""});
    EXPECT_EQ(totals.van, "   1500.00");
    EXPECT_EQ(totals.storedVan, "");
    EXPECT_EQ(totals.fuel, "    550.00");
    EXPECT_EQ(totals.storedFuel, "");
}

TEST(VanTotals, ARowInParenthesesCountsNothing)
{
    const VanTotals totals = TotalOfVans({"   3000.00", "", ""}, {"  (275.00)", "    550.00", ""});
    EXPECT_EQ(totals.fuel, "    550.00");
    EXPECT_EQ(totals.storedFuel, "    550.00") << "the row is not empty";
}

TEST(VanTotals, ATotalOfNoughtIsBlank)
{
    EXPECT_EQ(TotalOfVans({"", "", ""}, {"", "", ""}).van, "");
}

// ---- properties ----

using test::AnyDates;
using test::AnyVan;

RC_GTEST_PROP(VanBenefitProperty, TheChargeIsNeverNegative, ())
{
    RC_ASSERT(!VanBenefit(AnyVan()).M.IsNegative());
}

RC_GTEST_PROP(VanBenefitProperty, NoDayIsCountedTwice, ())
{
    VanFacts facts = AnyVan();
    facts.fuelTick = true;
    const VanWorking working = VanBenefit(facts);
    const VanDates& dates = working.dates;
    const Day start = *ReadDate(edition::TaxYearStart);
    const auto index = [&](VanDate box, int standIn) {
        return dates[box].empty() ? standIn : DaysBetween(start, *ReadDate(dates[box]));
    };
    const int to1 = index(To1, 364);
    const bool second = !dates[From2].empty() && !dates[To2].empty();
    const bool third = !dates[From3].empty() && !dates[To3].empty();
    // The two kept exceptions: periods that share a day, and a withdrawal after which no free day is left.
    const bool shared = second && third && dates[To2] == dates[From3];

    int unavailable = 0, noFuel = 0;
    for (int day = 0; day < 365; ++day) {
        const bool off = day < index(From1, 0) || day > to1 ||
                         (second && day >= index(From2, 0) && day <= index(To2, 0)) ||
                         (third && day >= index(From3, 0) && day <= index(To3, 0));
        unavailable += off;
        noFuel += off || (!dates[Withdrawn].empty() && day > index(Withdrawn, 0));
    }
    // A half-entered second period makes the count look at the day of withdrawal alone; nothing of it is in E.
    const bool onlyThird = third && !second;
    if (!shared && !onlyThird) {
        RC_ASSERT(working.E == unavailable);
        if (noFuel > unavailable)
            RC_ASSERT(working.S == noFuel);
    }
}

RC_GTEST_PROP(VanBenefitProperty, LeavingABoxAgainChangesNothing, ())
{
    const VanDates dates = AnyDates();
    for (const VanDate box : {From1, To1})
        RC_ASSERT(LeaveVanDate(dates, dates, box) == dates);
}

} // namespace
} // namespace quillmere
