#pragma once

#include "frame/Dates.h"

#include <cstdint>
#include <string_view>

/// Percentages of the car benefit (`basCO2Calculations`). The tables stand in edition/CarRates.h and need no filling.
namespace quillmere {

/// True if the date of registration lies before the day from which the CO2 figure decides.
bool IsBeforeCO2Regime(Day registered);

/// True for diesel, and for the cleaner diesel of "L" once its exemption had ended for newly registered cars.
bool IsDieselRated(std::string_view fuel, Day registered);

/// Percentage points that the fuel letter takes off; 0 for every letter without a reduction.
std::int16_t GetFuelReduction(std::string_view fuel);

/// Appropriate percentage for an approved CO2 figure that has been rounded down to a multiple of five. `low` says that
/// the figure as entered lies in the low band. 0 if the table has no such figure.
std::int16_t GetCO2Percentage(std::int16_t co2, std::string_view fuel, Day registered, bool low);

/// Percentage for a car without a CO2 figure by its engine size in cc; 0 for the letters "B" and "E".
std::int16_t GetEnginePercentage(std::int32_t engine, std::string_view fuel, Day registered);

} // namespace quillmere
