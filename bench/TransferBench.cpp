#include "Bare.h"
#include "Engine.h"
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

#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The transfer of 1,000 employees with every field of every table filled, beside the same inserts by statements that
// each copy a whole table, in one transaction, and beside bare calls that add record by record in the transfer's order.
// Neither yardstick decides anything or writes the change history.
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
        bench::PutOnEngine(path);
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
    const std::filesystem::path& lastYear = bench::OnEngine(LastYear());
    const auto transferAll = [&lastYear](const std::filesystem::path& path) {
        YearTransfer transfer(path, lastYear);
        std::vector<TransferNotice> notices;
        for (const LastYearEmployee& employee : transfer.LastYearEmployees())
            transfer.Transfer(employee, TransferMode::All, notices);
        transfer.Commit();
        Require(notices.empty(), "a table lacks somebody");
    };
    OnEmptyDatabases(state, transferAll, noted);
}

// ---- the bare side --------------------------------------------------------------------------------

std::vector<std::string> FieldNames(const CarriedFields& carried)
{
    std::vector<std::string> names;
    for (const CarriedField& field : carried)
        names.emplace_back(field.field);
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

/// The tables with a record for each employee, in their order, with the fields that are carried.
std::vector<std::pair<std::string_view, std::vector<std::string>>> TablesOfAnEmployee()
{
    const LastYearRecord nothing = [](std::string_view) { return std::string_view(); };
    const CurrencyRates noRates;
    const auto none = [&noRates]() -> const CurrencyRates& { return noRates; };
    std::vector<std::pair<std::string_view, std::vector<std::string>>> tables;
    for (const TransferTable& row : TransferTables)
        tables.emplace_back(row.table, FieldNames(Carry(row.carries, nothing, none)));
    const CarriedCars cars = CarryCars(nullptr, nullptr);
    auto ofPage = FieldNames(cars.p11d);
    for (const std::string& field : FieldNames(CarryIdentity(nothing)))
        ofPage.push_back(field);
    ofPage.insert(ofPage.end(), {"FirstName", "Surname"});
    tables.emplace_back("P11D", ofPage);
    tables.emplace_back("ExtraCars", FieldNames(cars.extraCars));
    return tables;
}

/// Does the work in one transaction of an empty database of this year with last year's beside it, and copies the
/// employer.
template<class Work>
void OnBothDatabases(benchmark::State& state, Work work)
{
    const LastYearRecord nothing = [](std::string_view) { return std::string_view(); };
    const std::array ofEmployer{CopyTable("P11DB", FieldNames(CarryEmployer(nothing)), false),
                                CopyTable("P11DBNotepad1", {}, false), CopyTable("P11DBNotepad2", {}, false)};
    OnEmptyDatabases(state, [&](const std::filesystem::path& path) {
        bench::Bare bare(path);
        bare.Execute(fmt::format("ATTACH '{}' AS lastyear", LastYear().string()));
        bare.Execute("BEGIN IMMEDIATE");
        work(bare);
        for (const std::string& statement : ofEmployer)
            bare.Execute(statement);
        bare.Execute("COMMIT");
    });
}

void TransferBySets(benchmark::State& state)
{
    std::vector<std::string> statements;
    for (const auto& [table, fields] : TablesOfAnEmployee())
        statements.push_back(CopyTable(table, fields, true));
    OnBothDatabases(state, [&](bench::Bare& bare) {
        for (const std::string& statement : statements)
            bare.Execute(statement);
    });
}

/// The statements that read last year's records of a table, one after the other, and add one.
struct ReadAndAdd {
    sqlite3_stmt *read, *add;

    void CopyNext() const
    {
        Require(sqlite3_step(read) == SQLITE_ROW, "a record is missing");
        for (int column = 0; column < sqlite3_column_count(read); ++column) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(read, column));
            sqlite3_bind_text(add, column + 1, text, sqlite3_column_bytes(read, column), SQLITE_STATIC);
        }
        Require(sqlite3_step(add) == SQLITE_DONE, "a record is not added");
        sqlite3_reset(add);
    }
};

void TransferByRecords(benchmark::State& state)
{
    const auto tables = TablesOfAnEmployee();
    OnBothDatabases(state, [&](bench::Bare& bare) {
        std::vector<ReadAndAdd> statements;
        for (const auto& [table, fields] : tables) {
            const std::string copy = CopyTable(table, fields, true);
            const std::size_t select = copy.find("SELECT");
            const std::vector<std::string_view> places(fields.size() + 3, "?");
            statements.push_back(
                {bare.Prepared(copy.substr(select) + " ORDER BY rowid"),
                 bare.Prepared(fmt::format("{} VALUES({})", copy.substr(0, select), fmt::join(places, ",")))});
        }
        for (int employee = 0; employee < Employees; ++employee)
            for (const ReadAndAdd& table : statements)
                table.CopyNext();
        for (const ReadAndAdd& table : statements)
            sqlite3_reset(table.read);
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
BENCHMARK(TransferByRecords)->Name("transfer 1,000 employees/records")->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
