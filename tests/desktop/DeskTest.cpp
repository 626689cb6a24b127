// What stands round the form on the desktop: the empty desk and the status bar.
#include "RunningProgram.h"
#include "clientdb/EmployerScreens.h"
#include "clientdb/RecentEmployees.h"
#include "frame/CloseAll.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <gtest/gtest.h>

namespace quillmere {
namespace {

using test::RunningProgram;

class Desk : public ::testing::Test {
protected:
    template<class Widget>
    Widget* At(const char* name)
    {
        return running.host.Main()->findChild<Widget*>(name);
    }
    Session& Now() { return running.program.TheSession(); }

    RunningProgram running;
};

TEST_F(Desk, OffersWhoWasOpenLastWhileItIsEmpty)
{
    auto* recent = At<QPushButton>("MDIForm1.Start.mnuRecent(1)");
    auto* begin = At<QPushButton>("MDIForm1.Start.New");
    ASSERT_NE(recent, nullptr);
    ASSERT_NE(begin, nullptr);
    EXPECT_TRUE(begin->isVisible());
    EXPECT_FALSE(recent->isVisible());
    ASSERT_TRUE(OpenEmployee(Now(), "Acme Ltd", "Jane Smith"));
    EXPECT_FALSE(begin->isVisible()) << "the page lies there";
    ASSERT_TRUE(CloseAllScreens(Now()));
    EXPECT_TRUE(begin->isVisible());
    ASSERT_TRUE(recent->isVisible());
    EXPECT_TRUE(running.host.Main()->Desk()->rect().contains(
        QRect(recent->mapTo(running.host.Main()->Desk(), QPoint()), recent->size())));
    recent->setFocus(Qt::TabFocusReason);
    QTest::keyClick(recent, Qt::Key_Return);
    EXPECT_TRUE(Now().screens.IsShown("Form3"));
    EXPECT_FALSE(recent->isVisible());
}

TEST_F(Desk, HasItsButtonsInTheMiddleWithNobodyRecent)
{
    MainWindow& main = *running.host.Main();
    const auto* words = At<QLabel>("MDIForm1.StartWords");
    const auto* begin = At<QPushButton>("MDIForm1.Start.New");
    const int middle = main.Desk()->width() / 2;
    EXPECT_NEAR(begin->mapTo(main.Desk(), begin->rect().center()).x(), middle, 2);
    EXPECT_NEAR(words->mapTo(main.Desk(), words->rect().center()).x(), middle, 2);
}

TEST_F(Desk, OffersInAFolderWithoutAnEmployerWhatCanBeBegunWithAlone)
{
    const auto shows = [this](const char* name) { return At<QPushButton>(name)->isVisible(); };
    RebuildRecent(Now());
    EXPECT_TRUE(shows("MDIForm1.Start.Open"));
    EXPECT_TRUE(shows("MDIForm1.Start.mnuFind"));
    EXPECT_FALSE(shows("MDIForm1.Start.mnuSample"));
    {
        Database database = Database::OpenDatabase(Now().ClientDatabasePath());
        DeleteEmployer(database, "Acme Ltd");
    }
    RebuildRecent(Now());
    EXPECT_FALSE(shows("MDIForm1.Start.Open"));
    EXPECT_FALSE(shows("MDIForm1.Start.mnuFind"));
    EXPECT_TRUE(shows("MDIForm1.Start.New"));
    EXPECT_TRUE(shows("MDIForm1.Start.mnuTransfer"));
    EXPECT_TRUE(shows("MDIForm1.Start.mnuSample"));
    At<QPushButton>("MDIForm1.Start.mnuSample")->click();
    EXPECT_TRUE(shows("MDIForm1.Start.Open"));
    EXPECT_FALSE(shows("MDIForm1.Start.mnuSample"));
}

TEST_F(Desk, HasRoomForEightLongNamesInTheSmallestWindow)
{
    MainWindow& main = *running.host.Main();
    Screen& screen = main.Shown();
    for (int slot = 1; slot <= 8; ++slot) {
        Box& entry = screen.box("mnuRecent", slot);
        entry.SetText("&1 Bartholomew Featherstonehaugh (The Northern Counties Property Company of Old)");
        entry.SetVisible(true);
    }
    main.setWindowState(Qt::WindowNoState);
    main.resize(main.minimumSize());
    QCoreApplication::processEvents();
    for (const QPushButton* button : main.findChildren<QPushButton*>())
        if (button->isVisible() && button->objectName().startsWith("MDIForm1.Start.")) {
            EXPECT_LE(button->mapTo(main.Desk(), QPoint(0, button->height())).y(), main.Desk()->height())
                << button->objectName().toStdString();
        }
}

TEST_F(Desk, SaysWhatHasJustHappenedToAScreenReaderWholeAndCutsWhatHasNoRoom)
{
    auto* note = At<QLabel>("MDIForm1.StatusNote");
    ASSERT_NE(note, nullptr);
    const int least = running.host.Main()->minimumSizeHint().width();
    const std::string words = "Emptied: " + std::string(400, 'x') + " is not a date";
    SetStatusNote(Now(), words);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(note)->text(QAccessible::Name).toStdString(), words);
    EXPECT_EQ(running.host.Main()->minimumSizeHint().width(), least) << "no word makes the window wider";
    EXPECT_EQ(note->toolTip().toStdString(), words);
    SetStatusNote(Now(), "");
    EXPECT_EQ(note->toolTip().toStdString(), "");
}

TEST_F(Desk, SaysWhoElseHasTheEmployeeOpenAndTakesNoRoomOtherwise)
{
    auto* also = At<QLabel>("MDIForm1.StatusAlso");
    ASSERT_NE(also, nullptr);
    EXPECT_TRUE(also->isHidden());
    Box& box = *Now().screens.FindBox("MDIForm1", "StatusAlso");
    box.SetText("Also open: ben@desk");
    box.SetVisible(true);
    EXPECT_FALSE(also->isHidden());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(also)->text(QAccessible::Name), "Also open: ben@desk");
    EXPECT_GE(also->minimumSizeHint().width(), also->fontMetrics().horizontalAdvance(also->text()))
        << "a name is whole";
    box.SetText("");
    box.SetVisible(false);
    EXPECT_TRUE(also->isHidden());
}

} // namespace
} // namespace quillmere
