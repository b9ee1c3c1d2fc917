// The recent folders where a window offers them: the sidebar's "Recent" list (the recent folders
// not already in the window's list, one click opens one) and File ▸ Open Recent. Both read
// RecentFolders when they are shown, so every window sees the folders any window opened.
#pragma once

#include <QWidget>

#include <filesystem>
#include <functional>

class QLabel;
class QListWidget;
class QMenu;
class QSettings;

namespace tessane {

class FolderModel;

class RecentFoldersList : public QWidget {
  Q_OBJECT

 public:
  RecentFoldersList(FolderModel& model, QSettings& settings, QWidget* parent = nullptr);

  QListWidget* list() const { return list_; }
  void refresh();

  // File ▸ Open Recent: opens the chosen folder in `model`; "Clear Menu" forgets them all.
  static QMenu* makeMenu(FolderModel& model, QSettings& settings, QWidget* parent);

 private:
  FolderModel& model_;
  QSettings& settings_;
  QLabel* title_;
  QListWidget* list_;
};

}  // namespace tessane
