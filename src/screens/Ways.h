#pragma once

#include "frame/Screens.h"

#include <span>
#include <string_view>
#include <vector>

namespace quillmere {

/// From which screen, by which of its controls, another one is reached.
struct Way {
    std::string_view to, from, by;
};
std::span<const Way> AllWays();

/// Opens a screen of the open employee by the user's own way: clicks what leads to it, on page 1 or by way of it.
/// Nothing if no employee is open or the way is barred.
Screen* Reach(Screens& screens, std::string_view screen);

/// Names of the screens that it reaches: the pages first, and what opens from another one behind that.
std::vector<std::string_view> ReachedScreens();

} // namespace quillmere
