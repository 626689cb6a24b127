#pragma once

#include "frame/Box.h"
#include "frame/BoxList.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quillmere {

struct Session;

/// How a screen stands in front of the others.
enum class ShowMode {
    Main,   ///< the main window
    Child,  ///< inside the main window
    Panel,  ///< at the foot of the main window, beside what is open there
    Strip,  ///< there too, and the focus stays where it is: nobody has asked for it
    Beside, ///< a window beside the main one, and of the same rank: either may stand in front
    Window, ///< in front of the main window, which stays in use
    Above,  ///< in front of whatever it was asked for from, a modal screen too, which stays in use
    Modal,  ///< in front of everything, which waits
};

/// True for what stands at the foot of the main window.
constexpr bool IsAtFoot(ShowMode mode)
{
    return mode == ShowMode::Panel || mode == ShowMode::Strip;
}

/// Where a window stands, in the screen's own pixels.
struct WindowPlacement {
    bool maximised = false;
    bool minimised = false;
    int top = 0, left = 0, height = 0, width = 0;
};

/// What a window that shows a screen must follow. Made by the desktop; a screen without one works just the same.
class ScreenView {
public:
    ScreenView() = default;
    ScreenView(const ScreenView&) = delete;
    ScreenView& operator=(const ScreenView&) = delete;
    virtual ~ScreenView() = default;
    virtual void BoxChanged(const Box& box) = 0;
    virtual void CaptionChanged() = 0;
    virtual void FocusOn(const Box& box) = 0;
};

/// A screen of the system without any toolkit: named boxes, a caption, and what happens when a key is pressed in a box,
/// a box is left, something is clicked, the screen is loaded, activated or unloaded.
class Screen {
public:
    Screen(Session& session, std::string_view name, ShowMode mode, std::string_view caption);
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    virtual ~Screen();

    const std::string& Name() const { return name; }
    ShowMode Mode() const { return mode; }
    const std::string& Caption() const { return caption; }
    void SetCaption(std::string_view newCaption);
    /// Whom the screen is about, for the title of a window whose caption does not say; empty if about nobody.
    virtual std::string Subject() const { return {}; }

    /// The control of that name, or of that name and index. An unknown one is a mistake in the program:
    /// std::logic_error.
    Box& box(std::string_view boxName, int index = Box::NoIndex);
    const Box& box(std::string_view boxName, int index = Box::NoIndex) const;
    Box* FindBox(std::string_view boxName, int index = Box::NoIndex);
    const Box* FindBox(std::string_view boxName, int index = Box::NoIndex) const;
    /// All controls, in the order of their rows.
    const std::vector<std::unique_ptr<Box>>& Boxes() const { return boxes; }

    // How a screen, or a part of one that is a class of its own, is put together.
    using Operation = std::function<void(Box&)>;

    /// Makes the controls of the rows, after those that are there.
    void AddBoxes(std::span<const BoxRow> rows);
    /// Makes one control whose name is worked out: the row gives all the rest.
    Box& AddBox(const BoxRow& row, std::string boxName, int index = Box::NoIndex);

    // What happens to a control (every member of a control array). An unknown one is a mistake in the program, too.
    void OnLeave(std::string_view boxName, Operation operation);
    void OnClick(std::string_view boxName, Operation operation);
    void OnDoubleClick(std::string_view boxName, Operation operation);
    /// Goes on with the entry of a list that is clicked, or is taken from a drop-down list or a tab strip.
    void OnChoose(std::string_view boxName, Operation operation);
    /// Follows the chosen entry of a list, whether it is clicked or come to by key.
    void OnSelect(std::string_view boxName, Operation operation);
    /// Puts the lines of a table in the order that its box now tells: the head of a column has been pressed.
    void OnSort(std::string_view boxName, Operation operation);
    /// What follows each key that has changed a text box, before it is left.
    void OnType(std::string_view boxName, Operation operation);
    /// What a look at what is typed, before the box's filter, comes to.
    enum class Guard {
        Drops,   ///< nothing of it goes in
        Filters, ///< it goes on to the filter
        LetsIn,  ///< it goes in as it is
    };
    /// Looks once at a key, or at all that is pasted, before the box's filter does.
    void OnKey(std::string_view boxName, std::function<Guard(Box&)> guard);

    /// Tells which of its control arrays are the columns of a list.
    void SetList(BoxList newList) { list = std::move(newList); }
    const std::optional<BoxList>& List() const { return list; }
    /// True for a box of a line of the list.
    bool IsInList(const Box& box) const { return list && list->Has(box); }

    /// Moves the focus to a control.
    void Focus(Box& box);
    /// The option of a group that is ticked; nothing if none is.
    std::optional<int> ChosenOption(std::string_view group) const;
    /// Ticks that option of a group, and no other.
    void ChooseOption(std::string_view group, int index);

    // What the window tells. Failures that a handler lets through end in the general error box.
    /// Passes one typed or pasted character through the box's guard and filter. Sounds the beep of a refused one.
    /// Gives the character that goes in, 0 for none.
    char32_t Key(Box& box, char32_t key);
    /// The same for characters that come at once: the guard is asked once for them all, the filter for each.
    std::u32string Keys(Box& box, std::u32string_view keys);
    /// The user has come to the box, or has changed it: it is the one in use until it is left.
    void Enter(Box& box);
    const Box* InUse() const { return inUse; }
    /// The text of a box has been changed by a key or a paste.
    void Typed(Box& box);
    /// Puts an entry into a box as the user would: a text key by key in place of what stands there, a tick by a click,
    /// an entry of a drop-down list by choosing it; and leaves the box.
    void TypeIn(Box& box, std::string_view entry);
    /// Works on the list while a box of it is in use, which is left first; says in the status bar what has come of it.
    void UseList(Box& box, const std::function<std::string()>& work);
    /// The focus has gone from the box. What leaving it does is done once for each time that it is entered.
    void Leave(Box& box);
    /// What is done elsewhere leaves the box in use, although the focus stays in it; not if it is that box which is
    /// used.
    void LeaveBoxInUse(const Box* used = nullptr);
    // A use of a control leaves the box in use first, wherever that is.
    /// A click; a tick box or option changes its state first.
    void Click(Box& box);
    void DoubleClick(Box& box);
    /// A click on an entry of a list, or a choice in a drop-down list.
    void Choose(Box& box, int position);
    /// Another entry of a list becomes the chosen one by a key: nothing is gone on with.
    void Select(Box& box, int position);
    /// The user asks how a box has come to what it reads; the box in use is left first.
    void Explain(Box& box);
    /// The same in a table, where the column in use and the other chosen lines may change, too.
    void SelectLines(Box& box, int position, int column, std::vector<int> lines);
    /// Sorts a table by a column; by the one that it is sorted by, the other way round.
    void Sort(Box& box, int column);
    /// The window's close box or Escape. Does what the screen's Cancel does, if it has one, else unloads it. What is in
    /// the box in use is dropped with the screen, unless the screen stores its boxes.
    void RequestClose();
    /// Deferred work of a timer, with the failures of an event.
    void Perform(const std::function<void()>& work, std::string_view timer) { Guarded(work, nullptr, timer); }
    /// The button that Enter presses where the control in use has no use for Enter; nothing if there is none.
    Box* DefaultButton();

    // What the registry of screens tells.
    /// The load step; false if the screen decided not to be shown.
    virtual bool Load() { return true; }
    virtual void Activate() {}
    /// The user has come to the screen's own window.
    virtual void WindowActivated() {}
    /// Stores what the screen holds before it is closed for a command that goes on with something else; false, with a
    /// message, if it has to stay.
    [[nodiscard]] virtual bool MayClose() { return true; }
    virtual void Unload() {}

    /// Where the window is to open, if the screen says; from then on where it stands.
    const std::optional<WindowPlacement>& Placement() const { return placement; }
    void SetPlacement(const WindowPlacement& newPlacement) { placement = newPlacement; }

    /// True if a click on the control does something.
    bool IsClickable(const Box& box) const { return clickOperations.contains(box.Name()); }
    /// The same for a double click.
    bool IsDoubleClickable(const Box& box) const { return doubleClickOperations.contains(box.Name()); }
    /// True for a table whose lines can be put in another order.
    bool IsSortable(const Box& box) const { return sortOperations.contains(box.Name()); }

    ScreenView* View() const { return view; }
    void SetView(ScreenView* newView) { view = newView; }

protected:
    virtual void CloseRequested();
    /// Names of the buttons that Escape and Enter press. The first closes the screen where it is tied to nothing else.
    void SetButtons(std::string_view cancel, std::string_view accept);

    /// Reports a failure in the general error box, as the handler of an operation with no message of its own.
    void ReportError(std::string_view procedure, const std::exception& error);

    Session& session;

private:
    friend class Box;
    /// The name, if a control has it.
    std::string Known(std::string_view boxName) const;
    void Guarded(const std::function<void()>& operation, const Box* box, std::string_view event);
    void BoxChanged(const Box& box);
    char32_t Passed(const Box& box, char32_t key, bool filters);
    void Run(const std::unordered_map<std::string, Operation>& operations, Box& box, std::string_view event);
    void RunLeave(Box& box);
    void TellTyped() const;

    std::string name;
    ShowMode mode;
    std::string caption;
    std::string cancelButton, defaultButton;
    std::vector<std::unique_ptr<Box>> boxes;
    std::map<std::pair<std::string, int>, Box*, std::less<>> byName;
    std::unordered_map<std::string, Operation> leaveOperations, clickOperations, doubleClickOperations,
        chooseOperations, selectOperations, sortOperations, typeOperations;
    std::unordered_map<std::string, std::function<Guard(Box&)>> keyGuards;
    std::optional<WindowPlacement> placement;
    std::optional<BoxList> list;
    ScreenView* view = nullptr;
    Box* inUse = nullptr;
    bool left = false; ///< the box in use has been left by something done elsewhere
};

} // namespace quillmere
