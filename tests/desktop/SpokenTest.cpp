// What a screen reader is told of every screen: sections as groups with names, of each box what it takes, and which
// page is shown.
#include "EveryScreen.h"
#include "desktop/Look.h"
#include "desktop/layouts/Layout.h"
#include "review/BoxHelp.h"

#include <QAccessible>
#include <gtest/gtest.h>

namespace quillmere {
namespace {

using test::EveryScreen;
using test::RunningProgram;

class Spoken : public EveryScreen {
protected:
    QAccessibleInterface& InterfaceOf(const Box& box) const
    {
        return *QAccessible::queryAccessibleInterface(WidgetOf(box));
    }
};

INSTANTIATE_TEST_SUITE_P(Screens, Spoken, ::testing::ValuesIn(ScreensWithLayout()),
                         [](const auto& parameter) { return std::string(parameter.param); });

TEST_P(Spoken, OfEveryBoxSaysWhereItIsAndWhatItTakes)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    for (const auto& box : screen->Boxes()) {
        const review::BoxHelp* help = review::HelpOf(screen->Name(), box->Name());
        if (WidgetOf(*box) == nullptr || help == nullptr)
            continue;
        const std::string said = InterfaceOf(*box).text(QAccessible::Description).toStdString();
        EXPECT_EQ(said, review::LineOf(*help)) << box->FullName();
        EXPECT_NE(said.find(help->takes), std::string::npos) << box->FullName();
    }
}

TEST_P(Spoken, PutsTheBoxesOfASectionIntoAGroupWithItsName)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const Layout& layout = LayoutOf(GetParam());
    for (std::size_t place = 0; place + 1 < layout.drawn.size(); ++place) {
        const Layout::Drawn &panel = layout.drawn[place], &letter = layout.drawn[place + 1];
        if (panel.what != Layout::Drawn::What::Panel || letter.what != Layout::Drawn::What::Letter || panel.page > 0)
            continue;
        for (const Layout::Placed& placed : layout.placed) {
            const QRect room(panel.x, panel.y, panel.width, panel.height);
            if (placed.page > 0 || placed.y >= layout.FormBottom() ||
                !room.contains(QRect(placed.x, placed.y, placed.width, placed.height)))
                continue;
            const QAccessibleInterface& group = *InterfaceOf(screen->box(placed.box, placed.index)).parent();
            EXPECT_EQ(group.role(), QAccessible::Grouping) << placed.box;
            EXPECT_TRUE(group.text(QAccessible::Name).startsWith(look::Text(letter.text + ", "))) << placed.box;
        }
    }
}

TEST(SpokenPages, SayWhichOneIsShown)
{
    RunningProgram running;
    for (const auto& [name, shown, other] :
         {std::tuple("Form3", "Page1", "Page2"), std::tuple("Side2Form1", "Page2", "Page1")}) {
        const Screen& page = *running.Show(name);
        const auto said = [&](const char* box) {
            return QAccessible::queryAccessibleInterface(running.host.WidgetOf(page, page.box(box)))
                ->text(QAccessible::Description);
        };
        EXPECT_EQ(said(shown), "The page that is shown");
        EXPECT_NE(said(other), "The page that is shown");
    }
}

} // namespace
} // namespace quillmere
