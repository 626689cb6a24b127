#include "clientdb/store/StoreFaults.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/Text.h"
#include "support/StoreFixture.h"

#include <algorithm>
#include <fmt/format.h>
#include <random>

namespace quillmere::test {
namespace {

using Texts = std::vector<std::string>;

class Store : public StoreFixture {
protected:
    void TearDown() override { SetStoreFaultHook({}); }

    /// A statement that writes to a table, of those that the hook sees.
    static bool Writes(std::string_view statement)
    {
        return statement.starts_with("INSERT") || statement.starts_with("UPDATE") || statement.starts_with("DELETE");
    }
};

// ---- finding and reading ------------------------------------------------------------------------

TEST_F(Store, FindsARecordByBothPartsOfItsKey)
{
    Database database = Open();
    Add(database, "P11D", "Acme Ltd", "Jane Smith");
    Add(database, "P11D", "Acme Ltd", "John Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    records.Seek("Acme Ltd", "John Smith");
    ASSERT_FALSE(records.NoMatch());
    EXPECT_EQ(records.Field("Name"), "Acme Ltd John Smith");
    records.Seek("Acme Ltd", "Nobody");
    EXPECT_TRUE(records.NoMatch());
    records.Seek("Acme Ltd", "Jane Smith");
    EXPECT_FALSE(records.NoMatch());
}

TEST_F(Store, FindsARecordByItsJoinedName)
{
    Database database = Open();
    Add(database, "ANotepad", "Acme Ltd", "Jane Smith");
    Recordset records = database.OpenRecordset("ANotepad");
    records.Index("PrimaryKey");
    records.Seek("Acme Ltd Jane Smith");
    ASSERT_FALSE(records.NoMatch());
    EXPECT_EQ(records.Field("EmployeeName"), "Jane Smith");
    records.Seek("Acme Ltd");
    EXPECT_TRUE(records.NoMatch());
}

TEST_F(Store, EverySeekBringsWhateverFieldsAreAskedFor)
{
    Database database = Open();
    std::mt19937 random(1);
    constexpr int records = 12;
    const auto fields = FieldsOf(FindTable("GNotepad")).All();
    const auto textOf = [&](int record, std::size_t field) {
        return (static_cast<std::size_t>(record) + field) % 3 == 0 ? std::string()
                                                                   : fmt::format("{} {}", record, field);
    };
    Recordset made = database.OpenRecordset("GNotepad");
    for (int record = 0; record < records; ++record) {
        made.AddNew();
        for (std::size_t field = 3; field < fields.size(); ++field)
            if (const std::string text = textOf(record, field); !text.empty())
                made.SetField(fields[field].name, text);
        made.SetField("EmployerName", "Acme");
        made.SetField("EmployeeName", fmt::format("{:02}", record));
        made.SetField("Name", fmt::format("Acme {:02}", record));
        made.Update();
    }
    for (int round = 0; round < 40; ++round) {
        Recordset sought = database.OpenRecordset("GNotepad");
        sought.Index("PrimaryKey");
        for (int seek = 0; seek < 8; ++seek) {
            const int record = static_cast<int>(random() % records);
            sought.Seek(fmt::format("Acme {:02}", record));
            ASSERT_FALSE(sought.NoMatch());
            for (std::size_t asked = random() % 12; asked > 0; --asked) {
                const std::size_t field = 3 + random() % (fields.size() - 3);
                ASSERT_EQ(sought.Field(fields[field].name), textOf(record, field));
                ASSERT_EQ(sought.IsNull(fields[field].name), textOf(record, field).empty());
            }
            // A scan goes on from there, in the order of the key.
            if (random() % 3 == 0) {
                sought.MoveNext();
                ASSERT_EQ(sought.AtEnd(), record + 1 == records);
                if (!sought.AtEnd()) {
                    ASSERT_EQ(sought.Field(fields[10].name), textOf(record + 1, 10));
                }
            }
        }
        sought.Seek("Acme nobody");
        EXPECT_TRUE(sought.NoMatch());
        EXPECT_THROW((void)sought.Field("RegNumber1"), StoreError);
    }
}

TEST_F(Store, AFieldWrittenAfterARepeatedSeekIsReadBack)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane");
    Add(database, "P11D", "Acme", "Joe");
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    for (const char* employee : {"Jane", "Joe", "Jane"}) {
        records.Seek("Acme", employee);
        EXPECT_EQ(records.Field("Name"), fmt::format("Acme {}", employee));
        records.Edit();
        records.SetField("NatIns", employee);
        records.Update();
        EXPECT_EQ(records.Field("NatIns"), employee);
        EXPECT_EQ(records.Field("Name"), fmt::format("Acme {}", employee));
    }
}

TEST_F(Store, ReadsOfABatchSeeOneStateAndKeepOthersFromWriting)
{
    Database database = Open(OpenMode::ReadOnly);
    Recordset records = database.OpenRecordset("P11D");
    {
        const ReadBatch reading(database);
        const ReadBatch nested(database);
        records.MoveFirst();
        EXPECT_TRUE(records.AtEnd());
        Database other = Open();
        // A server lets others write; what is read is of one state all the same.
        if (OnServer())
            Add(other, "P11D", "Acme", "Joe");
        else
            EXPECT_THROW(Add(other, "P11D", "Acme", "Joe"), StoreError);
        records.MoveFirst();
        EXPECT_TRUE(records.AtEnd());
    }
    Database other = Open();
    Add(other, "P11D", "Acme", "Jane");
    records.MoveFirst();
    EXPECT_FALSE(records.AtEnd());
}

TEST_F(Store, KeysThatDifferInCaseAreDifferent)
{
    Database database = Open();
    Add(database, "P11D", "ACME", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    records.Seek("Acme", "Jane Smith");
    EXPECT_TRUE(records.NoMatch());
    Add(database, "P11D", "Acme", "Jane Smith");
    records.Seek("Acme", "Jane Smith");
    EXPECT_FALSE(records.NoMatch());
}

TEST_F(Store, NamesOfTablesAndFieldsCountRegardlessOfCase)
{
    Database database = Open();
    Add(database, "P11d", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("p11D");
    records.MoveFirst();
    EXPECT_EQ(records.Field("EMPLOYERNAME"), "Acme");
    records.Edit();
    records.SetField("fc021", "152");
    records.Update();
    EXPECT_EQ(records.Field("FC021"), "152");
}

TEST_F(Store, AnUnknownNameIsAMistakeInTheProgram)
{
    Database database = Open();
    EXPECT_THROW(database.OpenRecordset("P11DC"), UnknownName);
    EXPECT_THROW(database.OpenRecordset("Figures"), UnknownName);
    EXPECT_THROW(database.OpenRecordset("sqlite_master"), UnknownName);
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_THROW(records.Index("Key"), UnknownName);
    EXPECT_THROW(database.OpenRecordset("P11DB").Index("IndKey"), UnknownName);
    records.MoveFirst();
    EXPECT_THROW(records.Field("FCO21"), UnknownName);
    EXPECT_THROW(records.Field(""), UnknownName);
    EXPECT_THROW(records.IsNull("rowid"), UnknownName);
    records.Edit();
    EXPECT_THROW(records.SetField("Tax1", "1"), UnknownName);
    EXPECT_THROW(records.SetNull("Tax1"), UnknownName);
}

TEST_F(Store, ASeekThatDoesNotFitItsIndexIsAMistakeInTheProgram)
{
    Database database = Open();
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_THROW(records.Seek("Acme", "Jane Smith"), std::logic_error);
    records.Index("IndKey");
    EXPECT_THROW(records.Seek("Acme"), std::logic_error);
    records.Index("PrimaryKey");
    EXPECT_THROW(records.Seek("Acme", "Jane Smith"), std::logic_error);
    EXPECT_THROW(database.OpenRecordset("HNotepad2").MoveFirstOf("Acme"), std::logic_error);
}

TEST_F(Store, NullAndEmptyReadAlikeAndAreToldApart)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirst();
    EXPECT_TRUE(records.IsNull("ACashEqu"));
    EXPECT_EQ(records.Field("ACashEqu"), "");
    records.Edit();
    records.SetField("ACashEqu", "");
    records.Update();
    EXPECT_FALSE(records.IsNull("ACashEqu"));
    EXPECT_EQ(records.Field("ACashEqu"), "");
    records.Edit();
    records.SetField("ACashEqu", std::string_view());
    records.Update();
    EXPECT_FALSE(records.IsNull("ACashEqu"));
    records.Edit();
    records.SetNull("ACashEqu");
    records.Update();
    EXPECT_TRUE(records.IsNull("ACashEqu"));
}

TEST_F(Store, WhatIsSetMayBeTheTextOfAnotherFieldAndInAnyOrder)
{
    Database database = Open();
    Recordset records = database.OpenRecordset("BNotepad");
    // The second record takes up the room of the first.
    for (const std::string employee : {"Jane Smith", "John Brown"}) {
        records.AddNew();
        records.SetField("EmployerName", "Acme");
        records.SetField("EmployeeName", employee);
        records.SetField("Description20", "a desk");
        for (int line = 19; line > 0; --line)
            records.SetField(Numbered("Description", line), records.Field(Numbered("Description", line + 1)));
        records.SetField("Description7", "");
        records.SetNull("Description8");
        records.Update();
        for (int line = 1; line <= 20; ++line)
            EXPECT_EQ(records.Field(Numbered("Description", line)), line == 7 || line == 8 ? "" : "a desk") << line;
        EXPECT_FALSE(records.IsNull("Description7"));
        EXPECT_TRUE(records.IsNull("Description8"));
    }
}

TEST_F(Store, TextsComeBackByteForByte)
{
    const Texts texts = {
        "   1234.00", "£ é Ω Ж 漢", "O'Brien \"[x]\" %_", std::string("a\0b", 3), std::string(100000, 'x'), "0010",
        "1e5",        "\xff\xfe"};
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirst();
    for (const std::string& text : texts) {
        records.Edit();
        records.SetField("ADescriptionAsset", text);
        records.Update();
        Recordset reader = database.OpenRecordset("P11D");
        reader.MoveFirst();
        EXPECT_EQ(reader.Field("ADescriptionAsset"), text);
    }
}

TEST_F(Store, ACursorWithNoRecordCannotBeRead)
{
    Database database = Open();
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_THROW(records.Field("Name"), StoreError);
    EXPECT_THROW(records.Edit(), StoreError);
    EXPECT_THROW(records.Delete(), StoreError);
    records.Index("IndKey");
    records.Seek("Acme", "Jane Smith");
    EXPECT_THROW(records.Field("Name"), StoreError);
    EXPECT_THROW(records.MoveNext(), StoreError);
    records.MoveFirst();
    EXPECT_TRUE(records.AtEnd());
    EXPECT_THROW(records.IsNull("Name"), StoreError);
    records.MoveNext();
    EXPECT_TRUE(records.AtEnd());
}

// ---- order of going through ---------------------------------------------------------------------

class Scan : public Store {
protected:
    Scan() : database(Open())
    {
        for (const auto& [employer, employee] : keys)
            Add(database, "P11D", employer, employee);
        Add(database, "ANotepad", "Zeta", "Other");
    }

    const std::vector<std::pair<std::string, std::string>> keys = {{"Beta", "Zoe"},  {"alpha", "Al"},  {"Beta", "Ann"},
                                                                   {"Émile", "Eve"}, {"Alpha", "Bob"}, {"Beta", "Max"}};
    const Texts added = {"Beta Zoe", "alpha Al", "Beta Ann", "Émile Eve", "Alpha Bob", "Beta Max"};
    Database database;
};

TEST_F(Scan, WithoutAnIndexTheOrderIsThatOfAdding)
{
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_EQ(All(records, "Name"), added);
}

TEST_F(Scan, WithAnIndexTheOrderIsThatOfTheKeyByCodePoint)
{
    Recordset records = database.OpenRecordset("P11D");
    const Texts sorted = {"Alpha Bob", "Beta Ann", "Beta Max", "Beta Zoe", "alpha Al", "Émile Eve"};
    for (const char* index : {"IndKey", "PrimaryKey"}) {
        records.Index(index);
        EXPECT_EQ(All(records, "Name"), sorted) << index;
    }
}

TEST_F(Scan, OneEmployersRecordsComeInTheSameOrder)
{
    Recordset records = database.OpenRecordset("P11D");
    Texts met;
    for (records.MoveFirstOf("Beta"); !records.AtEnd(); records.MoveNext())
        met.emplace_back(records.Field("EmployeeName"));
    EXPECT_EQ(met, (Texts{"Zoe", "Ann", "Max"}));
    EXPECT_EQ(All(records, "EmployeeName"), (Texts{"Zoe", "Ann", "Max"})) << "MoveFirst keeps to the employer";
    records.Index("IndKey");
    met.clear();
    for (records.MoveFirstOf("Beta"); !records.AtEnd(); records.MoveNext())
        met.emplace_back(records.Field("EmployeeName"));
    EXPECT_EQ(met, (Texts{"Ann", "Max", "Zoe"}));
    records.MoveFirstOf("beta");
    EXPECT_TRUE(records.AtEnd());
    records.Index("IndKey");
    EXPECT_EQ(All(records, "Name").size(), added.size()) << "naming the index takes the employer away";
}

TEST_F(Scan, GoesOnAfterASoughtRecord)
{
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    records.Seek("Beta", "Max");
    records.MoveNext();
    EXPECT_EQ(records.Field("Name"), "Beta Zoe");
    records.MoveNext();
    EXPECT_EQ(records.Field("Name"), "alpha Al");
}

TEST_F(Scan, GoesOnAfterADeletedRecord)
{
    for (const bool byKey : {false, true}) {
        SCOPED_TRACE(byKey);
        Recordset records = database.OpenRecordset("P11D");
        if (byKey)
            records.Index("IndKey");
        Texts left;
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
            if (records.Field("EmployerName") == (byKey ? "Alpha" : "Beta")) {
                records.Delete();
                EXPECT_THROW(records.Field("Name"), StoreError);
            } else {
                left.emplace_back(records.Field("Name"));
            }
        EXPECT_EQ(left, byKey ? (Texts{"alpha Al", "Émile Eve"}) : (Texts{"alpha Al", "Émile Eve", "Alpha Bob"}));
        EXPECT_EQ(All(records, "Name"), left);
    }
}

TEST_F(Scan, MeetsNoRecordTwiceWhenItsKeyIsChangedOnTheWay)
{
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    int met = 0;
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
        ++met;
        records.Edit();
        records.SetField("EmployerName", "zz" + std::string(records.Field("EmployerName")));
        records.Update();
    }
    EXPECT_EQ(met, 6);
}

TEST_F(Scan, PassesOverARecordThatAnotherCursorDeletedMeanwhile)
{
    for (const bool byKey : {false, true}) {
        SCOPED_TRACE(byKey);
        Recordset records = database.OpenRecordset("P11D");
        if (byKey)
            records.Index("IndKey");
        // Far enough for the next ones to have been read ahead.
        records.MoveFirst();
        records.MoveNext();
        Recordset other = database.OpenRecordset("P11D");
        other.Index("IndKey");
        if (byKey)
            other.Seek("alpha", "Al");
        else
            other.Seek("Beta", "Ann");
        other.Delete();
        Texts rest;
        for (; !records.AtEnd(); records.MoveNext())
            rest.emplace_back(records.Field("Name"));
        EXPECT_EQ(rest, byKey ? (Texts{"Beta Max", "Beta Zoe", "Émile Eve"})
                              : (Texts{"alpha Al", "Émile Eve", "Alpha Bob", "Beta Max"}));
    }
}

TEST_F(Scan, ReadsWhatAnotherCursorHasWrittenSinceItBegan)
{
    Recordset records = database.OpenRecordset("P11D");
    Recordset other = database.OpenRecordset("P11D");
    other.Index("IndKey");
    for (records.MoveFirst(); records.Field("Name") != "Beta Ann"; records.MoveNext())
        EXPECT_EQ(records.Field("ACashEqu"), "");
    other.Seek("Beta", "Max");
    other.Edit();
    other.SetField("ACashEqu", "7");
    other.Update();
    std::string last;
    for (; !records.AtEnd(); records.MoveNext())
        last = records.Field("ACashEqu");
    EXPECT_EQ(last, "7");
}

TEST_F(Scan, MeetsARecordAddedOnTheWayInTheOrderOfAdding)
{
    Recordset records = database.OpenRecordset("P11D");
    Recordset other = database.OpenRecordset("P11D");
    std::size_t met = 0;
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
        if (++met == 2)
            Add(database, "P11D", "New", "Last");
    EXPECT_EQ(met, added.size() + 1);
}

TEST_F(Scan, ManyRecordsAndFieldsAskedForLateComeRight)
{
    {
        WriteBatch batch(database);
        Recordset records = database.OpenRecordset("KNotepad");
        for (int i = 0; i < 700; ++i) {
            records.AddNew();
            records.SetField("EmployerName", "E" + std::to_string(i % 3));
            records.SetField("EmployeeName", std::to_string(10000 - i));
            records.SetField("Name", std::to_string(i));
            for (int line = 1; line <= 20; ++line) {
                records.SetField("Description" + std::to_string(line), std::to_string(i * line));
                records.SetField("Cost" + std::to_string(line), std::string(static_cast<std::size_t>(i), 'c'));
            }
            records.Update();
        }
        batch.Commit();
    }
    Recordset records = database.OpenRecordset("KNotepad");
    int i = 0;
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext(), ++i) {
        ASSERT_EQ(records.Field("Name"), std::to_string(i));
        ASSERT_TRUE(records.IsNull("CashEq3"));
        // One field more every ten records, until whole records are read.
        for (int line = 1; line <= std::min(20, i / 10); ++line) {
            ASSERT_EQ(records.Field("description" + std::to_string(line)), std::to_string(i * line));
            ASSERT_EQ(records.Field("Cost" + std::to_string(line)).size(), static_cast<std::size_t>(i));
        }
    }
    EXPECT_EQ(i, 700);
    records.Index("IndKey");
    std::string before;
    int met = 0;
    for (records.MoveFirstOf("E1"); !records.AtEnd(); records.MoveNext(), ++met) {
        ASSERT_LT(before, records.Field("EmployeeName"));
        before = records.Field("EmployeeName");
    }
    EXPECT_EQ(met, 233);
}

TEST_F(Scan, PreparedFieldsAreReadByTheirPlaces)
{
    Recordset records = database.OpenRecordset("P11D");
    std::vector<std::pair<std::string, FieldPlace>> prepared;
    for (const Field& field : FieldsOf(FindTable("P11D")).All())
        prepared.emplace_back(field.name, records.Prepare(field.name));
    const FieldPlace surname = records.Prepare("surname");
    for (records.MoveFirst(); !records.AtEnd(); records.MoveNext()) {
        for (const auto& [name, place] : prepared)
            ASSERT_EQ(records.Field(place), records.Field(name)) << name;
        records.Edit();
        records.SetField("Surname", "new");
        EXPECT_EQ(records.Field(surname), "new");
        records.Update();
        EXPECT_EQ(records.Field(surname), "new");
    }
    records.AddNew();
    EXPECT_EQ(records.Field(surname), "");
    EXPECT_THROW(records.Prepare("Nonsense"), UnknownName);
}

TEST_F(Scan, ListsTheEmployersAsTheyAreFirstMet)
{
    Recordset records = database.OpenRecordset("P11D");
    records.AddNew();
    records.SetField("Name", "nobody's");
    records.Update();
    EXPECT_TRUE(records.IsNull("EmployerName"));
    EXPECT_EQ(database.EmployersInOrder("P11D"), (Texts{"Beta", "alpha", "Émile", "Alpha"}));
}

TEST_F(Scan, AnIdleCursorLeavesTheDatabaseFreeForOthers)
{
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirst();
    records.MoveNext();
    EXPECT_EQ(records.Field("Name"), "alpha Al");
    Recordset sought = database.OpenRecordset("P11D");
    sought.Index("IndKey");
    sought.Seek("Beta", "Zoe");
    Database second = Open();
    EXPECT_NO_THROW(Add(second, "P11D", "Gamma", "Guy"));
}

// ---- writing ------------------------------------------------------------------------------------

TEST_F(Store, WritesOnlyWhatWasSet)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset mine = database.OpenRecordset("P11D");
    Recordset others = database.OpenRecordset("P11D");
    mine.MoveFirst();
    others.MoveFirst();
    mine.Edit();
    mine.SetField("ACashEqu", "1");
    others.Edit();
    others.SetField("BNotTax", "2");
    others.SetField("BNotTax", "3");
    others.Update();
    mine.Update();
    EXPECT_EQ(mine.Field("ACashEqu"), "1");
    EXPECT_EQ(mine.Field("BNotTax"), "3");
}

TEST_F(Store, WhatWasSetIsReadBeforeTheUpdateAndDroppedByAMove)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirst();
    records.Edit();
    records.SetField("DOB", "01/02/1960");
    EXPECT_EQ(records.Field("DOB"), "01/02/1960");
    EXPECT_EQ(records.Field("EmployerName"), "Acme");
    records.MoveFirst();
    EXPECT_TRUE(records.IsNull("DOB"));
    EXPECT_THROW(records.SetField("DOB", "x"), std::logic_error);
    EXPECT_THROW(records.Update(), std::logic_error);
    records.AddNew();
    EXPECT_TRUE(records.IsNull("EmployerName"));
    records.MoveFirst();
    EXPECT_EQ(records.Field("EmployerName"), "Acme");
}

TEST_F(Store, StandsOnTheNewRecordAfterAddNew)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirst();
    records.AddNew();
    records.SetField("EmployerName", "Zeta");
    records.Update();
    EXPECT_EQ(records.Field("EmployerName"), "Zeta");
    EXPECT_TRUE(records.IsNull("Name"));
    records.Edit();
    records.SetField("Name", "Zeta Zoe");
    records.Update();
    EXPECT_EQ(records.Field("Name"), "Zeta Zoe");
    records.MoveNext();
    EXPECT_TRUE(records.AtEnd());
}

TEST_F(Store, RefusesAKeyThatAnotherRecordHas)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    EXPECT_THROW(Add(database, "P11D", "Acme", "Jane Smith"), StoreError);
    // The same joined name from other parts.
    EXPECT_THROW(Add(database, "P11D", "Acme Jane", "Smith"), StoreError);
    Add(database, "P11D", "Acme", "John Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    records.Seek("Acme", "John Smith");
    records.Edit();
    records.SetField("EmployeeName", "Jane Smith");
    EXPECT_FALSE(records.TryUpdate());
    EXPECT_EQ(records.Field("EmployeeName"), "John Smith");
    records.Edit();
    records.SetField("EmployeeName", "Jane Smith");
    EXPECT_THROW(records.Update(), StoreError);
    EXPECT_EQ(All(records, "EmployeeName"), (Texts{"Jane Smith", "John Smith"}));
}

TEST_F(Store, ARecordThatIsGoneCannotBeWritten)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Add(database, "P11D", "Acme", "John Smith");
    for (const char* when : {"before Edit", "before Update", "before Delete"}) {
        SCOPED_TRACE(when);
        Recordset records = database.OpenRecordset("P11D");
        records.MoveFirst();
        const auto deleteIt = [&] {
            Recordset other = database.OpenRecordset("P11D");
            other.MoveFirst();
            other.Delete();
        };
        if (when == std::string_view("before Edit")) {
            deleteIt();
            EXPECT_THROW(records.Edit(), StoreError);
            Add(database, "P11D", "Acme", "Jane Smith");
        } else if (when == std::string_view("before Update")) {
            records.Edit();
            records.SetField("DOB", "01/02/1960");
            deleteIt();
            EXPECT_THROW(records.Update(), StoreError);
        } else {
            deleteIt();
            EXPECT_THROW(records.Delete(), StoreError);
        }
    }
}

TEST_F(Store, AReadOnlyDatabaseRefusesToBeWritten)
{
    {
        Database database = Open();
        Add(database, "P11D", "Acme", "Jane Smith");
    }
    Database database = Open(OpenMode::ReadOnly);
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_EQ(All(records, "Name"), Texts{"Acme Jane Smith"});
    EXPECT_THROW(Add(database, "P11D", "Acme", "John Smith"), StoreError);
    records.MoveFirst();
    EXPECT_THROW(records.Delete(), StoreError);
    EXPECT_EQ(All(records, "Name"), Texts{"Acme Jane Smith"});
}

TEST_F(Store, AClosedDatabaseAnswersNothing)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirst();
    database.Close();
    EXPECT_THROW(records.MoveNext(), StoreError);
    EXPECT_THROW(records.Edit(), StoreError);
    EXPECT_THROW(database.OpenRecordset("P11D"), StoreError);
    EXPECT_THROW(WriteBatch{database}, StoreError);
    database.Close();
}

// ---- batches and failures -----------------------------------------------------------------------

TEST_F(Store, ABatchSeesItsOwnWritesAndOthersDoNotYet)
{
    Database database = Open();
    Database second = Open();
    {
        WriteBatch batch(database);
        Add(database, "P11D", "Acme", "Jane Smith");
        Recordset mine = database.OpenRecordset("P11D");
        EXPECT_EQ(All(mine, "EmployeeName"), Texts{"Jane Smith"});
        mine.Index("IndKey");
        mine.Seek("Acme", "Jane Smith");
        EXPECT_FALSE(mine.NoMatch());
        Recordset theirs = second.OpenRecordset("P11D");
        EXPECT_EQ(All(theirs, "EmployeeName"), Texts{});
    }
    Recordset theirs = second.OpenRecordset("P11D");
    EXPECT_EQ(All(theirs, "EmployeeName"), Texts{"Jane Smith"});
}

TEST_F(Store, OfNestedBatchesTheOutermostCommits)
{
    Database database = Open();
    Database second = Open();
    Recordset theirs = second.OpenRecordset("P11D");
    {
        WriteBatch outer(database);
        {
            WriteBatch inner(database);
            Add(database, "P11D", "Acme", "Jane Smith");
            inner.Commit();
        }
        EXPECT_EQ(All(theirs, "EmployeeName"), Texts{});
        outer.Commit();
        EXPECT_EQ(All(theirs, "EmployeeName"), Texts{"Jane Smith"});
        Add(database, "P11D", "Acme", "John Smith");
    }
    EXPECT_EQ(All(theirs, "EmployeeName").size(), 2u);
}

TEST_F(Store, ABatchThatWritesNothingLocksNothing)
{
    Database database = Open();
    WriteBatch batch(database);
    Recordset records = database.OpenRecordset("P11D");
    records.MoveFirst();
    Database second = Open();
    EXPECT_NO_THROW(Add(second, "P11D", "Acme", "Jane Smith"));
}

TEST_F(Store, WhatWasWrittenBeforeTheFailureOfAnyWriteStays)
{
    constexpr int Lines = 20;
    for (const bool refusedKey : {false, true})
        for (int failing = 1; failing <= Lines; ++failing) {
            Database database = Open();
            const std::string employee = std::to_string(failing) + (refusedKey ? "k" : "f");
            Add(database, "KNotepad", "Acme", employee);
            int writes = 0;
            SetStoreFaultHook(
                [&](std::string_view statement) { return Writes(statement) && ++writes == failing ? 10 : 0; });
            int done = 0;
            try {
                WriteBatch batch(database);
                Recordset records = database.OpenRecordset("KNotepad");
                records.Index("IndKey");
                records.Seek("Acme", employee);
                for (int line = 1; line <= Lines; ++line) {
                    records.Edit();
                    records.SetField("Cost" + std::to_string(line), "5");
                    records.Update();
                    ++done;
                }
                ADD_FAILURE() << "write " << failing << " did not fail";
            } catch (const StoreError& failure) {
                EXPECT_EQ(failure.Number(), 10);
                EXPECT_TRUE(failure.Statement().starts_with("UPDATE [KNotepad]")) << failure.Statement();
            }
            SetStoreFaultHook({});
            EXPECT_EQ(done, failing - 1);
            Database second = Open();
            Recordset stored = second.OpenRecordset("KNotepad");
            stored.Index("IndKey");
            stored.Seek("Acme", employee);
            for (int line = 1; line <= Lines; ++line)
                EXPECT_EQ(stored.IsNull("Cost" + std::to_string(line)), line >= failing) << failing << ' ' << line;
        }
}

TEST_F(Store, ARefusedKeyInABatchKeepsWhatWasWrittenBefore)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    try {
        WriteBatch batch(database);
        Add(database, "P11D", "Acme", "John Smith");
        Add(database, "P11D", "Acme", "Jane Smith");
        ADD_FAILURE();
    } catch (const StoreError&) {
    }
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_EQ(All(records, "EmployeeName"), (Texts{"Jane Smith", "John Smith"}));
    EXPECT_NO_THROW(Add(database, "P11D", "Acme", "Max"));
}

TEST_F(Store, ACommitThatFailsIsToldAndLeavesNoLock)
{
    Database database = Open();
    for (const char* failing : {"COMMIT", "BEGIN IMMEDIATE"}) {
        SetStoreFaultHook([&](std::string_view statement) { return statement == failing ? 13 : 0; });
        {
            WriteBatch batch(database);
            EXPECT_THROW(
                {
                    Add(database, "P11D", "Acme", "Jane Smith");
                    batch.Commit();
                },
                StoreError);
        }
        SetStoreFaultHook({});
        Database second = Open();
        Recordset records = second.OpenRecordset("P11D");
        EXPECT_EQ(All(records, "Name"), Texts{});
        Add(second, "P11D", "Beta", failing);
        records.MoveFirst();
        records.Delete();
    }
}

TEST_F(Store, ABatchThatIsLostIsToldFromAFailedWriteOfAnyOtherKind)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    const auto writes = [&](std::initializer_list<std::string_view> failing) {
        SetStoreFaultHook(
            [texts = std::vector<std::string_view>(failing), writing = 0](std::string_view statement) mutable {
                writing += statement.starts_with("INSERT INTO ["); // a record, and not the history of it
                const bool fails = writing == 2 && std::ranges::any_of(texts, [&](std::string_view word) {
                                       return statement.starts_with(word);
                                   });
                return fails ? 10 : 0;
            });
        WriteBatch batch(database);
        Add(database, "P11D", "Acme", "John Smith");
        Add(database, "P11D", "Acme", "Max Smith");
    };
    // The write alone fails: what was written before it is stored.
    try {
        writes({"INSERT"});
        ADD_FAILURE();
    } catch (const BatchLost&) {
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_FALSE(failure.OutOfReach());
    }
    SetStoreFaultHook({});
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_EQ(All(records, "EmployeeName"), (Texts{"Jane Smith", "John Smith"}));
    records.Index("IndKey");
    records.Seek("Acme", "John Smith");
    records.Delete();
    // It cannot be stored either.
    EXPECT_THROW(writes({"INSERT", "COMMIT"}), BatchLost);
    SetStoreFaultHook({});
    EXPECT_EQ(All(records, "EmployeeName"), (Texts{"Jane Smith"}));
}

TEST_F(Store, ALockedDatabaseIsAFailureAndNotAHang)
{
    Database database = Open();
    WriteBatch batch(database);
    Add(database, "P11D", "Acme", "Jane Smith");
    Database second = Open();
    try {
        // A file is locked whole, on a server the one key is.
        Add(second, "P11D", "Acme", OnServer() ? "Jane Smith" : "John Smith");
        ADD_FAILURE();
    } catch (const StoreError& failure) {
        EXPECT_TRUE(failure.OutOfReach());
    }
}

TEST_F(Store, EveryStatementCanBeMadeToFail)
{
    Database database = Open();
    Add(database, "P11D", "Acme", "Jane Smith");
    Recordset records = database.OpenRecordset("P11D");
    records.Index("IndKey");
    SetStoreFaultHook([](std::string_view statement) { return statement.starts_with("SELECT") ? 11 : 0; });
    EXPECT_THROW(records.Seek("Acme", "Jane Smith"), StoreError);
    EXPECT_THROW(records.MoveFirst(), StoreError);
    EXPECT_THROW(Open().EmployersInOrder("P11D"), StoreError);
    SetStoreFaultHook({});
    records.Seek("Acme", "Jane Smith");
    EXPECT_FALSE(records.NoMatch());
}

// ---- files --------------------------------------------------------------------------------------

/// What is so with files alone.
class StoreFile : public Store {};

TEST_F(StoreFile, OpensNoFileThatIsNotThereAndMakesNone)
{
    const auto missing = folder.path / "missing";
    EXPECT_THROW(Database::OpenDatabase(missing), StoreError);
    EXPECT_THROW(Database::OpenDatabase(missing, OpenMode::ReadOnly), StoreError);
    EXPECT_THROW(Database::OpenReferenceDatabase(missing), StoreError);
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_THROW(Database::OpenDatabase(""), StoreError);
    EXPECT_THROW(Database::OpenDatabase(":memory:"), StoreError);
    EXPECT_THROW(Database::OpenDatabase("/nowhere/at/all"), StoreError);
}

TEST_F(StoreFile, AFileThatGoesWhileItIsOpenedIsAFailureOfTheStore)
{
    SetStoreFaultHook([this](std::string_view statement) {
        if (statement == "PRAGMA user_version")
            std::filesystem::remove(file);
        return 0;
    });
    EXPECT_THROW(Open(), StoreError);
    SetStoreFaultHook({});
}

TEST_F(StoreFile, LeavesNothingBesideItsFile)
{
    {
        Database database = Open();
        Add(database, "P11D", "Acme", "Jane Smith");
    }
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path))
        ++files;
    EXPECT_EQ(files, 1u);
    const auto copy = folder.path / "copy";
    std::filesystem::copy_file(file, copy);
    Database database = Database::OpenDatabase(copy);
    Recordset records = database.OpenRecordset("P11D");
    EXPECT_EQ(All(records, "Name"), Texts{"Acme Jane Smith"});
}

TEST_F(StoreFile, TheTemplateComesOutByteForByteAlike)
{
    CreateTables(folder.path / "again");
    EXPECT_EQ(Content(folder.path / "again"), Content(file));
    EXPECT_THROW(CreateTables(file), StoreError) << "it never writes over a file";
}

TEST_F(Store, TheTemplateKnowsSterlingAlone)
{
    Database database = Open();
    Recordset currencies = database.OpenRecordset("HNotepad2");
    EXPECT_EQ(All(currencies, "Currency1"), Texts{"Sterling"});
    EXPECT_EQ(All(currencies, "Rate1"), Texts{"4.00"});
    currencies.MoveFirst();
    for (int row = 2; row <= 15; ++row) {
        EXPECT_TRUE(currencies.IsNull("Currency" + std::to_string(row)));
        EXPECT_TRUE(currencies.IsNull("Rate" + std::to_string(row)));
    }
}

TEST_F(StoreFile, AReferenceDatabaseHasTablesOfItsOwn)
{
    const auto cars = folder.path / "cars";
    CreateReferenceTables(cars);
    {
        Database database = Database::OpenReferenceDatabase(cars, OpenMode::ReadWrite);
        Recordset figures = database.OpenRecordset("Figures");
        figures.AddNew();
        figures.SetField("Fuel Type", "P");
        figures.SetField("Engine Capacity", "1998");
        figures.SetField("Column 1", "15");
        figures.SetField("Column 2", "18");
        figures.Update();
    }
    Database database = Database::OpenReferenceDatabase(cars);
    Recordset figures = database.OpenRecordset("figures");
    figures.MoveFirst();
    EXPECT_EQ(figures.Field("fuel type"), "P");
    EXPECT_EQ(figures.Field("Column 2"), "18");
    EXPECT_THROW(figures.Delete(), StoreError);
    EXPECT_THROW(database.OpenRecordset("P11D"), UnknownName);
    EXPECT_TRUE((database.OpenRecordset("Manufacturers").MoveFirst(), true));
    EXPECT_THROW(Database::OpenDatabase(cars), StoreError) << "it is no client database";
}

} // namespace
} // namespace quillmere::test
