// A batch with working papers, from the database to the printer's PDF files, beside a kept connection that reads the
// same records and Qt's PDF writer that writes the same pages, in the same run. Qt is the yardstick here and nothing
// else.

#include "LargestMemory.h"
#include "QtPages.h"
#include "Require.h"
#include "printing/jobs/FileBatch.h"
#include "printing/jobs/PrintJobs.h"
#include "support/PrintDesk.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <deque>

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

/// A database of employees with six pages each: both sides of the form, two schedules, a car and the accommodation.
class Office {
public:
    explicit Office(int employees)
    {
        door.printers = {"Office"};
        desk.printing.engine.documentEnded = nullptr;
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
        bytes += job.document.Pdf({}).size();
        Note(std::move(line));
    }
    ProgressBar::Shows Shows() const override { return ProgressBar::Shows::WholePercents; }
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

/// A batch of 1,000 to files beside the same documents without names and files, in pairs that take turns at being
/// first: medians of the time by the clock, since files are waited for.
void FilesBesideNoFiles(benchmark::State& state, const std::filesystem::path& in)
{
    using Clock = std::chrono::steady_clock;
    constexpr int Pairs = 7;
    Office office(1000);
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
        std::vector<double> with, without, ratios;
        // The files go at the end: for half a minute a file system looks at each number of a file that has gone before
        // it takes one for a new file.
        std::deque<test::TemporaryFolder> folders;
        for (int pair = 0; pair < Pairs; ++pair) {
            const test::TemporaryFolder& folder = folders.emplace_back(in);
            const auto files = [&] { with.push_back(timed([&] { MakeFiles(office, folder.path); })); };
            const auto none = [&] {
                without.push_back(timed([&] {
                    BatchWithoutFiles batch(office);
                    RunToEnd(batch);
                }));
            };
            if (pair % 2 == 0) {
                files();
                none();
            } else {
                none();
                files();
            }
            ratios.push_back(with.back() / without.back());
        }
        state.counters["ms with files"] = median(with);
        state.counters["ms without"] = median(without);
        state.counters["ratio"] = median(ratios);
    }
}

/// Largest memory of the process while a batch of 10 makes files, and while one of 1,000 does.
void MemoryOfABatchToFiles(benchmark::State& state)
{
    const auto batch = [](int employees) {
        Office office(employees);
        const test::TemporaryFolder folder;
        bench::ForgetLargestMemory();
        MakeFiles(office, folder.path);
        return bench::LargestMemory();
    };
    bench::CompareLargestMemory(state, batch);
}

/// Largest memory of the process while a batch of 10 is printed, and while one of 1,000 is; what making their
/// databases took is given back before.
void MemoryOfABatchJob(benchmark::State& state)
{
    const auto batch = [](int employees) {
        Office office(employees);
        bench::ForgetLargestMemory();
        office.PrintBatch();
        return bench::LargestMemory();
    };
    bench::CompareLargestMemory(state, batch);
}

} // namespace
} // namespace quillmere

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::RegisterBenchmark("MemoryOfABatchJob", quillmere::MemoryOfABatchJob)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("MemoryOfABatchToFiles", quillmere::MemoryOfABatchToFiles)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    for (const auto* in : {"/dev/shm", "/tmp"})
        benchmark::RegisterBenchmark((std::string("BatchToFilesBesideNone ") + in).c_str(),
                                     [in](benchmark::State& state) { quillmere::FilesBesideNoFiles(state, in); })
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
