// Building the preview: what the application does on every keystroke in the name field.
// Several folders, one shot in ten a RAW+JPEG pair, bursts in the same second so that some names
// clash, the typical stack (format with a per-day counter, replace, case, accents) and numbered
// clashes. The bar: 10,000 files in under 50 ms, aiming for one display frame (16 ms); an edit of
// the rules over a prepared batch: 10,000 files within 16 ms, 100,000 within 200 ms.
#include <benchmark/benchmark.h>

#include "BenchStack.h"

#include "RenameEngine/RenamePreview.h"

namespace {

using namespace tessane;
using namespace std::chrono;

PreviewRequest shoot(std::size_t count) {
  PreviewRequest q;
  const Date start = Date(sys_days(year_month_day(year(2024), month(5), day(1))) + hours(6));
  std::size_t shot = 0;
  while (q.subjects.size() < count) {
    const std::string folder = "/photos/card-" + std::to_string(shot / 2500 % 4);
    char base[32];
    std::snprintf(base, sizeof base, "DSC%05zu", shot);
    // Bursts: four shots in each second, so names without sub-seconds clash.
    const Date when = start + seconds(static_cast<long long>(shot / 4));
    const bool twin = shot % 10 == 0;
    for (const char* ext :
         twin ? std::vector<const char*>{"ARW", "JPG"} : std::vector<const char*>{"ARW"}) {
      RenameSubject s;
      s.name = std::string(base) + "." + ext;
      s.folder = folder;
      s.captureDate = when;
      s.bodyTag = shot % 3 ? "A7R5" : "X\xC3\xA9";
      s.metadata.set(MetadataKey::model, MetadataValue::text("ILCE-7RM5"));
      q.folders[folder].names.push_back(s.name);
      q.folders[folder].files.push_back(s.name);
      q.subjects.push_back(std::move(s));
    }
    ++shot;
  }
  for (auto& [folder, contents] : q.folders)
    contents.names.push_back("2024-05-01_06-00-00_A7R5.ARW");

  q.stack = bench::typicalStack("{date:yyyy-MM-dd_HH-mm-ss}_{body}");
  q.twins = TwinOptions::forKinds(true, true, true);
  q.duplicates = DuplicatePolicy::addSuffix;
  q.naming = *NamingContext::inZone("Europe/Rome", "unknown");
  return q;
}

void BM_Preview(benchmark::State& state) {
  const PreviewRequest q = shoot(static_cast<std::size_t>(state.range(0)));
  std::size_t suffixed = 0;
  for (auto _ : state) {
    const RenamePreview p = buildPreview(q);
    suffixed = static_cast<std::size_t>(std::count_if(
        p.items.begin(), p.items.end(),
        [](const PlannedRename& r) { return r.newName.base.find('-', 20) != std::string::npos; }));
    benchmark::DoNotOptimize(p.items.data());
  }
  state.counters["suffixed"] = static_cast<double>(suffixed);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A keystroke in the name field: the batch was prepared when its files were read; the edit
// compiles the new stack and builds the preview over the prepared batch.
void BM_PreviewAfterEdit(benchmark::State& state) {
  const PreviewRequest q = shoot(static_cast<std::size_t>(state.range(0)));
  const PreparedBatch batch(std::make_shared<const std::vector<RenameSubject>>(q.subjects), q.twins,
                            q.order, q.folders);
  for (auto _ : state) {
    const RenamePreview p = buildPreview(batch, CompiledRuleStack(q.stack), q.naming, q.duplicates);
    benchmark::DoNotOptimize(p.items.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_RuleStackOnly(benchmark::State& state) {
  const PreviewRequest q = shoot(static_cast<std::size_t>(state.range(0)));
  const CompiledRuleStack stack(q.stack);
  for (auto _ : state)
    benchmark::DoNotOptimize(stack.apply(q.subjects, q.naming));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_Preview)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_PreviewAfterEdit)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_RuleStackOnly)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
