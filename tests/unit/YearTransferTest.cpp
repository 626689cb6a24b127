#include "transfer/YearTransfer.h"

#include "LastYearSample.h"
#include "clientdb/Employees.h"
#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "frame/Text.h"
#include "support/StoreFixture.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <map>
#include <random>

namespace quillmere::test {
namespace {

using Texts = std::vector<std::string>;
using Notices = std::vector<TransferNotice>;
using Records = std::map<std::string, std::map<std::string, std::string>>;

TEST(TransferNames, AreReadBackFromTheListsText)
{
    struct Case {
        const char *text, *employer, *employee, *first, *surname;
    };
    for (const Case& c :
         {Case{"Acme Ltd - (Jane Smith)", "Acme Ltd", "Jane Smith", "Jane", "Smith"},
          Case{"Acme Ltd - (Madonna)", "Acme Ltd", "Madonna", "", "Madonna"},
          Case{"Acme - (N) - (Jane Smith)", "Acme", "N) - (Jane Smith", "N) - (Jane", "Smith"},
          Case{"Acme - (Jean Claude van Damme)", "Acme", "Jean Claude van Damme", "Jean Claude van", "Damme"},
          Case{"Acme - (Jane (Jenny) Smith)", "Acme", "Jane (Jenny) Smith", "Jane (Jenny)", "Smith"},
          Case{"Acme - (Jane  Smith)", "Acme", "Jane  Smith", "Jane ", "Smith"},
          Case{"Müller - (Zoë Brontë)", "Müller", "Zoë Brontë", "Zoë", "Brontë"}}) {
        const LastYearEmployee parsed = ParseListText(c.text);
        EXPECT_EQ(parsed.employer, c.employer);
        EXPECT_EQ(parsed.employee, c.employee);
        EXPECT_EQ(parsed.firstName, c.first);
        EXPECT_EQ(parsed.surname, c.surname);
        EXPECT_EQ(ListText(parsed), c.text);
    }
}

TEST(TransferExisting, TheLookUpEndsBeforeTheLastPlace)
{
    ExistingEmployees existing;
    for (int i = 0; i < 3001; ++i)
        existing.Add("Acme", std::to_string(i));
    EXPECT_TRUE(existing.Contains("Acme", "0"));
    EXPECT_TRUE(existing.Contains("Acme", "2999"));
    EXPECT_FALSE(existing.Contains("Acme", "3000"));
    EXPECT_FALSE(existing.Contains("acme", "0"));
    EXPECT_THROW(existing.Add("Acme", "3001"), TooManyEmployees);
}

TEST(TransferExisting, TwoKeysThatJoinAlikeAreToldApart)
{
    ExistingEmployees existing;
    existing.Add("Acme Jane", "Smith");
    EXPECT_FALSE(existing.Contains("Acme", "Jane Smith"));
}

class Transferring : public StoreFixture {
protected:
    Transferring()
    {
        lastYearFile = folder.path / "last year";
        MakeEmpty(lastYearFile);
    }
    void TearDown() override { SetStoreFaultHook({}); }

    Database LastYear() const { return Database::OpenDatabase(lastYearFile); }

    static void Create(Database& database, const std::string& employer, const std::string& first,
                       const std::string& surname)
    {
        CreateEmployee(database, {employer, first, surname, "123/A456"});
    }

    Notices TransferAll() const
    {
        YearTransfer transfer(file, lastYearFile);
        Notices notices;
        for (const LastYearEmployee& employee : transfer.LastYearEmployees())
            transfer.Transfer(employee, TransferMode::All, notices);
        transfer.Commit();
        return notices;
    }

    Notices TransferOne(const LastYearEmployee& employee) const
    {
        YearTransfer transfer(file, lastYearFile);
        Notices notices;
        transfer.Transfer(employee, TransferMode::Single, notices);
        transfer.Commit();
        return notices;
    }

    /// Every field that is not null of every record of a table, by the record's key.
    static Records Dump(Database& database, const TableLayout& table)
    {
        Records dumped;
        Recordset records = database.OpenRecordset(table.name);
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
            std::string key(records.Field("EmployerName"));
            if (table.level == TableLevel::Employee)
                key += "|" + std::string(records.Field("EmployeeName"));
            auto& record = dumped[key];
            for (const Field& field : FieldsOf(table).All())
                if (!records.IsNull(field.name))
                    record[field.name] = records.Field(field.name);
        }
        return dumped;
    }

    static std::map<std::string, Records> Dump(const std::filesystem::path& path)
    {
        Database database = Database::OpenDatabase(path);
        std::map<std::string, Records> dumped;
        for (const TableLayout* table : NewEmployeeTables())
            dumped[std::string(table->name)] = Dump(database, *table);
        return dumped;
    }

    /// Fills a field of every record of a table.
    static void Give(Database& database, std::string_view table, std::string_view field, std::string_view text)
    {
        Recordset records = database.OpenRecordset(table);
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
            records.Edit();
            records.SetField(field, text);
            records.Update();
        }
    }

    static std::string Read(Database& database, std::string_view table, std::string_view employer,
                            std::string_view employee, std::string_view field)
    {
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek(employer, employee);
        return records.NoMatch() ? "no record" : std::string(records.Field(field));
    }

    std::filesystem::path lastYearFile;
};

TEST_F(Transferring, TheListLeavesOutTheSampleAndRecordsOfNobody)
{
    Database database = LastYear();
    Create(database, "Zenith", "Bob", "Young");
    Create(database, "A SAMPLE", "Sam", "Ple");
    {
        Recordset records = database.OpenRecordset("P11D");
        records.AddNew();
        records.SetField("EmployeeName", "Nobody's");
        records.Update();
    }
    Create(database, "Acme", "Jane", "Smith");
    Texts texts;
    for (const LastYearEmployee& employee : ListLastYearEmployees(database))
        texts.push_back(ListText(employee));
    EXPECT_EQ(texts, (Texts{"Zenith - (Bob Young)", "Acme - (Jane Smith)"}));
}

TEST_F(Transferring, TheRecordsAreMadeInTheirOrder)
{
    {
        Database database = LastYear();
        Create(database, "Acme", "Jane", "Smith");
    }
    Texts order;
    SetStoreFaultHook([&](std::string_view statement) {
        if (statement.starts_with("INSERT INTO ["))
            order.emplace_back(statement.substr(13, statement.find(']') - 13));
        return 0;
    });
    EXPECT_EQ(TransferAll(), Notices());
    EXPECT_EQ(order,
              (Texts{"ANotepad",   "BNotepad",  "CNotepad",  "DNotepad",  "ENotepad",      "FNotepad",     "GNotepad",
                     "HNotepad",   "INotepad",  "JNotepad",  "KNotepad",  "LNotepad",      "NNotepad1",    "NNotepad2",
                     "NNotepad3",  "ONotepad1", "ONotepad2", "ONotepad3", "ONotepad4",     "ONotepad5",    "ONotepad6",
                     "SpareTable", "P11D",      "ExtraCars", "P11DB",     "P11DBNotepad1", "P11DBNotepad2"}));
}

/// Whom a table of last year's lacks, whom this year has already and in which order the records stand makes no
/// difference to what is made; it makes one to how many of them have to be sought.
TEST_F(Transferring, RecordsAreReadInOneOrderedPassAndTheSameInAnyOrder)
{
    constexpr int Employees = 60;
    {
        Database lastYear = LastYear();
        WriteBatch batch(lastYear);
        for (int i = 0; i < 20; ++i)
            Create(lastYear, "A SAMPLE", "Sam", std::to_string(i));
        for (int i = 0; i < Employees; ++i)
            Create(lastYear, "Acme", "Jane", std::to_string(i));
        Recordset notepads = lastYear.OpenRecordset("BNotepad");
        notepads.Index("IndKey");
        for (int i = 0; i < Employees; ++i) {
            notepads.Seek("Acme", fmt::format("Jane {}", i));
            notepads.Edit();
            notepads.SetField("Description1", fmt::format("of {}", i));
            notepads.Update();
        }
        notepads.Seek("Acme", "Jane 7");
        notepads.Delete();
        batch.Commit();
    }
    const auto putOneThere = [&] {
        Database database = Open();
        Create(database, "Acme", "Jane", "30");
    };
    putOneThere();
    int sought = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        sought += statement.find("FROM [BNotepad] WHERE [Name]=?") != std::string_view::npos;
        return SQLITE_OK;
    });
    const Notices missing{{"Notepad B - File Transfer error", "Employee not found"}};
    EXPECT_EQ(TransferAll(), missing);
    EXPECT_LE(sought, 4) << "past the sample, to the one who is not there, and past the one who is there already";
    const auto inOrder = Dump(file);
    EXPECT_EQ(inOrder.at("BNotepad").at("Acme|Jane 59").at("Description1"), "of 59");
    EXPECT_EQ(inOrder.at("BNotepad").size(), Employees - 1u);
    {
        Database lastYear = LastYear();
        WriteBatch batch(lastYear);
        Recordset notepads = lastYear.OpenRecordset("BNotepad");
        notepads.Index("IndKey");
        for (const int i : {0, 3, 20, 59}) {
            notepads.Seek("Acme", fmt::format("Jane {}", i));
            notepads.Delete();
            Add(lastYear, "BNotepad", "Acme", fmt::format("Jane {}", i));
            notepads.Seek("Acme", fmt::format("Jane {}", i));
            notepads.Edit();
            notepads.SetField("Description1", fmt::format("of {}", i));
            notepads.Update();
        }
        batch.Commit();
    }
    MakeEmpty(file);
    putOneThere();
    EXPECT_EQ(TransferAll(), missing);
    EXPECT_EQ(Dump(file), inOrder);
}

TEST_F(Transferring, TheLastYearSampleGoesOver)
{
    std::filesystem::remove(lastYearFile);
    sample::CreateLastYear(lastYearFile);
    EXPECT_EQ(TransferAll(), Notices());
    Database database = Open();
    const auto p11d = [&](std::string_view employer, std::string_view employee, std::string_view field) {
        return Read(database, "P11D", employer, employee, field);
    };
    EXPECT_EQ(Dump(database, FindTable("P11D")).size(), 5u);
    EXPECT_EQ(p11d("A SAMPLE", "Sam Ple", "NatIns"), "no record");
    EXPECT_EQ(p11d("Harbour Bakery Ltd", "Alice Marsh", "FMakeModel1"), "New saloon");
    EXPECT_EQ(p11d("Harbour Bakery Ltd", "Alice Marsh", "FMakeModel2"), "Estate");
    EXPECT_EQ(p11d("Harbour Bakery Ltd", "Alice Marsh", "ACashEqu"), "");
    EXPECT_EQ(p11d("Harbour Bakery Ltd", "Ellis", "FMakeModel1"), "Hatchback");
    EXPECT_EQ(p11d("Harbour Bakery Ltd", "Ellis", "FFuelTick1"), "");
    EXPECT_EQ(p11d("Harbour Bakery Ltd", "Ellis", "Surname"), "Ellis");
    EXPECT_EQ(Read(database, "KNotepad", "Harbour Bakery Ltd", "Alice Marsh", "Description20"), "Gardener");
    EXPECT_EQ(Read(database, "GNotepad", "Harbour Bakery Ltd", "Peter Colin Quay", "RegNumber1"), "HB06 VAN");
    EXPECT_EQ(Read(database, "GNotepad", "Harbour Bakery Ltd", "Peter Colin Quay", "RegNumber2"), "HB07 VAN");
    EXPECT_EQ(Read(database, "HNotepad", "Northgate Surveyors", "Ruth Fenn", "MaxBalanceLater1"), "  12000.00");
    EXPECT_EQ(Read(database, "HNotepad", "Northgate Surveyors", "Ruth Fenn", "MaxBalanceLater2"), "   5500.00");
    EXPECT_EQ(Read(database, "HNotepad", "Northgate Surveyors", "Ruth Fenn", "Currency4"), "Sterling");
    EXPECT_EQ(Read(database, "ExtraCars", "Northgate Surveyors", "Omar Field", "FMakeModel6"), "Car six");
    EXPECT_EQ(p11d("Northgate Surveyors", "Omar Field", "FFuelTick1"), "1");
    EXPECT_EQ(p11d("Northgate Surveyors", "Omar Field", "FFuelTick2"), "");
}

TEST_F(Transferring, TheLastYearSampleIsTheSameEachTime)
{
    const auto bytes = [this](const char* name) {
        sample::CreateLastYear(folder.path / name);
        std::string content;
        FILE* in = std::fopen((folder.path / name).c_str(), "rb");
        for (int c = 0; (c = std::fgetc(in)) != EOF;)
            content += static_cast<char>(c);
        std::fclose(in);
        return content;
    };
    EXPECT_EQ(bytes("one"), bytes("two"));
}

TEST_F(Transferring, NamesAlreadyThereAreLeftWhateverTheirRecordsHold)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        Database database = Open();
        Create(database, "Acme", "Jane", "Smith");
        DeleteEmployee(database, "Acme", "Jane Smith");
        Add(database, "P11D", "Acme", "Jane Smith");
    }
    const auto before = Dump(file);
    EXPECT_EQ(TransferAll(), Notices());
    EXPECT_EQ(Dump(file), before);
}

TEST_F(Transferring, SingleAndAllTellOfMissingRecordsAlikeButForThePage)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        DeleteEmployee(lastYear, "Acme", "Jane Smith");
    }
    const LastYearEmployee jane{.employer = "Acme", .employee = "Jane Smith", .firstName = "Jane", .surname = "Smith"};
    Notices expected;
    for (const TransferTable& row : TransferTables)
        if (!row.errorTitle.empty())
            expected.push_back({std::string(row.errorTitle), "Employee not found"});
    expected.push_back({"P11D Single Client - File Transfer error", "Employee not found"});
    expected.push_back({"Notepad Extra Cars - File Transfer error", "Employee not found"});
    EXPECT_EQ(TransferOne(jane), expected);

    // The employer is taken over with the first; the second of the same run finds him.
    Notices ofAll;
    YearTransfer transfer(file, lastYearFile);
    transfer.Transfer({"Nowhere", "Joe Young", "Joe", "Young"}, TransferMode::All, ofAll);
    expected.erase(expected.end() - 2);
    expected.push_back({"P11DB Single Client - File Transfer error", "Employer not found"});
    EXPECT_EQ(ofAll, expected);
}

TEST_F(Transferring, ARecordInTheWayIsToldAndTheOthersAreMade)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        Database database = Open();
        Add(database, "CNotepad", "Acme", "Jane Smith");
        Add(database, "SpareTable", "Acme", "Jane Smith");
    }
    const Notices notices = TransferAll();
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].title, "Notepad C - File Transfer error");
    EXPECT_EQ(notices[1].title, TransferTitle);
    Database database = Open();
    for (const TableLayout* table : NewEmployeeTables())
        EXPECT_EQ(Dump(database, *table).size(), 1u) << table->name;
}

TEST_F(Transferring, WhoStandsBehindTheEndOfTheLookUpIsRefusedByHisKey)
{
    {
        Database database = Open();
        Database lastYear = LastYear();
        WriteBatch batch(database);
        Recordset records = database.OpenRecordset("P11D");
        for (int i = 0; i < 3001; ++i) {
            const std::string employee = fmt::format("Employee {}", i);
            records.AddNew();
            records.SetField("EmployerName", "Acme");
            records.SetField("EmployeeName", employee);
            records.SetField("Name", JoinedName("Acme", employee));
            records.Update();
        }
        batch.Commit();
        Create(lastYear, "Acme", "Employee", "2999");
        Create(lastYear, "Acme", "Employee", "3000");
    }
    const Notices notices = TransferAll();
    ASSERT_EQ(notices.size(), 1u) << "only the one behind the end of the look-up is tried, and only P11D has him";
    EXPECT_EQ(notices[0].title, TransferTitle);
    {
        Database database = Open();
        EXPECT_EQ(Dump(database, FindTable("P11D")).size(), 3001u);
        EXPECT_EQ(Dump(database, FindTable("ANotepad")).size(), 1u);
        Create(database, "Acme", "One", "more");
    }
    EXPECT_THROW(TransferAll(), TooManyEmployees);
}

TEST_F(Transferring, TheSampleTakesNoPlaceInTheListOfThoseAlreadyThere)
{
    {
        Database database = Open();
        WriteBatch batch(database);
        for (int i = 0; i < 3001; ++i)
            Add(database, "P11D", i % 100 == 0 ? "A SAMPLE" : "Acme", std::to_string(i));
        batch.Commit();
    }
    const YearTransfer transfer(file, lastYearFile);
    EXPECT_TRUE(transfer.EmployeeExists("Acme", "2999"));
    EXPECT_FALSE(transfer.EmployeeExists("A SAMPLE", "100"));
}

TEST_F(Transferring, LastYearsFileIsNotWritten)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
    }
    const auto before = Dump(lastYearFile);
    const auto written = std::filesystem::last_write_time(lastYearFile);
    TransferAll();
    EXPECT_TRUE(Dump(lastYearFile) == before);
    EXPECT_EQ(std::filesystem::last_write_time(lastYearFile), written);
}

TEST_F(Transferring, ManyEmployeesCostOneSync)
{
    {
        Database lastYear = LastYear();
        WriteBatch batch(lastYear);
        for (int i = 0; i < 250; ++i)
            Create(lastYear, "Acme", "Jane", std::to_string(i));
        batch.Commit();
    }
    int commits = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        commits += statement == "COMMIT";
        return 0;
    });
    TransferAll();
    EXPECT_EQ(commits, 2);
}

TEST_F(Transferring, AnEmployerWhomSomebodyElseDeletesMeanwhileIsMadeAnew)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        Create(lastYear, "Acme", "John", "Brown");
    }
    YearTransfer transfer(file, lastYearFile);
    Notices notices;
    for (const LastYearEmployee& employee : transfer.LastYearEmployees()) {
        transfer.Transfer(employee, TransferMode::All, notices);
        transfer.Commit();
        Database another = Open();
        for (const std::string_view table : {"P11DB", "P11DBNotepad1", "P11DBNotepad2"}) {
            Recordset records = another.OpenRecordset(table);
            records.MoveFirst();
            EXPECT_FALSE(records.AtEnd()) << table << " of " << employee.employee;
            if (employee.employee == "Jane Smith")
                records.Delete();
        }
    }
    EXPECT_EQ(notices, Notices());
}

TEST_F(Transferring, AFailureOfTheStoreCostsOneRecordAndTheNextRunGoesOn)
{
    {
        Database lastYear = LastYear();
        WriteBatch batch(lastYear);
        for (int i = 0; i < 3; ++i)
            Create(lastYear, "Acme", "Jane", std::to_string(i));
        batch.Commit();
    }
    TransferAll();
    const auto whole = Dump(file);
    for (int failing = 1; failing <= 29; ++failing) {
        MakeEmpty(file);
        int inserts = 0;
        std::string table;
        SetStoreFaultHook([&](std::string_view statement) {
            if (!statement.starts_with("INSERT INTO [") || ++inserts != failing)
                return SQLITE_OK;
            table = statement.substr(13, statement.find(']') - 13);
            return SQLITE_FULL;
        });
        const Notices notices = TransferAll();
        SetStoreFaultHook({});
        ASSERT_EQ(notices.size(), 1u) << table;
        EXPECT_EQ(notices[0].text, "database or disk is full");
        EXPECT_EQ(Dump(file).at("SpareTable").size(), table == "SpareTable" ? 2u : 3u) << "the others follow";
        TransferAll();
        // Only the record that was told of can be missing now; without his page's record he is transferred again.
        int missing = 0;
        const auto left = Dump(file);
        for (const auto& [name, records] : whole)
            for (const auto& [key, record] : records)
                if (const auto found = left.at(name).find(key); found == left.at(name).end()) {
                    EXPECT_EQ(name, table);
                    ++missing;
                } else {
                    EXPECT_EQ(found->second, record);
                }
        EXPECT_EQ(missing, table == "P11D" || table.starts_with("P11DB") ? 0 : 1) << table;
    }
}

TEST_F(Transferring, WhatCannotBeStoredAtTheEndIsThrown)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
    }
    SetStoreFaultHook([&](std::string_view statement) { return statement == "COMMIT" ? SQLITE_IOERR : SQLITE_OK; });
    EXPECT_THROW(TransferAll(), StoreError);
    SetStoreFaultHook({});
    Database database = Open();
    EXPECT_EQ(Dump(database, FindTable("ANotepad")).size(), 0u);
}

TEST_F(Transferring, ARecordThatCannotBeReadIsMadeWithItsKeysAlone)
{
    {
        Database lastYear = LastYear();
        WriteBatch batch(lastYear);
        for (int i = 0; i < 3; ++i)
            Create(lastYear, "Acme", "Jane", std::to_string(i));
        for (const auto& [table, field] : {std::pair("BNotepad", "Description1"), std::pair("GNotepad", "RegNumber1")})
            Give(lastYear, table, field, "of last year");
        batch.Commit();
    }
    for (const TransferTable& row : TransferTables) {
        if (row.errorTitle.empty())
            continue;
        SCOPED_TRACE(row.table);
        MakeEmpty(file);
        SetStoreFaultHook([&](std::string_view statement) {
            return statement.starts_with("SELECT") &&
                           statement.find(fmt::format("FROM [{}] ", row.table)) != std::string_view::npos
                       ? SQLITE_IOERR
                       : SQLITE_OK;
        });
        const Notices notices = TransferAll();
        SetStoreFaultHook({});
        EXPECT_EQ(notices, Notices(3, {std::string(row.errorTitle), "disk I/O error"}));
        const auto made = Dump(file);
        for (const auto& [table, records] : made)
            EXPECT_EQ(records.size(), table.starts_with("P11DB") ? 1u : 3u) << table;
        for (const auto& [key, record] : made.at(std::string(row.table)))
            EXPECT_EQ(record.size(), 3u) << key;
    }
}

TEST_F(Transferring, AnEmployerWhoCannotBeReadIsMadeWithHisNameAlone)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        Create(lastYear, "Acme", "John", "Brown");
        Give(lastYear, "P11DB", "EmployerAdd1", "of last year");
    }
    int reads = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        return statement.starts_with("SELECT") && statement.find("FROM [P11DB]") != std::string_view::npos &&
                       ++reads == 2
                   ? SQLITE_CORRUPT
                   : SQLITE_OK;
    });
    EXPECT_EQ(TransferAll(),
              (Notices{{"P11DB Single Client - File Transfer error", "database disk image is malformed"}}));
    SetStoreFaultHook({});
    Database database = Open();
    EXPECT_EQ(Dump(database, FindTable("P11DB")), (Records{{"Acme", {{"EmployerName", "Acme"}}}}));
}

TEST_F(Transferring, CurrenciesThatCannotBeReadCostTheLoansAlone)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        Create(lastYear, "Acme", "John", "Brown");
    }
    int reads = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        return statement.find("[HNotepad2]") != std::string_view::npos && ++reads == 1 ? SQLITE_IOERR : SQLITE_OK;
    });
    EXPECT_EQ(TransferAll(), (Notices{{"Notepad H - File Transfer error", "disk I/O error"}}));
    SetStoreFaultHook({});
    const auto made = Dump(file);
    for (const auto& [table, records] : made)
        EXPECT_EQ(records.size(), table.starts_with("P11DB") ? 1u : 2u) << table;
    EXPECT_EQ(made.at("HNotepad").at("Acme|Jane Smith").size(), 3u);
    EXPECT_GT(made.at("HNotepad").at("Acme|John Brown").size(), 3u);
}

/// Two cars of the page, of which the first ended, and one of ExtraCars.
void GiveCars(Database& database)
{
    for (const auto& [table, numbers] :
         {std::pair("P11D", std::vector{1, 2}), std::pair("ExtraCars", std::vector{3})}) {
        Recordset records = database.OpenRecordset(table);
        records.MoveFirst();
        records.Edit();
        for (const int number : numbers) {
            records.SetField(Numbered("FMakeModel", number), fmt::format("Car {}", number));
            records.SetField(Numbered("FRegDate", number), "01/02/2008");
            records.SetField(Numbered("FListPrice", number), "  20000.00");
            records.SetField(Numbered("FCashEqu", number), "   3000.00");
        }
        if (numbers.front() == 1)
            records.SetField("FDateTo1", "31/12/2009");
        records.Update();
    }
}

TEST_F(Transferring, ExtraCarsThatCannotBeReadStayBehindAndTheirRecordIsMade)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        GiveCars(lastYear);
    }
    for (const TransferMode mode : {TransferMode::Single, TransferMode::All}) {
        SetStoreFaultHook([](std::string_view statement) {
            return statement.starts_with("SELECT") && statement.find("FROM [ExtraCars]") != std::string_view::npos
                       ? SQLITE_CORRUPT
                       : SQLITE_OK;
        });
        const Notices notices =
            mode == TransferMode::All ? TransferAll() : TransferOne({"Acme", "Jane Smith", "Jane", "Smith"});
        SetStoreFaultHook({});
        ASSERT_EQ(notices.size(), 1u);
        EXPECT_EQ(notices[0].title, "Notepad Extra Cars - File Transfer error");
        EXPECT_EQ(notices[0].text, "database disk image is malformed");
        Database database = Open();
        EXPECT_EQ(Read(database, "P11D", "Acme", "Jane Smith", "FMakeModel1"), "Car 2");
        EXPECT_EQ(Read(database, "P11D", "Acme", "Jane Smith", "FMakeModel2"), "");
        const Records extraCars = Dump(database, FindTable("ExtraCars"));
        ASSERT_EQ(extraCars.size(), 1u) << "cars 3 to 6 can be entered";
        EXPECT_EQ(extraCars.at("Acme|Jane Smith").size(), 3u);
        DeleteEmployee(database, "Acme", "Jane Smith");
    }
}

TEST_F(Transferring, APageThatCannotBeReadLeavesNoRecordInTheWayOfTheNextRun)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        GiveCars(lastYear);
    }
    const LastYearEmployee jane{.employer = "Acme", .employee = "Jane Smith", .firstName = "Jane", .surname = "Smith"};
    SetStoreFaultHook([](std::string_view statement) {
        return statement.starts_with("SELECT") && statement.find("FROM [P11D] WHERE [Name]") != std::string_view::npos
                   ? SQLITE_IOERR
                   : SQLITE_OK;
    });
    EXPECT_EQ(TransferOne(jane), (Notices{{"P11D Single Client - File Transfer error", "disk I/O error"}}));
    SetStoreFaultHook({});
    {
        Database database = Open();
        EXPECT_EQ(Dump(database, FindTable("P11D")).size(), 0u);
        EXPECT_EQ(Dump(database, FindTable("ExtraCars")).size(), 0u);
        EXPECT_EQ(Dump(database, FindTable("P11DB")).size(), 1u);
    }
    for (const TransferNotice& notice : TransferOne(jane))
        EXPECT_EQ(notice.text, "There is a record already. It has been left as it is.") << notice.title;
    Database database = Open();
    EXPECT_EQ(Read(database, "P11D", "Acme", "Jane Smith", "FMakeModel1"), "Car 2");
    EXPECT_EQ(Read(database, "P11D", "Acme", "Jane Smith", "FMakeModel2"), "Car 3");
    EXPECT_EQ(Read(database, "ExtraCars", "Acme", "Jane Smith", "FMakeModel3"), "");
}

TEST_F(Transferring, ALockOfSomebodyElseEndsTheRunAfterOneWait)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        Create(lastYear, "Acme", "John", "Brown");
        Recordset records = lastYear.OpenRecordset("ANotepad");
        records.MoveFirst();
        records.Delete();
    }
    Notices notices;
    YearTransfer transfer(file, lastYearFile);
    const std::vector<LastYearEmployee> employees = transfer.LastYearEmployees();
    {
        Database other = Open();
        WriteBatch lock(other);
        Add(other, "BNotepad", "Other", "Somebody");
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_THROW(transfer.Transfer(employees[0], TransferMode::All, notices), StoreError);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4)) << "one wait, not one a table";
        EXPECT_EQ(notices, (Notices{{"Notepad A - File Transfer error", "Employee not found"}}));
        EXPECT_EQ(transfer.FirstNotStored().employee, "Jane Smith");
    }
    // Whoever goes on with the others can.
    notices.clear();
    transfer.Transfer(employees[1], TransferMode::All, notices);
    transfer.Commit();
    EXPECT_EQ(notices, Notices());
    Database database = Open();
    EXPECT_EQ(Dump(database, FindTable("P11D")).size(), 1u);
}

TEST_F(Transferring, LastYearsDatabaseOutOfReachKeepsThoseBefore)
{
    {
        Database lastYear = LastYear();
        Create(lastYear, "Acme", "Jane", "Smith");
        Create(lastYear, "Acme", "John", "Brown");
    }
    Notices notices;
    YearTransfer transfer(file, lastYearFile);
    const std::vector<LastYearEmployee> employees = transfer.LastYearEmployees();
    transfer.Transfer(employees[0], TransferMode::All, notices);
    int reads = 0;
    SetStoreFaultHook([&](std::string_view statement) {
        return statement.starts_with("SELECT") && ++reads > 0 ? SQLITE_BUSY : SQLITE_OK;
    });
    EXPECT_THROW(transfer.Transfer(employees[1], TransferMode::All, notices), StoreError);
    SetStoreFaultHook({});
    EXPECT_EQ(reads, 1);
    EXPECT_EQ(notices, Notices());
    EXPECT_EQ(transfer.FirstNotStored().employee, "John Brown");
    Database database = Open();
    EXPECT_EQ(Dump(database, FindTable("P11D")).size(), 1u) << "Jane has been stored";
}

TEST_F(Transferring, ACommitThatFailsNamesTheFirstWhoIsNotStored)
{
    {
        Database lastYear = LastYear();
        WriteBatch batch(lastYear);
        for (int i = 0; i < 5; ++i)
            Create(lastYear, "Acme", "Jane", std::to_string(i));
        DeleteEmployee(lastYear, "Acme", "Jane 3");
        batch.Commit();
    }
    Notices notices;
    YearTransfer transfer(file, lastYearFile);
    const std::vector<LastYearEmployee> employees = transfer.LastYearEmployees();
    transfer.Transfer(employees[0], TransferMode::All, notices);
    transfer.Commit();
    transfer.Transfer(employees[1], TransferMode::All, notices);
    transfer.Transfer(employees[2], TransferMode::All, notices);
    EXPECT_EQ(notices, Notices());
    // His missing records are told of although they come with the failure.
    SetStoreFaultHook([](std::string_view statement) { return statement == "COMMIT" ? SQLITE_FULL : SQLITE_OK; });
    EXPECT_THROW(transfer.Transfer({"Acme", "Jane 3", "Jane", "3"}, TransferMode::All, notices), BatchLost);
    SetStoreFaultHook({});
    EXPECT_EQ(notices.size(), 22u);
    EXPECT_EQ(transfer.FirstNotStored().employee, "Jane 1");
    Database database = Open();
    EXPECT_EQ(Dump(database, FindTable("P11D")).size(), 1u);
}

// ---- random databases -----------------------------------------------------------------------------

/// Fills every employee's records with texts that tell where they stood, and leaves some empty.
void FillAtRandom(Database& database, int employees, std::mt19937& random)
{
    const auto any = [&](std::initializer_list<const char*> texts) {
        return std::string(*(texts.begin() + static_cast<std::ptrdiff_t>(random() % texts.size())));
    };
    WriteBatch batch(database);
    for (int i = 0; i < employees; ++i) {
        const std::string employer = any({"Acme", "Zenith", "A SAMPLE"});
        CreateEmployee(database, {employer, "Jane", std::to_string(i), "1"});
        for (const TableLayout* table : NewEmployeeTables()) {
            Recordset records = database.OpenRecordset(table->name);
            if (table->level == TableLevel::Employee) {
                records.Index("IndKey");
                records.Seek(employer, fmt::format("Jane {}", i));
            } else {
                records.Index("PrimaryKey");
                records.Seek(employer);
            }
            records.Edit();
            for (const Field& field : FieldsOf(*table).All()) {
                if (field.name == "EmployerName" || field.name == "EmployeeName" || field.name == "Name")
                    continue;
                std::string text = random() % 4 == 0 ? "" : fmt::format("{}.{}", table->name, field.name);
                if (field.kind == FieldKind::Tick && field.name != "SexTick")
                    text = any({"", "0", "1"});
                else if (field.name.starts_with("FDateTo") || field.name.starts_with("DateTo"))
                    text = any({"", "", "05/04/2003", "05/04/3004", "05/04/2010"});
                else if (field.name.starts_with("Currency"))
                    text = any({"", "Sterling", "Yen"});
                if (text.empty() && random() % 2 == 0)
                    records.SetNull(field.name);
                else
                    records.SetField(field.name, text);
            }
            records.Update();
        }
    }
    batch.Commit();
}

std::string StemOf(const std::string& name)
{
    return name.substr(0, name.find_last_not_of("0123456789") + 1);
}

TEST_F(Transferring, WhatIsNeverCarriedIsNeverCarriedAndTwiceChangesNothing)
{
    const std::set<std::string> keys = {"EmployerName", "EmployeeName", "Name"};
    const std::map<std::string, std::set<std::string>> carried = {
        {"DNotepad", {"Address", "Postcode"}},
        {"GNotepad", {"RegNumber", "BeforeApril"}},
        {"HNotepad", {"Currency", "Index", "InterestRate", "MaxBalanceLater"}},
        {"P11D",
         {"FirstName", "Surname", "DOB", "SexTick", "PAYEBox", "WorkNumberBox", "NatIns", "DirectorTick", "FMakeModel",
          "FRegDate", "FC", "FEngine", "FListPrice", "FAccessories", "FFuel", "FCaptContr", "FPrivateUse", "FNoC",
          "FFuelTick"}},
        {"ExtraCars",
         {"FMakeModel", "FRegDate", "FC", "FEngine", "FListPrice", "FAccessories", "FFuel", "FCaptContr", "FPrivateUse",
          "FNoC", "FFuelTick"}},
        {"P11DB", {"EmployerReference", "AccountsOffReference", "EmployerAdd", "ReturnAdd"}},
        {"ANotepad", {}},
        {"ENotepad", {}},
        {"FNotepad", {}},
        {"JNotepad", {}},
        {"SpareTable", {}},
        {"P11DBNotepad1", {}},
        {"P11DBNotepad2", {}},
    };
    const std::set<std::string> descriptions = {"Description"};
    std::mt19937 random(20110405);
    for (int round = 0; round < 12; ++round) {
        MakeEmpty(file);
        MakeEmpty(lastYearFile);
        {
            Database lastYear = LastYear();
            FillAtRandom(lastYear, 8, random);
            // Some are there this year, with what they have.
            Database database = Open();
            Create(database, "Acme", "Jane", std::to_string(random() % 8));
            Create(database, "Zenith", "Jane", std::to_string(random() % 8));
        }
        const auto before = Dump(file);
        EXPECT_EQ(TransferAll(), Notices());
        const auto after = Dump(file);
        for (const auto& [table, records] : after) {
            const auto allowed = carried.find(table);
            for (const auto& [key, record] : records) {
                EXPECT_FALSE(key.starts_with("A SAMPLE"));
                if (const auto old = before.at(table).find(key); old != before.at(table).end()) {
                    EXPECT_EQ(record, old->second) << table << " " << key;
                    continue;
                }
                for (const auto& [field, text] : record) {
                    if (keys.contains(field))
                        continue;
                    const std::string stem = StemOf(field);
                    EXPECT_TRUE((allowed == carried.end() ? descriptions : allowed->second).contains(stem))
                        << table << "." << field << " = " << text;
                    EXPECT_NE(text, "") << table << "." << field;
                    // A text that tells where it stood stood in a field of the same kind.
                    if (const std::size_t point = text.find('.'); point != std::string::npos && point > 3) {
                        const std::string from = StemOf(text.substr(point + 1));
                        EXPECT_EQ(from, stem == "MaxBalanceLater" ? "MaxBalanceEarlier" : stem)
                            << table << "." << field << " = " << text;
                    }
                }
            }
        }
        EXPECT_EQ(TransferAll(), Notices());
        EXPECT_TRUE(Dump(file) == after) << "the second run changed something";
    }
}

} // namespace
} // namespace quillmere::test
