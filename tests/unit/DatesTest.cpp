#include "frame/Dates.h"

#include "edition/Edition.h"
#include "frame/YearEnd.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fmt/format.h>

namespace quillmere {
namespace {

using namespace std::chrono_literals;

Day On(int year, unsigned month, unsigned day)
{
    return Day{std::chrono::year{year} / static_cast<int>(month) / static_cast<int>(day)};
}

TEST(Dates, PossibleDatesAreTakenAndOthersRefused)
{
    struct Case {
        std::string_view text;
        bool valid;
    };
    for (const Case& c : {
             Case{"", true},
             Case{"5/4/10", true},
             Case{"05/04/2010", true},
             Case{"1/1/2", true},
             Case{"1/1/", false},
             Case{"1/1", false},
             Case{"1/1/1", true},
             Case{"29/02/00", true},
             Case{"29/2/0", true},
             Case{"29/02/2000", true},
             Case{"29/02/1900", false},
             Case{"29/02/04", true},
             Case{"29/02/03", false},
             Case{"29/02/2100", false},
             Case{"31/04/2010", false},
             Case{"30/04/2010", true},
             Case{"31/06/10", false},
             Case{"31/09/10", false},
             Case{"31/11/10", false},
             Case{"31/12/10", true},
             Case{"32/12/10", false},
             Case{"00/12/10", false},
             Case{"01/00/10", false},
             Case{"01/13/10", false},
             Case{"12/31/2010", false}, // day first, whatever the machine's settings
             Case{"1/1/200", true},     // a year of three digits; the range tests refuse it
             Case{"001/1/10", true},
             Case{"1/001/10", false},
             Case{"1//10", false},
             Case{"/1/10", false},
             Case{"1/1/1/1", false},
             Case{"1/1/20100", false},
             Case{"01/01/02010", false},
             Case{"05.04.2010", false},
             Case{"05-04-2010", false},
             Case{"5 April 10", false},
             Case{" 5/4/10", false},
             Case{"5/4/10 ", false},
             Case{"5/4/1x", false},
             Case{"5/4x/10", false},
             Case{"x5/4/10", false},
             Case{"+5/4/10", false},
             Case{"5/4/-1", false},
             Case{"5/4/1.", false},
             Case{"/////", false},
             Case{"12345", false},
             Case{"£/1/10", false},
         })
        EXPECT_EQ(IsDateText(c.text), c.valid) << '"' << c.text << '"';
}

TEST(Dates, NormalFormHasTwoTwoAndFourDigits)
{
    struct Case {
        std::string_view text, normal;
    };
    for (const Case& c : {
             Case{"5/4/10", "05/04/2010"},
             Case{"5/4/1", "05/04/2001"},
             Case{"1/1/2", "01/01/2002"},
             Case{"05/04/16", "05/04/1916"},
             Case{"05/04/15", "05/04/2015"},
             Case{"05/04/00", "05/04/2000"},
             Case{"05/04/99", "05/04/1999"},
             Case{"29/02/00", "29/02/2000"},
             Case{"29/2/0", "29/02/2000"},
             Case{"29/2/16", "29/02/1916"},
             Case{"5/4/2011", "05/04/2011"},
             Case{"05/04/2011", "05/04/2011"},
             Case{"1/1/200", "01/01/0200"},
             Case{"001/1/10", "01/01/2010"},
             Case{"0001/01/10", "01/01/2010"},
             Case{"", ""},
             Case{"1", ""},
             Case{"1/", ""},
             Case{"31/04/10", ""},
             Case{"no date", ""},
         })
        EXPECT_EQ(NormaliseDate(c.text), c.normal) << c.text;
}

TEST(Dates, AnEnteredDateIsADayOfTheYearInItsNormalForm)
{
    EXPECT_EQ(EnteredDate(" 6/4/10 "), "06/04/2010");
    EXPECT_EQ(EnteredDate("5/4/2011"), "05/04/2011");
    for (const std::string_view refused : {"", "  ", "5/4/10", "6/4/11", "31/6/10", "6.4.10", "words"})
        EXPECT_EQ(EnteredDate(refused), "") << refused;
}

TEST(Dates, TheCenturyLimitMovesWithTheEdition)
{
    EXPECT_EQ(edition::CenturyLimit(), std::stoi(std::string(edition::YearEndYear)) - 1995);
    const int limit = edition::CenturyLimit();
    EXPECT_EQ(NormaliseDate(fmt::format("01/01/{:02}", limit - 1)), fmt::format("01/01/20{:02}", limit - 1));
    EXPECT_EQ(NormaliseDate(fmt::format("01/01/{:02}", limit)), fmt::format("01/01/19{:02}", limit));
}

TEST(Dates, ReadingUsesTheSameCentury)
{
    EXPECT_EQ(ReadDate("06/04/10"), On(2010, 4, 6));
    EXPECT_EQ(ReadDate("6/4/2010"), On(2010, 4, 6));
    EXPECT_EQ(ReadDate("05/04/16"), On(1916, 4, 5));
    EXPECT_EQ(ReadDate(""), std::nullopt);
    EXPECT_EQ(ReadDate("Nil"), std::nullopt);
    EXPECT_EQ(ReadDate("30/02/10"), std::nullopt);
    EXPECT_EQ(FormatDate(On(2010, 4, 6)), "06/04/2010");
}

TEST(Dates, TheBoundsOfTheYearReadAsDaysWithTheDayFirst)
{
    EXPECT_EQ(ReadDate(edition::TaxYearStartShort), On(2010, 4, 6));
    EXPECT_EQ(ReadDate(edition::TaxYearStart), On(2010, 4, 6));
    EXPECT_EQ(ReadDate(edition::TaxYearEnd), On(2011, 4, 5));
    EXPECT_EQ(ReadDate(edition::PriorYearStart), On(2009, 4, 6));
    EXPECT_EQ(ReadDate(edition::PriorYearEnd), On(2010, 4, 5));
}

TEST(Dates, ADateThatCannotBeComparedIsKeptAndTold)
{
    test::ScriptedDoor door;
    Session session{door};
    EXPECT_TRUE(IsNotAfterYearEnd(session, "05/04/2011"));
    EXPECT_FALSE(IsNotAfterYearEnd(session, "06/04/2011"));
    EXPECT_FALSE(IsNotAfterYearEnd(session, ""));
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(session.LastBadDate, "");
    EXPECT_TRUE(IsNotAfterYearEnd(session, "31/04/2010"));
    EXPECT_EQ(session.LastBadDate, "31/04/2010");
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
    EXPECT_EQ(door.messages[0].text, "Registration Date must be before specified date");
}

TEST(Dates, TheYearEndTestTellsLateEmptyAndUnreadableApart)
{
    EXPECT_EQ(TestYearEnd("05/04/2011"), YearEndTest::Yes);
    EXPECT_EQ(TestYearEnd("5/4/11"), YearEndTest::Yes);
    EXPECT_EQ(TestYearEnd("06/04/2011"), YearEndTest::No);
    EXPECT_EQ(TestYearEnd("12/03/2011"), YearEndTest::Yes) << "12 March, not 3 December";
    EXPECT_EQ(TestYearEnd("05/04/16"), YearEndTest::Yes) << "1916";
    EXPECT_EQ(TestYearEnd("1/1/200"), YearEndTest::Yes);
    EXPECT_EQ(TestYearEnd(""), YearEndTest::No);
    EXPECT_EQ(TestYearEnd("31/04/2010"), YearEndTest::Unreadable);
    EXPECT_EQ(TestYearEnd("Nil"), YearEndTest::Unreadable);
}

TEST(Dates, TheYearStartTestRefusesEarlierAndUnreadableDates)
{
    EXPECT_TRUE(IsNotBeforeYearStart("06/04/10"));
    EXPECT_TRUE(IsNotBeforeYearStart("6/4/2010"));
    EXPECT_FALSE(IsNotBeforeYearStart("05/04/2010"));
    EXPECT_FALSE(IsNotBeforeYearStart("1/1/200"));
    EXPECT_FALSE(IsNotBeforeYearStart("05/04/16"));
    EXPECT_FALSE(IsNotBeforeYearStart(""));
    EXPECT_FALSE(IsNotBeforeYearStart("x"));
}

TEST(Dates, TooEarlyIsBeforeTheZeroDateAlone)
{
    EXPECT_TRUE(IsNotTooEarly("30/12/1899"));
    EXPECT_FALSE(IsNotTooEarly("29/12/1899"));
    EXPECT_TRUE(IsNotTooEarly("01/01/1900"));
    EXPECT_TRUE(IsNotTooEarly("1/1/16"));
    EXPECT_FALSE(IsNotTooEarly("1/1/200"));
    EXPECT_FALSE(IsNotTooEarly(""));
    EXPECT_FALSE(IsNotTooEarly("x"));
}

TEST(Dates, AnEmptyBoundOfAPeriodIsThatOfTheYear)
{
    EXPECT_TRUE(IsDateBetween("06/04/2010", "", ""));
    EXPECT_TRUE(IsDateBetween("05/04/2011", "", ""));
    EXPECT_FALSE(IsDateBetween("05/04/2010", "", ""));
    EXPECT_FALSE(IsDateBetween("06/04/2011", "", ""));
    EXPECT_TRUE(IsDateBetween("1/6/10", "1/6/10", "1/6/10"));
    EXPECT_FALSE(IsDateBetween("31/5/10", "1/6/10", ""));
    EXPECT_FALSE(IsDateBetween("2/6/10", "", "1/6/10"));
    EXPECT_FALSE(IsDateBetween("", "", ""));
    EXPECT_FALSE(IsDateBetween("x", "", ""));
    EXPECT_FALSE(IsDateBetween("1/6/10", "x", ""));
    EXPECT_FALSE(IsDateBetween("1/6/10", "", "x"));
}

TEST(Dates, OverlapCountsBothEnds)
{
    struct Case {
        std::string_view start1, end1, start2, end2;
        int days;
    };
    for (const Case& c : {
             Case{"06/04/2010", "05/04/2011", "06/04/2010", "05/04/2011", 365},
             Case{"1/6/10", "10/6/10", "10/6/10", "20/6/10", 1},
             Case{"1/6/10", "10/6/10", "11/6/10", "20/6/10", 0},
             Case{"11/6/10", "20/6/10", "1/6/10", "10/6/10", 0},
             Case{"1/6/10", "30/6/10", "10/6/10", "20/6/10", 11},
             Case{"10/6/10", "20/6/10", "1/6/10", "30/6/10", 11},
             Case{"1/6/10", "15/6/10", "10/6/10", "20/6/10", 6},
             Case{"27/2/11", "2/3/11", "27/2/11", "2/3/11", 4},
             Case{"", "10/6/10", "1/6/10", "10/6/10", 0},
             Case{"1/6/10", "", "1/6/10", "10/6/10", 0},
             Case{"1/6/10", "10/6/10", "", "10/6/10", 0},
             Case{"1/6/10", "10/6/10", "1/6/10", "", 0},
             Case{"1/6/10", "x", "1/6/10", "10/6/10", 0},
             Case{"10/6/10", "5/6/10", "1/6/10", "30/6/10", -4}, // the wrong way round
             Case{"10/6/10", "9/6/10", "1/6/10", "30/6/10", 0},
         })
        EXPECT_EQ(OverlapDays(c.start1, c.end1, c.start2, c.end2), c.days)
            << c.start1 << '-' << c.end1 << ' ' << c.start2 << '-' << c.end2;
}

TEST(Dates, DaysBetweenHasASign)
{
    EXPECT_EQ(DaysBetween(On(2010, 4, 6), On(2011, 4, 5)), 364);
    EXPECT_EQ(DaysBetween(On(2011, 4, 5), On(2010, 4, 6)), -364);
    EXPECT_EQ(DaysBetween(On(2010, 4, 6), On(2010, 4, 6)), 0);
}

TEST(Dates, StampsAreEightDigits)
{
    EXPECT_EQ(TodayStamp(On(2011, 6, 30)), "20110630");
    EXPECT_EQ(TodayStamp(On(2011, 1, 2)), "20110102");
    EXPECT_EQ(StampToDate("20110630"), "30/06/2011");
    EXPECT_EQ(StampToDate("20119999"), "99/99/2011") << "there is no other check";
    EXPECT_EQ(StampToDate("abcdefgh"), "gh/ef/abcd");
    EXPECT_EQ(StampToDate(""), "//");
    EXPECT_EQ(StampToDate("20110"), "/0/2011");
}

TEST(Dates, AYearHas365Or366Days)
{
    EXPECT_EQ(DaysInYear(2011), 365);
    EXPECT_EQ(DaysInYear(2012), 366);
    EXPECT_EQ(DaysInYear(2000), 366);
    EXPECT_EQ(DaysInYear(1900), 365);
}

TEST(Dates, NationalInsuranceNumbersHaveThreeForms)
{
    struct Case {
        std::string_view text;
        bool valid;
    };
    for (const Case& c : {
             Case{"", true},
             Case{"AB123456C", true},
             Case{"AB123456", true},
             Case{"12A34567", true},
             Case{"123456789", false},
             Case{"12345678", false},
             Case{"A1234567", false},
             Case{"AB12345C", false},
             Case{"AB1234567", false},
             Case{"1BA34567", false},
             Case{"12A3456B", false},
             Case{"AB12345", false},
             Case{"AB123456CD", false},
             Case{" AB123456C", false},
             Case{"AB123456 ", false},
             Case{"AB 123456C", false},
             Case{"ab123456c", false}, // the box upper-cases it first
             Case{"ÀB12345", false},
             Case{"ÀÉ123456C", false},
         })
        EXPECT_EQ(IsNationalInsuranceNumber(c.text), c.valid) << '"' << c.text << '"';
}

/// Any spelling of a possible date: days and months with and without a leading zero, years of one, two or four digits.
rc::Gen<std::string> AnyDateText()
{
    const auto pick = rc::gen::tuple(rc::gen::inRange(1, 32), rc::gen::inRange(1, 13), rc::gen::inRange(0, 2101),
                                     rc::gen::inRange(0, 3), rc::gen::arbitrary<bool>());
    const auto text = rc::gen::map(pick, [](const auto& picked) {
        const auto& [day, month, year, form, padded] = picked;
        const std::string start = padded ? fmt::format("{:02}/{:02}/", day, month) : fmt::format("{}/{}/", day, month);
        switch (form) {
        case 0:
            return start + fmt::format("{}", year % 10);
        case 1:
            return start + fmt::format("{:02}", year % 100);
        default:
            return start + fmt::format("{:04}", year);
        }
    });
    return rc::gen::suchThat(text, [](const std::string& date) { return IsDateText(date); });
}

RC_GTEST_PROP(Dates, ANormalisedDateNormalisesToItself, ())
{
    const std::string text = *AnyDateText();
    const std::string normal = NormaliseDate(text);
    RC_ASSERT(normal.size() == 10U);
    RC_ASSERT(IsDateText(normal));
    RC_ASSERT(NormaliseDate(normal) == normal);
    RC_ASSERT(ReadDate(normal) == ReadDate(text));
}

RC_GTEST_PROP(Dates, EveryDayReadsBackFromItsText, ())
{
    const Day day = On(1, 1, 1) + std::chrono::days(*rc::gen::inRange(0, 3652058));
    RC_ASSERT(ReadDate(FormatDate(day)) == day);
    RC_ASSERT(StampToDate(TodayStamp(day)) == FormatDate(day));
}

RC_GTEST_PROP(Dates, AnyTextIsTestedWithoutHarm, ())
{
    const auto text = *rc::gen::container<std::string>(
        rc::gen::oneOf(rc::gen::arbitrary<char>(), rc::gen::elementOf(std::string("0123456789//// .-"))));
    const bool isDate = !text.empty() && IsDateText(text);
    RC_ASSERT(ReadDate(text).has_value() == isDate);
    RC_ASSERT(NormaliseDate(text).empty() == !isDate);
    RC_ASSERT((TestYearEnd(text) == YearEndTest::Unreadable) == (!isDate && !text.empty()));
    StampToDate(text);
    IsNationalInsuranceNumber(text);
}

RC_GTEST_PROP(Dates, OverlapIsTheSameBothWaysAndNeverLongerThanAPeriod, ())
{
    const auto any = [] { return On(2010, 4, 6) + std::chrono::days(*rc::gen::inRange(0, 365)); };
    Day a = any(), b = any(), c = any(), d = any();
    if (b < a)
        std::swap(a, b);
    if (d < c)
        std::swap(c, d);
    const auto text = [](Day day) { return FormatDate(day); };
    int common = 0;
    for (Day day = a; day <= b; day += std::chrono::days(1))
        common += c <= day && day <= d ? 1 : 0;
    RC_ASSERT(OverlapDays(text(a), text(b), text(c), text(d)) == common);
    RC_ASSERT(OverlapDays(text(c), text(d), text(a), text(b)) == common);
}

} // namespace
} // namespace quillmere
