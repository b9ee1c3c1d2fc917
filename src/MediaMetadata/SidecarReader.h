// The descriptive fields of an XMP sidecar: photoshop:City -> city, Iptc4xmpCore:Location ->
// location, dc:title -> title, photoshop:Headline -> headline, dc:creator -> author. A language
// alternative gives its "x-default" text (else its first), a list its first item. Values are
// trimmed of spaces and line breaks; empty values are not stored. A sidecar that can't be read
// or parsed adds nothing.
#pragma once

#include <filesystem>
#include <string_view>

#include "RenameEngine/MetadataValue.h"

namespace Exiv2 {
class XmpData;
}

namespace tessane::SidecarReader {

// Sidecars larger than this are not XMP a photo tool wrote, and are not read.
inline constexpr std::size_t kMaxSidecarBytes = 8u << 20;

void read(const std::filesystem::path& sidecar, MetadataMap& out);
void readPacket(std::string_view packet, MetadataMap& out);
// The same fields from XMP that Exiv2 has decoded (an image's own packet).
void readXmp(const Exiv2::XmpData& xmp, MetadataMap& out);

}  // namespace tessane::SidecarReader
