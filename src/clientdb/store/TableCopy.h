#pragma once

#include "clientdb/store/Connection.h"
#include "clientdb/store/TablesBeside.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quillmere {

/// Copies every record of a client database into another, of either engine, with its number, and looks whether it is
/// the same there: field by field. It goes in pieces, so that it takes little room and can be ended at any place; each
/// of the two connections is in a transaction of its own for the whole length. Everything throws StoreError.
class TableCopy {
public:
    /// What the other database had in its tables is gone.
    TableCopy(Database::Connection& from, Database::Connection& into);

    /// Copies the next records. False, with nothing done, once all are there.
    bool CopyOn();
    /// Compares the next ones. False likewise; throws StoreError for the first one that is not the same.
    bool CompareOn();
    void Copy();
    void Compare();

    /// How many records there are, and how many of them have been copied and compared.
    std::int64_t Records() const { return records; }
    std::int64_t Copied() const { return copied.done; }
    std::int64_t Compared() const { return compared.done; }

private:
    struct Table {
        std::string name, number, read, insert;
        std::vector<TableBeside::Column> columns;
    };
    /// How far one of the two ways through all tables has come.
    struct Way {
        std::size_t table = 0;
        std::int64_t last; ///< the number of the record that was last
        std::int64_t done = 0;
    };

    void Add(std::string_view name, std::string_view number, std::vector<TableBeside::Column> columns);
    void AddBeside(const TableBeside& table);
    bool GoOn(Way& way, int (TableCopy::*piece)(const Table&, Way&));
    int CopyPiece(const Table& table, Way& way);
    int ComparePiece(const Table& table, Way& way);

    Database::Connection& from;
    Database::Connection& into;
    std::vector<Table> tables;
    Way copied, compared;
    std::int64_t records = 0;
};

} // namespace quillmere
