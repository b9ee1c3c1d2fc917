#include <gtest/gtest.h>

#include "RenameEngine/JsonDecoders.h"
#include "RenameEngine/RenameOperation.h"

namespace tessane {
namespace {

Anchor anchor(std::string text, Occurrence o = Occurrence::first, bool caseSensitive = true) {
  return Anchor{std::move(text), caseSensitive, o};
}

TEST(OperationJson, EveryOperationSurvivesEncodingAndDecoding) {
  const std::vector<RenameOperation::Value> all = {
      op::Insert{"2024_", InsertPosition::beforeBlock(BlockRef::text("Rome"))},
      op::DeleteBlock{BlockRef::index(-1)},
      op::DeleteText{anchor("x", Occurrence::all, false)},
      op::DeleteCharacters{-3, 7},
      op::DeleteBetween{anchor("("), anchor(")", Occurrence::last), true},
      op::DeleteBefore{anchor("_"), true},
      op::DeleteAfter{anchor("-", Occurrence::last), false},
      op::Replace{anchor("IMG", Occurrence::all, false), "Rome"},
      op::ReplaceRegex{"(\\d+)", "#$1", Occurrence::last, false},
      op::ReplaceBlock{BlockRef::index(2), "x"},
      op::ReplaceBefore{anchor("_"), "a"},
      op::ReplaceAfter{anchor("_"), "b"},
      op::MoveBlock{BlockRef::text("\xC3\xA9t\xC3\xA9"), -2},
      op::ChangeCase{CaseStyle::title},
      op::CollapseWhitespace{},
      op::RemoveAccents{},
      op::RemoveInvalidCharacters{"-"},
      op::Truncate{40},
      op::RemoveEmoji{},
      op::SetExtension{"jpg"},
      op::ChangeExtensionCase{CaseStyle::lower},
  };
  ASSERT_EQ(all.size(), std::variant_size_v<RenameOperation::Value>);
  for (const auto& value : all) {
    const RenameOperation operation{value};
    const Json encoded = toJson(operation);
    ASSERT_EQ(encoded.size(), 1u);
    EXPECT_EQ(encoded.begin().key(), operation.caseName());
    const Decoded<RenameOperation> decoded = decodeRenameOperation(Json::parse(encoded.dump()));
    ASSERT_TRUE(decoded.ok()) << encoded.dump() << ": " << decoded.error;
    EXPECT_EQ(*decoded.value, operation) << encoded.dump();
  }
}

TEST(OperationJson, HandWrittenFormsDecode) {
  const auto between = decodeRenameOperation(Json::parse(
      R"j({"deleteBetween":{"_0":{"text":"(","caseSensitive":true,"occurrence":"first"},)j"
      R"j("_1":{"text":")","caseSensitive":true,"occurrence":"first"},"inclusive":true}})j"));
  ASSERT_TRUE(between.ok()) << between.error;
  EXPECT_EQ(*between.value, (RenameOperation{op::DeleteBetween{anchor("("), anchor(")"), true}}));

  const auto regex = decodeRenameOperation(Json::parse(
      R"j({"replaceRegex":{"pattern":"(\\d+)","template":"#$1","occurrence":"all","caseSensitive":true}})j"));
  ASSERT_TRUE(regex.ok()) << regex.error;
  EXPECT_EQ(*regex.value,
            (RenameOperation{op::ReplaceRegex{"(\\d+)", "#$1", Occurrence::all, true}}));

  const auto removeEmoji = decodeRenameOperation(Json::parse(R"j({"removeEmoji":{}})j"));
  ASSERT_TRUE(removeEmoji.ok());
  // Keys the operation does not know are passed over; whole numbers may be written as 3.0.
  const auto truncate =
      decodeRenameOperation(Json::parse(R"j({"truncate":{"maxCharacters":3.0,"note":1}})j"));
  ASSERT_TRUE(truncate.ok()) << truncate.error;
  EXPECT_EQ(*truncate.value, (RenameOperation{op::Truncate{3}}));
}

TEST(OperationJson, MalformedObjectsGiveAnErrorNeverAValue) {
  EXPECT_EQ(decodeRenameOperation(Json::parse(R"j({"removeEmoji":{},"removeAccents":{}})j")).error,
            json::kWrongKeyCount);
  EXPECT_EQ(decodeRenameOperation(Json::parse(R"j({})j")).error, json::kWrongKeyCount);
  const char* bad[] = {
      R"j([])j",
      R"j("removeEmoji")j",
      R"j(null)j",
      R"j({"removeEmoji":null})j",
      R"j({"explode":{}})j",
      R"j({"insert":{"_0":"x"}})j",
      R"j({"insert":{"_0":5,"at":{"start":{}}}})j",
      R"j({"changeCase":{"_0":"shout"}})j",
      R"j({"truncate":{"maxCharacters":1e300}})j",
      R"j({"truncate":{"maxCharacters":18446744073709551615}})j",
      R"j({"deleteText":{"_0":{"text":"a","caseSensitive":"yes","occurrence":"all"}}})j",
      R"j({"moveBlock":{"_0":{"index":{"_0":1},"text":{"_0":"a"}},"toIndex":0}})j",
  };
  for (const char* text : bad) {
    const auto decoded = decodeRenameOperation(Json::parse(text));
    EXPECT_FALSE(decoded.ok()) << text;
    EXPECT_FALSE(decoded.error.empty()) << text;
  }
}

}  // namespace
}  // namespace tessane
