#include "BmffExif.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string_view>

namespace tessane::BmffExif {
namespace {

using Bytes = std::span<const std::uint8_t>;

// Canon's metadata box inside moov.
constexpr std::array<std::uint8_t, 16> kCanonUuid = {
    0x85, 0xc0, 0xb6, 0x87, 0x82, 0x0f, 0x11, 0xe0, 0x81, 0x11, 0xf4, 0xce, 0x46, 0x2b, 0x6a, 0x48};

// Items of one kind found while walking; capped so a crafted file can't make us loop for long.
constexpr std::size_t kMaxBoxes = 4096;
constexpr std::size_t kMaxExtents = 64;
constexpr std::uint64_t kMaxExifBytes = 16u << 20;

std::uint64_t readBE(Bytes b, std::size_t at, std::size_t width) {
  std::uint64_t v = 0;
  for (std::size_t i = 0; i < width; ++i)
    v = (v << 8) | b[at + i];
  return v;
}

struct Box {
  std::string_view type;  // four characters
  Bytes payload;          // after the header (and after the usertype of a "uuid" box)
  Bytes usertype;         // 16 bytes for "uuid", else empty
};

// Walks the boxes of `data` in order. `visit` returns false to stop.
template <typename Visit>
void eachBox(Bytes data, Visit&& visit) {
  std::size_t pos = 0;
  for (std::size_t count = 0; count < kMaxBoxes && data.size() - pos >= 8; ++count) {
    std::uint64_t size = readBE(data, pos, 4);
    const std::string_view type(reinterpret_cast<const char*>(data.data() + pos + 4), 4);
    std::size_t header = 8;
    if (size == 1) {
      if (data.size() - pos < 16) return;
      size = readBE(data, pos + 8, 8);
      header = 16;
    } else if (size == 0) {
      size = data.size() - pos;
    }
    if (size < header || size > data.size() - pos) return;
    Bytes payload = data.subspan(pos + header, static_cast<std::size_t>(size) - header);
    Bytes usertype;
    if (type == "uuid") {
      if (payload.size() < 16) return;
      usertype = payload.first(16);
      payload = payload.subspan(16);
    }
    if (!visit(Box{type, payload, usertype})) return;
    pos += static_cast<std::size_t>(size);
  }
}

std::optional<Box> child(Bytes data, std::string_view type) {
  std::optional<Box> found;
  eachBox(data, [&](const Box& b) {
    if (b.type != type) return true;
    found = b;
    return false;
  });
  return found;
}

// Cursor over a box payload that fails instead of reading past the end.
struct Reader {
  Bytes b;
  std::size_t pos = 0;
  bool ok = true;

  std::uint64_t take(std::size_t width) {
    if (!ok || width > 8 || b.size() - pos < width) {
      ok = false;
      return 0;
    }
    const std::uint64_t v = readBE(b, pos, width);
    pos += width;
    return v;
  }
  void skip(std::size_t n) {
    if (!ok || b.size() - pos < n) {
      ok = false;
      return;
    }
    pos += n;
  }
};

// The item id of the "infe" whose type is "Exif".
std::optional<std::uint32_t> exifItemId(Bytes iinf) {
  Reader r{iinf};
  const auto version = r.take(1);
  r.skip(3);
  r.skip(version == 0 ? 2 : 4);
  if (!r.ok) return std::nullopt;
  std::optional<std::uint32_t> id;
  eachBox(iinf.subspan(r.pos), [&](const Box& b) {
    if (b.type != "infe") return true;
    Reader e{b.payload};
    const auto v = e.take(1);
    e.skip(3);
    if (v < 2) return true;
    const auto itemId = e.take(v == 2 ? 2 : 4);
    e.skip(2);
    if (!e.ok || e.b.size() - e.pos < 4) return true;
    // The last "Exif" item wins, as in Exiv2.
    if (std::memcmp(e.b.data() + e.pos, "Exif", 4) == 0) id = static_cast<std::uint32_t>(itemId);
    return true;
  });
  return id;
}

// The bytes of item `id`, from iloc, in the file or in idat.
std::vector<std::uint8_t> itemBytes(Bytes file, Bytes iloc, std::optional<Bytes> idat,
                                    std::uint32_t id, bool& plain) {
  plain = false;
  Reader r{iloc};
  const auto version = r.take(1);
  r.skip(3);
  const auto sizes = r.take(2);
  const std::size_t offsetSize = (sizes >> 12) & 0xf;
  const std::size_t lengthSize = (sizes >> 8) & 0xf;
  const std::size_t baseOffsetSize = (sizes >> 4) & 0xf;
  const std::size_t indexSize = (version == 1 || version == 2) ? (sizes & 0xf) : 0;
  const auto itemCount = r.take(version < 2 ? 2 : 4);
  for (std::uint64_t i = 0; r.ok && i < itemCount; ++i) {
    const auto itemId = r.take(version < 2 ? 2 : 4);
    std::uint64_t method = 0;
    if (version == 1 || version == 2) method = r.take(2) & 0xf;
    r.skip(2);  // data reference index
    const auto baseOffset = r.take(baseOffsetSize);
    const auto extentCount = r.take(2);
    if (itemId == id) {
      plain = version < 2 && offsetSize == 4 && lengthSize == 4 && baseOffsetSize == 0 &&
              indexSize == 0 && method == 0 && extentCount == 1;
    }
    std::vector<std::uint8_t> out;
    for (std::uint64_t e = 0; r.ok && e < extentCount; ++e) {
      if (indexSize > 0) r.skip(indexSize);
      const auto offset = r.take(offsetSize);
      const auto length = r.take(lengthSize);
      if (!r.ok || itemId != id) continue;
      if (e >= kMaxExtents) return {};
      const Bytes source = method == 0 ? file : method == 1 && idat ? *idat : Bytes{};
      const std::uint64_t start = baseOffset + offset;
      if (start < baseOffset || start > source.size()) return {};
      const std::uint64_t available = source.size() - start;
      const std::uint64_t take = length == 0 ? available : length;
      if (take > available || out.size() + take > kMaxExifBytes) return {};
      const auto* begin = source.data() + start;
      out.insert(out.end(), begin, begin + take);
    }
    if (r.ok && itemId == id) return out;
  }
  return {};
}

bool isTiffHeader(Bytes b) {
  if (b.size() < 8) return false;
  return (b[0] == 'I' && b[1] == 'I' && b[2] == 42 && b[3] == 0) ||
         (b[0] == 'M' && b[1] == 'M' && b[2] == 0 && b[3] == 42);
}

// An EXIF item starts with the offset of its TIFF header (usually past "Exif\0\0"). The header
// is taken where Exiv2 takes it: the first "II" or "MM" in the item.
std::vector<std::uint8_t> tiffOfExifItem(std::vector<std::uint8_t> item) {
  if (item.size() < 9) return {};
  std::size_t start = 0;
  while (start < item.size() - 8 &&
         !(item[start] == item[start + 1] && (item[start] == 'I' || item[start] == 'M')))
    ++start;
  if (start >= item.size() - 8 || !isTiffHeader(Bytes(item).subspan(start))) return {};
  item.erase(item.begin(), item.begin() + static_cast<std::ptrdiff_t>(start));
  return item;
}

// The largest "ispe" of the item properties, both sides larger, as Exiv2 keeps it.
void imageSize(Bytes metaChildren, Found& found) {
  const auto iprp = child(metaChildren, "iprp");
  if (!iprp) return;
  const auto ipco = child(iprp->payload, "ipco");
  if (!ipco) return;
  eachBox(ipco->payload, [&](const Box& b) {
    if (b.type != "ispe" || b.payload.size() < 12) return true;
    const auto w = static_cast<std::int64_t>(readBE(b.payload, 4, 4));
    const auto h = static_cast<std::int64_t>(readBE(b.payload, 8, 4));
    if (w > found.width && h > found.height) {
      found.width = w;
      found.height = h;
    }
    return true;
  });
}

void findHeifExif(Bytes file, Bytes meta, Found& found) {
  Reader r{meta};
  r.skip(4);  // version and flags
  if (!r.ok) return;
  const Bytes children = meta.subspan(4);
  imageSize(children, found);
  const auto iinf = child(children, "iinf");
  const auto iloc = child(children, "iloc");
  if (!iinf || !iloc) return;
  const auto id = exifItemId(iinf->payload);
  if (!id) return;
  std::optional<Bytes> idat;
  if (const auto box = child(children, "idat")) idat = box->payload;
  found.ifd0 = tiffOfExifItem(itemBytes(file, iloc->payload, idat, *id, found.plainLayout));
}

void findCanonExif(Bytes moov, Found& found) {
  eachBox(moov, [&](const Box& b) {
    if (b.type != "uuid" || !std::equal(b.usertype.begin(), b.usertype.end(), kCanonUuid.begin()))
      return true;
    eachBox(b.payload, [&](const Box& cmt) {
      if (cmt.type == "CMT1" && isTiffHeader(cmt.payload)) {
        found.ifd0.assign(cmt.payload.begin(), cmt.payload.end());
      } else if (cmt.type == "CMT2" && isTiffHeader(cmt.payload)) {
        found.exifIfd.assign(cmt.payload.begin(), cmt.payload.end());
      } else if (cmt.type == "CMT3") {
        found.canonMakerNote = true;
      }
      return true;
    });
    return false;
  });
}

}  // namespace

bool looksLikeBmff(std::span<const std::uint8_t> bytes) noexcept {
  return bytes.size() >= 12 && std::memcmp(bytes.data() + 4, "ftyp", 4) == 0;
}

Found find(std::span<const std::uint8_t> bytes) {
  Found found;
  if (!looksLikeBmff(bytes)) return found;
  eachBox(bytes, [&](const Box& b) {
    if (b.type == "meta") findHeifExif(bytes, b.payload, found);
    if (b.type == "moov") findCanonExif(b.payload, found);
    return found.empty();
  });
  return found;
}

}  // namespace tessane::BmffExif
