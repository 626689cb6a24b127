// What mouse and keyboard do in a window before its widgets hear of it, and what is typed.
#include "desktop/BoxWidgets.h"
#include "desktop/ChoicePopup.h"
#include "desktop/Look.h"
#include "desktop/ScreenParts.h"
#include "desktop/ScreenWindow.h"
#include "frame/Inserted.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <utility>

namespace quillmere {

namespace {

/// The focus has gone to another window or a menu, or comes from there: the user's place in this window is the same.
bool IsElsewhere(const QEvent& event)
{
    const auto reason = static_cast<const QFocusEvent&>(event).reason();
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
}

/// A key that asks about the box in use.
struct AskingKey {
    int key;
    Qt::KeyboardModifiers modifiers;
    void (Screen::*ask)(Box&);
};
constexpr auto AskingKeys = std::to_array<AskingKey>({
    {Qt::Key_F2, Qt::NoModifier, &Screen::Explain},
});

bool AsksForHelp(const QEvent& event)
{
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

} // namespace

/// True for a key that asks about the box; it has been answered.
bool ScreenWindow::AsksAbout(Box& box, const QKeyEvent& key)
{
    const auto found = std::ranges::find_if(AskingKeys, [&](const AskingKey& asking) {
        return asking.key == key.key() && asking.modifiers == (key.modifiers() & ~Qt::KeypadModifier);
    });
    if (found == AskingKeys.end())
        return false;
    (screen.*found->ask)(box);
    return true;
}

/// The menu of a box that shows a figure: what its widget has in it by itself, and the question how it came about.
void ScreenWindow::ShowMenuOf(Box& box, QWidget& widget, const QPoint& place)
{
    auto* edit = dynamic_cast<BoxEdit*>(&widget);
    QMenu* menu = edit != nullptr ? edit->createStandardContextMenu() : new QMenu(&widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (!menu->isEmpty())
        menu->addSeparator();
    QAction* explain = menu->addAction(tr("E&xplain..."));
    explain->setShortcut(Qt::Key_F2);
    connect(explain, &QAction::triggered, this, [this, &box] {
        if (!detached)
            screen.Explain(box);
    });
    menu->popup(place);
}

/// The focus goes elsewhere. Over a message that leaving shows the mouse button is let go, and nobody hears of it.
void ScreenWindow::LeaveForOther(Box& box)
{
    const auto isHeld = [] { return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton); };
    const bool held = isHeld();
    screen.Leave(box);
    letGoMeanwhile = held && !isHeld();
}

/// A press whose button has been let go over a message is carried out all the same.
void ScreenWindow::CompleteClick(QObject& pressed, const QMouseEvent& press)
{
    if (std::exchange(letGoMeanwhile, false))
        QCoreApplication::postEvent(&pressed, new QMouseEvent(QEvent::MouseButtonRelease, press.position(),
                                                              press.globalPosition(), press.button(), Qt::NoButton,
                                                              press.modifiers()));
}

/// What has been typed or pasted into an edit goes on to its box as far as the screen lets it in.
void ScreenWindow::Typed(Box& box, BoxEdit& edit)
{
    if (detached || listHands.Paste(box, edit))
        return;
    screen.Enter(box);
    const std::string held = box.Text();
    const std::u32string before = look::Text(held).toStdU32String();
    std::u32string now = edit.text().toStdU32String();
    const Insertion in = Inserted(before, now, edit.text().left(edit.cursorPosition()).toStdU32String().size());
    const std::u32string accepted = screen.Keys(box, in.typed);
    if (detached || box.Text() != held) // the screen has put something else into the box
        return;
    const bool refused = !in.typed.empty() && accepted.empty();
    now = refused ? before : now.replace(in.place, in.typed.size(), accepted);
    std::size_t caret = in.place + (refused ? 0 : accepted.size());
    // A figure that is being typed is not padded.
    if (edit.HoldsFigure() && !refused) {
        const std::size_t padding = std::min(now.find_first_not_of(U' '), now.size());
        now.erase(0, padding);
        caret -= std::min(caret, padding);
    }
    const QString shown = QString::fromStdU32String(now);
    const auto unitsOf = [&now](std::size_t from, std::size_t count) {
        return static_cast<int>(QString::fromStdU32String(now.substr(from, count)).size());
    };
    box.AcceptTyped(shown.toStdString());
    if (edit.text() != shown) {
        edit.setText(shown);
        if (refused && in.removed > 0) // what was to be replaced stays chosen
            edit.setSelection(unitsOf(0, caret), unitsOf(caret, in.removed));
        else
            edit.setCursorPosition(unitsOf(0, caret));
    }
    MarkCut(box, edit);
    if (now != before)
        screen.Typed(box);
}

/// Another hand than the keys has changed what an edit reads, such as that of a screen reader that takes dictation. The
/// text is typed there, with the focus, in place of what the box reads; a box that takes no typing keeps what it reads.
void ScreenWindow::PutIn(Box& box, BoxEdit& edit)
{
    const QString held = look::Text(box.Text()), wanted = edit.text();
    if (detached || wanted == held)
        return;
    edit.setText(held);
    if (!TakesTyping(box))
        return;
    edit.setFocus(Qt::OtherFocusReason);
    if (detached || !TakesTyping(box)) // leaving the box before it has closed this one
        return;
    edit.selectAll();
    edit.insert(wanted);
}

/// Scrolls until the control that the focus has come to stands in sight, with air above and below. What is in sight
/// stays where it is under the mouse, which is about to be let go there.
void ScreenWindow::BringInSight(QWidget& widget, Qt::FocusReason reason)
{
    constexpr int Air = 60, AirBeside = 20;
    // Of what is wider than the room the left side shows, where its lines begin.
    scroll->ensureWidgetVisible(&widget, AirBeside, Air);
    if (widget.width() > scroll->viewport()->width())
        scroll->horizontalScrollBar()->setValue(widget.mapTo(form, QPoint(0, 0)).x() - AirBeside);
    if (reason == Qt::MouseFocusReason)
        return;
    const QSize room = scroll->viewport()->size();
    const QPoint middle = widget.mapTo(form, widget.rect().center());
    scroll->ensureVisible(scroll->horizontalScrollBar()->value() + room.width() / 2, middle.y(), 0,
                          std::min(widget.height() / 2 + Air + 1, room.height() / 2));
}

bool ScreenWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (detached)
        return false;
    if (event->type() == QEvent::MouseButtonPress)
        CompleteClick(*watched, static_cast<QMouseEvent&>(*event));
    const auto found = boxes.find(watched);
    if (found == boxes.end())
        return false;
    Box& box = *found->second;
    auto* widget = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::ShortcutOverride && AsksForHelp(*event)) {
        event->accept(); // a menu's key would leave the box in use first
        return true;
    }
    if (event->type() == QEvent::FocusIn) {
        if (form->isAncestorOf(widget))
            BringInSight(*widget, static_cast<QFocusEvent&>(*event).reason());
        if (!LeadsOn(box))
            lastField = widget;
        if (!IsElsewhere(*event) || screen.InUse() != &box) {
            screen.Enter(box);
            listHands.FocusIn(box, static_cast<QFocusEvent&>(*event).reason());
        }
    } else if (event->type() == QEvent::FocusOut) {
        if (!IsElsewhere(*event))
            LeaveForOther(box);
    } else if (event->type() == QEvent::ContextMenu && box.IsAmount()) {
        ShowMenuOf(box, *widget, static_cast<QContextMenuEvent&>(*event).globalPos());
        return true;
    } else if (event->type() == QEvent::MouseButtonPress) {
        listHands.Press(static_cast<QMouseEvent&>(*event).modifiers());
    } else if (event->type() == QEvent::MouseMove) {
        const auto& mouse = static_cast<QMouseEvent&>(*event);
        if (mouse.buttons().testFlag(Qt::LeftButton))
            listHands.Drag(box, mouse.globalPosition().toPoint());
    } else if (event->type() == QEvent::KeyPress) {
        return KeyIn(box, *widget, static_cast<QKeyEvent&>(*event));
    }
    return false;
}

/// A key before the widget in use takes it itself; true if the widget does not get it.
bool ScreenWindow::KeyIn(Box& box, QWidget& widget, QKeyEvent& key)
{
    if (AsksAbout(box, key))
        return true;
    if (box.Kind() == BoxKind::Text && AsksForChoices(key) && OfferChoices(screen, box, static_cast<BoxEdit&>(widget)))
        return true;
    if (listHands.Key(box, key))
        return true;
    if (box.Kind() == BoxKind::Text && KeyInEdit(box, static_cast<BoxEdit&>(widget), key))
        return true;
    if (box.Kind() == BoxKind::Picture && KeyOnPicture(static_cast<QAbstractButton&>(widget), key))
        return true;
    if (key.key() == Qt::Key_F4 && OpenPictureOf(box))
        return true;
    if (MovesInList(box, key))
        return true;
    if ((key.key() == Qt::Key_Up || key.key() == Qt::Key_Down) &&
        MoveBetweenLines(box, key.key() == Qt::Key_Up ? -1 : 1))
        return true;
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (enter && screen.IsDoubleClickable(box) && box.Selected() >= 0) {
        screen.DoubleClick(box);
        return true;
    }
    if (enter && (box.Kind() == BoxKind::Button || (box.Kind() == BoxKind::Label && screen.IsClickable(box)))) {
        static_cast<QAbstractButton&>(widget).click();
        return true;
    }
    return false;
}

/// Keys of a text box before it takes them itself; true if it does not get this one.
bool ScreenWindow::KeyInEdit(Box& box, BoxEdit& edit, const QKeyEvent& key)
{
    constexpr char32_t Backspace = 8;
    if (edit.isReadOnly())
        return false;
    if (key.key() == Qt::Key_Backspace) {
        const std::string held = box.Text();
        return screen.Key(box, Backspace) == 0 || detached || box.Text() != held;
    }
    if (key.key() != Qt::Key_Escape || edit.text() == edit.Kept())
        return false;
    box.AcceptTyped(edit.Kept().toStdString());
    edit.setText(edit.Kept());
    edit.SelectWhole();
    MarkCut(box, edit);
    screen.Typed(box);
    return true;
}

/// What is typed on a picture was meant for the box after it. Only Space and F4 open what the picture stands for.
bool ScreenWindow::KeyOnPicture(QAbstractButton& picture, QKeyEvent& key)
{
    if (key.key() == Qt::Key_F4) {
        picture.click();
        return true;
    }
    const QString typed = key.text();
    constexpr auto Commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (typed.isEmpty() || !typed.front().isPrint() || typed.front().isSpace() || (key.modifiers() & Commands) != 0)
        return false;
    const auto& all = screen.Boxes();
    const auto next = std::find_if(PlaceOf(&picture), all.end(), [this](const auto& box) { return TakesTyping(*box); });
    if (next == all.end())
        return false;
    QWidget* meant = WidgetOf(**next);
    meant->setFocus(Qt::TabFocusReason);
    if (!detached)
        QCoreApplication::sendEvent(meant, &key);
    return true;
}

/// Opens the picture of the section in which a box stands: the one at its line, or the last above it. False if the
/// section has none.
bool ScreenWindow::OpenPictureOf(const Box& box)
{
    if (box.Kind() != BoxKind::Text && box.Kind() != BoxKind::Tick)
        return false;
    const auto placeOf = [this](const Box& other) {
        return std::ranges::find_if(layout.placed, [&other](const Layout::Placed& place) {
            return place.box == other.Name() && place.index == other.Index();
        });
    };
    const auto place = placeOf(box);
    const auto section = std::ranges::find_if(layout.drawn, [&](const Layout::Drawn& drawn) {
        return drawn.what == Layout::Drawn::What::Panel && drawn.page == place->page && drawn.y <= place->y &&
               place->y < drawn.y + drawn.height;
    });
    if (section == layout.drawn.end())
        return false;
    const Box* found = nullptr;
    for (const auto& other : screen.Boxes()) {
        if (other->Kind() != BoxKind::Picture || !other->Visible())
            continue;
        const auto picture = placeOf(*other);
        if (picture->y >= section->y && picture->y < place->y + place->height)
            found = other.get();
    }
    if (found == nullptr)
        return false;
    static_cast<QAbstractButton*>(WidgetOf(*found))->click();
    return true;
}

bool ScreenWindow::IsInReach(const Box& box) const
{
    const QWidget* widget = WidgetOf(box);
    return widget != nullptr && widget->isEnabled() && widget->isVisible();
}

bool ScreenWindow::TakesTyping(const Box& box) const
{
    return box.Kind() == BoxKind::Text && !box.ReadOnly() && IsInReach(box);
}

/// Where the box that a widget shows stands among the others.
std::vector<std::unique_ptr<Box>>::const_iterator ScreenWindow::PlaceOf(const QWidget* widget) const
{
    return std::ranges::find_if(screen.Boxes(), [&](const auto& box) { return WidgetOf(*box) == widget; });
}

/// Enter: goes to the next box that takes typing; after the last one to the next button, or round to the first box.
void ScreenWindow::GoOn()
{
    const auto& all = screen.Boxes();
    const auto from = PlaceOf(QApplication::focusWidget());
    const auto typing = [this](const auto& box) { return TakesTyping(*box); };
    const auto pressing = [this](const auto& box) { return box->Kind() == BoxKind::Button && IsInReach(*box); };
    const auto after = from == all.end() ? all.begin() : from + 1;
    auto next = std::find_if(after, all.end(), typing);
    if (next == all.end())
        next = std::find_if(after, all.end(), pressing);
    if (next == all.end())
        next = std::ranges::find_if(all, typing);
    if (next != all.end())
        WidgetOf(**next)->setFocus(Qt::TabFocusReason);
}

/// Up, Down and their like in a text box that stands over a list move in the list; false if there is none.
bool ScreenWindow::MovesInList(const Box& box, const QKeyEvent& key)
{
    const Box* list = box.MovesIn().empty() ? nullptr : screen.FindBox(box.MovesIn());
    QWidget* widget = list == nullptr ? nullptr : WidgetOf(*list);
    const bool moves = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp ||
                       key.key() == Qt::Key_PageDown;
    if (widget == nullptr || !moves)
        return false;
    QKeyEvent passedOn(QEvent::KeyPress, key.key(), key.modifiers(), key.text());
    QCoreApplication::sendEvent(widget, &passedOn);
    return true;
}

/// Up and Down go to the same column of the line before or after; false where there is none.
bool ScreenWindow::MoveBetweenLines(const Box& box, int lines)
{
    if (box.Kind() != BoxKind::Text || box.Index() == Box::NoIndex)
        return false;
    const Box* next = screen.FindBox(box.Name(), box.Index() + lines);
    QWidget* widget = next == nullptr ? nullptr : WidgetOf(*next);
    if (widget == nullptr || !widget->isEnabled() || !widget->isVisible())
        return false;
    FocusOn(*next);
    return true;
}

void ScreenWindow::keyPressEvent(QKeyEvent* event)
{
    if (detached)
        return;
    if (AsksForHelp(*event) && showHelp) {
        showHelp();
        return;
    }
    if (event->key() == Qt::Key_Escape && screen.Mode() != ShowMode::Child) {
        screen.RequestClose();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Box* button = screen.DefaultButton();
        if (button == nullptr) {
            GoOn();
            return;
        }
        // The box in use is left first, so that what was typed counts.
        if (QWidget* widget = WidgetOf(*button); widget != nullptr && widget->isEnabled() && widget->isVisible()) {
            widget->setFocus(Qt::OtherFocusReason);
            if (!detached && button->Enabled())
                screen.Click(*button);
        }
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace quillmere
