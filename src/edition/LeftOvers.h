#pragma once

#include "edition/DayOf.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string_view>

/// Dates, rates and words of older years that this edition keeps on purpose. They are in use where this file says so
/// and nowhere else; a new edition leaves them alone unless it is told to change them.
namespace quillmere::edition {

/// The date in the message of cars 2 to 6, and of the car notepad, about a car available before it was registered.
/// Car 1's message is made from the constant of the year.
inline constexpr std::string_view OldAvailabilityDate = "06/04/2003";

/// The earliest loan and discharge date that page 2 takes in its own boxes.
inline constexpr auto EarliestLoanDay = DayOf("06/04/2002");

/// The last days with which a car of last year still counts as running on when the years change, cars 1 to 6. No date
/// that is entered comes to them; they are compared as they stand.
inline constexpr std::array<std::string_view, 6> RunningOnDates = {"05/04/2003", "05/04/2003", "05/04/3004",
                                                                   "05/04/4004", "05/05/5005", "06/06/6006"};

namespace report {

/// Labels of the accommodation report, with the rate of an older year: the figures beside them are worked out at the
/// rate of this one. The second follows the days.
inline constexpr std::string_view AdditionalCharge = "Excess of cost multiplied by 5%";
inline constexpr std::string_view AdditionalChargeOfDays = ") x (Excess of cost x 5%)";

} // namespace report

// The car notepad, which keeps the rules and the captions of 2003-04. It is out of ordinary use and nothing reads it.

/// Fuel letters that the sheet takes; others are refused.
inline constexpr std::string_view SheetFuelLetters = "DPELHBC";

/// Pounds that the percentage is applied to for free fuel, and the days that the fuel deduction is divided by.
inline constexpr int SheetFuelMultiplier = 14400;
inline constexpr int SheetFuelDivisor = 366;
static_assert(SheetFuelMultiplier % 100 == 0, "the full-year fuel charge is whole pounds");

/// One column of the sheet's table for cars without a CO2 figure: engine sizes below a limit in cc.
struct SheetEngineColumn {
    std::int32_t below;
    int others; ///< letters C, B, H, L and P
    int diesel; ///< letter D
    int older;  ///< registered before the CO2 figure decided, any letter
};
inline constexpr auto SheetEngineTable = std::to_array<SheetEngineColumn>({
    {1401, 15, 18, 15},
    {2001, 25, 28, 22},
    {std::numeric_limits<std::int32_t>::max(), 35, 35, 32},
});
/// The rate of letter E without a CO2 figure.
inline constexpr int SheetElectricRate = 15;

/// Rates by CO2 figure: fixed below and above the two limits, from the reference database between them.
struct SheetCO2Limits {
    int lowest;                  ///< figures below it have the first rate
    int highest;                 ///< figures above it have the last rate
    int othersFirst, othersLast; ///< letters P, L, H, C and B, which read `Column 1`
    int dieselFirst, dieselLast; ///< letter D, which reads `Column 2`
};
inline constexpr SheetCO2Limits SheetCO2{
    .lowest = 165, .highest = 265, .othersFirst = 15, .othersLast = 35, .dieselFirst = 18, .dieselLast = 35};

/// Points off for the fuel.
struct SheetDiscountRow {
    std::string_view letter;
    int withFigure;
    int withoutFigure;
};
inline constexpr auto SheetDiscounts = std::to_array<SheetDiscountRow>({
    {.letter = "E", .withFigure = 0, .withoutFigure = 6},
    {.letter = "H", .withFigure = 2, .withoutFigure = 2},
    {.letter = "C", .withFigure = 1, .withoutFigure = 1},
    {.letter = "B", .withFigure = 1, .withoutFigure = 1},
});

/// Further points off for a low figure: one for each whole step below a figure, for some letters, up to a limit.
struct SheetFullDiscount {
    std::string_view letters;
    int upTo;
    int below;
    int step;
};
inline constexpr SheetFullDiscount SheetFullDiscounts{.letters = "BH", .upTo = 135, .below = 145, .step = 20};

/// Captions of the sheet that name its year or its numbers.
inline constexpr std::string_view SheetPriceCaption = "The price of the car for 2003-2004";
inline constexpr std::string_view SheetCarResultCaption = "Car benefit charge for 2003-2004 on this car is ";
inline constexpr std::string_view SheetFuelResultCaption = "Car fuel benefit charge for 2003-2004 on this car is ";
inline constexpr std::string_view SheetCarDeductionCaption = "(P * Q) / 366";
inline constexpr std::string_view SheetFuelCaption = "£14,400 * N";
inline constexpr std::string_view SheetFuelDeductionCaption = "(V * X) / 366";

// The van history, an earlier method of charging vans. Nothing leads to it and nothing reads what it stores.

/// Its caption before a van is chosen, and the year that its rows of use run through.
inline constexpr std::string_view VanHistoryCaption = "Van Record 2009-2010";
inline constexpr std::string_view VanHistoryStart = "06/04/2009";
inline constexpr std::string_view VanHistoryEnd = "05/04/2010";
inline constexpr auto VanHistoryStartDay = DayOf(VanHistoryStart);
inline constexpr auto VanHistoryEndDay = DayOf(VanHistoryEnd);
/// A period of the shorter type of unavailability has fewer days than this, one of the longer type at least so many.
inline constexpr int VanHistoryLongPeriod = 30;

} // namespace quillmere::edition
