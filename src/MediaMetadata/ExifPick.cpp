#include "ExifPick.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LensEntry.h"
#include "MetadataText.h"
#include "TiffReader.h"

namespace tessane::ExifPick {
namespace {

using Exiv2::Exifdatum;

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
  // Nikon's maker-note ISO speed.
  std::pair<int, std::uint16_t> nikonIso{-1, 0};
};

const Groups& groups() {
  static const Groups g = [] {
    Groups out;
    out.image = Exiv2::ExifKey("Exif.Image.Make").ifdId();
    out.photo = Exiv2::ExifKey("Exif.Photo.FNumber").ifdId();
    out.panasonic = Exiv2::ExifKey("Exif.Panasonic.ImageWidth").ifdId();
    try {
      const Exiv2::ExifKey iso("Exif.Nikon3.ISOSpeed");
      out.nikonIso = {iso.ifdId(), iso.tag()};
    } catch (...) {
    }
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

// IFD0's entries the mapping uses.
void pickImage(const Exifdatum& d, ImageFields& f) {
  switch (d.tag()) {
    case 0x010f:
      return keepFirst(f.make, d, Form::text);
    case 0x0110:
      return keepFirst(f.model, d, Form::text);
    case 0x013b:
      return keepFirst(f.artist, d, Form::text);
    case 0x0132:
      return keepFirst(f.dateTime, d, Form::text);
    case 0xc62f:
      return keepFirst(f.cameraSerial, d, Form::text);
    case 0xc620:
      return keepFirst(f.defaultCrop, d, Form::integers);
    default:
      return;
  }
}

// The EXIF IFD's entries the mapping uses.
void pickPhoto(const Exifdatum& d, ImageFields& f) {
  switch (d.tag()) {
    case 0x829a:
      return keepFirst(f.exposure, d, Form::ratio);
    case 0x829d:
      return keepFirst(f.fNumber, d, Form::ratio);
    case 0x920a:
      return keepFirst(f.focal, d, Form::ratio);
    case 0x8827:
      return keepFirst(f.isoRatings, d, Form::integers);
    case 0x8833:
      return keepFirst(f.isoSpeed, d, Form::integers);
    case 0x9003:
      return keepFirst(f.original, d, Form::text);
    case 0x9004:
      return keepFirst(f.digitized, d, Form::text);
    case 0x9010:
      return keepFirst(f.offsetTime, d, Form::text);
    case 0x9011:
      return keepFirst(f.offsetOriginal, d, Form::text);
    case 0x9012:
      return keepFirst(f.offsetDigitized, d, Form::text);
    case 0x9290:
      return keepFirst(f.subSec, d, Form::text);
    case 0x9291:
      return keepFirst(f.subSecOriginal, d, Form::text);
    case 0x9292:
      return keepFirst(f.subSecDigitized, d, Form::text);
    case 0xa002:
      return keepFirst(f.pixelX, d, Form::integers);
    case 0xa003:
      return keepFirst(f.pixelY, d, Form::integers);
    case 0xa431:
      return keepFirst(f.bodySerial, d, Form::text);
    case 0xa434:
      return keepFirst(f.lensModel, d, Form::text);
    default:
      return;
  }
}

// A maker note's serial number, when it ranks before the one found so far (`rank`: its place
// among Groups::makerSerials, SIZE_MAX for none yet).
void pickMakerSerial(const Exifdatum& d, ImageFields& f, std::size_t& rank) {
  const Groups& g = groups();
  const int ifd = d.ifdId();
  const std::uint16_t tag = d.tag();
  for (std::size_t i = 0; i < g.makerSerials.size() && i < rank; ++i) {
    if (g.makerSerials[i].first != ifd || g.makerSerials[i].second != tag || d.count() <= 0) {
      continue;
    }
    // An empty one (a camera that wasn't given its number) leaves room for the others.
    std::string serial;
    try {
      serial = serialText(d, g.makerSerials[i] == g.nikonSerialNo);
    } catch (...) {
      return;  // a value Exiv2 can't convert is left out
    }
    if (!MetadataText::clean(serial)) return;
    f.makerSerial = ExifEntry{std::move(serial), {}, {}, {}};
    rank = i;
    return;
  }
}

// The maker note's lens, only when the EXIF lens model doesn't name one.
void pickMakerLens(const Exiv2::ExifData& exif, ImageFields& f) {
  const bool exifLens = f.lensModel && [&] {
    const auto t = MetadataText::clean(f.lensModel->text);
    return t && ImageFieldsMapping::isLensName(*t);
  }();
  if (exifLens) return;
  try {
    const auto guess = LensEntry::find(exif);
    if (guess != exif.end()) f.makerLens = guess->print(&exif);
  } catch (...) {
  }
}

}  // namespace

int imageGroup() {
  return groups().image;
}

ImageFields pick(const Exiv2::ExifData& exif) {
  const Groups& g = groups();
  ImageFields f;
  std::size_t makerSerialRank = SIZE_MAX;
  for (const Exifdatum& d : exif) {
    const int ifd = d.ifdId();
    const std::uint16_t tag = d.tag();
    if (ifd == g.image) {
      pickImage(d, f);
    } else if (ifd == g.photo) {
      pickPhoto(d, f);
    } else if (ifd == g.panasonic && (tag == 0x004b || tag == 0x004c)) {
      keepFirst(tag == 0x004b ? f.makerWidth : f.makerHeight, d, Form::integers);
    } else if (tag == 0xc620) {
      // The raw image's IFD of a DNG (SubImage1 and so on) holds its default crop.
      if (d.groupName().rfind("SubImage", 0) == 0) keepFirst(f.defaultCrop, d, Form::integers);
    } else if (ifd == g.nikonIso.first && tag == g.nikonIso.second) {
      keepFirst(f.makerIso, d, Form::integers);
    } else {
      pickMakerSerial(d, f, makerSerialRank);
    }
  }
  pickMakerLens(exif, f);
  return f;
}

}  // namespace tessane::ExifPick
