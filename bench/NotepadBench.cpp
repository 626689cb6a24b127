// What a notepad's Ok costs: 83 fields, each in an edit and update of its own, beside one transaction of the bare C
// interface of SQLite with the same single-field writes of the same texts. Both open the database each time; the texts
// change from run to run, so that every write is one. "syncs" counts how often an Ok waits for the disk.
#include "Engine.h"
#include "Require.h"
#include "clientdb/Employees.h"
#include "clientdb/store/Template.h"
#include "edition/Edition.h"
#include "frame/Text.h"
#include "screens/ScheduleNotepad.h"
#include "support/ScriptedDoor.h"
#include "support/SyncCounter.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>
#include <vector>

namespace quillmere {
namespace {

using bench::Require;

constexpr std::string_view Employer = "Acme Ltd", Employee = "Jane Smith";
constexpr std::string_view Member = "ANotepad";

/// A client database of some employees, and a session with one of them open.
class Clients {
public:
    Clients()
    {
        CreateTables(File());
        {
            Database database = Database::OpenDatabase(File());
            const WriteBatch batch(database);
            for (const std::string_view first : {"Ann", "Jane", "Zoe"})
                CreateEmployee(database, {.employer = std::string(Employer),
                                          .firstName = std::string(first),
                                          .surname = "Smith",
                                          .payeReference = "1"});
        }
        bench::PutOnEngine(File());
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.CurrentEmployer = Employer;
        session.CurrentEmployee = Employee;
        for (const NotepadMember& member : Notepads())
            session.screens.Register(
                member.name, [&member](Session& with) { return std::make_unique<ScheduleNotepad>(with, member); });
    }

    std::filesystem::path File() const { return folder / edition::ClientDatabaseName; }
    Session& TheSession() { return session; }

private:
    const test::TemporaryFolder folder;
    test::ScriptedDoor door;
    Session session{door};
};

/// The amount of a line in one run.
std::string Figure(int run, int line)
{
    return std::to_string(run % 1000 + line) + ".00";
}

void Fill(Screen& notepad, int run, int lines)
{
    for (int line = 1; line <= lines; ++line) {
        notepad.box("Description", line).SetText("Item " + std::to_string(run + line));
        notepad.box("CostMark", line).SetText(Figure(run, line));
        notepad.box("Tax", line).SetText("1.00");
    }
    notepad.Leave(notepad.box("CostMark", 1));
}

/// Ok of a notepad with so many lines filled in.
void Ok(benchmark::State& state)
{
    Clients clients;
    Screens& screens = clients.TheSession().screens;
    const int lines = static_cast<int>(state.range(0));
    int run = 0;
    int syncs = 0;
    for (auto _ : state) {
        state.PauseTiming();
        Screen& notepad = *screens.Show(Member);
        Fill(notepad, ++run, lines);
        state.ResumeTiming();
        notepad.Click(notepad.box("cmdOK"));
        Require(screens.Find(Member) == nullptr, "Ok has failed");
    }
    {
        const test::SyncCounter counter;
        Screen& notepad = *screens.Show(Member);
        Fill(notepad, ++run, lines);
        notepad.Click(notepad.box("cmdOK"));
        syncs = counter.Count();
    }
    state.counters["syncs"] = syncs;
}
BENCHMARK(Ok)->Name("notepad_ok/store/lines")->Arg(LinesOfASchedule)->Arg(1)->Unit(benchmark::kMicrosecond);

void Execute(sqlite3* handle, const char* text)
{
    Require(sqlite3_exec(handle, text, nullptr, nullptr, nullptr) == SQLITE_OK, text);
}

sqlite3_stmt* Prepare(sqlite3* handle, const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    Require(sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK, sql.c_str());
    return statement;
}

void Bind(sqlite3_stmt* statement, int place, std::string_view value)
{
    sqlite3_bind_text(statement, place, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
}

/// Where the current employee's record lies.
sqlite3_int64 RowOf(sqlite3* handle, const std::string& table)
{
    sqlite3_stmt* statement =
        Prepare(handle, "SELECT rowid FROM [" + table + "] WHERE [EmployerName]=?1 AND [EmployeeName]=?2");
    Bind(statement, 1, Employer);
    Bind(statement, 2, Employee);
    Require(sqlite3_step(statement) == SQLITE_ROW, "no record");
    const sqlite3_int64 row = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    return row;
}

void WriteField(sqlite3* handle, const std::string& table, sqlite3_int64 row, const std::string& field,
                const std::string& text)
{
    sqlite3_stmt* statement = Prepare(handle, "UPDATE [" + table + "] SET [" + field + "]=?1 WHERE rowid=?2");
    Bind(statement, 1, text);
    sqlite3_bind_int64(statement, 2, row);
    Require(sqlite3_step(statement) == SQLITE_DONE, "cannot write");
    sqlite3_finalize(statement);
}

void Bare(benchmark::State& state)
{
    const Clients clients;
    const std::string table(Member);
    const int lines = static_cast<int>(state.range(0));
    int run = 0;
    for (auto _ : state) {
        ++run;
        sqlite3* handle = nullptr;
        Require(sqlite3_open_v2(clients.File().c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                                nullptr) == SQLITE_OK,
                "cannot open");
        Execute(handle, "PRAGMA synchronous=EXTRA");
        Execute(handle, "BEGIN IMMEDIATE");
        const sqlite3_int64 own = RowOf(handle, table);
        const sqlite3_int64 page = RowOf(handle, "P11D");
        for (int line = 1; line <= LinesOfASchedule; ++line) {
            const bool filled = line <= lines;
            WriteField(handle, table, own, Numbered("Description", line),
                       filled ? "Item " + std::to_string(run + line) : std::string());
            WriteField(handle, table, own, Numbered("CostMarket", line), filled ? Figure(run, line) : std::string());
            WriteField(handle, table, own, Numbered("Tax", line), filled ? "1.00" : std::string());
            WriteField(handle, table, own, Numbered("CashEq", line), filled ? Figure(run, line) : std::string());
        }
        for (const char* total : {"ACostMarketBox", "AAmountGood", "ACashEqu"})
            WriteField(handle, "P11D", page, total, Figure(run, 0));
        Execute(handle, "COMMIT");
        sqlite3_close(handle);
    }
}
BENCHMARK(Bare)->Name("notepad_ok/bare/lines")->Arg(LinesOfASchedule)->Arg(1)->Unit(benchmark::kMicrosecond);

/// A notepad opened with twenty lines, up to where it would be painted.
void Open(benchmark::State& state)
{
    Clients clients;
    Screens& screens = clients.TheSession().screens;
    {
        Screen& notepad = *screens.Show(Member);
        Fill(notepad, 1, LinesOfASchedule);
        notepad.Click(notepad.box("cmdOK"));
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(screens.Show(Member));
        screens.Unload(Member);
    }
}
BENCHMARK(Open)->Name("notepad_open/store")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
