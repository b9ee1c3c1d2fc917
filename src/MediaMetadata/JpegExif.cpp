#include "JpegExif.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "IptcFields.h"
#include "MetadataText.h"

namespace tessane::JpegExif {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kMaxSegments = 512;
constexpr std::string_view kXmpId("http://ns.adobe.com/xap/1.0/\0", 29);
constexpr std::uint16_t kMaxEntries = 1024;

// Thrown inside this file only, when the quick path gives up.
struct GiveUp {};

class Tiff {
 public:
  explicit Tiff(Bytes b) : b_(b) {
    if (b_.size() < 8) throw GiveUp{};
    if (b_[0] == 'I' && b_[1] == 'I') {
      little_ = true;
    } else if (b_[0] != 'M' || b_[1] != 'M') {
      throw GiveUp{};
    }
    if (u16(2) != 42) throw GiveUp{};
  }

  std::uint16_t u16(std::uint64_t at) const {
    need(at, 2);
    return little_ ? static_cast<std::uint16_t>(b_[at] | b_[at + 1] << 8)
                   : static_cast<std::uint16_t>(b_[at] << 8 | b_[at + 1]);
  }
  std::uint32_t u32(std::uint64_t at) const {
    need(at, 4);
    const std::uint32_t a = b_[at], b = b_[at + 1], c = b_[at + 2], d = b_[at + 3];
    return little_ ? (a | b << 8 | c << 16 | d << 24) : (a << 24 | b << 16 | c << 8 | d);
  }
  void need(std::uint64_t at, std::uint64_t n) const {
    if (at > b_.size() || n > b_.size() - at) throw GiveUp{};
  }
  Bytes bytes() const { return b_; }
  bool little() const { return little_; }

 private:
  Bytes b_;
  bool little_ = false;
};

struct Entry {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;
  std::uint32_t count = 0;
  std::uint64_t data = 0;  // where the value starts
};

std::uint64_t typeSize(std::uint16_t type) {
  switch (type) {
    case 1:
    case 2:
    case 6:
    case 7:
      return 1;
    case 3:
    case 8:
      return 2;
    case 4:
    case 9:
    case 11:
    case 13:
      return 4;
    case 5:
    case 10:
    case 12:
      return 8;
    default:
      return 0;
  }
}

std::vector<Entry> readIfd(const Tiff& t, std::uint32_t offset) {
  const std::uint16_t n = t.u16(offset);
  if (n > kMaxEntries) throw GiveUp{};
  std::vector<Entry> out;
  out.reserve(n);
  for (std::uint32_t i = 0; i < n; ++i) {
    const std::uint64_t at = offset + 2 + 12ull * i;
    Entry e{t.u16(at), t.u16(at + 2), t.u32(at + 4), at + 8};
    const std::uint64_t size = typeSize(e.type) * e.count;
    if (size > 4) e.data = t.u32(at + 8);
    out.push_back(e);
  }
  return out;
}

// The value's bytes, checked to lie within the stream.
Bytes valueBytes(const Tiff& t, const Entry& e) {
  const std::uint64_t size = typeSize(e.type) * e.count;
  t.need(e.data, size);
  return t.bytes().subspan(static_cast<std::size_t>(e.data), static_cast<std::size_t>(size));
}

ExifEntry asText(const Tiff& t, const Entry& e) {
  if (e.type != 2) throw GiveUp{};
  const Bytes b = valueBytes(t, e);
  ExifEntry out;
  out.text.assign(reinterpret_cast<const char*>(b.data()), b.size());
  const std::size_t nul = out.text.find('\0');
  if (nul != std::string::npos) out.text.resize(nul);
  return out;
}

ExifEntry asRatio(const Tiff& t, const Entry& e) {
  if (e.type != 5 && e.type != 10) throw GiveUp{};
  valueBytes(t, e);
  const std::uint32_t num = t.u32(e.data);
  const std::uint32_t den = t.u32(e.data + 4);
  ExifEntry out;
  if (den == 0) return out;
  double v = 0;
  if (e.type == 5) {
    v = static_cast<double>(num) / static_cast<double>(den);
  } else {
    v = static_cast<double>(static_cast<std::int32_t>(num)) /
        static_cast<double>(static_cast<std::int32_t>(den));
  }
  if (std::isfinite(v) && v > 0) out.ratio = v;
  return out;
}

// SHORT, LONG and their signed forms, each element as Exiv2 gives it as a float.
ExifEntry asIntegers(const Tiff& t, const Entry& e) {
  if (e.type != 3 && e.type != 4 && e.type != 8 && e.type != 9) throw GiveUp{};
  valueBytes(t, e);
  const auto element = [&](std::uint32_t i) -> std::optional<std::int64_t> {
    if (i >= e.count) return std::nullopt;
    float v = 0;
    switch (e.type) {
      case 3:
        v = static_cast<float>(t.u16(e.data + 2ull * i));
        break;
      case 4:
        v = static_cast<float>(t.u32(e.data + 4ull * i));
        break;
      case 8:
        v = static_cast<float>(static_cast<std::int16_t>(t.u16(e.data + 2ull * i)));
        break;
      default:
        v = static_cast<float>(static_cast<std::int32_t>(t.u32(e.data + 4ull * i)));
        break;
    }
    return positiveInteger(v);
  };
  ExifEntry out;
  out.first = element(0);
  out.second = element(1);
  return out;
}

// Each needed tag is taken once; a second copy of it means Exiv2's order decides, so give up.
void take(std::optional<ExifEntry>& slot, ExifEntry value) {
  if (slot) throw GiveUp{};
  slot = std::move(value);
}

bool cleanNonEmpty(const std::optional<ExifEntry>& e) {
  return e && MetadataText::clean(e->text).has_value();
}

// Makers whose maker note Exiv2 reads a serial number from.
bool makerKeepsSerial(const std::optional<ExifEntry>& make) {
  if (!make) return true;  // unknown: let Exiv2 decide
  std::string m = make->text;
  for (char& c : m)
    c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  for (const char* maker : {"canon", "nikon", "fuji", "olympus", "om digital", "pentax", "ricoh",
                            "asahi", "panasonic", "leica", "sigma", "foveon"}) {
    if (m.find(maker) != std::string::npos) return true;
  }
  return false;
}

void readExifIfd(const Tiff& t, std::uint32_t offset, ImageFields& f, bool& makerNote) {
  for (const Entry& e : readIfd(t, offset)) {
    if (e.count == 0) continue;
    switch (e.tag) {
      case 0x829a:
        take(f.exposure, asRatio(t, e));
        break;
      case 0x829d:
        take(f.fNumber, asRatio(t, e));
        break;
      case 0x920a:
        take(f.focal, asRatio(t, e));
        break;
      case 0x8827:
        take(f.isoRatings, asIntegers(t, e));
        break;
      case 0x8833:
        take(f.isoSpeed, asIntegers(t, e));
        break;
      case 0x9003:
        take(f.original, asText(t, e));
        break;
      case 0x9004:
        take(f.digitized, asText(t, e));
        break;
      case 0x9290:
        take(f.subSec, asText(t, e));
        break;
      case 0x9291:
        take(f.subSecOriginal, asText(t, e));
        break;
      case 0x9292:
        take(f.subSecDigitized, asText(t, e));
        break;
      case 0xa002:
        take(f.pixelX, asIntegers(t, e));
        break;
      case 0xa003:
        take(f.pixelY, asIntegers(t, e));
        break;
      case 0xa431:
        take(f.bodySerial, asText(t, e));
        break;
      case 0xa434:
        take(f.lensModel, asText(t, e));
        break;
      case 0x927c:
        makerNote = true;
        break;
      default:
        break;
    }
  }
}

void readStream(Bytes stream, TiffStart start, bool tiffIptcMatters, ImageFields& f,
                bool& makerNote) {
  const Tiff t(stream);
  if (start == TiffStart::exifIfd) return readExifIfd(t, t.u32(4), f, makerNote);
  std::optional<std::uint32_t> exifIfd;
  for (const Entry& e : readIfd(t, t.u32(4))) {
    if (e.count == 0) continue;
    switch (e.tag) {
      case 0x010f:
        take(f.make, asText(t, e));
        break;
      case 0x0110:
        take(f.model, asText(t, e));
        break;
      case 0x013b:
        take(f.artist, asText(t, e));
        break;
      case 0x0132:
        take(f.dateTime, asText(t, e));
        break;
      case 0xc62f:
        take(f.cameraSerial, asText(t, e));
        break;
      case 0xc620:
        throw GiveUp{};  // a DNG's crop
      case 0x83bb:
      case 0x8649:
        // IPTC kept inside the TIFF stream: Exiv2 reads it from there for some formats.
        if (tiffIptcMatters) throw GiveUp{};
        break;
      case 0x8769:
        if (exifIfd || (e.type != 4 && e.type != 13) || e.count != 1) throw GiveUp{};
        exifIfd = t.u32(e.data);
        break;
      default:
        break;
    }
  }
  if (exifIfd) readExifIfd(t, *exifIfd, f, makerNote);
}

// Reads the EXIF fields; true when the maker note could add to them.
bool readExif(Bytes exif, ImageFields& f) {
  bool makerNote = false;
  readStream(exif, TiffStart::ifd0, false, f, makerNote);
  f.makerNote = makerNote;
  return makerNote && makerNoteCouldAdd(f);
}

// The EXIF entries that Exiv2's maker-note decoders and lens printers may consult besides the
// maker note itself.
constexpr std::uint16_t kLensContext[] = {
    0x829d,  // FNumber
    0x9202,  // ApertureValue
    0x9205,  // MaxApertureValue
    0x920a,  // FocalLength
    0x927c,  // MakerNote
    0xa405,  // FocalLengthIn35mmFilm
    0xa432,  // LensSpecification
    0xa433,  // LensMake
    0xa434,  // LensModel
};

class StreamWriter {
 public:
  StreamWriter(std::vector<std::uint8_t>& out, bool little) : out_(out), little_(little) {}
  void u16(std::uint16_t v) {
    const std::uint8_t lo = static_cast<std::uint8_t>(v & 0xFF),
                       hi = static_cast<std::uint8_t>(v >> 8);
    out_.push_back(little_ ? lo : hi);
    out_.push_back(little_ ? hi : lo);
  }
  void u32(std::uint32_t v) {
    u16(static_cast<std::uint16_t>(little_ ? v & 0xFFFF : v >> 16));
    u16(static_cast<std::uint16_t>(little_ ? v >> 16 : v & 0xFFFF));
  }
  void patch32(std::size_t at, std::uint32_t v) {
    std::vector<std::uint8_t> bytes;
    StreamWriter(bytes, little_).u32(v);
    std::copy(bytes.begin(), bytes.end(), out_.begin() + static_cast<std::ptrdiff_t>(at));
  }

 private:
  std::vector<std::uint8_t>& out_;
  bool little_;
};

// Appends to `out` an IFD of the entries of the IFD at `offset` that `keep` accepts, copied
// byte for byte (their values stay where they are); returns where it starts.
template <typename Keep>
std::uint32_t appendIfd(const Tiff& t, std::uint32_t offset, std::vector<std::uint8_t>& out,
                        Keep&& keep) {
  if (out.size() % 2 != 0) out.push_back(0);
  const auto start = static_cast<std::uint32_t>(out.size());
  const std::vector<Entry> entries = readIfd(t, offset);
  StreamWriter w(out, t.little());
  w.u16(0);
  std::uint16_t kept = 0;
  for (std::uint32_t i = 0; i < entries.size(); ++i) {
    if (!keep(entries[i])) continue;
    const std::uint64_t at = offset + 2 + 12ull * i;
    out.insert(out.end(), t.bytes().begin() + static_cast<std::ptrdiff_t>(at),
               t.bytes().begin() + static_cast<std::ptrdiff_t>(at + 12));
    ++kept;
  }
  w.u32(0);  // no next IFD
  std::vector<std::uint8_t> count;
  StreamWriter(count, t.little()).u16(kept);
  std::copy(count.begin(), count.end(), out.begin() + start);
  return start;
}

// The makers whose maker note is thinned too, in place: its IFD keeps only the entries that
// Exiv2 names the lens or the serial number from, those its lens printing consults, and a
// Panasonic's image size. The rest (shot settings, picture styles, AF points: arrays Exiv2 turns
// into dozens of entries each) is cut, which takes two thirds off their decoding. Every sample of
// these makers reads the same either way.
struct MakerNoteLayout {
  std::string_view make;       // how the camera's make starts
  std::string_view signature;  // how the maker note starts
  enum class Ifd { atStart, afterSignature, ownTiffHeaderAt10, littleEndianOffsetAt8 } ifd;
  std::array<std::uint16_t, 8> keep;  // zeros are unused slots
  // Kept entries that Exiv2 only consults, and names nothing from: a maker note that holds none
  // of the other kept entries gives no lens, serial number or size.
  std::array<std::uint16_t, 2> context = {};
};
constexpr MakerNoteLayout kThinned[] = {
    // CameraSettings (lens type, focal range, apertures), FocalLength, SerialNumber, ModelID,
    // LensModel, InternalSerialNumber.
    {"Canon",
     "",
     MakerNoteLayout::Ifd::atStart,
     {0x0001, 0x0002, 0x000c, 0x0010, 0x0095, 0x0096},
     {0x0002, 0x0010}},
    // Version, SerialNumber and ShutterCount (the keys to LensData), LensType, Lens, LensData,
    // SerialNO.
    {"NIKON",
     std::string_view("Nikon\0\x02", 7),
     MakerNoteLayout::Ifd::ownTiffHeaderAt10,
     {0x0001, 0x001d, 0x00a7, 0x0083, 0x0084, 0x0098, 0x00a0},
     {0x0001, 0x00a7}},
    // InternalSerialNumber, ImageWidth, ImageHeight, LensType, LensSerialNumber.
    {"Panasonic",
     std::string_view("Panasonic\0\0\0", 12),
     MakerNoteLayout::Ifd::afterSignature,
     {0x0025, 0x004b, 0x004c, 0x0050, 0x0051, 0x0052}},
    // LensID, LensSpec.
    {"SONY",
     std::string_view("SONY DSC \0\0\0", 12),
     MakerNoteLayout::Ifd::afterSignature,
     {0xb027, 0xb02a}},
    // Equipment (lens type and model, serial number), SerialNumber, the older SerialNumber2;
    // three generations.
    {"OLYMPUS",
     std::string_view("OLYMPUS\0II\x03\0", 12),
     MakerNoteLayout::Ifd::afterSignature,
     {0x2010, 0x0404, 0x101a}},
    {"OLYMPUS",
     std::string_view("OLYMP\0\x01\0", 8),
     MakerNoteLayout::Ifd::afterSignature,
     {0x2010, 0x0404, 0x101a}},
    {"OLYMPUS",
     std::string_view("OLYMP\0\x02\0", 8),
     MakerNoteLayout::Ifd::afterSignature,
     {0x2010, 0x0404, 0x101a}},
    // SerialNumber (Exiv2 names no lens from a Fujifilm maker note).
    {"FUJIFILM", "FUJIFILM", MakerNoteLayout::Ifd::littleEndianOffsetAt8, {0x0010}},
};

// Canon's camera settings name the lens type in their 23rd element; older cameras write fewer.
constexpr std::uint16_t kCanonSettings = 0x0001;
constexpr std::uint32_t kCanonLensTypeIndex = 22;

// Whether a kept maker-note entry is one Exiv2 may name the lens, the serial number or the size
// from, rather than one it only consults.
bool mayName(const MakerNoteLayout& layout, std::uint16_t tag, std::uint16_t type,
             std::uint32_t count) {
  if (std::find(layout.context.begin(), layout.context.end(), tag) != layout.context.end()) {
    return false;
  }
  constexpr std::uint16_t kShort = 3;
  if (layout.make == "Canon" && tag == kCanonSettings && type == kShort) {
    return count > kCanonLensTypeIndex;
  }
  return true;
}

// Thins the maker note of `stream` (see kThinned) when its layout is one of those and everything
// lies where it should; otherwise leaves it whole. False when the maker note, of a known layout,
// holds nothing Exiv2 could name the lens, the serial number or the size from.
// `note`: the maker note's EXIF entry (bytes), as found in the stream.
bool thinMakerNote(std::vector<std::uint8_t>& stream, const Entry& note, std::string_view make) {
  const auto known = [&](const MakerNoteLayout& l) { return make.starts_with(l.make); };
  if (std::none_of(std::begin(kThinned), std::end(kThinned), known)) return true;
  try {
    const Tiff t(stream);
    const Bytes body = valueBytes(t, note);
    const std::uint64_t start = note.data;
    const std::uint64_t noteSize = note.count;
    const MakerNoteLayout* layout = nullptr;
    for (const MakerNoteLayout& l : kThinned) {
      if (layout == nullptr && known(l) && body.size() >= l.signature.size() &&
          std::equal(l.signature.begin(), l.signature.end(), body.begin())) {
        layout = &l;
      }
    }
    if (layout == nullptr) return true;
    // The maker note's IFD, read in the byte order its own header gives, if it has one.
    bool little = t.little();
    std::uint64_t ifd = start;
    switch (layout->ifd) {
      case MakerNoteLayout::Ifd::atStart:
        break;
      case MakerNoteLayout::Ifd::afterSignature:
        ifd += layout->signature.size();
        break;
      case MakerNoteLayout::Ifd::ownTiffHeaderAt10: {
        if (body.size() < 18) return true;
        const Tiff own(body.subspan(10));
        little = own.little();
        ifd += 10 + own.u32(4);
        break;
      }
      case MakerNoteLayout::Ifd::littleEndianOffsetAt8:
        if (body.size() < 12) return true;
        little = true;
        ifd += std::uint32_t{body[8]} | std::uint32_t{body[9]} << 8 |
               std::uint32_t{body[10]} << 16 | std::uint32_t{body[11]} << 24;
        break;
    }
    const auto u16 = [&](std::uint64_t at) {
      t.need(at, 2);
      return little ? static_cast<std::uint16_t>(stream[at] | stream[at + 1] << 8)
                    : static_cast<std::uint16_t>(stream[at] << 8 | stream[at + 1]);
    };
    const auto u32 = [&](std::uint64_t at) {
      return little ? (std::uint32_t{u16(at)} | std::uint32_t{u16(at + 2)} << 16)
                    : (std::uint32_t{u16(at)} << 16 | std::uint32_t{u16(at + 2)});
    };
    const std::uint16_t n = u16(ifd);
    if (n == 0 || n > kMaxEntries || ifd + 2 + 12ull * n + 4 > start + noteSize) {
      return true;
    }
    std::uint16_t kept = 0;
    bool names = false;
    for (std::uint16_t i = 0; i < n; ++i) {
      const std::uint64_t from = ifd + 2 + 12ull * i;
      const std::uint16_t tag = u16(from);
      if (tag == 0 ||
          std::find(layout->keep.begin(), layout->keep.end(), tag) == layout->keep.end())
        continue;
      names = names || mayName(*layout, tag, u16(from + 2), u32(from + 4));
      std::copy_n(stream.begin() + static_cast<std::ptrdiff_t>(from), 12,
                  stream.begin() + static_cast<std::ptrdiff_t>(ifd + 2 + 12ull * kept));
      ++kept;
    }
    // Nothing cut: the IFD stays as it is (some maker notes have no next-IFD link, and their
    // values follow the last entry at once).
    if (kept == n) return names;
    const std::uint64_t end = ifd + 2 + 12ull * kept;
    std::fill_n(stream.begin() + static_cast<std::ptrdiff_t>(end), 4, 0);  // no next IFD
    stream[ifd] = static_cast<std::uint8_t>(little ? kept & 0xFF : kept >> 8);
    stream[ifd + 1] = static_cast<std::uint8_t>(little ? kept >> 8 : kept & 0xFF);
    return names;
  } catch (const GiveUp&) {
    // Something lies outside the block: the maker note stays whole.
    return true;
  }
}

// The EXIF entries a lens may be named from, besides the maker note.
constexpr std::uint16_t kExifLens[] = {0xa432, 0xa433, 0xa434};

// The EXIF block made ready for Exiv2 to decode its maker note alone (see JpegExif.h), or empty
// when the maker note (of a known layout) holds nothing that Exiv2 could name the lens, the serial
// number or the size from, and EXIF names no lens either. With `noteMustFit`, gives up unless the
// maker note lies within the block.
std::vector<std::uint8_t> withMakerNoteOnly(Bytes exif, std::string_view make, bool noteMustFit) {
  const Tiff t(exif);
  std::vector<std::uint8_t> out(exif.begin(), exif.end());
  if (out.size() + 512 > UINT32_MAX) throw GiveUp{};
  std::optional<std::uint32_t> exifIfd;
  const std::uint32_t ifd0 = appendIfd(t, t.u32(4), out, [&](const Entry& e) {
    if (e.tag == 0x8769) exifIfd = t.u32(e.data);
    return e.tag == 0x010f || e.tag == 0x0110 || e.tag == 0x8769;
  });
  if (!exifIfd) throw GiveUp{};
  std::optional<Entry> note;
  bool exifNamesLens = false;
  const std::uint32_t newExif = appendIfd(t, *exifIfd, out, [&](const Entry& e) {
    if (e.tag == 0x927c && typeSize(e.type) == 1 && e.count > 4) note = e;
    if (std::find(std::begin(kExifLens), std::end(kExifLens), e.tag) != std::end(kExifLens)) {
      exifNamesLens = true;
    }
    return std::find(std::begin(kLensContext), std::end(kLensContext), e.tag) !=
           std::end(kLensContext);
  });
  if (noteMustFit && note) valueBytes(t, *note);
  // Point the new IFD0's EXIF entry at the new EXIF IFD, and the header at the new IFD0.
  const Tiff rewritten(out);
  StreamWriter w(out, t.little());
  const std::uint16_t n = rewritten.u16(ifd0);
  for (std::uint32_t i = 0; i < n; ++i) {
    const std::size_t at = ifd0 + 2 + 12u * i;
    if (rewritten.u16(at) == 0x8769) w.patch32(at + 8, newExif);
  }
  w.patch32(4, ifd0);
  if (note && !thinMakerNote(out, *note, make) && !exifNamesLens) out.clear();
  return out;
}

void readIptc(const std::vector<std::uint8_t>& photoshop, ImageFields& f) {
  std::vector<std::uint8_t> iptc;
  const Exiv2::byte* cur = photoshop.data();
  const Exiv2::byte* const end = cur + photoshop.size();
  const Exiv2::byte* record = nullptr;
  std::uint32_t sizeHdr = 0;
  std::uint32_t sizeIptc = 0;
  while (cur < end && Exiv2::Photoshop::locateIptcIrb(cur, static_cast<long>(end - cur), &record,
                                                      &sizeHdr, &sizeIptc) == 0) {
    if (sizeIptc > 0) iptc.insert(iptc.end(), record + sizeHdr, record + sizeHdr + sizeIptc);
    cur = record + sizeHdr + sizeIptc + (sizeIptc & 1);
  }
  if (iptc.empty()) return;
  Exiv2::IptcData data;
  if (Exiv2::IptcParser::decode(data, iptc.data(), static_cast<std::uint32_t>(iptc.size())) != 0)
    return;
  IptcFields::read(data, f);
}

// The image's own XMP packet, decoded as Exiv2's JPEG reader decodes it, in place of the IPTC.
void readXmp(Bytes packet, std::size_t size, ImageFields& f) {
  if (packet.size() != size) throw GiveUp{};
  const std::string_view text(reinterpret_cast<const char*>(packet.data()), packet.size());
  if (!IptcFields::xmpMayHold(text)) return;
  Exiv2::XmpData data;
  try {
    Exiv2::XmpParser::decode(data, std::string(text));
  } catch (...) {
    throw GiveUp{};
  }
  IptcFields::preferXmp(data, f);
}

bool isSof(std::uint8_t m) {
  return (m >= 0xc0 && m <= 0xc3) || (m >= 0xc5 && m <= 0xc7) || (m >= 0xc9 && m <= 0xcb) ||
         (m >= 0xcd && m <= 0xcf);
}

}  // namespace

std::optional<std::vector<std::uint8_t>> makerNoteStream(std::span<const std::uint8_t> tiff,
                                                         std::string_view make, bool noteMustFit) {
  try {
    return withMakerNoteOnly(tiff, make, noteMustFit);
  } catch (...) {
    return std::nullopt;
  }
}

bool makerNoteCouldAdd(const ImageFields& f) {
  const bool lensKnown = f.lensModel && [&] {
    const auto text = MetadataText::clean(f.lensModel->text);
    return text && ImageFieldsMapping::isLensName(*text);
  }();
  const bool serialKnown = cleanNonEmpty(f.bodySerial) || cleanNonEmpty(f.cameraSerial);
  return !lensKnown || (!serialKnown && makerKeepsSerial(f.make));
}

bool readTiff(std::span<const std::uint8_t> stream, TiffStart start, bool tiffIptcMatters,
              ImageFields& fields, bool& makerNote) {
  try {
    ImageFields f = fields;
    readStream(stream, start, tiffIptcMatters, f, makerNote);
    f.makerNote = f.makerNote || makerNote;
    fields = std::move(f);
    return true;
  } catch (...) {
    return false;
  }
}

bool looksLikeJpeg(std::span<const std::uint8_t> head) noexcept {
  return head.size() >= 3 && head[0] == 0xff && head[1] == 0xd8 && head[2] == 0xff;
}

std::optional<std::int64_t> positiveInteger(float v) {
  if (!std::isfinite(v) || v < 1 || v > 4.0e9f) return std::nullopt;
  return static_cast<std::int64_t>(std::lround(v));
}

std::optional<Parts> read(const Fetch& fetch) {
  try {
    Parts parts;
    ImageFields& f = parts.fields;
    std::vector<std::uint8_t>& exif = parts.exif;
    std::vector<std::uint8_t> photoshop;
    bool haveExif = false;
    bool havePhotoshop = false;
    // The first XMP packet (as Exiv2 takes it): where it lies, read only when IPTC needs it.
    std::optional<std::pair<std::uint64_t, std::size_t>> xmp;
    const auto isXmp = [](Bytes payload) {
      return payload.size() >= kXmpId.size() &&
             std::equal(kXmpId.begin(), kXmpId.end(), payload.begin());
    };
    std::uint64_t pos = 2;
    for (std::size_t count = 0;; ++count) {
      if (count == kMaxSegments) throw GiveUp{};
      const Bytes header = fetch(pos, 4);
      if (header.size() < 2 || header[0] != 0xff) throw GiveUp{};
      const std::uint8_t marker = header[1];
      if (marker == 0xda || marker == 0xd9) break;  // the scan or the end: no more metadata
      if (marker == 0xff || marker == 0xd8 || marker == 0x01 ||
          (marker >= 0xd0 && marker <= 0xd7) || marker == 0xc8 || marker == 0xcc ||
          header.size() < 4)
        throw GiveUp{};
      const std::size_t length = static_cast<std::size_t>(header[2] << 8 | header[3]);
      if (length < 2) throw GiveUp{};
      const std::size_t payloadSize = length - 2;
      const std::uint64_t payloadAt = pos + 4;
      if (marker == 0xe1 && !haveExif && payloadSize >= 6) {
        const Bytes p = fetch(payloadAt, payloadSize);
        if (p.size() != payloadSize) throw GiveUp{};
        if (std::memcmp(p.data(), "Exif\0\0", 6) == 0) {
          exif.assign(p.begin() + 6, p.end());
          haveExif = true;
        } else if (!xmp && isXmp(p)) {
          xmp.emplace(payloadAt + kXmpId.size(), payloadSize - kXmpId.size());
        }
      } else if (marker == 0xe1 && !xmp && payloadSize >= kXmpId.size()) {
        if (isXmp(fetch(payloadAt, kXmpId.size()))) {
          xmp.emplace(payloadAt + kXmpId.size(), payloadSize - kXmpId.size());
        }
      } else if (marker == 0xed && payloadSize >= 14) {
        const Bytes p = fetch(payloadAt, payloadSize);
        if (p.size() != payloadSize) throw GiveUp{};
        if (std::memcmp(p.data(), "Photoshop 3.0\0", 14) == 0) {
          if (havePhotoshop) throw GiveUp{};
          photoshop.assign(p.begin() + 14, p.end());
          havePhotoshop = true;
        }
      } else if (isSof(marker) && f.imageHeight == 0) {
        const Bytes p = fetch(payloadAt, 5);
        if (p.size() != 5) throw GiveUp{};
        f.imageHeight = p[1] << 8 | p[2];
        f.imageWidth = p[3] << 8 | p[4];
      }
      pos = payloadAt + payloadSize;
    }
    readIptc(photoshop, f);
    if (xmp && f.iptcUncertain) readXmp(fetch(xmp->first, xmp->second), xmp->second, f);
    if (haveExif) {
      ImageFields withExif = f;
      try {
        if (readExif(exif, withExif)) {
          parts.makerNoteStream =
              withMakerNoteOnly(exif, withExif.make ? withExif.make->text : std::string(), false);
          // A maker note that can name nothing is as good as read.
          if (parts.makerNoteStream.empty()) withExif.makerNote = false;
        }
        f = std::move(withExif);
      } catch (const GiveUp&) {
        parts.makerNoteStream.clear();
        parts.exifForExiv2 = true;
      }
    }
    return parts;
  } catch (const GiveUp&) {
    return std::nullopt;
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace tessane::JpegExif
