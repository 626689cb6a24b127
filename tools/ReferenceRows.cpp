#include "ReferenceRows.h"

#include "clientdb/store/Recordset.h"
#include "clientdb/store/TableLayouts.h"
#include "clientdb/store/Template.h"
#include "frame/CheckedFile.h"

#include <fmt/format.h>
#include <optional>

namespace quillmere::tools {

namespace {

/// Goes through the text once, cell by cell.
class Reader {
public:
    Reader(std::string_view text, std::string_view name) : left(text), name(name)
    {
        constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
        if (left.starts_with(ByteOrderMark))
            left.remove_prefix(ByteOrderMark.size());
    }

    /// The next row that is one; nothing at the end.
    std::optional<TextTable::Row> NextRow()
    {
        while (!left.empty() && (left.front() == '#' || left.front() == '\n' || left.front() == '\r'))
            SkipLine();
        if (left.empty())
            return std::nullopt;
        TextTable::Row row{.line = line, .cells = {}};
        do
            row.cells.push_back(NextCell());
        while (Take(','));
        if (!left.empty() && left.front() != '\n' && left.front() != '\r')
            Fail("expected a comma after the closing quote");
        SkipLine();
        return row;
    }

    [[noreturn]] void Fail(const std::string& why) const { throw BadTable(fmt::format("{}:{}: {}", name, line, why)); }

private:
    bool Take(char wanted)
    {
        if (left.empty() || left.front() != wanted)
            return false;
        left.remove_prefix(1);
        return true;
    }

    void SkipLine()
    {
        const auto end = left.find('\n');
        left.remove_prefix(end == std::string_view::npos ? left.size() : end + 1);
        ++line;
    }

    std::string NextCell()
    {
        if (!Take('"')) {
            const std::string_view cell = left.substr(0, left.find_first_of(",\r\n"));
            left.remove_prefix(cell.size());
            return std::string(cell);
        }
        std::string cell;
        int lines = 0;
        while (!left.empty()) {
            const char next = left.front();
            left.remove_prefix(1);
            if (next == '"' && !Take('"')) {
                line += lines;
                return cell;
            }
            if (next == '\n')
                ++lines;
            cell += next;
        }
        Fail("the quote is not closed");
    }

    std::string_view left;
    std::string_view name;
    int line = 1;
};

void Fill(Database& database, const TableLayout& layout, const std::filesystem::path& file)
{
    const std::string name = file.filename().string();
    const TextTable table = ReadTextTable(ReadFile(file), name);
    for (const std::string& column : table.columns)
        if (FieldsOf(layout).Find(column) == TableFields::None)
            throw BadTable(fmt::format("{}: {} has no column \"{}\"", name, layout.name, column));
    Recordset records = database.OpenRecordset(layout.name);
    for (const TextTable::Row& row : table.rows) {
        records.AddNew();
        for (std::size_t column = 0; column < table.columns.size(); ++column)
            if (!row.cells[column].empty())
                records.SetField(table.columns[column], row.cells[column]);
        records.Update();
    }
}

} // namespace

TextTable ReadTextTable(std::string_view text, std::string_view name)
{
    Reader reader(text, name);
    TextTable table;
    auto row = reader.NextRow();
    if (!row)
        reader.Fail("expected a line with the names of the columns");
    table.columns = std::move(row->cells);
    while ((row = reader.NextRow())) {
        if (row->cells.size() != table.columns.size())
            throw BadTable(fmt::format("{}:{}: expected {} cells, found {}", name, row->line, table.columns.size(),
                                       row->cells.size()));
        table.rows.push_back(std::move(*row));
    }
    return table;
}

void MakeReferenceDatabase(const std::filesystem::path& folder, const std::filesystem::path& file)
{
    std::filesystem::path part = file;
    part += ".part";
    std::filesystem::remove(part);
    try {
        CreateReferenceTables(part);
        Database database = Database::OpenReferenceDatabase(part, OpenMode::ReadWrite);
        WriteBatch batch(database);
        for (const TableLayout& layout : ReferenceTables()) {
            const auto source = folder / (std::string(layout.name) + ".csv");
            try {
                Fill(database, layout, source);
            } catch (const FileError& error) {
                throw BadTable(error.what());
            }
        }
        batch.Commit();
        database.Close();
        std::filesystem::rename(part, file);
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(part, ignored);
        throw;
    }
}

} // namespace quillmere::tools
