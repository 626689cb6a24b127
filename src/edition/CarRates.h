#pragma once

#include "edition/DayOf.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

/// Numbers of the car and car fuel benefit for 2010-11: the Income Tax (Earnings and Pensions) Act 2003 (ITEPA),
/// s.114 to s.153, and the authority's booklet 480, chapters 11 to 13.
namespace quillmere::edition {

/// One row of the table of approved CO2 figures: g/km, and the percentage of the price by fuel.
struct CO2Row {
    int figure;
    int petrol;
    int diesel;
};

/// Appropriate percentage by CO2 figure rounded down. ITEPA s.139, diesel supplement s.141.
inline constexpr auto CO2Table = std::to_array<CO2Row>({
    {130, 15, 18}, {135, 16, 19}, {140, 17, 20}, {145, 18, 21}, {150, 19, 22}, {155, 20, 23}, {160, 21, 24},
    {165, 22, 25}, {170, 23, 26}, {175, 24, 27}, {180, 25, 28}, {185, 26, 29}, {190, 27, 30}, {195, 28, 31},
    {200, 29, 32}, {205, 30, 33}, {210, 31, 34}, {215, 32, 35}, {220, 33, 35}, {225, 34, 35}, {230, 35, 35},
});
static_assert(CO2Table.size() == 21);
static_assert(std::ranges::is_sorted(CO2Table, {}, &CO2Row::figure));

/// Figures are rounded down to a multiple of this before they are looked up. ITEPA s.139.
inline constexpr int CO2Step = 5;
static_assert(std::ranges::all_of(CO2Table, [](const CO2Row& row) { return row.figure % CO2Step == 0; }));

/// Percentages below the first row and above the last row of the CO2 table.
inline constexpr int PetrolBelowTable = 15;
inline constexpr int DieselBelowTable = 18;
inline constexpr int AboveCO2Table = 35;

/// A CO2 figure below this, as entered, earns one of the low percentages and no reduction by fuel. ITEPA s.139.
inline constexpr int LowBandBelow = 121;
/// The ultra-low rate holds to this figure, looked at after rounding down; above it the low rate.
inline constexpr int UltraLowBandTo = 75;
inline constexpr int PetrolUltraLow = 5;
inline constexpr int PetrolLow = 10;
inline constexpr int DieselUltraLow = 8;
inline constexpr int DieselLow = 13;

/// One column of the table for cars without a CO2 figure: engine sizes below a limit in cc.
struct EngineColumn {
    std::int32_t below;
    int petrol; ///< ITEPA s.140
    int diesel; ///< ITEPA s.140 with the supplement of s.141
    int older;  ///< registered before `CO2RegimeStart`, ITEPA s.142
};

/// A car falls in the first column whose limit its engine size is below.
inline constexpr auto EngineTable = std::to_array<EngineColumn>({
    {1401, 15, 18, 15},
    {2001, 25, 28, 22},
    {std::numeric_limits<std::int32_t>::max(), 35, 35, 32},
});

/// Points taken off for the fuel of a car with a figure above the low band, or without a figure: letter and points.
/// The regulations under ITEPA s.170, SI 2001/1123.
struct FuelReductionRow {
    std::string_view letter;
    int points;
};
inline constexpr std::array<FuelReductionRow, 3> FuelReductions{{{"B", 2}, {"G", 2}, {"H", 3}}};

/// Cars registered from this day on are charged by their CO2 figure. ITEPA s.133, s.142.
inline constexpr auto CO2RegimeStart = DayOf("01/01/1998");
/// A car of letter "L" registered from this day on pays the diesel supplement. ITEPA s.141 and the regulations, SI
/// 2001/1123.
inline constexpr auto DieselStandardEnd = DayOf("01/01/2006");

/// The price of a car, after contributions, counts up to so many pounds; nothing: it counts whole. ITEPA s.121.
inline constexpr std::optional<int> MaximumCarPrice = 80000;
/// Contributions of the employee to the price count up to so many pounds. ITEPA s.132.
inline constexpr int MaximumCapitalContribution = 5000;

/// Days in the year for reductions by unavailable days: the divisor of ITEPA s.143 and s.152, not taken from the
/// calendar.
inline constexpr int DaysOfCarYear = 365;
/// The shortest period of unavailability that counts, both ends counted. ITEPA s.143.
inline constexpr int ShortestCarPeriod = 30;

/// Pounds that the percentage is applied to for free fuel. ITEPA s.150, as amended for 2010-11.
inline constexpr int CarFuelMultiplier = 18000;
static_assert(CarFuelMultiplier % 100 == 0, "the full-year fuel charge is whole pounds");

} // namespace quillmere::edition
