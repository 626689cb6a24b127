#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmere {

/// What has come into a text: at `place`, `removed` characters gave way to `typed`.
struct Insertion {
    std::size_t place = 0;
    std::size_t removed = 0;
    std::u32string typed;

    friend bool operator==(const Insertion&, const Insertion&) = default;
};

/// What turned a text into what it is now, as the caret tells: behind the caret stands what stood there before, and in
/// front of it, after what both texts begin with, what has come in. A text that shares no end with the one before has
/// been replaced whole.
Insertion Inserted(std::u32string_view before, std::u32string_view now, std::size_t caret);

} // namespace quillmere
