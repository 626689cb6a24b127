#include "clientdb/store/TableCopy.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <limits>

namespace quillmere {
namespace {

using Kind = TableBeside::Kind;

constexpr int RecordsAtATime = 256;
constexpr std::int64_t BeforeAll = std::numeric_limits<std::int64_t>::min();

/// The columns of a run stand behind the number of its record.
bool IsNull(const Run& run, Kind kind, int column)
{
    return kind != Kind::Bytes && !run.TextOrNull(column);
}

void BindColumn(Run& write, const Run& read, Kind kind, int column)
{
    if (IsNull(read, kind, column))
        write.BindNull();
    else if (kind == Kind::Number)
        write.Bind(read.Number(column));
    else if (kind == Kind::Text)
        write.Bind(read.Text(column));
    else
        write.BindBytes(read.Bytes(column));
}

bool IsSame(const Run& one, const Run& other, Kind kind, int column)
{
    if (kind == Kind::Text)
        return one.TextOrNull(column) == other.TextOrNull(column);
    if (kind == Kind::Bytes)
        return one.Bytes(column) == other.Bytes(column);
    return IsNull(one, kind, column) == IsNull(other, kind, column) && one.Number(column) == other.Number(column);
}

[[noreturn]] void FailOfDifference(std::string_view table, std::string_view where)
{
    throw StoreError(SQLITE_IOERR, fmt::format("What was copied is not the same: {}, {}", table, where), {});
}

} // namespace

TableCopy::TableCopy(Database::Connection& source, Database::Connection& target)
    : from(source), into(target), copied{.last = BeforeAll}, compared{.last = BeforeAll}
{
    for (const TableLayout& layout : ClientTables()) {
        std::vector<TableBeside::Column> columns;
        for (const Field& field : FieldsOf(layout).All())
            columns.push_back({field.name, Kind::Text});
        Add(layout.name, "rowid", std::move(columns));
    }
    for (const TableBeside& table : TablesBeside())
        AddBeside(table);
}

void TableCopy::Add(std::string_view name, std::string_view number, std::vector<TableBeside::Column> columns)
{
    const std::string table = Quoted(name), key = Quoted(number);
    std::vector<std::string> names{key};
    for (const TableBeside::Column& column : columns)
        names.push_back(Quoted(column.name));
    const std::vector<std::string_view> places(names.size(), "?");
    const std::string all = fmt::format("{}", fmt::join(names, ","));
    into.Execute(fmt::format("DELETE FROM {}", table));
    records += from.Number(fmt::format("SELECT count(*) FROM {}", table));
    tables.push_back(
        {.name = std::string(name),
         .number = std::string(number),
         .read = fmt::format("SELECT {0} FROM {1} WHERE {2}>? ORDER BY {2} LIMIT {3}", all, table, key, RecordsAtATime),
         .insert = fmt::format("INSERT INTO {}({}) VALUES({})", table, all, fmt::join(places, ",")),
         .columns = std::move(columns)});
}

/// A table that is made where it is needed, and may be somebody else's.
void TableCopy::AddBeside(const TableBeside& table)
{
    const std::string there = into.TableWords(table.name);
    if (from.TableWords(table.name) == table.words) {
        if (there.empty())
            into.Execute(table.words);
        Add(table.name, table.number, table.columns);
    } else if (there == table.words) {
        into.Execute(fmt::format("DELETE FROM {}", Quoted(table.name)));
    }
}

bool TableCopy::CopyOn()
{
    return GoOn(copied, &TableCopy::CopyPiece);
}

void TableCopy::Copy()
{
    while (CopyOn()) {
    }
}

void TableCopy::Compare()
{
    while (CompareOn()) {
    }
}

bool TableCopy::CompareOn()
{
    return GoOn(compared, &TableCopy::ComparePiece);
}

bool TableCopy::GoOn(Way& way, int (TableCopy::*piece)(const Table&, Way&))
{
    if (way.table == tables.size())
        return false;
    const int count = (this->*piece)(tables[way.table], way);
    way.done += count;
    if (count < RecordsAtATime) {
        ++way.table;
        way.last = BeforeAll;
    }
    return true;
}

int TableCopy::CopyPiece(const Table& table, Way& way)
{
    int count = 0;
    Run read(from.Own(table.read));
    for (read.Bind(way.last); read.Step(); ++count) {
        way.last = read.Number(0);
        Run write(into.Own(table.insert));
        write.Bind(way.last);
        int column = 0;
        for (const TableBeside::Column& of : table.columns)
            BindColumn(write, read, of.kind, ++column);
        write.Post();
    }
    if (count < RecordsAtATime)
        into.CountOn(table.name, table.number);
    return count;
}

int TableCopy::ComparePiece(const Table& table, Way& way)
{
    int count = 0;
    Run one(from.Own(table.read)), other(into.Own(table.read));
    one.Bind(way.last);
    other.Bind(way.last);
    for (; one.Step(); ++count) {
        way.last = one.Number(0);
        if (!other.Step() || other.Number(0) != way.last)
            FailOfDifference(table.name, fmt::format("record {}", way.last));
        int column = 0;
        for (const TableBeside::Column& of : table.columns)
            if (!IsSame(one, other, of.kind, ++column))
                FailOfDifference(table.name, fmt::format("record {}, {}", way.last, of.name));
    }
    if (other.Step())
        FailOfDifference(table.name, fmt::format("record {} more", other.Number(0)));
    return count;
}

} // namespace quillmere
