// Our readings of real camera files against the readings of two other tools, kept beside the
// samples as text. Every sample whose expected text holds make, model, capture time, exposure
// time, f-number, focal length or ISO is compared on those fields; the agreement is printed and
// every disagreement fails.
#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <map>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "FileContents.h"
#include "Fixtures.h"
#include "MediaMetadata/BmffExif.h"
#include "MediaMetadata/ImageReader.h"
#include "MediaMetadata/JpegSegments.h"
#include "MediaMetadata/MediaLibraries.h"
#include "MediaMetadata/MetadataProvider.h"
#include "RenameEngine/FileKind.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;

// The compared fields, with their tag as each tool prints it.
enum class Field { make, model, date, shutter, aperture, focal, iso };
struct FieldTag {
  Field field;
  const char* name;
  MetadataKey key;
  const char* exiftoolId;   // "[EXIF, IFD0, Camera] 271 - Make: NIKON"
  const char* extractorId;  // "[Exif IFD0 - 0x010f] Make = NIKON CORPORATION"
};
constexpr FieldTag kFields[] = {
    {Field::make, "make", MetadataKey::make, "271", "0x010f"},
    {Field::model, "model", MetadataKey::model, "272", "0x0110"},
    {Field::date, "date", MetadataKey::date, "36867", "0x9003"},
    {Field::shutter, "shutter", MetadataKey::shutter, "33434", "0x829a"},
    {Field::aperture, "aperture", MetadataKey::aperture, "33437", "0x829d"},
    {Field::focal, "focal", MetadataKey::focal, "37386", "0x920a"},
    {Field::iso, "iso", MetadataKey::iso, "34855", "0x8827"},
};

struct Expected {
  fs::path file;
  std::string source;  // which tool's text
  std::map<Field, std::string> values;
};

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    out.push_back(line);
  }
  return out;
}

// Adds the compared fields of one tool's text to `e`: exiftool prints the tag number between the
// bracket and " - ", metadata-extractor prints it inside the bracket after " - ".
void readFields(const std::string& text, bool exiftool, bool skipDate, Expected& e) {
  for (const std::string& line : lines(text)) {
    const bool ours = exiftool ? line.rfind("[EXIF,", 0) == 0
                               : line.rfind("[Exif IFD0 - ", 0) == 0 ||
                                     line.rfind("[Exif SubIFD - ", 0) == 0 ||
                                     line.rfind("[PanasonicRaw Exif IFD0 - ", 0) == 0;
    const std::size_t close = line.find("] ");
    if (!ours || close == std::string::npos) continue;
    const std::size_t dash = exiftool ? line.find(" - ", close) : line.find(" - ");
    const std::size_t value = line.find(exiftool ? ": " : " = ", exiftool ? dash : close);
    if (dash == std::string::npos || value == std::string::npos) continue;
    const std::string id = exiftool ? line.substr(close + 2, dash - close - 2)
                                    : line.substr(dash + 3, close - dash - 3);
    for (const FieldTag& f : kFields) {
      if (id != (exiftool ? f.exiftoolId : f.extractorId) || (skipDate && f.field == Field::date))
        continue;
      std::string v = line.substr(value + (exiftool ? 2 : 3));
      while (!v.empty() && (v.back() == ' ' || v.back() == '\0'))
        v.pop_back();
      e.values.try_emplace(f.field, v.substr(std::min(v.find_first_not_of(' '), v.size())));
    }
  }
}

std::vector<Expected> expectations(const fs::path& root) {
  std::map<std::string, Expected> byImage;
  for (const std::string& row : lines(testing::contentsOf(root / "exiftool/expected/INDEX.tsv"))) {
    std::istringstream cols(row);
    std::string out, image, script, number, args;
    for (std::string* col : {&out, &image, &script, &number, &args})
      std::getline(cols, *col, '\t');
    if (out == "out_file" || image.empty()) continue;
    Expected& e = byImage[image];
    e.file = root / "exiftool" / image;
    e.source = "exiftool";
    readFields(testing::contentsOf(root / "exiftool/expected" / out), true,
               args.find("GlobalTimeShift") != std::string::npos, e);
  }
  std::vector<Expected> all;
  for (auto& [image, e] : byImage) {
    if (!e.values.empty()) all.push_back(std::move(e));
  }
  for (const auto& format : fs::directory_iterator(root / "metadata-extractor")) {
    const fs::path expected = format.path() / "expected";
    if (!fs::is_directory(expected)) continue;
    for (const auto& text : fs::directory_iterator(expected)) {
      Expected e{format.path() / text.path().stem(), "metadata-extractor", {}};
      readFields(testing::contentsOf(text.path()), false, false, e);
      if (!e.values.empty() && fs::exists(e.file)) all.push_back(std::move(e));
    }
  }
  return all;
}

std::optional<double> number(std::string text) {
  for (const char* unit : {" sec", " mm", "mm"}) {
    const std::size_t at = text.rfind(unit);
    if (at != std::string::npos && at + std::string(unit).size() == text.size()) text.resize(at);
  }
  if (text.rfind("f/", 0) == 0) text = text.substr(2);
  const std::size_t slash = text.find('/');
  try {
    if (slash != std::string::npos) {
      return std::stod(text.substr(0, slash)) / std::stod(text.substr(slash + 1));
    }
    return std::stod(text);
  } catch (...) {
    return std::nullopt;
  }
}

std::string show(const MetadataValue* v) {
  if (v == nullptr) return "(none)";
  if (const auto* t = v->asText()) return *t;
  if (const auto* i = v->asInteger()) return std::to_string(*i);
  if (const auto* n = v->asNumber()) {
    std::ostringstream s;
    s << *n;
    return s.str();
  }
  const Date* date = v->asDate();
  if (date == nullptr) return "(?)";
  const auto secs = std::chrono::floor<std::chrono::seconds>(*date);
  const auto day = std::chrono::floor<std::chrono::days>(secs);
  const std::chrono::year_month_day ymd{day};
  const std::chrono::hh_mm_ss hms{secs - day};
  char buf[32];
  std::snprintf(buf, sizeof buf, "%04d:%02u:%02u %02ld:%02ld:%02ld", static_cast<int>(ymd.year()),
                static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
                static_cast<long>(hms.hours().count()), static_cast<long>(hms.minutes().count()),
                static_cast<long>(hms.seconds().count()));
  return buf;
}

bool agrees(Field field, const std::string& expected, const MetadataValue* ours) {
  if (ours == nullptr) return false;
  switch (field) {
    case Field::make:
    case Field::model:
    case Field::date:
      return show(ours) == expected;
    case Field::iso:
      return show(ours) == expected;
    case Field::shutter: {
      const auto e = number(expected);
      const double* n = ours->asNumber();
      if (!e || n == nullptr) return false;
      const double o = *n;
      // Printed as "1/N" with N rounded, or as a decimal.
      if (expected.find('/') != std::string::npos) {
        return std::lround(1.0 / o) == std::lround(1.0 / *e);
      }
      return std::abs(o - *e) <= 0.05 * *e + 1e-9;
    }
    case Field::aperture:
    case Field::focal: {
      const auto e = number(expected);
      const double* n = ours->asNumber();
      return e && n != nullptr && std::abs(*n - *e) <= 0.051;
    }
  }
  return false;
}

// A camera that doesn't know a value writes a placeholder: zero, an empty text, a date of zeros.
// The other tools print it; we store no value, so that a name never shows "ISO 0" or "0000".
bool isPlaceholder(const std::string& expected) {
  return expected.empty() || expected == "0" || expected == "0.0 mm" || expected == "0 mm" ||
         expected == "0000:00:00 00:00:00";
}

// The real samples, read in UTC; every test skips when they are absent.
class SampleAgreement : public ::testing::Test {
 protected:
  void SetUp() override {
    if (root.empty()) GTEST_SKIP() << "TESSANE_SAMPLES does not name the samples folder";
  }
  const fs::path root = testing::samplesFolder();
  const std::unique_ptr<icu::TimeZone> utc{icu::TimeZone::createTimeZone("UTC")};
  const MetadataProvider provider{*utc};
};

TEST_F(SampleAgreement, CameraFieldsAgreeWithOtherToolsReadings) {
  const std::vector<Expected> all = expectations(root);

  std::map<Field, std::pair<int, int>> tally;  // agreed, compared
  std::vector<std::string> differing;
  int files = 0;
  for (const Expected& e : all) {
    const FileKind kind = fileKindOf(e.file.filename().string());
    if (kind != FileKind::image && kind != FileKind::raw) continue;
    ++files;
    const MetadataMap ours = provider.metadata(e.file, kind);
    for (const auto& [field, value] : e.values) {
      const FieldTag& tag = kFields[static_cast<int>(field)];
      const MetadataValue* v = ours.find(tag.key);
      // The other tools print a capture time as the file writes it: on the shot's own clock.
      std::optional<MetadataValue> shotClock;
      if (v != nullptr && v->asDate() && ours.shotOffset()) {
        shotClock = MetadataValue::date(*v->asDate() + std::chrono::seconds(*ours.shotOffset()));
        v = &*shotClock;
      }
      auto& [agreed, compared] = tally[field];
      ++compared;
      if (agrees(field, value, v) || (isPlaceholder(value) && v == nullptr)) {
        ++agreed;
        continue;
      }
      differing.push_back(e.source + " " + e.file.filename().string() + ":" + tag.name +
                          " expected \"" + value + "\", read \"" + show(v) + "\"");
    }
  }
  std::cout << "Agreement with the samples' expected readings (" << files
            << " files; a placeholder such as ISO 0 that we leave out counts as agreement):\n";
  int agreedAll = 0, comparedAll = 0;
  for (const auto& [field, counts] : tally) {
    std::cout << "  " << kFields[static_cast<int>(field)].name << ": " << counts.first << "/"
              << counts.second << "\n";
    agreedAll += counts.first;
    comparedAll += counts.second;
  }
  std::cout << "  all: " << agreedAll << "/" << comparedAll << "\n";
  EXPECT_GT(comparedAll, 300);
  for (const std::string& line : differing)
    ADD_FAILURE() << "disagreement: " << line;
}

std::string describe(const MetadataMap& m) {
  std::string out;
  for (const auto& [key, value] : m) {
    out += std::string(rawValue(key)) + "=" + show(&value) + "; ";
  }
  return out;
}

// The quick paths must give exactly what Exiv2's full parse gives, on every sample that starts
// like a JPEG or an ISO base media file (camera files, phone files, broken files, files named as
// RAW), read as an image and as a RAW file.
TEST_F(SampleAgreement, TheQuickPathsGiveExiv2sValues) {
  MediaLibraries::initialize();
  const std::unique_ptr<icu::TimeZone> rome(icu::TimeZone::createTimeZone("Europe/Rome"));
  int jpegs = 0;
  int quick = 0;
  int makerNoteParsed = 0;
  int exifParserOnly = 0;
  int bmffs = 0;
  int tiffs = 0;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (!entry.is_regular_file()) continue;
    const std::string bytes = testing::contentsOf(entry.path());
    const auto span = std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    const bool bmff = BmffExif::looksLikeBmff(span);
    const bool tiff = span.size() >= 4 && (span[0] == 'I' || span[0] == 'M') && span[1] == span[0];
    if (!JpegSegments::looksLikeJpeg(span) && !bmff && !tiff) continue;
    if (tiff) {
      ++tiffs;
    } else {
      ++(bmff ? bmffs : jpegs);
    }
    const auto fetch = [&](std::uint64_t offset, std::size_t size) {
      if (offset > span.size()) return std::span<const std::uint8_t>();
      return span.subspan(offset, std::min<std::size_t>(size, span.size() - offset));
    };
    if (bmff || tiff) {
      // Counted by whether the quick path answers; compared below like the JPEG files.
    } else if (const auto parts = JpegSegments::read(fetch)) {
      ++(parts->exifForExiv2              ? exifParserOnly
         : parts->makerNoteStream.empty() ? quick
                                          : makerNoteParsed);
    }
    for (const FileKind kind : {FileKind::image, FileKind::raw}) {
      MetadataMap viaQuickPath;
      MetadataMap viaExiv2;
      ImageReader::readBytes(span, kind, *rome, viaQuickPath, true);
      ImageReader::readBytes(span, kind, *rome, viaExiv2, false);
      EXPECT_EQ(describe(viaQuickPath), describe(viaExiv2))
          << entry.path() << " as " << rawValue(kind);
    }
  }
  std::cout << "JPEG samples: " << jpegs << ", read by the quick path: " << quick
            << ", by the quick path and Exiv2's parser of the maker note alone: " << makerNoteParsed
            << ", by Exiv2's EXIF parser: " << exifParserOnly
            << "; ISO base media samples: " << bmffs << "; TIFF-based samples: " << tiffs << "\n";
  EXPECT_GT(jpegs, 200);
  EXPECT_GT(quick, 0);
  EXPECT_GT(makerNoteParsed, 0);
}

// A RAW file's size is the photo's, not a preview's or the sensor's (the expected sizes are the
// other tools' readings of the same files).
TEST_F(SampleAgreement, RawFilesHaveThePhotosSize) {
  const struct {
    const char* file;
    std::int64_t width, height;
  } cases[] = {
      {"exiftool/DNG.dng", 3456, 2304},        // the default crop, not the sensor's 3516 x 2328
      {"exiftool/Panasonic.rw2", 3648, 2736},  // the maker note's, not the sensor's 3724 x 2754
      {"exiftool/CanonRaw.cr3", 6000, 4000},
      {"exiftool/CanonRaw.cr2", 3456, 2304},
      {"exiftool/CanonRaw.crw", 3072, 2048},
      {"exiftool/PhaseOne.iiq", 7320, 5484},
      // The raw data's size: Nikon keeps the photo's 3008 x 2000 nowhere Exiv2 reads. Not the
      // 160 x 106 preview in IFD0.
      {"exiftool/Nikon.nef", 3040, 2014},
  };
  for (const auto& c : cases) {
    const MetadataMap m = provider.metadata(root / c.file, FileKind::raw);
    EXPECT_EQ(show(m.find(MetadataKey::width)), std::to_string(c.width)) << c.file;
    EXPECT_EQ(show(m.find(MetadataKey::height)), std::to_string(c.height)) << c.file;
  }
}

// Serial numbers and ISO speeds that older cameras keep in their maker notes only.
TEST_F(SampleAgreement, SerialNumbersAndIsoOfMakerNotes) {
  const struct {
    const char* file;
    const char* serial;
  } cases[] = {
      {"metadata-extractor/nef/Issue 247-1.nef", "1005a431"},  // Nikon D70s
      {"exiftool/NikonD70.jpg", "20025585"},
      {"exiftool/Nikon.nef", "12345678"},
      {"metadata-extractor/jpg/Olympus E-20.jpg", "203001592"},
      {"exiftool/CanonRaw.crw", "560018150"},  // as the same body's JPEG, exiftool/Canon.jpg
      {"exiftool/Canon.jpg", "560018150"},
      {"exif-samples/jpg/Panasonic_DMC-FZ30.jpg", "S010604030293"},
      {"exiftool/DNG.dng", "012345678"},  // IFD0's camera serial number
  };
  for (const auto& c : cases) {
    const fs::path file = root / c.file;
    const MetadataMap m = provider.metadata(file, fileKindOf(file.filename().string()));
    EXPECT_EQ(show(m.find(MetadataKey::serial)), c.serial) << c.file;
  }
  // The D70s writes its ISO speed in the maker note alone.
  const fs::path d70s = root / "metadata-extractor/nef/Issue 247-1.nef";
  EXPECT_EQ(show(provider.metadata(d70s, FileKind::raw).find(MetadataKey::iso)), "200");
}

}  // namespace
}  // namespace tessane
