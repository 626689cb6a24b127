#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"

namespace quillmere::layouts {

namespace {

constexpr int LineHeight = 30;

struct CaptionedBox {
    std::string_view caption, box;
};

struct Choice {
    std::string_view box;
    int index;
};

/// A titled group with room for so many lines; gives the height of its first one.
int Group(Layout& layout, int x, int y, int width, int lines, std::string_view title)
{
    const int height = lines * LineHeight + 16;
    layout.Panel(x, y, width, height);
    layout.Frame(x, y, width, height, title);
    return y + 14;
}

void FieldGroup(Layout& layout, int x, int y, int width, std::string_view title,
                std::initializer_list<CaptionedBox> fields)
{
    constexpr int boxWidth = 84;
    int line = Group(layout, x, y, width, static_cast<int>(fields.size()), title);
    for (const CaptionedBox& field : fields) {
        layout.Field(line, x + 12, width - boxWidth - 30, field.caption, field.box, x + width - boxWidth - 12,
                     boxWidth);
        layout.placed.back().spoken.clear(); // the box's own words say which page is meant
        line += LineHeight;
    }
}

void ChoiceGroup(Layout& layout, int x, int y, int width, std::string_view title, std::initializer_list<Choice> choices)
{
    int line = Group(layout, x, y, width, static_cast<int>(choices.size()), title);
    for (const Choice& choice : choices) {
        layout.PlaceAt(choice.box, choice.index, x + 12, line, width - 24);
        line += LineHeight;
    }
}

} // namespace

Layout frmVSPrintSettings()
{
    Layout layout{.width = 600, .height = 504, .pageBox = "picSettings"};
    layout.Place("tbsSettings", 12, 12, 576, 436);

    constexpr int left = 18, right = 296, width = 258;
    layout.page = 1;
    layout.Field(22, left, 60, "Printer", "cmbPrinter", left + 62, 348);
    layout.Place("cmdSetup", 442, 19, 112, ButtonHeight);
    FieldGroup(layout, left, 74, width, "Page Setup",
               {{"Top Offset (mm)", "txtVSTop"}, {"Left Offset (mm)", "txtVSLeft"}, {"Scale (%)", "txtVSScale"}});
    ChoiceGroup(layout, right, 74, width, "Duplex", {{"optDuplexMode", 2}, {"optDuplexMode", 1}, {"optDuplexMode", 0}});

    layout.page = 2;
    FieldGroup(layout, left, 28, width, "Page Setup",
               {{"Top Offset (mm)", "txtPDFTop"}, {"Left Offset (mm)", "txtPDFLeft"}, {"Scale (%)", "txtPDFScale"}});
    const int file = Group(layout, right, 28, width, 3, "Default File Name");
    layout.PlaceAt("optFile", 0, right + 12, file, width - 24);
    layout.PlaceAt("optFile", 1, right + 12, file + LineHeight, width - 24);
    layout.Place("txtFile", right + 34, file + 2 * LineHeight, width - 46);

    layout.page = 3;
    layout.Place("chkDuplexPadding", left, 14, 400);
    constexpr int middle = 224, narrow = 158, last = 396;
    FieldGroup(layout, left, 58, 190, "Text Alignment",
               {{"Method", "txtAlignMethod"}, {"Vertical", "txtAlignV"}, {"Horizontal", "txtAlignH"}});
    ChoiceGroup(layout, middle, 58, narrow, "Font", {{"optFont", 1}, {"optFont", 0}});
    ChoiceGroup(layout, last, 58, narrow, "Preview", {{"optPreview", 1}, {"optPreview", 0}});
    ChoiceGroup(layout, middle, 160, narrow, "Section Breaks", {{"optSection", 1}, {"optSection", 0}});
    ChoiceGroup(layout, last, 160, narrow, "Ticks", {{"optTicks", 2}, {"optTicks", 0}});
    const int shading = Group(layout, left, 190, 190, 5, "Shading");
    layout.Place("chkShading", left + 12, shading, 160);
    int line = shading;
    for (const CaptionedBox& field : {CaptionedBox{"Black", "txtBlack"},
                                      {"Dark Grey", "txtDark"},
                                      {"Light Grey", "txtLight"},
                                      {"White", "txtWhite"}})
        layout.Field(line += LineHeight, left + 12, 84, field.caption, field.box, left + 94, 84);

    layout.page = 0;
    ButtonRow(layout, 588, 462, {"cmdDefaults", "cmdClose"});
    return layout;
}

/// The strip at the top, in one line; its window breaks it where that has less room. The rest shows the document.
Layout frmVSPrint()
{
    constexpr int strip = 40, y = 6, height = 28;
    Layout layout{.width = 1340, .height = strip, .headerHeight = strip};
    layout.Panel(0, 0, 4000, 4 * strip);
    layout.Place("cmbPrint", 84, y, 92, height);
    layout.Place("cmdFirst", 192, y, 36, height);
    layout.Place("cmdPrevious", 230, y, 36, height);
    layout.Place("lblPage", 270, y, 92, height);
    layout.Place("cmdNext", 366, y, 36, height);
    layout.Place("cmdLast", 404, y, 36, height);
    layout.Place("cmbZoomMode", 498, y, 116, height);
    layout.Place("cmbPercent", 620, y, 80, height);
    layout.Place("cmdPrint", 716, y, 84, height);
    layout.Place("cmdClose", 806, y, 84, height);
    layout.Place("SavePdf", 908, y, 96, height);
    layout.Place("ShowInFolder", 1010, y, 116, height);
    layout.Place("cmdInside", 1010, y, 116, height);
    layout.Place("lblEdge", 1010, y, 160, height);
    layout.Place("lblLook", 1010, y, 160, height);
    layout.Place("lblDocument", 1010, y, 330, height);
    return layout;
}

Layout frmVSPrintDialog()
{
    Layout layout{.width = 420, .height = 452};
    constexpr int x = 16, width = 388, title = 8;
    const auto group = [&layout](std::string_view box, int y, int height) {
        layout.Panel(x, y, width, height);
        layout.Place(box, x, y - title, width, height + title);
    };
    group("fraCopies", 22, 56);
    layout.Field(40, x + 14, 150, "Number of copies", "txtCopies", x + 180, 64);
    group("fraRange", 98, 168);
    layout.PlaceAt("optRange", 0, x + 14, 112, 160);
    layout.PlaceAt("optRange", 1, x + 14, 142, 160);
    layout.PlaceAt("optRange", 2, x + 14, 172, 90);
    layout.Place("txtPageNumbers", x + 110, 172, 262, Layout::BoxHeight, "Page numbers");
    layout.Text(x + 14, 208, 360, "Enter page numbers and/or page ranges separated by commas. For example, 1,3,5-12",
                {.size = 13}, 48);
    group("fraDuplex", 286, 110);
    for (int index = 0; index <= 2; ++index)
        layout.PlaceAt("optDuplex", index, x + 14, 300 + index * 30, 300);
    ButtonRow(layout, 404, 412, {"cmdPrint", "cmdCancel"});
    return layout;
}

} // namespace quillmere::layouts
