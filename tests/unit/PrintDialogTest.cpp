// Choosing copies and pages for the printer.
#include "printing/jobs/PrintPasses.h"
#include "printing/paper/PageList.h"
#include "support/Enter.h"
#include "support/PreviewRoom.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>

namespace quillmere {
namespace {

using Pages = std::vector<int>;
using test::Enter;

struct Room : test::PreviewRoom<test::ScriptedDoor> {
    Room() { door.printers = {"Office", "Attic"}; }

    void Choose(Screen& screen, std::string_view option, int index) { screen.Click(screen.box(option, index)); }
    void Press(Screen& screen) { screen.Click(screen.box("cmdPrint")); }
    /// The only request that the printer got.
    const PrintRequest& Printed()
    {
        EXPECT_EQ(door.printed.size(), 1U);
        return door.printed.back();
    }
    bool IsOpen() const { return session.screens.IsShown("frmVSPrintDialog"); }
};

// ---- page lists of the passes

struct PassCase {
    ManualDuplex pass;
    int pages;
    bool reverse;
    std::optional<std::string> list;
};

TEST(PrintPassesTest, ThePassesOfADocument)
{
    using enum ManualDuplex;
    for (const PassCase& one : std::vector<PassCase>{
             {OddPagesOnly, 5, false, "1,3,5"},
             {EvenPagesOnly, 5, false, "2,4"},
             {OddPagesOnly, 5, true, "1,3,5"},
             {EvenPagesOnly, 5, true, "2,4"},
             {OddPagesOnly, 4, false, "1,3"},
             {EvenPagesOnly, 4, false, "2,4"},
             {OddPagesOnly, 4, true, "2,4"},
             {EvenPagesOnly, 4, true, "1,3"},
             {OddPagesOnly, 12, false, "1,3,5,7,9,11"},
             {EvenPagesOnly, 1, false, ""},
             {AllPages, 5, false, std::nullopt},
             {AllPages, 4, true, std::nullopt},
         })
        EXPECT_EQ(PageListOf(one.pass, one.pages, one.reverse), one.list);
}

RC_GTEST_PROP(PrintPassesTest, TheTwoPassesPrintEveryPageOnce, (bool reverse))
{
    const int count = *rc::gen::inRange(2, 200);
    Pages pages = ReadPageList(*PageListOf(ManualDuplex::OddPagesOnly, count, reverse), count);
    const Pages even = ReadPageList(*PageListOf(ManualDuplex::EvenPagesOnly, count, reverse), count);
    pages.insert(pages.end(), even.begin(), even.end());
    std::ranges::sort(pages);
    Pages all(static_cast<std::size_t>(count));
    std::iota(all.begin(), all.end(), 1);
    RC_ASSERT(pages == all);
}

// ---- the dialog

TEST(PrintDialogTest, OpensOnOneCopyOfAllPagesAndShowsThePrinter)
{
    Room room;
    const Screen& dialog = room.Dialog(room.Preview(5));
    EXPECT_EQ(dialog.Caption(), "Office");
    EXPECT_EQ(dialog.box("txtCopies").Text(), "1");
    EXPECT_TRUE(dialog.box("optRange", 0).Ticked());
    EXPECT_TRUE(dialog.box("optDuplex", 0).Ticked());
    EXPECT_TRUE(dialog.box("fraDuplex").Enabled());
    EXPECT_TRUE(dialog.box("optDuplex", 2).Enabled());
    EXPECT_FALSE(dialog.box("txtPageNumbers").Enabled());
}

TEST(PrintDialogTest, ADocumentOfOnePageLeavesNothingToChoose)
{
    Room room;
    const Screen& dialog = room.Dialog(room.Preview(1));
    EXPECT_TRUE(dialog.box("optRange", 0).Ticked());
    EXPECT_TRUE(dialog.box("optRange", 0).Enabled());
    EXPECT_FALSE(dialog.box("optRange", 1).Enabled());
    EXPECT_FALSE(dialog.box("optRange", 2).Enabled());
    EXPECT_FALSE(dialog.box("fraDuplex").Enabled());
}

TEST(PrintDialogTest, ManualDuplexGoesWithAllPagesOnly)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(5));
    room.Choose(dialog, "optDuplex", 2);
    room.Choose(dialog, "optRange", 1);
    EXPECT_FALSE(dialog.box("fraDuplex").Enabled());
    EXPECT_TRUE(dialog.box("optDuplex", 0).Ticked());
    EXPECT_FALSE(dialog.box("optDuplex", 2).Ticked());
    EXPECT_FALSE(dialog.box("txtPageNumbers").Enabled());
    room.Choose(dialog, "optRange", 2);
    EXPECT_FALSE(dialog.box("fraDuplex").Enabled());
    EXPECT_TRUE(dialog.box("txtPageNumbers").Enabled());
    room.Choose(dialog, "optRange", 0);
    EXPECT_TRUE(dialog.box("fraDuplex").Enabled());
    EXPECT_FALSE(dialog.box("txtPageNumbers").Enabled());
}

TEST(PrintDialogTest, CopiesBelowOneBecomeOne)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(2));
    Box& copies = dialog.box("txtCopies");
    for (const std::string_view few : {"0", "", "00", "-5"}) {
        Enter(dialog, copies, few);
        EXPECT_EQ(copies.Text(), few == "-5" ? "5" : "1") << few;
    }
    Enter(dialog, copies, "12");
    EXPECT_EQ(copies.Text(), "12");
}

TEST(PrintDialogTest, MoreCopiesThanAnybodyWantsBecome999)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(2));
    Box& copies = dialog.box("txtCopies");
    for (const std::string_view many : {"1000", "99999999999"}) {
        Enter(dialog, copies, many);
        EXPECT_EQ(copies.Text(), "999") << many;
    }
    copies.SetText("99999999999"); // still being typed in
    room.Press(dialog);
    EXPECT_EQ(room.Printed().copies, 999);
}

TEST(PrintDialogTest, PageNumbersTakeDigitsCommasAndDashes)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(2));
    Box& numbers = dialog.box("txtPageNumbers");
    Enter(dialog, numbers, "1, 3;a5-1.2");
    EXPECT_EQ(numbers.Text(), "1,35-12");
    EXPECT_EQ(room.door.beeps, 4);
}

TEST(PrintDialogTest, AllPagesGoOnceWithTheirCopies)
{
    Room room;
    Screen& dialog = room.Dialog(room.Preview(3));
    Enter(dialog, dialog.box("txtCopies"), "4");
    room.Press(dialog);
    EXPECT_EQ(room.Printed().pages, (Pages{1, 2, 3}));
    EXPECT_EQ(room.Printed().copies, 4);
    EXPECT_EQ(room.Printed().printer, "Office");
    EXPECT_EQ(room.Printed().documentName, "Acme Ltd - Jane Smith");
    EXPECT_FALSE(room.IsOpen());
    EXPECT_TRUE(room.session.screens.IsShown("frmVSPrint"));
    EXPECT_TRUE(room.door.messages.empty());
}

struct PrintCase {
    int pages;
    bool reverse;
    int range, duplex;
    std::string_view list;
    Pages printed;
};

TEST(PrintDialogTest, SendsTheChosenPagesInTheChosenOrder)
{
    for (const PrintCase& one : std::vector<PrintCase>{
             {5, false, 0, 1, "", {1, 3, 5}},
             {5, false, 0, 2, "", {2, 4}},
             {5, true, 0, 0, "", {5, 4, 3, 2, 1}},
             {5, true, 0, 1, "", {5, 3, 1}},
             {5, true, 0, 2, "", {4, 2}},
             {4, true, 0, 1, "", {4, 2}},
             {4, true, 0, 2, "", {3, 1}},
             {5, false, 1, 0, "", {2}},
             {5, true, 1, 0, "", {2}},
             {12, false, 2, 0, "1,3,5-12", {1, 3, 5, 6, 7, 8, 9, 10, 11, 12}},
             {5, false, 2, 0, "4,1", {4, 1}},
             {5, true, 2, 0, "4,1", {1, 4}},
             {5, false, 2, 0, "4-9", {4, 5}},
         }) {
        Room room;
        room.session.settings.reportReverse = one.reverse;
        frmVSPrint& preview = room.Preview(one.pages);
        preview.TurnTo(2);
        Screen& dialog = room.Dialog(preview);
        room.Choose(dialog, "optRange", one.range);
        room.Choose(dialog, "optDuplex", one.duplex);
        dialog.box("txtPageNumbers").SetText(one.list);
        room.Press(dialog);
        EXPECT_EQ(room.Printed().pages, one.printed);
    }
}

TEST(PrintDialogTest, AnEmptyOrSenselessListPrintsNothingAndSaysSo)
{
    for (const std::string_view list : {"", ",", "-", "9", "3-1", "0", "1-", "1,x"}) {
        Room room;
        Screen& dialog = room.Dialog(room.Preview(5));
        room.Choose(dialog, "optRange", 2);
        dialog.box("txtPageNumbers").SetText(list);
        room.Press(dialog);
        EXPECT_TRUE(room.door.printed.empty()) << list;
        EXPECT_EQ(room.door.TakeText(), "The page numbers name no page of this document.\nNothing has been printed.");
        EXPECT_TRUE(room.IsOpen()) << "the list can be mended";
    }
}

TEST(PrintDialogTest, APreviewOfNothingPrintsNothingAndSaysSo)
{
    Room room;
    Screen& dialog = room.Dialog(*room.session.screens.Show("frmVSPrint"));
    room.Press(dialog);
    EXPECT_TRUE(room.door.printed.empty());
    EXPECT_EQ(room.door.TakeText(), "The document has no pages to print.");
}

TEST(PrintDialogTest, APrinterThatCannotBeReachedIsNamed)
{
    Room room;
    room.door.printOutcome = PrintOutcome::PrinterUnreachable;
    Screen& dialog = room.Dialog(room.Preview(2));
    room.Press(dialog);
    EXPECT_EQ(room.door.TakeText(), "An error occurred while attempting to access the following printer:\n\nOffice\n\n"
                                    "Make sure this printer is available and properly set up.");
    EXPECT_FALSE(room.door.busy);
}

TEST(PrintDialogTest, WithNoPrinterAtAllItSaysSo)
{
    Room room;
    room.door.printers.clear();
    Screen& dialog = room.Dialog(room.Preview(2));
    EXPECT_EQ(dialog.Caption(), "Print Dialog");
    room.Press(dialog);
    EXPECT_TRUE(room.door.printed.empty());
    EXPECT_EQ(room.door.TakeText(), "There is no printer available");
}

TEST(PrintDialogTest, APrintingSystemThatIsNotReadyInTimeAbandonsTheJob)
{
    Room room;
    room.door.printOutcome = PrintOutcome::NotReady;
    Screen& dialog = room.Dialog(room.Preview(2));
    room.Press(dialog);
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_EQ(room.door.messages.back().title, "Printing Process");
    EXPECT_EQ(room.door.TakeText(), "The printing system is not ready.\nThe print job has been abandoned.");
    EXPECT_FALSE(room.IsOpen());
}

TEST(PrintDialogTest, SidesAreLeftToThePrinterUnlessTheSettingsSay)
{
    for (const int mode : {0, 1, 2}) {
        Room room;
        room.session.settings.vsDuplexMode = mode;
        Screen& dialog = room.Dialog(room.Preview(2));
        room.Press(dialog);
        EXPECT_EQ(room.Printed().duplex, mode);
    }
}

} // namespace
} // namespace quillmere
