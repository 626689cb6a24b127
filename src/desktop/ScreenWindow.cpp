#include "desktop/ScreenWindow.h"

#include "desktop/BoxWidgets.h"
#include "desktop/Look.h"
#include "frame/KeyFilters.h"
#include "frame/Text.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <utility>

namespace quillmere {

namespace {

/// A part of a layout, between two heights or on a page of the tab strip: draws what lies there, and is the parent of
/// the controls.
class Canvas : public QWidget {
public:
    Canvas(const Layout& layout, int top, int bottom, const Growth& growth, QWidget* parent)
        : Canvas(layout, Place{0, top}, growth, parent)
    {
        setFixedSize(layout.width, bottom - top);
    }
    /// A page, which is as large as the tab strip makes it.
    Canvas(const Layout& layout, int page, const Growth& growth, QWidget* parent)
        : Canvas(layout, Place{page, 0}, growth, parent)
    {
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter painter(this);
        painter.fillRect(event->rect(), look::TonesInUse().ground);
        painter.translate(0, -top);
        const QRect dirty = event->rect().translated(0, top).adjusted(-40, -40, 40, 40);
        for (const Layout::Drawn& drawn : layout.drawn) {
            const QRect wanted(drawn.x, drawn.y, drawn.width, std::max(drawn.height, 1));
            const QRect place = growth.Of(wanted);
            if (drawn.page != page || !dirty.intersects(place))
                continue;
            painter.save();
            painter.translate(place.topLeft() - wanted.topLeft());
            look::Draw(painter, drawn);
            painter.restore();
        }
    }

private:
    struct Place {
        int page, top;
    };
    Canvas(const Layout& layout, Place place, const Growth& growth, QWidget* parent)
        : QWidget(parent), layout(layout), growth(growth), page(place.page), top(place.top)
    {
        setAutoFillBackground(false);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

    const Layout& layout;
    const Growth& growth;
    int page;
    int top;
};

/// A label of several lines: a word that is longer than a line goes on in the next.
class WrappedLabel : public QLabel {
public:
    explicit WrappedLabel(QWidget* parent) : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QStringList words = text().simplified().split(' ');
        const bool fits = std::ranges::all_of(
            words, [&](const QString& word) { return fontMetrics().horizontalAdvance(word) <= width(); });
        const int wrap = fits ? Qt::TextWordWrap : Qt::TextWrapAnywhere;
        style()->drawItemText(&painter, rect(), static_cast<int>(alignment()) | wrap, palette(), isEnabled(), text(),
                              QPalette::WindowText);
    }
};

/// A group of controls: its frame and title. What stands in it lies over it.
class Group : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        constexpr int titleHeight = 8;
        const QRect frame = rect().adjusted(0, titleHeight, 0, 0);
        if (!isEnabled())
            painter.setOpacity(0.5);
        look::Draw(painter, {.what = Layout::Drawn::What::Frame,
                             .x = frame.x(),
                             .y = frame.y(),
                             .width = frame.width(),
                             .height = frame.height(),
                             .text = title().toStdString()});
    }
};

/// True for an amount, a date or a count.
bool HoldsFigure(const Box& box)
{
    constexpr auto Filters =
        std::to_array<KeyFilter>({DateKeyFilter, WholeNumberKeyFilter, MoneyKeyFilter, SignedMoneyKeyFilter});
    return box.IsAmount() || std::ranges::find(Filters, box.Filter()) != Filters.end();
}

/// The caption, and the letter that presses the button where the caption marks none.
void SetCaption(QAbstractButton& button, const Box& box)
{
    button.setText(look::Text(box.Text()));
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

/// A control that leads elsewhere, with nothing to fill in.
bool LeadsOn(const Box& box)
{
    const Kind kind = box.GetKind();
    return kind == Kind::Label || kind == Kind::Picture || kind == Kind::Button || kind == Kind::Tabs;
}

/// The focus has gone to another window or a menu, or comes from there: the user's place in this window is the same.
bool IsElsewhere(const QEvent& event)
{
    const auto reason = static_cast<const QFocusEvent&>(event).reason();
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
}

} // namespace

ScreenWindow::ScreenWindow(Screen& screen, QWidget* parent)
    : QWidget(parent), screen(screen), layout(LayoutOf(screen.Name())), growth(layout)
{
    setObjectName(look::Text(screen.Name()));
    setFont(look::CaptionFont({.size = 13}));
    if (screen.Mode() != ShowMode::Child) {
        setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowCloseButtonHint);
        if (screen.Mode() == ShowMode::Modal)
            setWindowModality(Qt::ApplicationModal);
    }
    if (layout.headerHeight > 0)
        header = new Canvas(layout, 0, layout.headerHeight, growth, this);
    scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    form = new Canvas(layout, layout.headerHeight, layout.FormBottom(), growth, nullptr);
    if (layout.footTop > 0)
        foot = new Canvas(layout, layout.footTop, layout.height, growth, this);
    if (layout.captionPlace.width > 0) {
        captionLabel = new WrappedLabel(header);
        captionLabel->setObjectName(objectName() + ".Caption");
        captionLabel->setGeometry(layout.captionPlace.x, layout.captionPlace.y, layout.captionPlace.width,
                                  layout.captionPlace.height);
        captionLabel->setAlignment(Qt::AlignCenter);
    }

    for (const Layout::Placed& place : layout.placed) {
        Box& box = screen.box(place.box, place.index);
        QWidget* canvas = CanvasOf(place);
        QWidget* widget = MakeWidget(box, place, canvas);
        const int top = canvas == form ? layout.headerHeight : canvas == foot ? layout.footTop : 0;
        widget->setGeometry(place.x, place.y - top, place.width, place.height);
        if (place.look)
            widget->setFont(look::CaptionFont(*place.look));
        const std::string& spoken = !place.spoken.empty()   ? place.spoken
                                    : !box.Spoken().empty() ? box.Spoken()
                                                            : box.Text();
        widget->setAccessibleName(look::Text(spoken));
        Adopt(box, *widget);
    }
    scroll->setWidget(form);
    connect(scroll->horizontalScrollBar(), &QScrollBar::valueChanged, this, [this](int left) {
        for (QWidget* fixed : {header, foot})
            if (fixed != nullptr)
                fixed->move(-left, fixed->y());
    });
    FixTabOrder();
    CaptionChanged();
    screen.SetView(this);

    const QSize wanted(layout.width, layout.height);
    const QSize room = QGuiApplication::primaryScreen()->availableSize() - QSize(20, 60);
    const bool tall = wanted.height() > room.height();
    resize(std::min(wanted.width() + (tall ? scroll->verticalScrollBar()->sizeHint().width() : 0), room.width()),
           std::min(wanted.height(), room.height()));
}

ScreenWindow::~ScreenWindow()
{
    ScreenWindow::Detach();
}

void ScreenWindow::Detach()
{
    if (detached)
        return;
    detached = true;
    screen.SetView(nullptr);
    for (const auto& [object, box] : boxes)
        const_cast<QObject*>(object)->removeEventFilter(this);
}

void ScreenWindow::Adopt(Box& box, QWidget& widget)
{
    widget.setObjectName(look::Text(screen.Name() + "." + box.FullName()));
    widget.installEventFilter(this);
    widgets.emplace(&box, &widget);
    boxes.emplace(&widget, &box);
    BoxChanged(box);
}

int ScreenWindow::FormWidth() const
{
    return layout.width + scroll->verticalScrollBar()->sizeHint().width();
}

/// The part of the window on which a control stands.
QWidget* ScreenWindow::CanvasOf(const Layout::Placed& place) const
{
    if (place.page > 0)
        return pages.at(static_cast<std::size_t>(place.page - 1));
    if (place.y < layout.headerHeight)
        return header;
    return place.y < layout.FormBottom() ? form : foot;
}

QWidget* ScreenWindow::MakeWidget(Box& box, const Layout::Placed& place, QWidget* parent)
{
    switch (box.GetKind()) {
    case Kind::Text:
        return MakeEdit(box, parent);
    case Kind::List:
        return MakeList(box, parent);
    case Kind::DropDown:
        return MakeDropDown(box, parent);
    case Kind::Tabs:
        return MakeTabs(box, parent);
    case Kind::Frame:
        return new Group(parent);
    case Kind::Label:
        if (!screen.IsClickable(box)) {
            const bool wrapped = place.height > Layout::BoxHeight * 3 / 2;
            QLabel* label = wrapped ? new WrappedLabel(parent) : new QLabel(parent);
            if (box.IsAmount())
                label->setFont(look::AmountFont());
            const bool right = box.IsAmount() || (place.look && place.look->align == TextLook::Align::Right);
            label->setAlignment((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
            label->setTextFormat(Qt::PlainText);
            if (box.IsAmount()) {
                label->setFrameShape(QFrame::StyledPanel);
                label->setMargin(1);
                label->setAutoFillBackground(true);
                label->setPalette(look::FigurePalette());
            }
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
    if (box.IsMonospaced())
        edit->setFont(look::AmountFont());
    if (box.IsAmount())
        edit->setAlignment(Qt::AlignRight);
    connect(edit, &QLineEdit::textEdited, this, [this, &box, edit] { Typed(box, *edit); });
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
    switch (box.GetKind()) {
    case Kind::Tick:
        button = new Marked<QCheckBox>(parent);
        break;
    case Kind::Option:
        button = new Marked<QRadioButton>(parent);
        button->setAutoExclusive(false);
        break;
    case Kind::Picture: {
        auto* picture = new QToolButton(parent);
        picture->setIcon(look::Picture(box.Tip()));
        picture->setIconSize(QSize(20, 20));
        picture->setAutoRaise(true);
        picture->setFocusPolicy(Qt::StrongFocus);
        button = picture;
        break;
    }
    default: {
        auto* push = new QPushButton(parent);
        push->setAutoDefault(false);
        push->setFlat(false);
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
    if (widget->toolTip().isEmpty() != box.Tip().empty() || !box.Tip().empty())
        widget->setToolTip(look::Text(box.Tip()));
    switch (box.GetKind()) {
    case Kind::Text: {
        auto* edit = static_cast<BoxEdit*>(widget);
        edit->Put(look::Text(box.Text()));
        edit->setReadOnly(box.ReadOnly());
        // Setting a palette is dear, even the same one.
        const QPalette& palette = look::EditPalette(!box.ReadOnly() && box.Enabled() && !box.IsComputed());
        if (edit->palette().color(QPalette::Active, QPalette::Base) != palette.color(QPalette::Active, QPalette::Base))
            edit->setPalette(palette);
        break;
    }
    case Kind::Tick:
    case Kind::Option: {
        auto* button = static_cast<QAbstractButton*>(widget);
        button->setCheckable(true);
        button->setChecked(box.Ticked());
        SetCaption(*button, box);
        break;
    }
    case Kind::List:
        SyncList(*static_cast<QListWidget*>(widget), box);
        break;
    case Kind::DropDown:
        SyncDropDown(*static_cast<QComboBox*>(widget), box);
        break;
    case Kind::Label:
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            label->setText(look::Text(box.Text()));
            break;
        }
        [[fallthrough]];
    case Kind::Button: {
        auto* button = static_cast<QPushButton*>(widget);
        SetCaption(*button, box);
        button->setPalette(look::ButtonPalette(box.GetPaint()));
        break;
    }
    case Kind::Tabs:
        static_cast<QTabWidget*>(widget)->setCurrentIndex(box.Selected());
        break;
    case Kind::Frame:
        if (auto* group = qobject_cast<QGroupBox*>(widget))
            group->setTitle(look::Text(box.Text()));
        break;
    case Kind::Picture:
    case Kind::Menu:
    case Kind::Surface:
        break;
    }
}

void ScreenWindow::CaptionChanged()
{
    setWindowTitle(look::Text(screen.Caption()));
    if (captionLabel != nullptr)
        captionLabel->setText(look::Text(screen.Caption()));
}

void ScreenWindow::FocusOn(const Box& box)
{
    if (QWidget* widget = WidgetOf(box)) {
        widget->setFocus(Qt::OtherFocusReason);
        if (auto* edit = dynamic_cast<BoxEdit*>(widget))
            edit->SelectWhole();
    }
}

QWidget* ScreenWindow::WidgetOf(const Box& box) const
{
    const auto found = widgets.find(&box);
    return found == widgets.end() ? nullptr : found->second;
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

void ScreenWindow::FocusFirst()
{
    QWidget* first = nullptr;
    for (const auto& box : screen.Boxes()) {
        QWidget* widget = WidgetOf(*box);
        if (widget == nullptr || !widget->isEnabled() || !box->Visible() || box->ReadOnly() ||
            widget->focusPolicy() == Qt::NoFocus)
            continue;
        // What leads elsewhere waits until there is nothing to fill in.
        const bool leadsOn = LeadsOn(*box);
        if (first == nullptr || !leadsOn)
            first = widget;
        if (!leadsOn)
            break;
    }
    if (first != nullptr)
        first->setFocus(Qt::OtherFocusReason);
}

void ScreenWindow::FocusAgain()
{
    if (lastField != nullptr && lastField->isEnabled() && lastField->isVisible())
        lastField->setFocus(Qt::OtherFocusReason);
    else
        FocusFirst();
}

void ScreenWindow::FixTabOrder()
{
    QWidget* last = nullptr;
    for (const auto& box : screen.Boxes()) {
        QWidget* widget = WidgetOf(*box);
        if (widget == nullptr || widget->focusPolicy() == Qt::NoFocus)
            continue;
        if (last != nullptr)
            setTabOrder(last, widget);
        last = widget;
    }
}

void ScreenWindow::Typed(Box& box, BoxEdit& edit)
{
    if (detached)
        return;
    screen.Enter(box);
    const QString now = edit.text();
    const QString before = look::Text(box.Text());
    const auto end = static_cast<qsizetype>(edit.cursorPosition());
    const QString tail = now.mid(end);
    qsizetype start = 0;
    if (before.endsWith(tail)) {
        const qsizetype limit = std::min(end, before.size() - tail.size());
        while (start < limit && now[start] == before[start])
            ++start;
    }
    const std::u32string typed = now.mid(start, end - start).toStdU32String();
    const std::string held = box.Text();
    const QString accepted = QString::fromStdU32String(screen.Keys(box, typed));
    if (detached || box.Text() != held) // the screen has put something else into the box
        return;
    if (!typed.empty() && accepted.isEmpty()) {
        // What was to be replaced stays, and stays chosen.
        edit.setText(before);
        const qsizetype replaced = before.endsWith(tail) ? before.size() - tail.size() - start : 0;
        if (replaced > 0)
            edit.setSelection(static_cast<int>(start), static_cast<int>(replaced));
        else
            edit.setCursorPosition(static_cast<int>(std::min(start, before.size())));
        return;
    }
    QString result = now.left(start) + accepted + tail;
    qsizetype caret = start + accepted.size();
    // A figure that is being typed is not padded.
    while (edit.HoldsFigure() && result.startsWith(u' ')) {
        result.remove(0, 1);
        caret = std::max<qsizetype>(caret - 1, 0);
    }
    if (result != now) {
        edit.setText(result);
        edit.setCursorPosition(static_cast<int>(caret));
    }
    box.AcceptTyped(result.toStdString());
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
    if (event->type() == QEvent::FocusIn) {
        if (widget->parentWidget() == form)
            scroll->ensureWidgetVisible(widget, 20, 60);
        if (!LeadsOn(box))
            lastField = widget;
        if (!IsElsewhere(*event) || screen.InUse() != &box)
            screen.Enter(box);
    } else if (event->type() == QEvent::FocusOut) {
        if (!IsElsewhere(*event))
            LeaveForOther(box);
    } else if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (box.GetKind() == Kind::Text && KeyInEdit(box, static_cast<BoxEdit&>(*widget), *key))
            return true;
        if (box.GetKind() == Kind::Picture && KeyOnPicture(*static_cast<QAbstractButton*>(watched), *key))
            return true;
        if (key->key() == Qt::Key_F4 && OpenPictureOf(box))
            return true;
        if ((key->key() == Qt::Key_Up || key->key() == Qt::Key_Down) &&
            MoveBetweenLines(box, key->key() == Qt::Key_Up ? -1 : 1))
            return true;
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enter && screen.IsDoubleClickable(box) && box.Selected() >= 0) {
            screen.DoubleClick(box);
            return true;
        }
        if (enter && (box.GetKind() == Kind::Button || (box.GetKind() == Kind::Label && screen.IsClickable(box)))) {
            static_cast<QAbstractButton*>(watched)->click();
            return true;
        }
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
    edit.setText(edit.Kept());
    edit.SelectWhole();
    box.AcceptTyped(edit.text().toStdString());
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
    if (box.GetKind() != Kind::Text && box.GetKind() != Kind::Tick)
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
        if (other->GetKind() != Kind::Picture || !other->Visible())
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
    return box.GetKind() == Kind::Text && !box.ReadOnly() && IsInReach(box);
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
    const auto pressing = [this](const auto& box) { return box->GetKind() == Kind::Button && IsInReach(*box); };
    const auto after = from == all.end() ? all.begin() : from + 1;
    auto next = std::find_if(after, all.end(), typing);
    if (next == all.end())
        next = std::find_if(after, all.end(), pressing);
    if (next == all.end())
        next = std::ranges::find_if(all, typing);
    if (next != all.end())
        WidgetOf(**next)->setFocus(Qt::TabFocusReason);
}

/// Up and Down go to the same column of the line before or after; false where there is none.
bool ScreenWindow::MoveBetweenLines(const Box& box, int lines)
{
    if (box.GetKind() != Kind::Text || box.Index() == Box::NoIndex)
        return false;
    const Box* next = screen.FindBox(box.Name(), box.Index() + lines);
    QWidget* widget = next == nullptr ? nullptr : WidgetOf(*next);
    if (widget == nullptr || !widget->isEnabled() || !widget->isVisible())
        return false;
    FocusOn(*next);
    return true;
}

void ScreenWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (!detached)
        screen.RequestClose();
}

void ScreenWindow::keyPressEvent(QKeyEvent* event)
{
    if (detached)
        return;
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

void ScreenWindow::Grow()
{
    growth.FollowSize(size());
    form->setFixedSize(growth.Whole());
    for (const Layout::Placed& place : layout.placed) {
        const Box& box = screen.box(place.box, place.index);
        WidgetOf(box)->setGeometry(growth.Of({place.x, place.y, place.width, place.height}, box.GetKind()));
    }
}

void ScreenWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int top = layout.headerHeight;
    const int bottom = height() - (foot == nullptr ? 0 : foot->height());
    scroll->setGeometry(0, top, width(), std::max(0, bottom - top));
    if (foot != nullptr)
        foot->move(foot->x(), bottom);
    if (growth.IsPossible() && !detached)
        Grow();
}

} // namespace quillmere
