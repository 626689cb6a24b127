#pragma once

#include "clientdb/store/HistoryTables.h"

/// The statements that make the tables of a database, and the look whether a file has the tables that they make.
namespace quillmere {

std::string CreateTableText(const TableLayout& table);
std::string CreateIndexText(const TableLayout& table, const TableIndex& index);

/// Throws StoreError, which says what is wrong, unless every table of a client database and its indexes are there as
/// this program makes them, with nothing hung on them. Other tables may stand beside; what of the change history does
/// is returned.
HistoryState RequireClientTables(Database::Connection& connection);

/// Throws StoreError if a table of the reference database, which somebody else makes, is a view, or has a field that
/// hides the numbers of its records.
void RequireReferenceTable(Database::Connection& connection, const TableLayout& table);

} // namespace quillmere
