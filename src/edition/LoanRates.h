#pragma once

#include <string_view>

namespace quillmere::edition {

/// Official rate of interest for 2010-11, percent a year, as the list of currencies holds it. ITEPA 2003 s.181; Taxes
/// (Interest Rate) Regulations 1989 reg. 5.
inline constexpr std::string_view OfficialRateOfInterest = "4.00";
/// The currency to which that rate belongs: the first of the list.
inline constexpr std::string_view FirstCurrency = "Sterling";

} // namespace quillmere::edition
