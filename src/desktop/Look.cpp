#include "desktop/Look.h"

#include "printing/Fonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <map>

namespace quillmere::look {

namespace {

constexpr auto CaptionFamily = "Liberation Sans";
constexpr auto AmountFamily = "Liberation Mono";

void AddFont(Face face)
{
    const auto file = FontFile(face);
    QFontDatabase::addApplicationFontFromData(
        QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), static_cast<qsizetype>(file.size())));
}

int FlagsOf(const TextLook& look)
{
    const int flags = Qt::AlignTop | Qt::TextDontClip;
    switch (look.align) {
    case TextLook::Align::Right:
        return flags | Qt::AlignRight;
    case TextLook::Align::Centre:
        return flags | Qt::AlignHCenter;
    case TextLook::Align::Left:
        break;
    }
    return flags | Qt::AlignLeft;
}

/// A sheet with lines, and what the picture adds to it.
void DrawSheet(QPainter& painter, QColor paper = QColor(0xFF, 0xFD, 0xE8))
{
    painter.setPen(QPen(QColor(0x45, 0x4B, 0x54), 1.4));
    painter.setBrush(paper);
    painter.drawRoundedRect(QRectF(5, 3, 14, 18), 1.5, 1.5);
    painter.setPen(QPen(QColor(0x6C, 0x86, 0xA8), 1.2));
    for (int line = 0; line < 4; ++line)
        painter.drawLine(QPointF(8, 7.5 + line * 3.2), QPointF(16, 7.5 + line * 3.2));
}

void DrawPicture(QPainter& painter, const std::string& name)
{
    const QPen ink(QColor(0x34, 0x3A, 0x43), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (name == "New File") {
        DrawSheet(painter, Qt::white);
        painter.setPen(QPen(QColor(0x1E, 0x7B, 0x34), 2.4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(18, 15), QPointF(18, 22));
        painter.drawLine(QPointF(14.5, 18.5), QPointF(21.5, 18.5));
    } else if (name == "Open File") {
        painter.setPen(ink);
        painter.setBrush(QColor(0xE9, 0xC4, 0x6A));
        painter.drawPolygon(QPolygonF({{3, 6}, {9, 6}, {11, 8}, {20, 8}, {20, 19}, {3, 19}}));
        painter.setBrush(QColor(0xF6, 0xDC, 0x98));
        painter.drawPolygon(QPolygonF({{3, 19}, {6, 11}, {23, 11}, {20, 19}}));
    } else if (name == "Close File") {
        DrawSheet(painter, Qt::white);
        painter.setPen(QPen(QColor(0xB3, 0x26, 0x1E), 2.4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(15.5, 15.5), QPointF(21.5, 21.5));
        painter.drawLine(QPointF(21.5, 15.5), QPointF(15.5, 21.5));
    } else if (name == "Backup database") {
        painter.setPen(ink);
        painter.setBrush(QColor(0x8F, 0xB3, 0xD9));
        painter.drawRoundedRect(QRectF(3.5, 3.5, 17, 17), 1.5, 1.5);
        painter.setBrush(Qt::white);
        painter.drawRect(QRectF(7, 12.5, 10, 8));
        painter.drawRect(QRectF(8, 3.5, 8, 5.5));
    } else if (name == "Print") {
        painter.setPen(ink);
        painter.setBrush(Qt::white);
        painter.drawRect(QRectF(7, 2.5, 10, 8));
        painter.setBrush(QColor(0xC2, 0xC8, 0xD0));
        painter.drawRoundedRect(QRectF(3, 9, 18, 8), 1.5, 1.5);
        painter.setBrush(Qt::white);
        painter.drawRect(QRectF(7, 14, 10, 7.5));
    } else if (name == "Exit") {
        painter.setPen(ink);
        painter.setBrush(QColor(0xD8, 0xDC, 0xE2));
        painter.drawRect(QRectF(4, 3, 11, 18));
        painter.setPen(QPen(QColor(0xB3, 0x26, 0x1E), 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawLine(QPointF(10, 12), QPointF(21, 12));
        painter.drawPolyline(QPolygonF({{17.5, 8.5}, {21, 12}, {17.5, 15.5}}));
    } else {
        DrawSheet(painter);
        painter.setPen(QPen(QColor(0xA6, 0x5B, 0x1C), 2.2, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(13, 19), QPointF(21, 9));
    }
}

/// Makes the built-in typefaces known to the toolkit, once a process. The main window does without them, as this takes
/// longer than all else that it does.
void LoadFonts()
{
    static const bool loaded = [] {
        for (const Face face :
             {Face::SansRegular, Face::SansBold, Face::SansItalic, Face::SansBoldItalic, Face::MonoRegular})
            AddFont(face);
        return true;
    }();
    static_cast<void>(loaded);
}

} // namespace

QFont CaptionFont(const TextLook& look)
{
    LoadFonts();
    QFont font(CaptionFamily);
    font.setPixelSize(look.size);
    font.setBold(look.bold);
    font.setItalic(look.italic);
    return font;
}

QFont AmountFont(int size)
{
    LoadFonts();
    QFont font(AmountFamily);
    font.setPixelSize(size);
    return font;
}

const QPalette& EditPalette(bool writable)
{
    static const auto make = [](const QColor& base) {
        QPalette palette;
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, Ink);
        palette.setColor(QPalette::Disabled, QPalette::Base, Computed);
        return palette;
    };
    static const QPalette typed = make(Sheet);
    static const QPalette computed = make(Computed);
    return writable ? typed : computed;
}

const QPalette& FigurePalette()
{
    static const QPalette palette = [] {
        QPalette made;
        made.setColor(QPalette::Window, Computed);
        made.setColor(QPalette::WindowText, Ink);
        return made;
    }();
    return palette;
}

void Draw(QPainter& painter, const Layout::Drawn& drawn)
{
    using What = Layout::Drawn::What;
    const QRectF rect(drawn.x, drawn.y, drawn.width, drawn.height);
    switch (drawn.what) {
    case What::Panel:
        painter.fillRect(rect, PanelGrey);
        return;
    case What::Line:
        painter.fillRect(rect, Ink);
        return;
    case What::Letter:
    case What::Tag:
        painter.fillRect(rect, Qt::black);
        painter.setPen(Qt::white);
        painter.setFont(CaptionFont(drawn.look));
        painter.drawText(rect, Qt::AlignCenter, Text(drawn.text));
        return;
    case What::Frame: {
        painter.setFont(CaptionFont({.size = 12, .bold = true}));
        const QString title = Text(drawn.text);
        const QRectF place(rect.x() + 10, rect.y() - 8, painter.fontMetrics().horizontalAdvance(title) + 8.0, 16);
        painter.save();
        if (!title.isEmpty()) // which stands in a gap of the line, on whatever lies below
            painter.setClipRegion(QRegion(rect.toAlignedRect()).subtracted(place.toAlignedRect()));
        painter.setPen(QPen(QColor(0x9A, 0xA1, 0xAB), 1));
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
        painter.restore();
        painter.setPen(Ink);
        painter.drawText(place, Qt::AlignCenter, title);
        return;
    }
    case What::Text:
        painter.setPen(Ink);
        painter.setFont(CaptionFont(drawn.look));
        painter.drawText(rect, FlagsOf(drawn.look) | Qt::TextWordWrap, Text(drawn.text));
        return;
    }
}

QIcon Picture(const std::string& name)
{
    static std::map<std::string, QIcon> drawn;
    const auto found = drawn.find(name);
    if (found != drawn.end())
        return found->second;
    constexpr int Size = 24;
    const double scale = qApp->devicePixelRatio();
    QPixmap pixmap(QSizeF(Size * scale, Size * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawPicture(painter, name);
    painter.end();
    return drawn.emplace(name, QIcon(pixmap)).first->second;
}

} // namespace quillmere::look
