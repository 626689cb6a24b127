#pragma once

/// One of two headers that define a name twice, for the test of scripts/twice-defined.
namespace example {

inline constexpr int Word = 1;
struct Alone {};

} // namespace example
