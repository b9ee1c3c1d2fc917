#include "MediaMetadata/BmffExif.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <memory>
#include <string>

#include "MediaMetadata/ImageReader.h"
#include "MediaMetadata/MediaLibraries.h"

namespace tessane {
namespace {

using Bytes = std::vector<std::uint8_t>;

void be32(Bytes& b, std::uint32_t v) {
  for (int s = 24; s >= 0; s -= 8)
    b.push_back(static_cast<std::uint8_t>(v >> s));
}
void be16(Bytes& b, std::uint16_t v) {
  b.push_back(static_cast<std::uint8_t>(v >> 8));
  b.push_back(static_cast<std::uint8_t>(v));
}
void text(Bytes& b, const std::string& s) {
  b.insert(b.end(), s.begin(), s.end());
}

Bytes box(const std::string& type, const Bytes& payload) {
  Bytes b;
  be32(b, static_cast<std::uint32_t>(8 + payload.size()));
  text(b, type);
  b.insert(b.end(), payload.begin(), payload.end());
  return b;
}

Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// A little-endian TIFF stream whose first IFD holds one ASCII entry.
Bytes tiffWithText(std::uint16_t tag, const std::string& value) {
  Bytes b = {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0};
  const auto le16 = [&](std::uint16_t v) {
    b.push_back(static_cast<std::uint8_t>(v));
    b.push_back(static_cast<std::uint8_t>(v >> 8));
  };
  const auto le32 = [&](std::uint32_t v) {
    for (int s = 0; s < 32; s += 8)
      b.push_back(static_cast<std::uint8_t>(v >> s));
  };
  le16(tag);
  le16(2);  // ASCII
  le32(static_cast<std::uint32_t>(value.size() + 1));
  le32(26);  // the value follows the IFD
  le32(0);   // no next IFD
  text(b, value);
  b.push_back(0);
  return b;
}

// ftyp, meta (iinf with one "Exif" item, iloc pointing into mdat), mdat.
Bytes heif(const Bytes& tiff) {
  const Bytes ftyp = box("ftyp", [] {
    Bytes p;
    text(p, "heic");
    be32(p, 0);
    text(p, "mif1heic");
    return p;
  }());
  Bytes infe = {2, 0, 0, 0};
  be16(infe, 1);  // item id
  be16(infe, 0);
  text(infe, "Exif");
  infe.push_back(0);
  Bytes iinf = {0, 0, 0, 0};
  be16(iinf, 1);
  iinf = iinf + box("infe", infe);

  Bytes item;
  be32(item, 6);  // TIFF header offset, past "Exif\0\0"
  text(item, std::string("Exif\0\0", 6));
  item = item + tiff;

  // iloc v0: 4-byte offsets and lengths, no base offset.
  const auto ilocFor = [&](std::uint32_t offset) {
    Bytes iloc = {0, 0, 0, 0, 0x44, 0x00};
    be16(iloc, 1);
    be16(iloc, 1);  // item id
    be16(iloc, 0);  // data reference
    be16(iloc, 1);  // one extent
    be32(iloc, offset);
    be32(iloc, static_cast<std::uint32_t>(item.size()));
    return iloc;
  };
  const auto metaFor = [&](std::uint32_t offset) {
    Bytes meta = {0, 0, 0, 0};
    return box("meta", meta + box("iinf", iinf) + box("iloc", ilocFor(offset)));
  };
  const std::size_t before = ftyp.size() + metaFor(0).size() + 8;
  return ftyp + metaFor(static_cast<std::uint32_t>(before)) + box("mdat", item);
}

Bytes cr3(const Bytes& ifd0, const Bytes& exifIfd) {
  const Bytes ftyp = box("ftyp", [] {
    Bytes p;
    text(p, "crx ");
    be32(p, 1);
    text(p, "crx isom");
    return p;
  }());
  Bytes uuid;
  be32(uuid, 0);
  text(uuid, "uuid");
  for (const int b : {0x85, 0xc0, 0xb6, 0x87, 0x82, 0x0f, 0x11, 0xe0, 0x81, 0x11, 0xf4, 0xce, 0x46,
                      0x2b, 0x6a, 0x48})
    uuid.push_back(static_cast<std::uint8_t>(b));
  uuid = uuid + box("CNCV", Bytes(30, 'x')) + box("CMT1", ifd0) + box("CMT2", exifIfd);
  const auto size = static_cast<std::uint32_t>(uuid.size());
  uuid[0] = static_cast<std::uint8_t>(size >> 24);
  uuid[1] = static_cast<std::uint8_t>(size >> 16);
  uuid[2] = static_cast<std::uint8_t>(size >> 8);
  uuid[3] = static_cast<std::uint8_t>(size);
  return ftyp + box("moov", uuid);
}

TEST(BmffExif, FindsTheExifItemOfAHeifFile) {
  const Bytes tiff = tiffWithText(0x010f, "Canon");
  const BmffExif::Found found = BmffExif::find(heif(tiff));
  EXPECT_EQ(found.ifd0, tiff);
  EXPECT_TRUE(found.exifIfd.empty());
}

TEST(BmffExif, FindsTheMetadataBoxesOfACr3File) {
  const Bytes ifd0 = tiffWithText(0x0110, "Canon EOS R5");
  const Bytes exif = tiffWithText(0x9003, "2024:05:01 14:03:22");
  const BmffExif::Found found = BmffExif::find(cr3(ifd0, exif));
  EXPECT_EQ(found.ifd0, ifd0);
  EXPECT_EQ(found.exifIfd, exif);
}

TEST(BmffExif, EveryCutOfAFileIsSafe) {
  for (const Bytes& whole : {heif(tiffWithText(0x010f, "Canon")),
                             cr3(tiffWithText(0x0110, "R5"), tiffWithText(0x9003, "x"))}) {
    for (std::size_t n = 0; n < whole.size(); ++n) {
      const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(n));
      BmffExif::find(cut);
    }
    // Box sizes that claim more than there is.
    Bytes lying = whole;
    for (std::size_t i = 0; i + 4 <= lying.size(); i += 13) {
      lying[i] = 0xff;
      BmffExif::find(lying);
    }
  }
  EXPECT_TRUE(BmffExif::find(Bytes{}).empty());
}

TEST(BmffExif, TheImageReaderFallsBackToTheBoxes) {
  MediaLibraries::initialize();
  const std::unique_ptr<icu::TimeZone> utc(icu::TimeZone::createTimeZone("UTC"));
  MetadataMap m;
  ImageReader::readBytes(
      cr3(tiffWithText(0x010f, "Canon"), tiffWithText(0x9003, "2024:05:01 14:03:22")),
      FileKind::raw, *utc, m);
  ASSERT_NE(m.find(MetadataKey::make), nullptr);
  EXPECT_EQ(*m.find(MetadataKey::make), MetadataValue::text("Canon"));
  EXPECT_NE(m.find(MetadataKey::date), nullptr);
}

}  // namespace
}  // namespace tessane
