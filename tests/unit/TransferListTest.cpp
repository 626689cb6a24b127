#include "transfer/TransferList.h"

#include "clientdb/Employees.h"
#include "clientdb/store/StoreFaults.h"
#include "edition/Edition.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <sqlite3.h>

#include <algorithm>
#include <fmt/format.h>
#include <memory>

namespace quillmere::test {
namespace {

/// The screen without a window, over two databases in a family root of its own.
class TransferScreen : public StoreFixture {
protected:
    TransferScreen()
    {
        session.programFolder = root / edition::ProductFolder;
        const auto priorFolder = root / edition::PriorProductFolder;
        std::filesystem::create_directory(session.programFolder);
        std::filesystem::create_directory(priorFolder);
        session.settings.path[1] = session.programFolder.string();
        MakeEmpty(session.ClientDatabasePath());
        MakeEmpty(priorFolder / edition::PriorClientDatabaseName);
        Store(priorFolder / SettingsFileName, fmt::format("FOLDER 1=Old\nPATH 1={}\n", priorFolder.string()));
        session.screens.Register("TransferList",
                                 [](Session& shared) { return std::make_unique<TransferList>(shared); });
    }
    void TearDown() override { SetStoreFaultHook({}); }

    void AddLastYear(int employees)
    {
        Database database =
            Database::OpenDatabase(root / edition::PriorProductFolder / edition::PriorClientDatabaseName);
        WriteBatch batch(database);
        for (int i = 0; i < employees; ++i)
            CreateEmployee(database, {"Acme", "Jane", std::to_string(i), ""});
        batch.Commit();
    }

    std::size_t Transferred()
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        return ListEmployees(database, "Acme").size();
    }

    void Click(const char* button)
    {
        Screen& screen = *session.screens.Find("TransferList");
        screen.Click(screen.box(button));
    }

    TemporaryFolder root;
    quillmere::test::ScriptedDoor door;
    Session session{door};
};

TEST_F(TransferScreen, ALongRunShowsThatItMovesAndLetsTheWindowsRepaint)
{
    AddLastYear(230);
    ASSERT_NE(session.screens.Show("TransferList"), nullptr);
    bool busyWhileWriting = false;
    SetStoreFaultHook([&](std::string_view statement) {
        busyWhileWriting = busyWhileWriting || (statement.starts_with("INSERT") && door.busy);
        return SQLITE_OK;
    });
    Click("TransferAll");
    EXPECT_TRUE(busyWhileWriting);
    EXPECT_FALSE(door.busy);
    ASSERT_GT(door.progress.size(), 90u);
    EXPECT_LT(door.progress.size(), 110u) << "no oftener than the bar can show";
    EXPECT_EQ(door.progress.front(), (std::pair{0, 230}));
    EXPECT_TRUE(std::is_sorted(door.progress.begin(), door.progress.end() - 1));
    EXPECT_EQ(*(door.progress.end() - 2), (std::pair{230, 230}));
    EXPECT_EQ(door.progress.back(), (std::pair{0, 0})) << "the bar goes with the run";
    EXPECT_GE(door.yields, 90);
    EXPECT_EQ(Transferred(), 230u);
}

TEST_F(TransferScreen, TheBoxesHaveTheirIcons)
{
    AddLastYear(1);
    ASSERT_NE(session.screens.Show("TransferList"), nullptr);
    Click("Transfer");
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].icon, Icon::Critical);
    Click("TransferAll");
    ASSERT_EQ(door.messages.size(), 3u);
    EXPECT_EQ(door.messages[1].icon, Icon::Question);
    EXPECT_EQ(door.messages[1].buttons, Buttons::YesNo);
    EXPECT_EQ(door.messages[2].title, "Transfer");
}

TEST_F(TransferScreen, WhatLastYearLacksIsToldWithAnExclamationMark)
{
    AddLastYear(1);
    {
        Database database =
            Database::OpenDatabase(root / edition::PriorProductFolder / edition::PriorClientDatabaseName);
        Recordset records = database.OpenRecordset("JNotepad");
        records.MoveFirst();
        records.Delete();
    }
    ASSERT_NE(session.screens.Show("TransferList"), nullptr);
    Click("TransferAll");
    ASSERT_EQ(door.messages.size(), 3u);
    EXPECT_EQ(door.messages[1].title, "Notepad J - File Transfer error");
    EXPECT_EQ(door.messages[1].icon, Icon::Exclamation);
}

TEST_F(TransferScreen, AStoreThatFailsWithOneTableCostsOneRecordAndTheRunGoesOn)
{
    AddLastYear(5);
    ASSERT_NE(session.screens.Show("TransferList"), nullptr);
    int inserts = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        return statement.starts_with("INSERT INTO [CNotepad]") && ++inserts == 3 ? SQLITE_IOERR : SQLITE_OK;
    });
    Click("TransferAll");
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 3u);
    EXPECT_EQ(door.messages[1].title, "Notepad C - File Transfer error");
    EXPECT_EQ(door.messages[1].text, "disk I/O error");
    EXPECT_EQ(door.messages[1].icon, Icon::Exclamation);
    EXPECT_EQ(door.messages[2].title, "Transfer");
    EXPECT_EQ(door.messages[2].text, "Transfer Complete");
    EXPECT_FALSE(door.busy);
    EXPECT_EQ(door.progress.back(), (std::pair{0, 0}));
    EXPECT_EQ(Transferred(), 5u);
}

TEST_F(TransferScreen, WhereNothingCanBeStoredItIsToldOnceWithTheFirstWhoIsMissing)
{
    AddLastYear(450);
    {
        Database database =
            Database::OpenDatabase(root / edition::PriorProductFolder / edition::PriorClientDatabaseName);
        Recordset records = database.OpenRecordset("JNotepad");
        records.Index("IndKey");
        records.Seek("Acme", "Jane 250");
        records.Delete();
    }
    ASSERT_NE(session.screens.Show("TransferList"), nullptr);
    int commits = 0;
    SetStoreFaultHook(
        [&](std::string_view statement) { return statement == "COMMIT" && ++commits > 1 ? SQLITE_FULL : SQLITE_OK; });
    Click("TransferAll");
    SetStoreFaultHook({});
    ASSERT_EQ(door.messages.size(), 3u);
    EXPECT_EQ(door.messages[1].title, "Notepad J - File Transfer error") << "what was to be told before is not lost";
    EXPECT_EQ(door.messages[1].text, "Employee not found");
    EXPECT_EQ(door.messages[2].title, "Transfer Selected Employees ");
    EXPECT_EQ(door.messages[2].text,
              "database or disk is full\nNot transferred: Acme - (Jane 200), and all who follow in the list.");
    EXPECT_FALSE(door.busy);
    EXPECT_EQ(door.progress.back(), (std::pair{0, 0}));
    EXPECT_EQ(Transferred(), 200u);
    // The next run goes on with the others.
    Click("TransferAll");
    EXPECT_EQ(door.messages.back().text, "Transfer Complete");
    EXPECT_EQ(Transferred(), 450u);
}

TEST_F(TransferScreen, OneWhoCannotBeStoredIsNamed)
{
    AddLastYear(1);
    Screen* screen = session.screens.Show("TransferList");
    ASSERT_NE(screen, nullptr);
    screen->Choose(screen->box("TransferListbox"), 0);
    SetStoreFaultHook([](std::string_view statement) { return statement == "BEGIN IMMEDIATE" ? SQLITE_BUSY : 0; });
    Click("Transfer");
    ASSERT_EQ(door.messages.size(), 2u);
    EXPECT_EQ(door.messages[0].title, "Transfer");
    EXPECT_EQ(door.messages[0].icon, Icon::Question);
    EXPECT_EQ(door.messages[0].buttons, Buttons::YesNo);
    EXPECT_EQ(door.messages[1].text, "database is locked\nNot transferred: Acme - (Jane 0).");
    EXPECT_EQ(Transferred(), 0u);
}

TEST_F(TransferScreen, ThePointerIsBusyWhileTheListFills)
{
    AddLastYear(3);
    int reads = 0, busyReads = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        if (statement.find("[P11D]") != std::string_view::npos) {
            ++reads;
            busyReads += door.busy;
        }
        return SQLITE_OK;
    });
    ASSERT_NE(session.screens.Show("TransferList"), nullptr);
    EXPECT_GT(reads, 0);
    EXPECT_EQ(busyReads, reads);
    EXPECT_FALSE(door.busy);
}

TEST_F(TransferScreen, TooManyEmployeesThisYearIsAFaultOfTheProgram)
{
    AddLastYear(1);
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        WriteBatch batch(database);
        Recordset records = database.OpenRecordset("P11D");
        for (int i = 0; i <= static_cast<int>(ExistingEmployees::Room); ++i) {
            records.AddNew();
            records.SetField("EmployerName", "Many");
            records.SetField("EmployeeName", std::to_string(i));
            records.SetField("Name", fmt::format("Many {}", i));
            records.Update();
        }
        batch.Commit();
    }
    ASSERT_NE(session.screens.Show("TransferList"), nullptr);
    Click("TransferAll");
    ASSERT_EQ(door.messages.size(), 2u);
    EXPECT_TRUE(door.messages[1].text.starts_with("Procedure: TransferList")) << door.messages[1].text;
    EXPECT_FALSE(door.busy);
    EXPECT_EQ(Transferred(), 0u);
}

} // namespace
} // namespace quillmere::test
