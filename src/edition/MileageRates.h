#pragma once

#include <array>

/// Approved mileage rates for 2010-11: the Income Tax (Earnings and Pensions) Act 2003 (ITEPA), s.229 to s.236, and the
/// authority's booklet 480, chapter 16.
namespace quillmere::edition {

/// Rates of one kind of vehicle in pence per mile. ITEPA s.230.
struct MileageRate {
    int first;  ///< up to the end of the first band
    int second; ///< above it
};

struct MileageRates {
    std::array<MileageRate, 3> vehicles; ///< car or van, motorcycle, bicycle
    int firstBand;                       ///< miles
    int passenger;                       ///< pence per mile for passengers, ITEPA s.234
};

inline constexpr MileageRates Mileage{
    .vehicles = {{{.first = 40, .second = 25}, {.first = 24, .second = 24}, {.first = 20, .second = 20}}},
    .firstBand = 10000,
    .passenger = 5};

} // namespace quillmere::edition
