// The history window: every batch the system performed, newest first, with its date, its folder,
// its count of files and its state (renamed, renamed again since, gone back); Go Back puts back
// the names the selected batch's files had before it ("12 files back to their previous names"),
// through the main window whose list holds its folders (the active one first). When later batches
// renamed the same files again, the window names them and asks once before going back through
// them too. A batch whose folder is in no open list can't be gone back from until it is added
// ("Add the folder to the list to go back"). Clear History… forgets every batch after a
// confirmation; the files keep their names.
//
// The window holds no state of its own beyond the selection: refresh() reads the history file
// again (the tool may have renamed meanwhile) and shows it and the open windows (the owner calls
// it after every batch and every change of the lists; a change of the file calls it too).
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
  // Asks the user a yes-or-no question: the question and its details; true for yes.
  using Ask = std::function<bool(const QString& question, const QString& details)>;

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
  // Tests answer the question asked before going back through later batches.
  void setAsk(Ask ask) { ask_ = std::move(ask); }

 private:
  const RenameHistory::Entry* selectedEntry() const;
  // The window that can go back through `chain` (every folder in its list), or null.
  FolderModel* modelFor(const std::vector<RenameHistory::Entry>& chain) const;
  bool askToGoBackThrough(const std::vector<RenameHistory::Entry>& chain);
  void selectionChanged();
  void watch(FolderModel* model);
  // The batch ended: its toast, or the model's message when it failed or was refused.
  void batchEnded(FolderModel* model, bool failed);
  void showMessage(const QString& text, bool isProblem);

  RenameHistory& history_;
  Models models_;
  Ask ask_;
  QStackedWidget* stack_ = nullptr;
  QTreeWidget* list_ = nullptr;
  QLabel* message_ = nullptr;
  QPushButton* goBack_ = nullptr;
  QPushButton* clear_ = nullptr;
  QMetaObject::Connection watchingToast_, watchingError_;
};

}  // namespace tessane
