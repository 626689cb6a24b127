#include "clientdb/Renamed.h"

#include "clientdb/store/History.h"

#include <cstddef>

namespace quillmere {

std::optional<TypedEntries::Record> RenamedTo(Database& database, const TypedEntries::Record& record)
{
    // Whoever finds a record gone has seen it a while ago; and each operation is asked for by itself.
    constexpr std::size_t MostOperations = 100;
    const History history(database);
    if (!history.IsReadable())
        return std::nullopt;
    for (const PastOperation& operation : history.Operations({}, MostOperations))
        // A renaming gives all records that it writes the one new name: any of them tells it.
        for (const PastChange& change : history.Changes(operation.number, 1))
            for (const PastChange::FieldTexts& texts : change.fields) {
                TypedEntries::Record renamed = record;
                // Whoever had the name later has been deleted, or has just been made.
                if (change.kind != ChangeKind::Changed && change.employer == record.employer &&
                    change.employee == record.employee)
                    return std::nullopt;
                if (change.kind != ChangeKind::Changed)
                    continue;
                if (texts.field == "EmployerName" && texts.before == record.employer)
                    renamed.employer = texts.after;
                if (texts.field == "EmployeeName" && texts.before == record.employee &&
                    change.employer == record.employer)
                    renamed.employee = texts.after;
                if (renamed != record)
                    return renamed;
            }
    return std::nullopt;
}

} // namespace quillmere
