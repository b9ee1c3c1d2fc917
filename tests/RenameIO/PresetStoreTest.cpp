#include "RenameIO/PresetStore.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "FinishesInTime.h"
#include "Rules.h"
#include "TempFolder.h"

namespace tessane {
namespace {

using testing::TempFolder;

Preset preset(std::string name, std::string changeCase = "lower") {
  Preset p;
  p.name = std::move(name);
  p.stack.rules = {testing::operationRule(
      op::ChangeCase{changeCase == "lower" ? CaseStyle::lower : CaseStyle::upper})};
  return p;
}

std::string fileName(const std::filesystem::path& p) {
  return p.filename().string();
}

TEST(PresetStore, SavesNeverOverwriteAnotherPresetOrAnUnreadableFile) {
  TempFolder dir;
  const PresetStore store(dir.path() / "Presets");
  // "Wedding/" and "Wedding:" are two presets with one file stem.
  const Result<std::filesystem::path> first = store.save(preset("Wedding/"));
  ASSERT_TRUE(first.ok()) << first.error().code;
  EXPECT_EQ(fileName(first.value()), "Wedding-.tessanepreset");
  EXPECT_EQ(fileName(store.save(preset("Wedding:")).value()), "Wedding- 2.tessanepreset");
  dir.file("Presets/Wedding- 3.tessanepreset", "{ not json");
  EXPECT_EQ(fileName(store.save(preset("Wedding\x01")).value()), "Wedding- 4.tessanepreset")
      << "an unreadable file is never overwritten";
  EXPECT_EQ(fileName(store.save(preset("Wedding:", "upper")).value()), "Wedding- 2.tessanepreset")
      << "saving a preset again replaces its own file";
  EXPECT_EQ(fileName(store.save(preset("  ...")).value()), "Preset.tessanepreset");

  const Result<PresetStore::Listing> listing = store.list();
  ASSERT_TRUE(listing.ok());
  std::vector<std::string> names;
  for (const auto& e : listing.value().presets)
    names.push_back(e.preset.name);
  EXPECT_EQ(names, (std::vector<std::string>{"  ...", "Wedding\x01", "Wedding:", "Wedding/"}));
  ASSERT_EQ(listing.value().failures.size(), 1u);
  EXPECT_EQ(fileName(listing.value().failures[0].file), "Wedding- 3.tessanepreset");
  auto back = PresetStore::read(listing.value().presets[2].file);
  ASSERT_TRUE(std::holds_alternative<Preset>(back));
  const auto& action =
      std::get<RuleAction::Operation>(std::get<Preset>(back).stack.rules[0].action.value);
  EXPECT_EQ(action.operation, (RenameOperation{op::ChangeCase{CaseStyle::upper}}));
}

TEST(PresetStore, ListingReportsEveryBadFileAndSkipsOthers) {
  TempFolder dir;
  const PresetStore store(dir.path());
  ASSERT_TRUE(store.save(preset("Shoot 10")).ok());
  ASSERT_TRUE(store.save(preset("Shoot 2")).ok());
  dir.file("newer.tessanepreset", R"({"schemaVersion": 2, "name": "From the future"})");
  dir.file("upper.TESSANEPRESET", "{}");
  dir.file("notes.txt", "hello");
  std::filesystem::create_directory(dir.path() / "folder.tessanepreset");
  const Result<PresetStore::Listing> listing = store.list();
  ASSERT_TRUE(listing.ok());
  ASSERT_EQ(listing.value().presets.size(), 2u);
  EXPECT_EQ(listing.value().presets[0].preset.name, "Shoot 2");
  ASSERT_EQ(listing.value().failures.size(), 2u);
  EXPECT_EQ(fileName(listing.value().failures[0].file), "folder.tessanepreset");
  EXPECT_TRUE(std::holds_alternative<IOError>(listing.value().failures[0].error));
  EXPECT_EQ(std::get<PresetError>(listing.value().failures[1].error),
            PresetError::unsupportedVersion(2));

  ASSERT_FALSE(store.remove(listing.value().presets[0].file).has_value());
  EXPECT_EQ(store.list().value().presets.size(), 1u);
  EXPECT_TRUE(store.remove(dir.path() / "gone.tessanepreset").has_value());
}

// A pipe named like a preset is listed as a failure at once: opening it for reading would wait
// for a writer. The listing runs in a child that an alarm stops, so a regression fails here.
TEST(PresetStore, APipeNamedLikeAPresetIsAFailureAndNeverBlocks) {
  TempFolder dir;
  const PresetStore store(dir.path());
  ASSERT_TRUE(store.save(preset("Shoot")).ok());
  ASSERT_EQ(::mkfifo((dir.path() / "pipe.tessanepreset").c_str(), 0600), 0);
  EXPECT_EQ(testing::finishesInTime(std::chrono::seconds(5),
                                    [&] {
                                      const Result<PresetStore::Listing> listing = store.list();
                                      return listing.ok() && listing.value().presets.size() == 1 &&
                                             listing.value().failures.size() == 1;
                                    }),
            testing::Finished::inTime);
}

TEST(PresetStore, AFolderThatCannotBeMadeIsAnError) {
  TempFolder dir;
  dir.file("blocker");
  const PresetStore store(dir.path() / "blocker" / "Presets");
  EXPECT_FALSE(store.list().ok());
  EXPECT_FALSE(store.save(preset("x")).ok());
}

TEST(PresetStore, AnUnreadableFileIsListedAsAFailure) {
  if (::geteuid() == 0) GTEST_SKIP() << "root reads every file; permission test not possible";
  TempFolder dir;
  const PresetStore store(dir.path());
  const auto file = store.save(preset("Locked")).value();
  ::chmod(file.c_str(), 0);
  const auto listing = store.list();
  ASSERT_TRUE(listing.ok());
  EXPECT_TRUE(listing.value().presets.empty());
  EXPECT_EQ(listing.value().failures.size(), 1u);
  EXPECT_EQ(fileName(store.save(preset("Locked")).value()), "Locked 2.tessanepreset");
}

}  // namespace
}  // namespace tessane
