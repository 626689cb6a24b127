#include "calculators/TabbedNotepad.h"

#include "frame/Text.h"

#include <algorithm>
#include <stdexcept>

namespace quillmere {

TabbedNotepad::TabbedNotepad(Session& session, std::string_view name, std::string_view caption, const Titles& titles,
                             const Grid& grid)
    : CalculatorNotepad(session, name, caption, titles), grid(grid)
{
    for (std::vector<std::string>& column : cells)
        column.resize(grid.rows.size());
}

void TabbedNotepad::BindTabs()
{
    for (int column = 1; column <= Columns; ++column)
        OnClick(grid.tabs[static_cast<std::size_t>(column - 1)], [this, column](Box&) { Choose(column); });
}

bool TabbedNotepad::OpenGrid()
{
    const bool opened = Open([this](Database& database) {
        const Recordset own = FindEmployee(database, grid.table, titles.loading);
        if (!own.NoMatch())
            for (int column = 1; column <= Columns; ++column)
                for (std::size_t row = 0; row < grid.rows.size(); ++row)
                    cells[static_cast<std::size_t>(column - 1)][row] =
                        own.Field(Numbered(grid.rows[row].field, column));
        FindEmployee(database, "P11D", titles.loading);
    });
    if (opened) {
        PaintTabs();
        ShowColumn();
    }
    return opened;
}

void TabbedNotepad::StoreGrid(Recordset& records) const
{
    for (int column = 1; column <= Columns; ++column)
        for (std::size_t row = 0; row < grid.rows.size(); ++row) {
            std::string_view text = cells[static_cast<std::size_t>(column - 1)][row];
            if (box(grid.rows[row].box).GetKind() == Kind::Tick)
                text = text.empty() || text == "0" ? "0" : "1";
            StoreField(records, Numbered(grid.rows[row].field, column), text);
        }
}

void TabbedNotepad::SaveColumn()
{
    for (std::size_t row = 0; row < grid.rows.size(); ++row)
        Column()[row] = box(grid.rows[row].box).Stored();
}

void TabbedNotepad::Choose(int column)
{
    SaveColumn();
    current = column;
    PaintTabs();
    ShowColumn();
    Recalculate();
}

void TabbedNotepad::PaintTabs()
{
    for (int column = 1; column <= Columns; ++column)
        box(grid.tabs[static_cast<std::size_t>(column - 1)]).SetPaint(column == current ? Paint::Yellow : Paint::Plain);
}

void TabbedNotepad::ShowColumn()
{
    for (std::size_t row = 0; row < grid.rows.size(); ++row)
        box(grid.rows[row].box).ShowStored(Column()[row]);
    ColumnShown();
}

std::array<std::string, TabbedNotepad::Columns> TabbedNotepad::Row(std::string_view boxName) const
{
    const auto found = std::ranges::find(grid.rows, boxName, &BoundBox::box);
    if (found == grid.rows.end())
        throw std::logic_error(Name() + " has no row " + std::string(boxName));
    std::array<std::string, Columns> texts;
    std::ranges::transform(cells, texts.begin(), [&](const std::vector<std::string>& column) {
        return column[static_cast<std::size_t>(found - grid.rows.begin())];
    });
    return texts;
}

void TabbedNotepad::ClearColumn()
{
    for (const BoundBox& row : grid.rows)
        box(row.box).Clear();
}

} // namespace quillmere
