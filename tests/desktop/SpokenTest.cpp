// What a screen reader is told of every screen: sections as groups with names, of each box what it takes, and which
// page is shown.
#include "EveryScreen.h"
#include "desktop/BoxWidgets.h"
#include "desktop/Look.h"
#include "desktop/layouts/Layout.h"
#include "review/BoxHelp.h"

#include <QAccessible>
#include <QLineEdit>
#include <QStringList>
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

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

/// All that is spoken of a control itself.
QStringList SpokenOf(QAccessibleInterface& control)
{
    QStringList said{control.text(QAccessible::Name), control.text(QAccessible::Value),
                     control.text(QAccessible::Description)};
    if (QAccessibleTextInterface* text = control.textInterface())
        said << text->text(0, text->characterCount());
    if (QAccessibleTableInterface* table = control.tableInterface())
        for (int row = 0; row < table->rowCount(); ++row)
            for (int column = 0; column < table->columnCount(); ++column)
                said << table->cellAt(row, column)->text(QAccessible::Name);
    return said;
}

TEST_P(Spoken, SaysNoFigureWithItsPadding)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    for (const auto& box : screen->Boxes()) {
        if (WidgetOf(*box) == nullptr)
            continue;
        const auto* edit = dynamic_cast<const BoxEdit*>(WidgetOf(*box));
        if (box->IsAmount() || (edit != nullptr && edit->HoldsFigure()))
            box->SetText("    500.00");
        else if (box->Kind() == BoxKind::Table)
            box->SetEntries({"    500.00\t    500.00\t    500.00"});
        else
            continue;
        QAccessibleInterface& control = InterfaceOf(*box);
        const QStringList said = SpokenOf(control);
        EXPECT_TRUE(said.join('|').contains("500.00")) << box->FullName();
        for (const QString& text : said)
            EXPECT_FALSE(text.contains("  500.00")) << box->FullName() << " says " << text.toStdString();
    }
}

TEST(SpokenFigures, HaveTheirPlacesWithoutThePadding)
{
    RunningProgram running;
    Screen& page = *running.Show("Form3");
    running.host.WindowOf(page)->window()->activateWindow();
    Box& box = page.box("ACostMarketBox");
    auto& edit = dynamic_cast<QLineEdit&>(*running.host.WidgetOf(page, box));
    QCoreApplication::processEvents();
    box.SetText("    500.00");
    edit.setFocus(Qt::TabFocusReason); // which chooses the figure
    QAccessibleInterface& control = *QAccessible::queryAccessibleInterface(&edit);
    QAccessibleTextInterface& text = *control.textInterface();
    EXPECT_EQ(control.role(), QAccessible::EditableText);
    EXPECT_EQ(text.characterCount(), 6);
    EXPECT_EQ(text.text(1, 3), "00");
    int start = -1, end = -1;
    text.selection(0, &start, &end);
    EXPECT_EQ(std::pair(start, end), std::pair(0, 6));
    EXPECT_EQ(text.cursorPosition(), 6);
    text.setCursorPosition(2);
    EXPECT_EQ(edit.cursorPosition(), 6);
    text.setSelection(0, 0, 3);
    EXPECT_EQ(edit.selectedText(), "500");
    for (int place = 0; place < 6; ++place)
        EXPECT_EQ(text.offsetAtPoint(text.characterRect(place).center() - QPoint(1, 0)), place);
    EXPECT_FALSE(control.state().readOnly);
    EXPECT_TRUE(control.state().editable);
    EXPECT_TRUE(control.state().focused);
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
