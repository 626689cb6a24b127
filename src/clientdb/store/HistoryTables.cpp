#include "clientdb/store/HistoryTables.h"

#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere {
namespace {

struct HistoryTable {
    std::string_view name, columns;
};
constexpr auto Tables = std::to_array<HistoryTable>({
    {OperationTable, "[Number] INTEGER PRIMARY KEY,[Words] TEXT,[Who] TEXT,[Moment] TEXT,[First] INTEGER,"
                     "[Last] INTEGER,[Bytes] INTEGER,[Undoes] INTEGER,[Root] INTEGER,[Backward] INTEGER"},
    {ChangeTable, "[Number] INTEGER PRIMARY KEY,[Operation] INTEGER,[EmployerName] TEXT,[EmployeeName] TEXT,"
                  "[Records] INTEGER,[Changes] BLOB"},
});

} // namespace

std::string CreateHistoryTableText(std::string_view table, std::string_view condition)
{
    const auto* const found = std::ranges::find(Tables, table, &HistoryTable::name);
    return fmt::format("CREATE TABLE {}{}({})", condition, Quoted(table), found->columns);
}

void HistoryLook::Meet(std::string_view name, std::string_view table, std::string_view statement)
{
    const auto isOfHistory = [&](std::string_view known) { return UpperCase(known) == UpperCase(table); };
    if (std::ranges::none_of(Tables, isOfHistory, &HistoryTable::name))
        return;
    const auto* const known = std::ranges::find(Tables, name, &HistoryTable::name);
    if (known == Tables.end() || statement != CreateHistoryTableText(known->name))
        foreign = true;
    ++met;
}

HistoryState HistoryLook::Found() const
{
    if (met == 0)
        return HistoryState::None;
    return foreign || met != Tables.size() ? HistoryState::Foreign : HistoryState::Ready;
}

std::string HistoryBytesText()
{
    return fmt::format("SELECT CAST(sum([Bytes]) AS BIGINT) FROM [{}]", OperationTable);
}

void ThinHistory(Database::Connection& connection, std::int64_t most, std::int64_t kept)
{
    if (connection.HistoryBytes() <= most)
        return;
    std::int64_t bytes = 0, oldest = 0;
    {
        Run operations(connection.Own(
            fmt::format("SELECT [Number],[Bytes] FROM {} ORDER BY [Number] DESC", Quoted(OperationTable))));
        while (operations.Step() && (oldest == 0 || bytes + operations.Number(1) <= kept)) {
            oldest = operations.Number(0);
            bytes += operations.Number(1);
        }
    }
    // What is left of an undo without its root says nothing.
    for (const std::string& text :
         {fmt::format("DELETE FROM {} WHERE [Number]<?1 OR [Root] BETWEEN 1 AND ?1-1", Quoted(OperationTable)),
          fmt::format("DELETE FROM {0} WHERE [Operation]<?1 AND [Number]<(SELECT max([Number]) FROM {0})",
                      Quoted(ChangeTable))}) {
        Run thin(connection.Own(text));
        thin.Bind(oldest).Change();
    }
}

} // namespace quillmere
