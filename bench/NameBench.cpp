// Splitting, blocking and keying file names: the work done for every file on every preview.
//
// Each benchmark runs over the same 100,000 realistic names; items/s is names per second. The
// copy benchmark is the floor (touching every name once), so the other figures read as ratios
// against it.
#include <benchmark/benchmark.h>

#include <algorithm>

#include "BenchNames.h"
#include "RenameEngine/BlockedName.h"
#include "RenameEngine/FileName.h"
#include "RenameEngine/NameKey.h"
#include "RenameEngine/NaturalOrder.h"
#include "RenameEngine/Unicode.h"

namespace {

using namespace tessane;

const std::vector<std::string>& names() {
  static const std::vector<std::string> n = bench::realisticNames(100000);
  return n;
}

const std::vector<std::string>& asciiNames() {
  static const std::vector<std::string> n = [] {
    std::vector<std::string> out;
    for (const std::string& s : names()) {
      if (unicode::isAscii(s)) out.push_back(s);
    }
    return out;
  }();
  return n;
}

const std::vector<std::string>& otherNames() {
  static const std::vector<std::string> n = [] {
    std::vector<std::string> out;
    for (const std::string& s : names()) {
      if (!unicode::isAscii(s)) out.push_back(s);
    }
    return out;
  }();
  return n;
}

template <typename Work>
void run(benchmark::State& state, const std::vector<std::string>& input, Work work) {
  for (auto _ : state) {
    for (const std::string& name : input)
      work(name);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(input.size()));
}

void BM_CopyFloor(benchmark::State& state) {
  run(state, names(), [](const std::string& n) {
    std::string copy = n;
    benchmark::DoNotOptimize(copy);
  });
}

void BM_SplitFileName(benchmark::State& state) {
  run(state, names(), [](const std::string& n) { benchmark::DoNotOptimize(FileName::parse(n)); });
}

void BM_FileKind(benchmark::State& state) {
  run(state, names(), [](const std::string& n) { benchmark::DoNotOptimize(fileKindOf(n)); });
}

void BM_BlockBase(benchmark::State& state) {
  std::vector<std::string> bases;
  for (const std::string& n : names())
    bases.push_back(FileName::parse(n).base);
  run(state, bases, [](const std::string& b) { benchmark::DoNotOptimize(BlockedName::split(b)); });
}

void BM_NameKey(benchmark::State& state) {
  run(state, names(), [](const std::string& n) { benchmark::DoNotOptimize(NameKey::of(n)); });
}

// Everything a listed file goes through before the rules run.
void all(const std::string& n) {
  const FileName split = FileName::parse(n);
  benchmark::DoNotOptimize(split.kind());
  benchmark::DoNotOptimize(BlockedName::split(split.base));
  benchmark::DoNotOptimize(NameKey::of(n));
}

void BM_SplitBlockKey_All(benchmark::State& state) {
  run(state, names(), all);
}
void BM_SplitBlockKey_AsciiOnly(benchmark::State& state) {
  run(state, asciiNames(), all);
}
void BM_SplitBlockKey_NonAsciiOnly(benchmark::State& state) {
  run(state, otherNames(), all);
}

// Sorting a folder's files for display: one sort key per name, then plain comparisons.
void BM_NaturalSort(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<std::pair<std::string, const std::string*>> keyed;
    keyed.reserve(names().size());
    for (const std::string& n : names())
      keyed.emplace_back(unicode::naturalSortKey(n), &n);
    std::sort(keyed.begin(), keyed.end());
    benchmark::DoNotOptimize(keyed.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(names().size()));
}

BENCHMARK(BM_CopyFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SplitFileName)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FileKind)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BlockBase)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NameKey)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SplitBlockKey_All)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SplitBlockKey_AsciiOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SplitBlockKey_NonAsciiOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NaturalSort)->Unit(benchmark::kMillisecond);

}  // namespace
