// The quick path for JPEG files, walking their segments: the frame size, the EXIF fields of IFD0
// and the EXIF IFD, and the IPTC records, read straight from the file's segments without Exiv2's
// full parse (which decodes every maker note entry and the XMP packet). The XMP packet is decoded
// only when an IPTC text's character set is a guess, and the XMP's texts then take the IPTC's place
// (IptcFields::preferXmp).
//
// It gives exactly what Exiv2's path gives, or nothing so that the caller takes Exiv2's path: it
// gives up on segments it does not read the way Exiv2 does (one that runs past the end, rare
// frame markers, IPTC split over segments). The EXIF block is read here when that is safe; it is
// handed back for Exiv2's EXIF parser (without the rest of Exiv2's JPEG parse) when an IFD runs
// past the end, a needed entry has an unexpected type or comes twice.
//
// When only the maker note could add something (the EXIF lens model is missing, or the serial
// number is and the camera's maker keeps one in its maker note), the EXIF fields are still read
// here (TiffReader), and Exiv2's parser gets `makerNoteStream` (MakerNoteStream).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "ImageFields.h"

namespace tessane::JpegSegments {

// Gives `size` bytes at `offset` of the file, or an empty span when they can't be read.
using Fetch = std::function<std::span<const std::uint8_t>(std::uint64_t offset, std::size_t size)>;

// True when the bytes start like a JPEG file.
bool looksLikeJpeg(std::span<const std::uint8_t> head) noexcept;

struct Parts {
  ImageFields fields;              // size and IPTC always; EXIF unless `exifForExiv2`
  std::vector<std::uint8_t> exif;  // the EXIF block (a TIFF stream), when there is one
  bool exifForExiv2 = false;       // the EXIF fields are left to Exiv2's EXIF parser
  // Not empty when the maker note alone is left to Exiv2's EXIF parser: the block to give it.
  // Empty, with `fields.makerNote` false, when the maker note can add nothing.
  std::vector<std::uint8_t> makerNoteStream;
};

// Nothing when Exiv2's JPEG parse must read the file.
std::optional<Parts> read(const Fetch& fetch);

}  // namespace tessane::JpegSegments
