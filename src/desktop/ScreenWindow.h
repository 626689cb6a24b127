#pragma once

#include "desktop/Growth.h"
#include "desktop/ListHands.h"
#include "desktop/layouts/Layout.h"
#include "frame/Screen.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

class QAbstractButton;
class QLabel;
class QScrollArea;

namespace quillmere {

class BoxEdit;
class Canvas;

/// The window of any screen: widgets made from the screen's controls at the places of its layout. Each widget follows
/// its box, and tells the screen what the user does.
class ScreenWindow : public QWidget, public ScreenView {
public:
    /// Shows everything at so many percent of its size.
    ScreenWindow(Screen& screen, QWidget* parent, int percent = 100);
    ~ScreenWindow() override;

    void BoxChanged(const Box& box) override;
    void CaptionChanged() override;
    void FocusOn(const Box& box) override;

    Screen& Shown() const { return screen; }
    QWidget* WidgetOf(const Box& box) const;
    /// Cuts the ties to the screen: nothing that the toolkit still sends reaches it.
    virtual void Detach();
    /// What F1 does here: the box in use stays so.
    void SetHelp(std::function<void()> newHelp) { showHelp = std::move(newHelp); }
    /// Who says how many characters at the end of a box's text do not print: those are marked.
    void SetCut(std::function<std::size_t(const Box&)> newCut);
    /// Who says what there is to tell of a control just now: that is marked, and stands in its tooltip.
    void SetNotes(std::function<std::string(const Box&)> newNotes) { notes = std::move(newNotes); }
    void Zoom(int newPercent);
    /// Puts the focus in the first control that takes it.
    void FocusFirst();
    /// Puts the focus back in the field in which the user was last.
    void FocusAgain();
    /// The width that the whole form needs, with a scroll bar.
    int FormWidth() const;
    int FormHeight() const { return layout.height; }
    /// True for a window whose list takes the room that the user gives it.
    bool GrowsWithItsList() const { return growth.IsPossible(); }
    bool IsDetached() const { return detached; }

protected:
    /// Makes a widget the one that shows a control.
    void Adopt(Box& box, QWidget& widget);
    /// The part of the window that stays in place, and the one that scrolls below it.
    QWidget* Header() const;
    /// A length of the window, which is given at its own size.
    int Zoomed(int length) const { return (length * percent + 50) / 100; }
    /// The controls have another size: takes the size that they need, as far as the desktop has room.
    virtual void FitToRoom();
    QScrollArea* Scroll() const { return scroll; }
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* CanvasOf(const Layout::Placed& place) const;
    QWidget* ParentOf(const Layout::Placed& place) const;
    void MakeSections();
    QWidget* MakeWidget(Box& box, const Layout::Placed& place, QWidget* parent);
    QWidget* MakeEdit(Box& box, QWidget* parent);
    QWidget* MakeList(Box& box, QWidget* parent);
    QWidget* MakeTable(Box& box, QWidget* parent);
    QWidget* MakeDropDown(Box& box, QWidget* parent);
    QWidget* MakeButton(Box& box, QWidget* parent);
    QWidget* MakeTabs(Box& box, QWidget* parent);
    void Typed(Box& box, BoxEdit& edit);
    void PutIn(Box& box, BoxEdit& edit);
    void MarkCut(const Box& box, BoxEdit& edit) const;
    void ShowNote(const Box& box, QWidget& widget) const;
    QString DescriptionOf(const Box& box) const;
    void BringInSight(QWidget& widget, Qt::FocusReason reason);
    void LeaveForOther(Box& box);
    void CompleteClick(QObject& pressed, const QMouseEvent& press);
    bool AsksAbout(Box& box, const QKeyEvent& key);
    void ShowMenuOf(Box& box, QWidget& widget, const QPoint& place);
    bool KeyIn(Box& box, QWidget& widget, QKeyEvent& key);
    bool KeyInEdit(Box& box, BoxEdit& edit, const QKeyEvent& key);
    bool KeyOnPicture(QAbstractButton& picture, QKeyEvent& key);
    bool OpenPictureOf(const Box& box);
    bool IsInReach(const Box& box) const;
    bool TakesTyping(const Box& box) const;
    std::vector<std::unique_ptr<Box>>::const_iterator PlaceOf(const QWidget* widget) const;
    void GoOn();
    void Grow();
    bool MovesInList(const Box& box, const QKeyEvent& key);
    bool MoveBetweenLines(const Box& box, int lines);
    void FixTabOrder();
    void LayOutBoxes();
    static bool LeadsOn(const Box& box);

    Screen& screen;
    std::function<void()> showHelp;
    std::function<std::size_t(const Box&)> cut;
    std::function<std::string(const Box&)> notes;
    int percent;
    Layout layout; ///< at so many percent
    Growth growth;
    Canvas* header = nullptr;
    Canvas* form = nullptr;
    Canvas* foot = nullptr;
    QLabel* captionLabel = nullptr; ///< of a page, which has no title bar
    QScrollArea* scroll = nullptr;
    std::vector<QWidget*> pages; ///< of the tab strip
    struct DrawnSection {
        std::size_t panel; ///< among what is drawn
        QWidget* group;
    };
    std::vector<DrawnSection> sections;
    std::unordered_map<const Box*, QWidget*> widgets;
    std::unordered_map<const QObject*, Box*> boxes;
    std::unordered_map<const Box*, QString>
        takes;                    ///< of each control that takes typing, what a screen reader says of it
    QWidget* lastField = nullptr; ///< in which the user was last
    ListHands listHands;
    bool letGoMeanwhile = false; ///< the mouse button, while the box that was in use was left
    bool detached = false;
};

} // namespace quillmere
