#include "clientdb/store/AddedRecords.h"

#include "clientdb/store/Cells.h"
#include "clientdb/store/HistoryTables.h"

#include <fmt/format.h>
#include <map>
#include <utility>

namespace quillmere {
namespace {

/// A new record, and what the changes since found in it.
struct Traced {
    RecordChange* change;
    std::map<std::size_t, std::string> found = {}; ///< the first text that was changed, by its column
    bool isFollowed = false;                       ///< the changes are looked for from its addition on
    bool isDeleted = false;                        ///< and up to its deletion
};

using RecordName = std::pair<const TableLayout*, std::int64_t>;

RecordName NameOf(const RecordChange& change)
{
    return {change.table, change.record};
}

/// Goes through all changes from a number on.
void Follow(Database::Connection& connection, std::multimap<RecordName, Traced>& traced, std::int64_t first)
{
    Run run(connection.Own(fmt::format("SELECT [Changes] FROM [{}] WHERE [Number]>=? ORDER BY [Number]", ChangeTable)));
    run.Bind(first);
    while (run.Step())
        for (RecordChange& since : DecodeChanges(run.Bytes(0))) {
            const auto [begin, end] = traced.equal_range(NameOf(since));
            for (auto at = begin; at != end; ++at) {
                Traced& record = at->second;
                if (since.digest) {
                    record.isFollowed = record.isFollowed || since.digest == record.change->digest;
                } else if (record.isFollowed && !record.isDeleted) {
                    for (FieldChange& field : since.fields)
                        record.found.emplace(field.column, std::move(field.before).value_or(""));
                    record.isDeleted = since.kind == ChangeKind::Deleted;
                }
            }
        }
}

/// Gives the change its fields, if what has been found is what was added.
bool Take(Database::Connection& connection, Traced& record)
{
    RecordChange& change = *record.change;
    TableStatements& statements = connection.Statements(*change.table);
    const std::size_t count = statements.Fields().Count();
    Cells now;
    Run run(statements.Read({}, true));
    if (run.Bind(change.record).Step())
        run.Take(now, 0, count);
    else if (!record.isDeleted)
        return false;
    FieldsDigest digest;
    std::vector<FieldChange> fields;
    for (std::size_t column = 0; column < count; ++column) {
        const auto found = record.found.find(column);
        const std::string_view text = found != record.found.end() ? std::string_view(found->second)
                                      : record.isDeleted          ? std::string_view()
                                                                  : now.Text(column);
        digest.Put(column, text);
        if (text.empty())
            continue;
        FieldChange& field = fields.emplace_back(FieldChange{static_cast<std::uint16_t>(column), {}, {}});
        (change.kind == ChangeKind::Added ? field.after : field.before) = text;
    }
    if (digest.Number() != change.digest)
        return false;
    change.fields = std::move(fields);
    change.digest.reset();
    return true;
}

} // namespace

void FindFieldsAdded(Database::Connection& connection, std::span<RecordChange* const> added, std::int64_t first)
{
    std::multimap<RecordName, Traced> traced;
    for (RecordChange* const change : added)
        if (Traced record{change}; !Take(connection, record)) // mostly nothing has been changed since
            traced.emplace(NameOf(*change), std::move(record));
    if (traced.empty())
        return;
    Follow(connection, traced, first);
    for (auto& [name, record] : traced)
        Take(connection, record);
}

} // namespace quillmere
