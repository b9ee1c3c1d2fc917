// The new-name column: the new name with what differs from the current name highlighted (the
// characters added or changed, as readablePieces groups them), in the row's colour (red for an
// error, amber for a warning, grey when the name stays). A name too long for the column loses its
// middle and shows without the highlight. The row's messages are the model's tooltip.
#pragma once

#include <QStyledItemDelegate>

namespace tessane {

class NewNameDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  // `currentNameColumn` holds the name the new one is compared with.
  NewNameDelegate(int currentNameColumn, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

  // The colour of the highlight behind added characters, readable on `base` in light and dark.
  static QColor highlightOn(const QPalette& palette, bool selected);

 private:
  int currentNameColumn_;
};

}  // namespace tessane
