// Undo and the window of the change history, in the whole program without windows.
#include "app/MDIForm1.h"
#include "clientdb/store/History.h"
#include "clientdb/store/TableLayouts.h"
#include "review/FieldWords.h"
#include "support/ProgramFixture.h"

#include <sqlite3.h>

#include <set>

namespace quillmere::test {
namespace {

class ChangeHistoryTest : public ProgramFixture {
protected:
    std::vector<std::string> Words()
    {
        Database database = Clients();
        std::vector<std::string> words;
        for (const PastOperation& operation : History(database).Operations({}, 100))
            words.push_back(operation.words);
        return words;
    }
    std::string Stored(std::string_view table, std::string_view field)
    {
        Database database = Clients();
        Recordset records = database.OpenRecordset(table);
        records.MoveFirst();
        return records.AtEnd() ? std::string("no record") : std::string(records.Field(field));
    }
    std::string Note() { return At("MDIForm1", "StatusNote").Text(); }
    /// What Edit says when it is opened.
    std::string MenuWords()
    {
        dynamic_cast<MDIForm1&>(*Now().screens.Find("MDIForm1")).MenuOpens("Edit");
        return At("MDIForm1", "mnuUndo").Text();
    }
    void Execute(const std::string& statement)
    {
        sqlite3* handle = nullptr;
        sqlite3_open_v2(Now().ClientDatabasePath().c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
        EXPECT_EQ(sqlite3_exec(handle, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
    }
};

TEST_F(ChangeHistoryTest, EveryFieldHasWords)
{
    const review::FieldWords words(Now().screens);
    for (const TableLayout& table : ClientTables())
        for (const Field& field : FieldsOf(table).All()) {
            if (field.name == "Name")
                continue;
            const auto* const of = words.Of(table.name, field.name);
            EXPECT_TRUE(of != nullptr && !of->box.empty() && !of->place.empty()) << table.name << '.' << field.name;
        }
}

TEST_F(ChangeHistoryTest, NoTwoFieldsOfATableHaveTheSameWords)
{
    const review::FieldWords words(Now().screens);
    for (const TableLayout& table : ClientTables()) {
        std::set<std::string> said;
        for (const Field& field : FieldsOf(table).All())
            if (const auto* const of = words.Of(table.name, field.name)) {
                EXPECT_TRUE(said.insert(of->place + ": " + of->box).second)
                    << table.name << '.' << field.name << ": " << of->box;
            }
    }
}

TEST_F(ChangeHistoryTest, EveryCommandOfTheUserHasItsWords)
{
    Menu("New");
    At("NewFileCheck", "Option2").SetTicked(true);
    Click("NewFileCheck", "NewFileOk");
    At("NewFile", "EmployerName").SetText("Acme");
    At("NewFile", "EmployeeName").SetText("Jane");
    At("NewFile", "EmployeeSurname").SetText("Smith");
    Click("NewFile", "OkEmp");
    At("Form3", "WorkNumberBox").SetText("7");
    Click("Form3", "Page2");
    At("Side2Form1", "KCostYou").SetText("      1.00");
    Click("Side2Form1", "Page1");
    Click("Form3", "Label65");
    Click("Form3_4", "Ok");
    Menu("FileP11DB");
    At("P11DDeclaration", "AccOfficeRef").SetText("X");
    Click("P11DDeclaration", "Cancel");
    Menu("FileRename");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpSelect2");
    Mark("RenameEmp", "RenameEmployee");
    At("RenameEmp", "NewEmployer").SetText("Jane Jones");
    Click("RenameEmp", "Rename2");
    Menu("FileRenameEmp");
    Mark("RenameEmp", "RenameE");
    At("RenameEmp", "NewEmployer").SetText("Acme plc");
    Click("RenameEmp", "Rename");
    door.answers = {Answer::Yes};
    Menu("FileDeleteEmployee");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpSelect");
    Mark("EmployeeList", "EmployeeList");
    Click("EmployeeList", "EmpeDelete");
    EXPECT_EQ(Words(), (std::vector<std::string>{"Delete Employee Jane Jones", "Rename Acme to Acme plc",
                                                 "Rename Jane Smith to Jane Jones", "P11D(b) stored", "Cars 3 + 4, OK",
                                                 "Page 2 stored", "Page 1 stored", "New employee Jane Smith"}));
    // Each goes back, the last one first.
    for (const char* words : {"Undo: Delete Employee Jane Jones", "Undo: Rename Acme to Acme plc",
                              "Undo: Rename Jane Smith to Jane Jones", "Undo: P11D(b) stored", "Undo: Cars 3 + 4, OK",
                              "Undo: Page 2 stored", "Undo: Page 1 stored", "Undo: New employee Jane Smith"}) {
        EXPECT_EQ(MenuWords(), words);
        Menu("mnuUndo");
        EXPECT_EQ(Note(), std::string("Done - ") + words);
    }
    EXPECT_EQ(MenuWords(), "Undo");
    EXPECT_EQ(Stored("P11D", "Surname"), "no record");
    EXPECT_EQ(Stored("P11DB", "EmployerName"), "no record");
}

TEST_F(ChangeHistoryTest, AnEmployeeWhoIsRenamedBackIsClosed)
{
    Create("Acme", "Jane", "Smith");
    OpenEmployee();
    Menu("FileRename");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpSelect2");
    Mark("RenameEmp", "RenameEmployee");
    At("RenameEmp", "NewEmployer").SetText("Jane Jones");
    Click("RenameEmp", "Rename2");
    Click("RenameEmp", "Command1");
    OpenEmployee();
    At("Form3", "WorkNumberBox").SetText("7");
    Menu("mnuUndo");
    EXPECT_EQ(Note(), "Done - Undo: Page 1 stored");
    EXPECT_TRUE(Shows("Form3"));
    Menu("mnuUndo");
    EXPECT_EQ(Note(), "Done - Undo: Rename Jane Smith to Jane Jones");
    EXPECT_FALSE(Shows("Form3"));
    EXPECT_EQ(Stored("P11D", "EmployeeName"), "Jane Smith");
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(ChangeHistoryTest, ItsLossIsToldOnceInTheStatusBar)
{
    Create("Acme", "Jane", "Smith");
    Execute("DROP TABLE HistoryChange; CREATE TABLE HistoryChange(x)");
    OpenEmployee();
    At("Form3", "WorkNumberBox").SetText("7");
    Click("Form3", "Page2");
    Now().screens.RunDeferred();
    EXPECT_EQ(Note(), "The change history cannot be written: what is changed cannot be undone");
    EXPECT_EQ(Stored("P11D", "WorkNumberBox"), "7");
    At("MDIForm1", "StatusNote").SetText("");
    At("Side2Form1", "KCostYou").SetText("      1.00");
    Click("Side2Form1", "Page1");
    Now().screens.RunDeferred();
    EXPECT_EQ(Note(), "Stored");
    EXPECT_EQ(Stored("P11D", "KCostYou"), "      1.00");
    Menu("mnuUndo");
    EXPECT_EQ(Note(), "There is nothing to undo");
    Menu("mnuHistory");
    EXPECT_EQ(At("ChangeHistory", "Summary").Text(),
              "This database has something else in the place of the history: nothing is noted");
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(ChangeHistoryTest, TheWindowListsWhomItIsAskedFor)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "Peter", "Young");
    Create("Zenith", "Ann", "Cooper");
    Menu("mnuHistory");
    EXPECT_EQ(At("ChangeHistory", "Operations").Entries().size(), 3U);
    EXPECT_FALSE(At("ChangeHistory", "Scope", 0).Enabled());
    Click("ChangeHistory", "HistoryClose");
    OpenEmployee();
    Menu("mnuHistory");
    EXPECT_EQ(At("ChangeHistory", "Operations").Entries().size(), 1U);
    Click("ChangeHistory", "Scope", 1);
    EXPECT_EQ(At("ChangeHistory", "Operations").Entries().size(), 2U);
    Click("ChangeHistory", "Scope", 2);
    EXPECT_EQ(At("ChangeHistory", "Operations").Entries().size(), 3U);
    EXPECT_EQ(At("ChangeHistory", "Changes").Entries().front(), "Ann Cooper\tPage 1\tnew record\t\t");
}

} // namespace
} // namespace quillmere::test
