#include "clientdb/store/Schema.h"

#include "clientdb/store/EachField.h"

#include <fmt/format.h>
#include <map>
#include <set>
#include <string>

namespace quillmere {
namespace {

/// What makes each table and index of a client database, by its name.
using Statements = std::map<std::string, std::string, std::less<>>;

const Statements& ClientStatements()
{
    static const Statements all = [] {
        Statements made;
        for (const TableLayout& table : ClientTables()) {
            made.emplace(table.name, CreateTableText(table));
            for (const TableIndex& index : table.indexes)
                made.emplace(fmt::format("{}_{}", table.name, index.name), CreateIndexText(table, index));
        }
        return made;
    }();
    return all;
}

[[noreturn]] void Fail(std::string_view table, std::string_view what)
{
    throw StoreError(SQLITE_CORRUPT, fmt::format("its table {} {}", table, what), "");
}

std::set<std::string, std::less<>> FieldsInFile(Database::Connection& connection, std::string_view table)
{
    std::set<std::string, std::less<>> found;
    Run columns(connection.Prepare("SELECT name FROM pragma_table_xinfo(?)"));
    for (columns.Bind(table); columns.Step();)
        found.emplace(columns.Text(0));
    return found;
}

/// Fails for a table that is not as it must be, with the first field that is too much or missing.
[[noreturn]] void FailOf(Database::Connection& connection, std::string_view table)
{
    Run kind(connection.Prepare("SELECT type FROM sqlite_schema WHERE name=?"));
    if (!kind.Bind(table).Step())
        Fail(table, "is missing");
    if (kind.Text(0) != "table")
        Fail(table, "is not a table");
    const TableFields& fields = FieldsOf(FindTable(table));
    const auto found = FieldsInFile(connection, table);
    for (const Field& field : fields.All())
        if (!found.contains(field.name))
            Fail(table, "has no field " + field.name);
    for (const std::string& name : found)
        if (fields.Find(name) == TableFields::None)
            Fail(table, "has a field " + name + " that is not of this program");
    Fail(table, "is not as this program makes it");
}

} // namespace

std::string CreateTableText(const TableLayout& table)
{
    std::string text = "CREATE TABLE " + Quoted(table.name) + "(";
    // Each start goes through all fields of all tables here, so their names are not made one by one.
    EachField(table, [&text](const FieldStem& field, int number) {
        text.append("[").append(field.stem);
        if (number != 0)
            text.append(std::to_string(number));
        text.append("] TEXT,");
    });
    text.back() = ')';
    return text;
}

std::string CreateIndexText(const TableLayout& table, const TableIndex& index)
{
    return fmt::format("CREATE UNIQUE INDEX [{}_{}] ON [{}]([{}]{})", table.name, index.name, table.name, index.part1,
                       index.part2.empty() ? "" : fmt::format(",[{}]", index.part2));
}

HistoryState RequireClientTables(Database::Connection& connection)
{
    const Statements& expected = ClientStatements();
    std::set<std::string, std::less<>> met;
    HistoryLook history;
    Run schema(connection.Prepare("SELECT name,tbl_name,sql FROM sqlite_schema"));
    while (schema.Step()) {
        const std::string_view name = schema.Text(0), table = schema.Text(1);
        if (!expected.contains(table)) {
            history.Meet(name, table, schema.Text(2));
            continue;
        }
        const auto statement = expected.find(name);
        if (statement == expected.end())
            Fail(table, fmt::format("has {} hung on it, which is not of this program", name));
        if (statement->second != schema.Text(2))
            FailOf(connection, table);
        met.emplace(name);
    }
    for (const TableLayout& table : ClientTables()) {
        if (!met.contains(table.name))
            FailOf(connection, table.name);
        for (const TableIndex& index : table.indexes)
            if (!met.contains(fmt::format("{}_{}", table.name, index.name)))
                Fail(table.name, fmt::format("has no index {}", index.name));
    }
    return history.Found();
}

void RequireReferenceTable(Database::Connection& connection, const TableLayout& table)
{
    Run hidden(connection.Prepare("SELECT 1 FROM sqlite_schema AS found WHERE name=? COLLATE NOCASE AND (type<>'table' "
                                  "OR 'rowid' COLLATE NOCASE IN (SELECT name FROM pragma_table_xinfo(found.name)))"));
    if (hidden.Bind(table.name).Step())
        Fail(table.name, "does not number its records");
}

} // namespace quillmere
