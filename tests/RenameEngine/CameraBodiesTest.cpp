#include "RenameEngine/CameraBodies.h"

#include <gtest/gtest.h>

namespace tessane {
namespace {

using namespace std::chrono;

MetadataMap camera(std::optional<std::string> serial, std::optional<std::string> model,
                   std::optional<Date> when = std::nullopt) {
  MetadataMap m;
  if (serial) m.set(MetadataKey::serial, MetadataValue::text(*serial));
  if (model) m.set(MetadataKey::model, MetadataValue::text(*model));
  if (when) m.set(MetadataKey::date, MetadataValue::date(*when));
  return m;
}

Date noon(int plusSeconds = 0) {
  return Date(sys_days(year_month_day(year(2024), month(5), day(1))) + hours(12) +
              seconds(plusSeconds));
}

TEST(ClockOffset, FormatAndParse) {
  EXPECT_EQ(formatClockOffset(120), "+0:02:00");
  EXPECT_EQ(formatClockOffset(0), "0:00:00");
  EXPECT_EQ(formatClockOffset(0.4), "0:00:00");
  EXPECT_EQ(formatClockOffset(0.5), "+0:00:01");
  EXPECT_EQ(formatClockOffset(-30), "-0:00:30");
  EXPECT_EQ(formatClockOffset(-3600 * 27 - 61), "-27:01:01");

  EXPECT_EQ(parseClockOffset("0:00:00"), 0.0);
  EXPECT_EQ(parseClockOffset("-0:00:30"), -30.0);
  EXPECT_EQ(parseClockOffset("90"), 90.0);
  EXPECT_EQ(parseClockOffset("2:00"), 120.0);
  EXPECT_EQ(parseClockOffset(" +1:00:00 "), 3600.0);
  EXPECT_EQ(parseClockOffset("100:59:59"), 100 * 3600.0 + 3599);
  EXPECT_EQ(parseClockOffset(""), 0.0);
  for (const char* bad :
       {"1:60:00", "+", "-", "1::00", ":30", "1:00:00:00", "1.5", "a", "+-1", "1:-5", "0:60"}) {
    EXPECT_FALSE(parseClockOffset(bad).has_value()) << bad;
  }
  for (double s : {0.0, 1.0, -1.0, 59.0, 3599.0, -86401.0}) {
    EXPECT_EQ(parseClockOffset(formatClockOffset(s)), s);
  }
}

TEST(CameraBodies, TheSerialWinsOverTheModel) {
  CameraBodies bodies;
  bodies.tags["123456"] = "A";
  bodies.clockOffsets["ILCE-7RM5"] = 120;
  bodies.tags["ilce-7m4 "] = "B";
  const MetadataMap tagged = camera("123456", "ILCE-7RM5", noon());
  EXPECT_EQ(bodies.tag(tagged), "A");
  EXPECT_EQ(bodies.clockOffset(tagged), 0)
      << "the serial has a tag, so its own (zero) offset counts";
  const MetadataMap other = camera("999", "ILCE-7RM5", noon());
  EXPECT_EQ(bodies.tag(other), std::nullopt);
  EXPECT_EQ(bodies.clockOffset(other), 120);
  EXPECT_EQ(bodies.correctedCaptureTime(other), noon(120));
  const MetadataMap noSerial = camera(std::nullopt, " ILCE-7M4");
  EXPECT_EQ(CameraBodies::bodyKey(noSerial), "ILCE-7M4");
  EXPECT_EQ(bodies.tag(noSerial), "B");
  EXPECT_EQ(CameraBodies::bodyKey(camera("  ", std::nullopt)), std::nullopt);
  EXPECT_EQ(bodies.bodiesWithoutTag(
                {tagged, other, camera("999 ", "x"), noSerial, camera(std::nullopt, "Pixel 8")}),
            (std::vector<std::string>{"999", "pixel 8"}));
}

TEST(CameraBodies, ClockSyncLinesUpTheWrongCamera) {
  CameraBodies bodies;
  bodies.tags["B-SERIAL"] = "B";
  const MetadataMap right = camera("A-SERIAL", "A7", noon(120));
  const MetadataMap wrong = camera("b-serial", "X-T5", noon());
  auto synced = syncClocks(bodies, right, wrong);
  ASSERT_TRUE(synced.has_value());
  EXPECT_EQ(synced->first.clockOffsets, (std::map<std::string, double>{{"b-serial", 120}}));
  EXPECT_EQ(synced->second.line, "B clock: +0:02:00");

  // In time already: the entry goes and the line says so.
  auto again = syncClocks(synced->first, right, camera("B-SERIAL", "X-T5", noon(120)));
  ASSERT_TRUE(again.has_value());
  EXPECT_TRUE(again->first.clockOffsets.empty());
  EXPECT_EQ(again->second.line, "B was already in time");
  // The right camera's own offset carries over; a camera without a key can't be synced.
  bodies.clockOffsets["A-SERIAL"] = -60;
  EXPECT_EQ(syncClocks(bodies, right, wrong)->second.offset, 60);
  EXPECT_FALSE(syncClocks(bodies, right, camera(std::nullopt, std::nullopt, noon())).has_value());
}

TEST(CameraBodies, ClockSyncNeedsTwoBodiesAndKeepsASerialsZeroOverItsModel) {
  const MetadataMap right = camera("A-SERIAL", "A7", noon(120));
  EXPECT_FALSE(syncClocks({}, right, camera(" a-serial", "A7", noon())).has_value())
      << "one body on both sides: its offset would grow on every run";
  EXPECT_FALSE(
      syncClocks({}, camera(std::nullopt, "A7", noon()), camera(std::nullopt, "a7", noon()))
          .has_value());

  // The model's offset is an hour; this serial of that model is in time.
  CameraBodies bodies;
  bodies.clockOffsets["X-T5"] = 3600;
  const MetadataMap inTime = camera("S1", "X-T5", noon(120));
  auto synced = syncClocks(bodies, right, inTime);
  ASSERT_TRUE(synced.has_value());
  EXPECT_EQ(synced->first.clockOffsets, (std::map<std::string, double>{{"S1", 0}, {"X-T5", 3600}}));
  EXPECT_EQ(synced->first.correctedCaptureTime(inTime), noon(120));
  EXPECT_EQ(synced->second.line, "S1 was already in time");
}

TEST(CameraBodies, TagsAreTrimmedAndMustFitInAName) {
  CameraBodies bodies;
  bodies.tags["123456"] = " Z6\u3000";  // as typed or imported, ideographic space included
  bodies.tags["ILCE-7RM5"] = "A7R";
  bodies.tags["999"] = " ";
  EXPECT_EQ(bodies.tag(camera("123456", std::nullopt)), "Z6");
  EXPECT_EQ(bodies.tag(camera("999", "ILCE-7RM5")), "A7R") << "a blank tag is none";
  EXPECT_EQ(CameraBodies::trimmed("\u00A0 Z 6\t"), "Z 6");
  EXPECT_TRUE(CameraBodies::isUsableTag(" Z6 "));
  EXPECT_TRUE(CameraBodies::isUsableTag(""));
  for (const char* bad : {"A/B", "a:b",
                          "Z\x01"
                          "6",
                          "Z\n6"})
    EXPECT_FALSE(CameraBodies::isUsableTag(bad)) << bad;
}

TEST(CameraBodies, MergeAndJson) {
  CameraBodies mine;
  mine.tags = {{"A1", "old"}, {"B2", "keep"}};
  mine.clockOffsets = {{"A1", 5}};
  CameraBodies imported;
  imported.tags = {{"a1 ", "new"}};
  imported.clockOffsets = {{"C3", -7.5}};
  const CameraBodies merged = mine.merged(imported);
  EXPECT_EQ(merged.tags, (std::map<std::string, std::string>{{"B2", "keep"}, {"a1 ", "new"}}));
  EXPECT_EQ(merged.clockOffsets, (std::map<std::string, double>{{"A1", 5}, {"C3", -7.5}}));

  const Decoded<CameraBodies> back = decodeCameraBodies(Json::parse(toJson(merged).dump()));
  ASSERT_TRUE(back.ok());
  EXPECT_EQ(*back.value, merged);
  EXPECT_FALSE(decodeCameraBodies(Json::parse(R"({"tags":{"a":1},"clockOffsets":{}})")).ok());
  EXPECT_FALSE(decodeCameraBodies(Json::parse(R"({"tags":{}})")).ok());
  EXPECT_FALSE(decodeCameraBodies(Json::parse(R"([])")).ok());
}

}  // namespace
}  // namespace tessane
