#include "TiffReader.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

#include "MetadataText.h"

namespace tessane::TiffReader {
namespace {

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

// Nikon's maker notes of the "Nikon\0" version 2 layout carry a TIFF stream of their own, whose
// first IFD holds the ISO speed (tag 2: two SHORTs, the speed second), which older bodies write
// nowhere else. Nothing for another layout or a note that doesn't hold together: Exiv2 decides.
std::optional<ExifEntry> nikonIso(const Tiff& t, const Entry& note) {
  static constexpr std::uint8_t kHeader[] = {'N', 'i', 'k', 'o', 'n', 0, 2};
  try {
    const Bytes b = valueBytes(t, note);
    if (b.size() < 18 || !std::equal(std::begin(kHeader), std::end(kHeader), b.begin()))
      return std::nullopt;
    const Tiff inner(b.subspan(10));
    for (const Entry& e : readIfd(inner, inner.u32(4))) {
      if (e.tag == 0x0002 && e.count > 0) return asIntegers(inner, e);
    }
  } catch (const GiveUp&) {
  }
  return std::nullopt;
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
      case 0x9010:
        take(f.offsetTime, asText(t, e));
        break;
      case 0x9011:
        take(f.offsetOriginal, asText(t, e));
        break;
      case 0x9012:
        take(f.offsetDigitized, asText(t, e));
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
        if (!f.makerIso) f.makerIso = nikonIso(t, e);
        break;
      default:
        break;
    }
  }
}

}  // namespace

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

Bytes valueBytes(const Tiff& t, const Entry& e) {
  const std::uint64_t size = typeSize(e.type) * e.count;
  t.need(e.data, size);
  return t.bytes().subspan(static_cast<std::size_t>(e.data), static_cast<std::size_t>(size));
}

bool makerNoteCouldAdd(const ImageFields& f) {
  const bool lensKnown = f.lensModel && [&] {
    const auto text = MetadataText::clean(f.lensModel->text);
    return text && ImageFieldsMapping::isLensName(*text);
  }();
  const bool serialKnown = ImageFieldsMapping::serialNumber(f.bodySerial).has_value() ||
                           ImageFieldsMapping::serialNumber(f.cameraSerial).has_value();
  // Older Nikon bodies write the ISO speed in the maker note alone.
  // Older Nikon bodies write the ISO speed in the maker note alone, where the reading above finds
  // it in the common layout.
  const bool isoInNote =
      !f.isoRatings && !f.isoSpeed && !f.makerIso && f.make && f.make->text.rfind("NIKON", 0) == 0;
  return !lensKnown || (!serialKnown && makerKeepsSerial(f.make)) || isoInNote;
}

bool readTiff(Bytes stream, TiffStart start, bool tiffIptcMatters, ImageFields& fields,
              bool& makerNote) {
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

std::optional<std::int64_t> positiveInteger(float v) {
  if (!std::isfinite(v) || v < 1 || v > 4.0e9f) return std::nullopt;
  return static_cast<std::int64_t>(std::lround(v));
}

}  // namespace tessane::TiffReader
