#include "desktop/layouts/DialogParts.h"

#include "printing/paper/Fonts.h"

#include <algorithm>

namespace quillmere::layouts {

void ButtonRow(Layout& layout, int right, int y, std::span<const std::string_view> buttons, int width)
{
    int x = right + ButtonGap - static_cast<int>(buttons.size()) * (width + ButtonGap);
    for (const std::string_view button : buttons) {
        layout.Place(button, x, y, width, ButtonHeight);
        x += width + ButtonGap;
    }
}

void FilterLine(Layout& layout, int x, int y, int width)
{
    constexpr int CaptionWidth = 46, TickWidth = 58;
    layout.Text(x, y, CaptionWidth, "Show", {.size = 13});
    layout.Place("ListFilter", x + CaptionWidth, y, width - CaptionWidth - TickWidth - ButtonGap, 26);
    layout.Place("ListSorted", x + width - TickWidth, y, TickWidth, 26);
}

void Button(Layout& layout, int right, int y, std::string_view button)
{
    ButtonRow(layout, right, y, {&button, 1});
}

void TakeTurns(Layout& layout, int right, int y, std::initializer_list<std::string_view> accepting,
               std::string_view cancel)
{
    for (const std::string_view button : accepting)
        Button(layout, right - ButtonWidth - ButtonGap, y, button);
    Button(layout, right, y, cancel);
}

double WidthOf(std::string_view text, const TextLook& look)
{
    const Face face = look.bold ? Face::SansBold : look.italic ? Face::SansItalic : Face::SansRegular;
    const FaceMetrics& metrics = MetricsOf(face);
    // On the screen rounding makes a text a little wider than its glyphs together.
    constexpr double ForRounding = 1.02;
    return static_cast<double>(metrics.Measure(text)) * look.size / metrics.UnitsPerEm() * ForRounding;
}

int HeightOf(std::string_view text, int width, const TextLook& look)
{
    const double blank = WidthOf(" ", look);
    int lines = 1;
    double used = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const double word = WidthOf(text.substr(at, end - at), look);
        if (used > 0 && used + word > width) {
            ++lines;
            used = 0;
        }
        used += word + blank;
        at = end + 1;
    }
    return lines * (look.size + 4);
}

} // namespace quillmere::layouts
