#include "MediaMetadata/VideoReader.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <chrono>
#include <memory>

#include "Fixtures.h"
#include "MediaMetadata/MetadataProvider.h"
#include "Rules.h"
#include "TempFolder.h"

namespace tessane {
namespace {

using testing::utc;

using namespace std::chrono;

class Video : public ::testing::Test {
 protected:
  std::unique_ptr<icu::TimeZone> rome_{icu::TimeZone::createTimeZone("Europe/Rome")};
  MetadataProvider provider_{*rome_};
  testing::TempFolder dir_;
};

TEST_F(Video, QuickTimeTagsTrackAndAnOffsetOfTheShotsOwn) {
  const auto p = dir_.path() / "C0001.mov";
  testing::writeMovie(p, "apch", 320, 240, 25,
                      {{"com.apple.quicktime.creationdate", "2024-05-01T14:03:22+0200"},
                       {"com.apple.quicktime.make", "Apple"},
                       {"com.apple.quicktime.model", "iPhone 15 Pro"},
                       {"title", "  Harbour at dusk "}});
  const FileMetadata r = provider_.read(p, FileKind::video);
  const MetadataMap& m = r.values;
  EXPECT_EQ(*m.find(MetadataKey::date), MetadataValue::date(utc(2024, 5, 1, 12, 3, 22)));
  EXPECT_EQ(r.shotUtcOffset, 7200);
  EXPECT_EQ(m.shotOffset(), 7200) << "kept with the values, for the names";
  EXPECT_EQ(*m.find(MetadataKey::make), MetadataValue::text("Apple"));
  EXPECT_EQ(*m.find(MetadataKey::model), MetadataValue::text("iPhone 15 Pro"));
  EXPECT_EQ(*m.find(MetadataKey::title), MetadataValue::text("Harbour at dusk"));
  EXPECT_EQ(*m.find(MetadataKey::width), MetadataValue::integer(320));
  EXPECT_EQ(*m.find(MetadataKey::height), MetadataValue::integer(240));
  EXPECT_EQ(*m.find(MetadataKey::fps), MetadataValue::number(25.0));
  EXPECT_EQ(*m.find(MetadataKey::codec), MetadataValue::text("ProRes422HQ"));
  ASSERT_NE(m.find(MetadataKey::duration), nullptr);
  EXPECT_NEAR(*m.find(MetadataKey::duration)->asNumber(), 2.0, 0.05);
}

TEST_F(Video, AZeroOffsetKeepsTheProvidersZone) {
  const auto p = dir_.path() / "zero.mov";
  testing::writeMovie(p, "apcn", 64, 48, 30,
                      {{"com.apple.quicktime.creationdate", "2024-05-01T14:03:22+0000"}});
  const FileMetadata r = provider_.read(p, FileKind::video);
  EXPECT_EQ(*r.values.find(MetadataKey::date), MetadataValue::date(utc(2024, 5, 1, 14, 3, 22)));
  EXPECT_EQ(r.shotUtcOffset, std::nullopt);
  EXPECT_EQ(*r.values.find(MetadataKey::codec), MetadataValue::text("ProRes422"));
}

TEST_F(Video, TheContainersCreationTimeWhenThereIsNoQuickTimeDate) {
  const auto p = dir_.path() / "clip.mov";
  testing::writeMovie(p, "ap4h", 64, 48, 24, {{"creation_time", "2023-12-31T23:30:00.000000Z"}});
  const FileMetadata r = provider_.read(p, FileKind::video);
  EXPECT_EQ(*r.values.find(MetadataKey::date), MetadataValue::date(utc(2023, 12, 31, 23, 30, 0)));
  EXPECT_EQ(r.shotUtcOffset, std::nullopt);
}

// The codec is the first video track's, whatever code its container gives it: an MPEG transport
// stream gives its stream type, or a registration ("HDMV" on AVCHD cards).
TEST_F(Video, TheCodecOfTheTrackNotTheContainersCode) {
  const auto p = dir_.path() / "00001.MTS";
  testing::writeH264Clip(p);
  const FileMetadata clip = provider_.read(p, FileKind::video);
  const MetadataValue* codec = clip.values.find(MetadataKey::codec);
  ASSERT_NE(codec, nullptr);
  EXPECT_EQ(*codec, MetadataValue::text("H264"));

  const auto samples = testing::samplesFolder();
  if (samples.empty()) GTEST_SKIP() << "TESSANE_SAMPLES does not name the samples folder";
  const struct {
    const char* file;
    const char* codec;
  } real[] = {
      {"exiftool/M2TS.mts", "H264"},  // an AVCHD clip: H.264 under the registration "HDMV"
      {"exiftool/RIFF.avi", "MJPG"},  // codes that name their codec stand as they are
      {"exiftool/QuickTime.mov", "jpeg"},
      {"metadata-extractor/mp4/sample_mpeg4.mp4", "mp4v"},
  };
  for (const auto& c : real) {
    const FileMetadata r = provider_.read(samples / c.file, FileKind::video);
    const MetadataValue* read = r.values.find(MetadataKey::codec);
    ASSERT_NE(read, nullptr) << c.file;
    EXPECT_EQ(*read, MetadataValue::text(c.codec)) << c.file;
  }
}

}  // namespace
}  // namespace tessane
