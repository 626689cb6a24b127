// Several clerks in one shared folder, each at a desk of his own.
#include "clientdb/EmployerScreens.h"
#include "clientdb/TypedEntries.h"
#include "clientdb/TypedJournal.h"
#include "clientdb/UserOperation.h"
#include "clientdb/store/History.h"
#include "clientdb/store/ServerEngine.h"
#include "frame/CloseAll.h"
#include "support/ProgramFixture.h"
#include "support/RawDatabase.h"

#include <fmt/format.h>
#include <thread>

namespace quillmere::test {
namespace {

constexpr auto Employer = "Acme";
constexpr auto Employee = "Jane Smith";

class ManyClerks : public ProgramFixture {
protected:
    ManyClerks()
        : otherDesk(otherDoor, nullptr, {.programFolder = OtherFolder(), .resourceFolder = Now().resourceFolder})
    {
        lent.PutAt(Now().ClientDatabasePath());
        EXPECT_TRUE(otherDesk.Main());
        otherDoor.deskName = "ben@desk";
        Other().settings = Now().settings; // the same client folder
        Create(Employer, "Jane", "Smith");
        for (Session* session : {&Now(), &Other()})
            OpenAt(*session);
    }

    std::filesystem::path OtherFolder() const
    {
        std::filesystem::path made = root.path / "other" / edition::ProductFolder;
        std::filesystem::create_directories(made);
        return made;
    }

    Session& Other() { return otherDesk.TheSession(); }

    /// Opens the employee, and stores what the opening has worked out.
    static void OpenAt(Session& session)
    {
        session.CurrentEmployer = Employer;
        session.CurrentEmployee = Employee;
        EXPECT_NE(OpenPage1(session, "Opening"), nullptr);
        session.screens.RunDeferred();
        Turn(session, "Form3", "Page2");
        Turn(session, "Side2Form1", "Page1");
    }

    static void Turn(Session& session, const char* from, const char* to)
    {
        Screen* const page = session.screens.Find(from);
        ASSERT_NE(page, nullptr);
        page->Click(page->box(to));
        session.screens.RunDeferred();
    }

    static void Type(Session& session, const char* screen, const char* box, std::string_view text)
    {
        Screen* const of = session.screens.Find(screen);
        Box& typed = of->box(box);
        typed.SetText(text);
        typed.MarkByHand(true);
        of->Leave(typed);
    }

    std::string Stored(std::string_view table, std::string_view field)
    {
        Database database = Clients();
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek(Employer, Employee);
        return std::string(records.Field(field));
    }

    ScriptedDoor otherDoor;
    Program otherDesk;
};

TEST_F(ManyClerks, WriteOnlyTheBoxesThatTheyHaveChanged)
{
    Type(Now(), "Form3", "ADescriptionAsset", "Desk");
    Type(Other(), "Form3", "WorkNumberBox", "17");
    Turn(Now(), "Form3", "Page2");
    Turn(Other(), "Form3", "Page2");
    EXPECT_EQ(Stored("P11D", "ADescriptionAsset"), "Desk");
    EXPECT_EQ(Stored("P11D", "WorkNumberBox"), "17");
    EXPECT_TRUE(door.messages.empty());
    EXPECT_TRUE(otherDoor.messages.empty());
}

TEST_F(ManyClerks, AreToldWhatTheyHaveStoredOverWithBothTextsAndTheHistoryKeepsTheOther)
{
    Type(Now(), "Form3", "ADescriptionAsset", "Desk");
    Type(Other(), "Form3", "ADescriptionAsset", "Lamp");
    Turn(Now(), "Form3", "Page2");
    EXPECT_TRUE(door.messages.empty());
    Turn(Other(), "Form3", "Page2");
    ASSERT_EQ(otherDoor.messages.size(), 1U);
    const std::string& text = otherDoor.messages[0].text;
    EXPECT_NE(text.find("\"Desk\" there, \"Lamp\" here"), std::string::npos) << text;
    EXPECT_EQ(Stored("P11D", "ADescriptionAsset"), "Lamp");
    Database database = Clients();
    History history(database);
    const std::vector<PastOperation> operations = history.Operations({}, 1);
    ASSERT_EQ(operations.size(), 1U);
    const auto changes = history.Changes(operations[0].number, 10);
    ASSERT_EQ(changes.size(), 1U);
    ASSERT_EQ(changes[0].fields.size(), 1U);
    EXPECT_EQ(changes[0].fields[0].before, "Desk");
    EXPECT_EQ(changes[0].fields[0].after, "Lamp");
}

TEST_F(ManyClerks, AreNotToldOfTheSameTextOrOfABoxThatTheyHaveNotTouched)
{
    Type(Now(), "Form3", "ADescriptionAsset", "Desk");
    Type(Other(), "Form3", "ADescriptionAsset", "Desk");
    Turn(Now(), "Form3", "Page2");
    Turn(Other(), "Form3", "Page2");
    Turn(Now(), "Side2Form1", "Page1");
    Type(Now(), "Form3", "WorkNumberBox", "17");
    Turn(Now(), "Form3", "Page2");
    EXPECT_TRUE(door.messages.empty());
    EXPECT_TRUE(otherDoor.messages.empty());
}

TEST_F(ManyClerks, AreToldByANotepadAsWell)
{
    Screen* const first = Now().screens.Show("KNotepad");
    Screen* const second = Other().screens.Show("KNotepad");
    first->box("Description", 1).SetText("Desk");
    second->box("Description", 1).SetText("Lamp");
    first->Click(first->box("cmdOK"));
    second->Click(second->box("cmdOK"));
    EXPECT_TRUE(door.messages.empty());
    ASSERT_EQ(otherDoor.messages.size(), 1U);
    EXPECT_NE(otherDoor.messages[0].text.find("\"Desk\" there, \"Lamp\" here"), std::string::npos)
        << otherDoor.messages[0].text;
    EXPECT_EQ(Stored("KNotepad", "Description1"), "Lamp");
}

// ---- who is gone ----------------------------------------------------------------------------------

class GoneMeanwhile : public ManyClerks {
protected:
    GoneMeanwhile() { Create("Bolt", "Ann", "Baker"); }

    /// What somebody else does is done at once, whoever has the record open.
    template<class Work>
    void Meanwhile(Work work)
    {
        constexpr std::chrono::seconds NotWaited(1);
        const auto start = std::chrono::steady_clock::now();
        {
            const UserOperation operation(Now(), "Meanwhile");
            Database database = OpenClients(Now());
            work(database);
        }
        EXPECT_LT(std::chrono::steady_clock::now() - start, NotWaited);
    }
    static void Delete(Database& database) { DeleteEmployee(database, Employer, Employee); }
    static void Rename(Database& database) { RenameEmployee(database, Employer, Employee, "Jane Jones"); }
    static void DeleteAll(Database& database) { DeleteEmployer(database, Employer); }
    static void RenameAll(Database& database) { RenameEmployer(database, Employer, "Apex", "9/Z"); }

    /// How many records there are of somebody in the tables of employees.
    int RecordsOf(std::string_view employer, std::string_view employee)
    {
        Database database = Clients();
        int found = 0;
        for (const TableLayout* const layout : NewEmployeeTables()) {
            if (layout->level != TableLevel::Employee)
                continue;
            Recordset records = database.OpenRecordset(layout->name);
            records.Index("IndKey");
            records.Seek(employer, employee);
            found += records.NoMatch() ? 0 : 1;
        }
        return found;
    }
    int WholeEmployee() { return RecordsOf("Bolt", "Ann Baker"); }

    std::vector<TypedEntries::Line> Kept() { return TypedEntries(Now().ClientDatabasePath()).All(); }
    std::string Note() { return Other().screens.FindBox("MDIForm1", "StatusNote")->Text(); }

    struct Case {
        void (*work)(Database&);
        std::string_view employer, employee; ///< under which he is found, and what waits; none if he is deleted
    };
    static constexpr std::array<Case, 4> Cases = {
        {{Delete, {}, {}}, {Rename, Employer, "Jane Jones"}, {DeleteAll, {}, {}}, {RenameAll, "Apex", Employee}}};

    /// Whoever opens him when he is back, or as he is called now, is offered it.
    void IsOfferedWhenHeIsBack(const Case& of)
    {
        if (of.employer.empty())
            Create(Employer, "Jane", "Smith");
        ASSERT_TRUE(quillmere::OpenEmployee(Other(), std::string(of.employer.empty() ? Employer : of.employer),
                                            std::string(of.employer.empty() ? Employee : of.employee)));
        EXPECT_EQ(Other().typedJournal->Waiting().size(), 1U);
        Other().typedJournal->Forget(Other().typedJournal->Waiting());
        ASSERT_TRUE(CloseAllScreens(Other()));
        otherDoor.messages.clear();
        if (!of.employer.empty())
            Create(Employer, "Jane", "Smith");
    }
};

TEST_F(GoneMeanwhile, WhatIsTypedOnAPageIsToldOfAndKept)
{
    for (const Case& of : Cases) {
        SCOPED_TRACE(&of - Cases.data());
        ASSERT_TRUE(quillmere::OpenEmployee(Other(), Employer, Employee));
        Type(Other(), "Form3", "ADescriptionAsset", "Lamp");
        Meanwhile(of.work);
        Turn(Other(), "Form3", "Page2");
        ASSERT_FALSE(otherDoor.messages.empty());
        EXPECT_EQ(otherDoor.messages.front().text, "Employee not found");
        EXPECT_TRUE(Note().starts_with("This record is no longer there: ")) << Note();
        EXPECT_EQ(RecordsOf(Employer, Employee), 0);
        ASSERT_EQ(Kept().size(), 1U);
        EXPECT_EQ(Kept()[0].entry.typed, "Lamp");
        if (!of.employer.empty()) {
            EXPECT_EQ(RecordsOf(of.employer, of.employee), WholeEmployee());
            EXPECT_EQ(Kept()[0].record.employer, of.employer);
            EXPECT_EQ(Kept()[0].record.employee, of.employee);
            EXPECT_NE(Note().find(fmt::format("it is that of {} ({}) now", of.employee, of.employer)),
                      std::string::npos)
                << Note();
        }
        IsOfferedWhenHeIsBack(of);
    }
}

TEST_F(GoneMeanwhile, WhatIsTypedInANotepadIsToldOfAndStaysThereAndIsKept)
{
    for (const Case& of : Cases) {
        SCOPED_TRACE(&of - Cases.data());
        ASSERT_TRUE(quillmere::OpenEmployee(Other(), Employer, Employee));
        Screen* const notepad = Other().screens.Show("KNotepad");
        notepad->TypeIn(notepad->box("Description", 1), "Lamp");
        Meanwhile(of.work);
        notepad->Click(notepad->box("cmdOK"));
        ASSERT_FALSE(otherDoor.messages.empty());
        EXPECT_EQ(RecordsOf(Employer, Employee), 0);
        ASSERT_NE(Other().screens.Find("KNotepad"), nullptr) << "what is typed stays in sight";
        EXPECT_TRUE(Note().starts_with("This record is no longer there: ")) << Note();
        if (!of.employer.empty())
            EXPECT_EQ(RecordsOf(of.employer, of.employee), WholeEmployee());
        otherDoor.LetTimePass();
        static_cast<void>(CloseAllScreens(Other()));
        otherDoor.LetTimePass();
        // The desk has given the notepad up; what was typed there waits all the same.
        ASSERT_EQ(Kept().size(), 1U);
        EXPECT_EQ(Kept()[0].entry.typed, "Lamp");
        IsOfferedWhenHeIsBack(of);
    }
}

// ---- who else is there ----------------------------------------------------------------------------

/// The other desk has a client folder of its own, with a file of its own that names the same tables: its connections
/// are its own.
class AlsoOpenAtTwoDesks : public ManyClerks {
protected:
    AlsoOpenAtTwoDesks()
    {
        ServerService service = *ReadService(Now().ClientDatabasePath());
        const std::filesystem::path folder = OtherFolder() / "Clients";
        std::filesystem::create_directories(folder);
        Other().settings.path.at(static_cast<std::size_t>(Other().settings.selectedFolder)) = folder.string();
        service.file = Other().ClientDatabasePath();
        service.settings.emplace_back("connect_timeout", "7");
        WriteService(service);
        door.deskName = "anna@desk";
        Create(Employer, "Joe", "Brown");
        Leave(Now());
        Leave(Other());
    }

    static void OpenAt(Session& session, const std::string& employee)
    {
        ASSERT_TRUE(quillmere::OpenEmployee(session, Employer, employee));
        session.screens.RunDeferred();
    }
    static void Leave(Session& session)
    {
        ASSERT_TRUE(CloseAllScreens(session));
        session.screens.RunDeferred();
    }
    void LetTimePass()
    {
        for (ScriptedDoor* passing : {&door, &otherDoor})
            passing->LetTimePass();
        for (Session* session : {&Now(), &Other()})
            session->screens.RunDeferred();
    }
    /// No desk waits until the others know that it has closed somebody, so one may look too early once.
    void OtherSaysNobodySoon()
    {
        constexpr int MostLooks = 50;
        for (int looks = 0; looks < MostLooks && !Says(Other()).empty(); ++looks) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            LetTimePass();
        }
        EXPECT_EQ(Says(Other()), "");
    }
    static std::string Says(Session& session)
    {
        const Box* const panel = session.screens.FindBox("MDIForm1", "StatusAlso");
        EXPECT_EQ(panel->Visible(), !panel->Text().empty());
        return panel->Text();
    }
};

TEST_F(AlsoOpenAtTwoDesks, EachIsToldOfTheOtherAndOfNobodyElse)
{
    OpenAt(Now(), Employee);
    EXPECT_EQ(Says(Now()), "");
    OpenAt(Other(), Employee);
    EXPECT_EQ(Says(Other()), "Also open: anna@desk");
    // Whoever was there first is told without doing anything.
    EXPECT_EQ(Says(Now()), "");
    LetTimePass();
    EXPECT_EQ(Says(Now()), "Also open: ben@desk");
    OpenAt(Other(), "Joe Brown");
    EXPECT_EQ(Says(Other()), "");
    Turn(Now(), "Form3", "Page2");
    EXPECT_EQ(Says(Now()), "");
}

TEST_F(AlsoOpenAtTwoDesks, NobodyIsOnceHeHasClosedOrItsDeskHasGone)
{
    OpenAt(Now(), Employee);
    OpenAt(Other(), Employee);
    Leave(Now());
    EXPECT_EQ(Says(Now()), "");
    OtherSaysNobodySoon();
    OpenAt(Now(), Employee);
    LetTimePass();
    EXPECT_EQ(Says(Other()), "Also open: anna@desk");
    // A desk that dies takes leave of nobody.
    ExecuteRaw(Now().ClientDatabasePath(),
               "SELECT pg_terminate_backend(pid,5000) FROM pg_stat_activity WHERE application_name LIKE '%anna@desk'");
    otherDoor.LetTimePass();
    EXPECT_EQ(Says(Other()), "");
    // It was the line alone: the next look is over a new one.
    LetTimePass();
    LetTimePass();
    EXPECT_EQ(Says(Other()), "Also open: anna@desk");
    EXPECT_TRUE(door.messages.empty());
    EXPECT_TRUE(otherDoor.messages.empty());
}

TEST_F(AlsoOpenAtTwoDesks, ASecondConnectionOfADeskTellsNothingOld)
{
    // Those that wait are taken in turn: whichever of them it is.
    for (int turns = 0; turns < 2; ++turns) {
        OpenAt(Now(), Employee);
        {
            const Database first = Clients(), second = Clients();
        }
        for (int turn = 0; turn < turns; ++turn)
            static_cast<void>(Clients());
        OpenAt(Now(), "Joe Brown");
        OpenAt(Other(), Employee);
        SCOPED_TRACE(turns);
        OtherSaysNobodySoon();
        OpenAt(Other(), "Joe Brown");
        EXPECT_EQ(Says(Other()), "Also open: anna@desk") << turns;
    }
}

TEST_F(AlsoOpenAtTwoDesks, AskedForWithNoTripInAnOpeningOrATurn)
{
    OpenAt(Now(), Employee);
    const std::int64_t before = ServerLink::RoundTrips();
    Now().screens.Find("Form3")->Click(Now().screens.Find("Form3")->box("Page2"));
    const std::int64_t turned = ServerLink::RoundTrips();
    EXPECT_LE(turned - before, 2);
    EXPECT_TRUE(Now().screens.HasDeferred());
}

TEST_F(AlsoOpenAtTwoDesks, NothingWaitsForAServerThatIsAway)
{
    OpenAt(Now(), Employee);
    OpenAt(Other(), Employee);
    EXPECT_EQ(Says(Other()), "Also open: anna@desk");
    ServerService away = *ReadService(Other().ClientDatabasePath());
    away.settings.front().second = "/nowhere";
    WriteService(away);
    LetTimePass();
    EXPECT_EQ(Says(Other()), "");
    EXPECT_TRUE(otherDoor.messages.empty());
    EXPECT_TRUE(otherDoor.later.empty());
}

// ---- the connection -------------------------------------------------------------------------------

class BrokenConnection : public ManyClerks {
protected:
    BrokenConnection()
    {
        const std::filesystem::path file = Now().ClientDatabasePath();
        service = server.Service(file, "own");
        CreateServerTables(service);
        WriteService(service);
        Create(Employer, "Jane", "Smith");
        OpenAt(Now());
    }

    PrivateServer server{PrivateServer::Sync::On}; // what is stored outlives it
    ServerService service;
};

TEST_F(BrokenConnection, IsMadeAnewWithoutAWordWhereTheServerIsThere)
{
    Type(Now(), "Form3", "ADescriptionAsset", "Desk");
    ExecuteRaw(service.file,
               "SELECT pg_terminate_backend(pid,5000) FROM pg_stat_activity WHERE pid<>pg_backend_pid() AND "
               "backend_type='client backend'");
    Turn(Now(), "Form3", "Page2");
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(Stored("P11D", "ADescriptionAsset"), "Desk");
}

TEST_F(BrokenConnection, KeepsWhatIsTypedOnAPageAndStoresItWhenTheServerIsBack)
{
    Type(Now(), "Form3", "ADescriptionAsset", "Desk");
    server.Kill();
    Turn(Now(), "Form3", "Page2");
    EXPECT_FALSE(TakeMessage().text.empty());
    EXPECT_TRUE(Shows("Form3"));
    EXPECT_EQ(At("Form3", "ADescriptionAsset").Text(), "Desk");
    // A power cut now loses nothing either: it is kept beside the folder's file, on this desk.
    door.LetTimePass();
    Now().screens.RunDeferred();
    const std::vector<TypedEntries::Line> kept = TypedEntries(service.file).All();
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].entry.typed, "Desk");
    server.Start();
    door.messages.clear();
    Turn(Now(), "Form3", "Page2");
    EXPECT_TRUE(Shows("Side2Form1"));
    EXPECT_TRUE(door.messages.empty());
    EXPECT_EQ(Stored("P11D", "ADescriptionAsset"), "Desk");
}

TEST_F(BrokenConnection, LeavesANotepadOpenWhoseOkStoresWhenTheServerIsBack)
{
    Screen* const notepad = Now().screens.Show("KNotepad");
    notepad->box("Description", 1).SetText("Desk");
    server.Kill();
    notepad->Click(notepad->box("cmdOK"));
    EXPECT_EQ(TakeMessage().text, "Unable to update database");
    ASSERT_NE(Now().screens.Find("KNotepad"), nullptr);
    server.Start();
    notepad->Click(notepad->box("cmdOK"));
    EXPECT_EQ(Now().screens.Find("KNotepad"), nullptr);
    EXPECT_EQ(Stored("KNotepad", "Description1"), "Desk");
}

// ---- whoever may only read ------------------------------------------------------------------------

class MayOnlyRead : public ManyClerks {
protected:
    MayOnlyRead()
    {
        ServerService service = *ReadService(Now().ClientDatabasePath());
        const std::string& schema = service.schema;
        ExecuteRaw(service.file,
                   "DO $$BEGIN IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname='looks') THEN CREATE ROLE "
                   "looks LOGIN; END IF; END$$");
        ExecuteRaw(service.file, fmt::format("GRANT USAGE ON SCHEMA {} TO looks", schema));
        ExecuteRaw(service.file, fmt::format("GRANT SELECT ON ALL TABLES IN SCHEMA {} TO looks", schema));
        Create(Employer, "Joe", "Brown"); // whom nobody has opened yet
        for (auto& [name, value] : service.settings)
            if (name == "user")
                value = "looks";
        WriteService(service);
    }
};

TEST_F(MayOnlyRead, LooksAtEverybodyWithoutAWord)
{
    Now().CurrentEmployee = "Joe Brown";
    ASSERT_NE(OpenPage1(Now(), "Opening"), nullptr);
    Now().screens.RunDeferred();
    Turn(Now(), "Form3", "Page2");
    Turn(Now(), "Side2Form1", "Page1");
    for (const char* name : {"KNotepad", "FNotepad"}) {
        Screen* const notepad = Now().screens.Show(name);
        ASSERT_NE(notepad, nullptr);
        notepad->Click(notepad->box(notepad->FindBox("cmdCancel") != nullptr ? "cmdCancel" : "Cancel"));
    }
    OpenAt(Now());
    EXPECT_TRUE(door.messages.empty()) << door.messages.front().text;
}

TEST_F(MayOnlyRead, IsToldInWordsWhatTheServerRefuses)
{
    Type(Now(), "Form3", "ADescriptionAsset", "Desk");
    Turn(Now(), "Form3", "Page2");
    const std::string text = TakeMessage().text;
    EXPECT_NE(text.find("The server lets you look, but not store anything"), std::string::npos) << text;
    EXPECT_TRUE(Shows("Form3"));
    Type(Now(), "Form3", "ADescriptionAsset", "");
    Turn(Now(), "Form3", "Page2");
    EXPECT_TRUE(Shows("Side2Form1"));
}

} // namespace
} // namespace quillmere::test
