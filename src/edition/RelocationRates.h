#pragma once

/// Number of qualifying relocation for 2010-11: the Income Tax (Earnings and Pensions) Act 2003, s.287, and the
/// authority's booklet 480, chapter 5.
namespace quillmere::edition {

/// Pounds of qualifying expenses and benefits of one move that are exempt.
inline constexpr int RelocationExemption = 8000;

} // namespace quillmere::edition
