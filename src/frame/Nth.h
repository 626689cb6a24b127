#pragma once

#include <cstddef>
#include <iterator>
#include <stdexcept>

namespace quillmere {

/// The place of the `number`-th in a list that is counted from 1, as the forms count their cars, loans and lines.
constexpr std::size_t PlaceOfNth(int number)
{
    return static_cast<std::size_t>(number - 1);
}

/// The `number`-th of a list. One that there is not is a mistake in the program: std::out_of_range.
template<typename List>
constexpr auto& Nth(List& list, int number)
{
    if (number < 1 || number > std::ssize(list))
        throw std::out_of_range("no such number in a list");
    return list[PlaceOfNth(number)];
}

} // namespace quillmere
