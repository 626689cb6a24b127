// How a figure came about: every box that is worked out tells of itself, on every screen.
#include "EveryScreen.h"
#include "desktop/layouts/Layout.h"
#include "review/Explaining.h"
#include "screens/P11DPage.h"
#include "support/SumOfWords.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

#include <algorithm>
#include <array>

namespace quillmere::test {
namespace {

struct LeftAloneRow {
    std::string_view screen, why;
};
/// The screens whose figures are not told of.
constexpr auto LeftAlone = std::to_array<LeftAloneRow>({
    {"FNotepad", "works by an older year's rules, and no screen leads to it"},
    {"GNotepad2", "keeps the history of a van by an earlier method, and no screen leads to it"},
    {"HNotepad2", "holds what is typed, and the currency to which the official rate belongs"},
});

/// The boxes of the pages that a calculator fills, although they can be typed in.
constexpr auto FilledFromBehind = std::to_array<std::string_view>(
    {"B2",          "BNotTax",   "DCashEqu",  "ETaxAmount", "GVan",      "GVanFuel",  "HLoanCashEqu1", "HLoanCashEqu2",
     "JRelocation", "NTaxPaid",  "FCashEqu1", "FCashEqu2",  "FFuelEqu1", "FFuelEqu2", "FCashEqu3",     "FCashEqu4",
     "FCashEqu5",   "FCashEqu6", "FFuelEqu3", "FFuelEqu4",  "FFuelEqu5", "FFuelEqu6"});

bool IsWorkedOut(const Screen& screen, const Box& box)
{
    if (!box.IsAmount() || !box.Visible())
        return false;
    if (box.ReadOnly() || box.IsComputed() || box.Kind() == BoxKind::Label)
        return true;
    if (const auto* page = dynamic_cast<const P11DPage*>(&screen);
        page != nullptr &&
        std::ranges::find(page->OwnTriples(), box.Name(), &AmountTriple::cashEquivalent) != page->OwnTriples().end())
        return true;
    return std::ranges::find(FilledFromBehind, box.Name()) != FilledFromBehind.end();
}

class Explains : public EveryScreen {
protected:
    /// Something in every box that takes an amount, and in those without which nothing is worked out.
    void Fill()
    {
        for (const auto& box : screen->Boxes()) {
            const std::string& name = box->Name();
            if (box->Kind() != BoxKind::Text || box->ReadOnly())
                continue;
            if (box->IsAmount())
                box->SetText("120.50");
            else if (name == "VanRegNumber")
                box->SetText("AB10 CDE");
            else if (name.starts_with("FRegDate"))
                box->SetText("01/02/2008");
            else if (name.starts_with("FFuel"))
                box->SetText("P");
            else if (name.starts_with("FC02"))
                box->SetText("165");
        }
    }
    std::optional<review::BoxExplained> Told(const Box& box)
    {
        return review::ExplainBox(running.program.TheSession(), *screen, box);
    }
};

TEST_P(Explains, EveryBoxThatIsWorkedOut)
{
    if (std::ranges::find(LeftAlone, GetParam(), &LeftAloneRow::screen) != LeftAlone.end())
        GTEST_SKIP() << "left alone";
    Open();
    Fill();
    for (const auto& box : screen->Boxes()) {
        if (!IsWorkedOut(*screen, *box))
            continue;
        const auto told = Told(*box);
        ASSERT_TRUE(told) << box->FullName();
        ASSERT_FALSE(told->chain.steps.empty()) << box->FullName();
        const std::string& last = told->chain.steps.back().box;
        EXPECT_TRUE(last == box->FullName() || last == box->Name())
            << box->FullName() << " tells of " << last << ": " << told->heading;
        EXPECT_EQ(FaultOf(told->chain), "") << box->FullName();
    }
}

TEST_P(Explains, ScreensThatAreLeftAloneForAReason)
{
    const auto row = std::ranges::find(LeftAlone, GetParam(), &LeftAloneRow::screen);
    if (row == LeftAlone.end())
        GTEST_SKIP() << "told of";
    EXPECT_FALSE(row->why.empty());
    Open();
    for (const auto& box : screen->Boxes())
        EXPECT_FALSE(Told(*box)) << box->FullName();
}

/// F2 in a box, and the words of it that the window shows.
TEST_P(Explains, AtTheKeyInAnyBox)
{
    Open();
    for (const auto& box : screen->Boxes()) {
        QWidget* widget = WidgetOf(*box);
        if (box->Kind() != BoxKind::Text || !box->IsAmount() || widget == nullptr || !widget->isEnabled() ||
            !widget->isVisible())
            continue;
        widget->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(widget, Qt::Key_F2);
        Screens& screens = running.program.TheSession().screens;
        const Screen* explanation = screens.Find("Explanation");
        ASSERT_NE(explanation, nullptr) << box->FullName();
        EXPECT_FALSE(explanation->box("Heading").Text().empty());
        // A modal screen does not keep the keys from it, and takes no step when it goes.
        QWidget* shown = running.host.WindowOf(*explanation);
        EXPECT_TRUE(shown->isVisible());
        const std::string before = box->Text();
        QTest::keyClick(shown, Qt::Key_Escape);
        QCoreApplication::processEvents();
        EXPECT_EQ(screens.Find("Explanation"), nullptr);
        EXPECT_EQ(box->Text(), before);
        return; // one of the screen is enough: they all hear the key in one place
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, Explains, ::testing::ValuesIn(ScreensWithLayout()),
                         [](const auto& parameter) { return std::string(parameter.param); });

/// The menu of the right mouse button of a box; nothing where the box has none of its own.
QMenu* MenuOf(QWidget& widget)
{
    QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(2, 2), widget.mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(&widget, &asked);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

TEST(ExplainMenu, AsksAboutTheBoxUnderThePointer)
{
    RunningProgram running;
    Screen& vans = *running.Show("GNotepad");
    QMenu* menu = MenuOf(*running.host.WidgetOf(vans, vans.box("MBox")));
    ASSERT_NE(menu, nullptr);
    QAction* explain = menu->actions().back();
    EXPECT_EQ(explain->text(), "E&xplain...");
    explain->trigger();
    menu->close();
    const Screen* explanation = running.program.TheSession().screens.Find("Explanation");
    ASSERT_NE(explanation, nullptr);
    EXPECT_EQ(explanation->box("Heading").Text(), "Van benefit charge");
    QCoreApplication::processEvents();
}

} // namespace
} // namespace quillmere::test
