#include "review/LastYearSheet.h"

#include "clientdb/OpenRecord.h"
#include "edition/Edition.h"
#include "frame/Session.h"
#include "transfer/YearTransfer.h"

#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    OptionRow("LastYearScope", 0, "This employee", 'E'),
    OptionRow("LastYearScope", 1, "All of this employer", 'M'),
    {.name = "Years", .kind = BoxKind::Table, .spoken = "Both years, section by section"},
    {.name = "LastYearWords", .kind = BoxKind::Label},
    TableBoxRow("LeftBehind", "What has not come over", "What has not come over\tWhich\tWhy"),
    {.name = "LastYearCopy", .kind = BoxKind::Button, .text = "C&opy", .key = "Ctrl+C"},
    {.name = "LastYearPrint", .kind = BoxKind::Button, .text = "&Print", .key = "Ctrl+P"},
    {.name = "LastYearClose", .kind = BoxKind::Button, .text = "&Close"},
});

std::string Figure(Amount amount)
{
    return FormatAmount(amount, edition::FormatMoneyBlankZero);
}

std::string Line(std::string_view what, Amount lastYear, Amount thisYear)
{
    return fmt::format("{}\t{}\t{}\t{}", what, Figure(lastYear), Figure(thisYear), Figure(thisYear - lastYear));
}

std::vector<std::string> CellsOf(const std::string& line)
{
    std::vector<std::string> cells(1);
    for (const char c : line)
        if (c == '\t')
            cells.emplace_back();
        else
            cells.back() += c;
    return cells;
}

} // namespace

LastYearSheet::LastYearSheet(Session& session)
    : Screen(session, "LastYearSheet", ShowMode::Window, "Compare With Last Year")
{
    AddBoxes(Rows);
    SetButtons("LastYearClose", {});
    box("Years").SetColumns(fmt::format("Section\t>{}\t>{}\t>Difference", edition::YearLabelPrior, edition::YearLabel));
    box("LastYearScope", 0).SetTicked(true);
    OnClick("LastYearScope", [this](Box&) { Start(); });
    OnClick("LastYearCopy", [this](Box&) { this->session.platform.CopyText(AsText()); });
    OnClick("LastYearPrint", [this](Box&) { this->session.printTable(AsTable()); });
    if (!session.printTable)
        box("LastYearPrint").SetEnabled(false);
}

bool LastYearSheet::Load()
{
    // What has been typed counts, although the page has not been stored.
    static_cast<void>(EmployeeRecord(session).Store());
    Start();
    return true;
}

void LastYearSheet::Start()
{
    const bool ofEmployee = box("LastYearScope", 0).Ticked();
    subject = ofEmployee ? session.CurrentEmployee : session.CurrentEmployer;
    SetCaption(Caption());
    box("Years").SetEntries({});
    box("LeftBehind").SetEntries({});
    try {
        Database lastYear = Database::OpenDatabase(LastYearDatabaseOf(session.programFolder), OpenMode::ReadOnly);
        Database thisYear = Database::OpenDatabase(session.ClientDatabasePath(), OpenMode::ReadOnly);
        Show(CompareYears(lastYear, thisYear, session.CurrentEmployer,
                          ofEmployee ? std::string_view(session.CurrentEmployee) : std::string_view()));
    } catch (const Failure& failure) {
        Say(fmt::format("There is no database of {} to compare with: {}", edition::YearLabelPrior, failure.what()));
    }
}

void LastYearSheet::Say(std::string_view words)
{
    box("LastYearWords").SetText(words);
}

void LastYearSheet::Show(const YearsCompared& years)
{
    if (!years.isLastYear)
        return Say(fmt::format("{} is not in the database of {}", subject, edition::YearLabelPrior));
    std::vector<std::string> lines;
    for (std::size_t section = 0; section < OverviewSectionCount; ++section)
        lines.push_back(Line(OverviewSections()[section].letter, years.lastYear.sections[section],
                             years.thisYear.sections[section]));
    lines.push_back(Line("Total", years.lastYear.total, years.thisYear.total));
    lines.push_back(Line("Class 1A on", years.lastYear.benefits, years.thisYear.benefits));
    box("Years").SetEntries(std::move(lines));
    box("Years").Select(0);
    std::vector<std::string> left;
    for (const LeftBehind& thing : years.leftBehind)
        left.push_back(fmt::format("{}\t{}\t{}", thing.what, thing.which, thing.why));
    Say(left.empty() ? std::string("Everything has come over") : fmt::format("Not come over: {}", left.size()));
    box("LeftBehind").SetEntries(std::move(left));
}

std::string LastYearSheet::AsText() const
{
    std::string text = fmt::format("{}\t{}\t{}\tDifference\n", subject, edition::YearLabelPrior, edition::YearLabel);
    for (const std::string& line : box("Years").Entries())
        text += line + "\n";
    text += box("LastYearWords").Text() + "\n";
    for (const std::string& line : box("LeftBehind").Entries())
        text += line + "\n";
    return text;
}

PrintedTable LastYearSheet::AsTable() const
{
    PrintedTable table{.documentName = subject + " - Last year",
                       .employee = subject == session.CurrentEmployer ? std::string() : session.CurrentEmployee,
                       .heading = Caption(),
                       .columns = {{.caption = "Section", .width = 6},
                                   {.caption = std::string(edition::YearLabelPrior), .width = 4, .figure = true},
                                   {.caption = std::string(edition::YearLabel), .width = 4, .figure = true},
                                   {.caption = "Difference", .width = 4, .figure = true}},
                       .remarks = {box("LastYearWords").Text()}};
    for (const std::string& line : box("Years").Entries())
        table.rows.push_back(CellsOf(line));
    for (const std::string& line : box("LeftBehind").Entries()) {
        const std::vector<std::string> cells = CellsOf(line);
        table.remarks.push_back(fmt::format("{}, {}: {}", cells.at(0), cells.at(1), cells.at(2)));
    }
    return table;
}

} // namespace quillmere::review
