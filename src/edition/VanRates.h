#pragma once

/// Numbers of the van and van fuel benefit for 2010-11: the Income Tax (Earnings and Pensions) Act 2003 (ITEPA), s.154
/// to s.164, and the authority's booklet 480, chapter 14.
namespace quillmere::edition {

/// Charges of a year, in pounds, and the days that count. The rules take them as an argument, so that a published
/// case can be worked with the charges of its own year.
struct VanRates {
    int charge;         ///< the van for the whole year, ITEPA s.155
    int fuelCharge;     ///< its fuel for the whole year, ITEPA s.161
    int shortestPeriod; ///< days, both ends counted, from which a further period of unavailability counts, ITEPA s.156
};

inline constexpr VanRates Vans{.charge = 3000, .fuelCharge = 550, .shortestPeriod = 30};

} // namespace quillmere::edition
