#pragma once

#include "frame/Screen.h"

#include <QWidget>

#include <functional>

class QKeyEvent;
class QMouseEvent;

namespace quillmere {

class BoxEdit;

/// What mouse and keyboard do with the lines of a screen's list, and which of its cells are chosen there.
class ListHands {
public:
    ListHands(Screen& screen, std::function<QWidget*(const Box&)> widgetOf);

    /// The focus has come to the box: with Shift held and by the mouse, all cells from the one before are chosen.
    void FocusIn(Box& box, Qt::FocusReason reason);
    /// A key for a box of the list; true if it was meant for the lines.
    bool Key(Box& box, const QKeyEvent& key);
    /// The mouse is pressed in the box that has the focus.
    void Press(Qt::KeyboardModifiers with);
    /// The mouse has moved over the window with the button pressed in the box: chooses the cells from there to here.
    void Drag(Box& box, const QPoint& globalPlace);
    /// A text that has come into the edit of a box; true if it was several cells, which have gone into the lines.
    bool Paste(Box& box, BoxEdit& edit);

private:
    bool LineKey(Box& box, const QKeyEvent& key);
    bool CellKey(Box& box, const QKeyEvent& key);
    CellRange Chosen(const Box& box) const;
    bool AreSeveralChosen() const { return anchor != nullptr && end != nullptr && anchor != end; }
    void Choose(Box& from, const Box& to);
    void ChooseNone();
    void Mark(const CellRange& cells, bool chosen) const;
    BoxEdit* EditOf(const Box& box) const;

    Screen& screen;
    std::function<QWidget*(const Box&)> widgetOf;
    Box* anchor = nullptr;    ///< at which choosing began
    const Box* end = nullptr; ///< as far as which the cells are chosen
};

} // namespace quillmere
