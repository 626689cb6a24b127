#include "RunningProgram.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <optional>

namespace quillmere::test {
namespace {

qsizetype WidgetsAfterARun()
{
    {
        RunningProgram running;
        for (const std::string_view name : {"Form3", "HNotepad"})
            EXPECT_NE(running.Show(name), nullptr) << name;
    }
    return QApplication::allWidgets().size();
}

TEST(ARunningProgram, LeavesNoWidgetBehind)
{
    const qsizetype before = WidgetsAfterARun(); // and what the toolkit keeps once and for all
    EXPECT_EQ(WidgetsAfterARun(), before);
}

/// Sees whether anything has been painted.
class Paints : public QObject {
public:
    Paints() { qApp->installEventFilter(this); }
    bool any = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        any = any || event->type() == QEvent::Paint;
        return false;
    }
};

TEST(ARunningProgram, IsSeenBeforeItDoesWhatCanWait)
{
    Paints paints;
    RunningProgram running;
    Screens& screens = running.program.TheSession().screens;
    std::optional<bool> paintedBefore;
    screens.StartTimer(*screens.Find("MDIForm1"), "TestTimer", [&] { paintedBefore = paints.any; });
    while (!paintedBefore)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_TRUE(*paintedBefore);
    // And from then on at once.
    bool done = false;
    screens.StartTimer(*screens.Find("MDIForm1"), "TestTimer", [&] { done = true; });
    QCoreApplication::processEvents();
    EXPECT_TRUE(done);
}

TEST(ARunningProgram, PaintsWhatHasChangedBeforeItDoesWhatCanWait)
{
    RunningProgram running;
    Screen* const page = running.Show("Form3");
    ASSERT_NE(page, nullptr);
    QCoreApplication::processEvents();
    Paints paints;
    std::optional<bool> paintedBefore;
    running.program.TheSession().screens.StartTimer(*page, "TestTimer", [&] { paintedBefore = paints.any; });
    page->box("ADescriptionAsset").SetText("Desk");
    QCoreApplication::processEvents();
    EXPECT_EQ(paintedBefore, true);
}

} // namespace
} // namespace quillmere::test
