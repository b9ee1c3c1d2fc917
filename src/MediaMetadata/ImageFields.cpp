#include "ImageFields.h"

#include <array>
#include <utility>

#include "MetadataText.h"
#include "TimeParsing.h"

namespace tessane::ImageFieldsMapping {
namespace {

using Entry = std::optional<ExifEntry>;

bool setText(MetadataMap& out, MetadataKey key, const Entry& e) {
  return e && MetadataText::setText(out, key, e->text);
}

void setNumber(MetadataMap& out, MetadataKey key, const Entry& e) {
  if (e && e->ratio) out.set(key, MetadataValue::number(*e->ratio));
}

void readLens(const ImageFields& f, MetadataMap& out) {
  if (f.lensModel) {
    const auto text = MetadataText::clean(f.lensModel->text);
    if (text && isLensName(*text)) {
      out.set(MetadataKey::lens, MetadataValue::text(*text));
      return;
    }
  }
  if (!f.makerLens) return;
  const auto text = MetadataText::clean(*f.makerLens);
  if (text && isLensName(*text)) out.set(MetadataKey::lens, MetadataValue::text(*text));
}

// EXIF writes an unknown time as blanks (and colons): that is no time at all.
bool isBlankTime(const std::string& text) {
  return text.find_first_not_of(" :\t\r\n", 0) == std::string::npos;
}

// The first source the file gives decides: a malformed time there is no date, never the next
// source's time in its place (which may be a later edit's).
std::optional<Date> captureDate(const ImageFields& f, const icu::TimeZone& zone) {
  const std::array<std::pair<const Entry*, const Entry*>, 3> sources = {
      {{&f.original, &f.subSecOriginal},
       {&f.digitized, &f.subSecDigitized},
       {&f.dateTime, &f.subSec}}};
  for (const auto& [date, subSec] : sources) {
    if (!*date || isBlankTime((*date)->text)) continue;
    std::optional<Date> d = TimeParsing::exifDate((*date)->text, zone);
    if (d && *subSec) {
      if (const auto fraction = TimeParsing::subSeconds((*subSec)->text)) *d += *fraction;
    }
    return d;
  }
  return std::nullopt;
}

void setSize(MetadataMap& out, std::int64_t w, std::int64_t h) {
  if (w <= 0 || h <= 0) return;
  out.set(MetadataKey::width, MetadataValue::integer(w));
  out.set(MetadataKey::height, MetadataValue::integer(h));
}

std::int64_t firstOf(const Entry& e) {
  return e && e->first ? *e->first : 0;
}
std::int64_t secondOf(const Entry& e) {
  return e && e->second ? *e->second : 0;
}

void readSize(const ImageFields& f, FileKind kind, MetadataMap& out) {
  const std::int64_t exifW = firstOf(f.pixelX);
  const std::int64_t exifH = firstOf(f.pixelY);
  if (kind == FileKind::raw) {
    const std::int64_t cropW = firstOf(f.defaultCrop);
    const std::int64_t cropH = secondOf(f.defaultCrop);
    if (cropW > 0 && cropH > 0) return setSize(out, cropW, cropH);
    if (exifW > 0 && exifH > 0) return setSize(out, exifW, exifH);
    const std::int64_t makerW = firstOf(f.makerWidth);
    const std::int64_t makerH = firstOf(f.makerHeight);
    if (makerW > 0 && makerH > 0) return setSize(out, makerW, makerH);
    return setSize(out, f.imageWidth, f.imageHeight);
  }
  if (f.imageWidth > 0 && f.imageHeight > 0) return setSize(out, f.imageWidth, f.imageHeight);
  setSize(out, exifW, exifH);
}

}  // namespace

bool isLensName(const std::string& text) {
  if (text.empty() || text == "n/a" || text == "----" || text == "None") return false;
  if (text.rfind("Unknown", 0) == 0) return false;
  // A bare number, or a number in parentheses: an id Exiv2 has no name for.
  const std::size_t start = text.front() == '(' ? 1 : 0;
  for (std::size_t i = start; i < text.size(); ++i) {
    const char c = text[i];
    if (!(c >= '0' && c <= '9') && c != ' ' && c != ')') return true;
  }
  return false;
}

void toMetadata(const ImageFields& f, FileKind kind, const icu::TimeZone& zone, MetadataMap& out) {
  setText(out, MetadataKey::make, f.make);
  setText(out, MetadataKey::model, f.model);
  if (!setText(out, MetadataKey::serial, f.bodySerial) &&
      !setText(out, MetadataKey::serial, f.cameraSerial)) {
    setText(out, MetadataKey::serial, f.makerSerial);
  }
  readLens(f, out);
  if (const Entry& iso = f.isoRatings ? f.isoRatings : f.isoSpeed; iso && iso->first) {
    out.set(MetadataKey::iso, MetadataValue::integer(*iso->first));
  }
  setNumber(out, MetadataKey::shutter, f.exposure);
  setNumber(out, MetadataKey::aperture, f.fNumber);
  setNumber(out, MetadataKey::focal, f.focal);
  if (!setText(out, MetadataKey::author, f.artist) && f.byline) {
    MetadataText::setText(out, MetadataKey::author, *f.byline);
  }
  if (f.city) MetadataText::setText(out, MetadataKey::city, *f.city);
  if (f.subLocation) MetadataText::setText(out, MetadataKey::location, *f.subLocation);
  if (f.objectName) MetadataText::setText(out, MetadataKey::title, *f.objectName);
  if (f.headline) MetadataText::setText(out, MetadataKey::headline, *f.headline);
  if (const auto date = captureDate(f, zone))
    out.set(MetadataKey::date, MetadataValue::date(*date));
  readSize(f, kind, out);
}

}  // namespace tessane::ImageFieldsMapping
