// The end of the program at the system's wish: everything is stored, and nobody is asked.
#include "desktop/SystemClose.h"

#include "RunningProgram.h"
#include "clientdb/BoundScreen.h"
#include "clientdb/CurrentRecord.h"
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

using testing::RunningProgram;

/// An employee's page with something typed and not left.
class SystemCloseTest : public ::testing::Test {
protected:
    SystemCloseTest()
    {
        auto* page = static_cast<BoundScreen*>(running.Show("Form3"));
        EXPECT_TRUE(page->SeekCurrent("Test"));
        page->box("WorkNumberBox").AcceptTyped("W17");
    }

    /// True once the main window has been closed.
    bool Ends(int milliseconds = 2000)
    {
        return QTest::qWaitFor([this] { return running.program.Ended(); }, milliseconds);
    }

    void ExpectEverythingStored()
    {
        Session& session = running.program.GetSession();
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

TEST_F(SystemCloseTest, AWorkUnderWayIsFinishedFirst)
{
    Screens& screens = running.program.GetSession().screens;
    bool lookedDuringWork = false;
    running.program.GetSession().screens.Find("Form3")->Perform(
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
    const test::ScratchFolder folder;
    const std::filesystem::path programFolder = folder.path / edition::ProductFolder;
    std::filesystem::create_directories(programFolder);
    DesktopHost host;
    DesktopPlatform platform(host);
    Program program(platform, &host, {.programFolder = programFolder, .resourceFolder = QUILLMERE_RESOURCES});
    host.SetScreens(&program.GetSession().screens);
    const SystemClose systemClose(program);
    ASSERT_TRUE(program.Main());
    bool asked = false;
    QTimer::singleShot(0, [&] {
        asked = qobject_cast<QDialog*>(QApplication::activeModalWidget()) != nullptr;
        std::raise(SIGTERM);
    });
    Screen& main = *program.GetSession().screens.Find("MDIForm1");
    main.Click(main.box("cmdExit"));
    EXPECT_TRUE(asked);
    EXPECT_FALSE(program.Ended()) << "the question was not taken for a Yes";
    EXPECT_TRUE(QTest::qWaitFor([&] { return program.Ended(); }, 2000));
    EXPECT_TRUE(std::filesystem::exists(programFolder / SettingsFileName));
}

} // namespace
} // namespace quillmere
