#include "RenameEngine/NameDiff.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace tessane {
namespace {

using Kind = DiffPiece::Kind;
using Pieces = std::vector<DiffPiece>;

std::string joined(const Pieces& pieces) {
  std::string out;
  for (const DiffPiece& p : pieces)
    out += p.text;
  return out;
}

// Added, removed, unchanged and replaced text: a replacement reads as removal then addition.
TEST(NameDiff, PiecesOfEachSide) {
  const struct {
    const char *from, *to;
    Pieces old, now;
  } cases[] = {
      {"IMG_0001",
       "2024_IMG_0001",
       {{Kind::same, "IMG_0001"}},
       {{Kind::added, "2024_"}, {Kind::same, "IMG_0001"}}},
      {"abc", "abc", {{Kind::same, "abc"}}, {{Kind::same, "abc"}}},
      {"", "x", {}, {{Kind::added, "x"}}},
      {"x", "", {{Kind::removed, "x"}}, {}},
      {"DSC_0001.JPG",
       "DSC_0001.jpg",
       {{Kind::same, "DSC_0001."}, {Kind::removed, "JPG"}},
       {{Kind::same, "DSC_0001."}, {Kind::added, "jpg"}}},
  };
  for (const auto& c : cases) {
    const NameDiff d = NameDiff::compare(c.from, c.to);
    EXPECT_EQ(d.oldPieces, c.old) << c.from << " -> " << c.to;
    EXPECT_EQ(d.newPieces, c.now) << c.from << " -> " << c.to;
  }
}

TEST(NameDiff, ComparesWholeCharacters) {
  // "é" written as e + U+0301 is one character: replacing it by "e" removes and adds it whole.
  const NameDiff d = NameDiff::compare(
      "caf"
      "e\xCC\x81",
      "cafe");
  EXPECT_EQ(d.oldPieces, (Pieces{{Kind::same, "caf"}, {Kind::removed, "e\xCC\x81"}}));
  EXPECT_EQ(d.newPieces, (Pieces{{Kind::same, "caf"}, {Kind::added, "e"}}));
  // No normalisation: composed and decomposed é differ.
  const NameDiff forms = NameDiff::compare("\xC3\xA9", "e\xCC\x81");
  EXPECT_EQ(forms.oldPieces, (Pieces{{Kind::removed, "\xC3\xA9"}}));
  // A flag is never cut in half.
  const NameDiff flags =
      NameDiff::compare("\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9", "\xF0\x9F\x87\xAE\xF0\x9F\x87\xAA");
  EXPECT_EQ(flags.oldPieces.size(), 1u);
  EXPECT_EQ(flags.oldPieces[0].kind, Kind::removed);
}

TEST(NameDiff, PiecesAlwaysRebuildTheNamesAndAlternate) {
  std::mt19937 random(11);
  const std::vector<std::string> alphabet{"a", "b", "_", "1", "\xC3\xA9", "\xF0\x9F\x8C\x8A"};
  auto randomName = [&] {
    std::string s;
    const int length = static_cast<int>(random() % 12);
    for (int i = 0; i < length; ++i)
      s += alphabet[random() % alphabet.size()];
    return s;
  };
  for (int round = 0; round < 500; ++round) {
    const std::string a = randomName();
    const std::string b = randomName();
    const NameDiff d = NameDiff::compare(a, b);
    ASSERT_EQ(joined(d.oldPieces), a);
    ASSERT_EQ(joined(d.newPieces), b);
    std::string sameOld, sameNew;
    for (const DiffPiece& p : d.oldPieces) {
      ASSERT_NE(p.kind, Kind::added);
      if (p.kind == Kind::same) sameOld += p.text;
    }
    for (const DiffPiece& p : d.newPieces) {
      ASSERT_NE(p.kind, Kind::removed);
      if (p.kind == Kind::same) sameNew += p.text;
    }
    ASSERT_EQ(sameOld, sameNew) << "the common part must be the same in both names";
    for (std::size_t i = 1; i < d.oldPieces.size(); ++i) {
      ASSERT_NE(d.oldPieces[i].kind, d.oldPieces[i - 1].kind);
    }
    for (std::size_t i = 1; i < d.newPieces.size(); ++i) {
      ASSERT_NE(d.newPieces[i].kind, d.newPieces[i - 1].kind);
    }
  }
}

}  // namespace
}  // namespace tessane
