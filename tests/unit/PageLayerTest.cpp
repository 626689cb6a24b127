#include "printing/paper/PageLayer.h"

#include "frame/CheckedFile.h"
#include "support/PrintRoom.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmere {
namespace {

using test::PrintRoom;

constexpr double Mm = UnitsPerMillimetre;
constexpr double TopMargin = 2.0;

class PageLayerTest : public ::testing::Test {
protected:
    void Open() { ASSERT_EQ(room.job.OpenPrintJob("Document"), Opening::Open); }

    /// Lower edge of a text operation, twips.
    double Bottom(const Operation& text)
    {
        const TextStyle& style = room.Ended().TextStyleOf(text);
        return text.y1 + TextHeight(style.face, style.size);
    }

    PrintRoom room;
    PageLayer& page = room.page;
    Settings& settings = room.settings;
    test::ScriptedDoor& door = room.door;
};

TEST_F(PageLayerTest, StandsATextOnItsLineWhateverItsSize)
{
    for (const double size : {5.0, 8.0, 17.0}) {
        Open();
        page.vsFont(size, true, false);
        page.vsTextLeft(20, 100, "Text");
        EXPECT_NEAR(Bottom(room.Last()), 100 * Mm + 28 + TopMargin * Mm, 1e-9);
        EXPECT_NEAR(room.Last().x1, 20 * Mm, 1e-9);
    }
}

TEST_F(PageLayerTest, BeginsEachDocumentWithTheCursorAtTheSheetsCornerAndNoUnderline)
{
    Open();
    page.vsUnderlineOn();
    page.vsTextLeft(100, 100, "Text");
    Open();
    page.vsTextRun("Run");
    EXPECT_EQ(room.Last().kind, OperationKind::Text);
    EXPECT_DOUBLE_EQ(room.Last().x1, 0);
    EXPECT_NEAR(Bottom(room.Last()), 28, 1e-9);
}

TEST_F(PageLayerTest, AddsOffsetsThatAreNeverScaled)
{
    settings.vsLeft = 10;
    settings.vsTop = 3;
    settings.vsScale = 50;
    Open();
    page.vsLine(0.4, 10, 20, 20, 20);
    const Operation line = room.Last();
    EXPECT_NEAR(line.x2 - line.x1, 5 * Mm, 1e-9);
    EXPECT_NEAR(line.x1, (10 + 5) * Mm, 1e-9);
    EXPECT_NEAR(line.y1, (3 + TopMargin + 10) * Mm, 1e-9);
    EXPECT_NEAR(room.Ended().ShapeStyleOf(line).width, 0.2 * Mm, 1e-9);

    Open();
    page.vsFont(10, false, false);
    page.vsTextLeft(0, 0, "Text");
    EXPECT_DOUBLE_EQ(room.Ended().TextStyleOf(room.Last()).size, 5);
    EXPECT_NEAR(room.Last().x1, 10 * Mm, 1e-9);
    EXPECT_NEAR(Bottom(room.Last()), (3 + TopMargin) * Mm + 28, 1e-9) << "the drop is not scaled either";
}

TEST_F(PageLayerTest, TakesTheScaleOfItsRoute)
{
    settings.vsLeft = 1;
    settings.vsTop = 2;
    settings.vsScale = 120;
    settings.vsPdfLeft = 3;
    settings.vsPdfTop = 4;
    settings.vsPdfScale = 80;
    const auto drawnAt = [this](Route route, int preview) {
        room.job.route = route;
        settings.reportPreview = preview;
        EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::Open);
        page.vsLine(1, 0, 0, 10, 10);
        const Operation line = room.Last();
        return std::array{line.x1 / Mm, line.y1 / Mm, line.x2 / Mm - line.x1 / Mm};
    };
    const auto expectPlaces = [](std::array<double, 3> found, std::array<double, 3> expected) {
        for (std::size_t at = 0; at < found.size(); ++at)
            EXPECT_NEAR(found.at(at), expected.at(at), 1e-9);
    };
    expectPlaces(drawnAt(Route::Screen, 0), {1, 4, 12});
    expectPlaces(drawnAt(Route::Screen, 1), {3, 6, 8});
    expectPlaces(drawnAt(Route::File, 0), {3, 6, 8});
    door.printers = {"Laser"};
    settings.vsPrinter = "Laser";
    expectPlaces(drawnAt(Route::Printer, 1), {1, 4, 12});
}

TEST_F(PageLayerTest, FollowsTheThreeMethodsOfAlignment)
{
    const auto drawn = [this](int method, double x, double y) {
        settings.vsAlignTextMethod = method;
        settings.vsAlignTextX = x;
        settings.vsAlignTextY = y;
        EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::Open);
        page.vsFont(10, false, false);
        page.vsTextLeft(20, 100, "Text");
        return room.Last();
    };
    const double height = TextHeight(Face::SansRegular, 10);
    const double line = (100 + TopMargin) * Mm;

    for (const int method : {0, 3, -1}) {
        EXPECT_NEAR(drawn(method, 7, 9).x1, 20 * Mm, 1e-9);
        EXPECT_NEAR(drawn(method, 7, 9).y1, 28 + line - height, 1e-9);
    }
    EXPECT_NEAR(drawn(1, 7, 9).x1, 7 + 20 * Mm, 1e-9);
    EXPECT_NEAR(drawn(1, 7, 9).y1, 28 + 9 + line - height, 1e-9);
    EXPECT_NEAR(drawn(2, 7, 0.25).x1, 20 * Mm, 1e-9);
    EXPECT_NEAR(drawn(2, 7, 0.25).y1, 28 + line - height * 0.75, 1e-9);
    EXPECT_NEAR(drawn(2, 0, 1).y1, 28 + line, 1e-9) << "at 1 the text's top stands where its bottom stood";
}

TEST_F(PageLayerTest, MovesNoLinesWithTheAlignment)
{
    settings.vsAlignTextMethod = 1;
    settings.vsAlignTextX = 100;
    settings.vsAlignTextY = 100;
    Open();
    page.vsBox(0.2, 10, 10, 20, 20);
    EXPECT_NEAR(room.Last().x1, 10 * Mm, 1e-9);
    EXPECT_NEAR(room.Last().y1, (10 + TopMargin) * Mm, 1e-9);
}

TEST_F(PageLayerTest, UnderlinesOnTheLineInEveryMethod)
{
    for (const int method : {0, 1, 2}) {
        settings.vsAlignTextMethod = method;
        settings.vsAlignTextY = 5;
        Open();
        page.vsFont(10, false, false);
        page.vsUnderlineOn();
        page.vsTextRight(100, 50, "Text");
        page.vsUnderlineOff();
        const Operation underline = room.Last();
        EXPECT_EQ(underline.kind, OperationKind::Line);
        EXPECT_NEAR(underline.x1, 100 * Mm - TextWidth(Face::SansRegular, 10, "Text"), 1e-9);
        EXPECT_NEAR(underline.x2, 100 * Mm, 1e-9);
        EXPECT_NEAR(underline.y1, (50 + TopMargin) * Mm + 28, 1e-9);
        EXPECT_NEAR(room.Ended().ShapeStyleOf(underline).width, 0.2 * Mm, 1e-9);
    }
}

TEST_F(PageLayerTest, ClearsTheUnderlineWhenADocumentIsOpened)
{
    Open();
    page.vsUnderlineOn();
    Open();
    page.vsTextLeft(10, 10, "Text");
    EXPECT_EQ(room.Last().kind, OperationKind::Text);
}

TEST_F(PageLayerTest, PlacesTextsByTheirAlignment)
{
    Open();
    page.vsFont(9, false, false);
    const double width = TextWidth(Face::SansRegular, 9, "12.50");
    page.vsTextRight(100, 10, "12.50");
    page.vsTextCentre(100, 120, 10, "12.50");
    page.vsTextDecimal(100, 10, "12.50");
    page.vsTextDecimal(100, 10, "1.2.3");
    page.vsTextDecimal(100, 10, "1250");
    page.vsTextMoney(100, 10, "12.50");
    const auto texts = room.Ended().Page(1);
    EXPECT_NEAR(texts[0].x1 + width, 100 * Mm, 1e-9);
    EXPECT_NEAR(texts[1].x1 + width / 2, 110 * Mm, 1e-9);
    EXPECT_NEAR(texts[2].x1, 100 * Mm - TextWidth(Face::SansRegular, 9, "12"), 1e-9);
    EXPECT_NEAR(texts[3].x1, 100 * Mm - TextWidth(Face::SansRegular, 9, "1"), 1e-9) << "the first point counts";
    EXPECT_NEAR(texts[4].x1, 100 * Mm - TextWidth(Face::SansRegular, 9, "1250"), 1e-9) << "no point: to the right";
    EXPECT_NEAR(texts[5].x1, 96 * Mm - TextWidth(Face::SansRegular, 9, "12"), 1e-9);
}

TEST_F(PageLayerTest, GoesOnWhereTheLastTextEnded)
{
    Open();
    page.vsFont(9, false, false);
    page.vsTextRight(100, 10, "first");
    page.vsFont(12, true, false);
    page.vsTextRun("second");
    page.vsTextRun("third");
    const auto texts = room.Ended().Page(1);
    EXPECT_NEAR(texts[1].x1, 100 * Mm, 1e-9);
    EXPECT_NEAR(texts[2].x1, 100 * Mm + TextWidth(Face::SansBold, 12, "second"), 1e-9);
    EXPECT_NEAR(Bottom(texts[2]), Bottom(texts[0]), 1e-9) << "on one line whatever the font";
}

TEST_F(PageLayerTest, PlacesNothingForAnEmptyDecimal)
{
    Open();
    page.vsUnderlineOn();
    page.vsTextDecimal(50, 10, "");
    page.vsUnderlineOff();
    page.vsTextRun("on");
    const auto operations = room.Ended().Page(1);
    ASSERT_EQ(operations.size(), 1U);
    EXPECT_NEAR(operations[0].x1, 50 * Mm, 1e-9);
}

TEST_F(PageLayerTest, CutsTheCornersOfATriangleDownToWholeUnits)
{
    settings.vsLeft = 0.01;
    Open();
    page.vsTriangle({9, 9, 9}, 118, 52.75, 115.5, 50.5, 115.5, 55);
    const Operation triangle = room.Last();
    const auto corners = room.Ended().CornersOf(triangle);
    const std::array expected = {118 + 0.01, 52.75 + 2, 115.5 + 0.01, 50.5 + 2, 115.5 + 0.01, 55 + 2.0};
    ASSERT_EQ(corners.size(), expected.size());
    for (std::size_t at = 0; at < expected.size(); ++at)
        EXPECT_EQ(corners[at], std::floor(expected.at(at) * Mm)) << at;
    const ShapeStyle& style = room.Ended().ShapeStyleOf(triangle);
    EXPECT_EQ(style, (ShapeStyle{.pen = {9, 9, 9}, .brush = {9, 9, 9}, .filled = true, .width = 0}));
}

TEST_F(PageLayerTest, ScalesTheRadiusOfACircleAlone)
{
    settings.vsLeft = 10;
    settings.vsScale = 120;
    Open();
    page.vsCircle({1, 0, 0}, 11.5, 29.5, 0.5);
    EXPECT_NEAR(room.Last().x1, (11.5 * 1.2 + 10) * Mm, 1e-9);
    EXPECT_NEAR(room.Last().x2, 0.5 * 1.2 * Mm, 1e-9);
}

TEST_F(PageLayerTest, DrawsATickInTwoStrokes)
{
    Open();
    page.vsTick(100, 50);
    const auto strokes = room.Ended().Page(1);
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(Listing(room.Ended(), 1), "line 99.50 51.00 100.00 52.00 pen 0 width 0.40\n"
                                        "line 100.00 52.00 102.00 49.00 pen 0 width 0.40\n");
}

TEST_F(PageLayerTest, DrawsBoxesWithAndWithoutFill)
{
    Open();
    page.vsFillBox({1, 1, 1}, {2, 2, 2}, 0, 0, 0, 1, 1);
    page.vsBox(0.2, 0, 0, 1, 1);
    page.vsFillBox(Black, White, 0.2, 0, 0, 1, 1);
    const auto boxes = room.Ended().Page(1);
    EXPECT_TRUE(room.Ended().ShapeStyleOf(boxes[0]).filled);
    EXPECT_FALSE(room.Ended().ShapeStyleOf(boxes[1]).filled);
    EXPECT_EQ(room.Ended().ShapeStyleOf(boxes[1]).pen, Black);
    EXPECT_EQ(room.Ended().ShapeStyleOf(boxes[2]).brush, White);
}

TEST_F(PageLayerTest, WorksOutTheGreysWhenAJobIsOpened)
{
    settings.vsBlack = 10;
    settings.vsDark = 150;
    settings.vsLight = 210;
    settings.vsWhite = 400;
    EXPECT_EQ(page.ColDark, Grey(200));
    Open();
    EXPECT_EQ(page.ColBlack, Grey(10));
    EXPECT_EQ(page.ColDark, Grey(150));
    EXPECT_EQ(page.ColLight, Grey(210));
    EXPECT_EQ(page.ColWhite, White);
}

TEST_F(PageLayerTest, SetsUpTheEngineForTheSheet)
{
    door.printers = {"Laser"};
    settings.vsDuplexMode = 2;
    room.vp.MarginLeft(500);
    room.vp.IndentFirst(500);
    room.vp.MarginTop(500);
    Open();
    page.vsTextLeft(10, 10, "Text");
    EXPECT_EQ(room.vp.PaperSize(), 9);
    EXPECT_EQ(room.vp.Orientation(), 0);
    EXPECT_EQ(room.vp.Duplex(), 2);
    EXPECT_NEAR(room.Last().x1, 10 * Mm, 1e-9) << "the engine adds no margin";

    settings.vsDuplexMode = 0;
    Open();
    EXPECT_EQ(room.vp.Duplex(), 0) << "the driver's own setting";
}

TEST_F(PageLayerTest, BeginsNoNewPageForTheFirst)
{
    Open();
    page.NextPrintPage();
    EXPECT_EQ(room.vp.PageCount(), 1);
    page.vsSetScale(50, 50, 10);
    page.NextPrintPage();
    EXPECT_EQ(room.vp.PageCount(), 2);
    page.vsLine(1, 0, 0, 10, 0);
    EXPECT_NEAR(room.Last().x2, 10 * Mm, 1e-9) << "a new page has the job's scale again";
}

TEST_F(PageLayerTest, SurvivesAScaleOfNothing)
{
    settings.vsScale = 0;
    Open();
    page.vsFont(10, false, false);
    page.vsTextLeft(10, 10, "Text");
    page.vsFillBox(Black, White, 0.2, 1, 1, 2, 2);
    page.vsCircle(Black, 5, 5, 1);
    room.job.vsEndDoc();
    EXPECT_NE(room.vp.Pdf().find("%%EOF"), std::string::npos);
}

// ---- opening a job

TEST_F(PageLayerTest, TakesTheDefaultPrinterSilentlyAndKeepsIt)
{
    door.printers = {"Laser", "Ink"};
    Open();
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(settings.vsPrinter, "Laser");
    EXPECT_EQ(room.vp.Device(), "Laser");
    EXPECT_GT(door.yields, 0) << "the engine's own work runs on after the printer has changed";
}

TEST_F(PageLayerTest, OpensOnTheChosenPrinter)
{
    door.printers = {"Laser", "Ink"};
    settings.vsPrinter = "Ink";
    Open();
    EXPECT_EQ(room.vp.Device(), "Ink");
    EXPECT_EQ(settings.vsPrinter, "Ink");
}

TEST_F(PageLayerTest, OpensWithNoPrinterAtAll)
{
    Open();
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(settings.vsPrinter, "");
}

TEST_F(PageLayerTest, AsksForTheDefaultPrinterWhereTheChosenOneIsGone)
{
    door.printers = {"Laser"};
    settings.vsPrinter = "Gone";
    door.answers = {Answer::Yes};
    Open();
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "Gone");
    EXPECT_EQ(door.messages[0].text, "This printer is not available.\n\n"
                                     "Do you wish to use the default printer 'Laser' instead?");
    EXPECT_EQ(door.messages[0].buttons, Buttons::YesNo);
    EXPECT_EQ(settings.vsPrinter, "Laser") << "remembered for the rest of the run";
    EXPECT_TRUE(room.vp.IsOpen());
}

TEST_F(PageLayerTest, OpensNothingAfterANo)
{
    door.printers = {"Laser"};
    settings.vsPrinter = "Gone";
    door.answers = {Answer::No};
    EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::NotOpen);
    EXPECT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(settings.vsPrinter, "Gone");
    EXPECT_FALSE(room.vp.IsOpen());
}

/// A default printer that is there when it is asked for and gone when it is to be used.
class FadingPrinters : public test::ScriptedDoor {
public:
    std::vector<std::string> Printers() override
    {
        ++asked;
        return asked == 1 ? std::vector<std::string>{"Laser"} : std::vector<std::string>{"Other"};
    }
    int asked = 0;
};

TEST(PageLayerPrinters, SaysSoWhereTheDefaultPrinterFailsToo)
{
    FadingPrinters door;
    Settings settings = SetDefaultConfiguration({});
    settings.vsPrinter = "Gone";
    const std::filesystem::path root;
    PageEngine vp(door);
    PdfConverter converter;
    PageLayer page(settings);
    JobDocument job(door, settings, root, page);
    job.vsBindEngine(vp, converter);
    door.answers = {Answer::Yes};
    EXPECT_EQ(job.OpenPrintJob("Document"), Opening::NotOpen);
    ASSERT_EQ(door.messages.size(), 2U);
    EXPECT_EQ(door.messages[1].title, "Laser");
    EXPECT_EQ(door.messages[1].text, "This printer is not available");
    EXPECT_EQ(door.messages[1].icon, Icon::Critical);
}

TEST_F(PageLayerTest, SaysSoWhereThePrinterIsGoneAndThereIsNoDefault)
{
    settings.vsPrinter = "Gone";
    EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::NotOpen);
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].title, "Gone");
    EXPECT_EQ(door.messages[0].text, "This printer is not available.");
    EXPECT_EQ(door.messages[0].buttons, Buttons::Ok);
}

TEST_F(PageLayerTest, KeepsNoOldDocumentWhereANewOneCannotBeOpened)
{
    Open();
    room.job.vsEndDoc();
    settings.vsPrinter = "Gone";
    EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::NotOpen);
    EXPECT_FALSE(room.vp.Ended());
}

TEST_F(PageLayerTest, SendsAJobOfThePrinterRouteWhenItEnds)
{
    door.printers = {"Laser"};
    room.job.route = Route::Printer;
    Open();
    page.vsTextLeft(10, 10, "Text");
    room.job.vsEndDoc();
    ASSERT_EQ(door.printed.size(), 1U);
    EXPECT_EQ(door.printed[0].documentName, "Document");
    EXPECT_TRUE(door.messages.empty());

    door.printOutcome = PrintOutcome::PrinterUnreachable;
    Open();
    room.job.vsEndDoc();
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].text, "An error occurred while attempting to access the following printer:\n\nLaser\n\n"
                                     "Make sure this printer is available and properly set up.");
}

TEST_F(PageLayerTest, SaysThatThereIsNoPrinterWhereAJobIsForOne)
{
    room.job.route = Route::Printer;
    Open();
    room.job.vsEndDoc();
    ASSERT_EQ(door.messages.size(), 1U);
    EXPECT_EQ(door.messages[0].text, "There is no printer available");
}

// ---- the PDF ending

class PdfEndingTest : public ::testing::Test {
protected:
    PdfEndingTest() { room.settings.reportPreview = 1; }

    void RunJob(std::string_view text = "Text")
    {
        ASSERT_EQ(room.job.OpenPrintJob("Acme Ltd - Jane Smith"), Opening::Open);
        room.page.vsTextLeft(10, 10, text);
        room.job.EndOnPdf();
    }

    test::TemporaryFolder folder;
    PrintRoom room{folder.path};
    const std::filesystem::path file = folder.path / "Docs" / "Preview.pdf";
};

TEST_F(PdfEndingTest, WritesTheFileAndOpensIt)
{
    RunJob();
    EXPECT_EQ(test::Content(file), room.vp.Pdf());
    ASSERT_EQ(room.door.opened.size(), 1U);
    EXPECT_EQ(room.door.opened[0], file);
    EXPECT_TRUE(room.door.messages.empty());
    EXPECT_GE(room.door.yields, 4) << "around the conversion and before the viewer";
}

TEST_F(PdfEndingTest, ReplacesAnOldFile)
{
    RunJob("old");
    const std::string old = test::Content(file);
    RunJob("new");
    EXPECT_NE(test::Content(file), old);
    EXPECT_EQ(test::NamesIn(file.parent_path()), std::set<std::string>{"Preview.pdf"});
}

TEST_F(PdfEndingTest, LeavesALockedFileAloneAndSaysSo)
{
    RunJob("old");
    const std::string old = test::Content(file);
    room.door.opened.clear();
    const int holder = ::open(file.c_str(), O_RDONLY);
    ASSERT_EQ(::flock(holder, LOCK_SH), 0);
    RunJob("new");
    ::close(holder);
    EXPECT_EQ(test::Content(file), old);
    EXPECT_TRUE(room.door.opened.empty());
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_EQ(room.door.messages[0].title, "2011 Quillmere");
    EXPECT_EQ(room.door.messages[0].text, "File '" + file.string() +
                                              "' could not be deleted.\n"
                                              "Another application may be using it.\n"
                                              "You must close this file before proceeding.");

    RunJob("new");
    EXPECT_NE(test::Content(file), old) << "once it is let go, the next job goes through";
}

TEST_F(PdfEndingTest, LeavesAFileAloneThatAnotherProcessHasLockedInTheOtherWay)
{
    RunJob("old");
    const std::string old = test::Content(file);
    std::array<int, 2> ready{};
    std::array<int, 2> done{};
    ASSERT_EQ(::pipe(ready.data()), 0);
    ASSERT_EQ(::pipe(done.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        char byte = 0;
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        const int holder = ::open(file.c_str(), O_RDWR);
        byte = ::fcntl(holder, F_SETLK, &lock) == 0 ? 'y' : 'n';
        ::close(done[1]);
        if (::write(ready[1], &byte, 1) == 1)
            static_cast<void>(::read(done[0], &byte, 1)); // until the parent closes its end
        ::_exit(0);
    }
    ASSERT_GT(child, 0);
    ::close(done[0]);
    char locked = 0;
    ASSERT_EQ(::read(ready[0], &locked, 1), 1);
    ASSERT_EQ(locked, 'y');
    RunJob("new");
    ::close(done[1]);
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_EQ(test::Content(file), old);
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_NE(room.door.messages[0].text.find("could not be deleted."), std::string::npos);
    EXPECT_EQ(room.door.messages[0].icon, Icon::Exclamation);
    RunJob("new");
    EXPECT_NE(test::Content(file), old);
}

TEST_F(PdfEndingTest, LeavesAFileAloneThatMayNotBeWritten)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is forbidden to the superuser";
    RunJob("old");
    const std::string old = test::Content(file);
    std::filesystem::permissions(file, std::filesystem::perms::none);
    RunJob("new");
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    EXPECT_EQ(test::Content(file), old);
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_NE(room.door.messages[0].text.find("could not be deleted."), std::string::npos);
}

TEST_F(PdfEndingTest, LeavesAFileAloneWhoseFolderMayNotBeWritten)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is forbidden to the superuser";
    RunJob("old");
    const std::string old = test::Content(file);
    std::filesystem::permissions(file.parent_path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    RunJob("new");
    std::filesystem::permissions(file.parent_path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(test::Content(file), old);
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_NE(room.door.messages[0].text.find("could not be deleted."), std::string::npos);
}

TEST_F(PdfEndingTest, TakesAFolderOfTheNameForAFileThatCannotGo)
{
    std::filesystem::create_directories(file);
    RunJob();
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_NE(room.door.messages[0].text.find("could not be deleted."), std::string::npos);
    EXPECT_TRUE(room.door.opened.empty());
}

TEST_F(PdfEndingTest, ReportsAFullDiskAndLeavesTheOldFileWhole)
{
    RunJob();
    room.door.opened.clear();
    const std::string old = test::Content(file);
    const std::size_t size = old.size();
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    for (const std::size_t room_left : {std::size_t{0}, std::size_t{1}, size / 2, size - 1}) {
        room.door.messages.clear();
        rlimit limit = before;
        limit.rlim_cur = room_left;
        ::setrlimit(RLIMIT_FSIZE, &limit);
        RunJob();
        ::setrlimit(RLIMIT_FSIZE, &before);
        ASSERT_EQ(room.door.messages.size(), 1U);
        EXPECT_EQ(room.door.messages[0].title, "2011 Quillmere");
        EXPECT_NE(room.door.messages[0].text.find("Preview.pdf"), std::string::npos);
        EXPECT_TRUE(room.door.opened.empty());
        EXPECT_EQ(test::NamesIn(file.parent_path()), std::set<std::string>{"Preview.pdf"});
        EXPECT_EQ(test::Content(file), old);
    }
    std::signal(SIGXFSZ, signalBefore);
}

TEST_F(PdfEndingTest, ReportsAFolderThatCannotBeMade)
{
    test::Store(folder / "Docs", "in the way");
    RunJob();
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_TRUE(room.door.opened.empty());
    EXPECT_EQ(test::Content(folder / "Docs"), "in the way");
}

TEST_F(PdfEndingTest, ReportsAViewerThatDoesNotOpen)
{
    room.door.openResult = 2;
    RunJob();
    ASSERT_EQ(room.door.messages.size(), 1U);
    EXPECT_EQ(room.door.messages[0].title, "2011 Quillmere");
    EXPECT_EQ(room.door.messages[0].text, "External program access error 2: File not found");
    room.door.messages.clear();
    room.door.openResult = 32;
    RunJob();
    EXPECT_EQ(room.door.messages[0].text, "External program access error 32: Undefined error");
}

TEST_F(PdfEndingTest, WritesNothingWhereNoDocumentWasOpened)
{
    room.settings.vsPrinter = "Gone";
    EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::NotOpen);
    room.job.EndOnPdf();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(room.door.opened.empty());
}

TEST_F(PageLayerTest, HangsBookmarksUnderTheirChapter)
{
    const auto bookmarks = [this] {
        std::string list;
        for (const Bookmark& bookmark : room.Ended().bookmarks)
            list += fmt::format("{} {} {}\n", bookmark.page, bookmark.level, bookmark.title);
        return list;
    };
    const auto drawTwoPages = [this] {
        page.NextPrintPage();
        page.vsBookmark("Page");
        page.vsBookmark("Section", 2, 10);
    };
    Open();
    page.BeginChapter("Smith");
    drawTwoPages();
    page.BeginChapter("Jones");
    drawTwoPages();
    EXPECT_EQ(bookmarks(), "1 1 Smith\n1 2 Page\n1 3 Section\n2 1 Jones\n2 2 Page\n2 3 Section\n");
    Open();
    drawTwoPages();
    EXPECT_EQ(bookmarks(), "1 1 Page\n1 2 Section\n") << "the next document has no chapters";
}

RC_GTEST_PROP(PageLayerProperty, EveryAlignmentHoldsAtAnyScaleAndOffset, ())
{
    const double scale = *rc::gen::inRange(1, 300);
    const double left = *rc::gen::inRange(-50, 50);
    const double x = *rc::gen::inRange(0, 210);
    const auto text = *rc::gen::string<std::string>();
    PrintRoom room;
    room.settings.vsScale = scale;
    room.settings.vsLeft = left;
    RC_ASSERT(room.job.OpenPrintJob("Document") == Opening::Open);
    room.page.vsFont(8, false, false);
    room.page.vsTextRight(x, 10, text);
    room.page.vsTextCentre(x, x + 10, 10, text);
    const Document& document = room.Ended();
    RC_PRE(!text.empty());
    const double anchor = x * Mm * scale / 100 + left * Mm;
    RC_ASSERT(std::abs(PlaceOf(document, document.Page(1)[0]).x - anchor) < 1e-6);
    RC_ASSERT(std::abs(PlaceOf(document, document.Page(1)[1]).x - anchor - 5 * Mm * scale / 100) < 1e-6);
}

} // namespace
} // namespace quillmere
