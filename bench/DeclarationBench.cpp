#include "MadeDatabase.h"
#include "Require.h"
#include "clientdb/store/TableLayouts.h"
#include "declaration/Class1A.h"
#include "declaration/Declaration.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <fstream>
#include <string>
#include <string_view>

// The employer's total over 10,000 employees in a database of 100,000, who lie strewn among the others. "store" is the
// declaration's own way; "bare" a loop over the C interface of SQLite that reads the same 13 columns of the same
// records and parses them with the same routine. Both open the database each time. The counter "peak_KiB" is what a run
// adds to the process's memory at its highest, so that the two sizes of "memory" show whether it grows.
namespace quillmere {
namespace {

using bench::Require;

constexpr int Employees = 100'000;

/// One in ten employees belongs to "Big", one in a hundred to "Small"; every third field of a record is filled in.
const std::filesystem::path& Clients()
{
    static const bench::MadeDatabase clients([](Database& database) {
        Recordset records = database.OpenRecordset("P11D");
        const auto fields = FieldsOf(FindTable("P11D")).All();
        for (int i = 0; i < Employees; ++i) {
            const std::string employer = i % 10 == 0    ? "Big"
                                         : i % 100 == 1 ? "Small"
                                                        : fmt::format("Employer {:03}", i % 200);
            const std::string employee = fmt::format("First Surname {:06}", i);
            records.AddNew();
            records.SetField("EmployerName", employer);
            records.SetField("EmployeeName", employee);
            records.SetField("Name", employer + " " + employee);
            for (std::size_t field = 4; field < fields.size(); field += 3)
                records.SetField(fields[field].name, "    123.45");
            for (const std::string_view field : Class1AFields)
                records.SetField(field, fmt::format("{:>10.2f}", i % 9000 + 0.5));
            records.Update();
        }
    });
    return clients.path;
}

Amount StoreTotal(std::string_view employer)
{
    Database database = Database::OpenDatabase(Clients());
    return EmployerTotal(database, employer);
}

Amount BareTotal(std::string_view employer)
{
    sqlite3* handle = nullptr;
    Require(sqlite3_open_v2(Clients().c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) ==
                SQLITE_OK,
            "cannot open");
    const std::string text = fmt::format("SELECT {} FROM P11D WHERE EmployerName=?", fmt::join(Class1AFields, ","));
    sqlite3_stmt* rows = nullptr;
    Require(sqlite3_prepare_v2(handle, text.c_str(), -1, &rows, nullptr) == SQLITE_OK, "cannot prepare");
    sqlite3_bind_text(rows, 1, employer.data(), static_cast<int>(employer.size()), SQLITE_STATIC);
    Amount total;
    while (sqlite3_step(rows) == SQLITE_ROW)
        for (int column = 0; column < static_cast<int>(Class1AFields.size()); ++column)
            if (const unsigned char* cell = sqlite3_column_text(rows, column))
                total += ReadAmount({reinterpret_cast<const char*>(cell),
                                     static_cast<std::size_t>(sqlite3_column_bytes(rows, column))});
    sqlite3_finalize(rows);
    sqlite3_close(handle);
    return total;
}

void Store(benchmark::State& state)
{
    Require(StoreTotal("Big") == BareTotal("Big") && !StoreTotal("Big").IsZero(), "the totals differ");
    for (auto _ : state)
        benchmark::DoNotOptimize(StoreTotal("Big"));
}

void Bare(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(BareTotal("Big"));
}

long MemoryKiB(std::string_view key)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(key))
            return std::stol(line.substr(key.size() + 1));
    return 0;
}

void Memory(benchmark::State& state, std::string_view employer)
{
    benchmark::DoNotOptimize(StoreTotal(employer)); // what the first run of a process brings along is there
    long most = 0;
    for (auto _ : state) {
        std::ofstream("/proc/self/clear_refs") << 5; // the highest mark starts again from here
        const long before = MemoryKiB("VmRSS:");
        benchmark::DoNotOptimize(StoreTotal(employer));
        most = std::max(most, MemoryKiB("VmHWM:") - before);
    }
    state.counters["peak_KiB"] = static_cast<double>(most);
}

BENCHMARK(Store)->Name("total of 10,000 of 100,000/store")->Unit(benchmark::kMillisecond);
BENCHMARK(Bare)->Name("total of 10,000 of 100,000/bare")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, of_1000, "Small")->Name("memory/1,000 employees")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Memory, of_10000, "Big")->Name("memory/10,000 employees")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
