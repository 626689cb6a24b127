#include "calculators/AccommodationBenefit.h"

#include "AnyFacts.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace quillmere {
namespace {

Amount Pounds(std::int64_t pounds)
{
    return Amount::WholePounds(pounds);
}

TEST(BasicCharge, TheGreaterOfRentAndValueLessWhatWasMadeGood)
{
    struct Case {
        const char *a, *b, *d;
        int c, madeGood, e;
    };
    for (const Case& x : {
             Case{"5000", "3000", "", 5000, 0, 5000},
             Case{"3000", "5000", "", 5000, 0, 5000},
             Case{"", "4000", "", 4000, 0, 4000},
             Case{"5000", "", "1500", 5000, 1500, 3500},
             Case{"5000", "", "5000", 5000, 5000, 0},
             Case{"0", "", "", 0, 0, 0},
         }) {
        const BasicChargeWorking working = BasicCharge({x.a, x.b, x.d});
        EXPECT_TRUE(working.computed);
        EXPECT_EQ(working.C, Pounds(x.c)) << x.a << '/' << x.b;
        EXPECT_EQ(working.D, Pounds(x.madeGood)) << x.a << '/' << x.b;
        EXPECT_EQ(working.E, Pounds(x.e)) << x.a << '/' << x.b;
    }
}

TEST(BasicCharge, AnAmountMadeGoodAboveCIsCutAndEStaysAtC)
{
    const BasicChargeWorking working = BasicCharge({"5000", "", "6000"});
    EXPECT_EQ(working.D, Pounds(5000));
    EXPECT_EQ(working.E, Pounds(5000));
    // The next run starts from the boxes, where D now equals C.
    EXPECT_EQ(BasicCharge({"   5000.00", "", "   5000.00"}).E, Amount());
}

TEST(BasicCharge, ANegativeChargeIsNothing)
{
    const BasicChargeWorking working = BasicCharge({"(500)", "(600)", ""});
    EXPECT_EQ(working.C, Pounds(-500));
    EXPECT_EQ(working.D, Pounds(-500)) << "nothing made good lies above a negative C";
    EXPECT_EQ(working.E, Amount());
}

TEST(BasicCharge, WithBothEmptyNothingIsWorkedOut)
{
    EXPECT_FALSE(BasicCharge({"", "", "100"}).computed);
}

TEST(AdditionalCharge, FourPerCentOfTheCostAboveTheLimit)
{
    const AdditionalChargeWorking working = AdditionalCharge({.FBox = "100000"});
    EXPECT_EQ(working.H, Pounds(100000));
    EXPECT_EQ(working.J, Pounds(25000));
    EXPECT_EQ(working.K, Pounds(1000));
    EXPECT_EQ(working.L, Amount());
    EXPECT_EQ(working.Q, Pounds(1000));
    EXPECT_EQ(working.R, Pounds(1000));
}

TEST(AdditionalCharge, APartOfTheYearIsDividedBy366)
{
    const AdditionalChargeWorking working = AdditionalCharge({.FBox = "100000", .AddChargeDays = "183"});
    EXPECT_EQ(working.L, Pounds(500));
    EXPECT_EQ(working.Q, Pounds(500));
    EXPECT_EQ(AdditionalCharge({.FBox = "100000", .AddChargeDays = "365"}).L, ReadAmount("997.2678"));
    EXPECT_EQ(AdditionalCharge({.FBox = "100000", .AddChargeDays = "366"}).L, Pounds(1000));
}

TEST(AdditionalCharge, DaysAreDividedBeforeTheyAreMultiplied)
{
    // K is 0.0021 and a sixth of it 0.00035, a tie at the fourth decimal that the other order would bring to 0.0004.
    const AdditionalChargeWorking working = AdditionalCharge({.FBox = "75000.052", .AddChargeDays = "61"});
    EXPECT_EQ(working.K, ReadAmount("0.0021"));
    EXPECT_EQ(working.L, ReadAmount("0.0003"));
}

TEST(AdditionalCharge, ACostBelowTheLimitLeavesTheEnteredBoxesAlone)
{
    for (const char* cost : {"74999", "74999.99", "0"}) {
        const AdditionalChargeWorking working =
            AdditionalCharge({.FBox = cost, .AddChargeDays = "10", .MBox = "100", .NBox = "200", .EBox = "300"});
        EXPECT_TRUE(working.computed);
        EXPECT_EQ(working.J, Amount());
        EXPECT_EQ(working.K, Amount());
        EXPECT_EQ(working.days, 10);
        EXPECT_EQ(working.M, Pounds(100)) << "not cut to nothing here";
        EXPECT_EQ(working.N, Pounds(200));
        EXPECT_EQ(working.E, Pounds(300));
        for (const Amount computed : {working.L, working.P, working.Q, working.R})
            EXPECT_TRUE(computed.IsZero()) << cost;
    }
}

TEST(AdditionalCharge, ACostOfExactlyTheLimitRunsOn)
{
    const AdditionalChargeWorking working = AdditionalCharge({.FBox = "80000", .GBox = "5000", .EBox = "300"});
    EXPECT_EQ(working.H, Pounds(75000));
    EXPECT_EQ(working.J, Amount());
    EXPECT_EQ(working.R, Pounds(300)) << "the basic charge comes through";
}

TEST(AdditionalCharge, PaymentsAboveTheCostLeaveNoCost)
{
    EXPECT_EQ(AdditionalCharge({.FBox = "100", .GBox = "200"}).H, Amount());
    EXPECT_TRUE(AdditionalCharge({.GBox = "200"}).computed);
    EXPECT_FALSE(AdditionalCharge({.AddChargeDays = "5", .MBox = "200"}).computed);
}

TEST(AdditionalCharge, RentBelowWhatTheBasicChargeHoldsGoesBlank)
{
    const AdditionalChargeWorking working = AdditionalCharge({.FBox = "100000", .MBox = "100", .NBox = "200"});
    EXPECT_EQ(working.M, Amount());
    EXPECT_EQ(working.P, Amount());
    EXPECT_EQ(working.Q, Pounds(1000));
}

TEST(AdditionalCharge, RentIsTakenOffAndTheChargeIsNeverNegative)
{
    const AdditionalChargeWorking working =
        AdditionalCharge({.FBox = "100000", .MBox = "700.50", .NBox = "200", .EBox = "50"});
    EXPECT_EQ(working.P, ReadAmount("500.50"));
    EXPECT_EQ(working.Q, ReadAmount("499.50"));
    EXPECT_EQ(working.R, ReadAmount("549.50"));
    EXPECT_EQ(AdditionalCharge({.FBox = "100000", .MBox = "5000"}).Q, Amount());
}

TEST(AdditionalCharge, TheBoxesAreCheckedWhenTheyAreLeft)
{
    EXPECT_TRUE(IsCostTooLow("74999.99"));
    EXPECT_TRUE(IsCostTooLow(""));
    EXPECT_FALSE(IsCostTooLow("75000"));
    EXPECT_FALSE(AreDaysOutOfRange("366"));
    EXPECT_TRUE(AreDaysOutOfRange("367"));
    EXPECT_FALSE(AreDaysOutOfRange(""));
}

TEST(AccommodationTotal, ThePageShowsBothCharges)
{
    EXPECT_EQ(AccommodationTotalText("   5000.00", "   1000.00"), "   6000.00");
    EXPECT_EQ(AccommodationTotalText("", "   1000.00"), "   1000.00");
    EXPECT_EQ(AccommodationTotalText("", ""), "");
}

RC_GTEST_PROP(AccommodationProperty, NeitherChargeIsNegative, ())
{
    RC_ASSERT(!BasicCharge(test::AnyBasicCharge()).E.IsNegative());
    RC_ASSERT(!AdditionalCharge(test::AnyAdditionalCharge()).Q.IsNegative());
}

} // namespace
} // namespace quillmere
