// How often the program waits for the server, operation by operation.
#include "clientdb/EmployerScreens.h"
#include "clientdb/Notepad.h"
#include "clientdb/store/ServerLink.h"
#include "review/EmployeeForm.h"
#include "support/ProgramFixture.h"

#include <algorithm>
#include <fmt/format.h>

namespace quillmere::test {
namespace {

class RoundTrips : public ProgramFixture {
protected:
    RoundTrips()
    {
        if (!OnServer())
            lent.PutAt(Now().ClientDatabasePath());
        for (int i = 0; i < 12; ++i)
            Create("Acme", "Jane", fmt::format("Smith {}", i));
        // Everything has been prepared once, and the copy of the day made.
        OpenNumber(0);
        OpenNumber(1);
    }

    void OpenNumber(int employee)
    {
        ChooseEmployer();
        Mark("EmployeeList", "EmployeeList", employee);
        Click("EmployeeList", "EmployeeOpen");
        Now().screens.RunDeferred();
    }
    void ChooseEmployer()
    {
        Menu("Open");
        Mark("EmployerList", "EmployerList");
        Click("EmployerList", "EmpOpen");
    }

    template<class Work>
    static std::int64_t Trips(Work work)
    {
        const std::int64_t before = ServerLink::RoundTrips();
        work();
        return ServerLink::RoundTrips() - before;
    }

    /// In how many tables the employee has a record.
    static std::ptrdiff_t TablesWith(Database& database, std::string_view employee)
    {
        return std::ranges::count_if(NewEmployeeTables(), [&](const TableLayout* table) {
            if (table->level != TableLevel::Employee)
                return false;
            Recordset records = database.OpenRecordset(table->name);
            records.Index("IndKey");
            records.Seek("Acme", employee);
            return !records.NoMatch();
        });
    }

    /// The first time prepares, and may find more to store.
    void OpenAndStore(const std::string& notepad, bool isFirst)
    {
        const std::int64_t opening = Trips([&] { Now().screens.Show(notepad); });
        Now().screens.RunDeferred();
        Screen* const screen = Now().screens.Find(notepad);
        ASSERT_NE(screen, nullptr) << notepad;
        const auto ok = [&] { screen->Click(screen->box(screen->FindBox("cmdOK") != nullptr ? "cmdOK" : "Ok")); };
        const std::int64_t storing = Trips(ok);
        Now().screens.RunDeferred();
        EXPECT_EQ(Now().screens.Find(notepad), nullptr) << notepad;
        EXPECT_LE(storing, 2) << notepad << (isFirst ? ", the first time" : "");
        if (!isFirst)
            EXPECT_LE(opening, 2) << notepad;
    }
};

TEST_F(RoundTrips, TheListOfEmployersTakesOne)
{
    Database database = Clients();
    EXPECT_EQ(Trips([&] { EXPECT_EQ(ListEmployers(database).size(), 1U); }), 1);
}

TEST_F(RoundTrips, OpeningAnEmployeeTakesTwo)
{
    for (int employee = 2; employee < 12; ++employee) {
        ChooseEmployer();
        Mark("EmployeeList", "EmployeeList", employee);
        EXPECT_LE(Trips([&] { Click("EmployeeList", "EmployeeOpen"); }), 2) << employee;
        EXPECT_TRUE(Shows("Form3"));
    }
}

TEST_F(RoundTrips, OpeningAnotherEmployeeStoresWhatIsTypedOfTheFirstAndTakesFour)
{
    for (int employee = 2; employee < 6; ++employee) {
        At("Form3", "ADescriptionAsset").SetText(fmt::format("Desk {}", employee));
        const std::int64_t trips =
            Trips([&] { EXPECT_TRUE(quillmere::OpenEmployee(Now(), "Acme", fmt::format("Jane Smith {}", employee))); });
        EXPECT_LE(trips, 4) << employee;
        Now().screens.RunDeferred();
    }
}

TEST_F(RoundTrips, CreatingAnEmployeeTakesTwo)
{
    Database database = Clients();
    // The first of an employer has three records more, and whoever is first prepares.
    for (const std::string_view employer : {"Acme", "Zinc"})
        for (const std::string_view name : {"One", "Two"}) {
            const NewEmployee employee{std::string(employer), "New", std::string(name), "123/A456"};
            EXPECT_EQ(Trips([&] { CreateEmployee(database, employee); }), 2) << employer << name;
            for (const TableLayout* const table : NewEmployeeTables()) {
                Recordset records = database.OpenRecordset(table->name);
                records.MoveFirstOf(employer);
                EXPECT_FALSE(records.AtEnd()) << table->name;
            }
        }
}

TEST_F(RoundTrips, DeletingAnEmployeeTakesTwoAndSoDoesRenamingHim)
{
    Database database = Clients();
    for (const int employee : {2, 3}) {
        const std::string name = fmt::format("Jane Smith {}", employee), newName = "New " + name;
        EXPECT_LE(Trips([&] { RenameEmployee(database, "Acme", name, newName); }), 2) << name;
        EXPECT_EQ(TablesWith(database, name), 0) << name;
        EXPECT_EQ(TablesWith(database, newName), TablesWith(database, "Jane Smith 4"));
        EXPECT_LE(Trips([&] { DeleteEmployee(database, "Acme", newName); }), 2) << name;
        EXPECT_EQ(TablesWith(database, newName), 0) << name;
    }
}

TEST_F(RoundTrips, ARenamingThatIsRefusedStaysUpToTheTableThatRefusesItAsInAFile)
{
    Database database = Clients();
    // Somebody has the name in one table alone.
    {
        Recordset records = database.OpenRecordset("KNotepad");
        records.Index("IndKey");
        records.Seek("Acme", "Jane Smith 5");
        records.Edit();
        records.SetField("EmployeeName", "Taken");
        records.Update();
    }
    EXPECT_THROW(RenameEmployee(database, "Acme", "Jane Smith 4", "Taken"), StoreError);
    bool isBefore = true;
    for (const TableLayout* const table : NewEmployeeTables()) {
        if (table->level != TableLevel::Employee)
            continue;
        isBefore = isBefore && table->name != "KNotepad";
        Recordset records = database.OpenRecordset(table->name);
        records.Index("IndKey");
        records.Seek("Acme", isBefore ? "Taken" : "Jane Smith 4");
        EXPECT_FALSE(records.NoMatch()) << table->name;
    }
}

TEST_F(RoundTrips, CreatingAnEmployeeInHisWindowAndOpeningHimTakesSeven)
{
    for (const std::string name : {"One", "Two"}) {
        Menu("New");
        Click("NewFileCheck", "Option2");
        Click("NewFileCheck", "NewFileOk");
        At("NewFile", "EmployerName").SetText("Zinc " + name);
        At("NewFile", "PAYE").SetText("123/A456");
        At("NewFile", "EmployeeName").SetText("New");
        At("NewFile", "EmployeeSurname").SetText(name);
        const std::int64_t trips = Trips([&] { Click("NewFile", "OkEmp"); });
        EXPECT_LE(trips, 7) << name;
        EXPECT_TRUE(Shows("Form3"));
    }
}

TEST_F(RoundTrips, AllThatAFormIsMadeOfIsReadInOne)
{
    Database database = Clients();
    for (const int employee : {2, 3}) {
        const std::int64_t trips =
            Trips([&] { const review::EmployeeForm form(database, "Acme", fmt::format("Jane Smith {}", employee)); });
        EXPECT_LE(trips, 1) << employee;
    }
}

TEST_F(RoundTrips, APageThatHasBeenChangedIsStoredInTwo)
{
    const auto turn = [&] { Click("Form3", "Page2"); };
    const std::int64_t unchanged = Trips(turn);
    Click("Side2Form1", "Page1");
    At("Form3", "ADescriptionAsset").SetText("Desk");
    EXPECT_LE(Trips(turn), unchanged + 2);
    Database database = Clients();
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    records.Seek("Acme", Now().CurrentEmployee);
    EXPECT_EQ(records.Field("ADescriptionAsset"), "Desk");
}

TEST_F(RoundTrips, ANotepadIsOpenedInTwoAndItsOkStoresInTwo)
{
    for (const std::string_view page : {"Form3", "Side2Form1"}) {
        if (page == "Side2Form1")
            Click("Form3", "Page2");
        int notepads = 0;
        for (const std::string& name : Now().screens.Registered()) {
            const auto made = Now().screens.Make(name);
            const auto* const notepad = dynamic_cast<Notepad*>(made.get());
            if (notepad == nullptr)
                continue;
            // Page 1 alone leads to the further cars; those of no employee stand above others.
            const bool isOfEmployee = FindTable(notepad->Table()).level == TableLevel::Employee;
            if (page == "Form3" ? !isOfEmployee : notepad->Table() == "ExtraCars")
                continue;
            ++notepads;
            for (const bool isFirst : {true, false})
                OpenAndStore(name, isFirst);
        }
        EXPECT_EQ(notepads, page == "Form3" ? 25 : 26);
    }
}

} // namespace
} // namespace quillmere::test
