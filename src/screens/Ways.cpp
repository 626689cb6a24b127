#include "screens/Ways.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

/// From which screen, by which of its controls, another one is reached.
struct WayRow {
    std::string_view to, from, by;
};
constexpr auto Ways = std::to_array<WayRow>({
    {"Form3", "Side2Form1", "Page1"},
    {"Side2Form1", "Form3", "Page2"},
    {"Form3_4", "Form3", "Label65"},
    {"Form5_6", "Form3", "Label66"},
    {"P11DDeclaration", "Form3", "lblP11DB"},
});

} // namespace

Screen* Reach(Screens& screens, std::string_view screen)
{
    if (screens.IsShown(screen))
        return screens.Find(screen);
    const auto* const way = std::ranges::find(Ways, screen, &WayRow::to);
    if (way == Ways.end())
        return nullptr;
    // What is reached from page 1 is reached from page 2 by way of it.
    if (!screens.IsShown(way->from) && (screen == "Form3" || Reach(screens, way->from) == nullptr))
        return nullptr;
    Screen* from = screens.Find(way->from);
    from->Click(from->box(way->by));
    return screens.IsShown(screen) ? screens.Find(screen) : nullptr;
}

} // namespace quillmere
