// How long the main thread's event loop goes without a turn while a window's model opens a big
// folder, reads every file's metadata and builds its preview. A timer ticks every millisecond on
// the main thread; the longest gap between two ticks is what a user would feel as a stall.
//
// And the memory a window's model keeps over rename-and-undo cycles: its resident size after the
// first cycle and after the tenth, which should stay within a tenth of each other.
//
// The folder: TESSANE_BENCH_FILES (default 50,000) small JPEGs with EXIF capture times, one
// second apart, made once in a temporary folder.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "MediaMetadata/Fixtures.h"
#include "Rules.h"
#include "TempFolder.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/TestApplication.h"

namespace {

namespace fs = std::filesystem;
using namespace tessane;

std::size_t fileCount() {
  const char* n = std::getenv("TESSANE_BENCH_FILES");
  return n != nullptr ? static_cast<std::size_t>(std::atol(n)) : 50'000;
}

// The shoot, made once: copies of one JPEG, each with its own capture time written in place.
const fs::path& shoot() {
  static testing::TempFolder folder;
  static bool made = false;
  if (made) return folder.path();
  const fs::path model = folder.path() / "model.jpg";
  {
    std::ofstream out(model, std::ios::binary);
    out << testing::tinyJpeg(6000, 4000);
  }
  const std::string stamp = "2024:05:01 10:00:00";
  testing::writeMetadata(model, {{"Exif.Image.Make", "Canon"},
                                 {"Exif.Image.Model", "Canon EOS R5"},
                                 {"Exif.Photo.DateTimeOriginal", stamp},
                                 {"Exif.Photo.ExposureTime", "1/250"}});
  std::stringstream bytes;
  bytes << std::ifstream(model, std::ios::binary).rdbuf();
  std::string data = bytes.str();
  fs::remove(model);
  const std::size_t at = data.find(stamp);
  const fs::path dir = folder.path() / "shoot";
  fs::create_directory(dir);
  for (std::size_t i = 0; i < fileCount(); ++i) {
    char when[64];
    std::snprintf(when, sizeof when, "2024:05:%02u %02u:%02u:%02u",
                  static_cast<unsigned>(1 + i / 86400 % 28), static_cast<unsigned>(i / 3600 % 24),
                  static_cast<unsigned>(i / 60 % 60), static_cast<unsigned>(i % 60));
    if (at != std::string::npos) data.replace(at, stamp.size(), when);
    char name[64];
    std::snprintf(name, sizeof name, "IMG_%05zu.JPG", i);
    std::ofstream(dir / name, std::ios::binary) << data;
  }
  made = true;
  return folder.path();
}

// The event loop the model publishes through, and the settings and data in `home`.
std::unique_ptr<AppContext> contextIn(const fs::path& home) {
  testing::coreApplication();
  return testing::contextIn(home);
}

// A window's model in a home of its own, naming with `templateText`.
struct ModelInHome {
  explicit ModelInHome(const std::string& templateText)
      : context(contextIn(home.path())), model(*context) {
    RuleStack stack;
    stack.rules.push_back(testing::formatRule(templateText));
    model.setRules(stack);
  }
  testing::TempFolder home;
  std::unique_ptr<AppContext> context;
  FolderModel model;
};

void BM_OpenReadPreview(benchmark::State& state) {
  const fs::path root = shoot();
  for (auto _ : state) {
    ModelInHome in("{date:yyyy-MM-dd_HHmmss}_{model}");
    FolderModel& model = in.model;

    QElapsedTimer clock;
    qint64 last = 0, longest = 0;
    QTimer ticker;
    ticker.setInterval(1);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
      const qint64 now = clock.nsecsElapsed();
      longest = std::max(longest, now - last);
      last = now;
    });
    bool read = false;
    QObject::connect(&model, &FolderModel::filesChanged, [&] {
      read = !model.files().empty() && !model.files().front().metadata.empty();
    });
    clock.start();
    ticker.start();
    model.open({root / "shoot"});
    while (!(read && model.previewBuildCount() == 0 &&
             model.previewSources().size() == model.files().size())) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    const double total = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    ticker.stop();
    state.counters["files"] = static_cast<double>(model.files().size());
    state.counters["longest_gap_ms"] = static_cast<double>(longest) / 1e6;
    state.counters["open_to_preview_ms"] = total;
  }
}
BENCHMARK(BM_OpenReadPreview)->Iterations(1)->Unit(benchmark::kMillisecond);

double residentMegabytes() {
  std::ifstream statm("/proc/self/statm");
  double pages = 0, resident = 0;
  statm >> pages >> resident;
  return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

void BM_RenameUndoCycles(benchmark::State& state) {
  const fs::path root = shoot();
  for (auto _ : state) {
    ModelInHome in("{date:yyyy-MM-dd_HHmmss}_{counter}");
    FolderModel& model = in.model;
    const auto settle = [&] {
      while (!model.isSettled())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    };
    model.open({root / "shoot"});
    settle();
    double first = 0;
    const int cycles = 10;
    for (int cycle = 1; cycle <= cycles; ++cycle) {
      model.rename();
      settle();
      model.undo();
      settle();
      // What the workers hand back to be freed is freed by then.
      for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
      if (cycle == 1) first = residentMegabytes();
    }
    const double last = residentMegabytes();
    state.counters["files"] = static_cast<double>(model.files().size());
    state.counters["rss_after_1_MB"] = first;
    state.counters["rss_after_10_MB"] = last;
    state.counters["growth"] = last / first;
  }
}
BENCHMARK(BM_RenameUndoCycles)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
