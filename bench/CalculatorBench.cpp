// What the calculators' notepads cost: opened, opened and painted, and stored by their Ok, each of the first and last
// beside the same reading or writing with the C interface of SQLite, the opening of the file included on both sides.
#include "Bare.h"
#include "ProcessorTime.h"
#include "Require.h"
#include "calculators/D2Notepad.h"
#include "calculators/DNotepad.h"
#include "calculators/ENotepad.h"
#include "calculators/GNotepad.h"
#include "calculators/HNotepad.h"
#include "calculators/HNotepad2.h"
#include "calculators/JNotepad.h"
#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopPlatform.h"
#include "edition/Edition.h"
#include "frame/Text.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QWidget>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <array>
#include <filesystem>

namespace quillmere {
namespace {

using bench::Bare;
using bench::Require;

constexpr std::string_view Employer = "Acme Ltd", Employee = "Jane Smith";

/// What the Ok of a notepad writes: fields of its own table for each number up to `last` (0: as they stand), then
/// fields of P11D.
struct Notepad {
    const char* name;
    const char* table;
    std::vector<std::string> fields;
    int last;
    std::vector<std::string> pageFields;
};

const std::vector<Notepad>& Notepads()
{
    static const std::vector<Notepad> notepads = {
        {"GNotepad",
         "GNotepad",
         {"FuelVanTick", "ABox",      "BBox",
          "CBox",        "DBox",      "EBox",
          "FBox",        "GBox",      "HBox",
          "JBox",        "LBox",      "MBox",
          "KBox",        "RegNumber", "DateFrom1",
          "DateTo1",     "DateFrom2", "DateTo2",
          "DateFrom3",   "DateTo3",   "RBox",
          "SBox",        "TBox",      "VBox",
          "WBox",        "XBox",      "DateFuelWithdrawn"},
         3,
         {"GVan", "GVanFuel"}},
        {"HNotepad",
         "HNotepad",
         {"Currency", "Index", "MaxBalanceLater", "MaxBalanceEarlier", "TotalBalance", "Divide2", "TaxMonths",
          "InterestRate", "InterestPaid", "CashEq", "MaxBox", "DateFrom", "DateTo"},
         5,
         {"HOutstand1", "HOutsand20031", "HMaxLoan1", "HLoanInterest1", "HLoanCashEqu1", "HLoanDate1",
          "HLoanDischarge1", "HOutstand2", "HOutsand20032", "HMaxLoan2", "HLoanInterest2", "HLoanCashEqu2",
          "HLoanDate2", "HLoanDischarge2"}},
        {"HNotepad2", "HNotepad2", {"Currency", "Rate"}, 15, {}},
        {"DNotepad",
         "DNotepad",
         {"Address1", "Address2", "Address3", "Address4", "Address5", "Postcode", "AccommodationYTick",
          "AccommodationNTick", "BasicChargeA", "BasicChargeB", "BasicChargeC", "BasicChargeD", "BasicChargeE"},
         0,
         {"DCashEqu"}},
        {"D2Notepad",
         "DNotepad",
         {"AddChargeF", "AddChargeG", "AddChargeH", "AddChargeJ", "AddChargeK", "AddChargeL", "AddChargeM",
          "AddChargeN", "AddChargeP", "AddChargeQ", "AddChargeR", "AddChargeDays"},
         0,
         {}},
        {"ENotepad",
         "ENotepad",
         {"ABox", "BBox", "CBox", "DBox", "JBox", "KBox", "LBox", "MBox", "QBox"},
         3,
         {"ETaxAmount"}},
        {"JNotepad",
         "JNotepad",
         {"ABox", "EmployerCost", "EmployeeCost", "CBox", "DBox", "EBox", "QualExp"},
         0,
         {"JRelocationExp"}},
    };
    return notepads;
}

std::vector<std::string> FieldsOf(const Notepad& notepad)
{
    std::vector<std::string> fields;
    for (int number = std::min(notepad.last, 1); number <= notepad.last; ++number)
        for (const std::string& stem : notepad.fields)
            fields.push_back(number == 0 ? stem : Numbered(stem, number));
    return fields;
}

/// A folder with a client database of one employee, gone with its end.
class Clients {
public:
    Clients()
    {
        CreateTables(File());
        Database database = Database::OpenDatabase(File());
        CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
    }

    std::filesystem::path File() const { return folder / edition::ClientDatabaseName; }
    void Select(Session& session) const
    {
        session.settings.path[1] = folder.path.string();
        session.settings.selectedFolder = 1;
        session.CurrentEmployer = Employer;
        session.CurrentEmployee = Employee;
    }

private:
    const test::TemporaryFolder folder;
};

/// The notepads in a session of their own, with windows or without.
struct Program {
    explicit Program(bool windows) : platform(host), session(platform)
    {
        clients.Select(session);
        Register<GNotepad>("GNotepad");
        Register<HNotepad>("HNotepad");
        Register<HNotepad2>("HNotepad2");
        Register<DNotepad>("DNotepad");
        Register<D2Notepad>("D2Notepad");
        Register<ENotepad>("ENotepad");
        Register<JNotepad>("JNotepad");
        if (windows) {
            session.screens.SetHost(&host);
            host.SetSession(&session);
        }
    }
    ~Program() { session.screens.Abandon(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    template<typename ScreenClass>
    void Register(std::string_view name)
    {
        session.screens.Register(name, [](Session& shared) { return std::make_unique<ScreenClass>(shared); });
    }
    Screen& Open(const Notepad& notepad)
    {
        Screen* screen = session.screens.Show(notepad.name);
        Require(screen != nullptr, "a notepad does not open");
        session.screens.RunDeferred();
        return *screen;
    }

    Clients clients;
    DesktopHost host;
    DesktopPlatform platform;
    Session session;
};

std::string WhereOf(const std::string& table)
{
    return table == "HNotepad2" ? "" : " WHERE EmployerName=? AND EmployeeName=?";
}

void OpenNotepad(benchmark::State& state, const Notepad& notepad)
{
    Program program(false);
    for (auto _ : state) {
        program.Open(notepad);
        program.session.screens.Unload(notepad.name);
    }
}

void OpenBare(benchmark::State& state, const Notepad& notepad)
{
    const Clients clients;
    std::string select = "SELECT ";
    for (const std::string& field : FieldsOf(notepad))
        select += "[" + field + "],";
    select.back() = ' ';
    select += "FROM " + std::string(notepad.table) + WhereOf(notepad.table);
    const bool keyed = std::string_view(notepad.table) != "HNotepad2";
    for (auto _ : state) {
        Bare bare(clients.File());
        benchmark::DoNotOptimize(keyed ? bare.Run(select, {Employer, Employee}) : bare.Run(select, {}));
    }
}

void OpenAndPaint(benchmark::State& state, const Notepad& notepad)
{
    Program program(true);
    for (auto _ : state) {
        const Screen& screen = program.Open(notepad);
        benchmark::DoNotOptimize(program.host.WindowOf(screen)->grab());
        state.PauseTiming();
        program.session.screens.Unload(notepad.name);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

/// The time that `work` takes, without what goes before it in each round.
template<class Before, class Work>
void Timed(benchmark::State& state, Before before, Work work)
{
    for (auto _ : state) {
        before();
        const bench::ProcessorTime spent;
        work();
        state.SetIterationTime(spent.Seconds());
    }
}

/// Types another figure into every box, so that there is something to write.
void FillIn(Screen& screen, int round)
{
    for (const auto& box : screen.Boxes())
        if (box->Kind() == BoxKind::Text && box->Filter() != DateKeyFilter)
            box->SetText(std::to_string(90000 + round % 1000));
}

void OkNotepad(benchmark::State& state, const Notepad& notepad)
{
    Program program(false);
    Screen* screen = nullptr;
    int round = 0;
    Timed(
        state,
        [&] {
            screen = &program.Open(notepad);
            FillIn(*screen, ++round);
        },
        [&] { screen->Click(screen->box("Ok")); });
    Require(program.session.screens.Find(notepad.name) == nullptr, "an Ok has failed");
}

void OkBare(benchmark::State& state, const Notepad& notepad)
{
    const Clients clients;
    const std::vector<std::string> fields = FieldsOf(notepad);
    const bool keyed = std::string_view(notepad.table) != "HNotepad2";
    int round = 0;
    std::string text;
    Timed(
        state, [&] { text = std::to_string(++round); },
        [&] {
            Bare bare(clients.File());
            bare.Execute("BEGIN IMMEDIATE");
            for (const std::string& field : fields) {
                const std::string update =
                    "UPDATE " + std::string(notepad.table) + " SET [" + field + "]=?" + WhereOf(notepad.table);
                if (keyed)
                    bare.Run(update, {text, Employer, Employee});
                else
                    bare.Run(update, {text});
            }
            for (const std::string& field : notepad.pageFields)
                bare.Run("UPDATE P11D SET [" + field + "]=?" + WhereOf("P11D"), {text, Employer, Employee});
            bare.Execute("COMMIT");
        });
}

void RegisterAll()
{
    using Body = void (*)(benchmark::State&, const Notepad&);
    const auto add = [](const Notepad& notepad, const char* what, Body body) {
        return benchmark::RegisterBenchmark((std::string(notepad.name) + what).c_str(),
                                            [body, &notepad](benchmark::State& state) { body(state, notepad); })
            ->Unit(benchmark::kMicrosecond);
    };
    for (const Notepad& notepad : Notepads()) {
        add(notepad, " opened/notepad", OpenNotepad)->UseRealTime();
        add(notepad, " opened/bare", OpenBare)->UseRealTime();
        add(notepad, " opened and painted", OpenAndPaint);
        add(notepad, " Ok/notepad", OkNotepad)->UseManualTime();
        add(notepad, " Ok/bare", OkBare)->UseManualTime();
    }
}

} // namespace
} // namespace quillmere

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    quillmere::RegisterAll();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
