// Date formatters for one time zone, made once per pattern. Formatting a date for every file
// of a batch must not rebuild a formatter per file. Not thread-safe: one cache per thread or
// per run.
//
// Patterns made only of numeric fields (y, M and MM, d, H, h, k, K, m, s, S) and literal text,
// which is what file names use, are written directly from the civil time in the zone: ICU's
// general formatter costs some twenty times more per date. Anything else (month and day names,
// eras, week fields, zone names, dates before 1600) goes through ICU. Both give the same text.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include <unicode/uversion.h>

#include "MetadataValue.h"

U_NAMESPACE_BEGIN
class SimpleDateFormat;
class TimeZone;
U_NAMESPACE_END

namespace tessane {

class DateFormatterCache {
 public:
  explicit DateFormatterCache(const icu::TimeZone& zone);
  ~DateFormatterCache();
  DateFormatterCache(const DateFormatterCache&) = delete;
  DateFormatterCache& operator=(const DateFormatterCache&) = delete;

  // `date` written with a Unicode date pattern ("yyyy-MM-dd_HH-mm-ss") in the "en_US_POSIX"
  // locale and the cache's time zone; nullopt when ICU does not accept the pattern, or could not
  // write all of it (an unquoted letter that is no pattern field: "yyyy-foo", "jj").
  std::optional<std::string> format(Date date, std::string_view pattern);

 private:
  struct Formatter;
  const icu::TimeZone& zone_;
  std::unordered_map<std::string, std::unique_ptr<Formatter>> formatters_;
};

}  // namespace tessane
