// The EXIF block of a JPEG or a RAW file's head made ready for Exiv2's EXIF parser to decode its
// maker note alone: the same block with new IFDs appended that leave out everything but the
// camera's make and model and the EXIF entries a maker note's lens is told from. Exiv2 then
// decodes a third to a half of the entries it would, for the same maker note values (offsets
// inside the block don't move). The maker notes of the common makers are thinned too, in place, to
// the entries the lens, the serial number and the size are named from.
//
// Stateless, so safe on any thread; nothing is thrown.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tessane::MakerNoteStream {

// The TIFF stream `tiff` (IFD0 first) made ready (`make`: the camera's make, as IFD0 gives it).
// Empty when the maker note, of a layout known here, holds nothing Exiv2 could name the lens, the
// serial number or the photo's size from (and EXIF names no lens): then it needs no decoding.
// Nothing when the stream's IFDs don't lie within it, nor, with `noteMustFit`, its maker note (a
// RAW file's head: Exiv2 would decode less of it).
std::optional<std::vector<std::uint8_t>> build(std::span<const std::uint8_t> tiff,
                                               std::string_view make, bool noteMustFit = true);

}  // namespace tessane::MakerNoteStream
