#pragma once

#include "frame/Dates.h"

#include <array>
#include <string>
#include <string_view>

/// What the date boxes of a car's column are held to when they are left. Every check takes the texts of the boxes and
/// returns what the box is to read; none shows a message.
namespace quillmere {

/// A period in which a car was not available, as its two boxes read; either may be empty.
struct UnavailablePeriod {
    std::string first; ///< `txtUnavailableFirstN(i)`
    std::string last;  ///< `txtUnavailableLastN(i)`
};

/// The four rows of a car.
using UnavailablePeriods = std::array<UnavailablePeriod, 4>;

/// The date boxes of a column that the periods are held against.
struct CarDateTexts {
    std::string dateFrom; ///< `FDateFromN`; empty: the first day of the tax year
    std::string dateTo;   ///< `FDateToN`; empty: the last day of the tax year
    UnavailablePeriods periods;
};

/// The day that a text names. Throws Failure for an empty text or one that is no date.
Day DateOf(std::string_view text);

/// The date in the standard form if it is one and not before the first day of the tax year, else an empty text.
std::string FirstDateChecker(std::string_view text);

/// The date in the standard form if it is one and not before `from` (empty: the first day of the tax year), else an
/// empty text. There is no upper limit.
std::string LastDateChecker(std::string_view from, std::string_view text);

/// What leaving a date box of a column comes to.
struct CarDateOutcome {
    std::string text;                ///< what the box is to read
    bool beforeRegistration = false; ///< the message about the date of registration is due
    bool compute = true;             ///< the car is to be worked out again

    friend bool operator==(const CarDateOutcome&, const CarDateOutcome&) = default;
};

/// `FDateFromN` is left.
CarDateOutcome LeaveDateFrom(std::string_view text, std::string_view registrationDate);

/// `FDateToN` is left.
CarDateOutcome LeaveDateTo(std::string_view text, std::string_view dateFrom);

/// `txtUnavailableFirstN` of a row, counted from 0, is left; its text is the one in `texts`.
CarDateOutcome LeavePeriodFirst(const CarDateTexts& texts, std::size_t row);

/// `txtUnavailableLastN` of a row, counted from 0, is left; its text is the one in `texts`.
CarDateOutcome LeavePeriodLast(const CarDateTexts& texts, std::size_t row);

/// What a text in `FRegDateN` comes to, in the order of the tests.
enum class RegistrationCheck { Empty, BadForm, AfterYearEnd, TooEarly, Good };

/// `FRegDateN` is left: the finding, and for a good date its standard form.
struct RegistrationOutcome {
    RegistrationCheck check = RegistrationCheck::Empty;
    std::string text;

    friend bool operator==(const RegistrationOutcome&, const RegistrationOutcome&) = default;
};
RegistrationOutcome LeaveRegistrationDate(std::string_view text);

/// `FDateWithdrawnN` is left: the date in the standard form if the car was available then, else an empty text. With a
/// text the tick beside it opens, without one it is cleared and closed.
std::string CheckWithdrawnDate(std::string_view text, std::string_view dateFrom, std::string_view dateTo);

/// True if a first day of availability has been entered that lies before the date of registration: the car is then not
/// worked out. An empty text of either date is never before.
/// Throws Failure for a text that is no date.
bool IsAvailableBeforeRegistered(std::string_view dateFrom, std::string_view registrationDate);

} // namespace quillmere
