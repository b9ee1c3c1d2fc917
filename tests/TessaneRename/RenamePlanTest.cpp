#include "TessaneRename/RenamePlan.h"

#include <gtest/gtest.h>

#include <QSettings>

#include <chrono>

#include "Rules.h"
#include "TempFolder.h"
#include "TessaneRename/Messages.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

class Workflow : public ::testing::Test {
 protected:
  Preferences prefs() { return Preferences(settings_); }

  // The plan of the folder's files with `templateText`, the settings as they stand.
  RenamePlan plan(const std::string& templateText) {
    RenameOptions options;
    options.templateText = templateText;
    options.timeZone = "UTC";
    Planned<RenameSettings> settings = resolveSettings(options, prefs());
    EXPECT_TRUE(settings.ok());
    Planned<RuleStack> stack = stackFor(options, settings.value(), PresetStore(presets_.path()));
    EXPECT_TRUE(stack.ok());
    PlanRequest request;
    request.paths = {photos_.path()};
    request.stack = stack.value();
    request.settings = settings.value();
    Planned<RenamePlan> planned = planRename(request);
    EXPECT_TRUE(planned.ok());
    return std::move(planned.value());
  }
  static std::vector<std::string> newNames(const RenamePlan& p) {
    std::vector<std::string> out;
    for (const PlannedRename& row : p.preview.items)
      out.push_back(row.newName.fullName());
    return out;
  }

  TempFolder photos_, presets_, config_;
  QSettings settings_{QString::fromStdString((config_.path() / "t.conf").string()),
                      QSettings::IniFormat};
};

TEST_F(Workflow, TheDateAndExtensionSettingsShapeNames) {
  const fs::path file = photos_.file("DSC_1.JPG", "x");
  // 2024-05-01 10:20:30 UTC
  const auto when = std::chrono::file_clock::from_sys(
      std::chrono::sys_seconds(std::chrono::seconds(1'714'558'830)));
  fs::last_write_time(file, when);

  EXPECT_EQ(newNames(plan("{modified}")), std::vector<std::string>{"2024-05-01.JPG"});
  prefs().setDateFormat("yyyyMMdd");
  prefs().setExtensionCase(ExtensionCase::lower);
  EXPECT_EQ(newNames(plan("{modified}")), std::vector<std::string>{"20240501.jpg"});
  EXPECT_EQ(newNames(plan("{modified:HH-mm}")), std::vector<std::string>{"10-20.jpg"})
      << "a pattern typed in the template wins";
  prefs().setExtensionCase(ExtensionCase::upper);
  photos_.file("b.tif", "y");
  EXPECT_EQ(newNames(plan("{name}")), (std::vector<std::string>{"b.TIF", "DSC_1.JPG"}));
}

TEST_F(Workflow, PresetsAreFoundByNameOrFileAndTheTemplateGoesOnTop) {
  const PresetStore store(presets_.path());
  Preset wedding;
  wedding.name = "Wedding";
  wedding.stack.rules.push_back(testing::operationRule(op::ChangeCase{CaseStyle::upper}));
  ASSERT_TRUE(store.save(wedding).ok());

  photos_.file("a.jpg");
  RenameOptions options;
  options.preset = "wedding";
  options.templateText = "x_{name}";
  const RenameSettings settings = resolveSettings(options, prefs()).value();
  Planned<RuleStack> stack = stackFor(options, settings, store);
  ASSERT_TRUE(stack.ok());
  ASSERT_EQ(stack.value().rules.size(), 2u);
  EXPECT_TRUE(std::holds_alternative<RuleAction::Format>(stack.value().rules[0].action.value));

  options.preset = "Honeymoon";
  Planned<RuleStack> missing = stackFor(options, settings, store);
  ASSERT_FALSE(missing.ok());
  EXPECT_EQ(Messages::of(missing.error()), "There’s no preset named “Honeymoon”.");

  options.preset = photos_.file("broken.tessanepreset", "{").string();
  Planned<RuleStack> broken = stackFor(options, settings, store);
  ASSERT_FALSE(broken.ok());
  EXPECT_EQ(broken.error().kind, PlanProblem::Kind::presetUnreadable);
  EXPECT_NE(Messages::of(broken.error()).find("“broken.tessanepreset”: "), std::string::npos);

  RenameOptions none;
  EXPECT_EQ(stackFor(none, settings, store).error().kind, PlanProblem::Kind::noRules);
  none.timeZone = "Mars/Olympus";
  EXPECT_EQ(resolveSettings(none, prefs()).error().kind, PlanProblem::Kind::unknownZone);
}

TEST_F(Workflow, MovesNameAbsolutePathsAndKeepToTheScope) {
  photos_.file("a.jpg");
  photos_.file("b.jpg");
  photos_.file("c.jpg");
  const RenamePlan p = plan("n_{counter}");
  const std::vector<FileMove> all = movesOf(p.preview, p.shoot.paths);
  ASSERT_EQ(all.size(), 3u);
  for (const FileMove& m : all) {
    EXPECT_TRUE(m.source.is_absolute());
    EXPECT_EQ(m.source.parent_path(), m.destination.parent_path());
  }
  std::vector<bool> ticked(p.shoot.subjects.size(), false);
  ticked[1] = true;
  const std::vector<FileMove> some = movesOf(p.preview, p.shoot.paths, &ticked);
  ASSERT_EQ(some.size(), 1u);
  EXPECT_EQ(some[0].source.filename(), p.shoot.paths[1].filename());
}

TEST_F(Workflow, HistoryEntriesAreNamedByTheStartOfTheirIds) {
  RenameHistory history;
  history.add(RenameHistory::Kind::rename, {{"/a/x", "/a/y"}});
  history.add(RenameHistory::Kind::rename, {{"/a/y", "/a/z"}});
  const std::string newest = history.entries()[0].id.string();
  EXPECT_EQ(entryToRevert(history, newest.substr(0, 8)).value().id, history.entries()[0].id);
  EXPECT_EQ(entryToRevert(history, "abc").error().kind, PlanProblem::Kind::unknownEntry)
      << "fewer than four characters name nothing";
  history.markReverted(history.entries()[0].id);
  EXPECT_EQ(entryToRevert(history, newest).error().kind, PlanProblem::Kind::alreadyReverted);
  EXPECT_EQ(entryToUndo(history)->id, history.entries()[1].id);
}

// The messages that are put together from their parts: names cut from paths, lists, numbers,
// reasons and system errors.
TEST(Messages, WhatUsersReadIsComposedFromItsParts) {
  const OperationIssue lens = OperationIssue::missingVariable("lens");
  EXPECT_EQ(Messages::of(lens), "{lens} is missing: nothing goes in its place");
  EXPECT_EQ(Messages::of(lens, "unknown"), "{lens} is missing: “unknown” goes in its place");
  PreviewWarning twins{PreviewWarning::Kind::incompleteTwins, std::nullopt, {"A.ARW", "A.XMP"}};
  EXPECT_EQ(Messages::of(twins), "“A.ARW”, “A.XMP” is outside the batch: it won’t be renamed");
  EXPECT_EQ(Messages::of(PresetError::unreadable("Invalid number of keys found, expected one.")),
            "This file isn’t a preset that can be read: Invalid number of keys found, expected "
            "one.");
  using E = SafeRenameError;
  EXPECT_EQ(Messages::of(E::sourceMissing("/card/gone.jpg")),
            "“gone.jpg” is no longer in the folder.");
  EXPECT_EQ(Messages::of(E::destinationExists("/card/Cafe\u0301.JPG")),
            "There’s already a file called “Cafe\u0301.JPG” in the folder. Rename or move it and "
            "try again.");
  // What the system said, in a photographer's words; never a guess that doesn't hold on Linux.
  EXPECT_EQ(Messages::of(E::failed("/card/b.jpg", {}, std::nullopt)), "Couldn’t rename “b.jpg”.");
  EXPECT_EQ(
      Messages::of(E::failed("/card/b.jpg", {},
                             IOError::fromErrno(EROFS, IOError::Operation::rename, "/card"))),
      "Couldn’t rename “b.jpg”: the disk is read-only (a memory card’s lock switch, or a disk "
      "mounted read-only). Nothing was changed.");
  EXPECT_EQ(Messages::of(NameError::refused(EACCES)),
            "Can’t be renamed: you don’t have permission to change names in this folder");
  EXPECT_EQ(Messages::of(E::failed("/card/b.jpg", {{"/card/.t-b.jpg", "/card/b.jpg"}}, {})),
            "Some files couldn’t go back to their names");

  EXPECT_EQ(Messages::of(IOError::fromErrno(ENOENT, IOError::Operation::openFolder, "/card")),
            "Couldn’t open the folder “/card”: No such file or directory");

  RecoveryReport report;
  report.batches.push_back(RecoveredBatch{Uuid::random(), 2, 0, {}, false});
  EXPECT_EQ(Messages::of(report),
            "A rename was interrupted; its 2 files are back at the names they had before it.\n");
  report.batches[0].notPutBack = {{"/card/.tessane-1-b.jpg", "/card/b.jpg"}, {{}, "/card/c.jpg"}};
  EXPECT_EQ(Messages::of(report),
            "A rename was interrupted and not every file could be put back (2 of 4 are back). "
            "Another try is made at the next start.\n"
            "  “/card/b.jpg” is still called “.tessane-1-b.jpg”.\n"
            "  “/card/c.jpg” can’t be found.\n");
}

}  // namespace
}  // namespace tessane
