// The hands of a spreadsheet in the lines of every notepad: cells pasted and copied, lines repeated, emptied and moved.
#include "RunningProgram.h"
#include "app/MDIForm1.h"
#include "clientdb/Notepad.h"
#include "declaration/AdjustmentNotepad.h"
#include "desktop/BoxWidgets.h"
#include "desktop/layouts/Layout.h"
#include "screens/ScheduleNotepad.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <gtest/gtest.h>

#include <fmt/format.h>
#include <map>
#include <set>

namespace quillmere {
namespace {

using test::RunningProgram;

/// The screens that have lines which repeat, and why some of them have no list.
const std::map<std::string, std::string> WithoutList{
    {"GNotepad2", "no way leads to it, and each of its lines depends on the one before"},
    {"HNotepad", "its arrays are one working for each loan, not lines"},
};

class ListHands : public ::testing::TestWithParam<std::string_view> {
protected:
    void SetUp() override
    {
        screen = running.Show(GetParam());
        ASSERT_NE(screen, nullptr) << GetParam() << " does not open";
        ASSERT_TRUE(screen->List().has_value());
        QWidget* window = running.host.WindowOf(*screen)->window();
        window->resize(1366, 900);
        window->activateWindow();
        QCoreApplication::processEvents();
    }

    const BoxList& List() const { return *screen->List(); }
    Box& At(std::size_t column, int line) const { return screen->box(List().columns.at(column), line); }
    BoxEdit& EditOf(const Box& box) { return dynamic_cast<BoxEdit&>(*running.host.WidgetOf(*screen, box)); }
    void Press(const Box& box, Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier)
    {
        EditOf(box).setFocus(Qt::TabFocusReason);
        QTest::keyClick(QApplication::focusWidget(), key, with);
        QCoreApplication::processEvents();
    }
    void Paste(const Box& box, const std::string& text)
    {
        QApplication::clipboard()->setText(QString::fromStdString(text));
        Press(box, Qt::Key_V, Qt::ControlModifier);
    }
    static std::string Copied() { return QApplication::clipboard()->text().toStdString(); }
    std::string Said() { return running.program.TheSession().screens.FindBox("MDIForm1", "StatusNote")->Text(); }

    /// A cell that the column takes; different in each line.
    static std::string Cell(const Box& box)
    {
        return box.IsAmount() ? fmt::format("{}.50", 100 - box.Index()) : fmt::format("Line {} \"x\"", box.Index());
    }
    /// Columns in which the user types, from the left.
    std::vector<std::size_t> TypedColumns() const
    {
        std::vector<std::size_t> typed;
        for (std::size_t column = 0; column < List().columns.size(); ++column)
            if (!At(column, List().last).ReadOnly())
                typed.push_back(column);
        return typed;
    }
    std::string Lines(int first, int last) const
    {
        return CellsAsText(*screen, {.left = 0, .right = List().columns.size() - 1, .top = first, .bottom = last});
    }
    /// Types the cells of a line one by one, as hands would.
    void TypeLine(int line)
    {
        for (const std::size_t column : TypedColumns())
            screen->TypeIn(At(column, line), Cell(At(column, line)));
    }

    RunningProgram running;
    Screen* screen = nullptr;
};

std::vector<std::string_view> ScreensWithAList()
{
    std::vector<std::string_view> names{"HNotepad2"};
    for (const NotepadMember& member : Notepads())
        names.push_back(member.name);
    for (const AdjustmentSchedule& schedule : AdjustmentSchedules)
        names.push_back(schedule.name);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Screens, ListHands, ::testing::ValuesIn(ScreensWithAList()),
                         [](const auto& parameter) { return std::string(parameter.param); });

TEST(ListsOfNotepads, AreAllTold)
{
    RunningProgram running;
    std::set<std::string> seen;
    for (const std::string_view name : ScreensWithLayout()) {
        const auto screen = running.program.TheSession().screens.Make(name);
        EXPECT_EQ(screen->List().has_value(), std::ranges::count(ScreensWithAList(), name) == 1) << name;
        if (dynamic_cast<const Notepad*>(screen.get()) == nullptr)
            continue;
        std::map<std::string, int> lines;
        for (const auto& box : screen->Boxes())
            if (box->Kind() == BoxKind::Text && box->Index() != Box::NoIndex && box->Visible() &&
                !screen->IsInList(*box))
                ++lines[box->Name()];
        for (const auto& [array, count] : lines)
            if (count > 1 && !array.starts_with("txtUnavailable")) { // the periods of a car are no list
                EXPECT_TRUE(WithoutList.contains(std::string(name))) << name << "." << array;
                seen.emplace(name);
            }
    }
    for (const auto& [name, why] : WithoutList)
        EXPECT_TRUE(seen.contains(name)) << name << " has no lines";
}

TEST_P(ListHands, PasteWhatTypingWouldGive)
{
    const int first = List().first + 1;
    TypeLine(first);
    TypeLine(first + 1);
    const std::string typed = Lines(first, first + 1);
    const std::size_t left = TypedColumns().front();
    std::string cells;
    for (int line = first; line <= first + 1; ++line) {
        for (std::size_t column = left; column < List().columns.size(); ++column)
            cells += (column == left ? "" : "\t") + (At(column, line).ReadOnly() ? "77.77" : Cell(At(column, line)));
        cells += "\r\n";
    }
    Press(At(left, first), Qt::Key_Delete, Qt::ControlModifier);
    Press(At(left, first + 1), Qt::Key_Delete, Qt::ControlModifier);
    ASSERT_NE(Lines(first, first + 1), typed);
    Paste(At(left, first), cells);
    EXPECT_EQ(Lines(first, first + 1), typed);
    EXPECT_EQ(Said(), fmt::format("{} cells pasted", 2 * TypedColumns().size()));
}

TEST_P(ListHands, SayWhichCellIsNotTaken)
{
    const std::size_t column = TypedColumns().back();
    Box& box = At(column, 3);
    if (box.Filter() == nullptr)
        return;
    TypeLine(3);
    TypeLine(4);
    const std::string before = box.Text();
    Paste(box, "12x4\n\xC2\xA3"
               "1,234.5\n");
    EXPECT_EQ(box.Text(), before);
    EXPECT_TRUE(Said().starts_with(fmt::format("1 of 2 cells pasted; {}: \"12x4\" cannot be typed here", box.Spoken())))
        << Said();
}

TEST_P(ListHands, SayWhatHasNoRoom)
{
    const std::size_t left = TypedColumns().front();
    const Box& box = At(left, List().last);
    Paste(box, "7\n8\n\n9\t\n");
    EXPECT_EQ(Said(), fmt::format("1 cell pasted; 2 cells have no room: the list ends at line {}", List().last));
}

TEST_P(ListHands, CopyTheCellsThatAreChosen)
{
    TypeLine(2);
    TypeLine(3);
    const std::size_t left = TypedColumns().front();
    Box& from = At(left, 2);
    Press(from, Qt::Key_Down, Qt::ShiftModifier);
    Press(from, Qt::Key_Right, Qt::ShiftModifier);
    const std::size_t right = std::min(left + 1, List().columns.size() - 1);
    EXPECT_TRUE(EditOf(At(right, 3)).IsChosen());
    EXPECT_FALSE(EditOf(At(left, 4)).IsChosen());
    Press(from, Qt::Key_C, Qt::ControlModifier);
    const std::string expected = CellsAsText(*screen, {.left = left, .right = right, .top = 2, .bottom = 3});
    EXPECT_EQ(Copied(), expected);
    EXPECT_NE(Copied().find('\n'), Copied().rfind('\n'));

    // Elsewhere the same cells are chosen no more, and Ctrl+C copies the text as ever.
    EditOf(At(left, 4)).setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(EditOf(from).IsChosen());
}

TEST_P(ListHands, ChooseByTheMouse)
{
    const std::size_t left = TypedColumns().front();
    BoxEdit& from = EditOf(At(left, 2));
    BoxEdit& to = EditOf(At(List().columns.size() - 1, 4));
    from.setFocus(Qt::TabFocusReason);
    QTest::mousePress(&from, Qt::LeftButton, {}, from.rect().center());
    const QPoint there = from.mapFromGlobal(to.mapToGlobal(to.rect().center()));
    QMouseEvent move(QEvent::MouseMove, there, from.mapToGlobal(there), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&from, &move);
    QTest::mouseRelease(&from, Qt::LeftButton, {}, there);
    EXPECT_TRUE(to.IsChosen());
    QTest::mousePress(&from, Qt::LeftButton, {}, from.rect().center());
    QTest::mouseRelease(&from, Qt::LeftButton, {}, from.rect().center());
    EXPECT_FALSE(to.IsChosen());
}

TEST_P(ListHands, RepeatEmptyAndMoveALine)
{
    const std::size_t left = TypedColumns().front();
    TypeLine(2);
    const std::string two = Lines(2, 2), empty = Lines(4, 4);
    ASSERT_NE(two, empty);
    Press(At(left, 3), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(Lines(3, 3), two);
    Press(At(left, 3), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Lines(3, 4), empty + two);
    EXPECT_EQ(QApplication::focusWidget(), &EditOf(At(left, 4)));
    Press(At(left, 4), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(Lines(3, 4), two + empty);
    Press(At(left, 3), Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(Lines(3, 3), empty);
    EXPECT_EQ(Lines(2, 2), two);
    Press(At(left, List().last), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Said(), "This is the last line");
}

TEST_P(ListHands, EmptyTheCellsThatAreChosen)
{
    TypeLine(2);
    TypeLine(3);
    const std::size_t column = TypedColumns().front();
    Press(At(column, 2), Qt::Key_Down, Qt::ShiftModifier);
    Press(At(column, 2), Qt::Key_Delete);
    EXPECT_EQ(At(column, 2).Text() + At(column, 3).Text(), "");
    EXPECT_NE(Said().find("2 cells emptied; there stood "), std::string::npos) << Said();
}

} // namespace
} // namespace quillmere
