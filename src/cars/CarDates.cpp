#include "cars/CarDates.h"

#include "cars/WholeNumbers.h"
#include "edition/CarRates.h"
#include "edition/Edition.h"
#include "frame/Text.h"

#include <optional>
#include <utility>

namespace quillmere {

namespace {

/// A trimmed text that is a date, in the standard form; nothing for an empty text and for anything else.
std::optional<std::string> StandardForm(std::string_view text)
{
    const std::string trimmed = Trim(text);
    if (trimmed.empty() || !IsDateText(trimmed))
        return std::nullopt;
    return NormaliseDate(trimmed);
}

/// The last date of the nearest earlier row that has one, else the first day of availability.
std::string_view PreviousBoundary(const CarDateTexts& texts, std::size_t row)
{
    for (std::size_t earlier = row; earlier-- > 0;)
        if (!texts.periods[earlier].last.empty())
            return texts.periods[earlier].last;
    return TextOr(texts.dateFrom, edition::TaxYearStartShort);
}

/// The first date of the nearest later row that has one, else the last day of availability.
std::string_view NextBoundary(const CarDateTexts& texts, std::size_t row)
{
    for (std::size_t later = row + 1; later < texts.periods.size(); ++later)
        if (!texts.periods[later].first.empty())
            return texts.periods[later].first;
    return TextOr(texts.dateTo, edition::TaxYearEnd);
}

/// Days from the first date to the second; nothing if either is unreadable, and then no rule about them holds.
std::optional<int> DaysFrom(std::string_view from, std::string_view to)
{
    const auto start = ReadDate(from);
    const auto end = ReadDate(to);
    if (!start || !end)
        return std::nullopt;
    return DaysBetween(*start, *end);
}

bool FirstDateStands(const CarDateTexts& texts, std::size_t row, std::string_view first)
{
    const auto gapBefore = DaysFrom(PreviousBoundary(texts, row), first);
    if (!gapBefore || *gapBefore < (row == 0 ? 0 : edition::ShortestCarPeriod))
        return false;
    const std::string& last = texts.periods[row].last;
    if (!last.empty()) {
        const auto span = DaysFrom(first, last);
        if (!span || *span + 1 < edition::ShortestCarPeriod)
            return false;
    }
    const auto gapAfter = DaysFrom(first, NextBoundary(texts, row));
    return gapAfter && *gapAfter > edition::ShortestCarPeriod;
}

bool LastDateStands(const CarDateTexts& texts, std::size_t row, std::string_view last)
{
    const std::string& first = texts.periods[row].first;
    if (first.empty())
        return false;
    const auto room = DaysFrom(last, TextOr(texts.dateTo, edition::TaxYearEnd));
    const auto span = DaysFrom(first, last);
    return room && *room >= 0 && span && *span + 1 >= edition::ShortestCarPeriod;
}

/// Leaving a box of a period: empty runs the routine, a date that stands is rewritten and runs it, any other is
/// emptied.
template<typename Stands>
CarDateOutcome LeavePeriod(const std::string& text, Stands stands)
{
    if (Trim(text).empty())
        return {};
    const auto date = StandardForm(text);
    if (!date || !stands(*date))
        return {.compute = false};
    return {.text = *date};
}

} // namespace

Day DateOf(std::string_view text)
{
    if (const auto day = ReadDate(text))
        return *day;
    throw Failure(TypeMismatchNumber, "Type mismatch");
}

std::string FirstDateChecker(std::string_view text)
{
    const auto date = StandardForm(text);
    return date && IsNotBeforeYearStart(*date) ? *date : std::string();
}

std::string LastDateChecker(std::string_view from, std::string_view text)
{
    const auto date = StandardForm(text);
    if (!date)
        return {};
    const auto days = DaysFrom(TextOr(from, edition::TaxYearStartShort), *date);
    return days && *days >= 0 ? *date : std::string();
}

CarDateOutcome LeaveDateFrom(std::string_view text, std::string_view registrationDate)
{
    if (text.empty())
        return {};
    std::string date = FirstDateChecker(text);
    if (date.empty() || registrationDate.empty())
        return {.text = std::move(date), .compute = false};
    if (IsAvailableBeforeRegistered(date, registrationDate))
        return {.beforeRegistration = true};
    return {.text = std::move(date)};
}

CarDateOutcome LeaveDateTo(std::string_view text, std::string_view dateFrom)
{
    return {.text = LastDateChecker(dateFrom, text)};
}

CarDateOutcome LeavePeriodFirst(const CarDateTexts& texts, std::size_t row)
{
    return LeavePeriod(texts.periods[row].first,
                       [&](std::string_view date) { return FirstDateStands(texts, row, date); });
}

CarDateOutcome LeavePeriodLast(const CarDateTexts& texts, std::size_t row)
{
    return LeavePeriod(texts.periods[row].last,
                       [&](std::string_view date) { return LastDateStands(texts, row, date); });
}

RegistrationOutcome LeaveRegistrationDate(std::string_view text)
{
    const std::string trimmed = Trim(text);
    if (trimmed.empty())
        return {};
    if (!IsDateText(trimmed))
        return {.check = RegistrationCheck::BadForm};
    if (TestYearEnd(trimmed) == YearEndTest::No)
        return {.check = RegistrationCheck::AfterYearEnd};
    if (!IsNotTooEarly(trimmed))
        return {.check = RegistrationCheck::TooEarly};
    return {.check = RegistrationCheck::Good, .text = NormaliseDate(trimmed)};
}

std::string CheckWithdrawnDate(std::string_view text, std::string_view dateFrom, std::string_view dateTo)
{
    const auto date = StandardForm(text);
    return date && IsDateBetween(*date, dateFrom, dateTo) ? *date : std::string();
}

bool IsAvailableBeforeRegistered(std::string_view dateFrom, std::string_view registrationDate)
{
    if (dateFrom.empty() || registrationDate.empty())
        return false;
    return DateOf(dateFrom) < DateOf(registrationDate);
}

} // namespace quillmere
