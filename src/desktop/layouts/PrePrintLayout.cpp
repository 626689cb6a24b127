#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"

namespace quillmere::layouts {

Layout PrePrint()
{
    constexpr int line = 26;
    Layout layout{.width = 800, .height = 520, .growing = "EmpList"};
    layout.Place("Title", 16, 12, 300, 24);
    layout.Place("Label1", 16, 40, 300, 96);
    layout.Text(16, 146, 340, "Employer", {.bold = true});
    FilterLine(layout, 16, 168, 340);
    layout.Place("EmpList", 16, 202, 340, 254);
    layout.Place("ListCount", 16, 476, 340);

    layout.Frame(372, 20, 412, 254, "Schedules");
    layout.Place("AllSch", 388, 42, 190, 24);
    for (int index = 1; index <= 15; ++index) {
        if (index == 13)
            continue;
        const int place = index < 13 ? index - 1 : index - 2;
        layout.PlaceAt("SchTick", index, place < 7 ? 388 : 584, 76 + place % 7 * line, 190, 24);
    }
    layout.Frame(372, 290, 412, 62, "P11D");
    layout.Place("P11D", 388, 314, 190, 24);
    layout.Place("P11DB", 584, 314, 190, 24);

    ButtonRow(layout, 784, 476, std::to_array<std::string_view>({"Print", "Cancel"}));
    return layout;
}

} // namespace quillmere::layouts
