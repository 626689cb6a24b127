// The end of the program at the system's wish: everything is stored, and nobody is asked.
#include "desktop/SystemClose.h"

#include "RunningProgram.h"
#include "clientdb/BoundScreen.h"
#include "clientdb/CurrentRecord.h"
#include "clientdb/EmployerScreens.h"
#include "clientdb/store/StoreFaults.h"
#include "desktop/DesktopPlatform.h"

#include <QApplication>
#include <QDialog>
#include <QSessionManager>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <csignal>
#include <cstddef>

namespace quillmere {
namespace {

using test::RunningProgram;

/// An employee's page with something typed and not left.
class SystemCloseTest : public ::testing::Test {
protected:
    SystemCloseTest()
    {
        auto* page = static_cast<BoundScreen*>(running.Show("Form3"));
        EXPECT_EQ(page->StoreAndShow("Test"), BoundScreen::Sought::Found);
        page->box("WorkNumberBox").AcceptTyped("W17");
    }

    /// True once the main window has been closed.
    bool Ends(int milliseconds = 2000)
    {
        return QTest::qWaitFor([this] { return running.program.Ended(); }, milliseconds);
    }

    void ExpectEverythingStored()
    {
        Session& session = running.program.TheSession();
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        Recordset records = OpenCurrent(database, "P11D", session);
        EXPECT_EQ(records.Field("WorkNumberBox"), "W17");
        EXPECT_TRUE(std::filesystem::exists(session.programFolder / SettingsFileName));
        EXPECT_TRUE(running.door.messages.empty()) << running.door.messages[0].text;
    }

    RunningProgram running;
    SystemClose systemClose{running.program};
};

class EndingSignal : public SystemCloseTest, public ::testing::WithParamInterface<int> {};

TEST_P(EndingSignal, StoresThePageAndTheSettings)
{
    std::raise(GetParam());
    ASSERT_TRUE(Ends());
    ExpectEverythingStored();
}

INSTANTIATE_TEST_SUITE_P(Signals, EndingSignal, ::testing::Values(SIGTERM, SIGHUP, SIGINT),
                         [](const auto& parameter) { return "Signal" + std::to_string(parameter.param); });

TEST_F(SystemCloseTest, TheEndOfTheDesktopSessionStoresThePageAndTheSettings)
{
    // There is no session to manage here, and nobody looks at its manager.
    alignas(QSessionManager) std::byte nowhere[sizeof(QSessionManager)]{};
    Q_EMIT qGuiApp->commitDataRequest(reinterpret_cast<QSessionManager&>(nowhere));
    EXPECT_TRUE(running.program.Ended()) << "at once: there may be no later";
    ExpectEverythingStored();
}

TEST_F(SystemCloseTest, WhatAnotherDesksLockKeepsOutIsThereAtTheNextStart)
{
    const std::filesystem::path programFolder = running.program.TheSession().programFolder;
    SetStoreFaultHook([](std::string_view) { return 5; });
    std::raise(SIGTERM);
    ASSERT_TRUE(Ends());
    SetStoreFaultHook({});
    EXPECT_TRUE(running.door.messages.empty()) << "nobody is asked: " << running.door.messages[0].text;

    // The first program still stands in its folder: another one has its settings, and with them its client folder.
    const std::filesystem::path secondFolder = running.folder.path / "second" / edition::ProductFolder;
    std::filesystem::create_directories(secondFolder);
    std::filesystem::copy_file(programFolder / SettingsFileName, secondFolder / SettingsFileName);
    DesktopHost host;
    Program program(running.door, &host, {.programFolder = secondFolder, .resourceFolder = QUILLMERE_RESOURCES});
    host.SetSession(&program.TheSession());
    ASSERT_TRUE(program.Main());
    Session& session = program.TheSession();
    session.CurrentEmployer = "Acme Ltd";
    session.CurrentEmployee = "Jane Smith";
    ASSERT_TRUE(OpenPage1(session, "Test"));
    EXPECT_EQ(session.screens.FindBox("Form3", "WorkNumberBox")->Text(), "");
    Screen* strip = session.screens.Find("TypedStrip");
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->box("StripWords").Text().substr(0, 11), "1 box typed");
    strip->Click(strip->box("StripBack"));
    EXPECT_EQ(session.screens.FindBox("Form3", "WorkNumberBox")->Text(), "W17");
    EXPECT_EQ(session.screens.Find("TypedStrip"), nullptr);
    program.Close();
    EXPECT_TRUE(program.Ended());
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    EXPECT_EQ(OpenCurrent(database, "P11D", session).Field("WorkNumberBox"), "W17");
    EXPECT_FALSE(std::filesystem::exists(programFolder / "ClientQuillmere11.typed"));
}

TEST_F(SystemCloseTest, AWorkUnderWayIsFinishedFirst)
{
    Screens& screens = running.program.TheSession().screens;
    bool lookedDuringWork = false;
    running.program.TheSession().screens.Find("Form3")->Perform(
        [&] {
            std::raise(SIGTERM);
            QTest::qWait(150);
            lookedDuringWork = screens.Find("Form3") != nullptr;
        },
        "Work");
    EXPECT_TRUE(lookedDuringWork);
    EXPECT_FALSE(running.program.Ended());
    ASSERT_TRUE(Ends());
    ExpectEverythingStored();
}

TEST(SystemCloseWithDialogs, AMessageBoxThatIsUpGoesAwayUnanswered)
{
    const test::TemporaryFolder folder;
    const std::filesystem::path programFolder = folder.path / edition::ProductFolder;
    std::filesystem::create_directories(programFolder);
    DesktopHost host;
    DesktopPlatform platform(host);
    Program program(platform, &host, {.programFolder = programFolder, .resourceFolder = QUILLMERE_RESOURCES});
    host.SetSession(&program.TheSession());
    const SystemClose systemClose(program);
    ASSERT_TRUE(program.Main());
    bool asked = false;
    QTimer::singleShot(0, [&] {
        asked = qobject_cast<QDialog*>(QApplication::activeModalWidget()) != nullptr;
        std::raise(SIGTERM);
    });
    Screen& main = *program.TheSession().screens.Find("MDIForm1");
    main.Click(main.box("cmdExit"));
    EXPECT_TRUE(asked);
    EXPECT_FALSE(program.Ended()) << "the question was not taken for a Yes";
    EXPECT_TRUE(QTest::qWaitFor([&] { return program.Ended(); }, 2000));
    EXPECT_TRUE(std::filesystem::exists(programFolder / SettingsFileName));
}

TEST(SystemCloseWithDialogs, AMessageOfTheBoxInUseDoesNotHoldTheEndUp)
{
    const test::TemporaryFolder folder;
    const std::filesystem::path programFolder = folder.path / edition::ProductFolder;
    std::filesystem::create_directories(programFolder);
    DesktopHost host;
    DesktopPlatform platform(host);
    Program program(platform, &host, {.programFolder = programFolder, .resourceFolder = QUILLMERE_RESOURCES});
    host.SetSession(&program.TheSession());
    const SystemClose systemClose(program);
    ASSERT_TRUE(program.Main());
    Session& session = program.TheSession();
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    CreateEmployee(database, {.employer = "Acme Ltd", .firstName = "Jane", .surname = "Smith", .payeReference = "1"});
    session.CurrentEmployer = "Acme Ltd";
    session.CurrentEmployee = "Jane Smith";
    ASSERT_TRUE(OpenPage1(session, "Test"));
    Screen& page = *session.screens.Find("Form3");
    page.box("NatIns").SetText("no number");
    page.Enter(page.box("NatIns"));
    std::raise(SIGTERM);
    ASSERT_TRUE(QTest::qWaitFor([&] { return program.Ended(); }, 2000));
    EXPECT_EQ(OpenCurrent(database, "P11D", session).Field("NatIns"), "");
}

} // namespace
} // namespace quillmere
