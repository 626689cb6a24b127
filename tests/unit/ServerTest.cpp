// What is so with a shared client folder alone: its tables are on a server.
#include "clientdb/Employees.h"
#include "clientdb/store/Backup.h"
#include "clientdb/store/FormMarks.h"
#include "clientdb/store/History.h"
#include "clientdb/store/IdleLinks.h"
#include "clientdb/store/OnlineCopy.h"
#include "clientdb/store/OperationNote.h"
#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/ServerWords.h"
#include "support/PrivateServer.h"
#include "support/RawDatabase.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <csignal>
#include <fmt/format.h>
#include <span>
#include <string>
#include <unistd.h>
#include <vector>

namespace quillmere::test {
namespace {

class Server : public ::testing::Test {
protected:
    Server()
    {
        static int schemas = 0;
        file = folder / "clients";
        service = SharedServer().Service(file, fmt::format("server{}", ++schemas));
        CreateServerTables(service);
        CloseIdleServerLinks(); // so that the next opening looks at the tables
        WriteService(service);
    }

    Database Open(OpenMode mode = OpenMode::ReadWrite) const
    {
        auto note = std::make_shared<OperationNote>();
        note->who = "anna@desk";
        return Database::OpenDatabase(file, mode, note);
    }

    static void Set(Database& database, std::string_view employee, std::string_view text)
    {
        Recordset records = database.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek("Acme", employee);
        records.Edit();
        records.SetField("ACashEqu", text);
        records.Update();
    }
    static std::string Reads(Database& database, std::string_view employee)
    {
        Recordset records = database.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek("Acme", employee);
        return records.NoMatch() ? "nobody" : std::string(records.Field("ACashEqu"));
    }

    TemporaryFolder folder;
    std::filesystem::path file;
    ServerService service;
};

// ---- where it is ----------------------------------------------------------------------------------

TEST_F(Server, TheFileInTheFolderNamesItAndNoPassword)
{
    EXPECT_EQ(Content(file), fmt::format("[quillmere]\nhost={}\ndbname=postgres\nuser=quillmere\nschema={}\n",
                                         service.settings[0].second, service.schema));
    for (const char* wrong : {"[x]\nhost=h\npassword=secret\nschema=a\n", "[x]\nhost=h\n", "[x]\nschema=A b\n",
                              "[x]\nschema=a;drop\n", "[x]\nhost\nschema=a\n", "[x]\nschema=a\ncopies=no\n"}) {
        Store(file, wrong);
        EXPECT_THROW(Open(), StoreError) << wrong;
    }
    for (const std::string& other : {std::string("# nothing\n"), std::string("[QLite format 3\0\n", 17)}) {
        Store(file, other);
        EXPECT_FALSE(ReadService(file)) << other;
    }
}

TEST_F(Server, OneThatIsNotThereOrHasOtherTablesIsNotOpened)
{
    ExecuteRaw(file, "DROP INDEX \"KNotepad_IndKey\"");
    EXPECT_THROW(Open(), StoreError);
    ExecuteRaw(file, "ALTER TABLE [ANotepad] ADD COLUMN [More] text");
    EXPECT_THROW(Open(), StoreError);
    ExecuteRaw(file, "DROP TABLE [ANotepad]");
    try {
        Open();
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_NE(std::string(failure.what()).find("its table ANotepad is missing"), std::string::npos);
    }
    service.settings[0].second = (folder / "nowhere").string();
    WriteService(service);
    try {
        Open();
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.OutOfReach());
    }
}

/// A process of the server that dies has no last words.
TEST_F(Server, AConnectionThatIsLostWithoutAWordIsToldInOneLine)
{
    const PrivateServer::Sync sync = PrivateServer::Sync::Off;
    PrivateServer own(sync);
    ServerLink link(own.Service(file, "own"));
    const std::string ask = "SELECT pg_backend_pid()::text";
    const auto answer = link.Wait(link.Send(ask, ask, {}, true));
    ASSERT_EQ(::kill(std::stoi(PQgetvalue(answer.get(), 0, 0)), SIGKILL), 0);
    try {
        static_cast<void>(link.Wait(link.Send(ask, ask, {}, true)));
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.OutOfReach());
        EXPECT_STREQ(failure.what(), "The connection to the server is lost: server closed the connection unexpectedly");
    }
}

/// The library takes no more than 65,535 parameters.
TEST_F(Server, WhatFailsOnThisSideIsNotToldAsALostConnection)
{
    ServerLink link(service);
    const std::string ask = "SELECT 1";
    const std::vector<ServerLink::Parameter> tooMany(65'536);
    for (int times = 0; times < 2; ++times)
        try {
            static_cast<void>(link.Send(ask, ask, times == 0 ? std::span(tooMany) : std::span(tooMany).first(0), true));
            ADD_FAILURE();
        } catch (const StoreError& failure) {
            EXPECT_FALSE(failure.OutOfReach());
            EXPECT_STREQ(failure.what(), "The server's library cannot go on: number of parameters must be between 0 "
                                         "and 65535");
        }
    EXPECT_FALSE(link.IsAlive()) << "the statement has been prepared, and nobody would take the answer to that";
}

/// The server stops reading while nobody takes its answers, and these come to more than the way there holds.
TEST_F(Server, APipelineThatIsFullBothWaysDoesNotHang)
{
    constexpr int Statements = 2500, Rows = 3; // more than wait for each other
    const std::string text(20'000, 'x'), ask = fmt::format("SELECT $1::text FROM generate_series(1,{})", Rows);
    const ServerLink::Parameter sent{.data = text.data(), .size = text.size()};
    ServerLink link(service);
    const std::int64_t before = ServerLink::RoundTrips();
    std::vector<ServerLink::Ticket> wanted;
    ::alarm(300); // the end of a test that hangs
    for (int statement = 0; statement < Statements; ++statement) {
        const bool isWanted = statement % 100 == 99;
        const ServerLink::Ticket ticket = link.Send(ask, ask, std::span(&sent, 1), isWanted);
        if (isWanted)
            wanted.push_back(ticket);
    }
    for (const ServerLink::Ticket ticket : wanted) {
        const ServerLink::Result answer = link.Wait(ticket);
        ASSERT_EQ(PQntuples(answer.get()), Rows);
        EXPECT_EQ(std::string_view(PQgetvalue(answer.get(), Rows - 1, 0)), text);
    }
    ::alarm(0);
    EXPECT_EQ(ServerLink::RoundTrips() - before, 2);
}

TEST_F(Server, ADatabaseThatIsClosedHoldsNothingOfWhatWasForeseenInIt)
{
    {
        Database database = Open();
        // So many that a part of them is on its way at once.
        for (int employee = 0; employee < 400; ++employee)
            database.WillSeek("P11D", "Acme", fmt::format("Jane {}", employee));
    }
    ServerLink other(service);
    for (const char* statement : {"BEGIN", "LOCK TABLE \"P11D\" IN ACCESS EXCLUSIVE MODE", "ROLLBACK"})
        EXPECT_NO_THROW(static_cast<void>(other.Wait(other.Send(statement, statement, {}, true)))) << statement;
}

TEST_F(Server, AConnectionThatBreaksIsMadeAnew)
{
    const PrivateServer::Sync sync = PrivateServer::Sync::On;
    PrivateServer own(sync);
    service = own.Service(file, "own");
    CreateServerTables(service);
    WriteService(service);
    {
        Database database = Open();
        CreateEmployee(database, {"Acme", "Jane", "Smith", ""});
        Set(database, "Jane Smith", "1");
        own.Kill();
        try {
            Set(database, "Jane Smith", "2");
            ADD_FAILURE();
        } catch (const StoreError& failure) {
            EXPECT_TRUE(failure.OutOfReach()) << failure.what();
        }
    }
    EXPECT_THROW(Open(), StoreError);
    own.Start();
    Database database = Open();
    EXPECT_EQ(Reads(database, "Jane Smith"), "1") << "what was stored is there, and nothing else";
    Set(database, "Jane Smith", "3");
    EXPECT_EQ(Reads(database, "Jane Smith"), "3");
}

// ---- several at once ------------------------------------------------------------------------------

TEST_F(Server, TwoWriteToDifferentEmployeesWithoutWaiting)
{
    Database first = Open(), second = Open();
    CreateEmployee(first, {"Acme", "Jane", "Smith", ""});
    CreateEmployee(first, {"Acme", "Joe", "Smith", ""});
    WriteBatch batch(first);
    batch.Begin();
    Set(first, "Jane Smith", "1");
    Set(second, "Joe Smith", "2");
    EXPECT_EQ(Reads(second, "Jane Smith"), "") << "it is not stored yet";
    try {
        Set(second, "Jane Smith", "3");
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.OutOfReach()) << failure.what();
    }
    batch.Commit();
    EXPECT_EQ(Reads(second, "Jane Smith"), "1");
    Set(second, "Jane Smith", "3");
    EXPECT_EQ(Reads(first, "Jane Smith"), "3");
}

TEST_F(Server, OperationsAtTheSameTimeHaveTheirOwnChanges)
{
    for (const char* name : {"Jane", "Joe"}) {
        Database database = Open();
        CreateEmployee(database, {"Acme", name, "Smith", ""});
    }
    Database first = Open(), second = Open();
    WriteBatch one(first), two(second);
    Set(first, "Jane Smith", "1");
    Set(second, "Joe Smith", "2");
    two.Commit();
    one.Commit();
    Database reader = Open();
    History history(reader);
    const auto operations = history.Operations({}, 10);
    ASSERT_EQ(operations.size(), 4U);
    for (const PastOperation& operation : {operations[0], operations[1]}) {
        const auto changes = history.Changes(operation.number, 10);
        ASSERT_EQ(changes.size(), 1U);
        ASSERT_EQ(changes[0].fields.size(), 1U);
        EXPECT_EQ(changes[0].fields[0].after, changes[0].employee == "Jane Smith" ? "1" : "2");
        EXPECT_EQ(operation.employee, changes[0].employee);
    }
    EXPECT_TRUE(History(reader).Undo(operations[1].number).empty());
}

TEST_F(Server, ARoleThatMayOnlyReadIsToldSo)
{
    Database database = Open();
    CreateEmployee(database, {"Acme", "Jane", "Smith", ""});
    ExecuteRaw(file, fmt::format("CREATE ROLE reader_{} LOGIN", service.schema));
    ExecuteRaw(file, fmt::format("GRANT USAGE ON SCHEMA {0} TO reader_{0}", service.schema));
    ExecuteRaw(file, fmt::format("GRANT SELECT ON ALL TABLES IN SCHEMA {0} TO reader_{0}", service.schema));
    ServerService reading = service;
    reading.settings[2].second = "reader_" + service.schema;
    WriteService(reading);
    Database reader = Open();
    EXPECT_EQ(Reads(reader, "Jane Smith"), "");
    try {
        Set(reader, "Jane Smith", "1");
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.OutOfReach()) << failure.what();
        EXPECT_NE(std::string(failure.what()).find("permission denied"), std::string::npos) << failure.what();
    }
    EXPECT_EQ(Reads(reader, "Jane Smith"), "");
}

// ---- round trips ----------------------------------------------------------------------------------

TEST_F(Server, AScanAndAListTakeFewRoundTrips)
{
    Database database = Open();
    for (int i = 0; i < 30; ++i)
        CreateEmployee(database, {fmt::format("Employer {}", i % 7), "Jane", fmt::format("Smith {}", i), ""});
    const auto trips = [&](const auto& work) {
        const std::int64_t before = ServerLink::RoundTrips();
        work();
        return ServerLink::RoundTrips() - before;
    };
    EXPECT_EQ(trips([&] { EXPECT_EQ(database.EmployersInOrder("P11D").size(), 7U); }), 1);
    Open().Close();
    EXPECT_EQ(trips([&] { Open().Close(); }), 0) << "a connection that waits is taken again";
    EXPECT_EQ(trips([&] {
                  Recordset records = database.OpenRecordset("P11D");
                  records.Index("IndKey");
                  records.Seek("Employer 3", "Jane Smith 3");
                  EXPECT_EQ(records.Field("Surname"), "Smith 3");
                  EXPECT_EQ(records.Field("FirstName"), "Jane");
              }),
              1);
}

/// What a notepad's Ok does: each field in a write of its own, and then those of the page.
TEST_F(Server, SingleFieldsOfARecordThatIsHeldAreWrittenWithoutWaiting)
{
    {
        Database database = Open();
        CreateEmployee(database, {"Acme", "Jane", "Smith", ""});
    }
    const auto store = [&](int fields) {
        Database database = Open();
        const std::int64_t before = ServerLink::RoundTrips();
        WriteBatch batch(database);
        batch.Begin();
        for (const char* table : {"KNotepad", "P11D"}) {
            Recordset records = database.OpenRecordset(table);
            records.Index("IndKey");
            records.Seek("Acme", "Jane Smith");
            const auto all = FieldsOf(FindTable(table)).All();
            for (std::size_t field = 0; field < static_cast<std::size_t>(fields); ++field) {
                records.Edit();
                records.SetField(all[all.size() - 1 - field].name, fmt::format("{}", fields));
                records.Update();
            }
        }
        batch.Commit();
        return ServerLink::RoundTrips() - before;
    };
    store(2);
    const std::int64_t few = store(5);
    EXPECT_LE(few, 8);
    EXPECT_EQ(store(40), few) << "more fields cost no more of them";
    Database database = Open();
    Recordset records = database.OpenRecordset("KNotepad");
    records.MoveFirst();
    const auto all = FieldsOf(FindTable("KNotepad")).All();
    EXPECT_EQ(records.Field(all.back().name), "40");
    History history(database);
    const auto operations = history.Operations({}, 10);
    ASSERT_EQ(operations.size(), 4U);
    EXPECT_EQ(history.Changes(operations[0].number, 10).size(), 2U);
    EXPECT_TRUE(history.Undo(operations[0].number).empty());
    EXPECT_EQ(RawRows(file, fmt::format("SELECT [{}] FROM [KNotepad]", all.back().name))[0][0], "'5'");
}

// ---- copies ---------------------------------------------------------------------------------------

TEST_F(Server, ACopyIsAFileThatHoldsTheSame)
{
    Database database = Open();
    for (int i = 0; i < 3; ++i)
        CreateEmployee(database, {"Acme", "Jane", fmt::format("Smith {}", i), ""});
    Database later = Open();
    Set(later, "Jane Smith 1", std::string("a\0\xff\xf4\x8f\xbf\xbf\xc3\xa9", 9));
    ASSERT_TRUE(FormMarks(database).Set(FormMark::Printed, "Acme", "Jane Smith 1", "2011-07-01"));
    const auto copy = folder / "copy";
    ASSERT_TRUE(BackUpDatabase(file, copy));
    EXPECT_EQ(LookAtDatabase(copy), LookAtDatabase(file));
    EXPECT_EQ(LookAtDatabase(copy).employees, 3);
    for (const TableLayout& table : ClientTables()) {
        std::string fields = "rowid";
        for (const Field& field : FieldsOf(table).All())
            fields += ",[" + field.name + "]";
        const std::string query = fmt::format("SELECT {} FROM [{}] ORDER BY rowid", fields, table.name);
        if (table.name != "P11D") {
            EXPECT_EQ(RawRows(copy, query), RawRows(file, query)) << table.name;
        }
    }
    Database copied = Database::OpenDatabase(copy);
    EXPECT_EQ(Reads(copied, "Jane Smith 1"), Reads(database, "Jane Smith 1"));
    EXPECT_TRUE(History(copied).IsReadable());
    const auto newest = History(copied).Operations({}, 1);
    ASSERT_EQ(newest.size(), 1U);
    EXPECT_EQ(newest[0].who, "anna@desk");
    EXPECT_FALSE(FormMarks(copied).Of("Acme", "Jane Smith 1").at(FormMark::Printed).isOutdated);
    EXPECT_TRUE(History(copied).Undo(newest[0].number).empty());
    EXPECT_EQ(Reads(copied, "Jane Smith 1"), "");
    Set(copied, "Jane Smith 2", "in the copy");
    Set(database, "Jane Smith 2", "on the server");
    CreateEmployee(database, {"Acme", "Joe", "Miller", ""});
    PutBackDatabase(copy, file);
    EXPECT_EQ(Reads(database, "Jane Smith 2"), "in the copy");
    EXPECT_EQ(Reads(database, "Joe Miller"), "nobody");
    EXPECT_EQ(LookAtDatabase(copy), LookAtDatabase(file));
    Database next = Open();
    CreateEmployee(next, {"Acme", "Joe", "Miller", ""});
    EXPECT_EQ(History(next).Operations({}, 1)[0].who, "anna@desk") << "its numbers go on behind those there are";
}

// ---- words ----------------------------------------------------------------------------------------

TEST(ServerWords, NamesAndParametersAreWrittenTheServersWay)
{
    EXPECT_EQ(ServerStatement("SELECT [A b],'[?]' FROM [T] WHERE [C]=? AND rowid=?"),
              R"(SELECT "A b",'[?]' FROM "T" WHERE "C"=$1 AND rowid=$2)");
    EXPECT_EQ(ServerStatement("UPDATE [T] SET [A]=?1 WHERE [B]=?2 AND [C]=?1"),
              R"(UPDATE "T" SET "A"=$1 WHERE "B"=$2 AND "C"=$1)");
}

RC_GTEST_PROP(ServerWords, AnyBytesAreCarriedAndComeBack, ())
{
    auto text = *rc::gen::arbitrary<std::string>();
    for (const char* piece : {"\xf4\x8f\xbc\x80", "\xf4\x8f\xbf\xbf", "\xf4\x8f", "\xed\xa0\x80", "\xc3\xa9"})
        if (*rc::gen::arbitrary<bool>())
            text.insert(*rc::gen::inRange<std::size_t>(0, text.size() + 1), piece);
    const std::string carried = CarriedText(text).value_or(text);
    RC_ASSERT(carried.find('\0') == std::string::npos);
    RC_ASSERT(UncarriedText(carried).value_or(carried) == text);
    // What the server takes stays taken.
    RC_ASSERT(!CarriedText("\xc3\xa9 \xe6\xbc\xa2 \xf0\x9f\x98\x80"));
}

} // namespace
} // namespace quillmere::test
