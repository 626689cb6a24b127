#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quillmere {

using Day = std::chrono::sys_days;

/// True if the text is empty or a possible date: day, month and year parted by "/", five to ten characters, day first.
bool IsDateText(std::string_view text);

/// The day that a date text names, day first, two-digit years by the century rule of `NormaliseDate`;
/// nothing for an empty text or one that is no date.
std::optional<Day> ReadDate(std::string_view text);

/// The date in the form dd/mm/yyyy.
std::string FormatDate(Day day);

/// The same date in the form dd/mm/yyyy. A two-digit year below 16 is of this century, any other of the last (the limit
/// moves with the edition). Empty for a text of under three characters or one that is no date.
std::string NormaliseDate(std::string_view text);

/// What `IsNotAfterYearEnd` (frame/YearEnd.h) goes by. A rule that has held the text to `IsDateText` asks for it
/// directly: such a text can always be compared.
enum class YearEndTest { No, Yes, Unreadable };

/// Not later than the last day of the tax year. Empty: No. A text that cannot be compared: Unreadable.
YearEndTest TestYearEnd(std::string_view text);

/// True if the date is not earlier than the first day of the tax year; false for an unreadable one.
bool IsNotBeforeYearStart(std::string_view text);

/// A date as it is entered for a day of the tax year: trimmed, and in the form dd/mm/yyyy; empty if the text is no date
/// or the day lies outside the year.
std::string EnteredDate(std::string_view text);

/// True if the date is not earlier than 30 December 1899, the zero date; false for an unreadable one.
bool IsNotTooEarly(std::string_view text);

/// True if start is not after the date and the date is not after end. An empty start is the first day of the tax year,
/// an empty end the last; false for an unreadable date.
bool IsDateBetween(std::string_view text, std::string_view start, std::string_view end);

/// Days common to two periods, both ends counted. 0 if a text is empty or unreadable or they lie apart;
/// may be negative for a reversed period.
int OverlapDays(std::string_view start1, std::string_view end1, std::string_view start2, std::string_view end2);

/// A first day and a last day, both counted.
struct DayRange {
    Day first, last;
};

/// Days common to two periods, both ends counted. 0 if they lie apart; may be negative for a reversed period.
int OverlapDays(DayRange one, DayRange other);

/// Whole days from `from` to `to`, neither counted twice: negative if `to` is the earlier.
int DaysBetween(Day from, Day to);

/// A day as eight digits: year, month, day.
std::string TodayStamp(Day today);

/// The date text day "/" month "/" year of eight digits, with no other check.
std::string StampToDate(std::string_view stamp);

/// The day number of 31 December of the year: 365 or 366.
int DaysInYear(int year);

/// The form of the National Insurance number: empty, or one of the three patterns of eight or nine characters.
/// The text is tested as it stands: the box upper-cases it before and does not trim it.
bool IsNationalInsuranceNumber(std::string_view text);

} // namespace quillmere
