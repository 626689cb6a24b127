#include "desktop/ScreenWindow.h"

#include "desktop/BoxWidgets.h"
#include "desktop/Look.h"
#include "desktop/ScreenParts.h"
#include "desktop/TableView.h"
#include "review/BoxHelp.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

/// The caption, and beside it whom the screen is about, where the caption does not say. Of a page the main window says
/// it.
std::string TitleOf(const Screen& screen)
{
    const std::string subject = screen.Mode() == ShowMode::Child ? std::string() : screen.Subject();
    return screen.Caption().ends_with(subject) ? screen.Caption() : screen.Caption() + " - " + subject;
}

/// A drop-down list gives its choice where others give their name: its name is told by a label, which need not show.
void LabelUnseen(QWidget& list)
{
    auto* label = new QLabel(list.accessibleName().replace(u'&', QStringLiteral("&&")), list.parentWidget());
    label->setBuddy(&list);
    label->hide();
}

} // namespace

ScreenWindow::ScreenWindow(Screen& screen, QWidget* parent, int percent)
    : QWidget(parent),
      screen(screen),
      percent(percent),
      layout(quillmere::Zoomed(LayoutOf(screen.Name()), percent)),
      growth(layout, screen),
      listHands(screen, [this](const Box& box) { return WidgetOf(box); })
{
    setObjectName(look::Text(screen.Name()));
    if (screen.Mode() == ShowMode::Window || screen.Mode() == ShowMode::Above || screen.Mode() == ShowMode::Modal) {
        setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowCloseButtonHint);
        if (screen.Mode() == ShowMode::Modal)
            setWindowModality(Qt::ApplicationModal);
    } else if (screen.Mode() == ShowMode::Beside) {
        setWindowFlags(Qt::Window);
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
        captionLabel->setAlignment(Qt::AlignCenter);
    }

    MakeSections();
    for (const Layout::Placed& place : layout.placed) {
        Box& box = screen.box(place.box, place.index);
        QWidget* widget = MakeWidget(box, place, ParentOf(place));
        // The toolkit shows it at Shift+F1, and a screen reader says it.
        widget->setWhatsThis(look::Text(review::WhatsThisOf(screen, box)));
        // What has neither is spoken by its caption, as that reads at the time.
        widget->setAccessibleName(look::Text(!place.spoken.empty() ? place.spoken : box.Spoken()));
        if (const review::BoxHelp* help = review::HelpOf(screen.Name(), box.Name()))
            takes.emplace(&box, look::Text(review::LineOf(*help)));
        if (box.Kind() == BoxKind::DropDown)
            LabelUnseen(*widget);
        Adopt(box, *widget);
    }
    scroll->setWidget(form);
    connect(scroll->horizontalScrollBar(), &QScrollBar::valueChanged, this, [this](int left) {
        for (QWidget* fixed : {header, foot})
            if (fixed != nullptr)
                fixed->move(-left, fixed->y());
    });
    LayOutBoxes();
    FixTabOrder();
    CaptionChanged();
    screen.SetView(this);
    FitToRoom();
}

/// Gives each control its place and the letters of the window's size.
void ScreenWindow::LayOutBoxes()
{
    setFont(look::CaptionFont({.size = Zoomed(13)}));
    if (header != nullptr)
        header->Span(0, layout.headerHeight);
    form->Span(layout.headerHeight, layout.FormBottom());
    if (foot != nullptr)
        foot->Span(layout.footTop, layout.height);
    if (captionLabel != nullptr)
        captionLabel->setGeometry(layout.captionPlace.x, layout.captionPlace.y, layout.captionPlace.width,
                                  layout.captionPlace.height);
    for (const DrawnSection& section : sections) {
        const Layout::Drawn& panel = layout.drawn[section.panel];
        section.group->setGeometry(panel.x, panel.y - layout.headerHeight, panel.width, panel.height);
    }
    for (const Layout::Placed& place : layout.placed) {
        const Box& box = screen.box(place.box, place.index);
        QWidget* widget = WidgetOf(box);
        const QWidget* canvas = CanvasOf(place);
        const int top = canvas == form ? layout.headerHeight : canvas == foot ? layout.footTop : 0;
        const QPoint corner(place.x, place.y - top);
        const QPoint parent = widget->parentWidget() == canvas ? QPoint() : widget->parentWidget()->pos();
        widget->setGeometry(QRect(corner - parent, QSize(place.width, place.height)));
        if (box.IsMonospaced() || (box.Kind() == BoxKind::Label && box.IsAmount()))
            widget->setFont(look::AmountFont(Zoomed(13)));
        if (place.look)
            widget->setFont(look::CaptionFont(*place.look));
        if (auto* picture = qobject_cast<QToolButton*>(widget))
            picture->setIconSize(QSize(Zoomed(20), Zoomed(20)));
    }
}

void ScreenWindow::FitToRoom()
{
    if (!isWindow() && parentWidget() != nullptr)
        return; // whose size the main window gives it
    // At a scale between whole ones the window system may give a pixel less than was asked for.
    const int spare = devicePixelRatioF() == std::floor(devicePixelRatioF()) ? 0 : 1;
    const QSize wanted(layout.width + spare, layout.height + spare);
    const QSize room = QGuiApplication::primaryScreen()->availableSize() - QSize(20, 60);
    const bool tall = wanted.height() > room.height();
    resize(std::min(wanted.width() + (tall ? scroll->verticalScrollBar()->sizeHint().width() : 0), room.width()),
           std::min(wanted.height(), room.height()));
}

void ScreenWindow::Zoom(int newPercent)
{
    if (newPercent == percent || detached)
        return;
    percent = newPercent;
    layout = quillmere::Zoomed(LayoutOf(screen.Name()), percent);
    growth = Growth(layout, screen);
    LayOutBoxes();
    FitToRoom();
    QResizeEvent asEver(size(), size());
    resizeEvent(&asEver);
}

QWidget* ScreenWindow::Header() const
{
    return header;
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
    for (const auto& [object, box] : boxes) {
        const_cast<QObject*>(object)->removeEventFilter(this);
        if (auto* table = dynamic_cast<TableView*>(const_cast<QObject*>(object)))
            table->LetGo();
    }
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

/// Makes a group for each panel of the form that has a section's letter and heading at its head.
void ScreenWindow::MakeSections()
{
    using What = Layout::Drawn::What;
    if (growth.IsPossible()) // whose controls move
        return;
    for (std::size_t place = 0; place + 2 < layout.drawn.size(); ++place) {
        const Layout::Drawn &panel = layout.drawn[place], &letter = layout.drawn[place + 1],
                            &heading = layout.drawn[place + 2];
        const bool isSection = panel.what == What::Panel && letter.what == What::Letter && heading.what == What::Text &&
                               heading.look.bold && panel.page == 0 && panel.y >= layout.headerHeight &&
                               panel.y < layout.FormBottom();
        if (!isSection)
            continue;
        auto* group = new Section(form);
        group->setAccessibleName(look::Text(letter.text + ", " + heading.text));
        sections.push_back({place, group});
    }
}

/// The section in which a control stands whole, or else the part of the window.
QWidget* ScreenWindow::ParentOf(const Layout::Placed& place) const
{
    const QRect whole(place.x, place.y, place.width, place.height);
    const auto found = std::ranges::find_if(sections, [&](const DrawnSection& section) {
        const Layout::Drawn& panel = layout.drawn[section.panel];
        return QRect(panel.x, panel.y, panel.width, panel.height).contains(whole);
    });
    QWidget* canvas = CanvasOf(place);
    return found == sections.end() || canvas != form ? canvas : found->group;
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

void ScreenWindow::CaptionChanged()
{
    setWindowTitle(look::Text(TitleOf(screen)));
    if (captionLabel != nullptr)
        captionLabel->setText(look::Text(screen.Caption()));
}

void ScreenWindow::FocusOn(const Box& box)
{
    if (QWidget* widget = WidgetOf(box)) {
        if (!isActiveWindow())
            activateWindow();
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

/// A control that leads elsewhere, with nothing to fill in.
bool ScreenWindow::LeadsOn(const Box& box)
{
    const BoxKind kind = box.Kind();
    return kind == BoxKind::Label || kind == BoxKind::Picture || kind == BoxKind::Button || kind == BoxKind::Tabs;
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

void ScreenWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (!detached)
        screen.RequestClose();
}

void ScreenWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isWindow() && isActiveWindow() && !detached)
        screen.Perform([this] { screen.WindowActivated(); }, "Activate");
}

void ScreenWindow::Grow()
{
    growth.FollowSize(size());
    form->setFixedSize(growth.Whole());
    for (const Layout::Placed& place : layout.placed) {
        const Box& box = screen.box(place.box, place.index);
        WidgetOf(box)->setGeometry(growth.Of({place.x, place.y, place.width, place.height}, box.Kind()));
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
