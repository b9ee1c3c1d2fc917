#include "ImageFields.h"

#include <unicode/timezone.h>

#include <array>
#include <chrono>
#include <string_view>
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

// An EXIF offset text, "+03:00" or "-05:30" (ASCII, seven characters with the NUL), as seconds;
// nothing for a blank or malformed one ("   :  " is written by cameras that don't know).
std::optional<std::int32_t> offsetSeconds(const Entry& entry) {
  if (!entry) return std::nullopt;
  std::string_view t = entry->text;
  while (!t.empty() && (t.back() == ' ' || t.back() == '\0'))
    t.remove_suffix(1);
  while (!t.empty() && t.front() == ' ')
    t.remove_prefix(1);
  if (t.size() != 6 || (t[0] != '+' && t[0] != '-') || t[3] != ':') return std::nullopt;
  auto digit = [&](std::size_t i) { return t[i] >= '0' && t[i] <= '9'; };
  if (!digit(1) || !digit(2) || !digit(4) || !digit(5)) return std::nullopt;
  const int hours = (t[1] - '0') * 10 + (t[2] - '0');
  const int minutes = (t[4] - '0') * 10 + (t[5] - '0');
  if (hours > 14 || minutes > 59) return std::nullopt;
  const std::int32_t seconds = (hours * 60 + minutes) * 60;
  return t[0] == '-' ? -seconds : seconds;
}

struct Capture {
  Date date;
  std::optional<std::int32_t> offset;
};

// The first source the file gives decides: a malformed time there is no date, never the next
// source's time in its place (which may be a later edit's). A time with its own offset is read
// at that offset; one without is read in `zone`.
std::optional<Capture> captureDate(const ImageFields& f, const icu::TimeZone& zone) {
  struct Source {
    const Entry* date;
    const Entry* subSec;
    const Entry* offset;
  };
  const std::array<Source, 3> sources = {{{&f.original, &f.subSecOriginal, &f.offsetOriginal},
                                          {&f.digitized, &f.subSecDigitized, &f.offsetDigitized},
                                          {&f.dateTime, &f.subSec, &f.offsetTime}}};
  for (const Source& source : sources) {
    if (!*source.date || isBlankTime((*source.date)->text)) continue;
    const std::optional<std::int32_t> offset = offsetSeconds(*source.offset);
    std::optional<Date> d =
        offset ? TimeParsing::exifDate((*source.date)->text, *icu::TimeZone::getGMT())
               : TimeParsing::exifDate((*source.date)->text, zone);
    if (!d) return std::nullopt;
    if (offset) *d -= std::chrono::seconds(*offset);
    if (*source.subSec) {
      if (const auto fraction = TimeParsing::subSeconds((*source.subSec)->text)) *d += *fraction;
    }
    return Capture{*d, offset};
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

std::optional<std::string> serialNumber(const Entry& entry) {
  if (!entry) return std::nullopt;
  std::optional<std::string> text = MetadataText::clean(entry->text);
  if (text && text->find_first_not_of('0') == std::string::npos) return std::nullopt;
  return text;
}

void toMetadata(const ImageFields& f, FileKind kind, const icu::TimeZone& zone, MetadataMap& out) {
  setText(out, MetadataKey::make, f.make);
  setText(out, MetadataKey::model, f.model);
  for (const Entry* serial : {&f.bodySerial, &f.cameraSerial, &f.makerSerial}) {
    if (auto text = serialNumber(*serial)) {
      out.set(MetadataKey::serial, MetadataValue::text(std::move(*text)));
      break;
    }
  }
  readLens(f, out);
  if (const Entry& iso = f.isoRatings ? f.isoRatings : f.isoSpeed; iso && iso->first) {
    out.set(MetadataKey::iso, MetadataValue::integer(*iso->first));
  } else if (!f.isoRatings && !f.isoSpeed && f.makerIso) {
    if (const auto speed = f.makerIso->second ? f.makerIso->second : f.makerIso->first)
      out.set(MetadataKey::iso, MetadataValue::integer(*speed));
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
  if (const auto capture = captureDate(f, zone)) {
    out.set(MetadataKey::date, MetadataValue::date(capture->date));
    out.setShotOffset(capture->offset);
  }
  readSize(f, kind, out);
}

}  // namespace tessane::ImageFieldsMapping
