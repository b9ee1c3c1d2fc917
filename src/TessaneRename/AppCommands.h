// The menu commands as a model: every command with its menu, its title, its keyboard shortcut and
// when it is enabled; the windows turn the table into menus and toolbar actions and call the
// focused window's model. Shortcuts are in Qt's portable text ("Ctrl+Alt+Z"), which a window
// turns into a key sequence (Ctrl becomes ⌘ on a Mac build, Alt ⌥).
//
// With no main window focused, the commands that act on a window's folders, rules or files are
// disabled; the presets folder, History, Settings, updates, the guide, the problem report, About
// and the web site stay available. "Check for Updates…" is offered only by a build with an update
// feed, "Tessane Rename Website" only by one with a web site (Distribution). The commands that only
// change a setting (the separator, the order, showing the renamed files) are carried out here, on
// the preferences.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include <QString>

#include "RenameEngine/RenamePreview.h"

namespace tessane {

class Preferences;

enum class CommandMenu { app, file, edit, rename, changes, view, window, help };

enum class CommandID {
  // File
  newWindow,
  addFolder,
  removeFromList,
  savePreset,
  savePresetAs,
  showPresets,
  // Edit
  restorePreviousNames,
  restoreOriginalNames,
  tickAll,
  untickAll,
  findFile,
  // Rename
  rename,
  scopeAll,
  scopeTicked,
  goToFirstError,
  orderByName,
  orderByCaptureTime,
  keepTwinsTogether,
  showAfterRenaming,
  // Changes
  toggleChange,
  duplicateChange,
  moveChangeUp,
  moveChangeDown,
  turnOnAllChanges,
  turnOffAllChanges,
  deleteAllChanges,
  useNewName,
  startFromOriginalName,
  separatorUnderscore,
  separatorDash,
  separatorSpace,
  separatorNothing,
  // View, Window, App, Help
  toggleInspector,
  history,
  settings,
  checkForUpdates,
  about,
  guide,
  reportProblem,
  website,
};

struct Command {
  CommandID id;
  CommandMenu menu;
  const char* title;     // the untranslated title; see AppCommands::title
  const char* shortcut;  // portable text, empty when there is none
  bool needsWindow;      // acts on the focused main window's model
  const char* windowID;  // the auxiliary window it opens ("history", "guide"…), else empty
};

// What the menus depend on, as the focused window and the application stand.
struct CommandState {
  bool hasFocusedWindow = false;
  // The focused window's state (ignored without one).
  bool hasSelectedFolder = false;
  int changeCount = 0;                // the changes below the name builder
  std::optional<int> selectedChange;  // its place among them
  bool selectedChangeIsOn = true;     // "Turn Off This Change" or "Turn On This Change"
  bool renamesTickedOnly = false;     // the scope
  bool keepsTwinsTogether = true;
  bool usesNewName = true;          // "Use the New Name": the builder's rule is on
  bool startsFromOriginal = false;  // "Start from the Original Name": the builder keeps it
  // The application.
  bool hasUpdater = false;  // the build checks for updates
  bool updaterCanCheck = true;
  bool hasWebsite = false;  // the build names a web site
};

class AppCommands {
 public:
  // Every command, menu by menu, in menu order.
  static const std::vector<Command>& all();
  static const Command& command(CommandID id);
  static std::vector<CommandID> commandsIn(CommandMenu menu);

  // The translated title; "Turn Off This Change" becomes "Turn On This Change" for a change
  // that is off.
  static QString title(CommandID id, const CommandState& state = {});
  static QString menuTitle(CommandMenu menu);

  static bool isEnabled(CommandID id, const CommandState& state);
  // Whether the command is in the menus at all: not the update check or the web site of a build
  // without them.
  static bool isOffered(CommandID id, const CommandState& state);
  // The tick of a choice or a toggle; nullopt for a plain command.
  static std::optional<bool> isChecked(CommandID id, const CommandState& state,
                                       const Preferences& preferences);
  // Carries out a command that only changes a setting; false for every other command.
  static bool applySetting(CommandID id, Preferences& preferences);
};

}  // namespace tessane
