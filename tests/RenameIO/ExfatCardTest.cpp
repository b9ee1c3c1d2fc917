// The renamer on a memory card's file system (see ExfatImage). There the exclusive-rename flag is
// refused (EINVAL), names are case-insensitive (a case-only rename onto itself is refused with
// EEXIST), and hard links and extended attributes are refused.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <map>
#include <string>
#include <vector>

#include "ExfatImage.h"
#include "FileContents.h"
#include "RenameIO/BatchJournal.h"
#include "RenameIO/CrashRecovery.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/OriginalName.h"
#include "RenameIO/SafeRenamer.h"
#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

const Date kDate{std::chrono::seconds(1'700'000'000)};

class ExfatCard : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::optional<std::string> why = card_.mount()) GTEST_SKIP() << *why;
    mount_ = card_.root();
  }

  fs::path at(const std::string& name) const { return mount_ / name; }
  void file(const std::string& name, const std::string& contents) const {
    const int fd = ::open(at(name).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    ASSERT_GE(fd, 0) << name;
    ASSERT_EQ(::write(fd, contents.data(), contents.size()), static_cast<ssize_t>(contents.size()));
    ::close(fd);
  }
  // Every entry by its stored name (the case as written) -> contents.
  std::map<std::string, std::string> card() const { return testing::folderContents(mount_); }

  TempFolder work_;
  testing::ExfatImage card_{work_.path()};
  fs::path mount_;
  LinuxFileRenaming system_;
};

TEST_F(ExfatCard, ReservationStandsInForTheRefusedFlag) {
  file("a.jpg", "a");
  file("b.jpg", "b");
  file("img.jpg", "i");
  if (::renameat2(AT_FDCWD, at("a.jpg").c_str(), AT_FDCWD, at("c.jpg").c_str(), RENAME_NOREPLACE) ==
      0) {
    GTEST_SKIP() << "this kernel's exFAT takes the exclusive flag: no reservation to exercise";
  }
  ASSERT_EQ(errno, EINVAL);

  EXPECT_FALSE(system_.moveItem(at("a.jpg"), at("c.jpg")));
  std::optional<IOError> e = system_.moveItem(at("c.jpg"), at("B.JPG"));
  ASSERT_TRUE(e);
  EXPECT_EQ(e->code, EEXIST) << "a name taken up to case is taken";
  e = system_.moveItem(at("img.jpg"), at("IMG.JPG"));
  ASSERT_TRUE(e) << "a case-only rename can't go straight";
  EXPECT_TRUE(system_.moveItem(at("gone.jpg"), at("d.jpg")));
  EXPECT_EQ(card(),
            (std::map<std::string, std::string>{{"c.jpg", "a"}, {"b.jpg", "b"}, {"img.jpg", "i"}}))
      << "nothing overwritten, no reservation left behind";
}

// (Case-only changes, swaps and rotations on the card run in the fault schedule.)
TEST_F(ExfatCard, ANameHeldOutsideTheBatchInAnotherCaseIsRefused) {
  file("a.jpg", "a");
  // A name held by a file outside the batch, differing in case, is refused up front.
  file("other.jpg", "o");
  const Result<AppliedBatch, SafeRenameError> r =
      SafeRenamer::apply(std::vector<FileMove>{{at("a.jpg"), at("OTHER.JPG")}}, system_, kDate);
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error().kind, SafeRenameError::Case::destinationExists);
}

TEST_F(ExfatCard, OriginalNameIsSilentlySkipped) {
  file("_QM19581.ARW", "raw");
  EXPECT_FALSE(OriginalName::keepsAttributesNatively(at("_QM19581.ARW")))
      << "a card is not a disk that keeps attributes";
  OriginalName::remember(at("_QM19581.ARW"), "_QM19581.ARW");  // as with the setting "always"
  EXPECT_FALSE(OriginalName::read(at("_QM19581.ARW")));
  EXPECT_EQ(card(), (std::map<std::string, std::string>{{"_QM19581.ARW", "raw"}}))
      << "no companion file appears beside the photo";
}

TEST_F(ExfatCard, InterruptedBatchGoesBack) {
  TempFolder journals;
  file("A.JPG", "a");
  file("B.JPG", "b");
  file("c.jpg", "c");
  const std::vector<FileMove> moves{
      {at("A.JPG"), at("B.JPG")}, {at("B.JPG"), at("A.JPG")}, {at("c.jpg"), at("C.JPG")}};
  {
    const AppliedBatch batch{Uuid::random(), kDate, moves};
    std::vector<fs::path> temporary;
    for (std::size_t i = 0; i < moves.size(); ++i)
      temporary.push_back(
          SafeRenamer::temporaryLocation(moves[i], batch.id.string().substr(0, 8), i));
    Result<BatchJournal> journal = BatchJournal::begin(journals.path(), batch, system_);
    ASSERT_TRUE(journal.ok()) << journal.error().code;
    // The process dies halfway through phase two.
    for (std::size_t i = 0; i < moves.size(); ++i)
      ASSERT_FALSE(system_.moveItem(moves[i].source, temporary[i]));
    ASSERT_FALSE(system_.moveItem(temporary[0], moves[0].destination));
    ASSERT_FALSE(system_.moveItem(temporary[2], moves[2].destination));
  }
  const RecoveryReport report = CrashRecovery::recoverJournals(journals.path(), system_);
  ASSERT_EQ(report.batches.size(), 1u);
  EXPECT_TRUE(report.batches[0].notPutBack.empty());
  EXPECT_EQ(card(),
            (std::map<std::string, std::string>{{"A.JPG", "a"}, {"B.JPG", "b"}, {"c.jpg", "c"}}));
}

}  // namespace
}  // namespace tessane
