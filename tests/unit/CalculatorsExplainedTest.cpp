#include "AnyFacts.h"
#include "calculators/AccommodationExplained.h"
#include "calculators/LoanExplained.h"
#include "calculators/MileageExplained.h"
#include "calculators/RelocationExplained.h"
#include "calculators/VanExplained.h"
#include "support/SumOfWords.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace quillmere::test {
namespace {

/// The sum and the figure of a box: "3,000 x 95 / 365, rounded up to whole pounds = 781".
std::string Told(const Explained& explained, std::string_view box)
{
    const ExplainedStep* step = explained.StepOf(box);
    return step == nullptr ? "no step" : step->SumInWords() + " = " + step->result;
}

/// The note about a figure: what the authority has, and where it says so.
std::string Noted(const Explained& explained, std::string_view figure)
{
    std::string noted;
    for (const ExplainedNote& note : explained.notes)
        if (note.about == figure)
            noted += note.result + ", " + note.source + ". ";
    return noted;
}

TEST(VanExplained, TellsAVanThatWasThereForAPartOfTheYear)
{
    VanFacts van{.registrationNumber = "AB10 CDE", .percentage = "30", .payments = "100", .fuelTick = true};
    van.dates[VanDate::To1] = "31/12/2010";
    van.dates[VanDate::Withdrawn] = "30/11/2010";
    const Explained explained = ExplainVan(van);
    EXPECT_EQ(Told(explained, "BBox"), "(01/01/2011 to 05/04/2011) = 95");
    EXPECT_EQ(Told(explained, "FBox"), "3,000 x 95 / 365, rounded up to whole pounds = 781");
    EXPECT_EQ(Told(explained, "MBox"), "1,553 - 100, at least 0 = 1,453");
    EXPECT_EQ(Told(explained, "RBox"), "(01/12/2010 to 31/12/2010) = 31");
    EXPECT_EQ(Told(explained, "XBox"), "360 - 108 = 252");
}

TEST(LoanExplained, TellsTheAverageMonthByMonth)
{
    const LoanFacts loan{.ABox = "9500", .BBox = "10100", .interestRate = "4.00", .interestPaid = "100"};
    const Explained explained = ExplainLoan(loan);
    EXPECT_EQ(Told(explained, "DBox"), "19,600 / 2 = 9,800");
    EXPECT_EQ(Told(explained, "CashEq"), "392 - 100, at least 0 = 292");
    EXPECT_EQ(explained.StepOf("EBox")->says,
              "Complete tax months, each from the 6th to the 5th, between 06/04/2010 and 05/04/2011");
    EXPECT_EQ(Noted(explained, "cash equivalent"), "");
}

TEST(LoanExplained, NotesThePenceAndTheSmallLoan)
{
    EXPECT_EQ(Noted(ExplainLoan({.ABox = "20000", .BBox = "16000", .interestRate = "4.83", .dateTo = "20/08/2010"}),
                    "cash equivalent"),
              "289, EIM26221, EIM26311. ");
    EXPECT_EQ(Noted(ExplainLoan({.ABox = "5000", .BBox = "5000", .interestRate = "4"}), "cash equivalent"),
              "0, ITEPA 2003 s.180. ");
    EXPECT_EQ(Noted(ExplainLoan({.ABox = "3000", .BBox = "3000", .interestRate = "4"}, Amount::WholePounds(2000)),
                    "cash equivalent"),
              "0, ITEPA 2003 s.180. ");
    EXPECT_EQ(Noted(ExplainLoan({.ABox = "3000", .BBox = "3000", .interestRate = "4"}, Amount::WholePounds(2001)),
                    "cash equivalent"),
              "")
        << "all loans together count";
    EXPECT_EQ(Noted(ExplainLoan({.ABox = "5000", .BBox = "5001", .interestRate = "4"}), "cash equivalent"),
              "200, EIM26221, EIM26311. ");
}

TEST(VanExplained, NamesTheSectionsForDaysWithoutFuelAndForSharing)
{
    const Explained explained = ExplainVan({.registrationNumber = "V1", .percentage = "30", .fuelTick = true});
    EXPECT_EQ(explained.StepOf("TBox")->source, "ITEPA 2003 s.163");
    EXPECT_EQ(explained.StepOf("WBox")->source, "ITEPA 2003 s.164");
}

TEST(CalculatorsExplained, NameTheSectionThatTakesOffOrAddsEachFigure)
{
    EXPECT_EQ(ExplainVan({.registrationNumber = "V1"}).StepOf("MBox")->source, "ITEPA 2003 s.154, s.158");
    const Explained loan = ExplainLoan({.ABox = "9000", .BBox = "9000", .interestRate = "4"});
    EXPECT_EQ(loan.StepOf("DBox")->source, "ITEPA 2003 s.182 step 1");
    EXPECT_EQ(loan.StepOf("EBox")->source, "ITEPA 2003 s.182 step 3");
    EXPECT_EQ(loan.StepOf("CashEq")->source, "ITEPA 2003 s.175(3)");
    const Explained move = ExplainRelocation({.CBox = "9000"});
    const auto accommodation = std::ranges::find(move.steps, "C", &ExplainedStep::name);
    EXPECT_EQ(accommodation->source, "ITEPA 2003 s.287(5)") << "s.288 is about bridging loans";
}

TEST(AccommodationExplained, NotesWhatIsMadeGoodAboveTheValue)
{
    const Explained explained = ExplainBasicCharge({.BasicChargeB = "1000", .BasicChargeD = "1250"}, "");
    EXPECT_EQ(Told(explained, "BasicChargeC"), "the larger of 0 and 1,000 = 1,000");
    EXPECT_EQ(Told(explained, "BasicChargeE"), "1,000 = 1,000");
    EXPECT_EQ(Noted(explained, "E"), "0, ITEPA 2003 s.105(5). ");
    EXPECT_EQ(Noted(ExplainBasicCharge({.BasicChargeB = "1000", .BasicChargeD = "1000"}, ""), "E"), "");
    // Once D has been cut back, the box still shows the whole charge.
    const Explained shown = ExplainBasicCharge({.BasicChargeB = "1000", .BasicChargeD = "1000"}, "   1000.00");
    EXPECT_EQ(shown.StepOf("BasicChargeE")->result, "1,000");
}

TEST(AccommodationExplained, NotesTheDivisorAndTheHeadedRate)
{
    const Explained explained = ExplainAdditionalCharge({.FBox = "100000", .AddChargeDays = "183"});
    EXPECT_EQ(Told(explained, "LBox"), "1,000 x 183 / 366 = 500");
    EXPECT_EQ(Noted(explained, "L"), "501.3699, ITEPA 2003 s.106, P11D WS1. ");
    EXPECT_EQ(Noted(explained, "K"), "4, EIM26104. ");
}

TEST(MileageExplained, TellsBothBands)
{
    const Explained explained = ExplainMileage({.ABox = "5320", .DBox = "14000", .KBox = "6", .LBox = "200"});
    EXPECT_EQ(Told(explained, "JBox"), "10,000 x 40 / 100 + (14,000 - 10,000) x 25 / 100 = 5,000");
    EXPECT_EQ(Told(explained, "QBox"), "320 + 0 = 320");
    const Explained rounded = ExplainMileage({.DBox = "99.6"});
    EXPECT_EQ(Told(rounded, "JBox"), "100 x 40 / 100 = 40");
}

TEST(RelocationExplained, TellsNilAsTheBoxReadsIt)
{
    const Explained explained = ExplainRelocation({.ABox = "9000"});
    EXPECT_EQ(Told(explained, "FBox"), "9,000 - 8,000, at least 0 = 1,000");
    EXPECT_EQ(Told(ExplainRelocation({.ABox = "7000"}), "FBox"), "7,000 - 8,000, at least 0 = Nil");
}

// ---- the contract ----

RC_GTEST_PROP(CalculatorsExplained, EverySumGivesTheRulesFigure, ())
{
    VanFacts van = AnyVan();
    if (*rc::gen::inRange(0, 5) == 0)
        van.registrationNumber.clear();
    RC_ASSERT(FaultOf(ExplainVan(van)) == "");
    LoanFacts loan = AnyLoan();
    if (*rc::gen::inRange(0, 5) == 0)
        loan.BBox.clear();
    RC_ASSERT(FaultOf(ExplainLoan(loan)) == "");
    BasicChargeFacts basic = AnyBasicCharge();
    RC_ASSERT(FaultOf(ExplainBasicCharge(basic, *rc::gen::arbitrary<bool>() ? basic.BasicChargeB : "")) == "");
    RC_ASSERT(FaultOf(ExplainAdditionalCharge(AnyAdditionalCharge())) == "");
    MileageFacts mileage = AnyMileage();
    mileage.DBox += "." + AnyPounds(100);
    RC_ASSERT(FaultOf(ExplainMileage(mileage)) == "");
    RC_ASSERT(FaultOf(ExplainRelocation(AnyRelocation())) == "");
}

TEST(CalculatorsExplained, TellWhatIsMissingWhereNothingIsEntered)
{
    for (const Explained& explained : {ExplainVan({}), ExplainLoan({}), ExplainBasicCharge({}, ""),
                                       ExplainAdditionalCharge({}), ExplainMileage({}), ExplainRelocation({})})
        EXPECT_EQ(FaultOf(explained), "");
    EXPECT_EQ(ExplainLoan({}).StepOf("CashEq")->says, "Both balances are needed before anything is worked out");
}

} // namespace
} // namespace quillmere::test
