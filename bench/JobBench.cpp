// A batch with working papers, from the database to the printer's PDF files, beside a kept connection that reads the
// same records and Qt's PDF writer that writes the same pages, in the same run. Qt is the yardstick here and nothing
// else.

#include "LargestMemory.h"
#include "QtPages.h"
#include "Require.h"
#include "printing/jobs/FileBatch.h"
#include "printing/jobs/PrintJobs.h"
#include "support/PrintDesk.h"
#include "support/TemporaryFolder.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <deque>
#include <filesystem>
#include <optional>
#include <sched.h>
#include <time.h>

namespace quillmere {
namespace {

using test::PrintDesk;
using test::ScriptedDoor;

constexpr std::string_view Employer = "Marlow & Sons Ltd";

/// The tables that an employee's papers and declaration read.
constexpr auto Tables = std::to_array<std::string_view>({
    "P11D",      "ExtraCars", "ANotepad",  "BNotepad",  "CNotepad",  "DNotepad",  "ENotepad",  "FNotepad",
    "GNotepad",  "HNotepad",  "INotepad",  "JNotepad",  "KNotepad",  "LNotepad",  "NNotepad1", "NNotepad2",
    "NNotepad3", "ONotepad1", "ONotepad2", "ONotepad3", "ONotepad4", "ONotepad5", "ONotepad6", "SpareTable",
});

/// Takes what comes and keeps nothing of it.
class CountingDoor : public ScriptedDoor {
public:
    PrintOutcome Print(const PrintRequest& request) override
    {
        bytes += request.pdf.size();
        pages += request.pages.size();
        return PrintOutcome::Sent;
    }
    void ShowProgress(int, int) override {}

    std::size_t bytes = 0, pages = 0;
};

std::string EmployeeOf(int number)
{
    return fmt::format("Jane Smith-{:04}", number);
}

constexpr std::size_t PagesEach = 6;

/// A database of employees with so many pages each: both sides of the form, two schedules, a car and the accommodation.
class Office {
public:
    explicit Office(int employees) : Office()
    {
        desk.AddSmiths(Employer, employees);
        {
            Database database = desk.Open();
            const WriteBatch batch(database);
            for (const std::string_view table : {"ANotepad", "ONotepad1", "DNotepad"})
                for (int number = 1; number <= employees; ++number)
                    FillAll(database, table, EmployeeOf(number));
            for (int number = 1; number <= employees; ++number)
                FillForm(database, EmployeeOf(number));
        }
    }

    /// The same with the database of another one.
    explicit Office(const std::filesystem::path& made) : Office()
    {
        std::filesystem::copy_file(made, desk.session.ClientDatabasePath(),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    void PrintBatch()
    {
        BatchSelection all = BatchSelection::All();
        all.Set(BatchTick::P11DB, false);
        PrintBatchJob(desk.session, desk.printing, Employer, all);
        if (!door.messages.empty())
            throw std::runtime_error(door.messages.front().text);
    }

    CountingDoor door;
    PrintDesk desk{door, "/dev/shm"};

private:
    Office()
    {
        door.printers = {"Office"};
        desk.printing.engine.documentEnded = nullptr;
    }
    static void FillAll(Database& database, std::string_view table, const std::string& employee)
    {
        Recordset records = database.OpenRecordset(table);
        PrintDesk::Seek(records, table, Employer, employee);
        PrintDesk::FillRecord(records, table);
    }
    static void FillForm(Database& database, const std::string& employee)
    {
        Recordset records = database.OpenRecordset("P11D");
        PrintDesk::Seek(records, "P11D", Employer, employee);
        records.Edit();
        for (const Field& field : FieldsOf(FindTable("P11D")).All())
            if (field.kind == FieldKind::Amount && !field.name.ends_with("2"))
                records.SetField(field.name, "   1234.50");
        records.SetField("FMakeModel1", "Rover 75");
        records.Update();
    }
};

constexpr int Employees = 300;

Office& OfficeOf300()
{
    static Office office(Employees);
    return office;
}

void BatchWithWorkingPapers(benchmark::State& state)
{
    Office& office = OfficeOf300();
    for (auto _ : state) {
        office.door.bytes = office.door.pages = 0;
        office.PrintBatch();
    }
    state.counters["pages"] = static_cast<double>(office.door.pages);
    state.counters["bytes"] = static_cast<double>(office.door.bytes);
}
BENCHMARK(BatchWithWorkingPapers)->Unit(benchmark::kMillisecond);

/// The same documents; the 24 records of each employee are read over one connection, every field of them.
void BatchWithWorkingPapersQPdfWriter(benchmark::State& state)
{
    Office& office = OfficeOf300();
    std::vector<std::shared_ptr<const Document>> documents;
    office.desk.printing.engine.documentEnded = [&](std::shared_ptr<const Document> document) {
        documents.push_back(std::move(document));
    };
    office.PrintBatch();
    office.desk.printing.engine.documentEnded = nullptr;
    static QtPages pages;
    qsizetype bytes = 0;
    std::size_t read = 0;
    for (auto _ : state) {
        bytes = 0;
        Database database = office.desk.Open();
        std::vector<Recordset> cursors;
        for (const std::string_view table : Tables) {
            cursors.push_back(database.OpenRecordset(table));
            cursors.back().Index("IndKey");
        }
        for (int number = 1; number <= Employees; ++number) {
            for (std::size_t table = 0; table < Tables.size(); ++table) {
                cursors[table].Seek(Employer, EmployeeOf(number));
                for (const Field& field : FieldsOf(FindTable(Tables[table])).All())
                    read += cursors[table].Field(field.name).size();
            }
            bytes += pages.Write(*documents.at(static_cast<std::size_t>(number - 1))).size();
        }
    }
    benchmark::DoNotOptimize(read);
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BatchWithWorkingPapersQPdfWriter)->Unit(benchmark::kMillisecond);

BatchOrder AllPapers()
{
    BatchOrder order{.employer = std::string(Employer), .selection = BatchSelection::All()};
    order.selection.Set(BatchTick::P11DB, false);
    return order;
}

/// The documents of a batch to PDF files, drawn and made without names and files.
class BatchWithoutFiles : public Batch {
public:
    explicit BatchWithoutFiles(Office& office)
        : Batch(office.desk.session, office.desk.printing, AllPapers(), Route::File)
    {
    }
    std::size_t bytes = 0;

protected:
    Opening Open(const std::string& name, BatchLine::Of) override
    {
        const Opening opening = job.document.OpenPrintJob(name);
        job.page.LeaveNoPageEmpty();
        return opening;
    }
    void Close(BatchLine line) override
    {
        job.document.vsEndDoc();
        bytes += writer.Write(*job.document.Ended()).size();
        Note(std::move(line));
    }
    ProgressBar::Shows Shows() const override { return ProgressBar::Shows::WholePercents; }

private:
    PdfWriter writer;
};

void RunToEnd(Batch& batch)
{
    while (batch.GoOn()) {
    }
    for (const BatchLine& line : batch.Report().lines)
        bench::Require(line.outcome != BatchLine::Outcome::Failed && line.outcome != BatchLine::Outcome::Kept,
                       line.words);
}

void MakeFiles(Office& office, const std::filesystem::path& folder)
{
    BatchOrder order = AllPapers();
    order.files = FilesOrder{.folder = folder};
    FileBatch batch(office.desk.session, office.desk.printing, order);
    RunToEnd(batch);
    bench::Require(batch.Report().Again() == std::nullopt, "every file is written");
}

/// Two ways of doing the same, in pairs that take turns at being first: medians of the time by the clock, since files
/// and the other processor are waited for.
template<class Subject, class Yardstick>
void TakeTurns(benchmark::State& state, Subject subject, Yardstick yardstick)
{
    using Clock = std::chrono::steady_clock;
    constexpr int Pairs = 7;
    const auto timed = [](const auto& work) {
        const auto begin = Clock::now();
        work();
        return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
    };
    const auto median = [](std::vector<double> times) {
        std::ranges::sort(times);
        return times[times.size() / 2];
    };
    for (auto _ : state) {
        std::vector<double> ours, theirs, ratios;
        for (int pair = 0; pair < Pairs; ++pair) {
            if (pair % 2 == 0)
                ours.push_back(timed(subject));
            theirs.push_back(timed(yardstick));
            if (pair % 2 != 0)
                ours.push_back(timed(subject));
            ratios.push_back(ours.back() / theirs.back());
        }
        state.counters["ms"] = median(ours);
        state.counters["ms of yardstick"] = median(theirs);
        state.counters["ratio"] = median(ratios);
    }
}

/// Folders for the files of batches. They go at the end: for half a minute a file system looks at each number of a file
/// that has gone before it takes one for a new file.
class Folders {
public:
    explicit Folders(const std::filesystem::path& in) : in(in) {}
    const std::filesystem::path& Next() { return folders.emplace_back(in).path; }

private:
    std::filesystem::path in;
    std::deque<test::TemporaryFolder> folders;
};

/// A batch of 1,000 to files beside the same documents without names and files.
void FilesBesideNoFiles(benchmark::State& state, const std::filesystem::path& in)
{
    Office office(1000);
    Folders folders(in);
    TakeTurns(
        state, [&] { MakeFiles(office, folders.Next()); },
        [&] {
            BatchWithoutFiles batch(office);
            RunToEnd(batch);
        });
}

double Milliseconds(clockid_t clock)
{
    timespec now{};
    ::clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

/// How much of a batch's processor time its drawing takes, which no second processor can shorten.
void ShareOfTheDrawing(benchmark::State& state, const std::filesystem::path& in)
{
    Office office(1000);
    Folders folders(in);
    for (auto _ : state) {
        const double all = Milliseconds(CLOCK_PROCESS_CPUTIME_ID), own = Milliseconds(CLOCK_THREAD_CPUTIME_ID);
        MakeFiles(office, folders.Next());
        state.counters["ms of drawing"] = Milliseconds(CLOCK_THREAD_CPUTIME_ID) - own;
        state.counters["ms"] = Milliseconds(CLOCK_PROCESS_CPUTIME_ID) - all;
        state.counters["ratio"] = state.counters["ms of drawing"] / state.counters["ms"];
    }
}

/// A batch of 1,000 to files on the processors that there are beside the same on one of them.
void FilesOnAllProcessors(benchmark::State& state, const std::filesystem::path& in)
{
    Office office(1000);
    Folders folders(in);
    cpu_set_t all{};
    bench::Require(::sched_getaffinity(0, sizeof all, &all) == 0, "the processors are known");
    TakeTurns(
        state, [&] { MakeFiles(office, folders.Next()); },
        [&] {
            cpu_set_t one{};
            CPU_SET(static_cast<std::size_t>(::sched_getcpu()), &one);
            bench::Require(::sched_setaffinity(0, sizeof one, &one) == 0, "a processor can be chosen");
            MakeFiles(office, folders.Next());
            bench::Require(::sched_setaffinity(0, sizeof all, &all) == 0, "all processors can be had back");
        });
}

/// What the whole of a large office leaves in one go.
void ManyFiles(benchmark::State& state)
{
    constexpr int Everybody = 10'000;
    Office office(Everybody);
    const test::TemporaryFolder folder;
    for (auto _ : state) {
        const double processor = Milliseconds(CLOCK_PROCESS_CPUTIME_ID), clock = Milliseconds(CLOCK_MONOTONIC);
        MakeFiles(office, folder.path);
        state.counters["processor ms each"] = (Milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processor) / Everybody;
        state.counters["ms each"] = (Milliseconds(CLOCK_MONOTONIC) - clock) / Everybody;
    }
    bench::Require(test::NamesIn(folder.path).size() == Everybody, "each employee has a file");
}

void MakeFilesAlone(int employees, const std::filesystem::path& database)
{
    Office office(database);
    const test::TemporaryFolder folder;
    MakeFiles(office, folder.path);
    bench::Require(test::NamesIn(folder.path).size() == static_cast<std::size_t>(employees),
                   "each employee has a file");
}

void PrintAlone(int employees, const std::filesystem::path& database)
{
    Office office(database);
    office.PrintBatch();
    bench::Require(office.door.pages == static_cast<std::size_t>(employees) * PagesEach, "each employee is printed");
}

/// Largest memory of a process that prints a batch, or makes the files of one, and nothing else.
void MemoryOfABatch(benchmark::State& state, std::string_view work)
{
    std::optional<Office> office;
    bench::CompareLargestMemory(
        state, work, [&](int employees) { return office.emplace(employees).desk.session.ClientDatabasePath(); });
}

} // namespace
} // namespace quillmere

int main(int argc, char** argv)
{
    if (quillmere::bench::HasMeasuredMemory(
            argc, argv, {{"printing", quillmere::PrintAlone}, {"files", quillmere::MakeFilesAlone}}))
        return 0;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    // What takes turns gives medians by itself.
    const auto add = [](const std::string& name, auto run, int repetitions = 1) {
        benchmark::RegisterBenchmark(name.c_str(), run)
            ->Iterations(1)
            ->Repetitions(repetitions)
            ->Unit(benchmark::kMillisecond);
    };
    using benchmark::State;
    add(
        "MemoryOfABatchJob", [](State& state) { quillmere::MemoryOfABatch(state, "printing"); }, 3);
    add(
        "MemoryOfABatchToFiles", [](State& state) { quillmere::MemoryOfABatch(state, "files"); }, 3);
    add("BatchOf10000ToFiles", quillmere::ManyFiles);
    for (const std::string in : {"/dev/shm", "/tmp"}) {
        add("BatchToFilesBesideNone " + in, [in](State& state) { quillmere::FilesBesideNoFiles(state, in); });
        add("DrawingOfABatchToFiles " + in, [in](State& state) { quillmere::ShareOfTheDrawing(state, in); });
        add("BatchToFilesOnAllProcessors " + in, [in](State& state) { quillmere::FilesOnAllProcessors(state, in); });
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
