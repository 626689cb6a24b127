#include "clientdb/store/ReadAhead.h"

#include <algorithm>
#include <fmt/ranges.h>
#include <limits>
#include <numeric>

namespace quillmere {
namespace {

/// A scan reads so many records ahead, and then gives up its lock until they are used up.
constexpr std::size_t MostRecordsAhead = 512;
constexpr std::size_t MostBytesAhead = 98304;
/// A scan that looks at more fields than this reads whole records.
constexpr std::size_t MostFieldsApart = 24;

constexpr std::uint16_t NotRead = std::numeric_limits<std::uint16_t>::max();

/// A record that the store does not give away: one of its texts is longer than any box takes.
bool IsTooLong(const StoreError& failure)
{
    return (failure.Number() & 0xff) == SQLITE_TOOBIG;
}

} // namespace

ReadAhead::ReadAhead(Database::Connection& of, TableStatements& tableStatements)
    : connection(of),
      statements(tableStatements),
      fieldCount(tableStatements.Fields().Count()),
      placeInRow(fieldCount, NotRead)
{
}

void ReadAhead::ForgetRecord()
{
    isWhole = false;
    isRow = false;
}

void ReadAhead::Drop()
{
    ForgetRecord();
    scanned = false;
    rows.clear();
    at = 0;
    goal = 1;
}

void ReadAhead::Fetch(Position& position, std::size_t column)
{
    if (placeInRow[column] == NotRead) {
        Bring(column);
        DropFrom(at + 1, position);
        isRow = false;
    }
    sought = true;
}

bool ReadAhead::Seek(Position& position, std::string_view part1, std::optional<std::string_view> part2)
{
    try {
        return ReadSought(position, part1, part2);
    } catch (const StoreError& failure) {
        if (!IsTooLong(failure))
            throw;
        Run run(connection, statements.Seek(*position.Order(), {}, false));
        run.Bind(part1);
        if (part2)
            run.Bind(*part2);
        FailOf(run.Step() ? run.Number(0) : 0, failure);
    }
}

bool ReadAhead::ReadSought(Position& position, std::string_view part1, std::optional<std::string_view> part2)
{
    // Who seeks once will mostly ask for much; who goes on seeking asks for the same fields each time.
    const bool all = !sought || allColumns;
    const TableIndex& index = *position.Order();
    Run run(connection, all ? statements.Seek(index, {}, true) : statements.Seek(index, columns, false));
    run.Bind(part1);
    if (part2)
        run.Bind(*part2);
    if (!run.Step())
        return false;
    Drop();
    position.StandOn(run.Number(0));
    sought = true;
    scanned = true;
    isWhole = all;
    isRow = !all;
    if (all) {
        whole.Clear();
        whole.Take(run, 1, fieldCount);
    } else {
        rowWidth = columns.size();
        cells.Clear();
        cells.Take(run, 1, rowWidth);
        rows.push_back({position.Rowid(), 0});
    }
    return true;
}

bool ReadAhead::Next(Position& position)
{
    ForgetRecord();
    if (at < rows.size())
        ++at;
    if (at < rows.size() && !IsFresh()) {
        DropFrom(at, position);
        goal = 1;
    }
    if (at >= rows.size()) {
        if (!FillOn(position))
            return false;
        goal = std::min(MostRecordsAhead, goal * 8);
    }
    position.MoveOnTo(rows[at].rowid);
    isRow = true;
    scanned = true;
    return true;
}

bool ReadAhead::FillOn(Position& position)
{
    try {
        return Fill(position);
    } catch (const StoreError& failure) {
        rows.clear(); // what was read before the failure is read again
        if (!IsTooLong(failure))
            throw;
        if (goal == 1)
            FailOf(NextRecord(position), failure);
    }
    goal = 1; // one by one up to the record that cannot be read
    return FillOn(position);
}

bool ReadAhead::Fill(Position& position)
{
    connection.RequireOpen();
    rows.clear();
    cells.Clear();
    at = 0;
    rowWidth = allColumns ? fieldCount : columns.size();
    StayFresh();
    if (position.GoesByList())
        return FillFromList(position);
    Run run(connection, statements.ReadAfter(columns, allColumns));
    run.Bind(position.Rowid());
    while (rows.size() < goal && cells.Bytes() < MostBytesAhead && run.Step()) {
        const std::int64_t read = run.Number(0);
        if (read <= (rows.empty() ? position.Rowid() : rows.back().rowid))
            position.FailOutOfOrder();
        rows.push_back({read, 0});
        cells.Take(run, 1, rowWidth);
    }
    return !rows.empty();
}

/// Reads the next records of the list. Those that are gone are passed over.
bool ReadAhead::FillFromList(Position& position)
{
    const std::vector<std::int64_t>& list = position.List();
    std::size_t used = position.Used();
    while (rows.empty() && used < list.size()) {
        const std::size_t end = std::min(list.size(), used + goal);
        const std::string rowids = fmt::format("[{}]", fmt::join(list.begin() + static_cast<std::ptrdiff_t>(used),
                                                                 list.begin() + static_cast<std::ptrdiff_t>(end), ","));
        Run run(connection, statements.ReadList(columns, allColumns));
        run.Bind(rowids);
        for (; cells.Bytes() < MostBytesAhead && run.Step(); ++used) {
            const std::int64_t read = run.Number(0);
            while (used < end && list[used] != read)
                ++used;
            if (used == end)
                position.FailOutOfOrder();
            rows.push_back({read, used});
            cells.Take(run, 1, rowWidth);
        }
        if (cells.Bytes() < MostBytesAhead)
            used = end;
    }
    position.Use(used);
    return !rows.empty();
}

/// Drops the rows, the list to be taken up again with row `row`.
void ReadAhead::DropFrom(std::size_t row, Position& position)
{
    if (row < rows.size())
        position.Use(rows[row].listed);
    rows.clear();
    at = 0;
}

/// Has the scan bring the field along from the next record on; all of them, once so many were asked for one by one.
void ReadAhead::Learn(std::size_t column, Position& position)
{
    if (columns.size() >= MostFieldsApart) {
        allColumns = true;
        columns.clear();
        std::iota(placeInRow.begin(), placeInRow.end(), std::uint16_t{0});
    } else {
        Bring(column);
    }
    DropFrom(at + 1, position);
    isRow = false;
}

void ReadAhead::Bring(std::size_t column)
{
    placeInRow[column] = static_cast<std::uint16_t>(columns.size());
    columns.push_back(static_cast<std::uint16_t>(column));
}

void ReadAhead::ReadWhole(Position& position)
{
    connection.RequireOpen();
    Run run(connection, statements.Read({}, true));
    run.Bind(position.Rowid());
    try {
        if (!run.Step()) {
            position.Leave(Position::Place::OnDeleted);
            position.RequireRecord();
        }
        whole.Clear();
        whole.Take(run, 0, fieldCount);
    } catch (const StoreError& failure) {
        if (!IsTooLong(failure))
            throw;
        FailOf(position.Rowid(), failure);
    }
    isWhole = true;
}

/// The number of the record to which a scan goes on.
std::int64_t ReadAhead::NextRecord(Position& position)
{
    if (!position.GoesByList()) {
        Run run(connection, statements.ReadAfter({}, false));
        return run.Bind(position.Rowid()).Step() ? run.Number(0) : 0;
    }
    for (std::size_t used = position.Used(); used < position.List().size(); ++used)
        if (Run(connection, statements.Exists()).Bind(position.List()[used]).Step())
            return position.List()[used];
    return 0;
}

/// Tells of a record with too long a text whose it is.
void ReadAhead::FailOf(std::int64_t record, const StoreError& failure)
{
    const auto keyOf = [&](std::string_view name) -> std::string {
        const auto column = static_cast<std::uint16_t>(statements.Fields().Find(name));
        Run run(connection, statements.Read({&column, 1}, false));
        return run.Bind(record).Step() ? std::string(run.Text(0)) : std::string();
    };
    std::string whose;
    switch (statements.Layout().level) {
    case TableLevel::Employee:
        whose = fmt::format(" of {} ({})", keyOf("EmployeeName"), keyOf("EmployerName"));
        break;
    case TableLevel::Employer:
        whose = fmt::format(" of {}", keyOf("EmployerName"));
        break;
    default:
        break;
    }
    throw StoreError(
        failure.Number(),
        fmt::format("The record{} in table {} cannot be read: {}", whose, statements.Layout().name, failure.what()),
        failure.Statement());
}

/// Where the field of the current record is to be read.
std::pair<const Cells*, std::size_t> ReadAhead::CellOf(std::size_t column, Position& position)
{
    if (isRow && placeInRow[column] != NotRead)
        return {&cells, at * rowWidth + placeInRow[column]};
    if (scanned && placeInRow[column] == NotRead)
        Learn(column, position);
    if (!isWhole) {
        position.RequireRecord();
        ReadWhole(position);
    }
    return {&whole, column};
}

std::string_view ReadAhead::Text(Position& position, std::size_t column)
{
    const auto [of, cell] = CellOf(column, position);
    return of->Text(cell);
}

bool ReadAhead::IsNull(Position& position, std::size_t column)
{
    const auto [of, cell] = CellOf(column, position);
    return of->IsNull(cell);
}

} // namespace quillmere
