#include "TessaneRename/Windows/GuideWindow.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QTextBrowser>

#include <algorithm>

namespace tessane {
namespace {

using Kind = GuideWindow::Piece::Kind;

GuideWindow::Piece chip(const QString& t) {
  return {Kind::chip, t};
}
GuideWindow::Piece file(const QString& t) {
  return {Kind::file, t};
}
GuideWindow::Piece card(const QString& t) {
  return {Kind::card, t};
}
GuideWindow::Piece arrow(const QString& t = {}) {
  return {Kind::arrow, t};
}
GuideWindow::Piece text(const QString& t) {
  return {Kind::text, t};
}

constexpr int kPad = 10, kGap = 8, kRowGap = 14, kHeight = 34, kArrow = 44;

int widthOf(const GuideWindow::Piece& piece, const QFontMetrics& metrics) {
  if (piece.kind == Kind::arrow) return std::max(kArrow, metrics.horizontalAdvance(piece.text) + 8);
  const int textWidth = metrics.horizontalAdvance(piece.text);
  return piece.kind == Kind::text ? textWidth
                                  : textWidth + 2 * kPad + (piece.kind == Kind::file ? 14 : 0);
}

void paintPiece(QPainter& p, const GuideWindow::Piece& piece, const QRect& r,
                const QPalette& palette) {
  const QColor accent = palette.color(QPalette::Highlight);
  switch (piece.kind) {
    case Kind::chip: {
      QColor fill = accent;
      fill.setAlpha(40);
      p.setPen(QPen(accent, 1.2));
      p.setBrush(fill);
      p.drawRoundedRect(QRectF(r).adjusted(0.5, 4.5, -0.5, -4.5), 12, 12);
      p.setPen(palette.color(QPalette::Text));
      p.drawText(r, Qt::AlignCenter, piece.text);
      break;
    }
    case Kind::file:
    case Kind::card: {
      p.setPen(QPen(palette.color(QPalette::Mid), 1));
      p.setBrush(palette.color(QPalette::Base));
      p.drawRoundedRect(QRectF(r).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
      QRect textRect = r;
      if (piece.kind == Kind::file) {
        p.setBrush(accent);
        p.setPen(Qt::NoPen);
        p.drawRoundedRect(QRectF(r.left() + 7, r.top() + 9, 8, r.height() - 18), 2, 2);
        textRect.setLeft(r.left() + 14);
      }
      p.setPen(palette.color(QPalette::Text));
      p.drawText(textRect, Qt::AlignCenter, piece.text);
      break;
    }
    case Kind::arrow: {
      const int y = r.center().y() + (piece.text.isEmpty() ? 0 : 6);
      p.setPen(QPen(palette.color(QPalette::PlaceholderText), 1.6));
      p.drawLine(r.left() + 4, y, r.right() - 6, y);
      QPainterPath head;
      head.moveTo(r.right() - 2, y);
      head.lineTo(r.right() - 10, y - 5);
      head.lineTo(r.right() - 10, y + 5);
      head.closeSubpath();
      p.fillPath(head, palette.color(QPalette::PlaceholderText));
      if (!piece.text.isEmpty()) {
        p.drawText(QRect(r.left(), r.top(), r.width(), y - r.top() - 2),
                   Qt::AlignHCenter | Qt::AlignBottom, piece.text);
      }
      break;
    }
    case Kind::text:
      p.setPen(palette.color(QPalette::Text));
      p.drawText(r, Qt::AlignVCenter | Qt::AlignLeft, piece.text);
      break;
  }
}

}  // namespace

QImage GuideWindow::draw(const Drawing& drawing, const QPalette& palette, qreal pixelRatio) {
  QFont font;
  const QFontMetrics metrics(font);
  const int height = std::max(kHeight, metrics.height() + 14);
  int width = 0;
  for (const auto& row : drawing) {
    int w = 0;
    for (const Piece& piece : row)
      w += widthOf(piece, metrics) + kGap;
    width = std::max(width, w);
  }
  const int total = static_cast<int>(drawing.size()) * (height + kRowGap) - kRowGap;
  QImage image(QSize(width + 2, total + 2) * pixelRatio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(pixelRatio);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  p.setFont(font);
  int y = 1;
  for (const auto& row : drawing) {
    int x = 1;
    for (const Piece& piece : row) {
      const int w = widthOf(piece, metrics);
      paintPiece(p, piece, QRect(x, y, w, height), palette);
      x += w + kGap;
    }
    y += height + kRowGap;
  }
  return image;
}

std::vector<GuideWindow::Topic> GuideWindow::topicsText() {
  const QString img = QStringLiteral("<p><img src=\"drawing:%1\"></p>");
  return {
      {tr("Build a name"),
       tr("<h2>Build a name from pieces</h2><p>Drop a folder or a card's DCIM folder on the "
          "window. Then put together the new name from pieces: the date and time of the shot, the "
          "camera, the lens and exposure, the place and the people, your own text, and a "
          "counter.</p>") +
           img +
           tr("<p>Drag the pieces into the order you like and remove the ones you don't want. "
              "The separator between them is yours to choose. If you prefer typing, choose "
              "<b>Write by hand</b>: variables are written in braces, such as "
              "<code>{date:yyyy-MM-dd}_{body}_{counter}</code>, and the field completes their "
              "names.</p><p>Every file shows its new name before anything happens. Red means "
              "the name can't be used (two files would get the same name, for instance); amber "
              "is a warning, such as a photo without the data a piece asks for.</p>"),
       {{chip(tr("Date")), text(QStringLiteral("_")), chip(tr("Camera")), text(QStringLiteral("_")),
         chip(tr("Counter")), arrow(), file(QStringLiteral("2025-06-14_A7R_0001.ARW"))}}},
      {tr("Changes"),
       tr("<h2>Fix up names with changes</h2><p>Changes work on the name one after the other, "
          "from the top: insert or remove text, replace words, move a block, change the case, "
          "clean up spaces, change the extension. Drag a change to reorder it "
          "(or Alt+Ctrl+Up and Down), turn it off to see the names without it, or duplicate "
          "it to start a similar one.</p>") +
           img +
           tr("<p>A change can act on all the files or only on some kinds, such as the "
              "videos. Start from the new name you built, or from the camera's original name.</p>"),
       {{file(QStringLiteral("DSC01203.JPG")), arrow(tr("Replace")),
         file(QStringLiteral("Wedding01203.JPG")), arrow(tr("lower case")),
         file(QStringLiteral("wedding01203.jpg"))}}},
      {tr("Twins"),
       tr("<h2>Twins stay together</h2><p>The RAW file, its JPEG, its XMP sidecar and a video of "
          "the same shot share the name before the dot. Keep twins together, and they all get "
          "the RAW's new name, so your editing software still finds the sidecar beside its "
          "picture.</p>") +
           img + tr("<p>Choose which twins follow the RAW in Settings › Names.</p>"),
       {{file(QStringLiteral("DSC01203.ARW")), arrow(),
         file(QStringLiteral("2025-06-14_140305.ARW"))},
        {file(QStringLiteral("DSC01203.JPG")), arrow(),
         file(QStringLiteral("2025-06-14_140305.JPG"))},
        {file(QStringLiteral("DSC01203.xmp")), arrow(),
         file(QStringLiteral("2025-06-14_140305.xmp"))}}},
      {tr("Presets"),
       tr("<h2>Keep your recipes as presets</h2><p>When a name and its changes suit a kind of "
          "job, save them as a preset (File › Save Preset As…). Next time, load it from the "
          "preset menu or from the empty window and the names are ready. A dot beside the "
          "preset's name says you changed something since; Save Preset keeps the change.</p>") +
           img,
       {{card(tr("Wedding")), card(tr("Studio portraits")), card(tr("Travel"))}}},
      {tr("Camera bodies"),
       tr("<h2>Camera bodies and their clocks</h2><p>Shooting with two cameras? Give each one a "
          "short tag in Settings › Camera Bodies, and the <code>{body}</code> piece puts it in "
          "the names. If one camera's clock was wrong, its offset corrects the times in the "
          "names; the files themselves aren't changed.</p>") +
           img +
           tr("<p>The quickest way: select two photos of the same moment from the two cameras, "
              "open the file panel, and let the clock card line them up.</p>"),
       {{card(QStringLiteral("A7R  14:03:05")), text(tr("the right time"))},
        {card(QStringLiteral("Z6  14:01:05")), arrow(QStringLiteral("+0:02:00")),
         card(QStringLiteral("Z6  14:03:05"))}}},
      {tr("Going back"),
       tr("<h2>Nothing is lost</h2><p>A rename never overwrites a file, and stops before "
          "touching anything when a name is taken. Changed your mind? <b>Restore Previous "
          "Names</b> (Alt+Ctrl+Z) puts back the names from before the last rename; the "
          "History window (Ctrl+Y) goes back from any batch.</p>") +
           img +
           tr("<p><b>Restore Original Names</b> brings back the names the camera gave, even "
              "after several renames, as long as the disk keeps them (see Settings › "
              "Files).</p>"),
       {{file(QStringLiteral("DSC01203.JPG")), arrow(tr("Rename")),
         file(QStringLiteral("Wedding_0003.JPG")), arrow(tr("Restore")),
         file(QStringLiteral("DSC01203.JPG"))}}},
  };
}

GuideWindow::GuideWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("guideWindow");
  setWindowTitle(tr("Tessane Rename Guide"));
  content_ = topicsText();
  topics_ = new QListWidget;
  topics_->setObjectName("guideTopics");
  topics_->setAccessibleName(tr("Topics"));
  for (const Topic& topic : content_)
    topics_->addItem(topic.title);
  topics_->setMaximumWidth(200);
  topics_->setSpacing(3);
  topics_->setFrameShape(QFrame::NoFrame);
  page_ = new QTextBrowser;
  page_->setObjectName("guidePage");
  page_->setAccessibleName(tr("Guide"));
  page_->setOpenExternalLinks(true);
  page_->document()->setDocumentMargin(16);
  connect(topics_, &QListWidget::currentRowChanged, this, &GuideWindow::showTopic);
  showPages();
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(topics_);
  layout->addWidget(page_, 1);
  topics_->setCurrentRow(0);
  resize(900, 560);
}

// Every topic on one page, each under its anchor, its drawing in the window's colours.
void GuideWindow::showPages() {
  QString html;
  const qreal ratio = devicePixelRatioF();
  for (std::size_t i = 0; i < content_.size(); ++i) {
    const QString n = QString::number(i);
    page_->document()->addResource(QTextDocument::ImageResource,
                                   QUrl(QStringLiteral("drawing:") + n),
                                   draw(content_[i].drawing, palette(), ratio));
    html += QStringLiteral("<a name=\"topic%1\"></a>").arg(n) + content_[i].html.arg(n);
    if (i + 1 < content_.size()) html += QStringLiteral("<p>&nbsp;</p>");
  }
  page_->setHtml(html);
}

void GuideWindow::showTopic(int topic) {
  if (topic < 0 || topic >= static_cast<int>(content_.size())) return;
  if (topics_->currentRow() != topic) topics_->setCurrentRow(topic);
  page_->scrollToAnchor(QStringLiteral("topic%1").arg(topic));
}

void GuideWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange && page_ != nullptr) {
    const int scroll = page_->verticalScrollBar()->value();
    showPages();
    page_->verticalScrollBar()->setValue(scroll);
  }
  QWidget::changeEvent(event);
}

}  // namespace tessane
