#include "clientdb/store/ServerCopy.h"

#include "clientdb/store/FileEngine.h"
#include "clientdb/store/FormMarks.h"
#include "clientdb/store/HistoryTables.h"
#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/Template.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <limits>

namespace quillmere {
namespace {

constexpr std::int64_t RecordsAtATime = 512;

void CopyTable(ServerConnection& from, FileConnection& into, const TableLayout& layout)
{
    TableStatements& source = from.Statements(layout);
    TableStatements& target = into.Statements(layout);
    const std::size_t count = source.Fields().Count();
    std::int64_t last = std::numeric_limits<std::int64_t>::min();
    for (bool more = true; more;) {
        more = false;
        Run read(source.ReadAfter({}, true));
        for (read.Bind(last).Bind(RecordsAtATime); read.Step(); more = true) {
            last = read.Number(0);
            Run write(target.InsertWhole(true));
            write.Bind(last);
            for (int column = 1; column <= static_cast<int>(count); ++column)
                if (const std::optional<std::string_view> text = read.TextOrNull(column))
                    write.Bind(*text);
                else
                    write.BindNull();
            write.Change();
        }
    }
}

enum class Kind { Number, Text, Bytes };

/// A table that stands beside those of the layouts.
struct TableBeside {
    std::string_view name;
    std::string made;
    std::vector<std::pair<std::string_view, Kind>> columns;
};

std::vector<TableBeside> TablesBeside()
{
    using enum Kind;
    return {{OperationTable,
             CreateHistoryTableText(OperationTable),
             {{"Number", Number},
              {"Words", Text},
              {"Who", Text},
              {"Moment", Text},
              {"First", Number},
              {"Last", Number},
              {"Bytes", Number},
              {"Undoes", Number},
              {"Root", Number},
              {"Backward", Number}}},
            {ChangeTable,
             CreateHistoryTableText(ChangeTable),
             {{"Number", Number},
              {"Operation", Number},
              {"EmployerName", Text},
              {"EmployeeName", Text},
              {"Records", Number},
              {"Changes", Bytes}}},
            {"FormMarks",
             std::string(CreateMarks),
             {{"EmployerName", Text}, {"EmployeeName", Text}, {"Mark", Number}, {"Day", Text}, {"Form", Text}}}};
}

void CopyBeside(ServerConnection& from, FileConnection& into, const TableBeside& table)
{
    std::vector<std::string> names;
    for (const auto& [name, kind] : table.columns)
        names.push_back(Quoted(name));
    const std::vector<std::string_view> places(names.size(), "?");
    into.Execute(table.made);
    Prepared& insert = into.Own(fmt::format("INSERT INTO {}({}) VALUES({})", Quoted(table.name), fmt::join(names, ","),
                                            fmt::join(places, ",")));
    Run read(from.Own(fmt::format("SELECT {} FROM {}", fmt::join(names, ","), Quoted(table.name))));
    while (read.Step()) {
        Run write(insert);
        for (int column = 0; column < static_cast<int>(names.size()); ++column)
            switch (table.columns[static_cast<std::size_t>(column)].second) {
            case Kind::Number:
                write.Bind(read.Number(column));
                break;
            case Kind::Text:
                write.Bind(read.Text(column));
                break;
            case Kind::Bytes:
                write.BindBytes(read.Bytes(column));
                break;
            }
        write.Change();
    }
}

} // namespace

DatabaseState CopyServerIntoFile(const ServerService& service, const std::filesystem::path& empty)
{
    FillWithTables(empty);
    const std::shared_ptr<ServerConnection> from = OpenServer(service, OpenMode::ReadOnly, nullptr);
    FileConnection into(empty, SQLITE_OPEN_READWRITE);
    // A file that vanishes if anything fails has nothing to go back to; it is synced once, when it is complete.
    into.Pragma("PRAGMA journal_mode=MEMORY");
    into.Pragma("PRAGMA synchronous=OFF");
    from->BeginReading();
    into.Execute("BEGIN");
    into.Execute("DELETE FROM [HNotepad2]"); // the template's own list
    for (const TableLayout& layout : ClientTables())
        CopyTable(*from, into, layout);
    if (from->LookAtHistory() == HistoryState::Ready)
        for (const TableBeside& table : TablesBeside())
            CopyBeside(*from, into, table);
    into.Execute("COMMIT");
    return CountIn(*from);
}

} // namespace quillmere
