#pragma once

#include "app/Program.h"
#include "clientdb/Employees.h"
#include "desktop/DesktopHost.h"
#include "desktop/MainWindow.h"
#include "edition/Edition.h"
#include "frame/Folders.h"
#include "frame/Settings.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <QCoreApplication>
#include <QEvent>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string_view>

namespace quillmere::test {

/// The program up to its main window, with one employee open, who is in last year's database too, and the windows made
/// but not looked at.
class RunningProgram {
public:
    RunningProgram() : program(door, &host, {.programFolder = ProgramFolder(), .resourceFolder = QUILLMERE_RESOURCES})
    {
        host.SetSession(&program.TheSession());
        program.Main();
        Session& session = program.TheSession();
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        CreateEmployee(database,
                       {.employer = "Acme Ltd", .firstName = "Jane", .surname = "Smith", .payeReference = "1"});
        session.CurrentEmployer = "Acme Ltd";
        session.CurrentEmployee = "Jane Smith";

        // A table to be taken over, with a row of each kind.
        door.openPath = (folder.path / "staff.csv").string();
        std::ofstream(*door.openPath) << "First names,Surname,NI number,Shoe size\nJane,Smith,AB123456C,5\n"
                                         "John,Brown,,9\nZoe,Adams,XX,4\nJane,Smith,,5\n";

        const std::filesystem::path priorFolder = PriorProgramFolderOf(session.programFolder);
        std::filesystem::create_directories(priorFolder);
        std::ofstream(priorFolder / SettingsFileName)
            << "FOLDER 1=Clients\nPATH 1=" << priorFolder.string() << "\nSELECTED FOLDER=1\n";
        std::filesystem::copy_file(session.ClientDatabasePath(), priorFolder / edition::PriorClientDatabaseName);
    }

    /// Shows a screen, if the program has it and it opens with what there is.
    Screen* Show(std::string_view name)
    {
        Screens& screens = program.TheSession().screens;
        return screens.IsRegistered(name) ? screens.Show(name) : nullptr;
    }

    /// Shows progress in the main window, too.
    class Door : public ScriptedDoor {
    public:
        explicit Door(DesktopHost& host) : host(host) {}
        void ShowProgress(int done, int total) override
        {
            ScriptedDoor::ShowProgress(done, total);
            host.ShowProgress(done, total);
            if (progressShown)
                progressShown();
        }
        Answer ShowMessage(const Message& message) override
        {
            const Answer answer = ScriptedDoor::ShowMessage(message);
            if (messageShown)
                messageShown(message);
            return answer;
        }
        std::function<void()> progressShown; ///< looks at it
        std::function<void(const Message&)> messageShown;

    private:
        DesktopHost& host;
    };

    /// Deletes at last what the windows have left to an event loop, which a test does not have: what stayed would be
    /// dressed anew with each program, and every test would be slower than the one before.
    struct Sweeper {
        ~Sweeper() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    };

    Sweeper sweeper; ///< goes last
    TemporaryFolder folder;
    DesktopHost host;
    Door door{host};
    Program program;

private:
    std::filesystem::path ProgramFolder() const
    {
        const std::filesystem::path made = folder.path / edition::ProductFolder;
        std::filesystem::create_directories(made);
        return made;
    }
};

} // namespace quillmere::test
