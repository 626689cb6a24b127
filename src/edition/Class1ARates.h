#pragma once

#include <string_view>

/// Class 1A National Insurance contributions for 2010-11: the Social Security Contributions and Benefits Act 1992,
/// s.10, and the authority's booklet CWG5.
namespace quillmere::edition {

/// Rate in per cent, as it enters the sum.
inline constexpr double Class1ARate = 12.8;
/// The same rate as the boxes read.
inline constexpr std::string_view Class1ARateText = "12.8%";

/// The days of the year in which the returns and the payments are due, as the notes of the form name them.
inline constexpr std::string_view ReturnDueDay = "6 July";
inline constexpr std::string_view PostedPaymentDueDay = "19 July";
inline constexpr std::string_view ElectronicPaymentDueDay = "22 July";

/// The authority's page on paying Class 1A contributions.
inline constexpr std::string_view Class1APaymentPage = "www.hmrc.gov.uk/payinghmrc/class1a.htm";

} // namespace quillmere::edition
