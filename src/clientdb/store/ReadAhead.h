#pragma once

#include "clientdb/store/RowsAhead.h"

#include <utility>

namespace quillmere {

/// What has been read of the record on which a cursor stands: a row with the fields that the cursor has been asked for
/// so far, the whole record, or both. A question for another field reads the record whole, and from the next record on
/// the field comes along.
class ReadAhead {
public:
    ReadAhead(Database::Connection& connection, TableStatements& statements);

    /// Has a field come along from the next record on, and Seek bring such fields alone.
    void Fetch(Position& position, std::size_t column);

    /// Drops what was read of the current record.
    void ForgetRecord();
    /// Drops all that was read: the cursor goes where no scan leads it.
    void Drop();

    /// Goes on to the next record; false if there is none.
    bool Next(Position& position);
    /// Goes to the record of that key; false if there is none. The position's order is the index that has the key.
    bool Seek(Position& position, const Key& key);

    /// A field of the current record; a record that is gone is a StoreError.
    std::string_view Text(Position& position, std::size_t column);
    bool IsNull(Position& position, std::size_t column);

    /// See RowsAhead.
    bool IsFresh() const { return rows.IsFresh(); }
    void StayFresh() { rows.StayFresh(); }

private:
    void Learn(std::size_t column, Position& position);
    void ReadWhole(Position& position);
    bool ReadSought(Position& position, const Key& key);
    bool HoldFirst(Position& position);
    void StandOn(Position& position, std::int64_t record, bool all);
    bool ReadRecord(std::int64_t record);
    std::pair<const Cells*, std::size_t> CellOf(std::size_t column, Position& position);

    Database::Connection& connection;
    TableStatements& statements;

    FieldsAlong along;
    RowsAhead rows;
    bool isRow = false;   ///< the current record is the current row
    bool scanned = false; ///< it was reached by a scan or a Seek, which may go on
    bool sought = false;  ///< there has been a Seek: the next brings only the fields that come along
    Cells whole;          ///< the current record, if `isWhole`
    bool isWhole = false;
};

} // namespace quillmere
