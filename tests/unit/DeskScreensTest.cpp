// The screens beside the form: finding an employee, and what there is to look at.
#include "clientdb/Employees.h"
#include "support/ProgramFixture.h"

namespace quillmere::test {
namespace {

class DeskScreens : public ProgramFixture {
protected:
    /// Types into the line of Find as a user does.
    void Seek(std::string_view text)
    {
        Box& sought = At("FindEmployee", "Sought");
        sought.AcceptTyped(text);
        Now().screens.Find("FindEmployee")->Typed(sought);
    }
};

TEST_F(DeskScreens, FindListsWhomEachKeyLeavesAndChoosesTheFirst)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Brass & Co", "Peter", "Goldsmith");
    Create("Brass & Co", "Ann", "Cooper");
    Menu("mnuFind");
    EXPECT_TRUE(At("FindEmployee", "Found").Entries().empty());
    EXPECT_EQ(At("FindEmployee", "Count").Text(), "0 of 3 employees");
    Seek("sm");
    EXPECT_EQ(At("FindEmployee", "Found").Entries(),
              (std::vector<std::string>{"Jane Smith\tAcme Ltd\t\t", "Peter Goldsmith\tBrass & Co\t\t"}));
    EXPECT_EQ(At("FindEmployee", "Found").Selected(), 0);
    EXPECT_EQ(At("FindEmployee", "Count").Text(), "2 of 3 employees");
    Seek("smq");
    EXPECT_EQ(At("FindEmployee", "Found").Selected(), -1);
}

TEST_F(DeskScreens, EnterOpensWhoIsChosenAndClosesFind)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Brass & Co", "Peter", "Goldsmith");
    Menu("mnuFind");
    Seek("gold");
    Click("FindEmployee", "FindOpen");
    EXPECT_EQ(Now().screens.Find("FindEmployee"), nullptr);
    ASSERT_NE(Now().screens.Find("Form3"), nullptr);
    EXPECT_EQ(Now().screens.Find("Form3")->Caption(), "P11D");
    EXPECT_EQ(Now().CurrentEmployer, "Brass & Co");
    EXPECT_EQ(At("Form3", "EmployeeNameBox").Text(), "Goldsmith");
}

TEST_F(DeskScreens, WhatIsOpenStaysUntilAnotherIsOpenedAndIsStoredThen)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Brass & Co", "Peter", "Goldsmith");
    Menu("mnuFind");
    Seek("smith acme");
    Click("FindEmployee", "FindOpen");
    At("Form3", "WorkNumberBox").SetText("W 7");
    Menu("mnuFind");
    EXPECT_TRUE(Now().screens.IsShown("Form3"));
    Click("FindEmployee", "FindCancel");
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "W 7");
    Menu("mnuFind");
    Seek("gold");
    Click("FindEmployee", "FindOpen");
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "");
    Menu("mnuFind");
    Seek("w 7");
    Click("FindEmployee", "FindOpen");
    EXPECT_EQ(At("Form3", "EmployeeNameBox").Text(), "Smith");
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "W 7");
}

TEST_F(DeskScreens, NobodyFoundOpensNobody)
{
    Menu("mnuFind");
    Click("FindEmployee", "FindOpen");
    EXPECT_NE(Now().screens.Find("FindEmployee"), nullptr);
    EXPECT_EQ(Now().screens.Find("Form3"), nullptr);
}

TEST_F(DeskScreens, CheckShowsWhatTheOpenFormShouldBeLookedAtForAndGoesThere)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Menu("mnuCheck");
    Box& findings = At("CheckList", "Findings");
    ASSERT_EQ(findings.Entries().size(), 1U);
    EXPECT_EQ(findings.Entries().front(),
              "Fault\tJane Smith\t\tNeither a National Insurance number nor date of birth and "
              "gender\tNational Insurance number\tHMRC, P11D Quality Standard");
    EXPECT_EQ(At("CheckList", "Summary").Text(), "1 to look at, 1 of them faults");
    // What has been typed since counts, although the page has not been stored.
    At("Form3", "NatIns").SetText("AB123456C");
    At("Form3", "FTotalCashFuel").SetText("     10.00");
    Click("CheckList", "CheckAgain");
    EXPECT_EQ(At("CheckList", "Findings").Entries().size(), 2U);
}

TEST_F(DeskScreens, CheckTurnsToThePageOfAFinding)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    At("Form3", "NatIns").SetText("AB123456C");
    Click("Form3", "Page2");
    At("Side2Form1", "GVanFuel").SetText("    550.00");
    Click("Side2Form1", "Page1");
    Menu("mnuCheck");
    ASSERT_EQ(At("CheckList", "Findings").Entries().size(), 1U);
    Mark("CheckList", "Findings");
    Click("CheckList", "CheckGo");
    EXPECT_TRUE(Shows("Side2Form1"));
    EXPECT_FALSE(Shows("Form3"));
}

TEST_F(DeskScreens, CheckLooksThroughAnEmployerAndOpensWhomAFindingIsOf)
{
    for (const char* surname : {"Adams", "Baker", "Cooper", "Young"})
        Create("Acme Ltd", "Jane", surname);
    Create("Other Ltd", "Jane", "Smith");
    OpenEmployee();
    EXPECT_EQ(Now().CurrentEmployee, "Jane Adams");
    Menu("mnuCheck");
    Click("CheckList", "Scope", 1);
    while (Now().screens.HasDeferred())
        Now().screens.RunDeferred();
    Box& findings = At("CheckList", "Findings");
    // Four without a number, and nobody ticked as a director.
    ASSERT_EQ(findings.Entries().size(), 5U);
    EXPECT_EQ(At("CheckList", "Summary").Text(), "5 to look at, 4 of them faults");
    Mark("CheckList", "Findings", 3);
    Click("CheckList", "CheckGo");
    EXPECT_EQ(At("Form3", "EmployeeNameBox").Text(), "Young");
    EXPECT_TRUE(Shows("CheckList"));
}

TEST_F(DeskScreens, CheckWithNobodyOpenLooksThroughTheFolder)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Brass & Co", "Peter", "Goldsmith");
    Menu("mnuCheck");
    while (Now().screens.HasDeferred())
        Now().screens.RunDeferred();
    EXPECT_TRUE(At("CheckList", "Scope", 2).Ticked());
    EXPECT_TRUE(At("CheckList", "Findings").Columns().starts_with("Weight\tEmployer\tEmployee"));
    // Each without a number, and at each employer nobody ticked as a director.
    ASSERT_EQ(At("CheckList", "Findings").Entries().size(), 4U);
    EXPECT_TRUE(At("CheckList", "Findings").Entries()[1].starts_with("Fault\tBrass & Co\tPeter Goldsmith\t"));
    for (const int ofWhom : {0, 1}) {
        Click("CheckList", "Scope", ofWhom);
        EXPECT_EQ(At("CheckList", "Summary").Text(), "Open an employee to check");
        EXPECT_TRUE(At("CheckList", "Findings").Entries().empty());
        Click("CheckList", "CheckGo");
        EXPECT_TRUE(Shows("CheckList"));
    }
}

TEST_F(DeskScreens, MoreThanAListHoldsAreCounted)
{
    {
        Database database = Clients();
        WriteBatch batch(database);
        Recordset records = database.OpenRecordset("P11D");
        for (int i = 0; i < 201; ++i) {
            const std::string name = "Ann " + std::to_string(i);
            records.AddNew();
            records.SetField("EmployerName", "Acme Ltd");
            records.SetField("EmployeeName", name);
            records.SetField("Name", JoinedName("Acme Ltd", name));
            records.Update();
        }
        batch.Commit();
    }
    Menu("mnuFind");
    Seek("ann");
    EXPECT_EQ(At("FindEmployee", "Found").Entries().size(), 200U);
    EXPECT_EQ(At("FindEmployee", "Count").Text(), "The first 200 of 201 found: type more to see others");
}

} // namespace
} // namespace quillmere::test
