#include "IptcFields.h"

#include <unicode/unistr.h>

#include <string_view>
#include <utility>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "MetadataText.h"
#include "SidecarReader.h"

namespace tessane::IptcFields {
namespace {

// The converter for the character set that record 1:90 designates by its ISO 2022 escape
// sequence; null for UTF-8, for none and for one not listed (those texts are read as unmarked).
const char* charsetOf(const Exiv2::IptcData& iptc, bool& named) {
  static constexpr std::pair<std::string_view, const char*> kSets[] = {
      {"\x1b-A", "ISO-8859-1"},  {"\x1b-B", "ISO-8859-2"},  {"\x1b-C", "ISO-8859-3"},
      {"\x1b-D", "ISO-8859-4"},  {"\x1b-L", "ISO-8859-5"},  {"\x1b-G", "ISO-8859-6"},
      {"\x1b-F", "ISO-8859-7"},  {"\x1b-H", "ISO-8859-8"},  {"\x1b-M", "ISO-8859-9"},
      {"\x1b-V", "ISO-8859-10"}, {"\x1b-Y", "ISO-8859-13"}, {"\x1b-_", "ISO-8859-14"},
      {"\x1b-b", "ISO-8859-15"},
  };
  for (const Exiv2::Iptcdatum& d : iptc) {
    if (d.record() != 1 || d.tag() != 90) continue;
    const std::string mark = d.toString();
    named = mark == "\x1b%G";
    for (const auto& [escape, name] : kSets) {
      if (mark == escape) {
        named = true;
        return name;
      }
    }
    return nullptr;
  }
  return nullptr;
}

bool isAscii(const std::string& text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

std::string decoded(const std::string& raw, const char* charset) {
  if (charset == nullptr) return raw;
  const icu::UnicodeString text(raw.data(), static_cast<int32_t>(raw.size()), charset);
  if (text.isBogus()) return raw;
  std::string out;
  text.toUTF8String(out);
  return out;
}

}  // namespace

void read(const Exiv2::IptcData& iptc, ImageFields& fields) {
  const char* charset = nullptr;
  bool charsetKnown = false;
  bool charsetNamed = false;
  for (const Exiv2::Iptcdatum& d : iptc) {
    if (d.record() != 2) continue;
    std::optional<std::string>* field = nullptr;
    switch (d.tag()) {
      case 80:
        field = &fields.byline;
        break;
      case 90:
        field = &fields.city;
        break;
      case 92:
        field = &fields.subLocation;
        break;
      case 5:
        field = &fields.objectName;
        break;
      case 105:
        field = &fields.headline;
        break;
      default:
        continue;
    }
    if (field->has_value()) continue;
    if (!charsetKnown) {
      charset = charsetOf(iptc, charsetNamed);
      charsetKnown = true;
    }
    const std::string raw = d.toString();
    *field = MetadataText::clean(decoded(raw, charset));
    if (*field && !charsetNamed && !isAscii(raw)) fields.iptcUncertain = true;
  }
}

bool xmpMayHold(std::string_view packet) {
  for (const std::string_view name : {":City", ":Location", ":title", ":Headline", ":creator"}) {
    if (packet.find(name) != std::string_view::npos) return true;
  }
  return false;
}

void preferXmp(const Exiv2::XmpData& xmp, ImageFields& f) {
  if (xmp.empty()) return;
  MetadataMap own;
  SidecarReader::readXmp(xmp, own);
  const std::pair<MetadataKey, std::optional<std::string>*> fields[] = {
      {MetadataKey::author, &f.byline},        {MetadataKey::city, &f.city},
      {MetadataKey::location, &f.subLocation}, {MetadataKey::title, &f.objectName},
      {MetadataKey::headline, &f.headline},
  };
  for (const auto& [key, field] : fields) {
    if (const MetadataValue* v = own.find(key); v != nullptr && v->asText() != nullptr) {
      *field = *v->asText();
    }
  }
}

}  // namespace tessane::IptcFields
