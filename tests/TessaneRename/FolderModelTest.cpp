#include "TessaneRename/FolderModel.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSettings>

#include <chrono>
#include <thread>

#include "EventLoop.h"
#include "FileContents.h"
#include "RenameIO/OriginalName.h"
#include "TempFolder.h"
#include "TessaneRename/TestApplication.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::folderContents;
using testing::TempFolder;

// The event loop the model publishes through.
QCoreApplication& application() {
  return testing::coreApplication();
}

using testing::waitFor;

RuleStack formatStack(const std::string& templateText) {
  Counter counter;
  counter.padding = 2;
  Rule rule;
  rule.action.value = RuleAction::Format{NameFormat{templateText, counter}};
  RuleStack stack;
  stack.rules.push_back(rule);
  return stack;
}

class Model : public ::testing::Test {
 protected:
  Model() {
    application();
    app_ = testing::contextIn(home_.path());
    model_ = std::make_unique<FolderModel>(*app_);
    model_->setRevealer([this](const std::vector<fs::path>& files) { revealed_ = files; });
  }

  // Opens the folder and waits for the preview of its files with `templateText`.
  void openWith(const std::string& templateText) {
    model_->setRules(formatStack(templateText));
    model_->open({photos_.path()});
    ASSERT_TRUE(settled());
  }
  bool settled() {
    return waitFor([&] {
      return model_->previewBuildCount() == 0 && model_->preview() != nullptr &&
             !model_->isRenaming() && model_->previewSources().size() == model_->files().size();
    });
  }
  std::string error() const { return model_->errorMessage().value_or(""); }
  std::string toast() const { return model_->toast() ? model_->toast()->text : ""; }

  TempFolder home_, photos_;
  std::unique_ptr<AppContext> app_;
  std::unique_ptr<FolderModel> model_;
  std::vector<fs::path> revealed_;
};

TEST_F(Model, RenameUndoAndTheirMessages) {
  photos_.file("b.jpg", "b");
  photos_.file("a.jpg", "a");
  model_->rename();
  EXPECT_EQ(error(), "There’s nothing to rename.") << "no preview yet";

  openWith("{name}");
  model_->rename();
  EXPECT_EQ(error(), "There’s nothing to rename.") << "no name changes";

  model_->setRules(formatStack("same"));
  ASSERT_TRUE(settled());
  ASSERT_EQ(model_->fileCounts().errors, 2);
  model_->rename();
  EXPECT_EQ(error(), "Fix the errors before renaming.");
  ASSERT_TRUE(model_->goToFirstError());
  EXPECT_EQ(model_->selection().size(), 1u);

  model_->setRules(formatStack("shot_{counter}"));
  ASSERT_TRUE(settled());
  EXPECT_TRUE(model_->canRename());
  model_->rename();
  EXPECT_TRUE(model_->isRenaming());
  ASSERT_TRUE(settled());
  EXPECT_EQ(toast(), "2 files renamed");
  EXPECT_TRUE(model_->toast()->offersUndo);
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"shot_01.jpg", "a"}, {"shot_02.jpg", "b"}}));
  EXPECT_EQ(revealed_.size(), 2u);
  ASSERT_EQ(model_->history().entries().size(), 1u);
  EXPECT_EQ(model_->files().front().name.fullName(), "shot_01.jpg") << "listed again";

  model_->undo();
  ASSERT_TRUE(settled());
  EXPECT_EQ(toast(), "2 files back to their previous names");
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"a.jpg", "a"}, {"b.jpg", "b"}}));
  model_->undo();
  EXPECT_EQ(error(), "There’s nothing to undo.");
  model_->revert(model_->history().entries().front().id);
  EXPECT_EQ(error(), "These files are already back to the names they had before this rename.");
}

TEST_F(Model, OnlyTheNewestPreviewIsPublished) {
  photos_.file("a.jpg");
  openWith("{name}");
  // The first edit's build is held back until the second's has been published.
  std::atomic<bool> secondPublished{false};
  const std::uint64_t first = model_->previewGeneration() + 1;
  model_->setBeforeBuildForTesting([&](std::uint64_t generation) {
    if (generation == first) {
      while (!secondPublished.load())
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  });
  model_->setRules(formatStack("first"));
  QCoreApplication::processEvents();  // the first build starts
  model_->setRules(formatStack("second"));
  ASSERT_TRUE(waitFor([&] {
    const PlannedRename* row = model_->previewRow(model_->files().front().url);
    return row != nullptr && row->newName.base == "second";
  }));
  secondPublished = true;
  ASSERT_TRUE(waitFor([&] { return model_->previewBuildCount() == 0; }));
  EXPECT_EQ(model_->previewRow(model_->files().front().url)->newName.base, "second");
}

TEST_F(Model, OpeningCountsEachPlaceOnceAndDroppedFilesAloneAreRenamed) {
  model_->open({home_.path() / "nowhere"});
  EXPECT_EQ(error(), "Drop a folder or some files.");

  photos_.file("a.jpg");
  photos_.file("b.jpg");
  fs::create_symlink(photos_.path(), home_.path() / "link");
  model_->setRules(formatStack("n_{counter}"));
  model_->open({photos_.path(), photos_.path() / ".", home_.path() / "link"});
  ASSERT_TRUE(settled());
  EXPECT_EQ(model_->folders().size(), 1u);
  EXPECT_EQ(model_->files().size(), 2u);

  // A dropped file is ticked, and only the ticked files are renamed.
  model_->open({photos_.path() / "b.jpg"});
  ASSERT_TRUE(settled());
  EXPECT_EQ(model_->scope(), RenameScope::selected);
  EXPECT_EQ(model_->checked().size(), 1u);
  model_->rename();
  ASSERT_TRUE(settled());
  EXPECT_EQ(toast(), "1 file renamed");
  EXPECT_TRUE(fs::exists(photos_.path() / "a.jpg"));

  // Going back needs the entry's folder in the list.
  model_->removeFolder(photos_.path());
  model_->revert(model_->history().entries().front().id);
  EXPECT_EQ(error(), "Add the folder to the list to go back.");
}

TEST_F(Model, TheLastSessionComesBackWhenWanted) {
  photos_.file("a.jpg");
  openWith("kept_{name}");
  model_.reset();
  app_->settings().sync();

  model_ = std::make_unique<FolderModel>(*app_);
  model_->resumeSession();
  ASSERT_TRUE(settled());
  EXPECT_EQ(model_->folders(), std::vector<fs::path>{fs::canonical(photos_.path())});
  EXPECT_EQ(model_->previewRow(model_->files().front().url)->newName.base, "kept_a");

  app_->preferences().setResumesSession(false);
  model_ = std::make_unique<FolderModel>(*app_);
  model_->resumeSession();
  EXPECT_TRUE(model_->folders().empty());

  // A start without rules to resume names files at once: the date and the counter, on, with
  // the body only once a camera has a tag.
  auto topTemplate = [&]() -> std::string {
    const RuleStack& rules = model_->rules();
    if (rules.rules.empty() || !rules.rules.front().isEnabled) return "off";
    const auto* format = std::get_if<RuleAction::Format>(&rules.rules.front().action.value);
    return format ? format->format.templateText : "no format rule";
  };
  EXPECT_EQ(topTemplate(), "{date}_{counter}");
  model_->open({photos_.path()});
  ASSERT_TRUE(settled());
  EXPECT_EQ(model_->previewRow(model_->files().front().url)->newName.fullName(), "0001.jpg");
  app_->bodies().setTag("NIKON D70s", "N");
  model_->settingsChanged();
  EXPECT_EQ(topTemplate(), "{date}_{body}_{counter}");
  model_ = std::make_unique<FolderModel>(*app_);
  model_->resumeSession();
  EXPECT_EQ(topTemplate(), "{date}_{body}_{counter}");
  app_->preferences().setResumesSession(true);
  model_->setRules(RuleStack{});  // saved as the last session's rules
  model_ = std::make_unique<FolderModel>(*app_);
  model_->resumeSession();
  EXPECT_EQ(topTemplate(), "{date}_{body}_{counter}") << "no rules are no session to resume";
}

TEST_F(Model, RestoreOriginalNames) {
  photos_.file("probe");
  OriginalName::remember(photos_.path() / "probe", "x");
  if (!OriginalName::read(photos_.path() / "probe")) {
    GTEST_SKIP() << "this file system keeps no user attributes";
  }
  fs::remove(photos_.path() / "probe");
  app_->preferences().setOriginalNames(OriginalNames::always);
  photos_.file("DSC_0001.JPG", "a");
  openWith("trip_{counter}");
  model_->restoreOriginalNames();
  EXPECT_EQ(error(), "These files already have their original names.");
  model_->rename();
  ASSERT_TRUE(settled());
  ASSERT_TRUE(waitFor([&] { return model_->files().front().originalName.has_value(); }));
  model_->restoreOriginalNames();
  ASSERT_TRUE(settled());
  EXPECT_EQ(toast(), "1 file back to its original name");
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"DSC_0001.JPG", "a"}}));
  EXPECT_EQ(model_->history().entries().front().kind, RenameHistory::Kind::restoreOriginals);
}

}  // namespace
}  // namespace tessane
