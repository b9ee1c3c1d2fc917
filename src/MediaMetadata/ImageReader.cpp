#include "ImageReader.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "BmffExif.h"
#include "MetadataText.h"
#include "TimeParsing.h"

namespace tessane::ImageReader {
namespace {

using Exiv2::Exifdatum;

// The IFDs are told apart by Exiv2's internal ids, found once from known keys.
struct Groups {
  int image = -1;
  int photo = -1;
  // Maker-note serial numbers, in order of preference: (ifd id, tag).
  std::vector<std::pair<int, std::uint16_t>> makerSerials;
};

const Groups& groups() {
  static const Groups g = [] {
    Groups out;
    out.image = Exiv2::ExifKey("Exif.Image.Make").ifdId();
    out.photo = Exiv2::ExifKey("Exif.Photo.FNumber").ifdId();
    for (const char* key :
         {"Exif.Canon.SerialNumber", "Exif.Nikon3.SerialNumber", "Exif.Fujifilm.SerialNumber",
          "Exif.OlympusEq.SerialNumber", "Exif.Olympus.SerialNumber", "Exif.Pentax.SerialNumber",
          "Exif.Panasonic.InternalSerialNumber", "Exif.Sigma.SerialNumber"}) {
      try {
        const Exiv2::ExifKey k(key);
        out.makerSerials.emplace_back(k.ifdId(), k.tag());
      } catch (...) {
        // A key this Exiv2 doesn't know is simply not looked for.
      }
    }
    return out;
  }();
  return g;
}

// The EXIF entries the reader uses, found in one pass over the EXIF data.
struct Picks {
  const Exifdatum* make = nullptr;
  const Exifdatum* model = nullptr;
  const Exifdatum* artist = nullptr;
  const Exifdatum* dateTime = nullptr;
  const Exifdatum* cameraSerial = nullptr;  // DNG
  const Exifdatum* defaultCrop = nullptr;   // DNG
  const Exifdatum* exposure = nullptr;
  const Exifdatum* fNumber = nullptr;
  const Exifdatum* focal = nullptr;
  const Exifdatum* isoRatings = nullptr;
  const Exifdatum* isoSpeed = nullptr;
  const Exifdatum* original = nullptr;
  const Exifdatum* digitized = nullptr;
  const Exifdatum* subSec = nullptr;
  const Exifdatum* subSecOriginal = nullptr;
  const Exifdatum* subSecDigitized = nullptr;
  const Exifdatum* pixelX = nullptr;
  const Exifdatum* pixelY = nullptr;
  const Exifdatum* bodySerial = nullptr;
  const Exifdatum* lensModel = nullptr;
  std::size_t makerSerialRank = SIZE_MAX;
  const Exifdatum* makerSerial = nullptr;
};

void keepFirst(const Exifdatum*& slot, const Exifdatum& d) {
  if (slot == nullptr && d.count() > 0) slot = &d;
}

Picks pick(const Exiv2::ExifData& exif) {
  const Groups& g = groups();
  Picks p;
  for (const Exifdatum& d : exif) {
    const int ifd = d.ifdId();
    const std::uint16_t tag = d.tag();
    if (ifd == g.image) {
      switch (tag) {
        case 0x010f:
          keepFirst(p.make, d);
          break;
        case 0x0110:
          keepFirst(p.model, d);
          break;
        case 0x013b:
          keepFirst(p.artist, d);
          break;
        case 0x0132:
          keepFirst(p.dateTime, d);
          break;
        case 0xc62f:
          keepFirst(p.cameraSerial, d);
          break;
        case 0xc620:
          keepFirst(p.defaultCrop, d);
          break;
        default:
          break;
      }
    } else if (ifd == g.photo) {
      switch (tag) {
        case 0x829a:
          keepFirst(p.exposure, d);
          break;
        case 0x829d:
          keepFirst(p.fNumber, d);
          break;
        case 0x920a:
          keepFirst(p.focal, d);
          break;
        case 0x8827:
          keepFirst(p.isoRatings, d);
          break;
        case 0x8833:
          keepFirst(p.isoSpeed, d);
          break;
        case 0x9003:
          keepFirst(p.original, d);
          break;
        case 0x9004:
          keepFirst(p.digitized, d);
          break;
        case 0x9290:
          keepFirst(p.subSec, d);
          break;
        case 0x9291:
          keepFirst(p.subSecOriginal, d);
          break;
        case 0x9292:
          keepFirst(p.subSecDigitized, d);
          break;
        case 0xa002:
          keepFirst(p.pixelX, d);
          break;
        case 0xa003:
          keepFirst(p.pixelY, d);
          break;
        case 0xa431:
          keepFirst(p.bodySerial, d);
          break;
        case 0xa434:
          keepFirst(p.lensModel, d);
          break;
        default:
          break;
      }
    } else if (tag == 0xc620) {
      // The raw image's IFD of a DNG (SubImage1 and so on) holds its default crop.
      keepFirst(p.defaultCrop, d);
    } else {
      for (std::size_t i = 0; i < g.makerSerials.size() && i < p.makerSerialRank; ++i) {
        if (g.makerSerials[i].first == ifd && g.makerSerials[i].second == tag && d.count() > 0) {
          p.makerSerial = &d;
          p.makerSerialRank = i;
          break;
        }
      }
    }
  }
  return p;
}

std::optional<double> rational(const Exifdatum* d) {
  if (d == nullptr || d->count() < 1) return std::nullopt;
  double v = 0;
  // Exiv2 turns unsigned rationals into signed ones on the way out; read them as they are.
  if (const auto* u = dynamic_cast<const Exiv2::URationalValue*>(&d->value())) {
    const Exiv2::URational r = u->value_.front();
    if (r.second == 0) return std::nullopt;
    v = static_cast<double>(r.first) / static_cast<double>(r.second);
  } else {
    const Exiv2::Rational r = d->toRational(0);
    if (r.second == 0) return std::nullopt;
    v = static_cast<double>(r.first) / static_cast<double>(r.second);
  }
  if (!std::isfinite(v) || v <= 0) return std::nullopt;
  return v;
}

std::optional<std::int64_t> positiveInteger(const Exifdatum* d, long n = 0) {
  if (d == nullptr || d->count() <= n) return std::nullopt;
  const float v = d->toFloat(n);
  if (!std::isfinite(v) || v < 1 || v > 4.0e9f) return std::nullopt;
  return static_cast<std::int64_t>(std::lround(v));
}

bool setTextOf(MetadataMap& out, MetadataKey key, const Exifdatum* d) {
  if (d == nullptr) return false;
  const Exiv2::TypeId type = d->typeId();
  if (type == Exiv2::undefined || type == Exiv2::unsignedByte) {
    // Some maker notes keep texts as bytes (Panasonic's serial number): read them as characters.
    std::string bytes(static_cast<std::size_t>(d->size()), '\0');
    if (!bytes.empty()) d->copy(reinterpret_cast<Exiv2::byte*>(bytes.data()), Exiv2::bigEndian);
    return MetadataText::setText(out, key, bytes);
  }
  return MetadataText::setText(out, key, d->toString());
}

// Texts Exiv2 prints for a lens it can't name.
bool isLensName(const std::string& text) {
  if (text.empty() || text == "n/a" || text == "----" || text == "None") return false;
  if (text.rfind("Unknown", 0) == 0) return false;
  // A bare number, or a number in parentheses: an id Exiv2 has no name for.
  const std::size_t start = text.front() == '(' ? 1 : 0;
  bool digitsOnly = true;
  for (std::size_t i = start; i < text.size(); ++i) {
    const char c = text[i];
    if (!(c >= '0' && c <= '9') && c != ' ' && c != ')') digitsOnly = false;
  }
  return !digitsOnly;
}

void readLens(const Exiv2::ExifData& exif, const Picks& p, MetadataMap& out) {
  if (p.lensModel != nullptr) {
    const auto text = MetadataText::clean(p.lensModel->toString());
    if (text && isLensName(*text)) {
      out.set(MetadataKey::lens, MetadataValue::text(*text));
      return;
    }
  }
  const auto guess = Exiv2::lensName(exif);
  if (guess == exif.end()) return;
  const auto text = MetadataText::clean(guess->print(&exif));
  if (text && isLensName(*text)) out.set(MetadataKey::lens, MetadataValue::text(*text));
}

std::optional<Date> captureDate(const Picks& p, const icu::TimeZone& zone) {
  const std::array<std::pair<const Exifdatum*, const Exifdatum*>, 3> sources = {
      {{p.original, p.subSecOriginal}, {p.digitized, p.subSecDigitized}, {p.dateTime, p.subSec}}};
  for (const auto& [date, subSec] : sources) {
    if (date == nullptr) continue;
    std::optional<Date> d = TimeParsing::exifDate(date->toString(), zone);
    if (!d) continue;
    if (subSec != nullptr) {
      if (const auto fraction = TimeParsing::subSeconds(subSec->toString())) *d += *fraction;
    }
    return d;
  }
  return std::nullopt;
}

void readExif(const Exiv2::ExifData& exif, const Picks& p, const icu::TimeZone& zone,
              MetadataMap& out) {
  setTextOf(out, MetadataKey::make, p.make);
  setTextOf(out, MetadataKey::model, p.model);
  if (!setTextOf(out, MetadataKey::serial, p.bodySerial) &&
      !setTextOf(out, MetadataKey::serial, p.cameraSerial)) {
    setTextOf(out, MetadataKey::serial, p.makerSerial);
  }
  readLens(exif, p, out);
  if (const auto iso = positiveInteger(p.isoRatings ? p.isoRatings : p.isoSpeed)) {
    out.set(MetadataKey::iso, MetadataValue::integer(*iso));
  }
  if (const auto v = rational(p.exposure)) out.set(MetadataKey::shutter, MetadataValue::number(*v));
  if (const auto v = rational(p.fNumber)) out.set(MetadataKey::aperture, MetadataValue::number(*v));
  if (const auto v = rational(p.focal)) out.set(MetadataKey::focal, MetadataValue::number(*v));
  setTextOf(out, MetadataKey::author, p.artist);
  if (const auto date = captureDate(p, zone))
    out.set(MetadataKey::date, MetadataValue::date(*date));
}

void readIptc(const Exiv2::IptcData& iptc, MetadataMap& out) {
  for (const Exiv2::Iptcdatum& d : iptc) {
    if (d.record() != 2) continue;
    MetadataKey key;
    switch (d.tag()) {
      case 80:
        key = MetadataKey::author;
        break;
      case 90:
        key = MetadataKey::city;
        break;
      case 92:
        key = MetadataKey::location;
        break;
      case 5:
        key = MetadataKey::title;
        break;
      case 105:
        key = MetadataKey::headline;
        break;
      default:
        continue;
    }
    // IFD0 Artist comes before the IPTC By-line; the first of repeated records wins.
    if (out.find(key) != nullptr) continue;
    MetadataText::setText(out, key, d.toString());
  }
}

void setSize(MetadataMap& out, std::int64_t w, std::int64_t h) {
  if (w <= 0 || h <= 0) return;
  out.set(MetadataKey::width, MetadataValue::integer(w));
  out.set(MetadataKey::height, MetadataValue::integer(h));
}

void readSize(Exiv2::Image& image, FileKind kind, const Picks& p, MetadataMap& out) {
  const std::int64_t imageW = image.pixelWidth();
  const std::int64_t imageH = image.pixelHeight();
  const auto exifW = positiveInteger(p.pixelX);
  const auto exifH = positiveInteger(p.pixelY);
  if (kind == FileKind::raw) {
    const auto cropW = positiveInteger(p.defaultCrop, 0);
    const auto cropH = positiveInteger(p.defaultCrop, 1);
    if (cropW && cropH) return setSize(out, *cropW, *cropH);
    if (exifW && exifH) return setSize(out, *exifW, *exifH);
    return setSize(out, imageW, imageH);
  }
  if (imageW > 0 && imageH > 0) return setSize(out, imageW, imageH);
  if (exifW && exifH) setSize(out, *exifW, *exifH);
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
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return;
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size > 0) {
      void* p =
          ::mmap(nullptr, static_cast<std::size_t>(st.st_size), PROT_READ, MAP_PRIVATE, fd, 0);
      if (p != MAP_FAILED) {
        data_ = static_cast<const std::uint8_t*>(p);
        size_ = static_cast<std::size_t>(st.st_size);
      }
    }
    ::close(fd);
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

template <typename Open, typename Bytes>
void readWith(Open&& open, Bytes&& bytes, FileKind kind, const icu::TimeZone& zone,
              MetadataMap& out) {
  std::unique_ptr<Exiv2::Image> image;
  try {
    image.reset(open().release());
    if (!image) return;
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
    const Picks p = pick(exif);
    readExif(exif, p, zone, out);
    readIptc(image->iptcData(), out);
    readSize(*image, kind, p, out);
  } catch (...) {
    // Exiv2 also throws while converting values; the keys set so far stay.
  }
}

}  // namespace

void read(const std::filesystem::path& path, FileKind kind, const icu::TimeZone& zone,
          MetadataMap& out) {
  std::optional<MappedFile> mapped;
  readWith([&] { return Exiv2::ImageFactory::open(path.string()); },
           [&] {
             if (!mapped) mapped.emplace(path);
             return mapped->bytes();
           },
           kind, zone, out);
}

void readBytes(std::span<const std::uint8_t> bytes, FileKind kind, const icu::TimeZone& zone,
               MetadataMap& out) {
  if (bytes.empty()) return;
  readWith([&] { return Exiv2::ImageFactory::open(bytes.data(), static_cast<long>(bytes.size())); },
           [&] { return bytes; }, kind, zone, out);
}

}  // namespace tessane::ImageReader
