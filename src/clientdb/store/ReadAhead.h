#pragma once

#include "clientdb/store/Cells.h"
#include "clientdb/store/Position.h"

#include <utility>

namespace quillmere {

/// The record on which a cursor stands and those behind it, as far as they have been read. They are read with the
/// fields that the cursor has been asked for so far; a question for another field reads the record whole, and from the
/// next record on the field comes along. Records behind the current one are shown only if nothing has been written
/// through the connection since they were read, but by the cursor itself.
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
    bool Seek(Position& position, std::string_view part1, std::optional<std::string_view> part2);

    /// A field of the current record; a record that is gone is a StoreError.
    std::string_view Text(Position& position, std::size_t column);
    bool IsNull(Position& position, std::size_t column);

    /// True if nothing has been written since the records were read. After a write of the cursor's own, which begins
    /// with this, StayFresh keeps them.
    bool IsFresh() const { return writesSeen == connection.Writes(); }
    void StayFresh() { writesSeen = connection.Writes(); }

private:
    /// A record read ahead, and where it stands in the list of a scan that goes by list.
    struct Row {
        std::int64_t rowid;
        std::size_t listed;
    };

    bool FillOn(Position& position);
    bool Fill(Position& position);
    bool FillFromList(Position& position);
    void DropFrom(std::size_t row, Position& position);
    void Bring(std::size_t column);
    void Learn(std::size_t column, Position& position);
    void ReadWhole(Position& position);
    bool ReadSought(Position& position, std::string_view part1, std::optional<std::string_view> part2);
    std::int64_t NextRecord(Position& position);
    [[noreturn]] void FailOf(std::int64_t record, const StoreError& failure);
    std::pair<const Cells*, std::size_t> CellOf(std::size_t column, Position& position);

    Database::Connection& connection;
    TableStatements& statements;
    std::size_t fieldCount;

    std::vector<std::uint16_t> columns; ///< that come along
    bool allColumns = false;
    std::vector<std::uint16_t> placeInRow; ///< of each field, or NotRead

    std::vector<Row> rows;
    Cells cells; ///< of the rows
    std::size_t rowWidth = 0;
    std::size_t at = 0; ///< the row of the current record, if that is among them
    std::size_t goal = 1;
    std::int64_t writesSeen = 0;

    bool isRow = false;   ///< the current record is row `at`
    bool scanned = false; ///< it was reached by a scan or a Seek, which may go on
    bool sought = false;  ///< there has been a Seek: the next brings only the fields that come along
    Cells whole;          ///< the current record, if `isWhole`
    bool isWhole = false;
};

} // namespace quillmere
