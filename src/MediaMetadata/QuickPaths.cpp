#include "QuickPaths.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "BmffExif.h"
#include "ExifPick.h"
#include "ImageFields.h"
#include "JpegSegments.h"
#include "MakerNoteStream.h"
#include "MappedFile.h"
#include "TiffReader.h"

namespace tessane::QuickPaths {
namespace {

using ImageReader::Path;

// What the quick path reads at once: the markers and EXIF of most camera JPEGs; what lies past
// it (a long EXIF segment with a large thumbnail) takes one more read.
constexpr std::size_t kHeadBytes = 16 * 1024;
// What the quick path reads of a TIFF-based RAW file.
constexpr std::size_t kRawHeadBytes = 256 * 1024;

// A RAW file's size may come from its maker note when EXIF gives none; the quick paths don't
// read maker notes.
bool needsMakerSize(const ImageFields& f, FileKind kind) {
  const bool exifSize = f.pixelX && f.pixelX->first && f.pixelY && f.pixelY->first;
  return kind == FileKind::raw && f.makerNote && !exifSize;
}

// The quick path for ISO base media files (HEIC, HEIF, HIF, CR3): the EXIF streams found through
// the boxes read the quick way, when the file is laid out as Exiv2 reads it and the maker note
// could add nothing. False when Exiv2's whole parse must decide.
bool quickBmff(std::span<const std::uint8_t> bytes, FileKind kind, const icu::TimeZone& zone,
               MetadataMap& out) {
  const BmffExif::Found found = BmffExif::find(bytes);
  ImageFields f;
  bool makerNote = false;
  if (!found.exifIfd.empty() || found.canonMakerNote) {
    // CR3: IFD0 and the EXIF IFD in boxes of their own, the photo's size from EXIF.
    if (kind != FileKind::raw || found.ifd0.empty() || found.exifIfd.empty()) return false;
    if (!TiffReader::readTiff(found.ifd0, TiffReader::TiffStart::ifd0, true, f, makerNote) ||
        !TiffReader::readTiff(found.exifIfd, TiffReader::TiffStart::exifIfd, true, f, makerNote))
      return false;
    if (found.canonMakerNote && TiffReader::makerNoteCouldAdd(f)) return false;
    f.makerNote = f.makerNote || found.canonMakerNote;
    if (!f.pixelX || !f.pixelX->first || !f.pixelY || !f.pixelY->first) return false;
  } else {
    if (!found.plainLayout || found.ifd0.empty()) return false;
    if (!TiffReader::readTiff(found.ifd0, TiffReader::TiffStart::ifd0, true, f, makerNote))
      return false;
    if (makerNote && TiffReader::makerNoteCouldAdd(f)) return false;
    // Exiv2 gives a HEIF file's EXIF pixel dimensions as its size when they are there.
    f.imageWidth = f.pixelX ? f.pixelX->first.value_or(0) : found.width;
    f.imageHeight = f.pixelY ? f.pixelY->first.value_or(0) : found.height;
  }
  if (needsMakerSize(f, kind)) return false;
  ImageFieldsMapping::toMetadata(f, kind, zone, out);
  return true;
}

bool looksLikeTiff(std::span<const std::uint8_t> b) {
  return b.size() >= 8 && ((b[0] == 'I' && b[1] == 'I' && b[2] == 42 && b[3] == 0) ||
                           (b[0] == 'M' && b[1] == 'M' && b[2] == 0 && b[3] == 42));
}

// Whether IFD0 of a TIFF stream names `tag` (nothing is read past the stream's end).
bool ifd0Has(std::span<const std::uint8_t> b, std::uint16_t tag) {
  const bool little = b[0] == 'I';
  auto u16 = [&](std::size_t at) -> std::uint32_t {
    const std::uint32_t first = b[at];
    const std::uint32_t second = b[at + 1];
    return little ? (first | second << 8) : (first << 8 | second);
  };
  auto u32 = [&](std::size_t at) -> std::uint32_t {
    return little ? (u16(at) | u16(at + 2) << 16) : (u16(at) << 16 | u16(at + 2));
  };
  const std::size_t ifd = u32(4);
  if (ifd + 2 > b.size()) return true;  // can't tell: say yes, and let Exiv2 decide
  const std::size_t count = u16(ifd);
  if (ifd + 2 + count * 12 > b.size()) return true;
  for (std::size_t i = 0; i < count; ++i) {
    if (u16(ifd + 2 + i * 12) == tag) return true;
  }
  return false;
}

// Exiv2's EXIF parser over a block; the decoded EXIF, empty when it can't tell the byte order.
Exiv2::ExifData decodeExif(const std::vector<std::uint8_t>& block) {
  Exiv2::ExifData exif;
  const Exiv2::ByteOrder order =
      Exiv2::ExifParser::decode(exif, block.data(), static_cast<std::uint32_t>(block.size()));
  // Exiv2's JPEG reader drops EXIF whose byte order it can't tell.
  if (order == Exiv2::invalidByteOrder) exif.clear();
  return exif;
}

// The maker note's lens, serial number and sizes, decoded by Exiv2 from a maker-note stream
// (MakerNoteStream), into fields whose EXIF part is read. False when Exiv2 throws.
bool takeMakerFields(const std::vector<std::uint8_t>& stream, ImageFields& f) {
  try {
    ImageFields maker = ExifPick::pick(decodeExif(stream));
    f.makerLens = std::move(maker.makerLens);
    f.makerSerial = std::move(maker.makerSerial);
    if (maker.makerIso) f.makerIso = maker.makerIso;
    f.makerWidth = maker.makerWidth;
    f.makerHeight = maker.makerHeight;
    f.makerNote = false;
    return true;
  } catch (...) {
    return false;
  }
}

// The quick path for TIFF-based RAW files (ARW, NEF, PEF, ORF…): IFD0 and the EXIF IFD read the
// quick way, when the photo's size is in EXIF and the maker note could add nothing. DNG files
// (whose size is the default crop of the raw image's IFD) and TIFF images (whose size is the
// primary image's, as Exiv2 picks it) are left to Exiv2. Nothing when Exiv2 must decide.
std::optional<Path> quickTiffRaw(std::span<const std::uint8_t> bytes, FileKind kind,
                                 const icu::TimeZone& zone, MetadataMap& out) {
  constexpr std::uint16_t kDngVersion = 0xc612;
  if (kind != FileKind::raw || !looksLikeTiff(bytes) || ifd0Has(bytes, kDngVersion)) {
    return std::nullopt;
  }
  ImageFields f;
  bool makerNote = false;
  if (!TiffReader::readTiff(bytes, TiffReader::TiffStart::ifd0, true, f, makerNote)) {
    return std::nullopt;
  }
  if (f.defaultCrop || !f.pixelX || !f.pixelX->first || !f.pixelY || !f.pixelY->first) {
    return std::nullopt;
  }
  Path path = Path::quickTiffRaw;
  if (makerNote && TiffReader::makerNoteCouldAdd(f)) {
    // The maker note alone goes to Exiv2, as for a JPEG's.
    const auto stream = MakerNoteStream::build(bytes, f.make ? f.make->text : std::string());
    if (!stream) return std::nullopt;
    if (!stream->empty()) {
      if (!takeMakerFields(*stream, f)) return std::nullopt;
      path = Path::tiffRawMakerNote;
    }
  }
  ImageFieldsMapping::toMetadata(f, kind, zone, out);
  return path;
}

// Maps what the quick JPEG path found, first running Exiv2's EXIF parser on the maker note or on
// the whole EXIF block when it left them to it. Nothing when Exiv2's whole parse must decide.
std::optional<Path> mapJpeg(JpegSegments::Parts& parts, FileKind kind, const icu::TimeZone& zone,
                            MetadataMap& out) {
  Path path = Path::quickJpeg;
  if (!parts.makerNoteStream.empty()) {
    if (!takeMakerFields(parts.makerNoteStream, parts.fields)) return std::nullopt;
    path = Path::jpegMakerNote;
  } else if (parts.exifForExiv2) {
    try {
      ImageFields fields = ExifPick::pick(decodeExif(parts.exif));
      fields.byline = std::move(parts.fields.byline);
      fields.city = std::move(parts.fields.city);
      fields.subLocation = std::move(parts.fields.subLocation);
      fields.objectName = std::move(parts.fields.objectName);
      fields.headline = std::move(parts.fields.headline);
      fields.imageWidth = parts.fields.imageWidth;
      fields.imageHeight = parts.fields.imageHeight;
      parts.fields = std::move(fields);
    } catch (...) {
      return std::nullopt;
    }
    path = Path::jpegExifParser;
  } else if (needsMakerSize(parts.fields, kind)) {
    // A JPEG under a RAW file's name: its size may be in the maker note, which is read alone.
    const ImageFields& f = parts.fields;
    const auto stream =
        MakerNoteStream::build(parts.exif, f.make ? f.make->text : std::string(), false);
    if (!stream) return std::nullopt;
    if (stream->empty()) {
      parts.fields.makerNote = false;
    } else {
      if (!takeMakerFields(*stream, parts.fields)) return std::nullopt;
      path = Path::jpegMakerNote;
    }
  }
  if (needsMakerSize(parts.fields, kind)) return std::nullopt;
  ImageFieldsMapping::toMetadata(parts.fields, kind, zone, out);
  return path;
}

// Reads up to `size` bytes at the file's start into `buffer`, which is left holding what was read.
void readHead(int fd, std::size_t size, std::vector<std::uint8_t>& buffer) {
  buffer.resize(size);
  const ssize_t n = ::pread(fd, buffer.data(), buffer.size(), 0);
  buffer.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
}

}  // namespace

std::optional<Path> readFile(int fd, const std::filesystem::path& path, FileKind kind,
                             const icu::TimeZone& zone, MetadataMap& out) {
  thread_local std::vector<std::uint8_t> head;
  thread_local std::vector<std::uint8_t> more;
  readHead(fd, kHeadBytes, head);
  std::optional<JpegSegments::Parts> quick;
  if (JpegSegments::looksLikeJpeg(head)) {
    quick = JpegSegments::read([&](std::uint64_t offset, std::size_t size) {
      if (offset <= head.size() && size <= head.size() - offset) {
        return std::span<const std::uint8_t>(head).subspan(static_cast<std::size_t>(offset), size);
      }
      more.resize(size);
      const ssize_t got = ::pread(fd, more.data(), size, static_cast<off_t>(offset));
      return std::span<const std::uint8_t>(more.data(),
                                           got > 0 ? static_cast<std::size_t>(got) : 0);
    });
  }
  if (!quick && kind == FileKind::raw && looksLikeTiff(head)) {
    // A RAW file's IFD0 and EXIF IFD sit near its start; what lies past the head (a maker
    // note, the image) is not needed unless the quick path gives up.
    if (head.size() == kHeadBytes) readHead(fd, kRawHeadBytes, head);  // the file is longer
    if (const auto p = quickTiffRaw(head, kind, zone, out)) return p;
  }
  if (quick) {
    if (const auto p = mapJpeg(*quick, kind, zone, out)) return p;
  }
  if (BmffExif::looksLikeBmff(head)) {
    const MappedFile whole(path);
    if (quickBmff(whole.bytes(), kind, zone, out)) return Path::quickBmff;
  }
  return std::nullopt;
}

std::optional<Path> readBytes(std::span<const std::uint8_t> bytes, FileKind kind,
                              const icu::TimeZone& zone, MetadataMap& out) {
  if (JpegSegments::looksLikeJpeg(bytes)) {
    auto quick = JpegSegments::read([&](std::uint64_t offset, std::size_t size) {
      if (offset > bytes.size()) return std::span<const std::uint8_t>();
      return bytes.subspan(static_cast<std::size_t>(offset),
                           std::min<std::size_t>(size, bytes.size() - offset));
    });
    if (quick) {
      if (const auto p = mapJpeg(*quick, kind, zone, out)) return p;
    }
  }
  if (BmffExif::looksLikeBmff(bytes) && quickBmff(bytes, kind, zone, out)) return Path::quickBmff;
  return quickTiffRaw(bytes.first(std::min(bytes.size(), kRawHeadBytes)), kind, zone, out);
}

}  // namespace tessane::QuickPaths
