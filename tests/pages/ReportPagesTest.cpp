#include "KeptListing.h"
#include "printing/ExtraCarSheets.h"
#include "printing/ReportPage.h"
#include "printing/ScheduleReports.h"
#include "printing/WorkingReports.h"
#include "support/PrintDesk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace quillmere::pages {
namespace {

using testing::PrintDesk;
using testing::ScriptedDoor;
using testing::TextsOf;

constexpr std::string_view Employer = "Marlow & Sons Ltd";
constexpr std::string_view Employee = "José María O'Neill-Smythe";

/// One report, for one of several things where there are several.
struct ReportCase {
    std::string name;
    std::string table;
    const ScheduleReport* schedule = nullptr;
    const WorkingReport* working = nullptr;
    int number = 0;
};

void PrintTo(const ReportCase& one, std::ostream* out)
{
    *out << one.name;
}

std::vector<ReportCase> AllReports()
{
    std::vector<ReportCase> cases;
    for (const ScheduleReport& schedule : ScheduleReports())
        cases.push_back(
            {.name = std::string(schedule.table), .table = std::string(schedule.table), .schedule = &schedule});
    for (const WorkingReport& working : WorkingReports()) {
        const bool furtherCars = working.table == "ExtraCars";
        const int first = working.items.empty() ? 0 : furtherCars ? 3 : 1;
        const int last = working.table == "P11D" ? 2 : static_cast<int>(working.items.size());
        for (int number = first; number <= last; ++number)
            cases.push_back({.name = working.items.empty() ? std::string(working.name)
                                                           : std::string(working.table) + std::to_string(number),
                             .table = std::string(working.table),
                             .working = &working,
                             .number = number});
    }
    return cases;
}

class ReportPages : public ::testing::TestWithParam<ReportCase> {
protected:
    ReportPages()
    {
        desk.Add(Employer, "José María", "O'Neill-Smythe");
        job.employer = Employer;
        job.employee = IsOfEmployer() ? Employer : Employee;
        job.OpenClients();
    }

    bool IsOfEmployer() const { return GetParam().schedule != nullptr && GetParam().schedule->ofEmployer; }
    void Set(const std::string& field, std::string_view text)
    {
        desk.Set(GetParam().table, Employer, Employee, field, text);
    }
    std::string Numbered(std::string_view stem) const
    {
        return GetParam().number > 0 ? quillmere::Numbered(stem, GetParam().number) : std::string(stem);
    }

    /// The document of the report alone, behind the page with which it opens.
    const Document& Print()
    {
        EXPECT_TRUE(job.OpenDocument("A report"));
        if (GetParam().schedule != nullptr)
            PrintScheduleReport(job, *GetParam().schedule);
        else
            PrintWorkingReport(job, *GetParam().working, GetParam().number);
        job.page.vsEndDoc();
        return *desk.documents.back();
    }

    ScriptedDoor door;
    PrintDesk desk{door};
    PrintJob job{desk.session, desk.printing, "Test", Route::Screen};
};

/// Where a text stands that leaves the sheet or its margins; empty if none does.
std::string TextOutsideTheSheet(const Document& document, int page)
{
    for (const Operation& operation : document.Page(page))
        if (operation.kind == OperationKind::Text &&
            (operation.x1 < 0 || operation.y1 < 0 || operation.x1 + operation.x2 > SheetWidth ||
             PlaceOf(document, operation).y > SheetHeight))
            return std::string(document.TextOf(operation));
    return {};
}

TEST_P(ReportPages, AreDrawnAsKeptWithEveryFieldFilled)
{
    desk.Fill(GetParam().table, Employer, Employee);
    const Document& document = Print();
    ASSERT_EQ(document.PageCount(), 2);
    EXPECT_EQ(job.pageNumber, 1);
    ExpectAsKept("report-" + GetParam().name + "-full", Listing(document, 2));
    EXPECT_EQ(TextOutsideTheSheet(document, 2), "");
    ASSERT_EQ(document.bookmarks.size(), 1u);
    EXPECT_EQ(document.bookmarks.front().page, 2);
    EXPECT_TRUE(door.messages.empty());
}

TEST_P(ReportPages, AreDrawnAsKeptWithLittleFilled)
{
    if (GetParam().schedule != nullptr) {
        Set("Description3", "Third");
        Set(quillmere::Numbered(GetParam().schedule->columns.back().field, 7), "   (1234.56)");
        Set("Description7", "Seventh");
    } else {
        Set(Numbered(GetParam().working->entered.front()), "06/05/2010");
    }
    const Document& document = Print();
    ASSERT_EQ(document.PageCount(), 2);
    ExpectAsKept("report-" + GetParam().name + "-sparse", Listing(document, 2));
}

TEST_P(ReportPages, HaveNoPageWithNothingFilled)
{
    EXPECT_EQ(Print().PageCount(), 1);
    EXPECT_EQ(job.pageNumber, 0);
    EXPECT_TRUE(desk.documents.back()->Page(1).empty());
    EXPECT_TRUE(door.messages.empty());
}

TEST_P(ReportPages, HaveAPageAsSoonAsOneEnteredFieldIsFilled)
{
    std::vector<std::string> fields;
    if (GetParam().schedule != nullptr) {
        fields.push_back("Description20");
        for (const ReportColumn& column : GetParam().schedule->columns)
            fields.push_back(quillmere::Numbered(column.field, 20));
    } else {
        for (const std::string_view field : GetParam().working->entered)
            fields.push_back(Numbered(field));
    }
    for (const std::string& field : fields) {
        Set(field, "0");
        EXPECT_EQ(Print().PageCount(), 2) << field;
        Set(field, "");
        EXPECT_EQ(Print().PageCount(), 1) << field;
    }
}

TEST_P(ReportPages, TellOfAMissingRecord)
{
    job.employer = "Nobody plc";
    EXPECT_EQ(Print().PageCount(), 1);
    ASSERT_EQ(door.messages.size(), 1u);
    if (GetParam().working != nullptr && !GetParam().working->readingError.empty()) {
        EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
        EXPECT_EQ(door.messages[0].text, "Unable to Open Car Information for printing");
    } else {
        EXPECT_TRUE(door.messages[0].title.ends_with(" - loading error")) << door.messages[0].title;
        EXPECT_EQ(door.messages[0].text, "Employee not found");
    }
}

/// The texts that lie over each other on a page.
std::string Overlap(const Document& document, int page)
{
    std::vector<Operation> texts;
    for (const Operation& operation : document.Page(page))
        if (operation.kind == OperationKind::Text)
            texts.push_back(operation);
    for (std::size_t one = 0; one < texts.size(); ++one)
        for (std::size_t other = one + 1; other < texts.size(); ++other)
            if (std::abs(PlaceOf(document, texts[one]).y - PlaceOf(document, texts[other]).y) <
                    3 * UnitsPerMillimetre &&
                texts[one].x1 < texts[other].x1 + texts[other].x2 && texts[other].x1 < texts[one].x1 + texts[one].x2)
                return std::string(document.TextOf(texts[one])) + " | " + std::string(document.TextOf(texts[other]));
    return {};
}

TEST_P(ReportPages, KeepLongTextsOnTheSheetAndApart)
{
    desk.Fill(GetParam().table, Employer, Employee);
    if (GetParam().schedule != nullptr) {
        for (const int line : {1, 3, 8, 20})
            Set(quillmere::Numbered("Description", line),
                "A company car with all its accessories, two sets of tyres and a roof rack, transferred to the "
                "employee "
                "at the end of the lease for less than the market value that two dealers had named");
        for (const int line : {2, 9, 19})
            Set(quillmere::Numbered("Description", line), "Company car sold below its market value in July");
    }
    for (const std::string_view font : {"Arial", "Times New Roman"}) {
        desk.session.settings.reportFont = font;
        const Document& document = Print();
        EXPECT_EQ(document.PageCount(), 2);
        EXPECT_EQ(TextOutsideTheSheet(document, 2), "");
        EXPECT_EQ(Overlap(document, 2), "");
    }
}

class SchedulePages : public ReportPages {};

TEST_P(SchedulePages, GoOnToAFurtherPageWhereLongTextsFillOne)
{
    for (int line = 1; line <= 20; ++line) {
        std::string description;
        for (int word = 1; word <= 60; ++word)
            description += fmt::format("word{} ", word);
        Set(quillmere::Numbered("Description", line), description);
        Set(quillmere::Numbered(GetParam().schedule->columns.front().field, line), "      1.00");
    }
    const Document& document = Print();
    EXPECT_GT(document.PageCount(), 2);
    EXPECT_EQ(job.pageNumber, document.PageCount() - 1);
    for (int page = 2; page <= document.PageCount(); ++page) {
        EXPECT_EQ(TextOutsideTheSheet(document, page), "");
        EXPECT_EQ(Overlap(document, page), "");
    }
    const std::vector<std::string> last = TextsOf(document, document.PageCount());
    EXPECT_EQ(std::ranges::count(last, "20.00"), 1);
}

std::vector<ReportCase> AllSchedules()
{
    std::vector<ReportCase> cases = AllReports();
    std::erase_if(cases, [](const ReportCase& one) { return one.schedule == nullptr; });
    return cases;
}

INSTANTIATE_TEST_SUITE_P(All, ReportPages, ::testing::ValuesIn(AllReports()),
                         [](const auto& info) { return info.param.name; });
INSTANTIATE_TEST_SUITE_P(All, SchedulePages, ::testing::ValuesIn(AllSchedules()),
                         [](const auto& info) { return info.param.name; });

// ---- sheets for further cars --------------------------------------------------------------------

class ExtraCars : public ::testing::Test {
protected:
    ExtraCars()
    {
        desk.Add(Employer, "José María", "O'Neill-Smythe");
        job.employer = Employer;
        job.employee = Employee;
        job.nationalInsurance = "AB123456C";
        job.OpenClients();
    }
    void Set(std::string_view field, std::string_view text) { desk.Set("ExtraCars", Employer, Employee, field, text); }
    const Document& Print(const ExtraCarSheet& sheet)
    {
        EXPECT_TRUE(job.OpenDocument("A sheet"));
        job.NextPage();
        PrintExtraCarSheet(job, sheet);
        job.page.vsEndDoc();
        return *desk.documents.back();
    }

    ScriptedDoor door;
    PrintDesk desk{door};
    PrintJob job{desk.session, desk.printing, "Test", Route::Screen};
};

TEST_F(ExtraCars, SheetsAreDrawnAsKept)
{
    desk.Fill("ExtraCars", Employer, Employee);
    ExpectAsKept("cars-3-4-full", Listing(Print(Cars3And4), 1));
    ExpectAsKept("cars-5-6-full", Listing(Print(Cars5And6), 1));
    desk.session.settings.reportShading = false;
    ExpectAsKept("cars-5-6-plain", Listing(Print(Cars5And6), 1));
}

TEST_F(ExtraCars, SheetsAddUpTheirOwnTwoCars)
{
    Set("FCashEqu3", "   1000.00");
    Set("FCashEqu4", "    250.50");
    Set("FCashEqu5", "   9999.00");
    Set("FFuelEqu4", "    180.00");
    const std::vector<std::string> texts = TextsOf(Print(Cars3And4), 1);
    EXPECT_EQ(std::ranges::count(texts, "   1250.50"), 1);
    EXPECT_EQ(std::ranges::count(texts, "    180.00"), 2); // the car's own and the total
    EXPECT_EQ(std::ranges::count(texts, "Total cash equivalent of all cars available in 2010-11"), 1);
    EXPECT_EQ(std::ranges::count(texts, "Total cash equivalent of fuel for all cars available in 2010-11"), 1);
    EXPECT_EQ(std::ranges::count(texts, "Car 3"), 1);
    EXPECT_EQ(std::ranges::count(texts, "Car 4"), 1);
}

TEST_F(ExtraCars, SheetsTellOfAMissingRecord)
{
    job.employee = "Nobody";
    EXPECT_TRUE(Print(Cars3And4).Page(1).empty());
    EXPECT_TRUE(Print(Cars5And6).Page(1).empty());
    ASSERT_EQ(door.messages.size(), 2u);
    EXPECT_EQ(door.messages[0].title, "P11D Cars 3 + 4 - loading error");
    EXPECT_EQ(door.messages[1].title, "P11D Cars 5 + 6 - loading error");
    EXPECT_EQ(door.messages[1].text, "Employee not found");
}

TEST_F(ExtraCars, HaveDataAsSoonAsOneCarHasACashOrFuelEquivalent)
{
    EXPECT_FALSE(ExtraCarsHaveData(job, "ExtraCars", 3, 4));
    Set("FMakeModel3", "Rover 75");
    Set("FListPrice3", "  20000.00");
    EXPECT_FALSE(ExtraCarsHaveData(job, "ExtraCars", 3, 4));
    for (const std::string_view field : {"FCashEqu3", "FFuelEqu3", "FCashEqu4", "FFuelEqu4"}) {
        Set(field, "0.00");
        EXPECT_TRUE(ExtraCarsHaveData(job, "ExtraCars", 3, 4)) << field;
        EXPECT_FALSE(ExtraCarsHaveData(job, "ExtraCars", 5, 6)) << field;
        Set(field, "");
    }
    Set("FFuelEqu6", "      1.00");
    EXPECT_TRUE(ExtraCarsHaveData(job, "ExtraCars", 5, 6));
    EXPECT_FALSE(ExtraCarsHaveData(job, "ExtraCars", 3, 4));
    EXPECT_TRUE(door.messages.empty());
}

TEST_F(ExtraCars, OfAnEmployeeWithoutARecordAreToldOfAndHaveNoData)
{
    job.employee = "Nobody";
    EXPECT_FALSE(ExtraCarsHaveData(job, "ExtraCars", 3, 4));
    ASSERT_EQ(door.messages.size(), 1u);
    EXPECT_EQ(door.messages[0].title, "Extra Cars check for data error");
    EXPECT_EQ(door.messages[0].text, "Employee not found");
}

// ---- what the reports have in common ------------------------------------------------------------

TEST(ReportFigures, HaveCommasBracketsAndNoZeros)
{
    EXPECT_EQ(ReportFigure("   1234.50"), "1,234.50");
    EXPECT_EQ(ReportFigure("1234567.891"), "1,234,567.89");
    EXPECT_EQ(ReportFigure("   (12.00)"), "(12.00)");
    EXPECT_EQ(ReportFigure("      0.00"), "");
    EXPECT_EQ(ReportFigure(""), "");
    EXPECT_EQ(ReportFigure("Nil"), "Nil");
}

TEST_F(ExtraCars, ReportPagesHaveTheirHeadAndFoot)
{
    door.today = std::chrono::sys_days(std::chrono::year(2011) / 7 / 5);
    EXPECT_TRUE(job.OpenDocument("A report"));
    StartReportPage(job);
    EXPECT_DOUBLE_EQ(job.position, 17.0);
    StartReportPage(job);
    job.page.vsEndDoc();
    EXPECT_EQ(job.pageNumber, 2);
    ExpectAsKept("report-head-and-foot", Listing(*desk.documents.back(), 3));
}

} // namespace
} // namespace quillmere::pages
