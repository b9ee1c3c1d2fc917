#include "RenameEngine/MetadataValue.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <memory>
#include <unordered_set>

#include "RenameEngine/CaptureTime.h"
#include "RenameEngine/NameKey.h"
#include "Rules.h"

namespace tessane {
namespace {

using testing::utc;

using namespace std::chrono;

TEST(MetadataValue, EqualityIsByCaseAndPayload) {
  EXPECT_NE(MetadataValue::text("5"), MetadataValue::integer(5));
  EXPECT_NE(MetadataValue::integer(5), MetadataValue::number(5.0));
  EXPECT_EQ(MetadataValue::number(0.0), MetadataValue::number(-0.0));
  EXPECT_EQ(MetadataValue::text("Canon"), MetadataValue::text("Canon"));
  EXPECT_NE(MetadataValue::text("Canon"), MetadataValue::text("canon"));
  EXPECT_EQ(MetadataValue::date(utc(2024, 5, 1, 10, 0)),
            MetadataValue::date(utc(2024, 5, 1, 10, 0)));
  EXPECT_NE(MetadataValue::date(utc(2024, 5, 1, 10, 0)),
            MetadataValue::date(utc(2024, 5, 1, 10, 0) + microseconds(1)));
}

TEST(MetadataValue, EqualValuesHashAlikeAndCasesStayApart) {
  std::hash<MetadataValue> hash;
  EXPECT_EQ(hash(MetadataValue::number(0.0)), hash(MetadataValue::number(-0.0)));
  std::unordered_set<MetadataValue> set{MetadataValue::text("5"), MetadataValue::integer(5),
                                        MetadataValue::number(5.0), MetadataValue::number(-0.0)};
  EXPECT_EQ(set.size(), 4u);
  EXPECT_TRUE(set.count(MetadataValue::number(0.0)));
  EXPECT_TRUE(set.count(MetadataValue::integer(5)));
  EXPECT_FALSE(set.count(MetadataValue::integer(6)));
  EXPECT_EQ(MetadataValue::integer(5).kind(), MetadataValue::Case::integer);
  EXPECT_EQ(MetadataValue::integer(5).asText(), nullptr);
}

TEST(MetadataMap, OneValuePerKeyInKeyOrder) {
  MetadataMap m;
  m.set(MetadataKey::model, MetadataValue::text("ILCE-7M3"));
  m.set(MetadataKey::make, MetadataValue::text("Sony"));
  m.set(MetadataKey::iso, MetadataValue::integer(100));
  m.set(MetadataKey::iso, MetadataValue::integer(200));
  ASSERT_EQ(m.size(), 3u);
  EXPECT_EQ(*m.find(MetadataKey::iso), MetadataValue::integer(200));
  EXPECT_EQ(m.find(MetadataKey::lens), nullptr);
  std::vector<MetadataKey> order;
  for (const auto& [key, value] : m)
    order.push_back(key);
  EXPECT_EQ(order,
            (std::vector<MetadataKey>{MetadataKey::make, MetadataKey::model, MetadataKey::iso}));
  EXPECT_TRUE(m.erase(MetadataKey::make));
  EXPECT_FALSE(m.erase(MetadataKey::make));
  EXPECT_EQ(m.size(), 2u);
}

TEST(NameKey, FoldsCaseAndCompositionButKeepsAccents) {
  EXPECT_EQ(NameKey::of("IMG_0001.JPG"), NameKey::of("img_0001.jpg"));
  EXPECT_EQ(NameKey::of("\xC3\x89t\xC3\xA9.JPG"), NameKey::of("\xC3\xA9t\xC3\xA9.jpg"));
  EXPECT_EQ(NameKey::of("\xC3\x89t\xC3\xA9.JPG"), NameKey::of("E\xCC\x81te\xCC\x81.jpg"));
  EXPECT_NE(NameKey::of("cafe"), NameKey::of("caf\xC3\xA9"));
  EXPECT_EQ(NameKey::of("STRASSE.jpg"), NameKey::of("Stra\xC3\x9F"
                                                    "e.JPG"));
  // A name that is not UTF-8 keys as its own bytes and meets no valid name.
  EXPECT_EQ(NameKey::of("caf\xE9.jpg").value, "caf\xE9.jpg");
  EXPECT_NE(NameKey::of("caf\xE9.jpg"), NameKey::of("caf\xC3\xA9.jpg"));
}

TEST(CaptureTime, OwnCaptureDateWinsOverMetadata) {
  MetadataMap metadata;
  EXPECT_FALSE(CaptureTime::of(std::nullopt, metadata).has_value());
  metadata.set(MetadataKey::date, MetadataValue::text("2024:05:01 10:00:00"));
  EXPECT_FALSE(CaptureTime::of(std::nullopt, metadata).has_value()) << "text is not a date";
  metadata.set(MetadataKey::date, MetadataValue::date(utc(2024, 5, 1, 10, 0)));
  EXPECT_EQ(CaptureTime::of(std::nullopt, metadata), utc(2024, 5, 1, 10, 0));
  EXPECT_EQ(CaptureTime::of(utc(2023, 1, 1, 0, 0), metadata), utc(2023, 1, 1, 0, 0));
}

TEST(CaptureTime, CalendarDayFollowsTheTimeZone) {
  std::unique_ptr<icu::TimeZone> rome(icu::TimeZone::createTimeZone("Europe/Rome"));
  std::unique_ptr<icu::TimeZone> la(icu::TimeZone::createTimeZone("America/Los_Angeles"));
  std::unique_ptr<icu::TimeZone> gmt(icu::TimeZone::createTimeZone("GMT"));
  const Date lateEvening = utc(2024, 5, 1, 22, 30);  // 00:30 on 2 May in Rome (summer time)
  EXPECT_EQ(CaptureTime::dayOf(lateEvening, *gmt), (CalendarDay{2024, 5, 1}));
  EXPECT_EQ(CaptureTime::dayOf(lateEvening, *rome), (CalendarDay{2024, 5, 2}));
  EXPECT_EQ(CaptureTime::dayOf(utc(2024, 5, 2, 3, 0), *la), (CalendarDay{2024, 5, 1}));
  // In winter Rome is one hour ahead, not two: 22:30 UTC is still the same day there.
  EXPECT_EQ(CaptureTime::dayOf(utc(2024, 1, 15, 22, 30), *rome), (CalendarDay{2024, 1, 15}));
  EXPECT_EQ(CaptureTime::dayOf(utc(2024, 1, 15, 23, 0), *rome), (CalendarDay{2024, 1, 16}));
  // Before 1970 and across a year end.
  EXPECT_EQ(CaptureTime::dayOf(utc(1969, 12, 31, 23, 59, 59), *gmt), (CalendarDay{1969, 12, 31}));
  EXPECT_EQ(CaptureTime::dayOf(utc(2023, 12, 31, 23, 30), *rome), (CalendarDay{2024, 1, 1}));
}

}  // namespace
}  // namespace tessane
