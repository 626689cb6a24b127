#include "frame/Dates.h"

#include "edition/Edition.h"
#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr Day ZeroDate{std::chrono::year{1899} / 12 / 30};

/// Day, month and year as three pieces of a text.
struct DatePieces {
    std::string_view day, month, year;
};

constexpr bool IsCapital(char character)
{
    return character >= 'A' && character <= 'Z';
}

bool IsDigits(std::string_view text)
{
    return !text.empty() && std::ranges::all_of(text, IsDigit);
}

/// The value of a piece, which is digits only and no longer than a date text.
int ReadPiece(std::string_view piece)
{
    int value = 0;
    for (const char digit : piece)
        value = value * 10 + (digit - '0');
    return value;
}

/// Parts the text at its first two "/", if they stand where those of a date can.
std::optional<DatePieces> PartDate(std::string_view text)
{
    // Places are counted from 1, and 0 is "not found".
    const std::size_t length = text.size();
    const std::size_t first = text.find('/') + 1;
    const std::size_t second = first >= 1 && first <= length - 1 ? text.find('/', first) + 1 : 0;
    const bool monthFits = second == first + 2 || second == first + 3;
    const bool yearFits = second + 4 >= length && second + 1 <= length;
    if (first < 2 || !monthFits || !yearFits)
        return std::nullopt;
    return DatePieces{text.substr(0, first - 1), text.substr(first, second - first - 1), text.substr(second)};
}

/// Of a year as typed: 0 stands for 2000 and is a leap year too.
constexpr int DaysInMonth(int month, int year)
{
    switch (month) {
    case 2:
        return std::chrono::year{year}.is_leap() ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    default:
        return 31;
    }
}

/// The calendar's own day, if there is one of that name.
std::optional<Day> CalendarDay(int day, int month, int year)
{
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    if (!date.ok())
        return std::nullopt;
    return Day{date};
}

/// A date as it is written, with a year of any length.
struct WrittenDate {
    int day, month, year;
    bool hasCentury;
};

std::optional<WrittenDate> ReadWrittenDate(std::string_view text)
{
    if (text.size() < 5 || text.size() > 10)
        return std::nullopt;
    const auto pieces = PartDate(text);
    if (!pieces || !IsDigits(pieces->day) || !IsDigits(pieces->month) || !IsDigits(pieces->year))
        return std::nullopt;
    const WrittenDate date{.day = ReadPiece(pieces->day),
                           .month = ReadPiece(pieces->month),
                           .year = ReadPiece(pieces->year),
                           .hasCentury = pieces->year.size() > 2};
    if (date.month < 1 || date.month > 12 || date.day < 1 || date.day > DaysInMonth(date.month, date.year))
        return std::nullopt;
    return CalendarDay(date.day, date.month, date.year) ? std::optional(date) : std::nullopt;
}

} // namespace

bool IsDateText(std::string_view text)
{
    return text.empty() || ReadWrittenDate(text).has_value();
}

std::optional<Day> ReadDate(std::string_view text)
{
    const auto date = ReadWrittenDate(text);
    if (!date)
        return std::nullopt;
    const int century = edition::CenturyLimit() > date->year ? 2000 : 1900;
    return CalendarDay(date->day, date->month, date->hasCentury ? date->year : century + date->year);
}

std::string FormatDate(Day day)
{
    const std::chrono::year_month_day date{day};
    return fmt::format("{:02}/{:02}/{:04}", static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()),
                       static_cast<int>(date.year()));
}

std::string NormaliseDate(std::string_view text)
{
    const auto day = ReadDate(text);
    return day ? FormatDate(*day) : std::string();
}

YearEndTest TestYearEnd(std::string_view text)
{
    if (text.empty())
        return YearEndTest::No;
    const auto day = ReadDate(text);
    if (!day)
        return YearEndTest::Unreadable;
    return *day <= edition::TaxYearEndDay ? YearEndTest::Yes : YearEndTest::No;
}

bool IsNotBeforeYearStart(std::string_view text)
{
    const auto day = ReadDate(text);
    return day && *day >= edition::TaxYearStartDay;
}

std::string EnteredDate(std::string_view text)
{
    const std::string trimmed = Trim(text);
    if (!IsDateText(trimmed) || TestYearEnd(trimmed) == YearEndTest::No || !IsNotBeforeYearStart(trimmed))
        return {};
    return NormaliseDate(trimmed);
}

bool IsNotTooEarly(std::string_view text)
{
    const auto day = ReadDate(text);
    return day && *day >= ZeroDate;
}

bool IsDateBetween(std::string_view text, std::string_view start, std::string_view end)
{
    const auto day = ReadDate(text);
    const auto first = start.empty() ? edition::TaxYearStartDay : ReadDate(start);
    const auto last = end.empty() ? edition::TaxYearEndDay : ReadDate(end);
    return day && first && last && *first <= *day && *day <= *last;
}

int OverlapDays(std::string_view start1, std::string_view end1, std::string_view start2, std::string_view end2)
{
    const auto first1 = ReadDate(start1);
    const auto last1 = ReadDate(end1);
    const auto first2 = ReadDate(start2);
    const auto last2 = ReadDate(end2);
    if (!first1 || !last1 || !first2 || !last2)
        return 0;
    return OverlapDays({*first1, *last1}, {*first2, *last2});
}

int OverlapDays(DayRange one, DayRange other)
{
    if (one.last < other.first || one.first > other.last)
        return 0;
    // Kept: a period typed the wrong way round counts below zero; the screens' own checks are what keeps it out.
    return DaysBetween(std::max(one.first, other.first), std::min(one.last, other.last)) + 1;
}

int DaysBetween(Day from, Day to)
{
    return static_cast<int>((to - from).count());
}

std::string TodayStamp(Day today)
{
    const std::chrono::year_month_day date{today};
    return fmt::format("{:04}{:02}{:02}", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                       static_cast<unsigned>(date.day()));
}

std::string StampToDate(std::string_view stamp)
{
    const auto piece = [stamp](std::size_t from, std::size_t count) {
        return from < stamp.size() ? stamp.substr(from, count) : std::string_view();
    };
    return fmt::format("{}/{}/{}", piece(6, 2), piece(4, 2), piece(0, 4));
}

int DaysInYear(int year)
{
    return std::chrono::year{year}.is_leap() ? 366 : 365;
}

bool IsNationalInsuranceNumber(std::string_view text)
{
    if (text.empty())
        return true;
    const auto lettersAndDigits = [text](std::string_view form) {
        return std::ranges::equal(text, form, [](char character, char place) {
            return place == 'A' ? IsCapital(character) : IsDigit(character);
        });
    };
    return lettersAndDigits("AA999999A") || lettersAndDigits("AA999999") || lettersAndDigits("99A99999");
}

} // namespace quillmere
