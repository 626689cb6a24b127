#include "Hands.h"

#include "World.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeySequence>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <utility>

namespace quillmere::scenario::hands {

namespace {

/// Milliseconds between two clicks that are no double-click, and between those that are.
constexpr int LongPause = 2000;
constexpr int ShortPause = 20;

/// True for the modal window itself and for what stands in front of it and was asked for from it.
bool StandsAbove(const QWidget& window, const QWidget& modal)
{
    return &window == &modal || modal.isAncestorOf(&window) ||
           (window.windowHandle() != nullptr && modal.windowHandle() != nullptr &&
            modal.windowHandle()->isAncestorOf(window.windowHandle(), QWindow::IncludeTransients));
}

/// The window system's clock for mouse events.
int mouseTime = 0;

void ClosePopups()
{
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        QCoreApplication::processEvents();
        if (QApplication::activePopupWidget() == popup)
            return;
    }
}

/// Turns every tab strip and stack in which the widget stands to its page.
void TurnToPage(QWidget& widget)
{
    for (QWidget* child = &widget; child->parentWidget() != nullptr && !child->isWindow();
         child = child->parentWidget()) {
        auto* stack = qobject_cast<QStackedWidget*>(child->parentWidget());
        if (stack == nullptr || stack->currentWidget() == child)
            continue;
        if (auto* tabs = qobject_cast<QTabWidget*>(stack->parentWidget()))
            tabs->setCurrentWidget(child);
        else
            stack->setCurrentWidget(child);
    }
}

/// What a window does not scroll itself may move with a frame beside it: the head of a page goes sideways with the
/// form.
void ScrollSideways(QWidget& widget, const QWidget& parent)
{
    for (auto* area : parent.findChildren<QScrollArea*>(QString(), Qt::FindDirectChildrenOnly)) {
        const int left = widget.mapTo(&parent, QPoint(0, 0)).x();
        const int beyond = left + widget.width() - parent.width();
        QScrollBar* bar = area->horizontalScrollBar();
        if (left < 0)
            bar->setValue(bar->value() + left);
        else if (beyond > 0)
            bar->setValue(bar->value() + beyond);
    }
}

void ScrollTo(QWidget& widget)
{
    for (QWidget* parent = widget.parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(parent);
            area != nullptr && area->widget() != nullptr && area->widget()->isAncestorOf(&widget))
            area->ensureWidgetVisible(&widget, 4, 4);
        ScrollSideways(widget, *parent);
    }
}

void RequireUsable(const QWidget& widget, const std::string& name)
{
    if (!widget.isVisible())
        throw StepFailure("expected " + name + " to be within reach, found it hidden");
    if (!widget.isEnabled())
        throw StepFailure("expected " + name + " to be within reach, found it disabled");
}

/// Where the mouse button is held down: a place of a window.
struct HeldDown {
    QPointer<QWindow> window;
    QPoint at;
};
std::optional<HeldDown> heldDown;

void SendMouse(QWindow& window, QPoint at, QEvent::Type type)
{
    QTestPrivate::qtestMouseButtons.setFlag(Qt::LeftButton, type == QEvent::MouseButtonPress);
    qt_handleMouseEvent(&window, at, window.mapToGlobal(at), QTestPrivate::qtestMouseButtons, Qt::LeftButton, type,
                        Qt::NoModifier, mouseTime);
    QCoreApplication::processEvents();
}

/// Fails unless a user who points at the place of the window points at the widget.
void RequireUnderPointer(const QWidget& widget, QPoint at, const std::string& name)
{
    const QWidget* window = widget.window();
    const QWidget* hit = window->childAt(at);
    if (hit == nullptr)
        hit = window;
    if (!window->rect().contains(at))
        throw StepFailure("expected " + name + " to be within reach, found it outside its window");
    if (hit != &widget && !widget.isAncestorOf(hit))
        throw StepFailure(
            "expected " + name + " to be within reach, found it covered by " +
            (hit->objectName().isEmpty() ? QString(hit->metaObject()->className()) : hit->objectName()).toStdString());
}

bool AnyButtonDown()
{
    const QWidget* window = QApplication::activeWindow();
    if (window == nullptr)
        return false;
    const QList<QAbstractButton*> buttons = window->findChildren<QAbstractButton*>();
    return std::ranges::any_of(buttons, [](const QAbstractButton* button) { return button->isDown(); });
}

/// Presses and lets go at the place where a point of the widget stood; the widget may be gone after either.
void ClickAt(QWidget& widget, QPoint point, int pause, const std::string& name)
{
    const QPoint at = widget.mapTo(widget.window(), point);
    RequireUnderPointer(widget, at, name);
    mouseTime += pause;
    heldDown = {.window = widget.window()->windowHandle(), .at = at};
    SendMouse(*heldDown->window, at, QEvent::MouseButtonPress);
    LetGo();
    if (AnyButtonDown())
        throw StepFailure("expected no button to stay pressed after the click, found one");
}

void DoubleClickAt(QWidget& widget, QPoint point, const std::string& name)
{
    const QPointer<QWidget> alive(&widget);
    ClickAt(widget, point, LongPause, name);
    Settle();
    QWidget* modal = QApplication::activeModalWidget();
    // The first click may have led on to another window, which then gets the second.
    if (alive.isNull() || !alive->isVisible() || !alive->isEnabled() ||
        (modal != nullptr && !StandsAbove(*alive->window(), *modal)))
        return;
    ClickAt(*alive, point, ShortPause, name);
}

QWindow* FocusedWindow()
{
    if (QWidget* popup = QApplication::activePopupWidget(); popup != nullptr && popup->windowHandle() != nullptr)
        return popup->windowHandle();
    if (QWidget* active = QApplication::activeWindow(); active != nullptr && active->windowHandle() != nullptr)
        return active->windowHandle();
    if (QWindow* window = QGuiApplication::focusWindow())
        return window;
    throw StepFailure("expected a window with the focus, found none");
}

void SendKey(Qt::Key key, const QString& text, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWindow> window(FocusedWindow());
    // A key may close the window: what follows of it then reaches nobody.
    const auto send = [&](bool press, Qt::Key code, const QString& typed, Qt::KeyboardModifiers held) {
        if (!window.isNull())
            QTest::simulateEvent(window, press, code, held, typed, false);
    };
    constexpr std::pair<Qt::KeyboardModifier, Qt::Key> Held[] = {
        {Qt::ShiftModifier, Qt::Key_Shift}, {Qt::ControlModifier, Qt::Key_Control}, {Qt::AltModifier, Qt::Key_Alt}};
    for (const bool press : {true, false}) {
        if (!press)
            send(false, key, text, modifiers);
        for (const auto& [modifier, code] : Held)
            if (modifiers.testFlag(modifier))
                send(press, code, {}, press ? Qt::KeyboardModifiers(modifier) : Qt::NoModifier);
        if (press)
            send(true, key, text, modifiers);
    }
    QCoreApplication::processEvents();
}

std::string EntryAt(const QAbstractItemView& list, int row)
{
    const QAbstractItemModel& model = *list.model();
    QStringList cells;
    for (int column = 0; column < model.columnCount(); ++column)
        cells.push_back(model.index(row, column).data().toString());
    return cells.join('\t').toStdString();
}

QModelIndex FindEntry(const QAbstractItemView& list, const std::string& entry, const std::string& name)
{
    const int rows = list.model()->rowCount();
    for (int row = 0; row < rows; ++row)
        if (EntryAt(list, row) == entry)
            return list.model()->index(row, 0);
    throw StepFailure("expected an entry " + Shown(entry) + " in " + name + ", found none among " +
                      std::to_string(rows));
}

} // namespace

void LetGo()
{
    const std::optional<HeldDown> held = std::exchange(heldDown, std::nullopt);
    if (!held)
        return;
    if (held->window.isNull())
        QTestPrivate::qtestMouseButtons = Qt::NoButton;
    else
        SendMouse(*held->window, held->at, QEvent::MouseButtonRelease);
}

void RequireNotBlocked(const QWidget& widget, const std::string& name)
{
    QWidget* modal = QApplication::activeModalWidget();
    if (modal != nullptr && !StandsAbove(*widget.window(), *modal))
        throw StepFailure("expected " + name + " to be within reach, found it waiting behind " +
                          modal->objectName().toStdString());
}

void Settle()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void Activate(QWidget& window)
{
    if (QApplication::activeWindow() == &window)
        return;
    window.activateWindow();
    QCoreApplication::processEvents();
    // Without a window manager nobody may answer.
    if (QApplication::activeWindow() != &window)
        QApplication::setActiveWindow(&window);
    QCoreApplication::processEvents();
}

void FillScreen(QWidget& window)
{
    const QRect room = window.screen()->availableGeometry();
    if (window.width() >= room.width() * 9 / 10)
        return;
    window.setGeometry(room);
    Settle();
}

void Reach(QWidget& widget, const std::string& name)
{
    const QPointer<QWidget> alive(&widget);
    ClosePopups();
    if (alive.isNull())
        throw StepFailure("expected " + name + " to stay, found it gone with the list in which it stood");
    RequireNotBlocked(widget, name);
    TurnToPage(widget);
    RequireUsable(widget, name);
    ScrollTo(widget);
    Activate(*widget.window());
    RequireUsable(widget, name);
}

void Click(QWidget& widget, const std::string& name)
{
    Reach(widget, name);
    QPoint point = widget.rect().center();
    // A tick box or option answers at its mark, wherever its caption ends.
    if (widget.inherits("QCheckBox") || widget.inherits("QRadioButton"))
        point.setX(std::min(point.x(), 8));
    ClickAt(widget, point, LongPause, name);
}

void DoubleClick(QWidget& widget, const std::string& name)
{
    Reach(widget, name);
    DoubleClickAt(widget, widget.rect().center(), name);
}

std::vector<std::string> EntriesOf(const QAbstractItemView& list)
{
    std::vector<std::string> entries;
    for (int row = 0; row < list.model()->rowCount(); ++row)
        entries.push_back(EntryAt(list, row));
    return entries;
}

std::string ChosenEntry(const QAbstractItemView& list)
{
    const QModelIndexList chosen = list.selectionModel()->selectedRows();
    return chosen.isEmpty() ? std::string() : EntryAt(list, chosen.front().row());
}

void ClickEntry(QAbstractItemView& list, const std::string& entry, bool twice, const std::string& name)
{
    Reach(list, name);
    const QModelIndex item = FindEntry(list, entry, name);
    list.scrollTo(item);
    QCoreApplication::processEvents();
    const QRect place = list.visualRect(item);
    const QPoint point(std::min(place.left() + 8, place.right()), place.center().y());
    if (twice)
        DoubleClickAt(*list.viewport(), point, name);
    else
        ClickAt(*list.viewport(), point, LongPause, name);
}

void ChooseEntry(QComboBox& list, const std::string& entry, const std::string& name)
{
    Reach(list, name);
    const int row = list.findText(QString::fromStdString(entry), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row < 0)
        throw StepFailure("expected an entry " + Shown(entry) + " in " + name + ", found none among " +
                          std::to_string(list.count()));
    ClickAt(list, list.rect().center(), LongPause, name);
    if (!list.view()->isVisible())
        throw StepFailure("expected " + name + " to drop down, found it closed");
    SendKey(Qt::Key_Home, {}, Qt::NoModifier);
    for (int step = 0; step < list.count() && list.view()->currentIndex().row() != row; ++step)
        SendKey(Qt::Key_Down, {}, Qt::NoModifier);
    SendKey(Qt::Key_Return, "\r", Qt::NoModifier);
}

void PutFocus(QWidget& widget, const std::string& name)
{
    Reach(widget, name);
    const QPointer<QWidget> alive(&widget);
    widget.setFocus(Qt::MouseFocusReason);
    Settle();
    if (alive.isNull())
        throw StepFailure("expected " + name + " to have the focus, found its window closed");
    if (QApplication::focusWidget() != alive) {
        const QWidget* other = QApplication::focusWidget();
        throw StepFailure("expected " + name + " to have the focus, found it in " +
                          (other == nullptr ? "nothing" : other->objectName().toStdString()));
    }
}

void TakeFocus()
{
    if (QWidget* widget = QApplication::focusWidget())
        widget->clearFocus();
}

void Type(const std::string& text)
{
    for (const char32_t character : QString::fromStdString(text).toStdU32String()) {
        const QString typed = QString::fromUcs4(&character, 1);
        if (character == U'\t') {
            SendKey(Qt::Key_Tab, typed, Qt::NoModifier);
        } else if (character == U'\n') {
            SendKey(Qt::Key_Return, "\r", Qt::NoModifier);
        } else {
            const bool plain = character > 0x20 && character < 0x7F;
            const auto key = plain               ? static_cast<Qt::Key>(typed.toUpper().front().unicode())
                             : character == 0x20 ? Qt::Key_Space
                                                 : Qt::Key_unknown;
            SendKey(key, typed, character >= U'A' && character <= U'Z' ? Qt::ShiftModifier : Qt::NoModifier);
        }
    }
}

void Press(const std::string& keys)
{
    const QKeySequence sequence = QKeySequence::fromString(QString::fromStdString(keys), QKeySequence::PortableText);
    if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown)
        throw StepFailure("there is no key " + Shown(keys));
    Qt::Key key = sequence[0].key();
    const Qt::KeyboardModifiers modifiers = sequence[0].keyboardModifiers();
    QString text;
    if (key == Qt::Key_Enter) {
        key = Qt::Key_Return;
        text = "\r";
    } else if (key == Qt::Key_Tab) {
        text = "\t";
    } else if (key == Qt::Key_Backspace) {
        text = "\b";
    } else if (key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde && (modifiers & ~Qt::ShiftModifier) == 0) {
        text = QChar(static_cast<char16_t>(key));
        if ((modifiers & Qt::ShiftModifier) == 0)
            text = text.toLower();
    }
    if (key == Qt::Key_Tab && (modifiers & Qt::ShiftModifier) != 0)
        key = Qt::Key_Backtab;
    SendKey(key, text, modifiers);
    // A button pressed by its letter is let go a tenth of a second later, and does its work only then.
    constexpr int longest = 1000;
    static_cast<void>(QTest::qWaitFor([] { return !AnyButtonDown(); }, longest));
}

void Paste(const std::string& text)
{
    QApplication::clipboard()->setText(QString::fromStdString(text));
    SendKey(Qt::Key_V, {}, Qt::ControlModifier);
}

} // namespace quillmere::scenario::hands
