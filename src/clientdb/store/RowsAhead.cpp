#include "clientdb/store/RowsAhead.h"

#include "clientdb/store/Unreadable.h"

#include <algorithm>

namespace quillmere {
namespace {

/// A scan reads so many records ahead, and then gives up its lock until they are used up.
constexpr std::size_t MostRecordsAhead = 512;
constexpr std::size_t MostBytesAhead = 98304;

} // namespace

RowsAhead::RowsAhead(Database::Connection& of, TableStatements& tableStatements)
    : connection(of), statements(tableStatements)
{
}

void RowsAhead::Clear()
{
    rows.clear();
    at = 0;
    goal = 1;
}

void RowsAhead::Hold(const Run& run, std::int64_t rowid, std::size_t width)
{
    Clear();
    rowWidth = width;
    cells.Clear();
    run.Take(cells, 1, width);
    rows.push_back({rowid, 0});
}

bool RowsAhead::Next(Position& position, const FieldsAlong& along)
{
    if (at < rows.size())
        ++at;
    if (at < rows.size() && !IsFresh()) {
        DropFrom(at, position);
        goal = 1;
    }
    if (at >= rows.size()) {
        if (!FillOn(position, along))
            return false;
        goal = std::min(MostRecordsAhead, goal * 8);
    }
    position.MoveOnTo(rows[at].rowid);
    return true;
}

bool RowsAhead::FillOn(Position& position, const FieldsAlong& along)
{
    try {
        return Fill(position, along);
    } catch (const StoreError& failure) {
        rows.clear(); // what was read before the failure is read again
        if (!IsTooLong(failure))
            throw;
        if (goal == 1)
            FailOfRecord(statements, NextRecord(position), failure);
    }
    goal = 1; // one by one up to the record that cannot be read
    return FillOn(position, along);
}

bool RowsAhead::Fill(Position& position, const FieldsAlong& along)
{
    connection.RequireOpen();
    rows.clear();
    cells.Clear();
    at = 0;
    rowWidth = along.Width();
    StayFresh();
    if (position.GoesByList())
        return FillFromList(position, along);
    Run run(statements.ReadAfter(along.Columns(), along.All()));
    run.Bind(position.Rowid()).Bind(static_cast<std::int64_t>(goal));
    while (rows.size() < goal && cells.Bytes() < MostBytesAhead && run.Step()) {
        const std::int64_t read = run.Number(0);
        if (read <= (rows.empty() ? position.Rowid() : rows.back().rowid))
            position.FailOutOfOrder();
        rows.push_back({read, 0});
        run.Take(cells, 1, rowWidth);
    }
    return !rows.empty();
}

/// Reads the next records of the list. Those that are gone are passed over.
bool RowsAhead::FillFromList(Position& position, const FieldsAlong& along)
{
    const std::vector<std::int64_t>& list = position.List();
    std::size_t used = position.Used();
    while (rows.empty() && used < list.size()) {
        const std::size_t end = std::min(list.size(), used + goal);
        const std::string rowids = connection.RowidList(std::span(list).subspan(used, end - used));
        Run run(statements.ReadList(along.Columns(), along.All()));
        run.Bind(rowids);
        for (; cells.Bytes() < MostBytesAhead && run.Step(); ++used) {
            const std::int64_t read = run.Number(0);
            while (used < end && list[used] != read)
                ++used;
            if (used == end)
                position.FailOutOfOrder();
            rows.push_back({read, used});
            run.Take(cells, 1, rowWidth);
        }
        if (cells.Bytes() < MostBytesAhead)
            used = end;
    }
    position.Use(used);
    return !rows.empty();
}

/// Drops the rows, the list to be taken up again with row `row`.
void RowsAhead::DropFrom(std::size_t row, Position& position)
{
    if (row < rows.size())
        position.Use(rows[row].listed);
    rows.clear();
    at = 0;
}

/// The number of the record to which a scan goes on.
std::int64_t RowsAhead::NextRecord(Position& position)
{
    if (!position.GoesByList()) {
        Run run(statements.ReadAfter({}, false));
        return run.Bind(position.Rowid()).Bind(std::int64_t{1}).Step() ? run.Number(0) : 0;
    }
    for (std::size_t used = position.Used(); used < position.List().size(); ++used)
        if (Run(statements.Exists()).Bind(position.List()[used]).Step())
            return position.List()[used];
    return 0;
}

} // namespace quillmere
