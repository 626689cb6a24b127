// The program's roads over client databases of 1,000, 10,000, 100,000 and 1,000,000 employees, all with their records
// in every table, made by statements that each fill a whole table. Each database has 700 employers, of whom "Big" has
// 300 employees, spread over the whole file; what is measured on a road is the same work at every size but where its
// name says "all". Processor time; the program runs without windows.
#include "Bare.h"
#include "Engine.h"
#include "ProcessorTime.h"
#include "Require.h"
#include "app/Program.h"
#include "clientdb/EmployeeFinder.h"
#include "clientdb/Employees.h"
#include "clientdb/store/Backup.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "declaration/Declaration.h"
#include "edition/Edition.h"
#include "printing/jobs/PrintJobs.h"
#include "support/ScriptedDoor.h"
#include "support/TemporaryFolder.h"
#include "transfer/YearTransfer.h"

#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {
namespace {

using bench::Require;

constexpr auto Sizes = std::to_array<std::int64_t>({1'000, 10'000, 100'000, 1'000'000});
constexpr std::string_view BigEmployer = "Big";
constexpr int OfBigEmployer = 300, OtherEmployers = 699;

/// Fills a new database. Indexes are made last, as they stand in it.
void FillDatabase(const std::filesystem::path& path, std::int64_t employees)
{
    bench::Bare bare(path);
    for (const char* text : {"PRAGMA journal_mode=OFF", "PRAGMA synchronous=OFF", "PRAGMA cache_size=-262144"})
        bare.Execute(text);
    std::vector<std::string> indexes;
    sqlite3_stmt* const found = bare.Prepared("SELECT sql,name FROM sqlite_schema WHERE type='index'");
    std::vector<std::string> drops;
    while (sqlite3_step(found) == SQLITE_ROW) {
        indexes.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(found, 0)));
        drops.push_back(fmt::format("DROP INDEX [{}]", reinterpret_cast<const char*>(sqlite3_column_text(found, 1))));
    }
    sqlite3_reset(found);
    for (const std::string& drop : drops)
        bare.Execute(drop);
    const std::int64_t apart = employees / OfBigEmployer;
    const std::string everybody =
        fmt::format("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<{}),"
                    "who(i,employer,surname) AS (SELECT i,CASE WHEN i%{}=0 AND i/{}<{} THEN '{}' ELSE "
                    "printf('Employer %03d',i%{}) END,printf('Surname%07d',i) FROM n)",
                    employees - 1, apart, apart, OfBigEmployer, BigEmployer, OtherEmployers);
    for (const TableLayout* table : NewEmployeeTables()) {
        if (table->level == TableLevel::Employer) {
            bare.Execute(fmt::format("{} INSERT INTO [{}](EmployerName) SELECT DISTINCT employer FROM who", everybody,
                                     table->name));
            continue;
        }
        const bool isPage = table->name == "P11D";
        bare.Execute(
            fmt::format("{} INSERT INTO [{}](EmployerName,EmployeeName,Name{}) "
                        "SELECT employer,'Jane '||surname,employer||' Jane '||surname{} FROM who",
                        everybody, table->name, isPage ? ",FirstName,Surname,WorkNumberBox,NatIns,ACashEqu" : "",
                        isPage ? ",'Jane',surname,printf('W%07d',i),'AB123456C',printf('%10.2f',i%9000+0.5)" : ""));
    }
    for (const std::string& index : indexes)
        bare.Execute(index);
}

/// Takes what comes and keeps nothing of it.
class QuietDoor : public test::ScriptedDoor {
public:
    QuietDoor() { printers = {"Office"}; }
    PrintOutcome Print(const PrintRequest& request) override
    {
        pages += request.pages.size();
        return PrintOutcome::Sent;
    }
    void ShowProgress(int, int) override {}

    std::size_t pages = 0;
};

/// The program on a database of so many employees.
class Office {
public:
    explicit Office(std::int64_t ofEmployees) : employees(ofEmployees)
    {
        std::filesystem::create_directories(ProgramFolder());
        Start();
        Stop();
        FillDatabase(clients, employees);
        bench::PutOnEngine(clients);
        Start();
    }
    ~Office() { Stop(); }
    Office(const Office&) = delete;
    Office& operator=(const Office&) = delete;

    void Start()
    {
        program = std::make_unique<Program>(
            door, nullptr, ProgramPlaces{.programFolder = ProgramFolder(), .resourceFolder = QUILLMERE_RESOURCES});
        Require(program->Main(), "the program does not start");
        clients = TheSession().ClientDatabasePath();
    }
    void Stop()
    {
        if (program)
            program->Close();
        program.reset();
    }

    Session& TheSession() { return program->TheSession(); }
    PrintSystem& Printing() { return program->Printing(); }
    Screen& ScreenOf(std::string_view name)
    {
        Screen* const screen = TheSession().screens.Find(name);
        Require(screen != nullptr, name);
        return *screen;
    }
    void Click(std::string_view screen, std::string_view box)
    {
        Screen& clicked = ScreenOf(screen);
        clicked.Click(clicked.box(box));
    }

    void ListEmployers() { Click("MDIForm1", "Open"); }
    void ListEmployeesOfBig()
    {
        Screen& list = ScreenOf("EmployerList");
        list.Choose(list.box("EmployerList"), 0);
    }
    void OpenEmployee()
    {
        Screen& list = ScreenOf("EmployeeList");
        list.box("EmployeeList").Select(OfBigEmployer / 2);
        list.DoubleClick(list.box("EmployeeList"));
        Require(TheSession().screens.Find("Form3") != nullptr && TheSession().CurrentEmployer == BigEmployer,
                "nobody of the big employer is open");
    }
    void CloseEmployee() { TheSession().screens.Unload("Form3"); }

    std::filesystem::path ProgramFolder() const { return root / edition::ProductFolder; }

    const std::int64_t employees;
    QuietDoor door;
    std::filesystem::path clients;

private:
    const test::TemporaryFolder root;
    std::unique_ptr<Program> program;
};

/// That of the last size asked for; the sizes come one after the other.
Office& OfficeOf(std::int64_t employees)
{
    static std::unique_ptr<Office> office;
    if (!office || office->employees != employees) {
        office.reset();
        office = std::make_unique<Office>(employees);
    }
    return *office;
}

// ---- the roads ------------------------------------------------------------------------------------

/// What is done, between what is done before and after it and not measured.
struct Road {
    const char* name;
    std::function<void(Office&)> work, before = {}, after = {};
};

void Measure(benchmark::State& state, const Road& road)
{
    Office& office = OfficeOf(state.range(0));
    for (auto _ : state) {
        if (road.before)
            road.before(office);
        const bench::ProcessorTime spent;
        road.work(office);
        state.SetIterationTime(spent.Seconds());
        if (road.after)
            road.after(office);
    }
}

const NewEmployee& SomebodyNew()
{
    static const NewEmployee somebody{
        .employer = std::string(BigEmployer), .firstName = "New", .surname = "Comer", .payeReference = "1"};
    return somebody;
}

void FillNotepad(Office& office)
{
    static int run = 0;
    Screen& notepad = *office.TheSession().screens.Show("ANotepad");
    notepad.box("Description", 1).SetText("Item " + std::to_string(++run));
    notepad.box("CostMark", 1).SetText(std::to_string(run) + ".00");
    notepad.Leave(notepad.box("CostMark", 1));
}

void PrintBatch(Office& office)
{
    office.door.pages = 0;
    PrintBatchJob(office.TheSession(), office.Printing(), BigEmployer, BatchSelection::All());
    Require(office.door.pages >= std::size_t{2} * OfBigEmployer, "not everybody has been printed");
}

/// The folder of this year, which is empty.
void BeginThisYear(Office& office)
{
    CreateTables(office.ProgramFolder() / "this-year");
    bench::PutOnEngine(office.ProgramFolder() / "this-year");
}

void TransferOne(Office& office)
{
    std::vector<TransferNotice> notices;
    YearTransfer transfer(office.ProgramFolder() / "this-year", office.clients);
    transfer.Transfer({std::string(BigEmployer), "Jane Surname0000000", "Jane", "Surname0000000"}, TransferMode::Single,
                      notices);
    transfer.Commit();
    Require(notices.empty(), "a table lacks him");
}

void DeleteComer(Office& office)
{
    Database database = Database::OpenDatabase(office.clients);
    DeleteEmployee(database, BigEmployer, "New Comer");
}

void CloseLists(Office& office)
{
    for (const char* list : {"EmployeeList", "EmployerList"})
        office.TheSession().screens.Unload(list);
}

const std::vector<Road>& Roads()
{
    static const std::vector<Road> roads = {
        {"start", &Office::Start, &Office::Stop},
        {"list of employers", &Office::ListEmployers, {}, CloseLists},
        {"list of an employer's employees", &Office::ListEmployeesOfBig, &Office::ListEmployers, CloseLists},
        {"opening an employee", &Office::OpenEmployee,
         [](Office& office) {
             office.ListEmployers();
             office.ListEmployeesOfBig();
         },
         &Office::CloseEmployee},
        {"a notepad's Ok", [](Office& office) { office.Click("ANotepad", "cmdOK"); },
         [](Office& office) {
             office.TheSession().CurrentEmployer = BigEmployer;
             office.TheSession().CurrentEmployee = "Jane Surname0000000";
             FillNotepad(office);
         }},
        {"a new employee",
         [](Office& office) {
             Database database = Database::OpenDatabase(office.clients);
             CreateEmployee(database, SomebodyNew());
         },
         {},
         DeleteComer},
        {"P11D(b) total of 300",
         [](Office& office) {
             Database database = Database::OpenDatabase(office.clients);
             Require(!EmployerTotal(database, BigEmployer).IsZero(), "no total");
         }},
        {"batch of 300", PrintBatch},
        {"transfer of one employee", TransferOne, BeginThisYear,
         [](Office& office) { std::filesystem::remove(office.ProgramFolder() / "this-year"); }},
        {"find, opening (all)",
         [](Office& office) {
             Database database = Database::OpenDatabase(office.clients);
             const EmployeeFinder finder(database);
             Require(finder.Count() == static_cast<std::size_t>(office.employees), "not everybody");
         }},
        {"backup (all)",
         [](Office& office) { Require(BackUpDatabase(office.clients, office.ProgramFolder() / "copy"), "no backup"); },
         {},
         [](Office& office) { std::filesystem::remove(office.ProgramFolder() / "copy"); }},
    };
    return roads;
}

} // namespace
} // namespace quillmere

int main(int argc, char** argv)
{
    using namespace quillmere;
    // Size by size, so that one database is made and taken away before the next.
    for (const std::int64_t size : Sizes)
        for (const Road& road : Roads())
            benchmark::RegisterBenchmark(road.name, [&road](benchmark::State& state) { Measure(state, road); })
                ->Arg(size)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
