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
#include "RenameIO/BatchJournal.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/SafeRenamer.h"
#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::FakeFileRenaming;
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

std::size_t entriesIn(const fs::path& folder) {
  std::error_code ec;
  std::size_t n = 0;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
    ++n;
  return n;
}

// Runs a journaled batch on `fs` as the application does, except that the process "dies" at move
// number `diesAt` (0: it dies after the batch, before the history has it): the journal is left
// behind and the files stay wherever they were.
void crashDuringBatch(const std::vector<FileMove>& moves, FakeFileRenaming& fs,
                      const fs::path& journals, std::size_t diesAt) {
  std::optional<BatchJournal> journal;
  ApplyHooks hooks;
  hooks.beforeFirstMove = [&](const AppliedBatch& batch, const std::vector<fs::path>& temporary,
                              const std::vector<FileIdentity>& identities) {
    Result<BatchJournal> begun = BatchJournal::begin(journals, batch, temporary, identities);
    if (!begun) return std::optional<IOError>(begun.error());
    journal.emplace(std::move(begun).value());
    return std::optional<IOError>();
  };
  fs.diesAt = diesAt;
  (void)SafeRenamer::apply(moves, fs, kDate, hooks);
  fs.diesAt = 0;
  ASSERT_TRUE(journal.has_value());
}  // the journal's lock goes with the "process"

TEST(CrashRecovery, BatchInterruptedAfterAnyMoveGoesBack) {
  for (std::size_t n = 1; n <= 12; ++n) {
    for (const Shape& shape : shapesOf(n)) {
      for (bool caseInsensitive : {false, true}) {
        const std::vector<FileMove> moves = shape.fileMoves();
        for (std::size_t k = 1; k <= 2 * n + 1; ++k) {
          SCOPED_TRACE(shape.label + " n=" + std::to_string(n) + " dies at " + std::to_string(k) +
                       (caseInsensitive ? " case-insensitive" : ""));
          TempFolder journals(quickFolder());
          FakeFileRenaming fs(caseInsensitive);
          for (const std::string& f : shape.files)
            fs.add(testing::at(f), f);
          const std::map<std::string, std::string> before = fs.snapshot();
          crashDuringBatch(moves, fs, journals.path(), k == 2 * n + 1 ? 0 : k);
          ASSERT_EQ(entriesIn(journals.path()), 1u);

          RecoveryReport report = CrashRecovery::recoverJournals(journals.path(), fs);
          ASSERT_EQ(report.batches.size(), 1u);
          EXPECT_TRUE(report.batches[0].notPutBack.empty());
          EXPECT_EQ(report.batches[0].putBack + report.batches[0].alreadyHome, n);
          EXPECT_EQ(fs.snapshot(), before);
          EXPECT_EQ(entriesIn(journals.path()), 0u) << "the journal is removed once all is back";
          if (HasFailure()) return;
        }
      }
    }
  }
}

TEST(CrashRecovery, RecoveryInterruptedAnywhereIsFinishedByTheNext) {
  for (std::size_t n = 1; n <= 6; ++n) {
    for (const Shape& shape : shapesOf(n)) {
      const std::vector<FileMove> moves = shape.fileMoves();
      for (std::size_t k = 1; k <= 2 * n + 1; ++k) {
        for (std::size_t r = 1; r <= 2 * n; ++r) {
          SCOPED_TRACE(shape.label + " n=" + std::to_string(n) + " dies at " + std::to_string(k) +
                       ", recovery dies at " + std::to_string(r));
          TempFolder journals(quickFolder());
          FakeFileRenaming fs(true);
          for (const std::string& f : shape.files)
            fs.add(testing::at(f), f);
          const std::map<std::string, std::string> before = fs.snapshot();
          crashDuringBatch(moves, fs, journals.path(), k == 2 * n + 1 ? 0 : k);
          fs.diesAt = fs.moveCount() + r;
          (void)CrashRecovery::recoverJournals(journals.path(), fs);
          fs.diesAt = 0;
          (void)CrashRecovery::recoverJournals(journals.path(), fs);
          EXPECT_EQ(fs.snapshot(), before);
          EXPECT_EQ(entriesIn(journals.path()), 0u);
          if (HasFailure()) return;
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
  EXPECT_NE(report.summary().find("“/card/b.jpg” is still called “.tessane-"), std::string::npos)
      << report.summary();

  fs.remove(testing::at("b.jpg"));
  report = CrashRecovery::recoverJournals(journals.path(), fs);
  ASSERT_EQ(report.batches.size(), 1u);
  EXPECT_TRUE(report.batches[0].notPutBack.empty());
  EXPECT_EQ(fs.snapshot(),
            (std::map<std::string, std::string>{{"/card/a.jpg", "a"}, {"/card/b.jpg", "b"}}));
  EXPECT_EQ(report.summary(),
            "A rename was interrupted; its 2 files are back at the names they "
            "had before it.\n");
  EXPECT_TRUE(CrashRecovery::recoverJournals(journals.path(), fs).empty());
}

TEST(CrashRecovery, RunningBatchesAndUnreadableJournalsAreLeftAlone) {
  TempFolder journals;
  FakeFileRenaming fs;
  fs.add(testing::at("a.jpg"), "a");
  const AppliedBatch batch{
      Uuid::random(), kDate, {testing::mv(testing::at("a.jpg"), testing::at("b.jpg"))}};
  const std::vector<fs::path> temporary{
      SafeRenamer::temporaryLocation(batch.moves[0], "ABCDEF01", 0)};
  Result<BatchJournal> live = BatchJournal::begin(journals.path(), batch, temporary, fs);
  ASSERT_TRUE(live.ok()) << live.error().message();
  ASSERT_FALSE(fs.moveItem(testing::at("a.jpg"), temporary[0]));

  EXPECT_TRUE(CrashRecovery::recoverJournals(journals.path(), fs).empty()) << "its lock is held";
  EXPECT_TRUE(fs.fileExists(temporary[0]));

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
  EXPECT_TRUE(system.fileExists(dir.path() / "_QM19581.ARW"));
  EXPECT_TRUE(system.fileExists(dir.path() / "E\u0301te\u0301.jpg"));
  EXPECT_TRUE(system.fileExists(dir.path() / ".tessane-3F2A9C01-2-taken.jpg"));
  EXPECT_TRUE(system.fileExists(dir.path() / ".tessane-notours.jpg"));

  // The temporary names of a batch that is running right now are not touched.
  FakeFileRenaming fake;
  fake.add(dir.path() / "_QM19581.ARW", "raw");
  AppliedBatch batch{*Uuid::parse("3F2A9C01-1111-4222-8333-444455556666"),
                     kDate,
                     {testing::mv(dir.path() / "_QM19581.ARW", dir.path() / "x.ARW")}};
  Result<BatchJournal> live =
      BatchJournal::begin(journals.path(), batch, {dir.path() / "unused"}, fake);
  ASSERT_TRUE(live.ok());
  fs::rename(dir.path() / "_QM19581.ARW", dir.path() / ".tessane-3F2A9C01-0-_QM19581.ARW");
  EXPECT_TRUE(CrashRecovery::restoreTemporaryNames(dir.path(), journals.path(), system).empty());
  (void)live.value().finish();
  EXPECT_EQ(CrashRecovery::restoreTemporaryNames(dir.path(), journals.path(), system).size(), 1u);
}

TEST(BatchJournal, RecordReadsBack) {
  JournalRecord r{Uuid::random(), kDate, {}};
  r.items.push_back({testing::mv("/card/caf\xe9.jpg", "/card/b.jpg"), "/card/.t", {7, 42}});
  std::optional<JournalRecord> back = JournalRecord::decode(r.encode());
  ASSERT_TRUE(back);
  EXPECT_EQ(back->batch, r.batch);
  EXPECT_EQ(back->date, r.date);
  ASSERT_EQ(back->items.size(), 1u);
  EXPECT_EQ(back->items[0].move, r.items[0].move);
  EXPECT_EQ(back->items[0].temporary, "/card/.t");
  EXPECT_EQ(back->items[0].identity, (FileIdentity{7, 42}));
  EXPECT_FALSE(JournalRecord::decode("{\"batch\":\"x\",\"date\":0,\"moves\":[]}"));
}

}  // namespace
}  // namespace tessane
