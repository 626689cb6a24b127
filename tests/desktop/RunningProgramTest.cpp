#include "RunningProgram.h"

#include <QApplication>
#include <gtest/gtest.h>

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

} // namespace
} // namespace quillmere::test
