#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// The reference database of car models out of text tables.
namespace quillmere::tools {

/// What is wrong with a text table: file, line, and why.
class BadTable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A text table: cells parted by commas, in double quotes where they hold a comma, a quote (doubled) or a line's end.
/// Lines that begin with "#" outside of a cell, and empty lines, are passed over. The first line names the columns.
struct TextTable {
    struct Row {
        int line = 0; ///< of the file, from 1
        std::vector<std::string> cells;
    };
    std::vector<std::string> columns;
    std::vector<Row> rows;
};

/// Takes a text table apart; a byte order mark is passed over, and lines may end as they do on any system. Throws
/// BadTable, with `name` for the file, if there is no line of columns, a quote is not closed, or a row has another
/// number of cells than there are columns.
TextTable ReadTextTable(std::string_view text, std::string_view name);

/// Makes the reference database `file` from the text tables of a folder, one for each of its tables: `Figures.csv`, and
/// so on. An empty cell, and a column that a text table lacks, are left null. Throws BadTable for a text table that is
/// not there or has a column that the database has not, and StoreError; then there is no file.
void MakeReferenceDatabase(const std::filesystem::path& folder, const std::filesystem::path& file);

} // namespace quillmere::tools
