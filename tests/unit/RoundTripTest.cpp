// How often the program waits for the server, operation by operation.
#include "clientdb/Notepad.h"
#include "clientdb/store/ServerLink.h"
#include "review/EmployeeForm.h"
#include "support/ProgramFixture.h"

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
};

TEST_F(RoundTrips, TheListOfEmployersTakesOne)
{
    Database database = Clients();
    EXPECT_EQ(Trips([&] { EXPECT_EQ(ListEmployers(database).size(), 1U); }), 1);
}

TEST_F(RoundTrips, OpeningAnEmployeeTakesFour)
{
    for (int employee = 2; employee < 12; ++employee) {
        ChooseEmployer();
        Mark("EmployeeList", "EmployeeList", employee);
        EXPECT_LE(Trips([&] { Click("EmployeeList", "EmployeeOpen"); }), 4) << employee;
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
    Click("Form3", "Page2");
    int notepads = 0;
    for (const std::string& name : Now().screens.Registered()) {
        if (dynamic_cast<Notepad*>(Now().screens.Make(name).get()) == nullptr)
            continue;
        ++notepads;
        // The first time prepares, and may find more to store.
        for (const bool isFirst : {true, false}) {
            const std::int64_t opening = Trips([&] { Now().screens.Show(name); });
            Now().screens.RunDeferred();
            Screen* const screen = Now().screens.Find(name);
            ASSERT_NE(screen, nullptr) << name;
            const auto ok = [&] { screen->Click(screen->box(screen->FindBox("cmdOK") != nullptr ? "cmdOK" : "Ok")); };
            const std::int64_t storing = Trips(ok);
            Now().screens.RunDeferred();
            EXPECT_EQ(Now().screens.Find(name), nullptr) << name;
            // The list of currencies is gone through, not sought. What a car's Ok has stored is added up with the
            // further cars, which are looked for anew.
            const bool isOfCars = name == "FNotepad" || name == "Form3_4" || name == "Form5_6";
            const int more = name == "HNotepad2" ? 2 : isOfCars ? 1 : 0;
            if (!isFirst) {
                EXPECT_LE(opening, 2) << name;
                EXPECT_LE(storing, 2 + more) << name;
            }
        }
    }
    EXPECT_EQ(notepads, 28);
}

} // namespace
} // namespace quillmere::test
