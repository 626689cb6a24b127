#pragma once

#include <algorithm>
#include <string_view>

/// How the tables about boxes name them: the screens that have a box, and its name without the number at its end.
namespace quillmere::review {

/// True if the screen is one of those of a row, parted by blanks.
constexpr bool IsOn(std::string_view screen, std::string_view screens)
{
    while (!screens.empty()) {
        const std::size_t end = std::min(screens.find(' '), screens.size());
        if (screens.substr(0, end) == screen)
            return true;
        screens.remove_prefix(std::min(end + 1, screens.size()));
    }
    return false;
}

/// A name without the number at its end: "FRegDate3" is one of the boxes FRegDate.
constexpr std::string_view WithoutNumber(std::string_view name)
{
    const bool isNumbered = name.back() >= '0' && name.back() <= '9';
    return name.substr(0, name.size() - (isNumbered ? 1 : 0));
}

/// The row of a box: the one with its own name, else the one with its name without the number; null if there is none.
template<class Rows>
constexpr auto* RowOf(const Rows& rows, std::string_view screen, std::string_view box)
{
    for (const std::string_view name : {box, WithoutNumber(box)}) {
        const auto found =
            std::ranges::find_if(rows, [&](const auto& row) { return row.box == name && IsOn(screen, row.screen); });
        if (found != std::ranges::end(rows))
            return &*found;
    }
    return static_cast<decltype(&*std::ranges::begin(rows))>(nullptr);
}

} // namespace quillmere::review
