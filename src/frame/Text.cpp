#include "frame/Text.h"

#include <array>
#include <charconv>

namespace quillmere {

namespace {

constexpr char32_t Replacement = 0xFFFD;

/// One character at the front of a text and the bytes that it takes up.
struct Decoded {
    char32_t codePoint;
    std::size_t bytes;
};

constexpr bool IsContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

/// Overlong forms, surrogates and codes past the last plane are no UTF-8: their first byte is taken alone.
Decoded DecodeFirst(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return {lead, 1};

    std::size_t bytes = 0;
    char32_t codePoint = 0;
    char32_t smallest = 0;
    if ((lead & 0xE0) == 0xC0) {
        bytes = 2;
        codePoint = lead & 0x1FU;
        smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        bytes = 3;
        codePoint = lead & 0x0FU;
        smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        bytes = 4;
        codePoint = lead & 0x07U;
        smallest = 0x10000;
    }
    if (bytes == 0 || text.size() < bytes)
        return {Replacement, 1};
    for (std::size_t at = 1; at < bytes; ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (!IsContinuation(byte))
            return {Replacement, 1};
        codePoint = (codePoint << 6) | (byte & 0x3FU);
    }
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest || isSurrogate || codePoint > 0x10FFFF)
        return {Replacement, 1};
    return {codePoint, bytes};
}

void AppendUtf8(std::string& text, char32_t codePoint)
{
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
        codePoint = Replacement;
    const auto add = [&text](char32_t byte) { text.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (codePoint < 0x80) {
        add(codePoint);
    } else if (codePoint < 0x800) {
        add(0xC0 | (codePoint >> 6));
        add(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        add(0xE0 | (codePoint >> 12));
        add(0x80 | ((codePoint >> 6) & 0x3F));
        add(0x80 | (codePoint & 0x3F));
    } else {
        add(0xF0 | (codePoint >> 18));
        add(0x80 | ((codePoint >> 12) & 0x3F));
        add(0x80 | ((codePoint >> 6) & 0x3F));
        add(0x80 | (codePoint & 0x3F));
    }
}

} // namespace

std::string_view Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Trim(std::string_view text)
{
    return std::string(Trimmed(text));
}

std::string UpperCase(std::string_view text)
{
    std::string upper(text);
    for (std::size_t at = 0; at < upper.size(); ++at) {
        const auto byte = static_cast<unsigned char>(upper[at]);
        if (byte >= 'a' && byte <= 'z') {
            upper[at] = static_cast<char>(byte - 0x20);
            continue;
        }
        // U+00E0 to U+00FE without the division sign. The lead byte C3 begins nothing else.
        if (byte == 0xC3 && at + 1 < upper.size()) {
            const auto next = static_cast<unsigned char>(upper[at + 1]);
            if (next >= 0xA0 && next <= 0xBE && next != 0xB7)
                upper[at + 1] = static_cast<char>(next - 0x20);
        }
    }
    return upper;
}

std::size_t Length(std::string_view text)
{
    std::size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(DecodeFirst(text).bytes);
    return count;
}

std::string Left(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (; count > 0 && end < text.size(); --count)
        end += DecodeFirst(text.substr(end)).bytes;
    return std::string(text.substr(0, end));
}

std::string Numbered(std::string_view stem, int number)
{
    std::array<char, 12> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    std::string name;
    return name.append(stem).append(digits.data(), end);
}

std::u32string CodePoints(std::string_view text)
{
    std::u32string codePoints;
    codePoints.reserve(text.size());
    while (!text.empty())
        codePoints.push_back(TakeCodePoint(text));
    return codePoints;
}

char32_t TakeCodePoint(std::string_view& text)
{
    const Decoded first = DecodeFirst(text);
    text.remove_prefix(first.bytes);
    return first.codePoint;
}

std::string Utf8(std::u32string_view codePoints)
{
    std::string text;
    text.reserve(codePoints.size());
    for (const char32_t codePoint : codePoints)
        AppendUtf8(text, codePoint);
    return text;
}

} // namespace quillmere
