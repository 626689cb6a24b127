// What a printer leaves white at the edge of the sheet, and the way inside.
#include "printing/jobs/PrinterEdge.h"

#include "printing/jobs/PrintJob.h"
#include "printing/jobs/PrintJobs.h"
#include "support/PreviewRoom.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

using Room = test::PreviewRoom<test::ScriptedDoor>;

TEST(InkTest, IsWhatCanBeSeenOnWhitePaper)
{
    Document document;
    document.AddPage();
    EXPECT_TRUE(InkOf(document).IsNone());
    const auto twips = [](double mm) { return mm * UnitsPerMillimetre; };
    document.AddRectangle({.pen = White, .brush = White, .filled = true}, 0, 0, twips(200), twips(290));
    document.AddText({.face = Face::SansRegular, .colour = White, .size = 10}, Alignment::Left, 0, 0, "unseen");
    document.AddText({.face = Face::SansRegular, .colour = Black, .size = 10}, Alignment::Left, 0, 0, "   ");
    EXPECT_TRUE(InkOf(document).IsNone());
    document.AddLine({.pen = Black, .width = twips(1)}, twips(10), twips(20), twips(30), twips(20));
    document.AddPage();
    document.AddRectangle({.pen = White, .brush = Grey(200), .filled = true}, twips(40), twips(50), twips(5),
                          twips(60));
    const Ink ink = InkOf(document);
    EXPECT_DOUBLE_EQ(ink.left, 5);
    EXPECT_DOUBLE_EQ(ink.top, 19.5);
    EXPECT_DOUBLE_EQ(ink.right, 40);
    EXPECT_DOUBLE_EQ(ink.bottom, 60);
}

TEST(InkTest, OfATextBeginsBehindItsBlanks)
{
    Document document;
    document.AddPage();
    const TextStyle style{.face = Face::MonoRegular, .colour = Black, .size = 10};
    document.AddText(style, Alignment::Left, 0, 0, "    5 ");
    const double character = TextWidth(style.face, style.size, " ") / UnitsPerMillimetre;
    const Ink ink = InkOf(document);
    EXPECT_NEAR(ink.left, 4 * character, 1e-6);
    EXPECT_NEAR(ink.right, 5 * character, 1e-6);
    const double line = TextAscent(style.face, style.size) / UnitsPerMillimetre;
    EXPECT_LT(ink.top, line);
    EXPECT_GT(ink.top, 0);
    EXPECT_GT(ink.bottom, line);
}

TEST(EdgeFitTest, BringsInsideInTenthsOfAMillimetre)
{
    const SheetEdge usual{4.2, 4.2, 4.2, 4.2};
    const EdgeFit inside = FitOf({.left = 4.2, .top = 10, .right = 200, .bottom = 280}, usual);
    EXPECT_TRUE(inside.isInside);
    EXPECT_FALSE(inside.canMove);
    const EdgeFit left = FitOf({.left = 1.8, .top = 0.5, .right = 195, .bottom = 280}, usual);
    EXPECT_FALSE(left.isInside);
    EXPECT_TRUE(left.canMove);
    EXPECT_NEAR(left.across, 2.5, 1e-9);
    EXPECT_NEAR(left.down, 3.8, 1e-9);
    const EdgeFit right = FitOf({.left = 20, .top = 10, .right = 207.5, .bottom = 295}, usual);
    EXPECT_NEAR(right.across, -1.8, 1e-9);
    EXPECT_TRUE(right.canMove);
    const EdgeFit wide = FitOf({.left = 1, .top = 10, .right = 209, .bottom = 280}, usual);
    EXPECT_FALSE(wide.isInside);
    EXPECT_FALSE(wide.canMove);
    EXPECT_TRUE(FitOf({}, usual).isInside);
}

TEST(EdgeFitTest, WithNoEdgeNothingIsSaid)
{
    Room room;
    frmVSPrint& preview = room.Preview(2);
    room.session.screens.RunDeferred();
    EXPECT_FALSE(preview.box("lblEdge").Visible());
    EXPECT_FALSE(preview.box("cmdInside").Visible());
}

struct EdgeRoom : Room {
    /// Shows a document with a text whose ink begins some 1 mm from the left.
    frmVSPrint& ShowNearTheEdge()
    {
        door.printers = {"Office"};
        printing.shown = {"Test", [](PrintJob& job) {
                              if (job.document.OpenPrintJob("Acme Ltd") != Opening::Open)
                                  return false;
                              job.page.NextPrintPage();
                              job.page.vsTextLeft(1, 20, "Near the edge");
                              return true;
                          }};
        ShowAgain(session, printing, "");
        session.screens.RunDeferred();
        return *session.screens.Find<frmVSPrint>();
    }
};

TEST(EdgeFitTest, MovesTheDocumentInsideWhenAsked)
{
    EdgeRoom room;
    room.door.edge = {4.2, 4.2, 4.2, 4.2};
    frmVSPrint& preview = room.ShowNearTheEdge();
    EXPECT_EQ(preview.box("lblEdge").Text(), "Outside what Office prints");
    ASSERT_TRUE(preview.box("cmdInside").Visible());

    room.door.answers = {Answer::No};
    preview.Click(preview.box("cmdInside"));
    EXPECT_EQ(room.session.settings.vsLeft, 0);
    EXPECT_NE(room.door.TakeText().find("Left 3.3 mm (now 0.0) and Top 0.0 mm (now 0.0)"), std::string::npos);

    room.door.answers = {Answer::Yes};
    preview.Click(preview.box("cmdInside"));
    EXPECT_NEAR(room.session.settings.vsLeft, 3.3, 0.01);
    EXPECT_EQ(room.session.settings.vsTop, 0);
    room.session.screens.RunDeferred();
    const auto* shown = room.session.screens.Find<frmVSPrint>();
    ASSERT_NE(shown, nullptr);
    EXPECT_FALSE(shown->box("lblEdge").Visible());
    EXPECT_FALSE(shown->box("cmdInside").Visible());
}

} // namespace
} // namespace quillmere
