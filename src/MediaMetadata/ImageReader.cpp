#include "ImageReader.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "BmffExif.h"
#include "ImageFields.h"
#include "IptcFields.h"
#include "JpegSegments.h"
#include "LensEntry.h"
#include "MakerNoteStream.h"
#include "MetadataText.h"
#include "RenameIO/RegularFile.h"
#include "TiffReader.h"

namespace tessane::ImageReader {
namespace {

using Exiv2::Exifdatum;

// What the quick path reads at once: the markers and EXIF of most camera JPEGs; what lies past
// it (a long EXIF segment with a large thumbnail) takes one more read.
constexpr std::size_t kHeadBytes = 16 * 1024;
// What the quick path reads of a TIFF-based RAW file.
constexpr std::size_t kRawHeadBytes = 256 * 1024;

// The IFDs are told apart by Exiv2's internal ids, found once from known keys.
struct Groups {
  int image = -1;
  int photo = -1;
  // Maker-note serial numbers, in order of preference: (ifd id, tag).
  std::vector<std::pair<int, std::uint16_t>> makerSerials;
  // Nikon's older serial number, written "NO= 1005a431".
  std::pair<int, std::uint16_t> nikonSerialNo{-1, 0};
  // Panasonic's maker note: the photo's width and height.
  int panasonic = -1;
};

const Groups& groups() {
  static const Groups g = [] {
    Groups out;
    out.image = Exiv2::ExifKey("Exif.Image.Make").ifdId();
    out.photo = Exiv2::ExifKey("Exif.Photo.FNumber").ifdId();
    out.panasonic = Exiv2::ExifKey("Exif.Panasonic.ImageWidth").ifdId();
    for (const char* key :
         {"Exif.Canon.SerialNumber", "Exif.Nikon3.SerialNumber", "Exif.Nikon3.SerialNO",
          "Exif.Fujifilm.SerialNumber", "Exif.OlympusEq.SerialNumber", "Exif.Olympus.SerialNumber",
          "Exif.Olympus.SerialNumber2", "Exif.Pentax.SerialNumber",
          "Exif.Panasonic.InternalSerialNumber", "Exif.Sigma.SerialNumber"}) {
      try {
        const Exiv2::ExifKey k(key);
        out.makerSerials.emplace_back(k.ifdId(), k.tag());
        if (std::string_view(key) == "Exif.Nikon3.SerialNO")
          out.nikonSerialNo = {k.ifdId(), k.tag()};
      } catch (...) {
        // A key this Exiv2 doesn't know is simply not looked for.
      }
    }
    return out;
  }();
  return g;
}

std::optional<double> rational(const Exifdatum& d) {
  if (d.count() < 1) return std::nullopt;
  double v = 0;
  // Exiv2 turns unsigned rationals into signed ones on the way out; read them as they are.
  if (const auto* u = dynamic_cast<const Exiv2::URationalValue*>(&d.value())) {
    const Exiv2::URational r = u->value_.front();
    if (r.second == 0) return std::nullopt;
    v = static_cast<double>(r.first) / static_cast<double>(r.second);
  } else {
    const Exiv2::Rational r = d.toRational(0);
    if (r.second == 0) return std::nullopt;
    v = static_cast<double>(r.first) / static_cast<double>(r.second);
  }
  if (!std::isfinite(v) || v <= 0) return std::nullopt;
  return v;
}

std::optional<std::int64_t> positiveInteger(const Exifdatum& d, long n) {
  if (d.count() <= n) return std::nullopt;
  return TiffReader::positiveInteger(d.toFloat(n));
}

std::string text(const Exifdatum& d) {
  const Exiv2::TypeId type = d.typeId();
  if (type == Exiv2::undefined || type == Exiv2::unsignedByte) {
    // Some maker notes keep texts as bytes (Panasonic's serial number): read them as characters.
    std::string bytes(static_cast<std::size_t>(d.size()), '\0');
    if (!bytes.empty()) d.copy(reinterpret_cast<Exiv2::byte*>(bytes.data()), Exiv2::bigEndian);
    return bytes;
  }
  return d.toString();
}

// A maker note's serial number as text: the first number of a numeric one (a CRW file holds a
// second, unrelated number after it), the characters of a byte one from its first that is not
// NUL (some Panasonic cameras start it with NULs), and Nikon's "NO= 1005a431" without its label,
// which is the number those cameras write as the EXIF body serial number when they write one.
std::string serialText(const Exifdatum& d, bool nikonLabel) {
  switch (d.typeId()) {
    case Exiv2::unsignedShort:
    case Exiv2::unsignedLong:
    case Exiv2::signedShort:
    case Exiv2::signedLong:
      return d.toString(0);
    default:
      break;
  }
  std::string t = text(d);
  t.erase(0, std::min(t.size(), t.find_first_not_of('\0')));
  if (nikonLabel && t.rfind("NO=", 0) == 0) t.erase(0, 3);
  return t;
}

enum class Form { text, ratio, integers };

void keepFirst(std::optional<ExifEntry>& slot, const Exifdatum& d, Form form) {
  if (slot || d.count() <= 0) return;
  ExifEntry e;
  try {
    switch (form) {
      case Form::text:
        e.text = text(d);
        break;
      case Form::ratio:
        e.ratio = rational(d);
        break;
      case Form::integers:
        e.first = positiveInteger(d, 0);
        e.second = positiveInteger(d, 1);
        break;
    }
  } catch (...) {
    return;  // a value Exiv2 can't convert is left out
  }
  slot = std::move(e);
}

// The EXIF entries the reader uses, found in one pass over Exiv2's EXIF data.
ImageFields pick(const Exiv2::ExifData& exif) {
  const Groups& g = groups();
  ImageFields f;
  std::size_t makerSerialRank = SIZE_MAX;
  for (const Exifdatum& d : exif) {
    const int ifd = d.ifdId();
    const std::uint16_t tag = d.tag();
    if (ifd == g.image) {
      switch (tag) {
        case 0x010f:
          keepFirst(f.make, d, Form::text);
          break;
        case 0x0110:
          keepFirst(f.model, d, Form::text);
          break;
        case 0x013b:
          keepFirst(f.artist, d, Form::text);
          break;
        case 0x0132:
          keepFirst(f.dateTime, d, Form::text);
          break;
        case 0xc62f:
          keepFirst(f.cameraSerial, d, Form::text);
          break;
        case 0xc620:
          keepFirst(f.defaultCrop, d, Form::integers);
          break;
        default:
          break;
      }
    } else if (ifd == g.photo) {
      switch (tag) {
        case 0x829a:
          keepFirst(f.exposure, d, Form::ratio);
          break;
        case 0x829d:
          keepFirst(f.fNumber, d, Form::ratio);
          break;
        case 0x920a:
          keepFirst(f.focal, d, Form::ratio);
          break;
        case 0x8827:
          keepFirst(f.isoRatings, d, Form::integers);
          break;
        case 0x8833:
          keepFirst(f.isoSpeed, d, Form::integers);
          break;
        case 0x9003:
          keepFirst(f.original, d, Form::text);
          break;
        case 0x9004:
          keepFirst(f.digitized, d, Form::text);
          break;
        case 0x9290:
          keepFirst(f.subSec, d, Form::text);
          break;
        case 0x9291:
          keepFirst(f.subSecOriginal, d, Form::text);
          break;
        case 0x9292:
          keepFirst(f.subSecDigitized, d, Form::text);
          break;
        case 0xa002:
          keepFirst(f.pixelX, d, Form::integers);
          break;
        case 0xa003:
          keepFirst(f.pixelY, d, Form::integers);
          break;
        case 0xa431:
          keepFirst(f.bodySerial, d, Form::text);
          break;
        case 0xa434:
          keepFirst(f.lensModel, d, Form::text);
          break;
        default:
          break;
      }
    } else if (ifd == g.panasonic && (tag == 0x004b || tag == 0x004c)) {
      keepFirst(tag == 0x004b ? f.makerWidth : f.makerHeight, d, Form::integers);
    } else if (tag == 0xc620) {
      // The raw image's IFD of a DNG (SubImage1 and so on) holds its default crop.
      if (d.groupName().rfind("SubImage", 0) == 0) keepFirst(f.defaultCrop, d, Form::integers);
    } else {
      for (std::size_t i = 0; i < g.makerSerials.size() && i < makerSerialRank; ++i) {
        if (g.makerSerials[i].first == ifd && g.makerSerials[i].second == tag && d.count() > 0) {
          // An empty one (a camera that wasn't given its number) leaves room for the others.
          std::string serial;
          try {
            serial = serialText(d, g.makerSerials[i] == g.nikonSerialNo);
          } catch (...) {
            break;  // a value Exiv2 can't convert is left out
          }
          if (!MetadataText::clean(serial)) break;
          f.makerSerial = ExifEntry{std::move(serial), {}, {}, {}};
          makerSerialRank = i;
          break;
        }
      }
    }
  }
  // The maker note's lens, only when the EXIF lens model doesn't name one.
  const bool exifLens = f.lensModel && [&] {
    const auto t = MetadataText::clean(f.lensModel->text);
    return t && ImageFieldsMapping::isLensName(*t);
  }();
  if (!exifLens) {
    try {
      const auto guess = LensEntry::find(exif);
      if (guess != exif.end()) f.makerLens = guess->print(&exif);
    } catch (...) {
    }
  }
  return f;
}

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
      if (d.ifdId() != groups().image) continue;
      exif.add(Exiv2::ExifKey(d.tag(), "Photo"), &d.value());
    }
  } catch (...) {
  }
}

// Maps the whole file read-only; empty when it can't.
class MappedFile {
 public:
  explicit MappedFile(const std::filesystem::path& path) {
    const RegularFile file = RegularFile::open(path);
    if (!file || file.size() <= 0) return;
    const auto size = static_cast<std::size_t>(file.size());
    void* p = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.fd(), 0);
    if (p != MAP_FAILED) {
      data_ = static_cast<const std::uint8_t*>(p);
      size_ = size;
    }
  }
  ~MappedFile() {
    if (data_ != nullptr) ::munmap(const_cast<std::uint8_t*>(data_), size_);
  }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  std::span<const std::uint8_t> bytes() const { return {data_, size_}; }

 private:
  const std::uint8_t* data_ = nullptr;
  std::size_t size_ = 0;
};

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
    ImageFields fields = pick(exif);
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

// The quick path for TIFF-based RAW files (ARW, NEF, PEF, ORF…): IFD0 and the EXIF IFD read the
// quick way, when the photo's size is in EXIF and the maker note could add nothing. DNG files
// (whose size is the default crop of the raw image's IFD) and TIFF images (whose size is the
// primary image's, as Exiv2 picks it) are left to Exiv2. False when Exiv2 must decide.
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
// (JpegSegments::makerNoteStream), into fields whose EXIF part is read. False when Exiv2 throws.
bool takeMakerFields(const std::vector<std::uint8_t>& stream, ImageFields& f) {
  try {
    ImageFields maker = pick(decodeExif(stream));
    f.makerLens = std::move(maker.makerLens);
    f.makerSerial = std::move(maker.makerSerial);
    f.makerWidth = maker.makerWidth;
    f.makerHeight = maker.makerHeight;
    f.makerNote = false;
    return true;
  } catch (...) {
    return false;
  }
}

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
      ImageFields fields = pick(decodeExif(parts.exif));
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

}  // namespace

Path read(const std::filesystem::path& path, FileKind kind, const icu::TimeZone& zone,
          MetadataMap& out) {
  {
    // Most camera files are JPEGs: try the quick path on the file's head first. Nothing but a
    // regular file is read (a pipe named like a photo would never answer).
    const RegularFile file = RegularFile::open(path);
    if (!file) return Path::none;
    const int fd = file.fd();
    thread_local std::vector<std::uint8_t> head;
    thread_local std::vector<std::uint8_t> more;
    head.resize(kHeadBytes);
    const ssize_t n = ::pread(fd, head.data(), head.size(), 0);
    head.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
    std::optional<JpegSegments::Parts> quick;
    if (JpegSegments::looksLikeJpeg(head)) {
      quick = JpegSegments::read([&](std::uint64_t offset, std::size_t size) {
        if (offset <= head.size() && size <= head.size() - offset) {
          return std::span<const std::uint8_t>(head).subspan(static_cast<std::size_t>(offset),
                                                             size);
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
      if (head.size() == kHeadBytes) {  // the file is longer than what was read
        head.resize(kRawHeadBytes);
        const ssize_t got = ::pread(fd, head.data(), head.size(), 0);
        head.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
      }
      if (const auto p = quickTiffRaw(head, kind, zone, out)) return *p;
    }
    if (quick) {
      if (const auto p = mapJpeg(*quick, kind, zone, out)) return *p;
    }
    if (BmffExif::looksLikeBmff(head)) {
      const MappedFile whole(path);
      if (quickBmff(whole.bytes(), kind, zone, out)) return Path::quickBmff;
    }
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
  if (quickPath && JpegSegments::looksLikeJpeg(bytes)) {
    auto quick = JpegSegments::read([&](std::uint64_t offset, std::size_t size) {
      if (offset > bytes.size()) return std::span<const std::uint8_t>();
      return bytes.subspan(static_cast<std::size_t>(offset),
                           std::min<std::size_t>(size, bytes.size() - offset));
    });
    if (quick) {
      if (const auto p = mapJpeg(*quick, kind, zone, out)) return *p;
    }
  }
  if (quickPath && BmffExif::looksLikeBmff(bytes) && quickBmff(bytes, kind, zone, out)) {
    return Path::quickBmff;
  }
  if (quickPath) {
    if (const auto p =
            quickTiffRaw(bytes.first(std::min(bytes.size(), kRawHeadBytes)), kind, zone, out)) {
      return *p;
    }
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
