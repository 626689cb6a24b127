// What the windows cost: start to the first window, and page 1 opened, filled and painted, each beside the cheapest way
// of doing the same with bare widgets in the same run.
#include "app/Program.h"
#include "clientdb/Employees.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopPlatform.h"
#include "desktop/Layout.h"
#include "desktop/MainWindow.h"
#include "edition/Edition.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QStatusBar>
#include <benchmark/benchmark.h>

#include <filesystem>
#include <unistd.h>

namespace {

using namespace quillmere;

/// A program folder of its own for one run of the program.
class Folder {
public:
    Folder() : root(std::filesystem::temp_directory_path() / ("desktop-bench-" + std::to_string(getpid())))
    {
        std::filesystem::create_directories(Program());
    }
    ~Folder() { std::filesystem::remove_all(root); }
    std::filesystem::path Program() const { return root / edition::ProductFolder; }

private:
    std::filesystem::path root;
};

/// A run of the program up to its main window.
struct Run {
    explicit Run(const Folder& folder)
        : platform(host),
          program(platform, &host, {.programFolder = folder.Program(), .resourceFolder = QUILLMERE_RESOURCES})
    {
        host.SetScreens(&program.GetSession().screens);
        program.Main();
    }
    DesktopHost host;
    DesktopPlatform platform;
    Program program;
};

void StartToFirstWindow(benchmark::State& state)
{
    const Folder folder;
    for (auto _ : state) {
        Run run(folder);
        benchmark::DoNotOptimize(run.host.Main()->grab());
    }
}
BENCHMARK(StartToFirstWindow)->Unit(benchmark::kMillisecond);

void EmptyMainWindow(benchmark::State& state)
{
    for (auto _ : state) {
        QMainWindow window;
        for (const char* title : {"File", "Folder", "View", "Settings"})
            for (int entry = 0; entry < 5; ++entry)
                window.menuBar()->addMenu(title)->addAction("Entry");
        window.statusBar()->addWidget(new QLabel("Q1111"));
        window.setWindowState(Qt::WindowMaximized);
        window.show();
        benchmark::DoNotOptimize(window.grab());
    }
}
BENCHMARK(EmptyMainWindow)->Unit(benchmark::kMillisecond);

void Page1OpenedFilledAndPainted(benchmark::State& state)
{
    const Folder folder;
    Run run(folder);
    Session& session = run.program.GetSession();
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

void BareWidgetsOfPage1(benchmark::State& state)
{
    const Layout& layout = LayoutOf("Form3");
    QMainWindow window;
    window.resize(1366, 768);
    for (auto _ : state) {
        auto* page = new QWidget(&window);
        page->resize(1000, 700);
        for (const Layout::Drawn& drawn : layout.drawn)
            if (drawn.what == Layout::Drawn::What::Text) {
                auto* label = new QLabel(QString::fromStdString(drawn.text), page);
                label->setGeometry(drawn.x, drawn.y, drawn.width, drawn.height);
            }
        for (const Layout::Placed& placed : layout.placed) {
            auto* edit = new QLineEdit(page);
            edit->setGeometry(placed.x, placed.y, placed.width, placed.height);
            edit->setText("    250.00");
        }
        page->show();
        benchmark::DoNotOptimize(page->grab());
        state.PauseTiming();
        delete page;
        state.ResumeTiming();
    }
}
BENCHMARK(BareWidgetsOfPage1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
