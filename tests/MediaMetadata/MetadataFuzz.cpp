// libFuzzer target for the per-file metadata read. Built only when asked, with clang:
//
//   cmake --preset fuzz && cmake --build --preset fuzz --target MetadataFuzz
//   build/fuzz/tests/fuzz/MetadataFuzz -max_total_time=600 -timeout=2 CORPUS_DIR
//
// The first byte picks what is read, the rest is the content: the image reader from memory
// (quick JPEG path on or off), the ISO base media box walker, an XMP sidecar packet, the date
// parsers, or the whole provider on a file with one of the media extensions (libavformat, TagLib,
// poppler and Exiv2 from a path).
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <unicode/timezone.h>

#include "MediaMetadata/BmffExif.h"
#include "MediaMetadata/ImageReader.h"
#include "MediaMetadata/MetadataProvider.h"
#include "MediaMetadata/SidecarReader.h"
#include "MediaMetadata/TimeParsing.h"

namespace {

using namespace tessane;

struct Setup {
  std::unique_ptr<icu::TimeZone> zone{icu::TimeZone::createTimeZone("Europe/Rome")};
  MetadataProvider provider{*zone};
  std::filesystem::path folder;

  Setup() {
    folder = std::filesystem::temp_directory_path() /
             ("tessane-fuzz-" + std::to_string(static_cast<long>(::getpid())));
    std::filesystem::create_directories(folder);
  }
};

Setup& setup() {
  static Setup s;
  return s;
}

constexpr const char* kExtensions[] = {"jpg", "CR3", "heic", "nef", "dng",  "mp4", "mov", "mts",
                                       "avi", "mkv", "mp3",  "m4a", "flac", "ogg", "wav", "pdf"};

void readAsFile(std::span<const std::uint8_t> bytes, std::uint8_t pick) {
  const char* ext = kExtensions[pick % std::size(kExtensions)];
  const std::filesystem::path file = setup().folder / (std::string("input.") + ext);
  std::FILE* f = std::fopen(file.c_str(), "wb");
  if (f == nullptr) return;
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::fclose(f);
  setup().provider.read(file, fileKindOf(file.filename().string()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::uint8_t what = data[0];
  const std::uint8_t pick = data[1];
  const std::span<const std::uint8_t> bytes(data + 2, size - 2);
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const icu::TimeZone& zone = *setup().zone;
  MetadataMap out;
  switch (what % 6) {
    case 0:
      ImageReader::readBytes(bytes, FileKind::image, zone, out, true);
      break;
    case 1:
      ImageReader::readBytes(bytes, FileKind::raw, zone, out, pick % 2 == 0);
      break;
    case 2:
      BmffExif::find(bytes);
      break;
    case 3:
      SidecarReader::readPacket(text, out);
      break;
    case 4:
      TimeParsing::exifDate(text, zone);
      TimeParsing::isoDate(text, zone);
      TimeParsing::pdfDate(text, zone);
      TimeParsing::subSeconds(text);
      break;
    default:
      readAsFile(bytes, pick);
      break;
  }
  return 0;
}
