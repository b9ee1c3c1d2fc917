#include "AppCommands.h"

#include <QCoreApplication>

#include <algorithm>

#include "TessaneRename/Preferences.h"

namespace tessane {
namespace {

using M = CommandMenu;
using C = CommandID;

// Titles are marked for translation here and translated when shown.
const std::vector<Command> kCommands{
    {C::newWindow, M::file, QT_TRANSLATE_NOOP("AppCommands", "New Window"), "Ctrl+N", false, ""},
    {C::addFolder, M::file, QT_TRANSLATE_NOOP("AppCommands", "Add Folder…"), "Ctrl+O", true, ""},
    {C::removeFromList, M::file, QT_TRANSLATE_NOOP("AppCommands", "Remove from List"), "", true,
     ""},
    {C::savePreset, M::file, QT_TRANSLATE_NOOP("AppCommands", "Save Preset"), "Ctrl+S", true, ""},
    {C::savePresetAs, M::file, QT_TRANSLATE_NOOP("AppCommands", "Save Preset As…"), "Ctrl+Shift+S",
     true, ""},
    {C::showPresets, M::file, QT_TRANSLATE_NOOP("AppCommands", "Show Presets in File Manager"), "",
     false, ""},
    {C::restorePreviousNames, M::edit, QT_TRANSLATE_NOOP("AppCommands", "Restore Previous Names"),
     "Ctrl+Alt+Z", true, ""},
    {C::restoreOriginalNames, M::edit, QT_TRANSLATE_NOOP("AppCommands", "Restore Original Names"),
     "Ctrl+Alt+Shift+Z", true, ""},
    {C::tickAll, M::edit, QT_TRANSLATE_NOOP("AppCommands", "Tick All"), "", true, ""},
    {C::untickAll, M::edit, QT_TRANSLATE_NOOP("AppCommands", "Untick All"), "", true, ""},
    {C::findFile, M::edit, QT_TRANSLATE_NOOP("AppCommands", "Find a File"), "Ctrl+F", true, ""},
    {C::rename, M::rename, QT_TRANSLATE_NOOP("AppCommands", "Rename"), "Ctrl+Return", true, ""},
    {C::scopeAll, M::rename, QT_TRANSLATE_NOOP("AppCommands", "All files"), "", true, ""},
    {C::scopeTicked, M::rename, QT_TRANSLATE_NOOP("AppCommands", "Only ticked"), "", true, ""},
    {C::goToFirstError, M::rename, QT_TRANSLATE_NOOP("AppCommands", "Go to the First Error"),
     "Ctrl+Alt+E", true, ""},
    {C::orderByName, M::rename, QT_TRANSLATE_NOOP("AppCommands", "Name"), "", false, ""},
    {C::orderByCaptureTime, M::rename, QT_TRANSLATE_NOOP("AppCommands", "Capture Time"), "", false,
     ""},
    {C::keepTwinsTogether, M::rename, QT_TRANSLATE_NOOP("AppCommands", "Keep twins together"), "",
     true, ""},
    {C::showAfterRenaming, M::rename,
     QT_TRANSLATE_NOOP("AppCommands", "Show in File Manager After Renaming"), "", false, ""},
    {C::toggleChange, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Turn Off This Change"), "",
     true, ""},
    {C::duplicateChange, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Duplicate Change"), "Ctrl+D",
     true, ""},
    {C::moveChangeUp, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Move Change Up"), "Ctrl+Alt+Up",
     true, ""},
    {C::moveChangeDown, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Move Change Down"),
     "Ctrl+Alt+Down", true, ""},
    {C::turnOnAllChanges, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Turn On All Changes"), "",
     true, ""},
    {C::turnOffAllChanges, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Turn Off All Changes"), "",
     true, ""},
    {C::deleteAllChanges, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Delete All Changes"), "",
     true, ""},
    {C::useNewName, M::changes, QT_TRANSLATE_NOOP("AppCommands", "Use the New Name"), "", true, ""},
    {C::startFromOriginalName, M::changes,
     QT_TRANSLATE_NOOP("AppCommands", "Start from the Original Name"), "", true, ""},
    {C::separatorUnderscore, M::changes, QT_TRANSLATE_NOOP("AppCommands", "_ underscore"), "", true,
     ""},
    {C::separatorDash, M::changes, QT_TRANSLATE_NOOP("AppCommands", "- dash"), "", true, ""},
    {C::separatorSpace, M::changes, QT_TRANSLATE_NOOP("AppCommands", "space"), "", true, ""},
    {C::separatorNothing, M::changes, QT_TRANSLATE_NOOP("AppCommands", "nothing"), "", true, ""},
    {C::toggleInspector, M::view, QT_TRANSLATE_NOOP("AppCommands", "Show or hide the file panel"),
     "Ctrl+Alt+I", true, ""},
    {C::history, M::window, QT_TRANSLATE_NOOP("AppCommands", "History…"), "Ctrl+Y", false,
     "history"},
    {C::settings, M::app, QT_TRANSLATE_NOOP("AppCommands", "Settings"), "Ctrl+,", false,
     "settings"},
    {C::checkForUpdates, M::app, QT_TRANSLATE_NOOP("AppCommands", "Check for Updates…"), "", false,
     ""},
    {C::about, M::app, QT_TRANSLATE_NOOP("AppCommands", "About Tessane Rename"), "", false,
     "about"},
    {C::guide, M::help, QT_TRANSLATE_NOOP("AppCommands", "Tessane Rename Guide"), "", false,
     "guide"},
    {C::reportProblem, M::help, QT_TRANSLATE_NOOP("AppCommands", "Report a Problem…"), "", false,
     "report"},
    {C::website, M::help, QT_TRANSLATE_NOOP("AppCommands", "Tessane Rename Website"), "", false,
     ""},
};

std::optional<std::string_view> separatorOf(CommandID id) {
  switch (id) {
    case C::separatorUnderscore:
      return "_";
    case C::separatorDash:
      return "-";
    case C::separatorSpace:
      return " ";
    case C::separatorNothing:
      return "";
    default:
      return std::nullopt;
  }
}

}  // namespace

const std::vector<Command>& AppCommands::all() {
  return kCommands;
}

const Command& AppCommands::command(CommandID id) {
  const auto found = std::find_if(kCommands.begin(), kCommands.end(),
                                  [id](const Command& c) { return c.id == id; });
  return found != kCommands.end() ? *found : kCommands.front();
}

std::vector<CommandID> AppCommands::commandsIn(CommandMenu menu) {
  std::vector<CommandID> ids;
  for (const Command& c : kCommands)
    if (c.menu == menu) ids.push_back(c.id);
  return ids;
}

QString AppCommands::title(CommandID id, const CommandState& state) {
  if (id == C::toggleChange && !state.selectedChangeIsOn)
    return QCoreApplication::translate("AppCommands", "Turn On This Change");
  return QCoreApplication::translate("AppCommands", command(id).title);
}

QString AppCommands::menuTitle(CommandMenu menu) {
  switch (menu) {
    case M::app:
      return QCoreApplication::translate("AppCommands", "Tessane Rename");
    case M::file:
      return QCoreApplication::translate("AppCommands", "File");
    case M::edit:
      return QCoreApplication::translate("AppCommands", "Edit");
    case M::rename:
      return QCoreApplication::translate("AppCommands", "Rename");
    case M::changes:
      return QCoreApplication::translate("AppCommands", "Changes");
    case M::view:
      return QCoreApplication::translate("AppCommands", "View");
    case M::window:
      return QCoreApplication::translate("AppCommands", "Window");
    case M::help:
      return QCoreApplication::translate("AppCommands", "Help");
  }
  return {};
}

bool AppCommands::isEnabled(CommandID id, const CommandState& state) {
  if (command(id).needsWindow && !state.hasFocusedWindow) return false;
  switch (id) {
    case C::removeFromList:
      return state.hasSelectedFolder;
    case C::toggleChange:
    case C::duplicateChange:
      return state.selectedChange.has_value();
    case C::moveChangeUp:
      return state.selectedChange && *state.selectedChange > 0;
    case C::moveChangeDown:
      return state.selectedChange && *state.selectedChange + 1 < state.changeCount;
    case C::turnOnAllChanges:
    case C::turnOffAllChanges:
    case C::deleteAllChanges:
      return state.changeCount > 0;
    case C::checkForUpdates:
      return state.hasUpdater && state.updaterCanCheck;
    case C::website:
      return state.hasWebsite;
    default:
      // Restore Previous Names stays enabled while a batch runs: the model then says that there
      // is nothing to undo.
      return true;
  }
}

bool AppCommands::isOffered(CommandID id, const CommandState& state) {
  switch (id) {
    case C::checkForUpdates:
      return state.hasUpdater;
    case C::website:
      return state.hasWebsite;
    default:
      return true;
  }
}

std::optional<bool> AppCommands::isChecked(CommandID id, const CommandState& state,
                                           const Preferences& preferences) {
  if (const auto separator = separatorOf(id)) return preferences.nameSeparator() == *separator;
  const BatchOrder order = preferences.batchOrder().value_or(BatchOrder::captureTime);
  switch (id) {
    case C::scopeAll:
      return !state.renamesTickedOnly;
    case C::scopeTicked:
      return state.renamesTickedOnly;
    case C::orderByName:
      return order == BatchOrder::name;
    case C::orderByCaptureTime:
      return order == BatchOrder::captureTime;
    case C::keepTwinsTogether:
      return state.keepsTwinsTogether;
    case C::showAfterRenaming:
      return preferences.revealAfterRename();
    case C::useNewName:
      return state.usesNewName;
    case C::startFromOriginalName:
      return state.startsFromOriginal;
    default:
      return std::nullopt;
  }
}

bool AppCommands::applySetting(CommandID id, Preferences& preferences) {
  if (const auto separator = separatorOf(id)) {
    preferences.setNameSeparator(*separator);
    return true;
  }
  switch (id) {
    case C::orderByName:
      preferences.setBatchOrder(BatchOrder::name);
      return true;
    case C::orderByCaptureTime:
      preferences.setBatchOrder(BatchOrder::captureTime);
      return true;
    case C::showAfterRenaming:
      preferences.setRevealAfterRename(!preferences.revealAfterRename());
      return true;
    default:
      return false;
  }
}

}  // namespace tessane
