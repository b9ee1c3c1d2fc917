// Bad input never crashes or leaks: every real sample (among them files that once crashed
// a metadata reader), read as what its extension says and as something it is not, and cut copies
// of real files. Run under the sanitizers, this is where a reader's memory errors show.
#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <string>
#include <vector>

#include "FileContents.h"
#include "Fixtures.h"
#include "MediaMetadata/MetadataProvider.h"
#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
std::vector<fs::path> sampleFiles(const fs::path& root) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

class SampleRobustness : public ::testing::Test {
 protected:
  void SetUp() override {
    root_ = testing::samplesFolder();
    if (root_.empty()) GTEST_SKIP() << "TESSANE_SAMPLES does not name the samples folder";
  }

  fs::path root_;
  std::unique_ptr<icu::TimeZone> utc_{icu::TimeZone::createTimeZone("UTC")};
  MetadataProvider provider_{*utc_};
};

TEST_F(SampleRobustness, EverySampleIsReadAsItsKindAndAsEveryOther) {
  std::size_t files = 0;
  for (const fs::path& file : sampleFiles(root_)) {
    const FileKind kind = fileKindOf(file.filename().string());
    const MetadataMap m = provider_.metadata(file, kind);
    EXPECT_NE(m.find(MetadataKey::modified), nullptr) << file;
    // So that every reader meets every kind of content.
    for (const FileKind other :
         {FileKind::raw, FileKind::image, FileKind::video, FileKind::audio, FileKind::pdf}) {
      if (other != kind) provider_.metadata(file, other);
    }
    ++files;
  }
  EXPECT_GT(files, 500u);
}

TEST_F(SampleRobustness, CutCopiesOfRealFiles) {
  testing::TempFolder dir;
  for (const char* sample :
       {"exiv2/Canon-R6-pruned.CR3", "exiv2/IMG_3578.heic", "exiftool/Nikon.nef",
        "exiftool/CanonRaw.cr2", "exiftool/Canon.jpg", "metadata-extractor/mov/with-gps.mov",
        "metadata-extractor/mp4/with-gps.mp4", "exiftool/MP3.mp3", "exiftool/PDF.pdf",
        "exiftool/QuickTime.m4a"}) {
    const fs::path source = root_ / sample;
    if (!fs::exists(source)) continue;
    const std::string bytes = testing::contentsOf(source);
    const std::string name = source.filename().string();
    const FileKind kind = fileKindOf(name);
    // Cuts close to the start (headers), and spread over the file.
    std::vector<std::size_t> cuts = {0, 1, 4, 8, 12, 16, 100, 1000};
    for (std::size_t i = 1; i < 24; ++i)
      cuts.push_back(bytes.size() * i / 24);
    for (const std::size_t cut : cuts) {
      if (cut >= bytes.size()) continue;
      const fs::path copy = dir.file(name, bytes.substr(0, cut));
      provider_.metadata(copy, kind);
    }
  }
}

}  // namespace
}  // namespace tessane
