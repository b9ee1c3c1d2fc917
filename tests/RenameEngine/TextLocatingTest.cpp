#include "RenameEngine/JsonDecoders.h"
#include "RenameEngine/TextLocating.h"

#include <gtest/gtest.h>

namespace tessane {
namespace {

using Ranges = std::vector<CharRange>;

Anchor anchor(std::string text, bool caseSensitive = true, Occurrence o = Occurrence::all) {
  return Anchor{std::move(text), caseSensitive, o};
}

TEST(TextLocating, HitsAreLeftToRightAndNeverOverlap) {
  EXPECT_EQ(TextLocating::ranges(anchor("a", false), "Aaa"), (Ranges{{0, 1}, {1, 2}, {2, 3}}));
  EXPECT_EQ(TextLocating::ranges(anchor("a", true), "Aaa"), (Ranges{{1, 2}, {2, 3}}));
  EXPECT_EQ(TextLocating::ranges(anchor("aa"), "aaaa"), (Ranges{{0, 2}, {2, 4}}));
  EXPECT_EQ(TextLocating::ranges(anchor("_", true, Occurrence::first), "a_b_c"), (Ranges{{1, 2}}));
  EXPECT_EQ(TextLocating::ranges(anchor("_", true, Occurrence::last), "a_b_c"), (Ranges{{3, 4}}));
  EXPECT_TRUE(TextLocating::ranges(anchor(""), "abc").empty());
  EXPECT_TRUE(TextLocating::ranges(anchor("x", false), "abc").empty());
  // An `all` anchor where one place is needed means its first hit.
  EXPECT_EQ(TextLocating::range(anchor("_", true, Occurrence::all), "a_b_c"), (CharRange{1, 2}));
  EXPECT_EQ(TextLocating::range(anchor("_", true, Occurrence::last), "a_b_c"), (CharRange{3, 4}));
  EXPECT_FALSE(TextLocating::range(anchor(""), "abc").has_value());
}

TEST(TextLocating, PositionsCountCharactersAndHitsRespectThem) {
  const std::string family = "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9";  // man ZWJ woman
  EXPECT_EQ(TextLocating::ranges(anchor("_"), family + "_x_\xC3\xA9"), (Ranges{{1, 2}, {3, 4}}));
  // A decomposed anchor finds the composed text and the other way round.
  EXPECT_EQ(TextLocating::ranges(anchor("e\xCC\x81"), "caf\xC3\xA9"), (Ranges{{3, 4}}));
  EXPECT_EQ(TextLocating::ranges(anchor("\xC3\xA9"), "cafe\xCC\x81"), (Ranges{{3, 4}}));
  // A letter is not found inside a character that carries a mark, with or without case.
  EXPECT_TRUE(TextLocating::ranges(anchor("e"), "caf\xC3\xA9").empty());
  EXPECT_TRUE(TextLocating::ranges(anchor("\xF0\x9F\x91\xA8"), family).empty());
  EXPECT_TRUE(TextLocating::ranges(anchor("E", false), "cafe\xCC\x81").empty());
  // Case-insensitive search outside ASCII, with metacharacters taken literally.
  EXPECT_EQ(TextLocating::ranges(anchor("\xC3\x89T\xC3\x89", false), "\xC3\xA9t\xC3\xA9_x"),
            (Ranges{{0, 3}}));
  EXPECT_EQ(TextLocating::ranges(anchor("(1).*", false), "a(1).*b(1)x"), (Ranges{{1, 6}}));
}

TEST(TextLocating, BlockReferences) {
  const BlockedName name = BlockedName::split("2024_Paris_001");
  EXPECT_EQ(TextLocating::blockIndex(BlockRef::index(-1), name.tokens()), 4u);
  EXPECT_EQ(TextLocating::blockIndex(BlockRef::index(0), name.tokens()), 0u);
  EXPECT_FALSE(TextLocating::blockIndex(BlockRef::index(3), name.tokens()).has_value());
  EXPECT_FALSE(TextLocating::blockIndex(BlockRef::index(-4), name.tokens()).has_value());
  EXPECT_EQ(TextLocating::blockIndex(BlockRef::text("Paris"), name.tokens()), 2u);
  EXPECT_FALSE(TextLocating::blockIndex(BlockRef::text("paris"), name.tokens()).has_value());
  EXPECT_FALSE(TextLocating::blockIndex(BlockRef::text("_"), name.tokens()).has_value());
  const BlockedName accented = BlockedName::split("\xC3\xA9t\xC3\xA9_1");
  EXPECT_EQ(TextLocating::blockIndex(BlockRef::text("e\xCC\x81te\xCC\x81"), accented.tokens()), 0u);
  EXPECT_EQ(TextLocating::blockRange(2, accented.tokens()), (CharRange{4, 5}));
}

TEST(TextLocating, InsertionPoints) {
  const std::string name = "ab_cd";
  const auto tokens = BlockedName::split(name).tokens();
  auto at = [&](const InsertPosition& p) { return TextLocating::insertionIndex(p, name, tokens); };
  EXPECT_EQ(at(InsertPosition::atIndex(99)), 5u);
  EXPECT_EQ(at(InsertPosition::atIndex(-3)), 0u);
  EXPECT_EQ(at(InsertPosition::start()), 0u);
  EXPECT_EQ(at(InsertPosition::end()), 5u);
  EXPECT_EQ(at(InsertPosition::before(anchor("_"))), 2u);
  EXPECT_EQ(at(InsertPosition::after(anchor("_"))), 3u);
  EXPECT_EQ(at(InsertPosition::beforeBlock(BlockRef::index(-1))), 3u);
  EXPECT_EQ(at(InsertPosition::afterBlock(BlockRef::index(0))), 2u);
  EXPECT_FALSE(at(InsertPosition::after(anchor(""))).has_value());
  EXPECT_FALSE(at(InsertPosition::afterBlock(BlockRef::text("zz"))).has_value());
}

TEST(TextLocatingJson, ExampleFormsDecodeAndEveryValueRoundTrips) {
  const Json last = Json::parse(R"({"index":{"_0":-1}})");
  EXPECT_EQ(json::decodeBlockRef(last), BlockRef::index(-1));
  EXPECT_EQ(json::decodeInsertPosition(last), InsertPosition::atIndex(-1));
  EXPECT_EQ(json::decodeBlockRef(Json::parse(R"({"text":{"_0":"Paris"}})")),
            BlockRef::text("Paris"));
  EXPECT_EQ(json::decodeInsertPosition(Json::parse(
                R"({"after":{"_0":{"text":"_","caseSensitive":true,"occurrence":"last"}}})")),
            InsertPosition::after(anchor("_", true, Occurrence::last)));
  EXPECT_EQ(json::decodeInsertPosition(Json::parse(R"({"start":{}})")), InsertPosition::start());
  EXPECT_EQ(toJson(InsertPosition::end()).dump(), R"({"end":{}})");

  const InsertPosition positions[] = {InsertPosition::atIndex(7),
                                      InsertPosition::before(anchor("x", false, Occurrence::first)),
                                      InsertPosition::after(anchor("y")),
                                      InsertPosition::beforeBlock(BlockRef::text("\xC3\xA9")),
                                      InsertPosition::afterBlock(BlockRef::index(-2)),
                                      InsertPosition::start(),
                                      InsertPosition::end()};
  for (const InsertPosition& p : positions) {
    EXPECT_EQ(json::decodeInsertPosition(Json::parse(toJson(p).dump())), p) << toJson(p).dump();
  }
}

TEST(TextLocatingJson, MalformedObjectsAreDecodingErrors) {
  auto error = [](const char* text) {
    try {
      json::decodeInsertPosition(Json::parse(text));
    } catch (const json::DecodeError& e) {
      return std::string(e.what());
    }
    return std::string("no error");
  };
  EXPECT_EQ(error(R"({})"), json::kWrongKeyCount);
  EXPECT_EQ(error(R"({"start":{},"end":{}})"), json::kWrongKeyCount);
  EXPECT_NE(error(R"({"middle":{}})"), "no error");
  EXPECT_NE(error(R"({"index":{}})"), "no error");
  EXPECT_NE(error(R"({"index":{"_0":"3"}})"), "no error");
  EXPECT_NE(error(R"({"index":{"_0":1.5}})"), "no error");
  EXPECT_NE(error(R"({"after":{"_0":{"text":"_","caseSensitive":true,"occurrence":"2nd"}}})"),
            "no error");
  EXPECT_NE(error(R"("start")"), "no error");
  EXPECT_NE(error(R"({"start":[]})"), "no error");
}

}  // namespace
}  // namespace tessane
