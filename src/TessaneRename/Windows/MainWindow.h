// A main window over one FolderModel: the sidebar of folders (a drop target for folders and files
// from the file manager, several selected at once), the name builder and the changes below it
// (with the window's preset library), the file list, the
// error strip, the toast after a batch, Rename / Restore Previous Names / Restore Original Names,
// the status line with the counts, and the menus of the command table with their shortcuts.
//
// It holds no rename logic: every control shows a property of the model and calls one of its
// operations; the model's signals keep the window current.
#pragma once

#include <QMainWindow>
#include <QUrl>

#include <filesystem>
#include <map>
#include <vector>

#include "TessaneRename/AppCommands.h"

class QAction;
class QComboBox;
class QFrame;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTableView;
class QToolButton;

namespace tessane {

class AppContext;
class AppUpdater;
class ChangesPanel;
class DesktopServices;
class FileGridView;
class FileListModel;
class FolderModel;
class InspectorPanel;
class NameBuilderPanel;
class NameField;
class PresetLibrary;
class ThumbnailCache;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  MainWindow(FolderModel& model, AppContext& app, DesktopServices& desktop,
             QWidget* parent = nullptr);

  FolderModel& model() const { return model_; }
  FileListModel& fileList() const { return *fileList_; }
  QLineEdit* templateField() const;
  NameBuilderPanel& nameBuilder() const { return *builder_; }
  ChangesPanel& changes() const { return *changes_; }
  PresetLibrary& presets() const { return *presets_; }
  QTableView* fileView() const { return fileView_; }
  FileGridView* gridView() const { return gridView_; }
  InspectorPanel* inspector() const { return inspector_; }
  ThumbnailCache* thumbnails() const { return thumbnails_; }
  // The grid instead of the table; the selection stays.
  void showGrid(bool grid);
  bool showsGrid() const;
  QAction* action(CommandID id) const;
  // The update check behind "Check for Updates…" (not in the menu without one, disabled while it
  // checks).
  void setUpdater(AppUpdater* updater);
  // The address "Tessane Rename Website" opens (not in the menu when empty); the build's own by
  // default.
  void setWebsite(const QUrl& website);

  // What the command table needs to know of this window.
  CommandState commandState() const;

 signals:
  // A command of the application rather than of this window (New Window, History, Settings, the
  // guide, the report), for whoever owns the windows.
  void applicationCommand(CommandID id);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // The search and the filters above the files.
  QHBoxLayout* makeListBar();
  void makeFileTable();
  // The scope and the Rename and Restore buttons.
  QHBoxLayout* makeFoot();
  // The sidebar, the editing above the files, the file panel.
  QWidget* makeCentral(QHBoxLayout* listBar, QHBoxLayout* foot, QWidget* inspectorPane);
  void connectModel();
  QWidget* makeSidebar();
  QWidget* makeEmptyHint();
  // The thumbnails, the new-name column, the grid and its switch, the file panel.
  QWidget* makeFileViews(QHBoxLayout* listBar);
  QWidget* makeErrorStrip();
  QWidget* makeToast();
  void makeMenus();
  void run(CommandID id);
  // Each carries out the commands of its menu; false for a command of another menu.
  bool runFileCommand(CommandID id);
  bool runEditCommand(CommandID id);
  bool runRenameCommand(CommandID id);
  bool runChangesCommand(CommandID id);
  bool runOtherCommand(CommandID id);
  void addFolder();
  void removeSelectedFolders();
  void tickShown(bool ticked);

  void showFolders();
  void showFolderSelection();
  void showError();
  void showToast();
  void toastActionClicked();
  void showCounts();
  void showFileSelection();
  void fileSelectionChanged();
  void updateCommands();
  void filtersChanged();

  FolderModel& model_;
  AppContext& app_;
  DesktopServices& desktop_;
  FileListModel* fileList_;
  PresetLibrary* presets_;

  QLabel* sidebarTitle_ = nullptr;
  QListWidget* folderList_ = nullptr;
  NameBuilderPanel* builder_ = nullptr;
  ChangesPanel* changes_ = nullptr;
  QFrame* errorStrip_ = nullptr;
  QLabel* errorText_ = nullptr;
  QFrame* toast_ = nullptr;
  QLabel* toastText_ = nullptr;
  QPushButton* toastAction_ = nullptr;
  enum FilterButton { rawFilter, imageFilter, videoFilter, warningFilter, errorFilter };
  QToolButton* filters_[5] = {};
  QLabel* listTitle_ = nullptr;
  QLineEdit* search_ = nullptr;
  QStackedWidget* listStack_ = nullptr;
  QTableView* fileView_ = nullptr;
  FileGridView* gridView_ = nullptr;
  QToolButton* viewButtons_[2] = {};  // list, grid
  InspectorPanel* inspector_ = nullptr;
  ThumbnailCache* thumbnails_ = nullptr;
  QComboBox* scope_ = nullptr;
  QPushButton* wholeShotsButton_ = nullptr;
  QPushButton* renameButton_ = nullptr;
  QPushButton* undoButton_ = nullptr;
  QPushButton* originalsButton_ = nullptr;
  QLabel* counts_ = nullptr;
  QLabel* progress_ = nullptr;
  std::map<CommandID, QAction*> actions_;
  bool syncing_ = false;  // the window is showing the model's state, not the user's gesture
  AppUpdater* updater_ = nullptr;
  QUrl website_;
};

}  // namespace tessane
