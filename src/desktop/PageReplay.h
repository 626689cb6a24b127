#pragma once

#include "printing/paper/Document.h"

#include <QColor>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QRectF>

#include <array>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace quillmere {

/// The built-in faces at the sizes of a document's texts, unhinted.
class ReplayFonts {
public:
    /// A face at a size in points.
    const QRawFont& FontOf(Face face, double size);

private:
    std::array<QRawFont, FaceCount> files;
    std::map<std::pair<Face, double>, QRawFont> fonts;
};

/// A recorded page made ready to be painted, at any size. Each character is a glyph of the built-in faces at the place
/// that was worked out when the page was drawn; the toolkit measures nothing. Upright lines and rectangles lie on whole
/// pixels of the device, so that they are as sharp as it allows.
class PageReplay {
public:
    /// `fonts` is used here only.
    PageReplay(std::shared_ptr<const Document> document, int page, ReplayFonts& fonts);

    /// Paints the page with its top left corner at the origin, one unit of the painter a point of the sheet.
    /// `exposed`, in points, is what needs painting.
    void Paint(QPainter& painter, const QRectF& exposed) const;

    static constexpr double Width = SheetWidth / TwipsPerPoint;
    static constexpr double Height = SheetHeight / TwipsPerPoint;

private:
    /// Something to paint: a shape, or neighbouring texts of one style.
    struct Step {
        const Operation* shape = nullptr;
        int glyphs = -1;
        QRectF bounds;
    };
    void AddText(const Operation& operation, ReplayFonts& fonts);
    void FinishText(ReplayFonts& fonts);

    std::shared_ptr<const Document> document;
    std::vector<Step> steps;
    std::vector<std::pair<QColor, QGlyphRun>> runs;

    // The texts that are being gathered.
    const TextStyle* style = nullptr;
    QList<quint32> indexes;
    QList<QPointF> positions;
    QRectF bounds;
};

} // namespace quillmere
