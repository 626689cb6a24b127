#pragma once

#include <cerrno>
#include <cstdlib>
#include <fmt/format.h>
#include <string_view>

namespace quillmere::bench {

/// Ends the run, for what it measures would be worth nothing, unless it holds.
inline void Require(bool holds, std::string_view what)
{
    if (holds)
        return;
    fmt::print(stderr, "{}: {}\n", program_invocation_short_name, what);
    std::abort();
}

} // namespace quillmere::bench
