#include "RenameEngine/BlockedName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessane {
namespace {

using Kind = NameToken::Kind;

std::vector<NameToken> tokens(std::initializer_list<std::pair<Kind, const char*>> list) {
  std::vector<NameToken> out;
  for (const auto& [kind, text] : list)
    out.push_back(NameToken{kind, text});
  return out;
}

TEST(BlockedName, SplitsBlocksAndSeparators) {
  const BlockedName n = BlockedName::split("2024-05-01_Rome");
  EXPECT_EQ(n.tokens(), tokens({{Kind::block, "2024"},
                                {Kind::separator, "-"},
                                {Kind::block, "05"},
                                {Kind::separator, "-"},
                                {Kind::block, "01"},
                                {Kind::separator, "_"},
                                {Kind::block, "Rome"}}));
  EXPECT_EQ(n.blocks(), (std::vector<std::string>{"2024", "05", "01", "Rome"}));
  EXPECT_EQ(n.tokenIndexOfBlock(-1), 6u);
  EXPECT_EQ(n.tokenIndexOfBlock(0), 0u);
  EXPECT_EQ(n.tokenIndexOfBlock(-4), 0u);
  EXPECT_FALSE(n.tokenIndexOfBlock(4).has_value());
  EXPECT_FALSE(n.tokenIndexOfBlock(-5).has_value());
}

TEST(BlockedName, RunsOfSeparatorsAndSeparatorsAtTheEnds) {
  EXPECT_EQ(BlockedName::split("A__B").tokens(),
            tokens({{Kind::block, "A"}, {Kind::separator, "__"}, {Kind::block, "B"}}));
  EXPECT_EQ(BlockedName::split("_x_").tokens(),
            tokens({{Kind::separator, "_"}, {Kind::block, "x"}, {Kind::separator, "_"}}));
  EXPECT_EQ(BlockedName::split("a -._b").tokens(),
            tokens({{Kind::block, "a"}, {Kind::separator, " -._"}, {Kind::block, "b"}}));
  EXPECT_TRUE(BlockedName::split("").tokens().empty());
  EXPECT_EQ(BlockedName::split("___").tokens(), tokens({{Kind::separator, "___"}}));
  EXPECT_FALSE(BlockedName::split("___").tokenIndexOfBlock(0).has_value());
}

TEST(BlockedName, CustomSeparatorsLongestFirst) {
  const std::vector<std::string> seps{"-", "--"};
  EXPECT_EQ(BlockedName::split("a--b", seps).tokens(),
            tokens({{Kind::block, "a"}, {Kind::separator, "--"}, {Kind::block, "b"}}));
  // Matching is exact and case-sensitive; empty separators are ignored.
  const std::vector<std::string> words{"", "and"};
  EXPECT_EQ(
      BlockedName::split("salt and ANDpepper", words).tokens(),
      tokens({{Kind::block, "salt "}, {Kind::separator, "and"}, {Kind::block, " ANDpepper"}}));
  // Multi-character separators in a non-ASCII name.
  const std::vector<std::string> arrows{"\xE2\x86\x92"};  // →
  EXPECT_EQ(BlockedName::split("Rom\xE2\x86\x92Paris", arrows).blocks(),
            (std::vector<std::string>{"Rom", "Paris"}));
  // A decomposed separator matches the composed text it stands for.
  const std::vector<std::string> accented{"e\xCC\x81"};
  EXPECT_EQ(BlockedName::split("a\xC3\xA9"
                               "b",
                               accented)
                .blocks(),
            (std::vector<std::string>{"a", "b"}));
}

TEST(BlockedName, SeparatorsNeverSplitACharacter) {
  // "." followed by a combining acute is one character, so it is not a separator.
  const BlockedName dotted = BlockedName::split(
      "a.\xCC\x81"
      "b_c");
  EXPECT_EQ(dotted.blocks(), (std::vector<std::string>{"a.\xCC\x81"
                                                       "b",
                                                       "c"}));
  // Emoji sequences, flags and non-Latin scripts are blocks made of whole characters.
  const std::string family =
      "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7";
  const BlockedName mixed =
      BlockedName::split(family + "_\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9-\xE6\x9D\xB1\xE4\xBA\xAC");
  EXPECT_EQ(mixed.blocks(), (std::vector<std::string>{family, "\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9",
                                                      "\xE6\x9D\xB1\xE4\xBA\xAC"}));
  // CR LF is one character and matches no one-character separator.
  EXPECT_EQ(BlockedName::split("a\r\nb", {"\r"}).blocks(), std::vector<std::string>{"a\r\nb"});
}

TEST(BlockedName, JoinedGivesBackEveryName) {
  const char* names[] = {"DSC_0001",
                         "2024-05-01_Rome",
                         "  spaced  out ",
                         "__",
                         "x",
                         "\xC3\xA9t\xC3\xA9_\xF0\x9F\x8C\x8A",
                         "a\r\n_b",
                         "caf\xE9_1",
                         "IMG.0001.final--v2"};
  for (const char* name : names) {
    const BlockedName n = BlockedName::split(name);
    EXPECT_EQ(n.joined(), name);
    for (std::size_t i = 1; i < n.tokens().size(); ++i) {
      EXPECT_NE(n.tokens()[i].kind, n.tokens()[i - 1].kind) << name;
      EXPECT_FALSE(n.tokens()[i].text.empty()) << name;
    }
  }
}

TEST(BlockedName, BuiltFromEditedTokensKeepsTheInvariants) {
  const BlockedName n(tokens({{Kind::block, "A"},
                              {Kind::separator, ""},
                              {Kind::block, "B"},
                              {Kind::separator, "_"},
                              {Kind::separator, "-"},
                              {Kind::block, "C"}}));
  EXPECT_EQ(n.tokens(), tokens({{Kind::block, "AB"}, {Kind::separator, "_-"}, {Kind::block, "C"}}));
  EXPECT_EQ(n.joined(), "AB_-C");
}

}  // namespace
}  // namespace tessane
