#pragma once

#include "frame/Box.h"

#include <QTreeView>

namespace quillmere {

/// A list with columns: shows the entries of a box of kind `Table`, each its cells parted by tabs, under the captions
/// of its columns. Only the rows in sight are looked at, so that a hundred thousand
/// cost no more than ten.
class TableView : public QTreeView {
public:
    explicit TableView(QWidget* parent);

    /// Takes over captions, entries and choice.
    void Follow(const quillmere::Box& box);
    /// The row that is chosen, -1 for none.
    int ChosenRow() const;

private:
    class Rows;
    void FitColumn(int column);

    Rows* rows;
};

} // namespace quillmere
