// The words that a window draws or labels once and for all, as the user reads them.
#include "app/Program.h"
#include "desktop/Layout.h"
#include "frame/Text.h"
#include "screens/ScheduleNotepad.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmere {
namespace {

class FixedWords : public ::testing::Test {
protected:
    FixedWords() : program(door, nullptr, {}) {}

    /// True if the window draws the text, or has a placed control with that caption.
    bool Reads(std::string_view screen, std::string_view text)
    {
        const Layout& layout = LayoutOf(screen);
        if (std::ranges::any_of(layout.drawn, [&](const Layout::Drawn& drawn) { return drawn.text == text; }))
            return true;
        const auto made = program.GetSession().screens.Make(screen);
        return std::ranges::any_of(layout.placed, [&](const Layout::Placed& placed) {
            const Box* box = made->FindBox(placed.box, placed.index);
            return box != nullptr && box->Text() == text;
        });
    }

    testing::ScriptedDoor door;
    Program program;
};

TEST_F(FixedWords, StandOnTheirWindows)
{
    struct {
        std::string_view screen, text;
    } const cases[] = {
        {"NewFileCheck", "Please choose one of the options below"},
        {"NewFileCheck", "I would like to add a new Employee to an existing Employer  "},
        {"NewFileCheck", "I would like to create a new Employer and Employee"},
        {"NewFile", "Enter New Employer Name"},
        {"NewFile", "PAYE Reference"},
        {"NewFile", "Enter New Employee Firstname"},
        {"NewFile", "Enter New Employee Surname"},
        {"RenameEmp", "NEW NAME"},
        {"RenameEmp", "NEW PAYE"},
        {"RenameEmp", "Close"},
        {"frmFolderManager", "Folder Name"},
        {"frmFolderManager", "Directory Path"},
        {"frmFolderManager", "&OK"},
        {"frmFolderManager", "&Cancel"},
        {"frmBackup", "Click on the 'Save' button to save a backup copy of your client database file:"},
        {"frmBackup", "&Save"},
        {"frmBackup", "&Cancel"},
        {"Form3", "Car 3 + 4"},
        {"Form3", "Car 5 + 6"},
        {"Form3", "P11D (b)"},
    };
    for (const auto& [screen, text] : cases)
        EXPECT_TRUE(Reads(screen, text)) << screen << ": " << text;
    EXPECT_FALSE(Reads("Form3", "PAYE reference of nobody"));
}

TEST_F(FixedWords, StandOverAndUnderTheColumnsOfEveryNotepad)
{
    for (const NotepadMember& member : Notepads()) {
        for (const ScheduleColumn& column : member.columns) {
            if (column.Exists()) {
                EXPECT_TRUE(Reads(member.name, Trim(column.caption))) << member.name << ": " << column.caption;
            }
        }
        EXPECT_TRUE(Reads(member.name, "TOTALS")) << member.name;
        for (const std::string_view button : {"&OK", "&Delete", "&Cancel"})
            EXPECT_TRUE(Reads(member.name, button)) << member.name << ": " << button;
    }
}

} // namespace
} // namespace quillmere
