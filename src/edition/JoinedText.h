#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace quillmere::edition {

/// A text put together at compile time. One that is too long for it does not compile.
class JoinedText {
public:
    constexpr JoinedText(std::initializer_list<std::string_view> parts)
    {
        for (const std::string_view part : parts)
            for (const char character : part)
                characters.at(size++) = character;
    }
    constexpr operator std::string_view() const { return {characters.data(), size}; }

private:
    std::array<char, 96> characters{};
    std::size_t size = 0;
};

constexpr JoinedText Join(std::initializer_list<std::string_view> parts)
{
    return parts;
}

} // namespace quillmere::edition
