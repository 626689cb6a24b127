// What is typed and not stored yet: kept beside the database, and offered again, in the whole program without windows.
#include "clientdb/TypedJournal.h"

#include "clientdb/EmployerScreens.h"
#include "clientdb/Notepad.h"
#include "clientdb/OpenRecord.h"
#include "frame/CheckedFile.h"
#include "review/TypedBack.h"
#include "screens/Ways.h"
#include "support/ProgramFixture.h"

#include <map>
#include <set>

namespace quillmere::test {
namespace {

class TypedJournalTest : public ProgramFixture {
protected:
    TypedJournalTest() { Create("Acme", "Jane", "Smith"); }

    void OpenJane() { ASSERT_TRUE(quillmere::OpenEmployee(Now(), "Acme", "Jane Smith")); }
    void Type(std::string_view screen, std::string_view box, std::string_view text, int index = Box::NoIndex)
    {
        Screen* on = Now().screens.Find(screen);
        on->TypeIn(on->box(box, index), text);
    }
    std::filesystem::path File() { return Now().ClientDatabasePath().replace_extension(".typed"); }
    bool IsKept() { return std::filesystem::exists(File()); }
    std::string Note() { return At("MDIForm1", "StatusNote").Text(); }
    std::string Strip() { return Shows("TypedStrip") ? At("TypedStrip", "StripWords").Text() : std::string(); }
    std::string Stored(std::string_view field)
    {
        Database database = Clients();
        Recordset records = database.OpenRecordset("P11D");
        records.MoveFirst();
        return std::string(records.Field(field));
    }
    /// What is there after the process was killed: the files as they are, looked at by another run.
    void Crash()
    {
        const std::string kept = ReadFile(File());
        const std::string desk = door.deskName + " " + Now().programFolder.string();
        Now().screens.UnloadAll(Closing::WithAll);
        WriteFileChecked(File(), kept);
        TypedEntries(Now().ClientDatabasePath()).Release(desk);
        // The page that has closed has stored what it held.
        Database database = Clients();
        Recordset records = database.OpenRecordset("P11D");
        records.MoveFirst();
        records.Edit();
        for (const std::string_view field : {"WorkNumberBox", "CGrossAmount", "CCashEqu"})
            records.SetField(field, "");
        records.Update();
    }
};

TEST_F(TypedJournalTest, KeepsWhatIsTypedUntilThePageIsStored)
{
    OpenJane();
    door.LetTimePass();
    EXPECT_FALSE(IsKept()) << "nothing has been typed";
    At("Form3", "WorkNumberBox").AcceptTyped("W17");
    Now().screens.Find("Form3")->Typed(At("Form3", "WorkNumberBox"));
    At("Form3", "WorkNumberBox").AcceptTyped("W178");
    Now().screens.Find("Form3")->Typed(At("Form3", "WorkNumberBox"));
    EXPECT_EQ(door.later.size(), 1U) << "one write for both";
    EXPECT_FALSE(IsKept());
    door.LetTimePass();
    EXPECT_NE(ReadFile(File()).find("W178"), std::string::npos) << "although the box has not been left";
    Type("Form3", "WorkNumberBox", "");
    door.LetTimePass();
    EXPECT_FALSE(IsKept()) << "as it was";
    Type("Form3", "WorkNumberBox", "W2");
    door.LetTimePass();
    EXPECT_TRUE(IsKept());
    Click("Form3", "Page2");
    EXPECT_EQ(Stored("WorkNumberBox"), "W2");
    EXPECT_FALSE(IsKept());
}

TEST_F(TypedJournalTest, OffersAfterACrashWhatWasTyped)
{
    OpenJane();
    Type("Form3", "WorkNumberBox", "W17");
    Type("Form3", "CGrossAmount", "100");
    door.LetTimePass();
    Crash();
    OpenJane();
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "");
    EXPECT_EQ(Strip(), "2 boxes typed on 30 June 12:00 were not stored");
    Click("TypedStrip", "StripShow");
    EXPECT_EQ(
        At("TypedList", "TypedLines").Entries(),
        (std::vector<std::string>{"Page 1\tWorks number or department\tW17\t", "Page 1\tC, gross amount\t100.00\t"}));
    Click("TypedList", "TypedBack");
    EXPECT_FALSE(Shows("TypedList"));
    EXPECT_FALSE(Shows("TypedStrip"));
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "W17");
    EXPECT_EQ(At("Form3", "CCashEqu").Text(), "    100.00") << "its rule has run";
    EXPECT_EQ(Stored("WorkNumberBox"), "") << "it waits to be stored like anything typed";
    EXPECT_TRUE(IsKept()) << "and is kept until then";
    Click("Form3", "Page2");
    EXPECT_EQ(Stored("CCashEqu"), "    100.00");
    EXPECT_FALSE(IsKept());
}

TEST_F(TypedJournalTest, ForgetsWhatIsNotWanted)
{
    OpenJane();
    Type("Form3", "WorkNumberBox", "W17");
    door.LetTimePass();
    Crash();
    OpenJane();
    EXPECT_EQ(Strip(), "1 box typed on 30 June 12:00 was not stored");
    Click("TypedStrip", "StripForget");
    EXPECT_FALSE(Shows("TypedStrip"));
    EXPECT_FALSE(IsKept());
    Menu("mnuTyped");
    EXPECT_EQ(Note(), "Nothing that was typed waits to be stored");
}

TEST_F(TypedJournalTest, WhatIsLeftAloneIsOfferedAgain)
{
    Create("Acme", "Peter", "Young");
    OpenJane();
    Type("Form3", "WorkNumberBox", "W17");
    door.LetTimePass();
    Crash();
    OpenJane();
    Type("Form3", "CGrossAmount", "50");
    door.LetTimePass();
    ASSERT_TRUE(quillmere::OpenEmployee(Now(), "Acme", "Peter Young"));
    EXPECT_EQ(Strip(), "") << "it is not his";
    OpenJane();
    EXPECT_EQ(Strip(), "1 box typed on 30 June 12:00 was not stored");
    // What the store holds by now need not come back.
    Type("Form3", "WorkNumberBox", "W17");
    Click("Form3", "Page2");
    OpenJane();
    EXPECT_EQ(Strip(), "");
}

TEST_F(TypedJournalTest, WhatACancelledNotepadHeldIsThereUntilTheEmployeeIsClosed)
{
    OpenJane();
    ASSERT_NE(Reach(Now().screens, "KNotepad"), nullptr);
    Type("KNotepad", "Description", "Gardener", 2);
    Type("KNotepad", "Cost", "250", 2);
    Click("KNotepad", "cmdCancel");
    door.LetTimePass();
    EXPECT_NE(ReadFile(File()).find("Gardener"), std::string::npos);
    EXPECT_EQ(Strip(), "") << "nobody has asked for it";
    Menu("mnuTyped");
    EXPECT_EQ(At("TypedList", "TypedLines").Entries(),
              (std::vector<std::string>{"Services supplied\tDescription, line 2\tGardener\t",
                                        "Services supplied\tCost, line 2\t250.00\t"}));
    Click("TypedList", "TypedBack");
    ASSERT_TRUE(Shows("KNotepad"));
    EXPECT_EQ(At("KNotepad", "Description", 2).Text(), "Gardener");
    EXPECT_EQ(At("KNotepad", "Cost", 2).Text(), "    250.00");
    Click("KNotepad", "cmdOK");
    EXPECT_EQ(Stored("KCostYou"), "    250.00");
    EXPECT_FALSE(IsKept());
    Menu("mnuTyped");
    EXPECT_FALSE(Shows("TypedList")) << "it is stored";

    Reach(Now().screens, "KNotepad");
    Type("KNotepad", "Description", "Cook", 3);
    Click("KNotepad", "cmdCancel");
    OpenJane();
    Menu("mnuTyped");
    EXPECT_FALSE(Shows("TypedList")) << "the employee has been closed meanwhile";
    EXPECT_FALSE(IsKept());
}

TEST_F(TypedJournalTest, EveryNotepadOfTheOpenEmployeeIsReachedForWhatWaits)
{
    std::size_t walked = 0;
    OpenJane();
    for (const std::string_view name : ReachedScreens()) {
        Now().screens.UnloadAll(Closing::WithAll);
        OpenJane();
        EXPECT_NE(Reach(Now().screens, name), nullptr) << name;
        ++walked;
    }
    EXPECT_GT(walked, 20U);
}

/// What a notepad would lose, field by field.
std::map<std::string, std::string> HeldBy(const Notepad& notepad)
{
    std::map<std::string, std::string> held;
    for (const TypedEntries::Line& line : notepad.Typed())
        held[line.entry.field] = line.entry.typed;
    return held;
}

TEST_F(TypedJournalTest, EveryNotepadTakesBackWhatItHeldWhenItWasCancelled)
{
    std::size_t walked = 0;
    std::set<BoxKind> kinds;
    for (const std::string_view name : ReachedScreens()) {
        OpenJane();
        auto* notepad = dynamic_cast<Notepad*>(Reach(Now().screens, name));
        if (notepad == nullptr)
            continue;
        SCOPED_TRACE(name);
        for (const std::string& field : notepad->Fields()) {
            const Notepad::Shown shown = notepad->WhereShown(field);
            if (shown.box == nullptr)
                continue;
            notepad->ShowTab(shown.tab);
            Box& box = notepad->box(shown.box->Name(), shown.box->Index());
            if (!box.Enabled() || box.ReadOnly() || box.IsComputed())
                continue;
            if (box.Kind() == BoxKind::Tick)
                notepad->Click(box);
            else
                notepad->TypeIn(box, box.Kind() == BoxKind::DropDown ? box.Entries().back() : "1");
            kinds.insert(box.Kind());
        }
        const std::map<std::string, std::string> held = HeldBy(*notepad);
        EXPECT_FALSE(held.empty());
        Now().screens.Unload(name);
        review::BringTypedBack(Now());
        notepad = dynamic_cast<Notepad*>(Now().screens.Find(name));
        ASSERT_NE(notepad, nullptr);
        EXPECT_EQ(HeldBy(*notepad), held);
        Now().screens.Unload(name);
        door.messages.clear();
        ++walked;
    }
    EXPECT_GT(walked, 20U);
    EXPECT_EQ(kinds, (std::set<BoxKind>{BoxKind::Text, BoxKind::Tick, BoxKind::DropDown}));
}

TEST_F(TypedJournalTest, EveryPageTakesBackWhatWasTypedOnIt)
{
    for (const std::string_view name : {"Form3", "Side2Form1", "P11DDeclaration"}) {
        SCOPED_TRACE(name);
        OpenJane();
        Screen* page = Reach(Now().screens, name);
        ASSERT_NE(page, nullptr);
        Now().screens.RunDeferred();
        for (const auto& box : page->Boxes())
            if (!box->Field().empty() && box->Kind() == BoxKind::Text && box->Enabled() && !box->ReadOnly() &&
                !box->IsComputed())
                page->TypeIn(*box, box->Filter() == DateKeyFilter ? "07/05/2010" : "1");
        OpenRecord& record = name == "P11DDeclaration" ? EmployerRecord(Now()) : EmployeeRecord(Now());
        const std::vector<TypedEntries::Line> typed = record.Typed();
        EXPECT_GT(typed.size(), 3U);
        record.DropChanges();
        Now().screens.UnloadAll(Closing::WithAll);
        TypedEntries(Now().ClientDatabasePath()).Keep(typed);
        OpenJane();
        EXPECT_EQ(Strip(), std::to_string(typed.size()) + " boxes typed earlier were not stored");
        review::BringTypedBack(Now());
        EXPECT_EQ(Strip(), "");
        EXPECT_EQ(record.Typed(), typed);
        record.DropChanges();
        Now().screens.UnloadAll(Closing::WithAll);
        door.messages.clear();
    }
}

TEST_F(TypedJournalTest, WhatAnotherDeskIsAtIsNotOfferedBeforeTheNextDay)
{
    const TypedEntries::Line line{
        .record = {.table = "P11D", .employer = "Acme", .employee = "Jane Smith"},
        .entry = {.field = "WorkNumberBox", .stored = "", .typed = "W17", .moment = "2011-06-30 11:00:00"}};
    TypedEntries(Now().ClientDatabasePath()).KeepOf("other@desk /there", {line});
    OpenJane();
    EXPECT_EQ(Strip(), "");
    Type("Form3", "WorkNumberBox", "mine");
    door.LetTimePass();
    Click("Form3", "Page2");
    EXPECT_NE(ReadFile(File()).find("W17"), std::string::npos) << "the other's line is his";
    door.today += std::chrono::days(1);
    OpenJane();
    EXPECT_EQ(Strip(), "1 box typed on 30 June 11:00 was not stored");
    Click("TypedStrip", "StripForget");
    EXPECT_FALSE(IsKept());
}

TEST_F(TypedJournalTest, AFolderThatTakesNoFileIsToldOnceAndCostsNothingElse)
{
    OpenJane();
    std::filesystem::create_directory(File());
    Type("Form3", "WorkNumberBox", "W17");
    door.LetTimePass();
    EXPECT_TRUE(Note().starts_with("What is typed cannot be kept against a crash: ")) << Note();
    At("MDIForm1", "StatusNote").SetText("");
    Type("Form3", "WorkNumberBox", "W18");
    door.LetTimePass();
    EXPECT_EQ(Note(), "");
    Click("Form3", "Page2");
    EXPECT_EQ(Stored("WorkNumberBox"), "W18");
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(TypedJournalTest, WhatWaitsForSomebodyWhoIsRenamedGoesWithHim)
{
    Create("Acme", "John", "Brown");
    Create("Bolt", "Jane", "Jones");
    const auto waitsFor = [](std::string employer, std::string employee) {
        return TypedEntries::Line{
            .record = {.table = "P11D", .employer = std::move(employer), .employee = std::move(employee)},
            .entry = {.field = "WorkNumberBox", .stored = "", .typed = "W17", .moment = "2011-06-30 11:00:00"}};
    };
    const TypedEntries kept(Now().ClientDatabasePath());
    const auto lines = [&](std::initializer_list<std::pair<std::string, std::string>> names) {
        std::vector<TypedEntries::Line> all;
        for (const auto& [employer, employee] : names)
            all.push_back(waitsFor(employer, employee));
        return all;
    };
    kept.Keep(lines({{"Acme", "Jane Smith"}, {"Acme", "John Brown"}, {"Bolt", "Jane Jones"}}));
    Menu("FileRename");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpSelect2");
    Mark("RenameEmp", "RenameEmployee");
    At("RenameEmp", "NewEmployer").SetText("Jane Jones");
    Click("RenameEmp", "Rename2");
    EXPECT_EQ(kept.All(), lines({{"Acme", "Jane Jones"}, {"Acme", "John Brown"}, {"Bolt", "Jane Jones"}}));
    // The other Jane Jones has the name already: this one stays with the old employer, and so does what waits for her.
    Menu("FileRenameEmp");
    Mark("RenameEmp", "RenameE");
    At("RenameEmp", "NewEmployer").SetText("Bolt");
    Click("RenameEmp", "Rename");
    EXPECT_EQ(kept.All(), lines({{"Acme", "Jane Jones"}, {"Bolt", "John Brown"}, {"Bolt", "Jane Jones"}}));
}

TEST_F(TypedJournalTest, LinesThatNobodyKnowsAreNotOffered)
{
    const TypedEntries::Record jane{.table = "P11D", .employer = "Acme", .employee = "Jane Smith"};
    TypedEntries(Now().ClientDatabasePath())
        .Keep({{.record = jane, .entry = {.field = "Nothing", .stored = "", .typed = "1"}},
               {.record = {.table = "Nothing", .employer = "Acme", .employee = "Jane Smith"},
                .entry = {.field = "A", .stored = "", .typed = "1"}},
               {.record = {.table = "P11D", .employer = "Acme", .employee = {}},
                .entry = {.field = "WorkNumberBox", .stored = "", .typed = "1"}}});
    OpenJane();
    EXPECT_EQ(Strip(), "");
}

TEST(WordsOfWaiting, SayHowManyAndWhen)
{
    std::vector<TypedEntries::Line> lines(7);
    EXPECT_EQ(review::WordsOfWaiting(lines), "7 boxes typed earlier were not stored");
    lines[3].entry.moment = "2011-06-21 14:31:59";
    lines[5].entry.moment = "2011-06-20 17:00:00";
    EXPECT_EQ(review::WordsOfWaiting(lines), "7 boxes typed on 21 June 14:31 were not stored");
    EXPECT_EQ(review::WordsOfWaiting({lines[3]}), "1 box typed on 21 June 14:31 was not stored");
}

} // namespace
} // namespace quillmere::test
