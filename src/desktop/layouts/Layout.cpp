#include "desktop/layouts/Layout.h"

#include <algorithm>

namespace quillmere {

void Layout::Panel(int x, int y, int w, int h)
{
    drawn.push_back({.what = Drawn::What::Panel, .x = x, .y = y, .width = w, .height = h, .page = page});
}

void Layout::Frame(int x, int y, int w, int h, std::string_view title)
{
    drawn.push_back({.what = Drawn::What::Frame,
                     .x = x,
                     .y = y,
                     .width = w,
                     .height = h,
                     .text = std::string(title),
                     .look = {.size = 12, .bold = true, .align = TextLook::Align::Centre},
                     .page = page});
}

void Layout::Letter(int x, int y, std::string_view letter)
{
    drawn.push_back({.what = Drawn::What::Letter,
                     .x = x,
                     .y = y,
                     .width = 22,
                     .height = 22,
                     .text = std::string(letter),
                     .look = {.size = 15, .bold = true, .align = TextLook::Align::Centre},
                     .page = page});
}

void Layout::Tag(int x, int y, std::string_view text)
{
    drawn.push_back({.what = Drawn::What::Tag,
                     .x = x,
                     .y = y,
                     .width = 24,
                     .height = BoxHeight,
                     .text = std::string(text),
                     .look = {.size = 12, .bold = true, .align = TextLook::Align::Centre},
                     .page = page});
}

void Layout::Text(int x, int y, int w, std::string_view text, TextLook look, int h)
{
    const auto lines = 1 + std::ranges::count(text, '\n');
    const int textHeight = static_cast<int>(lines) * (look.size + 4);
    drawn.push_back({.what = Drawn::What::Text,
                     .x = x,
                     .y = y,
                     .width = w,
                     .height = h > 0 ? h : textHeight,
                     .text = std::string(text),
                     .look = look,
                     .page = page});
}

void Layout::Line(int x, int y, int w, int h)
{
    drawn.push_back({.what = Drawn::What::Line, .x = x, .y = y, .width = w, .height = h, .page = page});
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
