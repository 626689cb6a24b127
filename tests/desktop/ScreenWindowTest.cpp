// What holds for the window of every screen: each control is placed, named for a screen reader, and visited by the Tab
// key once, in the order of the form.
#include "EveryScreen.h"
#include "clientdb/BoundScreen.h"
#include "clientdb/Notepad.h"
#include "clientdb/store/TableLayouts.h"
#include "desktop/Look.h"
#include "desktop/MainWindow.h"
#include "desktop/layouts/Layout.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace quillmere {
namespace {

using test::EveryScreen;
using test::RunningProgram;

/// What other controls stand on, or what a class of its own draws.
bool IsGround(const Box& box)
{
    return box.Kind() == BoxKind::Frame || box.Kind() == BoxKind::Surface;
}

QAccessibleInterface& Spoken(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

QString SpokenName(QWidget& widget)
{
    return Spoken(widget).text(QAccessible::Name);
}

TEST_P(EveryScreen, PlacesEveryControlThatCanShow)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    std::set<const Box*> placed;
    for (const Layout::Placed& place : LayoutOf(screen->Name()).placed) {
        const Box* box = screen->FindBox(place.box, place.index);
        ASSERT_NE(box, nullptr) << place.box;
        EXPECT_TRUE(placed.insert(box).second) << box->FullName() << " is placed twice";
    }
    for (const auto& box : screen->Boxes())
        EXPECT_TRUE(!box->Visible() || IsGround(*box) || placed.contains(box.get()))
            << box->FullName() << " is nowhere";
}

TEST_P(EveryScreen, KeepsTheOthersWaitingIfItIsModal)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const bool modal = screen->Mode() == ShowMode::Modal;
    const ShowMode mode = screen->Mode();
    EXPECT_EQ(window->isWindow(), mode != ShowMode::Child && !IsAtFoot(mode));
    EXPECT_EQ(window->windowModality(), modal ? Qt::ApplicationModal : Qt::NonModal);
    EXPECT_EQ(QApplication::activeModalWidget(), modal ? window : nullptr);
}

TEST_P(EveryScreen, SaysInTheTitleOfItsWindowWhoseItIs)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const auto* notepad = dynamic_cast<const Notepad*>(screen);
    const auto* bound = dynamic_cast<const BoundScreen*>(screen);
    if ((notepad == nullptr && bound == nullptr) || !window->isWindow())
        return;
    const std::string title = window->windowTitle().toStdString();
    EXPECT_TRUE(title.starts_with(screen->Caption())) << title;
    const std::string caption = screen->Caption();
    switch (FindTable(notepad != nullptr ? notepad->Table() : bound->Table()).level) {
    case TableLevel::Employee:
        EXPECT_TRUE(title.ends_with(" - Jane Smith (Acme Ltd)")) << title;
        EXPECT_EQ(title.find("Jane Smith"), title.rfind("Jane Smith")) << title;
        break;
    case TableLevel::Employer:
        EXPECT_EQ(title, caption + " - Acme Ltd");
        break;
    default:
        EXPECT_EQ(title, caption);
        break;
    }
}

TEST_P(EveryScreen, NamesEveryControlThatTakesTheFocus)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    std::set<QString> names;
    for (const auto& box : screen->Boxes()) {
        QWidget* widget = WidgetOf(*box);
        if (widget == nullptr || widget->focusPolicy() == Qt::NoFocus)
            continue;
        EXPECT_FALSE(SpokenName(*widget).trimmed().isEmpty()) << box->FullName();
        if (box->Kind() == BoxKind::Picture) {
            EXPECT_FALSE(widget->toolTip().isEmpty()) << box->FullName();
        }
        if (box->Kind() == BoxKind::Text && box->Visible()) {
            EXPECT_TRUE(names.insert(SpokenName(*widget)).second)
                << SpokenName(*widget).toStdString() << " is the name of two boxes";
        }
    }
}

TEST_P(EveryScreen, TellsAScreenReaderWhatEachOfItsPartsIs)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    QWidget& window = *running.host.WindowOf(*screen);
    EXPECT_EQ(Spoken(window).role(), window.isWindow() ? QAccessible::Dialog : QAccessible::Grouping);
    for (const auto& box : screen->Boxes()) {
        QWidget* widget = WidgetOf(*box);
        if (widget == nullptr)
            continue;
        if (box->Kind() == BoxKind::Option) {
            EXPECT_EQ(Spoken(*widget).role(), QAccessible::RadioButton) << box->FullName();
            EXPECT_EQ(Spoken(*widget).state().checked, box->Ticked()) << box->FullName();
        }
        if (box->Kind() == BoxKind::DropDown) {
            const auto labels = Spoken(*widget).relations(QAccessible::Label);
            ASSERT_FALSE(labels.isEmpty()) << box->FullName();
            EXPECT_EQ(labels.front().first->text(QAccessible::Name).toStdString(),
                      widget->accessibleName().toStdString());
        }
        if (box->Kind() == BoxKind::Button || box->Kind() == BoxKind::Option || box->Kind() == BoxKind::Tick) {
            EXPECT_FALSE(SpokenName(*widget).contains('&')) << box->FullName();
        }
    }
}

TEST_P(EveryScreen, IsWalkedByTabOnceInTheOrderOfTheForm)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const std::vector<const Box*> expected = Visited();
    ASSERT_FALSE(expected.empty());
    WidgetOf(*expected.front())->setFocus(Qt::TabFocusReason);
    for (const Box* box : expected) {
        if (!box->Enabled()) // what has been left on the way may have closed it
            continue;
        QWidget* focused = QApplication::focusWidget();
        ASSERT_NE(focused, nullptr) << "before " << box->FullName();
        ASSERT_TRUE(focused == WidgetOf(*box) || WidgetOf(*box)->isAncestorOf(focused))
            << "expected " << box->FullName() << ", found " << focused->objectName().toStdString();
        QTest::keyClick(focused, Qt::Key_Tab);
    }
}

/// A box does not come after one that stands below it in its own column or in one to the right.
TEST_P(EveryScreen, HasItsBoxesInTheOrderInWhichTheyStand)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const Layout& layout = LayoutOf(screen->Name());
    const auto placeOf = [&](const Box& box) {
        return std::ranges::find_if(layout.placed, [&](const Layout::Placed& place) {
            return place.box == box.Name() && place.index == box.Index();
        });
    };
    const std::vector<const Box*> visited = Visited();
    for (std::size_t place = 1; place < visited.size(); ++place) {
        const auto before = placeOf(*visited[place - 1]);
        const auto after = placeOf(*visited[place]);
        if (before == layout.placed.end() || after == layout.placed.end())
            continue; // the page of the preview stands where its window puts it
        const bool inHeader = before->y < layout.headerHeight || after->y < layout.headerHeight;
        constexpr int SameLine = 12;
        const bool below = after->y > before->y + SameLine;
        const bool rightOf = after->x > before->x && after->page == before->page;
        const bool leadsOn = visited[place]->Kind() == BoxKind::Picture; // may be walked to after all that is typed
        EXPECT_TRUE(inHeader || leadsOn || below || rightOf || after->page > before->page)
            << visited[place]->FullName() << " comes after " << visited[place - 1]->FullName();
    }
}

TEST_P(EveryScreen, FitsASmallScreenOrScrolls)
{
    const Layout& layout = LayoutOf(GetParam());
    EXPECT_GT(layout.height, 0);
    if (layout.headerHeight > 0) // a page scrolls
        EXPECT_LE(layout.width, 1366 - 24);
    else {
        EXPECT_LE(layout.width, 1340);
        EXPECT_LE(layout.height, 680);
    }
}

TEST_P(EveryScreen, KeepsEveryControlOnItsSheetAndOffTheOthers)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    const Layout& layout = LayoutOf(screen->Name());
    std::vector<const Layout::Placed*> shown;
    for (const Layout::Placed& place : layout.placed) {
        EXPECT_GE(place.x, 0) << place.box;
        EXPECT_GE(place.y, 0) << place.box;
        EXPECT_LE(place.x + place.width, layout.width) << place.box;
        EXPECT_LE(place.y + place.height, layout.height) << place.box;
        const Box& box = screen->box(place.box, place.index);
        if (box.Visible() && !IsGround(box) && box.Kind() != BoxKind::Tabs)
            shown.push_back(&place);
    }
    const auto apart = [](const Layout::Placed& a, const Layout::Placed& b) {
        return a.x + a.width <= b.x || b.x + b.width <= a.x || a.y + a.height <= b.y || b.y + b.height <= a.y;
    };
    for (std::size_t first = 0; first < shown.size(); ++first)
        for (std::size_t second = first + 1; second < shown.size(); ++second)
            if (shown[first]->page == shown[second]->page || shown[first]->page == 0 || shown[second]->page == 0) {
                EXPECT_TRUE(apart(*shown[first], *shown[second]))
                    << shown[first]->box << " lies over " << shown[second]->box;
            }
    for (const Layout::Drawn& drawn : layout.drawn)
        if (drawn.what == Layout::Drawn::What::Tag) {
            for (const Layout::Placed* place : shown)
                EXPECT_TRUE(apart({.x = drawn.x, .y = drawn.y, .width = drawn.width, .height = drawn.height}, *place))
                    << "a number lies under " << place->box;
        }
}

TEST(Layouts, EveryScreenHasOneAndNothingElseHas)
{
    RunningProgram running;
    std::set<std::string, std::less<>> screens;
    for (const std::string& name : running.program.TheSession().screens.Registered())
        if (name != "MDIForm1")
            screens.insert(name);
    std::set<std::string, std::less<>> layouts;
    for (const std::string_view name : ScreensWithLayout())
        layouts.emplace(name);
    EXPECT_EQ(layouts, screens);
}

TEST_P(EveryScreen, KeepsAirRoundTheFocusOnASmallScreen)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    constexpr int Air = 60;
    const Layout& layout = LayoutOf(GetParam());
    window->window()->showNormal();
    window->window()->resize(screen->Mode() == ShowMode::Child
                                 ? QSize(1024, 600)
                                 : QSize(layout.width + 16, layout.height).boundedTo(QSize(1004, 540)));
    QCoreApplication::processEvents();
    const auto* scroll = window->findChild<QScrollArea*>();
    std::vector<const Box*> visited = Visited();
    std::vector<const Box*> walked = visited;
    walked.insert(walked.end(), visited.rbegin(), visited.rend());
    for (const Box* box : walked) {
        QWidget* widget = WidgetOf(*box);
        if (scroll == nullptr || !scroll->widget()->isAncestorOf(widget) || !widget->isEnabled() ||
            !widget->isVisible())
            continue;
        widget->setFocus(Qt::TabFocusReason);
        const int top = widget->mapTo(scroll->widget(), QPoint(0, 0)).y();
        const int shown = widget->mapTo(scroll->viewport(), QPoint(0, 0)).y();
        const int below = scroll->widget()->height() - top - widget->height();
        const int room = (scroll->viewport()->height() - widget->height()) / 2 - 1;
        EXPECT_GE(shown, std::min({Air, top, room})) << box->FullName() << ", above";
        EXPECT_GE(scroll->viewport()->height() - shown - widget->height(), std::min({Air, below, room}))
            << box->FullName() << ", below";
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, EveryScreen, ::testing::ValuesIn(ScreensWithLayout()),
                         [](const auto& parameter) { return std::string(parameter.param); });

TEST(DeclarationWindow, HasTheMinusOfSectionFourInTheGapOfTheSum)
{
    const auto find = [](std::string_view text) {
        const auto& drawn = LayoutOf("P11DDeclaration").drawn;
        return std::ranges::find(drawn, text, &Layout::Drawn::text) - drawn.begin();
    };
    const auto& drawn = LayoutOf("P11DDeclaration").drawn;
    const auto sum = static_cast<std::size_t>(find("box A + box B          box C"));
    const auto minus = static_cast<std::size_t>(find("minus"));
    ASSERT_LT(sum, drawn.size());
    ASSERT_LT(minus, drawn.size());
    EXPECT_NEAR(drawn[minus].y, drawn[sum].y, 2);
    constexpr int SizeOfWords = 12, Air = 2;
    EXPECT_GE(drawn[minus].look.size, SizeOfWords);
    const QFontMetrics ofSum(look::CaptionFont(drawn[sum].look)), ofMinus(look::CaptionFont(drawn[minus].look));
    const int gapEnd = drawn[sum].x + drawn[sum].width - ofSum.horizontalAdvance("box C");
    const int gapBegin = gapEnd - ofSum.horizontalAdvance("          ");
    const int middle = drawn[minus].x + drawn[minus].width / 2, half = ofMinus.horizontalAdvance("minus") / 2;
    EXPECT_GE(middle - half, gapBegin + Air);
    EXPECT_LE(middle + half, gapEnd - Air);
}

} // namespace
} // namespace quillmere
