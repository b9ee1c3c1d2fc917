#include "TessaneRename/Windows/FileGridView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include "TessaneRename/Windows/FileListModel.h"
#include "TessaneRename/Windows/ThumbnailCache.h"

namespace tessane {

namespace {

constexpr int kPadding = 8;

int thumbSide() {
  return ThumbnailCache::sideOf(ThumbnailCache::Size::grid);
}

class GridDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    const QFontMetrics m(option.font);
    return {thumbSide() + 2 * kPadding, thumbSide() + 2 * m.height() + 3 * kPadding};
  }

  static QRect checkRect(const QRect& cell) {
    return {cell.left() + kPadding + 2, cell.top() + kPadding + 2, 18, 18};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    const QWidget* widget = opt.widget;
    QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
    // The cell's background and selection, without the text and icon the style would draw.
    QStyleOptionViewItem back = opt;
    back.text.clear();
    back.icon = QIcon();
    back.features &=
        ~(QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasCheckIndicator);
    style->drawControl(QStyle::CE_ItemViewItem, &back, painter, widget);

    const QRect cell = opt.rect;
    const QRect thumb(cell.left() + kPadding, cell.top() + kPadding, thumbSide(), thumbSide());
    const QPixmap picture = index.data(FileListModel::thumbnailRole).value<QPixmap>();
    if (!picture.isNull()) {
      const QSize size =
          picture.deviceIndependentSize().toSize().scaled(thumb.size(), Qt::KeepAspectRatio);
      const QRect at(thumb.left() + (thumb.width() - size.width()) / 2,
                     thumb.top() + (thumb.height() - size.height()) / 2, size.width(),
                     size.height());
      painter->drawPixmap(at, picture);
    } else {
      painter->fillRect(thumb.adjusted(8, 8, -8, -8), opt.palette.color(QPalette::AlternateBase));
      const QIcon icon = style->standardIcon(QStyle::SP_FileIcon, nullptr, widget);
      icon.paint(painter, thumb.adjusted(thumbSide() / 3, thumbSide() / 3, -thumbSide() / 3,
                                         -thumbSide() / 3));
    }

    // The tick, over the thumbnail's corner.
    QStyleOptionViewItem tick = opt;
    tick.rect = checkRect(cell);
    tick.state = tick.state & ~QStyle::State_HasFocus;
    tick.state |= opt.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &tick, painter, widget);

    const bool selected = (opt.state & QStyle::State_Selected) != 0;
    const QFontMetrics m(opt.font);
    const QRect line1(cell.left() + kPadding / 2, thumb.bottom() + kPadding,
                      cell.width() - kPadding, m.height());
    const QRect line2 = line1.translated(0, m.height());
    const QModelIndex newIndex = index.siblingAtColumn(FileListModel::newName);
    const QString current = opt.text;
    const QString renamed = newIndex.data().toString();
    QColor main = opt.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    const QVariant fg = newIndex.data(Qt::ForegroundRole);
    if (!selected && fg.canConvert<QBrush>()) main = fg.value<QBrush>().color();
    painter->save();
    painter->setPen(main);
    const QString first = renamed.isEmpty() ? current : renamed;
    painter->drawText(line1, Qt::AlignHCenter | Qt::AlignVCenter,
                      m.elidedText(first, Qt::ElideMiddle, line1.width()));
    if (!renamed.isEmpty() && renamed != current) {
      QColor dim = main;
      dim.setAlphaF(0.6f);
      painter->setPen(dim);
      painter->drawText(line2, Qt::AlignHCenter | Qt::AlignVCenter,
                        m.elidedText(current, Qt::ElideMiddle, line2.width()));
    }
    painter->restore();
  }

  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
    if (!(index.flags() & Qt::ItemIsUserCheckable)) return false;
    const auto toggle = [&] {
      const bool on = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
      return model->setData(index, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    };
    if (event->type() == QEvent::MouseButtonRelease) {
      const auto* mouse = static_cast<QMouseEvent*>(event);
      if (mouse->button() == Qt::LeftButton &&
          checkRect(option.rect).adjusted(-3, -3, 3, 3).contains(mouse->position().toPoint())) {
        return toggle();
      }
      return false;
    }
    if (event->type() == QEvent::KeyPress) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Space || key == Qt::Key_Select) return toggle();
    }
    return false;
  }
};

}  // namespace

FileGridView::FileGridView(QWidget* parent) : QListView(parent) {
  setViewMode(QListView::ListMode);  // with wrapping: one uniform layout pass, however many files
  setFlow(QListView::LeftToRight);
  setWrapping(true);
  setResizeMode(QListView::Adjust);
  setUniformItemSizes(true);
  setMovement(QListView::Static);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setSpacing(4);
  setItemDelegate(new GridDelegate(this));
  setModelColumn(FileListModel::currentName);
}

QItemSelectionModel::SelectionFlags FileGridView::selectionCommand(const QModelIndex& index,
                                                                   const QEvent* event) const {
  const QItemSelectionModel::SelectionFlags flags = QListView::selectionCommand(index, event);
  return flags == QItemSelectionModel::NoUpdate ? flags : flags | QItemSelectionModel::Rows;
}

}  // namespace tessane
