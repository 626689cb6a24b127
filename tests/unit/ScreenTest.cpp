// The form kit: boxes, screens and the registry that opens them.
#include "frame/Screens.h"
#include "frame/Session.h"
#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace quillmere {
namespace {

using test::ScriptedDoor;

std::vector<std::string>& Diary()
{
    static std::vector<std::string> diary;
    return diary;
}

class Sheet : public Screen {
public:
    Sheet(Session& session, std::string_view name, ShowMode mode) : Screen(session, name, mode, "Sheet")
    {
        static constexpr auto Rows = std::to_array<BoxRow>({
            {.name = "Price", .filter = MoneyKeyFilter},
            {.name = "Line", .first = 1, .last = 3},
            {.name = "Weight", .filter = MoneyKeyFilter, .first = 1, .last = 2},
            {.name = "Tick", .kind = BoxKind::Tick},
            {.name = "Choice", .kind = BoxKind::Option, .first = 0, .last = 2},
            {.name = "Ok", .kind = BoxKind::Button, .text = "&OK"},
            {.name = "Cancel", .kind = BoxKind::Button, .text = "&Cancel"},
        });
        AddBoxes(Rows);
        SetButtons("Cancel", "Ok");
        OnLeave("Line", [](Box& box) { Diary().push_back("left " + box.FullName()); });
        OnClick("Ok", [](Box&) { throw std::runtime_error("no ink"); });
        OnClick("Cancel", [this](Box& box) {
            this->session.screens.Unload(Name());
            Diary().push_back("still here: " + box.Text()); // the screen lives until its own event has ended
        });
        OnKey("Line", [](Box& box) {
            Diary().push_back("asked of " + box.FullName());
            return box.Index() == 2 ? Guard::Drops : Guard::Filters;
        });
        OnKey("Weight", [](Box& box) {
            Diary().push_back("asked of " + box.FullName());
            return box.Index() == 1 ? Guard::LetsIn : Guard::Filters;
        });
    }
    bool Load() override
    {
        Diary().push_back("load " + Name());
        return Name() != "Refused";
    }
    void Activate() override { Diary().push_back("activate " + Name()); }
    void Unload() override
    {
        Diary().push_back("unload " + Name());
        if (Name() == "Stubborn")
            throw std::runtime_error("no room");
    }
};

class ScreenTest : public ::testing::Test {
protected:
    ScreenTest()
    {
        Diary().clear();
        for (const std::string_view name : {"Page", "Refused", "Stubborn"})
            session.screens.Register(
                name, [name](Session& with) { return std::make_unique<Sheet>(with, name, ShowMode::Child); });
        session.screens.Register(
            "Notepad", [](Session& with) { return std::make_unique<Sheet>(with, "Notepad", ShowMode::Modal); });
        session.screens.Register("Broken",
                                 [](Session&) -> std::unique_ptr<Screen> { throw std::runtime_error("no paper"); });
    }

    ScriptedDoor door;
    Session session{door};
};

TEST_F(ScreenTest, LoadsOnceShowsAndActivatesEachTime)
{
    Screen* first = session.screens.Show("Page");
    EXPECT_EQ(session.screens.Show("Page"), first);
    EXPECT_EQ(Diary(), (std::vector<std::string>{"load Page", "activate Page", "activate Page"}));
    EXPECT_TRUE(session.screens.IsShown("Page"));
}

TEST_F(ScreenTest, DropsAScreenWhoseLoadDecidesAgainstIt)
{
    EXPECT_EQ(session.screens.Show("Refused"), nullptr);
    EXPECT_EQ(session.screens.Find("Refused"), nullptr);
    EXPECT_EQ(Diary(), std::vector<std::string>{"load Refused"});
}

TEST_F(ScreenTest, ActivatesWhatComesToTheFrontWhenAModalScreenCloses)
{
    session.screens.Show("Page");
    session.screens.Show("Notepad");
    Diary().clear();
    session.screens.Unload("Notepad");
    EXPECT_EQ(Diary(), (std::vector<std::string>{"unload Notepad", "activate Page"}));
}

TEST_F(ScreenTest, WhatStandsBesideTheOthersDoesNotComeToTheFrontWhenAModalScreenCloses)
{
    session.screens.Show("Page");
    for (const ShowMode mode : {ShowMode::Panel, ShowMode::Beside}) {
        session.screens.Register("Aside",
                                 [mode](Session& with) { return std::make_unique<Sheet>(with, "Aside", mode); });
        session.screens.Show("Aside");
        session.screens.Show("Notepad");
        Diary().clear();
        session.screens.Unload("Notepad");
        EXPECT_EQ(Diary(), (std::vector<std::string>{"unload Notepad", "activate Page"}));
        session.screens.Unload("Aside");
    }
}

/// Two columns whose lines can be sorted; `told` is what the screen hears of.
class Register : public Screen {
public:
    explicit Register(Session& session) : Screen(session, "Register", ShowMode::Beside, "Register")
    {
        static constexpr auto Rows = std::to_array<BoxRow>({
            {.name = "Lines", .kind = BoxKind::Table, .columns = "Name\t>Sum", .several = true},
            {.name = "Fixed", .kind = BoxKind::Table, .columns = "Name"},
        });
        AddBoxes(Rows);
        box("Lines").SetEntries({"Ann\t1", "Ben\t2", "Cy\t3"});
        OnSelect("Lines", [this](Box& lines) { told.push_back(lines.Text()); });
        OnSort("Lines", [this](Box& lines) {
            told.push_back(std::to_string(lines.SortedBy().column) + (lines.SortedBy().descending ? "-" : "+"));
        });
    }
    std::vector<std::string> told;
};

TEST_F(ScreenTest, ATableKnowsTheLineAndTheColumnInUseAndAllChosenLines)
{
    Register screen(session);
    Box& lines = screen.box("Lines");
    screen.SelectLines(lines, 1, 1, {1, 2});
    EXPECT_EQ(lines.Selected(), 1);
    EXPECT_EQ(lines.Column(), 1);
    EXPECT_EQ(lines.Chosen(), (std::vector{1, 2}));
    EXPECT_EQ(screen.told, std::vector<std::string>{"Ben\t2"});
    lines.Select(0);
    EXPECT_EQ(lines.Column(), 1) << "the column stays";
    EXPECT_EQ(lines.Chosen(), std::vector{0});
    lines.SetEntries({"Dan\t4"});
    EXPECT_EQ(lines.Chosen(), std::vector<int>());
    screen.SelectLines(lines, 5, 0, {5});
    EXPECT_EQ(lines.Chosen(), std::vector<int>()) << "there is no such line";
}

TEST_F(ScreenTest, ATableIsSortedByAColumnAndTheSecondTimeTheOtherWayRound)
{
    Register screen(session);
    Box& lines = screen.box("Lines");
    EXPECT_TRUE(screen.IsSortable(lines));
    EXPECT_FALSE(screen.IsSortable(screen.box("Fixed")));
    for (const int column : {1, 1, 1, 0})
        screen.Sort(lines, column);
    EXPECT_EQ(screen.told, (std::vector<std::string>{"1+", "1-", "1+", "0+"}));
    lines.SetColumns("Other");
    EXPECT_EQ(lines.SortedBy(), Sorting()) << "other columns are not sorted by any";
}

TEST_F(ScreenTest, LivesUntilTheEventThatUnloadedItHasEnded)
{
    Screen* page = session.screens.Show("Page");
    Diary().clear();
    page->RequestClose();
    EXPECT_EQ(Diary(), (std::vector<std::string>{"unload Page", "still here: &Cancel"}));
    EXPECT_EQ(session.screens.Find("Page"), nullptr);
}

TEST_F(ScreenTest, ReportsAFailureThatAnOperationLetsThrough)
{
    Screen* page = session.screens.Show("Page");
    page->Click(page->box("Ok"));
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
    EXPECT_EQ(door.messages[0].text, "Procedure: Page - Ok - Click\nError 0:  no ink");
    EXPECT_EQ(door.messages[0].icon, Icon::Critical);
}

TEST_F(ScreenTest, FiltersEachKeyAndBeepsForARefusedOne)
{
    Screen* page = session.screens.Show("Page");
    EXPECT_EQ(page->Key(page->box("Price"), U'7'), U'7');
    EXPECT_EQ(door.beeps, 0);
    EXPECT_EQ(page->Key(page->box("Price"), U'-'), U'\0');
    EXPECT_EQ(door.beeps, 1);
    EXPECT_EQ(page->Key(page->box("Line", 2), U'x'), U'\0'); // the guard drops it without a beep
    EXPECT_EQ(page->Key(page->box("Line", 3), U'x'), U'x');
    EXPECT_EQ(door.beeps, 1);
}

TEST_F(ScreenTest, AsksOnceOfAllThatIsPastedAndFiltersEachCharacter)
{
    Screen* page = session.screens.Show("Page");
    Diary().clear();
    EXPECT_EQ(page->Keys(page->box("Line", 2), U"12500.50"), U"");
    EXPECT_EQ(page->Keys(page->box("Line", 3), U"12500.50"), U"12500.50");
    EXPECT_EQ(door.beeps, 0);
    EXPECT_EQ(page->Keys(page->box("Weight", 2), U"1x2-3"), U"123");
    EXPECT_EQ(door.beeps, 2);
    EXPECT_EQ(page->Keys(page->box("Weight", 1), U"1x2-3"), U"1x2-3") << "let in past the filter";
    EXPECT_EQ(page->Keys(page->box("Line", 2), U""), U"") << "nothing typed, nothing asked";
    EXPECT_EQ(door.beeps, 2);
    EXPECT_EQ(Diary(), (std::vector<std::string>{"asked of Line(2)", "asked of Line(3)", "asked of Weight(2)",
                                                 "asked of Weight(1)"}));
}

TEST_F(ScreenTest, RunsTheOperationOfAControlArrayForEachMember)
{
    Screen* page = session.screens.Show("Page");
    Diary().clear();
    page->Leave(page->box("Line", 3));
    EXPECT_EQ(Diary(), std::vector<std::string>{"left Line(3)"});
}

TEST_F(ScreenTest, WhatIsUsedElsewhereLeavesTheBoxInUseOnce)
{
    Screen* page = session.screens.Show("Page");
    Screen* notepad = session.screens.Show("Notepad");
    page->Enter(page->box("Line", 1));
    Diary().clear();
    notepad->Click(notepad->box("Tick"));
    EXPECT_EQ(Diary(), std::vector<std::string>{"left Line(1)"});
    notepad->Click(notepad->box("Tick"));
    page->Leave(page->box("Line", 1)); // the focus goes at last
    EXPECT_EQ(Diary().size(), 1U);

    page->Enter(page->box("Line", 1));
    notepad->Choose(notepad->box("Line", 2), 0);
    page->Enter(page->box("Line", 1)); // more is typed
    notepad->DoubleClick(notepad->box("Line", 2));
    page->Enter(page->box("Line", 1));
    page->Click(page->box("Line", 1)); // used itself, it stays in use
    EXPECT_EQ(Diary().size(), 3U);
    page->Leave(page->box("Line", 1));
    EXPECT_EQ(Diary().size(), 4U);
    EXPECT_EQ(page->InUse(), nullptr);
}

TEST_F(ScreenTest, EscapeDropsWhatIsInTheBoxInUse)
{
    Screen* page = session.screens.Show("Page");
    page->Enter(page->box("Line", 1));
    Diary().clear();
    page->RequestClose();
    EXPECT_EQ(Diary(), (std::vector<std::string>{"unload Page", "still here: &Cancel"}));
}

TEST_F(ScreenTest, WorkThatFollowsAModalScreenWaitsForTheLastOfThem)
{
    session.screens.Show("Page");
    const auto work = [] { Diary().push_back("work"); };
    Diary().clear();
    session.screens.WhenNoneIsModal(work);
    EXPECT_EQ(Diary(), std::vector<std::string>{"work"}) << "nothing to wait for";
    session.screens.Show("Notepad");
    Diary().clear();
    session.screens.WhenNoneIsModal(work);
    EXPECT_TRUE(Diary().empty());
    session.screens.Unload("Notepad");
    EXPECT_EQ(Diary(), (std::vector<std::string>{"unload Notepad", "work", "activate Page"}));
    session.screens.Show("Notepad");
    session.screens.Unload("Notepad");
    EXPECT_EQ(std::ranges::count(Diary(), "work"), 1);
}

TEST_F(ScreenTest, TurnsATickOverAndHoldsOneOptionOfAGroup)
{
    Screen* page = session.screens.Show("Page");
    page->Click(page->box("Tick"));
    EXPECT_TRUE(page->box("Tick").Ticked());
    page->Click(page->box("Tick"));
    EXPECT_FALSE(page->box("Tick").Ticked());
    page->Click(page->box("Choice", 1));
    page->Click(page->box("Choice", 2));
    EXPECT_FALSE(page->box("Choice", 1).Ticked());
    EXPECT_TRUE(page->box("Choice", 2).Ticked());
}

TEST_F(ScreenTest, TreatsAnUnknownControlAsAMistakeInTheProgram)
{
    Screen* page = session.screens.Show("Page");
    EXPECT_THROW(page->box("Nowhere"), std::logic_error);
    EXPECT_THROW(page->box("Line"), std::logic_error);
    EXPECT_EQ(page->FindBox("Line", 4), nullptr);
    EXPECT_THROW(session.screens.Show("Nowhere"), std::logic_error);
    const auto nothing = [](Box&) {};
    for (const std::string_view name : {"Nowhere", "Lin", "Line(1)"}) {
        EXPECT_THROW(page->OnLeave(name, nothing), std::logic_error);
        EXPECT_THROW(page->OnClick(name, nothing), std::logic_error);
        EXPECT_THROW(page->OnDoubleClick(name, nothing), std::logic_error);
        EXPECT_THROW(page->OnChoose(name, nothing), std::logic_error);
        EXPECT_THROW(page->OnSelect(name, nothing), std::logic_error);
        EXPECT_THROW(page->OnKey(name, [](Box&) { return Screen::Guard::LetsIn; }), std::logic_error);
    }
}

TEST_F(ScreenTest, FindsALoadedScreenByItsClass)
{
    EXPECT_EQ(session.screens.Find<Sheet>(), nullptr);
    Screen* page = session.screens.Show("Page");
    Screen* notepad = session.screens.Show("Notepad");
    EXPECT_EQ(session.screens.Find<Sheet>(), page);
    EXPECT_EQ(session.screens.Find<Sheet>("Notepad"), notepad);
    EXPECT_EQ(session.screens.Load<Sheet>("Notepad"), notepad);
}

TEST_F(ScreenTest, RunsDeferredWorkOnceAndDropsThatOfAnUnloadedScreen)
{
    Screen* page = session.screens.Show("Page");
    int runs = 0;
    session.screens.StartTimer(*page, "OpenTimer", [&] { ++runs; });
    session.screens.StartTimer(*page, "OpenTimer", [&] { runs += 10; });
    session.screens.RunDeferred();
    session.screens.RunDeferred();
    EXPECT_EQ(runs, 10);
    session.screens.StartTimer(*page, "OpenTimer", [&] { ++runs; });
    session.screens.Unload("Page");
    session.screens.RunDeferred();
    EXPECT_EQ(runs, 10);
}

TEST_F(ScreenTest, ClosesAScreenWhoseUnloadFailsAndTellsOfTheFailure)
{
    session.screens.Show("Page");
    session.screens.Show("Stubborn");
    EXPECT_NO_THROW(session.screens.Unload("Stubborn"));
    EXPECT_EQ(session.screens.Find("Stubborn"), nullptr);
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].text, "Procedure: Stubborn - Unload\nError 0:  no room");
    EXPECT_NE(session.screens.Show("Stubborn"), nullptr) << "it opens anew";
    session.screens.Unload("Page");
    EXPECT_EQ(session.screens.Find("Page"), nullptr);
}

TEST_F(ScreenTest, LetsNoLineEndIntoABox)
{
    Screen* page = session.screens.Show("Page");
    Box& line = page->box("Line", 1);
    for (const char32_t key : {U'\n', U'\r', U'\t', U'\v', U'\x1B', U'\x7F', U'\x85', U'\u2028', U'\u2029'})
        EXPECT_EQ(page->Key(line, key), U'\0') << static_cast<unsigned>(key);
    for (const char32_t key : {U'\b', U' ', U'~', U'\xA0', U'é', U'\u2027', U'\U0001F600'})
        EXPECT_EQ(page->Key(line, key), key);
    EXPECT_EQ(door.beeps, 0);
}

TEST_F(ScreenTest, LeavesNothingHalfOpenWhenAScreenCannotBeMade)
{
    EXPECT_THROW(session.screens.Show("Broken"), std::runtime_error);
    EXPECT_TRUE(session.screens.Open().empty());
}

} // namespace
} // namespace quillmere
