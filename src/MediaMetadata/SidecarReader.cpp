#include "SidecarReader.h"

#include <unistd.h>

#include <string>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "MetadataText.h"
#include "RenameIO/RegularFile.h"
#include "TimeParsing.h"

namespace tessane::SidecarReader {
namespace {

std::string firstText(const Exiv2::Value& value) {
  if (const auto* alt = dynamic_cast<const Exiv2::LangAltValue*>(&value)) {
    if (const auto it = alt->value_.find("x-default"); it != alt->value_.end()) return it->second;
    if (!alt->value_.empty()) return alt->value_.begin()->second;
    return {};
  }
  if (const auto* array = dynamic_cast<const Exiv2::XmpArrayValue*>(&value)) {
    return array->count() > 0 ? array->toString(0) : std::string();
  }
  return value.toString();
}

bool readAll(const std::filesystem::path& path, std::string& out) {
  // A pipe named like a sidecar would never answer: only a regular file is read.
  const RegularFile file = RegularFile::open(path);
  if (!file || static_cast<std::uint64_t>(file.size()) > kMaxSidecarBytes) return false;
  out.resize(static_cast<std::size_t>(file.size()));
  std::size_t done = 0;
  while (done < out.size()) {
    const ssize_t n = ::read(file.fd(), out.data() + done, out.size() - done);
    if (n <= 0) break;
    done += static_cast<std::size_t>(n);
  }
  out.resize(done);
  return true;
}

void readCaptureDate(const Exiv2::XmpData& xmp, const icu::TimeZone& zone, MetadataMap& out) {
  for (const char* key :
       {"Xmp.exif.DateTimeOriginal", "Xmp.photoshop.DateCreated", "Xmp.xmp.CreateDate"}) {
    const auto it = xmp.findKey(Exiv2::XmpKey(key));
    if (it == xmp.end()) continue;
    if (const auto when = TimeParsing::isoDate(it->value().toString(), zone)) {
      out.set(MetadataKey::date, MetadataValue::date(when->date));
      out.setShotOffset(when->offsetSeconds);
      return;
    }
  }
}

}  // namespace

void readXmp(const Exiv2::XmpData& xmp, MetadataMap& out) {
  try {
    static const std::pair<const char*, MetadataKey> kFields[] = {
        {"Xmp.photoshop.City", MetadataKey::city},
        {"Xmp.iptc.Location", MetadataKey::location},
        {"Xmp.dc.title", MetadataKey::title},
        {"Xmp.photoshop.Headline", MetadataKey::headline},
        {"Xmp.dc.creator", MetadataKey::author},
    };
    for (const auto& [key, field] : kFields) {
      const auto it = xmp.findKey(Exiv2::XmpKey(key));
      if (it == xmp.end()) continue;
      MetadataText::setText(out, field, firstText(it->value()));
    }
  } catch (...) {
    // A value Exiv2 can't give adds nothing more.
  }
}

void readPacket(std::string_view packet, MetadataMap& out, const icu::TimeZone* zone) {
  if (packet.empty()) return;
  try {
    Exiv2::XmpData xmp;
    if (Exiv2::XmpParser::decode(xmp, std::string(packet)) != 0) return;
    readXmp(xmp, out);
    if (zone != nullptr && out.find(MetadataKey::date) == nullptr) readCaptureDate(xmp, *zone, out);
  } catch (...) {
    // A broken packet adds nothing.
  }
}

void read(const std::filesystem::path& sidecar, MetadataMap& out, const icu::TimeZone* zone) {
  std::string packet;
  if (!readAll(sidecar, packet)) return;
  readPacket(packet, out, zone);
}

}  // namespace tessane::SidecarReader
