// The quick path for JPEG files: the frame size, the EXIF fields of IFD0 and the EXIF IFD, and
// the IPTC records, read straight from the file's segments without Exiv2's full parse (which
// decodes every maker note entry and the XMP packet). The XMP packet is decoded only when an IPTC
// text's character set is a guess, and the XMP's texts then take the IPTC's place
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
// here, and Exiv2's parser gets `makerNoteStream`: the same block with new IFDs appended that
// leave out everything but the camera's make and model and the EXIF entries a maker note's lens is
// told from. Exiv2 then decodes a third to a half of the entries it would, for the same maker
// note values (offsets inside the block don't move).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
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
  // Not empty when the maker note alone is left to Exiv2's EXIF parser: the block to give it.
  // Empty, with `fields.makerNote` false, when the maker note can add nothing.
  std::vector<std::uint8_t> makerNoteStream;
};

std::optional<Parts> read(const Fetch& fetch);

// Reading one TIFF stream the quick way, for other containers (HEIF, CR3). `start` says whether
// its first IFD is IFD0 (which may point to the EXIF IFD) or the EXIF IFD itself. Adds to
// `fields` and sets `makerNote` when the EXIF IFD has one; false, leaving `fields` as they were,
// when the quick path can't be sure to read as Exiv2 does. With `tiffIptcMatters`, IPTC kept in
// IFD0 also makes it give up (Exiv2 reads it from there outside JPEG files).
enum class TiffStart { ifd0, exifIfd };
bool readTiff(std::span<const std::uint8_t> stream, TiffStart start, bool tiffIptcMatters,
              ImageFields& fields, bool& makerNote);

// Whether a maker note could add to these fields: the EXIF lens model doesn't name a lens, or
// the serial number is missing and the camera's maker keeps one in its maker note.
bool makerNoteCouldAdd(const ImageFields& fields);

// The TIFF stream `tiff` (IFD0 first) made ready for Exiv2's EXIF parser to decode its maker note
// alone, as `Parts::makerNoteStream` (`make`: the camera's make, as IFD0 gives it). Empty when
// the maker note, of a layout known here, holds nothing Exiv2 could name the lens, the serial
// number or the photo's size from (and EXIF names no lens): then it needs no decoding. Nothing
// when the stream's IFDs don't lie within it, nor, with `noteMustFit`, its maker note (a RAW
// file's head: Exiv2 would decode less of it).
std::optional<std::vector<std::uint8_t>> makerNoteStream(std::span<const std::uint8_t> tiff,
                                                         std::string_view make,
                                                         bool noteMustFit = true);

// A value read as a float, as Exiv2 gives numbers, as a positive whole number: nothing when it is
// below 1, above four billion or not finite.
std::optional<std::int64_t> positiveInteger(float v);

}  // namespace tessane::JpegExif
