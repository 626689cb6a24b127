#include "PictureSheet.h"

#include "desktop/Look.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillmere::test {

QPixmap SheetOf(const std::vector<NamedPicture>& pictures)
{
    constexpr int Columns = 3, ColumnWidth = 680, Gap = 20, Caption = 26;
    std::vector<int> bottoms(Columns, Gap);
    std::vector<QRect> places;
    for (const NamedPicture& shown : pictures) {
        const QSizeF size = shown.picture.deviceIndependentSize();
        const double shrink = std::min(1.0, ColumnWidth / size.width());
        const auto column = std::ranges::min_element(bottoms);
        const int x = Gap + static_cast<int>(column - bottoms.begin()) * (ColumnWidth + Gap);
        places.emplace_back(x, *column + Caption, static_cast<int>(std::lround(size.width() * shrink)),
                            static_cast<int>(std::lround(size.height() * shrink)));
        *column = places.back().bottom() + Gap;
    }
    QPixmap sheet(Gap + Columns * (ColumnWidth + Gap), *std::ranges::max_element(bottoms) + Gap);
    sheet.fill(look::TonesInUse().desk);
    QPainter painter(&sheet);
    painter.setPen(look::TonesInUse().deskInk);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setFont(look::CaptionFont({.size = 15, .bold = true}));
    for (std::size_t picture = 0; picture < pictures.size(); ++picture) {
        painter.drawText(places[picture].left(), places[picture].top() - 8, look::Text(pictures[picture].name));
        painter.drawPixmap(places[picture], pictures[picture].picture);
    }
    return sheet;
}

} // namespace quillmere::test
