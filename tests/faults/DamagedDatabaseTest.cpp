#include "clientdb/EmployeeFinder.h"
#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "declaration/Declaration.h"
#include "support/ReadAll.h"
#include "support/StoreFixture.h"
#include "support/SyncCounter.h"
#include "support/TemporaryFolder.h"
#include "transfer/YearTransfer.h"

#include <sqlite3.h>

#include <csignal>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <random>
#include <sys/resource.h>

namespace quillmere::test {
namespace {

void Put(const std::filesystem::path& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

class Damaged : public StoreFixture {
protected:
    Damaged()
    {
        Database database = Open();
        WriteBatch batch(database);
        for (int i = 0; i < 30; ++i)
            CreateEmployee(database,
                           {fmt::format("Employer {}", i % 4), "Jane", fmt::format("Smith {}", i), "123/A456"});
        batch.Commit();
    }

    /// Expects opening or reading to fail with words, and the file to stay as it was.
    void ExpectFailure(const std::filesystem::path& path)
    {
        const bool isFile = std::filesystem::is_regular_file(path);
        const std::string before = isFile ? Content(path) : "";
        for (const OpenMode mode : {OpenMode::ReadWrite, OpenMode::ReadOnly})
            try {
                Database database = Database::OpenDatabase(path, mode);
                ReadAll(database);
                ADD_FAILURE() << path << " was read";
            } catch (const StoreError& failure) {
                EXPECT_NE(failure.what(), std::string()) << path;
                EXPECT_NE(failure.Number(), 0) << path;
            }
        if (isFile) {
            EXPECT_EQ(Content(path), before) << path << " was written over";
        }
        std::size_t files = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path))
            ++files;
        EXPECT_LE(files, 2u) << "something was left beside " << path;
    }
};

TEST_F(Damaged, AnEmptyFileIsToldAndNotFilled)
{
    Put(folder.path / "other", "");
    ExpectFailure(folder.path / "other");
}

TEST_F(Damaged, RandomBytesAreTold)
{
    std::mt19937 random(7);
    for (const std::size_t size : {1u, 15u, 16u, 99u, 100u, 512u, 4096u, 100000u}) {
        std::string bytes(size, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        Put(folder.path / "other", bytes);
        ExpectFailure(folder.path / "other");
    }
}

TEST_F(Damaged, AFileCutOffAnywhereIsTold)
{
    const std::string whole = Content(file);
    for (const std::size_t size : {std::size_t{20}, std::size_t{100}, std::size_t{4096}, whole.size() / 2,
                                   whole.size() - 4096, whole.size() - 1}) {
        Put(folder.path / "other", std::string_view(whole).substr(0, size));
        ExpectFailure(folder.path / "other");
    }
}

TEST_F(Damaged, AFolderOfThatNameIsTold)
{
    std::filesystem::create_directory(folder.path / "other");
    ExpectFailure(folder.path / "other");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path / "other"));
}

TEST_F(Damaged, AnotherProgramsDatabaseIsToldAndNotTouched)
{
    for (const char* setUp : {"CREATE TABLE P11D(a)", "CREATE TABLE x(a);PRAGMA application_id=1366127205",
                              "PRAGMA journal_mode=WAL;CREATE TABLE x(a)"}) {
        std::filesystem::remove(folder.path / "other");
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open((folder.path / "other").c_str(), &handle), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(handle, setUp, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
        ExpectFailure(folder.path / "other");
    }
}

TEST_F(Damaged, ADatabaseThatLacksATableIsTold)
{
    std::filesystem::copy_file(file, folder.path / "other");
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open((folder.path / "other").c_str(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "DROP TABLE HNotepad", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
    ExpectFailure(folder.path / "other");
}

/// A client database of which something has been changed by another program.
class Tampered : public Damaged {
protected:
    /// What opening and reading it all ends in; empty if nothing is wrong.
    std::string WordsAfter(const std::string& change) const
    {
        const std::filesystem::path other = folder.path / "other";
        std::filesystem::copy_file(file, other, std::filesystem::copy_options::overwrite_existing);
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(other.c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, change.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
        try {
            Database database = Database::OpenDatabase(other);
            for (const TableLayout& table : ClientTables()) {
                Recordset records = database.OpenRecordset(table.name);
                if (table.level != TableLevel::Database) {
                    records.MoveFirstOf("Employer 1");
                    records.Field("EmployerName");
                }
            }
            ReadAll(database);
            ListEmployers(database);
            return {};
        } catch (const StoreError& failure) {
            return failure.what();
        }
    }
};

TEST_F(Tampered, TablesThatAreNotAsThisProgramMakesThemAreToldAtTheOpening)
{
    const std::string endless = "CREATE VIEW HNotepad AS WITH RECURSIVE n(EmployerName,EmployeeName) AS "
                                "(SELECT 'a','b' UNION ALL SELECT EmployerName,EmployeeName FROM n) SELECT * FROM n";
    const std::pair<std::string, std::string> cases[] = {
        {"ALTER TABLE P11D ADD COLUMN rowid TEXT", "its table P11D has a field rowid that is not of this program"},
        {"ALTER TABLE ANotepad ADD COLUMN [RowId] TEXT", "its table ANotepad has a field RowId"},
        {"ALTER TABLE P11D DROP COLUMN NatIns", "its table P11D has no field NatIns"},
        {"ALTER TABLE P11D RENAME COLUMN NatIns TO [nat ins]", "its table P11D has no field NatIns"},
        {"DROP TABLE HNotepad", "its table HNotepad is missing"},
        {"DROP TABLE HNotepad;" + endless, "its table HNotepad is not a table"},
        {"DROP INDEX ENotepad_IndKey", "its table ENotepad has no index IndKey"},
        {"CREATE UNIQUE INDEX one ON P11D(Name,PAYEBox)", "its table P11D has one hung on it"},
        {"CREATE TRIGGER t AFTER UPDATE ON P11D BEGIN DELETE FROM P11D; END", "its table P11D has t hung on it"},
        {"DROP TABLE HNotepad2;CREATE TABLE HNotepad2 AS SELECT 1", "its table HNotepad2 has no field Currency1"},
        {"DROP TABLE SpareTable;CREATE TABLE SpareTable([EmployerName] TEXT,[EmployeeName] TEXT,[Name])",
         "its table SpareTable is not as this program makes it"},
    };
    for (const auto& [change, words] : cases)
        EXPECT_NE(WordsAfter(change).find(words), std::string::npos) << change << "\n" << WordsAfter(change);
}

TEST_F(Tampered, TablesOfOthersMayStandBeside)
{
    EXPECT_EQ(WordsAfter("CREATE TABLE history(rowid,what);CREATE VIEW others AS SELECT * FROM P11D"), "");
}

TEST_F(Tampered, TextsThatNoBoxCouldHoldAreToldAndNotRead)
{
    for (const int size : {131'073, 5'000'000})
        for (const std::string field : {"ADescriptionAsset", "EmployerName", "EmployeeName"}) {
            const auto words = WordsAfter(
                fmt::format("UPDATE P11D SET {}=replace(zeroblob({}),x'00','x') WHERE rowid=3", field, size));
            EXPECT_NE(words, "") << field << " " << size;
        }
    EXPECT_EQ(WordsAfter("UPDATE P11D SET ADescriptionAsset=replace(zeroblob(131072),x'00','x') WHERE rowid=3"), "");
}

/// Records with too long a text, whatever place they have in the order of adding and of their employer.
TEST_F(Tampered, OneRecordThatCannotBeReadBarsNoListAndIsNamed)
{
    for (const int size : {131'073, 5'000'000})
        for (const int record : {1, 2, 14, 30}) {
            SCOPED_TRACE(fmt::format("record {} with {} bytes", record, size));
            EXPECT_NE(WordsAfter(fmt::format("UPDATE P11D SET ADescriptionAsset=replace(zeroblob({}),x'00','x') "
                                             "WHERE rowid={}",
                                             size, record)),
                      "");
            Database database = Database::OpenDatabase(folder.path / "other");
            const std::string employer = fmt::format("Employer {}", (record - 1) % 4);
            const std::string employee = fmt::format("Jane Smith {}", record - 1);
            EXPECT_EQ(ListEmployers(database).size(), 4U);
            EXPECT_GE(ListEmployees(database, employer).size(), 7U);
            EXPECT_EQ(FirstPayeReference(database, employer), "123/A456");
            EXPECT_TRUE(EmployeeExists(database, employer, employee));
            EXPECT_EQ(EmployeeFinder(database).Count(), 30U);
            EXPECT_EQ(ListLastYearEmployees(database).size(), 30U);
            EXPECT_EQ(EmployerTotal(database, employer), Amount());

            const std::string named = fmt::format("The record of {} ({}) in table P11D", employee, employer);
            const auto wordsOf = [](const std::function<void()>& read) -> std::string {
                try {
                    read();
                    return "all is read";
                } catch (const StoreError& failure) {
                    return failure.what();
                }
            };
            Recordset records = database.OpenRecordset("P11D");
            records.Index("IndKey");
            EXPECT_TRUE(wordsOf([&] { records.Seek(employer, employee); }).starts_with(named));
            for (const bool ofEmployer : {false, true}) {
                Recordset scanned = database.OpenRecordset("P11D");
                int read = 0;
                const std::string words = wordsOf([&] {
                    if (ofEmployer)
                        scanned.MoveFirstOf(employer);
                    else
                        scanned.MoveFirst();
                    for (; !scanned.AtEnd(); scanned.MoveNext()) {
                        scanned.Field("ADescriptionAsset");
                        ++read;
                    }
                });
                EXPECT_TRUE(words.starts_with(named)) << words;
                EXPECT_EQ(read, ofEmployer ? (record - 1) / 4 : record - 1) << "those before it are read";
            }
            DeleteEmployee(database, employer, employee);
            EXPECT_FALSE(EmployeeExists(database, employer, employee));
        }
}

TEST_F(Damaged, AReferenceTableThatHidesItsRecordNumbersIsTold)
{
    for (const char* made : {"CREATE TABLE Figures(Manufacturer TEXT,[RowID] TEXT);INSERT INTO Figures VALUES('A',7)",
                             "CREATE VIEW Figures AS SELECT 'A' AS Manufacturer"}) {
        const std::filesystem::path other = folder.path / "other";
        std::filesystem::remove(other);
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(other.c_str(), &handle), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(handle, made, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
        Database database = Database::OpenReferenceDatabase(other);
        EXPECT_THROW(database.OpenRecordset("Figures"), StoreError) << made;
    }
}

TEST_F(Damaged, ADatabaseOfAnotherVersionIsTold)
{
    std::filesystem::copy_file(file, folder.path / "other");
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open((folder.path / "other").c_str(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "PRAGMA user_version=77", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
    ExpectFailure(folder.path / "other");
}

TEST_F(Damaged, SpoiltBytesInsideNeverEndTheProgram)
{
    const std::string whole = Content(file);
    std::mt19937 random(11);
    std::uniform_int_distribution<std::size_t> place(100, whole.size() - 65);
    for (int round = 0; round < 150; ++round) {
        std::string spoilt = whole;
        for (int hit = 0; hit < 1 + round / 10; ++hit)
            for (std::size_t at = place(random), end = at + 1 + round % 64; at < end; ++at)
                spoilt[at] = static_cast<char>(random());
        Put(folder.path / "other", spoilt);
        try {
            Database database = Database::OpenDatabase(folder.path / "other");
            ReadAll(database);
            CreateEmployee(database, {"New", "Max", "Moritz", ""});
            RenameEmployer(database, "Employer 1", "Employer 9", "x");
            DeleteEmployer(database, "Employer 2");
        } catch (const StoreError& failure) {
            EXPECT_NE(failure.what(), std::string());
        }
    }
}

/// A number of the file's format, seven bits a byte; `at` is moved behind it.
std::uint64_t TakeNumber(const std::string& bytes, std::size_t& at)
{
    std::uint64_t number = 0;
    for (int i = 0; i < 9; ++i) {
        const auto byte = static_cast<unsigned char>(bytes.at(at++));
        number = number << 7 | (byte & 0x7fU);
        if (byte < 0x80)
            break;
    }
    return number;
}

/// The leaf pages of tables and indexes, each with the numbers of its last record or entry spoilt so that it names one
/// that comes before it. Empty where a page is no leaf or has no two entries.
std::string WithLastNumberOutOfOrder(std::string bytes, std::size_t page)
{
    constexpr char TableLeaf = 0x0d, IndexLeaf = 0x0a;
    const char kind = bytes[page];
    const auto twoBytes = [&](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at])) << 8 |
               static_cast<unsigned char>(bytes[at + 1]);
    };
    const std::size_t entries = twoBytes(page + 3);
    if ((kind != TableLeaf && kind != IndexLeaf) || entries < 2)
        return {};
    const auto entry = [&](std::size_t number) { return page + twoBytes(page + 8 + 2 * number); };
    if (kind == TableLeaf) {
        std::size_t at = entry(entries - 1);
        TakeNumber(bytes, at);
        for (bool more = true; more; ++at) {
            more = (static_cast<unsigned char>(bytes[at]) & 0x80U) != 0;
            bytes[at] = more ? '\x80' : '\0';
        }
        return bytes;
    }
    const auto last = [&](std::size_t number) {
        std::size_t at = entry(number);
        const std::uint64_t size = TakeNumber(bytes, at);
        return at + size - 1;
    };
    bytes[last(entries - 1)] = bytes[last(entries - 2)];
    return bytes;
}

TEST_F(Damaged, AScanThatDoesNotGoForwardIsTold)
{
    const std::string whole = Content(file);
    constexpr std::size_t pageSize = 4096, mostRecords = 1000;
    int toldOfTables = 0, toldOfIndexes = 0;
    for (std::size_t page = pageSize; page < whole.size(); page += pageSize) {
        const std::string spoilt = WithLastNumberOutOfOrder(whole, page);
        if (spoilt.empty())
            continue;
        Put(folder.path / "other", spoilt);
        Database database = Database::OpenDatabase(folder.path / "other", OpenMode::ReadOnly);
        for (const TableLayout& table : ClientTables())
            for (std::size_t order = 0; order <= table.indexes.size(); ++order) {
                Recordset records = database.OpenRecordset(table.name);
                if (order > 0)
                    records.Index(table.indexes[order - 1].name);
                std::size_t met = 0;
                try {
                    for (records.MoveFirst(); !records.AtEnd() && met < mostRecords; records.MoveNext())
                        ++met;
                } catch (const StoreError& failure) {
                    EXPECT_EQ(failure.Number(), 11);
                    EXPECT_TRUE(records.AtEnd()) << "who goes on all the same comes to an end";
                    ++(order == 0 ? toldOfTables : toldOfIndexes);
                }
                ASSERT_LT(met, mostRecords) << table.name << " " << order << " page " << page / pageSize;
            }
    }
    EXPECT_GT(toldOfTables, 20);
    EXPECT_GT(toldOfIndexes, 20);
}

TEST_F(Damaged, AFullDiskIsToldAndCostsNothingOfWhatWasStored)
{
    // Files of this process may not grow any more, as on a full disk.
    struct NoGrowth {
        explicit NoGrowth(std::uintmax_t size)
        {
            ::getrlimit(RLIMIT_FSIZE, &before);
            const rlimit now = {size, before.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &now);
            handler = std::signal(SIGXFSZ, SIG_IGN);
        }
        ~NoGrowth()
        {
            ::setrlimit(RLIMIT_FSIZE, &before);
            std::signal(SIGXFSZ, handler);
        }
        rlimit before{};
        void (*handler)(int) = SIG_DFL;
    };
    int failed = 0;
    for (int room = 0; room < 40; ++room) {
        const std::string employer = fmt::format("Full {}", room);
        try {
            const NoGrowth limit(room < 20
                                     ? 512u * static_cast<unsigned>(room)
                                     : std::filesystem::file_size(file) + 16384u * static_cast<unsigned>(room - 20));
            Database database = Open();
            CreateEmployee(database, {employer, "Jane", "Smith", ""});
        } catch (const RecordsNotMade& failure) {
            ++failed;
            Database database = Open();
            std::size_t stored = 0;
            for (const TableLayout* table : NewEmployeeTables()) {
                Recordset records = database.OpenRecordset(table->name);
                records.MoveFirstOf(employer);
                stored += !records.AtEnd();
            }
            EXPECT_EQ(stored, failure.Made().size()) << "the message tells what is there";
        }
        Database database = Open();
        ReadAll(database);
        EXPECT_EQ(ListEmployees(database, "Employer 1").size(), 8u);
    }
    EXPECT_GT(failed, 10);
    EXPECT_LT(failed, 40);
}

// ---- syncs --------------------------------------------------------------------------------------

TEST_F(StoreFixture, ABatchCostsAsManySyncsForAHundredWritesAsForOne)
{
    {
        Database database = Open();
        CreateEmployee(database, {"Acme", "Jane", "Smith", ""});
    }
    SyncCounter syncs;
    Database database = Open();
    EXPECT_EQ(syncs.Count(), 0);
    int costs[2] = {};
    for (const int lines : {1, 20}) {
        syncs.Reset();
        WriteBatch batch(database);
        Recordset records = database.OpenRecordset("ANotepad");
        records.Index("IndKey");
        records.Seek("Acme", "Jane Smith");
        for (int line = 1; line <= lines; ++line)
            for (const char* stem : {"Description", "CostMarket", "Tax", "CashEq"}) {
                records.Edit();
                records.SetField(stem + std::to_string(line), "     12.00");
                records.Update();
            }
        Recordset page = database.OpenRecordset("P11D");
        page.Index("IndKey");
        page.Seek("Acme", "Jane Smith");
        for (const char* field : {"ACostMarketBox", "AAmountGood", "ACashEqu"}) {
            page.Edit();
            page.SetField(field, "    240.00");
            page.Update();
        }
        EXPECT_EQ(syncs.Count(), 0) << "before the commit";
        batch.Commit();
        costs[lines == 20] = syncs.Count();
    }
    EXPECT_GE(costs[0], 2) << "the writes must reach the disk";
    EXPECT_LE(costs[0], 5);
    EXPECT_EQ(costs[0], costs[1]);
}

} // namespace
} // namespace quillmere::test
