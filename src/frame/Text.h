#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmere {

constexpr bool IsDigit(char32_t character)
{
    return character >= U'0' && character <= U'9';
}

/// The text, or what stands in for an empty one.
constexpr std::string_view TextOr(std::string_view text, std::string_view standIn)
{
    return text.empty() ? standIn : text;
}

/// The text without its outer blanks. Only the blank character counts, no tabs or line ends.
std::string_view Trimmed(std::string_view text);
std::string Trim(std::string_view text);

/// Upper case of ASCII and Latin-1 letters; everything else as it is. UTF-8 in and out.
std::string UpperCase(std::string_view text);

/// Number of characters (not bytes) of a UTF-8 text.
std::size_t Length(std::string_view text);

/// The first `count` characters of a UTF-8 text.
std::string Left(std::string_view text, std::size_t count);

/// A numbered name: stem and number joined with no padding. "Description" and 7 give "Description7", and "DateFrom1"
/// (the first period) with 2 (of van 2) "DateFrom12".
std::string Numbered(std::string_view stem, int number);

/// Code points of a UTF-8 text; a byte that is no UTF-8 comes out as U+FFFD.
std::u32string CodePoints(std::string_view text);

/// Takes the first character off a text that is not empty; U+FFFD for a byte that is no UTF-8.
char32_t TakeCodePoint(std::string_view& text);

/// UTF-8 of code points.
std::string Utf8(std::u32string_view codePoints);

} // namespace quillmere
