// The history window: every batch the system performed, newest first, with its date, its folder,
// its count of files and whether it was gone back from; Go Back puts back the names the selected
// batch's files had before it ("12 files back to their previous names"), through the main window
// whose list holds its folders (the active one first). A batch whose folder is in no open list
// can't be gone back from until it is added ("Add the folder to the list to go back"). Clear
// History… forgets every batch after a confirmation; the files keep their names.
//
// The window holds no state of its own beyond the selection: refresh() shows the history and the
// open windows again (the owner calls it after every batch and every change of the lists).
#pragma once

#include <QMetaObject>
#include <QWidget>

#include <functional>
#include <vector>

#include "RenameEngine/Uuid.h"
#include "TessaneRename/RenameHistory.h"

class QLabel;
class QPushButton;
class QStackedWidget;
class QTreeWidget;

namespace tessane {

class FolderModel;

class HistoryWindow : public QWidget {
  Q_OBJECT

 public:
  enum Column { date, folder, files, state };
  // The models of the open main windows, the active one first.
  using Models = std::function<std::vector<FolderModel*>()>;

  HistoryWindow(RenameHistory& history, Models models, QWidget* parent = nullptr);
  ~HistoryWindow() override;

  QTreeWidget* list() const { return list_; }
  QPushButton* goBackButton() const { return goBack_; }
  QLabel* message() const { return message_; }

  void refresh();
  // Goes back from the selected batch.
  void goBack();
  // Forgets every batch (the button asks first).
  void clearHistory();

 private:
  const RenameHistory::Entry* selectedEntry() const;
  FolderModel* modelFor(const RenameHistory::Entry& entry) const;
  void selectionChanged();
  void watch(FolderModel* model);
  // The batch ended: its toast, or the model's message when it failed or was refused.
  void batchEnded(FolderModel* model, bool failed);
  void showMessage(const QString& text, bool isProblem);

  RenameHistory& history_;
  Models models_;
  QStackedWidget* stack_ = nullptr;
  QTreeWidget* list_ = nullptr;
  QLabel* message_ = nullptr;
  QPushButton* goBack_ = nullptr;
  QPushButton* clear_ = nullptr;
  QMetaObject::Connection watchingToast_, watchingError_;
};

}  // namespace tessane
