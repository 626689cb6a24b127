#include "frame/FileNames.h"

#include "frame/Text.h"

namespace quillmere {

std::string ReadyFileName(std::string_view words)
{
    constexpr std::u32string_view Refused = U"/\\:*?\"<>|", Dropped = U" .";
    // What the usual file systems take, with room for an ending.
    constexpr std::size_t MostBytes = 235;
    std::string name;
    for (const char32_t character : CodePoints(words)) {
        const bool refused = character < U' ' || character == 0x7f || Refused.find(character) != std::u32string::npos;
        const std::string next = refused ? "-" : Utf8({&character, 1});
        if (name.size() + next.size() > MostBytes)
            break;
        if (!name.empty() || Dropped.find(character) == std::u32string::npos)
            name += next;
    }
    while (name.ends_with(' ') || name.ends_with('.'))
        name.pop_back();
    return name.empty() ? "-" : name;
}

} // namespace quillmere
