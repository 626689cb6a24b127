#pragma once

#include "printing/paper/Document.h"

#include <QBuffer>
#include <QFont>
#include <QFontDatabase>
#include <QPainter>
#include <QPdfWriter>

#include <array>
#include <map>
#include <span>
#include <string_view>
#include <utility>

namespace quillmere {

inline constexpr int TwipsPerInch = 1440;

inline QColor ColourOf(Colour colour)
{
    return {colour.red, colour.green, colour.blue};
}

/// Paints the shapes of a recorded page with Qt's painter, whose unit is so many twips long.
class QtShapes {
public:
    QtShapes(QPainter& painter, double unit, Qt::PenCapStyle cap) : painter(painter), unit(unit), cap(cap) {}

    void Line(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Take(style);
        painter.drawLine(Point(x1, y1), Point(x2, y2));
    }
    void Rectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Take(style);
        painter.drawRect(QRectF(Point(x1, y1), Point(x2, y2)));
    }
    void Circle(const ShapeStyle& style, double x, double y, double radius)
    {
        Take(style);
        painter.drawEllipse(Point(x, y), radius / unit, radius / unit);
    }
    void Polygon(const ShapeStyle& style, std::span<const double> corners)
    {
        Take(style);
        QPolygonF polygon;
        for (std::size_t at = 0; at + 1 < corners.size(); at += 2)
            polygon << Point(corners[at], corners[at + 1]);
        painter.drawPolygon(polygon);
    }

protected:
    QPointF Point(double x, double y) const { return {x / unit, y / unit}; }
    void Write(const TextStyle& style, const QFont& font, const Operation& text, std::string_view words)
    {
        painter.setFont(font);
        painter.setPen(ColourOf(style.colour));
        painter.drawText(Point(text.x1, text.y1 + TextAscent(style.face, style.size)),
                         QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size())));
    }

private:
    void Take(const ShapeStyle& style)
    {
        painter.setPen(QPen(ColourOf(style.pen), style.width / unit, Qt::SolidLine, cap));
        painter.setBrush(style.filled ? QBrush(ColourOf(style.brush)) : QBrush(Qt::NoBrush));
    }

    QPainter& painter;
    double unit;
    Qt::PenCapStyle cap;
};

/// The yardstick: the built-in fonts as Qt's fonts, and a recorded document through Qt's painter.
class QtPages {
public:
    QtPages()
    {
        for (int number = 0; number < FaceCount; ++number) {
            const auto bytes = FontFile(static_cast<Face>(number));
            const QByteArray file = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                                            static_cast<qsizetype>(bytes.size()));
            const int added = QFontDatabase::addApplicationFontFromData(file);
            families.at(static_cast<std::size_t>(number)) = QFontDatabase::applicationFontFamilies(added).value(0);
        }
    }

    /// One kept font a style, as a careful program has it.
    const QFont& FontOf(const TextStyle& style)
    {
        const auto key = std::make_pair(style.face, style.size);
        auto kept = fonts.find(key);
        if (kept == fonts.end()) {
            QFont font(families.at(static_cast<std::size_t>(style.face)));
            font.setPointSizeF(style.size);
            font.setBold(IsBold(style.face));
            font.setItalic(IsItalic(style.face));
            font.setHintingPreference(QFont::PreferNoHinting);
            font.setKerning(false);
            kept = fonts.emplace(key, font).first;
        }
        return kept->second;
    }

    QByteArray Write(const Document& document)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setResolution(TwipsPerInch);
        QPainter painter(&writer);
        for (int page = 1; page <= document.PageCount(); ++page) {
            if (page > 1)
                writer.newPage();
            Page device(painter, *this);
            Replay(document, page, device);
        }
        painter.end();
        return bytes;
    }

private:
    class Page : public QtShapes {
    public:
        Page(QPainter& painter, QtPages& pages) : QtShapes(painter, 1, Qt::SquareCap), pages(pages) {}
        void Text(const TextStyle& style, const Operation& text, std::string_view words)
        {
            Write(style, pages.FontOf(style), text, words);
        }

    private:
        QtPages& pages;
    };

    std::array<QString, FaceCount> families;
    std::map<std::pair<Face, double>, QFont> fonts;
};

} // namespace quillmere
