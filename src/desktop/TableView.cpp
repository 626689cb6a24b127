#include "desktop/TableView.h"

#include "desktop/Look.h"

#include <QAbstractTableModel>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr char CellEnd = '\t';
/// Before the caption of a column of figures.
constexpr char FigureMark = '>';

/// Takes the first cell off an entry.
std::string_view TakeCell(std::string_view& entry)
{
    const std::size_t end = entry.find(CellEnd);
    const std::string_view cell = entry.substr(0, end);
    entry.remove_prefix(end == std::string_view::npos ? entry.size() : end + 1);
    return cell;
}

std::string Cell(std::string_view entry, int column)
{
    for (; column > 0; --column)
        TakeCell(entry);
    return std::string(TakeCell(entry));
}

} // namespace

/// The entries as the toolkit asks for them: a cell at a time.
class TableView::Rows : public QAbstractTableModel {
public:
    Rows(bool tinted, QObject* parent) : QAbstractTableModel(parent), tinted(tinted) {}

    /// False if all is as it was.
    bool Take(const std::string& newCaptions, const std::vector<std::string>& newEntries)
    {
        if (captionLine == newCaptions && entries == newEntries)
            return false;
        beginResetModel();
        TakeCaptions(newCaptions);
        entries = newEntries;
        endResetModel();
        return true;
    }

    /// The longest text of each column.
    std::vector<QString> Longest() const
    {
        std::vector<std::string_view> longest(captions.size());
        for (std::string_view entry : entries)
            for (std::string_view& known : longest)
                if (const std::string_view cell = TakeCell(entry); cell.size() > known.size())
                    known = cell;
        std::vector<QString> texts;
        texts.reserve(longest.size());
        for (const std::string_view text : longest)
            texts.push_back(look::Text(std::string(text)));
        return texts;
    }
    bool HoldsFigures(int column) const { return captions[static_cast<std::size_t>(column)].figures; }
    QString Line(int row) const { return look::Text(entries[static_cast<std::size_t>(row)]); }
    QString Head() const
    {
        QStringList texts;
        for (const Caption& caption : captions)
            texts.push_back(caption.text);
        return texts.join(QLatin1Char(CellEnd));
    }

    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(entries.size());
    }
    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(captions.size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid())
            return {};
        const Caption& caption = captions[static_cast<std::size_t>(index.column())];
        if (role == Qt::TextAlignmentRole)
            return AlignmentOf(caption);
        if (role == Qt::BackgroundRole && tinted) {
            const QColor tint = look::TintOf(look::Text(Cell(entries[static_cast<std::size_t>(index.row())], 0)));
            return tint.isValid() ? QVariant(tint) : QVariant();
        }
        if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::AccessibleTextRole)
            return {};
        const QString text = look::Text(Cell(entries[static_cast<std::size_t>(index.row())], index.column()));
        return role == Qt::AccessibleTextRole ? caption.text + QLatin1Char(' ') + text.trimmed() : text;
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || section >= static_cast<int>(captions.size()))
            return {};
        const Caption& caption = captions[static_cast<std::size_t>(section)];
        if (role == Qt::TextAlignmentRole)
            return AlignmentOf(caption);
        return role == Qt::DisplayRole ? caption.text : QVariant();
    }

private:
    struct Caption {
        QString text;
        bool figures = false;
    };
    static int AlignmentOf(const Caption& caption)
    {
        return static_cast<int>((caption.figures ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    void TakeCaptions(const std::string& line)
    {
        if (captionLine == line)
            return;
        captionLine = line;
        captions.clear();
        for (std::string_view rest = line; !rest.empty();) {
            std::string_view text = TakeCell(rest);
            const bool figures = text.starts_with(FigureMark);
            text.remove_prefix(figures ? 1 : 0);
            captions.push_back({look::Text(std::string(text)), figures});
        }
    }

    bool tinted;
    std::string captionLine;
    std::vector<Caption> captions;
    std::vector<std::string> entries;
};

TableView::TableView(const quillmere::Box& box, QWidget* parent, Moved moved)
    : QTreeView(parent), rows(new Rows(box.IsTinted(), this))
{
    setModel(rows);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(box.TakesSeveral() ? ExtendedSelection : SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
    // What is not in sight is measured by its longest texts.
    constexpr int RowsMeasured = 50;
    header()->setResizeContentsPrecision(RowsMeasured);
    const auto tell = [this, moved = std::move(moved), &box] {
        if (!following && !Shows(box))
            moved(RowInUse(), ColumnInUse(), ChosenRows());
    };
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, tell);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, tell);
    // The last one takes what room there is.
    connect(header(), &QHeaderView::sectionResized, this,
            [this](int column) { widthsAreOwn = widthsAreOwn || (!fitting && column + 1 < rows->columnCount({})); });
}

void TableView::Follow(const quillmere::Box& box)
{
    const QScopedValueRollback follows(following, true);
    const int columns = rows->columnCount({});
    if (rows->Take(box.Columns(), box.Entries())) {
        widthsAreOwn = widthsAreOwn && columns == rows->columnCount({});
        if (!widthsAreOwn)
            FitColumns();
    }
    const Sorting sorting = box.SortedBy();
    header()->setSortIndicatorShown(sorting.column >= 0);
    if (sorting.column >= 0)
        header()->setSortIndicator(sorting.column, sorting.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    if (Shows(box))
        return;
    if (box.Selected() < 0) {
        selectionModel()->clear();
        return;
    }
    QItemSelection lines;
    for (const int row : box.Chosen())
        lines.select(rows->index(row, 0), rows->index(row, 0));
    selectionModel()->select(lines, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    selectionModel()->setCurrentIndex(rows->index(box.Selected(), box.Column()), QItemSelectionModel::NoUpdate);
    scrollTo(currentIndex());
}

/// Gives each column the room of its texts, but never so much that the others are pushed out of sight. What is left
/// goes to those that want more, and then to the last one.
void TableView::FitColumns()
{
    const QScopedValueRollback fits(fitting, true);
    constexpr int Margins = 12;
    header()->setStretchLastSection(false);
    wanted.clear();
    for (const QString& longest : rows->Longest()) {
        const auto column = static_cast<int>(wanted.size());
        resizeColumnToContents(column);
        wanted.push_back(std::max(columnWidth(column), fontMetrics().horizontalAdvance(longest) + Margins));
    }
    lastWidth = wanted.empty() ? 0 : std::min(wanted.back(), MostAtFirst());
    if (!wanted.empty())
        setColumnWidth(static_cast<int>(wanted.size()) - 1, lastWidth);
    GiveRoom();
    StretchLast();
}

int TableView::MostAtFirst() const
{
    constexpr int Characters = 60;
    return Characters * fontMetrics().averageCharWidth();
}

void TableView::GiveRoom()
{
    const QScopedValueRollback fits(fitting, true);
    const int most = MostAtFirst();
    int room = viewport()->width();
    for (const int width : wanted)
        room -= std::min(width, most);
    for (std::size_t column = 0; column + 1 < wanted.size(); ++column) {
        const int first = std::min(wanted[column], most);
        const int more = std::clamp(wanted[column] - first, 0, std::max(room, 0));
        setColumnWidth(static_cast<int>(column), first + more);
        room -= more;
    }
}

/// The last column takes the room that is left, unless it holds figures, which would stand far off.
void TableView::StretchLast()
{
    const QScopedValueRollback fits(fitting, true);
    const int last = rows->columnCount({}) - 1;
    const bool hasRoom = last >= 0 && header()->length() - columnWidth(last) + lastWidth < viewport()->width();
    header()->setStretchLastSection(hasRoom && !rows->HoldsFigures(last));
    if (last >= 0 && !header()->stretchLastSection())
        setColumnWidth(last, lastWidth);
}

void TableView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    if (!widthsAreOwn)
        GiveRoom();
    StretchLast();
}

void TableView::changeEvent(QEvent* event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        FitColumns();
}

bool TableView::Shows(const quillmere::Box& box) const
{
    return RowInUse() == box.Selected() && (box.Selected() < 0 || ColumnInUse() == box.Column()) &&
           ChosenRows() == box.Chosen();
}

int TableView::RowInUse() const
{
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isSelected(current))
        return current.row();
    const std::vector<int> chosen = ChosenRows();
    return chosen.empty() ? -1 : chosen.front();
}

int TableView::ColumnInUse() const
{
    return std::max(currentIndex().column(), 0);
}

std::vector<int> TableView::ChosenRows() const
{
    std::vector<int> chosen;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        chosen.push_back(index.row());
    std::ranges::sort(chosen);
    return chosen;
}

void TableView::keyPressEvent(QKeyEvent* event)
{
    // With nothing chosen the first step chooses the end at which it begins.
    const bool steps = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    const int lines = rows->rowCount({});
    if (steps && lines > 0 && !selectionModel()->hasSelection())
        setCurrentIndex(rows->index(event->key() == Qt::Key_Down ? 0 : lines - 1, ColumnInUse()));
    else if (event->matches(QKeySequence::Copy))
        Copy(Copied::Lines);
    else if (event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier) && event->key() == Qt::Key_C)
        Copy(Copied::ColumnInUse);
    else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Left)
        MoveToColumn(ColumnInUse() - 1);
    else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Right)
        MoveToColumn(ColumnInUse() + 1);
    else
        QTreeView::keyPressEvent(event);
}

void TableView::MoveToColumn(int column)
{
    const QModelIndex next = currentIndex().siblingAtColumn(column);
    if (!next.isValid())
        return;
    selectionModel()->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
    scrollTo(next);
}

/// The chosen lines, or their cells of a column; of the whole table also the captions.
void TableView::Copy(Copied what) const
{
    const std::vector<int> chosen = ChosenRows();
    if (chosen.empty())
        return;
    const auto part = [&](const QString& line) {
        return what == Copied::Lines ? line : line.section(QLatin1Char(CellEnd), ColumnInUse(), ColumnInUse());
    };
    QStringList lines;
    if (chosen.size() > 1 && static_cast<int>(chosen.size()) == rows->rowCount({}))
        lines.push_back(part(rows->Head()));
    for (const int row : chosen)
        lines.push_back(part(rows->Line(row)));
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

} // namespace quillmere
