#include "RenameIO/CrashRecovery.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "BatchShapes.h"
#include "FakeFileRenaming.h"
#include "FaultyFileRenaming.h"
#include "FileContents.h"
#include "RenameIO/BatchJournal.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/SafeRenamer.h"
#include "TempFolder.h"
#include "TextJoin.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::entriesIn;
using testing::FakeFileRenaming;
using testing::FaultyFileRenaming;
using testing::join;
using testing::Shape;
using testing::shapesOf;
using testing::TempFolder;

const Date kDate{std::chrono::seconds(1'700'000'000)};

// Journals are flushed to the disk on every write; a tmpfs keeps these many runs quick.
fs::path quickFolder() {
  std::error_code ec;
  return fs::is_directory("/dev/shm", ec) && ::access("/dev/shm", W_OK) == 0
             ? fs::path("/dev/shm")
             : fs::temp_directory_path();
}

// Runs a journaled batch on `fs` as the application does, except that the process "dies" at move
// number `diesAt` (0: it dies after the batch, before the history has it): the journal is left
// behind and the files stay wherever they were.
void crashDuringBatch(const std::vector<FileMove>& moves, FakeFileRenaming& fs,
                      const fs::path& journals, std::size_t diesAt, Date date = kDate) {
  std::optional<BatchJournal> journal;
  ApplyHooks hooks;
  hooks.beforeFirstMove = [&](const AppliedBatch& batch, const std::vector<fs::path>&,
                              const std::vector<FileIdentity>& identities) {
    Result<BatchJournal> begun = BatchJournal::begin(journals, batch, identities);
    if (!begun) return std::optional<IOError>(begun.error());
    journal.emplace(std::move(begun).value());
    return std::optional<IOError>();
  };
  FaultyFileRenaming dying(fs);
  if (diesAt != 0) dying.failFrom(FaultyFileRenaming::Call::moveItem, diesAt);
  (void)SafeRenamer::apply(moves, dying, date, hooks);
  ASSERT_TRUE(journal.has_value());
}  // the journal's lock goes with the "process"

// The batch stops after any of its moves (or after its last, before the history has it); then
// recovery may itself stop after any of its moves (r = 0: it runs through) and is run again.
TEST(CrashRecovery, BatchGoesBackWhereverBatchOrRecoveryStopped) {
  for (std::size_t n = 1; n <= 12; ++n) {
    for (const Shape& shape : shapesOf(n)) {
      for (bool caseInsensitive : {false, true}) {
        for (std::size_t k = 1; k <= 2 * n + 1; ++k) {
          for (std::size_t r = 0; r <= (n <= 6 ? 2 * n : 0); ++r) {
            SCOPED_TRACE(join({shape.label, " n=", std::to_string(n), " batch stops at ",
                               std::to_string(k), " recovery at ", std::to_string(r),
                               caseInsensitive ? " case-insensitive" : ""}));
            TempFolder journals(quickFolder());
            FakeFileRenaming fs(caseInsensitive);
            for (const std::string& f : shape.files)
              fs.add(testing::at(f), f);
            const std::map<std::string, std::string> before = fs.snapshot();
            crashDuringBatch(shape.fileMoves(), fs, journals.path(), k == 2 * n + 1 ? 0 : k);
            ASSERT_EQ(entriesIn(journals.path()), 1u);
            if (r > 0) {
              FaultyFileRenaming dying(fs);
              dying.failFrom(FaultyFileRenaming::Call::moveItem, r);
              (void)CrashRecovery::recoverJournals(journals.path(), dying);
            }
            const RecoveryReport report = CrashRecovery::recoverJournals(journals.path(), fs);
            for (const RecoveredBatch& b : report.batches)
              EXPECT_TRUE(b.notPutBack.empty());
            EXPECT_EQ(fs.snapshot(), before);
            EXPECT_EQ(entriesIn(journals.path()), 0u) << "the journal goes once all is back";
            if (HasFailure()) return;
          }
        }
      }
    }
  }
}

TEST(CrashRecovery, NameTakenMeanwhileIsReportedAndRetriedLater) {
  TempFolder journals;
  FakeFileRenaming fs;
  fs.add(testing::at("a.jpg"), "a");
  fs.add(testing::at("b.jpg"), "b");
  const std::vector<FileMove> moves{testing::mv(testing::at("a.jpg"), testing::at("x.jpg")),
                                    testing::mv(testing::at("b.jpg"), testing::at("y.jpg"))};
  crashDuringBatch(moves, fs, journals.path(), 4);  // a is at x.jpg, b parked
  fs.add(testing::at("b.jpg"), "someone else's");

  RecoveryReport report = CrashRecovery::recoverJournals(journals.path(), fs);
  ASSERT_EQ(report.batches.size(), 1u);
  ASSERT_EQ(report.batches[0].notPutBack.size(), 1u);
  EXPECT_EQ(report.batches[0].notPutBack[0].destination, testing::at("b.jpg"));
  EXPECT_TRUE(report.batches[0].journalKept);
  EXPECT_EQ(fs.snapshot().at("/card/a.jpg"), "a");
  EXPECT_TRUE(report.batches[0].notPutBack[0].source.filename().native().starts_with(".tessane-"));

  fs.remove(testing::at("b.jpg"));
  report = CrashRecovery::recoverJournals(journals.path(), fs);
  ASSERT_EQ(report.batches.size(), 1u);
  EXPECT_TRUE(report.batches[0].notPutBack.empty());
  EXPECT_EQ(fs.snapshot(),
            (std::map<std::string, std::string>{{"/card/a.jpg", "a"}, {"/card/b.jpg", "b"}}));
  EXPECT_EQ(report.batches[0].putBack + report.batches[0].alreadyHome, 2u);
  EXPECT_TRUE(CrashRecovery::recoverJournals(journals.path(), fs).empty());
}

TEST(CrashRecovery, NewerBatchesGoBackFirst) {
  TempFolder journals;
  FakeFileRenaming fs;
  fs.add(testing::at("a.jpg"), "a");
  // Two batches left behind over the same file; the older journal's file comes first by name.
  const auto leaveJournal = [&](const char* from, const char* to, Date date, const char* as) {
    crashDuringBatch({testing::mv(testing::at(from), testing::at(to))}, fs, journals.path(), 0,
                     date);
    for (const fs::directory_entry& e : fs::directory_iterator(journals.path())) {
      if (!e.path().filename().native().starts_with("00000000")) {
        fs::rename(e.path(), journals.path() / join({as, "-0000-4000-8000-000000000000.json"}));
      }
    }
  };
  leaveJournal("a.jpg", "b.jpg", kDate, "00000000");
  leaveJournal("b.jpg", "c.jpg", kDate + std::chrono::seconds(1), "FFFFFFFF");
  const RecoveryReport report = CrashRecovery::recoverJournals(journals.path(), fs);
  ASSERT_EQ(report.batches.size(), 2u);
  EXPECT_EQ(fs.snapshot(), (std::map<std::string, std::string>{{"/card/a.jpg", "a"}}));
  EXPECT_EQ(entriesIn(journals.path()), 0u);
}

TEST(CrashRecovery, RunningBatchesAndUnreadableJournalsAreLeftAlone) {
  TempFolder journals;
  FakeFileRenaming fs;
  fs.add(testing::at("a.jpg"), "a");
  const AppliedBatch batch{
      Uuid::random(), kDate, {testing::mv(testing::at("a.jpg"), testing::at("b.jpg"))}};
  const std::vector<fs::path> temporary{
      SafeRenamer::temporaryLocation(batch.moves[0], batch.id.string().substr(0, 8), 0)};
  Result<BatchJournal> live = BatchJournal::begin(journals.path(), batch, fs);
  ASSERT_TRUE(live.ok()) << live.error().code;
  ASSERT_FALSE(fs.moveItem(testing::at("a.jpg"), temporary[0]));

  EXPECT_TRUE(CrashRecovery::recoverJournals(journals.path(), fs).empty()) << "its lock is held";
  EXPECT_TRUE(fs.fileExists(temporary[0]).isPresent());

  journals.file("0F2A9C01-1111-4222-8333-444455556666.json", "{\"batch\": ");
  journals.file(".5F2A9C01-1111-4222-8333-444455556666.json.Ab12Cd", "{\"ba");  // half-written
  RecoveryReport report = CrashRecovery::recoverJournals(journals.path(), fs);
  EXPECT_TRUE(report.batches.empty());
  ASSERT_EQ(report.unreadableJournals.size(), 1u);
  EXPECT_EQ(entriesIn(journals.path()), 2u) << "the half-written one is gone, the others stay";

  ASSERT_FALSE(live.value().finish());
  EXPECT_EQ(entriesIn(journals.path()), 1u);
}

TEST(CrashRecovery, TemporaryNamesLeadBackWithoutAJournal) {
  TempFolder dir;
  TempFolder journals;
  LinuxFileRenaming system;
  dir.file(".tessane-3F2A9C01-0-_QM19581.ARW", "raw");
  dir.file(".tessane-3F2A9C01-1-E\u0301te\u0301.jpg", "summer");
  dir.file(".tessane-3F2A9C01-2-taken.jpg", "parked");
  dir.file("taken.jpg", "outside");
  dir.file(".tessane-notours.jpg", "other");
  const std::vector<FileMove> back =
      CrashRecovery::restoreTemporaryNames(dir.path(), journals.path(), system);
  EXPECT_EQ(back.size(), 2u);
  EXPECT_TRUE(system.fileExists(dir.path() / "_QM19581.ARW").isPresent());
  EXPECT_TRUE(system.fileExists(dir.path() / "E\u0301te\u0301.jpg").isPresent());
  EXPECT_TRUE(system.fileExists(dir.path() / ".tessane-3F2A9C01-2-taken.jpg").isPresent());
  EXPECT_TRUE(system.fileExists(dir.path() / ".tessane-notours.jpg").isPresent());

  // The temporary names of a batch that is running right now are not touched.
  FakeFileRenaming fake;
  fake.add(dir.path() / "_QM19581.ARW", "raw");
  AppliedBatch batch{*Uuid::parse("3F2A9C01-1111-4222-8333-444455556666"),
                     kDate,
                     {testing::mv(dir.path() / "_QM19581.ARW", dir.path() / "x.ARW")}};
  Result<BatchJournal> live = BatchJournal::begin(journals.path(), batch, fake);
  ASSERT_TRUE(live.ok());
  fs::rename(dir.path() / "_QM19581.ARW", dir.path() / ".tessane-3F2A9C01-0-_QM19581.ARW");
  EXPECT_TRUE(CrashRecovery::restoreTemporaryNames(dir.path(), journals.path(), system).empty());
  (void)live.value().finish();
  EXPECT_EQ(CrashRecovery::restoreTemporaryNames(dir.path(), journals.path(), system).size(), 1u);
}

// The folder is listed through the file system it is handed, never around it.
TEST(CrashRecovery, TemporaryNamesAreFoundThroughTheFileSystemHandedIn) {
  TempFolder journals;
  FakeFileRenaming fake;
  fake.add(testing::at(".tessane-3F2A9C01-0-a.jpg"), "a");
  const std::vector<FileMove> back =
      CrashRecovery::restoreTemporaryNames("/card", journals.path(), fake);
  ASSERT_EQ(back.size(), 1u);
  EXPECT_EQ(fake.snapshot(), (std::map<std::string, std::string>{{"/card/a.jpg", "a"}}));

  fake.add(testing::at(".tessane-3F2A9C01-0-b.jpg"), "b");
  FaultyFileRenaming unlistable(fake);
  unlistable.failFrom(FaultyFileRenaming::Call::list, 1);
  EXPECT_TRUE(CrashRecovery::restoreTemporaryNames("/card", journals.path(), unlistable).empty());
  EXPECT_EQ(unlistable.calls(FaultyFileRenaming::Call::moveItem), 0u);
}

}  // namespace
}  // namespace tessane
