#include "frame/Inserted.h"

#include <algorithm>

namespace quillmere {

Insertion Inserted(std::u32string_view before, std::u32string_view now, std::size_t caret)
{
    const std::u32string_view tail = now.substr(caret);
    if (!before.ends_with(tail))
        return {.place = 0, .removed = before.size(), .typed = std::u32string(now.substr(0, caret))};
    const std::size_t limit = std::min(caret, before.size() - tail.size());
    std::size_t place = 0;
    while (place < limit && now[place] == before[place])
        ++place;
    return {.place = place,
            .removed = before.size() - tail.size() - place,
            .typed = std::u32string(now.substr(place, caret - place))};
}

} // namespace quillmere
