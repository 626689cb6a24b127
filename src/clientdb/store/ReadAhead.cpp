#include "clientdb/store/ReadAhead.h"

#include "clientdb/store/Unreadable.h"

namespace quillmere {
ReadAhead::ReadAhead(Database::Connection& of, TableStatements& tableStatements)
    : connection(of), statements(tableStatements), along(tableStatements.Fields().Count()), rows(of, tableStatements)
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
    rows.Clear();
}

void ReadAhead::Fetch(Position& position, std::size_t column)
{
    if (!along.Has(column)) {
        along.Bring(column);
        rows.DropBehind(position);
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
        Run run(statements.Seek(*position.Order(), {}, false));
        run.Bind(part1);
        if (part2)
            run.Bind(*part2);
        FailOfRecord(statements, run.Step() ? run.Number(0) : 0, failure);
    }
}

bool ReadAhead::ReadSought(Position& position, std::string_view part1, std::optional<std::string_view> part2)
{
    // Who seeks once will mostly ask for much; who goes on seeking asks for the same fields each time.
    const bool all = !sought || along.All();
    const TableIndex& index = *position.Order();
    Run run(all ? statements.Seek(index, {}, true) : statements.Seek(index, along.Columns(), false));
    run.Bind(part1);
    if (part2)
        run.Bind(*part2);
    if (!run.Step())
        return false;
    Drop();
    position.StandOn(run.Number(0));
    connection.NoteHeld(statements.Layout(), position.Rowid());
    sought = true;
    scanned = true;
    isWhole = all;
    isRow = !all;
    if (all) {
        whole.Clear();
        run.Take(whole, 1, statements.Fields().Count());
    } else {
        rows.Hold(run, position.Rowid(), along.Width());
    }
    return true;
}

bool ReadAhead::Next(Position& position)
{
    ForgetRecord();
    if (!rows.Next(position, along))
        return false;
    isRow = true;
    scanned = true;
    return true;
}

/// Has the scan bring the field along from the next record on.
void ReadAhead::Learn(std::size_t column, Position& position)
{
    along.Learn(column);
    rows.DropBehind(position);
    isRow = false;
}

void ReadAhead::ReadWhole(Position& position)
{
    connection.RequireOpen();
    Run run(statements.Read({}, true));
    run.Bind(position.Rowid());
    try {
        if (!run.Step()) {
            position.Leave(Position::Place::OnDeleted);
            position.RequireRecord();
        }
        whole.Clear();
        run.Take(whole, 0, statements.Fields().Count());
    } catch (const StoreError& failure) {
        if (!IsTooLong(failure))
            throw;
        FailOfRecord(statements, position.Rowid(), failure);
    }
    isWhole = true;
}

/// Where the field of the current record is to be read.
std::pair<const Cells*, std::size_t> ReadAhead::CellOf(std::size_t column, Position& position)
{
    if (isRow && along.Has(column))
        return {&rows.Texts(), rows.CellAt(along.PlaceOf(column))};
    if (scanned && !along.Has(column))
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
