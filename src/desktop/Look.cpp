#include "desktop/Look.h"

#include "desktop/Style.h"
#include "printing/paper/Fonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyleOption>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <tuple>
#include <utility>

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

/// The lines of the pictures, which stand on the window's ground.
QColor OutlineInUse()
{
    return ShadeInUse() == Shade::Dark ? QColor(0xC4, 0xCA, 0xD2) : QColor(0x34, 0x3A, 0x43);
}

/// A sheet with lines, and what the picture adds to it.
void DrawSheet(QPainter& painter, QColor paper = QColor(0xFF, 0xFD, 0xE8))
{
    painter.setPen(QPen(OutlineInUse(), 1.4));
    painter.setBrush(paper);
    painter.drawRoundedRect(QRectF(5, 3, 14, 18), 1.5, 1.5);
    painter.setPen(QPen(QColor(0x6C, 0x86, 0xA8), 1.2));
    for (int line = 0; line < 4; ++line)
        painter.drawLine(QPointF(8, 7.5 + line * 3.2), QPointF(16, 7.5 + line * 3.2));
}

/// A short arrow with its point at `to`.
void DrawArrow(QPainter& painter, QPointF from, QPointF to)
{
    painter.setPen(QPen(QColor(0x1E, 0x7B, 0x34), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QLineF shaft(to, from);
    painter.drawLine(shaft);
    for (const int turn : {-40, 40}) {
        QLineF barb = shaft;
        barb.setLength(4);
        barb.setAngle(shaft.angle() + turn);
        painter.drawLine(barb);
    }
}

/// A database as everybody draws it: a drum.
void DrawStore(QPainter& painter, QPointF corner, const QColor& colour)
{
    constexpr double Width = 9.5, Height = 12, Lid = 4;
    QPainterPath drum;
    drum.moveTo(corner + QPointF(0, Lid / 2));
    drum.lineTo(corner + QPointF(0, Height - Lid / 2));
    drum.arcTo(QRectF(corner + QPointF(0, Height - Lid), QSizeF(Width, Lid)), 180, 180);
    drum.lineTo(corner + QPointF(Width, Lid / 2));
    painter.setBrush(colour);
    painter.drawPath(drum);
    painter.setBrush(colour.lighter(115));
    painter.drawEllipse(QRectF(corner, QSizeF(Width, Lid)));
}

void DrawPicture(QPainter& painter, const std::string& name)
{
    const QPen ink(OutlineInUse(), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
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
    } else if (name == "Close File") { // the sheet goes back into its folder
        painter.setPen(ink);
        painter.setBrush(QColor(0xE9, 0xC4, 0x6A));
        painter.drawPolygon(QPolygonF({{2, 9}, {8, 9}, {10, 11}, {22, 11}, {22, 21.5}, {2, 21.5}}));
        painter.setBrush(Qt::white);
        painter.drawRect(QRectF(7, 2, 11, 13));
        DrawArrow(painter, {12.5, 4}, {12.5, 11});
        painter.setPen(ink);
        painter.setBrush(QColor(0xF6, 0xDC, 0x98));
        painter.drawRect(QRectF(2, 13.5, 20, 8));
    } else if (name == "Backup database") { // a second one beside the first
        painter.setPen(ink);
        DrawStore(painter, {2, 2.5}, QColor(0x8F, 0xB3, 0xD9));
        DrawStore(painter, {13, 9.5}, QColor(0xDC, 0xE8, 0xF4));
        DrawArrow(painter, {5, 17}, {10.5, 20});
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

Tones MakeTones(Shade shade)
{
    const auto pick = [shade](QRgb light, QRgb dark) { return QColor(shade == Shade::Light ? light : dark); };
    return {.ground = pick(0xF7F8FA, 0x24272B),
            .panel = pick(0xE9EBEE, 0x2E3238),
            .sheet = pick(0xFFFFFF, 0x3B4149),
            .workedOut = pick(0xDDEAFA, 0x243750),
            .computed = pick(0xE2E6DC, 0x292E26),
            .ink = pick(0x1A1A1A, 0xECEEF1),
            .faint = pick(0x5A616A, 0xAEB5BE),
            .frame = pick(0x9AA1AB, 0x7A828C),
            .letter = pick(0x000000, 0xDDE0E5),
            .letterInk = pick(0xFFFFFF, 0x121416),
            .desk = pick(0xC9CED4, 0x3A4048),
            .deskInk = pick(0x3C434C, 0xD2D7DE),
            .fault = pick(0xD01C1C, 0xFF6B6B),
            .mark = pick(0xB34F00, 0xFFB04A)};
}

/// What a widget's part looks like, in use and out of use.
struct ColourRow {
    QPalette::ColorRole role;
    QColor usual, disabled;
};

using ColourRows = std::array<ColourRow, 21>;

ColourRows ColoursOf(Shade shade)
{
    const Tones& tones = TonesOf(shade);
    const auto pick = [shade](QRgb light, QRgb dark) { return QColor(shade == Shade::Light ? light : dark); };
    const QColor hint = pick(0xFFFDE8, 0x3A3D33), button = pick(0xF0F1F3, 0x3A3F46), chosen = pick(0x2F6FB5, 0x2F6FB5);
    const QColor light = pick(0xFFFFFF, 0x4C525A), middle = pick(0xE3E6EA, 0x42474E), mid = pick(0xB4BAC2, 0x2B2F34);
    return {{
        {QPalette::Window, tones.ground, tones.ground},
        {QPalette::WindowText, tones.ink, tones.faint},
        {QPalette::Base, tones.sheet, tones.ground},
        {QPalette::AlternateBase, tones.panel, tones.panel},
        {QPalette::Text, tones.ink, tones.faint},
        {QPalette::PlaceholderText, tones.faint, tones.faint},
        {QPalette::ToolTipBase, hint, hint},
        {QPalette::ToolTipText, tones.ink, tones.ink},
        {QPalette::Button, button, button},
        {QPalette::ButtonText, tones.ink, tones.faint},
        {QPalette::BrightText, Qt::white, Qt::white},
        {QPalette::Light, light, light},
        {QPalette::Midlight, middle, middle},
        {QPalette::Mid, mid, mid},
        {QPalette::Dark, pick(0x9AA1AB, 0x1C1F23), pick(0xB4BAC2, 0x24282C)},
        {QPalette::Shadow, pick(0x6E7680, 0x101214), pick(0x9AA1AB, 0x181B1E)},
        {QPalette::Highlight, chosen, tones.desk},
        {QPalette::HighlightedText, Qt::white, tones.ink},
        {QPalette::Link, pick(0x1D5AA0, 0x8FBDF0), tones.faint},
        {QPalette::LinkVisited, pick(0x6B3F8F, 0xC9A9E8), tones.faint},
        {QPalette::NoRole, tones.ground, tones.ground},
    }};
}

QPalette MakePalette(Shade shade)
{
    QPalette made;
    for (const ColourRow& row : ColoursOf(shade)) {
        made.setColor(row.role, row.usual);
        made.setColor(QPalette::Disabled, row.role, row.disabled);
    }
    return made;
}

/// A picture that is drawn for each size at which it is wanted, when it is first wanted.
class DrawnPicture : public QIconEngine {
public:
    explicit DrawnPicture(std::string name) : name(std::move(name)) {}

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        QPixmap& kept = drawn[{size.width(), size.height(), mode}];
        if (kept.isNull())
            kept = Drawn(size, mode);
        return kept;
    }
    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override
    {
        painter->drawPixmap(place, pixmap(place.size() * painter->device()->devicePixelRatioF(), mode, state));
    }
    QIconEngine* clone() const override { return new DrawnPicture(*this); }

private:
    QPixmap Drawn(const QSize& size, QIcon::Mode mode) const
    {
        constexpr double Side = 24;
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size.width() / Side, size.height() / Side);
        DrawPicture(painter, name);
        painter.end();
        QStyleOption option;
        option.palette = QGuiApplication::palette();
        return mode == QIcon::Normal ? picture : QApplication::style()->generatedIconPixmap(mode, picture, &option);
    }

    std::string name;
    std::map<std::tuple<int, int, QIcon::Mode>, QPixmap> drawn;
};

/// The picture on the windows: a sheet of the form with its mark.
QIcon ProgramPicture()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 24.0, size / 24.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0x1F, 0x4E, 0x8C));
        painter.drawRoundedRect(QRectF(1, 1, 22, 22), 4, 4);
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(QRectF(6, 4, 12, 16), 1, 1);
        painter.setBrush(Yellow);
        painter.drawRect(QRectF(6, 6, 5, 3.5));
        painter.setPen(QPen(QColor(0x6C, 0x86, 0xA8), 1.2));
        for (const double line : {12.0, 14.5, 17.0})
            painter.drawLine(QPointF(8, line), QPointF(16, line));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

Shade ShadeInUse()
{
    const QPalette inUse = QGuiApplication::palette();
    const bool dark = inUse.color(QPalette::Window).lightness() < inUse.color(QPalette::WindowText).lightness();
    return dark ? Shade::Dark : Shade::Light;
}

const Tones& TonesOf(Shade shade)
{
    static const Tones light = MakeTones(Shade::Light), dark = MakeTones(Shade::Dark);
    return shade == Shade::Dark ? dark : light;
}

const QPalette& WholePalette(Shade shade)
{
    static const QPalette light = MakePalette(Shade::Light), dark = MakePalette(Shade::Dark);
    return shade == Shade::Dark ? dark : light;
}

void Dress()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // Before the style is set, which brings light colours.
    const QPalette& ours = WholePalette(ShadeInUse());
    // The toolkit would keep a picture of each button that is drawn, and the picture's name for good: over a session of
    // days that grows.
    QPixmapCache::setCacheLimit(0);
    QApplication::setStyle(new Style);
    // The desktop may have colours of its own for menus, buttons and the like.
    for (const char* kind : {"QAbstractButton", "QAbstractItemView", "QCheckBox", "QComboBox", "QGroupBox",
                             "QHeaderView", "QLabel", "QLineEdit", "QMenu", "QMenuBar", "QMessageBox", "QRadioButton",
                             "QTabBar", "QTextControl", "QTextEdit", "QToolButton"})
        QApplication::setPalette(ours, kind);
    QApplication::setPalette(ours);
    QToolTip::setPalette(ours);
    QApplication::setWindowIcon(ProgramPicture());
}

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

QColor TintOf(const QString& word)
{
    struct Tint {
        const char* word;
        QColor light, dark;
    };
    static const std::array<Tint, 3> tints{{
        {"New", QColor(0xD9, 0xF2, 0xDC), QColor(0x1E, 0x3F, 0x24)},
        {"Changed", QColor(0xFF, 0xF0, 0xC2), QColor(0x4A, 0x3C, 0x10)},
        {"Faulty", QColor(0xFB, 0xD9, 0xD7), QColor(0x55, 0x22, 0x20)},
    }};
    for (const Tint& tint : tints)
        if (word == QLatin1String(tint.word))
            return ShadeInUse() == Shade::Dark ? tint.dark : tint.light;
    return {};
}

const QPalette& EditPalette(Entry entry)
{
    static const auto make = [](Shade shade) {
        const Tones& tones = TonesOf(shade);
        std::array<QPalette, 3> palettes;
        for (const auto& [which, ground] : {std::pair(Entry::Typed, tones.sheet),
                                            {Entry::WorkedOut, tones.workedOut},
                                            {Entry::Closed, tones.computed}}) {
            QPalette& palette = palettes.at(static_cast<std::size_t>(which)) = WholePalette(shade);
            palette.setColor(QPalette::Base, ground);
            palette.setColor(QPalette::Text, tones.ink);
            palette.setColor(QPalette::Disabled, QPalette::Base, tones.computed);
        }
        return palettes;
    };
    static const std::array<QPalette, 3> light = make(Shade::Light), dark = make(Shade::Dark);
    return (ShadeInUse() == Shade::Dark ? dark : light).at(static_cast<std::size_t>(entry));
}

QPalette FigurePalette()
{
    QPalette made = WholePalette(ShadeInUse());
    made.setColor(QPalette::Window, TonesInUse().computed);
    made.setColor(QPalette::WindowText, TonesInUse().ink);
    return made;
}

QPalette ButtonPalette(Paint paint)
{
    QPalette made;
    if (paint == Paint::Yellow) {
        made.setColor(QPalette::Button, Yellow);
        made.setColor(QPalette::ButtonText, Qt::black);
    }
    return made;
}

void DrawDot(QPainter& painter, const QRect& control)
{
    const int side = std::max(control.height() / 3, 6);
    const QRectF dot(control.right() - side - 1, control.top() + 1, side, side);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(TonesInUse().panel, 1.5));
    painter.setBrush(TonesInUse().mark);
    painter.drawEllipse(dot);
}

void DrawCorner(QPainter& painter, const QRect& edit)
{
    const int side = std::max(edit.height() / 3, 6);
    const QPoint corner = edit.topLeft() + QPoint(1, 1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(TonesInUse().mark);
    painter.drawPolygon(QPolygon({corner, corner + QPoint(side, 0), corner + QPoint(0, side)}));
}

void Draw(QPainter& painter, const Layout::Drawn& drawn)
{
    using What = Layout::Drawn::What;
    const QRectF rect(drawn.x, drawn.y, drawn.width, drawn.height);
    const Tones& tones = TonesInUse();
    switch (drawn.what) {
    case What::Panel:
        painter.fillRect(rect, tones.panel);
        return;
    case What::Line:
        painter.fillRect(rect, tones.ink);
        return;
    case What::Letter:
    case What::Tag:
        painter.fillRect(rect, tones.letter);
        painter.setPen(tones.letterInk);
        painter.setFont(CaptionFont(drawn.look));
        painter.drawText(rect, Qt::AlignCenter, Text(drawn.text));
        return;
    case What::Frame: {
        painter.setFont(CaptionFont(drawn.look));
        const QString title = Text(drawn.text);
        const double half = drawn.look.size * 2.0 / 3;
        const QRectF place(rect.x() + half + 2, rect.y() - half, painter.fontMetrics().horizontalAdvance(title) + half,
                           2 * half);
        painter.save();
        if (!title.isEmpty()) // which stands in a gap of the line, on whatever lies below
            painter.setClipRegion(QRegion(rect.toAlignedRect()).subtracted(place.toAlignedRect()));
        painter.setPen(QPen(tones.frame, 1));
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
        painter.restore();
        painter.setPen(tones.ink);
        painter.drawText(place, Qt::AlignCenter, title);
        return;
    }
    case What::Text:
        painter.setPen(tones.ink);
        painter.setFont(CaptionFont(drawn.look));
        painter.drawText(rect, FlagsOf(drawn.look) | Qt::TextWordWrap, Text(drawn.text));
        return;
    }
}

QString Marked(const std::string& caption, char letter)
{
    QString marked = Text(caption);
    const qsizetype place = letter == 0 ? -1 : marked.indexOf(QLatin1Char(letter), 0, Qt::CaseInsensitive);
    return place < 0 ? marked : marked.insert(place, u'&');
}

QString TipOf(const Box& box)
{
    const QString tip = Text(box.Tip());
    const bool isSeen = box.Letter() == 0 || Marked(box.Text(), box.Letter()) != Text(box.Text());
    return isSeen ? tip : QStringLiteral("%1 (Alt+%2)").arg(tip).arg(QLatin1Char(box.Letter())).trimmed();
}

QIcon Picture(const std::string& name)
{
    static std::map<std::pair<Shade, std::string>, QIcon> drawn;
    const std::pair key(ShadeInUse(), name);
    const auto found = drawn.find(key);
    if (found != drawn.end())
        return found->second;
    return drawn.emplace(key, QIcon(new DrawnPicture(name))).first->second;
}

} // namespace quillmere::look
