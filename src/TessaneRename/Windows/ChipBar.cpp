#include "TessaneRename/Windows/ChipBar.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QToolButton>

namespace tessane {

// One piece: its title and a ✕. Focusable, so that the keyboard can move and remove it.
class Chip : public QFrame {
 public:
  Chip(ChipBar& bar, int index, const FormatToken& piece) : QFrame(&bar), bar_(bar), index_(index) {
    setObjectName("chip");
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::OpenHandCursor);
    const QString title = piece.title();
    setAccessibleName(ChipBar::tr("Piece %1 of the name: %2").arg(index + 1).arg(title));
    setAccessibleDescription(ChipBar::tr("Ctrl+Left and Ctrl+Right move it, Delete removes it"));
    setToolTip(QString::fromStdString(piece.templateText()));
    auto* label = new QLabel(title, this);
    auto* remove = new QToolButton(this);
    remove->setObjectName("removePiece");
    remove->setText(QStringLiteral("✕"));
    remove->setAutoRaise(true);
    remove->setFocusPolicy(Qt::NoFocus);  // Delete on the chip does the same
    remove->setToolTip(ChipBar::tr("Remove %1").arg(title));
    remove->setAccessibleName(ChipBar::tr("Remove %1").arg(title));
    connect(remove, &QToolButton::clicked, &bar, [this] { emit bar_.removed(index_); });
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(label);
    layout->addWidget(remove);
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) pressedAt_ = event->position().toPoint();
    setFocus(Qt::MouseFocusReason);
    QFrame::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (!(event->buttons() & Qt::LeftButton) ||
        (event->position().toPoint() - pressedAt_).manhattanLength() <
            QApplication::startDragDistance())
      return;
    auto* mime = new QMimeData;
    mime->setData(ChipBar::kMimeType, QByteArray::number(index_));
    auto* drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setPixmap(grab());
    drag->setHotSpot(pressedAt_);
    drag->exec(Qt::MoveAction);
  }
  void mouseDoubleClickEvent(QMouseEvent*) override { emit bar_.editRequested(index_); }
  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    if (key == Qt::Key_F2 || key == Qt::Key_Return || key == Qt::Key_Enter) {
      emit bar_.editRequested(index_);
      return;
    }
    if (key == Qt::Key_Delete || key == Qt::Key_Backspace ||
        ((key == Qt::Key_Left || key == Qt::Key_Right) &&
         (event->modifiers() & Qt::ControlModifier))) {
      bar_.keyOnChip(index_, key, event->modifiers());
      return;
    }
    QFrame::keyPressEvent(event);
  }

 private:
  ChipBar& bar_;
  int index_;
  QPoint pressedAt_;
};

ChipBar::ChipBar(QWidget* parent) : QWidget(parent) {
  setAcceptDrops(true);
  setAccessibleName(tr("Pieces of the new name"));
  layout_ = new QHBoxLayout(this);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(6);
  layout_->addStretch(1);
  setStyleSheet(
      "QFrame#chip, QLabel#leadingChip { background: palette(alternate-base);"
      " border: 1px solid palette(mid); border-radius: 11px; }"
      " QLabel#leadingChip { padding: 3px 10px; color: palette(dark); }"
      " QFrame#chip:focus { border: 2px solid palette(highlight); }");
}

void ChipBar::setPieces(const std::vector<FormatToken>& pieces, const QString& leading) {
  const int focus = focusAfterShow_;
  focusAfterShow_ = -1;
  for (QWidget* chip : chips_)
    chip->deleteLater();
  chips_.clear();
  if (leading_ != nullptr) leading_->deleteLater();
  leading_ = nullptr;
  while (layout_->count() > 0)
    delete layout_->takeAt(0);
  if (!leading.isEmpty()) {
    auto* label = new QLabel(leading, this);
    label->setObjectName("leadingChip");
    label->setToolTip(tr("The name the camera gave the file comes first"));
    leading_ = label;
    layout_->addWidget(label);
  }
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    auto* chip = new Chip(*this, static_cast<int>(i), pieces[i]);
    chips_.push_back(chip);
    layout_->addWidget(chip);
  }
  layout_->addStretch(1);
  if (focus >= 0 && focus < count()) chips_[static_cast<std::size_t>(focus)]->setFocus();
}

int ChipBar::dropIndex(int x, int dragged) const {
  int index = 0;
  for (int i = 0; i < count(); ++i) {
    if (i == dragged) continue;
    const QRect r = chips_[static_cast<std::size_t>(i)]->geometry();
    if (x > r.center().x()) ++index;
  }
  return index;
}

void ChipBar::keyOnChip(int index, int key, Qt::KeyboardModifiers) {
  if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
    focusAfterShow_ = std::min(index, count() - 2);
    emit removed(index);
    return;
  }
  const int to = key == Qt::Key_Left ? index - 1 : index + 1;
  if (to < 0 || to >= count()) return;
  focusAfterShow_ = to;
  emit moved(index, to);
}

void ChipBar::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasFormat(kMimeType)) event->acceptProposedAction();
}

void ChipBar::dragMoveEvent(QDragMoveEvent* event) {
  if (event->mimeData()->hasFormat(kMimeType)) event->acceptProposedAction();
}

void ChipBar::dropEvent(QDropEvent* event) {
  if (!event->mimeData()->hasFormat(kMimeType)) return;
  bool ok = false;
  const int from = event->mimeData()->data(kMimeType).toInt(&ok);
  if (!ok || from < 0 || from >= count()) return;
  event->acceptProposedAction();
  const int to = dropIndex(event->position().toPoint().x(), from);
  if (to != from) emit moved(from, to);
}

}  // namespace tessane
