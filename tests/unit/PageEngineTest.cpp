#include "support/PrintRoom.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

using test::PrintRoom;
using Pages = std::vector<int>;

class PageEngineTest : public ::testing::Test {
protected:
    void Draw(int pages, bool preview = true)
    {
        vp.Preview(preview);
        vp.StartDoc();
        for (int page = 1; page <= pages; ++page) {
            if (page > 1)
                vp.NewPage();
            vp.Text("page " + std::to_string(page));
        }
    }

    PrintRoom room;
    test::ScriptedDoor& door = room.door;
    PageEngine& vp = room.vp;
};

TEST_F(PageEngineTest, SelectsTheDefaultPrinterByAnEmptyName)
{
    door.printers = {"Laser", "Ink"};
    vp.Device("");
    EXPECT_EQ(vp.Device(), "Laser");
    EXPECT_EQ(vp.NDevices(), 2);
    EXPECT_EQ(vp.Devices(1), "Ink");
    vp.Device("Ink");
    EXPECT_EQ(vp.Device(), "Ink");
    vp.Device("Gone");
    EXPECT_EQ(vp.Device(), "Ink") << "a name that does not exist leaves another in place";
    door.printers = {};
    vp.Device("");
    EXPECT_EQ(vp.Device(), "");
    EXPECT_EQ(vp.NDevices(), 0);
}

TEST_F(PageEngineTest, ANewlySelectedPrinterHasItsOwnDuplex)
{
    door.printers = {"Laser", "Ink"};
    vp.Device("");
    vp.Duplex(2);
    vp.Device("Gone");
    EXPECT_EQ(vp.Duplex(), 2);
    vp.Device("Ink");
    EXPECT_EQ(vp.Duplex(), 0);
}

TEST_F(PageEngineTest, KeepsPagesForAPreview)
{
    door.printers = {"Laser"};
    vp.Device("");
    Draw(3);
    EXPECT_EQ(vp.PageCount(), 3);
    vp.EndDoc();
    EXPECT_TRUE(door.printed.empty());
    EXPECT_EQ(vp.PageCount(), 3);
    ASSERT_TRUE(vp.Ended());
    vp.StartDoc();
    EXPECT_FALSE(vp.Ended()) << "the next document drops it";
}

TEST_F(PageEngineTest, SendsPagesStraightToThePrinterWithoutPreview)
{
    door.printers = {"Laser"};
    vp.Device("");
    vp.Duplex(2);
    vp.DocName("Acme Ltd - Jane Smith");
    Draw(3, false);
    EXPECT_TRUE(door.printed.empty());
    EXPECT_EQ(vp.EndDoc(), PrintResult::Sent);
    ASSERT_EQ(door.printed.size(), 1U);
    const PrintRequest& request = door.printed.front();
    EXPECT_EQ(request.printer, "Laser");
    EXPECT_EQ(request.documentName, "Acme Ltd - Jane Smith");
    EXPECT_EQ(request.pages, (Pages{1, 2, 3}));
    EXPECT_EQ(request.copies, 1);
    EXPECT_EQ(request.duplex, 2);
    EXPECT_EQ(request.pdf, vp.Pdf());
}

TEST_F(PageEngineTest, PrintsThePagesAskedForAndNeverMore)
{
    door.printers = {"Laser"};
    vp.Device("");
    Draw(5);
    vp.EndDoc();
    EXPECT_EQ(vp.PrintDoc(2), PrintResult::Sent);
    EXPECT_EQ(door.printed.back().pages, (Pages{1, 2, 3, 4, 5}));
    EXPECT_EQ(door.printed.back().copies, 2);
    EXPECT_EQ(vp.PrintDoc(1, "5,1-2"), PrintResult::Sent);
    EXPECT_EQ(door.printed.back().pages, (Pages{5, 1, 2}));
    EXPECT_EQ(vp.PrintDoc(1, "4-5,1", PageOrder::Reverse), PrintResult::Sent);
    EXPECT_EQ(door.printed.back().pages, (Pages{1, 5, 4}));
    EXPECT_EQ(vp.PrintDoc(1, std::nullopt, PageOrder::Reverse), PrintResult::Sent);
    EXPECT_EQ(door.printed.back().pages, (Pages{5, 4, 3, 2, 1}));

    const std::size_t before = door.printed.size();
    EXPECT_EQ(vp.PrintDoc(1, ""), PrintResult::NothingToPrint);
    EXPECT_EQ(vp.PrintDoc(1, "x"), PrintResult::NothingToPrint);
    EXPECT_EQ(vp.PrintDoc(1, "7"), PrintResult::NothingToPrint);
    EXPECT_EQ(vp.PrintDoc(0), PrintResult::NothingToPrint);
    EXPECT_EQ(door.printed.size(), before);
}

TEST_F(PageEngineTest, SaysThatThePrinterCannotBeReached)
{
    Draw(1);
    vp.EndDoc();
    EXPECT_EQ(vp.PrintDoc(1), PrintResult::PrinterUnreachable) << "no printer at all";
    door.printers = {"Laser"};
    vp.Device("");
    door.printOutcome = PrintOutcome::PrinterUnreachable;
    EXPECT_EQ(vp.PrintDoc(1), PrintResult::PrinterUnreachable);
}

TEST_F(PageEngineTest, HasNothingToPrintBeforeTheFirstDocument)
{
    EXPECT_EQ(vp.EndDoc(), PrintResult::NothingToPrint);
    EXPECT_EQ(vp.PrintDoc(1), PrintResult::NothingToPrint);
    EXPECT_EQ(vp.PageCount(), 0);
    EXPECT_EQ(vp.Pdf(), "");
    vp.NewPage();
    vp.DrawLine(0, 0, 1, 1);
    vp.Text("lost");
    EXPECT_EQ(vp.PageCount(), 0);
}

TEST_F(PageEngineTest, TellsOfEveryDocumentThatEnds)
{
    std::vector<std::string> names;
    vp.documentEnded = [&names](const std::shared_ptr<const Document>& document) { names.push_back(document->name); };
    for (const char* name : {"one", "two"}) {
        vp.DocName(name);
        Draw(1);
        vp.EndDoc();
    }
    EXPECT_EQ(names, (std::vector<std::string>{"one", "two"}));
}

TEST_F(PageEngineTest, KeepsPenBrushAndFontAcrossDocuments)
{
    vp.FontName("Times New Roman");
    vp.FontSize(12);
    vp.FontBold(true);
    vp.TextColor({1, 2, 3});
    Draw(1);
    vp.EndDoc();
    Draw(1);
    vp.EndDoc();
    const auto& style = vp.Ended()->TextStyleOf(vp.Ended()->Page(1).front());
    EXPECT_EQ(style, (TextStyle{.face = Face::SerifBold, .colour = {1, 2, 3}, .size = 12}));
}

TEST_F(PageEngineTest, ReadsAPolygonFromItsText)
{
    vp.StartDoc();
    vp.BrushStyle(1);
    vp.Polygon("10 20, -30 40, 50 60");
    vp.EndDoc();
    const Operation& polygon = vp.Ended()->Page(1).front();
    const auto corners = vp.Ended()->CornersOf(polygon);
    EXPECT_EQ(std::vector<double>(corners.begin(), corners.end()), (std::vector<double>{10, 20, -30, 40, 50, 60}));
    EXPECT_TRUE(vp.Ended()->ShapeStyleOf(polygon).filled) << "a polygon is filled whatever the brush";
}

TEST_F(PageEngineTest, NotesBookmarksWithTheirPage)
{
    vp.StartDoc();
    vp.Bookmark("first", 1, 0);
    vp.NewPage();
    vp.Bookmark("second", 2, 500);
    vp.EndDoc();
    const auto& bookmarks = vp.Ended()->bookmarks;
    ASSERT_EQ(bookmarks.size(), 2U);
    EXPECT_EQ(bookmarks[0].page, 1);
    EXPECT_EQ(bookmarks[1].page, 2);
    EXPECT_EQ(bookmarks[1].level, 2);
    EXPECT_EQ(bookmarks[1].y, 500);
}

} // namespace
} // namespace quillmere
