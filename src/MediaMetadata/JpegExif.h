// The quick path for JPEG files: the frame size, the EXIF fields of IFD0 and the EXIF IFD, and
// the IPTC records, read straight from the file's segments without Exiv2's full parse (which
// decodes every maker note entry and the XMP packet, none of which the mapping needs).
//
// It gives exactly what Exiv2's path gives, or nothing so that the caller takes Exiv2's path: it
// gives up on segments it does not read the way Exiv2 does (one that runs past the end, rare
// frame markers, IPTC split over segments). The EXIF block is read here when that is safe; it is
// handed back for Exiv2's EXIF parser (without the rest of Exiv2's JPEG parse) when an IFD runs
// past the end, a needed entry has an unexpected type or comes twice, or the maker note could
// add something (the EXIF lens model is missing, or the serial number is and the camera's maker
// keeps one in its maker note).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "ImageFields.h"

namespace tessane::JpegExif {

// Gives `size` bytes at `offset` of the file, or an empty span when they can't be read.
using Fetch = std::function<std::span<const std::uint8_t>(std::uint64_t offset, std::size_t size)>;

// True when the bytes start like a JPEG file.
bool looksLikeJpeg(std::span<const std::uint8_t> head) noexcept;

struct Parts {
  ImageFields fields;              // size and IPTC always; EXIF unless `exifForExiv2`
  std::vector<std::uint8_t> exif;  // the EXIF block (a TIFF stream), when there is one
  bool exifForExiv2 = false;       // the EXIF fields are left to Exiv2's EXIF parser
};

std::optional<Parts> read(const Fetch& fetch);

// A value read as a float, as Exiv2 gives numbers, as a positive whole number: nothing when it is
// below 1, above four billion or not finite.
std::optional<std::int64_t> positiveInteger(float v);

}  // namespace tessane::JpegExif
