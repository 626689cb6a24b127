#pragma once

#include "desktop/layouts/Layout.h"
#include "frame/Box.h"

#include <QRect>
#include <QSize>

#include <algorithm>

namespace quillmere {

/// Where the things of a layout stand in a window made larger than it: the list takes the room, what stands below or to
/// the right of it makes way, and buttons keep to the corner.
class Growth {
public:
    explicit Growth(const Layout& layout) : smallest(layout.width, layout.height)
    {
        const auto place = std::ranges::find(layout.placed, layout.growing, &Layout::Placed::box);
        if (place != layout.placed.end())
            list = QRect(place->x, place->y, place->width, place->height);
    }

    bool IsPossible() const { return !list.isEmpty(); }
    /// The window's size is now `size`.
    void FollowSize(QSize size)
    {
        if (IsPossible())
            more = (size - smallest).expandedTo(QSize(0, 0));
    }
    QSize Whole() const { return smallest + more; }
    QRect Of(const QRect& place) const
    {
        return place.translated(place.left() > list.right() ? more.width() : 0,
                                place.top() > list.bottom() ? more.height() : 0);
    }
    QRect Of(const QRect& place, BoxKind kind) const
    {
        if (kind == BoxKind::List || kind == BoxKind::Table)
            return {place.topLeft(), place.size() + more};
        QRect moved = Of(place);
        if (kind == BoxKind::Button)
            moved.moveLeft(place.left() + more.width());
        return moved;
    }

private:
    QSize smallest;
    QRect list;
    QSize more{0, 0};
};

} // namespace quillmere
