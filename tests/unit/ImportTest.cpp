#include "clientdb/Employees.h"
#include "exchange/Export.h"
#include "exchange/ImportScreen.h"
#include "exchange/Plan.h"
#include "exchange/TypingRoom.h"
#include "frame/CellEntry.h"
#include "support/ScriptedDoor.h"
#include "support/StoreFixture.h"

#include <fstream>
#include <set>

namespace quillmere::test {
namespace {

using exchange::ImportPlan;
using exchange::PlannedRow;
using exchange::RowState;
using exchange::Targets;

TEST(Targets, HaveWordsOfTheirOwnByWhichEachIsMeant)
{
    const Targets targets;
    std::set<std::string> words;
    for (const exchange::Target& target : targets.All()) {
        EXPECT_FALSE(target.words.empty());
        EXPECT_TRUE(words.insert(target.words).second) << target.words;
        const int meant = targets.Meant(target.words);
        if (target.what == exchange::Target::What::WorkedOut)
            EXPECT_EQ(meant, exchange::Nothing) << target.words;
        else
            EXPECT_EQ(&targets.At(meant), &target) << target.words;
    }
    EXPECT_EQ(targets.At(targets.Meant(" N.I. Number ")).box, "NatIns");
    EXPECT_EQ(targets.At(targets.Meant("FORENAME")).box, "EmployeeNameBox2");
    EXPECT_EQ(targets.At(targets.Meant("Payroll No")).box, "WorkNumberBox");
    EXPECT_EQ(targets.Meant("Shoe size"), exchange::Nothing);
    EXPECT_EQ(targets.Meant(""), exchange::Nothing);
}

TEST(Lists, AreMeantByLetterOrByTheirWords)
{
    for (const NotepadMember& member : Notepads())
        EXPECT_EQ(exchange::ListMeant(exchange::LetterOfList(member.name)), member.name);
    EXPECT_EQ(exchange::ListMeant("a"), "ANotepad");
    EXPECT_EQ(exchange::ListMeant("Entertainment"), "ONotepad2");
    EXPECT_EQ(exchange::ListMeant("Z"), "");
    EXPECT_EQ(exchange::ListMeant(""), "");
}

struct EntryCase {
    std::string_view box, cell, entry;
};
class Entries : public ::testing::TestWithParam<EntryCase> {};
TEST_P(Entries, AreCellsAsTheyWouldBeTyped)
{
    const exchange::TypingRoom room;
    const Screen& page = room.Page("Form3");
    EXPECT_EQ(Entry(page.box(GetParam().box), exchange::WithoutGuard(GetParam().cell)), GetParam().entry);
}
INSTANTIATE_TEST_SUITE_P(
    Cells, Entries,
    ::testing::Values(EntryCase{"ACostMarketBox", " £1,234.50 ", "1234.50"},
                      EntryCase{"ACostMarketBox", "12,5", "12,5"}, EntryCase{"ACostMarketBox", "1,234,567", "1234567"},
                      EntryCase{"ACostMarketBox", "GBP 7", "7"}, EntryCase{"ACostMarketBox", "1.234,50", "1.234,50"},
                      EntryCase{"ACostMarketBox", "-5", "-5"}, EntryCase{"DateofBirth", "5/4/1961", "5/4/1961"},
                      EntryCase{"DateofBirth", "05.04.61", "05/04/61"},
                      EntryCase{"DateofBirth", "1961-04-05", "05/04/1961"},
                      EntryCase{"DateofBirth", "1961-04-05 00:00:00", "05/04/1961"},
                      EntryCase{"DateofBirth", "5-Apr-1961", "5/4/1961"},
                      EntryCase{"DateofBirth", "5 April 1961", "5/4/1961"}, EntryCase{"DateofBirth", "soon", "soon"},
                      EntryCase{"DirectorTick", "yes", "1"}, EntryCase{"DirectorTick", "False", "0"},
                      EntryCase{"DirectorTick", "perhaps", "perhaps"}, EntryCase{"SexBox", "Female", "F"},
                      EntryCase{"SexBox", "m", "m"}, EntryCase{"NatIns", "AB 12 34 56 C", "AB123456C"},
                      EntryCase{"FC021", "152.0", "152"}, EntryCase{"FEngine1", "1,998", "1998"},
                      EntryCase{"WorkNumberBox", "'=7", "=7"},
                      EntryCase{"WorkNumberBox", "two\r\nlines", "two  lines"}));

class Import : public StoreFixture {
protected:
    ImportPlan Plan(const std::string& csv, std::string_view employer = "Acme Ltd")
    {
        Database database = Open();
        const Targets targets;
        const exchange::Table table = exchange::ParseTable(csv);
        return MakePlan(database, table, targets, ColumnsOf(table, targets), employer);
    }
    ImportPlan Take(const std::string& csv, std::string_view employer = "Acme Ltd")
    {
        ImportPlan plan = Plan(csv, employer);
        Database database = Open();
        CarryOut(database, plan);
        return plan;
    }
    std::string Field(std::string_view table, std::string_view employee, std::string_view field,
                      std::string_view employer = "Acme Ltd")
    {
        Database database = Open();
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek(employer, employee);
        return records.NoMatch() ? "no record" : std::string(records.Field(field));
    }
    void Set(std::string_view employee, std::string_view field, std::string_view text)
    {
        Database database = Open();
        Recordset records = database.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek("Acme Ltd", employee);
        records.Edit();
        records.SetField(field, text);
        records.Update();
    }
    static std::string Said(const ImportPlan& plan)
    {
        std::string said;
        for (const PlannedRow& row : plan.rows)
            said += std::string(WordsOf(row.state)) + "|" + row.matchedBy + "|" + row.words + "\n";
        return said;
    }
};

TEST_F(Import, MakesEmployeesWithAllTheirRecordsAndEntriesInTheirForm)
{
    const ImportPlan plan =
        Take("Forename,Surname,NI Number,DOB,Sex,Director,Payroll No,PAYE ref,\"A, cost or market value\","
             "\"A, amount made good or from which tax deducted\"\r\n"
             "Jane,Smith,ab 12 34 56 c,5/4/61,Female,Yes,007,123/A456,\"£1,000\",200\r\n");
    EXPECT_EQ(plan.CountOf(RowState::New), 1U) << Said(plan);
    EXPECT_EQ(Field("P11D", "Jane Smith", "NatIns"), "AB123456C");
    EXPECT_EQ(Field("P11D", "Jane Smith", "DOB"), "05/04/1961");
    EXPECT_EQ(Field("P11D", "Jane Smith", "SexTick"), "F");
    EXPECT_EQ(Field("P11D", "Jane Smith", "DirectorTick"), "1");
    EXPECT_EQ(Field("P11D", "Jane Smith", "WorkNumberBox"), "007");
    EXPECT_EQ(Field("P11D", "Jane Smith", "PAYEBox"), "123/A456");
    EXPECT_EQ(Field("P11D", "Jane Smith", "Surname"), "Smith");
    EXPECT_EQ(Field("P11D", "Jane Smith", "ACostMarketBox"), "   1000.00");
    EXPECT_EQ(Field("P11D", "Jane Smith", "ACashEqu"), "    800.00");
    Database database = Open();
    for (const TableLayout* table : NewEmployeeTables()) {
        Recordset records = database.OpenRecordset(table->name);
        records.MoveFirst();
        EXPECT_FALSE(records.AtEnd()) << table->name;
    }
    Recordset declaration = database.OpenRecordset("P11DB");
    declaration.MoveFirst();
    EXPECT_EQ(declaration.Field("EmployerReference"), "123/A456");
}

TEST_F(Import, FindsWhoIsThereByNumbersAndThenByNames)
{
    Take("Forename,Surname,NI,Payroll No\nJane,Smith,AB123456C,7\nJohn,Brown,,8\nAnn,Other,,\n");
    const ImportPlan plan = Plan("Forename,Surname,NI,Payroll No,DOB\n"
                                 "Jane,Jones,AB123456C,7,\n"
                                 "John,Brown,CD123456A,8,\n"
                                 "Ann,Other,,,1/2/70\n"
                                 "Ann,Other,,,\n"
                                 ",,AB123456C,,\n"
                                 ",,ZZ123456C,,\n"
                                 "Jane,Smith,ZZ123456C,,\n"
                                 "New,,,,\n");
    EXPECT_EQ(Said(plan), "Changed|NI number|Employee surname Jones (was Smith)\n"
                          "Changed|works number|National Insurance number CD123456A\n"
                          "Changed|names|Date of birth 01/02/1970\n"
                          "Same|names|\n"
                          "Same|NI number|\n"
                          "Faulty||Nobody has this number, and it says no names\n"
                          "Faulty|names|There is a Jane Smith with another NI number, AB123456C\n"
                          "Faulty||A new employee needs a surname\n");
}

TEST_F(Import, LeavesOutARowThatABoxDoesNotTake)
{
    const ImportPlan plan = Take("Forename,Surname,NI,DOB,Director,\"B, payment, box 15\",Gender\n"
                                 "A,One,AB12,,,,\n"
                                 "A,Two,,31/4/1970,,,\n"
                                 "A,Three,,,perhaps,,\n"
                                 "A,Four,,,,\"1.234,50\",\n"
                                 "A,Five,,,,-5,\n"
                                 "A,Six,,4/25/1970,,,\n"
                                 "A,Seven,,,,,?\n"
                                 "A,Eight,,,,0,\n");
    EXPECT_EQ(Said(plan), "Faulty||National Insurance number: \"AB12\": Invalid National Insurance Number\n"
                          "Faulty||Date of birth: \"31/4/1970\" is not taken\n"
                          "Faulty||Director: \"perhaps\" is neither yes nor no\n"
                          "Faulty||B, payment, box 15: \"1.234,50\" cannot be typed here\n"
                          "Faulty||B, payment, box 15: \"-5\" cannot be typed here\n"
                          "Faulty||Date of birth: \"4/25/1970\" is not taken\n"
                          "Faulty||Gender, M for male or F for female: \"?\" cannot be typed here\n"
                          "New||New employer; Employee surname Eight; Employee first names A\n");
    EXPECT_EQ(Field("P11D", "A Eight", "Surname"), "Eight");
    EXPECT_EQ(Field("P11D", "A Seven", "Surname"), "no record");
}

TEST_F(Import, ChangesNothingWithWhatIsThereAlready)
{
    const std::string csv = "Forename,Surname,NI,\"A, cost or market value\",\"A, cash equivalent, box 13\"\n"
                            "Jane,Smith,AB123456C,100,\n";
    Take(csv);
    // What a record holds that no leaving would have made stays as it is.
    Set("Jane Smith", "ACashEqu", "     90.00");
    const ImportPlan plan = Take(csv);
    EXPECT_EQ(Said(plan), "Same|NI number|\n");
    EXPECT_TRUE(plan.employees.empty());
    EXPECT_EQ(Field("P11D", "Jane Smith", "ACashEqu"), "     90.00");
}

TEST_F(Import, TakesLinesOfListsWithTheirTotalsOnTheForm)
{
    const std::string csv = "Name,Section,Description,Cost,Made good\n"
                            "\"Smith, Jane\",A,Laptop,\"1,000.00\",200\n"
                            "Jane Smith,A,Desk,50,\n"
                            "Jane Smith,A,Desk,60,\n"
                            "Jane Smith,K,Gardener,7,9\n"
                            "Jane Smith,Q,Gardener,7,\n"
                            "Jane Smith,N3,Tax,,12\n"
                            "Jane Smith,N3,Tax,5,\n";
    const ImportPlan plan = Take(csv);
    EXPECT_EQ(plan.rows[0].state, RowState::New);
    EXPECT_EQ(plan.rows[1].words, "Description, line 2 Desk; Cost/Market Val, line 2 50.00; Cash Equ, line 2 50.00");
    EXPECT_EQ(plan.rows[3].words, "Tax is greater than the Cost on line: 1");
    EXPECT_EQ(plan.rows[4].words, "There is no list \"Q\"");
    EXPECT_EQ(plan.rows[6].words, "List N3 has no such amount: 5");
    EXPECT_EQ(Field("ANotepad", "Jane Smith", "Description3"), "Desk");
    EXPECT_EQ(Field("ANotepad", "Jane Smith", "CashEq3"), "     60.00");
    EXPECT_EQ(Field("P11D", "Jane Smith", "ACashEqu"), "    910.00");
    EXPECT_EQ(Field("P11D", "Jane Smith", "ADescriptionAsset"), "As per attached");
    EXPECT_EQ(Field("P11D", "Jane Smith", "NTaxPaid"), "     12.00");
    EXPECT_EQ(Field("P11D", "Jane Smith", "KCashEqu"), "");
    const ImportPlan again = Plan(csv);
    EXPECT_EQ(again.CountOf(RowState::Same), 4U) << Said(again);
}

TEST_F(Import, TakesCarsWithTheirBenefitAndTheTotals)
{
    std::string csv = "Employee,Vehicle,Registration date,CO2,Fuel,Engine size,List price,Fuel benefit\n";
    for (const char* make : {"One", "Two", "Three"})
        csv += std::string("Jane Smith,") + make + ",1/2/2008,152,H,1998,\"£20,000\",Yes\n";
    const ImportPlan plan = Take(csv);
    EXPECT_EQ(plan.CountOf(RowState::Faulty), 0U) << Said(plan);
    EXPECT_EQ(Field("P11D", "Jane Smith", "FMakeModel2"), "Two");
    EXPECT_EQ(Field("ExtraCars", "Jane Smith", "FMakeModel3"), "Three");
    const std::string one = Field("P11D", "Jane Smith", "FCashEqu1"),
                      third = Field("ExtraCars", "Jane Smith", "FCashEqu3");
    EXPECT_EQ(one, third);
    EXPECT_GT(ReadAmount(one), Amount());
    EXPECT_EQ(ReadAmount(Field("P11D", "Jane Smith", "FTotalCashCars")), 3 * ReadAmount(one));
    EXPECT_EQ(ReadAmount(Field("P11D", "Jane Smith", "FTotalCashFuel")),
              3 * ReadAmount(Field("P11D", "Jane Smith", "FFuelEqu1")));
    EXPECT_EQ(Plan(csv).CountOf(RowState::Same), 3U) << Said(Plan(csv));
    const ImportPlan dear = Plan("Employee,Car,List price\nJane Smith,3,90000\nJane Smith,7,1\n");
    EXPECT_EQ(dear.CountOf(RowState::Faulty), 2U) << Said(dear);
}

TEST_F(Import, FindsWhoHasGotANumberFurtherUp)
{
    Take("Forename,Surname\nJane,Smith\nJohn,Brown\n");
    const ImportPlan plan = Plan("Forename,Surname,NI,Payroll No,DOB\n"
                                 "Jane,Smith,AB123456C,,\n"
                                 "John,Brown,,8,\n"
                                 ",,ab 12 34 56 c,,1/2/70\n"
                                 ",,,8,3/4/71\n");
    EXPECT_EQ(Said(plan), "Changed|names|National Insurance number AB123456C\n"
                          "Changed|names|Works number or department 8\n"
                          "Changed|NI number|Date of birth 01/02/1970\n"
                          "Changed|works number|Date of birth 03/04/1971\n");
}

TEST_F(Import, TakesANumberThatTwoHaveForNobodys)
{
    Take("Forename,Surname\nJane,Smith\nJohn,Brown\n");
    Set("Jane Smith", "WorkNumberBox", "7");
    Set("John Brown", "WorkNumberBox", "7");
    EXPECT_EQ(Said(Plan("Payroll No,DOB\n7,1/2/70\n")), "Faulty||Several employees have the works number 7\n");
}

TEST_F(Import, GivesANewEmployeeTheFirstReferenceOfHisEmployer)
{
    Take("Forename,Surname,PAYE ref\nJane,Smith,111/A1\nJohn,Brown,\n");
    Set("John Brown", "PAYEBox", "222/B2");
    Take("Forename,Surname\nAnn,Other\n");
    EXPECT_EQ(Field("P11D", "Ann Other", "PAYEBox"), "111/A1");
}

TEST_F(Import, TakesNobodyForWhomThereIsNoPlace)
{
    EXPECT_EQ(Said(Plan("Forename,Surname\nJane,Smith\n", "A SAMPLE")), "Faulty||The sample employer takes nobody\n");
    const ImportPlan joined = Plan("Employer,Forename,Surname\nAcme,Ltd Jane,Smith\nAcme Ltd,Jane,Smith\n");
    EXPECT_EQ(joined.rows[0].state, RowState::New);
    EXPECT_EQ(joined.rows[1].words, "Employer and names read like those of another employee");
    std::string csv = "Employer,Forename,Surname\n";
    for (std::size_t employer = 0; employer <= EmployerNameSlots; ++employer)
        csv += std::to_string(employer) + " Ltd,Jane,Smith\n";
    const ImportPlan many = Plan(csv);
    EXPECT_EQ(many.CountOf(RowState::New), EmployerNameSlots);
    EXPECT_EQ(many.rows.back().words, "There is room for 751 employers");
}

TEST_F(Import, TakesOneColumnForATarget)
{
    const Targets targets;
    const exchange::Columns columns = ColumnsOf(exchange::ParseTable("Surname,Forename,Last name\n"), targets);
    EXPECT_EQ(columns, (exchange::Columns{targets.Meant("Surname"), targets.Meant("First names"), exchange::Nothing}));
}

TEST_F(Import, TellsCarsOfOneMakeApartByTheirDates)
{
    Take("Employee,Vehicle,Registration date\nJane Smith,Estate,1/2/2008\n");
    Take("Employee,Vehicle,Registration date\nJane Smith,Estate,1/3/2009\n");
    EXPECT_EQ(Field("P11D", "Jane Smith", "FRegDate1"), "01/02/2008");
    EXPECT_EQ(Field("P11D", "Jane Smith", "FMakeModel2"), "Estate");
    EXPECT_EQ(Field("P11D", "Jane Smith", "FRegDate2"), "01/03/2009");
}

TEST_F(Import, TakesBackWhatWasWrittenOut)
{
    Take("Forename,Surname,NI,DOB,Director,\"A, cost or market value\",Section,Description,Cost,Vehicle,List price\n"
         "Jane,=Smith,AB123456C,5/4/61,Y,100,K,Gardener,7,Estate,20000\n");
    ScriptedDoor door;
    Session session(door);
    session.settings.path.at(1) = folder.path.string();
    session.settings.selectedFolder = 1;
    std::filesystem::copy_file(file, session.ClientDatabasePath());
    for (const exchange::Exported what :
         {exchange::Exported::Employees, exchange::Exported::Lists, exchange::Exported::Cars}) {
        const auto rows = ExportedTable(session, what, "Acme Ltd");
        ASSERT_EQ(rows.size(), 2U);
        const ImportPlan plan = Plan(exchange::TableBytes(rows), "");
        EXPECT_EQ(plan.CountOf(RowState::Same), 1U) << Said(plan);
    }
}

TEST_F(Import, TakesAndWritesTheLastLineOfAList)
{
    const std::string last = std::to_string(LinesOfASchedule), beyond = std::to_string(LinesOfASchedule + 1);
    const ImportPlan plan = Take("Name,List,Line,Item,Item cost\nJane Smith,K," + last + ",Gardener,7\nJane Smith,K," +
                                 beyond + ",Cook,8\n");
    EXPECT_EQ(plan.rows[1].words, "There is no line \"" + beyond + "\"");
    ScriptedDoor door;
    Session session(door);
    session.settings.path.at(1) = folder.path.string();
    session.settings.selectedFolder = 1;
    std::filesystem::copy_file(file, session.ClientDatabasePath());
    const auto rows = ExportedTable(session, exchange::Exported::Lists, "Acme Ltd");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].at(6).text, last);
    EXPECT_EQ(rows[1].at(7).text, "Gardener");
}

TEST_F(Import, SaysWhatWasWrittenBeforeTheStoreFailed)
{
    ScriptedDoor door;
    Session session(door);
    session.settings.path.at(1) = folder.path.string();
    session.settings.selectedFolder = 1;
    session.programFolder = folder.path;
    const std::filesystem::path clients = session.ClientDatabasePath();
    std::filesystem::copy_file(file, clients);
    door.openPath = (folder.path / "staff.csv").string();
    std::ofstream(*door.openPath) << "Employer,Forename,Surname\nAcme Ltd,Ann,One\nAcme Ltd,Ann,Two\n";
    session.screens.Register("ImportTable",
                             [](Session& with) { return std::make_unique<exchange::ImportScreen>(with); });
    // A record is in the way of the second employee's.
    {
        Database database = Database::OpenDatabase(clients);
        Add(database, "KNotepad", "Acme Ltd", "Ann Two");
    }
    Screen* screen = session.screens.Show("ImportTable");
    ASSERT_NE(screen, nullptr);
    screen->Click(screen->box("ImportGo"));
    const std::string told = door.TakeText();
    EXPECT_NE(told.find("\n\n1 of 2 employees had been imported before that, and Ann Two may be there in part. What is "
                        "written stays"),
              std::string::npos)
        << told;
    Database database = Database::OpenDatabase(clients);
    const std::vector<std::string> names = ListEmployees(database, "Acme Ltd");
    ASSERT_FALSE(names.empty());
    EXPECT_EQ(names.front(), "Ann One");
    session.screens.Abandon();
}

} // namespace
} // namespace quillmere::test
