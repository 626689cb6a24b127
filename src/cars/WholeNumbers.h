#pragma once

#include "frame/Failure.h"

#include <cstdint>
#include <limits>

namespace quillmere {

/// A whole number of a car's working paper, where percentages, days and CO2 figures are held in 16 bits.
/// Throws Failure with "Overflow" for a number that does not fit.
inline std::int16_t ShortNumber(std::int64_t number)
{
    if (number < std::numeric_limits<std::int16_t>::min() || number > std::numeric_limits<std::int16_t>::max())
        throw Failure(OverflowNumber, "Overflow");
    return static_cast<std::int16_t>(number);
}

/// The largest whole number not above the quotient; `divisor` is above 0.
constexpr int FloorQuotient(int value, int divisor)
{
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}
static_assert(FloorQuotient(-1, 5) == -1 && FloorQuotient(-5, 5) == -1 && FloorQuotient(9, 5) == 1);

} // namespace quillmere
