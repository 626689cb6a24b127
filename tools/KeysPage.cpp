#include "KeysPage.h"

#include "app/MDIForm1.h"
#include "frame/Session.h"
#include "frame/Text.h"

#include <array>
#include <cctype>
#include <fmt/format.h>
#include <memory>

namespace quillmere {

namespace {

struct KeyRow {
    std::string_view keys;
    std::string_view what;
};
/// What the windows do with keys that no menu and no button has.
constexpr auto InBoxes = std::to_array<KeyRow>({
    {"Tab, Shift+Tab", "to the next box, to the one before"},
    {"Enter", "to the next box that takes typing; in a list, what a double click does; in a dialog, its first button"},
    {"Up, Down", "to the same column of the line before or after; in a list, to another entry"},
    {"Escape", "brings back what stood in the box; otherwise closes a list, notepad or window without storing"},
    {"F1", "this help, at the section about the box"},
    {"Shift+F1", "what the box is"},
    {"F4, Alt+Down", "in a box with letters or a date, what goes in"},
    {"F4", "in any other box of a section, and on its picture, its notepad"},
    {"Space", "ticks a tick box, presses a button, opens a picture"},
});
constexpr auto InLists = std::to_array<KeyRow>({
    {"Shift+Up, Shift+Down", "chooses cells from here on; then Shift+Left, Shift+Right take in the columns beside"},
    {"Ctrl+C", "copies the chosen cells"},
    {"Ctrl+V", "pastes cells to the right and down from here"},
    {"Delete", "empties the chosen cells"},
    {"Ctrl+D", "repeats the line above"},
    {"Ctrl+Delete", "empties the line, or all lines of the chosen cells"},
    {"Alt+Up, Alt+Down", "moves the line"},
});
constexpr auto InPreview = std::to_array<KeyRow>({
    {"Page Up, Page Down", "page before, next page"},
    {"Home, End", "first page, last page"},
    {"+, -", "larger, smaller"},
    {"Ctrl+P", "prints"},
    {"Escape", "closes"},
});

void Heading(std::string& text, std::string_view title)
{
    text += fmt::format("\n## {}\n\n", title);
}

void Line(std::string& text, std::string_view keys, std::string_view what)
{
    text += fmt::format("- **{}**: {}\n", keys, what);
}

std::string WithoutMark(std::string text)
{
    std::erase(text, '&');
    return Trim(text);
}

void AddMenus(std::string& text, const Screen& main)
{
    std::string_view menu;
    for (const MenuRow& row : MenuRows()) {
        if (row.menu != menu) {
            menu = row.menu;
            Heading(text, fmt::format("{} menu: Alt+{}", menu, LetterOfMenu(menu)));
        }
        const Box& box = main.box(row.box, row.index);
        if (box.Text().empty() || box.Letter() == 0)
            continue;
        const std::string letter = fmt::format("Alt+{}, {}", LetterOfMenu(menu), box.Letter());
        Line(text, row.key.empty() ? letter : fmt::format("{}, or {}", row.key, letter), WithoutMark(box.Text()));
    }
}

void AddLetters(std::string& text, const Screen& screen)
{
    for (const auto& box : screen.Boxes())
        if (box->Letter() != 0 && box->Kind() != BoxKind::Menu && box->Visible())
            Line(text, fmt::format("Alt+{}", static_cast<char>(std::toupper(box->Letter()))),
                 WithoutMark(!box->Spoken().empty() ? box->Spoken()
                             : box->Text().empty()  ? box->Tip()
                                                    : box->Text()));
}

} // namespace

std::string KeysPage(const Session& session)
{
    std::string text = "# Keys\n\nAll keys on one page, made from the program's own menus and windows.\n";
    Heading(text, "In any window");
    for (const KeyRow& row : InBoxes)
        Line(text, row.keys, row.what);
    const std::unique_ptr<Screen> main = session.screens.Make("MDIForm1");
    AddMenus(text, *main);
    Heading(text, "Toolbar");
    AddLetters(text, *main);
    Heading(text, "Pages");
    AddLetters(text, *session.screens.Make("Form3"));
    Heading(text, "Lines of a notepad");
    for (const KeyRow& row : InLists)
        Line(text, row.keys, row.what);
    Heading(text, "Print Preview");
    for (const KeyRow& row : InPreview)
        Line(text, row.keys, row.what);
    return text;
}

} // namespace quillmere
