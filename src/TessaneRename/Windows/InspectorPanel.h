// The file panel ("Show or hide the file panel"): for the selected file its thumbnail, its
// current, original and new names (what changes highlighted), its problems, the step-by-step
// trace of its new name and its shooting data; below, the clock-sync card for two selected
// photos. It shows FileInspection, made by the model's side, and refreshes only while visible.
#pragma once

#include <QScrollArea>

class QLabel;
class QTimer;

namespace tessane {

class ClockSyncCard;
class FolderModel;
struct FileInspection;
struct FolderFile;
class ThumbnailCache;

class InspectorPanel : public QScrollArea {
  Q_OBJECT

 public:
  InspectorPanel(FolderModel& model, ThumbnailCache* thumbnails, QWidget* parent = nullptr);

  void setThumbnails(ThumbnailCache* thumbnails) { thumbnails_ = thumbnails; }
  ClockSyncCard* clockSync() const { return clockSync_; }
  // Brings the panel up to date at once (it otherwise waits for the event loop).
  void refresh();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void scheduleRefresh();
  void showPicture(const FolderFile& file);
  void showNames(const FileInspection& in);
  void showProblems(const FileInspection& in);
  void showTrace(const FileInspection& in);
  void showFields(const FileInspection& in);

  FolderModel& model_;
  ThumbnailCache* thumbnails_;
  QTimer* refresh_;
  QLabel* picture_;
  QLabel* title_;
  QLabel* names_;
  QLabel* problems_;
  QLabel* traceTitle_;
  QLabel* trace_;
  QLabel* fieldsTitle_;
  QLabel* fields_;
  ClockSyncCard* clockSync_;
};

}  // namespace tessane
