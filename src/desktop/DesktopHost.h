#pragma once

#include "frame/Session.h"

#include <QFont>
#include <QSize>

#include <map>
#include <memory>
#include <string>
#include <unordered_map>

class QObject;
class QWidget;

namespace quillmere {

class MainWindow;
class ScreenWindow;

/// Puts the program's screens on the desktop: one window for each, made from the screen's layout when it is first
/// shown.
class DesktopHost : public ScreenHost {
public:
    DesktopHost();
    ~DesktopHost() override;

    void Show(Screen& screen) override;
    void Hide(Screen& screen) override;
    void Close(Screen& screen) override;
    void WorkWaiting() override;
    void Zoom(int newPercent) override;

    /// Whose deferred work it does, and whose paper texts are held against; set once the program is made.
    void SetSession(Session* newSession) { session = newSession; }
    /// The window of a screen, and the widget of one of its controls (object name "Screen.Control" or
    /// "Screen.Control(3)"); nothing if there is none.
    QWidget* WindowOf(const Screen& screen) const;
    QWidget* WidgetOf(const Screen& screen, const Box& box) const;
    MainWindow* Main() const { return mainWindow.get(); }
    /// Shows how far a long work has come in the status bar; `total` 0 takes the bar away.
    void ShowProgress(int done, int total);
    /// Where message boxes and dialogs belong: the window in front.
    QWidget* FrontWindow() const;
    /// The letters of all windows, which those have, too.
    QFont Letters() const;

private:
    using Windows = std::unordered_map<const Screen*, std::unique_ptr<ScreenWindow>>;
    int PercentInUse() const;
    QWidget* ParentOf(const Screen& screen) const;
    void Place(QWidget& window, const Screen& screen) const;
    void ActivateNext();
    void ShowHelp();
    void CloseWindow(Windows::iterator position);

    std::unique_ptr<QObject> context; ///< deferred work that is still waiting goes with it
    std::unique_ptr<MainWindow> mainWindow;
    Windows windows;
    std::map<std::string, QSize> sizes; ///< of windows that the user may make larger, as they were when they closed
    Session* session = nullptr;
    QFont desktopFont;          ///< the desktop's own
    int percent = 100;          ///< of the desktop's size
    bool awaitsPicture = false; ///< the main window has been shown, and not been painted yet
};

} // namespace quillmere
