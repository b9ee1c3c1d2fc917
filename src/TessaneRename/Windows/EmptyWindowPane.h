// What an empty main window shows: the drop hint, and below it the recent folders and the recent
// presets, each one button away (a recent folder opens, a recent preset becomes the rules). Read
// again each time the pane is shown.
#pragma once

#include <QWidget>

class QLabel;
class QSettings;
class QVBoxLayout;

namespace tessane {

class FolderModel;
class PresetLibrary;

class EmptyWindowPane : public QWidget {
  Q_OBJECT

 public:
  // `presets` may be null: no presets are offered then.
  EmptyWindowPane(FolderModel& model, QSettings& settings, PresetLibrary* presets,
                  QWidget* parent = nullptr);

  void refresh();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  FolderModel& model_;
  QSettings& settings_;
  PresetLibrary* presets_;
  QWidget* recentBox_;
  QLabel* foldersTitle_;
  QVBoxLayout* folders_;
  QLabel* presetsTitle_;
  QVBoxLayout* presetList_;
};

}  // namespace tessane
