#include "cars/ExtraCarsScreen.h"
#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"
#include "desktop/layouts/PageParts.h"

namespace quillmere::layouts {

Layout ExtraCarsScreen(const ExtraCars& which)
{
    Layout layout{.width = PageWidth};
    constexpr int Top = 8;
    Section(layout, Top, 0, "F", "Cars and car fuel");
    const int below = CarRows(layout, Top + 22, which.cars.front());
    layout.drawn.front().height = below - Top + 6;
    ButtonRow(layout, SectionX + SectionWidth, below + 18, OkDeleteCancel);
    layout.footTop = below - 2 * CarRow - 4; // what the cars come to, and the buttons
    layout.height = below + 18 + ButtonHeight + 12;
    return layout;
}

} // namespace quillmere::layouts
