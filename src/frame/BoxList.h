#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

class Box;
class Screen;

/// Cells of a list side by side and one below the other.
struct CellRange {
    std::size_t left = 0, right = 0; ///< columns, from 0
    int top = 0, bottom = 0;         ///< lines

    friend bool operator==(const CellRange&, const CellRange&) = default;
};

/// "6 cells of lines 2 to 4"
std::string InWords(const CellRange& cells);

/// Control arrays that stand side by side as the columns of a list, a line an index: what the hands of a spreadsheet
/// can do in it.
struct BoxList {
    std::vector<std::string> columns; ///< names of the arrays, from the left
    int first = 1, last = 0;          ///< lines

    bool Has(const Box& box) const;
    std::size_t ColumnOf(const Box& box) const;
    /// The cells from one box to another, at whichever corners these stand.
    CellRange Between(const Box& one, const Box& other) const;
};

/// True for a text that is more than one cell: lines, or cells parted by tabs. The line end behind a single cell, which
/// a spreadsheet puts there, does not count.
bool IsOfSeveralCells(std::string_view text);

// Works on the list of a screen. Whatever is put into a box goes in as if it were typed, through its filter, and the
// box is left. Each gives what is to be said about it.

/// Puts cells into the boxes from this one on to the right and down. An empty cell empties its box; where a column is
/// worked out nothing is put in.
std::string PasteCells(Screen& screen, const Box& from, std::string_view text);
/// Puts what the line above reads into the line.
std::string RepeatLineAbove(Screen& screen, int line);
std::string EmptyCells(Screen& screen, const CellRange& cells);
/// Lets the line change places with the one below, or with `by` -1 the one above.
struct MovedLine {
    bool moved = false;
    std::string words;
};
MovedLine MoveLine(Screen& screen, int line, int by);
/// The cells as a spreadsheet takes them: parted by tabs, a line end after each line.
std::string CellsAsText(const Screen& screen, const CellRange& cells);

} // namespace quillmere
