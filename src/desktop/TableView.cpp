#include "desktop/TableView.h"

#include "desktop/Look.h"

#include <QAbstractTableModel>
#include <QHeaderView>

#include <algorithm>

namespace quillmere {

namespace {

constexpr char CellEnd = '\t';

std::string Cell(std::string_view entry, int column)
{
    for (; column > 0; --column) {
        const std::size_t end = entry.find(CellEnd);
        if (end == std::string_view::npos)
            return {};
        entry.remove_prefix(end + 1);
    }
    return std::string(entry.substr(0, entry.find(CellEnd)));
}

} // namespace

/// The entries as the toolkit asks for them: a cell at a time.
class TableView::Rows : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// False if all is as it was.
    bool Take(const std::string& newCaptions, const std::vector<std::string>& newEntries)
    {
        if (captions == newCaptions && entries == newEntries)
            return false;
        beginResetModel();
        captions = newCaptions;
        entries = newEntries;
        endResetModel();
        return true;
    }

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(entries.size());
    }
    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : 1 + static_cast<int>(std::ranges::count(captions, CellEnd));
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
            return {};
        return look::Text(Cell(entries[static_cast<std::size_t>(index.row())], index.column()));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        return look::Text(Cell(captions, section));
    }

private:
    std::string captions;
    std::vector<std::string> entries;
};

TableView::TableView(QWidget* parent) : QTreeView(parent), rows(new Rows(this))
{
    setModel(rows);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
}

void TableView::Follow(const quillmere::Box& box)
{
    if (rows->Take(box.Columns(), box.Entries()))
        for (int column = 0; column + 1 < rows->columnCount({}); ++column)
            FitColumn(column);
    if (box.Selected() < 0) {
        selectionModel()->clear();
        return;
    }
    setCurrentIndex(rows->index(box.Selected(), 0));
}

/// As wide as its cells, but never so wide that the others are pushed out of sight.
void TableView::FitColumn(int column)
{
    constexpr int MostCharacters = 60;
    resizeColumnToContents(column);
    setColumnWidth(column, std::min(columnWidth(column), MostCharacters * fontMetrics().averageCharWidth()));
}

int TableView::ChosenRow() const
{
    const QModelIndexList chosen = selectionModel()->selectedRows();
    return chosen.isEmpty() ? -1 : chosen.front().row();
}

} // namespace quillmere
