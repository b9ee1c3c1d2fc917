#include "AppContext.h"

#include <QSettings>

#include "RenameIO/DataFolder.h"
#include "RenameIO/LinuxFileRenaming.h"

namespace tessane {

AppContext::AppContext() = default;

AppContext::~AppContext() {
  if (history_) history_->waitForSaves();
  if (settings_) settings_->sync();
}

RecoveryReport AppContext::start() {
  LinuxFileRenaming system;
  return CrashRecovery::recoverJournals(journalFolder(), system);
}

QSettings& AppContext::settings() {
  if (!settings_) settings_ = openAppSettings();
  return *settings_;
}

Preferences AppContext::preferences() {
  return Preferences(settings());
}

BodyTable& AppContext::bodies() {
  if (!bodies_) bodies_ = std::make_unique<BodyTable>(settings());
  return *bodies_;
}

RenameHistory& AppContext::history() {
  if (!history_)
    history_ = std::make_unique<RenameHistory>(RenameHistory::load(DataFolder::historyFile()));
  return *history_;
}

PresetStore AppContext::presets() const {
  return PresetStore::standard();
}

std::filesystem::path AppContext::journalFolder() const {
  return DataFolder::journalFolder();
}

}  // namespace tessane
