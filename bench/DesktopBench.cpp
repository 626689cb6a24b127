// What the windows cost: the start to the first window, page 1 opened, filled and painted, an employee opened among
// 10,000, a box left and a page turned, each beside the cheapest way of doing the same with bare calls in the same run.
#include "app/Program.h"
#include "clientdb/Employees.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopPlatform.h"
#include "desktop/MainWindow.h"
#include "desktop/layouts/Layout.h"
#include "edition/Edition.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QStatusBar>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

using namespace quillmere;

/// A program folder of its own for one run of the program.
class Folder {
public:
    Folder() { std::filesystem::create_directories(Program()); }
    std::filesystem::path Program() const { return root / edition::ProductFolder; }

private:
    const test::TemporaryFolder root;
};

/// A run of the program up to its main window.
struct Run {
    explicit Run(const Folder& folder)
        : platform(host),
          program(platform, &host, {.programFolder = folder.Program(), .resourceFolder = QUILLMERE_RESOURCES})
    {
        host.SetSession(&program.TheSession());
        program.Main();
    }
    DesktopHost host;
    DesktopPlatform platform;
    Program program;
};

/// Runs a program of bench/start to its end, which comes once its first window has been painted: its processor time.
void RunToFirstWindow(benchmark::State& state, std::string program, std::string folder)
{
    program = START_FOLDER "/" + program;
    std::array<char*, 3> arguments{program.data(), folder.data(), nullptr};
    for (auto _ : state) {
        pid_t process = 0;
        int status = 0;
        rusage used{};
        if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0 ||
            wait4(process, &status, 0, &used) != process || status != 0)
            state.SkipWithError("the program does not start");
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        };
        state.SetIterationTime(seconds(used.ru_utime) + seconds(used.ru_stime));
    }
}

void StartToFirstWindow(benchmark::State& state)
{
    const Folder folder;
    {
        const Run firstStart(folder); // makes the client database
    }
    RunToFirstWindow(state, "program_start", folder.Program().string());
}
BENCHMARK(StartToFirstWindow)->Unit(benchmark::kMillisecond)->UseManualTime();

void StartOfAnEmptyMainWindow(benchmark::State& state)
{
    RunToFirstWindow(state, "empty_start", "menus");
}
BENCHMARK(StartOfAnEmptyMainWindow)->Unit(benchmark::kMillisecond)->UseManualTime();

void StartOfABlankWindow(benchmark::State& state)
{
    RunToFirstWindow(state, "empty_start", "blank");
}
BENCHMARK(StartOfABlankWindow)->Unit(benchmark::kMillisecond)->UseManualTime();

void Page1OpenedFilledAndPainted(benchmark::State& state)
{
    const Folder folder;
    Run run(folder);
    Session& session = run.program.TheSession();
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        CreateEmployee(database,
                       {.employer = "Acme Ltd", .firstName = "Jane", .surname = "Smith", .payeReference = "1"});
    }
    session.CurrentEmployer = "Acme Ltd";
    session.CurrentEmployee = "Jane Smith";
    for (auto _ : state) {
        Screen* page = session.screens.Load("Form3");
        session.screens.Show("Form3");
        for (const auto& box : page->Boxes())
            if (box->IsAmount())
                box->SetText("    250.00");
        benchmark::DoNotOptimize(run.host.WindowOf(*page)->grab());
        state.PauseTiming();
        session.screens.Unload("Form3");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}
BENCHMARK(Page1OpenedFilledAndPainted)->Unit(benchmark::kMillisecond);

/// As many bare widgets as page 1 has, with as much text.
std::unique_ptr<QWidget> BareWidgets(QWidget& window)
{
    const Layout& layout = LayoutOf("Form3");
    auto page = std::make_unique<QWidget>(&window);
    page->resize(1000, 700);
    for (const Layout::Drawn& drawn : layout.drawn)
        if (drawn.what == Layout::Drawn::What::Text) {
            auto* label = new QLabel(QString::fromStdString(drawn.text), page.get());
            label->setGeometry(drawn.x, drawn.y, drawn.width, drawn.height);
        }
    for (const Layout::Placed& placed : layout.placed) {
        auto* edit = new QLineEdit(page.get());
        edit->setGeometry(placed.x, placed.y, placed.width, placed.height);
        edit->setText("    250.00");
    }
    page->show();
    return page;
}

void BareWidgetsOfPage1(benchmark::State& state)
{
    QMainWindow window;
    window.resize(1366, 768);
    for (auto _ : state) {
        auto page = BareWidgets(window);
        benchmark::DoNotOptimize(page->grab());
        state.PauseTiming();
        page.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BareWidgetsOfPage1)->Unit(benchmark::kMillisecond);

// ---- a database of 10,000 employees -------------------------------------------------------------

constexpr int Employers = 100, EmployeesOfEach = 100;

std::string EmployerOf(int number)
{
    return fmt::format("Employer {:03}", number);
}

std::string EmployeeOf(int number)
{
    return fmt::format("First Surname {:03}", number);
}

/// A run of the program on a database of 10,000 employees with all their records, made once.
struct LargeRun {
    LargeRun() : run(folder)
    {
        Database database = Database::OpenDatabase(Client());
        WriteBatch batch(database);
        for (int employer = 0; employer < Employers; ++employer)
            for (int employee = 0; employee < EmployeesOfEach; ++employee)
                CreateEmployee(database, {.employer = EmployerOf(employer),
                                          .firstName = "First",
                                          .surname = fmt::format("Surname {:03}", employee),
                                          .payeReference = "123/A456"});
        batch.Commit();
    }
    std::filesystem::path Client() { return run.program.TheSession().ClientDatabasePath(); }
    Screens& AllScreens() { return run.program.TheSession().screens; }
    void Click(std::string_view screen, std::string_view box)
    {
        Screen& clicked = *AllScreens().Find(screen);
        clicked.Click(clicked.box(box));
    }
    QPixmap Painted(std::string_view screen) { return run.host.WindowOf(*AllScreens().Find(screen))->grab(); }

    /// File, Open; an employer; an employee; page 1 as the user sees it.
    QPixmap OpenEmployee(int employer, int employee)
    {
        Click("MDIForm1", "Open");
        Screen& employers = *AllScreens().Find("EmployerList");
        employers.Choose(employers.box("EmployerList"), employer);
        Screen& employees = *AllScreens().Find("EmployeeList");
        employees.box("EmployeeList").Select(employee);
        employees.DoubleClick(employees.box("EmployeeList"));
        return Painted("Form3");
    }
    void CloseFile()
    {
        AllScreens().Unload("Form3");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    Folder folder;
    Run run;
};

LargeRun& Large()
{
    static LargeRun run;
    return run;
}

void EmployeeOfTenThousandOpened(benchmark::State& state)
{
    LargeRun& run = Large();
    int number = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(run.OpenEmployee(number % Employers, number % EmployeesOfEach));
        state.PauseTiming();
        run.CloseFile();
        number += 7;
        state.ResumeTiming();
    }
}
BENCHMARK(EmployeeOfTenThousandOpened)->Unit(benchmark::kMillisecond);

/// The same steps with bare calls: both lists read and shown, the record read, its texts shown.
void EmployeeOfTenThousandOpenedBare(benchmark::State& state)
{
    const std::string path = Large().Client().string();
    QMainWindow window;
    window.resize(1366, 768);
    int number = 0;
    for (auto _ : state) {
        sqlite3* database = nullptr;
        sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        const auto rows = [database](const char* text, std::initializer_list<std::string> keys) {
            sqlite3_stmt* statement = nullptr;
            sqlite3_prepare_v2(database, text, -1, &statement, nullptr);
            int parameter = 0;
            for (const std::string& key : keys)
                sqlite3_bind_text(statement, ++parameter, key.data(), static_cast<int>(key.size()), SQLITE_STATIC);
            QStringList values;
            while (sqlite3_step(statement) == SQLITE_ROW)
                for (int column = 0; column < sqlite3_column_count(statement); ++column)
                    values << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
            sqlite3_finalize(statement);
            return values;
        };
        const auto shown = [&window](const QStringList& entries) {
            QListWidget list(&window);
            list.resize(400, 400);
            list.addItems(entries);
            list.show();
            return list.grab();
        };
        benchmark::DoNotOptimize(
            shown(rows("SELECT DISTINCT [EmployerName] FROM [P11D] INDEXED BY [P11D_IndKey]", {})));
        benchmark::DoNotOptimize(shown(
            rows("SELECT [EmployeeName] FROM [P11D] WHERE [EmployerName] = ?1", {EmployerOf(number % Employers)})));
        const QStringList record = rows("SELECT * FROM [P11D] WHERE [EmployerName] = ?1 AND [EmployeeName] = ?2",
                                        {EmployerOf(number % Employers), EmployeeOf(number % EmployeesOfEach)});
        if (record.isEmpty())
            state.SkipWithError("no such employee");
        auto page = BareWidgets(window);
        benchmark::DoNotOptimize(page->grab());
        sqlite3_close(database);
        state.PauseTiming();
        page.reset();
        number += 7;
        state.ResumeTiming();
    }
}
BENCHMARK(EmployeeOfTenThousandOpenedBare)->Unit(benchmark::kMillisecond);

// ---- on an open page ----------------------------------------------------------------------------

/// The list price is typed anew and left: the car is worked out and what has changed is painted.
void BoxLeftWithACar(benchmark::State& state)
{
    LargeRun& run = Large();
    run.OpenEmployee(1, 1);
    Screen& page = *run.AllScreens().Find("Form3");
    for (const auto& [name, text] : std::initializer_list<std::pair<const char*, const char*>>{
             {"FRegDate1", "01/02/2008"}, {"FC021", "152"}, {"FEngine1", "1496"}, {"FFuel1", "P"}}) {
        page.box(name).SetText(text);
        page.Leave(page.box(name));
    }
    int price = 20000;
    for (auto _ : state) {
        page.box("FListPrice1").SetText(std::to_string(price++));
        page.Leave(page.box("FListPrice1"));
        benchmark::DoNotOptimize(run.Painted("Form3"));
    }
    if (page.box("FCashEqu1").Text().empty())
        state.SkipWithError("the car was not worked out");
    run.CloseFile();
}
BENCHMARK(BoxLeftWithACar)->Unit(benchmark::kMillisecond);

/// As many bare line edits get their text, and the page is painted.
void BareBoxesChanged(benchmark::State& state)
{
    QMainWindow window;
    window.resize(1366, 768);
    const auto page = BareWidgets(window);
    constexpr int ChangedByACar = 6;
    int price = 20000;
    for (auto _ : state) {
        const QString text = QString::number(price++);
        int changed = 0;
        for (QLineEdit* edit : page->findChildren<QLineEdit*>())
            if (changed++ < ChangedByACar)
                edit->setText(text);
        benchmark::DoNotOptimize(page->grab());
    }
}
BENCHMARK(BareBoxesChanged)->Unit(benchmark::kMillisecond);

/// From page 1 to page 2: the one is stored, the other read, shown and painted.
void PageTurned(benchmark::State& state)
{
    LargeRun& run = Large();
    run.OpenEmployee(2, 2);
    bool first = true;
    for (auto _ : state) {
        run.Click(first ? "Form3" : "Side2Form1", first ? "Page2" : "Page1");
        first = !first;
        benchmark::DoNotOptimize(run.Painted(first ? "Form3" : "Side2Form1"));
    }
    run.CloseFile();
}
BENCHMARK(PageTurned)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
