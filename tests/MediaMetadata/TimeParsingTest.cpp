#include "MediaMetadata/TimeParsing.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <memory>
#include "Rules.h"

namespace tessane {
namespace {

using testing::utc;

using namespace std::chrono;
using TimeParsing::ZonedDate;

std::unique_ptr<icu::TimeZone> zone(const char* id) {
  return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(id));
}

TEST(TimeParsing, ExifDateIsReadInTheGivenZone) {
  EXPECT_EQ(TimeParsing::exifDate("2024:05:01 14:03:22", *zone("Europe/Rome")),
            utc(2024, 5, 1, 12, 3, 22));
  EXPECT_EQ(TimeParsing::exifDate("  2024:01:15 08:00:00 ", *zone("Europe/Rome")),
            utc(2024, 1, 15, 7, 0, 0));
  EXPECT_EQ(TimeParsing::exifDate("2024:05:01 14:03:22", *zone("UTC")), utc(2024, 5, 1, 14, 3, 22));
}

TEST(TimeParsing, ExifDateIsStrict) {
  const auto rome = zone("Europe/Rome");
  for (const char* bad :
       {"2024:13:45 99:00:00", "2024:02:30 10:00:00", "0000:00:00 00:00:00", "2024:05:01 14:03:22Z",
        "2024:05:01 14:03", "2024-05-01 14:03:22", "2024:5:1 14:03:22", "", "    ",
        "2024:05:01 24:00:00", "2024:05:01 14:03:60"}) {
    EXPECT_FALSE(TimeParsing::exifDate(bad, *rome)) << bad;
  }
  EXPECT_TRUE(TimeParsing::exifDate("2024:02:29 10:00:00", *rome));  // a leap year
}

TEST(TimeParsing, DaylightSavingChanges) {
  const auto rome = zone("Europe/Rome");
  // 02:30 doesn't exist on 31 March 2024 in Rome: read with the offset before the change (+1).
  EXPECT_EQ(TimeParsing::exifDate("2024:03:31 02:30:00", *rome), utc(2024, 3, 31, 1, 30, 0));
  // 02:30 happens twice on 27 October 2024: the later one (+1) is taken.
  EXPECT_EQ(TimeParsing::exifDate("2024:10:27 02:30:00", *rome), utc(2024, 10, 27, 1, 30, 0));
}

TEST(TimeParsing, SubSecondsAreADecimalFraction) {
  EXPECT_EQ(TimeParsing::subSeconds("81"), microseconds{810000});
  EXPECT_EQ(TimeParsing::subSeconds("007"), microseconds{7000});
  EXPECT_EQ(TimeParsing::subSeconds(" 5 "), microseconds{500000});
  EXPECT_EQ(TimeParsing::subSeconds("1234567"), microseconds{123456});
  EXPECT_FALSE(TimeParsing::subSeconds(""));
  EXPECT_FALSE(TimeParsing::subSeconds("8a"));
  EXPECT_FALSE(TimeParsing::subSeconds("-1"));
}

TEST(TimeParsing, IsoDatesKeepANonZeroOffset) {
  const auto rome = zone("Europe/Rome");
  EXPECT_EQ(TimeParsing::isoDate("2024-05-01T14:03:22+0200", *rome),
            (ZonedDate{utc(2024, 5, 1, 12, 3, 22), 7200}));
  EXPECT_EQ(TimeParsing::isoDate("2024-05-01T14:03:22-05:30", *rome),
            (ZonedDate{utc(2024, 5, 1, 19, 33, 22), -19800}));
  // A zero offset, "Z" or none leave the provider's zone (no offset of the shot's own).
  EXPECT_EQ(TimeParsing::isoDate("2024-05-01T14:03:22+0000", *rome),
            (ZonedDate{utc(2024, 5, 1, 14, 3, 22), std::nullopt}));
  EXPECT_EQ(TimeParsing::isoDate("2019-07-24T08:25:57.000000Z", *rome),
            (ZonedDate{utc(2019, 7, 24, 8, 25, 57), std::nullopt}));
  EXPECT_EQ(TimeParsing::isoDate("2024-05-01T14:03:22", *rome),
            (ZonedDate{utc(2024, 5, 1, 12, 3, 22), std::nullopt}));
  EXPECT_EQ(TimeParsing::isoDate("2024-05-01 14:03:22.5+02:00", *rome),
            (ZonedDate{utc(2024, 5, 1, 12, 3, 22, 500000), 7200}));
  for (const char* bad :
       {"2024-05-01T14:03:22+2", "2024-05-01", "2024-05-01T14:03:22 +0200",
        "2024-05-01T14:03:22+2400", "2024-13-01T00:00:00Z", "2024-05-01T14:03:22.Z"}) {
    EXPECT_FALSE(TimeParsing::isoDate(bad, *rome)) << bad;
  }
}

TEST(TimeParsing, PdfDates) {
  const auto rome = zone("Europe/Rome");
  EXPECT_EQ(TimeParsing::pdfDate("D:20240501140322+02'00'", *rome),
            (ZonedDate{utc(2024, 5, 1, 12, 3, 22), 7200}));
  EXPECT_EQ(TimeParsing::pdfDate("D:20240501140322-08'00", *rome),
            (ZonedDate{utc(2024, 5, 1, 22, 3, 22), -28800}));
  EXPECT_EQ(TimeParsing::pdfDate("D:20240501140322Z", *rome),
            (ZonedDate{utc(2024, 5, 1, 14, 3, 22), std::nullopt}));
  EXPECT_EQ(TimeParsing::pdfDate("D:20240501", *rome),
            (ZonedDate{utc(2024, 4, 30, 22, 0, 0), std::nullopt}));
  EXPECT_EQ(TimeParsing::pdfDate("20240501140322", *rome),
            (ZonedDate{utc(2024, 5, 1, 12, 3, 22), std::nullopt}));
  for (const char* bad : {"D:2024050", "D:20241301", "yesterday", "D:20240501140322+2'00'"}) {
    EXPECT_FALSE(TimeParsing::pdfDate(bad, *rome)) << bad;
  }
}

}  // namespace
}  // namespace tessane
