#include "calculators/MileageBenefit.h"

#include "AnyFacts.h"
#include "edition/Edition.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace quillmere {
namespace {

Amount Approved(Vehicle vehicle, std::string miles)
{
    return MileageBenefit({.vehicle = vehicle, .DBox = std::move(miles)}).J;
}

TEST(MileageBenefit, ApprovedAmountsByVehicleAndBand)
{
    using enum Vehicle;
    struct Case {
        Vehicle vehicle;
        const char *miles, *approved;
    };
    for (const Case& c : {
             Case{CarOrVan, "", "0"},
             Case{CarOrVan, "10000", "4000"},
             Case{CarOrVan, "12000", "4500"},
             Case{CarOrVan, "10000.5", "4000.125"},
             Case{CarOrVan, "99.5", "40"},
             Case{CarOrVan, "100.5", "40"},
             Case{CarOrVan, "101.5", "40.80"},
             Case{CarOrVan, "9999.6", "4000"},
             Case{Motorcycle, "20000", "4800"},
             Case{Motorcycle, "100", "24"},
             Case{Bicycle, "20000", "4000"},
             Case{Bicycle, "15", "3"},
         })
        EXPECT_EQ(Approved(c.vehicle, c.miles), ReadAmount(c.approved)) << c.miles;
}

TEST(MileageBenefit, MilesAboveTheFirstBandShowTheirDecimals)
{
    EXPECT_EQ(AmountText(Approved(Vehicle::CarOrVan, "10000.5"), edition::FormatMoneyBlankZero), "   4000.13");
}

TEST(MileageBenefit, MilesAreDividedByAHundredBeforeTheyMeetTheRate)
{
    // 13.625 x 25p is 3.40625, a tie at the fourth decimal that the other order would bring to 3.4062.
    EXPECT_EQ(Approved(Vehicle::CarOrVan, "10013.625"), ReadAmount("4003.4063"));
}

TEST(MileageBenefit, WhatIsPaidAboveTheApprovedAmountIsTaxable)
{
    const MileageWorking working = MileageBenefit({.ABox = "5000", .DBox = "12000"});
    EXPECT_EQ(working.taxableMileage, Amount::WholePounds(500));
    EXPECT_EQ(working.Q, Amount::WholePounds(500));
}

TEST(MileageBenefit, AmountsTaxedAlreadyAreTakenOff)
{
    EXPECT_EQ(MileageBenefit({.ABox = "5000", .BBox = "300", .DBox = "12000"}).Q, Amount::WholePounds(200));
    const MileageWorking working = MileageBenefit({.ABox = "100", .BBox = "200"});
    EXPECT_EQ(working.C, Amount());
    EXPECT_EQ(working.Q, Amount());
}

TEST(MileageBenefit, AShortfallOnMilesIsNotSetAgainstPassengers)
{
    const MileageWorking working = MileageBenefit({.ABox = "100", .DBox = "5000", .KBox = "100", .LBox = "1000"});
    EXPECT_EQ(working.M, Amount::WholePounds(50));
    EXPECT_EQ(working.taxableMileage, Amount());
    EXPECT_EQ(working.taxablePassengers, Amount::WholePounds(50));
    EXPECT_EQ(working.Q, Amount::WholePounds(50));
}

TEST(MileageBenefit, PassengerMilesKeepTheirDecimals)
{
    EXPECT_EQ(MileageBenefit({.LBox = "10.5"}).M, ReadAmount("0.525"));
}

TEST(MileageTotal, TheThreeVehiclesAreAdded)
{
    const MileageTotal total = TotalOfMileage({"    500.00", "     50.25", ""});
    EXPECT_EQ(total.box, "    550.25");
    EXPECT_EQ(total.stored, "550.25") << "stored without padding";
}

TEST(MileageTotal, VehicleOneAloneDecidesWhatIsStored)
{
    const MileageTotal total = TotalOfMileage({"", "     50.25", "1"});
    EXPECT_EQ(total.box, "     51.25");
    EXPECT_EQ(total.stored, "");
    EXPECT_EQ(TotalOfMileage({"", "", ""}).box, "");
}

RC_GTEST_PROP(MileageProperty, TheTaxableAmountIsNeverNegative, ())
{
    const MileageWorking working = MileageBenefit(test::AnyMileage());
    RC_ASSERT(!working.Q.IsNegative());
    RC_ASSERT(working.Q == working.taxableMileage + working.taxablePassengers);
}

} // namespace
} // namespace quillmere
