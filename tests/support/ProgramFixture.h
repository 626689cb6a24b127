#pragma once

#include "app/Program.h"
#include "clientdb/Employees.h"
#include "edition/Edition.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace quillmere::test {

/// The whole program without windows, up to its main window, in a program folder of its own.
class ProgramFixture : public ::testing::Test {
protected:
    ProgramFixture()
        : program(door, nullptr,
                  {.programFolder = ProgramFolder(),
                   .resourceFolder = std::filesystem::path(BINARY_DIR) / edition::ProductFolder})
    {
        EXPECT_TRUE(program.Main());
        if (OnServer())
            lent.PutAt(Now().ClientDatabasePath());
    }

    Session& Now() { return program.TheSession(); }
    Database Clients() { return Database::OpenDatabase(Now().ClientDatabasePath()); }

    void Create(std::string employer, std::string firstName, std::string surname)
    {
        Database database = Clients();
        CreateEmployee(database, {std::move(employer), std::move(firstName), std::move(surname), "123/A456"});
    }

    /// True if the screen shows, as the user sees it.
    bool Shows(std::string_view screen) { return Now().screens.IsShown(screen); }

    Box& At(std::string_view screen, std::string_view box, int index = Box::NoIndex)
    {
        Screen* found = Now().screens.Find(screen);
        if (found == nullptr)
            throw std::logic_error(std::string(screen) + " is not open");
        return found->box(box, index);
    }
    void Click(std::string_view screen, std::string_view box, int index = Box::NoIndex)
    {
        Box& clicked = At(screen, box, index);
        Now().screens.Find(screen)->Click(clicked);
    }
    void Menu(std::string_view entry) { Click("MDIForm1", entry); }

    /// Chooses the entry of a list as the keys do: without a click.
    void Mark(std::string_view screen, std::string_view list, int position = 0)
    {
        Box& marked = At(screen, list);
        Now().screens.Find(screen)->Select(marked, position);
    }

    /// Page 1 of an employee, by way of the lists.
    void OpenEmployee()
    {
        Menu("Open");
        Mark("EmployerList", "EmployerList");
        Click("EmployerList", "EmpOpen");
        Mark("EmployeeList", "EmployeeList");
        Click("EmployeeList", "EmployeeOpen");
        ASSERT_TRUE(Shows("Form3"));
    }

    /// The oldest message that has not been looked at, taken away; an empty one if there is none.
    Message TakeMessage()
    {
        if (door.messages.empty())
            return {};
        Message message = door.messages.front();
        door.messages.erase(door.messages.begin());
        return message;
    }

    LentDatabases lent;
    ScriptedDoor door;
    TemporaryFolder root;
    Program program;

private:
    std::filesystem::path ProgramFolder() const
    {
        std::filesystem::path made = root.path / edition::ProductFolder;
        std::filesystem::create_directories(made);
        return made;
    }
};

} // namespace quillmere::test
