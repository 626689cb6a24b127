#pragma once

#include "calculators/CalculatorNotepad.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A notepad that shows one of three vans or vehicles at a time. While it is open a grid of text holds one column for
/// each and one row for each box; three labels act as tabs.
class TabbedNotepad : public CalculatorNotepad {
public:
    static constexpr int Columns = 3;

    /// What the grid of one notepad holds.
    struct Grid {
        std::string_view table;                     ///< its fields are the rows' with the column's number behind them
        std::array<std::string_view, Columns> tabs; ///< the labels
        std::span<const BoundBox> rows;             ///< in the order in which the record is written
    };

    TabbedNotepad(Session& session, std::string_view name, std::string_view caption, const Titles& titles,
                  const Grid& grid);

protected:
    /// Binds the tabs; called when all boxes are made.
    void BindTabs();
    /// Fills the grid from the employee's record and shows the first column. False if the opening failed.
    [[nodiscard]] bool OpenGrid();
    /// Writes every row of every column to the record. Throws StoreError.
    void StoreGrid(Recordset& records) const;
    /// Writes the boxes to the current column.
    void SaveColumn();
    /// Shows another column, after the current one has been written to the grid.
    void Choose(int column);
    /// Number of the current column, from 1.
    int Current() const { return current; }
    /// One row of all columns.
    std::array<std::string, Columns> Row(std::string_view boxName) const;
    void ClearColumn();

    /// The boxes show another column.
    virtual void ColumnShown() {}
    virtual void Recalculate() = 0;

private:
    void ShowColumn();
    void PaintTabs();
    std::vector<std::string>& Column() { return cells[static_cast<std::size_t>(current - 1)]; }

    Grid grid;
    std::array<std::vector<std::string>, Columns> cells;
    int current = 1;
};

} // namespace quillmere
