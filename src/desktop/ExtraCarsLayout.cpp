#include "cars/ExtraCarsScreen.h"
#include "desktop/Layouts.h"
#include "desktop/PageParts.h"

namespace quillmere::layouts {

Layout ExtraCarsScreen(const ExtraCars& which)
{
    Layout layout{.width = PageWidth};
    constexpr int ButtonWidth = 96, ButtonHeight = 28;
    constexpr int Top = 8;
    Section(layout, Top, 0, "F", "Cars and car fuel");
    const int below = CarRows(layout, Top + 22, which.cars.front());
    layout.drawn.front().height = below - Top + 6;
    int x = SectionX + SectionWidth - 3 * ButtonWidth - 2 * 8;
    for (const std::string_view button : {"Ok", "Delete", "Cancel"}) {
        layout.Place(button, x, below + 18, ButtonWidth, ButtonHeight);
        x += ButtonWidth + 8;
    }
    layout.footTop = below - 2 * CarRow - 4; // what the cars come to, and the buttons
    layout.height = below + 18 + ButtonHeight + 12;
    return layout;
}

} // namespace quillmere::layouts
