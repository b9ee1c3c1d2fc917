#include "TessaneRename/RenameHistory.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <string>
#include <vector>

#include "FileContents.h"
#include "TempFolder.h"
#include "TextJoin.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::contentsOf;
using testing::join;
using testing::TempFolder;
using Kind = RenameHistory::Kind;

const Date kDate{std::chrono::seconds(978307200 + 86400)};  // 2001-01-02

std::vector<FileMove> movesOf(std::size_t count, const std::string& folder = "/card") {
  std::vector<FileMove> out;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string n = std::to_string(i);
    out.push_back(FileMove{fs::path(folder) / join({"a", n}), fs::path(folder) / join({"b", n})});
  }
  return out;
}

TEST(RenameHistory, KeepsFiftyEntriesNewestFirst) {
  RenameHistory history;
  std::vector<Uuid> ids;
  for (std::size_t i = 0; i < 51; ++i)
    ids.push_back(history.add(Kind::rename, movesOf(1), kDate));
  ASSERT_EQ(history.entries().size(), 50u);
  EXPECT_EQ(history.entries().front().id, ids.back());
  EXPECT_EQ(history.entries().back().id, ids[1]) << "the oldest left";
  EXPECT_FALSE(history.entries().front().isReverted);
  EXPECT_EQ(history.entries().front().date, kDate);
}

TEST(RenameHistory, MoveLimitDropsOlderEntriesButNeverTheNewest) {
  RenameHistory history;
  history.add(Kind::rename, movesOf(10), kDate);
  history.add(Kind::rename, movesOf(19990), kDate);
  EXPECT_EQ(history.entries().size(), 2u) << "20,000 moves exactly are allowed";
  const Uuid big = history.add(Kind::rename, movesOf(25000), kDate);
  ASSERT_EQ(history.entries().size(), 1u);
  EXPECT_EQ(history.entries()[0].id, big);
  const Uuid small = history.add(Kind::restoreOriginals, movesOf(1), kDate);
  ASSERT_EQ(history.entries().size(), 1u);
  EXPECT_EQ(history.entries()[0].id, small);
}

TEST(RenameHistory, UndoGoesBackFromTheNewestNotReverted) {
  RenameHistory history;
  const Uuid first = history.add(Kind::rename, movesOf(3), kDate);
  const Uuid second = history.add(Kind::restoreOriginals, movesOf(1), kDate);
  history.markReverted(Uuid::random());  // unknown: nothing changes
  EXPECT_EQ(history.newestNotReverted()->id, second);
  history.markReverted(second);
  ASSERT_EQ(history.newestNotReverted()->id, first);
  // Going back undoes the moves from the last made to the first.
  EXPECT_EQ(RenameHistory::reversal(*history.newestNotReverted()),
            (std::vector<FileMove>{
                {"/card/b2", "/card/a2"}, {"/card/b1", "/card/a1"}, {"/card/b0", "/card/a0"}}));
  history.markReverted(first);
  EXPECT_EQ(history.newestNotReverted(), nullptr);
}

TEST(RenameHistory, FileFormat) {
  RenameHistory::Entry e;
  e.id = *Uuid::parse("3f2a9c01-1111-4222-8333-444455556666");
  e.date = Date(std::chrono::seconds(978307200) + std::chrono::milliseconds(1500));
  e.kind = Kind::restoreOriginals;
  e.moves.push_back({"/photos/My Trip/_QM19581.ARW", "/photos/My Trip/\u00e9t\u00e9.ARW"});
  e.isReverted = true;
  EXPECT_EQ(RenameHistory::encode({e}),
            R"([{"id":"3F2A9C01-1111-4222-8333-444455556666","date":1.5,"kind":"restoreOriginals",)"
            R"("moves":[{"source":"file:///photos/My%20Trip/_QM19581.ARW","destination":)"
            R"("file:///photos/My%20Trip/%C3%A9t%C3%A9.ARW"}],"isReverted":true}])");

  // As another encoder may write it: escaped slashes, lower-case id, whole-number date, keys in
  // another order.
  std::optional<std::vector<RenameHistory::Entry>> back = RenameHistory::decode(
      R"([{"isReverted":false,"moves":[{"destination":"file:\/\/\/b.jpg","source":"file:\/\/\/a.jpg"}],)"
      R"("kind":"rename","date":-3600,"id":"3f2a9c01-1111-4222-8333-444455556666"}])");
  ASSERT_TRUE(back);
  ASSERT_EQ(back->size(), 1u);
  EXPECT_EQ((*back)[0].id, e.id);
  EXPECT_EQ((*back)[0].date, Date(std::chrono::seconds(978307200 - 3600)));
  EXPECT_EQ((*back)[0].moves[0], (RenameHistory::Move{"/a.jpg", "/b.jpg"}));

  // A path that is not UTF-8 survives the file.
  e.moves[0].source = "/card/caf\xe9.jpg";
  EXPECT_EQ(RenameHistory::decode(RenameHistory::encode({e})),
            std::vector<RenameHistory::Entry>{e});
}

TEST(RenameHistory, AnythingButAListOfEntriesIsNoHistory) {
  for (const char* bad : {"", "{}", "[{}]", "[", "\xff\xfe",
                          R"([{"id":"3F2A9C01-1111-4222-8333-444455556666","date":0,)"
                          R"("kind":"move","moves":[],"isReverted":false}])",
                          R"([{"id":"3F2A9C01-1111-4222-8333-444455556666","date":0,)"
                          R"("kind":"rename","moves":[{"source":"http://a","destination":)"
                          R"("file:///b"}],"isReverted":false}])"}) {
    EXPECT_FALSE(RenameHistory::decode(bad)) << bad;
  }
  EXPECT_EQ(RenameHistory::decode("[]"), std::vector<RenameHistory::Entry>{});

  TempFolder dir;
  const fs::path file = dir.file("History.json", "[{\"broken\": true}]");
  EXPECT_TRUE(RenameHistory::load(file).entries().empty());
  EXPECT_TRUE(RenameHistory::load(dir.path() / "missing.json").entries().empty());
}

TEST(RenameHistory, SavesInOrderAndReloads) {
  TempFolder dir;
  const fs::path file = dir.path() / "Tessane Rename" / "History.json";
  Uuid id;
  {
    RenameHistory history(file);
    id = history.add(Kind::rename, movesOf(5000), kDate);
    history.markReverted(id);  // started right after the first save
  }
  RenameHistory loaded = RenameHistory::load(file);
  ASSERT_EQ(loaded.entries().size(), 1u);
  EXPECT_TRUE(loaded.entries()[0].isReverted) << "the second save is the one in the file";
  EXPECT_EQ(loaded.entries()[0].moves.size(), 5000u);

  loaded.clear();
  loaded.waitForSaves();
  EXPECT_EQ(contentsOf(file), "[]");

  // A save that can't be written is ignored and leaves the file as it was.
  RenameHistory unwritable(dir.path() / "History.json" / "below-a-file.json");
  dir.file("History.json", "kept");
  unwritable.add(Kind::rename, movesOf(1), kDate);
  unwritable.waitForSaves();
  EXPECT_EQ(unwritable.entries().size(), 1u);
  EXPECT_EQ(contentsOf(dir.path() / "History.json"), "kept");
}

// Two histories over one file, as a window open while the tool renames: each change reads in what
// the other wrote, and an entry the other removed stays removed.
TEST(RenameHistory, ChangesMergeWhatAnotherHistoryWrote) {
  TempFolder dir;
  const fs::path file = dir.path() / "History.json";
  RenameHistory window = RenameHistory::load(file);
  const Uuid first = window.add(Kind::rename, movesOf(2), kDate);
  window.waitForSaves();

  RenameHistory tool = RenameHistory::load(file);
  const Uuid theirs = tool.add(Kind::rename, movesOf(1), kDate + std::chrono::hours(1));
  tool.markReverted(first);
  tool.waitForSaves();

  const Uuid mine = window.add(Kind::rename, movesOf(3), kDate + std::chrono::hours(2));
  window.waitForSaves();
  const std::vector<RenameHistory::Entry>& entries = window.entries();
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].id, mine);
  EXPECT_EQ(entries[1].id, theirs);
  EXPECT_EQ(entries[2].id, first);
  EXPECT_TRUE(entries[2].isReverted) << "gone back from by the other";
  EXPECT_EQ(RenameHistory::load(file).entries(), entries);

  EXPECT_FALSE(window.reload()) << "nothing new in the file";
  tool.clear();
  tool.waitForSaves();
  EXPECT_TRUE(window.reload());
  EXPECT_TRUE(window.entries().empty()) << "cleared by the other";
}

// Three processes adding at once: every entry reaches the file.
TEST(RenameHistory, ProcessesAddingAtOnceLoseNothing) {
  TempFolder dir;
  const fs::path file = dir.path() / "History.json";
  constexpr int kEach = 12;
  std::vector<pid_t> children;
  for (int c = 0; c < 2; ++c) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      RenameHistory history = RenameHistory::load(file);
      for (int i = 0; i < kEach; ++i)
        history.add(Kind::rename, movesOf(40, "/child" + std::to_string(c)));
      ::_exit(history.waitForSaves() ? 0 : 1);
    }
    children.push_back(child);
  }
  RenameHistory history = RenameHistory::load(file);
  for (int i = 0; i < kEach; ++i)
    history.add(Kind::rename, movesOf(40, "/parent"));
  EXPECT_TRUE(history.waitForSaves());
  for (const pid_t child : children) {
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  std::map<std::string, int> byFolder;
  const RenameHistory written = RenameHistory::load(file);
  for (const RenameHistory::Entry& e : written.entries())
    ++byFolder[RenameHistory::foldersOf(e).front().string()];
  EXPECT_EQ(byFolder, (std::map<std::string, int>{
                          {"/child0", kEach}, {"/child1", kEach}, {"/parent", kEach}}));
}

}  // namespace
}  // namespace tessane
