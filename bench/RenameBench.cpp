// Applying a batch on a real folder against the physical limit of the disk.
//
// A folder of 10,000 files with realistic names (made once, in TESSANE_BENCH_DIR or the temporary
// folder). Each iteration renames all of them, alternately to new names and back:
//   BareRenameat2: 20,000 renameat2 calls with RENAME_NOREPLACE, each file to a temporary name and
//     then to its new name, and nothing else: as fast as the kernel renames.
//   SafeRenamerApply: the same batch through SafeRenamer::apply (checks, both phases).
//   SafeRenamerJournaled: the same with the crash journal written before and removed after.
// The *AgainstBare benchmarks time the two, interleaved, within each iteration (each after a sync,
// so that neither pays for the other's pending writes) and report "ratio" (renamer time over bare
// time): read that figure, the absolute times on a shared machine are noise.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "BenchNames.h"
#include "RenameIO/BatchJournal.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/SafeRenamer.h"

namespace {

namespace fs = std::filesystem;
using namespace tessane;

constexpr std::size_t kFiles = 10000;

class Folder {
 public:
  Folder() {
    const char* where = std::getenv("TESSANE_BENCH_DIR");
    std::string pattern =
        (where != nullptr ? fs::path(where) : fs::temp_directory_path()) / "tessane-bench-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    root_ = pattern;
    photos_ = root_ / "photos";
    journals_ = root_ / "journal";
    fs::create_directory(photos_);
    const std::vector<std::string> names = bench::realisticNames(kFiles);
    for (std::size_t i = 0; i < kFiles; ++i) {
      std::string renamed("Trip_");
      renamed.append(std::to_string(i)).push_back('_');
      renamed.append(names[i]);
      forward_.push_back(FileMove{photos_ / names[i], photos_ / renamed});
      backward_.push_back(FileMove{photos_ / renamed, photos_ / names[i]});
      const int fd = ::open(forward_.back().source.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0644);
      if (fd < 0) std::abort();
      ::close(fd);
    }
    // Let the new files reach the disk before anything is timed.
    ::sync();
    warmUp();
  }
  // The first renames in a freshly filled folder are several times slower than any later ones;
  // one round there and back before anything is timed.
  void warmUp();
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
  }

  // The batch from where the files are now to the other names.
  const std::vector<FileMove>& next() {
    atNew_ = !atNew_;
    return atNew_ ? forward_ : backward_;
  }
  const fs::path& journals() const { return journals_; }

 private:
  fs::path root_, photos_, journals_;
  std::vector<FileMove> forward_, backward_;
  bool atNew_ = false;
};

Folder& folder() {
  static Folder f;
  return f;
}

void bare(const std::vector<FileMove>& moves) {
  std::vector<fs::path> temporary;
  temporary.reserve(moves.size());
  for (std::size_t i = 0; i < moves.size(); ++i)
    temporary.push_back(SafeRenamer::temporaryLocation(moves[i], "BE4C0000", i));
  for (std::size_t i = 0; i < moves.size(); ++i) {
    if (::renameat2(AT_FDCWD, moves[i].source.c_str(), AT_FDCWD, temporary[i].c_str(),
                    RENAME_NOREPLACE) != 0) {
      std::abort();
    }
  }
  for (std::size_t i = 0; i < moves.size(); ++i) {
    if (::renameat2(AT_FDCWD, temporary[i].c_str(), AT_FDCWD, moves[i].destination.c_str(),
                    RENAME_NOREPLACE) != 0) {
      std::abort();
    }
  }
}

void apply(const std::vector<FileMove>& moves, bool journaled) {
  LinuxFileRenaming system;
  std::optional<BatchJournal> journal;
  ApplyHooks hooks;
  if (journaled) {
    hooks.beforeFirstMove = [&](const AppliedBatch& batch, const std::vector<fs::path>&,
                                const std::vector<FileIdentity>& identities) {
      Result<BatchJournal> begun = BatchJournal::begin(folder().journals(), batch, identities);
      if (!begun) return std::optional<IOError>(begun.error());
      journal.emplace(std::move(begun).value());
      return std::optional<IOError>();
    };
  }
  if (!SafeRenamer::apply(moves, system, Date{}, hooks).ok()) std::abort();
  if (journal) (void)journal->finish();
}

void Folder::warmUp() {
  bare(next());
  bare(next());
  ::sync();
}

double seconds(std::chrono::steady_clock::duration d) {
  return std::chrono::duration<double>(d).count();
}

void BM_BareRenameat2(benchmark::State& state) {
  for (auto _ : state)
    bare(folder().next());
  state.SetItemsProcessed(state.iterations() * static_cast<benchmark::IterationCount>(kFiles));
}

void BM_SafeRenamerApply(benchmark::State& state) {
  for (auto _ : state)
    apply(folder().next(), false);
  state.SetItemsProcessed(state.iterations() * static_cast<benchmark::IterationCount>(kFiles));
}

void againstBare(benchmark::State& state, bool journaled) {
  double renamer = 0, physical = 0;
  // One round untimed, so that both start from a warm folder.
  bare(folder().next());
  apply(folder().next(), journaled);
  for (auto _ : state) {
    // Each side starts with the disk's pending writes flushed, so neither pays for the other's.
    ::sync();
    auto t0 = std::chrono::steady_clock::now();
    bare(folder().next());
    auto t1 = std::chrono::steady_clock::now();
    ::sync();
    auto t2 = std::chrono::steady_clock::now();
    apply(folder().next(), journaled);
    auto t3 = std::chrono::steady_clock::now();
    physical += seconds(t1 - t0);
    renamer += seconds(t3 - t2);
    state.SetIterationTime(seconds(t3 - t2));
  }
  state.counters["bare_s"] = physical / static_cast<double>(state.iterations());
  state.counters["renamer_s"] = renamer / static_cast<double>(state.iterations());
  state.counters["ratio"] = renamer / physical;
}

void BM_SafeRenamerAgainstBare(benchmark::State& state) {
  againstBare(state, false);
}
void BM_SafeRenamerJournaledAgainstBare(benchmark::State& state) {
  againstBare(state, true);
}

BENCHMARK(BM_BareRenameat2)->Iterations(4)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SafeRenamerApply)->Iterations(4)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SafeRenamerAgainstBare)->Iterations(6)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SafeRenamerJournaledAgainstBare)
    ->Iterations(6)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
