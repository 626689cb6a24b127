#include "clientdb/store/TableStatements.h"

#include "clientdb/store/Connection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <vector>

namespace quillmere {

std::string Quoted(std::string_view name)
{
    return fmt::format("[{}]", name);
}

TableStatements::TableStatements(Database::Connection& of, const TableLayout& tableLayout)
    : connection(of),
      layout(tableLayout),
      fields(FieldsOf(tableLayout)),
      employerColumn(fields.Find("EmployerName")),
      employeeColumn(fields.Find("EmployeeName")),
      table(Quoted(tableLayout.name))
{
}

template<class MakeText>
Prepared& TableStatements::Shape(char kind, std::span<const std::uint16_t> columns, MakeText text)
{
    key.assign(1, kind);
    const bool holds = std::string_view("KkSsRrnef").find(kind) != std::string_view::npos && connection.HoldsRecords();
    if (holds)
        key.push_back('\0');
    if (!columns.empty())
        key.append(reinterpret_cast<const char*>(columns.data()), columns.size_bytes());
    const auto [found, isNew] = shapes.try_emplace(key, nullptr);
    if (isNew)
        try {
            found->second = connection.Prepare(holds ? text() + std::string(connection.HoldWords()) : text());
        } catch (...) {
            shapes.erase(found);
            throw;
        }
    return *found->second;
}

std::string TableStatements::Columns(std::span<const std::uint16_t> columns, bool all, std::string_view between) const
{
    std::string text;
    const std::size_t count = all ? fields.Count() : columns.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            text += between;
        text += Quoted(fields.All()[all ? i : columns[i]].name);
    }
    return text.empty() ? "NULL" : text;
}

Prepared& TableStatements::Seek(const TableIndex& index, std::span<const std::uint16_t> columns, bool all)
{
    const bool twoParts = !index.part2.empty();
    const char kind = all ? (twoParts ? 'K' : 'k') : (twoParts ? 'S' : 's');
    return Shape(kind, columns, [&] {
        const std::string text =
            fmt::format("SELECT rowid,{} FROM {} WHERE [{}]=?", Columns(columns, all, ","), table, index.part1);
        return twoParts ? fmt::format("{} AND [{}]=?", text, index.part2) : text;
    });
}

Prepared& TableStatements::Read(std::span<const std::uint16_t> columns, bool all)
{
    return Shape(all ? 'R' : 'r', columns,
                 [&] { return fmt::format("SELECT {} FROM {} WHERE rowid=?", Columns(columns, all, ","), table); });
}

Prepared& TableStatements::ReadFirst()
{
    return Shape('f', {}, [&] {
        return fmt::format("SELECT rowid,{} FROM {} ORDER BY rowid LIMIT 1", Columns({}, true, ","), table);
    });
}

Prepared& TableStatements::ReadNumbered()
{
    return Shape('n', {},
                 [&] { return fmt::format("SELECT rowid,{} FROM {} WHERE rowid=?", Columns({}, true, ","), table); });
}

Prepared& TableStatements::ReadList(std::span<const std::uint16_t> columns, bool all)
{
    return Shape(all ? 'L' : 'l', columns, [&] {
        return fmt::format(fmt::runtime(connection.ReadListWords()), table, Columns(columns, all, ","));
    });
}

Prepared& TableStatements::ReadAfter(std::span<const std::uint16_t> columns, bool all)
{
    return Shape(all ? 'A' : 'a', columns, [&] {
        return fmt::format("SELECT rowid,{} FROM {} WHERE rowid>? ORDER BY rowid LIMIT ?", Columns(columns, all, ","),
                           table);
    });
}

Prepared& TableStatements::Order(const TableIndex* index, bool ofEmployer)
{
    const int parts = index == nullptr ? 0 : index->part2.empty() ? 1 : 2;
    return Shape(static_cast<char>('0' + parts + (ofEmployer ? 3 : 0)), {}, [&] {
        return fmt::format("SELECT rowid FROM {}{}{}{}", table, ofEmployer ? " WHERE [EmployerName]=?" : "",
                           parts > 0 ? fmt::format(" ORDER BY [{}]", index->part1) : "",
                           parts > 1 ? fmt::format(",[{}]", index->part2) : "");
    });
}

Prepared& TableStatements::Exists()
{
    return Shape('e', {}, [&] { return fmt::format("SELECT 1 FROM {} WHERE rowid=?", table); });
}

Prepared& TableStatements::Insert(std::span<const std::uint16_t> columns, bool withRowid)
{
    return Shape(withRowid ? 'N' : 'i', columns, [&] {
        if (columns.empty() && !withRowid)
            return fmt::format("INSERT INTO {} DEFAULT VALUES{}", table, connection.AddedWords());
        const std::vector<std::string_view> places(columns.size() + (withRowid ? 1 : 0), "?");
        const std::string_view rowid = columns.empty() ? "rowid" : "rowid,";
        return fmt::format("INSERT INTO {}({}{}) VALUES({}){}", table, withRowid ? rowid : "",
                           columns.empty() ? std::string() : Columns(columns, false, ","), fmt::join(places, ","),
                           connection.AddedWords());
    });
}

Prepared& TableStatements::InsertWhole(bool withRowid)
{
    return Shape(withRowid ? 'I' : 'J', {}, [&] {
        const std::vector<std::string_view> places(fields.Count() + (withRowid ? 1 : 0), "?");
        return fmt::format("INSERT INTO {}({}{}) VALUES({}){}", table, withRowid ? "rowid," : "",
                           Columns({}, true, ","), fmt::join(places, ","), connection.AddedWords());
    });
}

Prepared& TableStatements::Update(std::span<const std::uint16_t> columns)
{
    return Shape('u', columns, [&] {
        return fmt::format("UPDATE {} SET {}=? WHERE rowid=?", table, Columns(columns, false, "=?,"));
    });
}

Prepared& TableStatements::Delete()
{
    return Shape('d', {}, [&] { return fmt::format("DELETE FROM {} WHERE rowid=?", table); });
}

Prepared& TableStatements::Employers()
{
    return Shape('E', {}, [&] {
        return fmt::format("SELECT [EmployerName],min(rowid) FROM {} WHERE [EmployerName] IS NOT NULL "
                           "GROUP BY [EmployerName] ORDER BY 2",
                           table);
    });
}

} // namespace quillmere
