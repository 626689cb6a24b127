#include "clientdb/store/Position.h"

#include <sqlite3.h>

#include <algorithm>
#include <fmt/format.h>
#include <limits>
#include <unordered_set>

namespace quillmere {

Position::Position(TableStatements& tableStatements) : statements(tableStatements)
{
}

void Position::SetOrder(const TableIndex& newIndex)
{
    index = &newIndex;
    employer.reset();
}

void Position::RequireRecord() const
{
    if (place == Place::OnDeleted)
        throw StoreError(SQLITE_NOTFOUND, "The record has been deleted.", "");
    if (place != Place::OnRecord)
        throw StoreError(SQLITE_NOTFOUND, "There is no current record.", "");
}

void Position::StandBeforeFirst()
{
    StandOn(std::numeric_limits<std::int64_t>::min());
    place = Place::BeforeFirst;
}

void Position::StandOn(std::int64_t record)
{
    MoveOnTo(record);
    listed = false;
}

void Position::MoveOnTo(std::int64_t record)
{
    rowid = record;
    place = Place::OnRecord;
}

const std::vector<std::int64_t>& Position::List()
{
    if (!listed)
        TakeUpList();
    return list;
}

void Position::TakeUpList()
{
    list.clear();
    used = 0;
    Run run(statements.Order(index, employer.has_value()));
    if (employer)
        run.Bind(*employer);
    std::unordered_set<std::int64_t> met;
    while (run.Step()) {
        const std::int64_t listedNow = run.Number(0);
        if (!met.insert(listedNow).second)
            FailOutOfOrder();
        list.push_back(listedNow);
    }
    if (index == nullptr)
        std::sort(list.begin(), list.end());
    listed = true;
    if (place == Place::BeforeFirst)
        return;
    const auto current = std::find(list.begin(), list.end(), rowid);
    used = static_cast<std::size_t>(current - list.begin()) + (current == list.end() ? 0 : 1);
}

void Position::FailOutOfOrder()
{
    place = Place::AtEnd;
    throw StoreError(SQLITE_CORRUPT,
                     fmt::format("The records of table {} are out of their order.", statements.Layout().name), "");
}

} // namespace quillmere
