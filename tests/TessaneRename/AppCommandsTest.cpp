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

TEST(AppCommandsTest, WithoutAFocusedWindowOnlyTheApplicationsCommandsWork) {
  std::set<std::string> shortcuts;
  for (const Command& c : AppCommands::all()) {
    if (c.shortcut[0] != '\0') {
      EXPECT_TRUE(shortcuts.insert(c.shortcut).second) << c.shortcut;
    }
  }
  const CommandState none;
  for (CommandID id : {CommandID::rename, CommandID::restorePreviousNames,
                       CommandID::restoreOriginalNames, CommandID::savePreset})
    EXPECT_FALSE(AppCommands::isEnabled(id, none)) << AppCommands::title(id).toStdString();
  for (CommandID id : AppCommands::commandsIn(CommandMenu::changes))
    EXPECT_FALSE(AppCommands::isEnabled(id, none)) << AppCommands::title(id).toStdString();
  for (CommandID id :
       {CommandID::newWindow, CommandID::history, CommandID::settings, CommandID::guide,
        CommandID::reportProblem, CommandID::showPresets, CommandID::about})
    EXPECT_TRUE(AppCommands::isEnabled(id, none)) << AppCommands::title(id).toStdString();

  // A build without an update feed or a web site has neither command.
  for (CommandID id : {CommandID::checkForUpdates, CommandID::website}) {
    EXPECT_FALSE(AppCommands::isOffered(id, none)) << AppCommands::title(id).toStdString();
    EXPECT_FALSE(AppCommands::isEnabled(id, none)) << AppCommands::title(id).toStdString();
  }
  CommandState given;
  given.hasUpdater = true;
  given.hasWebsite = true;
  EXPECT_TRUE(AppCommands::isOffered(CommandID::checkForUpdates, given));
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::website, given));
  given.updaterCanCheck = false;  // while it checks
  EXPECT_TRUE(AppCommands::isOffered(CommandID::checkForUpdates, given));
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::checkForUpdates, given));
}

TEST(AppCommandsTest, ChangeCommandsFollowTheSelectedChange) {
  CommandState window;
  window.hasFocusedWindow = true;
  window.changeCount = 3;
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::rename, window));
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::deleteAllChanges, window));
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::duplicateChange, window));

  window.selectedChange = 0;
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::moveChangeUp, window));
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::moveChangeDown, window));
  window.selectedChange = 2;
  EXPECT_TRUE(AppCommands::isEnabled(CommandID::moveChangeUp, window));
  EXPECT_FALSE(AppCommands::isEnabled(CommandID::moveChangeDown, window));

  window.selectedChangeIsOn = false;
  EXPECT_EQ(AppCommands::title(CommandID::toggleChange, window), "Turn On This Change");
}

TEST(AppCommandsTest, SettingCommandsWriteThePreferencesAndShowTheirTicks) {
  testing::TempFolder dir;
  QSettings store(QString::fromStdString((dir.path() / "s.conf").string()), QSettings::IniFormat);
  Preferences preferences(store);
  const CommandState state;

  EXPECT_EQ(AppCommands::isChecked(CommandID::separatorUnderscore, state, preferences), true);
  EXPECT_TRUE(AppCommands::applySetting(CommandID::separatorNothing, preferences));
  EXPECT_EQ(preferences.nameSeparator(), "");
  EXPECT_EQ(AppCommands::isChecked(CommandID::separatorUnderscore, state, preferences), false);

  EXPECT_EQ(AppCommands::isChecked(CommandID::orderByCaptureTime, state, preferences), true);
  AppCommands::applySetting(CommandID::orderByName, preferences);
  EXPECT_EQ(preferences.batchOrder(), BatchOrder::name);

  AppCommands::applySetting(CommandID::showAfterRenaming, preferences);
  EXPECT_EQ(AppCommands::isChecked(CommandID::showAfterRenaming, state, preferences), false);
  EXPECT_FALSE(AppCommands::applySetting(CommandID::rename, preferences));
}

}  // namespace
}  // namespace tessane
