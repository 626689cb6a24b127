#include "exchange/ImportScreen.h"

#include "clientdb/OpenRecord.h"
#include "clientdb/RecentEmployees.h"
#include "clientdb/SafetyCopies.h"
#include "clientdb/UserOperation.h"
#include "clientdb/store/LastStored.h"
#include "frame/BusyPointer.h"
#include "frame/CellEntry.h"
#include "frame/CheckedFile.h"
#include "frame/CloseAll.h"
#include "frame/DeskMemory.h"
#include "review/Overview.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <system_error>
#include <utility>

namespace quillmere::exchange {

namespace {

constexpr std::string_view Title = "Import", FolderKey = "IMPORT FOLDER", ColumnKey = "IMPORT COLUMN ";
constexpr std::string_view NoTarget = "(not taken over)", NoEmployer = "(none)";

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "ImportFile", .kind = BoxKind::Label},
    {.name = "ImportEmployer", .kind = BoxKind::DropDown, .spoken = "Employer of rows that name none"},
    TableBoxRow("ImportColumns", "Columns of the file", "Column\tFirst entry\tGoes to"),
    {.name = "ImportTarget", .kind = BoxKind::DropDown, .spoken = "The chosen column goes to"},
    {.name = "ImportRows",
     .kind = BoxKind::Table,
     .spoken = "What each row would do",
     .columns = "What\t>Row\tEmployee\tEmployer\tFound by\tWhat changes, or what is wrong",
     .tinted = true},
    {.name = "ImportWords", .kind = BoxKind::Label},
    {.name = "ImportCounts", .kind = BoxKind::Label},
    {.name = "ImportGo", .kind = BoxKind::Button, .text = "&Import"},
    {.name = "ImportCancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

std::string EncodingInWords(const Table& table)
{
    const std::string_view separator = table.separator == ','   ? "commas"
                                       : table.separator == ';' ? "semicolons"
                                                                : "tabs";
    return fmt::format("{} rows, {}, parted by {}", table.rows.size() - 1, table.encoding, separator);
}

/// How much there is to be written.
std::size_t FieldsOf(const ImportPlan& plan)
{
    std::size_t fields = 0;
    for (const PlannedEmployee& planned : plan.employees)
        fields += planned.fields.size() + (planned.isNew ? 1 : 0);
    return fields;
}

std::string InACell(std::string_view text)
{
    return OneLine(WithoutGuard(text));
}

} // namespace

ImportScreen::ImportScreen(Session& session) : Screen(session, "ImportTable", ShowMode::Modal, Title)
{
    AddBoxes(Rows);
    SetButtons("ImportCancel", {});
    OnChoose("ImportEmployer", [this](Box&) { Plan(); });
    OnSelect("ImportColumns", [this](Box&) { ChooseColumn(); });
    OnChoose("ImportTarget", [this](Box& list) { ChooseTarget(list.Selected()); });
    OnSort("ImportRows", [this](Box&) { Arrange(); });
    OnSelect("ImportRows", [this](Box&) { ShowWords(); });
    OnClick("ImportGo", [this](Box&) { Import(); });
}

bool ImportScreen::Load()
{
    // What has been typed counts, although the page has not been stored.
    if (!EmployeeRecord(session).Store())
        return false;
    const DeskMemory memory(session.programFolder);
    std::string folder = memory.Recall(FolderKey);
    if (std::error_code error; !std::filesystem::is_directory(folder, error))
        folder = session.ClientDatabasePath().parent_path().string();
    const auto chosen = session.platform.AskOpenFile({.title = std::string(Title),
                                                      .folder = std::move(folder),
                                                      .filterName = "Tables",
                                                      .filterPattern = "*.csv *.txt *.tsv"});
    if (!chosen || !Read(*chosen))
        return false;
    memory.Remember(FolderKey, file.parent_path().string());
    ListEmployers();
    ShowColumns();
    box("ImportColumns").Select(0);
    ChooseColumn();
    Plan();
    return true;
}

bool ImportScreen::Read(const std::filesystem::path& chosen)
{
    try {
        const BusyPointer busy(session.platform);
        table = ReadTable(chosen);
    } catch (const Failure& failure) {
        session.messages.Tell(Title, fmt::format("{}\n\n{}", chosen.string(), failure.what()));
        return false;
    }
    file = chosen;
    const DeskMemory memory(session.programFolder);
    columns = ColumnsOf(table, targets);
    const std::vector<std::string>& headings = table.rows.front().cells;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const std::string remembered = memory.Recall(std::string(ColumnKey) + InACell(headings[column]));
        if (!remembered.empty())
            columns[column] = remembered == NoTarget ? Nothing : targets.Meant(remembered);
    }
    box("ImportFile").SetText(fmt::format("{}: {}", file.filename().string(), EncodingInWords(table)));
    box("ImportFile").SetTip(file.string());
    return true;
}

void ImportScreen::ListEmployers()
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    employers = EveryEmployer(database);
    std::vector<std::string> entries{std::string(NoEmployer)};
    entries.insert(entries.end(), employers.begin(), employers.end());
    Box& list = box("ImportEmployer");
    list.SetEntries(std::move(entries));
    const auto current = std::ranges::find(employers, session.CurrentEmployer);
    const bool isOnlyOne = employers.size() == 1;
    list.Select(current != employers.end() ? 1 + static_cast<int>(current - employers.begin()) : isOnlyOne ? 1 : 0);
}

std::string ImportScreen::EmployerForAll() const
{
    const int position = box("ImportEmployer").Selected();
    return position <= 0 ? std::string() : employers.at(static_cast<std::size_t>(position - 1));
}

// ---- columns

void ImportScreen::ShowColumns()
{
    std::vector<std::string> entries;
    const std::vector<std::string>& headings = table.rows.front().cells;
    for (std::size_t column = 0; column < headings.size(); ++column) {
        std::string first;
        for (std::size_t row = 1; row < table.rows.size() && first.empty(); ++row)
            if (column < table.rows[row].cells.size())
                first = InACell(table.rows[row].cells[column]);
        entries.push_back(
            fmt::format("{}\t{}\t{}", InACell(headings[column]), first,
                        columns[column] == Nothing ? NoTarget : std::string_view(targets.At(columns[column]).words)));
    }
    Box& list = box("ImportColumns");
    const int chosen = list.Selected();
    list.SetEntries(std::move(entries));
    list.Select(chosen);
}

/// Offers the targets for the chosen column.
void ImportScreen::ChooseColumn()
{
    const int chosen = box("ImportColumns").Selected();
    if (chosen < 0)
        return;
    std::vector<std::string> entries{std::string(NoTarget)};
    for (const Target& target : targets.All())
        if (target.what != Target::What::WorkedOut)
            entries.push_back(target.words);
    const int target = columns.at(static_cast<std::size_t>(chosen));
    const auto position = std::ranges::find(entries, target == Nothing ? NoTarget : targets.At(target).words);
    Box& list = box("ImportTarget");
    const auto selected = static_cast<int>(position - entries.begin());
    list.SetEntries(std::move(entries));
    list.Select(selected);
}

/// The chosen column goes there, and another that did goes nowhere. It is remembered by the heading.
void ImportScreen::ChooseTarget(int position)
{
    const int chosen = box("ImportColumns").Selected();
    if (chosen < 0 || position < 0)
        return;
    const int target = targets.Meant(box("ImportTarget").Text());
    const DeskMemory memory(session.programFolder);
    const auto put = [&](std::size_t column, int to) {
        columns[column] = to;
        memory.Remember(std::string(ColumnKey) + InACell(table.rows.front().cells[column]),
                        to == Nothing ? NoTarget : std::string_view(targets.At(to).words));
    };
    for (std::size_t column = 0; column < columns.size(); ++column)
        if (target != Nothing && columns[column] == target)
            put(column, Nothing);
    put(static_cast<std::size_t>(chosen), target);
    ShowColumns();
    Plan();
}

// ---- rows

void ImportScreen::Plan()
{
    const BusyPointer busy(session.platform);
    lookedAt = LastStored(session.ClientDatabasePath());
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    plan = MakePlan(database, table, targets, columns, EmployerForAll());
    ShowPlan();
}

void ImportScreen::ShowPlan()
{
    Arrange();
    const std::size_t faulty = plan.CountOf(RowState::Faulty);
    box("ImportCounts")
        .SetText(fmt::format("{} new, {} changed, {} the same, {} faulty{}", plan.CountOf(RowState::New),
                             plan.CountOf(RowState::Changed), plan.CountOf(RowState::Same), faulty,
                             faulty == 0 ? "" : ", left out"));
    box("ImportGo").SetEnabled(!plan.employees.empty());
}

void ImportScreen::Arrange()
{
    std::vector<std::string> lines;
    for (const PlannedRow& row : plan.rows)
        lines.push_back(fmt::format("{}\t{}\t{}\t{}\t{}\t{}", WordsOf(row.state), row.number, InACell(row.employee),
                                    InACell(row.employer), row.matchedBy, InACell(row.words)));
    const std::vector<std::string_view> views(lines.begin(), lines.end());
    std::vector<std::string> entries;
    for (const std::size_t line : review::Arranged(views, {}, box("ImportRows").SortedBy()))
        entries.push_back(lines[line]);
    const int first = entries.empty() ? -1 : 0;
    box("ImportRows").SetEntries(std::move(entries));
    box("ImportRows").Select(first);
    ShowWords();
}

/// The chosen row in full.
void ImportScreen::ShowWords()
{
    const std::string& line = box("ImportRows").Text();
    box("ImportWords").SetText(line.substr(std::min(line.rfind('\t') + 1, line.size())));
}

// ---- the work

bool ImportScreen::HasChangedSince() const
{
    return LastStored(session.ClientDatabasePath()) != lookedAt;
}

void ImportScreen::Import()
{
    const std::string words = fmt::format("Import of {}", file.filename().string());
    std::size_t written = 0;
    KeepCopy(session, CopyReason::Import);
    try {
        const BusyPointer busy(session.platform);
        const UserOperation operation(session, words);
        Database database = OpenClients(session);
        WriteBatch batch(database);
        batch.Begin();
        // From here on nobody else writes: what another desk has stored meanwhile is looked at first.
        if (HasChangedSince()) {
            batch.Commit();
            Plan();
            session.messages.Tell(Title, "Another desk has stored something meanwhile. Nothing has been imported: "
                                         "look at the rows again.");
            return;
        }
        CarryOut(database, plan, written);
        batch.Commit();
    } catch (const StoreError& failure) {
        return TellOfFailure(failure, written);
    }
    const std::string done =
        fmt::format("{}: {} new, {} changed", words, plan.CountOf(RowState::New), plan.CountOf(RowState::Changed));
    session.screens.Unload(Name());
    EmployeeRecord(session).StoreAndShowAgain(Title);
    RebuildRecent(session);
    SetStatusNote(session, done);
}

/// What was written before the store failed stays: says what that is, and how it is taken back.
void ImportScreen::TellOfFailure(const StoreError& failure, std::size_t written)
{
    const ImportPlan planned = std::move(plan);
    try {
        Plan();
    } catch (const StoreError&) {
        session.messages.Tell(Title, failure.what(), Icon::Critical);
        throw; // what is there cannot be read either
    }
    std::string words = "Nothing has been imported.";
    if (FieldsOf(plan) != FieldsOf(planned)) {
        words = fmt::format("{} of {} employees had been imported before that", written, planned.employees.size());
        if (written < planned.employees.size())
            words += fmt::format(", and {} may be there in part", planned.employees[written].name);
        words += ". What is written stays; all of it is taken back in one step by View, History, Undo This.";
    }
    session.messages.Tell(Title, fmt::format("{}\n\n{}", failure.what(), words), Icon::Critical);
}

} // namespace quillmere::exchange
