// A client folder goes from a file to a server and back; whatever fails on the way leaves it as it was.
#include "clientdb/ShareFolder.h"

#include "FolderSyncs.h"
#include "clientdb/SafetyCopies.h"
#include "clientdb/UserOperation.h"
#include "clientdb/store/FileEngine.h"
#include "clientdb/store/FormMarks.h"
#include "clientdb/store/History.h"
#include "clientdb/store/IdleLinks.h"
#include "clientdb/store/OnlineCopy.h"
#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableCopy.h"
#include "support/PrivateServer.h"
#include "support/ProgramFixture.h"
#include "support/RawDatabase.h"
#include "support/SmallDisk.h"
#include "support/Variable.h"

#include <algorithm>
#include <fmt/format.h>
#include <future>

namespace quillmere::test {
namespace {

std::vector<std::string> Statements(bool besideToo)
{
    std::vector<std::string> statements;
    for (const TableLayout& table : ClientTables()) {
        std::string fields = "rowid";
        for (const Field& field : FieldsOf(table).All())
            fields += ",[" + field.name + "]";
        statements.push_back(fmt::format("SELECT {} FROM [{}] ORDER BY rowid", fields, table.name));
    }
    for (const TableBeside& table : TablesBeside()) {
        std::string fields = fmt::format("[{}]", table.number);
        for (const TableBeside::Column& column : table.columns)
            fields += fmt::format(",quote([{}])", column.name);
        if (besideToo)
            statements.push_back(fmt::format("SELECT {} FROM [{}] ORDER BY 1", fields, table.name));
    }
    return statements;
}

/// All that the tables of the clients hold; those beside them, too, of a file that has them.
std::vector<std::vector<std::string>> Everything(const std::filesystem::path& database, bool besideToo = false)
{
    std::vector<std::vector<std::string>> rows;
    for (const std::string& statement : Statements(besideToo))
        for (std::vector<std::string>& row : RawRows(database, statement))
            rows.push_back(std::move(row));
    return rows;
}

class ShareFolderTest : public ProgramFixture {
protected:
    ShareFolderTest() : database(Now().ClientDatabasePath())
    {
        static int schemas = 0;
        service = SharedServer().Service(database, fmt::format("share{}", ++schemas));
        CreateEmployee(*Noted(), {"Acme", "Jane", "Smith", "1/A"});
        CreateEmployee(*Noted(), {"Acme", "Joe", "Miller", "1/A"});
        Set("Jane Smith", "a\xff\xf4\x8f\xbf\xbf\xc3\xa9");
        Set("Joe Miller", "2");
        EXPECT_TRUE(FormMarks(*Noted()).Set(FormMark::Printed, "Acme", "Jane Smith", "2011-07-01"));
    }
    ~ShareFolderTest() override { CloseIdleServerLinks(); }

    std::unique_ptr<Database> Noted() const
    {
        auto note = std::make_shared<OperationNote>();
        note->who = "anna@desk";
        return std::make_unique<Database>(Database::OpenDatabase(database, OpenMode::ReadWrite, note));
    }
    void Set(std::string_view employee, std::string_view text) const
    {
        const std::unique_ptr<Database> clients = Noted();
        SetIn(*clients, employee, text);
    }
    static void SetIn(Database& clients, std::string_view employee, std::string_view text)
    {
        Recordset records = clients.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek("Acme", employee);
        records.Edit();
        records.SetField("ACashEqu", text);
        records.Update();
    }
    std::string Reads(std::string_view employee) const
    {
        Database clients = Database::OpenDatabase(database);
        Recordset records = clients.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek("Acme", employee);
        return records.NoMatch() ? "nobody" : std::string(records.Field("ACashEqu"));
    }

    /// Goes the whole way, without a window.
    static void Go(const std::unique_ptr<FolderMove>& move)
    {
        while (move->GoOn()) {
        }
    }
    void Share(std::function<void()> keep = [] {}) const { Go(ShareFolderOnServer(service, std::move(keep))); }
    void Unshare() const { Go(UnshareFolder(service, service.schema + "_left")); }

    bool HasSchema(const std::string& schema) const
    {
        ServerLink link(service);
        const std::string ask = fmt::format("SELECT nspname::text FROM pg_namespace WHERE nspname='{}'", schema);
        return PQntuples(link.Wait(link.Send(ask, ask, {}, true)).get()) == 1;
    }
    void Say(const std::string& statement) const
    {
        ServerLink link(service);
        static_cast<void>(link.Wait(link.Send(statement, statement, {}, true)));
    }
    /// What the work fails with.
    static std::string FailureOf(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "nothing";
    }

    void OpenWindow(const ServerService& to)
    {
        Menu("mnuShare");
        At("ShareFolder", "ServerHost").SetText(to.settings[0].second);
        At("ShareFolder", "ServerDatabase").SetText(to.settings[1].second);
        At("ShareFolder", "ServerUser").SetText(to.settings[2].second);
        At("ShareFolder", "ServerSchema").SetText(to.schema);
    }
    void Wait()
    {
        while (Now().screens.HasDeferred())
            Now().screens.RunDeferred();
    }
    std::string Progress() { return At("ShareFolder", "ShareProgress").Text(); }

    std::filesystem::path database;
    ServerService service;
};

// ---- the way there and back -----------------------------------------------------------------------

TEST_F(ShareFolderTest, EverythingGoesThereAndComesBack)
{
    Wait(); // the copy of the day
    OpenEmployee();
    OpenWindow(service);
    EXPECT_EQ(At("ShareFolder", "ShareGo").Text(), "&Share");
    Click("ShareFolder", "ShareGo");
    EXPECT_FALSE(Shows("Form3")) << "what is open is closed by the road of every command";
    EXPECT_TRUE(At("ShareFolder", "ServerHost").ReadOnly());
    Wait();
    EXPECT_EQ(TakeMessage().text, "");
    EXPECT_EQ(Progress(), "Shared. The file is kept as a safety copy.");
    ASSERT_TRUE(ReadService(database));
    EXPECT_EQ(Content(database), fmt::format("[quillmere]\nhost={}\ndbname=postgres\nuser=quillmere\nschema={}\n",
                                             service.settings[0].second, service.schema));
    const std::vector<SafetyCopy> copies = SafetyCopiesOf(database);
    ASSERT_FALSE(copies.empty());
    EXPECT_EQ(copies[0].reason, CopyReason::Share);
    const auto before = Everything(copies[0].file);
    EXPECT_EQ(Everything(database), before);
    EXPECT_EQ(ShareWords(Now()), "Back to a File...");
    EXPECT_EQ(Now().screens.Find("ShareFolder")->Caption(), "Back to a File");

    Set("Joe Miller", "written on the server");
    Create("Bolt", "Ann", "Baker");
    const auto later = Everything(database);
    EXPECT_NE(later, before);
    Click("ShareFolder", "ShareGo");
    Wait();
    EXPECT_EQ(TakeMessage().text, "");
    EXPECT_EQ(Progress(), "The clients are in a file again. What was on the server is kept there.");
    EXPECT_FALSE(ReadService(database));
    EXPECT_EQ(Everything(database), later);
    EXPECT_EQ(Reads("Jane Smith"), "a\xff\xf4\x8f\xbf\xbf\xc3\xa9");
    EXPECT_FALSE(HasSchema(service.schema));
    EXPECT_TRUE(HasSchema(service.schema + "_until_20110630_120000"));
    EXPECT_EQ(ShareWords(Now()), "Share This Folder...");
    // The history has gone along both ways, and goes on.
    History history(*Noted());
    EXPECT_TRUE(history.Undo(history.Operations({}, 5).at(1).number).empty());
    EXPECT_EQ(Reads("Joe Miller"), "2");
    // The name of the schema is free again.
    Click("ShareFolder", "ShareGo");
    Wait();
    EXPECT_TRUE(ReadService(database)) << TakeMessage().text;
    EXPECT_EQ(Reads("Joe Miller"), "2");
}

TEST_F(ShareFolderTest, NothingIsLostOnTheWayThereAndBack)
{
    const auto before = Everything(database, true);
    Share();
    Unshare();
    EXPECT_EQ(Everything(database, true), before);
}

TEST_F(ShareFolderTest, ASchemaThatIsThereAndEmptyIsTaken)
{
    Say(fmt::format("CREATE SCHEMA {}", service.schema));
    Share();
    EXPECT_EQ(Reads("Joe Miller"), "2");
}

TEST_F(ShareFolderTest, RecordsThatAreAddedGetNumbersBehindThoseThatWereThere)
{
    Share();
    Create("Acme", "Third", "One");
    const auto numbers = RawRows(database, "SELECT rowid FROM [P11D] ORDER BY rowid");
    ASSERT_EQ(numbers.size(), 3U);
    EXPECT_EQ(numbers[2][0], "'3'");
}

// ---- who is at work meanwhile ---------------------------------------------------------------------

TEST_F(ShareFolderTest, NobodyWritesIntoTheFileOnceItIsBeingCopied)
{
    Database desk = Database::OpenDatabase(database);
    SetIn(desk, "Joe Miller", "3");
    const auto before = Everything(database);
    const auto move = ShareFolderOnServer(service, [] {});
    EXPECT_NE(FailureOf([&] { SetIn(desk, "Joe Miller", "meanwhile"); }), "nothing");
    Go(move);
    // Its file has no name any more.
    EXPECT_NE(FailureOf([&] { SetIn(desk, "Joe Miller", "afterwards"); }), "nothing");
    EXPECT_EQ(Everything(database), before);
    Set("Joe Miller", "on the server");
    EXPECT_EQ(Reads("Joe Miller"), "on the server");
}

TEST_F(ShareFolderTest, AFileThatSomebodyWritesToIsNotShared)
{
    Database desk = Database::OpenDatabase(database);
    WriteBatch batch(desk);
    batch.Begin();
    SetIn(desk, "Joe Miller", "3");
    EXPECT_NE(FailureOf([&] { Share(); }), "nothing");
    EXPECT_FALSE(HasSchema(service.schema));
    batch.Commit();
    Share();
    EXPECT_EQ(Reads("Joe Miller"), "3");
}

TEST_F(ShareFolderTest, NobodyWritesOnTheServerOnceItIsBeingCopied)
{
    Share();
    const std::unique_ptr<Database> clerk = Noted();
    {
        WriteBatch batch(*clerk);
        batch.Begin();
        SetIn(*clerk, "Joe Miller", "3");
        EXPECT_EQ(FailureOf([&] { Unshare(); }), "Somebody else is writing in this folder just now.");
        batch.Commit();
    }
    ASSERT_TRUE(ReadService(database));
    const auto move = UnshareFolder(service, service.schema + "_left");
    EXPECT_EQ(Reads("Joe Miller"), "3") << "others read on";
    EXPECT_NE(FailureOf([&] { SetIn(*clerk, "Joe Miller", "meanwhile"); }), "nothing");
    Go(move);
    EXPECT_EQ(Reads("Joe Miller"), "3");
    EXPECT_NE(FailureOf([&] { SetIn(*clerk, "Joe Miller", "afterwards"); }), "nothing");
    Set("Joe Miller", "in the file");
    EXPECT_EQ(Reads("Joe Miller"), "in the file");
}

// ---- what fails -----------------------------------------------------------------------------------

/// The way there fails, is told in the window, and leaves the file as it was and nothing on the server.
class ShareFails : public ShareFolderTest {
protected:
    ShareFails() : before(Content(database)) { Wait(); }

    void Fails(const ServerService& to, std::string_view why)
    {
        OpenWindow(to);
        Click("ShareFolder", "ShareGo");
        Wait();
        const Message told = TakeMessage();
        EXPECT_EQ(told.title, "Share This Folder");
        EXPECT_TRUE(told.text.starts_with("The folder is as it was.\n\n")) << told.text;
        EXPECT_NE(told.text.find(why), std::string::npos) << told.text;
        EXPECT_TRUE(Content(database) == before);
        EXPECT_EQ(Progress(), "");
        EXPECT_TRUE(At("ShareFolder", "ShareGo").Enabled());
        EXPECT_FALSE(At("ShareFolder", "ServerHost").ReadOnly());
        Click("ShareFolder", "ShareCancel");
        EXPECT_FALSE(Shows("ShareFolder"));
        Set("Joe Miller", "4");
        EXPECT_EQ(Reads("Joe Miller"), "4") << "nobody is kept out any more";
    }
    std::string before;
};

TEST_F(ShareFails, WithoutAServer)
{
    ServerService nowhere = service;
    nowhere.settings[0].second = (root / "nowhere").string();
    Fails(nowhere, "No such file or directory");
}

TEST_F(ShareFails, WithoutTheDatabase)
{
    ServerService other = service;
    other.settings[1].second = "no_such_database";
    Fails(other, "does not exist");
}

TEST_F(ShareFails, WithTheWrongPasswordOrNone)
{
    Say("CREATE ROLE locked LOGIN PASSWORD 'right' IN ROLE quillmere");
    ServerService locked = service;
    locked.settings[2].second = "locked";
    const Variable file("PGPASSFILE", (root / "passwords").c_str());
    {
        SCOPED_TRACE("none");
        Fails(locked, "no password supplied");
    }
    before = Content(database);
    Store(root / "passwords", "*:*:*:*:wrong\n");
    std::filesystem::permissions(root / "passwords", std::filesystem::perms::owner_read);
    Fails(locked, "password authentication failed");
    Store(root / "passwords.new", "*:*:*:*:right\n");
    std::filesystem::rename(root / "passwords.new", root / "passwords");
    std::filesystem::permissions(root / "passwords", std::filesystem::perms::owner_read);
    Say("GRANT CREATE ON DATABASE postgres TO locked");
    service = locked;
    Share();
    EXPECT_EQ(Reads("Joe Miller"), "4");
}

TEST_F(ShareFails, InASchemaThatIsInUse)
{
    Say(fmt::format("CREATE SCHEMA {}", service.schema));
    Say(fmt::format("CREATE TABLE {}.others(a text)", service.schema));
    Fails(service, "is not empty");
}

TEST_F(ShareFails, ForARoleThatMayOnlyRead)
{
    Say(fmt::format("CREATE ROLE reader_{} LOGIN", service.schema));
    ServerService reading = service;
    reading.settings[2].second = "reader_" + service.schema;
    Fails(reading, "permission denied");
    EXPECT_FALSE(HasSchema(service.schema));
}

TEST_F(ShareFails, OfADamagedFile)
{
    std::string damaged = before;
    damaged.replace(8192, 4096, std::string(4096, '\0'));
    Store(database, damaged);
    EXPECT_NE(FailureOf([&] { Share(); }).find("damaged"), std::string::npos);
    EXPECT_FALSE(HasSchema(service.schema));
    EXPECT_TRUE(Content(database) == damaged);
}

TEST_F(ShareFails, WithoutASchemaThatCanBeOne)
{
    OpenWindow(service);
    At("ShareFolder", "ServerSchema").SetText("Not one");
    Click("ShareFolder", "ShareGo");
    EXPECT_NE(TakeMessage().text.find("schema"), std::string::npos);
    EXPECT_TRUE(Content(database) == before);
    std::string typed;
    for (const char32_t key : U"a Schema_2;")
        if (const char32_t in = Now().screens.Find("ShareFolder")->Key(At("ShareFolder", "ServerSchema"), key); in != 0)
            typed += static_cast<char>(in);
    EXPECT_EQ(typed, "aschema_2");
}

/// The safety copy has no place on the disk.
TEST_F(ShareFails, WithoutASafetyCopy)
{
    std::filesystem::remove_all(CopiesFolder(database));
    Store(CopiesFolder(database), "not a folder");
    Fails(service, "Copies");
    EXPECT_FALSE(HasSchema(service.schema));
}

TEST_F(ShareFails, WhereTheServiceCannotTakeThePlaceOfTheFile)
{
    const auto forbid = [&] {
        std::filesystem::permissions(database, std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::remove);
    };
    EXPECT_NE(FailureOf([&] { Share(forbid); }), "nothing");
    EXPECT_FALSE(HasSchema(service.schema)) << "what was on the server has been taken away again";
    Say(fmt::format("CREATE SCHEMA {}", service.schema));
    EXPECT_NE(FailureOf([&] { Share(forbid); }), "nothing");
    EXPECT_TRUE(HasSchema(service.schema)) << "but for a schema that was there before";
    EXPECT_TRUE(Content(database) == before);
}

TEST_F(ShareFails, OnceItIsCancelled)
{
    OpenWindow(service);
    Click("ShareFolder", "ShareGo");
    Click("ShareFolder", "ShareCancel");
    EXPECT_EQ(Progress(), "Cancelled. The folder is as it was.");
    EXPECT_TRUE(Shows("ShareFolder"));
    Wait();
    EXPECT_TRUE(Content(database) == before);
    EXPECT_FALSE(HasSchema(service.schema));
    Set("Joe Miller", "5");
    Click("ShareFolder", "ShareGo");
    Wait();
    EXPECT_TRUE(ReadService(database)) << TakeMessage().text;
    EXPECT_EQ(Reads("Joe Miller"), "5");
}

/// The server goes down behind so many pieces of the way, wherever that is.
TEST_F(ShareFails, WhenTheServerGoesDown)
{
    const PrivateServer::Sync sync = PrivateServer::Sync::On;
    PrivateServer own(sync);
    service = own.Service(database, "own");
    int pieces = 0;
    for (const auto move = ShareFolderOnServer(service, [] {}); pieces < 20 && move->GoOn();)
        ++pieces;
    for (const int fails : {0, 7, 20}) {
        const std::string why = FailureOf([&] {
            const auto move = ShareFolderOnServer(service, [] {});
            for (int piece = 0; piece < fails; ++piece)
                static_cast<void>(move->GoOn());
            own.Kill();
            Go(move);
        });
        EXPECT_NE(why, "nothing");
        EXPECT_TRUE(Content(database) == before) << why;
        own.Start();
        EXPECT_FALSE(HasSchema("own")) << fails;
    }
}

/// The connection is lost while the server stores the copy: it waits for another server, which is not there, once the
/// copy is on its own disk, and nobody hears of it.
class AnswerIsLost : public ShareFails {
protected:
    AnswerIsLost()
    {
        const auto ask = [this](const std::string& statement) { RawRows(serviceFile, statement); };
        service = own.Service(database, "own");
        ServerService plain = own.Service(serviceFile, "public");
        WriteService(plain);
        ask("ALTER SYSTEM SET synchronous_standby_names='nobody'");
        ask("SELECT pg_reload_conf()");
        service.settings.emplace_back("options", "-c synchronous_commit=on");
    }

    /// Shares the folder on a thread of its own, and once the server waits does what breaks the connection.
    std::string ShareUntil(const std::function<void()>& breaks)
    {
        std::future<std::string> shared = std::async(std::launch::async, [&] { return FailureOf([&] { Share(); }); });
        const auto isOver = [&] { return shared.wait_for(std::chrono::milliseconds(20)) == std::future_status::ready; };
        while (!isOver() &&
               RawRows(serviceFile, "SELECT pid FROM pg_stat_activity WHERE wait_event='SyncRep'").empty()) {
        }
        EXPECT_FALSE(isOver()) << "the end was not waited for";
        breaks();
        return shared.get();
    }
    void Terminate(std::string_view which)
    {
        RawRows(serviceFile,
                fmt::format("SELECT pg_terminate_backend(pid,5000) FROM pg_stat_activity WHERE {}", which));
    }

    PrivateServer own{PrivateServer::Sync::On};
    std::filesystem::path serviceFile{root / "service"};
};

TEST_F(AnswerIsLost, AndTheCopyStandsSoTheFolderIsShared)
{
    EXPECT_EQ(ShareUntil([&] { Terminate("wait_event='SyncRep'"); }), "nothing");
    ASSERT_TRUE(ReadService(database));
    EXPECT_EQ(Reads("Joe Miller"), "2");
    EXPECT_EQ(Reads("Jane Smith"), "a\xff\xf4\x8f\xbf\xbf\xc3\xa9");
}

TEST_F(AnswerIsLost, AndTheServerComesBackWithTheCopySoTheFolderIsShared)
{
    EXPECT_EQ(ShareUntil([&] {
                  own.Kill();
                  own.Start();
              }),
              "nothing");
    ASSERT_TRUE(ReadService(database));
    EXPECT_EQ(Reads("Joe Miller"), "2");
}

TEST_F(AnswerIsLost, AndTheServerDoesNotComeBackSoItIsToldWhatIsNotKnown)
{
    const std::string why = ShareUntil([&] { own.Kill(); });
    EXPECT_NE(why.find("not known whether the server has stored the copy"), std::string::npos) << why;
    EXPECT_NE(why.find("schema own"), std::string::npos) << why;
    EXPECT_TRUE(Content(database) == before);
    own.Start();
    // It stands there; nobody has been told to use it, and it is not taken for the folder's or filled once more.
    EXPECT_NE(FailureOf([&] { Share(); }).find("is not empty"), std::string::npos);
    EXPECT_TRUE(Content(database) == before);
    Set("Joe Miller", "7");
    EXPECT_EQ(Reads("Joe Miller"), "7");
}

/// It is lost on the way there, and the server has stored nothing.
TEST_F(ShareFails, WhereTheServerHasNeverHeardOfTheEnd)
{
    const PrivateServer::Sync sync = PrivateServer::Sync::On;
    PrivateServer own(sync);
    service = own.Service(database, "own");
    const ServerService plain = own.Service(root / "service", "public");
    WriteService(plain);
    SetStoreFaultHook([&](std::string_view statement) {
        if (statement == "COMMIT")
            RawRows(plain.file, "SELECT pg_terminate_backend(pid,5000) FROM pg_stat_activity WHERE "
                                "pid<>pg_backend_pid() AND backend_type='client backend'");
        return SQLITE_OK;
    });
    const std::string why = FailureOf([&] { Share(); });
    SetStoreFaultHook({});
    EXPECT_NE(why.find("connection"), std::string::npos) << why;
    EXPECT_EQ(why.find("not known"), std::string::npos) << why;
    EXPECT_TRUE(Content(database) == before);
    EXPECT_FALSE(HasSchema("own"));
    Share();
    EXPECT_EQ(Reads("Joe Miller"), "2");
}

/// The service is in the place of the file: nothing is taken back any more.
TEST_F(ShareFails, NoLongerOnceTheServiceHasTakenThePlaceOfTheFile)
{
    const auto move = ShareFolderOnServer(service, FailNextFolderSync);
    Go(move);
    EXPECT_FALSE(AwaitsFolderSync());
    EXPECT_NE(move->Remark().find("power cut"), std::string::npos) << move->Remark();
    EXPECT_TRUE(ReadService(database));
    Set("Joe Miller", "on the server");
    EXPECT_EQ(Reads("Joe Miller"), "on the server");
}

/// The same on the way back.
class UnshareFails : public ShareFolderTest {
protected:
    UnshareFails()
    {
        Share();
        before = Content(database);
    }
    /// The folder is as it was, in words or without, and others are not kept out.
    void IsAsItWas()
    {
        EXPECT_EQ(Content(database), before);
        EXPECT_EQ(NamesIn(database.parent_path()).count(database.filename().string()), 1U);
        for (const std::string& name : NamesIn(database.parent_path()))
            EXPECT_FALSE(name.ends_with(".tmp")) << name;
        Set("Joe Miller", "6");
        EXPECT_EQ(Reads("Joe Miller"), "6");
        EXPECT_TRUE(HasSchema(service.schema));
    }
    std::string before;
};

TEST_F(UnshareFails, ForWhomTheSchemaIsNot)
{
    Say(fmt::format("CREATE ROLE clerk_{0} LOGIN", service.schema));
    Say(fmt::format("GRANT USAGE ON SCHEMA {0} TO clerk_{0}", service.schema));
    Say(fmt::format("GRANT SELECT,INSERT,UPDATE,DELETE ON ALL TABLES IN SCHEMA {0} TO clerk_{0}", service.schema));
    ServerService clerk = service;
    clerk.settings[2].second = "clerk_" + service.schema;
    EXPECT_NE(FailureOf([&] { Go(UnshareFolder(clerk, "left")); }).find("Only the owner"), std::string::npos);
    IsAsItWas();
}

TEST_F(UnshareFails, NoLongerOnceTheFileHasTakenThePlaceOfTheService)
{
    Wait(); // the copy of the day
    Menu("mnuShare");
    Click("ShareFolder", "ShareGo");
    EXPECT_EQ(At("ShareFolder", "ShareCancel").Text(), "&Cancel");
    FailNextFolderSync();
    Wait();
    EXPECT_FALSE(AwaitsFolderSync());
    EXPECT_EQ(Progress(), "The clients are in a file again. What was on the server is kept there.");
    EXPECT_EQ(At("ShareFolder", "ShareCancel").Text(), "&Close");
    EXPECT_NE(TakeMessage().text.find("power cut"), std::string::npos);
    EXPECT_FALSE(ReadService(database));
    EXPECT_FALSE(HasSchema(service.schema));
    Set("Joe Miller", "in the file");
    EXPECT_EQ(Reads("Joe Miller"), "in the file");
}

TEST_F(UnshareFails, OnceItIsCancelled)
{
    Menu("mnuShare");
    EXPECT_EQ(At("ShareFolder", "ServerSchema").Text(), service.schema);
    Click("ShareFolder", "ShareGo");
    Click("ShareFolder", "ShareCancel");
    EXPECT_EQ(Progress(), "Cancelled. The folder is as it was.");
    IsAsItWas();
}

TEST_F(UnshareFails, OnAFullDisk)
{
    const SmallDisk disk(200'000);
    if (!disk.Missing().empty())
        GTEST_SKIP() << disk.Missing();
    ServerService there = service;
    there.file = disk.Path() / "clients";
    WriteService(there);
    EXPECT_NE(FailureOf([&] { Go(UnshareFolder(there, "left")); }), "nothing");
    EXPECT_TRUE(ReadService(there.file));
    EXPECT_EQ(NamesIn(disk.Path()), (std::set<std::string>{"clients"}));
    IsAsItWas();
}

TEST_F(UnshareFails, WhenTheServerGoesDown)
{
    const PrivateServer::Sync sync = PrivateServer::Sync::On;
    PrivateServer own(sync);
    Unshare();
    service = own.Service(database, "own");
    Share();
    before = Content(database);
    const std::string why = FailureOf([&] {
        const auto move = UnshareFolder(service, "left");
        for (int piece = 0; piece < 7; ++piece)
            static_cast<void>(move->GoOn());
        own.Kill();
        Go(move);
    });
    EXPECT_NE(why, "nothing");
    own.Start();
    IsAsItWas();
    CloseIdleServerLinks();
}

// ---- the comparison -------------------------------------------------------------------------------

/// Whatever is otherwise after the copying is found.
TEST_F(ShareFolderTest, ADifferenceIsFound)
{
    const auto copy = root / "copy";
    FileConnection from(database, SQLITE_OPEN_READWRITE);
    for (const char* change :
         {"UPDATE [P11D] SET [ACashEqu]='3' WHERE rowid=2", "UPDATE [P11D] SET [ACashEqu]=NULL WHERE rowid=1",
          "UPDATE [KNotepad] SET [Description20]='' WHERE rowid=1", "DELETE FROM [HNotepad2] WHERE rowid=1",
          "INSERT INTO [ANotepad]([Name]) VALUES('more')", "UPDATE [ANotepad] SET rowid=9 WHERE rowid=2",
          "UPDATE [HistoryOperation] SET [Undoes]=5 WHERE [Number]=1",
          "UPDATE [HistoryChange] SET [Changes]=x'00' WHERE [Number]=1", "UPDATE [FormMarks] SET [Day]='2011-07-02'",
          "SELECT 1"}) {
        std::filesystem::remove(copy);
        CreateTables(copy);
        FileConnection into(copy, SQLITE_OPEN_READWRITE);
        TableCopy copying(from, into);
        copying.Copy();
        ExecuteRaw(copy, change);
        EXPECT_EQ(FailureOf([&] { copying.Compare(); }) == "nothing", std::string_view(change) == "SELECT 1") << change;
    }
}

// ---- copies of a shared folder --------------------------------------------------------------------

/// Backup, the automatic copies, and Put Back, through their windows.
TEST_F(ShareFolderTest, CopiesOfASharedFolderAreFilesAndOneOfThemIsPutBack)
{
    Share();
    door.savePath = (root / "backup.mdb").string();
    Click("MDIForm1", "cmdFile", 8);
    Click("frmBackup", "cmdSave");
    EXPECT_NE(TakeMessage().text.find("has been saved"), std::string::npos);
    EXPECT_EQ(Everything(root / "backup.mdb"), Everything(database));
    const auto before = Everything(database);

    Wait();
    KeepCopy(Now(), CopyReason::Delete);
    ASSERT_EQ(SafetyCopiesOf(database).at(0).reason, CopyReason::Delete);
    EXPECT_FALSE(ReadService(SafetyCopiesOf(database)[0].file));

    Set("Joe Miller", "afterwards");
    Create("Bolt", "Ann", "Baker");
    Menu("mnuSafetyCopies");
    Wait();
    EXPECT_EQ(At("SafetyCopies", "InUse").Text(), "In use: opened, 3 employees, complete");
    const auto& lines = At("SafetyCopies", "Copies").Entries();
    const auto line = std::ranges::find_if(
        lines, [](const std::string& text) { return text.find("before Delete\t") != std::string::npos; });
    ASSERT_NE(line, lines.end());
    EXPECT_TRUE(line->ends_with("opened, 2 employees, complete")) << *line;
    Mark("SafetyCopies", "Copies", static_cast<int>(line - lines.begin()));
    door.answers = {Answer::Yes};
    Click("SafetyCopies", "CopyPutBack");
    EXPECT_NE(TakeMessage().text.find("Put back the database"), std::string::npos);
    EXPECT_EQ(TakeMessage().text, "");
    EXPECT_TRUE(ReadService(database)) << "the folder stays shared";
    EXPECT_EQ(Everything(database), before);
    EXPECT_EQ(At("SafetyCopies", "InUse").Text(), "In use: opened, 2 employees, complete");
    // The state before it has been kept, and the work goes on.
    EXPECT_EQ(SafetyCopiesOf(database).at(0).reason, CopyReason::PutBack);
    Create("Acme", "Third", "One");
    Set("Third One", "7");
    EXPECT_EQ(Reads("Third One"), "7");
}

TEST_F(ShareFolderTest, AFailureLeavesASharedFolderAsItWasBeforePutBack)
{
    const auto copy = root / "copy.mdb";
    CopyDatabase(database, copy);
    Share();
    Set("Joe Miller", "later");
    const std::unique_ptr<Database> clerk = Noted();
    WriteBatch batch(*clerk);
    batch.Begin();
    SetIn(*clerk, "Jane Smith", "in hand");
    EXPECT_EQ(FailureOf([&] { PutBackDatabase(copy, database); }), "Somebody else is writing in this folder just now.");
    batch.Commit();
    EXPECT_EQ(Reads("Joe Miller"), "later");
    EXPECT_EQ(Reads("Jane Smith"), "in hand");
}

} // namespace
} // namespace quillmere::test
