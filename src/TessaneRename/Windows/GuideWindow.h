// The guide: a short illustrated tour for photographers on one page (building a name, changes,
// twins, presets, camera bodies, going back), its topics listed on the left to jump to. The
// drawings are made here, in the window's own colours, so they follow light and dark.
#pragma once

#include <QImage>
#include <QPalette>
#include <QWidget>

#include <vector>

class QListWidget;
class QTextBrowser;

namespace tessane {

class GuideWindow : public QWidget {
  Q_OBJECT

 public:
  explicit GuideWindow(QWidget* parent = nullptr);

  QListWidget* topics() const { return topics_; }
  QTextBrowser* page() const { return page_; }
  void showTopic(int topic);

  // One drawing: rows of pieces, each a chip of a name, a file, a card, an arrow or plain text.
  struct Piece {
    enum class Kind { chip, file, card, arrow, text };
    Kind kind;
    QString text;
  };
  using Drawing = std::vector<std::vector<Piece>>;
  static QImage draw(const Drawing& drawing, const QPalette& palette, qreal pixelRatio);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct Topic {
    QString title;
    QString html;  // with <img src="drawing:%1"> where the drawing goes
    Drawing drawing;
  };
  static std::vector<Topic> topicsText();
  void showPages();

  std::vector<Topic> content_;
  QListWidget* topics_ = nullptr;
  QTextBrowser* page_ = nullptr;
};

}  // namespace tessane
