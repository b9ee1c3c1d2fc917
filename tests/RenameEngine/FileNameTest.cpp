#include "RenameEngine/FileName.h"

#include <gtest/gtest.h>

#include <string>

namespace tessane {
namespace {

struct SplitCase {
  std::string name, base, ext;
  FileKind kind;
};

TEST(FileName, SplitsIntoBaseAndExtension) {
  const SplitCase cases[] = {
      {"DSC_0001.ARW", "DSC_0001", "ARW", FileKind::raw},
      {"clip.MOV", "clip", "MOV", FileKind::video},
      {"scan.PDF", "scan", "PDF", FileKind::pdf},
      {"photo.DNG", "photo", "DNG", FileKind::raw},
      {"song.flac", "song", "flac", FileKind::audio},
      {"IMG_1234.HEIC", "IMG_1234", "HEIC", FileKind::image},
      {"archive.tar.gz", "archive.tar", "gz", FileKind::other},
      {".DS_Store", ".DS_Store", "", FileKind::other},
      {"name.", "name.", "", FileKind::other},
      {"README", "README", "", FileKind::other},
      {"", "", "", FileKind::other},
      {".", ".", "", FileKind::other},
      {"..jpg", ".", "jpg", FileKind::image},
      // Sidecars: the double extension stays whole only after a known media extension.
      {"IMG_0001.CR2.xmp", "IMG_0001", "CR2.xmp", FileKind::sidecar},
      {"IMG_0001.xmp", "IMG_0001", "xmp", FileKind::sidecar},
      {"IMG_0001.JPG.XMP", "IMG_0001", "JPG.XMP", FileKind::sidecar},
      {"C0001.MXF.xmp", "C0001", "MXF.xmp", FileKind::sidecar},
      {"notes.txt.xmp", "notes.txt", "xmp", FileKind::sidecar},
      {"IMG_0001.gif.xmp", "IMG_0001.gif", "xmp", FileKind::sidecar},
      {"clip.avi.xmp", "clip.avi", "xmp", FileKind::sidecar},
      {".CR2.xmp", ".CR2", "xmp", FileKind::sidecar},  // the inner dot is the first character
  };
  for (const SplitCase& c : cases) {
    const FileName n = FileName::parse(c.name);
    EXPECT_EQ(n.base, c.base) << c.name;
    EXPECT_EQ(n.ext, c.ext) << c.name;
    EXPECT_EQ(n.kind(), c.kind) << c.name;
    EXPECT_EQ(n.fullName(), c.name) << "the split must join back to the name";
  }
}

TEST(FileName, ComposedAndDecomposedNamesSplitAlike) {
  const FileName composed = FileName::parse("\xC3\x89t\xC3\xA9.JPG");
  const FileName decomposed = FileName::parse("E\xCC\x81te\xCC\x81.JPG");
  EXPECT_EQ(composed, decomposed);
  EXPECT_EQ(std::hash<FileName>{}(composed), std::hash<FileName>{}(decomposed));
  EXPECT_EQ(composed.base, "\xC3\x89t\xC3\xA9");
}

TEST(FileName, ExtensionsOutsideAsciiAndEmojiNames) {
  const FileName emoji = FileName::parse("\xF0\x9F\x8C\x8A_surf.jpeg");
  EXPECT_EQ(emoji.base, "\xF0\x9F\x8C\x8A_surf");
  EXPECT_EQ(emoji.kind(), FileKind::image);
  // A dot carrying a combining mark is a character of its own kind, not an extension dot.
  EXPECT_EQ(FileName::parse("a.\xCC\x81jpg"), (FileName{"a.\xCC\x81jpg", ""}));
  EXPECT_EQ(FileName::parse("a.b.\xCC\x81x"), (FileName{"a", "b.\xCC\x81x"}));
  EXPECT_EQ(FileName::parse("photo.J\xCC\x81PG").lowerExt(), "j\xCC\x81pg");
}

TEST(FileKind, FromExtensionOrWholeName) {
  EXPECT_EQ(fileKindOf("ARW"), FileKind::raw);
  EXPECT_EQ(fileKindOf("arw"), FileKind::raw);
  EXPECT_EQ(fileKindOf("DSC_0001.ARW"), FileKind::raw);
  EXPECT_EQ(fileKindOf("CR2.xmp"), FileKind::sidecar);
  EXPECT_EQ(fileKindOf("JPEG"), FileKind::image);
  EXPECT_EQ(fileKindOf("m2ts"), FileKind::video);
  EXPECT_EQ(fileKindOf("DSC.JPG."), FileKind::image);  // empty pieces are dropped
  EXPECT_EQ(fileKindOf("..."), FileKind::other);
  EXPECT_EQ(fileKindOf(""), FileKind::other);
  EXPECT_EQ(fileKindOf("jpgx"), FileKind::other);
  EXPECT_EQ(fileKindOf("jp"), FileKind::other);
  EXPECT_EQ(fileKindOf("photo.jpegs"), FileKind::other);
  // Full Unicode lower-casing: the Kelvin sign lower-cases to "k", so "\u212ADC" is "kdc".
  EXPECT_EQ(fileKindOf("\xE2\x84\xAA"
                       "DC"),
            FileKind::raw);
}

}  // namespace
}  // namespace tessane
