#include <gtest/gtest.h>

#include <QSettings>

#include <set>
#include <string>

#include "QtPrinting.h"
#include "TempFolder.h"
#include "TessaneRename/AppCommands.h"
#include "TessaneRename/Preferences.h"

namespace tessane {
namespace {

TEST(AppCommandsTest, TableIsCompleteWithOneShortcutPerCommand) {
  std::set<std::string> shortcuts;
  std::set<CommandID> ids;
  for (const Command& c : AppCommands::all()) {
    EXPECT_TRUE(ids.insert(c.id).second);
    EXPECT_EQ(&AppCommands::command(c.id), &c);
    EXPECT_FALSE(AppCommands::title(c.id).isEmpty());
    if (c.shortcut[0] != '\0') {
      EXPECT_TRUE(shortcuts.insert(c.shortcut).second) << c.shortcut;
    }
  }
  EXPECT_EQ(ids.size(), static_cast<std::size_t>(CommandID::website) + 1);
  EXPECT_STREQ(AppCommands::command(CommandID::restoreOriginalNames).shortcut, "Ctrl+Alt+Shift+Z");
  EXPECT_EQ(AppCommands::command(CommandID::deleteAllChanges).menu, CommandMenu::changes);
  EXPECT_STREQ(AppCommands::command(CommandID::reportProblem).windowID, "report");
}

TEST(AppCommandsTest, WithoutAFocusedWindowOnlyTheApplicationsCommandsWork) {
  const CommandState none;
  for (CommandID id :
       {CommandID::rename, CommandID::restorePreviousNames, CommandID::restoreOriginalNames,
        CommandID::addFolder, CommandID::savePreset, CommandID::toggleInspector})
    EXPECT_FALSE(AppCommands::isEnabled(id, none)) << AppCommands::title(id).toStdString();
  for (CommandID id : AppCommands::commandsIn(CommandMenu::changes))
    EXPECT_FALSE(AppCommands::isEnabled(id, none)) << AppCommands::title(id).toStdString();
  for (CommandID id :
       {CommandID::history, CommandID::settings, CommandID::guide, CommandID::reportProblem,
        CommandID::showPresets, CommandID::website, CommandID::checkForUpdates})
    EXPECT_TRUE(AppCommands::isEnabled(id, none)) << AppCommands::title(id).toStdString();

  CommandState busyUpdater;
  busyUpdater.updaterCanCheck = false;
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::checkForUpdates, busyUpdater));
}

TEST(AppCommandsTest, ChangeCommandsFollowTheSelectedChange) {
  CommandState window;
  window.hasFocusedWindow = true;
  window.changeCount = 3;
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::rename, window));
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::deleteAllChanges, window));
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::duplicateChange, window));

  window.selectedChange = 0;
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::duplicateChange, window));
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::moveChangeUp, window));
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::moveChangeDown, window));
  window.selectedChange = 2;
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::moveChangeUp, window));
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::moveChangeDown, window));

  EXPECT_EQ(AppCommands::title(CommandID::toggleChange, window).toStdString(),
            "Turn Off This Change");
  window.selectedChangeIsOn = false;
  EXPECT_EQ(AppCommands::title(CommandID::toggleChange, window).toStdString(),
            "Turn On This Change");
}

TEST(AppCommandsTest, SettingCommandsWriteThePreferencesAndShowTheirTicks) {
  testing::TempFolder dir;
  QSettings store(QString::fromStdString((dir.path() / "s.conf").string()), QSettings::IniFormat);
  Preferences preferences(store);
  const CommandState state;

  EXPECT_EQ(AppCommands::isChecked(CommandID::separatorUnderscore, state, preferences), true);
  EXPECT_TRUE(AppCommands::applySetting(CommandID::separatorNothing, preferences));
  EXPECT_EQ(preferences.nameSeparator(), "");
  EXPECT_EQ(AppCommands::isChecked(CommandID::separatorNothing, state, preferences), true);
  EXPECT_EQ(AppCommands::isChecked(CommandID::separatorUnderscore, state, preferences), false);

  EXPECT_EQ(AppCommands::isChecked(CommandID::orderByCaptureTime, state, preferences), true);
  AppCommands::applySetting(CommandID::orderByName, preferences);
  EXPECT_EQ(preferences.batchOrder(), BatchOrder::name);
  EXPECT_EQ(AppCommands::isChecked(CommandID::orderByCaptureTime, state, preferences), false);

  AppCommands::applySetting(CommandID::showAfterRenaming, preferences);
  EXPECT_FALSE(preferences.revealAfterRename());
  EXPECT_EQ(AppCommands::isChecked(CommandID::showAfterRenaming, state, preferences), false);

  EXPECT_FALSE(AppCommands::applySetting(CommandID::rename, preferences));
  EXPECT_EQ(AppCommands::isChecked(CommandID::rename, state, preferences), std::nullopt);
}

}  // namespace
}  // namespace tessane
