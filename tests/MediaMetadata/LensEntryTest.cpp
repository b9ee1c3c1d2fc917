#include "MediaMetadata/LensEntry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "Fixtures.h"
#include "MediaMetadata/MediaLibraries.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;

// Where each answer points, as a position among the entries (the count when there is none).
long positionOf(const Exiv2::ExifData& exif, Exiv2::ExifData::const_iterator it) {
  return static_cast<long>(std::distance(exif.begin(), it));
}

void add(Exiv2::ExifData& exif, const char* key, const char* text) {
  const Exiv2::ExifKey k(key);
  const auto value = Exiv2::Value::create(k.defaultTypeId());
  value->read(text);
  exif.add(k, value.get());
}

TEST(LensEntry, RemembersExiv2sAnswerPerSequenceOfKeys) {
  Exiv2::ExifData canon;
  add(canon, "Exif.Image.Make", "Canon");
  add(canon, "Exif.CanonCs.LensType", "137");
  Exiv2::ExifData withModel = canon;
  add(withModel, "Exif.Photo.LensModel", "EF24-70mm f/2.8L USM");
  Exiv2::ExifData none;
  add(none, "Exif.Image.Make", "Canon");
  for (int pass = 0; pass < 2; ++pass) {  // asked, then remembered
    for (const Exiv2::ExifData* exif : {&canon, &withModel, &none}) {
      EXPECT_EQ(positionOf(*exif, LensEntry::find(*exif)),
                positionOf(*exif, Exiv2::lensName(*exif)));
    }
  }
  EXPECT_EQ(LensEntry::find(none), none.end());
}

TEST(LensEntry, AgreesWithExiv2OnEverySample) {
  const fs::path root = testing::samplesFolder();
  if (root.empty()) GTEST_SKIP() << "TESSANE_SAMPLES does not name the samples folder";
  MediaLibraries::initialize();
  int withLens = 0;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    // Camera files only: the exiv2 folder holds files made to crash a reader, as Exiv2 itself
    // does on some when it is called directly.
    const std::string where = entry.path().string().substr(root.string().size());
    if (!entry.is_regular_file() || where.find("exiv2") != std::string::npos ||
        where.find("invalid") != std::string::npos || where.find("corrupt") != std::string::npos) {
      continue;
    }
    Exiv2::ExifData exif;
    try {
      auto image = Exiv2::ImageFactory::open(entry.path().string());
      image->readMetadata();
      exif = image->exifData();
    } catch (...) {
      continue;
    }
    const long expected = positionOf(exif, Exiv2::lensName(exif));
    withLens += expected != static_cast<long>(exif.count()) ? 1 : 0;
    for (int pass = 0; pass < 2; ++pass)
      ASSERT_EQ(positionOf(exif, LensEntry::find(exif)), expected) << entry.path();
  }
  EXPECT_GT(withLens, 30);
}

}  // namespace
}  // namespace tessane
