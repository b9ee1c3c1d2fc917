// The rule stack over a realistic batch: the cost per file of a typical stack. items/s is files
// per second. The floor copies each subject's name once.
#include <benchmark/benchmark.h>

#include "BenchNames.h"
#include "BenchStack.h"
#include "RenameEngine/FileName.h"
#include "RenameEngine/RuleStack.h"

namespace {

using namespace tessane;
using namespace std::chrono;

std::vector<RenameSubject> subjects(std::size_t count) {
  std::vector<RenameSubject> out;
  const std::vector<std::string> names = bench::realisticNames(count);
  const Date start = Date(sys_days(year_month_day(year(2024), month(5), day(1))) + hours(6));
  for (std::size_t i = 0; i < count; ++i) {
    RenameSubject s;
    s.name = names[i];
    s.folder = i % 2 ? "/photos/card-A" : "/photos/card-B";
    // A shot every 13 seconds over several days; some files without a date.
    if (i % 50 != 0) s.captureDate = start + seconds(static_cast<long long>(i) * 13);
    s.bodyTag = i % 3 ? "A7R5" : "X\xC3\xA9";
    s.cameraModel = "ILCE-7RM5";
    s.metadata.set(MetadataKey::make, MetadataValue::text("Sony"));
    s.metadata.set(MetadataKey::iso, MetadataValue::integer(100));
    out.push_back(std::move(s));
  }
  return out;
}

void BM_CopyFloor(benchmark::State& state) {
  const std::vector<RenameSubject> batch = subjects(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    for (const RenameSubject& s : batch) {
      FileName copy = FileName::parse(s.name);
      benchmark::DoNotOptimize(copy);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_TypicalStack(benchmark::State& state) {
  const std::vector<RenameSubject> batch = subjects(static_cast<std::size_t>(state.range(0)));
  const RuleStack stack = bench::typicalStack("{date:yyyy-MM-dd_HH-mm-ss}_{body}_{counter}");
  const NamingContext context = *NamingContext::inZone("Europe/Rome", "unknown");
  for (auto _ : state)
    benchmark::DoNotOptimize(applyRuleStack(stack, batch, context));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_FormatRuleOnly(benchmark::State& state) {
  const std::vector<RenameSubject> batch = subjects(static_cast<std::size_t>(state.range(0)));
  RuleStack stack = bench::typicalStack("{date:yyyy-MM-dd_HH-mm-ss}_{body}_{counter}");
  stack.rules.resize(1);
  const NamingContext context = *NamingContext::inZone("Europe/Rome", "unknown");
  for (auto _ : state)
    benchmark::DoNotOptimize(applyRuleStack(stack, batch, context));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_CopyFloor)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TypicalStack)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FormatRuleOnly)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
