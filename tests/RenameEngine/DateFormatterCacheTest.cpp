#include "RenameEngine/DateFormatterCache.h"

#include <gtest/gtest.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>
#include <optional>
#include <random>

namespace tessane {
namespace {

using namespace std::chrono;

// ICU's own formatter, the reference for the direct path: nothing when ICU rejects the pattern.
class Reference {
 public:
  Reference(const std::string& pattern, const icu::TimeZone& zone)
      : format_(icu::UnicodeString::fromUTF8(pattern), icu::Locale("en_US_POSIX"), status_) {
    format_.setTimeZone(zone);
  }
  std::optional<std::string> operator()(Date date) {
    if (U_FAILURE(status_)) return std::nullopt;
    icu::UnicodeString text;
    format_.format(static_cast<UDate>(floor<milliseconds>(date).time_since_epoch().count()), text);
    std::string out;
    text.toUTF8String(out);
    return out;
  }

 private:
  UErrorCode status_ = U_ZERO_ERROR;
  icu::SimpleDateFormat format_;
};

std::optional<std::string> icuFormat(Date date, const std::string& pattern,
                                     const icu::TimeZone& zone) {
  return Reference(pattern, zone)(date);
}

TEST(DateFormatterCache, NumericPatternsMatchIcuExactly) {
  const std::vector<std::string> patterns = {"yyyy-MM-dd",
                                             "yyyy-MM-dd_HH-mm-ss",
                                             "yyMMdd",
                                             "y",
                                             "yyy",
                                             "yyyyy",
                                             "M.d",
                                             "HHmmss.SSS",
                                             "h-mm",
                                             "hh",
                                             "k",
                                             "kk",
                                             "K",
                                             "KK",
                                             "s",
                                             "S",
                                             "SS",
                                             "SSSSSS",
                                             "'Day' d 'of' M",
                                             "yyyy'-'''MM''",
                                             "HH:mm",
                                             "[yyyy] #dd#",
                                             "'\xC3\xA9t\xC3\xA9' \xC3\xA9 yyyy"};
  std::mt19937_64 random(99);
  std::vector<Date> dates;
  // Edges: time-zone changes in Rome and New York, leap days, year ends, midnight and noon.
  for (const auto& [y, mo, d, h, mi] :
       std::vector<std::tuple<int, unsigned, unsigned, int, int>>{{2024, 3, 31, 0, 59},
                                                                  {2024, 3, 31, 1, 0},
                                                                  {2024, 10, 27, 0, 59},
                                                                  {2024, 10, 27, 1, 0},
                                                                  {2024, 2, 29, 23, 30},
                                                                  {2023, 12, 31, 23, 0},
                                                                  {2000, 1, 1, 0, 0},
                                                                  {1601, 1, 1, 12, 0},
                                                                  {9999, 12, 31, 12, 0},
                                                                  {2024, 11, 3, 6, 30}}) {
    dates.push_back(
        Date(sys_days(year_month_day(year(y), month(mo), day(d))) + hours(h) + minutes(mi)));
  }
  for (int i = 0; i < 400; ++i) {
    const auto micros =
        static_cast<long long>(random() % 8'000'000'000'000'000ULL) - 1'000'000'000'000'000LL;
    dates.push_back(Date(microseconds(micros)));  // about 1938 to 2223
  }
  for (const char* zoneID :
       {"Europe/Rome", "America/New_York", "Asia/Kolkata", "GMT", "Pacific/Chatham"}) {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(zoneID));
    DateFormatterCache cache(*zone);
    for (const std::string& pattern : patterns) {
      Reference reference(pattern, *zone);
      for (const Date& date : dates) {
        ASSERT_EQ(cache.format(date, pattern), reference(date))
            << pattern << " in " << zoneID << " at " << date.time_since_epoch().count();
      }
    }
  }
}

TEST(DateFormatterCache, NamedFieldsEarlyDatesAndOpenQuotesGoThroughIcu) {
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone("Europe/Rome"));
  DateFormatterCache cache(*zone);
  const Date may = Date(sys_days(year_month_day(year(2024), month(5), day(2))) + hours(8));
  // Before the Gregorian reform ICU's calendar is Julian: the direct path stays away from it.
  const Date early = Date(sys_days(year_month_day(year(1500), month(3), day(10))));
  for (const auto& [date, pattern] :
       {std::pair{may, "EEEE d MMMM yyyy"}, std::pair{may, "MMM-dd a"},
        std::pair{early, "yyyy-MM-dd"}, std::pair{may, "yyyy-'MM"}}) {
    const std::optional<std::string> reference = icuFormat(date, pattern, *zone);
    EXPECT_EQ(cache.format(date, pattern), reference) << pattern;
    EXPECT_TRUE(reference.has_value()) << pattern << ": compared with ICU's text, not a refusal";
  }
  // Unquoted letters that are no fields: ICU would write "éé" for "été yyyy".
  EXPECT_EQ(cache.format(may, "\xC3\xA9t\xC3\xA9 yyyy"), std::nullopt);
}

}  // namespace
}  // namespace tessane
