#include "desktop/MainWindow.h"

#include "app/MDIForm1.h"
#include "desktop/Look.h"
#include "desktop/ScreenWindow.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <map>

namespace quillmere {

namespace {

/// What lies behind the pages.
class DeskSurface : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override { QPainter(this).fillRect(event->rect(), look::TonesInUse().desk); }
};

/// A button of the empty desk: Enter presses it as Space does, and what is too long for it stands in its tip.
class StartButton : public QPushButton {
public:
    explicit StartButton(QWidget* parent) : QPushButton(parent)
    {
        setFocusPolicy(Qt::TabFocus);
        setAutoDefault(false);
    }
    void Show(const QString& text)
    {
        whole = text;
        constexpr int Margins = 24;
        const int width = std::max(290, fontMetrics().height() * 17);
        setText(fontMetrics().elidedText(text, Qt::ElideRight, width - Margins, Qt::TextShowMnemonic));
        setToolTip(text == this->text() ? QString() : QString(text).remove(QLatin1Char('&')));
        setFixedSize(width, sizeHint().height());
    }

protected:
    void changeEvent(QEvent* event) override
    {
        QPushButton::changeEvent(event);
        if (event->type() == QEvent::FontChange)
            Show(whole);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QPushButton::keyPressEvent(event);
    }

private:
    QString whole;
};

/// A panel of the status bar: what has no room is cut, and stands in the tip.
class StatusLine : public QLabel {
public:
    /// So many letters of it show in any case.
    StatusLine(QWidget* parent, int lettersKept) : QLabel(parent), lettersKept(lettersKept) {}
    QSize minimumSizeHint() const override
    {
        const int kept = lettersKept * fontMetrics().averageCharWidth();
        return {std::min(kept, QLabel::sizeHint().width()), QLabel::minimumSizeHint().height()};
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter painter(this);
        const QRect room = contentsRect().adjusted(margin(), 0, -margin(), 0);
        painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                         fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
        event->accept();
    }

private:
    int lettersKept;
};

/// A panel at the foot: closing it closes its screen.
class Panel : public QDockWidget {
public:
    Panel(ScreenWindow& window, QWidget* parent)
        : QDockWidget(look::Text(window.Shown().Caption()), parent), window(window)
    {
        setObjectName(look::Text(window.Shown().Name() + "Panel"));
        setFeatures(DockWidgetClosable);
        setWidget(&window);
    }

    /// The title line above the window, with its button.
    int TitleHeight() const
    {
        int height = fontMetrics().height() + 2 * style()->pixelMetric(QStyle::PM_DockWidgetTitleMargin, nullptr, this);
        for (const auto* button : findChildren<QAbstractButton*>(Qt::FindDirectChildrenOnly))
            height = std::max(height, button->sizeHint().height() + 2);
        return height;
    }

    /// As high as its window is drawn, with the title line.
    int HeightWanted() const { return window.FormHeight() + TitleHeight(); }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        window.close();
    }

private:
    ScreenWindow& window;
};

/// The panels of the status bar, and how they share the room that is left.
struct StatusPanel {
    std::string_view box;
    int share;
    int lettersKept = 0; ///< that show however narrow the window is
};
constexpr auto StatusPanels = std::to_array<StatusPanel>({
    {"StatusBar1", 0},
    {"StatusWho", 3},
    {"StatusAlso", 2, 30},
    {"StatusBox", 5},
    {"StatusNote", 4},
});

/// What has just happened is spoken by itself, wherever the focus stands.
void Announce(QLabel& label)
{
    QAccessibleEvent event(&label, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace

QRect InSight(const QRect& wanted, const QList<QRect>& rooms)
{
    if (std::ranges::any_of(rooms, [&](const QRect& room) { return room.intersects(wanted); }))
        return wanted;
    return {rooms.front().topLeft(), wanted.size().boundedTo(rooms.front().size())};
}

MainWindow::MainWindow(Screen& screen) : screen(screen)
{
    setObjectName(look::Text(screen.Name()));
    desk = new DeskSurface(this);
    setCentralWidget(desk);
    desk->setFocus(); // else the first button of the toolbar has it
    MakeMenus();
    MakeStart();
    MakeToolbar();
    MakeStatusBar();
    setMinimumSize(640, 400);
    CaptionChanged();
    for (const auto& box : screen.Boxes())
        BoxChanged(*box);
    isFilled = true;
    LayOutPages();
    screen.SetView(this);

    const auto& placement = screen.Placement();
    if (!placement || placement->maximised) {
        setWindowState(Qt::WindowMaximized);
    } else {
        const QSize size = QSize(placement->width, placement->height).expandedTo(minimumSize());
        const QRect wanted(QPoint(placement->left, placement->top), size);
        QList<QRect> rooms{QGuiApplication::primaryScreen()->availableGeometry()};
        for (const QScreen* other : QGuiApplication::screens())
            rooms.push_back(other->availableGeometry());
        setGeometry(InSight(wanted, rooms));
        TellPlacement();
    }
}

MainWindow::~MainWindow()
{
    Detach();
    delete takeCentralWidget(); // the pages, while the list of them still stands
}

void MainWindow::Detach()
{
    if (!detached)
        screen.SetView(nullptr);
    detached = true;
}

void MainWindow::MakeMenus()
{
    std::map<std::string_view, QMenu*> menus;
    for (const MenuRow& row : MenuRows()) {
        QMenu*& menu = menus[row.menu];
        if (menu == nullptr) {
            menu = menuBar()->addMenu(look::Marked(std::string(row.menu), LetterOfMenu(row.menu)));
            menu->setToolTipsVisible(true);
            connect(menu, &QMenu::aboutToShow, this, [this, name = row.menu] {
                if (auto* main = dynamic_cast<MDIForm1*>(&screen); main != nullptr && !detached)
                    main->MenuOpens(name);
            });
        }
        if (row.separatorBefore)
            menu->addSeparator();
        Box& box = screen.box(row.box, row.index);
        auto* action = new QAction(this);
        action->setObjectName(look::Text(screen.Name() + "." + box.FullName()));
        QList<QKeySequence> keys;
        for (const std::string_view key : {row.key, row.otherKey})
            if (!key.empty())
                keys.push_back(QKeySequence(look::Text(std::string(key)), QKeySequence::PortableText));
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, [this, &box] {
            if (!detached)
                screen.Click(box);
            // The toolkit has turned the tick over by itself; the box alone says what is ticked.
            if (!detached)
                BoxChanged(box);
        });
        menu->addAction(action);
        actions.emplace(&box, action);
    }
}

/// What the empty desk offers: who was open last on the left, what to begin with on the right.
void MainWindow::MakeStart()
{
    start = new QWidget(desk);
    QPalette onDesk = start->palette();
    onDesk.setColor(QPalette::WindowText, look::TonesInUse().deskInk);
    start->setPalette(onDesk);
    auto* grid = new QGridLayout(start);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    auto* words = new QLabel(start);
    words->setTextFormat(Qt::PlainText);
    words->setObjectName(look::Text(screen.Name() + ".StartWords"));
    grid->addWidget(words, 0, 0, 1, 2);
    widgets.emplace(&screen.box("StartWords"), words);
    widgets.emplace(&screen.box("Start"), start);
    int left = 1, right = 1;
    for (const StartRow& row : StartRows()) {
        Box& box = screen.box(row.box, row.index);
        auto* button = new StartButton(start);
        button->setObjectName(look::Text(screen.Name() + ".Start." + box.FullName()));
        connect(button, &QPushButton::clicked, this, [this, &box] {
            if (!detached)
                screen.Click(box);
        });
        const bool isRecent = row.index != Box::NoIndex;
        grid->addWidget(button, isRecent ? left++ : right++, isRecent ? 0 : 1, Qt::AlignHCenter);
        starters.push_back({&box, row.where.empty() ? nullptr : &screen.box(row.where), std::string(row.text), button});
    }
    // With nobody on the left the right has the middle.
    grid->setColumnStretch(1, 1);
}

void MainWindow::MakeToolbar()
{
    toolbar = addToolBar("Toolbar");
    toolbar->setObjectName("MDIForm1.picToolbar");
    toolbar->setMovable(false);
    toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    setContextMenuPolicy(Qt::NoContextMenu);
    toolbar->setIconSize(QSize(24, 24));
    for (const auto& box : screen.Boxes()) {
        if (box->Kind() != BoxKind::Button)
            continue;
        auto* button = new QToolButton(toolbar);
        button->setObjectName(look::Text(screen.Name() + "." + box->FullName()));
        button->setIcon(look::Picture(box->Tip()));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(look::Text(box->Tip()));
        if (box->Letter() != 0)
            button->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(box->Letter())));
        Box& pressed = *box;
        connect(button, &QToolButton::clicked, this, [this, &pressed] {
            if (!detached)
                screen.Click(pressed);
        });
        QAction* action = toolbar->addWidget(button);
        action->setVisible(box->Visible());
        widgets.emplace(box.get(), button);
    }
}

void MainWindow::MakeStatusBar()
{
    for (const auto& box : screen.Boxes()) {
        const auto panel = std::ranges::find(StatusPanels, box->Name(), &StatusPanel::box);
        if (panel == StatusPanels.end())
            continue;
        QLabel* label = panel->share == 0 ? new QLabel(this) : new StatusLine(this, panel->lettersKept);
        label->setObjectName(look::Text(screen.Name() + "." + box->FullName()));
        label->setTextFormat(Qt::PlainText);
        label->setMargin(3);
        statusBar()->addWidget(label, panel->share);
        label->setVisible(box->Visible());
        widgets.emplace(box.get(), label);
    }
    progress = new QProgressBar(this);
    progress->setMaximumWidth(240);
    progress->hide();
    statusBar()->addPermanentWidget(progress);
}

void MainWindow::Zoom(int percent)
{
    toolbar->setIconSize(QSize(24, 24) * percent / 100);
    for (auto* panel : findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly))
        if (auto* shown = dynamic_cast<Panel*>(panel))
            resizeDocks({shown}, {shown->HeightWanted()}, Qt::Vertical);
    LayOutPages();
}

void MainWindow::ShowProgress(int done, int total)
{
    progress->setVisible(total > 0);
    progress->setMaximum(std::max(total, 1));
    progress->setValue(done);
}

void MainWindow::BoxChanged(const Box& box)
{
    for (const Starter& starter : starters)
        if (starter.entry == &box || starter.where == &box)
            ShowStarter(starter);
    if (const auto found = actions.find(&box); found != actions.end()) {
        QAction* action = found->second;
        action->setText(look::Marked(box.Text(), box.Letter()));
        action->setToolTip(look::Text(box.Tip()));
        action->setEnabled(box.Enabled());
        action->setVisible(box.Visible());
        if (box.Ticked() || action->isCheckable()) {
            action->setCheckable(true);
            action->setChecked(box.Ticked());
        }
    } else if (const auto made = widgets.find(&box); made != widgets.end()) {
        if (!box.Enabled() && made->second->hasFocus())
            desk->setFocus(); // not to the button after it
        made->second->setEnabled(box.Enabled());
        const bool isLine = dynamic_cast<StatusLine*>(made->second) != nullptr;
        if (isLine)
            made->second->setVisible(box.Visible());
        made->second->setToolTip(isLine ? look::Text(box.Text()) : look::TipOf(box));
        if (made->second == start)
            start->setVisible(box.Visible());
        if (auto* label = qobject_cast<QLabel*>(made->second);
            label != nullptr && label->text() != look::Text(box.Text())) {
            label->setText(look::Text(box.Text()));
            if (box.Name() == "StartWords")
                LayOutPages();
            if ((box.Name() == "StatusNote" || box.Name() == "StatusAlso") && !box.Empty())
                Announce(*label);
        }
    } else if (box.Name() == "picToolbar" && toolbar != nullptr) {
        toolbar->setVisible(box.Visible());
        toolbar->setEnabled(box.Enabled());
    }
}

void MainWindow::ShowStarter(const Starter& starter)
{
    static_cast<StartButton*>(starter.button)
        ->Show(look::Text(starter.text.empty() ? starter.entry->Text() : starter.text));
    starter.button->setVisible(starter.entry->Visible() && (starter.where == nullptr || starter.where->Visible()));
    LayOutPages();
}

void MainWindow::CaptionChanged()
{
    setWindowTitle(look::Text(screen.Caption()));
}

void MainWindow::FocusOn(const Box& box)
{
    if (QWidget* widget = WidgetOf(box))
        widget->setFocus();
}

QWidget* MainWindow::WidgetOf(const Box& box) const
{
    if (box.Name() == "picToolbar")
        return toolbar;
    const auto found = widgets.find(&box);
    return found == widgets.end() ? nullptr : found->second;
}

QWidget* MainWindow::Desk() const
{
    return desk;
}

void MainWindow::ShowPage(ScreenWindow& page)
{
    if (std::ranges::find(pages, &page) == pages.end()) {
        pages.push_back(&page);
        connect(&page, &QObject::destroyed, this, [this, gone = &page] { std::erase(pages, gone); });
    }
    LayOutPages();
    page.show();
    page.raise();
}

void MainWindow::ShowPanel(ScreenWindow& window)
{
    if (qobject_cast<QDockWidget*>(window.parentWidget()) == nullptr) {
        auto* panel = new Panel(window, this);
        addDockWidget(Qt::BottomDockWidgetArea, panel);
        resizeDocks({panel}, {panel->HeightWanted()}, Qt::Vertical);
        // The window goes when its screen is closed, and takes the panel along.
        connect(&window, &QObject::destroyed, panel, &QObject::deleteLater);
    }
    window.parentWidget()->show();
    window.show();
    window.parentWidget()->raise();
}

void MainWindow::TakeFocusFrom(const ScreenWindow& closing)
{
    if (focusWidget() == nullptr || !closing.isAncestorOf(focusWidget()))
        return;
    const auto left = std::ranges::find_if(
        pages, [&](const ScreenWindow* page) { return page != &closing && !page->isHidden() && !page->IsDetached(); });
    if (left == pages.end())
        desk->setFocus();
    else
        (*left)->FocusAgain();
}

void MainWindow::LayOutPages()
{
    if (!isFilled)
        return;
    start->adjustSize();
    const QSize room = (desk->size() - start->size()).expandedTo(QSize(0, 0)) / 2;
    start->move(room.width(), std::min(40, room.height()));
    for (ScreenWindow* page : pages) {
        const int width = std::min(page->FormWidth(), desk->width());
        page->setGeometry((desk->width() - width) / 2, 0, width, desk->height());
    }
}

void MainWindow::TellPlacement()
{
    if (detached)
        return;
    WindowPlacement placement = screen.Placement().value_or(WindowPlacement{});
    placement.maximised = isMaximized();
    placement.minimised = isMinimized();
    if (!placement.minimised) {
        placement.top = geometry().top();
        placement.left = geometry().left();
        placement.width = geometry().width();
        placement.height = geometry().height();
    }
    screen.SetPlacement(placement);
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        TellPlacement();
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    if (isVisible())
        TellPlacement();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    LayOutPages();
    if (isVisible())
        TellPlacement();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (!detached)
        screen.RequestClose();
}

} // namespace quillmere
