// The clock-sync card of the file panel: with two photos selected from two cameras, the user
// says which camera had the right time and lines the other one's clock up with it. The card
// shows what ClockSync allows, calls it, and keeps the result line and its note in view until
// another pair is chosen.
#pragma once

#include <QFrame>

#include <filesystem>
#include <optional>

class QButtonGroup;
class QLabel;
class QPushButton;
class QRadioButton;

namespace tessane {

class FolderModel;
struct FolderFile;

class ClockSyncCard : public QFrame {
  Q_OBJECT

 public:
  explicit ClockSyncCard(FolderModel& model, QWidget* parent = nullptr);

  // The selected files (null when fewer); the card shows what they allow.
  void setFiles(const FolderFile* a, const FolderFile* b);
  // Lines the clocks up; `firstIsRight`: the first file's camera has the right time.
  void lineUp(bool firstIsRight);

  QLabel* resultLine() const { return result_; }

 private:
  FolderModel& model_;
  std::filesystem::path first_, second_;
  QLabel* explanation_;
  QRadioButton* choices_[2];
  QButtonGroup* group_;
  QPushButton* apply_;
  QLabel* result_;
  QLabel* note_;
};

}  // namespace tessane
