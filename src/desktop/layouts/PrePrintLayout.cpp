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

    layout.Place("BatchNow", 372, 366, 412, 44);
    layout.Place("ToPdfFiles", 452, 476, 116, ButtonHeight);
    ButtonRow(layout, 784, 476, {"Print", "Cancel"});
    return layout;
}

Layout PdfFiles()
{
    constexpr int left = 16, box = 150, width = 440;
    Layout layout{.width = 606, .height = 330};
    layout.Place("PdfWhose", left, 14, 574);
    layout.Looks({.size = 14, .bold = true});
    layout.Text(left, 46, box - left - 8, "Files", {.size = 13});
    for (int kind = 0; kind <= 2; ++kind)
        layout.PlaceAt("PdfKind", kind, box, 42 + kind * 26, 300, 24);
    layout.Field(130, left, box - left - 8, "Folder", "PdfFolder", box, width - ButtonWidth - ButtonGap);
    layout.Place("PdfBrowse", box + width - ButtonWidth, 127, ButtonWidth, ButtonHeight);
    layout.Field(168, left, box - left - 8, "Password", "PdfWord", box, width);
    layout.Place("PdfRemark", box, 196, width, 40);
    layout.Place("PdfNow", left, 250, 574, 22);
    ButtonRow(layout, 590, 286, {"PdfWrite", "PdfCancel"});
    return layout;
}

Layout LastBatch()
{
    Layout layout{.width = 820, .height = 470, .growing = "BatchLines"};
    layout.Place("BatchWords", 16, 12, 788, 40);
    layout.Place("BatchLines", 16, 58, 788, 334);
    layout.Place("BatchNow", 16, 398, 788);
    ButtonRow(layout, 804, 430, {"BatchFolder", "BatchAgain", "BatchSheet", "BatchClose"});
    return layout;
}

} // namespace quillmere::layouts
