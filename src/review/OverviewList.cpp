#include "review/OverviewList.h"

#include "clientdb/Employees.h"
#include "clientdb/OpenRecord.h"
#include "clientdb/store/LastStored.h"
#include "edition/Edition.h"
#include "frame/Session.h"
#include "review/GoToBox.h"
#include "review/ReviewMark.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

namespace quillmere::review {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Filter", .spoken = "Only lines with these words", .movesIn = "Lines"},
    {.name = "Employer", .kind = BoxKind::DropDown, .spoken = "Employer"},
    {.name = "Lines", .kind = BoxKind::Table, .spoken = "Overview", .several = true},
    {.name = "Foot", .kind = BoxKind::Label},
    {.name = "OverviewOpen", .kind = BoxKind::Button, .text = "&Open"},
    {.name = "OverviewSort", .kind = BoxKind::Button, .text = "&Sort", .tip = "Sorts by the column in use"},
    {.name = "OverviewAgain", .kind = BoxKind::Button, .text = "Look &Again", .tip = "F5", .key = "F5"},
    {.name = "OverviewReviewed",
     .kind = BoxKind::Button,
     .text = "&Reviewed",
     .tip = "Marks the chosen employees as reviewed, or takes the mark away: Ctrl+R",
     .key = "Ctrl+R"},
    {.name = "OverviewPrint", .kind = BoxKind::Button, .text = "&Print", .tip = "Ctrl+P", .key = "Ctrl+P"},
    {.name = "OverviewClose", .kind = BoxKind::Button, .text = "&Close"},
});

constexpr std::string_view AllEmployers = "All employers";
constexpr std::string_view FolderColumns = "Employer\t>Employees\t>Total\t>Class 1A on\t>Class 1A\t>Look at";

/// A column of the overview of an employer that is no section, and where Enter goes from it.
struct ColumnRow {
    std::string_view caption, box;
};
constexpr auto Leading = std::to_array<ColumnRow>({
    {"Employee", "EmployeeNameBox"},
    {"Works number", "WorkNumberBox"},
    {"NI number", "NatIns"},
    {">Total", "EmployeeNameBox"},
    {">1A on", "EmployeeNameBox"},
    {">Look at", "EmployeeNameBox"},
    {"Printed", "EmployeeNameBox"},
    {"Reviewed", "EmployeeNameBox"},
});
constexpr int FirstSection = static_cast<int>(Leading.size());
constexpr int ToLookAt = 5;

std::string EmployeeColumns()
{
    std::string columns;
    for (const ColumnRow& column : Leading)
        columns.append(columns.empty() ? "" : "\t").append(column.caption);
    for (const OverviewSection& section : OverviewSections())
        columns.append("\t>").append(section.letter);
    return columns;
}

std::string Figure(Amount amount)
{
    return FormatAmount(amount, edition::FormatMoneyBlankZero);
}

/// A sum in a sentence, where nothing must be seen, too.
std::string Sum(Amount amount)
{
    return FormatAmount(amount, edition::FormatMoneyZero);
}

std::string Count(std::size_t number)
{
    return number == 0 ? std::string() : std::to_string(number);
}

/// The cells of an employee, or of several: who it is, the figures with the marks behind them, and the sections.
std::string EmployeeCells(std::string_view who, const OverviewSums& sums, std::string_view printed = {},
                          std::string_view reviewed = {})
{
    std::string cells = fmt::format("{}\t{}\t{}\t{}\t{}\t{}", who, Figure(sums.total), Figure(sums.benefits),
                                    Count(sums.toLookAt), printed, reviewed);
    for (const Amount amount : sums.sections)
        cells.append("\t").append(Figure(amount));
    return cells;
}

/// The cells of an employer's figures, or of those of several.
std::string EmployerCells(const OverviewSums& sums)
{
    return fmt::format("\t{}\t{}\t{}\t{}\t{}", sums.employees, Figure(sums.total), Figure(sums.benefits),
                       Figure(sums.contributions), Count(sums.toLookAt));
}

} // namespace

OverviewList::OverviewList(Session& session)
    : Screen(session, "OverviewList", ShowMode::Beside, "Overview"), paper(session.settings, session.platform)
{
    AddBoxes(Rows);
    SetButtons("OverviewClose", "OverviewOpen");
    OnType("Filter", [this](Box&) { Arrange(KeyInUse()); });
    OnChoose("Employer", [this](Box& list) { ChooseEmployer(list.Selected()); });
    OnSort("Lines", [this](Box&) { Arrange(KeyInUse()); });
    OnDoubleClick("Lines", [this](Box&) { OpenChosen(); });
    OnClick("OverviewOpen", [this](Box&) { OpenChosen(); });
    OnClick("OverviewSort", [this](Box&) { Sort(box("Lines"), box("Lines").Column()); });
    OnClick("OverviewAgain", [this](Box&) {
        static_cast<void>(EmployeeRecord(this->session).Store());
        Start();
    });
    OnClick("OverviewReviewed", [this](Box&) { ReviewChosen(); });
    OnClick("OverviewPrint", [this](Box&) { this->session.printTable(ControlSheet()); });
    if (!session.printTable)
        box("OverviewPrint").SetEnabled(false);
}

bool OverviewList::Load()
{
    // What has been typed counts, although the page has not been stored.
    static_cast<void>(EmployeeRecord(session).Store());
    employer = session.CurrentEmployer;
    Start();
    return true;
}

/// What another window, or another desk, has stored meanwhile is taken up.
void OverviewList::WindowActivated()
{
    const std::string changed = LastStored(session.ClientDatabasePath());
    if (!changed.empty() && changed != lookedAt)
        Start();
}

/// Begins to look through what is shown; the lines from before stay listed until the end.
void OverviewList::Start()
{
    lookedAt = LastStored(session.ClientDatabasePath());
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        ListEmployers(EveryEmployer(database));
    }
    review.reset();
    marks.reset();
    coming.clear();
    comingFoot = {};
    waiting.clear();
    if (ShowsFolder())
        waiting.assign(employers.begin(), employers.end());
    else
        waiting.push_back(employer);
    BeginNextEmployer();
    GoOn();
}

void OverviewList::ListEmployers(std::vector<std::string> newEmployers)
{
    employers = std::move(newEmployers);
    const auto found = std::ranges::find(employers, employer);
    if (found == employers.end())
        employer.clear();
    std::vector<std::string> entries{std::string(AllEmployers)};
    entries.insert(entries.end(), employers.begin(), employers.end());
    Box& list = box("Employer");
    list.SetEntries(std::move(entries));
    list.Select(ShowsFolder() ? 0 : 1 + static_cast<int>(found - employers.begin()));
    box("Lines").SetColumns(ShowsFolder() ? std::string(FolderColumns) : EmployeeColumns());
}

void OverviewList::ChooseEmployer(int position)
{
    employer = position <= 0 ? std::string() : employers.at(static_cast<std::size_t>(position - 1));
    box("Filter").SetText({});
    lines.clear();
    Arrange();
    Start();
}

void OverviewList::BeginNextEmployer()
{
    review.reset();
    if (waiting.empty())
        return;
    ofEmployer = {};
    review.emplace(waiting.front(), paper,
                   [this](std::string_view employee, const FormFacts& form, const FindingList& found) {
                       const OverviewSums sums = SumsOf(form, found.size());
                       ofEmployer += sums;
                       if (!ShowsFolder())
                           TakeEmployee(employee, form, sums);
                   });
}

void OverviewList::TakeEmployee(std::string_view employee, const FormFacts& form, const OverviewSums& sums)
{
    if (!marks)
        marks.emplace(session.ClientDatabasePath());
    const auto of = marks->forms.Of(waiting.front(), employee);
    Line line{.key = std::string(employee),
              .sums = sums,
              .worksNumber = std::string(form.worksNumber),
              .nationalInsurance = std::string(form.nationalInsurance),
              .printed = MarkInWords(of, FormMark::Printed),
              .reviewed = MarkInWords(of, FormMark::Reviewed)};
    line.cells = EmployeeCells(fmt::format("{}\t{}\t{}", line.key, line.worksNumber, line.nationalInsurance), sums,
                               line.printed, line.reviewed);
    coming.push_back(std::move(line));
}

void OverviewList::EndEmployer()
{
    ofEmployer = SumsOf(ofEmployer, review->Declaration(), review->Found());
    if (ShowsFolder())
        coming.push_back(
            {.key = waiting.front(), .sums = ofEmployer, .cells = waiting.front() + EmployerCells(ofEmployer)});
    marks.reset();
    comingFoot += ofEmployer;
    waiting.pop_front();
    BeginNextEmployer();
}

void OverviewList::GoOn()
{
    if (review) {
        if (!review->GoOnBetweenKeys(session.ClientDatabasePath()))
            EndEmployer();
        TellFoot();
        session.screens.StartTimer(*this, "OverviewTimer", [this] { GoOn(); });
        return;
    }
    const std::string chosen = KeyInUse();
    lines = std::exchange(coming, {});
    foot = comingFoot;
    TellFoot();
    Arrange(chosen);
}

void OverviewList::TellFoot()
{
    if (review) {
        const std::size_t seen = comingFoot.employees + review->EmployeesSeen();
        return box("Foot").SetText(fmt::format("{} employees looked through ...", seen));
    }
    std::size_t onForms = 0;
    for (const Line& line : lines)
        onForms += line.sums.toLookAt;
    std::string text =
        fmt::format("{} employees. Total {}. Box A {}, Class 1A contributions {}. {} to look at", foot.employees,
                    Sum(foot.total), Sum(foot.benefits), Sum(foot.contributions), foot.toLookAt);
    // What all forms show together stands in no line.
    if (onForms < foot.toLookAt)
        text += fmt::format(", {} of them over all forms", foot.toLookAt - onForms);
    box("Foot").SetText(text);
}

/// Lists the lines that the filter lets in, in the order that is chosen, with their sum at the end. The line of `key`
/// is in use, or the first one; the column stays.
void OverviewList::Arrange(const std::string& key)
{
    Box& table = box("Lines");
    std::vector<std::string_view> cells;
    cells.reserve(lines.size());
    for (const Line& line : lines)
        cells.push_back(line.cells);
    listed = Arranged(cells, box("Filter").Text(), table.SortedBy());
    std::vector<std::string> entries;
    entries.reserve(listed.size() + 1);
    OverviewSums sums;
    int position = listed.empty() ? -1 : 0;
    for (const std::size_t line : listed) {
        if (lines[line].key == key)
            position = static_cast<int>(entries.size());
        entries.push_back(lines[line].cells);
        sums += lines[line].sums;
    }
    if (!listed.empty())
        entries.push_back(ShowsFolder() ? "Total" + EmployerCells(sums) : EmployeeCells("Total\t\t", sums));
    table.SetEntries(std::move(entries));
    table.Select(position);
}

/// Whose line is in use; empty where none is, and on the total.
std::string OverviewList::KeyInUse() const
{
    const int position = box("Lines").Selected();
    if (position < 0 || position >= static_cast<int>(listed.size()))
        return {};
    return lines[listed[static_cast<std::size_t>(position)]].key;
}

/// Marks the chosen lines at once; whoever has changed the database meanwhile is taken up with the next look.
void OverviewList::ReviewChosen()
{
    std::vector<std::string> employees;
    if (!ShowsFolder())
        for (const int position : box("Lines").Chosen())
            if (position < static_cast<int>(listed.size()))
                employees.push_back(lines[listed[static_cast<std::size_t>(position)]].key);
    static_cast<void>(EmployeeRecord(session).Store());
    ToggleReviewed(session, employer, employees);
    if (!employees.empty())
        Start();
}

/// The lines that are listed, for the paper. Of the sections those to which somebody's form comes have columns of their
/// own, as far as a page is wide; the others stand together.
PrintedTable OverviewList::ControlSheet() const
{
    constexpr std::size_t MostSections = 5;
    OverviewSums all;
    for (const std::size_t line : listed)
        all += lines[line].sums;
    std::vector<std::size_t> apart, together;
    for (std::size_t section = 0; section < OverviewSectionCount && !ShowsFolder(); ++section)
        if (!all.sections[section].IsZero())
            (apart.size() < MostSections ? apart : together).push_back(section);

    const std::string whose = ShowsFolder() ? std::string(AllEmployers) : employer;
    PrintedTable table{.documentName = whose + " - Overview",
                       .employer = whose,
                       .heading = "Control sheet",
                       .subHeading = box("Filter").Empty() ? std::string() : "Only: " + box("Filter").Text(),
                       .remarks = {box("Foot").Text()}};
    const auto column = [&](std::string caption, int width, auto cellOf, bool isFigure) {
        table.columns.push_back({.caption = std::move(caption), .width = width, .figure = isFigure});
        table.rows.resize(listed.size() + 1);
        for (std::size_t row = 0; row < listed.size(); ++row)
            table.rows[row].push_back(cellOf(lines[listed[row]]));
        table.rows.back().push_back(cellOf(Line{.key = "Total", .sums = all}));
    };
    const auto figure = [&](const std::string& caption, auto amountOf) {
        column(
            caption, 15, [&](const Line& line) { return Figure(amountOf(line.sums)); }, true);
    };
    column(
        ShowsFolder() ? "Employer" : "Employee", 36, [](const Line& line) { return line.key; }, false);
    if (ShowsFolder())
        column(
            "Employees", 14, [](const Line& line) { return Count(line.sums.employees); }, true);
    else
        column(
            "NI number", 18, [](const Line& line) { return line.nationalInsurance; }, false);
    for (const std::size_t section : apart)
        figure(std::string(OverviewSections()[section].letter),
               [section](const OverviewSums& sums) { return sums.sections[section]; });
    if (!together.empty())
        figure("Others", [&together](const OverviewSums& sums) {
            Amount others;
            for (const std::size_t section : together)
                others += sums.sections[section];
            return others;
        });
    figure("Total", [](const OverviewSums& sums) { return sums.total; });
    figure("1A on", [](const OverviewSums& sums) { return sums.benefits; });
    if (ShowsFolder())
        figure("Class 1A", [](const OverviewSums& sums) { return sums.contributions; });
    column(
        "Look at", 10, [](const Line& line) { return Count(line.sums.toLookAt); }, true);
    if (!ShowsFolder()) {
        column(
            "Printed", 17, [](const Line& line) { return line.printed; }, false);
        column(
            "Reviewed", 17, [](const Line& line) { return line.reviewed; }, false);
    }
    return table;
}

void OverviewList::OpenChosen()
{
    const std::string key = KeyInUse();
    if (key.empty())
        return;
    if (ShowsFolder()) {
        const auto found = std::ranges::find(employers, key);
        if (found != employers.end())
            ChooseEmployer(1 + static_cast<int>(found - employers.begin()));
        return;
    }
    const int column = box("Lines").Column();
    const auto section = static_cast<std::size_t>(column - FirstSection);
    if (column >= FirstSection && section < OverviewSectionCount)
        GoToBox(session, employer, key, {OverviewSections()[section].screen, OverviewSections()[section].box});
    else
        GoToBox(session, employer, key,
                {"Form3", column < FirstSection ? Leading[static_cast<std::size_t>(column)].box : Leading[0].box});
    if (column == ToLookAt)
        session.screens.Show("CheckList");
}

} // namespace quillmere::review
