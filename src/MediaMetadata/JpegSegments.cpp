#include "JpegSegments.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "IptcFields.h"
#include "MakerNoteStream.h"
#include "TiffReader.h"

namespace tessane::JpegSegments {
namespace {

using TiffReader::Bytes;
using TiffReader::GiveUp;

constexpr std::size_t kMaxSegments = 512;
constexpr std::string_view kXmpId("http://ns.adobe.com/xap/1.0/\0", 29);

// Reads the EXIF fields; true when the maker note could add to them.
bool readExif(Bytes exif, ImageFields& f) {
  bool makerNote = false;
  TiffReader::readStream(exif, TiffReader::TiffStart::ifd0, false, f, makerNote);
  f.makerNote = makerNote;
  return makerNote && TiffReader::makerNoteCouldAdd(f);
}

void readIptc(const std::optional<std::vector<std::uint8_t>>& resources, ImageFields& f) {
  if (!resources) return;
  const std::vector<std::uint8_t>& photoshop = *resources;
  std::vector<std::uint8_t> iptc;
  const Exiv2::byte* cur = photoshop.data();
  const Exiv2::byte* const end = cur + photoshop.size();
  const Exiv2::byte* record = nullptr;
  std::uint32_t sizeHdr = 0;
  std::uint32_t sizeIptc = 0;
  while (cur < end && Exiv2::Photoshop::locateIptcIrb(cur, static_cast<long>(end - cur), &record,
                                                      &sizeHdr, &sizeIptc) == 0) {
    if (sizeIptc > 0) iptc.insert(iptc.end(), record + sizeHdr, record + sizeHdr + sizeIptc);
    cur = record + sizeHdr + sizeIptc + (sizeIptc & 1);
  }
  if (iptc.empty()) return;
  Exiv2::IptcData data;
  if (Exiv2::IptcParser::decode(data, iptc.data(), static_cast<std::uint32_t>(iptc.size())) != 0)
    return;
  IptcFields::read(data, f);
}

// The image's own XMP packet, decoded as Exiv2's JPEG reader decodes it, in place of the IPTC.
void readXmp(Bytes packet, std::size_t size, ImageFields& f) {
  if (packet.size() != size) throw GiveUp{};
  const std::string_view text(reinterpret_cast<const char*>(packet.data()), packet.size());
  if (!IptcFields::xmpMayHold(text)) return;
  Exiv2::XmpData data;
  try {
    Exiv2::XmpParser::decode(data, std::string(text));
  } catch (...) {
    throw GiveUp{};
  }
  IptcFields::preferXmp(data, f);
}

bool isSof(std::uint8_t m) {
  return (m >= 0xc0 && m <= 0xc3) || (m >= 0xc5 && m <= 0xc7) || (m >= 0xc9 && m <= 0xcb) ||
         (m >= 0xcd && m <= 0xcf);
}

// What the walk over the segments found besides `Parts`.
struct Segments {
  bool exif = false;
  std::optional<std::vector<std::uint8_t>> photoshop;  // the Photoshop segment's resources
  // The first XMP packet (as Exiv2 takes it): where it lies, read only when IPTC needs it.
  std::optional<std::pair<std::uint64_t, std::size_t>> xmp;
};

bool isXmp(Bytes payload) {
  return payload.size() >= kXmpId.size() &&
         std::equal(kXmpId.begin(), kXmpId.end(), payload.begin());
}

// Takes what one segment holds: the EXIF block, where the XMP packet lies, the Photoshop
// resources, the frame size.
void takeSegment(const Fetch& fetch, std::uint8_t marker, std::uint64_t payloadAt,
                 std::size_t payloadSize, Parts& parts, Segments& found) {
  if (marker == 0xe1 && !found.exif && payloadSize >= 6) {
    const Bytes p = fetch(payloadAt, payloadSize);
    if (p.size() != payloadSize) throw GiveUp{};
    if (std::memcmp(p.data(), "Exif\0\0", 6) == 0) {
      parts.exif.assign(p.begin() + 6, p.end());
      found.exif = true;
    } else if (!found.xmp && isXmp(p)) {
      found.xmp.emplace(payloadAt + kXmpId.size(), payloadSize - kXmpId.size());
    }
  } else if (marker == 0xe1 && !found.xmp && payloadSize >= kXmpId.size()) {
    if (isXmp(fetch(payloadAt, kXmpId.size()))) {
      found.xmp.emplace(payloadAt + kXmpId.size(), payloadSize - kXmpId.size());
    }
  } else if (marker == 0xed && payloadSize >= 14) {
    const Bytes p = fetch(payloadAt, payloadSize);
    if (p.size() != payloadSize) throw GiveUp{};
    if (std::memcmp(p.data(), "Photoshop 3.0\0", 14) == 0) {
      if (found.photoshop) throw GiveUp{};
      found.photoshop.emplace(p.begin() + 14, p.end());
    }
  } else if (isSof(marker) && parts.fields.imageHeight == 0) {
    const Bytes p = fetch(payloadAt, 5);
    if (p.size() != 5) throw GiveUp{};
    parts.fields.imageHeight = p[1] << 8 | p[2];
    parts.fields.imageWidth = p[3] << 8 | p[4];
  }
}

// Walks the segments up to the scan, giving up on anything Exiv2 would read otherwise.
void walk(const Fetch& fetch, Parts& parts, Segments& found) {
  std::uint64_t pos = 2;
  for (std::size_t count = 0;; ++count) {
    if (count == kMaxSegments) throw GiveUp{};
    const Bytes header = fetch(pos, 4);
    if (header.size() < 2 || header[0] != 0xff) throw GiveUp{};
    const std::uint8_t marker = header[1];
    if (marker == 0xda || marker == 0xd9) return;  // the scan or the end: no more metadata
    if (marker == 0xff || marker == 0xd8 || marker == 0x01 || (marker >= 0xd0 && marker <= 0xd7) ||
        marker == 0xc8 || marker == 0xcc || header.size() < 4)
      throw GiveUp{};
    const std::size_t length = static_cast<std::size_t>(header[2] << 8 | header[3]);
    if (length < 2) throw GiveUp{};
    takeSegment(fetch, marker, pos + 4, length - 2, parts, found);
    pos += 2 + length;
  }
}

// The EXIF fields read here, and the maker note's stream when it could add to them; the whole
// block left to Exiv2's EXIF parser when reading it here is not sure.
void readExifFields(Parts& parts) {
  ImageFields withExif = parts.fields;
  try {
    if (readExif(parts.exif, withExif)) {
      auto stream = MakerNoteStream::build(
          parts.exif, withExif.make ? withExif.make->text : std::string(), false);
      if (!stream) throw GiveUp{};
      parts.makerNoteStream = std::move(*stream);
      // A maker note that can name nothing is as good as read.
      if (parts.makerNoteStream.empty()) withExif.makerNote = false;
    }
    parts.fields = std::move(withExif);
  } catch (const GiveUp&) {
    parts.makerNoteStream.clear();
    parts.exifForExiv2 = true;
  }
}

}  // namespace

bool looksLikeJpeg(std::span<const std::uint8_t> head) noexcept {
  return head.size() >= 3 && head[0] == 0xff && head[1] == 0xd8 && head[2] == 0xff;
}

std::optional<Parts> read(const Fetch& fetch) {
  try {
    Parts parts;
    Segments found;
    walk(fetch, parts, found);
    readIptc(found.photoshop, parts.fields);
    if (found.xmp && parts.fields.iptcUncertain) {
      readXmp(fetch(found.xmp->first, found.xmp->second), found.xmp->second, parts.fields);
    }
    if (found.exif) readExifFields(parts);
    return parts;
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace tessane::JpegSegments
