#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The statements that make the tables of a shared client folder, empty but for the list of currencies. Each table is
/// remarked with the words that make it in a file, so that it can be told what it is.
namespace quillmere {

/// All of them in their order, in the words of the server; the tables stand in the schema that is in use.
std::vector<std::string> CreateTableStatements();

/// What puts the first currency into its empty table.
std::string CreateCurrencies();

/// The names of a table's columns in their order, as they are compared with what the server has.
struct TableOnServer {
    std::string name, columns;
};
std::vector<TableOnServer> TablesOnServer();

/// What asks the server for this, with each table's remark; and for the unique indexes.
inline constexpr std::string_view AskForTables =
    "SELECT c.relname::text, string_agg(a.attname::text, ',' ORDER BY a.attnum), "
    "coalesce(obj_description(c.oid, 'pg_class'), '') FROM pg_class c JOIN pg_attribute a ON a.attrelid=c.oid AND "
    "a.attnum>0 AND NOT a.attisdropped WHERE c.relnamespace=current_schema()::regnamespace AND c.relkind='r' "
    "GROUP BY c.oid, c.relname";
inline constexpr std::string_view AskForIndexes =
    "SELECT c.relname::text FROM pg_index i JOIN pg_class c ON c.oid=i.indexrelid WHERE "
    "c.relnamespace=current_schema()::regnamespace AND i.indisunique AND i.indisvalid";

} // namespace quillmere
