#include "Require.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "exchange/Plan.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <string>
#include <vector>

// A table of 10,000 new employees taken over, from the bytes of the file to the commit, beside the same rows by
// statements that each fill a whole table, in one transaction.
namespace quillmere {
namespace {

using bench::Require;

constexpr int Employees = 10'000;

const std::filesystem::path& Folder()
{
    static const test::TemporaryFolder folder;
    return folder.path;
}

const std::string& Csv()
{
    static const std::string csv = [] {
        std::string made = "First names,Surname,Works number,NI number,Date of birth,Gender,\"I, cost to you\"\r\n";
        for (int i = 0; i < Employees; ++i)
            made += fmt::format("Jane,Smith {0},{0},AB{0:06}C,{1:02}/04/1961,F,\"£1,{2:03}.50\"\r\n", i, i % 28 + 1,
                                i % 1000);
        return made;
    }();
    return csv;
}

void Import(const std::filesystem::path& path)
{
    const exchange::Targets targets;
    const exchange::Table table = exchange::ParseTable(Csv());
    Database database = Database::OpenDatabase(path);
    const exchange::ImportPlan plan =
        MakePlan(database, table, targets, exchange::ColumnsOf(table, targets), "Acme Ltd");
    Require(plan.CountOf(exchange::RowState::New) == Employees, "not everybody is new");
    CarryOut(database, plan);
}

/// The rows that an import has made.
const std::filesystem::path& Made()
{
    static const std::filesystem::path file = [] {
        const auto path = Folder() / "made";
        CreateTables(path);
        Import(path);
        return path;
    }();
    return file;
}

template<class Work>
void OnEmptyDatabases(benchmark::State& state, Work work)
{
    static_cast<void>(Made());
    for (auto _ : state) {
        const std::filesystem::path path = Folder() / "empty";
        CreateTables(path);
        const auto begin = std::chrono::steady_clock::now();
        work(path);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        {
            Database database = Database::OpenDatabase(path);
            Require(ListEmployees(database, "Acme Ltd").size() == Employees, "not everybody was taken over");
        }
        std::filesystem::remove(path);
    }
}

void ImportAll(benchmark::State& state)
{
    OnEmptyDatabases(state, Import);
}

void Execute(sqlite3* handle, const std::string& text)
{
    Require(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, text);
}

/// The fields of a table that the import has filled.
std::string FilledFields(sqlite3* handle, std::string_view table)
{
    std::string all;
    for (const Field& field : FieldsOf(FindTable(table)).All()) {
        sqlite3_stmt* found = nullptr;
        const std::string text =
            fmt::format("SELECT 1 FROM made.[{}] WHERE [{}] IS NOT NULL LIMIT 1", table, field.name);
        Require(sqlite3_prepare_v2(handle, text.c_str(), -1, &found, nullptr) == SQLITE_OK, text);
        if (sqlite3_step(found) == SQLITE_ROW)
            all += fmt::format("{}[{}]", all.empty() ? "" : ",", field.name);
        sqlite3_finalize(found);
    }
    return all;
}

/// One statement a table over a connection of its own, made by `text` from a table's name and its filled fields.
template<class Text>
void ByStatements(benchmark::State& state, Text text)
{
    const auto open = [](const std::filesystem::path& path) {
        sqlite3* handle = nullptr;
        Require(sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) ==
                    SQLITE_OK,
                "cannot open");
        Execute(handle, "PRAGMA synchronous=EXTRA");
        Execute(handle, fmt::format("ATTACH '{}' AS made", Made().string()));
        return handle;
    };
    static const std::vector<std::string> filled = [&] {
        sqlite3* const handle = open(Made());
        std::vector<std::string> fields;
        for (const TableLayout* table : NewEmployeeTables())
            fields.push_back(FilledFields(handle, table->name));
        sqlite3_close(handle);
        return fields;
    }();
    OnEmptyDatabases(state, [&](const std::filesystem::path& path) {
        sqlite3* const handle = open(path);
        Execute(handle, "BEGIN IMMEDIATE");
        for (std::size_t table = 0; table < filled.size(); ++table)
            Execute(handle, text(NewEmployeeTables()[table]->name, filled[table]));
        Execute(handle, "COMMIT");
        sqlite3_close(handle);
    });
}

/// The fields that are not empty, as SQL puts rows into tables with whatever these hold already.
void BySets(benchmark::State& state)
{
    ByStatements(state, [](std::string_view table, const std::string& fields) {
        return fmt::format("INSERT INTO main.[{0}]({1}) SELECT {1} FROM made.[{0}]", table, fields);
    });
}

/// The engine's road from a whole table into an empty one of the same make: it takes the pages' records and those of
/// the indexes over as they lie, in order, and looks at no field. Nothing that has records already can be filled so.
void ByWholeTables(benchmark::State& state)
{
    ByStatements(state, [](std::string_view table, const std::string&) {
        return fmt::format("INSERT INTO main.[{0}] SELECT * FROM made.[{0}]", table);
    });
}

BENCHMARK(ImportAll)->Name("import 10,000 employees/import")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(BySets)->Name("import 10,000 employees/sets")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(ByWholeTables)->Name("import 10,000 employees/whole tables")->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
