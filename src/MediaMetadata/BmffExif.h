// Finding EXIF inside ISO base media files (HEIC, HEIF, HIF, CR3) without a full parse.
//
// Exiv2 reads these files itself, but gives up on the whole file when one box is damaged or when
// an ICC profile is not to its liking. This walker only follows the boxes that lead to EXIF, with
// every size checked against the bytes there are, and hands back the TIFF streams it finds for
// Exiv2's EXIF parser:
//   HEIC/HEIF/HIF: the item of type "Exif" found through meta/iinf and meta/iloc (in the file or
//     in meta/idat), with its TIFF header offset applied;
//   CR3: the CMT1 (IFD0) and CMT2 (EXIF IFD) boxes of Canon's metadata box in moov.
// Pure function over bytes, no I/O: the caller maps the file.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tessane::BmffExif {

struct Found {
  std::vector<std::uint8_t> ifd0;  // a TIFF stream whose first IFD is IFD0 (HEIC: the whole EXIF)
  std::vector<std::uint8_t> exifIfd;  // CR3 only: a TIFF stream whose first IFD is the EXIF IFD
  bool canonMakerNote = false;        // CR3 only: the maker note box (CMT3) is there
  // HEIF: the largest image size its "ispe" properties give (both sides larger), as Exiv2 takes it
  // when the EXIF pixel dimensions are missing.
  std::int64_t width = 0;
  std::int64_t height = 0;
  // The EXIF item is laid out as Exiv2 0.27 reads it (iloc version 0 or 1, 4-byte offsets and
  // lengths, no base offset, one extent in the file itself): only then can the quick path stand
  // in for Exiv2's own reading of the file.
  bool plainLayout = false;

  bool empty() const noexcept { return ifd0.empty() && exifIfd.empty(); }
};

// True when `bytes` start with an ISO base media "ftyp" box.
bool looksLikeBmff(std::span<const std::uint8_t> bytes) noexcept;

// The EXIF streams of the file, empty when there are none or the boxes are broken.
Found find(std::span<const std::uint8_t> bytes);

}  // namespace tessane::BmffExif
