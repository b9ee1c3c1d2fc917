// The presets the user saved (named rule stacks) and the one in use in a window, observable by
// the windows. Files are read and written by PresetStore; deleting moves the file to the Trash.
// Failures never reach the views as exceptions: they set errorMessage ("Couldn’t read the
// presets." when the folder can't be listed, the list then left as it was; the store's failures
// in the message layer's words, the system's reason in the interface's language). The next save or
// delete that works clears it, as does the next listing that works a listing failure.
//
// The window hands the library the rules it is building: loading gives back the preset's stack
// for the folder model, saving takes the model's stack. Setting `current` or the message to the
// value already held publishes nothing.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <optional>
#include <vector>

#include "RenameIO/PresetStore.h"

class QSettings;

namespace tessane {

class DesktopServices;

class PresetLibrary : public QObject {
  Q_OBJECT
  Q_PROPERTY(QStringList presetNames READ presetNames NOTIFY presetsChanged)
  Q_PROPERTY(QString currentName READ currentName NOTIFY currentChanged)
  Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

 public:
  // `settings` keeps the recently used presets ("recentPresets"); `desktop` takes deleted
  // presets to the Trash and shows the folder. The store's folder is not read until reload().
  PresetLibrary(PresetStore store, QSettings& settings, DesktopServices& desktop,
                QObject* parent = nullptr);

  const std::vector<PresetStore::Entry>& entries() const { return entries_; }
  // The files that could not be read at the last reload, one message each.
  const QStringList& unreadable() const { return unreadable_; }
  const std::optional<Preset>& current() const { return current_; }
  QStringList presetNames() const;
  QString currentName() const;
  QString errorMessage() const { return errorMessage_; }
  const PresetStore& store() const { return store_; }

  bool reload();
  // Makes the preset current and gives its rules, for the folder model.
  const RuleStack& load(const Preset& preset);
  // Whether `rules` differ from the current preset's (false without one).
  bool isModified(const RuleStack& rules) const;
  // "Save Preset": writes `rules` into the current preset; false without one (the window then
  // asks for a name) or when writing fails.
  bool save(const RuleStack& rules);
  // "Save Preset As…": writes `rules` under `name` and makes that preset current.
  bool saveAs(const QString& name, const RuleStack& rules);
  // Moves a preset's file to the Trash; the current preset is cleared when it was that one (the
  // window's rules stay as they are).
  bool remove(const std::filesystem::path& file);
  // "Show Presets in File Manager".
  bool showFolder();
  // Presets to start from in an empty window: the recently loaded or saved first, then the others
  // in the list's order, at most `limit`.
  std::vector<Preset> recent(std::size_t limit = 5) const;

  void clearError() { setErrorMessage({}); }

 signals:
  void presetsChanged();
  void currentChanged();
  void errorMessageChanged();

 private:
  void setCurrent(std::optional<Preset> preset);
  void setErrorMessage(const QString& message);
  void noteRecent(const std::string& name);
  bool write(const Preset& preset);

  PresetStore store_;
  QSettings& settings_;
  DesktopServices& desktop_;
  std::vector<PresetStore::Entry> entries_;
  QStringList unreadable_;
  std::optional<Preset> current_;
  QString errorMessage_;
};

}  // namespace tessane
