#include <gtest/gtest.h>

#include <QLocale>
#include <QSettings>

#include <filesystem>
#include <fstream>

#include "FakeDesktopServices.h"
#include "QtPrinting.h"
#include "Rules.h"
#include "TempFolder.h"
#include "TessaneRename/InterfaceTranslation.h"
#include "TessaneRename/PresetLibrary.h"
#include "TessaneRename/TestApplication.h"

namespace tessane {
namespace {

using testing::operationRule;

using testing::FakeDesktopServices;
using testing::TempFolder;

RuleStack stackOf(std::vector<RenameOperation::Value> operations) {
  RuleStack stack;
  for (auto& o : operations)
    stack.rules.push_back(operationRule(std::move(o)));
  return stack;
}

class PresetLibraryTest : public ::testing::Test {
 protected:
  PresetLibraryTest()
      : settings_(QString::fromStdString((dir_.path() / "s.conf").string()), QSettings::IniFormat),
        desktop_(trash()),
        library_(PresetStore(folder()), settings_, desktop_) {
    QObject::connect(&library_, &PresetLibrary::currentChanged, [this] { ++currentChanges_; });
  }
  std::filesystem::path folder() const { return dir_.path() / "Presets"; }
  std::filesystem::path trash() const {
    std::filesystem::create_directories(dir_.path() / "Trash");
    return dir_.path() / "Trash";
  }
  std::filesystem::path fileOf(const std::string& name) const {
    for (const auto& e : library_.entries())
      if (e.preset.name == name) return e.file;
    return {};
  }

  TempFolder dir_;
  QSettings settings_;
  FakeDesktopServices desktop_;
  PresetLibrary library_;
  int currentChanges_ = 0;
};

TEST_F(PresetLibraryTest, LoadModifySaveAndSaveAs) {
  EXPECT_TRUE(library_.reload());
  EXPECT_TRUE(library_.presetNames().isEmpty());
  EXPECT_FALSE(library_.save(stackOf({op::RemoveEmoji{}})));  // no current preset: ask a name

  RuleStack rules = stackOf({op::ChangeCase{CaseStyle::lower}});
  ASSERT_TRUE(library_.saveAs("Wedding", rules));
  EXPECT_EQ(library_.currentName(), "Wedding");
  EXPECT_FALSE(library_.isModified(rules));

  // One change more is a modification; taking it away again is none.
  rules.rules.push_back(stackOf({op::RemoveAccents{}}).rules[0]);
  EXPECT_TRUE(library_.isModified(rules));
  rules.rules.pop_back();
  EXPECT_FALSE(library_.isModified(rules));

  // Save Preset overwrites the current preset's own file.
  rules.rules[0].isEnabled = false;
  ASSERT_TRUE(library_.save(rules));
  ASSERT_EQ(library_.entries().size(), 1u);
  EXPECT_EQ(library_.entries()[0].preset.stack, rules);
  EXPECT_EQ(library_.entries()[0].file, folder() / "Wedding.tessanepreset");

  ASSERT_TRUE(library_.saveAs("Beach", stackOf({op::RemoveEmoji{}})));
  EXPECT_EQ(library_.presetNames(), (QStringList{"Beach", "Wedding"}));
  EXPECT_TRUE(library_.isModified(rules));

  // Loading gives the rules back; loading it again publishes nothing.
  const Preset wedding = library_.entries()[1].preset;
  const int changes = currentChanges_;
  EXPECT_EQ(library_.load(wedding), rules);
  EXPECT_FALSE(library_.isModified(rules));
  library_.load(wedding);
  EXPECT_EQ(currentChanges_, changes + 1);

  // The last used comes first among the presets to start from.
  ASSERT_EQ(library_.recent().size(), 2u);
  EXPECT_EQ(library_.recent()[0].name, "Wedding");
}

TEST_F(PresetLibraryTest, DeleteMovesToTheTrashAndClearsTheCurrentPreset) {
  ASSERT_TRUE(library_.saveAs("Beach", stackOf({op::RemoveEmoji{}})));
  ASSERT_TRUE(library_.saveAs("Wedding", stackOf({op::RemoveAccents{}})));
  const auto wedding = fileOf("Wedding");

  desktop_.trashFailure = QString("no Trash here");
  EXPECT_FALSE(library_.remove(wedding));
  EXPECT_EQ(library_.errorMessage(), "Couldn’t move “Wedding” to the Trash: no Trash here");
  EXPECT_EQ(library_.presetNames().size(), 2);
  EXPECT_EQ(library_.currentName(), "Wedding");

  desktop_.trashFailure.reset();
  EXPECT_TRUE(library_.remove(wedding));
  EXPECT_TRUE(library_.errorMessage().isEmpty()) << "a delete that works clears the last failure";
  EXPECT_TRUE(std::filesystem::exists(dir_.path() / "Trash" / "Wedding.tessanepreset"));
  EXPECT_EQ(library_.presetNames(), QStringList{"Beach"});
  EXPECT_EQ(library_.current(), std::nullopt);

  // Deleting another preset leaves the current one.
  library_.load(library_.entries()[0].preset);
  ASSERT_TRUE(library_.saveAs("Rome", stackOf({})));
  EXPECT_TRUE(library_.remove(fileOf("Beach")));
  EXPECT_EQ(library_.currentName(), "Rome");
  EXPECT_TRUE(library_.errorMessage().isEmpty());
}

TEST_F(PresetLibraryTest, AnUnreadableFolderKeepsTheListAndSaysSo) {
  ASSERT_TRUE(library_.saveAs("Wedding", stackOf({})));
  { std::ofstream(folder() / "broken.tessanepreset") << "{"; }
  ASSERT_TRUE(library_.reload());
  EXPECT_EQ(library_.unreadable().size(), 1);

  std::filesystem::remove_all(folder());
  std::ofstream(folder()) << "not a folder";
  EXPECT_FALSE(library_.reload());
  EXPECT_EQ(library_.errorMessage(), "Couldn’t read the presets.");
  EXPECT_EQ(library_.presetNames(), QStringList{"Wedding"});

  EXPECT_FALSE(library_.saveAs("Beach", stackOf({})));
  EXPECT_EQ(library_.errorMessage(), "Couldn’t save the preset “Beach”: Not a directory");
  {
    // The system's reason speaks the interface's language, like the sentence around it.
    testing::coreApplication();  // translations are installed into the application
    const InterfaceTranslation italian(AppLanguage::italian, QLocale("en_US"));
    EXPECT_FALSE(library_.saveAs("Beach", stackOf({})));
    EXPECT_EQ(library_.errorMessage(), "Impossibile salvare il preset “Beach”: Non è una cartella");
  }

  // The folder back: the list reads again and a save works, and neither failure stays shown.
  std::filesystem::remove(folder());
  ASSERT_TRUE(library_.reload());
  EXPECT_FALSE(library_.errorMessage().isEmpty()) << "the failed save is still news";
  ASSERT_TRUE(library_.saveAs("Beach", stackOf({})));
  EXPECT_TRUE(library_.errorMessage().isEmpty());

  std::filesystem::remove_all(folder());
  std::ofstream(folder()) << "not a folder";
  EXPECT_FALSE(library_.reload());
  std::filesystem::remove(folder());
  ASSERT_TRUE(library_.reload());
  EXPECT_TRUE(library_.errorMessage().isEmpty()) << "the folder reads again";
}

TEST_F(PresetLibraryTest, ShowsItsFolderInTheFileManager) {
  EXPECT_TRUE(library_.showFolder());
  ASSERT_EQ(desktop_.shownFolders.size(), 1u);
  EXPECT_EQ(desktop_.shownFolders[0], folder());
  EXPECT_TRUE(std::filesystem::is_directory(folder()));
}

}  // namespace
}  // namespace tessane
