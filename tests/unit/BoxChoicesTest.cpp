// What is at hand in a box: every date and every letter has its row, and what a row offers goes into its box.
#include "review/BoxChoices.h"

#include "edition/CarWords.h"
#include "support/ProgramFixture.h"

#include <algorithm>
#include <set>

namespace quillmere::test {
namespace {

using review::AllBoxChoices;
using review::BoxChoices;
using review::Choice;
using review::ChoicesOf;

class BoxChoicesTable : public ProgramFixture {
protected:
    void ForEachTextBox(const std::function<void(const Screen&, const Box&)>& look)
    {
        for (const std::string& name : Now().screens.Registered()) {
            const std::unique_ptr<Screen> screen = Now().screens.Make(name);
            for (const auto& box : screen->Boxes())
                if (box->Kind() == BoxKind::Text)
                    look(*screen, *box);
        }
    }
    static Day At(int year, unsigned month, unsigned day)
    {
        return Day(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day));
    }
};

TEST_F(BoxChoicesTable, EveryDateHasItsDaysAndEveryLetterItsLetters)
{
    ForEachTextBox([](const Screen& screen, const Box& box) {
        const BoxChoices* choices = ChoicesOf(screen.Name(), box.Name());
        const std::string name = screen.Name() + "." + box.FullName();
        if (box.Filter() == DateKeyFilter) {
            ASSERT_NE(choices, nullptr) << name;
            EXPECT_TRUE(choices->first && choices->last && choices->letters.empty()) << name;
        } else if (box.Filter() == FuelKeyFilter || box.Filter() == SexKeyFilter || box.Filter() == YesNoKeyFilter) {
            ASSERT_NE(choices, nullptr) << name;
            EXPECT_FALSE(choices->letters.empty()) << name;
        }
    });
}

TEST_F(BoxChoicesTable, WhatIsOfferedGoesIn)
{
    ForEachTextBox([](const Screen& screen, const Box& box) {
        const BoxChoices* choices = ChoicesOf(screen.Name(), box.Name());
        if (choices == nullptr || box.Filter() == nullptr)
            return;
        for (const Choice& choice : choices->letters)
            for (const char letter : choice.text)
                EXPECT_EQ(box.Filter()(static_cast<char32_t>(letter)).key, static_cast<char32_t>(letter))
                    << screen.Name() << "." << box.FullName();
    });
}

TEST_F(BoxChoicesTable, EveryRowIsOfSomeBoxAndItsBoundsAreBoxesOfTheScreen)
{
    std::set<const BoxChoices*> used;
    ForEachTextBox([&](const Screen& screen, const Box& box) {
        const BoxChoices* choices = ChoicesOf(screen.Name(), box.Name());
        used.insert(choices);
        if (choices == nullptr || !choices->first)
            return;
        for (const auto& bound : {*choices->first, *choices->last}) {
            if (bound.box.empty())
                continue;
            std::string name(bound.box);
            if (name.back() == '#')
                name.back() = box.Name().back();
            EXPECT_TRUE(screen.FindBox(name) != nullptr || screen.FindBox(name, box.Index()) != nullptr)
                << screen.Name() << "." << box.FullName() << " is bounded by " << name;
        }
        const DayRange days = DaysOf(*choices, screen, box);
        EXPECT_LT(days.first, days.last) << screen.Name() << "." << box.FullName();
    });
    for (const BoxChoices& choices : AllBoxChoices())
        EXPECT_TRUE(used.contains(&choices)) << choices.screen << "." << choices.box;
}

TEST_F(BoxChoicesTable, TheFuelsAreThoseThatTheFormTakes)
{
    std::string letters;
    for (const auto& fuel : edition::car::Fuels)
        letters += fuel.letter;
    std::ranges::sort(letters);
    EXPECT_EQ(letters, edition::FuelLetters);
}

TEST_F(BoxChoicesTable, TheDatesOfTheScreenBoundTheDays)
{
    const std::unique_ptr<Screen> page = Now().screens.Make("Form3");
    const auto daysOf = [&](std::string_view name, int index = Box::NoIndex) {
        return DaysOf(*ChoicesOf("Form3", name), *page, page->box(name, index));
    };
    const Day start = edition::TaxYearStartDay, end = edition::TaxYearEndDay;
    EXPECT_EQ(daysOf("FDateWithdrawn1").first, start);
    EXPECT_EQ(daysOf("FDateWithdrawn1").last, end);
    page->box("FDateFrom1").SetText("01/10/2010");
    page->box("FDateTo1").SetText("28/02/2011");
    page->box("FDateFrom2").SetText("01/11/2010");
    EXPECT_EQ(daysOf("FDateWithdrawn1").first, At(2010, 10, 1));
    EXPECT_EQ(daysOf("FDateWithdrawn1").last, At(2011, 2, 28));
    EXPECT_EQ(daysOf("FDateWithdrawn2").first, At(2010, 11, 1));
    page->box("txtUnavailableFirst1", 2).SetText("12/12/2010");
    EXPECT_EQ(daysOf("txtUnavailableLast1", 2).first, At(2010, 12, 12));
    EXPECT_EQ(daysOf("txtUnavailableLast1", 1).first, start) << "the row's own first day";
    // What is no date, lies outside the year or would leave no day bounds nothing.
    page->box("FDateFrom1").SetText("32/10/2010");
    EXPECT_EQ(daysOf("FDateWithdrawn1").first, start);
    page->box("FDateFrom1").SetText("01/10/2009");
    EXPECT_EQ(daysOf("FDateWithdrawn1").first, start);
    page->box("FDateFrom1").SetText("03/03/2011");
    EXPECT_EQ(daysOf("FDateWithdrawn1").first, start);
    EXPECT_EQ(daysOf("FDateWithdrawn1").last, end);
}

} // namespace
} // namespace quillmere::test
