#pragma once

#include "frame/Failure.h"
#include "frame/LibraryInUse.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Tables as text files, the way other programs write and read them.
namespace quillmere::exchange {

/// What reads and writes them.
LibraryInUse CsvLibrary();

/// A file that is no table, or a larger one than anybody's list can be. The text says which in a sentence.
class NotATable : public Failure {
public:
    explicit NotATable(const std::string& text) : Failure(0, text) {}
};

/// A larger file is refused before it is read, and a larger table as soon as it shows to be one.
inline constexpr std::uintmax_t MostBytes = 32'000'000;
inline constexpr std::size_t MostColumns = 500, MostRows = 100'000, MostCells = 2'000'000;

struct TableRow {
    int number = 0; ///< as a spreadsheet counts it, empty rows too, from 1
    std::vector<std::string> cells;
};

struct Table {
    char separator = ',';       ///< comma, semicolon or tab
    std::string encoding;       ///< in words: "UTF-8"
    std::vector<TableRow> rows; ///< those that have a cell with something in it
};

/// Reads what stands in a file: UTF-8 or Windows-1252, and UTF-16 where the file says so. The sign that most often
/// parts the first line is the separator. Throws NotATable.
Table ParseTable(std::string_view bytes);
/// The same of a file. Throws FileError, too.
Table ReadTable(const std::filesystem::path& file);

/// A cell to be written. A figure is one for the reader, too; a text is none, and is never taken for a formula.
struct Cell {
    std::string text;
    bool isFigure = false;
};
using Cells = std::vector<Cell>;

/// The bytes of a file, in UTF-8, with commas between the cells.
std::string TableBytes(const std::vector<Cells>& rows);
/// Takes off a text what was put before it lest a spreadsheet take it for a formula.
std::string_view WithoutGuard(std::string_view text);

} // namespace quillmere::exchange
