// The quick JPEG path against Exiv2's whole parse on files made here: cameras whose maker note
// holds the lens and the serial number (the maker note alone goes to Exiv2, thinned), and EXIF
// integers of the signed types.
#include <gtest/gtest.h>
#include <unicode/timezone.h>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "FileContents.h"
#include "Fixtures.h"
#include "MediaMetadata/ImageReader.h"
#include "MediaMetadata/JpegSegments.h"
#include "MediaMetadata/MediaLibraries.h"
#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;

// A JPEG with the values given, each of the type given (Exiv2's type names: "Short", "SLong"…).
std::string jpegWith(const testing::TempFolder& dir,
                     const std::vector<std::tuple<std::string, std::string, std::string>>& values) {
  const fs::path file = dir.file("shot.jpg", testing::tinyJpeg(64, 48));
  auto image = Exiv2::ImageFactory::open(file.string());
  image->readMetadata();
  Exiv2::ExifData exif;
  for (const auto& [key, type, text] : values) {
    auto value = Exiv2::Value::create(Exiv2::TypeInfo::typeId(type));
    value->read(text);
    exif.add(Exiv2::ExifKey(key), value.get());
  }
  image->setExifData(exif);
  image->writeMetadata();
  return testing::contentsOf(file);
}

struct Reading {
  MetadataMap quick, exiv2;
  bool makerNoteAlone = false;
  ImageReader::Path path = ImageReader::Path::none;
};

Reading readBothWays(const std::string& bytes, FileKind kind = FileKind::image) {
  MediaLibraries::initialize();
  const std::unique_ptr<icu::TimeZone> utc(icu::TimeZone::createTimeZone("UTC"));
  const auto span = std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  Reading r;
  r.path = ImageReader::readBytes(span, kind, *utc, r.quick, true);
  ImageReader::readBytes(span, kind, *utc, r.exiv2, false);
  const auto parts = JpegSegments::read([&](std::uint64_t offset, std::size_t size) {
    if (offset > span.size()) return std::span<const std::uint8_t>();
    return span.subspan(offset, std::min<std::size_t>(size, span.size() - offset));
  });
  r.makerNoteAlone = parts && !parts->makerNoteStream.empty();
  return r;
}

std::string textOf(const MetadataMap& m, MetadataKey key) {
  const MetadataValue* v = m.find(key);
  return v != nullptr && v->asText() ? *v->asText() : "(none)";
}

// Maker notes that hold a lens or a serial number go to Exiv2 alone, thinned; compact cameras
// write maker notes without either (a Canon's camera settings stop before the lens type, a
// Nikon's note holds its version and shot settings), which the quick path reads alone. Either
// way, as an image and under a RAW name, the values are Exiv2's.
TEST(QuickPath, MakerNotesReadAsExiv2ReadsThem) {
  testing::TempFolder dir;
  const std::vector<std::tuple<std::string, std::string, std::string>> common = {
      {"Exif.Photo.DateTimeOriginal", "Ascii", "2024:05:01 10:00:00"},
      {"Exif.Photo.ExposureTime", "Rational", "1/250"},
      {"Exif.Photo.FNumber", "Rational", "28/10"},
      {"Exif.Photo.FocalLength", "Rational", "50/1"},
      {"Exif.Photo.ISOSpeedRatings", "Short", "400"},
      {"Exif.Photo.PixelXDimension", "SLong", "64"},
      {"Exif.Photo.PixelYDimension", "SShort", "48"}};
  const struct {
    std::vector<std::tuple<std::string, std::string, std::string>> values;
    const char* serial;
    bool namesLens;       // Exiv2 names a lens from this maker note
    bool makerNoteAlone;  // the maker note goes to Exiv2
  } cameras[] = {
      {{{"Exif.Image.Make", "Ascii", "Canon"},
        {"Exif.Image.Model", "Ascii", "Canon EOS 5D"},
        {"Exif.CanonCs.LensType", "Short", "137"},
        {"Exif.CanonCs.Lens", "Short", "70 24 1"},
        {"Exif.Canon.SerialNumber", "Long", "1730504089"},
        {"Exif.CanonSi.ISOSpeed", "Short", "160"},
        {"Exif.Canon.OwnerName", "Ascii", "Ada"}},
       "1730504089",
       true,
       true},
      {{{"Exif.Image.Make", "Ascii", "NIKON CORPORATION"},
        {"Exif.Image.Model", "Ascii", "NIKON D70"},
        {"Exif.Nikon3.Version", "Undefined", "48 50 49 48"},
        {"Exif.Nikon3.SerialNumber", "Ascii", "2061123"},
        {"Exif.Nikon3.Lens", "Rational", "18/1 70/1 35/10 45/10"},
        {"Exif.Nikon3.Quality", "Ascii", "FINE"}},
       "2061123",
       false,
       true},
      {{{"Exif.Image.Make", "Ascii", "Canon"},
        {"Exif.Image.Model", "Ascii", "Canon DIGITAL IXUS"},
        {"Exif.CanonCs.Macro", "Short", "2"},
        {"Exif.CanonCs.Quality", "Short", "3"},
        {"Exif.Canon.FocalLength", "Short", "2 346 213 160"},
        {"Exif.Canon.OwnerName", "Ascii", "Ada"}},
       "(none)",
       false,
       false},
      {{{"Exif.Image.Make", "Ascii", "NIKON"},
        {"Exif.Image.Model", "Ascii", "COOLPIX P6000"},
        {"Exif.Nikon3.Version", "Undefined", "48 50 49 48"},
        {"Exif.Nikon3.Quality", "Ascii", "FINE"}},
       "(none)",
       false,
       false},
  };
  for (const auto& camera : cameras) {
    auto values = camera.values;
    values.insert(values.end(), common.begin(), common.end());
    const std::string model = std::get<2>(values[1]);
    for (const FileKind kind : {FileKind::image, FileKind::raw}) {
      const Reading r = readBothWays(jpegWith(dir, values), kind);
      EXPECT_EQ(r.makerNoteAlone, camera.makerNoteAlone) << model;
      if (!camera.makerNoteAlone) {
        EXPECT_EQ(r.path, ImageReader::Path::quickJpeg) << model;
      }
      EXPECT_EQ(r.quick, r.exiv2) << model;
      EXPECT_EQ(textOf(r.quick, MetadataKey::model), model);
      EXPECT_EQ(textOf(r.quick, MetadataKey::serial), camera.serial) << model;
      EXPECT_EQ(textOf(r.quick, MetadataKey::lens) != "(none)", camera.namesLens) << model;
      const MetadataValue* width = r.quick.find(MetadataKey::width);
      ASSERT_NE(width, nullptr);
      EXPECT_EQ(*width, MetadataValue::integer(64));
    }
  }
}

// Serial numbers that only a maker note holds, as cameras write them; the body table is keyed by
// them, so each must read as the camera's number, the same in every file of the body.
TEST(QuickPath, SerialNumbersThatOnlyTheMakerNoteHolds) {
  testing::TempFolder dir;
  const struct {
    std::vector<std::tuple<std::string, std::string, std::string>> values;
    const char* serial;
  } cases[] = {
      // Nikon's older tag, with its label (the same body's EXIF serial is "1005a431").
      {{{"Exif.Image.Make", "Ascii", "NIKON CORPORATION"},
        {"Exif.Nikon3.SerialNO", "Ascii", "NO= 1005a431        "}},
       "1005a431"},
      // An empty tag of higher rank doesn't hide it.
      {{{"Exif.Image.Make", "Ascii", "NIKON CORPORATION"},
        {"Exif.Nikon3.SerialNumber", "Ascii", "   "},
        {"Exif.Nikon3.SerialNO", "Ascii", "NO= -1000f46"}},
       "-1000f46"},
      // Older Olympus cameras.
      {{{"Exif.Image.Make", "Ascii", "OLYMPUS OPTICAL CO.,LTD"},
        {"Exif.Olympus.SerialNumber2", "Ascii", "203001592                      "}},
       "203001592"},
      // A CRW file's two numbers, of which the body's is the first (its JPEGs hold that alone).
      {{{"Exif.Image.Make", "Ascii", "Canon"},
        {"Exif.Canon.SerialNumber", "Long", "560018150 383286922"}},
       "560018150"},
      // Panasonic's text of bytes, led by NULs, right after a maker note of one entry.
      {{{"Exif.Image.Make", "Ascii", "Panasonic"},
        {"Exif.Panasonic.InternalSerialNumber", "Undefined",
         "0 0 83 48 49 48 54 48 52 48 51 48 50 57 51 0"}},
       "S010604030293"},
      // IFD0's camera serial number comes before the maker note's.
      {{{"Exif.Image.Make", "Ascii", "Canon"},
        {"Exif.Image.CameraSerialNumber", "Ascii", "083021001234"},
        {"Exif.Canon.SerialNumber", "Long", "1730504089"}},
       "083021001234"},
  };
  for (const auto& c : cases) {
    auto values = c.values;
    values.push_back({"Exif.Photo.LensModel", "Ascii", "EF50mm f/1.8 II"});
    const Reading r = readBothWays(jpegWith(dir, values));
    EXPECT_EQ(r.quick, r.exiv2) << c.serial;
    EXPECT_EQ(textOf(r.quick, MetadataKey::serial), c.serial);
  }
}

// Files shaped like two cameras' own: a Canon EOS REBEL T3i's JPEG, whose maker note (camera
// settings, image type, firmware, owner, model id) holds no serial number, which IFD0 holds; and
// a Nikon D70s's, whose ISO speed is in its maker note alone.
TEST(QuickPath, ValuesOnlyIfd0OrTheMakerNoteHold) {
  testing::TempFolder dir;
  const std::vector<std::tuple<std::string, std::string, std::string>> t3i = {
      {"Exif.Image.Make", "Ascii", "Canon"},
      {"Exif.Image.Model", "Ascii", "Canon EOS REBEL T3i"},
      {"Exif.Image.Orientation", "Short", "1"},
      {"Exif.Image.DateTime", "Ascii", "2016:11:25 20:16:03"},
      {"Exif.Image.Artist", "Ascii", ""},
      {"Exif.Image.Copyright", "Ascii", ""},
      {"Exif.Image.CameraSerialNumber", "Ascii", "283074012345"},
      {"Exif.Photo.BodySerialNumber", "Ascii", "0000000000"},  // a placeholder
      {"Exif.Photo.ExposureTime", "Rational", "1/2000"},
      {"Exif.Photo.FNumber", "Rational", "4/1"},
      {"Exif.Photo.ISOSpeedRatings", "Short", "100"},
      {"Exif.Photo.DateTimeOriginal", "Ascii", "2016:11:25 20:16:03"},
      {"Exif.Photo.FocalLength", "Rational", "24/1"},
      {"Exif.Photo.LensModel", "Ascii", "EF24-105mm f/4L IS USM"},
      {"Exif.Photo.LensSerialNumber", "Ascii", "0000124920"},
      {"Exif.CanonCs.Macro", "Short", "2"},
      {"Exif.CanonCs.LensType", "Short", "237"},
      {"Exif.CanonCs.Lens", "Short", "105 24 1"},
      {"Exif.Canon.ImageType", "Ascii", "Canon EOS REBEL T3i"},
      {"Exif.Canon.FirmwareVersion", "Ascii", "Firmware Version 1.0.2"},
      {"Exif.Canon.OwnerName", "Ascii", ""},
      {"Exif.Canon.ModelID", "Long", "2147484294"}};
  const Reading canon = readBothWays(jpegWith(dir, t3i));
  EXPECT_EQ(canon.quick, canon.exiv2);
  EXPECT_EQ(textOf(canon.quick, MetadataKey::serial), "283074012345");

  const std::vector<std::tuple<std::string, std::string, std::string>> d70s = {
      {"Exif.Image.Make", "Ascii", "NIKON CORPORATION"},
      {"Exif.Image.Model", "Ascii", "NIKON D70s"},
      {"Exif.Photo.DateTimeOriginal", "Ascii", "2005:12:14 14:39:47"},
      {"Exif.Photo.ExposureTime", "Rational", "1/250"},
      {"Exif.Photo.LensModel", "Ascii", "AF Nikkor 50mm f/1.8D"},
      {"Exif.Photo.BodySerialNumber", "Ascii", "1005a431"},
      {"Exif.Nikon3.Version", "Undefined", "48 50 49 48"},
      {"Exif.Nikon3.ISOSpeed", "Short", "0 200"},
      {"Exif.Nikon3.Quality", "Ascii", "FINE"}};
  const Reading nikon = readBothWays(jpegWith(dir, d70s));
  EXPECT_EQ(nikon.path, ImageReader::Path::quickJpeg) << "the ISO speed is read without Exiv2";
  EXPECT_EQ(nikon.quick, nikon.exiv2);
  ASSERT_NE(nikon.quick.find(MetadataKey::iso), nullptr);
  EXPECT_EQ(*nikon.quick.find(MetadataKey::iso), MetadataValue::integer(200));
}

// A JPEG under a RAW file's name (a camera's twin copied, a renamed file) is read the quick way
// its contents allow: when EXIF has no pixel size, the maker note's size is read alone.
TEST(QuickPath, JpegNamedAsRawReadsTheMakerNoteSizeAlone) {
  testing::TempFolder dir;
  const std::vector<std::tuple<std::string, std::string, std::string>> values = {
      {"Exif.Image.Make", "Ascii", "Panasonic"},
      {"Exif.Image.Model", "Ascii", "DMC-GH2"},
      {"Exif.Photo.LensModel", "Ascii", "LUMIX G VARIO 14-42/F3.5-5.6"},
      {"Exif.Photo.BodySerialNumber", "Ascii", "F160"},
      {"Exif.Photo.DateTimeOriginal", "Ascii", "2024:05:01 10:00:00"},
      {"Exif.Panasonic.ImageWidth", "Long", "4608"},
      {"Exif.Panasonic.ImageHeight", "Long", "3456"}};
  const Reading r = readBothWays(jpegWith(dir, values), FileKind::raw);
  EXPECT_EQ(r.path, ImageReader::Path::jpegMakerNote);
  EXPECT_EQ(r.quick, r.exiv2);
  const MetadataValue* width = r.quick.find(MetadataKey::width);
  ASSERT_NE(width, nullptr);
  EXPECT_EQ(*width, MetadataValue::integer(4608));
}

}  // namespace
}  // namespace tessane
