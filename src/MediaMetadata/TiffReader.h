// The TIFF streams of the quick paths (a JPEG's EXIF block, a RAW file's head, the EXIF boxes of
// HEIF and CR3 files): IFDs, their entries and values, every read checked to lie within the
// stream, and the IFD0 and EXIF IFD fields the image reader maps (ImageFields), read as Exiv2
// reads them.
//
// Inside this module, a read that finds something outside the stream, or unlike what Exiv2 would
// read, throws TiffReader::GiveUp, which tells the caller to leave the file to Exiv2; `readTiff`
// catches it, and it never leaves the module. Stateless, so safe on any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "ImageFields.h"

namespace tessane::TiffReader {

using Bytes = std::span<const std::uint8_t>;

// Thrown inside this module only, when a quick path gives up.
struct GiveUp {};

// More entries than this in one IFD: not a camera's, leave it to Exiv2.
constexpr std::uint16_t kMaxEntries = 1024;

// A TIFF stream: its byte order from its header, and reads that throw GiveUp past its end.
class Tiff {
 public:
  explicit Tiff(Bytes b) : b_(b) {
    if (b_.size() < 8) throw GiveUp{};
    if (b_[0] == 'I' && b_[1] == 'I') {
      little_ = true;
    } else if (b_[0] != 'M' || b_[1] != 'M') {
      throw GiveUp{};
    }
    if (u16(2) != 42) throw GiveUp{};
  }

  std::uint16_t u16(std::uint64_t at) const {
    need(at, 2);
    return little_ ? static_cast<std::uint16_t>(b_[at] | b_[at + 1] << 8)
                   : static_cast<std::uint16_t>(b_[at] << 8 | b_[at + 1]);
  }
  std::uint32_t u32(std::uint64_t at) const {
    need(at, 4);
    const std::uint32_t a = b_[at], b = b_[at + 1], c = b_[at + 2], d = b_[at + 3];
    return little_ ? (a | b << 8 | c << 16 | d << 24) : (a << 24 | b << 16 | c << 8 | d);
  }
  void need(std::uint64_t at, std::uint64_t n) const {
    if (at > b_.size() || n > b_.size() - at) throw GiveUp{};
  }
  Bytes bytes() const { return b_; }
  bool little() const { return little_; }

 private:
  Bytes b_;
  bool little_ = false;
};

// One IFD entry: `data` is where the value starts (inside the entry when it fits in four bytes).
struct Entry {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;
  std::uint32_t count = 0;
  std::uint64_t data = 0;  // where the value starts
};

// The size of one element of a TIFF type; 0 for an unknown type.
std::uint64_t typeSize(std::uint16_t type);

// The entries of the IFD at `offset`.
std::vector<Entry> readIfd(const Tiff& t, std::uint32_t offset);

// The value's bytes, checked to lie within the stream.
Bytes valueBytes(const Tiff& t, const Entry& e);

// Reading one TIFF stream the quick way. `start` says whether its first IFD is IFD0 (which may
// point to the EXIF IFD) or the EXIF IFD itself. Adds to `fields` and sets `makerNote` when the
// EXIF IFD has one; false, leaving `fields` as they were, when the quick path can't be sure to
// read as Exiv2 does. With `tiffIptcMatters`, IPTC kept in IFD0 also makes it give up (Exiv2
// reads it from there outside JPEG files).
enum class TiffStart { ifd0, exifIfd };
bool readTiff(Bytes stream, TiffStart start, bool tiffIptcMatters, ImageFields& fields,
              bool& makerNote);

// The same, throwing GiveUp, for readers inside this module.
void readStream(Bytes stream, TiffStart start, bool tiffIptcMatters, ImageFields& f,
                bool& makerNote);

// Whether a maker note could add to these fields: the EXIF lens model doesn't name a lens, or
// the serial number is missing and the camera's maker keeps one in its maker note.
bool makerNoteCouldAdd(const ImageFields& fields);

// A value read as a float, as Exiv2 gives numbers, as a positive whole number: nothing when it is
// below 1, above four billion or not finite.
std::optional<std::int64_t> positiveInteger(float v);

}  // namespace tessane::TiffReader
