#pragma once

#include "frame/KeyFilters.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

class Screen;

/// What a control of a screen is. All of them are boxes: things with a given name whose state a window follows.
enum class BoxKind {
    Text,     ///< a text box
    Label,    ///< a caption that code changes, or one that is clicked like a tab or a link
    Tick,     ///< a tick box
    Option,   ///< one option of a group; the group's members share a name and differ by index
    Button,   ///< a button with a caption
    Picture,  ///< a picture that opens something
    List,     ///< a list of entries
    Table,    ///< a list whose entries are cells parted by tabs, in columns with captions
    DropDown, ///< a list of entries of which one shows
    Menu,     ///< an entry of the main window's menus
    Tabs,     ///< a tab strip: a list of which the chosen entry's page shows
    Frame,    ///< a group of controls, or a page of a tab strip
    Surface,  ///< a part of the window that a class of its own draws
};

/// Colour of a label that acts as a tab.
enum class Paint { Plain, Yellow };

/// One row of a screen's table of controls. Rows stand in the order of the form, which is the order of the Tab key.
struct BoxRow {
    std::string_view name; ///< the given name, shared by window, record, scenario and guide
    BoxKind kind = BoxKind::Text;
    std::string_view field = {};   ///< field of the bound record; empty: not bound
    KeyFilter filter = nullptr;    ///< what typing and pasting let in; none: everything
    std::string_view text = {};    ///< caption of a label, button, tick, option or menu entry
    std::string_view spoken = {};  ///< what a screen reader says; empty: the caption
    std::string_view tip = {};     ///< tooltip
    std::string_view columns = {}; ///< captions of a table's columns, parted by tabs; `>` before one: it holds figures
    std::string_view movesIn = {}; ///< list of the screen in which the keys for up and down move from this text box
    std::string_view key = {};     ///< presses a button of a window of its own from anywhere in it: "Ctrl+P"
    char letter = 0;               ///< Alt and this letter press it, where its caption marks none
    int first = 0;                 ///< a control array runs from here …
    int last = -1;                 ///< … to here; below `first`: no array
    bool hidden = false;
    bool readOnly = false;
    bool disabled = false;
    bool amount = false;     ///< right-aligned in the monospaced face
    bool monospaced = false; ///< in the monospaced face, aligned as other texts are
    bool computed = false;   ///< looks worked out although it can be typed in: what is typed is overwritten
    bool ofEmployee = false; ///< of the main window: in use only while an employee is open
    bool several = false;    ///< several lines of a table can be chosen
    bool tinted = false;     ///< the word in the first cell of a table's line gives the line its colour
};

/// The row of an amount box of a page, bound to the field of its own name.
constexpr BoxRow AmountRow(std::string_view name, std::string_view spoken, KeyFilter filter = MoneyKeyFilter)
{
    return {.name = name, .field = name, .filter = filter, .spoken = spoken, .amount = true};
}

/// The row of a picture that opens another screen; the tooltip is spoken too.
constexpr BoxRow PictureRow(std::string_view name, std::string_view tip)
{
    return {.name = name, .kind = BoxKind::Picture, .spoken = tip, .tip = tip};
}

/// The row of one option of a group: the member of the array with that index.
constexpr BoxRow OptionRow(std::string_view name, int index, std::string_view caption, char letter)
{
    return {.name = name, .kind = BoxKind::Option, .text = caption, .letter = letter, .first = index, .last = index};
}

/// The row of a list with columns.
constexpr BoxRow TableBoxRow(std::string_view name, std::string_view spoken, std::string_view columns)
{
    return {.name = name, .kind = BoxKind::Table, .spoken = spoken, .columns = columns};
}

/// By which column the lines of a table stand in order, -1 for none.
struct Sorting {
    int column = -1;
    bool descending = false;

    friend bool operator==(const Sorting&, const Sorting&) = default;
};

/// A control of a screen: what it shows and whether it can be used. Setting anything tells the window that shows it.
class Box {
public:
    /// A control that is not of an array has this index.
    static constexpr int NoIndex = -1;

    Box(Screen& screen, const BoxRow& row, std::string name, int index);
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;

    const std::string& Name() const { return name; }
    int Index() const { return index; }
    /// The name with the index of a control array behind it: "Tax(3)".
    std::string FullName() const;
    BoxKind Kind() const { return kind; }
    bool IsAmount() const { return amount; }
    bool IsMonospaced() const { return amount || monospaced; }
    bool IsComputed() const { return computed; }
    bool IsOfEmployee() const { return ofEmployee; }
    KeyFilter Filter() const { return filter; }
    const std::string& Key() const { return key; }
    const std::string& Columns() const { return columns; }
    void SetColumns(std::string_view newColumns);
    bool TakesSeveral() const { return several; }
    bool IsTinted() const { return tinted; }
    const std::string& MovesIn() const { return movesIn; }
    /// Field of the record that the box is bound to; empty if none.
    const std::string& Field() const { return field; }
    void SetField(std::string_view fieldName) { field = fieldName; }

    /// A text box's text, a caption, the chosen entry of a list.
    const std::string& Text() const { return text; }
    void SetText(std::string_view newText);
    /// Empties what the user enters: a text, or a tick or option, whose caption stays.
    void Clear();
    bool Empty() const { return text.empty(); }
    /// Drops the outer blanks of the text in place and gives what is left.
    const std::string& TrimText();

    /// What the box reads as the text of a field: a tick's is that of a stored tick.
    std::string Stored() const;
    /// Shows the text of a field.
    void ShowStored(std::string_view fieldText);

    bool Ticked() const { return ticked; }
    void SetTicked(bool newTicked);
    bool Enabled() const { return enabled; }
    void SetEnabled(bool newEnabled);
    bool Visible() const { return visible; }
    void SetVisible(bool newVisible);
    bool ReadOnly() const { return readOnly; }
    void SetReadOnly(bool newReadOnly);
    Paint PaintedIn() const { return paint; }
    void SetPaint(Paint newPaint);
    const std::string& Tip() const { return tip; }
    void SetTip(std::string_view newTip);
    const std::string& Spoken() const { return spoken; }
    char Letter() const { return letter; }
    void SetSpoken(std::string_view newSpoken);

    /// Entries of a list, and the position of the chosen one, -1 for none.
    const std::vector<std::string>& Entries() const { return entries; }
    void SetEntries(std::vector<std::string> newEntries);
    void AddEntry(std::string_view entry);
    int Selected() const { return selected; }
    /// Chooses an entry; out of range: none. The text becomes the entry's.
    void Select(int position);
    /// The same for a line of a table, with the column that is in use and all chosen lines.
    void SelectLines(int position, int newColumn, std::vector<int> lines);
    /// Column of a table that is in use.
    int Column() const { return column; }
    /// All chosen lines of a table, from the top; elsewhere the chosen entry.
    const std::vector<int>& Chosen() const { return chosen; }
    Sorting SortedBy() const { return sorting; }
    /// Tells by which column the entries stand in order; they are put in order by whoever sets them.
    void SetSorting(Sorting newSorting);

    /// Takes what the window's own widget already shows: typed text, without telling the window again.
    void AcceptTyped(std::string_view typed)
    {
        text = typed;
        isByHand = true;
    }
    /// True if what it reads is the user's own: he has typed into it or ticked it since a field's text was last shown
    /// in it, whatever its rule has made of that.
    bool IsByHand() const { return isByHand; }
    void MarkByHand(bool byHand = true) { isByHand = byHand; }

private:
    void Changed();

    Screen& screen;
    std::string name;
    int index;
    BoxKind kind;
    KeyFilter filter;
    std::string field;
    std::string columns;
    std::string movesIn;
    std::string key;
    std::string text;
    std::string spoken;
    std::string tip;
    char letter;
    std::vector<std::string> entries;
    int selected = -1;
    int column = 0;
    std::vector<int> chosen;
    Sorting sorting;
    Paint paint = Paint::Plain;
    bool ticked = false;
    bool isByHand = false;
    bool enabled = true;
    bool visible = true;
    bool readOnly = false;
    bool amount = false;
    bool monospaced = false;
    bool computed = false;
    bool ofEmployee = false;
    bool several = false;
    bool tinted = false;
};

} // namespace quillmere
