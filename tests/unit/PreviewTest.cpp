// The preview and the places of its sheets.
#include "support/PreviewRoom.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

#include <array>

namespace quillmere {
namespace {

using Room = test::PreviewRoom<test::ScriptedDoor>;
using Command = frmVSPrint::Command;

constexpr auto PageButtons = std::to_array<std::string_view>({"cmdFirst", "cmdPrevious", "cmdNext", "cmdLast"});

/// "--nl" for a first page: which of the four page buttons are enabled.
std::string ButtonsOf(const Screen& preview)
{
    std::string states;
    for (const std::string_view name : PageButtons)
        states += preview.box(name).Enabled() ? std::string(1, "fpnl"[states.size()]) : "-";
    return states;
}

TEST(PreviewTest, OpensOnTheFirstPageAsWideAsTheWindow)
{
    Room room;
    const frmVSPrint& preview = room.Preview(5);
    EXPECT_EQ(preview.Caption(), "Print Preview");
    EXPECT_EQ(preview.box("lblDocument").Text(), "Acme Ltd - Jane Smith");
    EXPECT_EQ(preview.box("lblPage").Text(), "1 of 5");
    EXPECT_EQ(preview.box("cmbPercent").Text(), "75%");
    EXPECT_FALSE(preview.box("cmbPercent").Enabled());
    EXPECT_EQ(preview.box("cmbZoomMode").Text(), "PageWidth");
    EXPECT_EQ(preview.box("cmbPrint").Text(), "Normal");
}

TEST(PreviewTest, ListsItsChoicesInTheirOrder)
{
    Room room;
    const frmVSPrint& preview = room.Preview(1);
    using Entries = std::vector<std::string>;
    EXPECT_EQ(preview.box("cmbPrint").Entries(), (Entries{"Normal", "Reverse"}));
    EXPECT_EQ(preview.box("cmbZoomMode").Entries(),
              (Entries{"Percentage", "Thumbnail", "TwoPages", "WholePage", "PageWidth", "Stretch"}));
    EXPECT_EQ(preview.box("cmbPercent").Entries(), (Entries{"25%", "50%", "75%", "100%", "150%", "200%", "400%"}));
}

TEST(PreviewTest, ItsPageButtonsStopAtTheEnds)
{
    Room room;
    frmVSPrint& preview = room.Preview(3);
    EXPECT_EQ(ButtonsOf(preview), "--nl");
    preview.Click(preview.box("cmdNext"));
    EXPECT_EQ(preview.box("lblPage").Text(), "2 of 3");
    EXPECT_EQ(ButtonsOf(preview), "fpnl");
    preview.Click(preview.box("cmdLast"));
    EXPECT_EQ(preview.box("lblPage").Text(), "3 of 3");
    EXPECT_EQ(ButtonsOf(preview), "fp--");
    preview.Click(preview.box("cmdPrevious"));
    EXPECT_EQ(preview.box("lblPage").Text(), "2 of 3");
    preview.Click(preview.box("cmdFirst"));
    EXPECT_EQ(preview.box("lblPage").Text(), "1 of 3");
}

TEST(PreviewTest, ADocumentOfOnePageDisablesAllPageButtons)
{
    Room room;
    EXPECT_EQ(ButtonsOf(room.Preview(1)), "----");
}

TEST(PreviewTest, APreviewOfNothingHasNoPages)
{
    Room room;
    const Screen& preview = *room.session.screens.Show("frmVSPrint");
    EXPECT_EQ(preview.box("lblPage").Text(), "0 of 0");
    EXPECT_EQ(ButtonsOf(preview), "----");
    EXPECT_TRUE(PlaceSheets(static_cast<const frmVSPrint&>(preview).View()).sheets.empty());
}

TEST(PreviewTest, ItsKeysTurnPagesAndStopAtTheEnds)
{
    Room room;
    frmVSPrint& preview = room.Preview(3);
    const auto after = [&preview](Command command) {
        preview.Execute(command);
        return preview.box("lblPage").Text();
    };
    EXPECT_EQ(after(Command::PreviousPage), "1 of 3");
    EXPECT_EQ(after(Command::NextPage), "2 of 3");
    EXPECT_EQ(after(Command::LastPage), "3 of 3");
    EXPECT_EQ(after(Command::NextPage), "3 of 3");
    EXPECT_EQ(after(Command::FirstPage), "1 of 3");
    preview.Execute(Command::Print);
    EXPECT_TRUE(room.session.screens.IsShown("frmVSPrintDialog"));
}

TEST(PreviewTest, OnlyThePercentageModeEnablesThePercentages)
{
    Room room;
    frmVSPrint& preview = room.Preview(2);
    for (int mode = 0; mode < 6; ++mode) {
        preview.Choose(preview.box("cmbZoomMode"), mode);
        EXPECT_EQ(preview.box("cmbPercent").Enabled(), mode == 0) << mode;
    }
}

TEST(PreviewTest, PlusAndMinusGoToTheNextPercentageFromTheSizeShown)
{
    Room room;
    frmVSPrint& preview = room.Preview(2);
    preview.SurfaceSized(1300, 640);
    preview.Choose(preview.box("cmbZoomMode"), static_cast<int>(ZoomMode::WholePage)); // at about 55%
    preview.Execute(Command::ZoomIn);
    EXPECT_EQ(preview.box("cmbZoomMode").Text(), "Percentage");
    EXPECT_TRUE(preview.box("cmbPercent").Enabled());
    EXPECT_EQ(preview.box("cmbPercent").Text(), "75%");
    preview.Execute(Command::ZoomIn);
    EXPECT_EQ(preview.box("cmbPercent").Text(), "100%");
    preview.Execute(Command::ZoomOut);
    preview.Execute(Command::ZoomOut);
    EXPECT_EQ(preview.box("cmbPercent").Text(), "50%");
    for (int step = 0; step < 10; ++step)
        preview.Execute(Command::ZoomOut);
    EXPECT_EQ(preview.box("cmbPercent").Text(), "25%");
    for (int step = 0; step < 10; ++step)
        preview.Execute(Command::ZoomIn);
    EXPECT_EQ(preview.box("cmbPercent").Text(), "400%");
}

TEST(PreviewTest, ClosingKeepsPlaceAndPageOrder)
{
    Room room;
    room.session.settings.reportReverse = true;
    frmVSPrint& preview = room.Preview(2);
    EXPECT_EQ(preview.box("cmbPrint").Text(), "Reverse");
    ASSERT_TRUE(preview.Placement().has_value());
    EXPECT_TRUE(preview.Placement()->maximised);
    EXPECT_EQ(preview.Placement()->width, 1366);
    preview.SetPlacement({.maximised = false, .top = 11, .left = 22, .height = 333, .width = 444});
    preview.Choose(preview.box("cmbPrint"), 0);
    preview.RequestClose();
    EXPECT_FALSE(room.session.screens.IsShown("frmVSPrint"));
    const Settings& settings = room.session.settings;
    EXPECT_FALSE(settings.reportReverse);
    EXPECT_FALSE(settings.vsPreviewMaximised);
    EXPECT_EQ(settings.vsPreviewTop, 11);
    EXPECT_EQ(settings.vsPreviewLeft, 22);
    EXPECT_EQ(settings.vsPreviewHeight, 333);
    EXPECT_EQ(settings.vsPreviewWidth, 444);
}

TEST(PreviewTest, ThePointerGoesBackToNormalWhenTheWindowHasBeenPainted)
{
    Room room;
    frmVSPrint& preview = room.Preview(2);
    room.door.SetBusyPointer(true);
    preview.Painted();
    EXPECT_FALSE(room.door.busy);
}

// ---- sheets

PreviewView ViewOf(ZoomMode mode, int page = 1, int pages = 5)
{
    return {.mode = mode, .percent = 100, .page = page, .pageCount = pages, .width = 1300, .height = 640};
}

std::vector<int> PagesIn(const PreviewView& view)
{
    std::vector<int> pages;
    for (const PreviewSheet& sheet : PlaceSheets(view).sheets)
        pages.push_back(sheet.page);
    return pages;
}

TEST(PreviewPagesTest, EachModeShowsItsPages)
{
    using Pages = std::vector<int>;
    for (const ZoomMode single : {ZoomMode::Percentage, ZoomMode::WholePage, ZoomMode::PageWidth, ZoomMode::Stretch})
        EXPECT_EQ(PagesIn(ViewOf(single, 4)), (Pages{4}));
    EXPECT_EQ(PagesIn(ViewOf(ZoomMode::TwoPages, 2)), (Pages{2, 3}));
    EXPECT_EQ(PagesIn(ViewOf(ZoomMode::TwoPages, 5)), (Pages{5}));
    EXPECT_EQ(PagesIn(ViewOf(ZoomMode::Thumbnail, 4)), (Pages{1, 2, 3, 4, 5}));
}

TEST(PreviewPagesTest, APercentageIsOfTheTrueSize)
{
    PreviewView view = ViewOf(ZoomMode::Percentage);
    const PreviewSheet whole = PlaceSheets(view).sheets.front();
    EXPECT_NEAR(whole.width, 210 / 25.4 * 96, 0.1);
    EXPECT_NEAR(whole.height, 297 / 25.4 * 96, 0.1);
    view.percent = 25;
    EXPECT_NEAR(PlaceSheets(view).sheets.front().width, whole.width / 4, 1e-9);
    EXPECT_NEAR(PercentOf(view), 25, 1e-9);
}

TEST(PreviewPagesTest, SheetsKeepTheirShapeUnlessStretchedAndFitTheirMode)
{
    const double shape = SheetHeight / SheetWidth;
    for (const ZoomMode mode : {ZoomMode::Thumbnail, ZoomMode::TwoPages, ZoomMode::WholePage, ZoomMode::PageWidth}) {
        const PreviewPicture picture = PlaceSheets(ViewOf(mode));
        EXPECT_NEAR(picture.sheets.front().height / picture.sheets.front().width, shape, 1e-9);
        EXPECT_LE(picture.width, 1300.001);
        EXPECT_EQ(picture.height > 640.001, mode == ZoomMode::PageWidth);
    }
    const PreviewPicture stretched = PlaceSheets(ViewOf(ZoomMode::Stretch));
    EXPECT_NEAR(stretched.width, 1300, 1e-9);
    EXPECT_NEAR(stretched.height, 640, 1e-9);
}

TEST(PreviewPagesTest, ThumbnailsFillTheirLines)
{
    const PreviewPicture picture = PlaceSheets(ViewOf(ZoomMode::Thumbnail, 1, 20));
    EXPECT_EQ(picture.sheets[0].y, picture.sheets[6].y);
    EXPECT_LT(picture.sheets[0].x, picture.sheets[6].x);
    EXPECT_GT(picture.sheets[19].y, picture.sheets[0].y);
    EXPECT_GE(picture.width, picture.sheets[6].x + picture.sheets[6].width);
}

TEST(PreviewPagesTest, ASurfaceWithoutRoomStillHasSheets)
{
    for (int mode = 0; mode < 6; ++mode) {
        PreviewView view = ViewOf(static_cast<ZoomMode>(mode));
        view.width = view.height = 0;
        for (const PreviewSheet& sheet : PlaceSheets(view).sheets)
            EXPECT_GT(sheet.width, 0) << mode;
        EXPECT_GT(PercentOf(view), 0) << mode;
    }
}

} // namespace
} // namespace quillmere
