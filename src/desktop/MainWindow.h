#pragma once

#include "frame/Screen.h"

#include <QList>
#include <QMainWindow>
#include <QRect>

#include <string>
#include <unordered_map>
#include <vector>

class QAction;
class QLabel;
class QProgressBar;
class QToolBar;

namespace quillmere {

class MDIForm1;
class ScreenWindow;

/// Where a window opens that was left at `wanted`: there, if any of the screens' rooms still shows a part of it, else
/// in the first room, cut to its size.
QRect InSight(const QRect& wanted, const QList<QRect>& rooms);

/// The frame of the program: menus, toolbar, status bar, and the desk on which the pages lie.
class MainWindow : public QMainWindow, public ScreenView {
public:
    explicit MainWindow(Screen& screen);
    ~MainWindow() override;

    void BoxChanged(const Box& box) override;
    void CaptionChanged() override;
    void FocusOn(const Box& box) override;

    Screen& Shown() const { return screen; }
    QWidget* WidgetOf(const Box& box) const;
    /// The desk, parent of the pages.
    QWidget* Desk() const;
    /// Brings a page to the front of the desk.
    void ShowPage(ScreenWindow& page);
    /// Brings a panel up at the foot, beside the pages.
    void ShowPanel(ScreenWindow& window);
    /// What has the focus goes: the page that stays has it, else the desk.
    void TakeFocusFrom(const ScreenWindow& closing);
    void ShowProgress(int done, int total);
    /// Shows its pictures at so many percent of their size, and gives pages and panels the room that theirs need.
    void Zoom(int percent);
    void Detach();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeMenus();
    /// A button of the empty desk.
    struct Starter {
        const Box* entry;
        const Box* where; ///< the part of the desk with which it shows; none: always
        std::string text; ///< empty: the entry's
        QWidget* button;
    };
    void ShowStarter(const Starter& starter);
    void MakeStart();
    void MakeToolbar();
    void MakeStatusBar();
    void TellPlacement();
    void LayOutPages();

    Screen& screen;
    QWidget* desk = nullptr;
    QWidget* start = nullptr; ///< what the empty desk offers
    QToolBar* toolbar = nullptr;
    QProgressBar* progress = nullptr;
    std::unordered_map<const Box*, QAction*> actions;
    std::vector<Starter> starters;
    std::unordered_map<const Box*, QWidget*> widgets;
    std::vector<ScreenWindow*> pages;
    bool detached = false;
    bool isFilled = false; ///< what the empty desk offers has been put in, and can be laid out
};

} // namespace quillmere
