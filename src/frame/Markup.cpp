#include "frame/Markup.h"

namespace quillmere {

std::string MarkupText(std::string_view text)
{
    std::string written;
    for (const char character : text) {
        switch (character) {
        case '&':
            written += "&amp;";
            break;
        case '<':
            written += "&lt;";
            break;
        case '>':
            written += "&gt;";
            break;
        case '"':
            written += "&quot;";
            break;
        default:
            written += character;
        }
    }
    return written;
}

} // namespace quillmere
