// One schedule of faults, run over every batch shape on three kinds of volume: the in-memory fake
// (both as a case-sensitive and as a case-insensitive volume), LinuxFileRenaming on a real
// temporary folder (on the disk and on a tmpfs), and LinuxFileRenaming on an exFAT card (see
// ExfatImage; skipped when it can't be mounted). The faults come from FaultyFileRenaming wrapped
// around the volume's own file system: a move that fails, every move from one on (the process
// stops), two moves (the rollback fails too), a folder that can't be listed, and a name the disk
// can't tell about. Whatever fails, no file is lost.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "BatchShapes.h"
#include "ExfatImage.h"
#include "FakeFileRenaming.h"
#include "FaultyFileRenaming.h"
#include "FileContents.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/SafeRenamer.h"
#include "TempFolder.h"
#include "TextJoin.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::FaultyFileRenaming;
using testing::join;
using testing::Shape;
using testing::shapesOf;
using Call = FaultyFileRenaming::Call;
using Contents = std::map<std::string, std::string>;  // name -> contents

const Date kDate{std::chrono::seconds(1'700'000'000)};

// A folder that each run of the schedule starts afresh in.
class Volume {
 public:
  virtual ~Volume() = default;
  virtual std::string label() const = 0;
  virtual fs::path folder() const = 0;
  // Empties the folder and fills it with `names`, each holding its own name.
  virtual void fill(const std::vector<std::string>& names) = 0;
  virtual Contents contents() const = 0;
  virtual SystemFileRenaming& system() = 0;
  // Whether a file has one identity under every spelling of its name. Not so through FUSE, where
  // only the listing can tell that "IMG.jpg" is the "img.jpg" of the batch: without it a
  // case-only change is refused (nothing moves), which is safe.
  virtual bool identityIgnoresSpelling() const { return true; }
};

class FakeVolume final : public Volume {
 public:
  explicit FakeVolume(bool caseInsensitive) : caseInsensitive_(caseInsensitive) {}
  std::string label() const override {
    return caseInsensitive_ ? "fake, case-insensitive" : "fake";
  }
  fs::path folder() const override { return "/card"; }
  void fill(const std::vector<std::string>& names) override {
    fake_ = std::make_unique<testing::FakeFileRenaming>(caseInsensitive_);
    for (const std::string& name : names)
      fake_->add(folder() / name, name);
  }
  Contents contents() const override {
    Contents out;
    for (const auto& [path, contents] : fake_->snapshot())
      out[fs::path(path).filename().native()] = contents;
    return out;
  }
  SystemFileRenaming& system() override { return *fake_; }

 private:
  bool caseInsensitive_;
  std::unique_ptr<testing::FakeFileRenaming> fake_;
};

class DiskVolume final : public Volume {
 public:
  DiskVolume(std::string label, fs::path folder, bool identityIgnoresSpelling = true)
      : label_(std::move(label)),
        folder_(std::move(folder)),
        identityIgnoresSpelling_(identityIgnoresSpelling) {}
  bool identityIgnoresSpelling() const override { return identityIgnoresSpelling_; }
  std::string label() const override { return label_; }
  fs::path folder() const override { return folder_; }
  void fill(const std::vector<std::string>& names) override {
    for (const fs::directory_entry& e : fs::directory_iterator(folder_))
      fs::remove_all(e.path());
    for (const std::string& name : names) {
      const int fd =
          ::open((folder_ / name).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
      ASSERT_GE(fd, 0) << name;
      ASSERT_EQ(::write(fd, name.data(), name.size()), static_cast<ssize_t>(name.size()));
      ::close(fd);
    }
  }
  Contents contents() const override { return testing::folderContents(folder_); }
  SystemFileRenaming& system() override { return system_; }

 private:
  std::string label_;
  fs::path folder_;
  bool identityIgnoresSpelling_;
  LinuxFileRenaming system_;
};

struct Fault {
  Call call;
  std::size_t k;
  bool onward = false;
};
using Faults = std::vector<Fault>;

std::string describe(const Faults& faults) {
  static const char* const kCalls[] = {"move", "exists", "identity", "list"};
  std::string out;
  for (const Fault& f : faults) {
    out.append(join(
        {" ", kCalls[static_cast<int>(f.call)], " #", std::to_string(f.k), f.onward ? " on" : ""}));
  }
  return out.empty() ? " none" : out;
}

bool only(const Faults& faults, Call call) {
  return std::all_of(faults.begin(), faults.end(),
                     [call](const Fault& f) { return f.call == call; });
}

// What the batch must come to under `faults`, on a volume holding `before`.
void verify(const Volume& volume, const Faults& faults, const std::vector<FileMove>& moves,
            const Contents& before, const Result<AppliedBatch, SafeRenameError>& result,
            const Contents& after, std::size_t movesTried) {
  Contents expected = before;
  // Moves past the batch's 2n never happen; a refused listing only makes the checks ask by name.
  const bool mustSucceed = std::all_of(faults.begin(), faults.end(), [&](const Fault& f) {
    return (f.call == Call::list && volume.identityIgnoresSpelling()) ||
           (f.call == Call::moveItem && f.k > 2 * moves.size());
  });
  // Every lookup the schedule fails is one the checks make: a name the disk couldn't tell about.
  const bool lookupFails = std::any_of(faults.begin(), faults.end(), [](const Fault& f) {
    return f.call == Call::identity || f.call == Call::fileExists;
  });
  if (result.ok()) {
    EXPECT_FALSE(lookupFails) << "a batch went ahead on a name the disk couldn't tell about";
    for (const FileMove& m : moves)
      expected.erase(m.source.filename().native());
    for (const FileMove& m : moves)
      expected[m.destination.filename().native()] = before.at(m.source.filename().native());
    EXPECT_EQ(after, expected);
    return;
  }
  ASSERT_FALSE(mustSucceed) << static_cast<int>(result.error().kind);
  const SafeRenameError& error = result.error();
  if (!only(faults, Call::moveItem)) {
    // A name the disk couldn't tell about refuses the batch before anything moves; so may a
    // listing refused where identities follow spelling.
    EXPECT_EQ(movesTried, 0u);
    EXPECT_EQ(after, before);
    if (error.kind == SafeRenameError::Case::failed) {
      EXPECT_EQ(error.cause->code, EACCES);
    }
    return;
  }
  ASSERT_EQ(error.kind, SafeRenameError::Case::failed);
  ASSERT_TRUE(error.cause.has_value());
  // The error names the file whose move failed first: every file is parked, then placed.
  const std::size_t first =
      std::min_element(faults.begin(), faults.end(), [](const Fault& a, const Fault& b) {
        return a.k < b.k;
      })->k;
  EXPECT_EQ(error.url, moves[(first - 1) % moves.size()].source);
  if (faults.size() == 1 && !faults[0].onward) {
    EXPECT_TRUE(error.stranded.empty());
  }
  // Stranded files: each listed once, in batch order, from where it is to where it was.
  std::vector<std::size_t> indices;
  for (const FileMove& s : error.stranded) {
    auto m = std::find_if(moves.begin(), moves.end(),
                          [&](const FileMove& mv) { return mv.source == s.destination; });
    ASSERT_NE(m, moves.end()) << s.destination;
    EXPECT_NE(s.source, s.destination) << "a file listed as stranded is back home";
    indices.push_back(static_cast<std::size_t>(m - moves.begin()));
    expected.erase(s.destination.filename().native());
  }
  EXPECT_TRUE(std::is_sorted(indices.begin(), indices.end()) &&
              std::adjacent_find(indices.begin(), indices.end()) == indices.end());
  for (const FileMove& s : error.stranded)
    expected[s.source.filename().native()] = before.at(s.destination.filename().native());
  EXPECT_EQ(after, expected);
}

using CallCounts = std::map<Call, std::size_t>;

// Runs one shape on `volume` under `faults`; how many calls of each kind it made.
CallCounts run(Volume& volume, const Shape& shape, const Faults& faults) {
  volume.fill(shape.files);
  FaultyFileRenaming faulty(volume.system());
  for (const Fault& f : faults) {
    if (f.onward) {
      faulty.failFrom(f.call, f.k, f.call == Call::moveItem ? EIO : EACCES);
    } else {
      faulty.failAt(f.call, f.k, f.call == Call::moveItem ? EIO : EACCES);
    }
  }
  const std::vector<FileMove> moves = shape.fileMoves(volume.folder());
  const Contents before = volume.contents();
  SCOPED_TRACE(join({volume.label(), ": ", shape.label, " n=", std::to_string(moves.size()),
                     ", faults:", describe(faults)}));
  Result<AppliedBatch, SafeRenameError> result = SafeRenamer::apply(moves, faulty, kDate);
  verify(volume, faults, moves, before, result, volume.contents(), faulty.calls(Call::moveItem));
  CallCounts out;
  for (Call c : {Call::moveItem, Call::fileExists, Call::identity, Call::list})
    out[c] = faulty.calls(c);
  return out;
}

// The schedule for one shape: no fault; each move failing alone; every move from each one on;
// (with `pairs`) each move and then each step of its rollback; and, with the folder listed or
// not, each lookup of a name failing.
void runSchedule(Volume& volume, const Shape& shape, bool pairs) {
  const std::size_t calls = 2 * shape.moves.size();
  for (std::size_t k = 1; k <= calls; ++k) {
    run(volume, shape, {{Call::moveItem, k}});
    run(volume, shape, {{Call::moveItem, k, true}});
    for (std::size_t j = k + 1; pairs && j <= k + calls; ++j)
      run(volume, shape, {{Call::moveItem, k}, {Call::moveItem, j}});
  }
  for (const Faults& listing : {Faults{}, Faults{{Call::list, 1, true}}}) {
    const CallCounts clean = run(volume, shape, listing);
    for (Call lookup : {Call::identity, Call::fileExists}) {
      for (std::size_t k = 1; k <= clean.at(lookup); ++k) {
        Faults faults = listing;
        faults.push_back({lookup, k});
        run(volume, shape, faults);
      }
    }
  }
}

void runSchedule(Volume& volume, std::size_t largest, std::size_t largestWithPairs) {
  for (std::size_t n = 1; n <= largest; ++n) {
    for (const Shape& shape : shapesOf(n)) {
      runSchedule(volume, shape, n <= largestWithPairs);
      if (::testing::Test::HasFailure()) return;
    }
  }
}

TEST(FaultSchedule, OverTheFakeFileSystem) {
  for (bool caseInsensitive : {false, true}) {
    FakeVolume volume(caseInsensitive);
    runSchedule(volume, 20, 8);
  }
}

TEST(FaultSchedule, OverARealFolder) {
  testing::TempFolder folder;
  DiskVolume volume("real folder", folder.path());
  runSchedule(volume, 6, 3);
}

TEST(FaultSchedule, OverATmpfsFolder) {
  std::error_code ec;
  if (!fs::is_directory("/dev/shm", ec) || ::access("/dev/shm", W_OK) != 0) {
    GTEST_SKIP() << "no writable /dev/shm";
  }
  testing::TempFolder folder("/dev/shm");
  DiskVolume volume("tmpfs folder", folder.path());
  runSchedule(volume, 6, 3);
}

TEST(FaultSchedule, OverAnExfatCard) {
  testing::TempFolder work;
  testing::ExfatImage card(work.path());
  if (std::optional<std::string> why = card.mount()) GTEST_SKIP() << *why;
  DiskVolume volume("exFAT card", card.root(), false);
  runSchedule(volume, 4, 2);
}

}  // namespace
}  // namespace tessane
