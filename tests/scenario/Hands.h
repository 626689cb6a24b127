#pragma once

#include <QPoint>

#include <string>
#include <vector>

class QComboBox;
class QAbstractItemView;
class QWidget;
class QWindow;

namespace quillmere::scenario {

/// What a user does with mouse and keyboard, sent to the windows as the window system sends it: it reaches what stands
/// under the pointer or has the focus, if anything. Each operation throws StepFailure where a user could not do it.
namespace hands {

/// Lets the windows work off what waits, and deletes what has been closed.
void Settle();

/// Gives the focus to a window.
void Activate(QWidget& window);

/// Gives a window that is to be maximised the size of the screen where no window manager does.
void FillScreen(QWidget& window);

/// Fails for a control whose window waits behind a modal one: nothing in it answers.
void RequireNotBlocked(const QWidget& widget, const std::string& name);

/// Brings a control into reach: closes open menus, turns to its page of a tab strip, scrolls to it, activates its
/// window. `name` is the control's, for the failure.
void Reach(QWidget& widget, const std::string& name);

/// Lets go of the mouse button that a click holds down, where it is. A box that comes between press and release is the
/// one that the release then finds.
void LetGo();

void Click(QWidget& widget, const std::string& name);
void DoubleClick(QWidget& widget, const std::string& name);

/// The entries of a list or table as its window shows them: the cells of a row parted by tabs.
std::vector<std::string> EntriesOf(const QAbstractItemView& list);
/// The one of them that is chosen; empty for none.
std::string ChosenEntry(const QAbstractItemView& list);
/// Clicks, or double-clicks, an entry.
void ClickEntry(QAbstractItemView& list, const std::string& entry, bool twice, const std::string& name);
/// Opens a drop-down list and goes to the entry with the keyboard.
void ChooseEntry(QComboBox& list, const std::string& entry, const std::string& name);

/// Puts the focus in a box; the one that had it is left.
void PutFocus(QWidget& widget, const std::string& name);
/// Takes the focus off the box that has it and gives it to no other.
void TakeFocus();

/// Types characters one by one into whatever has the focus.
void Type(const std::string& text);
/// Presses keys: "Tab", "Enter", "Escape", "Alt+F", "Ctrl+P".
void Press(const std::string& keys);
/// Puts a text on the clipboard and pastes it.
void Paste(const std::string& text);

} // namespace hands

} // namespace quillmere::scenario
