#include "clientdb/Employees.h"

#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableLayouts.h"
#include "support/StoreFixture.h"

#include <algorithm>
#include <fmt/format.h>

namespace quillmere::test {
namespace {

using Texts = std::vector<std::string>;

class Employees : public StoreFixture {
protected:
    Employees() : database(Open()) {}
    void TearDown() override { SetStoreFaultHook({}); }

    void Create(std::string employer, std::string first, std::string surname, std::string paye = "123/A456")
    {
        CreateEmployee(database, {std::move(employer), std::move(first), std::move(surname), std::move(paye)});
    }

    /// "employer|employee" of every record of a table ("employer" where it has no employee).
    Texts Keys(std::string_view table)
    {
        Texts keys;
        Recordset records = database.OpenRecordset(table);
        const bool ofEmployee = FindTable(table).level == TableLevel::Employee;
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
            keys.emplace_back(records.Field("EmployerName"));
            if (ofEmployee)
                keys.back() += "|" + std::string(records.Field("EmployeeName"));
        }
        return keys;
    }

    std::string Read(std::string_view table, std::string_view employer, std::string_view employee,
                     std::string_view field)
    {
        Recordset records = database.OpenRecordset(table);
        if (FindTable(table).level == TableLevel::Employer) {
            records.Index("PrimaryKey");
            records.Seek(employer);
        } else {
            records.Index("IndKey");
            records.Seek(employer, employee);
        }
        return records.NoMatch() ? "no record" : std::string(records.Field(field));
    }

    void Write(std::string_view table, std::string_view employer, std::string_view employee, std::string_view field,
               std::string_view text)
    {
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek(employer, employee);
        records.Edit();
        records.SetField(field, text);
        records.Update();
    }

    Database database;
};

TEST_F(Employees, KeysAreJoinedWithOneBlank)
{
    EXPECT_EQ(EmployeeName("Jane", "Smith"), "Jane Smith");
    EXPECT_EQ(EmployeeName("", "Smith"), "Smith");
    EXPECT_EQ(EmployeeName("Jane", ""), "Jane");
    EXPECT_EQ(EmployeeName(" Jane ", " van Dyke "), "Jane   van Dyke");
    EXPECT_EQ(JoinedName("Acme Ltd", "Jane Smith"), "Acme Ltd Jane Smith");
}

TEST_F(Employees, ANewEmployeeHasTwentySevenRecordsWithOnlyTheirKeysSet)
{
    Create("Acme Ltd", "Jane", "Smith");
    for (const TableLayout* table : NewEmployeeTables()) {
        Recordset records = database.OpenRecordset(table->name);
        records.MoveFirst();
        ASSERT_FALSE(records.AtEnd()) << table->name;
        Texts set;
        for (const Field& field : FieldsOf(*table).All())
            if (!records.IsNull(field.name))
                set.push_back(field.name + "=" + std::string(records.Field(field.name)));
        Texts expected = {"EmployerName=Acme Ltd"};
        if (table->level == TableLevel::Employee)
            expected.insert(expected.end(), {"EmployeeName=Jane Smith", "Name=Acme Ltd Jane Smith"});
        if (table->name == "P11D" || table->name == "ExtraCars")
            expected.insert(expected.end(), {"FirstName=Jane", "Surname=Smith"});
        if (table->name == "P11D")
            expected.emplace_back("PAYEBox=123/A456");
        if (table->name == "P11DB")
            expected.insert(expected.end(), {"EmployerReference=123/A456", "EmployerAdd1=Acme Ltd"});
        EXPECT_EQ(set, expected) << table->name;
        records.MoveNext();
        EXPECT_TRUE(records.AtEnd()) << table->name;
    }
}

TEST_F(Employees, TheRecordsAreMadeInTheirOrder)
{
    Texts order;
    SetStoreFaultHook([&](std::string_view statement) {
        if (statement.starts_with("INSERT INTO ["))
            order.emplace_back(statement.substr(13, statement.find(']') - 13));
        return 0;
    });
    Create("Acme Ltd", "Jane", "Smith");
    EXPECT_EQ(order,
              (Texts{"P11D",      "ANotepad",  "BNotepad",      "CNotepad",      "DNotepad",  "FNotepad",  "GNotepad",
                     "INotepad",  "KNotepad",  "LNotepad",      "ONotepad1",     "ONotepad2", "ONotepad3", "ONotepad4",
                     "ONotepad5", "ONotepad6", "JNotepad",      "ENotepad",      "HNotepad",  "NNotepad1", "NNotepad2",
                     "NNotepad3", "P11DB",     "P11DBNotepad1", "P11DBNotepad2", "ExtraCars", "SpareTable"}));
}

TEST_F(Employees, ASecondEmployeeAddsNothingToTheEmployersRecords)
{
    Create("Acme Ltd", "Jane", "Smith", "first");
    Create("Acme Ltd", "John", "Smith", "second");
    for (const char* table : {"P11DB", "P11DBNotepad1", "P11DBNotepad2"})
        EXPECT_EQ(Keys(table), Texts{"Acme Ltd"}) << table;
    EXPECT_EQ(Read("P11DB", "Acme Ltd", "", "EmployerReference"), "first");
    EXPECT_EQ(Read("P11D", "Acme Ltd", "John Smith", "PAYEBox"), "second");
    EXPECT_EQ(Keys("SpareTable"), (Texts{"Acme Ltd|Jane Smith", "Acme Ltd|John Smith"}));
}

TEST_F(Employees, ARefusedKeyNamesTheRecordsMadeBefore)
{
    // A left-over record with the joined name, from other parts, in the eleventh table.
    Add(database, "ONotepad1", "Acme", "Ltd Jane Smith");
    try {
        Create("Acme Ltd", "Jane", "Smith");
        FAIL();
    } catch (const RecordsNotMade& failure) {
        EXPECT_EQ(failure.Made(), (Texts{"P11D", "ANotepad", "BNotepad", "CNotepad", "DNotepad", "FNotepad", "GNotepad",
                                         "INotepad", "KNotepad", "LNotepad"}));
        for (const std::string& table : failure.Made())
            EXPECT_EQ(Keys(table), Texts{"Acme Ltd|Jane Smith"}) << table;
        EXPECT_NE(std::string_view(failure.what()).find("ONotepad1"), std::string_view::npos) << failure.what();
        EXPECT_NE(std::string_view(failure.what()).find("KNotepad, LNotepad"), std::string_view::npos)
            << failure.what();
    }
    EXPECT_EQ(Keys("ONotepad2"), Texts{});
}

TEST_F(Employees, TwoNamesThatJoinToTheSameAreRefusedAtOnce)
{
    Create("Acme", "Jane", "Smith");
    try {
        Create("Acme Jane", "", "Smith");
        FAIL();
    } catch (const RecordsNotMade& failure) {
        EXPECT_EQ(failure.Made(), Texts{});
    }
    EXPECT_EQ(ListEmployers(database), Texts{"Acme"});
}

TEST_F(Employees, AFailureAtAnyWriteOfTheCreationKeepsTheRecordsBefore)
{
    const auto tables = NewEmployeeTables();
    for (std::size_t failing = 0; failing < tables.size(); ++failing) {
        const std::string employer = fmt::format("E{}", failing);
        std::size_t writes = 0;
        SetStoreFaultHook([&](std::string_view statement) {
            return statement.starts_with("INSERT") && writes++ == failing ? 10 : 0;
        });
        try {
            Create(employer, "Jane", "Smith");
            ADD_FAILURE() << failing;
        } catch (const RecordsNotMade& failure) {
            EXPECT_EQ(failure.Made().size(), failing);
        }
        SetStoreFaultHook({});
        for (std::size_t i = 0; i < tables.size(); ++i) {
            const bool stored = Read(tables[i]->name, employer, "Jane Smith", "EmployerName") == employer;
            EXPECT_EQ(stored, i < failing) << failing << ' ' << tables[i]->name;
        }
    }
}

TEST_F(Employees, ACreationThatCannotBeCommittedNamesNoRecord)
{
    SetStoreFaultHook([](std::string_view statement) { return statement == "COMMIT" ? 13 : 0; });
    try {
        Create("Acme", "Jane", "Smith");
        FAIL();
    } catch (const RecordsNotMade& failure) {
        EXPECT_EQ(failure.Made(), Texts{});
        EXPECT_EQ(failure.Number(), 13);
    }
    EXPECT_EQ(Keys("P11D"), Texts{});
}

TEST_F(Employees, ACreationOnADyingDiskNamesNoRecordThatNobodyCanFind)
{
    SetStoreFaultHook([failed = false](std::string_view statement) mutable {
        failed = failed || statement == "COMMIT";
        return failed ? 10 : 0;
    });
    try {
        Create("Acme", "Jane", "Smith");
        FAIL();
    } catch (const RecordsNotMade& failure) {
        EXPECT_EQ(failure.Made(), Texts{});
        EXPECT_EQ(std::string(failure.what()).find("already made"), std::string::npos);
    }
    SetStoreFaultHook({});
    EXPECT_EQ(Keys("P11D"), Texts{});
}

// ---- lists --------------------------------------------------------------------------------------

TEST_F(Employees, EmployersAreListedAsTheyAreFirstMet)
{
    Create("Zeta", "A", "B");
    Create("acme", "A", "B");
    Create("Zeta", "C", "D");
    Create("Acme", "A", "B");
    EXPECT_EQ(ListEmployers(database), (Texts{"Zeta", "acme", "Acme"}));
}

TEST_F(Employees, TheSampleAndRecordsWithoutEmployerAreNeverListed)
{
    Create("A SAMPLE", "A", "B");
    Create("A Sample", "A", "B");
    for (const bool empty : {false, true}) {
        Recordset records = database.OpenRecordset("P11D");
        records.AddNew();
        records.SetField("Surname", "Nobody");
        if (empty)
            records.SetField("EmployerName", "");
        records.Update();
    }
    EXPECT_EQ(ListEmployers(database), Texts{"A Sample"});
}

TEST_F(Employees, AListHoldsSevenHundredAndFiftyOneEmployers)
{
    Texts expected;
    {
        WriteBatch batch(database);
        for (int i = 1; i <= 751; ++i) {
            expected.push_back(fmt::format("Employer {}", i));
            Add(database, "P11D", expected.back(), "Jane Smith");
        }
        Add(database, "P11D", "A SAMPLE", "Jane Smith");
        Add(database, "P11D", "Employer 1", "John Smith");
        batch.Commit();
    }
    EXPECT_EQ(ListEmployers(database), expected);
    Add(database, "P11D", "Employer 752", "Jane Smith");
    EXPECT_THROW(ListEmployers(database), TooManyEmployers);
    EXPECT_THROW(ListEmployers(database), std::out_of_range);
}

TEST_F(Employees, AnEmployerMayHaveMoreEmployeesThanThereAreEmployers)
{
    {
        WriteBatch batch(database);
        for (int i = 1; i <= 800; ++i)
            Create("Acme", "Jane", fmt::format("Smith {}", i));
        batch.Commit();
    }
    const Texts listed = ListEmployees(database, "Acme");
    ASSERT_EQ(listed.size(), 800u);
    EXPECT_EQ(listed.front(), "Jane Smith 1");
    EXPECT_EQ(listed.back(), "Jane Smith 800");
    EXPECT_EQ(ListEmployers(database), Texts{"Acme"});
}

TEST_F(Employees, EmployeesAreListedInTheOrderOfAdding)
{
    Create("Acme", "Zoe", "Z");
    Create("Beta", "Ann", "A");
    Create("Acme", "Ann", "A");
    EXPECT_EQ(ListEmployees(database, "Acme"), (Texts{"Zoe Z", "Ann A"}));
    EXPECT_EQ(ListEmployees(database, "ACME"), Texts{});
}

TEST_F(Employees, DuplicatesAreTheSameNamesCaseAndAll)
{
    Create("Acme", "Jane", "Smith");
    EXPECT_TRUE(EmployerExists(database, "Acme"));
    EXPECT_FALSE(EmployerExists(database, "acme"));
    EXPECT_FALSE(EmployerExists(database, "Acme "));
    EXPECT_TRUE(EmployeeExists(database, "Acme", "Jane Smith"));
    EXPECT_FALSE(EmployeeExists(database, "Acme", "jane smith"));
    EXPECT_FALSE(EmployeeExists(database, "Beta", "Jane Smith"));
}

TEST_F(Employees, ANewEmployeeAndARenameBeginWithTheFirstReferenceThereIs)
{
    Create("Acme", "A", "A", "");
    Create("Beta", "B", "B", "beta's");
    Create("Acme", "B", "B", "second");
    Create("Acme", "C", "C", "third");
    EXPECT_EQ(FirstPayeReference(database, "Acme"), "second");
    EXPECT_EQ(FirstPayeReference(database, "Beta"), "beta's");
    EXPECT_EQ(FirstPayeReference(database, "Nobody"), "");
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    records.Seek("Acme", "B B");
    records.Edit();
    records.SetNull("PAYEBox");
    records.Update();
    EXPECT_EQ(FirstPayeReference(database, "Acme"), "third");
}

// ---- deletion -----------------------------------------------------------------------------------

TEST_F(Employees, DeletingTheLastEmployeeLeavesTheEmployersRecords)
{
    Create("Acme", "Jane", "Smith");
    DeleteEmployee(database, "Acme", "Jane Smith");
    for (const TableLayout* table : NewEmployeeTables())
        EXPECT_EQ(Keys(table->name), table->level == TableLevel::Employer ? Texts{"Acme"} : Texts{}) << table->name;
    EXPECT_EQ(ListEmployers(database), Texts{});
    EXPECT_FALSE(EmployerExists(database, "Acme"));
    Create("Acme", "Jane", "Smith", "new");
    EXPECT_EQ(Read("P11DB", "Acme", "", "EmployerReference"), "123/A456") << "the old record is the employer's still";
}

TEST_F(Employees, DeletingAnEmployeeTouchesNobodyElse)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "John", "Smith");
    Create("Beta", "Jane", "Smith");
    DeleteEmployee(database, "Acme", "Jane Smith");
    for (const TableLayout* table : NewEmployeeTables())
        if (table->level == TableLevel::Employee) {
            EXPECT_EQ(Keys(table->name), (Texts{"Acme|John Smith", "Beta|Jane Smith"})) << table->name;
        }
}

TEST_F(Employees, DeletingAnEmployerEmptiesAllHisTables)
{
    Create("Acme", "Jane", "Smith");
    Create("Beta", "Jane", "Smith");
    Create("Acme", "John", "Smith");
    Create("acme", "Jane", "Smith");
    DeleteEmployer(database, "Acme");
    for (const TableLayout* table : NewEmployeeTables())
        EXPECT_EQ(Keys(table->name), table->level == TableLevel::Employer
                                         ? (Texts{"Beta", "acme"})
                                         : (Texts{"Beta|Jane Smith", "acme|Jane Smith"}))
            << table->name;
    EXPECT_EQ(Read("HNotepad", "Beta", "Jane Smith", "Name"), "Beta Jane Smith");
    Recordset currencies = database.OpenRecordset("HNotepad2");
    currencies.MoveFirst();
    EXPECT_FALSE(currencies.AtEnd());
}

TEST_F(Employees, ADeletionThatFailsOnItsWayKeepsWhatItHasDone)
{
    Create("Acme", "Jane", "Smith");
    SetStoreFaultHook(
        [](std::string_view statement) { return statement.starts_with("DELETE FROM [CNotepad]") ? 10 : 0; });
    EXPECT_THROW(DeleteEmployer(database, "Acme"), StoreError);
    SetStoreFaultHook({});
    EXPECT_EQ(Keys("P11D"), Texts{});
    EXPECT_EQ(Keys("BNotepad"), Texts{});
    EXPECT_EQ(Keys("CNotepad"), Texts{"Acme|Jane Smith"});
}

// ---- renaming -----------------------------------------------------------------------------------

TEST_F(Employees, RenamingAnEmployerRewritesEveryKeyAndBothReferences)
{
    Create("Acme", "Jane", "Smith");
    Create("Beta", "Jane", "Smith");
    Create("Acme", "John", "Smith");
    RenameEmployer(database, "Acme", "Apex plc", "999/Z");
    for (const TableLayout* table : NewEmployeeTables())
        if (table->level == TableLevel::Employer) {
            EXPECT_EQ(Keys(table->name), (Texts{"Apex plc", "Beta"})) << table->name;
        } else {
            EXPECT_EQ(Keys(table->name), (Texts{"Apex plc|Jane Smith", "Beta|Jane Smith", "Apex plc|John Smith"}))
                << table->name;
            EXPECT_EQ(Read(table->name, "Apex plc", "John Smith", "Name"), "Apex plc John Smith") << table->name;
        }
    EXPECT_EQ(Read("P11D", "Apex plc", "John Smith", "PAYEBox"), "999/Z");
    EXPECT_EQ(Read("P11DB", "Apex plc", "", "EmployerReference"), "999/Z");
    EXPECT_EQ(Read("P11DB", "Apex plc", "", "EmployerAdd1"), "Apex plc");
    EXPECT_EQ(Read("P11D", "Beta", "Jane Smith", "PAYEBox"), "123/A456");
    EXPECT_EQ(Read("P11DB", "Beta", "", "EmployerAdd1"), "Beta");
}

TEST_F(Employees, RenamingToATakenNameLeavesTheRefusedRecordsUnderTheOldOne)
{
    Create("Acme", "Jane", "Smith", "a");
    Create("Beta", "Jane", "Smith", "b");
    Create("Acme", "John", "Smith", "a");
    RenameEmployer(database, "Acme", "Beta", "c");
    for (const TableLayout* table : NewEmployeeTables())
        EXPECT_EQ(Keys(table->name), table->level == TableLevel::Employer
                                         ? (Texts{"Acme", "Beta"})
                                         : (Texts{"Acme|Jane Smith", "Beta|Jane Smith", "Beta|John Smith"}))
            << table->name;
    EXPECT_EQ(Read("P11D", "Acme", "Jane Smith", "Name"), "Acme Jane Smith");
    EXPECT_EQ(Read("P11D", "Acme", "Jane Smith", "PAYEBox"), "a") << "the whole record stays as it is";
    EXPECT_EQ(Read("P11DB", "Acme", "", "EmployerReference"), "a");
    EXPECT_EQ(Read("P11DB", "Beta", "", "EmployerReference"), "b");
    EXPECT_EQ(Read("P11D", "Beta", "John Smith", "PAYEBox"), "c");
}

TEST_F(Employees, RenamingAnEmployerToHisOwnNameChangesTheReference)
{
    Create("Acme", "Jane", "Smith");
    RenameEmployer(database, "Acme", "Acme", "new");
    EXPECT_EQ(Read("P11D", "Acme", "Jane Smith", "PAYEBox"), "new");
    EXPECT_EQ(Read("P11DB", "Acme", "", "EmployerReference"), "new");
    EXPECT_EQ(Keys("P11D"), Texts{"Acme|Jane Smith"});
}

TEST_F(Employees, AFailureOfTheStoreIsNoRefusedName)
{
    Create("Acme", "Jane", "Smith");
    SetStoreFaultHook([](std::string_view statement) { return statement.starts_with("UPDATE [DNotepad]") ? 10 : 0; });
    EXPECT_THROW(RenameEmployer(database, "Acme", "Apex", "x"), StoreError);
    SetStoreFaultHook({});
    EXPECT_EQ(Keys("CNotepad"), Texts{"Apex|Jane Smith"});
    EXPECT_EQ(Keys("DNotepad"), Texts{"Acme|Jane Smith"});
}

TEST_F(Employees, RenamingAnEmployeeRewritesHisKeysAlone)
{
    Create("Acme", "Jane", "Smith");
    Create("Beta", "Jane", "Smith");
    Write("P11D", "Acme", "Jane Smith", "ACashEqu", "    100.00");
    RenameEmployee(database, "Acme", "Jane Smith", "Jane Jones");
    for (const TableLayout* table : NewEmployeeTables())
        if (table->level == TableLevel::Employee) {
            EXPECT_EQ(Keys(table->name), (Texts{"Acme|Jane Jones", "Beta|Jane Smith"})) << table->name;
            EXPECT_EQ(Read(table->name, "Acme", "Jane Jones", "Name"), "Acme Jane Jones") << table->name;
        }
    EXPECT_EQ(Read("P11D", "Acme", "Jane Jones", "Surname"), "Smith") << "the two parts of the name are no keys";
    EXPECT_EQ(Read("P11D", "Acme", "Jane Jones", "ACashEqu"), "    100.00");
    EXPECT_EQ(Keys("P11DB"), (Texts{"Acme", "Beta"}));
}

TEST_F(Employees, RenamingAnEmployeeToATakenNameFails)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "John", "Smith");
    EXPECT_THROW(RenameEmployee(database, "Acme", "Jane Smith", "John Smith"), StoreError);
    EXPECT_EQ(Keys("P11D"), (Texts{"Acme|Jane Smith", "Acme|John Smith"}));
    // Where only a later table has the name, what was renamed before it stays so.
    Add(database, "CNotepad", "Acme", "Max");
    EXPECT_THROW(RenameEmployee(database, "Acme", "Jane Smith", "Max"), StoreError);
    EXPECT_EQ(Keys("BNotepad"), (Texts{"Acme|Max", "Acme|John Smith"}));
    EXPECT_EQ(Keys("CNotepad"), (Texts{"Acme|Jane Smith", "Acme|John Smith", "Acme|Max"}));
}

} // namespace
} // namespace quillmere::test
