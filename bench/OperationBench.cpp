// The cost per name of each family of rename operations over 100,000 realistic names, with the
// operation prepared once (as the rule stack does). items/s is names per second. The copy
// benchmark is the floor; "RegexCompiledPerName" shows what preparing once saves.
#include <benchmark/benchmark.h>

#include "BenchNames.h"
#include "RenameEngine/FileName.h"
#include "RenameEngine/RenameOperation.h"

namespace {

using namespace tessane;

const std::vector<FileName>& names() {
  static const std::vector<FileName> n = [] {
    std::vector<FileName> out;
    for (const std::string& s : bench::realisticNames(100000))
      out.push_back(FileName::parse(s));
    return out;
  }();
  return n;
}

Anchor anchor(std::string text, Occurrence o = Occurrence::first, bool caseSensitive = true) {
  return Anchor{std::move(text), caseSensitive, o};
}

void runCompiled(benchmark::State& state, RenameOperation::Value value) {
  const CompiledOperation compiled(RenameOperation{std::move(value)});
  const OperationContext context;
  for (auto _ : state) {
    for (const FileName& name : names())
      benchmark::DoNotOptimize(compiled.apply(name, context));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(names().size()));
}

void BM_CopyFloor(benchmark::State& state) {
  for (auto _ : state) {
    for (const FileName& name : names()) {
      FileName copy = name;
      benchmark::DoNotOptimize(copy);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(names().size()));
}

void BM_Insert(benchmark::State& s) {
  runCompiled(s, op::Insert{"2024_", InsertPosition::start()});
}
void BM_InsertAfterBlock(benchmark::State& s) {
  runCompiled(s, op::Insert{"-x", InsertPosition::afterBlock(BlockRef::index(0))});
}
void BM_DeleteText(benchmark::State& s) {
  runCompiled(s, op::DeleteText{anchor("_", Occurrence::all)});
}
void BM_DeleteTextIgnoringCase(benchmark::State& s) {
  runCompiled(s, op::DeleteText{anchor("dsc", Occurrence::all, false)});
}
void BM_DeleteBlock(benchmark::State& s) {
  runCompiled(s, op::DeleteBlock{BlockRef::index(0)});
}
void BM_DeleteCharacters(benchmark::State& s) {
  runCompiled(s, op::DeleteCharacters{0, 4});
}
void BM_Replace(benchmark::State& s) {
  runCompiled(s, op::Replace{anchor("IMG", Occurrence::all), "Rome"});
}
void BM_ReplaceRegex(benchmark::State& s) {
  runCompiled(s, op::ReplaceRegex{"(\\d+)", "#$1", Occurrence::all, true});
}
void BM_RegexCompiledPerName(benchmark::State& state) {
  const RenameOperation operation{op::ReplaceRegex{"(\\d+)", "#$1", Occurrence::all, true}};
  const OperationContext context;
  for (auto _ : state) {
    for (const FileName& name : names())
      benchmark::DoNotOptimize(apply(operation, name, context));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(names().size()));
}
void BM_MoveBlock(benchmark::State& s) {
  runCompiled(s, op::MoveBlock{BlockRef::index(-1), 0});
}
void BM_ChangeCaseUpper(benchmark::State& s) {
  runCompiled(s, op::ChangeCase{CaseStyle::upper});
}
void BM_ChangeCaseTitle(benchmark::State& s) {
  runCompiled(s, op::ChangeCase{CaseStyle::title});
}
void BM_RemoveAccents(benchmark::State& s) {
  runCompiled(s, op::RemoveAccents{});
}
void BM_CollapseWhitespace(benchmark::State& s) {
  runCompiled(s, op::CollapseWhitespace{});
}
void BM_RemoveEmoji(benchmark::State& s) {
  runCompiled(s, op::RemoveEmoji{});
}
void BM_Truncate(benchmark::State& s) {
  runCompiled(s, op::Truncate{6});
}
void BM_SetExtension(benchmark::State& s) {
  runCompiled(s, op::SetExtension{"jpg"});
}
void BM_ProtectedBlock(benchmark::State& state) {
  const CompiledOperation compiled(RenameOperation{op::ChangeCase{CaseStyle::upper}});
  OperationContext context;
  context.protectedBlocks = {BlockRef::index(0)};
  for (auto _ : state) {
    for (const FileName& name : names())
      benchmark::DoNotOptimize(compiled.apply(name, context));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(names().size()));
}

BENCHMARK(BM_CopyFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_InsertAfterBlock)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteText)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteTextIgnoringCase)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteBlock)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteCharacters)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Replace)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplaceRegex)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RegexCompiledPerName)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MoveBlock)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ChangeCaseUpper)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ChangeCaseTitle)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAccents)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CollapseWhitespace)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveEmoji)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Truncate)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SetExtension)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProtectedBlock)->Unit(benchmark::kMillisecond);

}  // namespace
