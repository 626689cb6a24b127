#pragma once

#include "clientdb/store/Cells.h"
#include "clientdb/store/Connection.h"
#include "clientdb/store/FieldsAlong.h"
#include "clientdb/store/Position.h"

namespace quillmere {

/// The rows that a scan has read by one statement: that of the record on which the cursor stands, if a scan or a Seek
/// with few fields led there, and those behind it in the order of the position. All have the same fields. Rows behind
/// the current one count only if nothing has been written through the connection since they were read, but by the
/// cursor itself; what the position has as used up has been read, gone over or not.
class RowsAhead {
public:
    RowsAhead(Database::Connection& connection, TableStatements& statements);

    /// No rows; a scan begins with one and goes on with ever more at a time.
    void Clear();
    /// The one row that a Seek has brought, behind the record's number.
    void Hold(const Run& run, std::int64_t rowid, std::size_t width);
    /// Goes on to the next record, reading on where the rows are used up; false if there is none.
    bool Next(Position& position, const FieldsAlong& along);
    /// Drops the rows, those behind the current one to be read anew.
    void DropBehind(Position& position) { DropFrom(at + 1, position); }

    /// The current row's cell among `Cells`.
    std::size_t CellAt(std::size_t place) const { return at * rowWidth + place; }
    const Cells& Texts() const { return cells; }

    /// True if nothing has been written since the rows were read. After a write of the cursor's own, which begins with
    /// this, StayFresh keeps them.
    bool IsFresh() const { return writesSeen == connection.Writes(); }
    void StayFresh() { writesSeen = connection.Writes(); }

private:
    /// A record read ahead, and where it stands in the list of a scan that goes by list.
    struct Row {
        std::int64_t rowid;
        std::size_t listed;
    };

    bool FillOn(Position& position, const FieldsAlong& along);
    bool Fill(Position& position, const FieldsAlong& along);
    bool FillFromList(Position& position, const FieldsAlong& along);
    void DropFrom(std::size_t row, Position& position);
    std::int64_t NextRecord(Position& position);

    Database::Connection& connection;
    TableStatements& statements;
    std::vector<Row> rows;
    Cells cells;
    std::size_t rowWidth = 0;
    std::size_t at = 0;
    std::size_t goal = 1;
    std::int64_t writesSeen = 0;
};

} // namespace quillmere
