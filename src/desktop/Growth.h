#pragma once

#include "desktop/layouts/Layout.h"
#include "frame/Screen.h"

#include <QRect>
#include <QSize>

#include <algorithm>

namespace quillmere {

/// Where the things of a layout stand in a window that is larger than it, or smaller: the list takes the room or gives
/// it, as do the lists at its place, and in width the lines as wide as it; what stands below or to the right of it
/// makes way, buttons keep to the corner, and what would reach beyond the list's edge is narrower.
class Growth {
public:
    Growth(const Layout& layout, const Screen& screen) : drawn(layout.width, layout.height)
    {
        const auto place = std::ranges::find(layout.placed, layout.growing, &Layout::Placed::box);
        if (place == layout.placed.end())
            return;
        list = Rect(*place);
        if (IsAtFoot(screen.Mode())) // which scrolls: it is as high as its lines need
            return;
        least = list.size().boundedTo(QSize(240, 100)) - list.size();
        // Nothing comes to lie on what stands beside it.
        for (const Layout::Placed& button : layout.placed) {
            if (button.x > list.right())
                least = {0, 0};
            if (screen.box(button.box, button.index).Kind() != BoxKind::Button)
                continue;
            int beside = 0;
            for (const Layout::Placed& other : layout.placed)
                if (screen.box(other.box, other.index).Kind() != BoxKind::Button && other.x < button.x &&
                    other.y < button.y + button.height && button.y < other.y + other.height)
                    beside = std::max(beside, other.x + other.width);
            least.setWidth(std::max(least.width(), beside - button.x));
        }
    }

    bool IsPossible() const { return !list.isEmpty(); }
    /// The window's size is now `size`.
    void FollowSize(QSize size)
    {
        if (IsPossible())
            more = (size - drawn).expandedTo(least);
    }
    QSize Whole() const { return drawn + more; }
    QRect Of(const QRect& place) const
    {
        return place.translated(place.left() > list.right() ? more.width() : 0,
                                place.top() > list.bottom() ? more.height() : 0);
    }
    QRect Of(const QRect& place, BoxKind kind) const
    {
        if (place == list)
            return {place.topLeft(), place.size() + more};
        QRect moved = Of(place);
        if (kind == BoxKind::Button)
            moved.moveLeft(place.left() + more.width());
        else if (place.left() == list.left() && place.width() >= list.width())
            moved.setWidth(place.width() + more.width());
        else if (const int edge = list.right() + more.width(); place.right() <= list.right() && moved.right() > edge)
            moved.setRight(edge);
        return moved;
    }

private:
    static QRect Rect(const Layout::Placed& place) { return {place.x, place.y, place.width, place.height}; }

    QSize drawn;
    QRect list;
    QSize least{0, 0}; ///< the change to the smallest window
    QSize more{0, 0};
};

} // namespace quillmere
