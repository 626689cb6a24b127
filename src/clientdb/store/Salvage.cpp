#include "clientdb/store/Salvage.h"

#include "clientdb/store/FileEngine.h"
#include "clientdb/store/Schema.h"
#include "frame/CheckedFile.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>

namespace quillmere {

namespace {

using RowId = std::int64_t;

/// So many numbers in a row that cannot be read are stepped over, more than a page of pages holds; and so many in all.
constexpr int MostDeadInARow = 4096, MostDead = 20'000;

// ---- the damaged file in memory

/// The bytes of a damaged database, where they can be put right and disturb nobody.
class Image {
public:
    Image(const std::filesystem::path& damaged, const std::filesystem::path& emptyTemplate)
        : bytes(ReadFile(damaged)), empty(ReadFile(emptyTemplate)), schemaPages(SchemaPagesOf(emptyTemplate))
    {
        bytes.resize((std::max(bytes.size(), empty.size()) + PageSize - 1) / PageSize * PageSize);
        TakeHead();
    }

    /// Opens the image; with the template's description of the tables if its own cannot be read.
    std::unique_ptr<FileConnection> Open(bool& schemaWasLost)
    {
        std::unique_ptr<FileConnection> opened = OpenAsItIs();
        try {
            RequireClientTables(*opened);
            schemaWasLost = false;
        } catch (const StoreError&) {
            schemaWasLost = true;
            opened->Close();
            for (const std::size_t page : schemaPages)
                bytes.replace((page - 1) * PageSize, PageSize, empty, (page - 1) * PageSize, PageSize);
            TakeHead();
            opened = OpenAsItIs();
        }
        return opened;
    }

    std::size_t Size() const { return bytes.size(); }

private:
    static constexpr std::size_t PageSize = 4096; ///< of every client database: they are all made from the template

    /// The pages of a template that hold the description of its tables: all but those with which tables and indexes
    /// begin.
    static std::vector<std::size_t> SchemaPagesOf(const std::filesystem::path& file)
    {
        FileConnection connection(file, SQLITE_OPEN_READWRITE);
        std::set<std::int64_t> roots;
        for (Run root(connection.Prepare("SELECT rootpage FROM sqlite_schema")); root.Step();)
            roots.insert(root.Number(0));
        std::vector<std::size_t> pages;
        const std::int64_t last = connection.Pragma("PRAGMA page_count");
        for (std::int64_t page = 1; page <= last; ++page)
            if (!roots.contains(page))
                pages.push_back(static_cast<std::size_t>(page));
        return pages;
    }

    /// The head of the file is that of the template, but for the number of pages; what is free is not needed.
    void TakeHead()
    {
        constexpr std::size_t Head = 100, PagesAt = 28, FreeAt = 32, VersionsAt = 24, ValidAt = 92;
        bytes.replace(0, Head, empty, 0, Head);
        const auto pages = static_cast<std::uint32_t>(bytes.size() / PageSize);
        for (std::size_t i = 0; i < 4; ++i)
            bytes[PagesAt + i] = static_cast<char>(pages >> (24 - 8 * i));
        bytes.replace(FreeAt, 8, 8, '\0');
        bytes.replace(ValidAt, 4, bytes, VersionsAt, 4);
    }

    std::unique_ptr<FileConnection> OpenAsItIs()
    {
        auto connection = std::make_unique<FileConnection>(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        const auto size = static_cast<sqlite3_int64>(bytes.size());
        const int result =
            sqlite3_deserialize(connection->handle, "main", reinterpret_cast<unsigned char*>(bytes.data()), size, size,
                                SQLITE_DESERIALIZE_READONLY);
        if (result != SQLITE_OK)
            throw StoreError(result, sqlite3_errstr(result), {});
        connection->Pragma("PRAGMA cell_size_check=ON");
        return connection;
    }

    std::string bytes, empty;
    std::vector<std::size_t> schemaPages;
};

// ---- one table

/// A table to be read, and the indexes by which its records are known.
struct TableToRead {
    std::string name;
    std::vector<std::string> columns;
    std::span<const TableIndex> indexes = {};
    bool textsOnly = true;
};

class TableSalvage {
public:
    TableSalvage(FileConnection& from, FileConnection& into, const TableToRead& table, std::size_t mostRows)
        : from(from),
          into(into),
          table(table),
          columns(fmt::format("[{}]", fmt::join(table.columns, "],["))),
          insert(into.handle, fmt::format("INSERT OR IGNORE INTO [{}](rowid,{}) VALUES(?{})", table.name, columns,
                                          Repeated(",?", table.columns.size()))),
          mostRows(mostRows)
    {
    }

    /// So many records were read.
    std::int64_t Read(std::vector<NotRead>& lost)
    {
        const bool isWhole = Step(Up);
        ReadIndexes();
        if (!isWhole)
            Step(Down);
        ReadAll(lost);
        TellDead(lost);
        return written;
    }

private:
    struct Direction {
        std::string_view comparison, order;
        RowId first;
        int step;
    };
    static constexpr Direction Up{">=", "ASC", 1, 1}, Down{"<=", "DESC", std::numeric_limits<RowId>::max(), -1};

    static std::string Repeated(std::string_view text, std::size_t times)
    {
        std::string all;
        for (; times > 0; --times)
            all += text;
        return all;
    }

    /// How far a walk has come.
    struct Walked {
        std::optional<RowId> last;
        bool anyNew = false;
        bool toTheEnd = false;
    };

    /// Whether there is a next row; nothing if it cannot be read.
    std::optional<bool> Next(Run& rows)
    {
        try {
            return rows.Step();
        } catch (const StoreError& failure) {
            why = failure.what();
            return std::nullopt;
        }
    }

    /// Meets the numbers from one on until the end, or until something cannot be read.
    Walked Walk(Prepared& prepared, const Direction& direction, RowId start)
    {
        Walked walked;
        Run rows(prepared);
        rows.Bind(start);
        for (std::size_t row = 0; row < mostRows; ++row) {
            const std::optional<bool> next = Next(rows);
            walked.toTheEnd = next == false;
            if (next != true)
                break;
            const RowId number = rows.Number(0);
            // What is out of order is no way on.
            const RowId furthest = walked.last.value_or(start);
            walked.last = direction.step > 0 ? std::max(furthest, number) : std::min(furthest, number);
            walked.anyNew |= met.insert(number).second;
        }
        return walked;
    }

    /// Walks over the table, and steps over what cannot be read. True if there was nothing such.
    bool Step(const Direction& direction)
    {
        FilePrepared statement(from.handle, fmt::format("SELECT rowid FROM [{}] WHERE rowid{}? ORDER BY rowid {}",
                                                        table.name, direction.comparison, direction.order));
        RowId next = direction.first;
        int deadInARow = 0, deadInAll = 0;
        while (deadInARow < MostDeadInARow && deadInAll < MostDead) {
            const Walked walked = Walk(statement, direction, next);
            if (walked.toTheEnd)
                return deadInAll == 0;
            if (walked.anyNew)
                deadInARow = 0;
            if (walked.last) {
                next = *walked.last;
            } else if (next == Down.first) {
                // Nobody knows where the table ends but an index, if it does.
                if (known.empty())
                    return false;
                next = known.rbegin()->first + 1;
            } else {
                dead.insert(next);
            }
            ++deadInARow;
            ++deadInAll;
            if (direction.step < 0 ? next <= Up.first : next == Down.first)
                return false;
            next += direction.step;
        }
        return false;
    }

    /// Writes a record into the new database. False if another one has its key.
    bool Write(sqlite3_stmt* row)
    {
        insert.Reset();
        for (int column = 0; column <= static_cast<int>(table.columns.size()); ++column)
            sqlite3_bind_value(insert.Raw(), column + 1, sqlite3_column_value(row, column));
        if (const int result = sqlite3_step(insert.Raw()); result != SQLITE_DONE)
            throw StoreError(result, sqlite3_errmsg(into.handle), {});
        return sqlite3_changes(into.handle) > 0;
    }

    /// Each field of the layouts is a text, or null: whatever else is met was never written.
    bool IsPlausible(sqlite3_stmt* row) const
    {
        for (int column = 1; table.textsOnly && column <= static_cast<int>(table.columns.size()); ++column)
            if (const int type = sqlite3_column_type(row, column); type != SQLITE_TEXT && type != SQLITE_NULL)
                return false;
        return true;
    }

    /// Finds out from the indexes, both ways, who must be there.
    void ReadIndexes()
    {
        for (const TableIndex& index : table.indexes) {
            bool complete = false;
            for (const std::string_view order : {"ASC", "DESC"})
                complete |= ReadIndex(index, order);
            allAreKnown |= complete;
        }
    }

    bool ReadIndex(const TableIndex& index, std::string_view order)
    {
        const bool twoParts = !index.part2.empty();
        try {
            FilePrepared statement(
                from.handle,
                fmt::format("SELECT rowid,[{0}]{1} FROM [{2}] INDEXED BY [{2}_{3}] ORDER BY [{0}] {4}{5}", index.part1,
                            twoParts ? fmt::format(",[{}]", index.part2) : "", table.name, index.name, order,
                            twoParts ? fmt::format(",[{}] {}", index.part2, order) : ""));
            Run entries(statement);
            for (std::size_t row = 0; row < mostRows; ++row) {
                if (!entries.Step())
                    return true;
                if (entries.Number(0) > 0 && sqlite3_column_type(statement.Raw(), 1) == SQLITE_TEXT)
                    known.try_emplace(entries.Number(0), twoParts
                                                             ? fmt::format("{} ({})", entries.Text(2), entries.Text(1))
                                                             : std::string(entries.Text(1)));
            }
        } catch (const StoreError&) {
            // So many are known.
        }
        return false;
    }

    /// Seeks every record that has been met or is known, so that one counts only in its own place, and tells of those
    /// that are lost.
    void ReadAll(std::vector<NotRead>& lost)
    {
        FilePrepared statement(from.handle,
                               fmt::format("SELECT rowid,{} FROM [{}] WHERE rowid=?", columns, table.name));
        for (const auto& [number, who] : known)
            met.insert(number);
        for (const RowId number : met) {
            Run row(statement);
            row.Bind(number);
            const std::optional<bool> found = Next(row);
            const auto who = known.find(number);
            const auto tell = [&](std::string_view reason) {
                lost.push_back({table.name, who == known.end() ? fmt::format("number {}", number) : who->second,
                                std::string(reason)});
            };
            if (!found)
                tell(why);
            else if (!*found && allAreKnown && who == known.end())
                continue; // met in the wrong place, where it is nobody's
            else if (!*found || !IsPlausible(statement.Raw()))
                tell("its place in the table is lost");
            else if (!Write(statement.Raw()))
                tell("another record has its key");
            else
                ++written;
            dead.erase(number);
        }
    }

    /// Where nobody knows who was there, the numbers that could not be read say where there may have been somebody.
    void TellDead(std::vector<NotRead>& lost) const
    {
        if (allAreKnown)
            return;
        for (auto number = dead.begin(); number != dead.end();) {
            const RowId first = *number;
            RowId last = first;
            for (++number; number != dead.end() && *number == last + 1; ++number)
                last = *number;
            lost.push_back({table.name,
                            first == last ? fmt::format("number {}", first)
                                          : fmt::format("numbers {} to {}, as far as they were in use", first, last),
                            why});
        }
    }

    FileConnection& from;
    FileConnection& into;
    const TableToRead& table;
    std::string columns;
    FilePrepared insert;
    std::size_t mostRows;
    std::set<RowId> met;                ///< the numbers of the records
    std::set<RowId> dead;               ///< numbers that could not be stepped on
    std::map<RowId, std::string> known; ///< who is there by the indexes
    bool allAreKnown = false;
    std::int64_t written = 0;
    std::string why; ///< the store's words for what it could not read last
};

// ---- the whole

/// The tables of the layouts, and those that stand beside them, which are made as they were.
std::vector<TableToRead> TablesOf(FileConnection& from, FileConnection& into)
{
    std::vector<TableToRead> tables;
    for (const TableLayout& layout : ClientTables()) {
        TableToRead table{.name = std::string(layout.name), .columns = {}, .indexes = layout.indexes};
        for (const Field& field : FieldsOf(layout).All())
            table.columns.push_back(field.name);
        tables.push_back(std::move(table));
    }
    const std::size_t ofLayouts = tables.size();
    const auto isOfLayouts = [&](std::string_view name) {
        return std::ranges::any_of(std::span(tables).first(ofLayouts),
                                   [name](const TableToRead& table) { return table.name == name; });
    };
    try {
        for (Run entry(from.Prepare("SELECT type,tbl_name,sql FROM sqlite_schema WHERE sql IS NOT NULL "
                                    "AND name NOT LIKE 'sqlite%' AND type IN ('table','index') ORDER BY type DESC"));
             entry.Step();) {
            const std::string name(entry.Text(1));
            if (isOfLayouts(name))
                continue;
            into.Execute(std::string(entry.Text(2)));
            if (entry.Text(0) != "table")
                continue;
            TableToRead table{.name = name, .columns = {}, .textsOnly = false};
            Run field(into.Prepare("SELECT name FROM pragma_table_info(?)"));
            for (field.Bind(name); field.Step();)
                table.columns.emplace_back(field.Text(0));
            tables.push_back(std::move(table));
        }
    } catch (const StoreError&) {
        // What stands beside the tables of the layouts is not known any more.
    }
    return tables;
}

Salvaged ReadInto(Image& image, const std::filesystem::path& target)
{
    Salvaged salvaged;
    bool schemaWasLost = false;
    const std::unique_ptr<FileConnection> from = image.Open(schemaWasLost);
    FileConnection into(target, SQLITE_OPEN_READWRITE);
    into.Pragma("PRAGMA journal_mode=MEMORY");
    into.Pragma("PRAGMA synchronous=OFF");
    into.Execute("BEGIN");
    into.Execute("DELETE FROM [HNotepad2]"); // the template's own list
    constexpr std::size_t LeastBytesOfRow = 4;
    for (const TableToRead& table : TablesOf(*from, into))
        salvaged.records += TableSalvage(*from, into, table, image.Size() / LeastBytesOfRow).Read(salvaged.lost);
    into.Execute("COMMIT");
    if (schemaWasLost)
        salvaged.lost.push_back({"History", "all of it, if there was one", "the description of the tables is damaged"});
    if (salvaged.records == 0)
        throw StoreError(SQLITE_CORRUPT, "nothing of it can be read", {});
    return salvaged;
}

} // namespace

Salvaged SalvageDatabase(const std::filesystem::path& damaged, const std::filesystem::path& emptyTemplate,
                         const std::filesystem::path& target)
{
    Image image(damaged, emptyTemplate);
    Salvaged salvaged;
    MakeFileChecked(
        target,
        [&](const std::filesystem::path& place) {
            std::filesystem::copy_file(emptyTemplate, place, std::filesystem::copy_options::overwrite_existing);
            salvaged = ReadInto(image, place);
        },
        [&](const std::filesystem::path& complete) {
            salvaged.state = LookAtDatabase(complete);
            if (!salvaged.state.IsWhole())
                throw StoreError(SQLITE_CORRUPT, salvaged.state.faults.front(), {});
        });
    return salvaged;
}

} // namespace quillmere
