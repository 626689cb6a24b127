#include "desktop/ScreenParts.h"

#include "desktop/Look.h"

#include <QFontInfo>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace quillmere {

Canvas::Canvas(const Layout& layout, int top, int bottom, const Growth& growth, QWidget* parent)
    : Canvas(layout, Place{0, top}, growth, parent)
{
    Span(top, bottom);
}

void Canvas::Span(int newTop, int bottom)
{
    top = newTop;
    setFixedSize(layout.width, bottom - top);
    update();
}

Canvas::Canvas(const Layout& layout, int page, const Growth& growth, QWidget* parent)
    : Canvas(layout, Place{page, 0}, growth, parent)
{
}

Canvas::Canvas(const Layout& layout, Place place, const Growth& growth, QWidget* parent)
    : QWidget(parent), layout(layout), growth(growth), page(place.page), top(place.top)
{
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Canvas::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), look::TonesInUse().ground);
    painter.translate(0, -top);
    const QRect dirty = event->rect().translated(0, top).adjusted(-40, -40, 40, 40);
    for (const Layout::Drawn& drawn : layout.drawn) {
        const QRect wanted(drawn.x, drawn.y, drawn.width, std::max(drawn.height, 1));
        const QRect place = growth.Of(wanted);
        if (drawn.page != page || !dirty.intersects(place))
            continue;
        painter.save();
        painter.translate(place.topLeft() - wanted.topLeft());
        look::Draw(painter, drawn);
        painter.restore();
    }
}

WrappedLabel::WrappedLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void WrappedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QStringList words = text().simplified().split(' ');
    const bool fits = std::ranges::all_of(
        words, [&](const QString& word) { return fontMetrics().horizontalAdvance(word) <= width(); });
    const int wrap = fits ? Qt::TextWordWrap : Qt::TextWrapAnywhere;
    style()->drawItemText(&painter, rect(), static_cast<int>(alignment()) | wrap, palette(), isEnabled(), text(),
                          QPalette::WindowText);
}

FigureLabel::FigureLabel(QWidget* parent) : QLabel(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setMargin(1);
    setAutoFillBackground(true);
    setPalette(look::FigurePalette());
}

void Group::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // The title is a little smaller than what stands in the group; half of it stands above the frame.
    const int size = QFontInfo(font()).pixelSize() * 12 / 13;
    const QRect frame = rect().adjusted(0, size * 2 / 3, 0, 0);
    if (!isEnabled())
        painter.setOpacity(0.5);
    look::Draw(painter, {.what = Layout::Drawn::What::Frame,
                         .x = frame.x(),
                         .y = frame.y(),
                         .width = frame.width(),
                         .height = frame.height(),
                         .text = title().toStdString(),
                         .look = {.size = size, .bold = true, .align = TextLook::Align::Centre}});
}

} // namespace quillmere
