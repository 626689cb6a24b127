#include "printing/paper/PdfText.h"

#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace quillmere {

namespace {

/// True for a character that has one byte in the format's own encoding, the same as in Latin-1.
bool IsOneByte(char32_t character)
{
    return (character >= U' ' && character <= U'~') || (character > 0xA0 && character <= 0xFF && character != 0xAD);
}

/// One byte a character.
std::string InBytes(std::u32string_view characters)
{
    std::string object = "(";
    for (const char32_t character : characters) {
        if (character == U'(' || character == U')' || character == U'\\')
            object += '\\';
        object += static_cast<char>(character);
    }
    return object + ')';
}

} // namespace

std::string PdfText(std::string_view text)
{
    const auto isPlain = [](char c) { return c >= ' ' && c <= '~' && c != '(' && c != ')' && c != '\\'; };
    if (std::ranges::all_of(text, isPlain))
        return std::string("(").append(text) + ')';
    const std::u32string characters = CodePoints(text);
    // Two such bytes in front could be the mark of another encoding.
    if (characters.front() <= U'~' && std::ranges::all_of(characters, IsOneByte))
        return InBytes(characters);
    std::string object = "<FEFF";
    const auto append = [&object](std::uint32_t unit) { fmt::format_to(std::back_inserter(object), "{:04X}", unit); };
    for (const char32_t character : characters)
        if (character > 0xFFFF) {
            append(0xD800 + ((character - 0x10000) >> 10));
            append(0xDC00 + ((character - 0x10000) & 0x3FF));
        } else {
            append(character);
        }
    return object + '>';
}

} // namespace quillmere
