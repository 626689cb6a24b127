#include "printing/paper/PdfText.h"

#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace quillmere {

std::string PdfText(std::string_view text)
{
    if (std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~' && c != '(' && c != ')' && c != '\\'; }))
        return fmt::format("({})", text);
    std::string object = "<FEFF";
    const auto append = [&object](std::uint32_t unit) { fmt::format_to(std::back_inserter(object), "{:04X}", unit); };
    while (!text.empty()) {
        const char32_t character = TakeCodePoint(text);
        if (character > 0xFFFF) {
            append(0xD800 + ((character - 0x10000) >> 10));
            append(0xDC00 + ((character - 0x10000) & 0x3FF));
        } else {
            append(character);
        }
    }
    return object + '>';
}

} // namespace quillmere
