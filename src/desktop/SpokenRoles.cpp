#include "desktop/SpokenRoles.h"

#include "desktop/ScreenParts.h"
#include "desktop/ScreenWindow.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QRadioButton>

namespace quillmere {

namespace {

/// A tick or option. Its mark is its box's to change: whatever a screen reader does with it is a click.
class SpokenMark : public QAccessibleWidget {
public:
    SpokenMark(QAbstractButton& mark, QAccessible::Role role) : QAccessibleWidget(&mark, role), mark(mark) {}
    QString text(QAccessible::Text which) const override
    {
        const QString said = QAccessibleWidget::text(which);
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

/// `kind` is that of the toolkit's class, which the program's own are known by as well.
QAccessibleInterface* RoleOf(const QString& kind, QObject* object)
{
    if (auto* tick = qobject_cast<QCheckBox*>(object); tick != nullptr && kind == u"QCheckBox")
        return new SpokenMark(*tick, QAccessible::CheckBox);
    if (auto* option = qobject_cast<QRadioButton*>(object); option != nullptr && kind == u"QRadioButton")
        return new SpokenMark(*option, QAccessible::RadioButton);
    if (auto* section = kind == u"QWidget" ? dynamic_cast<Section*>(object) : nullptr; section != nullptr)
        return new QAccessibleWidget(section, QAccessible::Grouping);
    auto* window = kind == u"QWidget" ? dynamic_cast<ScreenWindow*>(object) : nullptr;
    if (window == nullptr)
        return nullptr;
    return new QAccessibleWidget(window, window->isWindow() ? QAccessible::Dialog : QAccessible::Grouping);
}

} // namespace

void TellRoles()
{
    QAccessible::installFactory(RoleOf);
}

} // namespace quillmere
