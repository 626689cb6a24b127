#include "desktop/PageReplay.h"

#include "frame/Text.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <span>

namespace quillmere {

namespace {

constexpr double Point(double twips)
{
    return twips / TwipsPerPoint;
}

QColor ColorOf(Colour colour)
{
    return {colour.red, colour.green, colour.blue};
}

/// One axis of the way from points to the pixels of the device, with no turning.
struct Axis {
    double scale, offset;

    /// The pixel boundary nearest to a place.
    double Edge(double place) const { return std::round(place * scale + offset); }
    double Back(double pixel) const { return (pixel - offset) / scale; }
    /// How many pixels thick a line is; it is never lost.
    double Thick(double width) const { return std::max(1.0, std::round(width * scale)); }
};

/// Paints the shapes of one page.
class Shapes {
public:
    explicit Shapes(QPainter& painter) : painter(painter)
    {
        const QTransform device = painter.deviceTransform();
        across = {device.m11(), device.dx()};
        down = {device.m22(), device.dy()};
    }

    void Line(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Line(style, {Point(x1), Point(y1)}, {Point(x2), Point(y2)});
    }
    void Rectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Rectangle(style, QRectF(QPointF(Point(x1), Point(y1)), QPointF(Point(x2), Point(y2))).normalized());
    }
    void Circle(const ShapeStyle& style, double x, double y, double radius)
    {
        Smooth(style);
        painter.drawEllipse(QPointF(Point(x), Point(y)), Point(radius), Point(radius));
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
    void Polygon(const ShapeStyle& style, std::span<const double> corners)
    {
        QPolygonF polygon;
        for (std::size_t at = 0; at + 1 < corners.size(); at += 2)
            polygon << QPointF(Point(corners[at]), Point(corners[at + 1]));
        Smooth(style);
        painter.drawPolygon(polygon);
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
    void Text(const TextStyle&, const Operation&, std::string_view) {} // Texts are painted as runs of glyphs.

private:
    /// Fills between pixel boundaries.
    void Fill(double left, double top, double right, double bottom, const QColor& colour)
    {
        painter.fillRect(
            QRectF(QPointF(across.Back(left), down.Back(top)), QPointF(across.Back(right), down.Back(bottom))), colour);
    }

    /// An upright line with its ends, as thick as half the pen's width beyond them, for a shape drawn with it.
    void Upright(QColor colour, double width, QPointF from, QPointF to)
    {
        const double reach = width / 2;
        // Where a line is much thinner than a pixel it is paler instead, so that a small page does not turn black.
        constexpr double faint = 0.5;
        if (const double pixels = width * std::min(across.scale, down.scale); width > 0 && pixels < faint)
            colour.setAlphaF(static_cast<float>(pixels / faint));
        if (from.y() == to.y()) {
            const double thick = down.Thick(width);
            const double top = std::round(from.y() * down.scale + down.offset - thick / 2);
            const double left = across.Edge(from.x() - reach);
            Fill(left, top, std::max(across.Edge(to.x() + reach), left + 1), top + thick, colour);
        } else {
            const double thick = across.Thick(width);
            const double left = std::round(from.x() * across.scale + across.offset - thick / 2);
            const double top = down.Edge(from.y() - reach);
            Fill(left, top, left + thick, std::max(down.Edge(to.y() + reach), top + 1), colour);
        }
    }

    void Line(const ShapeStyle& style, QPointF from, QPointF to)
    {
        const double width = Point(style.width);
        if (from.x() == to.x() || from.y() == to.y()) {
            const QRectF box = QRectF(from, to).normalized();
            return Upright(ColorOf(style.pen), width, box.topLeft(), box.bottomRight());
        }
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(ColorOf(style.pen), width, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(from, to);
        painter.setRenderHint(QPainter::Antialiasing, false);
    }

    void Rectangle(const ShapeStyle& style, const QRectF& box)
    {
        if (style.filled)
            Fill(across.Edge(box.left()), down.Edge(box.top()), across.Edge(box.right()), down.Edge(box.bottom()),
                 ColorOf(style.brush));
        const QColor pen = ColorOf(style.pen);
        const double width = Point(style.width);
        Upright(pen, width, box.topLeft(), box.topRight());
        Upright(pen, width, box.bottomLeft(), box.bottomRight());
        Upright(pen, width, box.topLeft(), box.bottomLeft());
        Upright(pen, width, box.topRight(), box.bottomRight());
    }

    /// Sets pen and brush of a shape that is not upright.
    void Smooth(const ShapeStyle& style)
    {
        painter.setRenderHint(QPainter::Antialiasing);
        const bool outlined = style.width > 0 || !style.filled || style.pen != style.brush;
        painter.setPen(outlined ? QPen(ColorOf(style.pen), Point(style.width)) : QPen(Qt::NoPen));
        painter.setBrush(style.filled ? QBrush(ColorOf(style.brush)) : QBrush(Qt::NoBrush));
    }

    QPainter& painter;
    Axis across{1, 0}, down{1, 0};
};

/// What a shape reaches over, in points.
class Bounds {
public:
    void Line(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Take(style, QRectF(QPointF(x1, y1), QPointF(x2, y2)));
    }
    void Rectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2) { Line(style, x1, y1, x2, y2); }
    void Circle(const ShapeStyle& style, double x, double y, double radius)
    {
        Take(style, QRectF(x - radius, y - radius, 2 * radius, 2 * radius));
    }
    void Polygon(const ShapeStyle& style, std::span<const double> corners)
    {
        QPolygonF polygon;
        for (std::size_t at = 0; at + 1 < corners.size(); at += 2)
            polygon << QPointF(corners[at], corners[at + 1]);
        Take(style, polygon.boundingRect());
    }
    void Text(const TextStyle&, const Operation&, std::string_view) {}

    QRectF points;

private:
    void Take(const ShapeStyle& style, const QRectF& twips)
    {
        const double reach = style.width + TwipsPerPoint;
        const QRectF all = twips.normalized().adjusted(-reach, -reach, reach, reach);
        points = {Point(all.x()), Point(all.y()), Point(all.width()), Point(all.height())};
    }
};

QRectF BoundsOf(const Document& document, const Operation& shape)
{
    Bounds bounds;
    Visit(document, shape, bounds);
    return bounds.points;
}

} // namespace

const QRawFont& ReplayFonts::FontOf(Face face, double size)
{
    const auto found = fonts.find({face, size});
    if (found != fonts.end())
        return found->second;
    QRawFont& whole = files.at(static_cast<std::size_t>(face));
    if (!whole.isValid()) {
        const auto bytes = FontFile(face);
        whole = QRawFont(
            QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())),
            size, QFont::PreferNoHinting);
    }
    QRawFont sized = whole;
    sized.setPixelSize(size);
    return fonts.emplace(std::pair(face, size), sized).first->second;
}

PageReplay::PageReplay(std::shared_ptr<const Document> recorded, int page, ReplayFonts& fonts)
    : document(std::move(recorded))
{
    for (const Operation& operation : document->Page(page)) {
        if (operation.kind == OperationKind::Text) {
            AddText(operation, fonts);
        } else {
            FinishText(fonts);
            steps.push_back({.shape = &operation, .bounds = BoundsOf(*document, operation)});
        }
    }
    FinishText(fonts);
}

void PageReplay::AddText(const Operation& operation, ReplayFonts& fonts)
{
    const TextStyle& wanted = document->TextStyleOf(operation);
    if (style != nullptr && *style != wanted)
        FinishText(fonts);
    style = &wanted;
    const FaceMetrics& metrics = MetricsOf(wanted.face);
    const double base = Point(operation.y1 + TextAscent(wanted.face, wanted.size));
    const double unit = wanted.size / metrics.UnitsPerEm();
    std::int64_t advance = 0;
    for (std::string_view rest = document->TextOf(operation); !rest.empty();) {
        const char32_t character = TakeCodePoint(rest);
        indexes.push_back(metrics.GlyphOf(character));
        positions.emplace_back(Point(operation.x1) + static_cast<double>(advance) * unit, base);
        advance += metrics.AdvanceOf(character);
    }
    // Accents and slanted letters may reach a little beyond the line's own box.
    const double reach = wanted.size / 2;
    const double height = Point(TextHeight(wanted.face, wanted.size));
    bounds |= QRectF(Point(operation.x1), Point(operation.y1), static_cast<double>(advance) * unit, height)
                  .adjusted(-reach, -reach, reach, reach);
}

void PageReplay::FinishText(ReplayFonts& fonts)
{
    if (style != nullptr && style->size > 0) {
        QGlyphRun run;
        run.setRawFont(fonts.FontOf(style->face, style->size));
        run.setGlyphIndexes(indexes);
        run.setPositions(positions);
        steps.push_back({.glyphs = static_cast<int>(runs.size()), .bounds = bounds});
        runs.emplace_back(ColorOf(style->colour), run);
    }
    style = nullptr;
    indexes.clear();
    positions.clear();
    bounds = {};
}

void PageReplay::Paint(QPainter& painter, const QRectF& exposed) const
{
    Shapes shapes(painter);
    for (const Step& step : steps) {
        if (!step.bounds.intersects(exposed))
            continue;
        if (step.shape != nullptr) {
            Visit(*document, *step.shape, shapes);
        } else {
            const auto& [colour, run] = runs[static_cast<std::size_t>(step.glyphs)];
            painter.setPen(colour);
            painter.drawGlyphRun({}, run);
        }
    }
}

} // namespace quillmere
