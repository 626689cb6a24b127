#pragma once

#include "clientdb/store/Prepared.h"
#include "clientdb/store/Recordset.h"
#include "clientdb/store/TableLayouts.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillmere {

/// Statements of one table, prepared once for each shape.
class TableStatements {
public:
    TableStatements(Database::Connection& connection, const TableLayout& layout);

    const TableLayout& Layout() const { return layout; }
    const TableFields& Fields() const { return fields; }
    /// The places of the two parts of a record's key, TableFields::None where it has none.
    std::size_t EmployerColumn() const { return employerColumn; }
    std::size_t EmployeeColumn() const { return employeeColumn; }

    /// SELECT of the rowid and then of one field after the other, or of all, by the parts of an index.
    Prepared& Seek(const TableIndex& index, std::span<const std::uint16_t> columns, bool all);
    /// SELECT of one field after the other by rowid; of all fields where `columns` is empty and `all` is set.
    Prepared& Read(std::span<const std::uint16_t> columns, bool all);
    /// The same for each rowid of a list, as the engine writes one, in its order, with the rowid in front.
    Prepared& ReadList(std::span<const std::uint16_t> columns, bool all);
    /// The same for so many records after a rowid, in the order of adding, with the rowid in front.
    Prepared& ReadAfter(std::span<const std::uint16_t> columns, bool all);
    /// SELECT of the rowid and all fields of the first record in the order of adding.
    Prepared& ReadFirst();
    /// SELECT of the rowid and all fields by rowid.
    Prepared& ReadNumbered();
    /// SELECT of the rowids in the order of the index (nullptr: as they come), of one employer or of all.
    Prepared& Order(const TableIndex* index, bool ofEmployer);
    Prepared& Exists();
    /// INSERT and UPDATE of the columns; the rowid is UPDATE's last parameter, and INSERT's first where it is given.
    Prepared& Insert(std::span<const std::uint16_t> columns, bool withRowid);
    Prepared& Update(std::span<const std::uint16_t> columns);
    /// INSERT of all fields, with the rowid in front or with the next one.
    Prepared& InsertWhole(bool withRowid);
    Prepared& Delete();
    Prepared& Employers();

private:
    template<class MakeText>
    Prepared& Shape(char kind, std::span<const std::uint16_t> columns, MakeText text);
    std::string Columns(std::span<const std::uint16_t> columns, bool all, std::string_view between) const;

    Database::Connection& connection;
    const TableLayout& layout;
    const TableFields& fields;
    std::size_t employerColumn, employeeColumn;
    std::string table; ///< the quoted name
    std::string key;   ///< of the shape looked for, kept for its storage
    std::unordered_map<std::string, std::unique_ptr<Prepared>> shapes;
};

/// A name between square brackets.
std::string Quoted(std::string_view name);

} // namespace quillmere
