#include "frame/Amount.h"

#include "edition/Edition.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace quillmere {
namespace {

using edition::FormatMoneyBlankZero;
using edition::FormatMoneyZero;
using edition::FormatPrintMoneyBlankZero;

constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t Smallest = std::numeric_limits<std::int64_t>::min();

Amount Units(std::int64_t tenThousandths)
{
    return Amount::FromUnits(tenThousandths);
}

TEST(Amount, SumsAndProductsAreExact)
{
    EXPECT_EQ(ReadAmount("0.1") + ReadAmount("0.2"), ReadAmount("0.3"));
    EXPECT_EQ(ReadAmount("819.98") * 5, ReadAmount("4099.90"));
    EXPECT_EQ(20 * Amount::WholePounds(16), Amount::WholePounds(320));
    EXPECT_EQ(-ReadAmount("1.5"), ReadAmount("-1.5"));
    EXPECT_LT(ReadAmount("-1"), ReadAmount("0.0001"));
    EXPECT_TRUE(Amount().IsZero());
    EXPECT_TRUE(ReadAmount("-0.0001").IsNegative());
    EXPECT_DOUBLE_EQ(ReadAmount("12.3456").Pounds(), 12.3456);
}

TEST(Amount, WhatDoesNotFitIsHeldAtTheBound)
{
    EXPECT_EQ((Units(Largest) + Units(1)).Units(), Largest);
    EXPECT_EQ((Units(Smallest) + Units(-1)).Units(), Smallest);
    EXPECT_EQ((Units(Smallest) - Units(1)).Units(), Smallest);
    EXPECT_EQ((Units(Largest) - Units(-1)).Units(), Largest);
    EXPECT_EQ((Units(Largest) * 2).Units(), Largest);
    EXPECT_EQ((Units(Largest) * -2).Units(), Smallest);
    EXPECT_EQ((Units(Smallest) * -1).Units(), Largest);
    EXPECT_EQ((-Units(Smallest)).Units(), Largest);
    EXPECT_EQ(Amount::WholePounds(Largest).Units(), Largest);
    EXPECT_EQ(Amount::WholePounds(Smallest).Units(), Smallest);
    EXPECT_EQ(Amount::FromDouble(1e300).Units(), Largest);
    EXPECT_EQ(Amount::FromDouble(-1e300).Units(), Smallest);
    EXPECT_EQ(Amount::FromDouble(std::numeric_limits<double>::infinity()).Units(), Largest);
    EXPECT_TRUE(Amount::FromDouble(std::numeric_limits<double>::quiet_NaN()).IsZero());
    EXPECT_EQ(ReadAmount("99999999999999999999").Units(), Largest);
    EXPECT_EQ(ReadAmount("-99999999999999999999").Units(), Smallest);
    EXPECT_EQ(ReadAmount("922337203685477.5807").Units(), Largest);
    EXPECT_EQ(ReadAmount("922337203685477.5808").Units(), Largest);
    EXPECT_EQ(ReadAmount("-922337203685477.5808").Units(), Smallest);
}

TEST(Amount, FloatingPointNumbersGoToTheEvenFourthDecimal)
{
    EXPECT_EQ(Amount::FromDouble(0.00025).Units(), 2);
    EXPECT_EQ(Amount::FromDouble(0.00035).Units(), 4);
    EXPECT_EQ(Amount::FromDouble(-0.00025).Units(), -2);
    EXPECT_EQ(Amount::FromDouble(12.34567).Units(), 123457);
}

TEST(Amount, TheCutAfterADivisionIsMadeInFloatingPoint)
{
    // 819.98 x 5 / 100 + 0.001 falls just short of 41 in doubles: no rescue by exact arithmetic.
    EXPECT_EQ(IntPounds((ReadAmount("819.98") * 5).Pounds() / 100, 0.001), Amount::WholePounds(40));
    EXPECT_EQ(IntPounds(3199.9995, 0.001), Amount::WholePounds(3200));
    EXPECT_EQ(IntPounds(12.999), Amount::WholePounds(12));
    EXPECT_EQ(IntPounds(-0.5), Amount::WholePounds(-1));
    EXPECT_EQ(IntPounds(7.0, 0.999), Amount::WholePounds(7));
    EXPECT_EQ(IntPounds(7.5, 0.999), Amount::WholePounds(8));
}

TEST(Amount, TypedTextReadsAsAnAmount)
{
    struct Case {
        std::string_view text;
        std::int64_t units;
    };
    for (const Case& c : {
             Case{"", 0},
             Case{"   ", 0},
             Case{"250", 2500000},
             Case{"    250.00", 2500000},
             Case{"12.34", 123400},
             Case{".5", 5000},
             Case{"5.", 50000},
             Case{".", 0},
             Case{"1,234,567.89", 12345678900},
             Case{"1,2,3", 1230000},
             Case{"(12.50)", -125000},
             Case{"-12.50", -125000},
             Case{"(-5)", -50000},
             Case{"-(5)", 0},
             Case{"5-", 50000},
             Case{"--5", 0},
             Case{"(100000.00", 0}, // what the cut to ten characters leaves of a large negative figure
             Case{"((5))", 0},
             Case{"( 5)", 0},
             Case{"()", 0},
             Case{"(", 0},
             Case{"+5", 0},
             Case{"£5", 0},
             Case{"abc", 0},
             Case{"12abc", 120000},
             Case{"1e5", 10000},
             Case{"1 000", 10000},
             Case{"1.2.3", 12000},
             Case{"Nil", 0},
             Case{"\t5", 0},
             Case{"00012", 120000},
             Case{"5\xC2\xA3", 50000},
         })
        EXPECT_EQ(ReadAmount(c.text).Units(), c.units) << '"' << c.text << '"';
}

TEST(Amount, ATieAtTheFourthDecimalIsJudgedOnTheText)
{
    struct Case {
        std::string_view text;
        std::int64_t units;
    };
    for (const Case& c : {
             Case{"0.00005", 0},
             Case{"0.00015", 2},
             Case{"0.00025", 2},
             Case{"1.00495", 10050},
             Case{"1.00485", 10048},
             Case{"-0.00025", -2},
             Case{"-0.00035", -4},
             Case{"0.00024999999999999999999999999999", 2},
             Case{"0.00025000000000000000000000000001", 3},
             Case{"0.00034999999999999999999999999999", 3},
             Case{"0.0002,5", 2},
         })
        EXPECT_EQ(ReadAmount(c.text).Units(), c.units) << c.text;
}

TEST(Amount, ZeroDisplaysAsNothingWhereTheFormatSaysSo)
{
    for (const auto format : {FormatMoneyBlankZero, FormatPrintMoneyBlankZero}) {
        EXPECT_EQ(FormatAmount(Amount(), format), "");
        EXPECT_EQ(FormatAmount(ReadAmount(""), format), "");
        EXPECT_EQ(FormatAmount(ReadAmount("0.00"), format), "");
        EXPECT_EQ(AmountText(Amount(), format), "");
    }
    EXPECT_EQ(FormatAmount(Amount(), FormatMoneyZero), "0.00");
    EXPECT_EQ(AmountText(Amount(), FormatMoneyZero), "      0.00");
}

TEST(Amount, FormatsShowPenceAndParentheses)
{
    struct Case {
        std::string_view text, format, shown;
    };
    for (const Case& c : {
             Case{"250", FormatMoneyBlankZero, "250.00"},
             Case{"0.05", FormatMoneyBlankZero, "0.05"},
             Case{".5", FormatMoneyZero, "0.50"},
             Case{"-12.5", FormatMoneyBlankZero, "(12.50)"},
             Case{"-12.5", FormatMoneyZero, "(12.50)"},
             Case{"-1234567.891", FormatMoneyZero, "(1234567.89)"},
             Case{"123456789012", FormatMoneyBlankZero, "123456789012.00"},
             Case{"1234567.89", FormatPrintMoneyBlankZero, "1,234,567.89"},
             Case{"1234567890", FormatPrintMoneyBlankZero, "1,234,567,890.00"},
             Case{"123456", FormatPrintMoneyBlankZero, "123,456.00"},
             Case{"999.99", FormatPrintMoneyBlankZero, "999.99"},
             Case{"-1000", FormatPrintMoneyBlankZero, "(1,000.00)"},
         })
        EXPECT_EQ(FormatAmount(ReadAmount(c.text), c.format), c.shown) << c.text;
}

TEST(Amount, HalfAPennyGoesAwayFromZeroAfterTheFourDecimals)
{
    EXPECT_EQ(FormatAmount(ReadAmount("1.005"), FormatMoneyZero), "1.01");
    EXPECT_EQ(FormatAmount(ReadAmount("-1.005"), FormatMoneyZero), "(1.01)");
    EXPECT_EQ(FormatAmount(ReadAmount("1.0049"), FormatMoneyZero), "1.00");
    EXPECT_EQ(FormatAmount(ReadAmount("1.00495"), FormatMoneyZero), "1.01");
    EXPECT_EQ(FormatAmount(ReadAmount("0.995"), FormatMoneyZero), "1.00");
}

TEST(Amount, TheSectionOfAFormatIsChosenAfterRounding)
{
    for (const auto text : {"0.004", "-0.004", "-0.0049"}) {
        EXPECT_EQ(FormatAmount(ReadAmount(text), FormatMoneyBlankZero), "") << text;
        EXPECT_EQ(FormatAmount(ReadAmount(text), FormatMoneyZero), "0.00") << text;
    }
    EXPECT_EQ(FormatAmount(ReadAmount("0.005"), FormatMoneyBlankZero), "0.01");
    EXPECT_EQ(FormatAmount(ReadAmount("-0.005"), FormatMoneyBlankZero), "(0.01)");
}

TEST(Amount, TheLargestAndSmallestAmountsCanBeShown)
{
    EXPECT_EQ(FormatAmount(Units(Largest), FormatMoneyZero), "922337203685477.58");
    EXPECT_EQ(FormatAmount(Units(Smallest), FormatMoneyZero), "(922337203685477.58)");
}

TEST(Amount, PaddingFillsOrCutsToTenCharacters)
{
    EXPECT_EQ(PadAmount(""), "");
    EXPECT_EQ(PadAmount("    "), "");
    EXPECT_EQ(PadAmount("250.00"), "    250.00");
    EXPECT_EQ(PadAmount(" 250.00 "), "    250.00");
    EXPECT_EQ(PadAmount("1234567.89"), "1234567.89");
    EXPECT_EQ(PadAmount("12345678.90"), "12345678.9");
    EXPECT_EQ(PadAmount("(100000.00)"), "(100000.00");
    EXPECT_EQ(PadAmount("£5"), "        £5");
    EXPECT_EQ(PadAmount("££££££££££££"), "££££££££££");
}

TEST(Amount, ALargeNegativeFigureReadsAsNothingOnceItIsPadded)
{
    const std::string shown = AmountText(ReadAmount("-100000"), FormatMoneyBlankZero);
    EXPECT_EQ(shown, "(100000.00");
    EXPECT_TRUE(ReadAmount(shown).IsZero());
}

TEST(Amount, PlainNumbersHaveNoSuperfluousZeros)
{
    struct Case {
        double value;
        std::string_view text;
    };
    for (const Case& c : {Case{12.5, "12.5"}, Case{-2, "-2"}, Case{0, "0"}, Case{-0.0, "0"}, Case{4.00, "4"},
                          Case{100, "100"}, Case{0.1 + 0.2, "0.3"}, Case{10000, "10000"}, Case{0.0001, "0.0001"},
                          Case{0.00001, "0.00001"}, Case{-0.25, "-0.25"}, Case{123456789.5, "123456789.5"},
                          Case{1e15, "1000000000000000"}, Case{std::numeric_limits<double>::infinity(), "0"}})
        EXPECT_EQ(PlainNumber(c.value), c.text);
    EXPECT_EQ(PlainNumberBlankZero(0), "");
    EXPECT_EQ(PlainNumberBlankZero(-0.0), "");
    EXPECT_EQ(PlainNumberBlankZero(12.5), "12.5");
}

TEST(Amount, NumbersReadAsFarAsTheyGo)
{
    EXPECT_EQ(ReadNumber(""), 0);
    EXPECT_EQ(ReadNumber(" 12.5 "), 12.5);
    EXPECT_EQ(ReadNumber("-2"), -2);
    EXPECT_EQ(ReadNumber("99.5 miles"), 99.5);
    EXPECT_EQ(ReadNumber("50%"), 50);
    EXPECT_EQ(ReadNumber("abc"), 0);
    EXPECT_EQ(ReadNumber("."), 0);
    EXPECT_EQ(ReadNumber(".5"), 0.5);
    EXPECT_EQ(ReadNumber("1e5"), 1);
    EXPECT_EQ(ReadNumber("inf"), 0);
    EXPECT_EQ(ReadNumber("nan"), 0);
    EXPECT_EQ(ReadNumber("--1"), 0);
    EXPECT_EQ(ReadNumber("+1"), 0);
    EXPECT_EQ(ReadNumber(std::string(400, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(ReadNumber("0." + std::string(400, '0') + "1"), 0);
    EXPECT_FALSE(std::signbit(ReadNumber("-0")));
}

TEST(Amount, WholeNumbersTakeTheEvenOneOfATie)
{
    EXPECT_EQ(ReadWholeNumber("99.5"), 100);
    EXPECT_EQ(ReadWholeNumber("100.5"), 100);
    EXPECT_EQ(ReadWholeNumber("1400.4"), 1400);
    EXPECT_EQ(ReadWholeNumber("-2.5"), -2);
    EXPECT_EQ(ReadWholeNumber("x"), 0);
    EXPECT_EQ(ReadWholeNumber("99999999999"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ReadWholeNumber("-99999999999"), std::numeric_limits<std::int32_t>::min());
}

TEST(Amount, TheSignTestWritesTheValueBack)
{
    struct Case {
        std::string before, after;
        bool result;
    };
    for (const Case& c : {Case{" 12.50 ", "12.5", true}, Case{"(5)", "-5", false}, Case{"-0.00004", "0", true},
                          Case{"", "0", true}, Case{"abc", "0", true}, Case{"1,234.56785", "1234.5678", true},
                          Case{"-0.5", "-0.5", false}, Case{"922337203685477.5807", "922337203685477.5807", true}}) {
        std::string text = c.before;
        EXPECT_EQ(IsNonNegative(text), c.result) << c.before;
        EXPECT_EQ(text, c.after) << c.before;
    }
    EXPECT_TRUE(IsNonNegative(Amount()));
    EXPECT_FALSE(IsNonNegative(Units(-1)));
}

rc::Gen<std::int64_t> AnyUnits()
{
    return rc::gen::oneOf(rc::gen::arbitrary<std::int64_t>(), rc::gen::inRange<std::int64_t>(-10'000'000, 10'000'000),
                          rc::gen::elementOf(std::vector<std::int64_t>{Smallest, Smallest + 1, -50, -49, 0, 49, 50,
                                                                       Largest - 1, Largest}));
}

RC_GTEST_PROP(Amount, AFormattedAmountReadsBackToTheSamePence, ())
{
    const std::int64_t units = *AnyUnits();
    const auto format = *rc::gen::element(FormatMoneyBlankZero, FormatMoneyZero, FormatPrintMoneyBlankZero);
    const std::string shown = FormatAmount(Units(units), format);
    const Amount read = ReadAmount(shown);
    RC_ASSERT(read.Units() % 100 == 0);
    const Amount difference = read - Units(units);
    RC_ASSERT(difference.Units() >= -50);
    RC_ASSERT(difference.Units() <= 50);
    RC_ASSERT(FormatAmount(read, format) == shown);
    RC_ASSERT(shown.find('-') == std::string::npos);
}

RC_GTEST_PROP(Amount, ThePaddedTextOfAnOrdinaryAmountReadsBackToTheSamePence, ())
{
    const auto pence = *rc::gen::inRange<std::int64_t>(-99'999'99, 9'999'999'99);
    const std::string shown = AmountText(Units(pence * 100), FormatMoneyBlankZero);
    RC_ASSERT(shown.size() == (pence == 0 ? 0U : 10U));
    RC_ASSERT(ReadAmount(shown).Units() == pence * 100);
}

RC_GTEST_PROP(Amount, AnyTextReadsWithoutHarm, (const std::string& text))
{
    RC_ASSERT(ReadAmount("(" + text + ")").Units() <= 0);
    RC_ASSERT(std::isfinite(ReadNumber(text)));
    const std::string padded = PadAmount(text);
    RC_ASSERT(padded.empty() || padded.size() >= 10U);
    RC_ASSERT(PadAmount(padded).size() <= 40U);
    std::string written = text;
    RC_ASSERT(IsNonNegative(written) == !ReadAmount(text).IsNegative());
    RC_ASSERT(ReadAmount(written) == ReadAmount(text));
}

RC_GTEST_PROP(Amount, ThePlainTextOfANumberReadsBack, ())
{
    const double value = static_cast<double>(*rc::gen::arbitrary<std::int32_t>()) / 100;
    RC_ASSERT(ReadNumber(PlainNumber(value)) == value);
}

} // namespace
} // namespace quillmere
