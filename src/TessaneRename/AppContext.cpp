#include "AppContext.h"

#include <QSettings>

#include "RenameIO/DataFolder.h"
#include "RenameIO/LinuxFileRenaming.h"

namespace tessane {

AppContext::AppContext()
    : dataFolder_(DataFolder::location()), fileSystem_(std::make_unique<LinuxFileRenaming>()) {}

AppContext::AppContext(std::unique_ptr<QSettings> settings, std::filesystem::path dataFolder)
    : settings_(std::move(settings)),
      dataFolder_(std::move(dataFolder)),
      fileSystem_(std::make_unique<LinuxFileRenaming>()) {}

AppContext::~AppContext() {
  if (history_) history_->waitForSaves();
  if (settings_) settings_->sync();
}

RecoveryReport AppContext::start() {
  return CrashRecovery::recoverJournals(journalFolder(), *fileSystem_);
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
    history_ = std::make_unique<RenameHistory>(RenameHistory::load(dataFolder_ / "History.json"));
  return *history_;
}

PresetStore AppContext::presets() const {
  return PresetStore(dataFolder_ / "Presets");
}

std::filesystem::path AppContext::journalFolder() const {
  return dataFolder_ / "Journal";
}

}  // namespace tessane
