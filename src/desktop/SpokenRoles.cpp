#include "desktop/SpokenRoles.h"

#include "desktop/BoxWidgets.h"
#include "desktop/ScreenParts.h"
#include "desktop/ScreenWindow.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QRadioButton>

#include <algorithm>
#include <memory>

namespace quillmere {

namespace {

/// A tick or option. Its mark is its box's to change: whatever a screen reader does with it is a click.
class SpokenMark : public QAccessibleWidget {
public:
    SpokenMark(QAbstractButton& mark, QAccessible::Role role) : QAccessibleWidget(&mark, role), mark(mark) {}
    QString text(QAccessible::Text which) const override
    {
        QString said = QAccessibleWidget::text(which);
        return which == QAccessible::Name && said.isEmpty() ? mark.text().remove(u'&') : said;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = mark.isChecked();
        return state;
    }
    QStringList actionNames() const override { return {toggleAction(), pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override
    {
        if (action == toggleAction() || action == pressAction())
            mark.click();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    QAbstractButton& mark;
};

/// How many blanks at the start of an edit are there for the eye alone: those in front of a figure.
int PaddingOf(const QLineEdit& edit)
{
    const auto* box = dynamic_cast<const BoxEdit*>(&edit);
    return box != nullptr && box->HoldsFigure() ? box->Padding() : 0;
}

/// An edit: of a figure without its padding, with all places as those in the figure. The toolkit asks for it while the
/// edit is being made, before it is known what it holds.
class SpokenEdit : public QAccessibleWidget, public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
public:
    explicit SpokenEdit(QLineEdit& edit) : QAccessibleWidget(&edit, QAccessible::EditableText), edit(edit) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        if (type == QAccessible::EditableTextInterface)
            return static_cast<QAccessibleEditableTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text which) const override
    {
        return which == QAccessible::Value ? Figure() : QAccessibleWidget::text(which);
    }
    void setText(QAccessible::Text which, const QString& text) override
    {
        if (which == QAccessible::Value)
            replaceText(0, characterCount(), text);
        else
            QAccessibleWidget::setText(which, text);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.editable = true;
        state.readOnly = edit.isReadOnly();
        state.passwordEdit = edit.echoMode() != QLineEdit::Normal;
        state.selectableText = true;
        state.focusable = true;
        return state;
    }

    QString text(int start, int end) const override { return Figure().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(edit.displayText().size()) - PaddingOf(edit); }
    int cursorPosition() const override { return InFigure(edit.cursorPosition()); }
    void setCursorPosition(int place) override { edit.setCursorPosition(PaddingOf(edit) + place); }
    int selectionCount() const override { return edit.hasSelectedText() ? 1 : 0; }
    void selection(int which, int* start, int* end) const override
    {
        const bool isChosen = which == 0 && edit.hasSelectedText();
        *start = isChosen ? InFigure(edit.selectionStart()) : 0;
        *end = isChosen ? InFigure(edit.selectionEnd()) : 0;
    }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int which) override
    {
        if (which == 0)
            edit.deselect();
    }
    void setSelection(int which, int start, int end) override
    {
        if (which == 0)
            edit.setSelection(PaddingOf(edit) + start, end - start);
    }
    QString attributes(int /*place*/, int* start, int* end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }
    QRect characterRect(int place) const override
    {
        // The caret tells how far the text has been moved to keep it in sight.
        const int caret = edit.inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x();
        const auto advance = [this](int before) {
            return edit.fontMetrics().horizontalAdvance(edit.displayText().left(before));
        };
        const int at = PaddingOf(edit) + place;
        const QRect character(caret - advance(edit.cursorPosition()) + advance(at), 0, advance(at + 1) - advance(at),
                              edit.height());
        return character.translated(edit.mapToGlobal(QPoint()));
    }
    int offsetAtPoint(const QPoint& point) const override
    {
        return InFigure(edit.cursorPositionAt(edit.mapFromGlobal(point)));
    }
    void scrollToSubstring(int start, int /*end*/) override { setCursorPosition(start); }

    void deleteText(int start, int end) override { replaceText(start, end, {}); }
    void insertText(int place, const QString& text) override { replaceText(place, place, text); }
    void replaceText(int start, int end, const QString& text) override
    {
        if (!edit.isReadOnly())
            edit.setText(Figure().replace(start, end - start, text));
    }

private:
    QString Figure() const { return edit.displayText().mid(PaddingOf(edit)); }
    int InFigure(int place) const { return std::max(place - PaddingOf(edit), 0); }

    QLineEdit& edit;
};

/// A label that shows an amount: its figure is its value, which goes on behind its name.
class SpokenAmount : public QAccessibleWidget {
public:
    explicit SpokenAmount(FigureLabel& label) : QAccessibleWidget(&label, QAccessible::StaticText), label(label) {}
    QString text(QAccessible::Text which) const override
    {
        QString said = QAccessibleWidget::text(which);
        if (which != QAccessible::Name)
            return said;
        const QString figure = label.text().trimmed();
        return said.isEmpty() || figure.isEmpty() ? said + figure : said + QStringLiteral(": ") + figure;
    }

private:
    FigureLabel& label;
};

/// `kind` is that of the toolkit's class, which the program's own are known by as well.
QAccessibleInterface* RoleOf(const QString& kind, QObject* object)
{
    if (auto* tick = qobject_cast<QCheckBox*>(object); tick != nullptr && kind == u"QCheckBox")
        return new SpokenMark(*tick, QAccessible::CheckBox);
    if (auto* option = qobject_cast<QRadioButton*>(object); option != nullptr && kind == u"QRadioButton")
        return new SpokenMark(*option, QAccessible::RadioButton);
    if (auto* edit = qobject_cast<QLineEdit*>(object); edit != nullptr && kind == u"QLineEdit")
        return new SpokenEdit(*edit);
    if (auto* figure = dynamic_cast<FigureLabel*>(object); figure != nullptr && kind == u"QLabel")
        return new SpokenAmount(*figure);
    if (auto* section = kind == u"QWidget" ? dynamic_cast<Section*>(object) : nullptr; section != nullptr)
        return new QAccessibleWidget(section, QAccessible::Grouping);
    auto* window = kind == u"QWidget" ? dynamic_cast<ScreenWindow*>(object) : nullptr;
    if (window == nullptr)
        return nullptr;
    return new QAccessibleWidget(window, window->isWindow() ? QAccessible::Dialog : QAccessible::Grouping);
}

/// An event of the text of a figure's edit, with places in the figure; nothing if it is another event.
std::unique_ptr<QAccessibleTextCursorEvent> InFigure(BoxEdit& edit, const QAccessibleEvent& event)
{
    const auto at = [padding = edit.Padding()](int place) { return std::max(place - padding, 0); };
    const auto figure = [](const QString& text) { return text.mid(BlanksAtStart(text)); };
    std::unique_ptr<QAccessibleTextCursorEvent> told;
    switch (event.type()) {
    case QAccessible::TextCaretMoved:
        told = std::make_unique<QAccessibleTextCursorEvent>(&edit, 0);
        break;
    case QAccessible::TextSelectionChanged: {
        const auto& chosen = static_cast<const QAccessibleTextSelectionEvent&>(event);
        told = std::make_unique<QAccessibleTextSelectionEvent>(&edit, at(chosen.selectionStart()),
                                                               at(chosen.selectionEnd()));
        break;
    }
    case QAccessible::TextInserted: {
        const auto& in = static_cast<const QAccessibleTextInsertEvent&>(event);
        told = std::make_unique<QAccessibleTextInsertEvent>(&edit, at(in.changePosition()), figure(in.textInserted()));
        break;
    }
    case QAccessible::TextRemoved: {
        const auto& out = static_cast<const QAccessibleTextRemoveEvent&>(event);
        told = std::make_unique<QAccessibleTextRemoveEvent>(&edit, at(out.changePosition()), figure(out.textRemoved()));
        break;
    }
    case QAccessible::TextUpdated: {
        const auto& put = static_cast<const QAccessibleTextUpdateEvent&>(event);
        told = std::make_unique<QAccessibleTextUpdateEvent>(&edit, at(put.changePosition()), figure(put.textRemoved()),
                                                            figure(put.textInserted()));
        break;
    }
    default:
        return nullptr;
    }
    told->setCursorPosition(at(static_cast<const QAccessibleTextCursorEvent&>(event).cursorPosition()));
    return told;
}

/// Hands each event on to whoever speaks for the desktop.
void Tell(QAccessibleEvent* event)
{
    auto* edit = dynamic_cast<BoxEdit*>(event->object());
    const bool isFigure = edit != nullptr && edit->HoldsFigure();
    const std::unique_ptr<QAccessibleEvent> inFigure = isFigure ? InFigure(*edit, *event) : nullptr;
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(inFigure != nullptr ? inFigure.get() : event);
    QAccessible::installUpdateHandler(Tell);
}

} // namespace

void TellRoles()
{
    QAccessible::installFactory(RoleOf);
    QAccessible::installUpdateHandler(Tell);
}

} // namespace quillmere
