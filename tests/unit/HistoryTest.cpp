// The change history of the store: what is noted of each write, and going back.
#include "clientdb/store/History.h"

#include "clientdb/Employees.h"
#include "clientdb/store/Backup.h"
#include "clientdb/store/ChangeBytes.h"
#include "clientdb/store/HistoryTables.h"
#include "clientdb/store/OperationNote.h"
#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableLayouts.h"
#include "support/RawDatabase.h"
#include "support/StoreFixture.h"
#include "support/SyncCounter.h"

#include <rapidcheck/gtest.h>

#include <array>
#include <fmt/format.h>
#include <map>

namespace quillmere::test {
namespace {

/// Every record of every required table, with its number, null told from empty.
using Contents = std::vector<std::string>;

class HistoryTest : public StoreFixture {
protected:
    ~HistoryTest() override { SetStoreFaultHook({}); }

    /// The database as it is opened for an operation.
    Database For(std::string words, std::string who = "anna@desk") const
    {
        auto note = std::make_shared<OperationNote>();
        note->words = std::move(words);
        note->who = std::move(who);
        note->when = "2011-06-30 14:31:07";
        return Database::OpenDatabase(file, OpenMode::ReadWrite, std::move(note));
    }

    void Execute(const std::string& statement) const { ExecuteRaw(file, statement); }
    std::vector<std::vector<std::string>> Rows(const std::string& query) const { return RawRows(file, query); }

    Contents All() const
    {
        std::vector<std::string> queries;
        for (const TableLayout& table : ClientTables())
            queries.push_back(fmt::format("SELECT rowid,* FROM [{}] ORDER BY rowid", table.name));
        const std::vector<RawTable> tables = RawRows(file, queries);
        Contents contents;
        for (std::size_t i = 0; i < tables.size(); ++i)
            for (const auto& row : tables[i])
                contents.push_back(fmt::format("{}: {}", ClientTables()[i].name, fmt::join(row, ",")));
        return contents;
    }

    std::vector<PastOperation> Operations(const History::Wanted& wanted = {}) const
    {
        Database database = Open(OpenMode::ReadOnly);
        return History(database).Operations(wanted, 1000);
    }
    std::vector<std::string> Words(const History::Wanted& wanted = {}) const
    {
        std::vector<std::string> words;
        for (const PastOperation& operation : Operations(wanted))
            words.push_back(operation.words);
        return words;
    }
    std::vector<PastChange> Changes(std::int64_t operation) const
    {
        Database database = Open(OpenMode::ReadOnly);
        return History(database).Changes(operation, 100000);
    }
    std::vector<UndoConflict> Undo(std::int64_t operation, const std::string& words = "Undo") const
    {
        Database database = For(words);
        return History(database).Undo(operation);
    }
    std::int64_t Newest() const { return Operations().front().number; }

    static void Set(Database& database, std::string_view table, std::string_view employer, std::string_view employee,
                    std::initializer_list<std::pair<std::string_view, std::string_view>> fields)
    {
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek(employer, employee);
        records.Edit();
        for (const auto& [field, text] : fields)
            records.SetField(field, text);
        records.Update();
    }

    void Create(const std::string& employer, const std::string& first, const std::string& surname) const
    {
        Database database = For("New employee " + first + " " + surname);
        CreateEmployee(database, {employer, first, surname, "123/A456"});
    }
};

/// What is so with files alone.
class HistoryFile : public HistoryTest {};

// ---- noting ---------------------------------------------------------------------------------------

TEST_F(HistoryFile, AnEmptyDatabaseHasNoTablesForItAndAReadMakesNone)
{
    EXPECT_TRUE(Operations().empty());
    EXPECT_TRUE(Rows("SELECT name FROM sqlite_schema WHERE name LIKE 'History%'").empty());
}

TEST_F(HistoryTest, AWriteIsNotedWithWordsWhoWhenAndWhatChanged)
{
    Create("Acme", "Jane", "Smith");
    {
        Database database = For("Page 1 stored", "ben@desk2");
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "     10.00"}, {"Surname", "Smith"}, {"NatIns", ""}});
    }
    const auto operations = Operations();
    ASSERT_EQ(operations.size(), 2U);
    EXPECT_EQ(operations[0].words, "Page 1 stored");
    EXPECT_EQ(operations[0].who, "ben@desk2");
    EXPECT_EQ(operations[0].when, "2011-06-30 14:31:07");
    EXPECT_EQ(operations[0].employer, "Acme");
    EXPECT_EQ(operations[0].employee, "Jane Smith");
    EXPECT_EQ(operations[0].records, 1U);
    const auto changes = Changes(operations[0].number);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].table, "P11D");
    EXPECT_EQ(changes[0].kind, ChangeKind::Changed);
    // The surname was that already, and an empty text reads like none.
    ASSERT_EQ(changes[0].fields.size(), 1U);
    EXPECT_EQ(changes[0].fields[0].field, "ACashEqu");
    EXPECT_EQ(changes[0].fields[0].before, "");
    EXPECT_EQ(changes[0].fields[0].after, "     10.00");

    EXPECT_EQ(operations[1].records, 27U);
    EXPECT_EQ(Changes(operations[1].number)[0].kind, ChangeKind::Added);
}

TEST_F(HistoryTest, SingleFieldsOfOneRecordMakeOneChange)
{
    Create("Acme", "Jane", "Smith");
    {
        Database database = For("Services supplied, OK");
        WriteBatch batch(database);
        for (const std::string_view text : {"first", "second"})
            for (int line = 1; line <= 20; ++line)
                Set(database, "KNotepad", "Acme", "Jane Smith", {{fmt::format("Description{}", line), text}});
        Set(database, "P11D", "Acme", "Jane Smith", {{"KCostYou", "1"}});
        batch.Commit();
    }
    const auto changes = Changes(Newest());
    ASSERT_EQ(changes.size(), 2U);
    ASSERT_EQ(changes[0].fields.size(), 20U);
    for (const auto& field : changes[0].fields) {
        EXPECT_EQ(field.before, "");
        EXPECT_EQ(field.after, "second");
    }
    EXPECT_EQ(changes[1].table, "P11D");
}

TEST_F(HistoryTest, DatabasesOpenedForOneOperationWriteOneOperation)
{
    auto note = std::make_shared<OperationNote>();
    note->words = "Both";
    for (const char* surname : {"Smith", "Young"}) {
        Database database = Database::OpenDatabase(file, OpenMode::ReadWrite, note);
        CreateEmployee(database, {"Acme", "Jane", surname, ""});
    }
    EXPECT_EQ(Words(), std::vector<std::string>{"Both"});
    EXPECT_EQ(Changes(Newest()).size(), 27U + 24U);
}

TEST_F(HistoryTest, WhatNobodyNamesIsAChangeAndEachTransactionIsOne)
{
    Database database = Open();
    CreateEmployee(database, {"Acme", "Jane", "Smith", ""});
    Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "1"}});
    EXPECT_EQ(Words(), (std::vector<std::string>{"Change", "Change"}));
}

TEST_F(HistoryFile, ANoteOfTheHistoryTakesNoFurtherSync)
{
    Create("Acme", "Jane", "Smith");
    const auto syncs = [&](bool withHistory) {
        if (!withHistory)
            Execute(fmt::format("DROP TABLE {0}; CREATE TABLE {0}(x)", ChangeTable));
        int count = 0;
        {
            SyncCounter counter;
            {
                Database database = For("Page 1 stored");
                Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", withHistory ? "1" : "2"}});
            }
            count = counter.Count();
        }
        return count;
    };
    const int noted = syncs(true);
    EXPECT_GT(noted, 0);
    EXPECT_EQ(noted, syncs(false));
}

RC_GTEST_PROP(HistoryBytes, ChangesReadAsTheyWereWritten, ())
{
    const auto texts = *rc::gen::container<std::vector<std::pair<std::string, std::string>>>(
        rc::gen::pair(rc::gen::arbitrary<std::string>(), rc::gen::arbitrary<std::string>()));
    std::vector<FieldChange> fields;
    for (std::size_t i = 0; i < texts.size() && i < FieldsOf(FindTable("P11D")).Count(); ++i) {
        const auto& [before, after] = texts[i];
        if (before != after)
            fields.push_back({static_cast<std::uint16_t>(i), i % 5 == 0 ? std::nullopt : std::optional(before), after});
    }
    const TableLayout& table = FindTable("P11D");
    std::string bytes;
    for (int times = 0; times < 2; ++times)
        AppendChange(bytes, table, 1'000'000'000'000, ChangeKind::Changed, EncodeFields(ChangeKind::Changed, fields));
    const auto changes = DecodeChanges(bytes);
    RC_ASSERT(changes.size() == 2U);
    RC_ASSERT(changes[1].table == &table);
    RC_ASSERT(changes[1].record == 1'000'000'000'000);
    const auto& read = changes[1].fields;
    RC_ASSERT(read.size() == fields.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
        RC_ASSERT(read[i].column == fields[i].column);
        RC_ASSERT(read[i].before == fields[i].before);
        RC_ASSERT(read[i].after == fields[i].after);
    }
}

TEST_F(HistoryTest, BytesThatAreNoChangeAreRefusedAndNotReadBeyond)
{
    const auto encoded = [](std::uint16_t column, std::string_view table) {
        std::string bytes;
        AppendChange(bytes, FindTable(table), 7, ChangeKind::Changed,
                     EncodeFields(ChangeKind::Changed, std::vector<FieldChange>{{column, "before", "after"}}));
        return bytes;
    };
    const std::string good = encoded(20, "P11D");
    EXPECT_EQ(DecodeChanges(good).size(), 1U);
    for (std::size_t size = 1; size < good.size(); ++size)
        EXPECT_THROW(DecodeChanges(std::string_view(good).substr(0, size)), StoreError) << size;
    EXPECT_THROW(DecodeChanges(encoded(20, "SpareTable")), StoreError);
    EXPECT_THROW(DecodeChanges(std::string(12, '\xff')), StoreError);
    EXPECT_THROW(DecodeChanges(std::string("\x7f\x01\x00\x00", 4)), StoreError);
    EXPECT_THROW(DecodeChanges(std::string("\x01\x01\x03\x00", 4)), StoreError);
    EXPECT_THROW(DecodeChanges(std::string("\x01\x01\x04\x00", 4)), StoreError);
    std::string added;
    AppendAdded(added, FindTable("P11D"), 7, 0x1122334455667788U);
    EXPECT_EQ(DecodeChanges(added)[0].digest, 0x1122334455667788U);
    for (std::size_t size = 1; size < added.size(); ++size)
        EXPECT_THROW(DecodeChanges(std::string_view(added).substr(0, size)), StoreError) << size;
}

TEST(FieldsDigestTest, TellsRecordsApartByEveryFieldAndStaysAsItIs)
{
    const auto of = [](std::initializer_list<std::pair<std::size_t, std::string_view>> fields) {
        FieldsDigest digest;
        for (const auto& [column, text] : fields)
            digest.Put(column, text);
        return digest.Number();
    };
    // An empty field is like one that was never filled.
    EXPECT_EQ(of({{1, "Jane"}, {2, ""}}), of({{1, "Jane"}}));
    EXPECT_NE(of({{1, "Jane"}}), of({{2, "Jane"}}));
    EXPECT_NE(of({{1, "Jane"}}), of({{1, "Janf"}}));
    EXPECT_NE(of({{1, "Jane"}}), of({{1, std::string_view("Jane\0", 5)}}));
    EXPECT_NE(of({{1, "12345678"}, {2, "9"}}), of({{1, "123456789"}}));
    EXPECT_NE(of({{1, "12345678a"}}), of({{1, "12345678b"}}));
    // Histories hold it.
    EXPECT_EQ(of({{1, "Jane"}, {300, "Smith of Acme Ltd"}}), 3591901702606958482U);
}

// ---- the required tables --------------------------------------------------------------------------

/// All kinds of writes, one after the other.
void Work(Database& database)
{
    CreateEmployee(database, {"Brass", "Jane", "Smith", "123/A456"});
    CreateEmployee(database, {"Brass", "Peter", "Young", "123/A456"});
    CreateEmployee(database, {"Cobalt", "Jane", "Smith", "9"});
    Recordset page = database.OpenRecordset("P11D");
    for (page.MoveFirst(); !page.AtEnd(); page.MoveNext()) {
        page.Edit();
        page.SetField("ACashEqu", "      7.00");
        page.Update();
        page.Edit();
        page.SetNull("PAYEBox");
        page.Update();
    }
    RenameEmployee(database, "Brass", "Peter Young", "Peter Old");
    RenameEmployer(database, "Cobalt", "Brass", "8");
    DeleteEmployee(database, "Brass", "Peter Old");
}

TEST_F(HistoryFile, TheRequiredTablesAreWhatTheyWouldBeWithoutIt)
{
    {
        Database database = Open();
        Work(database);
    }
    const Contents with = All();
    EXPECT_FALSE(Operations().empty());
    MakeEmpty(file);
    // Something else in its place: nothing is noted.
    Execute(fmt::format("CREATE TABLE {}(x)", OperationTable));
    {
        Database database = Open();
        Work(database);
    }
    EXPECT_TRUE(Rows(fmt::format("SELECT * FROM {}", OperationTable)).empty());
    EXPECT_EQ(All(), with);
}

// ---- a history that cannot be used ----------------------------------------------------------------

TEST_F(HistoryFile, ForeignTablesTurnItOffAndTheWritesGoOn)
{
    for (const std::string& foreign :
         {fmt::format("CREATE TABLE {}(x)", ChangeTable), fmt::format("CREATE TABLE {}(x)", OperationTable),
          fmt::format("CREATE VIEW {} AS SELECT 1", ChangeTable), std::string("CREATE TABLE historychange(x)"),
          CreateHistoryTableText(ChangeTable),
          CreateHistoryTableText(ChangeTable) + ";" + CreateHistoryTableText(OperationTable) +
              ";CREATE INDEX I ON HistoryChange(Operation)"}) {
        SCOPED_TRACE(foreign);
        MakeEmpty(file);
        Execute(foreign);
        auto note = std::make_shared<OperationNote>();
        Database database = Database::OpenDatabase(file, OpenMode::ReadWrite, note);
        CreateEmployee(database, {"Acme", "Jane", "Smith", ""});
        EXPECT_TRUE(note->historyIsOff);
        EXPECT_TRUE(EmployeeExists(database, "Acme", "Jane Smith"));
        EXPECT_FALSE(History(database).IsReadable());
        EXPECT_TRUE(History(database).Operations({}, 10).empty());
    }
}

TEST_F(HistoryTest, DamageTurnsItOffAndTheWritesGoOn)
{
    Create("Acme", "Jane", "Smith");
    auto note = std::make_shared<OperationNote>();
    SetStoreFaultHook([](std::string_view statement) {
        return statement.find(ChangeTable) != std::string_view::npos && statement.starts_with("INSERT") ? SQLITE_CORRUPT
                                                                                                        : SQLITE_OK;
    });
    {
        Database database = Database::OpenDatabase(file, OpenMode::ReadWrite, note);
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "1"}});
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "2"}});
    }
    SetStoreFaultHook({});
    EXPECT_TRUE(note->historyIsOff);
    EXPECT_EQ(Rows("SELECT [ACashEqu] FROM [P11D]"), (std::vector<std::vector<std::string>>{{"'2'"}}));
}

TEST_F(HistoryTest, AFailingDiskAtItsWriteFailsTheWholeWrite)
{
    Create("Acme", "Jane", "Smith");
    const Contents before = All();
    for (const std::string_view table : {OperationTable, ChangeTable})
        for (const int fault : {SQLITE_IOERR, SQLITE_FULL}) {
            for (const bool inBatch : {false, true}) {
                Database database = For("Page 1 stored");
                SetStoreFaultHook([&](std::string_view statement) {
                    const bool isIt =
                        statement.starts_with("INSERT") && statement.find(table) != std::string_view::npos;
                    return isIt ? fault : SQLITE_OK;
                });
                if (inBatch) {
                    WriteBatch batch(database);
                    Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "1"}});
                    EXPECT_THROW(batch.Commit(), BatchLost);
                } else {
                    EXPECT_THROW(Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "1"}}), StoreError);
                }
                SetStoreFaultHook({});
                EXPECT_EQ(All(), before);
                // The next write is noted again.
                Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", ""}});
                Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "9"}});
                EXPECT_EQ(Words().front(), "Page 1 stored");
                EXPECT_EQ(Changes(Newest()).back().fields.back().after, "9");
                ASSERT_TRUE(Undo(Newest()).empty());
                EXPECT_EQ(All(), before);
            }
        }
}

TEST_F(HistoryTest, WhatAFailedWriteLeavesIsWhatTheHistorySays)
{
    for (int failing = 1; failing <= 27; ++failing) {
        SCOPED_TRACE(failing);
        MakeEmpty(file);
        const Contents before = All();
        {
            Database database = For("New employee");
            SetStoreFaultHook([failing, count = 0](std::string_view statement) mutable {
                const bool isRecord = statement.starts_with("INSERT INTO [") && !statement.starts_with("INSERT INTO [H"
                                                                                                       "istory");
                return isRecord && ++count == failing ? SQLITE_IOERR : SQLITE_OK;
            });
            EXPECT_THROW(CreateEmployee(database, {"Acme", "Jane", "Smith", ""}), RecordsNotMade);
            SetStoreFaultHook({});
        }
        EXPECT_EQ(All().size(), before.size() + static_cast<std::size_t>(failing) - 1);
        if (failing == 1) {
            EXPECT_TRUE(Operations().empty());
        } else {
            EXPECT_EQ(Changes(Newest()).size(), static_cast<std::size_t>(failing) - 1);
            ASSERT_TRUE(Undo(Newest()).empty());
            EXPECT_EQ(All(), before);
        }
    }
}

TEST_F(HistoryTest, WhatWasWrittenBeforeAFailureStaysThoughItCannotBeNoted)
{
    const Contents before = All();
    auto note = std::make_shared<OperationNote>();
    {
        Database database = Database::OpenDatabase(file, OpenMode::ReadWrite, note);
        SetStoreFaultHook([count = 0](std::string_view statement) mutable {
            return statement.starts_with("INSERT") && ++count >= 14 ? SQLITE_IOERR : SQLITE_OK;
        });
        EXPECT_THROW(CreateEmployee(database, {"Acme", "Jane", "Smith", ""}), RecordsNotMade);
        SetStoreFaultHook({});
    }
    EXPECT_EQ(All().size(), before.size() + 13);
    EXPECT_TRUE(note->historyIsOff);
    EXPECT_TRUE(Operations().empty());
}

TEST_F(HistoryTest, ARefusedKeyIsNoChange)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "Peter", "Young");
    Database database = For("Rename");
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    records.Seek("Acme", "Peter Young");
    records.Edit();
    records.SetField("EmployeeName", "Jane Smith");
    EXPECT_FALSE(records.TryUpdate());
    EXPECT_EQ(Operations().size(), 2U);
    // Nobody is kept waiting by it.
    Create("Acme", "Zoe", "Zealous");
    EXPECT_EQ(Operations().size(), 3U);
}

// ---- growth ---------------------------------------------------------------------------------------

TEST_F(HistoryTest, LetsTheOldestOperationsGo)
{
    Create("Acme", "Jane", "Smith");
    {
        const std::string text(20000, 'x');
        for (int i = 0; i < 6 * 64; ++i) {
            Database database = For(fmt::format("Change {}", i));
            WriteBatch batch(database);
            for (int line = 1; line <= 10; ++line)
                Set(database, "KNotepad", "Acme", "Jane Smith",
                    {{fmt::format("Description{}", line), fmt::format("{}{}", i, text)}});
            batch.Commit();
        }
    }
    const std::int64_t bytes =
        std::stoll(Rows("SELECT CAST(sum([Bytes]) AS BIGINT) FROM [HistoryOperation]")[0][0].substr(1));
    EXPECT_LT(bytes, MostHistoryBytes + 64 * 500000);
    const auto operations = Operations();
    EXPECT_EQ(operations.front().words, "Change 383");
    EXPECT_LT(operations.size(), 150U);
    EXPECT_GT(operations.size(), 20U);
    // Each that is left can still be read, and no change is left of one that is gone.
    EXPECT_EQ(Changes(operations.back().number).size(), 1U);
    EXPECT_TRUE(Rows("SELECT 1 FROM [HistoryChange] WHERE [Operation] NOT IN (SELECT [Number] FROM [HistoryOperation])")
                    .empty());
    EXPECT_TRUE(Undo(operations.front().number).empty());
}

// ---- going back -----------------------------------------------------------------------------------

TEST_F(HistoryTest, UndoPutsBackEachFieldAndCanBeUndone)
{
    Create("Acme", "Jane", "Smith");
    const Contents before = All();
    {
        Database database = For("Page 1 stored");
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "1"}, {"NatIns", ""}});
    }
    const Contents after = All();
    EXPECT_TRUE(Undo(Newest(), "Undo: Page 1 stored").empty());
    EXPECT_EQ(All(), before);
    const auto operations = Operations();
    EXPECT_EQ(operations[0].words, "Undo: Page 1 stored");
    EXPECT_TRUE(operations[0].isUndo);
    EXPECT_FALSE(operations[0].isUndone);
    EXPECT_TRUE(operations[1].isUndone);
    EXPECT_EQ(operations[0].employee, "Jane Smith");
    EXPECT_EQ(Changes(operations[0].number)[0].fields[0].before, "1");
    EXPECT_EQ(Changes(operations[0].number)[0].fields[0].after, "");

    EXPECT_TRUE(Undo(operations[0].number).empty());
    EXPECT_EQ(All(), after);
    EXPECT_FALSE(Operations()[2].isUndone);
    EXPECT_TRUE(Operations()[1].isUndone);
    EXPECT_TRUE(Undo(Newest()).empty());
    EXPECT_EQ(All(), before);
}

TEST_F(HistoryTest, UndoOfEveryKindOfOperationPutsBackEverything)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "Peter", "Young");
    Create("Acme", "Zoe", "Zealous");
    Create("Zenith", "Jane", "Smith");
    Create("Zenith", "Ann", "Cooper");
    struct Kind {
        std::string words;
        void (*work)(Database&);
    };
    const auto kinds = std::to_array<Kind>({
        {"create",
         [](Database& at) {
             CreateEmployee(at, {"New Ltd", "A", "B", "1"});
         }},
        {"delete an employee", [](Database& at) { DeleteEmployee(at, "Acme", "Peter Young"); }},
        {"delete the last", [](Database& at) { DeleteEmployee(at, "Zenith", "Ann Cooper"); }},
        {"delete an employer", [](Database& at) { DeleteEmployer(at, "Acme"); }},
        {"delete the last employer", [](Database& at) { DeleteEmployer(at, "Zenith"); }},
        {"rename an employee", [](Database& at) { RenameEmployee(at, "Acme", "Jane Smith", "Jane Jones"); }},
        {"rename an employer", [](Database& at) { RenameEmployer(at, "Acme", "Acme plc", "77"); }},
        {"run two employers together", [](Database& at) { RenameEmployer(at, "Zenith", "Acme", "77"); }},
        {"all of it", Work},
    });
    const Contents before = All();
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.words);
        {
            Database database = For(kind.words);
            kind.work(database);
        }
        const Contents after = All();
        EXPECT_NE(after, before);
        EXPECT_TRUE(Undo(Newest()).empty());
        EXPECT_EQ(All(), before);
        EXPECT_TRUE(Undo(Newest()).empty());
        EXPECT_EQ(All(), after);
        EXPECT_TRUE(Undo(Newest()).empty());
        EXPECT_EQ(All(), before);
    }
}

TEST_F(HistoryTest, UndoListsWhatHasBeenChangedSinceAndChangesNothing)
{
    Create("Acme", "Jane", "Smith");
    {
        Database database = For("Page 1 stored");
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "1"}, {"BNotTax", "2"}, {"CCashEqu", "3"}});
    }
    const std::int64_t stored = Newest();
    {
        Database database = For("Page 1 stored");
        Set(database, "P11D", "Acme", "Jane Smith", {{"BNotTax", "9"}});
    }
    const Contents before = All();
    const auto conflicts = Undo(stored);
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].what, UndoConflict::What::Changed);
    EXPECT_EQ(conflicts[0].field, "BNotTax");
    EXPECT_EQ(conflicts[0].left, "2");
    EXPECT_EQ(conflicts[0].found, "9");
    EXPECT_EQ(conflicts[0].employee, "Jane Smith");
    EXPECT_EQ(All(), before);
    EXPECT_EQ(Operations().size(), 3U);
    // Once the later one is undone, nothing stands in the way.
    EXPECT_TRUE(Undo(Newest()).empty());
    EXPECT_TRUE(Undo(stored).empty());
}

TEST_F(HistoryTest, UndoListsRecordsThatAreGoneAndNamesThatAreTaken)
{
    Create("Acme", "Jane", "Smith");
    {
        Database database = For("Page 1 stored");
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "1"}});
    }
    const std::int64_t stored = Newest();
    {
        Database database = For("Delete Employee");
        DeleteEmployee(database, "Acme", "Jane Smith");
    }
    const std::int64_t deleted = Newest();
    auto conflicts = Undo(stored);
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].what, UndoConflict::What::Gone);
    Create("Acme", "Jane", "Smith");
    conflicts = Undo(deleted);
    ASSERT_EQ(conflicts.size(), 24U);
    EXPECT_EQ(conflicts[0].what, UndoConflict::What::ThereAlready);
    // A creation is not undone once something has been entered.
    const std::int64_t created = Newest();
    {
        Database database = For("Page 1 stored");
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", "5"}});
    }
    conflicts = Undo(created);
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].found, "5");
}

TEST_F(HistoryTest, FieldsOfNewRecordsAreLeftToTheTablesAndReadFromThere)
{
    Create("Acme", "Jane", "Smith");
    const std::int64_t created = Newest();
    for (const auto& row : Rows("SELECT [Changes] FROM [HistoryChange]"))
        EXPECT_EQ(row[0].find("Acme Jane Smith"), std::string::npos);
    const auto page = [&] {
        for (const PastChange& change : Changes(created))
            if (change.table == "P11D") {
                std::vector<std::string> fields;
                for (const auto& field : change.fields)
                    fields.push_back(fmt::format("{}: {}|{}", field.field, field.before, field.after));
                return fields;
            }
        return std::vector<std::string>();
    };
    const std::vector<std::string> added{"EmployerName: |Acme", "EmployeeName: |Jane Smith", "Name: |Acme Jane Smith",
                                         "FirstName: |Jane",    "Surname: |Smith",           "PAYEBox: |123/A456"};
    EXPECT_EQ(page(), added);
    // Whatever becomes of the record.
    for (const char* text : {"1", "2"}) {
        Database database = For("Page 1 stored");
        Set(database, "P11D", "Acme", "Jane Smith", {{"ACashEqu", text}, {"PAYEBox", text}});
        EXPECT_EQ(page(), added);
    }
    {
        Database database = For("Rename");
        RenameEmployee(database, "Acme", "Jane Smith", "Jane Jones");
    }
    EXPECT_EQ(page(), added);
    {
        Database database = For("Delete Employee");
        DeleteEmployee(database, "Acme", "Jane Jones");
    }
    EXPECT_EQ(page(), added);
    Create("Acme", "Peter", "Young"); // in the same place
    EXPECT_EQ(page(), added);
    const auto operations = Operations();
    for (std::size_t i = 0; i + 1 < operations.size(); ++i)
        ASSERT_TRUE(Undo(operations[i].number).empty()) << operations[i].words;
    EXPECT_EQ(page(), added);
    ASSERT_TRUE(Undo(created).empty());
    EXPECT_EQ(page(), added);
}

TEST_F(HistoryTest, WhatIsWrittenPastItStandsInTheWayOfAnAdditionsUndo)
{
    Create("Acme", "Jane", "Smith");
    Execute("UPDATE [P11D] SET [ACashEqu]='7'");
    const Contents before = All();
    const auto conflicts = Undo(Newest());
    ASSERT_EQ(conflicts.size(), 1U);
    EXPECT_EQ(conflicts[0].what, UndoConflict::What::Changed);
    EXPECT_EQ(conflicts[0].table, "P11D");
    EXPECT_EQ(conflicts[0].employee, "Jane Smith");
    EXPECT_EQ(conflicts[0].field, "");
    EXPECT_EQ(All(), before);
    // What it brought cannot be told any more, and what cannot be told is not made up.
    for (const PastChange& change : Changes(Newest()))
        EXPECT_EQ(change.fields.empty(), change.table == "P11D");
}

TEST_F(HistoryTest, AnUndoneAdditionCountsWithItsFields)
{
    Create("Acme", "Jane", "Smith");
    const auto bytes = [&] {
        return std::stoll(Rows("SELECT [Bytes] FROM [HistoryOperation] ORDER BY [Number] LIMIT 1")[0][0].substr(1));
    };
    const auto before = bytes();
    ASSERT_TRUE(Undo(Newest()).empty());
    EXPECT_GT(bytes(), before + 500);
}

/// Adds, changes, renames and deletes records, each for an operation of its own or for one that goes on, and undoes.
RC_GTEST_FIXTURE_PROP(HistoryTest, WhatAnOperationDidReadsTheSameEverAfter, ())
{
    MakeEmpty(file);
    const auto steps = *rc::gen::resize(12, rc::gen::arbitrary<std::vector<std::array<int, 4>>>());
    const auto goesOn = std::make_shared<OperationNote>();
    goesOn->words = "goes on";
    std::map<std::int64_t, std::string> known;
    int step = 0;
    const auto told = [&](std::int64_t operation) {
        std::string text;
        for (const PastChange& change : Changes(operation)) {
            text += fmt::format("{} {} {}:", change.table, static_cast<int>(change.kind), change.employee);
            for (const auto& field : change.fields)
                text += fmt::format(" {}={}>{}", field.field, field.before, field.after);
        }
        return text;
    };
    for (const auto& [act, who, what, note] : steps) {
        const std::string employee = fmt::format("E{}", static_cast<unsigned>(who) % 3);
        const std::string text = fmt::format("{}", ++step); // none is written twice
        const bool isLong = note % 3 == 0;
        const auto operations = Operations();
        if (static_cast<unsigned>(act) % 5 == 4 && !operations.empty()) {
            const Contents before = All();
            const std::int64_t number = operations[static_cast<unsigned>(what) % operations.size()].number;
            if (!Undo(number).empty()) {
                RC_ASSERT(All() == before);
            } else {
                RC_ASSERT(Undo(Newest()).empty());
                RC_ASSERT(All() == before);
            }
        } else {
            Database database =
                Database::OpenDatabase(file, OpenMode::ReadWrite, isLong ? goesOn : std::make_shared<OperationNote>());
            Recordset records = database.OpenRecordset("ANotepad");
            records.Index("IndKey");
            records.Seek("Acme", employee);
            if (records.NoMatch()) {
                records.AddNew();
                records.SetField("EmployerName", "Acme");
                records.SetField("EmployeeName", employee);
                records.SetField("Description1", text);
                records.Update();
            } else if (static_cast<unsigned>(act) % 5 == 0) {
                records.Delete();
            } else {
                records.Edit();
                records.SetField(static_cast<unsigned>(act) % 5 == 1 ? "Description1" : "Description2", text);
                if (static_cast<unsigned>(act) % 5 == 3)
                    records.SetField("EmployeeName", fmt::format("E{}", static_cast<unsigned>(what) % 3));
                static_cast<void>(records.TryUpdate());
            }
        }
        for (const PastOperation& operation : Operations())
            if (operation.words != "goes on" && !operation.isUndo && !known.contains(operation.number))
                known.emplace(operation.number, told(operation.number));
    }
    for (const auto& [operation, text] : known)
        RC_ASSERT(told(operation) == text);
}

TEST_F(HistoryFile, ARecordWhosePlaceHasBeenTakenComesBackBehindTheOthers)
{
    Create("Acme", "Jane", "Smith");
    {
        Database database = For("Delete Employee");
        DeleteEmployee(database, "Acme", "Jane Smith");
    }
    const std::int64_t deleted = Newest();
    Create("Acme", "Peter", "Young");
    EXPECT_TRUE(Undo(deleted).empty());
    Database database = Open();
    EXPECT_EQ(ListEmployees(database, "Acme"), (std::vector<std::string>{"Peter Young", "Jane Smith"}));
}

TEST_F(HistoryTest, AFailedUndoLeavesEverythingAsItIs)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "Peter", "Young");
    {
        Database database = For("Delete Employer");
        DeleteEmployer(database, "Acme");
    }
    const Contents before = All();
    const std::int64_t deleted = Newest();
    for (int failing = 1; failing <= 40; ++failing) {
        SetStoreFaultHook([failing, count = 0](std::string_view statement) mutable {
            const bool writes = statement.starts_with("INSERT") || statement == "COMMIT";
            return writes && ++count == failing ? SQLITE_IOERR : SQLITE_OK;
        });
        EXPECT_THROW(static_cast<void>(Undo(deleted)), StoreError);
        SetStoreFaultHook({});
        ASSERT_EQ(All(), before) << failing;
    }
    EXPECT_TRUE(Undo(deleted).empty());
}

TEST_F(HistoryTest, WhatIsAskedForIsFollowedThroughRenamings)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "Peter", "Young");
    Create("Zenith", "Ann", "Cooper");
    {
        Database database = For("Rename employee");
        RenameEmployee(database, "Acme", "Jane Smith", "Jane Jones");
    }
    {
        Database database = For("Rename employer");
        RenameEmployer(database, "Acme", "Acme plc", "1");
    }
    EXPECT_EQ(Words({.employer = "Acme plc", .employee = "Jane Jones"}),
              (std::vector<std::string>{"Rename employer", "Rename employee", "New employee Jane Smith"}));
    EXPECT_EQ(Words({.employer = "Acme plc"}),
              (std::vector<std::string>{"Rename employer", "Rename employee", "New employee Peter Young",
                                        "New employee Jane Smith"}));
    EXPECT_EQ(Words({.employer = "Zenith"}), std::vector<std::string>{"New employee Ann Cooper"});
    EXPECT_EQ(Words({.day = "2011-06-29"}), std::vector<std::string>{});
    EXPECT_EQ(Words({.day = "2011-06-30"}).size(), 5U);
}

TEST_F(HistoryTest, TheLastOfADeskIsItsOwnAndNoUndo)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "Peter", "Young");
    const auto set = [&](std::string words, std::string who, std::string_view employee, std::string_view text) {
        Database database = For(std::move(words), std::move(who));
        Set(database, "P11D", "Acme", employee, {{"ACashEqu", text}});
    };
    set("one", "anna@desk", "Jane Smith", "1");
    set("two", "anna@desk", "Peter Young", "2");
    set("three", "ben@desk", "Jane Smith", "3");
    Database database = Open();
    History history(database);
    EXPECT_EQ(history.LastBy("anna@desk")->words, "two");
    EXPECT_EQ(history.LastBy("ben@desk")->words, "three");
    EXPECT_EQ(history.LastBy("anna@desk", "Acme", "Jane Smith")->words, "one");
    // His creation is no change of his.
    EXPECT_FALSE(history.LastBy("nobody", "Acme", "Jane Smith"));
    EXPECT_TRUE(Undo(history.LastBy("anna@desk")->number).empty());
    EXPECT_EQ(history.LastBy("anna@desk")->words, "one");
    EXPECT_FALSE(history.LastBy("anna@desk", "Acme", "Peter Young"));
}

TEST_F(HistoryFile, ABackupHasItToo)
{
    Create("Acme", "Jane", "Smith");
    const auto copy = folder.path / "copy";
    ASSERT_TRUE(BackUpDatabase(file, copy));
    Database database = Database::OpenDatabase(copy);
    EXPECT_EQ(History(database).Operations({}, 10).size(), 1U);
}

TEST_F(HistoryTest, UndoBringsAnEmployerOfAThousandBackWhole)
{
    {
        Database database = For("Fill");
        WriteBatch batch(database);
        for (int i = 0; i < 1000; ++i)
            CreateEmployee(database, {"Big", "Jane", fmt::format("Smith {}", i), "1"});
        for (const TableLayout* table : NewEmployeeTables()) {
            Recordset records = database.OpenRecordset(table->name);
            int seed = 0;
            for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
                records.Edit();
                const auto fields = FieldsOf(*table).All();
                for (std::size_t at = 6 + static_cast<std::size_t>(++seed % 5); at < fields.size(); at += 7)
                    records.SetField(fields[at].name, fmt::format("{:>10}", seed));
                records.Update();
            }
        }
        batch.Commit();
    }
    const Contents before = All();
    {
        Database database = For("Delete Employer Big");
        DeleteEmployer(database, "Big");
    }
    EXPECT_LT(All().size(), 5U);
    EXPECT_TRUE(Undo(Newest()).empty());
    EXPECT_EQ(All() == before, true);
}

} // namespace
} // namespace quillmere::test
