// A table as the toolkit shows it: which line and column are in use, what is chosen, copied and sorted.
#include "desktop/TableView.h"

#include "frame/Session.h"
#include "support/ScriptedDoor.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QTest>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace quillmere {
namespace {

/// A screen with one table of three lines.
class Register : public Screen {
public:
    explicit Register(Session& session) : Screen(session, "Register", ShowMode::Beside, "Register")
    {
        static constexpr auto Rows = std::to_array<BoxRow>(
            {{.name = "Lines", .kind = BoxKind::Table, .columns = "Name\t>Sum\tNote", .several = true}});
        AddBoxes(Rows);
        box("Lines").SetEntries({"Ann\t1.00\tnew", "Ben\t2.00\t", "Cy\t3.00\tleft"});
    }
};

/// The table in a view that follows it.
class TableViewTest : public ::testing::Test {
protected:
    TableViewTest()
    {
        view.Follow(lines);
        view.show();
    }

    void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) { QTest::keyClick(&view, key, with); }

    test::ScriptedDoor door;
    Session session{door};
    Register screen{session};
    Box& lines = screen.box("Lines");
    TableView view{lines, nullptr, [this](int row, int column, const std::vector<int>& chosen) {
                       lines.SelectLines(row, column, chosen);
                       view.Follow(lines);
                   }};
};

TEST(TableOfAClosedScreen, TellsNobodyWhatIsStillDoneInIt)
{
    test::ScriptedDoor door;
    Session session{door};
    auto screen = std::make_unique<Register>(session);
    int told = 0;
    TableView view(screen->box("Lines"), nullptr, [&](int, int, const std::vector<int>&) { ++told; });
    view.Follow(screen->box("Lines"));
    view.show();
    view.LetGo();
    screen.reset();
    // The focus comes to a view whose window is about to go.
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(told, 0);
}

TEST_F(TableViewTest, TheFirstStepChoosesTheEndAtWhichItBegins)
{
    for (const auto& [key, first] : {std::pair(Qt::Key_Down, 0), std::pair(Qt::Key_Up, 2)}) {
        lines.Select(-1);
        view.Follow(lines);
        view.clearFocus();
        view.setFocus(); // the toolkit then has a line in use, which nobody has chosen
        EXPECT_EQ(lines.Selected(), -1);
        Press(key);
        EXPECT_EQ(lines.Selected(), first);
    }
}

TEST_F(TableViewTest, KeysMoveTheLineAndTheColumnInUse)
{
    EXPECT_EQ(lines.Selected(), -1);
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(lines.Text(), "Ben\t2.00\t");
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_EQ(lines.Column(), 2) << "the last one";
    Press(Qt::Key_Left);
    EXPECT_EQ(lines.Column(), 1);
    Press(Qt::Key_Up);
    EXPECT_EQ(lines.Text(), "Ann\t1.00\tnew");
    EXPECT_EQ(lines.Column(), 1) << "the column stays in use";
    EXPECT_EQ(lines.Chosen(), std::vector{0});
}

TEST_F(TableViewTest, AClickChoosesLineAndColumn)
{
    const QRect cell = view.visualRect(view.model()->index(2, 1));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    EXPECT_EQ(lines.Selected(), 2);
    EXPECT_EQ(lines.Column(), 1);
}

TEST_F(TableViewTest, SeveralLinesAreChosenAndTheBoxCanChooseThemToo)
{
    Press(Qt::Key_Down);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(lines.Chosen(), (std::vector{0, 1}));
    lines.SelectLines(2, 1, {0, 2});
    view.Follow(lines);
    EXPECT_EQ(view.currentIndex(), view.model()->index(2, 1));
    EXPECT_TRUE(view.selectionModel()->isRowSelected(0));
    EXPECT_FALSE(view.selectionModel()->isRowSelected(1));
    EXPECT_TRUE(view.selectionModel()->isRowSelected(2));
}

TEST_F(TableViewTest, ChosenLinesGoToTheClipboardForASpreadsheet)
{
    Press(Qt::Key_Down);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Ann\t1.00\tnew\n");
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Name\tSum\tNote\nAnn\t1.00\tnew\nBen\t2.00\t\nCy\t3.00\tleft\n");
}

TEST_F(TableViewTest, CellsOfTheColumnInUseGoToTheClipboardAlone)
{
    Press(Qt::Key_Down);
    Press(Qt::Key_Right);
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "1.00\n") << "a single cell";
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "1.00\n2.00\n");
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Sum\n1.00\n2.00\n3.00\n") << "a whole column with its caption";
}

TEST_F(TableViewTest, FiguresStandAtTheRightAndAreSpokenWithTheirCaption)
{
    const QModelIndex figure = view.model()->index(0, 1);
    EXPECT_NE(figure.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight, 0);
    EXPECT_EQ(figure.data(Qt::TextAlignmentRole).toInt(),
              view.model()->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
    EXPECT_EQ(figure.data(Qt::AccessibleTextRole).toString(), "Sum 1.00");
    EXPECT_EQ(figure.siblingAtColumn(0).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight, 0);
}

TEST_F(TableViewTest, TheHeadTellsByWhichColumnTheLinesStandInOrder)
{
    EXPECT_FALSE(view.header()->isSortIndicatorShown());
    lines.SetSorting({.column = 1, .descending = true});
    view.Follow(lines);
    EXPECT_TRUE(view.header()->isSortIndicatorShown());
    EXPECT_EQ(view.header()->sortIndicatorSection(), 1);
    EXPECT_EQ(view.header()->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(TableViewTest, AColumnIsAsWideAsItsLongestTextAlsoOutOfSight)
{
    std::vector<std::string> many(500, "Ann\t1.00\tnew");
    many.back() = "Somebody with a long name far out of sight\t1.00\tnew";
    lines.SetEntries(many);
    view.Follow(lines);
    EXPECT_GE(view.columnWidth(0), view.fontMetrics().horizontalAdvance("Somebody with a long name far out of sight"));
}

TEST_F(TableViewTest, AColumnOfLongTextsIsWidenedWhereThereIsRoom)
{
    const std::string words(90, 'n');
    lines.SetEntries({words + "\t1.00\tnew"});
    view.Follow(lines);
    const int whole = view.fontMetrics().horizontalAdvance(QString::fromStdString(words));
    for (const int width : {whole + 400, whole - 60, whole + 400}) {
        view.resize(width, 300);
        QTest::qWait(0);
        if (width > whole) {
            EXPECT_GE(view.columnWidth(0), whole);
        } else {
            EXPECT_LT(view.columnWidth(0) + view.columnWidth(1) + view.columnWidth(2), width)
                << "the others are in sight";
        }
    }
}

TEST_F(TableViewTest, TheLastColumnTakesTheRoomThatIsLeftButForFigures)
{
    view.resize(900, 200);
    EXPECT_EQ(view.header()->length(), view.viewport()->width());
    view.resize(60, 200);
    EXPECT_GT(view.header()->length(), view.viewport()->width());
    EXPECT_GE(view.columnWidth(2), view.fontMetrics().horizontalAdvance("Note"));
    view.resize(900, 200);
    lines.SetColumns("Name\tNote\t>Sum");
    view.Follow(lines);
    EXPECT_LT(view.header()->length(), view.viewport()->width());
}

TEST_F(TableViewTest, AWidthThatTheUserHasSetStaysUntilThereAreOtherColumns)
{
    view.header()->resizeSection(0, 333);
    lines.SetEntries({"Ann\t1.00\tnew"});
    view.Follow(lines);
    EXPECT_EQ(view.columnWidth(0), 333);
    lines.SetColumns("Name\t>Sum");
    view.Follow(lines);
    EXPECT_NE(view.columnWidth(0), 333);
}

} // namespace
} // namespace quillmere
