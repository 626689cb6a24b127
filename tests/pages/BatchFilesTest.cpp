// Batches to PDF files, and batches that go to a printer piece by piece.
#include "PdfReadBack.h"
#include "frame/CheckedFile.h"
#include "printing/jobs/FileBatch.h"
#include "printing/jobs/PdfNames.h"
#include "printing/jobs/PrePrint.h"
#include "printing/jobs/PrintJobs.h"
#include "support/PrintDesk.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fmt/format.h>
#include <set>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace quillmere::pages {
namespace {

using test::PrintDesk;
using test::ScriptedDoor;
using test::SmallDisk;
using Outcome = BatchLine::Outcome;

constexpr std::string_view Employer = "Acme Ltd";

/// A printer that takes its time.
class SlowDoor : public ScriptedDoor {
public:
    PrintOutcome Print(const PrintRequest& request) override
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(60)); // more than a piece of a batch
        return ScriptedDoor::Print(request);
    }
};

class BatchFiles : public ::testing::Test {
protected:
    void Add(int employees)
    {
        Database database = desk.Open();
        for (int number = 1; number <= employees; ++number)
            CreateEmployee(database, {.employer = std::string(Employer),
                                      .firstName = "Jane",
                                      .surname = fmt::format("Smith-{:02}", number)});
    }
    BatchOrder Order(std::initializer_list<BatchTick> ticks, FilesOrder files) const
    {
        BatchOrder order{.employer = std::string(Employer), .files = std::move(files)};
        for (const BatchTick tick : ticks)
            order.selection.Set(tick);
        return order;
    }
    BatchReport Run(const BatchOrder& order)
    {
        FileBatch batch(desk.session, desk.printing, order);
        while (batch.GoOn()) {
        }
        EXPECT_TRUE(door.messages.empty()) << door.messages.front().text;
        return batch.Report();
    }
    static std::set<std::string> FilesIn(const std::filesystem::path& folder)
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename());
        return names;
    }
    static bool IsWhole(const std::filesystem::path& file)
    {
        const std::string bytes = ReadFile(file);
        return bytes.starts_with("%PDF-") && bytes.ends_with("%%EOF\n");
    }

    SlowDoor door;
    PrintDesk desk{door};
    test::TemporaryFolder folder;
};

TEST_F(BatchFiles, AFullDiskNamesWhoIsNotWrittenAndLeavesNoCutFile)
{
    SmallDisk disk(150'000);
    if (!disk.Missing().empty())
        GTEST_SKIP() << "no disk of the test's own: " << disk.Missing();
    Add(12);
    const BatchOrder order = Order({BatchTick::P11D, BatchTick::P11DB}, {.folder = disk.Path()});
    const BatchReport report = Run(order);
    std::set<std::string> written;
    std::size_t failed = 0;
    for (const BatchLine& line : report.lines) {
        if (line.outcome == Outcome::Done) {
            written.insert(line.words);
            EXPECT_TRUE(IsWhole(disk.Path() / line.words)) << line.words;
            continue;
        }
        ++failed;
        EXPECT_EQ(line.outcome, Outcome::Failed) << line.name;
        EXPECT_EQ(line.words, "No space left on device") << line.name;
    }
    EXPECT_EQ(report.lines.size(), 13U);
    EXPECT_GT(written.size(), 0U);
    EXPECT_GT(failed, 0U);
    EXPECT_EQ(FilesIn(disk.Path()), written) << "nothing else is left behind";
    EXPECT_NE(report.InWords().find(fmt::format("{} not: ", failed)), std::string::npos) << report.InWords();

    disk.Enlarge(4'000'000);
    const BatchReport again = Run(*report.Again());
    EXPECT_EQ(again.lines.size(), failed);
    for (const BatchLine& line : again.lines)
        EXPECT_EQ(line.outcome, Outcome::Done) << line.name;
    EXPECT_EQ(FilesIn(disk.Path()).size(), 13U);
    EXPECT_FALSE(again.Again());
}

TEST_F(BatchFiles, AFileThatIsThereIsReplacedWholeOrKept)
{
    Add(2);
    BatchOrder order = Order({BatchTick::P11D}, {.folder = folder.path});
    const std::string first = "Acme Ltd - Jane Smith-01 - P11D 2010-11.pdf";
    WriteFileChecked(folder / first, "mine");
    EXPECT_EQ(FilesThere(desk.session, order), std::vector<std::string>{first});
    order.files->replaces = false;
    EXPECT_EQ(Run(order).lines.front().outcome, Outcome::Kept);
    EXPECT_EQ(ReadFile(folder / first), "mine");
    order.files->replaces = true;
    EXPECT_EQ(Run(order).lines.front().outcome, Outcome::Done);
    EXPECT_TRUE(IsWhole(folder / first));
    EXPECT_EQ(FilesThere(desk.session, order).size(), 2U);
    EXPECT_EQ(FilesIn(folder.path).size(), 2U) << "no temporary file is left";
}

TEST_F(BatchFiles, AFileThatDoesNotGetItsNameIsToldOf)
{
    Add(3);
    FileBatch batch(desk.session, desk.printing, Order({BatchTick::P11D}, {.folder = folder.path}));
    const std::string second = "Acme Ltd - Jane Smith-02 - P11D 2010-11.pdf";
    // A folder comes in the way after the file has been written, and before it has its name.
    while (batch.GoOn())
        if (batch.Report().lines.size() == 2)
            std::filesystem::create_directories(folder / second / "inside");
    const std::vector<BatchLine>& lines = batch.Report().lines;
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].outcome, Outcome::Done);
    EXPECT_EQ(lines[1].outcome, Outcome::Failed);
    EXPECT_EQ(lines[1].words, "Is a directory");
    EXPECT_EQ(lines[2].outcome, Outcome::Done);
    EXPECT_EQ(FilesIn(folder.path).size(), 3U) << "no temporary file is left";
    EXPECT_TRUE(batch.Report().Again()->only->contains("Jane Smith-02"));
    EXPECT_EQ(desk.printing.lastBatch->lines.at(1).outcome, Outcome::Failed)
        << "the list of the last batch says so, too";
}

TEST_F(BatchFiles, AFileThatAnotherProgramHoldsIsLeftAsItIs)
{
    Add(2);
    BatchOrder order = Order({BatchTick::P11D}, {.folder = folder.path});
    const std::string first = "Acme Ltd - Jane Smith-01 - P11D 2010-11.pdf";
    WriteFileChecked(folder / first, "mine");
    const int held = ::open((folder / first).c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(held, LOCK_SH), 0);
    order.files->replaces = true;
    const BatchReport report = Run(order);
    ::close(held);
    EXPECT_EQ(report.lines.front().outcome, Outcome::Failed);
    EXPECT_EQ(report.lines.front().words, "another program has the file open, or it may not be written");
    EXPECT_EQ(ReadFile(folder / first), "mine");
    EXPECT_EQ(report.lines.back().outcome, Outcome::Done);
}

TEST_F(BatchFiles, TheReportKeepsTheOrderWhateverBecomesOfTheFiles)
{
    constexpr int Employees = 20;
    Add(Employees);
    const BatchOrder order = Order({BatchTick::P11D, BatchTick::P11DB},
                                   {.folder = folder.path, .each = true, .whole = true, .replaces = false});
    const auto fileOf = [](int number) {
        return fmt::format("Acme Ltd - Jane Smith-{:02} - P11D 2010-11.pdf", number);
    };
    WriteFileChecked(folder / fileOf(3), "mine");
    std::filesystem::create_directories(folder / fileOf(17));
    BatchOrder replacing = order;
    replacing.files->replaces = true;
    const auto outcomes = [](const BatchReport& report) {
        std::vector<std::string> list;
        for (const BatchLine& line : report.lines)
            list.push_back(fmt::format("{} {}", line.name, static_cast<int>(line.outcome)));
        return list;
    };
    std::vector<std::string> expected;
    for (int number = 1; number <= Employees; ++number)
        expected.push_back(fmt::format("Jane Smith-{:02} {}", number,
                                       static_cast<int>(number == 17 ? Outcome::Failed : Outcome::Done)));
    expected.push_back(fmt::format("the file with all {}", static_cast<int>(Outcome::Done)));
    expected.push_back(fmt::format("the P11D(b) {}", static_cast<int>(Outcome::Done)));
    EXPECT_EQ(outcomes(Run(replacing)), expected);
    for (std::string& line : expected)
        line.back() = static_cast<char>('0' + static_cast<int>(Outcome::Kept));
    EXPECT_EQ(outcomes(Run(order)), expected);
    EXPECT_TRUE(IsWhole(folder / fileOf(3)));
}

TEST_F(BatchFiles, WhatWasTakenInHandBeforeTheEndIsWritten)
{
    Add(12);
    const BatchOrder order = Order({BatchTick::P11D}, {.folder = folder.path});
    FileBatch batch(desk.session, desk.printing, order);
    while (batch.GoOn())
        if (batch.Report().lines.size() == 7)
            batch.Stop();
    const std::vector<BatchLine>& lines = batch.Report().lines;
    ASSERT_EQ(lines.size(), 12U);
    std::set<std::string> written;
    for (std::size_t place = 0; place < lines.size(); ++place) {
        EXPECT_EQ(lines[place].name, fmt::format("Jane Smith-{:02}", place + 1));
        EXPECT_EQ(lines[place].outcome, place < 7 ? Outcome::Done : Outcome::Left) << lines[place].name;
        if (lines[place].outcome == Outcome::Done) {
            written.insert(lines[place].words);
            EXPECT_TRUE(IsWhole(folder / lines[place].words));
        }
    }
    EXPECT_EQ(FilesIn(folder.path), written);
}

TEST_F(BatchFiles, OneThatIsGivenUpLeavesNoCutFile)
{
    Add(8);
    {
        FileBatch batch(desk.session, desk.printing, Order({BatchTick::P11D}, {.folder = folder.path}));
        while (batch.Report().lines.size() < 6)
            ASSERT_TRUE(batch.GoOn());
    }
    for (const std::string& name : FilesIn(folder.path))
        EXPECT_TRUE(IsWhole(folder / name)) << name;
}

TEST_F(BatchFiles, TheFileWithAllHasAChapterForEachEmployee)
{
    Add(2);
    desk.Set("ANotepad", Employer, "Jane Smith-02", "Description1", "Desk");
    const BatchReport report =
        Run(Order({BatchTick::P11D, BatchTick::A}, {.folder = folder.path, .each = false, .whole = true}));
    EXPECT_EQ(report.InWords(), "the file with all, 5 pages, written to " + folder.path.string());
    const auto document = desk.TakeLast();
    EXPECT_EQ(document->name, Employer);
    std::vector<std::string> chapters;
    for (const Bookmark& bookmark : document->bookmarks)
        if (bookmark.level == 1)
            chapters.push_back(fmt::format("{} {}", bookmark.page, bookmark.title));
    EXPECT_EQ(chapters, (std::vector<std::string>{"1 Jane Smith-01", "3 Jane Smith-02"}));
    const ProgramRun check = RunProgram({"qpdf", "--check", (folder / "Acme Ltd - P11D 2010-11.pdf").string()});
    EXPECT_EQ(check.status, 0) << check.output;
}

TEST_F(BatchFiles, ThePasswordIsWhatTheEmployeeKnows)
{
    struct Case {
        OpeningWord word;
        std::string_view field, text, opens;
    };
    const std::string file = folder / "Acme Ltd - Jane Smith-01 - P11D 2010-11.pdf";
    Add(1);
    for (const Case& one : {Case{OpeningWord::NationalInsurance, "NatIns", "ab 12 34 56 c", "AB123456C"},
                            Case{OpeningWord::BirthDate, "DOB", "1/2/1970", "01021970"},
                            Case{OpeningWord::WorksNumber, "WorkNumberBox", " Sales 7 ", "Sales 7"}}) {
        const BatchOrder order = Order({BatchTick::P11D}, {.folder = folder.path, .word = one.word});
        EXPECT_EQ(Run(order).lines.front().outcome, Outcome::Failed) << one.field;
        EXPECT_FALSE(std::filesystem::exists(file)) << "never without the password that was asked for";
        desk.Set("P11D", Employer, "Jane Smith-01", one.field, one.text);
        EXPECT_EQ(Run(order).lines.front().outcome, Outcome::Done) << one.field;
        EXPECT_NE(RunProgram({"qpdf", "--check", file}).status, 0) << one.field;
        const auto with = fmt::format("--password={}", one.opens);
        EXPECT_EQ(RunProgram({"qpdf", with, "--check", file}).status, 0) << one.field;
        std::filesystem::remove(file);
    }
}

TEST_F(BatchFiles, NamesThatADiskTakesForTheSameAreToldApart)
{
    const BatchFileNames names("A/B", {"Jane Smith", "jane smith", "Jane: Smith", "Jane/ Smith", "P11D(b)"}, false);
    EXPECT_EQ(names.ofDeclaration, "A-B - P11D(b) 2010-11.pdf");
    EXPECT_EQ(names.ofEmployee.at("Jane Smith"), "A-B - Jane Smith 2010-11.pdf");
    EXPECT_EQ(names.ofEmployee.at("jane smith"), "A-B - jane smith 2010-11 (2).pdf");
    EXPECT_EQ(names.ofEmployee.at("Jane: Smith"), "A-B - Jane- Smith 2010-11.pdf");
    EXPECT_EQ(names.ofEmployee.at("Jane/ Smith"), "A-B - Jane- Smith 2010-11 (2).pdf");
    EXPECT_EQ(names.ofEmployee.at("P11D(b)"), "A-B - P11D(b) 2010-11 (2).pdf");
}

TEST_F(BatchFiles, SavePdfHasThePagesOfThePdfRoad)
{
    Add(1);
    desk.session.settings.vsLeft = 5;
    desk.session.settings.vsScale = 90;
    desk.session.settings.vsPdfTop = 3;
    const auto print = [&](int preview) {
        desk.session.settings.reportPreview = preview;
        PrintEmployeeJob(desk.session, desk.printing, Employer, "Jane Smith-01", PrintedDocument::Employee);
    };
    print(1);
    print(0);
    const auto previewed = desk.TakeLast();
    ASSERT_TRUE(SaveShown(desk.session, desk.printing, folder / "saved.pdf"));
    EXPECT_TRUE(ReadFile(folder / "saved.pdf") == ReadFile(desk.printing.document.PdfPath()));
    EXPECT_EQ(desk.printing.engine.Ended(), previewed) << "the preview goes on with its own";
    EXPECT_TRUE(door.messages.empty());
}

/// The screen from which batches begin, with its pieces run one by one.
class BatchScreen : public BatchFiles {
protected:
    BatchScreen()
    {
        door.printers = {"Office"};
        desk.session.screens.Register(
            "PrePrint", [this](Session& with) { return std::make_unique<PrePrint>(with, desk.printing); });
    }
    Screen& Begin()
    {
        Screen& screen = *desk.session.screens.Show("PrePrint");
        screen.Choose(screen.box("EmpList"), 0);
        screen.box("P11D").SetTicked(true);
        screen.Click(screen.box("Print"));
        return screen;
    }
    void Piece() { desk.session.screens.RunDeferred(); }
    void RunToEnd()
    {
        while (desk.session.screens.HasDeferred())
            Piece();
    }
};

TEST_F(BatchScreen, SaysWhoseDocumentIsInHandAndEndsWhenItIsCancelled)
{
    Add(4);
    Screen& screen = Begin();
    EXPECT_FALSE(screen.box("Print").Enabled());
    EXPECT_FALSE(screen.box("EmpList").Enabled());
    Piece();
    EXPECT_EQ(door.printed.size(), 1U);
    EXPECT_EQ(screen.box("BatchNow").Text(), "Jane Smith-01, 1 of 4");
    Piece();
    EXPECT_EQ(screen.box("BatchNow").Text(), "Jane Smith-02, 2 of 4");
    screen.RequestClose();
    EXPECT_NE(desk.session.screens.Find("PrePrint"), nullptr) << "until the document in hand has ended";
    RunToEnd();
    EXPECT_EQ(desk.session.screens.Find("PrePrint"), nullptr);
    EXPECT_EQ(door.printed.size(), 2U);
    EXPECT_FALSE(door.busy);
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(desk.printing.lastBatch->InWords(),
              "4 employees, 4 pages, 2 sent to Office, 2 left, from Jane Smith-03 on");
    const auto again = desk.printing.lastBatch->Again();
    EXPECT_EQ(*again->only, (std::set<std::string, std::less<>>{"Jane Smith-03", "Jane Smith-04"}));
}

TEST_F(BatchScreen, PrintsAgainWhatFailedAndNothingElse)
{
    Add(3);
    Begin();
    Piece();
    door.printOutcome = PrintOutcome::PrinterUnreachable;
    Piece();
    door.printOutcome = PrintOutcome::Sent;
    RunToEnd();
    EXPECT_EQ(desk.printing.lastBatch->InWords(),
              "3 employees, 4 pages, 2 sent to Office, 1 not: Jane Smith-02, the printer did not answer");
    EXPECT_EQ(door.messages.size(), 2U) << "as ever: the printer's box, and the names at the end";
    desk.session.CurrentEmployee = "Jane Smith-01";
    door.printed.clear();
    const std::unique_ptr<Batch> again = MakeBatch(desk.session, desk.printing, *desk.printing.lastBatch->Again());
    while (again->GoOn()) {
    }
    ASSERT_EQ(door.printed.size(), 1U);
    EXPECT_EQ(door.printed.front().documentName, "Acme Ltd - Jane Smith-02");
    EXPECT_EQ(desk.session.CurrentEmployee, "Jane Smith-01") << "whoever is open stays the one that is worked on";
    EXPECT_EQ(desk.printing.lastBatch->InWords(), "1 employee, 2 pages, sent to Office");
    EXPECT_FALSE(desk.printing.lastBatch->Again());
}

} // namespace
} // namespace quillmere::pages
