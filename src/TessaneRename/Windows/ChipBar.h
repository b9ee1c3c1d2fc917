// The pieces of the name builder as a row of chips. A chip is dragged to a new place with the
// mouse, or moved with Ctrl+Left and Ctrl+Right and removed with Delete when it has the focus;
// its ✕ removes it too. A double click, F2 or Return asks to edit it. The bar only reports the
// gestures: the builder panel changes the pieces and shows them again.
#pragma once

#include <QFrame>
#include <QWidget>

#include <vector>

#include "TessaneRename/FormatToken.h"

class QHBoxLayout;

namespace tessane {

class ChipBar : public QWidget {
  Q_OBJECT

 public:
  static constexpr const char* kMimeType = "application/x-tessane-piece";

  explicit ChipBar(QWidget* parent = nullptr);

  // `leading`, when not empty, is a fixed first chip that can't be moved or removed (the
  // original name that "Start from the Original Name" keeps).
  void setPieces(const std::vector<FormatToken>& pieces, const QString& leading = {});
  int count() const { return static_cast<int>(chips_.size()); }
  QWidget* chip(int index) const { return chips_.at(static_cast<std::size_t>(index)); }
  // Where a drop at `x` puts a piece, as an index among the pieces.
  int dropIndex(int x, int dragged) const;

 signals:
  void moved(int from, int to);
  void removed(int index);
  void editRequested(int index);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  friend class Chip;
  void keyOnChip(int index, int key, Qt::KeyboardModifiers modifiers);

  QHBoxLayout* layout_;
  std::vector<QWidget*> chips_;
  QWidget* leading_ = nullptr;
  int focusAfterShow_ = -1;
};

}  // namespace tessane
