#include "calculators/RelocationBenefit.h"

#include "AnyFacts.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace quillmere {
namespace {

TEST(RelocationBenefit, WhatExceedsTheExemptAmount)
{
    struct Case {
        RelocationFacts facts;
        const char *d, *e, *f;
    };
    for (const Case& c : {
             Case{{.ABox = "9000"}, "9000", "   8000.00", "   1000.00"},
             Case{{.ABox = "5000"}, "5000", "   8000.00", "Nil"},
             Case{{.ABox = "8000"}, "8000", "   8000.00", ""},
             Case{{.ABox = "6000", .QualExp = "3000"}, "6000", "   5000.00", "   1000.00"},
             Case{{.ABox = "100", .QualExp = "9000"}, "100", "Nil", "    100.00"},
             Case{{.ABox = "100", .QualExp = "8000"}, "100", "", "    100.00"},
             Case{{.ABox = "100", .QualExp = "8000.01"}, "100", "Nil", "    100.00"},
             Case{{.ABox = "9000", .EmployerCost = "400", .EmployeeCost = "100", .CBox = "50.50"},
                  "9350.50",
                  "   8000.00",
                  "   1350.50"},
             Case{{.EmployeeCost = "100"}, "-100", "   8000.00", "Nil"},
             Case{{.EmployeeCost = "100", .QualExp = "9000"}, "-100", "Nil", "Nil"},
         }) {
        const RelocationWorking working = RelocationBenefit(c.facts);
        EXPECT_TRUE(working.computed);
        EXPECT_EQ(working.D, ReadAmount(c.d)) << c.d;
        EXPECT_EQ(working.EText(), c.e) << c.d;
        EXPECT_EQ(working.FText(), c.f) << c.d;
    }
}

TEST(RelocationBenefit, BIsTheEmployersLessTheEmployeesCost)
{
    EXPECT_EQ(RelocationBenefit({.EmployerCost = "400", .EmployeeCost = ""}).B, Amount::WholePounds(400));
    EXPECT_EQ(RelocationBenefit({.EmployerCost = "", .EmployeeCost = "100"}).B, Amount::WholePounds(-100));
}

TEST(RelocationBenefit, LastYearsExpensesAloneComputeNothing)
{
    EXPECT_FALSE(RelocationBenefit({.QualExp = "3000"}).computed);
    EXPECT_TRUE(RelocationBenefit({.CBox = "0"}).computed);
}

TEST(RelocationBenefit, TheEmployeesCostIsNotAboveTheEmployers)
{
    EXPECT_FALSE(DoesEmployeeCostStand("500", "400"));
    EXPECT_TRUE(DoesEmployeeCostStand("400", "400.00"));
    EXPECT_TRUE(DoesEmployeeCostStand("", ""));
}

RC_GTEST_PROP(RelocationProperty, TheExemptAmountAndTheResultAreNeverNegative, ())
{
    const RelocationWorking working = RelocationBenefit(test::AnyRelocation());
    RC_ASSERT(!working.E.IsNegative());
    RC_ASSERT(!working.F.IsNegative());
}

} // namespace
} // namespace quillmere
