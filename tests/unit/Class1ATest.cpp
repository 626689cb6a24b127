#include "declaration/Class1A.h"

#include "edition/Edition.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmere {
namespace {

using Texts = std::array<std::string_view, Class1AFields.size()>;

std::size_t PlaceOf(std::string_view field)
{
    const auto place = std::ranges::find(Class1AFields, field);
    EXPECT_NE(place, Class1AFields.end()) << field;
    return static_cast<std::size_t>(place - Class1AFields.begin());
}

/// An employee's texts of the total with those of a few fields filled in.
Texts Employee(std::initializer_list<std::pair<std::string_view, std::string_view>> filled)
{
    Texts texts{};
    for (const auto& [field, text] : filled)
        texts[PlaceOf(field)] = text;
    return texts;
}

TEST(Class1A, ThirteenFieldsMakeUpTheTotal)
{
    const Texts expected{"ACashEqu", "DCashEqu",      "FTotalCashCars", "FTotalCashFuel", "GVan",
                         "GVanFuel", "HLoanCashEqu1", "HLoanCashEqu2",  "ICashEqu",       "JRelocationExp",
                         "KCashEqu", "LCashEqu",      "NCashEqu1"};
    EXPECT_EQ(Class1AFields, expected);
    Texts ones;
    ones.fill("      1.00");
    EXPECT_EQ(Class1ABenefits(ones), Amount::WholePounds(13));
}

TEST(Class1A, TwoEmployeesWithAVanAndAnAsset)
{
    const Amount one = Class1ABenefits(Employee({{"ACashEqu", "    100.00"}, {"GVan", "   3000.00"}}));
    const Section1 section = ComputeSection1(one + one);
    EXPECT_EQ(section, (Section1{Amount::WholePounds(6200), ReadAmount("793.60")}));
}

TEST(Class1A, LoansThatDoNotFitOnThePageAreCountedOnce)
{
    EXPECT_EQ(Class1ABenefits(Employee({{"HLoanCashEqu1", "    500.00"}, {"HLoanCashEqu2", "See Attach"}})),
              Amount::WholePounds(500));
    EXPECT_EQ(Class1ABenefits(Employee({{"HLoanCashEqu1", "    100.00"}, {"HLoanCashEqu2", "    200.00"}})),
              Amount::WholePounds(300));
}

TEST(Class1A, WordsCountNothingAndParenthesesAreNegative)
{
    EXPECT_EQ(Class1ABenefits(Employee({{"JRelocationExp", "Nil"}})), Amount());
    EXPECT_EQ(Class1ABenefits(Employee({{"FTotalCashFuel", "  (360.00)"}, {"GVan", "   3000.00"}})),
              Amount::WholePounds(2640));
}

TEST(Class1A, TheAuthoritysExample)
{
    EXPECT_EQ(Class1AContributions(ReadAmount("156,500.00")), ReadAmount("20032.00"));
}

TEST(Class1A, ContributionsAreShownHalfAwayFromNought)
{
    // 0.039 x 12.8 / 100 = 0.004992, kept as 0.0050 and shown as a penny.
    const Amount contributions = Class1AContributions(ReadAmount("0.039"));
    EXPECT_EQ(contributions, ReadAmount("0.005"));
    EXPECT_EQ(AmountText(contributions, edition::FormatMoneyBlankZero), "      0.01");
}

TEST(Class1A, AdjustmentsEnterSectionFour)
{
    const Section4 section =
        ComputeSection4(Amount::WholePounds(1000), Amount::WholePounds(100), Amount::WholePounds(300));
    EXPECT_EQ(section.A, Amount::WholePounds(1000));
    EXPECT_EQ(section.D, Amount::WholePounds(800));
    EXPECT_EQ(section.F, ReadAmount("102.40"));
}

TEST(Class1A, ADeductionAboveTheTotalIsNegative)
{
    const Section4 section = ComputeSection4(Amount::WholePounds(100), Amount(), Amount::WholePounds(300));
    EXPECT_EQ(section.D, Amount::WholePounds(-200));
    EXPECT_EQ(AmountText(section.F, edition::FormatMoneyBlankZero), "   (25.60)");
}

TEST(Class1A, WithoutBenefitsNothingIsAdjusted)
{
    const Section4 section = ComputeSection4(Amount(), Amount::WholePounds(100), Amount::WholePounds(300));
    EXPECT_EQ(section, (Section4{.B = Amount::WholePounds(100), .C = Amount::WholePounds(300)}));
}

} // namespace
} // namespace quillmere
