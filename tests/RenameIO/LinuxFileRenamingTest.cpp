// The renamer against real file systems: the disk the tests run from, and a tmpfs.
#include "RenameIO/LinuxFileRenaming.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "FileContents.h"
#include "RenameIO/SafeRenamer.h"
#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::contentsOf;
using testing::folderContents;
using testing::TempFolder;

const Date kDate{std::chrono::seconds(1'700'000'000)};

// A tmpfs to work in: /dev/shm when it is one, else nothing.
std::optional<fs::path> tmpfsFolder() {
  struct statfs st {};
  if (::statfs("/dev/shm", &st) == 0 && st.f_type == TMPFS_MAGIC && ::access("/dev/shm", W_OK) == 0)
    return fs::path("/dev/shm");
  return std::nullopt;
}

class OnRealDisk : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (std::string(GetParam()) == "tmpfs") {
      std::optional<fs::path> where = tmpfsFolder();
      if (!where) GTEST_SKIP() << "no writable tmpfs at /dev/shm";
      dir_ = std::make_unique<TempFolder>(*where);
    } else {
      dir_ = std::make_unique<TempFolder>();
    }
  }
  fs::path at(const std::string& name) const { return dir_->path() / name; }
  const TempFolder& dir() const { return *dir_; }

  LinuxFileRenaming system_;

 private:
  std::unique_ptr<TempFolder> dir_;
};

TEST_P(OnRealDisk, DecomposedNamesAreMovedByTheirOwnBytes) {
  const std::string decomposed = "E\u0301te\u0301.jpg";
  const std::string composed = "\u00c9t\u00e9.jpg";
  dir().file(decomposed, "summer");
  // Its destination's key is its own source's key: allowed, and the bytes on disk change.
  Result<AppliedBatch, SafeRenameError> r =
      SafeRenamer::apply(std::vector<FileMove>{{at(decomposed), at(composed)}}, system_, kDate);
  ASSERT_TRUE(r.ok()) << static_cast<int>(r.error().kind);
  EXPECT_EQ(folderContents(dir().path()),
            (std::map<std::string, std::string>{{composed, "summer"}}));

  // A name that is not UTF-8 is moved back by its bytes as well.
  const std::string latin1 = "caf\xe9.jpg";
  ASSERT_TRUE(
      SafeRenamer::apply(std::vector<FileMove>{{at(composed), at(latin1)}}, system_, kDate).ok());
  EXPECT_EQ(folderContents(dir().path()), (std::map<std::string, std::string>{{latin1, "summer"}}));
}

// A name taken by an outside file is refused up front; one taken, or a source deleted, after the
// checks makes the batch roll back around it without touching the outsider.
TEST_P(OnRealDisk, OutsideChangesNeverCostAFile) {
  dir().file("a.jpg", "a");
  dir().file("b.jpg", "b");
  dir().file("TAKEN.JPG", "outside");
  Result<AppliedBatch, SafeRenameError> r = SafeRenamer::apply(
      std::vector<FileMove>{FileMove{at("b.jpg"), at("TAKEN.JPG")}}, system_, kDate);
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error().kind, SafeRenameError::Case::destinationExists);

  for (const bool deleteSource : {false, true}) {
    const std::vector<FileMove> moves{{at("a.jpg"), at("b.jpg")},
                                      {at("b.jpg"), at(deleteSource ? "z.jpg" : "y.jpg")}};
    ApplyHooks hooks;
    hooks.beforeFirstMove = [&](const AppliedBatch&, const std::vector<fs::path>&,
                                const std::vector<FileIdentity>&) {
      if (deleteSource) {
        fs::remove(at("b.jpg"));
      } else {
        dir().file("y.jpg", "appeared");
      }
      return std::optional<IOError>();
    };
    r = SafeRenamer::apply(moves, system_, kDate, hooks);
    ASSERT_FALSE(r.ok());
    EXPECT_TRUE(r.error().stranded.empty());
    ASSERT_TRUE(r.error().cause);
    EXPECT_EQ(r.error().cause->code, deleteSource ? ENOENT : EEXIST);
  }
  EXPECT_EQ(folderContents(dir().path()),
            (std::map<std::string, std::string>{
                {"a.jpg", "a"}, {"TAKEN.JPG", "outside"}, {"y.jpg", "appeared"}}));
}

TEST_P(OnRealDisk, ExclusiveRenameNeverOverwrites) {
  dir().file("a.jpg", "a");
  dir().file("b.jpg", "b");
  fs::create_symlink("gone.jpg", at("dangling.jpg"));
  for (const fs::path& taken : {at("b.jpg"), at("dangling.jpg")}) {
    std::optional<IOError> e = system_.moveItem(at("a.jpg"), taken);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->code, EEXIST);
    EXPECT_TRUE(LinuxFileRenaming::moveByReservation(at("a.jpg"), taken));
  }
  EXPECT_EQ(contentsOf(at("b.jpg")), "b");
  EXPECT_TRUE(fs::is_symlink(at("dangling.jpg")));

  // The reservation path moves like the exclusive rename and leaves nothing behind on failure.
  EXPECT_FALSE(LinuxFileRenaming::moveByReservation(at("a.jpg"), at("c.jpg")));
  EXPECT_EQ(contentsOf(at("c.jpg")), "a");
  EXPECT_TRUE(LinuxFileRenaming::moveByReservation(at("missing.jpg"), at("d.jpg")));
  fs::create_directory(at("folder"));
  EXPECT_TRUE(LinuxFileRenaming::moveByReservation(at("folder"), at("e.jpg")));
  EXPECT_TRUE(system_.fileExists(at("d.jpg")).isAbsent() &&
              system_.fileExists(at("e.jpg")).isAbsent());
}

// Absent is only what the system says is absent; any other failure is "couldn't tell".
TEST_P(OnRealDisk, AbsentIsToldFromCouldNotTell) {
  dir().file("a.jpg", "a");
  fs::create_symlink("loop", at("loop"));
  EXPECT_TRUE(system_.fileExists(at("a.jpg")).isPresent());
  EXPECT_TRUE(system_.identity(at("a.jpg/x")).presence.isAbsent()) << "ENOTDIR: nothing there";
  const Presence looped = system_.fileExists(at("loop/x"));
  EXPECT_TRUE(looped.isUnknown());
  EXPECT_EQ(looped.code(), ELOOP);
  EXPECT_TRUE(system_.identity(at("loop/x")).presence.isUnknown());
  if (::geteuid() != 0) {
    fs::create_directory(at("closed"));
    dir().file("closed/b.jpg", "b");
    fs::permissions(at("closed"), fs::perms::none);
    EXPECT_EQ(system_.fileExists(at("closed/b.jpg")).code(), EACCES);
    fs::permissions(at("closed"), fs::perms::owner_all);
  }
}

// "Same folder" is the folder on disk, not tidied text: "d/x/../y.jpg" is "d/y.jpg" as text, but
// with x a link to another folder it lands in that folder's parent. A folder reached through a
// link to itself is the same folder, and its names clash with the names spelled directly.
TEST_P(OnRealDisk, TheSameFolderIsTheFolderOnDisk) {
  fs::create_directories(at("d"));
  fs::create_directories(at("other/sub"));
  fs::create_directory_symlink("../other/sub", at("d/x"));
  fs::create_directory_symlink("d", at("alias"));
  dir().file("d/a.jpg", "a");
  dir().file("d/b.jpg", "b");

  const FileMove out{at("d/a.jpg"), at("d/x/../y.jpg")};
  Result<AppliedBatch, SafeRenameError> r =
      SafeRenamer::apply(std::vector<FileMove>{out}, system_, kDate);
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error().kind, SafeRenameError::Case::notSameFolder);
  EXPECT_FALSE(fs::exists(at("other/y.jpg")));
  EXPECT_EQ(contentsOf(at("d/a.jpg")), "a");

  r = SafeRenamer::apply(
      std::vector<FileMove>{{at("d/a.jpg"), at("d/z.jpg")}, {at("d/b.jpg"), at("alias/Z.jpg")}},
      system_, kDate);
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error().kind, SafeRenameError::Case::duplicateDestination);

  r = SafeRenamer::apply(std::vector<FileMove>{{at("d/b.jpg"), at("alias/c.jpg")}}, system_, kDate);
  ASSERT_TRUE(r.ok());
  EXPECT_EQ(contentsOf(at("d/c.jpg")), "b");
  EXPECT_FALSE(fs::exists(at("d/b.jpg")));
}

TEST_P(OnRealDisk, AListingGivesEveryEntryWithTheIdentityLstatGives) {
  dir().file("a.jpg", "a");
  dir().file(".hidden", "h");
  fs::create_directory(at("sub"));
  fs::create_symlink("gone.jpg", at("dangling.jpg"));
  std::optional<std::vector<FolderEntry>> entries = system_.list(dir().path());
  ASSERT_TRUE(entries);
  std::map<std::string, std::optional<FileIdentity>> byName;
  for (const FolderEntry& e : *entries)
    byName[e.name] = e.identity;
  ASSERT_EQ(byName.size(), 4u);
  for (const auto& [name, identity] : byName) {
    ASSERT_TRUE(identity) << name << ": disk and tmpfs listings know their inodes";
    EXPECT_EQ(identity, system_.identity(at(name)).found()) << name;
  }
  EXPECT_FALSE(system_.list(at("a.jpg")));
  EXPECT_FALSE(system_.list(at("missing")));
}

INSTANTIATE_TEST_SUITE_P(Linux, OnRealDisk, ::testing::Values("disk", "tmpfs"));

}  // namespace
}  // namespace tessane
