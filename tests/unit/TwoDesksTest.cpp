// Two desks with the same dialog open: neither Ok takes away what the other has stored.
#include "clientdb/CurrentRecord.h"
#include "clientdb/Notepad.h"
#include "frame/Text.h"
#include "screens/ScheduleNotepad.h"
#include "support/ProgramFixture.h"

#include <algorithm>

namespace quillmere::test {
namespace {

constexpr std::string_view Employer = "Acme Ltd", Employee = "Jane Smith";

/// What a user does in a dialog: a text into a box, or, without one, a click on a tab.
struct Act {
    std::string box;
    int index = Box::NoIndex;
    std::string text = {};
};

/// What a field is to hold.
struct Expected {
    std::string table, field, text;
};

/// One dialog, what each desk does in it, and what is stored when both have confirmed.
struct TwoDesks {
    std::string screen;
    std::vector<Act> first, second;
    std::vector<Expected> stored;

    friend void PrintTo(const TwoDesks& shown, std::ostream* out) { *out << shown.screen; }
};

TwoDesks OfSchedule(const NotepadMember& member)
{
    const std::size_t which = member.Cost().Exists() ? 1 : 2;
    const std::string amount(member.columns[which].box), name(member.name);
    return {name,
            {{"Description", 1, "A desk"}, {amount, 1, "10"}},
            {{"Description", 2, "A chair"}, {amount, 2, "20"}},
            {{name, "Description1", "A desk"},
             {name, "Description2", "A chair"},
             {name, Numbered(member.columns[which].field, 1), "     10.00"},
             {name, Numbered(member.columns[which].field, 2), "     20.00"},
             {"P11D", std::string(member.totalFields[which - 1]), "     30.00"}}};
}

std::vector<TwoDesks> AllDialogs()
{
    std::vector<TwoDesks> dialogs;
    for (const NotepadMember& member : Notepads())
        dialogs.push_back(OfSchedule(member));
    const std::vector<TwoDesks> others = {
        {"P11DBNotepad1",
         {{"Description", 1, "A desk"}, {"AmountAdded", 1, "10"}},
         {{"AmountAdded", 2, "20"}},
         {{"P11DBNotepad1", "Description1", "A desk"},
          {"P11DBNotepad1", "AmountAdded1", "     10.00"},
          {"P11DBNotepad1", "AmountAdded2", "     20.00"}}},
        {"P11DBNotepad2",
         {{"Description", 1, "A desk"}, {"AmountDeducted", 1, "10"}},
         {{"AmountDeducted", 2, "20"}},
         {{"P11DBNotepad2", "Description1", "A desk"},
          {"P11DBNotepad2", "AmountDeducted1", "     10.00"},
          {"P11DBNotepad2", "AmountDeducted2", "     20.00"}}},
        {"Form3_4",
         {{"FMakeModel3", Box::NoIndex, "ONE"}},
         {{"FMakeModel4", Box::NoIndex, "TWO"}},
         {{"ExtraCars", "FMakeModel3", "ONE"}, {"ExtraCars", "FMakeModel4", "TWO"}}},
        {"Form5_6",
         {{"FMakeModel5", Box::NoIndex, "ONE"}},
         {{"FMakeModel6", Box::NoIndex, "TWO"}},
         {{"ExtraCars", "FMakeModel5", "ONE"}, {"ExtraCars", "FMakeModel6", "TWO"}}},
        {"DNotepad",
         {{"BasicChargeA", Box::NoIndex, "5000"}},
         {{"Address1", Box::NoIndex, "1 High Street"}},
         {{"DNotepad", "Address1", "1 High Street"},
          {"DNotepad", "BasicChargeA", "   5000.00"},
          {"DNotepad", "BasicChargeE", "   5000.00"},
          {"P11D", "DCashEqu", "   5000.00"}}},
        {"D2Notepad",
         {{"FBox", Box::NoIndex, "100000"}, {"AddChargeDays", Box::NoIndex, "366"}},
         {{"MBox", Box::NoIndex, "400"}},
         {{"DNotepad", "AddChargeF", " 100000.00"},
          {"DNotepad", "AddChargeM", "    400.00"},
          {"DNotepad", "AddChargeQ", "    600.00"}}},
        {"ENotepad",
         {{"ABox", Box::NoIndex, "10"}},
         {{"Bicycle"}, {"ABox", Box::NoIndex, "20"}},
         {{"ENotepad", "ABox1", "     10.00"}, {"ENotepad", "ABox3", "     20.00"}, {"P11D", "ETaxAmount", "30.00"}}},
        {"FNotepad",
         {{"Make", Box::NoIndex, "ONE"}},
         {{"lblCar2"}, {"Make", Box::NoIndex, "TWO"}},
         {{"FNotepad", "Make1", "ONE"}, {"FNotepad", "Make2", "TWO"}, {"P11D", "FMakeModel1", "ONE "}}},
        {"GNotepad",
         {{"VanRegNumber", Box::NoIndex, "A1"}},
         {{"Van2"}, {"VanRegNumber", Box::NoIndex, "B2"}},
         {{"GNotepad", "RegNumber1", "A1"}, {"GNotepad", "RegNumber2", "B2"}, {"P11D", "GVan", "   6000.00"}}},
        {"GNotepad2",
         {{"TypeUse", 1, "1"}},
         {{"ChangeUse", 2, "01/06/2009"}, {"TypeUse", 2, "2"}},
         {{"GNotepad", "TypeUse1", "1"}, {"GNotepad", "TypeUse2", "2"}, {"GNotepad", "Days1", "56"}}},
        {"HNotepad",
         {{"ABox", 1, "1000"}, {"BBox", 1, "1000"}},
         {{"ABox", 2, "2000"}, {"BBox", 2, "2000"}},
         {{"HNotepad", "MaxBalanceLater1", "   1000.00"},
          {"HNotepad", "MaxBalanceLater2", "   2000.00"},
          {"P11D", "HLoanCashEqu1", "     40.00"},
          {"P11D", "HLoanCashEqu2", "     80.00"}}},
        {"HNotepad2",
         {{"Currency", 2, "Dollar"}, {"Rate", 2, "3"}},
         {{"Currency", 3, "Euro"}, {"Rate", 3, "5"}},
         {{"HNotepad2", "Currency2", "Dollar"},
          {"HNotepad2", "Rate2", "3"},
          {"HNotepad2", "Currency3", "Euro"},
          {"HNotepad2", "Rate3", "5"}}},
        {"JNotepad",
         {{"ABox", Box::NoIndex, "9000"}},
         {{"CBox", Box::NoIndex, "1000"}},
         {{"JNotepad", "ABox", "   9000.00"}, {"JNotepad", "CBox", "   1000.00"}}},
    };
    dialogs.insert(dialogs.end(), others.begin(), others.end());
    return dialogs;
}

class TwoDesksTest : public ProgramFixture, public ::testing::WithParamInterface<TwoDesks> {
protected:
    TwoDesksTest()
        : otherDesk(otherDoor, nullptr, {.programFolder = OtherFolder(), .resourceFolder = Now().resourceFolder})
    {
        EXPECT_TRUE(otherDesk.Main());
        Other().settings = Now().settings; // the same client folder
        Create(std::string(Employer), "Jane", "Smith");
        for (Session* session : {&Now(), &Other()}) {
            session->CurrentEmployer = Employer;
            session->CurrentEmployee = Employee;
        }
    }

    std::filesystem::path OtherFolder() const
    {
        std::filesystem::path made = root.path / "other" / edition::ProductFolder;
        std::filesystem::create_directories(made);
        return made;
    }

    Session& Other() { return otherDesk.TheSession(); }

    static Screen& Open(Session& session, const std::string& name)
    {
        Screen* screen = session.screens.Show(name);
        session.screens.RunDeferred();
        return *screen;
    }

    static void Do(Screen& screen, const std::vector<Act>& acts)
    {
        for (const Act& act : acts) {
            Box& box = screen.box(act.box, act.index);
            if (act.text.empty()) {
                screen.Click(box);
            } else {
                box.SetText(act.text);
                screen.Leave(box);
            }
        }
    }

    static void Ok(Session& session, Screen& screen)
    {
        const std::string name = screen.Name();
        screen.Click(screen.box(screen.FindBox("cmdOK") != nullptr ? "cmdOK" : "Ok"));
        EXPECT_EQ(session.screens.Find(name), nullptr) << name << " is still open";
    }

    std::string Stored(const Expected& expected)
    {
        Database database = Clients();
        Recordset records = database.OpenRecordset(expected.table);
        if (expected.table == "HNotepad2") {
            records.MoveFirst();
        } else if (expected.table.starts_with("P11DB")) {
            records.Index("PrimaryKey");
            records.Seek(Employer);
        } else {
            records.Index("IndKey");
            records.Seek(Employer, Employee);
        }
        return std::string(records.Field(expected.field));
    }

    void ExpectStored()
    {
        for (const Expected& expected : GetParam().stored)
            EXPECT_EQ(Stored(expected), expected.text) << expected.table << '.' << expected.field;
        EXPECT_TRUE(door.messages.empty());
        EXPECT_TRUE(otherDoor.messages.empty());
    }

    ScriptedDoor otherDoor;
    Program otherDesk;
};

TEST_P(TwoDesksTest, KeepWhatEachHasEntered)
{
    Screen& first = Open(Now(), GetParam().screen);
    Screen& second = Open(Other(), GetParam().screen);
    Do(first, GetParam().first);
    Do(second, GetParam().second);
    Ok(Now(), first);
    Ok(Other(), second);
    ExpectStored();
}

TEST_P(TwoDesksTest, KeepWhatIsStoredWhenOneHasEnteredNothing)
{
    {
        Screen& before = Open(Now(), GetParam().screen);
        Do(before, GetParam().first);
        Ok(Now(), before);
    }
    Screen& first = Open(Now(), GetParam().screen);
    Screen& idle = Open(Other(), GetParam().screen);
    Do(first, GetParam().second);
    Ok(Now(), first);
    Ok(Other(), idle);
    ExpectStored();
}

TEST_P(TwoDesksTest, LeaveAThingThatBothHaveEnteredToTheLaterOk)
{
    Screen& first = Open(Now(), GetParam().screen);
    Screen& second = Open(Other(), GetParam().screen);
    std::vector<Act> otherwise = GetParam().first;
    for (Act& act : otherwise)
        act.text = act.text == "1" ? "2" : "1";
    Do(first, otherwise);
    Do(second, GetParam().first);
    Ok(Now(), first);
    Ok(Other(), second);
    const Act& act = GetParam().first.front();
    Screen& again = Open(Now(), GetParam().screen);
    Screen& alone = Open(Other(), GetParam().screen);
    Do(alone, GetParam().first);
    EXPECT_EQ(again.box(act.box, act.index).Text(), alone.box(act.box, act.index).Text());
}

INSTANTIATE_TEST_SUITE_P(Dialogs, TwoDesksTest, ::testing::ValuesIn(AllDialogs()),
                         [](const auto& dialog) { return dialog.param.screen; });

class TwoDesksInOneLine : public TwoDesksTest {};

TEST_P(TwoDesksInOneLine, SayWhatTheLaterOkHasReplaced)
{
    Screen& first = Open(Now(), "ANotepad");
    Screen& second = Open(Other(), "ANotepad");
    Do(first, {{"Description", 6, "A desk"}, {"CostMark", 6, "20"}});
    Do(second, {{"CostMark", 6, "30"}});
    Ok(Now(), first);
    const auto noteOf = [](Session& session) { return session.screens.FindBox("MDIForm1", "StatusNote")->Text(); };
    EXPECT_EQ(noteOf(Now()), "Stored");
    Ok(Other(), second);
    EXPECT_EQ(noteOf(Other()), "Another desk had stored the same meanwhile; your entries replaced: A desk, 20.00");
}

/// The declaration brings itself up to date after the Ok of its schedule, which takes nothing away.
TEST_P(TwoDesksInOneLine, SayItOnUntilTheNextNotepadIsOpened)
{
    Open(Other(), "Form3");
    Screen& declaration = Open(Other(), "P11DDeclaration");
    declaration.Click(declaration.box("AdjustTick"));
    Screen& first = Open(Now(), "P11DBNotepad1");
    Screen& second = Open(Other(), "P11DBNotepad1");
    Do(first, {{"AmountAdded", 1, "20"}});
    Do(second, {{"AmountAdded", 1, "30"}});
    Ok(Now(), first);
    Ok(Other(), second);
    Other().screens.RunDeferred();
    const Box& note = *Other().screens.FindBox("MDIForm1", "StatusNote");
    EXPECT_EQ(note.Text(), "Another desk had stored the same meanwhile; your entries replaced: 20.00");
    Open(Other(), "P11DBNotepad2");
    EXPECT_EQ(note.Text(), "");
}

INSTANTIATE_TEST_SUITE_P(Dialogs, TwoDesksInOneLine, ::testing::Values(TwoDesks{}));

class AllNotepads : public ProgramFixture {};

TEST_F(AllNotepads, AreTriedOnTwoDesks)
{
    const std::vector<TwoDesks> dialogs = AllDialogs();
    for (const std::string& name : Now().screens.Registered())
        if (dynamic_cast<Notepad*>(Now().screens.Make(name).get()) != nullptr) {
            EXPECT_NE(std::ranges::find(dialogs, name, &TwoDesks::screen), dialogs.end()) << name;
        }
    EXPECT_EQ(dialogs.size(), 28U);
}

} // namespace
} // namespace quillmere::test
