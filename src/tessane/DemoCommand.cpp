// tessane demo DIR: a small wedding shoot to try the tool on, made from nothing: JPEG files with
// real EXIF from two cameras whose clocks differ by two minutes, bursts within one second, RAW
// twins, XMP sidecars with a title and a city, and a short video.
#include <CLI/CLI.hpp>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "DemoMedia.h"
#include "MediaMetadata/LoadableModule.h"
#include "RenameEngine/Unicode.h"
#include "Tool.h"

namespace tessane::cli {
namespace {

namespace fs = std::filesystem;

struct Body {
  const char* make;
  const char* model;
  const char* serial;
  const char* lens;
  const char* prefix;   // of the camera's file names
  const char* rawExt;   // of its RAW files
  int clockBehind = 0;  // seconds its clock is behind
};

const Body kSony{"SONY", "ILCE-7RM5", "5021884", "FE 85mm F1.4 GM", "DSC0", "ARW", 0};
const Body kNikon{
    "NIKON CORPORATION", "NIKON Z 6_2", "3018842", "NIKKOR Z 24-70mm f/4 S", "DSC_", "NEF", 120};

struct Shot {
  const Body* body;
  int number;         // in the camera's file name
  int second;         // true time, seconds after 14:00:00 on the wedding day
  int hundredths;     // within the second
  bool raw;           // a RAW twin beside the JPEG
  const char* title;  // an XMP sidecar with a title and a city, when not null
  const char* exposure;
  const char* fNumber;
  int iso;
  const char* focal;
};

// The Sony has the right time; the Nikon's clock is two minutes behind, so its files say 14:01
// for what happened at 14:03. Three Sony shots and two Nikon shots share a second each.
const std::vector<Shot>& shots() {
  static const std::vector<Shot> list{
      {&kSony, 1201, 185, 0, true, nullptr, "1/250", "28/10", 200, "85/1"},
      {&kSony, 1202, 185, 20, true, nullptr, "1/250", "28/10", 200, "85/1"},
      {&kSony, 1203, 185, 45, true, "The rings", "1/250", "28/10", 200, "85/1"},
      {&kNikon, 4410, 185, 30, true, nullptr, "1/160", "4/1", 400, "24/1"},
      {&kSony, 1204, 312, 0, true, nullptr, "1/500", "14/10", 100, "85/1"},
      {&kNikon, 4411, 340, 10, false, nullptr, "1/160", "4/1", 400, "35/1"},
      {&kNikon, 4412, 340, 60, false, nullptr, "1/160", "4/1", 400, "35/1"},
      {&kSony, 1205, 601, 0, true, "First dance", "1/125", "18/10", 1600, "85/1"},
      {&kNikon, 4413, 655, 0, true, "First dance", "1/100", "4/1", 3200, "70/1"},
      {&kSony, 1206, 902, 0, false, nullptr, "1/200", "2/1", 800, "85/1"},
  };
  return list;
}

constexpr int kWeddingYear = 2025, kWeddingMonth = 6, kWeddingDay = 14, kWeddingHour = 14;

std::string fileStem(const Shot& shot) {
  return std::string(shot.body->prefix) + std::to_string(shot.number);
}

// The camera's clock reading for a true time: "2025:06:14 14:03:05".
std::string exifTime(int trueSecond, const Body& body) {
  const int second = trueSecond - body.clockBehind;
  char text[32];
  std::snprintf(text, sizeof text, "%04d:%02d:%02d %02d:%02d:%02d", kWeddingYear, kWeddingMonth,
                kWeddingDay, kWeddingHour + second / 3600, second / 60 % 60, second % 60);
  return text;
}

// A minimal baseline TIFF (8 × 8 grey pixels), the frame of a RAW file that Exiv2 then fills.
std::string tinyTiff() {
  std::string t = "II*";
  t.push_back('\0');
  const auto put16 = [&t](unsigned v) {
    t.push_back(static_cast<char>(v & 0xFF));
    t.push_back(static_cast<char>((v >> 8) & 0xFF));
  };
  const auto put32 = [&](unsigned v) {
    put16(v & 0xFFFF);
    put16(v >> 16);
  };
  const unsigned entries = 9;
  const unsigned ifdSize = 2 + entries * 12 + 4;
  const unsigned pixels = 8 + ifdSize;
  put32(8);
  put16(entries);
  const auto entry = [&](unsigned tag, unsigned type, unsigned value) {
    put16(tag);
    put16(type);
    put32(1);
    if (type == 3) {
      put16(value);
      put16(0);
    } else {
      put32(value);
    }
  };
  entry(256, 3, 8);       // width
  entry(257, 3, 8);       // height
  entry(258, 3, 8);       // bits per sample
  entry(259, 3, 1);       // no compression
  entry(262, 3, 1);       // black is zero
  entry(273, 4, pixels);  // strip offset
  entry(277, 3, 1);       // samples per pixel
  entry(278, 3, 8);       // rows per strip
  entry(279, 4, 64);      // strip bytes
  put32(0);
  t.append(64, '\x80');
  return t;
}

std::string sidecar(const char* title, const char* city) {
  std::string x =
      "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
      "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
      " <rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
      "  <rdf:Description rdf:about=\"\"\n"
      "    xmlns:dc=\"http://purl.org/dc/elements/1.1/\"\n"
      "    xmlns:photoshop=\"http://ns.adobe.com/photoshop/1.0/\"\n"
      "    photoshop:City=\"";
  x.append(city).append(
      "\">\n"
      "   <dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">");
  x.append(title).append(
      "</rdf:li></rdf:Alt></dc:title>\n"
      "  </rdf:Description>\n"
      " </rdf:RDF>\n"
      "</x:xmpmeta>\n"
      "<?xpacket end=\"w\"?>\n");
  return x;
}

std::optional<std::string> writeFile(const fs::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) return "couldn’t write " + unicode::toDisplayable(path.native());
  return std::nullopt;
}

// The shot's EXIF written into an existing JPEG or TIFF file through Exiv2.
std::optional<std::string> writeExif(const fs::path& path, const Shot& shot, int width,
                                     int height) {
  try {
    auto image = Exiv2::ImageFactory::open(path.string());
    image->readMetadata();
    Exiv2::ExifData exif = image->exifData();
    const std::string time = exifTime(shot.second, *shot.body);
    char subSeconds[8];
    std::snprintf(subSeconds, sizeof subSeconds, "%02d", shot.hundredths);
    const std::map<std::string, std::string> values{
        {"Exif.Image.Make", shot.body->make},
        {"Exif.Image.Model", shot.body->model},
        {"Exif.Image.DateTime", time},
        {"Exif.Photo.DateTimeOriginal", time},
        {"Exif.Photo.DateTimeDigitized", time},
        {"Exif.Photo.SubSecTimeOriginal", subSeconds},
        {"Exif.Photo.BodySerialNumber", shot.body->serial},
        {"Exif.Photo.LensModel", shot.body->lens},
        {"Exif.Photo.ExposureTime", shot.exposure},
        {"Exif.Photo.FNumber", shot.fNumber},
        {"Exif.Photo.ISOSpeedRatings", std::to_string(shot.iso)},
        {"Exif.Photo.FocalLength", shot.focal},
        {"Exif.Photo.PixelXDimension", std::to_string(width)},
        {"Exif.Photo.PixelYDimension", std::to_string(height)},
    };
    for (const auto& [key, text] : values) {
      const Exiv2::ExifKey k(key);
      auto value = Exiv2::Value::create(k.defaultTypeId());
      value->read(text);
      exif.add(k, value.get());
    }
    image->setExifData(exif);
    image->writeMetadata();
  } catch (const std::exception& e) {
    return "couldn’t write the EXIF of " + unicode::toDisplayable(path.native()) + ": " + e.what();
  }
  return std::nullopt;
}

struct Made {
  std::string name;
  std::string what;
};

std::optional<std::string> makeShoot(const fs::path& folder, std::vector<Made>& made) {
  static LoadableModule module("libtessane-demo.so");
  const auto picture = reinterpret_cast<TessaneDemoPicture>(module.symbol("tessaneDemoPicture"));
  const auto movie = reinterpret_cast<TessaneDemoMovie>(module.symbol("tessaneDemoMovie"));
  if (picture == nullptr || movie == nullptr) {
    return "the demo's pictures can’t be made here (" + module.problem() + ")";
  }
  for (const Shot& shot : shots()) {
    const std::string stem = fileStem(shot);
    const fs::path jpeg = folder / (stem + ".JPG");
    if (std::string failed = picture(jpeg.c_str(), shot.number * 37 + shot.hundredths);
        !failed.empty()) {
      return unicode::toDisplayable(jpeg.native()) + ": " + failed;
    }
    if (auto failed = writeExif(jpeg, shot, kDemoPictureWidth, kDemoPictureHeight)) return failed;
    std::string time = exifTime(shot.second, *shot.body);
    time[4] = time[7] = '-';
    std::string what = std::string(shot.body->model) + ", " + time;
    char subSeconds[8];
    std::snprintf(subSeconds, sizeof subSeconds, ".%02d", shot.hundredths);
    what.append(subSeconds);
    made.push_back({stem + ".JPG", what});
    if (shot.raw) {
      const fs::path raw = folder / (stem + "." + shot.body->rawExt);
      if (auto failed = writeFile(raw, tinyTiff())) return failed;
      if (auto failed = writeExif(raw, shot, 8, 8)) return failed;
      made.push_back({raw.filename().string(), "RAW twin of " + stem + ".JPG"});
    }
    if (shot.title != nullptr) {
      const std::string name = stem + ".xmp";
      if (auto failed = writeFile(folder / name, sidecar(shot.title, "Roma"))) return failed;
      made.push_back({name, std::string("sidecar: “") + shot.title + "”, Roma"});
    }
  }
  // The video: filmed at 14:20 in Rome, which the file stores in UTC.
  const std::string video = "C0001.MP4";
  if (std::string failed =
          movie((folder / video).c_str(), "2025-06-14T12:20:00.000000Z", kSony.make, kSony.model);
      !failed.empty()) {
    return unicode::toDisplayable((folder / video).native()) + ": " + failed;
  }
  made.push_back({video, "video, ILCE-7RM5, 2025-06-14 12:20:00 UTC"});
  return std::nullopt;
}

int demo(const Tool& tool, const std::string& target) {
  const fs::path folder(target);
  std::error_code error;
  const auto status = fs::status(folder, error);
  if (fs::exists(status)) {
    if (!fs::is_directory(status)) {
      tool.error("“" + unicode::toDisplayable(target) + "” is a file; give a new or empty folder.");
      return kExitRefused;
    }
    if (!fs::is_empty(folder, error) || error) {
      tool.error("“" + unicode::toDisplayable(target) +
                 "” already holds files; give a new or empty folder.");
      return kExitRefused;
    }
  } else if (!fs::create_directories(folder, error) && error) {
    tool.error("Couldn’t make “" + unicode::toDisplayable(target) + "”: " + error.message());
    return kExitRefused;
  }

  std::vector<Made> made;
  if (const std::optional<std::string> failed = makeShoot(folder, made)) {
    tool.error(*failed);
    return kExitRefused;
  }
  std::printf("Made a demo shoot of %zu files in %s:\n", made.size(),
              unicode::toDisplayable(target).c_str());
  for (const Made& file : made)
    std::printf("  %-14s %s\n", file.name.c_str(), file.what.c_str());
  std::printf(
      "\nTwo cameras: the SONY (serial 5021884) has the right time, the NIKON’s clock "
      "(serial 3018842) is 2 minutes behind.\nTry:\n"
      "  tessane bodies set 3018842 --tag Z6 --offset +0:02:00   (by serial)\n"
      "  tessane bodies set ILCE-7RM5 --tag A7R                 (by model: photos and video)\n"
      "  tessane preview %s --template \"{date:yyyy-MM-dd_HH-mm-ss}_{body}\" "
      "--duplicates addSuffix\n",
      unicode::toDisplayable(target).c_str());
  return kExitOk;
}

}  // namespace

void addDemoCommand(CLI::App& app, Tool& tool, int& exitCode) {
  auto* command = app.add_subcommand(
      "demo",
      "Make a demo shoot to try the tool on: photos from two cameras, RAW twins, "
      "sidecars and a video");
  auto folder = std::make_shared<std::string>();
  command->add_option("DIR", *folder, "A new or empty folder")->required();
  command->callback([&tool, &exitCode, folder] { exitCode = demo(tool, *folder); });
}

}  // namespace tessane::cli
