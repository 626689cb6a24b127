#include "clientdb/GoneRecord.h"

#include "clientdb/CurrentRecord.h"
#include "clientdb/UserOperation.h"
#include "clientdb/store/History.h"

#include <cstddef>
#include <fmt/format.h>
#include <optional>

namespace quillmere {

namespace {

/// The key that a record has got by somebody's renaming; nothing if none of the last operations of the history is one.
std::optional<TypedEntries::Record> RenamedTo(Database& database, const TypedEntries::Record& record)
{
    // Whoever finds a record gone has seen it a while ago; and each operation is asked for by itself.
    constexpr std::size_t MostOperations = 100;
    const History history(database);
    if (!history.IsReadable())
        return std::nullopt;
    for (const PastOperation& operation : history.Operations({}, MostOperations))
        // A renaming gives all records that it writes the one new name: any of them tells it.
        for (const PastChange& change : history.Changes(operation.number, 1)) {
            // Whoever had the name later has been deleted, or has just been made.
            if (change.kind != ChangeKind::Changed && change.employer == record.employer &&
                change.employee == record.employee)
                return std::nullopt;
            if (change.kind != ChangeKind::Changed)
                continue;
            TypedEntries::Record renamed = record;
            for (const PastChange::FieldTexts& texts : change.fields)
                if (texts.field == "EmployerName" && texts.before == record.employer)
                    renamed.employer = texts.after;
                else if (texts.field == "EmployeeName" && texts.before == record.employee &&
                         change.employer == record.employer)
                    renamed.employee = texts.after;
            if (renamed != record)
                return renamed;
        }
    return std::nullopt;
}

} // namespace

void KeepTyped(Session& session, const std::filesystem::path& database, const TypedEntries::Record& of,
               std::vector<TypedEntries::Line> typed)
{
    if (typed.empty())
        return;
    for (TypedEntries::Line& line : typed) {
        line.record = of;
        line.entry.moment = MomentNow(session);
    }
    TypedEntries(database).Keep(typed);
}

std::string LoseRecord(Session& session, Database& opened, const std::filesystem::path& database,
                       const TypedEntries::Record& gone, const std::vector<TypedEntries::Line>& typed)
{
    std::string words(NotStoredWords);
    try {
        std::optional<TypedEntries::Record> renamed = RenamedTo(opened, gone);
        if (renamed && OpenAt(opened, *renamed).NoMatch())
            renamed.reset();
        KeepTyped(session, database, renamed.value_or(gone), typed);
        if (renamed)
            words =
                fmt::format("{}it is that of {} now, where what is typed waits", RecordGoneWords,
                            renamed->employee.empty() ? renamed->employer
                                                      : fmt::format("{} ({})", renamed->employee, renamed->employer));
    } catch (const Failure&) {
        // It is gone all the same, and that is told.
    }
    return words;
}

} // namespace quillmere
