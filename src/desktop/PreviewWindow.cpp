#include "desktop/PreviewWindow.h"

#include "desktop/Look.h"
#include "desktop/PreviewSurface.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

/// The room around the strip and the surface: 60 twips.
constexpr int Margin = 4;
constexpr int LeastWidth = 360;
constexpr int LeastHeight = 320;

/// Between neighbours of the strip, and between its groups and around it.
constexpr int Near = 4;
constexpr int Apart = 14;
constexpr int StripPadding = 6;

struct KeyRow {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    frmVSPrint::Command command;
};

const std::array<KeyRow, 11> Keys{{
    {Qt::Key_PageUp, {}, frmVSPrint::Command::PreviousPage},
    {Qt::Key_PageDown, {}, frmVSPrint::Command::NextPage},
    {Qt::Key_Home, {}, frmVSPrint::Command::FirstPage},
    {Qt::Key_End, {}, frmVSPrint::Command::LastPage},
    {Qt::Key_Plus, {}, frmVSPrint::Command::ZoomIn},
    {Qt::Key_Equal, {}, frmVSPrint::Command::ZoomIn},
    {Qt::Key_Minus, {}, frmVSPrint::Command::ZoomOut},
    {Qt::Key_Plus, Qt::ControlModifier, frmVSPrint::Command::ZoomIn},
    {Qt::Key_Minus, Qt::ControlModifier, frmVSPrint::Command::ZoomOut},
    {Qt::Key_P, Qt::ControlModifier, frmVSPrint::Command::Print},
    {Qt::Key_S, Qt::ControlModifier, frmVSPrint::Command::Save},
}};

} // namespace

PreviewWindow::PreviewWindow(frmVSPrint& preview, QWidget* parent, int percent)
    : ScreenWindow(preview, parent, percent), preview(preview)
{
    setWindowFlags(windowFlags() | Qt::WindowMaximizeButtonHint);
    setMinimumSize(LeastWidth, LeastHeight);
    Scroll()->hide();
    Adopt(preview.box("picControls"), *Header());
    surface = new PreviewSurface(preview, this);
    Adopt(preview.box("vp"), *surface);
    setTabOrder(surface, WidgetOf(preview.box("cmbPrint")));
    MakeStrip();
    PlaceWindow();
    surface->Follow();
}

PreviewWindow::~PreviewWindow()
{
    surface->Detach();
}

void PreviewWindow::Detach()
{
    surface->Detach();
    ScreenWindow::Detach();
}

void PreviewWindow::MakeStrip()
{
    const auto widget = [this](const char* box) { return WidgetOf(preview.box(box)); };
    const auto caption = [this](const char* text, QWidget* buddy) {
        auto* label = new QLabel(QString::fromLatin1(text), Header());
        label->setBuddy(buddy);
        captions.push_back(label);
        return label;
    };
    QWidget* order = widget("cmbPrint");
    QWidget* mode = widget("cmbZoomMode");
    strip = {{caption("Page Order", order), order},
             {widget("cmdFirst"), widget("cmdPrevious"), widget("lblPage"), widget("cmdNext"), widget("cmdLast")},
             {caption("Zoom", mode), mode, widget("cmbPercent")},
             {widget("cmdPrint"), widget("cmdClose")},
             {widget("SavePdf"), widget("ShowInFolder")},
             {widget("cmdInside")}};
    if (auto* page = qobject_cast<QLabel*>(widget("lblPage")))
        page->setAlignment(Qt::AlignCenter);
    FitCaptions();
}

void PreviewWindow::FitCaptions()
{
    for (QLabel* caption : captions)
        caption->resize(caption->sizeHint().width() + 2 * Near, caption->buddy()->height());
}

/// Keeps the size that the user gave it; the strip has what room it needs.
void PreviewWindow::FitToRoom()
{
    FitCaptions();
    LayOut();
}

int PreviewWindow::LayOutStrip(int width)
{
    int x = Apart, y = StripPadding;
    const int line = strip.front().back()->height();
    for (const std::vector<QWidget*>& group : strip) {
        int needed = -Near;
        for (const QWidget* widget : group)
            needed += widget->isHidden() ? 0 : widget->width() + Near;
        if (x + needed > width && x > Apart) {
            x = Apart;
            y += line + StripPadding;
        }
        for (QWidget* widget : group) {
            widget->move(x, y);
            x += widget->isHidden() ? 0 : widget->width() + Near;
        }
        x += Apart - Near;
    }
    for (const char* name : {"lblEdge", "lblLook", "lblDocument"}) {
        QWidget* words = WidgetOf(preview.box(name));
        if (words->isHidden())
            continue;
        const int needed = words->sizeHint().width();
        if (x + needed > width - Near && x > Apart) {
            x = Apart;
            y += line + StripPadding;
        }
        words->setGeometry(x, y, std::min(needed, std::max(0, width - x - Near)), line);
        x += words->width() + Apart;
    }
    return y + line + StripPadding;
}

void PreviewWindow::PlaceWindow()
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    const auto& placement = preview.Placement();
    QRect wanted(room.topLeft(), room.size());
    if (placement && placement->width > 0 && placement->height > 0)
        wanted = QRect(placement->left, placement->top, placement->width, placement->height);
    // A window that was left on a screen that is gone comes back into sight.
    setGeometry(room.intersects(wanted) ? wanted : QRect(room.topLeft(), wanted.size().boundedTo(room.size())));
    if (!placement || placement->maximised)
        setWindowState(Qt::WindowMaximized);
}

void PreviewWindow::TellPlacement()
{
    if (IsDetached() || !isVisible())
        return;
    WindowPlacement placement = preview.Placement().value_or(WindowPlacement{});
    placement.maximised = isMaximized();
    placement.minimised = isMinimized();
    if (!placement.minimised && !placement.maximised) {
        placement.top = geometry().top();
        placement.left = geometry().left();
        placement.width = geometry().width();
        placement.height = geometry().height();
    }
    preview.SetPlacement(placement);
}

void PreviewWindow::BoxChanged(const Box& box)
{
    ScreenWindow::BoxChanged(box);
    if (surface != nullptr && (box.Name() == "lblPage" || box.Name() == "cmbZoomMode" || box.Name() == "cmbPercent"))
        surface->Follow();
    // What has come into sight takes room from the others.
    constexpr auto InTheStrip =
        std::to_array<std::string_view>({"ShowInFolder", "cmdInside", "lblEdge", "lblLook", "lblDocument"});
    if (surface != nullptr && std::ranges::find(InTheStrip, box.Name()) != InTheStrip.end())
        LayOut();
    if (surface != nullptr && box.Name() == "lblEdge")
        surface->viewport()->update();
}

bool PreviewWindow::Obey(const QKeyEvent& event)
{
    if (IsDetached() || QApplication::activePopupWidget() != nullptr)
        return false;
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const auto row = std::ranges::find_if(
        Keys, [&](const KeyRow& other) { return other.key == event.key() && other.modifiers == modifiers; });
    if (row == Keys.end())
        return false;
    preview.Execute(row->command);
    return true;
}

bool PreviewWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && Obey(*static_cast<QKeyEvent*>(event)))
        return true;
    return ScreenWindow::eventFilter(watched, event);
}

void PreviewWindow::keyPressEvent(QKeyEvent* event)
{
    if (!Obey(*event))
        ScreenWindow::keyPressEvent(event);
}

void PreviewWindow::changeEvent(QEvent* event)
{
    ScreenWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        TellPlacement();
}

void PreviewWindow::moveEvent(QMoveEvent* event)
{
    ScreenWindow::moveEvent(event);
    TellPlacement();
}

void PreviewWindow::resizeEvent(QResizeEvent*)
{
    if (surface == nullptr || IsDetached())
        return;
    LayOut();
    TellPlacement();
}

void PreviewWindow::LayOut()
{
    const int inside = width() - 2 * Margin;
    const int height = LayOutStrip(inside);
    Header()->setFixedSize(inside, height);
    Header()->move(Margin, Margin);
    const int top = Margin + height + Margin;
    surface->setGeometry(Margin, top, inside, std::max(0, this->height() - top - Margin));
}

} // namespace quillmere
