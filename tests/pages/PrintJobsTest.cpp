#include "printing/jobs/PrintJobs.h"

#include "KeptListing.h"
#include "PdfReadBack.h"
#include "clientdb/store/StoreFaults.h"
#include "support/PrintDesk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <fstream>
#include <map>
#include <stdexcept>

namespace quillmere::pages {
namespace {

using test::PrintDesk;
using test::ScriptedDoor;
using test::TextsOf;

constexpr std::string_view Employer = "Marlow & Sons Ltd";
constexpr std::string_view Employee = "Jane Smith";

/// A page in one line: the bookmarks that lie on it.
std::string Contents(const Document& document)
{
    std::string lines = document.name + "\n";
    for (int page = 1; page <= document.PageCount(); ++page) {
        lines += fmt::format("{}:", page);
        for (const Bookmark& bookmark : document.bookmarks)
            if (bookmark.page == page && bookmark.level == 1)
                lines += " " + bookmark.title;
        lines += "\n";
    }
    return lines;
}

bool Holds(const Document& document, int page, std::string_view text)
{
    const std::vector<std::string> texts = TextsOf(document, page);
    return std::ranges::find(texts, text) != texts.end();
}

/// The page with a bookmark of that title, 0 if there is none.
int PageOf(const Document& document, std::string_view bookmark)
{
    for (const Bookmark& one : document.bookmarks)
        if (one.title == bookmark)
            return one.page;
    return 0;
}

class PrintJobs : public ::testing::Test {
protected:
    PrintJobs() { desk.Add(Employer, "Jane", "Smith"); }

    void Set(std::string_view table, std::string_view field, std::string_view text)
    {
        desk.Set(table, Employer, Employee, field, text);
    }
    void FillAll() { desk.FillAll(Employer, Employee); }
    std::shared_ptr<const Document> PrintSingle(PrintedDocument document = PrintedDocument::Employee)
    {
        PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, document);
        desk.session.screens.Unload("frmVSPrint");
        return desk.TakeLast();
    }
    /// The document of the one employee in a batch of these ticks.
    std::shared_ptr<const Document> PrintInBatch(std::initializer_list<BatchTick> ticks)
    {
        Batch(ticks);
        return desk.TakeLast();
    }
    void Batch(std::initializer_list<BatchTick> ticks)
    {
        BatchSelection selection;
        for (const BatchTick tick : ticks)
            selection.Set(tick);
        PrintBatchJob(desk.session, desk.printing, Employer, selection);
    }
    std::vector<std::string> TakeNames()
    {
        std::vector<std::string> names;
        for (const auto& document : desk.documents)
            names.push_back(document->name);
        desk.documents.clear();
        return names;
    }

    ScriptedDoor door;
    PrintDesk desk{door};
};

// ---- a single job -------------------------------------------------------------------------------

TEST_F(PrintJobs, OfAnEmployeeWithNothingEnteredHasTheTwoSidesOfTheForm)
{
    const auto document = PrintSingle();
    EXPECT_EQ(document->name, "Marlow & Sons Ltd - Jane Smith");
    EXPECT_EQ(document->subject, "Expenses and benefits 2010-11");
    EXPECT_EQ(document->author, "M. Jones") << "the compiler";
    EXPECT_EQ(document->PageCount(), 2);
    EXPECT_TRUE(door.messages.empty());
    EXPECT_TRUE(door.printed.empty());
    EXPECT_FALSE(door.busy);
}

TEST_F(PrintJobs, OfAnEmployeeWithEverythingHasItAllInItsOrder)
{
    FillAll();
    const auto document = PrintSingle();
    ExpectAsKept("batch/job-employee-full", Contents(*document));
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(PrintJobs, OfADeclarationHaveItsTwoSidesAndBothSchedules)
{
    EXPECT_EQ(PrintSingle(PrintedDocument::Declaration)->PageCount(), 2);
    desk.Fill("P11DB", Employer, Employee);
    desk.Fill("P11DBNotepad1", Employer, Employee);
    desk.Fill("P11DBNotepad2", Employer, Employee);
    const auto document = PrintSingle(PrintedDocument::Declaration);
    ExpectAsKept("batch/job-declaration-full", Contents(*document));
    // The employer stands where an employee would.
    EXPECT_EQ(std::ranges::count(TextsOf(*document, 3), std::string(Employer)), 3);
    EXPECT_FALSE(Holds(*document, 3, Employee));
}

TEST_F(PrintJobs, HeadTheSecondScheduleOfADeclarationInTwoWays)
{
    desk.Fill("P11DBNotepad2", Employer, Employee);
    const auto single = PrintSingle(PrintedDocument::Declaration);
    EXPECT_TRUE(Holds(*single, 3, "Any amounts not included in box A on which Class 1A NICs are not due (P11D(b))"));
    const auto batch = PrintInBatch({BatchTick::P11DB});
    EXPECT_TRUE(Holds(*batch, 3, "Any amounts included in box A on which Class 1A NICs are not due (P11D(b))"));
    const auto again = PrintSingle(PrintedDocument::Declaration);
    EXPECT_TRUE(Holds(*again, 3, "Any amounts not included in box A on which Class 1A NICs are not due (P11D(b))"));
}

TEST_F(PrintJobs, OfNobodySayThatTheEmployeeIsNotFound)
{
    PrintEmployeeJob(desk.session, desk.printing, Employer, "Nobody", PrintedDocument::Employee);
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "Print P11D");
    EXPECT_EQ(door.messages[0].text, "Employee not found");
    EXPECT_EQ(door.messages[0].icon, Icon::Exclamation);
    EXPECT_TRUE(desk.documents.empty());
    EXPECT_FALSE(door.busy);
}

TEST_F(PrintJobs, OfADeclarationWithoutARecordEndInTheGeneralErrorBox)
{
    PrintEmployeeJob(desk.session, desk.printing, "Nobody plc", "", PrintedDocument::Declaration);
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
    EXPECT_TRUE(door.messages[0].text.starts_with("Procedure: Print P11D\nError ")) << door.messages[0].text;
    EXPECT_TRUE(door.messages[0].text.ends_with("\nDiagnostic: 21")) << door.messages[0].text;
    EXPECT_TRUE(desk.documents.empty());
    EXPECT_FALSE(desk.printing.engine.IsOpen());
}

TEST_F(PrintJobs, OnADamagedDatabaseEndInTheGeneralErrorBox)
{
    std::ofstream(desk.session.ClientDatabasePath()) << "no database at all";
    EXPECT_EQ(PrintSingle(), nullptr);
    Batch({BatchTick::P11D});
    ASSERT_EQ(door.messages.size(), 2u);
    EXPECT_TRUE(door.messages[0].text.starts_with("Procedure: Print P11D\nError ")) << door.messages[0].text;
    EXPECT_TRUE(door.messages[1].text.starts_with("Procedure: Batch Print\nError ")) << door.messages[1].text;
    EXPECT_TRUE(door.messages[1].text.ends_with("\nDiagnostic: 0"));
    EXPECT_FALSE(door.busy);
    EXPECT_TRUE(desk.documents.empty());
}

TEST_F(PrintJobs, GoOnWithAnEmptyDocumentWhereNoPrinterOpens)
{
    door.printers = {"Office"};
    desk.session.settings.vsPrinter = "Gone";
    door.answers = {Answer::No};
    PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, PrintedDocument::Employee);
    EXPECT_TRUE(desk.documents.empty());
    EXPECT_EQ(desk.printing.engine.Ended(), nullptr);
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "Gone");
    const Screen* preview = desk.session.screens.Find("frmVSPrint");
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->box("lblPage").Text(), "0 of 0");
}

TEST_F(PrintJobs, LeaveThePointerBusyUntilThePreviewHasBeenPainted)
{
    PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, PrintedDocument::Employee);
    EXPECT_TRUE(door.busy);
    static_cast<frmVSPrint&>(*desk.session.screens.Find("frmVSPrint")).Painted();
    EXPECT_FALSE(door.busy);

    // One that is closed before that leaves none behind, and neither does one that does not open.
    desk.session.screens.Unload("frmVSPrint");
    PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, PrintedDocument::Employee);
    EXPECT_TRUE(door.busy);
    desk.session.screens.Unload("frmVSPrint");
    EXPECT_FALSE(door.busy);
    struct Refusing : Screen {
        explicit Refusing(Session& session) : Screen(session, "frmVSPrint", ShowMode::Modal, "Print Preview") {}
        bool Load() override { return false; }
    };
    desk.session.screens.Register("frmVSPrint", [](Session& session) { return std::make_unique<Refusing>(session); });
    PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, PrintedDocument::Employee);
    EXPECT_FALSE(door.busy);
}

TEST_F(PrintJobs, EndOnAPdfFileWhereTheSettingsSaySo)
{
    desk.session.settings.reportPreview = 1;
    PrintSingle();
    ASSERT_EQ(door.opened.size(), 1u);
    EXPECT_EQ(door.opened[0], desk.folder.path / "Docs" / "Preview.pdf");
    EXPECT_TRUE(std::filesystem::exists(door.opened[0]));
}

TEST_F(PrintJobs, WhoseEndingFailsUnexpectedlyEndInTheGeneralErrorBox)
{
    for (const int preview : {0, 1}) {
        desk.session.settings.reportPreview = preview;
        const auto keep = desk.printing.engine.documentEnded;
        desk.printing.engine.documentEnded = [](const auto&) { throw std::runtime_error("the end is near"); };
        PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, PrintedDocument::Employee);
        desk.printing.engine.documentEnded = keep;
        ASSERT_EQ(door.messages.size(), 1u);
        EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
        EXPECT_TRUE(door.messages[0].text.starts_with("Procedure: Print P11D\nError 0:  the end is near"))
            << door.messages[0].text;
        EXPECT_EQ(door.messages[0].icon, Icon::Critical);
        EXPECT_FALSE(door.busy);
        EXPECT_TRUE(door.opened.empty());
        door.messages.clear();
    }
    desk.session.settings.reportPreview = 0;
    EXPECT_EQ(PrintSingle()->PageCount(), 2);
}

TEST_F(PrintJobs, WhosePdfFileCannotBeWrittenSaySoShowNothingAndLeaveTheNextJobAlone)
{
    desk.session.settings.reportPreview = 1;
    const std::filesystem::path docs = desk.folder.path / "Docs";
    std::ofstream(docs) << "no folder";
    PrintSingle();
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
    EXPECT_EQ(door.messages[0].icon, Icon::Critical);
    EXPECT_TRUE(door.opened.empty());
    EXPECT_FALSE(door.busy);

    std::filesystem::remove(docs);
    PrintSingle();
    EXPECT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.opened.size(), 1u);

    // The desktop has nothing to show it with.
    door.openResult = 31;
    PrintSingle();
    EXPECT_EQ(door.messages.size(), 2u);
    EXPECT_FALSE(door.busy);
    door.openResult = 33;
    PrintSingle();
    EXPECT_EQ(door.messages.size(), 2u);
}

TEST_F(PrintJobs, OnAPdfFileGetByWithASenselessScale)
{
    FillAll();
    desk.session.settings.reportPreview = 1;
    for (const double scale : {1e308, -1e308, 1e20, 0.0}) {
        desk.session.settings.vsPdfScale = scale;
        PrintSingle();
        ASSERT_TRUE(door.messages.empty()) << door.messages[0].text;
        const auto check = RunProgram({"qpdf", "--check", (desk.folder.path / "Docs" / "Preview.pdf").string()});
        EXPECT_EQ(check.status, 0) << scale << check.output;
    }
}

/// A preview that notes what it finds when it is shown.
class NotingPreview : public Screen {
public:
    NotingPreview(Session& session, PrintDesk& desk, bool& shown)
        : Screen(session, "frmVSPrint", ShowMode::Modal, "Print Preview"), desk(desk), shown(shown)
    {
        AddBox({.kind = BoxKind::Label}, "lblLook");
    }
    bool Load() override
    {
        shown = true;
        EXPECT_TRUE(desk.Door().busy);
        EXPECT_NE(desk.printing.engine.Ended(), nullptr);
        return true;
    }

private:
    PrintDesk& desk;
    bool& shown;
};

TEST_F(PrintJobs, ShowThePreviewOnceAllElseIsDone)
{
    bool shown = false;
    desk.session.screens.Register(
        "frmVSPrint", [&](Session& session) { return std::make_unique<NotingPreview>(session, desk, shown); });
    PrintSingle();
    EXPECT_TRUE(shown);
    desk.session.screens.Unload("frmVSPrint");

    shown = false;
    desk.session.settings.reportPreview = 1;
    PrintSingle();
    EXPECT_FALSE(shown);

    desk.session.settings.reportPreview = 0;
    PrintEmployeeJob(desk.session, desk.printing, Employer, "Nobody", PrintedDocument::Employee);
    EXPECT_FALSE(shown);
}

TEST_F(PrintJobs, NumberThePagesOfEachDocumentAnew)
{
    Set("ANotepad", "Description1", "Desk");
    EXPECT_EQ(PrintSingle()->PageCount(), 3);
    EXPECT_EQ(PrintSingle()->PageCount(), 3);
}

// ---- sheets and papers of further cars ----------------------------------------------------------

TEST_F(PrintJobs, GiveCars3And4OneSheetAndTheirPapers)
{
    for (const std::string_view car : {"3", "4"}) {
        Set("ExtraCars", "FMakeModel" + std::string(car), "Rover 75");
        Set("ExtraCars", "FCashEqu" + std::string(car), "   1000.00");
    }
    const auto document = PrintSingle();
    EXPECT_EQ(document->PageCount(), 5);
    EXPECT_EQ(PageOf(*document, "P11D cars 3 and 4"), 3);
    EXPECT_EQ(PageOf(*document, "P11D cars 5 and 6"), 0);
    EXPECT_EQ(PageOf(*document, "Cars and car fuel - Car3"), 4);
    EXPECT_EQ(PageOf(*document, "Cars and car fuel - Car4"), 5);
}

TEST_F(PrintJobs, LeaveOutACarWithoutACashOrFuelEquivalentWhateverElseIsFilled)
{
    Set("ExtraCars", "FMakeModel5", "Rover 75");
    Set("ExtraCars", "FListPrice5", "  20000.00");
    EXPECT_EQ(PrintSingle()->PageCount(), 2);
    Set("ExtraCars", "FFuelEqu6", "      0.00");
    const auto document = PrintSingle();
    EXPECT_EQ(PageOf(*document, "P11D cars 5 and 6"), 3);
    EXPECT_EQ(PageOf(*document, "Cars and car fuel - Car5"), 4);
    EXPECT_EQ(PageOf(*document, "Cars and car fuel - Car6"), 5);
    EXPECT_EQ(PageOf(*document, "Cars and car fuel - Car3"), 0);
}

TEST_F(PrintJobs, SayThatThereIsNoRecordOfFurtherCarsForEachSheet)
{
    {
        Database database = desk.Open();
        Recordset cars = database.OpenRecordset("ExtraCars");
        PrintDesk::Seek(cars, "ExtraCars", Employer, Employee);
        cars.Delete();
    }
    EXPECT_EQ(PrintSingle()->PageCount(), 2);
    ASSERT_EQ(door.messages.size(), 2u);
    for (const Message& message : door.messages) {
        EXPECT_EQ(message.title, "Extra Cars check for data error");
        EXPECT_EQ(message.text, "Employee not found");
    }
}

TEST_F(PrintJobs, LeaveOutThePapersOfCars3To6InABatchWithoutForms)
{
    FillAll();
    const auto forms = PrintInBatch({BatchTick::P11D, BatchTick::Cars});
    EXPECT_NE(PageOf(*forms, "Cars and car fuel - Car3"), 0);
    EXPECT_NE(PageOf(*forms, "Cars and car fuel - Car6"), 0);
    const auto papers = PrintInBatch({BatchTick::Cars});
    EXPECT_EQ(PageOf(*papers, "Cars and car fuel - Car 1"), 2);
    EXPECT_EQ(PageOf(*papers, "Cars and car fuel - Car 2"), 3);
    EXPECT_EQ(papers->PageCount(), 3);
}

TEST_F(PrintJobs, SayOnceThatThereIsNoRecordOfSeveralThings)
{
    Set("GNotepad", "RegNumber1", "AB51 CDE");
    EXPECT_EQ(PrintSingle()->PageCount(), 3);
    for (const std::string_view table : {"ENotepad", "GNotepad", "HNotepad"}) {
        Database database = desk.Open();
        Recordset records = database.OpenRecordset(table);
        PrintDesk::Seek(records, table, Employer, Employee);
        records.Delete();
    }
    EXPECT_EQ(PrintSingle()->PageCount(), 2);
    std::vector<std::string> titles;
    for (const Message& message : door.messages) {
        EXPECT_EQ(message.text, "Employee not found");
        titles.push_back(message.title);
    }
    EXPECT_EQ(titles, (std::vector<std::string>{"E Notepad - loading error", "G Notepad - loading error",
                                                "H Notepad - loading error"}));
}

// ---- a batch ------------------------------------------------------------------------------------

struct TickCase {
    BatchTick tick;
    const char* name;
};

class BatchTicks : public PrintJobs, public ::testing::WithParamInterface<TickCase> {};

TEST_P(BatchTicks, PrintTheirOwnPapersAlone)
{
    FillAll();
    ExpectAsKept(std::string("batch/only-") + GetParam().name, Contents(*PrintInBatch({GetParam().tick})));
}

INSTANTIATE_TEST_SUITE_P(All, BatchTicks,
                         ::testing::Values(TickCase{BatchTick::A, "A"}, TickCase{BatchTick::B, "B"},
                                           TickCase{BatchTick::C, "C"}, TickCase{BatchTick::D, "D"},
                                           TickCase{BatchTick::E, "E"}, TickCase{BatchTick::Cars, "F"},
                                           TickCase{BatchTick::G, "G"}, TickCase{BatchTick::H, "H"},
                                           TickCase{BatchTick::I, "I"}, TickCase{BatchTick::J, "J"},
                                           TickCase{BatchTick::K, "K"}, TickCase{BatchTick::L, "L"},
                                           TickCase{BatchTick::M, "M"}, TickCase{BatchTick::N, "N"},
                                           TickCase{BatchTick::P11D, "P11D"}, TickCase{BatchTick::P11DB, "P11DB"}),
                         [](const auto& made) { return made.param.name; });

TEST_F(PrintJobs, OfAWholeEmployerFollowTheNamesAndEndWithTheDeclaration)
{
    door.printers = {"Office"};
    desk.Add(Employer, "Adam", "Zweig");
    desk.Add("Other plc", "Jane", "Smith");
    desk.Add(Employer, "Zoe", "Adams");
    Batch({BatchTick::P11D, BatchTick::P11DB});
    EXPECT_EQ(TakeNames(), (std::vector<std::string>{"Marlow & Sons Ltd - Adam Zweig", "Marlow & Sons Ltd - Jane Smith",
                                                     "Marlow & Sons Ltd - Zoe Adams", "Marlow & Sons Ltd - P11D(b)"}));
    ASSERT_EQ(door.printed.size(), 4u);
    EXPECT_EQ(door.printed[0].printer, "Office");
    EXPECT_EQ(door.printed[0].pages, (std::vector<int>{1, 2}));
    EXPECT_EQ(door.printed[0].copies, 1);
    EXPECT_EQ(desk.session.CurrentEmployee, "Zoe Adams");
    EXPECT_TRUE(door.messages.empty());
    EXPECT_FALSE(door.busy);
}

TEST_F(PrintJobs, OfAWholeEmployerMoveTheBarWithEachEmployee)
{
    door.printers = {"Office"};
    desk.Add(Employer, "Adam", "Zweig");
    Batch({BatchTick::P11D});
    EXPECT_EQ(door.progress, (std::vector<std::pair<int, int>>{{0, 2}, {1, 2}, {2, 2}, {0, 0}}));
    EXPECT_GE(door.yields, 3);
    door.progress.clear();
    Batch({BatchTick::P11D, BatchTick::P11DB});
    EXPECT_EQ(door.progress, (std::vector<std::pair<int, int>>{{0, 3}, {1, 3}, {2, 3}, {3, 3}, {0, 0}}));
}

TEST_F(PrintJobs, WithTheDeclarationAlonePrintNoEmployee)
{
    door.printers = {"Office"};
    Batch({BatchTick::P11DB});
    EXPECT_EQ(TakeNames(), (std::vector<std::string>{"Marlow & Sons Ltd - P11D(b)"}));
}

TEST_F(PrintJobs, WithNoTickPrintNothingAndSayNothing)
{
    door.printers = {"Office"};
    Batch({});
    EXPECT_TRUE(desk.documents.empty());
    EXPECT_TRUE(door.printed.empty());
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(PrintJobs, OfAnEmployerWithoutEmployeesPrintNothing)
{
    door.printers = {"Office"};
    BatchSelection forms;
    forms.Set(BatchTick::P11D);
    PrintBatchJob(desk.session, desk.printing, "Nobody plc", forms);
    EXPECT_TRUE(desk.documents.empty());
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(PrintJobs, TakeADeclarationsFiguresFromTheEmployeesInABatch)
{
    Set("P11D", "ACashEqu", "   1000.00");
    desk.Set("P11DB", Employer, "", "Section1ABox", "      5.00");
    desk.Set("P11DB", Employer, "", "Section1CBox", "      0.64");
    desk.Set("P11DB", Employer, "", "AccountsOffReference", "789PX");
    desk.Set("P11DB", Employer, "", "ReturnAdd6", "Leeds");
    desk.Set("P11DB", Employer, "", "SentToBox", "Leeds office");
    const auto batch = PrintInBatch({BatchTick::P11DB});
    for (const std::string_view text :
         {"   1000.00", "    128.00", "Employer's declaration", "789PX", "Leeds", "Leeds office", "Marlow & Sons Ltd"})
        EXPECT_TRUE(Holds(*batch, 1, text)) << text;
    const auto single = PrintSingle(PrintedDocument::Declaration);
    for (const std::string_view text : {"      5.00", "      0.64", "Employer declaration", "789PX"})
        EXPECT_TRUE(Holds(*single, 1, text)) << text;
}

TEST_F(PrintJobs, PrintADeclarationsAdjustmentsInABatch)
{
    Set("P11D", "ACashEqu", "   1000.00");
    desk.Set("P11DB", Employer, "", "Section1Tick", "1");
    desk.Set("P11DB", Employer, "", "Section4BBox", "    100.00");
    desk.Set("P11DB", Employer, "", "Section4BDesc", "Bonus car");
    desk.Set("P11DB", Employer, "", "Section4CBox", "    300.00");
    desk.Set("P11DB", Employer, "", "Section4CDesc", "As per attached");
    const auto document = PrintInBatch({BatchTick::P11DB});
    for (const std::string_view text :
         {"   1000.00", "    100.00", "Bonus car", "    300.00", "As per attached", "    800.00", "    102.40"})
        EXPECT_TRUE(Holds(*document, 2, text)) << text;
    EXPECT_FALSE(Holds(*document, 1, "    128.00"));
    // The tick of the first section stands five millimetres higher than on a declaration printed alone.
    const auto lowestTick = [](const Document& paper) {
        double lowest = 0;
        for (const Operation& operation : paper.Page(1))
            if (operation.kind == OperationKind::Line && std::abs(operation.x2 / UnitsPerMillimetre - 19) < 0.01)
                lowest = std::max(lowest, operation.y1 / UnitsPerMillimetre - 2);
        return lowest;
    };
    EXPECT_NEAR(lowestTick(*document), 130, 0.01);
    EXPECT_NEAR(lowestTick(*PrintSingle(PrintedDocument::Declaration)), 135, 0.01);
}

TEST_F(PrintJobs, AskAgainForTheSameEmployeeUntilAPrinterOpens)
{
    door.printers = {"Office"};
    desk.session.settings.vsPrinter = "Gone";
    door.answers = {Answer::No, Answer::No, Answer::Yes};
    desk.Add(Employer, "Adam", "Zweig");
    Batch({BatchTick::P11D});
    EXPECT_EQ(TakeNames(),
              (std::vector<std::string>{"Marlow & Sons Ltd - Adam Zweig", "Marlow & Sons Ltd - Jane Smith"}));
    ASSERT_EQ(door.messages.size(), 3u);
    for (const Message& message : door.messages) {
        EXPECT_EQ(message.title, "Gone");
        EXPECT_EQ(message.buttons, Buttons::YesNo);
    }
    EXPECT_EQ(desk.session.settings.vsPrinter, "Office");
}

TEST_F(PrintJobs, LeaveOutTheDeclarationWhereNoPrinterOpens)
{
    door.printers = {"Office"};
    desk.session.settings.vsPrinter = "Gone";
    door.answers = {Answer::No};
    Batch({BatchTick::P11DB});
    EXPECT_TRUE(desk.documents.empty());
    EXPECT_EQ(door.messages.size(), 1u);
}

/// A printer that fails as told, and a question to which the answer is that another printer is switched on.
class TroubledDoor : public ScriptedDoor {
public:
    Answer ShowMessage(const Message& message) override
    {
        if (messages.size() + 1 == switchOnAt)
            printers = {"Office"};
        return ScriptedDoor::ShowMessage(message);
    }
    PrintOutcome Print(const PrintRequest& request) override
    {
        static_cast<void>(ScriptedDoor::Print(request));
        return printed.size() == failAt ? PrintOutcome::PrinterUnreachable : PrintOutcome::Sent;
    }

    std::size_t switchOnAt = 0, failAt = 0;
};

TEST(ABatchInTrouble, GoesOnWithTheNextDocumentWhereThePrinterFailsAtTheEndOfOne)
{
    TroubledDoor door;
    door.printers = {"Office"};
    door.failAt = 1;
    PrintDesk desk(door);
    for (const char* name : {"Jane", "Zoe"})
        desk.Add(Employer, name, "Smith");
    BatchSelection forms;
    forms.Set(BatchTick::P11D);
    PrintBatchJob(desk.session, desk.printing, Employer, forms);
    ASSERT_EQ(door.messages.size(), 2u);
    EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
    EXPECT_EQ(door.messages[0].text, "An error occurred while attempting to access the following printer:\n\nOffice\n\n"
                                     "Make sure this printer is available and properly set up.");
    EXPECT_EQ(door.messages[1].title, "2011 Quillmere");
    EXPECT_EQ(door.messages[1].text, "Not printed:\n\nMarlow & Sons Ltd - Jane Smith");
    ASSERT_EQ(door.printed.size(), 2u);
    EXPECT_EQ(door.printed[1].documentName, "Marlow & Sons Ltd - Zoe Smith");
    EXPECT_EQ(door.progress.back(), std::make_pair(0, 0));
}

/// What a batch of three employees and the declaration says, and how many documents it sends, where the door is as
/// told.
struct TroubledBatch {
    explicit TroubledBatch(ScriptedDoor& door, std::string_view printer) : desk(door)
    {
        desk.session.settings.vsPrinter = printer;
        for (const char* name : {"Jane", "Mary", "Zoe"})
            desk.Add(Employer, name, "Smith");
        BatchSelection forms;
        forms.Set(BatchTick::P11D);
        forms.Set(BatchTick::P11DB);
        PrintBatchJob(desk.session, desk.printing, Employer, forms);
        for (const Message& message : door.messages)
            texts.push_back(message.text);
    }
    PrintDesk desk;
    std::vector<std::string> texts;
};

constexpr auto OfficeFails = "An error occurred while attempting to access the following printer:\n\nOffice\n\n"
                             "Make sure this printer is available and properly set up.";

TEST(ABatchInTrouble, StopsAtTheFirstDocumentWithNoPrinterAtAll)
{
    ScriptedDoor door;
    const TroubledBatch batch(door, "");
    EXPECT_EQ(batch.texts, (std::vector<std::string>{
                               "There is no printer available",
                               "Not printed:\n\nMarlow & Sons Ltd - Jane Smith\n\n3 documents of the batch are "
                               "left, from 'Marlow & Sons Ltd - Mary Smith' on."}));
    EXPECT_TRUE(door.printed.empty());
}

TEST(ABatchInTrouble, StopsWhereTheSpoolerIsNotReady)
{
    ScriptedDoor door;
    door.printers = {"Office"};
    door.printOutcome = PrintOutcome::NotReady;
    const TroubledBatch batch(door, "Office");
    EXPECT_EQ(batch.texts,
              (std::vector<std::string>{OfficeFails, "Not printed:\n\nMarlow & Sons Ltd - Jane Smith\n\n3 "
                                                     "documents of the batch are left, from 'Marlow & Sons "
                                                     "Ltd - Mary Smith' on."}));
    EXPECT_EQ(door.printed.size(), 1u);
}

TEST(ABatchInTrouble, StopsWhereTwoDocumentsInTurnFail)
{
    ScriptedDoor door;
    door.printers = {"Office"};
    door.printOutcome = PrintOutcome::PrinterUnreachable;
    const TroubledBatch batch(door, "Office");
    EXPECT_EQ(batch.texts, (std::vector<std::string>{
                               OfficeFails, OfficeFails,
                               "Not printed:\n\nMarlow & Sons Ltd - Jane Smith\nMarlow & Sons Ltd - Mary Smith\n\n2 "
                               "documents of the batch are left, from 'Marlow & Sons Ltd - Zoe Smith' on."}));
    EXPECT_EQ(door.printed.size(), 2u);
}

/// The loop that asks the same question for the same employee, by both of its boxes.
TEST(ABatchInTrouble, IsLeftWithEscape)
{
    for (const bool isThereAnother : {false, true}) {
        ScriptedDoor door;
        if (isThereAnother) {
            door.printers = {"Office"};
            door.answers = {Answer::No, Answer::Cancel};
        } else {
            door.answers = {Answer::Cancel};
        }
        const TroubledBatch batch(door, "Gone");
        ASSERT_EQ(batch.texts.size(), isThereAnother ? 3u : 2u);
        EXPECT_EQ(batch.texts.back(), "4 documents of the batch are left, from 'Marlow & Sons Ltd - Jane Smith' on.");
        EXPECT_TRUE(door.printed.empty());
    }
}

TEST(ABatchInTrouble, WaitsForAPrinterWhereThereIsNone)
{
    TroubledDoor door;
    door.switchOnAt = 3;
    door.answers = {Answer::Yes};
    PrintDesk desk(door);
    desk.session.settings.vsPrinter = "Gone";
    desk.Add(Employer, "Jane", "Smith");
    BatchSelection forms;
    forms.Set(BatchTick::P11D);
    PrintBatchJob(desk.session, desk.printing, Employer, forms);
    ASSERT_EQ(door.messages.size(), 4u);
    for (std::size_t at = 0; at < 3; ++at) {
        EXPECT_EQ(door.messages[at].title, "Gone");
        EXPECT_EQ(door.messages[at].text, "This printer is not available.");
        EXPECT_EQ(door.messages[at].buttons, Buttons::Ok);
        EXPECT_EQ(door.messages[at].icon, Icon::Critical);
    }
    EXPECT_EQ(door.messages[3].buttons, Buttons::YesNo);
    ASSERT_EQ(door.printed.size(), 1u);
    EXPECT_EQ(door.printed[0].printer, "Office");
}

TEST_F(PrintJobs, OfABatchGoToThePrinterWhereSingleOnesGoToAPdfFile)
{
    door.printers = {"Office"};
    desk.session.settings.reportPreview = 1;
    desk.session.settings.vsPdfScale = 50;
    Batch({BatchTick::P11D, BatchTick::P11DB});
    EXPECT_EQ(door.printed.size(), 2u);
    EXPECT_TRUE(door.opened.empty());
    EXPECT_FALSE(std::filesystem::exists(desk.folder.path / "Docs" / "Preview.pdf"));
    EXPECT_TRUE(door.messages.empty());
    // With the printer's scale, not the file's.
    const auto onPaper = desk.TakeLast();
    desk.session.settings.reportPreview = 0;
    Batch({BatchTick::P11DB});
    EXPECT_EQ(TextsOf(*onPaper, 1), TextsOf(*desk.documents.back(), 1));
    EXPECT_EQ(onPaper->Page(1).front().x2, desk.documents.back()->Page(1).front().x2);
}

TEST_F(PrintJobs, KeepOneEmployeesNumberOffTheNextOnesSheet)
{
    Set("P11D", "NatIns", "AB123456C");
    desk.Add(Employer, "Zoe", "Adams");
    desk.Set("ExtraCars", Employer, "Zoe Adams", "FCashEqu3", "   1000.00");
    door.printers = {"Office"};
    Batch({BatchTick::P11D});
    ASSERT_EQ(desk.documents.size(), 2u);
    EXPECT_FALSE(Holds(*desk.documents[1], 3, "AB123456C"));
}

// ---- a store that fails -------------------------------------------------------------------------

/// Lets one statement of the store fail: the n-th that names the table, any later one too if it goes on failing.
class FailingStore {
public:
    FailingStore(std::string_view table, int first, bool goesOn = false)
    {
        SetStoreFaultHook([this, table = std::string(table), first, goesOn](std::string_view statement) {
            if (statement.find(table) == std::string_view::npos)
                return 0;
            ++count;
            const bool fails = goesOn ? count >= first : count == first;
            hasFailed = hasFailed || fails;
            return fails ? IoError : 0;
        });
    }
    ~FailingStore() { SetStoreFaultHook({}); }
    FailingStore(const FailingStore&) = delete;
    FailingStore& operator=(const FailingStore&) = delete;

    static constexpr int IoError = 10;
    int count = 0;
    bool hasFailed = false;
};

TEST_F(PrintJobs, NameTheProcedureAndItsOwnNumberWhenTheStoreFails)
{
    FillAll();
    struct Case {
        std::string_view table;
        int nth;
        std::string_view procedure;
        int diagnostic;
    };
    for (const Case& one : {Case{"[ExtraCars]", 1, "Print P11D(3-4)", 3}, Case{"[ANotepad]", 1, "Print P11D", 5},
                            Case{"[HNotepad]", 1, "Print P11D", 14}, Case{"[ONotepad6]", 1, "Print P11D", 20}}) {
        const FailingStore store(one.table, one.nth);
        EXPECT_EQ(PrintSingle(), nullptr) << one.table;
        ASSERT_EQ(door.messages.size(), 1u) << one.table;
        EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
        EXPECT_TRUE(door.messages[0].text.starts_with(fmt::format("Procedure: {}\nError 10:  ", one.procedure)))
            << door.messages[0].text;
        EXPECT_TRUE(door.messages[0].text.ends_with(fmt::format("\nDiagnostic: {}", one.diagnostic)))
            << door.messages[0].text;
        EXPECT_EQ(door.messages[0].icon, Icon::Critical);
        EXPECT_FALSE(door.busy);
        EXPECT_FALSE(desk.printing.engine.IsOpen());
        door.messages.clear();
    }
    EXPECT_EQ(PrintSingle()->PageCount(), 38);
}

/// A printer whose spooler breaks down under the document.
class BreakingDoor : public ScriptedDoor {
public:
    PrintOutcome Print(const PrintRequest&) override { throw std::runtime_error("The spooler has gone"); }
};

TEST(ABatchInTrouble, NamesItselfWhereADocumentThatIsDrawnCannotBeEnded)
{
    BreakingDoor door;
    door.printers = {"Office"};
    PrintDesk desk(door);
    desk.Add(Employer, "Jane", "Smith");
    BatchSelection forms;
    forms.Set(BatchTick::P11D);
    PrintBatchJob(desk.session, desk.printing, Employer, forms);
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].text, "Procedure: Batch Print\nError 0:  The spooler has gone\nDiagnostic: 22");
    EXPECT_FALSE(door.busy);
}

TEST_F(PrintJobs, NameTheSheetOfFurtherCarsThatCannotBeRead)
{
    FillAll();
    std::map<std::string, std::string> diagnosticOf;
    bool failed = true;
    for (int statement = 1; failed; ++statement) {
        const FailingStore store("[ExtraCars]", statement);
        PrintSingle();
        failed = store.hasFailed;
        for (const Message& message : door.messages)
            if (message.text.starts_with("Procedure: "))
                diagnosticOf[message.text.substr(11, message.text.find('\n') - 11)] =
                    message.text.substr(message.text.rfind('\n') + 1);
        door.messages.clear();
    }
    EXPECT_EQ(diagnosticOf, (std::map<std::string, std::string>{{"Print P11D(3-4)", "Diagnostic: 3"},
                                                                {"Print P11D(5-6)", "Diagnostic: 4"}}));
}

TEST_F(PrintJobs, SayThatACarCannotBeReadAndGoOn)
{
    FillAll();
    // The form itself is read first, then once for each of the two cars.
    const FailingStore store("[P11D]", 2, true);
    const auto document = PrintSingle();
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(document->PageCount(), 36);
    ASSERT_EQ(door.messages.size(), 2u);
    for (const Message& message : door.messages) {
        EXPECT_EQ(message.title, "2011 Quillmere");
        EXPECT_EQ(message.text, "Unable to Open Car Information for printing");
    }
}

TEST_F(PrintJobs, OfABatchStopWhereTheStoreFailsAndPrintNoHalfDocument)
{
    door.printers = {"Office"};
    desk.Add(Employer, "Adam", "Zweig");
    FillAll();
    BatchSelection all = BatchSelection::All();
    bool failed = true;
    int statement = 0, marksLost = 0;
    std::map<std::string, int> procedures;
    while (failed) {
        ++statement;
        door.messages.clear();
        door.printed.clear();
        door.progress.clear();
        const FailingStore store("", statement);
        PrintBatchJob(desk.session, desk.printing, Employer, all);
        failed = store.hasFailed;
        EXPECT_FALSE(door.busy);
        EXPECT_FALSE(desk.printing.engine.IsOpen());
        if (!door.progress.empty()) {
            EXPECT_EQ(door.progress.back(), std::make_pair(0, 0));
        }
        if (!failed)
            break;
        // A form that could not be marked as printed is printed all the same.
        if (door.messages.empty()) {
            ASSERT_EQ(door.printed.size(), 3u) << statement;
            ++marksLost;
            continue;
        }
        ASSERT_EQ(door.messages.size(), 1u) << statement;
        const std::string& text = door.messages[0].text;
        if (text != "Unable to Open Car Information for printing") {
            ASSERT_TRUE(text.starts_with("Procedure: ")) << text;
            ++procedures[text.substr(11, text.find('\n') - 11)];
            EXPECT_LT(door.printed.size(), 3u);
        }
        for (const PrintRequest& request : door.printed)
            if (request.documentName == "Marlow & Sons Ltd - Adam Zweig") {
                EXPECT_EQ(request.pages.size(), 2u);
            } else if (request.documentName == "Marlow & Sons Ltd - Jane Smith") {
                EXPECT_GE(request.pages.size(), 37u); // a car that could not be read is left out
            }
    }
    EXPECT_EQ(door.printed.size(), 3u);
    EXPECT_GT(marksLost, 10);
    EXPECT_GT(statement, 60);
    EXPECT_EQ(procedures.count("Batch Print"), 1u);
    EXPECT_EQ(procedures.count("Print P11D(3-4)"), 1u);
    EXPECT_EQ(procedures.count("Print P11D(5-6)"), 1u);
    EXPECT_EQ(procedures.size(), 3u);
}

TEST_F(PrintJobs, BreakNoFigureOfATable)
{
    PrintedTable table{.documentName = "Table", .heading = "Heading"};
    std::vector<std::string> cells;
    for (int column = 0; column < 8; ++column) {
        table.columns.push_back({.caption = "Sum", .width = 1, .figure = true});
        cells.push_back(fmt::format("{}234567.00", column));
    }
    table.columns.push_back({.caption = "What it is called", .width = 12});
    cells.emplace_back("words that have far more room than the figures beside them and give of it");
    table.rows = {cells};
    PrintTableJob(desk.session, desk.printing, table);
    desk.session.screens.Unload("frmVSPrint");
    const auto document = desk.TakeLast();
    for (int column = 0; column < 8; ++column)
        EXPECT_TRUE(Holds(*document, 1, cells[static_cast<std::size_t>(column)])) << cells[column];
}

TEST_F(PrintJobs, KeepATableOnThePageThatHasNoRoomForItsWords)
{
    PrintedTable table{.documentName = "Table", .heading = "Heading"};
    std::vector<std::string> cells;
    for (int column = 0; column < 24; ++column) {
        table.columns.push_back({.caption = "Sum", .figure = true});
        cells.emplace_back("1234567890.00");
    }
    table.rows = {cells};
    PrintTableJob(desk.session, desk.printing, table);
    desk.session.screens.Unload("frmVSPrint");
    const auto document = desk.TakeLast();
    constexpr double PageRight = 190 * 1440 / 25.4, Rounding = 20; // twips
    for (const Operation& operation : document->Page(1))
        if (operation.kind == OperationKind::Text) {
            EXPECT_LE(operation.x1 + operation.x2, PageRight + Rounding) << document->TextOf(operation);
        }
}

} // namespace
} // namespace quillmere::pages
