#include "TessaneRename/BatchRunner.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "FileContents.h"
#include "RenameIO/CrashRecovery.h"
#include "RenameIO/FakeFileRenaming.h"
#include "RenameIO/FaultyFileRenaming.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/OriginalName.h"
#include "TempFolder.h"
#include "TessaneRename/Preferences.h"
#include "TextJoin.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::entriesIn;
using testing::folderContents;
using testing::join;
using testing::TempFolder;

const Date kDate{std::chrono::seconds(1'700'000'000)};

TEST(BatchRunner, RecordsTheBatchThenDropsTheJournal) {
  TempFolder photos, data;
  LinuxFileRenaming system;
  photos.file("A.jpg", "a");
  photos.file("B.jpg", "b");
  RenameHistory history(data.path() / "History.json");
  const fs::path journals = data.path() / "Journal";
  const std::vector<FileMove> moves{{photos.path() / "A.jpg", photos.path() / "B.jpg"},
                                    {photos.path() / "B.jpg", photos.path() / "A.jpg"}};
  ASSERT_TRUE(
      BatchRunner::run(moves, RenameHistory::Kind::rename, kDate, system, history, journals).ok());
  EXPECT_EQ(folderContents(photos.path()),
            (std::map<std::string, std::string>{{"A.jpg", "b"}, {"B.jpg", "a"}}));
  EXPECT_EQ(entriesIn(journals), 0u);
  ASSERT_EQ(RenameHistory::load(data.path() / "History.json").entries().size(), 1u)
      << "in the file before the journal goes";

  ASSERT_TRUE(BatchRunner::goBack(history.entries()[0].id, kDate, system, history, journals).ok());
  EXPECT_EQ(folderContents(photos.path()),
            (std::map<std::string, std::string>{{"A.jpg", "a"}, {"B.jpg", "b"}}));
  EXPECT_TRUE(history.entries()[0].isReverted);
  EXPECT_EQ(history.entries().size(), 1u);
}

TEST(BatchRunner, NoJournalNoBatch) {
  TempFolder photos, data;
  LinuxFileRenaming system;
  photos.file("a.jpg", "a");
  data.file("Journal", "a file where the folder should be");
  RenameHistory history;
  Result<BatchRunner::Done, BatchRunner::Failure> r = BatchRunner::run(
      {{photos.path() / "a.jpg", photos.path() / "b.jpg"}}, RenameHistory::Kind::rename, kDate,
      system, history, data.path() / "Journal");
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error().error.kind, SafeRenameError::Case::failed);
  EXPECT_TRUE(r.error().error.cause);
  EXPECT_EQ(folderContents(photos.path()), (std::map<std::string, std::string>{{"a.jpg", "a"}}));
  EXPECT_TRUE(history.entries().empty());
}

TEST(BatchRunner, KeepsTheJournalWhenTheHistoryCantBeSaved) {
  TempFolder photos, data;
  LinuxFileRenaming system;
  photos.file("a.jpg", "a");
  data.file("blocked", "a file where the history's folder should be");
  RenameHistory history(data.path() / "blocked" / "History.json");
  const fs::path journals = data.path() / "Journal";
  auto done = BatchRunner::run({{photos.path() / "a.jpg", photos.path() / "b.jpg"}},
                               RenameHistory::Kind::rename, kDate, system, history, journals);
  ASSERT_TRUE(done.ok());
  EXPECT_FALSE(done.value().historySaved);
  EXPECT_EQ(entriesIn(journals), 1u) << "the journal is the batch's only record";

  // The next start puts the file back, since nothing else could.
  CrashRecovery::recoverJournals(journals, system);
  EXPECT_EQ(folderContents(photos.path()), (std::map<std::string, std::string>{{"a.jpg", "a"}}));
}

TEST(BatchRunner, ABatchThatStrandsFilesIsRecordedAsFarAsItWent) {
  TempFolder data;
  testing::FakeFileRenaming system;
  const fs::path dir = "/card/DCIM";
  system.add(dir / "a.jpg", "a");
  system.add(dir / "b.jpg", "b");
  testing::FaultyFileRenaming dying(system);
  // The second file's last move fails, and so does every move back.
  dying.failFrom(testing::FaultyFileRenaming::Call::moveItem, 4);
  RenameHistory history;
  auto r =
      BatchRunner::run({{dir / "a.jpg", dir / "x.jpg"}, {dir / "b.jpg", dir / "y.jpg"}},
                       RenameHistory::Kind::rename, kDate, dying, history, data.path() / "Journal");
  ASSERT_FALSE(r.ok());
  ASSERT_EQ(r.error().error.stranded.size(), 2u);
  ASSERT_EQ(history.entries().size(), 1u);
  const RenameHistory::Entry& entry = history.entries()[0];
  ASSERT_EQ(entry.moves.size(), 2u);
  // Each move goes from the file's own name to where it was left.
  EXPECT_EQ(entry.moves[0].source, dir / "a.jpg");
  EXPECT_EQ(entry.moves[0].destination, dir / "x.jpg");
  EXPECT_EQ(entry.moves[1].source, dir / "b.jpg");
  EXPECT_TRUE(system.fileExists(entry.moves[1].destination).isPresent());

  // Going back from it, once the disk answers again, puts both files home.
  ASSERT_TRUE(BatchRunner::goBack(entry.id, kDate, system, history, data.path() / "J2").ok());
  EXPECT_TRUE(system.fileExists(dir / "a.jpg").isPresent() &&
              system.fileExists(dir / "b.jpg").isPresent());
}

TEST(BatchRunner, GoingBackRefusesUnknownAndRevertedEntries) {
  TempFolder photos, data;
  LinuxFileRenaming system;
  photos.file("a.jpg", "a");
  RenameHistory history;
  const fs::path journals = data.path() / "Journal";
  auto unknown = BatchRunner::goBack(Uuid::random(), kDate, system, history, journals);
  ASSERT_FALSE(unknown.ok());
  EXPECT_EQ(unknown.error().kind, BatchRunner::Failure::Kind::unknownEntry);

  ASSERT_TRUE(BatchRunner::run({{photos.path() / "a.jpg", photos.path() / "b.jpg"}},
                               RenameHistory::Kind::rename, kDate, system, history, journals)
                  .ok());
  const Uuid id = history.entries()[0].id;
  ASSERT_TRUE(BatchRunner::goBack(id, kDate, system, history, journals).ok());
  photos.file("b.jpg", "another file, not the one renamed");
  auto again = BatchRunner::goBack(id, kDate, system, history, journals);
  ASSERT_FALSE(again.ok());
  EXPECT_EQ(again.error().kind, BatchRunner::Failure::Kind::alreadyReverted);
  EXPECT_EQ(folderContents(photos.path()),
            (std::map<std::string, std::string>{{"a.jpg", "a"},
                                                {"b.jpg", "another file, not the one renamed"}}));
}

// Going back from an older batch when later ones renamed its files again, or took the names it
// would give back: those go back first, in the same batch; a later batch out of the way stays.
TEST(BatchRunner, GoingBackFromAnOlderBatchGoesThroughTheLaterOnesInItsWay) {
  TempFolder photos, data;
  LinuxFileRenaming system;
  for (const char* name : {"a", "b", "c", "x"})
    photos.file(name, name);
  RenameHistory history;
  const fs::path journals = data.path() / "Journal";
  const auto batch = [&](std::vector<std::pair<const char*, const char*>> moves) {
    std::vector<FileMove> out;
    for (const auto& [from, to] : moves)
      out.push_back(FileMove{photos.path() / from, photos.path() / to});
    EXPECT_TRUE(
        BatchRunner::run(out, RenameHistory::Kind::rename, kDate, system, history, journals).ok());
    return history.entries().front().id;
  };
  const Uuid first = batch({{"a", "a1"}, {"b", "b1"}});
  const Uuid further = batch({{"a1", "a2"}});           // one of its files, renamed again
  const Uuid aside = batch({{"x", "y"}});               // another file: not in the way
  const Uuid takesName = batch({{"c", "a"}});           // takes a name going back gives back
  const Uuid swap = batch({{"b1", "y"}, {"y", "b1"}});  // its other file, swapped with another

  std::vector<Uuid> chain;
  for (const RenameHistory::Entry& e : history.goingBackChain(first))
    chain.push_back(e.id);
  EXPECT_EQ(chain, (std::vector<Uuid>{swap, takesName, further, first}));
  EXPECT_EQ(history.goingBackChain(swap).size(), 1u);

  auto back = BatchRunner::goBack(first, kDate, system, history, journals);
  ASSERT_TRUE(back.ok());
  EXPECT_EQ(back.value().batch.moves.size(), 4u) << "each file moved once, straight home";
  EXPECT_EQ(folderContents(photos.path()),
            (std::map<std::string, std::string>{{"a", "a"}, {"b", "b"}, {"c", "c"}, {"y", "x"}}));
  for (const RenameHistory::Entry& e : history.entries())
    EXPECT_EQ(e.isReverted, e.id != aside);
  EXPECT_TRUE(history.goingBackChain(first).empty());
}

TEST(BatchRunner, RemembersTheCamerasNamesAsTheSettingSays) {
  TempFolder photos, data;
  LinuxFileRenaming system;
  photos.file("probe", "");
  OriginalName::remember(photos.path() / "probe", "x");
  if (!OriginalName::read(photos.path() / "probe")) {
    GTEST_SKIP() << "this file system keeps no user attributes";
  }
  photos.file("DSC_1.jpg", "a");
  photos.file("DSC_2.jpg", "b");
  RenameHistory history;
  const fs::path journals = data.path() / "Journal";
  ASSERT_TRUE(BatchRunner::run({{photos.path() / "DSC_1.jpg", photos.path() / "one.jpg"}},
                               RenameHistory::Kind::rename, kDate, system, history, journals,
                               OriginalNames::always)
                  .ok());
  EXPECT_EQ(OriginalName::read(photos.path() / "one.jpg"), "DSC_1.jpg");
  ASSERT_TRUE(BatchRunner::run({{photos.path() / "DSC_2.jpg", photos.path() / "two.jpg"}},
                               RenameHistory::Kind::rename, kDate, system, history, journals,
                               OriginalNames::never)
                  .ok());
  EXPECT_EQ(OriginalName::read(photos.path() / "two.jpg"), std::nullopt);
}

// A real rename of a few thousand files in a child process, killed with SIGKILL at random moments;
// after recovery every file is present, either all at their original names or all at their new
// names, and none is left under a hidden name. The files are made once; each round renames them
// from whichever of the two states they are in towards the other. The window for the kill starts
// from one measured run and follows what the kills find: a batch that finished before its kill
// narrows it, one killed before its journal widens it; rounds go on until kills have fallen
// inside batches, so a loaded machine changes how many rounds it takes, not the outcome.
TEST(BatchRunner, SurvivesSigkillAtAnyMoment) {
  constexpr std::size_t kFiles = 2000;
  constexpr int kRounds = 16;
  constexpr int kMaxRounds = 200;
  std::mt19937 random(20240501);
  LinuxFileRenaming system;
  TempFolder photos, data;
  const fs::path journals = data.path() / "Journal";

  // Half the files rotate among their own names; the other half take new names.
  std::map<std::string, std::string> original, renamed;
  std::vector<FileMove> forward, backward;
  for (std::size_t i = 0; i < kFiles; ++i) {
    const std::string name = join({"IMG_", std::to_string(i), ".JPG"});
    photos.file(name, name);
    original[name] = name;
    const std::string next = i < kFiles / 2
                                 ? join({"IMG_", std::to_string((i + 1) % (kFiles / 2)), ".JPG"})
                                 : join({"2024-05-01_", std::to_string(i), ".JPG"});
    renamed[next] = name;
    forward.push_back(FileMove{photos.path() / name, photos.path() / next});
    backward.push_back(FileMove{photos.path() / next, photos.path() / name});
  }

  bool atNew = false;
  int recovered = 0;
  long window = 0;  // microseconds
  int round = -1;
  for (; round < kRounds || (recovered < 4 && round < kMaxRounds); ++round) {
    const auto started = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      RenameHistory history(data.path() / "History.json");
      const bool ok = BatchRunner::run(atNew ? backward : forward, RenameHistory::Kind::rename,
                                       kDate, system, history, journals)
                          .ok();
      ::_exit(ok ? 0 : 1);
    }
    long delay = 0;
    if (round >= 0) {
      // Anywhere from before the journal exists to after the batch is done.
      delay = std::uniform_int_distribution<long>(0, window)(random);
      ::usleep(static_cast<useconds_t>(delay));
      ::kill(child, SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (round < 0) {
      ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
      window = std::chrono::duration_cast<std::chrono::microseconds>(
                   std::chrono::steady_clock::now() - started)
                   .count() *
               5 / 4;
    }

    const RecoveryReport report = CrashRecovery::recoverJournals(journals, system);
    if (round >= 0 && WIFEXITED(status)) {
      window = std::max(delay, 1000L);  // done before the kill: kill sooner
    } else if (round >= 0 && report.batches.empty()) {
      window = window * 5 / 4 + 1000;  // killed before the journal: the batch runs longer
    }
    for (const RecoveredBatch& b : report.batches)
      EXPECT_TRUE(b.notPutBack.empty());
    recovered += static_cast<int>(report.batches.size());
    const std::map<std::string, std::string> now = folderContents(photos.path());
    for (const auto& [name, contents] : now)
      ASSERT_FALSE(name.starts_with(".")) << "round " << round << ": " << name;
    ASSERT_TRUE(now == original || now == renamed)
        << "round " << round << ": " << now.size() << " files";
    atNew = now == renamed;
  }
  EXPECT_GT(recovered, 0) << "no kill fell inside a batch; the test proved nothing";
  std::printf("%d of %d killed batches were put back from their journal\n", recovered, round);
}

}  // namespace
}  // namespace tessane
