#include "RenameEngine/Preset.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace tessane {
namespace {

constexpr const char* kWedding = R"({
  "name" : "Wedding",
  "schemaVersion" : 1,
  "stack" : {
    "rules" : [
      {
        "action" : { "operation" : { "_0" : { "changeCase" : { "_0" : "lower" } } } },
        "conditions" : [ { "fileExtension" : { "_0" : [ "arw" ] } } ],
        "id" : "0F9B6C2E-5B7A-4C1D-9E3F-2A8B7C6D5E4F",
        "isEnabled" : true
      }
    ],
    "separators" : [ "_", "-", " ", "." ]
  }
})";

TEST(Preset, AHandWrittenFileLoadsAndWhatIsWrittenLoadsBackEqual) {
  auto decoded = decodePreset(kWedding);
  ASSERT_TRUE(std::holds_alternative<Preset>(decoded));
  Preset& wedding = std::get<Preset>(decoded);
  EXPECT_EQ(wedding.name, "Wedding");
  ASSERT_EQ(wedding.stack.rules.size(), 1u);
  EXPECT_EQ(wedding.stack.rules[0].id.string(), "0F9B6C2E-5B7A-4C1D-9E3F-2A8B7C6D5E4F");

  wedding.name = "Wedding / Rome: 2024 \xC3\xA9t\xC3\xA9";
  const std::string text = encodePreset(wedding);
  EXPECT_NE(text.find("Wedding / Rome"), std::string::npos) << "slashes are not escaped";
  EXPECT_LT(text.find("\"name\""), text.find("\"schemaVersion\""));
  EXPECT_LT(text.find("\"schemaVersion\""), text.find("\"stack\""));
  auto again = decodePreset(text);
  ASSERT_TRUE(std::holds_alternative<Preset>(again));
  EXPECT_EQ(std::get<Preset>(again), wedding);
}

TEST(Preset, VersionsAndUnreadableFiles) {
  std::string newer = kWedding;
  newer.replace(newer.find("\"schemaVersion\" : 1"), 19, "\"schemaVersion\" : 2");
  EXPECT_EQ(std::get<PresetError>(decodePreset(newer)), PresetError::unsupportedVersion(2));
  // A newer file is refused on its header alone, whatever the rest holds.
  EXPECT_EQ(std::get<PresetError>(decodePreset(R"({"schemaVersion": 7, "stack": "?"})")),
            PresetError::unsupportedVersion(7));
  std::string older = kWedding;
  older.replace(older.find("\"schemaVersion\" : 1"), 19, "\"schemaVersion\" : 0");
  EXPECT_TRUE(std::holds_alternative<Preset>(decodePreset(older)));
  for (const char* bad : {"", "not json", "[]", R"({"name":"x"})", R"({"schemaVersion":"1"})",
                          R"({"schemaVersion":1,"name":"x","stack":{"rules":[{}]}})"}) {
    const auto result = decodePreset(bad);
    ASSERT_TRUE(std::holds_alternative<PresetError>(result)) << bad;
    EXPECT_EQ(std::get<PresetError>(result).kind(), PresetError::Case::unreadable) << bad;
  }
}

// A key this version doesn't write is refused wherever it sits, rather than read as the value
// left out ("enabled": false would leave the rule on); the reason reaches the message.
TEST(Preset, UnknownKeysAreRefusedAndTheReasonIsShown) {
  for (const auto& [from, to, where] :
       {std::tuple{"\"isEnabled\"", "\"enabled\"", "stack.rules[0].enabled"},
        std::tuple{"\"separators\"", "\"separator\"", "stack.separator"},
        std::tuple{"\"_0\" : \"lower\"", "\"_0\" : \"lower\", \"_1\" : 2",
                   "stack.rules[0].action.operation._0.changeCase._1"},
        std::tuple{"\"name\" :", "\"title\" : \"x\", \"name\" :", "title"}}) {
    std::string text = kWedding;
    text.replace(text.find(from), std::string_view(from).size(), to);
    const auto result = decodePreset(text);
    ASSERT_TRUE(std::holds_alternative<PresetError>(result)) << text;
    EXPECT_EQ(std::get<PresetError>(result).detail(), std::string("Unknown key “") + where + "”.");
  }
  const auto twoKeys = decodePreset(
      R"({"schemaVersion":1,"name":"x","stack":{"rules":[{"action":{"a":{},"b":{}}}]}})");
  EXPECT_EQ(std::get<PresetError>(twoKeys).detail(), "Invalid number of keys found, expected one.");
}

TEST(Preset, FileStems) {
  EXPECT_EQ(presetFileStem("a/b: c"), "a-b- c");
  EXPECT_EQ(presetFileStem("  ..."), "Preset");
  EXPECT_EQ(presetFileStem(""), "Preset");
  EXPECT_EQ(presetFileStem("..hidden"), "hidden");
  EXPECT_EQ(presetFileStem("  Wedding  "), "Wedding");
  EXPECT_EQ(presetFileStem("\tWedding"), "-Wedding");  // a tab is a control character
  EXPECT_EQ(presetFileStem("line\nbreak"), "line-break");
  // No-break, em and ideographic spaces are white space too.
  EXPECT_EQ(presetFileStem("\u00A0\u2003\u3000"), "Preset");
  EXPECT_EQ(presetFileStem("\u3000Wedding\u00A0 "), "Wedding");
  EXPECT_EQ(presetFileStem("a\u2003b"), "a\u2003b");
  EXPECT_EQ(presetFileStem("Mari\xC3\xA9"
                           "e"),
            "Mari\xC3\xA9"
            "e");
}

}  // namespace
}  // namespace tessane
