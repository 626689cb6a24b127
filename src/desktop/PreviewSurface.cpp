#include "desktop/PreviewSurface.h"

#include "desktop/Look.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainterPath>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillmere {

namespace {

/// Pages that stay prepared: what a window of thumbnails shows at once.
constexpr std::size_t MostPrepared = 60;
constexpr int LineStep = 40;
/// A window that the desktop does not let paint (one that is out of sight) counts as painted after this, milliseconds.
constexpr int PaintPatience = 2000;

} // namespace

PreviewSurface::PreviewSurface(frmVSPrint& preview, QWidget* parent) : QAbstractScrollArea(parent), preview(preview)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::StyledPanel);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    QTimer::singleShot(PaintPatience, this, &PreviewSurface::TellPainted);
}

void PreviewSurface::TellPainted()
{
    if (!detached && !std::exchange(isPainted, true))
        preview.Painted();
}

void PreviewSurface::Follow()
{
    if (detached)
        return;
    const PreviewView view = preview.View();
    const bool turned = view.page != page;
    const bool rezoomed = view.mode != mode;
    page = view.page;
    mode = view.mode;
    LayOut();
    const auto sheet =
        std::ranges::find_if(picture.sheets, [this](const PreviewSheet& other) { return other.page == page; });
    if (sheet != picture.sheets.end() && (turned || rezoomed))
        ShowSheet(*sheet);
    viewport()->update();
    setAccessibleName(look::Text("Page " + preview.box("lblPage").Text()));
}

/// Scrolls a sheet of many into sight; one alone begins at its top.
void PreviewSurface::ShowSheet(const PreviewSheet& sheet)
{
    QScrollBar& bar = *verticalScrollBar();
    if (mode != ZoomMode::Thumbnail) {
        bar.setValue(0);
        return;
    }
    constexpr double margin = 12;
    const double top = sheet.y - margin, bottom = sheet.y + sheet.height + margin - viewport()->height();
    bar.setValue(static_cast<int>(std::clamp(static_cast<double>(bar.value()), bottom, std::max(bottom, top))));
}

void PreviewSurface::LayOut()
{
    const QSize whole = maximumViewportSize();
    const int barWidth = verticalScrollBar()->sizeHint().width();
    preview.SurfaceSized(whole.width(), whole.height());
    picture = PlaceSheets(preview.View());
    if (picture.height > whole.height() && picture.width > whole.width() - barWidth) {
        // The upright scroll bar takes its room from the sheets.
        preview.SurfaceSized(whole.width() - barWidth, whole.height());
        picture = PlaceSheets(preview.View());
    }
    const bool tall = picture.height > whole.height();
    const int width = whole.width() - (tall ? barWidth : 0);
    const bool wide = picture.width > width + 0.5;
    const int height = whole.height() - (wide ? horizontalScrollBar()->sizeHint().height() : 0);
    const auto set = [](QScrollBar& bar, double extent, int room) {
        bar.setPageStep(room);
        bar.setSingleStep(LineStep);
        bar.setRange(0, std::max(0, static_cast<int>(std::ceil(extent - 0.5)) - room));
    };
    set(*horizontalScrollBar(), picture.width, width);
    set(*verticalScrollBar(), picture.height, height);
}

/// Where the picture's corner lies on the viewport.
QPointF PreviewSurface::Origin() const
{
    const auto along = [](const QScrollBar& bar, double extent, int room) {
        return bar.maximum() > 0 ? -static_cast<double>(bar.value()) : std::floor(std::max(0.0, (room - extent) / 2));
    };
    return {along(*horizontalScrollBar(), picture.width, viewport()->width()),
            along(*verticalScrollBar(), picture.height, viewport()->height())};
}

const PageReplay& PreviewSurface::ReplayOf(int wanted)
{
    const auto found = std::ranges::find_if(prepared, [wanted](const Prepared& one) { return one.page == wanted; });
    if (found != prepared.end())
        return *found->replay;
    prepared.push_front({wanted, std::make_unique<PageReplay>(preview.Shown(), wanted, fonts)});
    if (prepared.size() > MostPrepared)
        prepared.pop_back();
    return *prepared.front().replay;
}

void PreviewSurface::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), look::TonesInUse().desk);
    if (detached)
        return;
    const QPointF origin = Origin();
    for (const PreviewSheet& sheet : picture.sheets) {
        const QRectF place = QRectF(sheet.x, sheet.y, sheet.width, sheet.height).translated(origin);
        const QRectF edge = place.adjusted(-3, -3, 5, 5);
        if (!edge.intersects(event->rect()))
            continue;
        painter.fillRect(place.translated(3, 3), QColor(0x8E, 0x95, 0x9E));
        if (mode == ZoomMode::Thumbnail && sheet.page == page)
            painter.fillRect(place.adjusted(-3, -3, 3, 3), QColor(0x2F, 0x6F, 0xB5));
        painter.fillRect(place, Qt::white);
        painter.save();
        painter.setClipRect(place);
        painter.translate(place.topLeft());
        painter.scale(place.width() / PageReplay::Width, place.height() / PageReplay::Height);
        const QRectF exposed = painter.worldTransform().inverted().mapRect(QRectF(event->rect()));
        ReplayOf(sheet.page).Paint(painter, exposed);
        PaintEdge(painter);
        painter.restore();
    }
    if (!isPainted)
        QTimer::singleShot(0, this, &PreviewSurface::TellPainted);
}

/// Shades what the printer leaves white, on a sheet in points.
void PreviewSurface::PaintEdge(QPainter& painter) const
{
    const SheetEdge& edge = preview.Edge();
    if (edge == SheetEdge{})
        return;
    constexpr double Point = UnitsPerMillimetre / TwipsPerPoint; // points to a millimetre
    const QRectF sheet(0, 0, PageReplay::Width, PageReplay::Height);
    const QRectF printed =
        sheet.adjusted(edge.left * Point, edge.top * Point, -edge.right * Point, -edge.bottom * Point);
    QPainterPath outside;
    outside.addRect(sheet);
    outside.addRect(printed);
    painter.fillPath(outside, QColor(0x60, 0x70, 0x80, 0x38));
    QPen pen(QColor(0x60, 0x70, 0x80), 0, Qt::DashLine);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(printed);
}

void PreviewSurface::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (!detached)
        LayOut();
}

void PreviewSurface::scrollContentsBy(int dx, int dy)
{
    viewport()->scroll(dx, dy);
}

void PreviewSurface::wheelEvent(QWheelEvent* event)
{
    if (detached)
        return;
    const int turned = event->angleDelta().y();
    if ((event->modifiers() & Qt::ControlModifier) != 0) {
        if (turned != 0)
            preview.Execute(turned > 0 ? frmVSPrint::Command::ZoomIn : frmVSPrint::Command::ZoomOut);
        event->accept();
        return;
    }
    // At the end of a page the wheel goes on to the next one.
    QScrollBar& bar = *verticalScrollBar();
    if (mode != ZoomMode::Thumbnail && turned != 0 && bar.value() == (turned > 0 ? bar.minimum() : bar.maximum())) {
        const int before = page;
        preview.Execute(turned > 0 ? frmVSPrint::Command::PreviousPage : frmVSPrint::Command::NextPage);
        if (turned > 0 && page != before)
            bar.setValue(bar.maximum());
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

void PreviewSurface::mousePressEvent(QMouseEvent* event)
{
    if (detached || event->button() != Qt::LeftButton)
        return;
    dragged = event->pos();
    const QPointF at = event->position() - Origin();
    for (const PreviewSheet& sheet : picture.sheets)
        if (picture.sheets.size() > 1 && QRectF(sheet.x, sheet.y, sheet.width, sheet.height).contains(at)) {
            if (mode == ZoomMode::Thumbnail)
                preview.TurnTo(sheet.page);
            return;
        }
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void PreviewSurface::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->buttons() & Qt::LeftButton) == 0 || mode == ZoomMode::Thumbnail)
        return;
    const QPoint moved = event->pos() - dragged;
    dragged = event->pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void PreviewSurface::mouseReleaseEvent(QMouseEvent*)
{
    viewport()->unsetCursor();
}

} // namespace quillmere
