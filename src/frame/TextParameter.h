#pragma once

#include <algorithm>
#include <cstddef>

namespace quillmere {

/// A text as a parameter of a template.
template<std::size_t Size>
struct TextParameter {
    consteval TextParameter(const char (&of)[Size]) { std::ranges::copy(of, text); }
    char text[Size];
};

} // namespace quillmere
