#include "ImageReader.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "BmffExif.h"
#include "ExifPick.h"
#include "ImageFields.h"
#include "IptcFields.h"
#include "MappedFile.h"
#include "QuickPaths.h"
#include "RenameIO/RegularFile.h"

namespace tessane::ImageReader {
namespace {

using Exiv2::Exifdatum;

// EXIF that Exiv2 could not reach in an ISO base media file, decoded from the boxes.
void decodeBmffExif(std::span<const std::uint8_t> bytes, Exiv2::ExifData& exif) {
  const BmffExif::Found found = BmffExif::find(bytes);
  if (found.empty()) return;
  try {
    if (!found.ifd0.empty()) {
      Exiv2::ExifParser::decode(exif, found.ifd0.data(),
                                static_cast<std::uint32_t>(found.ifd0.size()));
    }
  } catch (...) {
    // Keep what was decoded.
  }
  if (found.exifIfd.empty()) return;
  try {
    Exiv2::ExifData photo;
    Exiv2::ExifParser::decode(photo, found.exifIfd.data(),
                              static_cast<std::uint32_t>(found.exifIfd.size()));
    // The stream's first IFD is the EXIF IFD: file its entries where they belong.
    for (const Exifdatum& d : photo) {
      if (d.ifdId() != ExifPick::imageGroup()) continue;
      exif.add(Exiv2::ExifKey(d.tag(), "Photo"), &d.value());
    }
  } catch (...) {
  }
}

// Exiv2's image types for the videos it opens: RIFF, Matroska, QuickTime, ASF.
bool isVideo(int imageType) {
  return imageType == 20 || imageType == 21 || imageType == 22 || imageType == 24;
}

template <typename Open, typename Bytes>
void readWith(Open&& open, Bytes&& bytes, FileKind kind, const icu::TimeZone& zone,
              MetadataMap& out) {
  std::unique_ptr<Exiv2::Image> image;
  try {
    image.reset(open().release());
    if (!image) return;
    // Exiv2 also opens videos (QuickTime, RIFF, Matroska, ASF), and its video readers crash on
    // common files (found reading an MP4 named as a photo). Videos are read by libavformat.
    // (Asking for the MIME type here would fix a TIFF file's primary group before it is read.)
    if (isVideo(image->imageType())) return;
    image->readMetadata();
  } catch (...) {
    // A damaged part stops Exiv2; what it read before that is still there.
  }
  if (!image) return;
  try {
    Exiv2::ExifData& exif = image->exifData();
    if (exif.empty()) {
      const std::span<const std::uint8_t> b = bytes();
      if (BmffExif::looksLikeBmff(b)) decodeBmffExif(b, exif);
    }
    ImageFields fields = ExifPick::pick(exif);
    IptcFields::read(image->iptcData(), fields);
    if (fields.iptcUncertain) IptcFields::preferXmp(image->xmpData(), fields);
    fields.imageWidth = image->pixelWidth();
    fields.imageHeight = image->pixelHeight();
    ImageFieldsMapping::toMetadata(fields, kind, zone, out);
  } catch (...) {
    // Exiv2 also throws while converting values; what was mapped so far stays.
  }
}

// Zero bytes after the data handed to Exiv2 from memory.
constexpr std::size_t kPadding = 4096;

// Exiv2 0.27's CRW parser looks for the end of texts with strlen over the file's bytes, reading
// past the end of a damaged file (found by fuzzing). From a mapped file that read lands in the
// zero-filled rest of the last page, or past it when the size is a multiple of the page size;
// CRW files are small, so they are read whole into a buffer that ends in zeros. Nothing for
// other files.
std::optional<std::vector<std::uint8_t>> paddedCrw(const std::filesystem::path& path) {
  static constexpr std::uint8_t kMagic[] = {'I', 'I', 0x1a, 0,   0,   0,   'H',
                                            'E', 'A', 'P',  'C', 'C', 'D', 'R'};
  const RegularFile file = RegularFile::open(path);
  if (!file) return std::nullopt;
  const int fd = file.fd();
  std::optional<std::vector<std::uint8_t>> out;
  std::uint8_t head[sizeof kMagic] = {};
  if (::pread(fd, head, sizeof head, 0) == static_cast<ssize_t>(sizeof head) &&
      std::memcmp(head, kMagic, sizeof kMagic) == 0 && file.size() > 0 &&
      file.size() < (256 << 20)) {
    const auto size = static_cast<std::size_t>(file.size());
    std::vector<std::uint8_t> bytes(size + kPadding, 0);
    std::size_t done = 0;
    while (done < size) {
      const ssize_t n = ::pread(fd, bytes.data() + done, size - done, static_cast<off_t>(done));
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
    }
    bytes.resize(done + kPadding);
    out = std::move(bytes);
  }
  return out;
}

}  // namespace

Path read(const std::filesystem::path& path, FileKind kind, const icu::TimeZone& zone,
          MetadataMap& out) {
  {
    // Most camera files are JPEGs: try the quick paths on the file's head first. Nothing but a
    // regular file is read (a pipe named like a photo would never answer).
    const RegularFile file = RegularFile::open(path);
    if (!file) return Path::none;
    if (const auto p = QuickPaths::readFile(file.fd(), path, kind, zone, out)) return *p;
  }
  std::optional<MappedFile> mapped;
  if (const auto crw = paddedCrw(path)) {
    const std::span<const std::uint8_t> bytes(crw->data(), crw->size() - kPadding);
    readWith(
        [&] { return Exiv2::ImageFactory::open(bytes.data(), static_cast<long>(bytes.size())); },
        [&] { return bytes; }, kind, zone, out);
    return Path::wholeParse;
  }
  readWith([&] { return Exiv2::ImageFactory::open(path.string()); },
           [&] {
             if (!mapped) mapped.emplace(path);
             return mapped->bytes();
           },
           kind, zone, out);
  return Path::wholeParse;
}

Path readBytes(std::span<const std::uint8_t> bytes, FileKind kind, const icu::TimeZone& zone,
               MetadataMap& out, bool quickPath) {
  if (bytes.empty()) return Path::none;
  if (quickPath) {
    if (const auto p = QuickPaths::readBytes(bytes, kind, zone, out)) return *p;
  }
  // Exiv2 may read a little past the end of what it is given (see paddedCrw): give it a copy that
  // ends in zeros.
  std::vector<std::uint8_t> padded(bytes.size() + kPadding, 0);
  std::copy(bytes.begin(), bytes.end(), padded.begin());
  const std::span<const std::uint8_t> copy(padded.data(), bytes.size());
  readWith([&] { return Exiv2::ImageFactory::open(copy.data(), static_cast<long>(copy.size())); },
           [&] { return copy; }, kind, zone, out);
  return Path::wholeParse;
}

}  // namespace tessane::ImageReader
