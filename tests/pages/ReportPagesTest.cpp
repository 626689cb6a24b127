#include "KeptListing.h"
#include "printing/jobs/JobPapers.h"
#include "support/PrintDesk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>

namespace quillmere::pages {
namespace {

using test::PrintDesk;
using test::ScriptedDoor;
using test::TextsOf;

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
        job.names.employer = Employer;
        job.names.employee = IsOfEmployer() ? Employer : Employee;
        job.OpenClients();
    }

    bool IsOfEmployer() const
    {
        return GetParam().schedule != nullptr && GetParam().schedule->whose == RecordOf::Employer;
    }
    void Set(const std::string& field, std::string_view text)
    {
        desk.Set(GetParam().table, Employer, Employee, field, text);
    }
    std::string Numbered(std::string_view stem) const
    {
        return GetParam().number > 0 ? quillmere::Numbered(stem, GetParam().number) : std::string(stem);
    }

    /// The fields of a working paper in which a user can write what he likes.
    std::vector<std::string> TextFields() const
    {
        std::vector<std::string> fields;
        for (const Field& field : FieldsOf(FindTable(GetParam().table)).All())
            for (const std::string_view stem : {"FMakeModel", "FFuel", "RegNumber", "Currency", "Address1", "Address2",
                                                "Address3", "Address4", "Address5", "Postcode"})
                if (std::ranges::find(GetParam().working->rows, stem, &WorkingRow::field) !=
                        GetParam().working->rows.end() ||
                    stem.starts_with("Address") || stem == "Postcode")
                    if (field.name == Numbered(stem))
                        fields.push_back(field.name);
        return fields;
    }

    /// The document of the report alone, behind the page with which it opens.
    const Document& Print()
    {
        EXPECT_EQ(job.document.OpenPrintJob("A report"), Opening::Open);
        if (GetParam().schedule != nullptr)
            PrintScheduleReport(job, *GetParam().schedule);
        else
            PrintWorkingReport(job, *GetParam().working, GetParam().number, GetParam().number);
        job.document.vsEndDoc();
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
    EXPECT_EQ(job.page.PageNumber(), 1);
    ExpectAsKept("reports/" + GetParam().name + "-full", Listing(document, 2));
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
    ExpectAsKept("reports/" + GetParam().name + "-sparse", Listing(document, 2));
}

TEST_P(ReportPages, HaveNoPageWithNothingFilled)
{
    EXPECT_EQ(Print().PageCount(), 1);
    EXPECT_EQ(job.page.PageNumber(), 0);
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
    job.names.employer = "Nobody plc";
    EXPECT_EQ(Print().PageCount(), 1);
    ASSERT_EQ(door.messages.size(), 1u);
    if (GetParam().working != nullptr && !GetParam().working->readingError.empty()) {
        EXPECT_EQ(door.messages[0].title, "2011 Quillmere");
        EXPECT_EQ(door.messages[0].text, "Unable to Open Car Information for printing");
    } else {
        static const std::map<std::string, std::string, std::less<>> titles = {
            {"ANotepad", "A Notepad - loading error"},
            {"BNotepad", "B Notepad - loading error"},
            {"CNotepad", "C Notepad - loading error"},
            {"DNotepad", "D Notepad - loading error"},
            {"ENotepad", "E Notepad - loading error"},
            {"GNotepad", "G Notepad - loading error"},
            {"HNotepad", "H Notepad - loading error"},
            {"INotepad", "I Notepad - loading error"},
            {"JNotepad", "J Notepad - loading error"},
            {"KNotepad", "K Notepad - loading error"},
            {"LNotepad", "L Notepad - loading error"},
            {"NNotepad1", "N1 Notepad - loading error"},
            {"NNotepad2", "N2 Notepad - loading error"},
            {"NNotepad3", "N3 Notepad - loading error"},
            {"ONotepad1", "O1 Notepad - loading error"},
            {"ONotepad2", "O2 Notepad - loading error"},
            {"ONotepad3", "O3 Notepad - loading error"},
            {"ONotepad4", "O4 Notepad - loading error"},
            {"ONotepad5", "O5 Notepad - loading error"},
            {"ONotepad6", "O6 Notepad - loading error"},
            {"P11DBNotepad1", "P11D(B) Notepad 1 - loading error"},
            {"P11DBNotepad2", "P11D(B) Notepad 2 - loading error"},
        };
        EXPECT_EQ(door.messages[0].title, titles.at(GetParam().table));
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

/// A text that stands on the rule at the page's foot or below it, but for the two that belong there.
std::string TextBelowTheFootRule(const Document& document, int page)
{
    constexpr double FootRule = 274;
    constexpr double FootText = 278;
    for (const Operation& operation : document.Page(page)) {
        const double y = PlaceOf(document, operation).y / UnitsPerMillimetre - 2; // the added top margin
        if (operation.kind == OperationKind::Text && y > FootRule - 0.5 && y < FootText - 0.5)
            return std::string(document.TextOf(operation));
        // The rules under totals.
        const double rule = operation.y1 / UnitsPerMillimetre - 2;
        if (operation.kind == OperationKind::Line && rule > FootRule - 0.5 && std::abs(rule - FootRule) > 0.01)
            return "a rule";
        if (operation.kind == OperationKind::Line && std::abs(rule - FootRule) < 0.01 &&
            operation.x2 - operation.x1 < 100 * UnitsPerMillimetre)
            return "a rule on the foot's";
    }
    return {};
}

constexpr std::string_view LongText = "Grand wheel touring estate with wheel trims, steering wheel of leather, spare "
                                      "wheel, two roof racks and four more winter wheels for the mountains of Wales";

TEST_P(ReportPages, KeepLongTextsOnTheSheetAndApart)
{
    desk.Fill(GetParam().table, Employer, Employee);
    if (GetParam().working != nullptr)
        for (const std::string& field : TextFields())
            Set(field, LongText);
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
        EXPECT_EQ(TextBelowTheFootRule(document, 2), "");
        if (GetParam().working == nullptr)
            continue;
        // Nothing is cut: each word of each of the texts is there.
        std::ptrdiff_t words = 0;
        for (const std::string& text : TextsOf(document, 2))
            for (std::size_t at = text.find("wheel"); at != std::string::npos; at = text.find("wheel", at + 1))
                ++words;
        EXPECT_EQ(words, 5 * static_cast<std::ptrdiff_t>(TextFields().size()));
    }
}

TEST_P(ReportPages, KeepLongNamesInTheHeadApart)
{
    const std::string employer = "The Worshipful Company of Candle, Lantern and Lamp Makers of Greater Marlborough Ltd";
    const std::string first = "Alexandra Wilhelmina Bartholomew";
    const std::string last = "Featherstonehaugh-Cholmondeley-Marjoribanks";
    desk.Add(employer, first, last);
    job.names.employer = employer;
    job.names.employee = IsOfEmployer() ? employer : first + " " + last;
    {
        Database database = desk.Open();
        Recordset records = database.OpenRecordset(GetParam().table);
        PrintDesk::Seek(records, GetParam().table, employer, job.names.employee);
        PrintDesk::FillRecord(records, GetParam().table);
    }
    job.names.compiler = employer + employer;
    const Document& document = Print();
    ASSERT_EQ(document.PageCount(), 2);
    EXPECT_EQ(TextOutsideTheSheet(document, 2), "");
    EXPECT_EQ(Overlap(document, 2), "");
    const std::vector<std::string> texts = TextsOf(document, 2);
    EXPECT_EQ(texts[0], "2011 Quillmere");
    EXPECT_TRUE(texts[1].starts_with(job.names.employee.substr(0, 40))) << texts[1];
    EXPECT_TRUE(texts[2].starts_with(employer.substr(0, 35)) && texts[2].ends_with("…")) << texts[2];
}

TEST_P(ReportPages, MeasureNoTextMoreThanTwice)
{
    desk.Fill(GetParam().table, Employer, Employee);
    std::map<std::string, int> measured;
    desk.printing.engine.textMeasured = [&](std::string_view text) { ++measured[std::string(text)]; };
    const Document& document = Print();
    desk.printing.engine.textMeasured = nullptr;
    measured.erase("");
    EXPECT_GT(measured.size(), 10u);
    const std::vector<std::string> drawn = TextsOf(document, 2);
    for (const auto& [text, times] : measured)
        // What is measured alone is a part of a text, such as the pounds of a total.
        EXPECT_LE(times, std::max<std::ptrdiff_t>(1, 2 * std::ranges::count(drawn, text))) << text;
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
    EXPECT_EQ(job.page.PageNumber(), document.PageCount() - 1);
    for (int page = 2; page <= document.PageCount(); ++page) {
        EXPECT_EQ(TextOutsideTheSheet(document, page), "");
        EXPECT_EQ(Overlap(document, page), "");
    }
    const std::vector<std::string> last = TextsOf(document, document.PageCount());
    EXPECT_EQ(std::ranges::count(last, "20.00"), 1);
    EXPECT_EQ(document.bookmarks.size(), 1u);
    for (int page = 2; page <= document.PageCount(); ++page) {
        const std::vector<std::string> texts = TextsOf(document, page);
        EXPECT_EQ(std::ranges::count(texts, GetParam().schedule->heading), 1) << page;
        EXPECT_EQ(std::ranges::count(texts, "Description"), 1) << page;
        for (const ReportColumn& column : GetParam().schedule->columns)
            EXPECT_GE(std::ranges::count(texts, column.head), 1) << page;
    }
}

std::vector<ReportCase> AllSchedules()
{
    std::vector<ReportCase> cases = AllReports();
    std::erase_if(cases, [](const ReportCase& one) { return one.schedule == nullptr; });
    return cases;
}

INSTANTIATE_TEST_SUITE_P(All, ReportPages, ::testing::ValuesIn(AllReports()),
                         [](const auto& made) { return made.param.name; });
INSTANTIATE_TEST_SUITE_P(All, SchedulePages, ::testing::ValuesIn(AllSchedules()),
                         [](const auto& made) { return made.param.name; });

// ---- single papers ------------------------------------------------------------------------------

/// The line of a text on the last page, mm.
double LineOf(const Document& document, std::string_view text)
{
    for (const Operation& operation : document.Page(document.PageCount()))
        if (operation.kind == OperationKind::Text && document.TextOf(operation) == text)
            return PlaceOf(document, operation).y / UnitsPerMillimetre;
    ADD_FAILURE() << text;
    return 0;
}

class SinglePapers : public ::testing::Test {
protected:
    SinglePapers()
    {
        desk.Add(Employer, "José María", "O'Neill-Smythe");
        job.names.employer = Employer;
        job.names.employee = Employee;
        job.OpenClients();
    }
    const Document& Print(std::string_view schedule)
    {
        EXPECT_EQ(job.document.OpenPrintJob("A report"), Opening::Open);
        PrintScheduleReport(job, ScheduleReportOf(schedule));
        job.document.vsEndDoc();
        return *desk.documents.back();
    }
    const Document& PrintWorking(std::string_view name, int first, int last)
    {
        EXPECT_EQ(job.document.OpenPrintJob("A report"), Opening::Open);
        PrintWorkingReport(job, WorkingReportOf(name), first, last);
        job.document.vsEndDoc();
        return *desk.documents.back();
    }
    void Set(std::string_view table, std::string_view field, std::string_view text)
    {
        desk.Set(table, Employer, Employee, field, text);
    }

    ScriptedDoor door;
    PrintDesk desk{door};
    PrintJob job{desk.session, desk.printing, "Test", Route::Screen};
};

TEST_F(SinglePapers, AddUpTheChargesOfAnAccommodationThemselves)
{
    Set("DNotepad", "BasicChargeE", "   4000.00");
    Set("DNotepad", "AddChargeQ", "  13000.00");
    for (const std::string_view stored : {"", "   9999.00"}) {
        Set("DNotepad", "AddChargeR", stored);
        const std::vector<std::string> texts = TextsOf(PrintWorking("DNotepad", 0, 0), 2);
        EXPECT_EQ(std::ranges::count(texts, "17,000.00"), 1);
        EXPECT_EQ(std::ranges::count(texts, "9,999.00"), 0);
    }
}

TEST_F(SinglePapers, LeaveRoomForASecondLineOfHeadsOnlyWhereThereIsOne)
{
    for (const std::string_view schedule : {"ANotepad", "BNotepad"})
        Set(schedule, "Description1", "A thing");
    const Document& two = Print("ANotepad");
    EXPECT_NEAR(LineOf(two, "A thing") - LineOf(two, "Description"), 9, 0.01);
    const Document& one = Print("BNotepad");
    EXPECT_NEAR(LineOf(one, "A thing") - LineOf(one, "Description"), 5, 0.01);
}

TEST_F(SinglePapers, KeepTheTotalsOffTheFootRule)
{
    // A line more each time: somewhere the totals reach the foot of the page and go over to the next.
    bool haveGoneOver = false;
    Set("ANotepad", "CostMarket1", "      1.00");
    for (int lines = 48; lines < 60; ++lines) {
        std::string description;
        for (int line = 0; line < lines; ++line)
            description += std::string(80, 'n') + " ";
        Set("ANotepad", "Description1", description);
        const Document& document = Print("ANotepad");
        for (int page = 2; page <= document.PageCount(); ++page)
            EXPECT_EQ(TextBelowTheFootRule(document, page), "") << lines;
        haveGoneOver =
            haveGoneOver || std::ranges::count(TextsOf(document, 3 > document.PageCount() ? 2 : 3), "1.00") == 1;
    }
    EXPECT_TRUE(haveGoneOver);
}

TEST_F(SinglePapers, TellOfOneMissingRecordOfSeveralThingsOnce)
{
    job.names.employee = "Nobody";
    for (const std::string_view name : {"ENotepad", "GNotepad", "HNotepad"}) {
        door.messages.clear();
        PrintWorking(name, 1, 3);
        EXPECT_EQ(door.messages.size(), 1u) << name;
    }
}

// ---- sheets for further cars --------------------------------------------------------------------

class ExtraCars : public ::testing::Test {
protected:
    ExtraCars()
    {
        desk.Add(Employer, "José María", "O'Neill-Smythe");
        job.names.employer = Employer;
        job.names.employee = Employee;
        job.nationalInsurance = "AB123456C";
        job.OpenClients();
    }
    void Set(std::string_view field, std::string_view text) { desk.Set("ExtraCars", Employer, Employee, field, text); }
    const Document& Print(const ExtraCarSheet& sheet)
    {
        EXPECT_EQ(job.document.OpenPrintJob("A sheet"), Opening::Open);
        isDrawn = PrintExtraCarSheet(job, sheet);
        job.document.vsEndDoc();
        return *desk.documents.back();
    }

    ScriptedDoor door;
    PrintDesk desk{door};
    PrintJob job{desk.session, desk.printing, "Test", Route::Screen};
    bool isDrawn = false; ///< the last sheet
};

TEST_F(ExtraCars, SheetsAreDrawnAsKept)
{
    desk.Fill("ExtraCars", Employer, Employee);
    ExpectAsKept("cars/3-4-full", Listing(Print(Cars3And4), 1));
    ExpectAsKept("cars/5-6-full", Listing(Print(Cars5And6), 1));
    desk.session.settings.reportShading = false;
    ExpectAsKept("cars/5-6-plain", Listing(Print(Cars5And6), 1));
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

TEST_F(ExtraCars, SheetsShowATotalOfZeroWhereACarHasAFigure)
{
    const auto countOfZeros = [&] { return std::ranges::count(TextsOf(Print(Cars3And4), 1), "      0.00"); };
    EXPECT_EQ(countOfZeros(), 0);
    Set("FCashEqu4", "      0.00");
    EXPECT_EQ(countOfZeros(), 2); // the car's own and the total
    Set("FFuelEqu3", "      0.00");
    EXPECT_EQ(countOfZeros(), 4);
    Set("FCashEqu5", "   1000.00");
    EXPECT_EQ(countOfZeros(), 4);
}

TEST_F(ExtraCars, SheetsTellOfAMissingRecordAndBeginNoPage)
{
    Print(Cars3And4);
    EXPECT_TRUE(isDrawn);
    EXPECT_EQ(job.page.PageNumber(), 1);
    job.names.employee = "Nobody";
    EXPECT_TRUE(Print(Cars3And4).Page(1).empty());
    EXPECT_FALSE(isDrawn);
    EXPECT_TRUE(Print(Cars5And6).Page(1).empty());
    EXPECT_FALSE(isDrawn);
    EXPECT_EQ(job.page.PageNumber(), 0);
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
    job.names.employee = "Nobody";
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
    EXPECT_EQ(job.document.OpenPrintJob("A report"), Opening::Open);
    job.names.today = door.Today();
    EXPECT_DOUBLE_EQ(ReportSheet(job.page, job.names, {}).position, 27.0);
    static_cast<void>(ReportSheet(job.page, job.names, {}));
    job.document.vsEndDoc();
    EXPECT_EQ(job.page.PageNumber(), 2);
    ExpectAsKept("reports/head-and-foot", Listing(*desk.documents.back(), 3));
}

} // namespace
} // namespace quillmere::pages
