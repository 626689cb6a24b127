#include "clientdb/store/FormMarks.h"

#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "support/StoreFixture.h"
#include "support/SyncCounter.h"

#include <sqlite3.h>

namespace quillmere::test {
namespace {

class FormMarksTest : public StoreFixture {
protected:
    void SetUp() override
    {
        Database database = Open();
        CreateEmployee(database, {"Acme Ltd", "Jane", "Smith", "123/A456"});
        CreateEmployee(database, {"Acme Ltd", "Ann", "Other", "123/A456"});
    }
    void Write(std::string_view table, std::string_view field, std::string_view text,
               std::string_view employee = "Jane Smith") const
    {
        Database database = Open();
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek("Acme Ltd", employee);
        records.Edit();
        records.SetField(field, text);
        records.Update();
    }
    void Mark(FormMark mark, std::string_view day, std::string_view employee = "Jane Smith") const
    {
        Database database = Open();
        ASSERT_TRUE(FormMarks(database).Set(mark, "Acme Ltd", employee, day));
    }
    /// The mark as a text: its day, with "!" behind it if it is outdated.
    std::string Read(FormMark mark, std::string_view employee = "Jane Smith",
                     std::string_view employer = "Acme Ltd") const
    {
        Database database = Open();
        const auto marks = FormMarks(database).Of(employer, employee);
        const auto found = marks.find(mark);
        return found == marks.end() ? "" : found->second.day + (found->second.isOutdated ? "!" : "");
    }
    void Sql(const std::string& text) const
    {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }
    std::int64_t TablesNamed(const std::string& name) const
    {
        sqlite3* handle = nullptr;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
        sqlite3_prepare_v2(handle, ("SELECT count(*) FROM sqlite_schema WHERE name='" + name + "'").c_str(), -1,
                           &statement, nullptr);
        sqlite3_step(statement);
        const std::int64_t count = sqlite3_column_int64(statement, 0);
        sqlite3_finalize(statement);
        sqlite3_close(handle);
        return count;
    }
};

TEST_F(FormMarksTest, TheTableIsMadeWithTheFirstMarkInOneTransaction)
{
    EXPECT_EQ(Read(FormMark::Printed), "");
    EXPECT_EQ(TablesNamed("FormMarks"), 0) << "looking makes nothing";
    int asOneWrite = 0;
    {
        const SyncCounter counter;
        Write("P11D", "WorkNumberBox", "7");
        asOneWrite = static_cast<int>(counter.Count());
    }
    {
        const SyncCounter counter;
        Mark(FormMark::Printed, "30/06/2011");
        EXPECT_EQ(static_cast<int>(counter.Count()), asOneWrite);
    }
    EXPECT_EQ(TablesNamed("FormMarks"), 1);
    EXPECT_EQ(Read(FormMark::Printed), "30/06/2011");
    EXPECT_EQ(Read(FormMark::Reviewed), "");
    EXPECT_EQ(Read(FormMark::Printed, "Ann Other"), "");
}

TEST_F(FormMarksTest, AMarkIsOutdatedByAnyTextOfAnyRecordOfTheEmployeeAndByNoOther)
{
    Mark(FormMark::Printed, "29/06/2011");
    Mark(FormMark::Reviewed, "30/06/2011");
    for (const TableLayout& table : ClientTables()) {
        if (table.level != TableLevel::Employee)
            continue;
        for (const Field& field : FieldsOf(table).All()) {
            if (field.name == "EmployerName" || field.name == "EmployeeName" || field.name == "Name")
                continue;
            std::string before;
            {
                Database database = Open();
                Recordset records = database.OpenRecordset(table.name);
                records.Index("IndKey");
                records.Seek("Acme Ltd", "Jane Smith");
                before = records.Field(field.name);
            }
            Write(table.name, field.name, before + "x");
            EXPECT_EQ(Read(FormMark::Reviewed), "30/06/2011!") << table.name << "." << field.name;
            Write(table.name, field.name, before);
            EXPECT_EQ(Read(FormMark::Reviewed), "30/06/2011") << table.name << "." << field.name;
            if (table.name != "P11D")
                break; // one field of each is enough for the others
        }
    }
    Write("P11D", "ACashEqu", "     10.00", "Ann Other");
    EXPECT_EQ(Read(FormMark::Printed), "29/06/2011");
}

TEST_F(FormMarksTest, TextsThatMoveFromOneFieldToTheNextAreAChange)
{
    Write("P11D", "ADescriptionAsset", "ab");
    Write("P11D", "ACostMarketBox", "c");
    Mark(FormMark::Reviewed, "30/06/2011");
    Write("P11D", "ADescriptionAsset", "a");
    Write("P11D", "ACostMarketBox", "bc");
    EXPECT_EQ(Read(FormMark::Reviewed), "30/06/2011!");
}

TEST_F(FormMarksTest, AMarkSetAgainHoldsForTheFormAsItIsAndOneTakenAwayIsGone)
{
    Mark(FormMark::Reviewed, "29/06/2011");
    Write("P11D", "ACashEqu", "     10.00");
    Mark(FormMark::Reviewed, "30/06/2011");
    EXPECT_EQ(Read(FormMark::Reviewed), "30/06/2011");
    Mark(FormMark::Printed, "30/06/2011");
    Database database = Open();
    FormMarks(database).Clear(FormMark::Reviewed, "Acme Ltd", "Jane Smith");
    EXPECT_EQ(Read(FormMark::Reviewed), "");
    EXPECT_EQ(Read(FormMark::Printed), "30/06/2011");
}

TEST_F(FormMarksTest, MarksFollowANewNameAndGoWithTheEmployee)
{
    Mark(FormMark::Reviewed, "30/06/2011");
    Mark(FormMark::Printed, "30/06/2011", "Ann Other");
    Database database = Open();
    RenameEmployee(database, "Acme Ltd", "Jane Smith", "Jane Cooper");
    EXPECT_EQ(Read(FormMark::Reviewed), "");
    EXPECT_EQ(Read(FormMark::Reviewed, "Jane Cooper"), "30/06/2011");
    RenameEmployer(database, "Acme Ltd", "Zinc plc", "123/A456");
    EXPECT_EQ(Read(FormMark::Reviewed, "Jane Cooper", "Zinc plc"), "30/06/2011");
    DeleteEmployee(database, "Zinc plc", "Jane Cooper");
    CreateEmployee(database, {"Zinc plc", "Jane", "Cooper", "123/A456"});
    EXPECT_EQ(Read(FormMark::Reviewed, "Jane Cooper", "Zinc plc"), "") << "this one is another person";
    EXPECT_EQ(Read(FormMark::Printed, "Ann Other", "Zinc plc"), "30/06/2011");
    DeleteEmployer(database, "Zinc plc");
    CreateEmployee(database, {"Zinc plc", "Ann", "Other", "123/A456"});
    EXPECT_EQ(Read(FormMark::Printed, "Ann Other", "Zinc plc"), "");
}

TEST_F(FormMarksTest, ATableOfOthersIsLeftAlone)
{
    Sql("CREATE TABLE FormMarks(Anything TEXT)");
    Database database = Open();
    EXPECT_FALSE(FormMarks(database).Set(FormMark::Printed, "Acme Ltd", "Jane Smith", "30/06/2011"));
    EXPECT_EQ(Read(FormMark::Printed), "");
    FormMarks(database).Clear(FormMark::Printed, "Acme Ltd", "Jane Smith");
    DeleteEmployee(database, "Acme Ltd", "Jane Smith");
    EXPECT_FALSE(EmployeeExists(database, "Acme Ltd", "Jane Smith"));
}

} // namespace
} // namespace quillmere::test
