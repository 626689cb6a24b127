#pragma once

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
inline constexpr std::string_view EarliestLoanDate = "06/04/2002";

} // namespace quillmere::edition
