#include "desktop/DesktopHost.h"

#include "desktop/Look.h"
#include "desktop/MainWindow.h"
#include "desktop/PreviewWindow.h"
#include "desktop/ScreenWindow.h"
#include "desktop/SpokenRoles.h"
#include "desktop/layouts/Layout.h"
#include "printing/jobs/frmVSPrint.h"
#include "review/BoxNotes.h"
#include "review/Paper.h"

#include <QApplication>
#include <QFontInfo>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <utility>

namespace quillmere {

namespace {

/// How large the desktop's letters are beside those for which the layouts are made, in percent. What is usual counts as
/// the same, so that the windows are as they are drawn.
int PercentOf(const QFont& desktopFont)
{
    constexpr int LayoutLetters = 13, UsualMost = 16;
    const int letters = QFontInfo(desktopFont).pixelSize();
    return letters <= UsualMost ? 100 : 100 * letters / LayoutLetters;
}

/// Does something once the first window has been painted, or when that takes too long. Then it has done its work.
class FirstPicture : public QObject {
public:
    FirstPicture(QObject* parent, std::function<void()> then) : QObject(parent), then(std::move(then))
    {
        constexpr int Patience = 250; // milliseconds
        QTimer::singleShot(Patience, this, [this] { Go(); });
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, this, [this] { Go(); });
        return false;
    }

private:
    void Go()
    {
        if (const auto work = std::exchange(then, nullptr)) {
            qApp->removeEventFilter(this);
            deleteLater();
            work();
        }
    }

    std::function<void()> then;
};

/// Does something behind all that waits for the event loop, the painting too.
class BehindThePicture : public QObject {
public:
    explicit BehindThePicture(std::function<void()> work) : work(std::move(work)) {}

protected:
    void customEvent(QEvent*) override { work(); }

private:
    std::function<void()> work;
};

} // namespace

DesktopHost::DesktopHost()
    : context(std::make_unique<BehindThePicture>([this] {
          // What can wait does not keep the first window from being seen.
          if (session != nullptr && !awaitsPicture)
              session->screens.RunDeferred();
      })),
      desktopFont(QApplication::font())
{
    look::Dress();
    TellRoles();
}

DesktopHost::~DesktopHost()
{
    QApplication::setFont(desktopFont);
}

void DesktopHost::Show(Screen& screen)
{
    if (screen.Mode() == ShowMode::Main) {
        if (mainWindow == nullptr) {
            mainWindow = std::make_unique<MainWindow>(screen);
            awaitsPicture = true;
            new FirstPicture(context.get(), [this] {
                awaitsPicture = false;
                WorkWaiting();
            });
        }
        mainWindow->Zoom(percent);
        mainWindow->show();
        return;
    }
    // Whoever is further on waits no longer.
    if (std::exchange(awaitsPicture, false))
        WorkWaiting();
    std::unique_ptr<ScreenWindow>& window = windows[&screen];
    const bool made = window == nullptr;
    const bool page = screen.Mode() == ShowMode::Child && mainWindow != nullptr;
    auto* preview = dynamic_cast<frmVSPrint*>(&screen);
    if (made && preview != nullptr)
        window = std::make_unique<PreviewWindow>(*preview, mainWindow.get(), PercentInUse());
    else if (made)
        window = std::make_unique<ScreenWindow>(screen, ParentOf(screen), PercentInUse());
    if (made)
        window->SetHelp([this] { ShowHelp(); });
    if (made && session != nullptr)
        window->SetCut([this, &screen](const Box& box) { return review::CutOnPaper(*session, screen, box); });
    if (const review::BoxNotes* notes = made && session != nullptr ? review::NotesOf(*session) : nullptr)
        window->SetNotes([notes, &screen](const Box& box) { return notes->Of(screen, box); });
    if (page) {
        mainWindow->ShowPage(*window);
    } else if (IsAtFoot(screen.Mode()) && mainWindow != nullptr) {
        mainWindow->ShowPanel(*window);
    } else {
        if (made && preview == nullptr) {
            if (const auto size = sizes.find(screen.Name()); size != sizes.end())
                window->resize(size->second);
            Place(*window, screen);
        }
        window->show();
        window->raise();
        window->activateWindow();
    }
    // A panel that is called up again is what the user wants to go to.
    if (screen.Mode() == ShowMode::Strip)
        return;
    if (made || screen.Mode() == ShowMode::Panel)
        window->FocusFirst();
    else if (page)
        window->FocusAgain();
}

QWidget* DesktopHost::ParentOf(const Screen& screen) const
{
    if (mainWindow == nullptr || screen.Mode() == ShowMode::Beside)
        return nullptr;
    return screen.Mode() == ShowMode::Child ? mainWindow->Desk() : mainWindow.get();
}

/// Puts a new window in the middle of the one that it opens in front of, or of the screen where its layout says so.
void DesktopHost::Place(QWidget& window, const Screen& screen) const
{
    const QWidget* below = QApplication::activeModalWidget();
    if (below == nullptr)
        below = mainWindow.get();
    if (below == nullptr)
        return;
    const QRect ground = LayoutOf(screen.Name()).onScreen ? below->screen()->geometry() : below->geometry();
    const QRect room = below->screen()->availableGeometry();
    QRect place = window.rect();
    place.moveCenter(ground.center());
    // Never with its title off the screen.
    window.move(std::max(place.left(), room.left()), std::max(place.top(), room.top()));
    if (screen.Mode() == ShowMode::Beside)
        return;
    // The window system keeps it in front of that one, too.
    window.winId();
    window.windowHandle()->setTransientParent(below->windowHandle());
}

void DesktopHost::Hide(Screen& screen)
{
    const auto found = windows.find(&screen);
    if (found != windows.end())
        found->second->hide();
}

void DesktopHost::Close(Screen& screen)
{
    if (screen.Mode() == ShowMode::Main) {
        while (!windows.empty())
            CloseWindow(windows.begin());
        if (mainWindow != nullptr) {
            mainWindow->Detach();
            mainWindow->hide();
            mainWindow.release()->deleteLater();
        }
        QCoreApplication::quit();
    } else if (const auto found = windows.find(&screen); found != windows.end()) {
        CloseWindow(found);
    }
}

void DesktopHost::CloseWindow(Windows::iterator position)
{
    // The event that closes the window may be one of its own: it goes once that has ended.
    ScreenWindow* window = position->second.release();
    windows.erase(position);
    const bool hadFocus = window->isActiveWindow();
    if (window->isWindow() && window->GrowsWithItsList())
        sizes.insert_or_assign(window->Shown().Name(), window->size());
    window->Detach();
    if (mainWindow != nullptr && !window->isWindow())
        mainWindow->TakeFocusFrom(*window);
    window->hide();
    window->deleteLater();
    if (hadFocus)
        ActivateNext();
}

/// What a window leaves behind when it goes: a modal one, else another one in front, else the main window.
void DesktopHost::ActivateNext()
{
    QWidget* next = QApplication::activeModalWidget();
    for (const auto& [screen, window] : windows)
        if (next == nullptr && window->isWindow() && window->isVisible())
            next = window.get();
    if (next == nullptr)
        next = mainWindow.get();
    if (next != nullptr && next->isVisible())
        next->activateWindow();
}

/// Help is opened anew, so that it is about the box in which it is asked for.
void DesktopHost::ShowHelp()
{
    if (session == nullptr)
        return;
    const Screens::EventScope scope(session->screens);
    session->screens.Unload("HelpBook");
    session->screens.Show("HelpBook");
}

void DesktopHost::WorkWaiting()
{
    QCoreApplication::postEvent(context.get(), new QEvent(QEvent::User), Qt::LowEventPriority - 1);
}

void DesktopHost::Zoom(int newPercent)
{
    if (newPercent == percent)
        return;
    percent = newPercent;
    QFont letters = desktopFont;
    letters.setPixelSize(QFontInfo(desktopFont).pixelSize() * percent / 100);
    QApplication::setFont(letters);
    sizes.clear(); // of the windows as they were
    for (const auto& [screen, window] : windows)
        window->Zoom(PercentInUse());
    if (mainWindow != nullptr)
        mainWindow->Zoom(percent);
}

QFont DesktopHost::Letters() const
{
    return look::CaptionFont({.size = 13 * PercentInUse() / 100});
}

/// Of the layouts' own size.
int DesktopHost::PercentInUse() const
{
    return PercentOf(desktopFont) * percent / 100;
}

QWidget* DesktopHost::WindowOf(const Screen& screen) const
{
    if (mainWindow != nullptr && &mainWindow->Shown() == &screen)
        return mainWindow.get();
    const auto found = windows.find(&screen);
    return found == windows.end() ? nullptr : found->second.get();
}

QWidget* DesktopHost::WidgetOf(const Screen& screen, const Box& box) const
{
    if (mainWindow != nullptr && &mainWindow->Shown() == &screen)
        return mainWindow->WidgetOf(box);
    const auto found = windows.find(&screen);
    return found == windows.end() ? nullptr : found->second->WidgetOf(box);
}

void DesktopHost::ShowProgress(int done, int total)
{
    if (mainWindow != nullptr)
        mainWindow->ShowProgress(done, total);
}

QWidget* DesktopHost::FrontWindow() const
{
    // One that has been closed may be the active one until its end.
    if (QWidget* active = QApplication::activeWindow(); active != nullptr && active->isVisible())
        return active;
    return mainWindow.get();
}

} // namespace quillmere
