#include "MakerNoteStream.h"

#include <algorithm>
#include <array>
#include <climits>

#include "TiffReader.h"

namespace tessane::MakerNoteStream {
namespace {

using namespace TiffReader;

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
  // Kept entries that Exiv2 only consults, or that the quick reading takes itself (Nikon's ISO
  // speed), and names nothing from: a maker note that holds none of the other kept entries gives
  // no lens, serial number or size.
  std::array<std::uint16_t, 3> context = {};
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
    // SerialNO, and the ISO speed (older bodies write it there alone).
    {"NIKON",
     std::string_view("Nikon\0\x02", 7),
     MakerNoteLayout::Ifd::ownTiffHeaderAt10,
     {0x0001, 0x001d, 0x00a7, 0x0083, 0x0084, 0x0098, 0x00a0, 0x0002},
     {0x0001, 0x00a7, 0x0002}},
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

// The EXIF block made ready for Exiv2 to decode its maker note alone (see MakerNoteStream.h), or
// empty when the maker note (of a known layout) holds nothing that Exiv2 could name the lens, the
// serial number or the size from, and EXIF names no lens either. With `noteMustFit`, gives up
// unless the maker note lies within the block.
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

}  // namespace

std::optional<std::vector<std::uint8_t>> build(std::span<const std::uint8_t> tiff,
                                               std::string_view make, bool noteMustFit) {
  try {
    return withMakerNoteOnly(tiff, make, noteMustFit);
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace tessane::MakerNoteStream
