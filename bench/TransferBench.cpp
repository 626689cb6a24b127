#include "MadeDatabase.h"
#include "ProcessorTime.h"
#include "Require.h"
#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "frame/Text.h"
#include "support/TemporaryFolder.h"
#include "transfer/YearTransfer.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <string>
#include <string_view>
#include <vector>

// The transfer of 1,000 employees with every field of every table filled, beside the same inserts by statements that
// each copy a whole table, in one transaction.
namespace quillmere {
namespace {

using bench::Require;

constexpr int Employees = 1000;

const std::filesystem::path& Folder()
{
    static const test::TemporaryFolder folder;
    return folder.path;
}

/// A text for a field of a record that is full, such that everything that can be carried is.
std::string TextOf(const Field& field, int employee)
{
    if (field.name.starts_with("FDateTo") || field.name.starts_with("DateTo") ||
        field.name.starts_with("FDateWithdrawn"))
        return "";
    if (field.name.starts_with("Currency"))
        return "Sterling";
    switch (field.kind) {
    case FieldKind::Tick:
        return "1";
    case FieldKind::Date:
        return "01/02/2008";
    case FieldKind::Amount:
        return fmt::format("{:>10}", fmt::format("{}.00", 1000 + employee));
    case FieldKind::Text:
        return fmt::format("{} of employee {}", field.name, employee);
    default:
        return "365";
    }
}

const std::filesystem::path& LastYear()
{
    static const bench::MadeDatabase clients([](Database& database) {
        for (const TableLayout* table : NewEmployeeTables()) {
            Recordset records = database.OpenRecordset(table->name);
            const bool ofEmployer = table->level == TableLevel::Employer;
            for (int i = 0; i < (ofEmployer ? 1 : Employees); ++i) {
                records.AddNew();
                for (const Field& field : FieldsOf(*table).All())
                    if (std::string text = TextOf(field, i); !text.empty())
                        records.SetField(field.name, text);
                records.SetField("EmployerName", "Acme Ltd");
                if (!ofEmployer) {
                    const std::string employee = fmt::format("Jane Smith {:04}", i);
                    records.SetField("EmployeeName", employee);
                    records.SetField("Name", JoinedName("Acme Ltd", employee));
                }
                records.Update();
            }
        }
    });
    return clients.path;
}

/// An empty database of this year, gone with its end.
class ThisYear {
public:
    explicit ThisYear(bool noted) : path(Folder() / "this-year")
    {
        CreateTables(path);
        if (noted)
            return;
        // Something else in its place turns the change history off.
        sqlite3* handle = nullptr;
        sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_exec(handle, "CREATE TABLE HistoryChange(Foreign_)", nullptr, nullptr, nullptr);
        sqlite3_close(handle);
    }
    ~ThisYear() { std::filesystem::remove(path); }
    ThisYear(const ThisYear&) = delete;
    ThisYear& operator=(const ThisYear&) = delete;
    std::filesystem::path path;
};

template<class Work>
void OnEmptyDatabases(benchmark::State& state, Work work, bool noted = true)
{
    static_cast<void>(LastYear());
    for (auto _ : state) {
        const ThisYear thisYear(noted);
        const bench::ProcessorTime spent;
        work(thisYear.path);
        state.SetIterationTime(spent.Seconds());
        Database database = Database::OpenDatabase(thisYear.path);
        Require(ListEmployees(database, "Acme Ltd").size() == Employees, "not everybody was transferred");
        Recordset cars = database.OpenRecordset("ExtraCars");
        cars.MoveFirst();
        Require(!cars.Field("FMakeModel6").empty() && cars.Field("FCashEqu6").empty(), "not the same was transferred");
    }
}

void TransferAll(benchmark::State& state, bool noted)
{
    const auto transferAll = [](const std::filesystem::path& path) {
        YearTransfer transfer(path, LastYear());
        std::vector<TransferNotice> notices;
        for (const LastYearEmployee& employee : transfer.LastYearEmployees())
            transfer.Transfer(employee, TransferMode::All, notices);
        transfer.Commit();
        Require(notices.empty(), "a table lacks somebody");
    };
    OnEmptyDatabases(state, transferAll, noted);
}

// ---- the bare side --------------------------------------------------------------------------------

void Execute(sqlite3* handle, const std::string& text)
{
    Require(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, text);
}

std::vector<std::string> FieldNames(const CarriedFields& carried)
{
    std::vector<std::string> names;
    for (const CarriedField& field : carried)
        names.push_back(field.field);
    return names;
}

/// The statement that copies the keys and the carried fields of a table. Balances change their column.
std::string CopyTable(std::string_view table, std::vector<std::string> fields, bool ofEmployee)
{
    fields.insert(fields.begin(), "EmployerName");
    if (ofEmployee)
        fields.insert(fields.begin() + 1, {"EmployeeName", "Name"});
    std::vector<std::string> from = fields;
    for (std::string& field : from)
        if (field.starts_with("MaxBalanceLater"))
            field.replace(0, 15, "MaxBalanceEarlier");
    return fmt::format("INSERT INTO main.{0}({1}) SELECT {2} FROM lastyear.{0}", table, fmt::join(fields, ","),
                       fmt::join(from, ","));
}

void TransferBySets(benchmark::State& state)
{
    const LastYearRecord nothing = [](std::string_view) { return std::string_view(); };
    std::vector<std::string> statements;
    const CurrencyRates noRates;
    const auto none = [&noRates]() -> const CurrencyRates& { return noRates; };
    for (const TransferTable& row : TransferTables)
        statements.push_back(CopyTable(row.table, FieldNames(Carry(row.carries, nothing, none)), true));
    const CarriedCars cars = CarryCars(nullptr, nullptr);
    auto ofPage = FieldNames(cars.p11d);
    for (const std::string& field : FieldNames(CarryIdentity(nothing)))
        ofPage.push_back(field);
    ofPage.insert(ofPage.end(), {"FirstName", "Surname"});
    statements.push_back(CopyTable("P11D", ofPage, true));
    statements.push_back(CopyTable("ExtraCars", FieldNames(cars.extraCars), true));
    statements.push_back(CopyTable("P11DB", FieldNames(CarryEmployer(nothing)), false));
    statements.push_back(CopyTable("P11DBNotepad1", {}, false));
    statements.push_back(CopyTable("P11DBNotepad2", {}, false));

    OnEmptyDatabases(state, [&](const std::filesystem::path& path) {
        sqlite3* handle = nullptr;
        Require(sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) ==
                    SQLITE_OK,
                "cannot open");
        Execute(handle, "PRAGMA synchronous=EXTRA");
        Execute(handle, fmt::format("ATTACH '{}' AS lastyear", LastYear().string()));
        Execute(handle, "BEGIN IMMEDIATE");
        for (const std::string& statement : statements)
            Execute(handle, statement);
        Execute(handle, "COMMIT");
        sqlite3_close(handle);
    });
}

BENCHMARK_CAPTURE(TransferAll, noted, true)
    ->Name("transfer 1,000 employees/transfer")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(TransferAll, unnoted, false)
    ->Name("transfer 1,000 employees/unnoted")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(TransferBySets)->Name("transfer 1,000 employees/sets")->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
