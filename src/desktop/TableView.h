#pragma once

#include "frame/Box.h"

#include <QTreeView>

#include <functional>
#include <vector>

namespace quillmere {

/// A list with columns: shows the entries of a box of kind `Table`, each its cells parted by tabs, under the captions
/// of its columns. Only the rows in sight are looked at, so that a hundred thousand cost no more than ten. Left and
/// Right change the column in use; Ctrl+C takes the chosen lines to the clipboard as a spreadsheet takes them,
/// Ctrl+Shift+C only their cells of that column.
class TableView : public QTreeView {
public:
    /// The user has changed what is in use or chosen: the row in use, -1 for none, the column, and all chosen rows.
    using Moved = std::function<void(int row, int column, const std::vector<int>& chosen)>;
    TableView(const quillmere::Box& box, QWidget* parent, Moved moved);

    /// Takes over captions, entries, order and choice.
    void Follow(const quillmere::Box& box);
    /// The box has gone: what is still done in the view is told to nobody.
    void LetGo() { following = true; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Rows;
    bool Shows(const quillmere::Box& box) const;
    int RowInUse() const;
    int ColumnInUse() const;
    std::vector<int> ChosenRows() const;
    void FitColumns();
    /// The width that a column gets before others have got theirs.
    int MostAtFirst() const;
    /// Shares the room out: what is left goes to columns whose texts are cut. The last one is stretched.
    void GiveRoom();
    void StretchLast();
    void MoveToColumn(int column);
    enum class Copied { Lines, ColumnInUse };
    void Copy(Copied what) const;

    Rows* rows;
    bool following = false; ///< what changes is the box's doing
    bool fitting = false;
    std::vector<int> wanted;   ///< width of each column with which none of its texts is cut
    int lastWidth = 0;         ///< that the last column needs
    bool widthsAreOwn = false; ///< the user has set the width of a column
};

} // namespace quillmere
