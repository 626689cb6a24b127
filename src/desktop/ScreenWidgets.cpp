// The widgets of a window: each made from its box, and following it.
#include "desktop/BookReader.h"
#include "desktop/BoxWidgets.h"
#include "desktop/Look.h"
#include "desktop/ScreenParts.h"
#include "desktop/ScreenWindow.h"
#include "desktop/TableView.h"
#include "frame/KeyFilters.h"
#include "review/BoxHelp.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

/// True for an amount, a date or a count.
bool HoldsFigure(const Box& box)
{
    constexpr auto Filters =
        std::to_array<KeyFilter>({DateKeyFilter, WholeNumberKeyFilter, MoneyKeyFilter, SignedMoneyKeyFilter});
    return box.IsAmount() || std::ranges::find(Filters, box.Filter()) != Filters.end();
}

/// The caption with the letter that presses the button, also where the caption itself marks none.
void SetCaption(QAbstractButton& button, const Box& box)
{
    button.setText(look::Marked(box.Text(), box.Letter()));
    if (box.Letter() != 0)
        button.setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(box.Letter())));
}

void SyncList(QListWidget& list, const Box& box)
{
    const auto& entries = box.Entries();
    bool same = list.count() == static_cast<int>(entries.size());
    for (int row = 0; same && row < list.count(); ++row)
        same = list.item(row)->text() == look::Text(entries[static_cast<std::size_t>(row)]);
    const QSignalBlocker quiet(list);
    if (!same) {
        list.clear();
        for (const std::string& entry : entries)
            list.addItem(look::Text(entry));
    }
    list.setCurrentRow(box.Selected());
}

void SyncDropDown(QComboBox& list, const Box& box)
{
    const auto& entries = box.Entries();
    const QSignalBlocker quiet(list);
    bool same = list.count() == static_cast<int>(entries.size());
    for (int row = 0; same && row < list.count(); ++row)
        same = list.itemText(row) == look::Text(entries[static_cast<std::size_t>(row)]);
    if (!same) {
        list.clear();
        for (const std::string& entry : entries)
            list.addItem(look::Text(entry));
    }
    list.setCurrentIndex(box.Selected());
}

look::Entry EntryOf(const BoxEdit& edit, const Box& box)
{
    if (box.ReadOnly() || !box.Enabled())
        return look::Entry::Closed;
    return edit.IsWorkedOut() ? look::Entry::WorkedOut : look::Entry::Typed;
}

void ShowText(BoxEdit& edit, const Box& box)
{
    edit.Put(look::Text(box.Text()));
    edit.setReadOnly(box.ReadOnly());
    // Setting a palette is dear, even the same one.
    const QPalette& palette = look::EditPalette(EntryOf(edit, box));
    if (edit.palette().color(QPalette::Active, QPalette::Base) != palette.color(QPalette::Active, QPalette::Base))
        edit.setPalette(palette);
}

void ShowButton(QPushButton& button, const Box& box)
{
    SetCaption(button, box);
    button.setPalette(look::ButtonPalette(box.PaintedIn()));
}

} // namespace

QWidget* ScreenWindow::MakeWidget(Box& box, const Layout::Placed& place, QWidget* parent)
{
    switch (box.Kind()) {
    case BoxKind::Text:
        return MakeEdit(box, parent);
    case BoxKind::List:
        return MakeList(box, parent);
    case BoxKind::Table:
        return MakeTable(box, parent);
    case BoxKind::DropDown:
        return MakeDropDown(box, parent);
    case BoxKind::Tabs:
        return MakeTabs(box, parent);
    case BoxKind::Frame:
        return new Group(parent);
    case BoxKind::Surface:
        return new BookReader([this, &box](int number) { screen.Choose(box, number); }, parent);
    case BoxKind::Label:
        if (!screen.IsClickable(box)) {
            const bool wrapped = place.height > Zoomed(Layout::BoxHeight) * 3 / 2;
            QLabel* label = box.IsAmount() ? new FigureLabel(parent)
                            : wrapped      ? new WrappedLabel(parent)
                                           : new QLabel(parent);
            const bool right = box.IsAmount() || (place.look && place.look->align == TextLook::Align::Right);
            label->setAlignment((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
            label->setTextFormat(Qt::PlainText);
            return label;
        }
        break;
    default:
        break;
    }
    return MakeButton(box, parent);
}

QWidget* ScreenWindow::MakeEdit(Box& box, QWidget* parent)
{
    auto* edit = new BoxEdit(HoldsFigure(box) ? BoxEdit::Holds::Figure : BoxEdit::Holds::Text, parent);
    if (box.IsAmount())
        edit->setAlignment(Qt::AlignRight);
    const review::BoxHelp* help = review::HelpOf(screen.Name(), box.Name());
    if (box.IsComputed() || (help != nullptr && help->worksOut))
        edit->SetWorkedOut();
    connect(edit, &QLineEdit::textEdited, this, [this, &box, edit] { Typed(box, *edit); });
    // Comes after that one, and with every change that was none of the keys.
    connect(edit, &QLineEdit::textChanged, this, [this, &box, edit] { PutIn(box, *edit); });
    return edit;
}

QWidget* ScreenWindow::MakeList(Box& box, QWidget* parent)
{
    auto* list = new EntryList(parent, [this, &box](int row) {
        if (!detached && row != box.Selected())
            screen.Select(box, row);
    });
    list->viewport()->installEventFilter(this);
    connect(list, &QListWidget::itemClicked, this, [this, &box, list](QListWidgetItem* item) {
        if (!detached)
            screen.Choose(box, list->row(item));
    });
    connect(list, &QListWidget::itemDoubleClicked, this, [this, &box, list](QListWidgetItem* item) {
        if (detached)
            return;
        box.Select(list->row(item));
        screen.DoubleClick(box);
    });
    return list;
}

QWidget* ScreenWindow::MakeTable(Box& box, QWidget* parent)
{
    auto* table = new TableView(box, parent, [this, &box](int row, int column, const std::vector<int>& chosen) {
        if (!detached)
            screen.SelectLines(box, row, column, chosen);
    });
    table->viewport()->installEventFilter(this);
    table->header()->setSectionsClickable(screen.IsSortable(box));
    connect(table->header(), &QHeaderView::sectionClicked, this, [this, &box](int column) {
        if (!detached)
            screen.Sort(box, column);
    });
    connect(table, &QTreeView::doubleClicked, this, [this, &box] {
        if (!detached)
            screen.DoubleClick(box);
    });
    return table;
}

QWidget* ScreenWindow::MakeDropDown(Box& box, QWidget* parent)
{
    auto* list = new DropDown(parent);
    connect(list, &QComboBox::activated, this, [this, &box](int row) {
        if (!detached)
            screen.Choose(box, row);
    });
    return list;
}

QWidget* ScreenWindow::MakeButton(Box& box, QWidget* parent)
{
    QAbstractButton* button = nullptr;
    switch (box.Kind()) {
    case BoxKind::Tick:
        button = new Marked<QCheckBox>(parent);
        break;
    case BoxKind::Option:
        button = new Marked<QRadioButton>(parent);
        button->setAutoExclusive(false);
        break;
    case BoxKind::Picture: {
        auto* picture = new PictureButton(parent);
        picture->setIcon(look::Picture(box.Tip()));
        picture->setAutoRaise(true);
        picture->setFocusPolicy(Qt::StrongFocus);
        button = picture;
        break;
    }
    default: {
        auto* push = new CaptionButton(parent);
        push->setAutoDefault(false);
        push->setFlat(false);
        if (!box.Key().empty())
            connect(new QShortcut(QKeySequence(look::Text(box.Key()), QKeySequence::PortableText), this),
                    &QShortcut::activated, this, [this, &box] {
                        if (!detached && IsInReach(box)) // the focus stays where it is
                            screen.Click(box);
                    });
        button = push;
        break;
    }
    }
    connect(button, &QAbstractButton::clicked, this, [this, &box, button] {
        // A key that presses the button from elsewhere leaves the box in use first, so that what was typed counts.
        if (!detached && !button->hasFocus() && button->focusPolicy() != Qt::NoFocus)
            button->setFocus(Qt::ShortcutFocusReason);
        if (!detached && box.Enabled())
            screen.Click(box);
    });
    return button;
}

QWidget* ScreenWindow::MakeTabs(Box& box, QWidget* parent)
{
    auto* tabs = new QTabWidget(parent);
    tabs->tabBar()->installEventFilter(this);
    for (const std::string& caption : box.Entries()) {
        pages.push_back(new Canvas(layout, static_cast<int>(pages.size()) + 1, growth, tabs));
        tabs->addTab(pages.back(), look::Text(caption));
        if (Box* page = screen.FindBox(layout.pageBox, static_cast<int>(pages.size())))
            Adopt(*page, *pages.back());
    }
    connect(tabs, &QTabWidget::currentChanged, this, [this, &box](int page) {
        if (!detached && page != box.Selected())
            screen.Choose(box, page);
    });
    return tabs;
}

void ScreenWindow::SetCut(std::function<std::size_t(const Box&)> newCut)
{
    cut = std::move(newCut);
    for (const auto& [box, widget] : widgets)
        if (box->Kind() == BoxKind::Text)
            MarkCut(*box, *static_cast<BoxEdit*>(widget));
}

void ScreenWindow::MarkCut(const Box& box, BoxEdit& edit) const
{
    if (cut)
        edit.MarkEnd(cut(box));
}

/// What is said of a control behind its name: what it takes or that its page is shown.
QString ScreenWindow::DescriptionOf(const Box& box) const
{
    if (const auto found = takes.find(&box); found != takes.end())
        return found->second;
    return box.PaintedIn() == Paint::Yellow ? QStringLiteral("The page that is shown") : QString();
}

/// Lets the tooltip, a mark and a screen reader say what there is to tell of a control beside what they always say.
void ScreenWindow::ShowNote(const Box& box, QWidget& widget) const
{
    const QString note = notes ? look::Text(notes(box)) : QString();
    const auto with = [&](QString words, const QString& between) {
        return words.append(words.isEmpty() || note.isEmpty() ? QString() : between).append(note);
    };
    if (const QString tip = with(look::TipOf(box), QStringLiteral("\n")); widget.toolTip() != tip)
        widget.setToolTip(tip);
    if (const QString said = with(DescriptionOf(box), QStringLiteral("; ")); widget.accessibleDescription() != said)
        widget.setAccessibleDescription(said);
    if (auto* edit = dynamic_cast<BoxEdit*>(&widget))
        edit->SetNoted(!note.isEmpty());
    else if (auto* picture = dynamic_cast<PictureButton*>(&widget))
        picture->SetNoted(!note.isEmpty());
    else if (auto* button = dynamic_cast<CaptionButton*>(&widget))
        button->SetNoted(!note.isEmpty());
}

void ScreenWindow::BoxChanged(const Box& box)
{
    const auto found = widgets.find(&box);
    if (found == widgets.end())
        return;
    QWidget* widget = found->second;
    if (std::ranges::find(pages, widget) != pages.end())
        return; // the tab strip shows and hides its pages
    widget->setEnabled(box.Enabled());
    widget->setVisible(box.Visible());
    ShowNote(box, *widget);
    switch (box.Kind()) {
    case BoxKind::Text:
        ShowText(*static_cast<BoxEdit*>(widget), box);
        MarkCut(box, *static_cast<BoxEdit*>(widget));
        break;
    case BoxKind::Tick:
    case BoxKind::Option: {
        auto* button = static_cast<QAbstractButton*>(widget);
        button->setCheckable(true);
        button->setChecked(box.Ticked());
        SetCaption(*button, box);
        break;
    }
    case BoxKind::List:
        SyncList(*static_cast<QListWidget*>(widget), box);
        break;
    case BoxKind::Table:
        static_cast<TableView*>(widget)->Follow(box);
        break;
    case BoxKind::DropDown:
        SyncDropDown(*static_cast<QComboBox*>(widget), box);
        break;
    case BoxKind::Label:
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            label->setText(look::Text(box.Text()));
            break;
        }
        [[fallthrough]];
    case BoxKind::Button:
        ShowButton(*static_cast<QPushButton*>(widget), box);
        break;
    case BoxKind::Tabs:
        static_cast<QTabWidget*>(widget)->setCurrentIndex(box.Selected());
        break;
    case BoxKind::Frame:
        if (auto* group = qobject_cast<QGroupBox*>(widget))
            group->setTitle(look::Text(box.Text()));
        break;
    case BoxKind::Surface:
        if (auto* reader = dynamic_cast<BookReader*>(widget))
            reader->Show(look::Text(box.Text()));
        break;
    case BoxKind::Picture:
    case BoxKind::Menu:
        break;
    }
}

} // namespace quillmere
