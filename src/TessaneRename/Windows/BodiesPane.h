// Settings › Camera Bodies: the table of the user's cameras, one row per body key (a serial
// number or a model name) with the tag that {body} puts into names and the clock offset that
// corrects its capture times ("+0:02:00": its clock was two minutes behind). Rows are added by
// hand or from the cameras of the open files that have no tag yet; the table is exported to and
// imported from "Tessane camera bodies.json" (imported rows win).
//
// Every committed edit is written to the BodyTable at once. An offset that isn't one is refused
// with a message and the row keeps its previous offset; a row without a key is kept on screen
// only until it gets one.
#pragma once

#include <QWidget>

#include <functional>
#include <vector>

#include "RenameEngine/MetadataValue.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QTableWidget;
class QTableWidgetItem;

namespace tessane {

class BodyTable;

class BodiesPane : public QWidget {
  Q_OBJECT

 public:
  enum Column { key, tag, offset };
  using OpenFiles = std::function<std::vector<MetadataMap>()>;

  BodiesPane(BodyTable& table, OpenFiles openFiles, QWidget* parent = nullptr);

  QTableWidget* table() const { return table_; }
  QLabel* message() const { return message_; }
  // Shows the table as stored.
  void reload();
  // The table changed (here or elsewhere: the clock-sync card); shown again unless the change
  // is this pane's own.
  void tableChanged();

  void addRow(const QString& key = {});
  void removeSelectedRows();
  void addFromOpenFiles();
  void importFrom(const QString& file);
  void exportTo(const QString& file);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void makeTable();
  QHBoxLayout* makeButtons();
  void itemChanged(QTableWidgetItem* item);
  void storeRows();
  void showMessage(const QString& text, bool isProblem);
  void updateAddFromOpenFiles();

  BodyTable& bodies_;
  OpenFiles openFiles_;
  QTableWidget* table_ = nullptr;
  QLabel* message_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPushButton* fromOpenFiles_ = nullptr;
  bool loading_ = false;
};

}  // namespace tessane
