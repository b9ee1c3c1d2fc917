// The descriptive fields of an XMP sidecar: photoshop:City -> city, Iptc4xmpCore:Location ->
// location, dc:title -> title, photoshop:Headline -> headline, dc:creator -> author. A language
// alternative gives its "x-default" text (else its first), a list its first item. Values are
// trimmed of spaces and line breaks; empty values are not stored. A sidecar that can't be read
// or parsed adds nothing.
//
// Given a zone, a file without a capture time takes the sidecar's (exif:DateTimeOriginal, else
// photoshop:DateCreated, else xmp:CreateDate): at the offset the date says, which becomes the
// shot's own, or read in the zone when it says none.
#pragma once

#include <filesystem>
#include <string_view>

#include "RenameEngine/MetadataValue.h"

#include <unicode/uversion.h>

namespace Exiv2 {
class XmpData;
}

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane::SidecarReader {

// Sidecars larger than this are not XMP a photo tool wrote, and are not read.
inline constexpr std::size_t kMaxSidecarBytes = 8u << 20;

void read(const std::filesystem::path& sidecar, MetadataMap& out,
          const icu::TimeZone* zone = nullptr);
void readPacket(std::string_view packet, MetadataMap& out, const icu::TimeZone* zone = nullptr);
// The same fields from XMP that Exiv2 has decoded (an image's own packet).
void readXmp(const Exiv2::XmpData& xmp, MetadataMap& out);

}  // namespace tessane::SidecarReader
