// The table of what belongs into each box: no box that takes typing is without its line, and the lines agree with the
// form and with the sum that the contributions are worked out from.
#include "review/BoxHelp.h"

#include "declaration/Class1A.h"
#include "support/ProgramFixture.h"

#include <algorithm>
#include <set>

namespace quillmere::test {
namespace {

using review::AllBoxHelp;
using review::BoxHelp;
using review::HelpOf;

/// A tip of that length is some five lines high.
constexpr std::size_t MostOfATip = 400;

class BoxHelpTable : public ProgramFixture {
protected:
    /// Every text box of every screen.
    void ForEachTextBox(const std::function<void(const Screen&, const Box&)>& look)
    {
        for (const std::string& name : Now().screens.Registered()) {
            const std::unique_ptr<Screen> screen = Now().screens.Make(name);
            for (const auto& box : screen->Boxes())
                if (box->Kind() == BoxKind::Text)
                    look(*screen, *box);
        }
    }
};

TEST_F(BoxHelpTable, EveryBoxThatTakesTypingHasItsLine)
{
    ForEachTextBox([](const Screen& screen, const Box& box) {
        if (box.ReadOnly() || !box.Visible())
            return;
        const BoxHelp* help = HelpOf(screen.Name(), box.Name());
        ASSERT_NE(help, nullptr) << screen.Name() << "." << box.FullName();
        EXPECT_FALSE(help->takes.empty()) << screen.Name() << "." << box.FullName();
        const std::string about = AboutOf(*help);
        EXPECT_GE(about.size(), 20U) << screen.Name() << "." << box.FullName();
        EXPECT_LE(about.size(), MostOfATip) << screen.Name() << "." << box.FullName();
        EXPECT_EQ(about.back(), '.') << about;
        EXPECT_EQ(about.find_first_of("{}"), std::string::npos) << about;
    });
}

TEST_F(BoxHelpTable, EveryLineIsOfSomeBox)
{
    std::set<const BoxHelp*> used;
    ForEachTextBox([&](const Screen& screen, const Box& box) { used.insert(HelpOf(screen.Name(), box.Name())); });
    for (const BoxHelp& help : AllBoxHelp())
        EXPECT_TRUE(used.contains(&help)) << help.screen << "." << help.box;
}

TEST_F(BoxHelpTable, TheNumberIsTheOneThatTheBoxIsSpokenWith)
{
    ForEachTextBox([](const Screen& screen, const Box& box) {
        const BoxHelp* help = HelpOf(screen.Name(), box.Name());
        if (help == nullptr || (screen.Name() != "Form3" && screen.Name() != "Side2Form1"))
            return;
        const std::size_t at = box.Spoken().rfind(", box ");
        EXPECT_EQ(help->number, at == std::string::npos ? "" : box.Spoken().substr(at + 6)) << box.FullName();
        if (help->section.size() == 1 && box.Spoken().at(1) == ',') {
            EXPECT_EQ(help->section, box.Spoken().substr(0, 1)) << box.FullName();
        }
    });
}

TEST_F(BoxHelpTable, ANumberedBoxCountsForClass1AIfTheSumHasIt)
{
    ForEachTextBox([](const Screen& screen, const Box& box) {
        const BoxHelp* help = HelpOf(screen.Name(), box.Name());
        if (help == nullptr || help->number.empty() || screen.Name() == "P11DDeclaration")
            return;
        EXPECT_EQ(help->class1A, std::ranges::find(Class1AFields, box.Field()) != Class1AFields.end())
            << box.FullName();
    });
}

TEST_F(BoxHelpTable, WhatIsThisHasTheNameTheLineAndTheRule)
{
    EXPECT_EQ(
        review::WhatsThisOf(*HelpOf("ENotepad", "LBox"), "Passenger miles"),
        "Passenger miles\nSection E, no Class 1A: takes business miles for which passenger payments were made.\n\n"
        "The miles of each passenger added up: 100 miles with two passengers are 200. ITEPA 2003 s.234.");
    EXPECT_EQ(AboutOf(*HelpOf("Side2Form1", "JRelocation")).substr(0, 44),
              "Qualifying expenses of a move above £8,000.");
}

TEST_F(BoxHelpTable, EveryBoxThatIsTypedInTickedOrWorkedOutSaysWhatItIs)
{
    std::set<BoxKind> met;
    for (const std::string& name : Now().screens.Registered()) {
        const std::unique_ptr<Screen> screen = Now().screens.Make(name);
        for (const auto& box : screen->Boxes()) {
            const bool isAmount = box->Kind() == BoxKind::Label && box->IsAmount();
            if (!isAmount && box->Kind() != BoxKind::Text && box->Kind() != BoxKind::Tick &&
                box->Kind() != BoxKind::Option)
                continue;
            met.insert(box->Kind());
            const std::string text = review::WhatsThisOf(*screen, *box);
            EXPECT_GE(text.size(), 20U) << name << "." << box->FullName();
            EXPECT_TRUE(text.ends_with('.')) << name << "." << box->FullName() << ": " << text;
        }
    }
    EXPECT_EQ(met.size(), 4U);
}

TEST_F(BoxHelpTable, TheLineSaysWhereTheBoxGoesAndWhatItTakes)
{
    EXPECT_EQ(review::LineOf(*HelpOf("Form3", "BDescriptionPayment")),
              "Section B, no Class 1A: takes a description of the payment");
    EXPECT_EQ(review::LineOf(*HelpOf("Side2Form1", "JRelocation")).substr(0, 28), "Section J, box 15, Class 1A:");
    EXPECT_EQ(review::LineOf(*HelpOf("Form3", "SexBox")), "Employee details: takes M or F");
    EXPECT_EQ(review::LineOf(*HelpOf("NewFile", "EmployeeSurname")), "Takes the surname");
    EXPECT_EQ(HelpOf("Form5_6", "FC025"), HelpOf("Form3", "FC021"));
    EXPECT_EQ(HelpOf("Form3", "FTotalCashCars"), nullptr) << "worked out";
}

} // namespace
} // namespace quillmere::test
