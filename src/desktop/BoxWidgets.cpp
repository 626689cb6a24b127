#include "desktop/BoxWidgets.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include <algorithm>

namespace quillmere {

int BlanksAtStart(const QString& text)
{
    const auto figure = std::ranges::find_if(text, [](QChar character) { return character != u' '; });
    return static_cast<int>(figure - text.begin());
}

BoxEdit::BoxEdit(Holds holds, QWidget* parent) : QLineEdit(parent), holds(holds)
{
    // The caret has no place among the blanks in front of a figure.
    if (holds == Holds::Figure)
        connect(this, &QLineEdit::cursorPositionChanged, this, [this](int, int place) {
            if (!hasSelectedText() && place < Padding())
                setCursorPosition(Padding());
        });
}

void BoxEdit::Put(const QString& newText)
{
    if (text() == newText)
        return;
    setText(newText);
    Keep();
}

void BoxEdit::SelectWhole()
{
    const int from = HoldsFigure() ? Padding() : 0;
    setSelection(from, static_cast<int>(text().size()) - from);
}

void BoxEdit::MarkEnd(std::size_t characters)
{
    if (std::exchange(marked, characters) != characters)
        update();
}

void BoxEdit::SetNoted(bool newNoted)
{
    if (std::exchange(noted, newNoted) != newNoted)
        update();
}

void BoxEdit::SetChosen(bool newChosen)
{
    if (std::exchange(chosen, newChosen) != newChosen)
        update();
}

void BoxEdit::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (noted) {
        QPainter painter(this);
        look::DrawCorner(painter, rect());
    }
    if (chosen) {
        constexpr int Tint = 70; // of 255
        QColor colour = palette().color(QPalette::Active, QPalette::Highlight);
        colour.setAlpha(Tint);
        QPainter(this).fillRect(rect(), colour);
    }
    if (marked == 0)
        return;
    const std::u32string whole = text().toStdU32String();
    const QString fits = QString::fromStdU32String(whole.substr(0, whole.size() - std::min(marked, whole.size())));
    const QFontMetrics metrics = fontMetrics();
    // The caret tells how far the text has been moved to keep it in sight.
    const QRect caret = cursorRect();
    const int start = caret.center().x() - metrics.horizontalAdvance(text().left(cursorPosition()));
    constexpr int Thickness = 2;
    const QRect line(QPoint(start + metrics.horizontalAdvance(fits), caret.bottom() - Thickness),
                     QPoint(start + metrics.horizontalAdvance(text()), caret.bottom() - 1));
    QPainter(this).fillRect(line & contentsRect(), look::TonesInUse().fault);
}

bool BoxEdit::event(QEvent* event)
{
    // A menu's key comes first, but for those with which a text is worked on: on some desktops Ctrl+E goes to the end
    // of a line. With no typing of its own to take back, the key for that is the window's too.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const auto is = [&](QKeySequence::StandardKey standard) { return key.matches(standard); };
        const bool isOwn = (is(QKeySequence::Undo) && isUndoAvailable()) || is(QKeySequence::Redo) ||
                           is(QKeySequence::Copy) || is(QKeySequence::Cut) || is(QKeySequence::Paste) ||
                           is(QKeySequence::SelectAll);
        if (key.modifiers().testFlag(Qt::ControlModifier) && !isOwn) {
            event->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void BoxEdit::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return; // it had never been left
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        SelectWhole();
        break;
    case Qt::MouseFocusReason:
        break; // the press that brought it follows
    default:
        // The program has put the focus here: a figure is there to be typed over.
        if (HoldsFigure())
            SelectWhole();
        break;
    }
    // Whatever brought the focus, the first press chooses the figure; only the next one places the caret.
    choosesByPress = HoldsFigure();
    Keep();
}

void BoxEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::SelectAll))
        SelectWhole();
    else
        QLineEdit::keyPressEvent(event);
}

void BoxEdit::mousePressEvent(QMouseEvent* event)
{
    choosesByPress = choosesByPress && event->button() == Qt::LeftButton;
    if (choosesByPress)
        SelectWhole();
    else
        QLineEdit::mousePressEvent(event);
}

void BoxEdit::mouseMoveEvent(QMouseEvent* event)
{
    if (!choosesByPress)
        QLineEdit::mouseMoveEvent(event);
}

void BoxEdit::mouseReleaseEvent(QMouseEvent* event)
{
    if (!std::exchange(choosesByPress, false))
        QLineEdit::mouseReleaseEvent(event);
}

DropDown::DropDown(QWidget* parent) : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

void DropDown::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

namespace {

class RowLook : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!option->state.testFlag(QStyle::State_Selected))
            option->state.setFlag(QStyle::State_HasFocus, false);
    }
};

} // namespace

EntryList::EntryList(QWidget* parent, std::function<void(int row)> settled)
    : QListWidget(parent), settled(std::move(settled))
{
    setUniformItemSizes(true);
    setItemDelegate(new RowLook(this));
    // Not the current row: the toolkit gives a list one when it gets the focus, and nobody has chosen it.
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        if (!inEvent)
            Settle();
    });
}

bool EntryList::event(QEvent* event)
{
    return Handle(event->type() == QEvent::KeyPress, [&] { return QListWidget::event(event); });
}

bool EntryList::viewportEvent(QEvent* event)
{
    return Handle(event->type() == QEvent::MouseButtonRelease, [&] { return QListWidget::viewportEvent(event); });
}

void EntryList::keyPressEvent(QKeyEvent* event)
{
    // With nothing chosen the first step chooses the end at which it begins.
    const bool steps = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (steps && count() > 0 && selectedItems().isEmpty())
        setCurrentRow(event->key() == Qt::Key_Down ? 0 : count() - 1);
    else
        QListWidget::keyPressEvent(event);
}

bool EntryList::Handle(bool settles, const std::function<bool()>& work)
{
    const bool outer = std::exchange(inEvent, true);
    const bool taken = work();
    inEvent = outer;
    if (settles)
        Settle();
    return taken;
}

void EntryList::Settle()
{
    const QList<QListWidgetItem*> chosen = selectedItems();
    settled(chosen.isEmpty() ? -1 : row(chosen.front()));
}

void EntryList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (!hasFocus() || !selectedItems().isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
}

} // namespace quillmere
