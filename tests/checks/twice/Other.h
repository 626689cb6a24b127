#pragma once

/// The other of the two.
namespace example {

inline constexpr const char* Word = "one";

namespace inner {

struct Alone {};

} // namespace inner

} // namespace example
