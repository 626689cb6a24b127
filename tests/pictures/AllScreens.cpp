// all_screens DIR [dark]: a picture of every screen of the program, each in its full size, and one sheet with all of
// them, as on a light desktop or on a dark one.
#include "PictureSheet.h"
#include "app/Program.h"
#include "clientdb/Employees.h"
#include "desktop/DesktopHost.h"
#include "desktop/Look.h"
#include "desktop/MainWindow.h"
#include "desktop/ScreenWindow.h"
#include "desktop/layouts/Layout.h"
#include "edition/Edition.h"
#include "support/ScriptedDoor.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QPixmap>

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace quillmere {
namespace {

/// A figure in every amount box and words in every other, so that the places of texts can be judged.
void FillBoxes(Screen& screen)
{
    for (const auto& box : screen.Boxes()) {
        if (box->Kind() == BoxKind::Text && box->IsAmount())
            box->SetText(box->Empty() ? "   1234.56" : box->Text());
        else if (box->Kind() == BoxKind::Text && box->Filter() == nullptr && box->Empty())
            box->SetText("Sample");
        else if (box->Kind() == BoxKind::Label && box->IsAmount())
            box->SetText(" 123456.78");
    }
}

/// The screen as the program opens it, or, where it does not open with the data at hand, as it is made.
QPixmap PictureOf(std::string_view name, Program& program, DesktopHost& host)
{
    Screens& screens = program.TheSession().screens;
    Screen* opened = screens.Show(name);
    const std::unique_ptr<Screen> made = opened == nullptr ? screens.Make(name) : nullptr;
    Screen& screen = opened == nullptr ? *made : *opened;
    FillBoxes(screen);
    QPixmap picture;
    {
        std::unique_ptr<ScreenWindow> own;
        QWidget* window = host.WindowOf(screen);
        if (window == nullptr) {
            own = std::make_unique<ScreenWindow>(screen, nullptr);
            window = own.get();
        }
        const Layout& layout = LayoutOf(name);
        window->resize(layout.width, layout.height);
        QCoreApplication::processEvents();
        picture = window->grab();
    }
    screens.Unload(name);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return picture;
}

void Run(const std::filesystem::path& target)
{
    const test::TemporaryFolder root;
    std::filesystem::create_directories(root / edition::ProductFolder);
    std::filesystem::create_directories(target);
    test::ScriptedDoor door;
    DesktopHost host;
    Program program(door, &host,
                    {.programFolder = root / edition::ProductFolder, .resourceFolder = QUILLMERE_RESOURCES});
    Session& session = program.TheSession();
    host.SetSession(&session);
    program.Main();
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        CreateEmployee(database,
                       {.employer = "Acme Ltd", .firstName = "Jane", .surname = "Smith", .payeReference = "123/A456"});
    }
    session.CurrentEmployer = "Acme Ltd";
    session.CurrentEmployee = "Jane Smith";
    host.Main()->resize(1366, 768);
    std::vector<test::NamedPicture> pictures{{"MDIForm1", host.Main()->grab()}};
    for (const std::string_view name : ScreensWithLayout())
        if (session.screens.IsRegistered(name))
            pictures.push_back({std::string(name), PictureOf(name, program, host)});
    for (const auto& [name, picture] : pictures)
        picture.save(look::Text((target / (name + ".png")).string()));
    test::SheetOf(pictures).save(look::Text((target / "all-screens.png").string()));
    fmt::print("{} screens in {}\n", pictures.size(), target.string());
    program.Close();
}

} // namespace
} // namespace quillmere

int main(int count, char** words)
{
    const bool dark = count == 3 && std::string_view(words[2]) == "dark";
    if (count != 2 && !dark) {
        fmt::print(stderr, "all_screens DIR [dark]\n");
        return 2;
    }
    const QApplication application(count, words);
    if (dark)
        QApplication::setPalette(quillmere::look::WholePalette(quillmere::look::Shade::Dark));
    quillmere::Run(words[1]);
    return 0;
}
