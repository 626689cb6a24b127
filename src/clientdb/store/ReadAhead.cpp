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

bool ReadAhead::Seek(Position& position, const Key& key)
{
    try {
        return ReadSought(position, key);
    } catch (const StoreError& failure) {
        if (!IsTooLong(failure))
            throw;
        Run run(statements.Seek(*position.Order(), {}, false));
        key.BindTo(run);
        FailOfRecord(statements, run.Step() ? run.Number(0) : 0, failure);
    }
}

bool ReadAhead::ReadSought(Position& position, const Key& key)
{
    const TableIndex& index = *position.Order();
    connection.BeforeSeek();
    if (const HeldRecord* const held = connection.Held(statements, index, key)) {
        StandOn(position, held->number, true);
        whole = held->texts;
        return true;
    }
    Prepared* const foreseen = connection.Foreseen(statements, index, key);
    // Who seeks once will mostly ask for much; who goes on seeking asks for the same fields each time.
    const bool all = foreseen != nullptr || !sought || along.All() || connection.HoldsRecords();
    Run run(foreseen != nullptr ? *foreseen
            : all               ? statements.Seek(index, {}, true)
                                : statements.Seek(index, along.Columns(), false));
    key.BindTo(run);
    if (!run.Step())
        return false;
    StandOn(position, run.Number(0), all);
    if (all) {
        whole.Clear();
        run.Take(whole, 1, statements.Fields().Count());
        connection.NoteHeld(statements.Layout(), position.Rowid(), whole, false);
    } else {
        rows.Hold(run, position.Rowid(), along.Width());
    }
    return true;
}

/// The cursor stands on a record that has been sought, and which is about to be taken whole or as a row.
void ReadAhead::StandOn(Position& position, std::int64_t record, bool all)
{
    Drop();
    position.StandOn(record);
    sought = true;
    scanned = true;
    isWhole = all;
    isRow = !all;
}

/// The first record of a scan in the order of adding, where it is locked; false if there is none, or it is not.
bool ReadAhead::HoldFirst(Position& position)
{
    if (position.At() != Position::Place::BeforeFirst || position.GoesByList())
        return false;
    connection.BeforeSeek();
    try {
        const HeldRecord* const first = connection.HoldsRecords() ? connection.HoldFirst(statements) : nullptr;
        if (first == nullptr)
            return false;
        StandOn(position, first->number, true);
        whole = first->texts;
        return true;
    } catch (const StoreError& failure) {
        // Its other fields can be read all the same.
        if (!IsTooLong(failure))
            throw;
        return false;
    }
}

bool ReadAhead::Next(Position& position)
{
    ForgetRecord();
    if (HoldFirst(position))
        return true;
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

/// False if the record is gone.
bool ReadAhead::ReadRecord(std::int64_t record)
{
    if (connection.HoldsRecords()) {
        const HeldRecord* const held = connection.Hold(statements, record);
        if (held != nullptr)
            whole = held->texts;
        return held != nullptr;
    }
    Run run(statements.Read({}, true));
    if (!run.Bind(record).Step())
        return false;
    whole.Clear();
    run.Take(whole, 0, statements.Fields().Count());
    return true;
}

void ReadAhead::ReadWhole(Position& position)
{
    connection.RequireOpen();
    try {
        if (!ReadRecord(position.Rowid())) {
            position.Leave(Position::Place::OnDeleted);
            position.RequireRecord();
        }
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
