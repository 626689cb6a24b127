// The overview of an employer: its sums against the declaration's, and its window.
#include "review/Overview.h"

#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "declaration/Class1A.h"
#include "edition/Edition.h"
#include "review/EmployerReview.h"
#include "support/ProgramFixture.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace quillmere::test {
namespace {

using review::Arranged;
using review::OverviewSections;
using review::OverviewSums;

TEST(OverviewSections, AreThoseOfTheFormThatHaveATotalAndTakeInAllThatBearsClass1A)
{
    std::string letters;
    std::set<std::string_view> fields;
    for (const review::OverviewSection& section : OverviewSections()) {
        letters += section.letter;
        for (const std::string_view field : section.amounts) {
            EXPECT_NE(FieldsOf(FindTable("P11D")).Find(field), TableFields::None) << field;
            EXPECT_TRUE(fields.insert(field).second) << field << " counts twice";
            EXPECT_EQ(field.front(), section.letter.front()) << field;
        }
    }
    EXPECT_EQ(letters, "ABCDEFGHIJKLNO");
    for (const std::string_view field : Class1AFields)
        EXPECT_TRUE(fields.contains(field)) << field;
}

TEST(OverviewLines, AreFilteredByAnyPartOfAnyCellAndSortedByColumn)
{
    const auto lines = std::to_array<std::string_view>(
        {"Zoë Adams\t7\t20.00", "ann Other\tSales\t3.00", "Ben Cooper\t7\t", "Cy Adams\tB 1\t(5.00)"});
    using Order = std::vector<std::size_t>;
    EXPECT_EQ(Arranged(lines, "", {}), (Order{0, 1, 2, 3}));
    EXPECT_EQ(Arranged(lines, "ADAMS", {}), (Order{0, 3}));
    EXPECT_EQ(Arranged(lines, " zoe  7 ", {}), Order{0});
    EXPECT_EQ(Arranged(lines, "nobody", {}), Order{});
    EXPECT_EQ(Arranged(lines, "", {.column = 0}), (Order{1, 2, 3, 0})) << "without regard to case and accents";
    EXPECT_EQ(Arranged(lines, "", {.column = 0, .descending = true}), (Order{0, 3, 2, 1}));
    EXPECT_EQ(Arranged(lines, "", {.column = 2}), (Order{3, 2, 1, 0})) << "figures as amounts";
    EXPECT_EQ(Arranged(lines, "", {.column = 2, .descending = true}), (Order{0, 1, 2, 3}));
    EXPECT_EQ(Arranged(lines, "", {.column = 1}), (Order{0, 2, 3, 1})) << "equal ones as they stand";
}

class Overview : public ProgramFixture {
protected:
    void SetForm(std::string_view employer, std::string_view employee, std::string_view field, std::string_view text)
    {
        Database database = Clients();
        Recordset records = database.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek(employer, employee);
        records.Edit();
        records.SetField(field, text);
        records.Update();
    }
    void Show()
    {
        Menu("mnuOverview");
        Finish();
    }
    /// All pieces of a look.
    void Finish()
    {
        while (Now().screens.HasDeferred())
            Now().screens.RunDeferred();
    }
    Box& List(std::string_view name) { return At("OverviewList", name); }
    std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (const std::string& line : List("Lines").Entries())
            names.push_back(line.substr(0, line.find('\t')));
        return names;
    }
    void Type(std::string_view text)
    {
        List("Filter").AcceptTyped(text);
        Now().screens.Find("OverviewList")->Typed(List("Filter"));
    }
    /// Another desk has stored something: the file is newer than it was.
    void Touch()
    {
        const auto path = Now().ClientDatabasePath();
        std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(1));
    }

    using Texts = std::vector<std::string>;
};

TEST_F(Overview, SumsOfRandomEmployersEqualBoxAAndTheContributionsOfTheirDeclarations)
{
    std::mt19937 random(20101);
    const auto any = [&random](int most) { return std::uniform_int_distribution(0, most)(random); };
    const auto words = std::to_array<std::string_view>({"Nil", "See Attach", "   (12.34)", ""});
    review::Paper paper(Now().settings, Now().platform);
    for (int round = 0; round < 12; ++round) {
        const std::string employer = "Employer " + std::to_string(round);
        Database database = Clients();
        Amount allAmounts;
        for (int employee = any(6); employee >= 0; --employee) {
            Create(employer, "Any", std::to_string(employee));
            Recordset records = database.OpenRecordset("P11D");
            records.Index("IndKey");
            records.Seek(employer, "Any " + std::to_string(employee));
            records.Edit();
            for (const review::OverviewSection& section : OverviewSections())
                for (const std::string_view field : section.amounts) {
                    const std::string text = any(3) == 0
                                                 ? std::string(words[static_cast<std::size_t>(any(3))])
                                                 : AmountText(Amount::FromUnits(std::int64_t{any(900'000)} * 100),
                                                              edition::FormatMoneyBlankZero);
                    records.SetField(field, text);
                    allAmounts += ReadAmount(text);
                }
            records.Update();
        }
        {
            Recordset declarations = database.OpenRecordset("P11DB");
            declarations.MoveFirstOf(employer);
            ASSERT_FALSE(declarations.AtEnd());
            declarations.Edit();
            declarations.SetField("Section1Tick", any(1) == 1 ? "1" : "0");
            declarations.SetField("Section4BBox", "    100.00");
            declarations.Update();
        }
        OverviewSums employees;
        review::EmployerReview review(
            employer, paper, [&](std::string_view, const review::FormFacts& form, const review::FindingList& found) {
                employees += review::SumsOf(form, found.size());
            });
        while (review.GoOn(database, 2)) {
        }
        const DeclarationTotals declared = ComputeDeclarationTotals(database, employer);
        EXPECT_EQ(review.Declaration(), declared);
        const OverviewSums sums = review::SumsOf(employees, review.Declaration(), review.Found());
        EXPECT_EQ(sums.employees, ListEmployees(database, employer).size());
        EXPECT_EQ(sums.benefits, ReadAmount(declared.section1ABox));
        EXPECT_EQ(sums.contributions,
                  ReadAmount(declared.section1Tick ? declared.section4FBox : declared.section1CBox));
        EXPECT_EQ(sums.total, allAmounts);
        EXPECT_EQ(sums.toLookAt, review::CheckAllOf(database, employer, paper).size());
    }
}

TEST_F(Overview, ShowsEachEmployeeWithTheSumOfAllAndGoesToTheSectionOfTheColumn)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Acme Ltd", "Ann", "Other");
    SetForm("Acme Ltd", "Jane Smith", "ICashEqu", "    200.00");
    SetForm("Acme Ltd", "Ann Other", "OCashEqu6", "     50.00");
    OpenEmployee();
    Show();
    EXPECT_EQ(List("Lines").Entries(),
              (std::vector<std::string>{"Ann Other\t\t\t50.00\t\t2\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t50.00",
                                        "Jane Smith\t\t\t200.00\t200.00\t1\t\t\t\t\t\t\t\t\t\t\t200.00\t\t\t\t\t",
                                        "Total\t\t\t250.00\t200.00\t3\t\t\t\t\t\t\t\t\t\t\t200.00\t\t\t\t\t50.00"}));
    Screen* window = Now().screens.Find("OverviewList");
    window->SelectLines(List("Lines"), 1, 16, {1});
    window->DoubleClick(List("Lines"));
    EXPECT_EQ(Now().CurrentEmployee, "Jane Smith");
    EXPECT_TRUE(Shows("Side2Form1"));
    EXPECT_TRUE(Shows("OverviewList"));
    window->SelectLines(List("Lines"), 0, 1, {0});
    Click("OverviewList", "OverviewOpen");
    EXPECT_EQ(Now().CurrentEmployee, "Ann Other");
    EXPECT_TRUE(Shows("Form3"));
    EXPECT_FALSE(Shows("CheckList"));
    window->SelectLines(List("Lines"), 0, 5, {0});
    Click("OverviewList", "OverviewOpen");
    EXPECT_TRUE(Shows("CheckList")) << "from the number of things to look at to what they are";
    window->SelectLines(List("Lines"), 2, 0, {2});
    Click("OverviewList", "OverviewOpen");
    EXPECT_EQ(Now().CurrentEmployee, "Ann Other") << "the total is nobody";
}

TEST_F(Overview, KeepsTheLineInUseWhenItIsSortedFilteredOrLookedThroughAgain)
{
    for (const char* surname : {"Adams", "Baker", "Cooper"})
        Create("Acme Ltd", "Jane", surname);
    SetForm("Acme Ltd", "Jane Cooper", "ICashEqu", "    200.00");
    OpenEmployee();
    Show();
    Screen* window = Now().screens.Find("OverviewList");
    window->SelectLines(List("Lines"), 2, 16, {2});
    window->Sort(List("Lines"), 16);
    window->Sort(List("Lines"), 16);
    EXPECT_EQ(Names(), (Texts{"Jane Cooper", "Jane Adams", "Jane Baker", "Total"}));
    EXPECT_EQ(List("Lines").Selected(), 0);
    Type("coop");
    EXPECT_EQ(Names(), (Texts{"Jane Cooper", "Total"}));
    SetForm("Acme Ltd", "Jane Baker", "ICashEqu", "    300.00");
    Type("");
    Click("OverviewList", "OverviewAgain");
    Finish();
    EXPECT_EQ(Names(), (Texts{"Jane Baker", "Jane Cooper", "Jane Adams", "Total"}));
    EXPECT_EQ(List("Lines").Selected(), 1);
    EXPECT_EQ(List("Lines").Column(), 16);
}

TEST_F(Overview, TakesUpWhatHasBeenStoredOnceItsWindowIsCameBackTo)
{
    Create("Acme Ltd", "Jane", "Smith");
    OpenEmployee();
    Show();
    Screen* window = Now().screens.Find("OverviewList");
    const std::vector<std::string> before = List("Lines").Entries();
    SetForm("Acme Ltd", "Jane Smith", "ICashEqu", "    200.00");
    Touch();
    EXPECT_EQ(List("Lines").Entries(), before);
    window->WindowActivated();
    Finish();
    EXPECT_NE(List("Lines").Entries(), before);
    window->WindowActivated();
    EXPECT_FALSE(Now().screens.HasDeferred()) << "nothing has changed since";
}

TEST_F(Overview, ShowsAllEmployersOfTheFolderAndEnterTheOneInUse)
{
    Create("Acme Ltd", "Jane", "Smith");
    Create("Zinc plc", "Ann", "Other");
    Create("Zinc plc", "Ben", "Cooper");
    SetForm("Zinc plc", "Ann Other", "ICashEqu", "    100.00");
    Show();
    EXPECT_EQ(List("Employer").Text(), "All employers");
    EXPECT_EQ(Names(), (Texts{"Acme Ltd", "Zinc plc", "Total"}));
    EXPECT_EQ(List("Lines").Entries()[1].substr(0, 31), "Zinc plc\t2\t100.00\t100.00\t12.80\t");
    EXPECT_EQ(List("Lines").Entries()[2].substr(0, 28), "Total\t3\t100.00\t100.00\t12.80\t");
    Mark("OverviewList", "Lines", 1);
    Click("OverviewList", "OverviewOpen");
    Finish();
    EXPECT_EQ(List("Employer").Text(), "Zinc plc");
    EXPECT_EQ(Names(), (Texts{"Ann Other", "Ben Cooper", "Total"})) << "by key, as they are read";
    Now().screens.Find("OverviewList")->Choose(List("Employer"), 0);
    Finish();
    EXPECT_EQ(Names(), (Texts{"Acme Ltd", "Zinc plc", "Total"}));
}

} // namespace
} // namespace quillmere::test
