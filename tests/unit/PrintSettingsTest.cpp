// "Report Settings".
#include "support/Enter.h"
#include "support/PreviewRoom.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

using test::Enter;

struct Room : test::PreviewRoom<test::ScriptedDoor> {
    Room() { door.printers = {"Office", "Attic"}; }
    void Close() { session.screens.Unload("frmVSPrintSettings"); }
};

/// What every control of the screen shows, one a line.
std::string Shown(const Screen& screen)
{
    std::string text;
    for (const auto& box : screen.Boxes()) {
        if (box->Kind() == BoxKind::Text || box->Kind() == BoxKind::DropDown)
            text += box->FullName() + "=" + box->Text() + "\n";
        else if ((box->Kind() == BoxKind::Option || box->Kind() == BoxKind::Tick) && box->Ticked())
            text += box->FullName() + "\n";
    }
    return text;
}

constexpr std::string_view Defaults = "cmbPrinter=Office\n"
                                      "txtVSTop=0\ntxtVSLeft=0\ntxtVSScale=100\noptDuplexMode(0)\n"
                                      "txtPDFTop=0\ntxtPDFLeft=0\ntxtPDFScale=100\noptFile(0)\ntxtFile=2011 Quillmere\n"
                                      "txtAlignMethod=0\ntxtAlignV=0\ntxtAlignH=0\n"
                                      "optFont(0)\noptPreview(0)\noptSection(0)\noptTicks(0)\n"
                                      "chkShading\ntxtBlack=0\ntxtDark=200\ntxtLight=225\ntxtWhite=255\n";

Settings Unusual()
{
    Settings settings;
    settings.vsPrinter = "Attic";
    settings.vsTop = 1.5;
    settings.vsLeft = 2.25;
    settings.vsScale = 97.5;
    settings.vsDuplexMode = 2;
    settings.vsPdfTop = 3;
    settings.vsPdfLeft = 4;
    settings.vsPdfScale = 120;
    settings.vsPdfFileOption = 1;
    settings.vsPdfFileName = "77";
    settings.reportPadding = true;
    settings.vsAlignTextMethod = 2;
    settings.vsAlignTextY = 0.5;
    settings.vsAlignTextX = 6;
    settings.reportFont = "Times New Roman";
    settings.reportPreview = 1;
    settings.vsSection = 1;
    settings.reportTicks = 2;
    settings.reportShading = false;
    settings.vsBlack = 10;
    settings.vsDark = 20;
    settings.vsLight = 30;
    settings.vsWhite = 40;
    return settings;
}

constexpr std::string_view UnusualShown = "cmbPrinter=Attic\n"
                                          "txtVSTop=1.5\ntxtVSLeft=2.25\ntxtVSScale=97.5\noptDuplexMode(2)\n"
                                          "txtPDFTop=3\ntxtPDFLeft=4\ntxtPDFScale=120\noptFile(1)\ntxtFile=77\n"
                                          "chkDuplexPadding\ntxtAlignMethod=2\ntxtAlignV=0.5\ntxtAlignH=6\n"
                                          "optFont(1)\noptPreview(1)\noptSection(1)\noptTicks(2)\n"
                                          "txtBlack=10\ntxtDark=20\ntxtLight=30\ntxtWhite=40\n";

TEST(PrintSettingsTest, EachControlShowsItsSettingAndStoresIt)
{
    Room room;
    room.session.settings = Unusual();
    EXPECT_EQ(Shown(room.Settings()), UnusualShown);
    room.Close();
    EXPECT_EQ(Shown(room.Settings()), UnusualShown);
    const Settings& settings = room.session.settings;
    const Settings expected = Unusual();
    EXPECT_EQ(settings.vsPrinter, expected.vsPrinter);
    EXPECT_EQ(settings.vsTop, expected.vsTop);
    EXPECT_EQ(settings.vsLeft, expected.vsLeft);
    EXPECT_EQ(settings.vsScale, expected.vsScale);
    EXPECT_EQ(settings.vsDuplexMode, expected.vsDuplexMode);
    EXPECT_EQ(settings.vsPdfTop, expected.vsPdfTop);
    EXPECT_EQ(settings.vsPdfLeft, expected.vsPdfLeft);
    EXPECT_EQ(settings.vsPdfScale, expected.vsPdfScale);
    EXPECT_EQ(settings.vsPdfFileOption, expected.vsPdfFileOption);
    EXPECT_EQ(settings.vsPdfFileName, expected.vsPdfFileName);
    EXPECT_EQ(settings.reportPadding, expected.reportPadding);
    EXPECT_EQ(settings.vsAlignTextMethod, expected.vsAlignTextMethod);
    EXPECT_EQ(settings.vsAlignTextY, expected.vsAlignTextY);
    EXPECT_EQ(settings.vsAlignTextX, expected.vsAlignTextX);
    EXPECT_EQ(settings.reportFont, expected.reportFont);
    EXPECT_EQ(settings.reportPreview, expected.reportPreview);
    EXPECT_EQ(settings.vsSection, expected.vsSection);
    EXPECT_EQ(settings.reportTicks, expected.reportTicks);
    EXPECT_EQ(settings.reportShading, expected.reportShading);
    EXPECT_EQ(settings.vsBlack, expected.vsBlack);
    EXPECT_EQ(settings.vsDark, expected.vsDark);
    EXPECT_EQ(settings.vsLight, expected.vsLight);
    EXPECT_EQ(settings.vsWhite, expected.vsWhite);
}

TEST(PrintSettingsTest, EachTabShowsItsPageAlone)
{
    Room room;
    Screen& screen = room.Settings();
    const auto pages = [&screen] {
        std::string shown;
        for (int page = 1; page <= 3; ++page)
            shown += screen.box("picSettings", page).Visible() ? "x" : "-";
        return shown;
    };
    EXPECT_EQ(pages(), "x--");
    screen.Choose(screen.box("tbsSettings"), 2);
    EXPECT_EQ(pages(), "--x");
    screen.Choose(screen.box("tbsSettings"), 1);
    EXPECT_EQ(pages(), "-x-");
}

TEST(PrintSettingsTest, EveryTextBoxTakesDigitsAndAPointOnly)
{
    Room room;
    Screen& screen = room.Settings();
    int boxes = 0;
    for (const auto& box : screen.Boxes()) {
        if (box->Kind() != BoxKind::Text)
            continue;
        ++boxes;
        for (const char32_t key : U"x-,( ")
            EXPECT_EQ(key == 0 ? 0U : screen.Key(*box, key), 0U) << box->FullName();
        EXPECT_EQ(screen.Key(*box, U'7'), U'7');
        EXPECT_EQ(screen.Key(*box, U'.'), U'.');
    }
    EXPECT_EQ(boxes, 14);
}

TEST(PrintSettingsTest, NumbersAreFormattedAnewWhenTheirBoxIsLeft)
{
    Room room;
    Screen& screen = room.Settings();
    Enter(screen, screen.box("txtVSTop"), "007.50");
    EXPECT_EQ(screen.box("txtVSTop").Text(), "7.5");
    Enter(screen, screen.box("txtPDFLeft"), ".5.2");
    EXPECT_EQ(screen.box("txtPDFLeft").Text(), "0.5");
    Enter(screen, screen.box("txtBlack"), "12.4");
    EXPECT_EQ(screen.box("txtBlack").Text(), "12");
    Enter(screen, screen.box("txtVSScale"), "");
    EXPECT_EQ(screen.box("txtVSScale").Text(), "0");
}

TEST(PrintSettingsTest, AnEmptyScaleStoresZero)
{
    Room room;
    Screen& screen = room.Settings();
    screen.box("txtVSScale").Clear(); // still being typed in
    screen.RequestClose();
    EXPECT_FALSE(room.session.screens.IsShown("frmVSPrintSettings"));
    EXPECT_EQ(room.session.settings.vsScale, 0);
}

TEST(PrintSettingsTest, DefaultsAskAndNoIsWhatEnterPresses)
{
    Room room;
    room.session.settings = Unusual();
    Screen& screen = room.Settings();
    screen.Click(screen.box("cmdDefaults"));
    ASSERT_EQ(room.door.messages.size(), 1U);
    const Message& question = room.door.messages.front();
    EXPECT_EQ(question.title, "Report Settings");
    EXPECT_EQ(question.text, "All current Report Settings will be replaced with their defaults.\n\n"
                             "Do you wish to proceed?");
    EXPECT_EQ(question.buttons, Buttons::YesNo);
    EXPECT_EQ(question.defaultAnswer, Answer::No);
    EXPECT_EQ(Shown(screen), UnusualShown);
}

TEST(PrintSettingsTest, DefaultsSetTheControlsAndOnlyClosingTheSettings)
{
    Room room;
    room.session.settings = Unusual();
    Screen& screen = room.Settings();
    room.door.answers = {Answer::Yes};
    screen.Click(screen.box("cmdDefaults"));
    EXPECT_EQ(Shown(screen), Defaults);
    EXPECT_EQ(room.session.settings.vsScale, 97.5);
    room.Close();
    EXPECT_EQ(room.session.settings.vsScale, 100);
    EXPECT_EQ(room.session.settings.reportFont, "Arial");
    EXPECT_EQ(room.session.settings.vsPrinter, "Office");
}

TEST(PrintSettingsTest, NoPrinterIsChosenBeforeOneIsSettled)
{
    Room room;
    const Screen& screen = room.Settings();
    EXPECT_EQ(screen.box("cmbPrinter").Entries(), (std::vector<std::string>{"Office", "Attic"}));
    EXPECT_EQ(screen.box("cmbPrinter").Selected(), -1);
    room.Close();
    EXPECT_EQ(room.session.settings.vsPrinter, "");
}

TEST(PrintSettingsTest, AChosenPrinterThatIsNotListedIsNotForgottenByLookingAtThem)
{
    Room room;
    room.session.settings.vsPrinter = "Away";
    Screen& screen = room.Settings();
    EXPECT_EQ(screen.box("cmbPrinter").Text(), "");
    screen.Click(screen.box("cmdSetup"));
    room.Close();
    EXPECT_EQ(room.session.settings.vsPrinter, "Away");

    // Another one takes its place once it is chosen, and so does the default one.
    Screen& again = room.Settings();
    again.Choose(again.box("cmbPrinter"), 1);
    room.Close();
    EXPECT_EQ(room.session.settings.vsPrinter, "Attic");
    room.session.settings.vsPrinter = "Away";
    room.door.printers.clear();
    room.door.answers = {Answer::Yes};
    Screen& third = room.Settings();
    third.Click(third.box("cmdDefaults"));
    room.Close();
    EXPECT_EQ(room.session.settings.vsPrinter, "");
}

TEST(PrintSettingsTest, AValueWithoutAnOptionStaysUntilOneIsChosen)
{
    Room room;
    Settings& settings = room.session.settings;
    const auto give = [&settings] {
        settings.vsDuplexMode = 7;
        settings.vsPdfFileOption = 8;
        settings.reportPreview = 9;
        settings.vsSection = 10;
    };
    give();
    EXPECT_EQ(Shown(room.Settings()).find("optPreview"), std::string::npos);
    room.Close();
    EXPECT_EQ(settings.vsDuplexMode, 7);
    EXPECT_EQ(settings.vsPdfFileOption, 8);
    EXPECT_EQ(settings.reportPreview, 9);
    EXPECT_EQ(settings.vsSection, 10);

    Screen& screen = room.Settings();
    screen.Click(screen.box("optSection", 1));
    room.Close();
    EXPECT_EQ(settings.vsSection, 1);
    EXPECT_EQ(settings.reportPreview, 9);
}

TEST(PrintSettingsTest, TheTicksAreBlankOrNormal)
{
    for (const auto& [before, after] : {std::pair(0, 0), std::pair(1, 0), std::pair(2, 2)}) {
        Room room;
        room.session.settings.reportTicks = before;
        room.Settings();
        room.Close();
        EXPECT_EQ(room.session.settings.reportTicks, after);
    }
}

TEST(PrintSettingsTest, ClosingThemClosesThePreviewToo)
{
    Room room;
    room.Preview(2);
    room.Settings();
    room.Close();
    EXPECT_EQ(room.session.screens.Find("frmVSPrint"), nullptr);
}

} // namespace
} // namespace quillmere
