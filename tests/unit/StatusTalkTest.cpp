// What the status bar says: of the box in use, and of whatever leaving a box makes of what was typed.
#include "review/StatusTalk.h"

#include "frame/KeyFilters.h"
#include "frame/Text.h"
#include "support/ProgramFixture.h"

#include <array>
#include <map>

namespace quillmere::test {
namespace {

using review::MeanTheSame;

class StatusTalkTest : public ProgramFixture {
protected:
    std::string Note() { return At("MDIForm1", "StatusNote").Text(); }

    /// Types over what is in a box and leaves it, as a user does.
    void Enter(Screen& screen, Box& box, std::string_view typed)
    {
        screen.Enter(box);
        box.AcceptTyped(typed);
        screen.Typed(box);
        screen.Leave(box);
    }
    void Enter(std::string_view screen, std::string_view box, std::string_view typed)
    {
        Enter(*Now().screens.Find(screen), At(screen, box), typed);
    }

    static bool IsEntry(const Box& box)
    {
        return box.Visible() && (box.Kind() == BoxKind::Tick || (box.Kind() == BoxKind::Text && !box.ReadOnly()));
    }
};

TEST_F(StatusTalkTest, SaysWhatWasEmptiedAndWhy)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Enter("Form3", "DateofBirth", "32/13/10");
    EXPECT_EQ(Note(), "Emptied: 32/13/10 is not a date");
    Enter("Form3", "DateofBirth", "06/04/2011");
    EXPECT_EQ(Note(), "Emptied: 06/04/2011; the box takes a date, day/month/year, not after the end of the tax year");
    Enter("Form3", "ACostMarketBox", "0");
    EXPECT_EQ(Note(), "Emptied: 0 is left blank");
    Enter("Form3", "DCashEqu", "1.239");
    EXPECT_EQ(Note(), "Changed: 1.239 to 1.24");
    Enter("Form3", "SexBox", "f");
    EXPECT_EQ(Note(), "") << "the word about the box before is over";
}

TEST_F(StatusTalkTest, SaysWhatElseWasEmptied)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Enter("Form3", "ACostMarketBox", "100");
    Enter("Form3", "AAmountGood", "20");
    EXPECT_EQ(Note(), "");
    Enter("Form3", "ACostMarketBox", "");
    EXPECT_EQ(Note(), "Emptied too: 20.00 (A, amount made good or from which tax deducted)");
    Enter("Form3", "FRegDate1", "01/01/2008");
    Enter("Form3", "FC021", "120");
    Enter("Form3", "FFuel1", "E");
    EXPECT_NE(Note().find("Emptied too: 120 ("), std::string::npos) << Note();
}

TEST_F(StatusTalkTest, StoredIsSaidBehindWhatLeavingMeant)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Enter("Form3", "WorkNumberBox", "7");
    Click("Form3", "Page2");
    EXPECT_EQ(Note(), "Stored");
    Enter("Side2Form1", "GVan", "0");
    Enter("Side2Form1", "HLoanDate1", "x");
    Click("Side2Form1", "Page1");
    EXPECT_EQ(Note(), "Emptied: x is not a date") << "nothing was stored";
    Enter("Form3", "WorkNumberBox", "8");
    Enter("Form3", "DateofBirth", "x");
    Click("Form3", "Page2");
    EXPECT_EQ(Note(), "Emptied: x is not a date; stored");
}

TEST_F(StatusTalkTest, TheLineFollowsTheBoxInUse)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Screen& page = *Now().screens.Find("Form3");
    EXPECT_EQ(At("MDIForm1", "StatusWho").Text(), "Jane Smith (Acme Ltd)");
    page.Enter(page.box("SexBox"));
    EXPECT_EQ(At("MDIForm1", "StatusBox").Text(), "Employee details: takes M or F");
    Click("Form3", "Image1");
    Screen& list = *Now().screens.Find("ANotepad");
    list.Enter(list.box("Tax", 1));
    EXPECT_EQ(At("MDIForm1", "StatusBox").Text().substr(0, 20), "Section A, Class 1A:");
    Click("ANotepad", "cmdCancel");
    page.Enter(page.box("FTotalCashCars"));
    EXPECT_EQ(At("MDIForm1", "StatusBox").Text(), "Cannot be typed in");
    page.Enter(page.box("Image1"));
    EXPECT_EQ(At("MDIForm1", "StatusBox").Text(), "");
    Click("MDIForm1", "cmdFile", 4);
    EXPECT_EQ(At("MDIForm1", "StatusWho").Text(), "");
}

TEST_F(StatusTalkTest, SaysWhileATextIsTypedHowMuchOfItThePaperHasNoRoomFor)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Screen& page = *Now().screens.Find("Form3");
    Box& model = page.box("FMakeModel1");
    const auto lineAt = [&](std::string_view typed) {
        model.AcceptTyped(typed);
        page.Typed(model);
        return At("MDIForm1", "StatusBox").Text();
    };
    page.Enter(model);
    const std::string line = At("MDIForm1", "StatusBox").Text();
    EXPECT_EQ(lineAt("An estate car with leather seat"), line);
    EXPECT_EQ(lineAt("An estate car with leather seats"), "The last character does not print; " + line);
    EXPECT_EQ(lineAt("An estate car with leather seatsts"), "The last 3 characters do not print; " + line);
    page.Enter(page.box("SexBox"));
    EXPECT_EQ(At("MDIForm1", "StatusBox").Text(), "Employee details: takes M or F");
    page.Enter(model);
    EXPECT_EQ(At("MDIForm1", "StatusBox").Text(), "The last 3 characters do not print; " + line);
}

TEST_F(StatusTalkTest, ATextThatIsNotOnTheFormMayBeOfAnyLength)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Click("Form3", "Image1");
    Screen& list = *Now().screens.Find("ANotepad");
    Box& description = list.box("Description", 1);
    list.Enter(description);
    const std::string line = At("MDIForm1", "StatusBox").Text();
    description.AcceptTyped(std::string(200, 'W'));
    list.Typed(description);
    EXPECT_EQ(At("MDIForm1", "StatusBox").Text(), line);
}

TEST_F(StatusTalkTest, AnotherFormOfTheSameIsNoChange)
{
    EXPECT_TRUE(MeanTheSame("1234.5", "  1,234.50"));
    EXPECT_TRUE(MeanTheSame("(5)", "-5.00"));
    EXPECT_TRUE(MeanTheSame("1/5/10", "01/05/2010"));
    EXPECT_TRUE(MeanTheSame("ab12", "AB12"));
    EXPECT_FALSE(MeanTheSame("12a", "12.00"));
    EXPECT_FALSE(MeanTheSame("1.239", "1.24"));
    EXPECT_FALSE(MeanTheSame("5-", ""));
    EXPECT_FALSE(MeanTheSame("1.2.3", "1.20"));
}

/// Bad entries of every kind, put into every box of every screen that can be opened: what leaving empties or changes is
/// said with the text that was there.
TEST_F(StatusTalkTest, WhateverLeavingABoxEmptiesOrChangesIsSaid)
{
    constexpr auto Bad =
        std::to_array<std::string_view>({"32/13/10", "06/04/2012", "01/01/1800", "(5", "5-", "1.2.3", "0", "120", "Z"});
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    int said = 0;
    for (const std::string& name : Now().screens.Registered()) {
        if (name == "MDIForm1" || Now().screens.Make(name)->Boxes().empty())
            continue;
        if (!Shows("Form3") && name != "Form3")
            OpenEmployee();
        Screen* screen = Now().screens.Show(name);
        if (screen == nullptr)
            continue;
        for (const auto& left : screen->Boxes())
            for (const std::string_view bad : Bad) {
                if (left->Kind() != BoxKind::Text || !IsEntry(*left))
                    continue;
                screen->Enter(*left);
                left->AcceptTyped(bad);
                std::map<const Box*, std::string> before;
                for (const auto& box : screen->Boxes())
                    if (IsEntry(*box))
                        before.emplace(box.get(), box->Stored());
                screen->Leave(*left);
                for (const auto& [box, was] : before) {
                    const std::string text = Trim(was), is = Trim(box->Stored());
                    const bool lost = !text.empty() && is.empty() && box->Kind() == BoxKind::Text;
                    const review::BoxHelp* help = review::HelpOf(name, box->Name());
                    const bool isResult = box->IsComputed() || (help != nullptr && help->worksOut);
                    const bool rewritten = box == left.get() && !MeanTheSame(text, is);
                    const bool ticked = box->Kind() == BoxKind::Tick && text != is;
                    if (!ticked && !rewritten && (!lost || (isResult && box != left.get())))
                        continue;
                    ++said;
                    EXPECT_NE(Note().find(ticked ? box->Spoken() : text), std::string::npos)
                        << name << "." << box->FullName() << " read '" << text << "' when '" << bad << "' was left in "
                        << left->FullName() << ", and the note is: " << Note();
                }
            }
        Now().screens.Unload(name);
        door.messages.clear();
    }
    EXPECT_GT(said, 1000) << "the walk has emptied next to nothing";
}

} // namespace
} // namespace quillmere::test
