#include "TessaneRename/Windows/NewNameDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

#include "RenameEngine/NameDiff.h"
#include "TessaneRename/FileInspection.h"

namespace tessane {

NewNameDelegate::NewNameDelegate(int currentNameColumn, QObject* parent)
    : QStyledItemDelegate(parent), currentNameColumn_(currentNameColumn) {}

QColor NewNameDelegate::highlightOn(const QPalette& palette, bool selected) {
  const QColor accent =
      selected ? palette.color(QPalette::HighlightedText) : palette.color(QPalette::Highlight);
  const QColor base = selected ? palette.color(QPalette::Highlight) : palette.color(QPalette::Base);
  const auto mix = [](int a, int b) { return (a * 30 + b * 70) / 100; };
  return QColor(mix(accent.red(), base.red()), mix(accent.green(), base.green()),
                mix(accent.blue(), base.blue()));
}

void NewNameDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  QStyleOptionViewItem opt = option;
  initStyleOption(&opt, index);
  const QString newName = opt.text;
  opt.text.clear();
  const QWidget* widget = opt.widget;
  QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &opt, painter, widget);  // background, selection
  if (newName.isEmpty()) return;

  const bool selected = (opt.state & QStyle::State_Selected) != 0;
  QColor color = opt.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
  const QVariant foreground = index.data(Qt::ForegroundRole);
  if (!selected && foreground.canConvert<QBrush>()) color = foreground.value<QBrush>().color();

  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
  const QRect area = style->subElementRect(QStyle::SE_ItemViewItemText, &opt, widget)
                         .adjusted(margin, 0, -margin, 0);
  painter->save();
  painter->setClipRect(area);
  painter->setPen(color);
  painter->setFont(opt.font);

  const QString oldName = index.siblingAtColumn(currentNameColumn_).data().toString();
  const QFontMetrics metrics(opt.font);
  if (oldName == newName || metrics.horizontalAdvance(newName) > area.width()) {
    painter->drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
                      metrics.elidedText(newName, Qt::ElideMiddle, area.width()));
    painter->restore();
    return;
  }

  // The added pieces as formats over the name.
  const std::vector<DiffPiece> pieces =
      readablePieces(NameDiff::compare(oldName.toStdString(), newName.toStdString()).newPieces);
  QList<QTextLayout::FormatRange> formats;
  int at = 0;
  for (const DiffPiece& piece : pieces) {
    const int length = static_cast<int>(QString::fromStdString(piece.text).size());
    if (piece.kind == DiffPiece::Kind::added) {
      QTextLayout::FormatRange range;
      range.start = at;
      range.length = length;
      range.format.setBackground(highlightOn(opt.palette, selected));
      formats << range;
    }
    at += length;
  }
  QTextLayout layout(newName, opt.font);
  layout.setFormats(formats);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLineWidth(area.width());
  layout.endLayout();
  const qreal y = area.top() + (area.height() - line.height()) / 2.0;
  layout.draw(painter, QPointF(area.left(), y));
  painter->restore();
}

}  // namespace tessane
