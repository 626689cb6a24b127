#include "review/ChangeHistory.h"

#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/Dates.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "review/Undo.h"
#include "screens/Form3.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

/// More than anybody looks through; who wants others says whose, or which day.
constexpr std::size_t MostOperations = 500, MostLines = 1000;

constexpr auto Rows = std::to_array<BoxRow>({
    OptionRow("Scope", 0, "This employee", 'E'),
    OptionRow("Scope", 1, "This employer", 'M'),
    OptionRow("Scope", 2, "Everybody", 'B'),
    {.name = "Day", .spoken = "Changes of this day only, dd/mm/yyyy"},
    TableBoxRow("Operations", "What was done", "When\tWho\tWhat\tWhose\tRecords\tUndone"),
    TableBoxRow("Changes", "What it changed", "Whose\tWhere\tBox\tBefore\tAfter"),
    {.name = "Summary", .kind = BoxKind::Label},
    {.name = "HistoryUndo", .kind = BoxKind::Button, .text = "&Undo This"},
    {.name = "HistoryClose", .kind = BoxKind::Button, .text = "&Close"},
});

/// A moment of the history as the form writes a day, dd/mm/yyyy hh:mm:ss.
std::string Shown(const std::string& when)
{
    constexpr std::size_t day = 10;
    if (when.size() < day)
        return when;
    return fmt::format("{}/{}/{}{}", when.substr(8, 2), when.substr(5, 2), when.substr(0, 4), when.substr(day));
}

/// A day as the form writes it the other way round; empty for none.
std::string Stored(const std::string& day)
{
    const auto read = ReadDate(day);
    if (!read)
        return {};
    const std::string stamp = TodayStamp(*read);
    return fmt::format("{}-{}-{}", stamp.substr(0, 4), stamp.substr(4, 2), stamp.substr(6));
}

std::string Whose(const std::string& employer, const std::string& employee)
{
    if (employer.empty())
        return "several";
    return employee.empty() ? employer : fmt::format("{} ({})", employee, employer);
}

std::string_view WordsOf(ChangeKind kind)
{
    switch (kind) {
    case ChangeKind::Added:
        return "new record";
    case ChangeKind::Deleted:
        return "record deleted";
    case ChangeKind::Changed:
        break;
    }
    return {};
}

/// A text of a field in a cell of a table.
std::string InCell(std::string text)
{
    std::ranges::replace(text, '\t', ' ');
    std::ranges::replace(text, '\n', ' ');
    return Trim(text);
}

} // namespace

ChangeHistory::ChangeHistory(Session& session) : Screen(session, "ChangeHistory", ShowMode::Window, "History")
{
    AddBoxes(Rows);
    SetButtons("HistoryClose", {});
    OnClick("Scope", [this](Box&) { List(); });
    OnLeave("Day", [this](Box&) { LeaveDay(); });
    OnSelect("Operations", [this](Box&) { ShowChanges(); });
    OnClick("HistoryUndo", [this](Box&) { UndoChosen(); });
}

bool ChangeHistory::Load()
{
    words.emplace(session.screens);
    const bool anyone = !session.CurrentEmployee.empty() && session.screens.Find<Form3>() != nullptr;
    box("Scope", ThisEmployee).SetEnabled(anyone);
    box("Scope", ThisEmployer).SetEnabled(!session.CurrentEmployer.empty());
    box("Scope", anyone ? ThisEmployee : Everybody).SetTicked(true);
    return true;
}

void ChangeHistory::LeaveDay()
{
    Box& day = box("Day");
    if (!day.TrimText().empty())
        day.SetText(NormaliseDate(day.Text()));
    List();
}

void ChangeHistory::List()
{
    const BusyPointer busy(session.platform);
    History::Wanted wanted{.employer = {}, .employee = {}, .day = Stored(box("Day").Text())};
    if (!box("Scope", Everybody).Ticked())
        wanted.employer = session.CurrentEmployer;
    if (box("Scope", ThisEmployee).Ticked())
        wanted.employee = session.CurrentEmployee;
    bool isReadable = true;
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        const History history(database);
        isReadable = history.IsReadable();
        operations = history.Operations(wanted, MostOperations);
    }
    std::vector<std::string> lines;
    lines.reserve(operations.size());
    for (const PastOperation& operation : operations)
        lines.push_back(fmt::format("{}\t{}\t{}\t{}\t{}\t{}", Shown(operation.when), operation.who,
                                    InCell(operation.words), Whose(operation.employer, operation.employee),
                                    operation.records, operation.isUndone ? "undone" : ""));
    Box& list = box("Operations");
    list.SetEntries(std::move(lines));
    list.Select(operations.empty() ? -1 : 0);
    ShowChanges();
    if (!isReadable)
        box("Summary").SetText("This database has something else in the place of the history: nothing is noted");
}

void ChangeHistory::ShowChanges()
{
    const int chosen = box("Operations").Selected();
    std::vector<std::string> lines;
    bool all = true;
    if (chosen >= 0) {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        const auto changes =
            History(database).Changes(operations.at(static_cast<std::size_t>(chosen)).number, MostLines);
        for (const PastChange& change : changes) {
            const std::string whose = change.employee.empty() ? change.employer : change.employee;
            if (change.kind != ChangeKind::Changed)
                lines.push_back(
                    fmt::format("{}\t{}\t{}\t\t", whose, words->PlaceOf(change.table), WordsOf(change.kind)));
            for (const auto& field : change.fields)
                if (const FieldWords::Words* const of = words->Of(change.table, field.field))
                    lines.push_back(fmt::format("{}\t{}\t{}\t{}\t{}", whose, of->place, of->box, InCell(field.before),
                                                InCell(field.after)));
            all = lines.size() <= MostLines;
            if (!all)
                break;
        }
    }
    const std::size_t count = lines.size();
    box("Changes").SetEntries(std::move(lines));
    box("HistoryUndo").SetEnabled(chosen >= 0 && !operations.at(static_cast<std::size_t>(chosen)).isUndone);
    box("Summary").SetText(
        operations.empty() ? "Nothing has been changed"
        : all              ? fmt::format("{} operations, {} lines of the chosen one", operations.size(), count)
              : fmt::format("{} operations, the first {} lines of the chosen one", operations.size(), count));
}

void ChangeHistory::UndoChosen()
{
    const int chosen = box("Operations").Selected();
    if (chosen < 0)
        return;
    const PastOperation operation = operations.at(static_cast<std::size_t>(chosen));
    if (UndoOperation(session, operation))
        List();
}

} // namespace quillmere::review
