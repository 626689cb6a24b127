// The ways from one employee to another that need no list: who was open last, and who stands before and behind.
#include "clientdb/RecentEmployees.h"

#include "clientdb/EmployerScreens.h"
#include "frame/CheckedFile.h"
#include "support/ProgramFixture.h"

#include <fmt/format.h>

namespace quillmere::test {
namespace {

class RecentEmployeesTest : public ProgramFixture {
protected:
    void Open(const std::string& employer, const std::string& employee)
    {
        EXPECT_TRUE(quillmere::OpenEmployee(Now(), employer, employee));
    }
    std::string OpenNow() { return At("Form3", "EmployeeNameBox").Text(); }
    std::string Note() { return At("MDIForm1", "StatusNote").Text(); }
    std::vector<std::string> Entries()
    {
        std::vector<std::string> shown;
        for (int slot = 1; slot <= RecentSlots; ++slot)
            if (Box& entry = At("MDIForm1", "mnuRecent", slot); entry.Visible())
                shown.push_back(entry.Text());
        return shown;
    }
};

TEST_F(RecentEmployeesTest, TheLatestEightStandInTheMenuTheLatestFirst)
{
    for (int i = 1; i <= 10; ++i)
        Create("Acme Ltd", "Jane", fmt::format("S{}", i));
    EXPECT_TRUE(Entries().empty());
    for (int i = 1; i <= 10; ++i)
        Open("Acme Ltd", fmt::format("Jane S{}", i));
    Open("Acme Ltd", "Jane S5");
    const std::vector<std::string> entries = Entries();
    ASSERT_EQ(entries.size(), 8U);
    EXPECT_EQ(entries.front(), "&1 Jane S5 (Acme Ltd)");
    EXPECT_EQ(entries.at(1), "&2 Jane S10 (Acme Ltd)");
    EXPECT_EQ(entries.back(), "&8 Jane S3 (Acme Ltd)");
}

TEST_F(RecentEmployeesTest, AnEntryOpensItsEmployee)
{
    Create("Brass & Co", "Jane", "Smith");
    Create("Acme Ltd", "Peter", "Cooper");
    Open("Brass & Co", "Jane Smith");
    Open("Acme Ltd", "Peter Cooper");
    EXPECT_EQ(Entries().at(1), "&2 Jane Smith (Brass && Co)");
    At("Form3", "WorkNumberBox").SetText("7");
    Click("MDIForm1", "mnuRecent", 2);
    EXPECT_EQ(OpenNow(), "Smith");
    Click("MDIForm1", "mnuRecent", 2);
    EXPECT_EQ(OpenNow(), "Cooper");
    EXPECT_EQ(At("Form3", "WorkNumberBox").Text(), "7") << "stored when the other one was opened";
}

TEST_F(RecentEmployeesTest, WhoHasGoneIsLeftOut)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Acme Ltd", "Peter", "Cooper");
    Open("Acme Ltd", "Jane Smith");
    Open("Acme Ltd", "Peter Cooper");
    Click("MDIForm1", "cmdFile", 4);
    Menu("FileDeleteEmployee");
    Mark("EmployerList", "EmployerList");
    Click("EmployerList", "EmpSelect");
    Mark("EmployeeList", "EmployeeList");
    door.answers.push_back(Answer::Yes);
    Click("EmployeeList", "EmpeDelete");
    EXPECT_EQ(Entries(), (std::vector<std::string>{"&1 Peter Cooper (Acme Ltd)"}));
}

TEST_F(RecentEmployeesTest, EachFolderHasItsOwnAndTheFileOfTheSettingsIsLeftAlone)
{
    Create("Acme Ltd", "Jane", "Smith");
    WriteFileChecked(Now().programFolder / "RECENT.TXT", "/elsewhere\nOther Ltd\tSomebody Else\n");
    Open("Acme Ltd", "Jane Smith");
    EXPECT_EQ(RecentEmployees(Now()), (std::vector<EmployeeKey>{{"Acme Ltd", "Jane Smith"}}));
    EXPECT_NE(ReadFile(Now().programFolder / "RECENT.TXT").find("/elsewhere\nOther Ltd\tSomebody Else\n"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(Now().programFolder / "RETURN.INI"));
}

TEST_F(RecentEmployeesTest, AFileThatCannotBeReadRemembersNobody)
{
    Create("Acme Ltd", "Jane", "Smith");
    std::filesystem::create_directory(Now().programFolder / "RECENT.TXT");
    Open("Acme Ltd", "Jane Smith");
    EXPECT_TRUE(Entries().empty());
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(RecentEmployeesTest, NextAndPreviousGoThroughTheListAndKeepThePage)
{
    for (const char* surname : {"Adams", "Baker", "Cooper"})
        Create("Acme Ltd", "Jane", surname);
    Create("Other Ltd", "Jane", "Young");
    Open("Acme Ltd", "Jane Adams");
    Menu("mnuNextEmployee");
    EXPECT_EQ(OpenNow(), "Baker");
    Menu("mnuPage2");
    EXPECT_TRUE(Shows("Side2Form1"));
    At("Side2Form1", "GVan").SetText("    500.00");
    Menu("mnuNextEmployee");
    EXPECT_TRUE(Shows("Side2Form1"));
    EXPECT_EQ(Now().CurrentEmployee, "Jane Cooper");
    EXPECT_EQ(At("Side2Form1", "GVan").Text(), "");
    Menu("mnuNextEmployee");
    EXPECT_EQ(Now().CurrentEmployee, "Jane Cooper");
    EXPECT_EQ(Note(), "Jane Cooper is the last employee of Acme Ltd");
    Menu("mnuPreviousEmployee");
    EXPECT_EQ(At("Side2Form1", "GVan").Text(), "    500.00");
    Menu("mnuPage1");
    Menu("mnuPreviousEmployee");
    EXPECT_EQ(OpenNow(), "Adams");
    Menu("mnuPreviousEmployee");
    EXPECT_EQ(Note(), "Jane Adams is the first employee of Acme Ltd");
}

TEST_F(RecentEmployeesTest, TheLastOneIsWhoWasOpenBefore)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Other Ltd", "Peter", "Cooper");
    Menu("mnuLastEmployee");
    EXPECT_EQ(Note(), "Nobody else has been open yet");
    Open("Acme Ltd", "Jane Smith");
    Menu("mnuLastEmployee");
    EXPECT_EQ(Note(), "Nobody else has been open yet");
    Open("Other Ltd", "Peter Cooper");
    Menu("mnuLastEmployee");
    EXPECT_EQ(OpenNow(), "Smith");
    Menu("mnuLastEmployee");
    EXPECT_EQ(OpenNow(), "Cooper");
    Menu("mnuCloseFile");
    EXPECT_EQ(Now().screens.Find("Form3"), nullptr);
    Menu("mnuLastEmployee");
    EXPECT_EQ(OpenNow(), "Cooper") << "with nobody open, the one who was";
}

TEST_F(RecentEmployeesTest, TheWaysGoWhereTheUsersOwnClicksGo)
{
    Create("Acme Ltd", "Jane", "Smith");
    Open("Acme Ltd", "Jane Smith");
    Menu("mnuPage2");
    Menu("mnuCars3And4");
    EXPECT_TRUE(Shows("Form3_4"));
    Click("Form3_4", "Cancel");
    Menu("mnuCars5And6");
    EXPECT_TRUE(Shows("Form5_6"));
    Click("Form5_6", "Cancel");
    Menu("mnuDeclaration");
    EXPECT_TRUE(Shows("P11DDeclaration"));
    EXPECT_TRUE(Now().DeclarationOpen) << "reached by the page's own label";
}

TEST_F(RecentEmployeesTest, TheEmptyDeskSaysWhatToBeginWith)
{
    EXPECT_TRUE(At("MDIForm1", "Start").Visible());
    EXPECT_NE(At("MDIForm1", "StartWords").Text().find("no employer in this folder yet"), std::string::npos);
    Create("Acme Ltd", "Jane", "Smith");
    Open("Acme Ltd", "Jane Smith");
    EXPECT_FALSE(At("MDIForm1", "Start").Visible());
    Menu("mnuCloseFile");
    EXPECT_TRUE(At("MDIForm1", "Start").Visible());
    EXPECT_EQ(At("MDIForm1", "StartWords").Text().find("Open an employee"), 0U);
}

} // namespace
} // namespace quillmere::test
