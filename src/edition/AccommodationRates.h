#pragma once

/// Numbers of the benefit of living accommodation for 2010-11: the Income Tax (Earnings and Pensions) Act 2003 (ITEPA),
/// s.97 to s.113, and the authority's booklet 480, chapter 21.
namespace quillmere::edition {

struct AccommodationRates {
    int costLimit;     ///< pounds; the additional charge is on the cost above, ITEPA s.106
    double percentage; ///< the official rate at the start of the year, ITEPA s.106 and s.181
    int daysDivisor;   ///< what the days of a part of the year are divided by
    int longestStay;   ///< days that can be entered
};

// Kept: the caption says 365 and the divisor is 366, as in the leap year from which it stems; 366 days can be entered.
inline constexpr AccommodationRates Accommodation{
    .costLimit = 75000, .percentage = 4, .daysDivisor = 366, .longestStay = 366};

/// What the authority divides the days of a part of the year by. Booklet 480, chapter 21.
inline constexpr int AccommodationDaysOfAuthority = 365;

} // namespace quillmere::edition
