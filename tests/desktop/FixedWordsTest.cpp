// The words that a window draws or labels once and for all, as the user reads them.
#include "app/Program.h"
#include "desktop/layouts/Layout.h"
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
        const auto made = program.TheSession().screens.Make(screen);
        return std::ranges::any_of(layout.placed, [&](const Layout::Placed& placed) {
            const Box* box = made->FindBox(placed.box, placed.index);
            return box != nullptr && box->Text() == text;
        });
    }

    test::ScriptedDoor door;
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

/// A caption stands in the line of its box, to the left of it.
TEST_F(FixedWords, StandBesideEveryBoxOfTheCalculators)
{
    struct {
        std::string_view screen, box, caption;
        int index = Box::NoIndex;
    } const cases[] = {
        {"GNotepad", "VanRegNumber", "Registration Number"},
        {"GNotepad", "ABox", "Standard charge for this van for the whole of 2010-11"},
        {"GNotepad", "BBox", "Days for which the van was unavailable"},
        {"GNotepad", "EBox", "Total Days for which the van was unavailable"},
        {"GNotepad", "EBox", "B + C + D"},
        {"GNotepad", "FBox", "Reduction for unavailability (round up to nearest whole number)"},
        {"GNotepad", "GBox", "Van benefit charge after reduction for unavailability"},
        {"GNotepad", "GBox", "A minus F"},
        {"GNotepad", "HBox", "Percentage reduction"},
        {"GNotepad", "JBox", "Reduction for sharing (rounded up to next whole number)"},
        {"GNotepad", "JBox", "G x H"},
        {"GNotepad", "KBox", "Van benefit charge after reduction for sharing"},
        {"GNotepad", "KBox", "G minus J"},
        {"GNotepad", "LBox",
         "Enter any payments the employee was required to, and did, make for private use of this van in the year"},
        {"GNotepad", "MBox", "Van benefit charge for this van in 2010-11"},
        {"GNotepad", "MBox", "K minus L"},
        {"GNotepad", "PBox", "Fuel Benefit charge for the whole tax year"},
        {"GNotepad", "DateWithdrawn", "Date the provision of fuel was withdrawn (if applicable)"},
        {"GNotepad", "RBox", "Additional days after fuel was withdrawn not already counted in box E"},
        {"GNotepad", "SBox", "Total days for which no fuel benefit applies"},
        {"GNotepad", "SBox", "E + R"},
        {"GNotepad", "TBox", "Reduction round up to next whole number"},
        {"GNotepad", "VBox", "Van fuel benefit charge after reduction for unavailability"},
        {"GNotepad", "VBox", "P minus T"},
        {"GNotepad", "WBox", "Reduction for sharing of this van"},
        {"GNotepad", "WBox", "V x H"},
        {"GNotepad", "XBox", "Van Fuel Benefit charge for this van in 2010-11"},
        {"GNotepad", "XBox", "V minus W"},
        {"HNotepad", "Currency", "Currency", 1},
        {"HNotepad", "ABox", "Maximum balance on later of day loan was taken out, or 5 April 2010", 1},
        {"HNotepad", "BBox", "Maximum balance on earlier of day loan was discharged, or 5 April 2011", 1},
        {"HNotepad", "CBox", "Total ", 1},
        {"HNotepad", "DBox", "Divide Total by 2", 1},
        {"HNotepad", "EBox", "Number of complete tax months in tax year throughout which loan was owing", 1},
        {"HNotepad", "GBox", "Official rate of interest", 1},
        {"HNotepad", "JBox", "Enter interest paid in 2010-11", 1},
        {"HNotepad", "CashEq", "Cash equivalent of loans", 1},
        {"HNotepad", "MaxAmount", "Maximum amount outstanding at any time in the year", 1},
        {"HNotepad", "DateFrom", "Date loan was made in 2010-11 if applicable", 1},
        {"HNotepad", "DateTo", "Date loan was discharged in 2010-11 if applicable", 1},
        {"DNotepad", "Address1", "Address Line 1"},
        {"DNotepad", "Address5", "Address Line 5"},
        {"DNotepad", "AccommodationYTick", "Was the accommodation provided for a full tax year?"},
        {"DNotepad", "BasicChargeA",
         "Amount of rent paid for the year (or part of the year) by you or any other person at whose cost the "
         "accommodation is provided to the employee"},
        {"DNotepad", "BasicChargeB", "Enter the annual value (or part of the annual value) of the accommodation "},
        {"DNotepad", "BasicChargeC", "Greater of A and B"},
        {"DNotepad", "BasicChargeD",
         "Enter any amount made good to you by the employee for the living accommodation (If this amount is more than "
         "C, enter the amount at C here.)"},
        {"DNotepad", "BasicChargeE", "The figure at E is the cash equivalent of the basic charge.  Subtract D from C"},
        {"D2Notepad", "FBox", "Cost of accommodation (including the cost of improvements)"},
        {"D2Notepad", "GBox", "Payments made by the employee towards the cost or for the grant of tenancy"},
        {"D2Notepad", "HBox", "(F less G)"},
        {"D2Notepad", "JBox", "Excess of cost over £75,000 is H minus £75,000"},
        {"D2Notepad", "KBox", "Multilply J by 4.00% "},
        {"D2Notepad", "AddChargeDays",
         "If the accommodation was provided for part of the tax year only, enter the number of days it was provided "
         "here"},
        {"D2Notepad", "LBox", "Divide the number of days by 365 and multiply the result by K"},
        {"D2Notepad", "MBox", "Enter the rent paid by the employee for the accommodation"},
        {"D2Notepad", "NBox", "Enter any rent which you have included in box D"},
        {"D2Notepad", "PBox", "(M less N)"},
        {"D2Notepad", "QBox",
         "Subtract P from K (if the accommodation was provided throughout the tax year), or Subtract P from L (if the "
         "accommodation was provided for only part of the tax year)"},
        {"D2Notepad", "EBox", "Enter the amount shown in box E on the front of this form"},
        {"D2Notepad", "RBox", "Total of Q and E"},
        {"ENotepad", "ABox", "Mileage allowance payments made to employee in 2010-11"},
        {"ENotepad", "BBox", "Amounts from which tax has been deducted"},
        {"ENotepad", "CBox", "Net mileage allowance paid"},
        {"ENotepad", "CBox", "A - B"},
        {"ENotepad", "DBox", "Total business miles travelled by the employee in 2010-11"},
        {"ENotepad", "JBox", "Total approved mileage allowance payments"},
        {"ENotepad", "KBox", "Total of any passenger payments to the employee in 2010-11"},
        {"ENotepad", "LBox", "Number of business miles for which passenger payments made"},
        {"ENotepad", "MBox", "L x 5p"},
        {"ENotepad", "QBox", "Total taxable payments"},
        {"JNotepad", "ABox", "Gross amount of all expenses payments"},
        {"JNotepad", "EmployerCost", "The cost to you as an employer of any qualifying benefits"},
        {"JNotepad", "EmployeeCost", "Less anything paid towards the cost by the employee"},
        {"JNotepad", "BBox", "Amount of qualifying benefits"},
        {"JNotepad", "CBox", "Enter the cost of qualifying living accommodation provided"},
        {"JNotepad", "DBox", "Total of expenses and benefits "},
        {"JNotepad", "DBox", "A + B + C"},
        {"JNotepad", "QualExp", "Qualifying expenses and benefits incurred in 2009-2010"},
        {"JNotepad", "EBox", "Exempt amount for this employee"},
        {"JNotepad", "FBox", "D - E"},
    };
    for (const auto& wanted : cases) {
        const Layout& layout = LayoutOf(wanted.screen);
        const auto placed = std::ranges::find_if(layout.placed, [&](const Layout::Placed& place) {
            return place.box == wanted.box && place.index == wanted.index;
        });
        ASSERT_NE(placed, layout.placed.end()) << wanted.screen << "." << wanted.box;
        const int middle = placed->y + placed->height / 2;
        EXPECT_TRUE(std::ranges::any_of(layout.drawn,
                                        [&](const Layout::Drawn& drawn) {
                                            return drawn.text == wanted.caption && drawn.x + drawn.width <= placed->x &&
                                                   drawn.y <= middle && drawn.y + drawn.height >= middle;
                                        }))
            << wanted.screen << "." << wanted.box << ": " << wanted.caption;
    }
}

} // namespace
} // namespace quillmere
