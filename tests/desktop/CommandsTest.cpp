// Every command of the main window, every tab and picture of the page, and every end of the program leave the box in
// use first, once, whether they are given by mouse or by key.
#include "RunningProgram.h"
#include "app/MDIForm1.h"
#include "clientdb/CurrentRecord.h"
#include "clientdb/EmployerScreens.h"
#include "clientdb/FolderScreens.h"

#include <QAction>
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace quillmere {
namespace {

using test::RunningProgram;

/// An open employee with "W1" typed in a box, whose leaving puts "!" behind what it finds.
class PageInUse {
public:
    PageInUse()
    {
        session.settings.folder[2] = "Other";
        session.settings.path[2] = (running.folder.path / "other").string();
        RebuildFolderMenu(session);
        EXPECT_TRUE(OpenPage1(session, "Test"));
        Page().OnLeave("WorkNumberBox", [this](Box& box) {
            ++left;
            box.SetText(box.Text() + "!");
        });
        running.host.Main()->activateWindow();
        QApplication::setActiveWindow(running.host.Main());
        Widget(Page(), Page().box("WorkNumberBox"))->setFocus(Qt::MouseFocusReason);
        QTest::keyClicks(QApplication::focusWidget(), "W1");
        EXPECT_EQ(left, 0);
    }

    Screen& Page() { return *session.screens.Find("Form3"); }
    Screen& Main() { return *session.screens.Find("MDIForm1"); }
    QWidget* Widget(const Screen& screen, const Box& box) { return running.host.WidgetOf(screen, box); }
    QAction* Action(const Box& box)
    {
        return running.host.Main()->findChild<QAction*>(QString::fromStdString("MDIForm1." + box.FullName()));
    }

    void ExpectLeftOnce(const std::string& by)
    {
        QCoreApplication::processEvents();
        EXPECT_EQ(left, 1) << by;
        Database database = Database::OpenDatabase(client);
        const bool stays = session.screens.IsShown("Form3");
        if (!stays) {
            EXPECT_EQ(OpenCurrent(database, "P11D", session).Field("WorkNumberBox"), "W1!") << by;
            return;
        }
        // The focus moves on: the box has been left already.
        for (Screen* screen : session.screens.Open())
            if (screen->Mode() == ShowMode::Modal)
                session.screens.Unload(screen->Name());
        QCoreApplication::processEvents();
        QApplication::setActiveWindow(running.host.Main());
        Widget(Page(), Page().box("SexBox"))->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        EXPECT_EQ(left, 1) << by << ", and then the focus moved on";
        // Typed in again, it is left again.
        Widget(Page(), Page().box("WorkNumberBox"))->setFocus(Qt::TabFocusReason);
        Widget(Page(), Page().box("SexBox"))->setFocus(Qt::TabFocusReason);
        EXPECT_EQ(left, 2) << by;
    }

    RunningProgram running;
    Session& session = running.program.TheSession();
    const std::filesystem::path client = session.ClientDatabasePath();
    int left = 0;
};

TEST(BoxInUse, IsLeftOnceByEveryEntryOfTheMenus)
{
    int walked = 0;
    for (const MenuRow& row : MenuRows()) {
        PageInUse use;
        const Box& entry = use.Main().box(row.box, row.index);
        if (!entry.Visible() || !entry.Enabled())
            continue;
        ++walked;
        const std::string name = entry.FullName(); // the box may go with the program
        use.Action(entry)->trigger();
        use.ExpectLeftOnce(name);
    }
    EXPECT_GE(walked, 17);
}

TEST(BoxInUse, IsLeftOnceByEveryKeyOfTheMenus)
{
    int walked = 0;
    for (const MenuRow& row : MenuRows()) {
        PageInUse use;
        const Box& entry = use.Main().box(row.box, row.index);
        const QKeySequence keys = use.Action(entry)->shortcut();
        // Help is looked at while something is typed, and the key of Undo takes back what has just been typed: neither
        // leaves anything.
        if (keys.isEmpty() || row.box == "mnuHelp" || row.box == "mnuUndo")
            continue;
        ++walked;
        const std::string name = entry.FullName();
        QTest::keySequence(QApplication::focusWidget(), keys);
        use.ExpectLeftOnce(name);
    }
    EXPECT_GE(walked, 3);
}

TEST(BoxInUse, IsNotLeftByTheKeyOfHelp)
{
    PageInUse use;
    QTest::keySequence(QApplication::focusWidget(), use.Action(use.Main().box("mnuHelp"))->shortcut());
    EXPECT_TRUE(use.session.screens.IsShown("HelpBook"));
    EXPECT_EQ(use.left, 0);
}

TEST(BoxInUse, IsLeftOnceByEveryButtonOfTheToolbar)
{
    int walked = 0;
    PageInUse all;
    for (const auto& listed : all.Main().Boxes()) {
        if (listed->Kind() != BoxKind::Button || !listed->Visible() || !listed->Enabled())
            continue;
        ++walked;
        PageInUse use;
        const Box& button = use.Main().box(listed->Name(), listed->Index());
        use.running.door.answers = {Answer::Yes}; // the exit asks
        QTest::mouseClick(use.Widget(use.Main(), button), Qt::LeftButton);
        use.ExpectLeftOnce(listed->FullName());
    }
    EXPECT_EQ(walked, 6);
}

TEST(BoxInUse, IsLeftOnceByEveryTabAndPictureOfThePage)
{
    int walked = 0;
    PageInUse all;
    for (const auto& listed : all.Page().Boxes()) {
        const bool leads = listed->Kind() == BoxKind::Picture || listed->Kind() == BoxKind::Label;
        if (!leads || !listed->Visible())
            continue;
        ++walked;
        PageInUse use;
        QTest::mouseClick(use.Widget(use.Page(), use.Page().box(listed->Name())), Qt::LeftButton);
        use.ExpectLeftOnce(listed->FullName());
    }
    EXPECT_GE(walked, 10);
}

TEST(BoxInUse, IsLeftOnceByEveryEndOfTheProgram)
{
    {
        PageInUse use;
        use.running.host.Main()->close();
        use.ExpectLeftOnce("the close box");
    }
    {
        PageInUse use;
        use.running.program.CloseForSystem();
        use.ExpectLeftOnce("the system's wish");
    }
    {
        PageInUse use;
        QApplication::setActiveWindow(nullptr); // another program is in front
        QCoreApplication::processEvents();
        EXPECT_EQ(use.left, 0);
        use.running.program.CloseForSystem();
        use.ExpectLeftOnce("the system's wish, from behind");
    }
}

} // namespace
} // namespace quillmere
