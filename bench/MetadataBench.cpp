// Reading the metadata of a folder of real camera files: our batch read against the floor (open
// each file and read its first 64 KiB) and against two command-line readers of the same files.
//
// The folder holds at least 2,000 files: the camera files among the samples (RAW, JPEG and HEIF
// files in which a camera make is found, leaving out files made to crash a reader), repeated by
// hard links (copies where links fail) into a temporary folder; or, when TESSANE_SHOOT names one,
// the files of a shoot folder as they are (a realistic shoot: ../shared/bench/make-shoot.sh).
// Every figure is files per second from one run, so read them as ratios: the machine is shared
// and absolute times are noisy. The page cache is warm for every reader alike.
// BM_ReaderPaths tells where the time of the image reads goes: the files and microseconds per
// file of each way the image reader took (ImageReader::Path), on one thread.
//
//   MetadataBench [--benchmark_filter=...]        (TESSANE_SAMPLES names the samples folder)
//   TESSANE_SHOOT=/tmp/shoot MetadataBench        (the files of a shoot folder instead)
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unicode/timezone.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "MediaMetadata/ImageReader.h"
#include "MediaMetadata/JpegSegments.h"
#include "MediaMetadata/MetadataBatch.h"
#include "MediaMetadata/MetadataProvider.h"

namespace {

namespace fs = std::filesystem;
using namespace tessane;

constexpr std::size_t kFiles = 2000;

fs::path samplesFolder() {
  if (const char* env = std::getenv("TESSANE_SAMPLES")) return env;
  return fs::path(TESSANE_SOURCE_DIR) / ".." / "shared" / "samples";
}

class Folder {
 public:
  Folder() {
    if (const char* shoot = std::getenv("TESSANE_SHOOT")) {
      useShoot(shoot);
      return;
    }
    std::string pattern = (fs::temp_directory_path() / "tessane-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;

    const std::unique_ptr<icu::TimeZone> utc(icu::TimeZone::createTimeZone("UTC"));
    const MetadataProvider provider(*utc);
    std::vector<fs::path> cameraFiles;
    const fs::path root = samplesFolder();
    std::error_code ec;
    for (auto it = fs::recursive_directory_iterator(root, ec); !ec && it != fs::end(it);
         it.increment(ec)) {
      if (!it->is_regular_file()) continue;
      // What cameras and phones write: RAW, JPEG and HEIF files (not PNG, GIF, WebP or TIFF).
      const std::string name = it->path().filename().string();
      const FileKind kind = fileKindOf(name);
      std::string ext = it->path().extension().string();
      for (char& c : ext)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
      const bool cameraImage =
          ext == ".jpg" || ext == ".jpeg" || ext == ".heic" || ext == ".heif" || ext == ".hif";
      if (kind != FileKind::raw && !cameraImage) continue;
      // Files made to crash a reader, or broken on purpose, are not camera files.
      std::string lower = it->path().string();
      for (char& c : lower)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
      bool madeUp = false;
      for (const char* word :
           {"poc", "crash", "cve", "issue", "bug", "fuzz", "corrupt", "invalid", "error", "test"}) {
        if (lower.find(word, root.string().size()) != std::string::npos) madeUp = true;
      }
      if (madeUp) continue;
      if (provider.metadata(it->path(), kind).find(MetadataKey::make) == nullptr) continue;
      cameraFiles.push_back(it->path());
    }
    std::sort(cameraFiles.begin(), cameraFiles.end());
    if (cameraFiles.empty()) {
      std::cerr << "No camera files under " << root << " (set TESSANE_SAMPLES)\n";
      std::exit(1);
    }
    for (std::size_t i = 0; files_.size() < kFiles; ++i) {
      const fs::path& source = cameraFiles[i % cameraFiles.size()];
      const fs::path target = path_ / (std::to_string(i) + "_" + source.filename().string());
      fs::create_hard_link(source, target, ec);
      if (ec) fs::copy_file(source, target, ec);
      if (ec) std::abort();
      files_.push_back(BatchFile{target, fileKindOf(target.filename().string())});
    }
    std::cerr << files_.size() << " files from " << cameraFiles.size() << " camera samples in "
              << path_ << "\n";
  }
  ~Folder() {
    std::error_code ec;
    if (!borrowed_) fs::remove_all(path_, ec);
  }

  const fs::path& path() const { return path_; }
  const std::vector<BatchFile>& files() const { return files_; }

 private:
  // The shoot's own files, in name order; the folder is left as it is.
  void useShoot(const fs::path& shoot) {
    path_ = shoot;
    borrowed_ = true;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(shoot, ec)) {
      if (!entry.is_regular_file()) continue;
      files_.push_back(BatchFile{entry.path(), fileKindOf(entry.path().filename().string())});
    }
    std::sort(files_.begin(), files_.end(),
              [](const BatchFile& a, const BatchFile& b) { return a.path < b.path; });
    if (files_.empty()) {
      std::cerr << "No files in " << shoot << "\n";
      std::exit(1);
    }
    std::cerr << files_.size() << " files of the shoot " << shoot << "\n";
  }

  fs::path path_;
  bool borrowed_ = false;
  std::vector<BatchFile> files_;
};

const Folder& folder() {
  static const Folder f;
  return f;
}

const MetadataProvider& provider() {
  static const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone("UTC"));
  static const MetadataProvider p(*zone);
  return p;
}

// Each batch read and floor runs on one thread and on two, repeated, its median kept.
void onOneAndTwoThreads(benchmark::internal::Benchmark* b) {
  b->Arg(1)->Arg(2)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
  b->Unit(benchmark::kMillisecond);
}

// The floor: open each file and read its first 64 KiB, on `threads` threads.
void floorRead(const std::vector<BatchFile>& files, unsigned threads) {
  std::atomic<std::size_t> next{0};
  const auto work = [&] {
    std::vector<char> buffer(64 * 1024);
    for (std::size_t i; (i = next.fetch_add(1)) < files.size();) {
      const int fd = ::open(files[i].path.c_str(), O_RDONLY | O_CLOEXEC);
      if (fd < 0) continue;
      benchmark::DoNotOptimize(::read(fd, buffer.data(), buffer.size()));
      ::close(fd);
    }
  };
  std::vector<std::jthread> pool;
  for (unsigned t = 1; t < threads; ++t)
    pool.emplace_back(work);
  work();
}

void timeFloor(benchmark::State& state, const std::vector<BatchFile>& files) {
  for (auto _ : state)
    floorRead(files, static_cast<unsigned>(state.range(0)));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(files.size()));
}

void timeBatchRead(benchmark::State& state, const std::vector<BatchFile>& files) {
  BatchOptions options;
  options.threads = static_cast<unsigned>(state.range(0));
  for (auto _ : state) {
    const BatchResult r = MetadataBatch::read(provider(), files, options);
    benchmark::DoNotOptimize(r.files.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(files.size()));
}

void BM_Floor(benchmark::State& state) {
  timeFloor(state, folder().files());
}
BENCHMARK(BM_Floor)->Apply(onOneAndTwoThreads);

void BM_BatchRead(benchmark::State& state) {
  timeBatchRead(state, folder().files());
}
BENCHMARK(BM_BatchRead)->Apply(onOneAndTwoThreads);

// The same read over the files that the quick JPEG path reads alone (no maker note needed, as
// with most cameras of the last ten years, which write the lens model and body serial in EXIF).
const std::vector<BatchFile>& quickPathFiles() {
  static const std::vector<BatchFile> files = [] {
    std::vector<BatchFile> out;
    std::vector<std::uint8_t> head(64 * 1024);
    for (const BatchFile& f : folder().files()) {
      const int fd = ::open(f.path.c_str(), O_RDONLY | O_CLOEXEC);
      if (fd < 0) continue;
      const ssize_t n = ::pread(fd, head.data(), head.size(), 0);
      ::close(fd);
      const std::span<const std::uint8_t> bytes(head.data(),
                                                n > 0 ? static_cast<std::size_t>(n) : 0);
      if (!JpegSegments::looksLikeJpeg(bytes)) continue;
      const auto parts = JpegSegments::read([&](std::uint64_t offset, std::size_t size) {
        if (offset > bytes.size()) return std::span<const std::uint8_t>();
        return bytes.subspan(offset, std::min<std::size_t>(size, bytes.size() - offset));
      });
      if (parts && !parts->exifForExiv2 && parts->makerNoteStream.empty()) out.push_back(f);
    }
    std::cerr << out.size() << " of the files are read by the quick path alone\n";
    return out;
  }();
  return files;
}

void BM_BatchReadQuickPathFiles(benchmark::State& state) {
  timeBatchRead(state, quickPathFiles());
}
BENCHMARK(BM_BatchReadQuickPathFiles)->Apply(onOneAndTwoThreads);

void BM_FloorQuickPathFiles(benchmark::State& state) {
  timeFloor(state, quickPathFiles());
}
BENCHMARK(BM_FloorQuickPathFiles)->Apply(onOneAndTwoThreads);

// Each image read on its own, timed, by the way the reader took.
void BM_ReaderPaths(benchmark::State& state) {
  using Path = ImageReader::Path;
  constexpr const char* kNames[] = {"none",           "quickJpeg",    "jpegMakerNote",
                                    "jpegExifParser", "quickTiffRaw", "tiffRawMakerNote",
                                    "quickBmff",      "wholeParse"};
  constexpr std::size_t kPaths = std::size(kNames);
  std::array<std::int64_t, kPaths> files{};
  std::array<double, kPaths> seconds{};
  std::int64_t read = 0;
  for (auto _ : state) {
    for (const BatchFile& f : folder().files()) {
      if (f.kind != FileKind::image && f.kind != FileKind::raw) continue;
      MetadataMap out;
      const auto start = std::chrono::steady_clock::now();
      const Path path = ImageReader::read(f.path, f.kind, provider().timeZone(), out);
      const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
      const auto at = static_cast<std::size_t>(path);
      ++files[at];
      seconds[at] += took.count();
      ++read;
    }
  }
  for (std::size_t p = 0; p < kPaths; ++p) {
    if (files[p] == 0) continue;
    const std::string name = kNames[p];
    state.counters[name + "_files"] =
        static_cast<double>(files[p]) / static_cast<double>(state.iterations());
    state.counters[name + "_us"] = 1e6 * seconds[p] / static_cast<double>(files[p]);
  }
  state.SetItemsProcessed(read);
}
BENCHMARK(BM_ReaderPaths)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

bool installed(const char* tool) {
  const std::string probe = std::string("command -v ") + tool + " >/dev/null 2>&1";
  return std::system(probe.c_str()) == 0;
}

void runTool(benchmark::State& state, const char* tool, const std::string& command) {
  if (!installed(tool)) {
    state.SkipWithError((std::string(tool) + " is not installed").c_str());
    return;
  }
  const auto& files = folder().files();
  for (auto _ : state) {
    if (std::system(command.c_str()) == -1) state.SkipWithError("could not run");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(files.size()));
}

void BM_Exiv2Tool(benchmark::State& state) {
  const std::string dir = folder().path().string();
  runTool(state, "exiv2", "cd '" + dir + "' && exiv2 -q -pt * >/dev/null 2>&1");
}
BENCHMARK(BM_Exiv2Tool)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_ExifTool(benchmark::State& state) {
  const std::string dir = folder().path().string();
  runTool(state, "exiftool",
          "exiftool -fast -j -Make -Model -LensModel -SerialNumber -ISO -ExposureTime -FNumber "
          "-FocalLength -DateTimeOriginal -SubSecTimeOriginal -Artist -City -Sub-location "
          "-ObjectName -Headline -ImageWidth -ImageHeight '" +
              dir + "' >/dev/null 2>&1");
}
BENCHMARK(BM_ExifTool)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
