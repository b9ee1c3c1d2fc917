// The application's windows and who owns them: every main window (one per set of folders, each
// with its own FolderModel, File ▸ New Window opening another) and the auxiliary windows that all
// of them share (History, Settings, the guide, the report), each made on first use and raised when
// asked again. It applies the appearance to the whole application, and it carries a change of the
// settings or of the camera-body table to every open window's preview.
//
// A main window lives until it is closed; closing the last one closes the auxiliary windows too,
// so that the application quits. Everything here belongs to the main thread.
#pragma once

#include <QObject>

#include <filesystem>
#include <memory>
#include <vector>

#include "TessaneRename/AppCommands.h"
#include "TessaneRename/Windows/SettingsWindow.h"

class QMessageBox;

namespace tessane {

class AppContext;
class AppearanceStyle;
class AppUpdater;
class BetaReporter;
class DesktopServices;
class FolderModel;
class GuideWindow;
class HistoryWindow;
class MainWindow;
class ReportWindow;

class AppWindows : public QObject {
  Q_OBJECT

 public:
  // `askDesktop`: whether the desktop's colour scheme is asked for (tests leave it out).
  AppWindows(AppContext& app, DesktopServices& desktop, BetaReporter& reporter,
             bool askDesktop = true);
  ~AppWindows() override;

  // A new main window over a model of its own, shown.
  MainWindow& newWindow();
  // The open main windows, the most recently active first.
  std::vector<MainWindow*> mainWindows() const;
  MainWindow* activeWindow() const;

  // Carries out a command of the application (New Window, History, Settings, the guide, the
  // report); the others belong to a main window.
  void run(CommandID id);
  SettingsWindow& showSettings();
  HistoryWindow& showHistory();
  GuideWindow& showGuide();
  ReportWindow& showReport();
  // The version, its build number and the licence.
  QMessageBox& showAbout();

  AppearanceStyle& appearance() const { return *appearance_; }

  // The update check that every main window's "Check for Updates…" calls and the settings turn on
  // or off; none by default, and then neither the command nor the setting is shown.
  void setUpdater(AppUpdater* updater);

  // After a change of the settings: the open windows' previews follow it. A new counter start or
  // width goes into each window's name (the changes' own counters keep theirs).
  void settingsChanged(SettingsWindow::Change change);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Main;
  void closed(MainWindow* window);
  void refreshHistory();
  std::vector<FolderModel*> models() const;

  AppContext& app_;
  DesktopServices& desktop_;
  BetaReporter& reporter_;
  std::unique_ptr<AppearanceStyle> appearance_;
  AppUpdater* updater_ = nullptr;
  std::vector<std::unique_ptr<Main>> mains_;  // the most recently active last
  std::unique_ptr<SettingsWindow> settings_;
  std::unique_ptr<HistoryWindow> history_;
  std::unique_ptr<GuideWindow> guide_;
  std::unique_ptr<ReportWindow> report_;
  std::unique_ptr<QMessageBox> about_;
};

}  // namespace tessane
