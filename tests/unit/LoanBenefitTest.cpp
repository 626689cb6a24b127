#include "calculators/LoanBenefit.h"

#include "AnyFacts.h"
#include "edition/Edition.h"
#include "edition/LoanRates.h"
#include "frame/Dates.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

namespace quillmere {
namespace {

/// A loan of 10,000 all through the year at the official rate.
LoanFacts PlainLoan()
{
    return {.ABox = "10000", .BBox = "10000", .interestRate = std::string(edition::OfficialRateOfInterest)};
}

TEST(LoanBenefit, ALoanOfTheWholeYear)
{
    const LoanWorking working = LoanBenefit(PlainLoan());
    EXPECT_TRUE(working.computed);
    EXPECT_EQ(working.C, Amount::WholePounds(20000));
    EXPECT_EQ(working.D, Amount::WholePounds(10000));
    EXPECT_EQ(working.E, 12);
    EXPECT_EQ(working.interest, Amount::WholePounds(400));
    EXPECT_EQ(working.cashEquivalent, Amount::WholePounds(400));
}

TEST(LoanBenefit, InterestPaidAboveTheInterestLeavesNothing)
{
    LoanFacts facts = PlainLoan();
    facts.interestPaid = "400.01";
    const LoanWorking working = LoanBenefit(facts);
    EXPECT_TRUE(working.computed) << "the box reads 0.00, not blank";
    EXPECT_EQ(working.cashEquivalent, Amount());
    facts.interestPaid = "100.01";
    EXPECT_EQ(LoanBenefit(facts).cashEquivalent, ReadAmount("299.99"));
}

TEST(LoanBenefit, WithoutBothBalancesNothingIsWorkedOut)
{
    for (const bool first : {true, false}) {
        LoanFacts facts = PlainLoan();
        (first ? facts.ABox : facts.BBox).clear();
        EXPECT_FALSE(LoanBenefit(facts).computed);
    }
    LoanFacts nought = PlainLoan();
    nought.BBox = "0";
    EXPECT_TRUE(LoanBenefit(nought).computed) << "a nought is a balance";
    EXPECT_EQ(LoanBenefit(nought).D, Amount::WholePounds(5000));
}

TEST(LoanBenefit, AMaximumBelowTheOpeningBalanceIsEmptied)
{
    LoanFacts facts = PlainLoan();
    facts.BBox = "20000";
    facts.maxAmount = "9999.99";
    EXPECT_EQ(LoanBenefit(facts).maxAmount, Amount());
    facts.maxAmount = "10000";
    EXPECT_EQ(LoanBenefit(facts).maxAmount, Amount::WholePounds(10000)) << "it is not held against B";
}

TEST(LoanBenefit, QuotientsAreBroughtToFourDecimalsAndNoFurther)
{
    LoanFacts facts{.ABox = "1000.01", .BBox = "1000.02", .interestRate = "4.75", .dateFrom = "07/04/2010"};
    const LoanWorking working = LoanBenefit(facts);
    EXPECT_EQ(working.D, ReadAmount("1000.015"));
    EXPECT_EQ(working.E, 11);
    // 1000.015 x 11 / 12 = 916.680416..., kept as 916.6804; x 4.75 / 100 = 43.542319
    EXPECT_EQ(working.interest, ReadAmount("43.5423"));
}

TEST(LoanBenefit, TheRateIsMultipliedBeforeTheDivisionAndTheProductIsNotRounded)
{
    // 0.0242 x 4.75 = 0.11495: rounded there it would end as 0.0012.
    EXPECT_EQ(LoanBenefit({.ABox = "0.29", .BBox = "0", .interestRate = "4.75", .dateFrom = "06/02/2011"}).interest,
              ReadAmount("0.0011"));
    // 0.0312 x 6.25 / 100 = 0.00195: with the rate divided first it would end as 0.0020.
    EXPECT_EQ(LoanBenefit({.ABox = "0.25", .BBox = "0", .interestRate = "6.25", .dateFrom = "06/01/2011"}).interest,
              ReadAmount("0.0019"));
}

TEST(LoanBenefit, TheRateIsReadAsItStands)
{
    LoanFacts facts = PlainLoan();
    facts.interestRate = "";
    EXPECT_EQ(LoanBenefit(facts).cashEquivalent, Amount());
    facts.interestRate = "6.25";
    EXPECT_EQ(LoanBenefit(facts).interest, Amount::WholePounds(625));
}

TEST(LoanBenefit, CompleteTaxMonthsRunFromThe6thToThe5th)
{
    struct Case {
        const char *from, *to;
        int months;
    };
    for (const Case& c : {
             Case{"", "", 12},
             Case{"06/04/2010", "05/04/2011", 12},
             Case{"07/04/2010", "", 11},
             Case{"06/05/2010", "", 11},
             Case{"07/05/2010", "", 10},
             Case{"06/03/2011", "", 1},
             Case{"07/03/2011", "", 0},
             Case{"05/04/2011", "", 0},
             Case{"", "05/05/2010", 1},
             Case{"", "04/05/2010", 0},
             Case{"", "04/04/2011", 11},
             Case{"06/06/2010", "05/12/2010", 6},
             Case{"07/06/2010", "04/12/2010", 4},
             Case{"07/12/2010", "05/05/2010", 0},
         })
        EXPECT_EQ(CompleteTaxMonths(c.from, c.to), c.months) << c.from << " to " << c.to;
}

TEST(LoanBenefit, ALoanDischargedBeforeTheFirstMonthEndsIsWorthNothing)
{
    LoanFacts facts = PlainLoan();
    facts.dateTo = "04/05/2010";
    facts.interestPaid = "5";
    const LoanWorking working = LoanBenefit(facts);
    EXPECT_TRUE(working.computed);
    EXPECT_EQ(working.interest, Amount());
    EXPECT_EQ(working.cashEquivalent, Amount());
}

TEST(LoanDates, ADateLiesInTheYearAndInOrder)
{
    struct Case {
        LoanDate left;
        const char *text, *other, *expected;
    };
    using enum LoanDate;
    for (const Case& c : {
             Case{From, "6/5/10", "", "06/05/2010"},
             Case{From, "5/4/10", "", ""},
             Case{From, "6/4/11", "", ""},
             Case{From, "31/6/10", "", ""},
             Case{From, "", "", ""},
             Case{From, "1/6/10", "01/06/2010", ""},
             Case{From, "31/5/10", "01/06/2010", "31/05/2010"},
             Case{From, "5/4/11", "", ""},
             Case{To, "1/6/10", "01/06/2010", ""},
             Case{To, "2/6/10", "01/06/2010", "02/06/2010"},
             Case{To, "6/4/10", "", ""},
             Case{To, "7/4/10", "", "07/04/2010"},
             Case{To, "05/04/2011", "06/04/2010", "05/04/2011"},
         })
        EXPECT_EQ(LeaveLoanDate(c.left, c.text, c.other), c.expected) << c.text << " beside " << c.other;
}

/// A loan on the screen whose cash equivalent is the one given.
LoanTexts Loan(std::string cashEquivalent)
{
    return {"a", "b", "max", "", std::move(cashEquivalent), "from", "to"};
}

TEST(LoanPage, TwoLoansAreCopiedFieldByField)
{
    LoanTexts second = Loan("    10.00");
    second.interestPaid = "    5.00";
    const std::vector<PageField> expected = {
        {"HOutstand1", "a"},
        {"HOutsand20031", "b"},
        {"HMaxLoan1", "max"},
        {"HLoanInterest1", "Nil"},
        {"HLoanCashEqu1", "x"},
        {"HLoanDate1", "from"},
        {"HLoanDischarge1", "to"},
        {"HOutstand2", "a"},
        {"HOutsand20032", "b"},
        {"HMaxLoan2", "max"},
        {"HLoanInterest2", "    5.00"},
        {"HLoanCashEqu2", "    10.00"},
        {"HLoanDate2", "from"},
        {"HLoanDischarge2", "to"},
    };
    EXPECT_EQ(LoanPageFields({Loan("x"), second, {}, {}, {}}), expected);
}

TEST(LoanPage, WithoutCashEquivalentTheInterestIsEmptyToo)
{
    const auto fields = LoanPageFields({});
    EXPECT_EQ(fields.size(), 14U);
    for (const PageField& field : fields)
        EXPECT_EQ(field.text, "") << field.field;
}

TEST(LoanPage, AThirdLoanTurnsThePageToTheTotal)
{
    const std::vector<PageField> expected = {{"HLoanCashEqu1", "    610.50"}, {"HLoanCashEqu2", "See Attach"}};
    EXPECT_EQ(LoanPageFields({Loan("    400.00"), Loan("    100.25"), Loan("     10.25"), Loan(""), Loan("100")}),
              expected);
}

TEST(LoanPage, AThirdLoanOfNoughtStillTurnsThePage)
{
    const std::vector<PageField> expected = {{"HLoanCashEqu1", ""}, {"HLoanCashEqu2", "See Attach"}};
    EXPECT_EQ(LoanPageFields({Loan("      0.00"), Loan("      0.00"), Loan("      0.00"), {}, {}}), expected);
}

TEST(LoanPage, AFifthLoanWithoutAThirdDoesNot)
{
    EXPECT_EQ(LoanPageFields({Loan("1"), Loan("2"), {}, {}, Loan("5")}).size(), 14U);
}

TEST(LoanCurrencies, TheRateIsThatOfTheRowWithTheName)
{
    const std::vector<std::string> names{"Sterling", " Yen ", "", "Yen"}, rates{"4.00", "2.5", "9", "3"};
    EXPECT_EQ(RateOfCurrency(names, rates, " Yen "), "2.5") << "outer blanks are no part of a name";
    EXPECT_EQ(RateOfCurrency(names, rates, "Yen"), "2.5") << "the first row of the name";
    EXPECT_EQ(RateOfCurrency(names, rates, "Franc"), std::nullopt);
    EXPECT_EQ(RateOfCurrency(names, rates, ""), std::nullopt) << "nothing is chosen";
}

TEST(LoanCurrencies, ANameThatIsGoneFallsBackToTheFirstRow)
{
    const std::vector<std::string> names{"Sterling", "Yen"};
    EXPECT_EQ(PositionOfCurrency(names, "Yen"), 1U);
    EXPECT_EQ(PositionOfCurrency(names, "Franc"), 0U);
}

RC_GTEST_PROP(LoanBenefitProperty, TheCashEquivalentIsNeverNegativeAndTheMonthsAreOfAYear, ())
{
    const LoanWorking working = LoanBenefit(test::AnyLoan());
    RC_ASSERT(!working.cashEquivalent.IsNegative());
    RC_ASSERT(working.E >= 0);
    RC_ASSERT(working.E <= 12);
}

} // namespace
} // namespace quillmere
