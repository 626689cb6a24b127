#pragma once

#include "cars/CarDates.h"
#include "cars/CarPrices.h"
#include "edition/CarWords.h"
#include "edition/Edition.h"

#include <string>
#include <string_view>

/// What the columns of the six cars, the car notepad and its dialog say about what was entered.
namespace quillmere::carwords {

inline constexpr std::string_view InvalidFuel = "Invalid Fuel Character";

inline constexpr std::string_view ExcessiveValue = "Excessive Value Entered";
inline constexpr std::string_view ContributionError = "Capital Contribution Error";

/// Title and text of the box about a price that was refused; both empty for a good one.
struct Refusal {
    std::string_view title, text;
};
constexpr Refusal PriceMessage(PriceCheck check)
{
    switch (check) {
    case PriceCheck::ListPriceTooHigh:
        return {ExcessiveValue, edition::car::ListPriceTooHigh};
    case PriceCheck::SumTooHigh:
        return {edition::AppTitle, edition::car::BothTooHigh};
    case PriceCheck::AccessoriesTooHigh:
        return {ExcessiveValue, edition::car::AccessoriesTooHigh};
    case PriceCheck::ContributionTooHigh:
        return {ContributionError, edition::car::ContributionTooHigh};
    case PriceCheck::Good:
        break;
    }
    return {};
}

inline constexpr std::string_view FirstDateTooEarly = "You must enter a first date after/on registered date";

/// What is said of a date of registration that was refused; nothing of one that is good, or of no date.
constexpr std::string_view RegistrationMessage(RegistrationCheck check)
{
    switch (check) {
    case RegistrationCheck::BadForm:
        return "Invalid Date Format - Please Re-enter";
    case RegistrationCheck::AfterYearEnd:
        return "Invalid Date - Please Re-enter";
    case RegistrationCheck::TooEarly:
        return "Date too Early - Please Reenter";
    case RegistrationCheck::Empty:
    case RegistrationCheck::Good:
        break;
    }
    return {};
}

/// Title and text about a car that is available before it was registered; `date` is the first day that stands where
/// none is entered.
inline constexpr std::string_view InvalidDate = "Invalid Date";
inline std::string AvailabilityMessage(std::string_view date)
{
    return "Car availability 'Date From' is default " + std::string(date) +
           " - before entered Car Registration date.  Ignore this message if you have not yet entered a 'Date From' "
           "date";
}

} // namespace quillmere::carwords
