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
/// The strip's controls up to the Close button.
constexpr int LeastWidth = 900;
constexpr int LeastHeight = 320;

struct KeyRow {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    frmVSPrint::Command command;
};

const std::array<KeyRow, 10> Keys{{
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
}};

} // namespace

PreviewWindow::PreviewWindow(frmVSPrint& preview, QWidget* parent) : ScreenWindow(preview, parent), preview(preview)
{
    setWindowFlags(windowFlags() | Qt::WindowMaximizeButtonHint);
    setMinimumSize(LeastWidth, LeastHeight);
    Scroll()->hide();
    Adopt(preview.box("picControls"), *Header());
    surface = new PreviewSurface(preview, this);
    Adopt(preview.box("vp"), *surface);
    setTabOrder(surface, WidgetOf(preview.box("cmbPrint")));
    if (auto* page = qobject_cast<QLabel*>(WidgetOf(preview.box("lblPage"))))
        page->setAlignment(Qt::AlignCenter);
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
    const int strip = Header()->height();
    const int inside = width() - 2 * Margin;
    Header()->setFixedWidth(inside);
    Header()->move(Margin, Margin);
    QWidget* title = WidgetOf(preview.box("lblDocument"));
    title->resize(std::max(0, inside - title->x() - Margin), title->height());
    const int top = Margin + strip + Margin;
    surface->setGeometry(Margin, top, inside, std::max(0, height() - top - Margin));
    TellPlacement();
}

} // namespace quillmere
