#pragma once

#include "printing/paper/Document.h"

#include <QBuffer>
#include <QFont>
#include <QFontDatabase>
#include <QPainter>
#include <QPdfWriter>

#include <array>
#include <map>
#include <utility>

namespace quillmere {

inline constexpr int TwipsPerInch = 1440;

inline QColor ColourOf(Colour colour)
{
    return {colour.red, colour.green, colour.blue};
}

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
            for (const Operation& operation : document.Page(page))
                Draw(painter, document, operation);
        }
        painter.end();
        return bytes;
    }

private:
    void Draw(QPainter& painter, const Document& document, const Operation& operation)
    {
        if (operation.kind == OperationKind::Text) {
            const TextStyle& style = document.TextStyleOf(operation);
            const std::string_view text = document.TextOf(operation);
            painter.setFont(FontOf(style));
            painter.setPen(ColourOf(style.colour));
            painter.drawText(QPointF(operation.x1, operation.y1 + TextAscent(style.face, style.size)),
                             QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
            return;
        }
        const ShapeStyle& style = document.ShapeStyleOf(operation);
        painter.setPen(QPen(ColourOf(style.pen), style.width));
        painter.setBrush(style.filled ? QBrush(ColourOf(style.brush)) : QBrush(Qt::NoBrush));
        const QPointF from(operation.x1, operation.y1);
        switch (operation.kind) {
        case OperationKind::Line:
            painter.drawLine(from, QPointF(operation.x2, operation.y2));
            break;
        case OperationKind::Rectangle:
            painter.drawRect(QRectF(from, QPointF(operation.x2, operation.y2)));
            break;
        case OperationKind::Circle:
            painter.drawEllipse(from, operation.x2, operation.x2);
            break;
        default: {
            QPolygonF polygon;
            const auto corners = document.CornersOf(operation);
            for (std::size_t at = 0; at + 1 < corners.size(); at += 2)
                polygon << QPointF(corners[at], corners[at + 1]);
            painter.drawPolygon(polygon);
            break;
        }
        }
    }

    std::array<QString, FaceCount> families;
    std::map<std::pair<Face, double>, QFont> fonts;
};

} // namespace quillmere
