// What every front end of one user shares: the settings store, the camera-body table, the rename
// history, the presets folder and the crash journal's folder, the same files for the windows and
// the command-line tool, so that a rename made in one can be undone in the other. Settings follow
// XDG_CONFIG_HOME, data XDG_DATA_HOME.
//
// start() must run first at every start of a front end: it puts back any batch that a killed
// process left half done and returns what it did, for the front end to show.
//
// Owned by the main thread; the history and the body table are loaded on first use.
#pragma once

#include <filesystem>
#include <memory>

#include "RenameIO/CrashRecovery.h"
#include "RenameIO/PresetStore.h"
#include "RenameIO/SystemFileRenaming.h"
#include "TessaneRename/BodyTable.h"
#include "TessaneRename/Preferences.h"
#include "TessaneRename/RenameHistory.h"

class QSettings;

namespace tessane {

class AppContext {
 public:
  AppContext();
  // The same over a given settings store and data folder (tests, a portable set-up).
  AppContext(std::unique_ptr<QSettings> settings, std::filesystem::path dataFolder);
  ~AppContext();  // waits for the history's last save and writes the settings out
  AppContext(const AppContext&) = delete;
  AppContext& operator=(const AppContext&) = delete;

  RecoveryReport start();

  QSettings& settings();
  Preferences preferences();
  BodyTable& bodies();
  RenameHistory& history();
  PresetStore presets() const;
  std::filesystem::path journalFolder() const;
  // The file system every batch, recovery and listing of names goes through: the system's own,
  // unless a test handed in a fake or a faulty one (before any front end uses it).
  SystemFileRenaming& fileSystem() { return *fileSystem_; }
  void setFileSystem(std::unique_ptr<SystemFileRenaming> system) {
    fileSystem_ = std::move(system);
  }

 private:
  std::unique_ptr<QSettings> settings_;
  std::filesystem::path dataFolder_;
  std::unique_ptr<BodyTable> bodies_;
  std::unique_ptr<RenameHistory> history_;
  std::unique_ptr<SystemFileRenaming> fileSystem_;
};

}  // namespace tessane
