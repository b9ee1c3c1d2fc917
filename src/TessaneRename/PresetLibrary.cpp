#include "PresetLibrary.h"

#include "TessaneRename/Messages.h"

#include <QCoreApplication>
#include <QSettings>

#include <algorithm>

#include "TessaneRename/DesktopServices.h"

namespace tessane {
namespace {

constexpr const char* kRecentKey = "recentPresets";
constexpr qsizetype kRecentKept = 10;

QString q(const std::string& text) {
  return QString::fromStdString(text);
}

}  // namespace

PresetLibrary::PresetLibrary(PresetStore store, QSettings& settings, DesktopServices& desktop,
                             QObject* parent)
    : QObject(parent), store_(std::move(store)), settings_(settings), desktop_(desktop) {}

QStringList PresetLibrary::presetNames() const {
  QStringList names;
  for (const auto& entry : entries_)
    names << q(entry.preset.name);
  return names;
}

QString PresetLibrary::currentName() const {
  return current_ ? q(current_->name) : QString();
}

bool PresetLibrary::reload() {
  Result<PresetStore::Listing> listing = store_.list();
  if (!listing) {
    setErrorMessage(QCoreApplication::translate("PresetLibrary", "Couldn’t read the presets."));
    return false;
  }
  // The folder reads again: its failure is over.
  if (errorMessage_ == QCoreApplication::translate("PresetLibrary", "Couldn’t read the presets.")) {
    setErrorMessage({});
  }
  entries_ = std::move(listing.value().presets);
  unreadable_.clear();
  for (const auto& failure : listing.value().failures)
    unreadable_ << q(Messages::of(failure));
  emit presetsChanged();
  return true;
}

const RuleStack& PresetLibrary::load(const Preset& preset) {
  setCurrent(preset);
  noteRecent(preset.name);
  return current_->stack;
}

bool PresetLibrary::isModified(const RuleStack& rules) const {
  return current_ && current_->stack != rules;
}

bool PresetLibrary::save(const RuleStack& rules) {
  if (!current_) return false;
  Preset preset = *current_;
  preset.schemaVersion = Preset::kSchemaVersion;
  preset.stack = rules;
  return write(preset);
}

bool PresetLibrary::saveAs(const QString& name, const RuleStack& rules) {
  Preset preset;
  preset.name = name.trimmed().toStdString();
  preset.stack = rules;
  return write(preset);
}

bool PresetLibrary::write(const Preset& preset) {
  Result<std::filesystem::path> saved = store_.save(preset);
  if (!saved) {
    setErrorMessage(q(Messages::presetNotSaved(preset.name, saved.error())));
    return false;
  }
  setErrorMessage({});
  reload();
  setCurrent(preset);
  noteRecent(preset.name);
  return true;
}

bool PresetLibrary::remove(const std::filesystem::path& file) {
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const PresetStore::Entry& e) { return e.file == file; });
  const std::optional<std::string> name =
      entry != entries_.end() ? std::optional(entry->preset.name) : std::nullopt;
  if (auto failure = desktop_.moveToTrash(file)) {
    setErrorMessage(q(Messages::presetNotTrashed(name.value_or(file.filename().string()),
                                                 failure->toStdString())));
    return false;
  }
  setErrorMessage({});
  reload();
  // Two files may hold presets of one name; the current one is gone only if no file holds it.
  if (current_ && name == current_->name) {
    const bool stillThere = std::any_of(entries_.begin(), entries_.end(),
                                        [&](const auto& e) { return e.preset == *current_; });
    if (!stillThere) setCurrent(std::nullopt);
  }
  return true;
}

bool PresetLibrary::showFolder() {
  std::error_code ignored;
  std::filesystem::create_directories(store_.directory(), ignored);
  return desktop_.showFolder(store_.directory());
}

std::vector<Preset> PresetLibrary::recent(std::size_t limit) const {
  std::vector<Preset> out;
  std::vector<bool> taken(entries_.size(), false);
  const auto take = [&](std::size_t i) {
    if (out.size() < limit && !taken[i]) {
      taken[i] = true;
      out.push_back(entries_[i].preset);
    }
  };
  for (const QString& name : settings_.value(kRecentKey).toStringList()) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (q(entries_[i].preset.name) == name) {
        take(i);
        break;
      }
    }
  }
  for (std::size_t i = 0; i < entries_.size(); ++i)
    take(i);
  return out;
}

void PresetLibrary::setCurrent(std::optional<Preset> preset) {
  if (preset == current_) return;
  current_ = std::move(preset);
  emit currentChanged();
}

void PresetLibrary::setErrorMessage(const QString& message) {
  if (message == errorMessage_) return;
  errorMessage_ = message;
  emit errorMessageChanged();
}

void PresetLibrary::noteRecent(const std::string& name) {
  QStringList names = settings_.value(kRecentKey).toStringList();
  names.removeAll(q(name));
  names.prepend(q(name));
  while (names.size() > kRecentKept)
    names.removeLast();
  settings_.setValue(kRecentKey, names);
}

}  // namespace tessane
