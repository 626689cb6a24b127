#include "MadeDatabase.h"
#include "Require.h"
#include "clientdb/EmployeeFinder.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "review/EmployerReview.h"
#include "review/Overview.h"
#include "support/ScriptedDoor.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <vector>

// Finding an employee, the check and the overview of an employer. "bare" is a loop over the C interface of SQLite that
// reads the same employer's records of the same tables, every column as text, and does nothing with them; for the
// opening of Find, the same columns of everybody. All open the database each time. The counters are of single keys and
// pieces, in milliseconds: "key_ms" at the 99th percentile, "piece_ms" the longest.
namespace quillmere {
namespace {

using bench::Require;
using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class Handle {
public:
    explicit Handle(const std::filesystem::path& file)
    {
        Require(sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) ==
                    SQLITE_OK,
                "cannot open");
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { sqlite3_close(handle); }

    /// Reads all columns of all rows as texts and gives the number of their bytes.
    std::size_t Scan(const std::string& statement, std::string_view employer = {})
    {
        sqlite3_stmt* rows = nullptr;
        Require(sqlite3_prepare_v2(handle, statement.c_str(), -1, &rows, nullptr) == SQLITE_OK, "cannot prepare");
        sqlite3_bind_text(rows, 1, employer.data(), static_cast<int>(employer.size()), SQLITE_STATIC);
        std::size_t bytes = 0;
        while (sqlite3_step(rows) == SQLITE_ROW)
            for (int column = 0; column < sqlite3_column_count(rows); ++column)
                if (sqlite3_column_text(rows, column) != nullptr)
                    bytes += static_cast<std::size_t>(sqlite3_column_bytes(rows, column));
        sqlite3_finalize(rows);
        return bytes;
    }

private:
    sqlite3* handle = nullptr;
};

/// The tables that hold what is checked.
std::vector<std::string_view> CheckedTables()
{
    std::vector<std::string_view> tables;
    review::FormFacts facts;
    for (const review::FactsRecord& record : RecordsOf(facts))
        tables.push_back(record.table);
    return tables;
}

std::string_view TextOf(FieldKind kind)
{
    constexpr auto Texts = std::to_array<std::string_view>({"P", "    123.45", "01/10/2010", "1", "30", "150"});
    return Texts.at(static_cast<std::size_t>(kind));
}

/// Every third field, and what a rule needs before it works a car out.
bool IsFilledIn(const Field& field, std::size_t place)
{
    const std::string_view name = field.name;
    const bool isNeeded = name.starts_with("FRegDate") || (name.starts_with("FFuel") && name.size() == 6);
    return place >= 3 && name != "Name" && (place % 3 == 0 || isNeeded);
}

void AddRecord(Recordset& records, std::string_view table, const std::string& employer, const std::string& employee,
               int number)
{
    const auto fields = FieldsOf(FindTable(table)).All();
    records.AddNew();
    records.SetField("EmployerName", employer);
    records.SetField("EmployeeName", employee);
    for (std::size_t place = 0; place < fields.size(); ++place)
        if (IsFilledIn(fields[place], place))
            records.SetField(fields[place].name, TextOf(fields[place].kind));
    if (table == "P11D") {
        records.SetField("Name", employer + " " + employee);
        records.SetField("Surname", fmt::format("Surname{}", number));
        records.SetField("NatIns", fmt::format("AB{:06}C", number));
    }
    records.Update();
}

/// Employers of 1,000 and of 3,000 employees, each with a form, further cars and every fourth list; every third field
/// is filled in, and the cars can be worked out.
const std::filesystem::path& Clients()
{
    static const bench::MadeDatabase clients([](Database& database) {
        const std::vector<std::string_view> tables = CheckedTables();
        for (std::size_t table = 0; table < tables.size(); ++table) {
            Recordset records = database.OpenRecordset(tables[table]);
            for (const auto& [employer, employees] : {std::pair("Thousand", 1000), std::pair("Three", 3000)})
                for (int i = 0; i < employees; ++i)
                    if (table < 2 || (static_cast<std::size_t>(i) + table) % 4 == 0)
                        AddRecord(records, tables[table], employer,
                                  fmt::format("First Surname {:06}", i * 7 % employees), i);
        }
    });
    return clients.path;
}

struct Desk {
    test::ScriptedDoor door;
    Settings settings = SetDefaultConfiguration({});
    review::Paper paper{settings, door};
};

std::size_t BareScan(std::string_view employer)
{
    Handle handle(Clients());
    std::size_t bytes = 0;
    for (const std::string_view table : CheckedTables())
        bytes += handle.Scan(fmt::format("SELECT * FROM {} WHERE EmployerName=?", table), employer);
    return bytes;
}

void CheckAll(benchmark::State& state)
{
    const Desk desk;
    for (auto _ : state) {
        Database database = Database::OpenDatabase(Clients());
        const auto findings = review::CheckAllOf(database, "Thousand", desk.paper);
        Require(!findings.empty(), "nothing found");
    }
}

void OverviewOfAll(benchmark::State& state)
{
    const Desk desk;
    for (auto _ : state) {
        Database database = Database::OpenDatabase(Clients());
        review::OverviewSums sums;
        review::EmployerReview review(
            "Thousand", desk.paper,
            [&sums](std::string_view, const review::FormFacts& form, const review::FindingList& found) {
                sums += review::SumsOf(form, found.size());
            });
        while (review.GoOn(database, 1000)) {
        }
        Require(sums.employees == 1000 && !sums.benefits.IsZero(), "not everybody");
    }
}

void Bare(benchmark::State& state)
{
    for (auto _ : state)
        Require(BareScan("Thousand") > 0, "nothing read");
}

/// An employer of 3,000, in pieces between the keys.
void Pieces(benchmark::State& state)
{
    const Desk desk;
    double longest = 0;
    for (auto _ : state) {
        review::EmployerReview review("Three", desk.paper);
        for (bool more = true; more;) {
            const Clock::time_point start = Clock::now();
            more = review.GoOnBetweenKeys(Clients());
            longest = std::max(longest, MillisecondsSince(start));
        }
        Require(review.EmployeesSeen() == 3000, "not everybody");
    }
    state.counters["piece_ms"] = longest;
}

// ---- Find -----------------------------------------------------------------------------------------

constexpr int Everybody = 100'000;

const std::filesystem::path& BigFolder()
{
    static const test::TemporaryFolder folder;
    static const std::filesystem::path file = [] {
        constexpr auto firstNames = std::to_array<std::string_view>({"Jane", "Peter", "Zoë", "Ann", "José", "Will"});
        const std::filesystem::path path = folder.path / "clients";
        CreateTables(path);
        Database database = Database::OpenDatabase(path);
        WriteBatch batch(database);
        Recordset records = database.OpenRecordset("P11D");
        for (int i = 0; i < Everybody; ++i)
            AddRecord(records, "P11D", fmt::format("Employer {:03}", i % 500),
                      fmt::format("{} Surname{}", firstNames[static_cast<std::size_t>(i) % firstNames.size()], i), i);
        batch.Commit();
        return path;
    }();
    return file;
}

void OpenFind(benchmark::State& state)
{
    for (auto _ : state) {
        Database database = Database::OpenDatabase(BigFolder());
        const EmployeeFinder finder(database);
        Require(finder.Count() == Everybody, "not everybody");
    }
}

void BareFind(benchmark::State& state)
{
    for (auto _ : state) {
        Handle handle(BigFolder());
        Require(handle.Scan("SELECT EmployerName,EmployeeName,WorkNumberBox,NatIns,FirstName,Surname FROM P11D") > 0,
                "nothing read");
    }
}

/// Words typed key by key.
void Keys(benchmark::State& state)
{
    Database database = Database::OpenDatabase(BigFolder());
    const EmployeeFinder finder(database);
    std::vector<double> keys;
    for (auto _ : state)
        for (const std::string_view typed : {"surname99", "employer 042 jane", "zoe surname", "ab0123", "zzz", "a e s"})
            for (std::size_t length = 1; length <= typed.size(); ++length) {
                const Clock::time_point start = Clock::now();
                benchmark::DoNotOptimize(finder.Find(typed.substr(0, length), 200));
                keys.push_back(MillisecondsSince(start));
            }
    std::ranges::sort(keys);
    state.counters["key_ms"] = keys[keys.size() * 99 / 100];
}

BENCHMARK(CheckAll)->Name("check of 1,000/check")->Unit(benchmark::kMillisecond);
BENCHMARK(OverviewOfAll)->Name("overview of 1,000/overview")->Unit(benchmark::kMillisecond);
BENCHMARK(Bare)->Name("check and overview of 1,000/bare")->Unit(benchmark::kMillisecond);
BENCHMARK(Pieces)->Name("check of 3,000/in pieces")->Unit(benchmark::kMillisecond);
BENCHMARK(OpenFind)->Name("find among 100,000/opening")->Unit(benchmark::kMillisecond);
BENCHMARK(BareFind)->Name("find among 100,000/bare")->Unit(benchmark::kMillisecond);
BENCHMARK(Keys)->Name("find among 100,000/keys")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
