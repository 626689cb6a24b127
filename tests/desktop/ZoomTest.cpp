// The windows at another size than the desktop's: everything larger or smaller alike, and nothing lost on the way.
#include "EveryScreen.h"
#include "desktop/DesktopPlatform.h"
#include "desktop/Look.h"
#include "desktop/MainWindow.h"
#include "desktop/PreviewWindow.h"
#include "desktop/layouts/Layout.h"

#include <QCheckBox>
#include <QFontInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QStyle>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <fstream>
#include <map>

namespace quillmere {
namespace {

using test::EveryScreen;
using test::RunningProgram;

class ZoomedScreen : public EveryScreen {
protected:
    /// Where the controls stand and how large their letters are, by name.
    std::map<std::string, std::pair<QRect, int>> Places() const
    {
        std::map<std::string, std::pair<QRect, int>> places;
        for (const Layout::Placed& place : LayoutOf(GetParam()).placed) {
            const Box& box = screen->box(place.box, place.index);
            const QWidget* widget = WidgetOf(box);
            places[box.FullName()] = {widget->geometry(), widget->font().pixelSize()};
        }
        return places;
    }
};

TEST_P(ZoomedScreen, IsTwiceAsLargeInAllItsPartsAndComesBack)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const bool isPreview = GetParam() == "frmVSPrint";
    const bool grows = !LayoutOf(GetParam()).growing.empty();
    const auto before = Places();
    running.host.Zoom(200);
    for (const auto& [name, place] : Places()) {
        const auto& [was, letters] = before.at(name);
        EXPECT_NEAR(place.second, 2 * letters, 1) << name;
        // The preview's strip and a list that grows with its window go by what room there is.
        if (isPreview || grows)
            continue;
        EXPECT_EQ(place.first.topLeft(), was.topLeft() * 2) << name;
        EXPECT_EQ(place.first.size(), was.size() * 2) << name;
    }
    running.host.Zoom(100);
    if (!isPreview) {
        EXPECT_EQ(Places(), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, ZoomedScreen, ::testing::ValuesIn(ScreensWithLayout()),
                         [](const auto& row) { return std::string(row.param); });

class Zoom : public ::testing::Test {
protected:
    void SetUp() override
    {
        Main().setWindowState(Qt::WindowNoState);
        Main().resize(1600, 1200);
        Main().activateWindow();
        QCoreApplication::processEvents();
    }

    Session& Now() { return running.program.TheSession(); }
    MainWindow& Main() { return *running.host.Main(); }
    Box& At(const char* screen, const char* box) { return Now().screens.Find(screen)->box(box); }
    QWidget& WidgetOf(const char* screen, const char* box)
    {
        return *running.host.WidgetOf(*Now().screens.Find(screen), At(screen, box));
    }
    void Press(Qt::Key key)
    {
        QWidget* focus = Main().focusWidget();
        QTest::keyClick(focus != nullptr ? focus : &Main(), key, Qt::ControlModifier);
    }
    /// The size of the menus' letters.
    int Letters()
    {
        QCoreApplication::processEvents(); // by which the toolkit takes a font over
        return QFontInfo(Main().menuBar()->font()).pixelSize();
    }

    RunningProgram running;
};

TEST_F(Zoom, KeepsTheBoxInUseAndWhatWasTyped)
{
    running.Show("Form3");
    Main().activateWindow();
    auto& works = dynamic_cast<QLineEdit&>(WidgetOf("Form3", "WorkNumberBox"));
    works.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&works, "Stores 7");
    Press(Qt::Key_Plus);
    EXPECT_EQ(At("MDIForm1", "StatusNote").Text(), "Zoom 110 %");
    EXPECT_EQ(works.text(), "Stores 7");
    EXPECT_EQ(Main().focusWidget(), &works);
    EXPECT_EQ(works.font().pixelSize(), 14);
    QTest::keyClicks(&works, "8");
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "Stores 78");
}

TEST_F(Zoom, GoesBetweenItsBoundsByStepsAndBack)
{
    const int usual = Letters();
    for (const char* said : {"110 %", "125 %", "150 %", "175 %", "200 %", "200 %"}) {
        Press(Qt::Key_Equal); // the key of the plus, without Shift
        EXPECT_EQ(At("MDIForm1", "StatusNote").Text(), std::string("Zoom ") + said);
    }
    EXPECT_EQ(Letters(), 2 * usual);
    EXPECT_EQ(Main().findChild<QToolBar*>()->iconSize(), QSize(48, 48));
    for (const char* said : {"175 %", "150 %", "125 %", "110 %", "100 %", "90 %", "80 %", "80 %"}) {
        Press(Qt::Key_Minus);
        EXPECT_EQ(At("MDIForm1", "StatusNote").Text(), std::string("Zoom ") + said);
    }
    Press(Qt::Key_0);
    EXPECT_EQ(Letters(), usual);
    EXPECT_EQ(Main().findChild<QToolBar*>()->iconSize(), QSize(24, 24));
}

TEST_F(Zoom, HasTicksAndPicturesOfItsSize)
{
    running.Show("Form3");
    const auto& tick = dynamic_cast<QCheckBox&>(WidgetOf("Form3", "DirectorTick"));
    const auto& notepad = dynamic_cast<QToolButton&>(WidgetOf("Form3", "Image1"));
    const auto side = [&] { return tick.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &tick); };
    const auto picture = [&] { return notepad.icon().actualSize(notepad.iconSize()); };
    const int usual = side();
    EXPECT_EQ(picture(), QSize(20, 20));
    running.host.Zoom(200);
    EXPECT_EQ(side(), 2 * usual);
    EXPECT_EQ(picture(), QSize(40, 40));
}

TEST_F(Zoom, ShowsAPageAndAPanelAsLargeAsTheyNeed)
{
    running.Show("Form3");
    running.Show("CheckList");
    const QWidget* page = running.host.WindowOf(*Now().screens.Find("Form3"));
    const int width = page->width();
    running.host.Zoom(125);
    QCoreApplication::processEvents();
    EXPECT_GT(page->width(), width * 6 / 5);
    EXPECT_EQ(running.host.WindowOf(*Now().screens.Find("CheckList"))->height(),
              (LayoutOf("CheckList").height * 125 + 50) / 100);
}

TEST_F(Zoom, IsThatOfTheNextStart)
{
    Press(Qt::Key_Plus);
    Press(Qt::Key_Plus);
    RunningProgram::Door door(running.host);
    DesktopHost next;
    Program again(door, &next, {.programFolder = running.folder.path, .resourceFolder = QUILLMERE_RESOURCES});
    std::filesystem::copy_file(Now().programFolder / "DESK.TXT", running.folder.path / "DESK.TXT");
    ASSERT_TRUE(again.Main());
    EXPECT_EQ(next.Main()->findChild<QToolBar*>()->iconSize(), QSize(30, 30));
}

TEST_F(Zoom, IsTheUsualOneWhereTheFileHoldsNoStep)
{
    for (const char* kept : {"ZOOM=30000", "ZOOM=-1", "ZOOM=x", "ZOOM=", "ZOOM=99999999999999999999"}) {
        std::ofstream(running.folder.path / "DESK.TXT") << kept << "\n";
        RunningProgram::Door door(running.host);
        DesktopHost next;
        Program again(door, &next, {.programFolder = running.folder.path, .resourceFolder = QUILLMERE_RESOURCES});
        ASSERT_TRUE(again.Main());
        EXPECT_EQ(next.Main()->findChild<QToolBar*>()->iconSize(), QSize(24, 24)) << kept;
    }
}

TEST_F(Zoom, IsThatOfMessageBoxesToo)
{
    running.host.Zoom(150);
    DesktopPlatform platform(running.host);
    int letters = 0;
    QString family;
    QTimer::singleShot(0, &Main(), [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        letters = box->font().pixelSize();
        family = box->font().family();
        box->close();
    });
    platform.ShowMessage({.title = "T", .text = "Short"});
    EXPECT_EQ(letters, 19);
    EXPECT_EQ(family, look::CaptionFont().family());
}

} // namespace
} // namespace quillmere
