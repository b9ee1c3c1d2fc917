#include "MediaMetadata/MetadataBatch.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "Fixtures.h"
#include "TempFolder.h"

namespace tessane {
namespace {

class Batch : public ::testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i < 60; ++i) {
      const std::string name = "IMG_" + std::to_string(i) + ".jpg";
      const auto p = dir_.file(name, testing::tinyJpeg(8, 8));
      testing::writeMetadata(p, {{"Exif.Image.Model", "Body " + std::to_string(i)}});
      files_.push_back(BatchFile{p, FileKind::image});
    }
  }

  std::unique_ptr<icu::TimeZone> utc_{icu::TimeZone::createTimeZone("UTC")};
  MetadataProvider provider_{*utc_};
  testing::TempFolder dir_;
  std::vector<BatchFile> files_;
};

TEST_F(Batch, ResultsComeInTheOrderTheFilesWereGiven) {
  std::vector<std::size_t> seen;
  BatchOptions options;
  options.threads = 4;
  options.progress = [&](std::size_t done, std::size_t total) {
    EXPECT_EQ(total, files_.size());
    seen.push_back(done);
  };
  const BatchResult r = MetadataBatch::read(provider_, files_, options);
  EXPECT_FALSE(r.stopped);
  ASSERT_EQ(r.files.size(), files_.size());
  for (std::size_t i = 0; i < files_.size(); ++i) {
    ASSERT_TRUE(r.files[i].has_value());
    EXPECT_EQ(*r.files[i]->values.find(MetadataKey::model),
              MetadataValue::text("Body " + std::to_string(i)));
  }
  // One call per file, counting up, never two at once.
  ASSERT_EQ(seen.size(), files_.size());
  for (std::size_t i = 0; i < seen.size(); ++i)
    EXPECT_EQ(seen[i], i + 1);
}

TEST_F(Batch, StoppingLeavesTheRestUnread) {
  std::stop_source stop;
  BatchOptions options;
  options.threads = 2;
  options.stop = stop.get_token();
  options.progress = [&](std::size_t done, std::size_t) {
    if (done == 10) stop.request_stop();
  };
  const BatchResult r = MetadataBatch::read(provider_, files_, options);
  EXPECT_TRUE(r.stopped);
  const auto read =
      std::count_if(r.files.begin(), r.files.end(), [](const auto& f) { return f.has_value(); });
  // The files already being read when the stop came (one per thread) still finish.
  EXPECT_GE(read, 10);
  EXPECT_LE(read, 12);
}

TEST_F(Batch, AStopBeforeTheStartReadsNothing) {
  std::stop_source stop;
  stop.request_stop();
  BatchOptions options;
  options.stop = stop.get_token();
  const BatchResult r = MetadataBatch::read(provider_, files_, options);
  EXPECT_TRUE(r.stopped);
  for (const auto& f : r.files)
    EXPECT_FALSE(f.has_value());
  EXPECT_FALSE(MetadataBatch::read(provider_, {}, options).stopped);
}

}  // namespace
}  // namespace tessane
