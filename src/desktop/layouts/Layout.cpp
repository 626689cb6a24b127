#include "desktop/layouts/Layout.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr TextLook InCentre(int size)
{
    return {.size = size, .bold = true, .align = TextLook::Align::Centre};
}

void Draw(Layout& layout, Layout::Drawn::What what, int x, int y, int width, int height, std::string_view text = {},
          const TextLook& look = {})
{
    layout.drawn.push_back({.what = what,
                            .x = x,
                            .y = y,
                            .width = width,
                            .height = height,
                            .text = std::string(text),
                            .look = look,
                            .page = layout.page});
}

} // namespace

void Layout::Panel(int x, int y, int w, int h)
{
    Draw(*this, Drawn::What::Panel, x, y, w, h);
}

void Layout::Frame(int x, int y, int w, int h, std::string_view title)
{
    Draw(*this, Drawn::What::Frame, x, y, w, h, title, InCentre(12));
}

void Layout::Letter(int x, int y, std::string_view letter)
{
    Draw(*this, Drawn::What::Letter, x, y, 22, 22, letter, InCentre(15));
}

void Layout::Tag(int x, int y, std::string_view text)
{
    Draw(*this, Drawn::What::Tag, x, y, 24, BoxHeight, text, InCentre(12));
}

void Layout::Text(int x, int y, int w, std::string_view text, TextLook look, int h)
{
    const auto lines = 1 + std::ranges::count(text, '\n');
    const int textHeight = static_cast<int>(lines) * (look.size + 4);
    Draw(*this, Drawn::What::Text, x, y, w, h > 0 ? h : textHeight, text, look);
}

void Layout::Line(int x, int y, int w, int h)
{
    Draw(*this, Drawn::What::Line, x, y, w, h);
}

void Layout::Place(std::string_view box, int x, int y, int w, int h, std::string_view spoken)
{
    PlaceAt(box, Box::NoIndex, x, y, w, h, spoken);
}

void Layout::PlaceAt(std::string_view box, int index, int x, int y, int w, int h, std::string_view spoken)
{
    placed.push_back({.box = std::string(box),
                      .index = index,
                      .x = x,
                      .y = y,
                      .width = w,
                      .height = h,
                      .spoken = std::string(spoken),
                      .page = page});
}

void Layout::Field(int y, int captionX, int captionWidth, std::string_view caption, std::string_view box, int boxX,
                   int boxWidth)
{
    Text(captionX, y + 3, captionWidth, caption, {.size = 13});
    Place(box, boxX, y, boxWidth, BoxHeight, caption);
}

namespace {

/// A length or place at so many percent, to the nearest pixel.
int At(int percent, int length)
{
    return (length * percent + 50) / 100;
}

/// A look at so many percent; never larger, so that words keep within their room.
TextLook At(int percent, TextLook look)
{
    look.size = look.size * percent / 100;
    return look;
}

} // namespace

Layout Zoomed(Layout layout, int percent)
{
    const auto zoom = [percent](auto& thing) {
        thing.x = At(percent, thing.x);
        thing.y = At(percent, thing.y);
        thing.width = At(percent, thing.width);
        thing.height = At(percent, thing.height);
    };
    for (int* length : {&layout.width, &layout.height, &layout.headerHeight, &layout.footTop})
        *length = At(percent, *length);
    zoom(layout.captionPlace);
    for (Layout::Drawn& drawn : layout.drawn) {
        zoom(drawn);
        drawn.look = At(percent, drawn.look);
    }
    for (Layout::Placed& placed : layout.placed) {
        zoom(placed);
        if (placed.look)
            placed.look = At(percent, *placed.look);
    }
    return layout;
}

} // namespace quillmere
