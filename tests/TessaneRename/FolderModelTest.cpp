#include "TessaneRename/FolderModel.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSettings>

#include <chrono>
#include <thread>

#include "EventLoop.h"
#include "FileContents.h"
#include "RenameIO/FaultyFileRenaming.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/OriginalName.h"
#include "TempFolder.h"
#include "TessaneRename/Messages.h"
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

// Sets or clears a file's immutable flag; false when the system refuses (it takes root).
bool setImmutable(const fs::path& file, bool on) {
  const int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  int flags = 0;
  bool done = ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
  flags = on ? (flags | FS_IMMUTABLE_FL) : (flags & ~FS_IMMUTABLE_FL);
  done = done && ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
  ::close(fd);
  return done;
}

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
    return waitFor([&] { return model_->isSettled(); });
  }
  std::string error() const { return model_->errorMessage().value_or(""); }
  std::string toast() const { return model_->toast() ? model_->toast()->text : ""; }

  LinuxFileRenaming linux_;
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

  // The tool renames in another folder meanwhile: Undo here still undoes this window's batch.
  {
    RenameHistory tool = RenameHistory::load(*model_->history().file());
    tool.add(RenameHistory::Kind::rename, {{"/elsewhere/a.jpg", "/elsewhere/b.jpg"}});
  }
  model_->undo();
  ASSERT_TRUE(settled());
  EXPECT_EQ(model_->history().entries().size(), 2u) << "the tool's batch is read in";
  EXPECT_EQ(toast(), "2 files back to their previous names");
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"a.jpg", "a"}, {"b.jpg", "b"}}));
  model_->undo();
  EXPECT_EQ(error(), "There’s nothing to undo.");
  model_->revert(model_->history().entries().back().id);
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
  EXPECT_EQ(model_->checked(), std::set<fs::path>{fs::canonical(photos_.path()) / "n_02.jpg"})
      << "the tick stays on the renamed file";

  // Going back needs the entry's folder in the list.
  model_->removeFolder(photos_.path());
  model_->revert(model_->history().entries().front().id);
  EXPECT_EQ(error(), "Add the folder to the list to go back.");
}

TEST_F(Model, TheLastSessionComesBackWhenWanted) {
  TempFolder other;
  other.file("b.jpg");
  photos_.file("a.jpg");
  openWith("kept_{name}");
  model_->open({other.path()});  // the list holds both, the last one opened is selected
  ASSERT_TRUE(settled());
  model_.reset();
  app_->settings().sync();

  model_ = std::make_unique<FolderModel>(*app_);
  model_->resumeSession();
  ASSERT_TRUE(settled());
  EXPECT_EQ(model_->folders(),
            (std::vector<fs::path>{fs::canonical(photos_.path()), fs::canonical(other.path())}));
  EXPECT_EQ(model_->selectedFolders(), std::set<fs::path>{fs::canonical(other.path())})
      << "only the folder that was selected";
  ASSERT_EQ(model_->files().size(), 1u);
  EXPECT_EQ(model_->previewRow(model_->files().front().url)->newName.base, "kept_b");

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
  ASSERT_TRUE(settled());
  EXPECT_EQ(error(), "These files already have their original names.");
  model_->rename();
  // Straight after the batch, before the files are listed and read again: the names are read
  // from the files themselves.
  ASSERT_TRUE(waitFor([&] { return model_->toast().has_value(); }));
  model_->restoreOriginalNames();
  ASSERT_TRUE(settled());
  EXPECT_EQ(toast(), "1 file back to its original name");
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"DSC_0001.JPG", "a"}}));
  EXPECT_EQ(model_->history().entries().front().kind, RenameHistory::Kind::restoreOriginals);
}

// A tick takes the whole shot; a shot split anyway (a RAW copied in after its JPEG was ticked)
// is warned of on the rows in the batch, and one call ticks the rest of it.
TEST_F(Model, TicksAndFiltersNeverSplitAShot) {
  photos_.file("a.JPG", "aj");
  photos_.file("a.xmp", "ax");
  photos_.file("b.JPG", "bj");
  openWith("n_{counter}");
  model_->setScope(RenameScope::selected);
  model_->setTicked(photos_.path() / "a.JPG", true);
  EXPECT_EQ(model_->checked().size(), 2u) << "the sidecar comes with its picture";

  photos_.file("a.NEF", "an");
  model_->setTwinOptions(model_->twinOptions());  // lists the folder again
  ASSERT_TRUE(settled());
  EXPECT_EQ(model_->splitShots(), 1);
  const PlannedRename* row = model_->previewRow(photos_.path() / "a.JPG");
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->status, PreviewStatus::warning);
  ASSERT_FALSE(row->warnings.empty());
  EXPECT_EQ(row->warnings.back().twins, std::vector<std::string>{"a.NEF"});
  EXPECT_FALSE(model_->isInScope(photos_.path() / "b.JPG"));

  model_->tickWholeShots();
  EXPECT_EQ(model_->splitShots(), 0);
  EXPECT_EQ(model_->previewRow(photos_.path() / "a.JPG")->status, PreviewStatus::ok);
  EXPECT_EQ(model_->filesToRename(), 3);
  model_->setTicked(photos_.path() / "a.xmp", false);
  EXPECT_TRUE(model_->checked().empty()) << "unticking a file unticks its shot";

  // All the files shown: a filter to the pictures keeps a shown picture's RAW in the batch, and
  // leaves out the RAW of a shot that isn't shown.
  photos_.file("c.NEF", "cn");
  model_->setScope(RenameScope::all);
  model_->setTwinOptions(model_->twinOptions());
  ASSERT_TRUE(settled());
  ListFilter pictures;
  pictures.kinds = {FileKind::image};
  model_->setFilter(pictures);
  EXPECT_EQ(model_->filesToRename(), 4);  // the a shot and b.JPG
  EXPECT_FALSE(model_->isInScope(photos_.path() / "c.NEF"));
  model_->rename();
  ASSERT_TRUE(settled());
  EXPECT_EQ(toast(), "4 files renamed");
  EXPECT_TRUE(fs::exists(photos_.path() / "c.NEF"));
}

// A locked file and a read-only disk are found before anything moves: their rows say why, and
// Rename is held.
TEST_F(Model, FilesTheSystemWontRenameAreMarkedBeforehand) {
  photos_.file("a.jpg");
  const fs::path locked = photos_.file("b.jpg");
  if (!setImmutable(locked, true)) GTEST_SKIP() << "files can't be locked here (needs root)";
  struct Unlock {
    fs::path file;
    ~Unlock() { setImmutable(file, false); }
  } unlock{locked};
  openWith("n_{counter}");
  const PlannedRename* row = model_->previewRow(locked);
  ASSERT_NE(row, nullptr);
  ASSERT_EQ(row->errors.size(), 1u);
  EXPECT_EQ(Messages::of(row->errors.front()),
            "Can’t be renamed: the file is locked against changes (immutable, or owned by another "
            "user)");
  EXPECT_TRUE(model_->previewRow(photos_.path() / "a.jpg")->errors.empty());
  EXPECT_FALSE(model_->canRename());

  // A card whose lock switch is on: every row that would change says so.
  const fs::path card = home_.path() / "card";
  fs::create_directories(card);
  if (::mount("tessane-test", card.c_str(), "tmpfs", 0, "size=1m") != 0)
    GTEST_SKIP() << "no mounting here";
  struct Unmount {
    fs::path folder;
    ~Unmount() { ::umount2(folder.c_str(), MNT_DETACH); }
  } unmount{card};
  ::close(::open((card / "DSC_0001.JPG").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
  ASSERT_EQ(::mount(nullptr, card.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
  model_->open({card});
  ASSERT_TRUE(settled());
  row = model_->previewRow(fs::canonical(card) / "DSC_0001.JPG");
  ASSERT_NE(row, nullptr);
  ASSERT_EQ(row->errors.size(), 1u);
  EXPECT_EQ(row->errors.front(), NameError::refused(EROFS));
}

// A batch the disk refuses halfway leaves every name as it was and says what the system said.
TEST_F(Model, ARefusedMoveSaysWhyAndChangesNothing) {
  photos_.file("a.jpg", "a");
  photos_.file("b.jpg", "b");
  auto faulty = std::make_unique<testing::FaultyFileRenaming>(linux_);
  testing::FaultyFileRenaming& faults = *faulty;
  app_->setFileSystem(std::move(faulty));
  openWith("n_{counter}");
  faults.failAt(testing::FaultyFileRenaming::Call::moveItem,
                faults.calls(testing::FaultyFileRenaming::Call::moveItem) + 2, ENOSPC);
  model_->rename();
  ASSERT_TRUE(settled());
  EXPECT_THAT(error(), ::testing::StartsWith("Couldn’t rename “"));
  EXPECT_THAT(error(), ::testing::EndsWith(": the disk is full. Nothing was changed."));
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"a.jpg", "a"}, {"b.jpg", "b"}}));
  EXPECT_TRUE(model_->history().entries().empty());
}

// Rename waits while the shooting data is read again (after every listing), and says why.
TEST_F(Model, RenameWaitsForTheShootingData) {
  photos_.file("a.jpg");
  openWith("n_{counter}");
  ASSERT_TRUE(model_->canRename());
  model_->settingsChanged();  // the data is read again
  EXPECT_TRUE(model_->isReading());
  EXPECT_FALSE(model_->canRename());
  model_->rename();
  EXPECT_EQ(error(), "The shooting data is still being read: Rename waits until every date is in.");
  ASSERT_TRUE(waitFor([&] { return !model_->isReading(); }));
  ASSERT_TRUE(settled());
  EXPECT_TRUE(model_->canRename());
}

}  // namespace
}  // namespace tessane
