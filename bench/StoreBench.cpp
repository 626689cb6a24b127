#include "Bare.h"
#include "Engine.h"
#include "MadeDatabase.h"
#include "ProcessorTime.h"
#include "Require.h"
#include "clientdb/Employees.h"
#include "clientdb/SafetyCopies.h"
#include "clientdb/store/History.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "frame/CheckedFile.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Each pair "what/store" and "what/bare" does the same with the record store and with the C interface of SQLite.
// "what/unnoted" is the store's on a database with something else in the place of the change history, which is off
// then.
namespace quillmere {
namespace {

using bench::Bare;
using bench::Require;

// ---- the data -----------------------------------------------------------------------------------

const std::filesystem::path& Folder()
{
    static const test::TemporaryFolder folder;
    return folder.path;
}

/// The fields of a record that somebody has filled in: every third of them.
void AddFilledRecord(Recordset& records, std::span<const Field> fields, const std::string& employer,
                     const std::string& employee, int seed)
{
    records.AddNew();
    records.SetField("EmployerName", employer);
    records.SetField("EmployeeName", employee);
    records.SetField("Name", JoinedName(employer, employee));
    for (std::size_t i = 4; i < fields.size(); i += 3)
        records.SetField(fields[i].name,
                         fmt::format("{:>10}", fmt::format("{}.00", seed % 9000 + static_cast<int>(i))));
    records.Update();
}

/// P11D of 10,000 employees of 200 employers, in turn.
const std::filesystem::path& TenThousand()
{
    static const bench::MadeDatabase clients([](Database& database) {
        Recordset records = database.OpenRecordset("P11D");
        const auto fields = FieldsOf(FindTable("P11D")).All();
        for (int i = 0; i < 10000; ++i)
            AddFilledRecord(records, fields, fmt::format("Employer {:03}", i % 200),
                            fmt::format("First Surname {:05}", i), i);
    });
    return clients.path;
}

/// One employer of 1,000 employees among 2,000 others, with all their records.
const std::filesystem::path& OneThousand()
{
    static const bench::MadeDatabase clients([](Database& database) {
        for (const TableLayout* table : NewEmployeeTables()) {
            Recordset records = database.OpenRecordset(table->name);
            const auto fields = FieldsOf(*table).All();
            if (table->level == TableLevel::Employer) {
                for (const char* employer : {"Big", "Other"}) {
                    records.AddNew();
                    records.SetField("EmployerName", employer);
                    records.Update();
                }
                continue;
            }
            for (int i = 0; i < 3000; ++i)
                AddFilledRecord(records, fields, i % 3 == 0 ? "Big" : "Other", fmt::format("First Surname {:05}", i),
                                i);
        }
    });
    return clients.path;
}

/// 1,000 employees of 20 employers and nobody else, with all their records.
const std::filesystem::path& ThousandAlone()
{
    static const bench::MadeDatabase clients([](Database& database) {
        for (const TableLayout* table : NewEmployeeTables()) {
            Recordset records = database.OpenRecordset(table->name);
            const auto fields = FieldsOf(*table).All();
            const bool ofEmployer = table->level == TableLevel::Employer;
            for (int i = 0; i < (ofEmployer ? 20 : 1000); ++i)
                if (ofEmployer) {
                    records.AddNew();
                    records.SetField("EmployerName", fmt::format("Employer {:03}", i));
                    records.Update();
                } else {
                    AddFilledRecord(records, fields, fmt::format("Employer {:03}", i % 20),
                                    fmt::format("First Surname {:05}", i), i);
                }
        }
    });
    return clients.path;
}

std::string EmployerOf(int i)
{
    return fmt::format("Employer {:03}", i % 200);
}

std::string EmployeeOf(int i)
{
    return fmt::format("First Surname {:05}", i);
}

// ---- seek and read a whole record, or three fields of it ------------------------------------------

constexpr std::array<std::string_view, 3> Looked = {"FirstName", "Surname", "NatIns"};

std::vector<std::string_view> AllFields()
{
    std::vector<std::string_view> names;
    for (const Field& field : FieldsOf(FindTable("P11D")).All())
        names.push_back(field.name);
    return names;
}

/// Reads the fields of the current record: the bytes of their texts.
std::size_t Read(const Recordset& records, std::span<const std::string_view> names)
{
    std::size_t bytes = 0;
    for (const std::string_view name : names)
        bytes += records.Field(name).size();
    return bytes;
}

void SeekStore(benchmark::State& state, std::span<const std::string_view> names)
{
    Database database = Database::OpenDatabase(bench::OnEngine(TenThousand()));
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    std::minstd_rand random(1);
    for (auto _ : state) {
        const int i = static_cast<int>(random() % 10000);
        records.Seek(EmployerOf(i), EmployeeOf(i));
        benchmark::DoNotOptimize(Read(records, names));
    }
}

/// Reads all columns of the row: the bytes of their texts.
std::size_t ReadRow(sqlite3_stmt* row)
{
    std::size_t bytes = 0;
    const int columns = sqlite3_column_count(row);
    for (int column = 0; column < columns; ++column)
        if (const unsigned char* text = sqlite3_column_text(row, column)) {
            benchmark::DoNotOptimize(text);
            bytes += static_cast<std::size_t>(sqlite3_column_bytes(row, column));
        }
    return bytes;
}

void SeekBare(benchmark::State& state, const std::string& fields)
{
    Bare bare(TenThousand());
    sqlite3_stmt* const seek =
        bare.Prepared(fmt::format("SELECT {} FROM P11D WHERE EmployerName=? AND EmployeeName=?", fields));
    std::minstd_rand random(1);
    for (auto _ : state) {
        const int i = static_cast<int>(random() % 10000);
        const std::string employer = EmployerOf(i);
        const std::string employee = EmployeeOf(i);
        Bare::Bind(seek, 1, employer);
        Bare::Bind(seek, 2, employee);
        Require(sqlite3_step(seek) == SQLITE_ROW, "no record");
        benchmark::DoNotOptimize(ReadRow(seek));
        sqlite3_reset(seek);
    }
}

// ---- thirteen fields of all employees of one employer -------------------------------------------

constexpr std::array<std::string_view, 13> Totalled = {
    "ACashEqu",      "DCashEqu", "FTotalCashCars", "FTotalCashFuel", "GVan",     "GVanFuel", "HLoanCashEqu1",
    "HLoanCashEqu2", "ICashEqu", "JRelocationExp", "KCashEqu",       "LCashEqu", "NCashEqu1"};

void ScanStore(benchmark::State& state, std::span<const std::string_view> names)
{
    const std::filesystem::path& clients = bench::OnEngine(OneThousand());
    for (auto _ : state) {
        Database database = Database::OpenDatabase(clients);
        Recordset records = database.OpenRecordset("P11D");
        std::size_t bytes = 0;
        for (records.MoveFirstOf("Big"); !records.AtEnd(); records.MoveNext())
            bytes += Read(records, names);
        benchmark::DoNotOptimize(bytes);
    }
}

void ScanBare(benchmark::State& state, const std::string& fields)
{
    for (auto _ : state) {
        Bare bare(OneThousand());
        sqlite3_stmt* const rows = bare.Prepared(fmt::format("SELECT {} FROM P11D WHERE EmployerName='Big'", fields));
        std::size_t bytes = 0;
        while (sqlite3_step(rows) == SQLITE_ROW)
            bytes += ReadRow(rows);
        benchmark::DoNotOptimize(bytes);
    }
}

/// The record that was added first of ten thousand, by a cursor that is opened for it.
void FirstStore(benchmark::State& state)
{
    Database database = Database::OpenDatabase(bench::OnEngine(TenThousand()));
    for (auto _ : state) {
        Recordset records = database.OpenRecordset("P11D");
        records.Fetch({"EmployerName", "EmployeeName"});
        records.MoveFirst();
        benchmark::DoNotOptimize(records.Field("EmployeeName").size());
    }
}

// ---- listing employers --------------------------------------------------------------------------

void ListStore(benchmark::State& state)
{
    const std::filesystem::path& clients = bench::OnEngine(TenThousand());
    for (auto _ : state) {
        Database database = Database::OpenDatabase(clients);
        Require(ListEmployers(database).size() == 200, "not all employers");
    }
}

void ListBare(benchmark::State& state)
{
    for (auto _ : state) {
        Bare bare(TenThousand());
        sqlite3_stmt* const rows = bare.Prepared("SELECT DISTINCT EmployerName FROM P11D");
        std::vector<std::string> names;
        while (sqlite3_step(rows) == SQLITE_ROW)
            names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(rows, 0)));
        Require(names.size() == 200, "not all employers");
    }
}

// ---- creating an employee -----------------------------------------------------------------------

/// A copy of a database for writing, in a file or on the engine that is asked for, gone with its end.
enum class Noting { On, Off };
class Copy {
public:
    explicit Copy(const std::filesystem::path& of, Noting noting = Noting::On) : path(Folder() / "copy")
    {
        std::filesystem::copy_file(of, path, std::filesystem::copy_options::overwrite_existing);
        if (noting == Noting::Off)
            Bare(path).Execute("DROP TABLE IF EXISTS HistoryOperation;DROP TABLE IF EXISTS HistoryChange;"
                               "CREATE TABLE HistoryChange(Foreign_)");
        bench::PutOnEngine(path);
    }
    ~Copy() { std::filesystem::remove(path); }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    std::filesystem::path path;
};

void CreateStore(benchmark::State& state, Noting noting)
{
    const Copy copy(TenThousand(), noting);
    int i = 0;
    for (auto _ : state) {
        Database database = Database::OpenDatabase(copy.path);
        CreateEmployee(database, {"New employer", "First", fmt::format("New {}", ++i), "123/A456"});
    }
}

void CreateBare(benchmark::State& state)
{
    const Copy copy(TenThousand());
    int i = 0;
    for (auto _ : state) {
        Bare bare(copy.path);
        const std::string employee = fmt::format("First New {}", ++i);
        const std::string name = "New employer " + employee;
        bare.Execute("BEGIN IMMEDIATE");
        for (const TableLayout* table : NewEmployeeTables()) {
            const std::string into = "INSERT INTO " + std::string(table->name);
            if (table->level == TableLevel::Employer) {
                if (i == 1)
                    bare.Run(into + "(EmployerName) VALUES(?)", {"New employer"});
            } else if (table->name == "P11D") {
                bare.Run(into + "(EmployerName,EmployeeName,Name,FirstName,Surname,PAYEBox) VALUES(?,?,?,?,?,?)",
                         {"New employer", employee, name, "First", "New", "123/A456"});
            } else if (table->name == "ExtraCars") {
                bare.Run(into + "(EmployerName,EmployeeName,Name,FirstName,Surname) VALUES(?,?,?,?,?)",
                         {"New employer", employee, name, "First", "New"});
            } else {
                bare.Run(into + "(EmployerName,EmployeeName,Name) VALUES(?,?,?)", {"New employer", employee, name});
            }
        }
        bare.Execute("COMMIT");
    }
}

// ---- a notepad's Ok -----------------------------------------------------------------------------

constexpr std::array<std::string_view, 4> LineStems = {"Description", "Cost", "AmountGood", "CashEq"};
constexpr std::array<std::string_view, 3> PageTotals = {"KCostYou", "KAmountGood", "KCashEqu"};

void OkStore(benchmark::State& state, Noting noting)
{
    const Copy copy(OneThousand(), noting);
    Database database = Database::OpenDatabase(copy.path);
    int round = 0;
    for (auto _ : state) {
        const std::string text = fmt::format("{:>10}", ++round);
        WriteBatch batch(database);
        Recordset lines = database.OpenRecordset("KNotepad");
        lines.Index("IndKey");
        lines.Seek("Big", EmployeeOf(0));
        for (int line = 1; line <= 20; ++line)
            for (const std::string_view stem : LineStems) {
                lines.Edit();
                lines.SetField(fmt::format("{}{}", stem, line), text);
                lines.Update();
            }
        Recordset page = database.OpenRecordset("P11D");
        page.Index("IndKey");
        page.Seek("Big", EmployeeOf(0));
        for (const std::string_view total : PageTotals) {
            page.Edit();
            page.SetField(total, text);
            page.Update();
        }
        batch.Commit();
    }
}

void OkBare(benchmark::State& state)
{
    const Copy copy(OneThousand());
    Bare bare(copy.path);
    int round = 0;
    for (auto _ : state) {
        const std::string text = fmt::format("{:>10}", ++round);
        const std::string employee = EmployeeOf(0);
        bare.Execute("BEGIN IMMEDIATE");
        for (int line = 1; line <= 20; ++line)
            for (const std::string_view stem : LineStems)
                bare.Run(fmt::format("UPDATE KNotepad SET {}{}=? WHERE EmployerName=? AND EmployeeName=?", stem, line),
                         {text, "Big", employee});
        for (const std::string_view total : PageTotals)
            bare.Run(fmt::format("UPDATE P11D SET {}=? WHERE EmployerName=? AND EmployeeName=?", total),
                     {text, "Big", employee});
        bare.Execute("COMMIT");
    }
}

// ---- renaming and deleting an employer of 1,000 -------------------------------------------------

template<class Work>
void OnFreshCopies(benchmark::State& state, Work work)
{
    for (auto _ : state) {
        const Copy copy(OneThousand());
        const bench::ProcessorTime spent;
        work(copy.path);
        state.SetIterationTime(spent.Seconds());
    }
}

void RenameStore(benchmark::State& state)
{
    OnFreshCopies(state, [](const std::filesystem::path& path) {
        Database database = Database::OpenDatabase(path);
        RenameEmployer(database, "Big", "Bigger", "999/Z");
    });
}

void RenameBare(benchmark::State& state)
{
    OnFreshCopies(state, [](const std::filesystem::path& path) {
        Bare bare(path);
        bare.Execute("BEGIN IMMEDIATE");
        for (const TableLayout* table : NewEmployeeTables()) {
            const std::string update = "UPDATE " + std::string(table->name) + " SET EmployerName='Bigger'";
            if (table->name == "P11D")
                bare.Execute(update + ",Name='Bigger '||EmployeeName,PAYEBox='999/Z' WHERE EmployerName='Big'");
            else if (table->name == "P11DB")
                bare.Execute(update + ",EmployerReference='999/Z',EmployerAdd1='Bigger' WHERE EmployerName='Big'");
            else if (table->level == TableLevel::Employee)
                bare.Execute(update + ",Name='Bigger '||EmployeeName WHERE EmployerName='Big'");
            else
                bare.Execute(update + " WHERE EmployerName='Big'");
        }
        bare.Execute("COMMIT");
    });
}

void DeleteStore(benchmark::State& state)
{
    OnFreshCopies(state, [](const std::filesystem::path& path) {
        Database database = Database::OpenDatabase(path);
        DeleteEmployer(database, "Big");
    });
}

/// To be done within three times the time of the deletion.
void UndoDeletion(benchmark::State& state)
{
    for (auto _ : state) {
        const Copy copy(OneThousand());
        Database database = Database::OpenDatabase(copy.path);
        DeleteEmployer(database, "Big");
        const bench::ProcessorTime spent;
        History history(database);
        Require(history.Undo(history.Operations({}, 1).front().number).empty(), "not undone");
        state.SetIterationTime(spent.Seconds());
        Require(ListEmployees(database, "Big").size() == 1000, "not all are back");
    }
}

void DeleteBare(benchmark::State& state)
{
    OnFreshCopies(state, [](const std::filesystem::path& path) {
        Bare bare(path);
        bare.Execute("BEGIN IMMEDIATE");
        for (const TableLayout* table : NewEmployeeTables())
            bare.Execute("DELETE FROM " + std::string(table->name) + " WHERE EmployerName='Big'");
        bare.Execute("COMMIT");
    });
}

/// A safety copy of 1,000 employees with all their records: copied, synced, opened, looked through, thinned.
void CopyBeforeADeletion(benchmark::State& state)
{
    const std::filesystem::path& file = bench::OnEngine(ThousandAlone());
    for (auto _ : state) {
        std::filesystem::remove_all(CopiesFolder(file));
        const bench::ProcessorTime spent;
        MakeSafetyCopy(file, {.day = {}, .time = "12:00:00", .reason = CopyReason::Delete});
        state.SetIterationTime(spent.Seconds());
    }
    state.counters["MB"] = static_cast<double>(std::filesystem::file_size(ThousandAlone())) / 1'000'000;
}

/// The copying alone, page by page, as the yardstick of what it must cost.
void CopyBare(benchmark::State& state)
{
    const std::filesystem::path& file = ThousandAlone();
    for (auto _ : state) {
        const std::filesystem::path copy = Folder() / "bare-copy";
        std::filesystem::remove(copy);
        const bench::ProcessorTime spent;
        CopyFileChecked(file, copy);
        state.SetIterationTime(spent.Seconds());
    }
}

BENCHMARK_CAPTURE(SeekStore, all, AllFields())->Name("seek and read a record/store");
BENCHMARK_CAPTURE(SeekBare, all, "*")->Name("seek and read a record/bare");
BENCHMARK_CAPTURE(SeekStore, three, Looked)->Name("seek and read three fields/store");
BENCHMARK_CAPTURE(SeekBare, three, fmt::format("{}", fmt::join(Looked, ",")))->Name("seek and read three fields/bare");
BENCHMARK_CAPTURE(ScanStore, totals, Totalled)
    ->Name("13 fields of 1,000 employees/store")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ScanBare, totals, fmt::format("{}", fmt::join(Totalled, ",")))
    ->Name("13 fields of 1,000 employees/bare")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ScanStore, all, AllFields())
    ->Name("all fields of 1,000 employees/store")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ScanBare, all, "*")->Name("all fields of 1,000 employees/bare")->Unit(benchmark::kMicrosecond);
BENCHMARK(FirstStore)->Name("first of 10,000 employees/store");
BENCHMARK(ListStore)->Name("list the employers of 10,000/store")->Unit(benchmark::kMicrosecond);
BENCHMARK(ListBare)->Name("list the employers of 10,000/bare")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(CreateStore, noted, Noting::On)
    ->Name("create an employee/store")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(CreateStore, unnoted, Noting::Off)
    ->Name("create an employee/unnoted")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK(CreateBare)->Name("create an employee/bare")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK_CAPTURE(OkStore, noted, Noting::On)
    ->Name("a notepad's Ok/store")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(OkStore, unnoted, Noting::Off)
    ->Name("a notepad's Ok/unnoted")
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK(OkBare)->Name("a notepad's Ok/bare")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(RenameStore)->Name("rename an employer of 1,000/store")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(RenameBare)->Name("rename an employer of 1,000/bare")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(DeleteStore)->Name("delete an employer of 1,000/store")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(DeleteBare)->Name("delete an employer of 1,000/bare")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(CopyBeforeADeletion)
    ->Name("safety copy of 1,000 employees/store")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(CopyBare)->Name("safety copy of 1,000 employees/bare")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(UndoDeletion)->Name("undo that deletion/store")->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
