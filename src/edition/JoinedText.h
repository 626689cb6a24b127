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

/// A number that is not negative, "5000".
constexpr JoinedText Digits(int number)
{
    const char digit = static_cast<char>('0' + number % 10);
    const std::string_view last(&digit, 1);
    return number < 10 ? Join({last}) : Join({Digits(number / 10), last});
}

/// An amount of whole pounds as it is printed, "£80,000".
constexpr JoinedText Pounds(int amount)
{
    constexpr int thousand = 1000;
    if (amount < thousand)
        return Join({"£", Digits(amount)});
    const JoinedText last = Digits(thousand + amount % thousand);
    return Join({Pounds(amount / thousand), ",", std::string_view(last).substr(1)});
}

} // namespace quillmere::edition
