// The grid of the file list: the same model and the same selection as the table, one cell per
// file with its thumbnail, its tick, and its new name (in the row's colour) over its current one.
// Cells are all one size, laid out in rows that wrap, so 10,000 files lay out at once and only
// the cells on screen are painted (and have their thumbnails asked for). Selecting a cell selects
// the file's whole row, so that the table and the grid can share one selection model.
#pragma once

#include <QListView>

namespace tessane {

class FileGridView : public QListView {
  Q_OBJECT

 public:
  explicit FileGridView(QWidget* parent = nullptr);

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;
};

}  // namespace tessane
