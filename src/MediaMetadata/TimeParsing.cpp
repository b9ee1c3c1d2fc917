#include "TimeParsing.h"

#include <unicode/basictz.h>
#include <unicode/timezone.h>

namespace tessane::TimeParsing {
namespace {

using namespace std::chrono;

std::string_view trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t' || s.front() == '\n' ||
                        s.front() == '\r' || s.front() == '\0'))
    s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\n' ||
                        s.back() == '\r' || s.back() == '\0'))
    s.remove_suffix(1);
  return s;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Reads exactly `count` digits at `pos`, advancing it.
std::optional<int> digits(std::string_view s, std::size_t& pos, std::size_t count) {
  if (pos + count > s.size()) return std::nullopt;
  int value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const char c = s[pos + i];
    if (!isDigit(c)) return std::nullopt;
    value = value * 10 + (c - '0');
  }
  pos += count;
  return value;
}

bool expect(std::string_view s, std::size_t& pos, char c) {
  if (pos >= s.size() || s[pos] != c) return false;
  ++pos;
  return true;
}

struct Fields {
  int year = 0, month = 1, day = 1, hour = 0, minute = 0, second = 0;
  microseconds fraction{0};
};

std::optional<LocalTime> localTime(const Fields& f) {
  if (f.year < 1 || f.month < 1 || f.month > 12 || f.day < 1 || f.hour > 23 || f.minute > 59 ||
      f.second > 59 || f.hour < 0 || f.minute < 0 || f.second < 0)
    return std::nullopt;
  const year_month_day ymd{year{f.year}, month{static_cast<unsigned>(f.month)},
                           day{static_cast<unsigned>(f.day)}};
  if (!ymd.ok()) return std::nullopt;
  return LocalTime{local_days{ymd}.time_since_epoch() + hours{f.hour} + minutes{f.minute} +
                   seconds{f.second} + f.fraction};
}

// Fraction digits after a '.' or ',' (at least one), to the microsecond.
bool fraction(std::string_view s, std::size_t& pos, microseconds& out) {
  if (pos >= s.size() || (s[pos] != '.' && s[pos] != ',')) return true;
  ++pos;
  const std::size_t start = pos;
  std::int64_t micros = 0;
  std::int64_t scale = 100000;
  while (pos < s.size() && isDigit(s[pos])) {
    micros += (s[pos] - '0') * scale;
    scale /= 10;
    ++pos;
  }
  if (pos == start) return false;
  out = microseconds{micros};
  return true;
}

// "Z", "+hh", "+hhmm", "+hh:mm" (and "+hh'mm'" for PDF) up to the end of the text. `present` is
// false when nothing is left.
std::optional<std::int32_t> offset(std::string_view s, std::size_t& pos, bool& present,
                                   bool pdfStyle) {
  present = pos < s.size();
  if (!present) return 0;
  if (s[pos] == 'Z' || s[pos] == 'z') {
    ++pos;
    return 0;
  }
  if (s[pos] != '+' && s[pos] != '-') return std::nullopt;
  const bool negative = s[pos] == '-';
  ++pos;
  const std::optional<int> h = digits(s, pos, 2);
  if (!h) return std::nullopt;
  int m = 0;
  if (pos < s.size()) {
    if (s[pos] == ':' || (pdfStyle && s[pos] == '\'')) ++pos;
    if (pos < s.size()) {
      const std::optional<int> mm = digits(s, pos, 2);
      if (!mm) return std::nullopt;
      m = *mm;
      if (pdfStyle && pos < s.size() && s[pos] == '\'') ++pos;
    }
  }
  if (*h > 23 || m > 59) return std::nullopt;
  const std::int32_t total = (*h * 3600 + m * 60) * (negative ? -1 : 1);
  return total;
}

std::optional<ZonedDate> zoned(const Fields& f, std::string_view s, std::size_t pos,
                               const icu::TimeZone& zone, bool pdfStyle) {
  const std::optional<LocalTime> local = localTime(f);
  if (!local) return std::nullopt;
  bool present = false;
  const std::optional<std::int32_t> off = offset(s, pos, present, pdfStyle);
  if (!off || pos != s.size()) return std::nullopt;
  if (!present) return ZonedDate{fromLocal(*local, zone), std::nullopt};
  const Date date{local->time_since_epoch() - seconds{*off}};
  if (*off == 0) return ZonedDate{date, std::nullopt};
  return ZonedDate{date, *off};
}

}  // namespace

Date fromLocal(LocalTime local, const icu::TimeZone& zone) {
  const double millis = static_cast<double>(floor<milliseconds>(local).time_since_epoch().count());
  int32_t rawOffset = 0;
  int32_t dstOffset = 0;
  UErrorCode status = U_ZERO_ERROR;
  if (const auto* basic = dynamic_cast<const icu::BasicTimeZone*>(&zone)) {
    basic->getOffsetFromLocal(millis, UCAL_TZ_LOCAL_FORMER, UCAL_TZ_LOCAL_LATTER, rawOffset,
                              dstOffset, status);
  } else {
    zone.getOffset(millis, true, rawOffset, dstOffset, status);
  }
  if (U_FAILURE(status)) rawOffset = dstOffset = 0;
  return Date{local.time_since_epoch() -
              milliseconds{static_cast<std::int64_t>(rawOffset) + dstOffset}};
}

std::optional<Date> exifDate(std::string_view text, const icu::TimeZone& zone) {
  const std::string_view s = trimmed(text);
  std::size_t pos = 0;
  Fields f;
  const auto y = digits(s, pos, 4);
  if (!y || !expect(s, pos, ':')) return std::nullopt;
  const auto mo = digits(s, pos, 2);
  if (!mo || !expect(s, pos, ':')) return std::nullopt;
  const auto d = digits(s, pos, 2);
  if (!d || !expect(s, pos, ' ')) return std::nullopt;
  const auto h = digits(s, pos, 2);
  if (!h || !expect(s, pos, ':')) return std::nullopt;
  const auto mi = digits(s, pos, 2);
  if (!mi || !expect(s, pos, ':')) return std::nullopt;
  const auto se = digits(s, pos, 2);
  if (!se || pos != s.size()) return std::nullopt;
  f = Fields{*y, *mo, *d, *h, *mi, *se, microseconds{0}};
  const std::optional<LocalTime> local = localTime(f);
  if (!local) return std::nullopt;
  return fromLocal(*local, zone);
}

std::optional<microseconds> subSeconds(std::string_view text) {
  const std::string_view s = trimmed(text);
  if (s.empty()) return std::nullopt;
  std::int64_t micros = 0;
  std::int64_t scale = 100000;
  for (const char c : s) {
    if (!isDigit(c)) return std::nullopt;
    micros += (c - '0') * scale;
    scale /= 10;
  }
  return microseconds{micros};
}

std::optional<ZonedDate> isoDate(std::string_view text, const icu::TimeZone& zone) {
  const std::string_view s = trimmed(text);
  std::size_t pos = 0;
  const auto y = digits(s, pos, 4);
  if (!y || !expect(s, pos, '-')) return std::nullopt;
  const auto mo = digits(s, pos, 2);
  if (!mo || !expect(s, pos, '-')) return std::nullopt;
  const auto d = digits(s, pos, 2);
  if (!d || pos >= s.size() || (s[pos] != 'T' && s[pos] != ' ')) return std::nullopt;
  ++pos;
  const auto h = digits(s, pos, 2);
  if (!h || !expect(s, pos, ':')) return std::nullopt;
  const auto mi = digits(s, pos, 2);
  if (!mi || !expect(s, pos, ':')) return std::nullopt;
  const auto se = digits(s, pos, 2);
  if (!se) return std::nullopt;
  Fields f{*y, *mo, *d, *h, *mi, *se, microseconds{0}};
  if (!fraction(s, pos, f.fraction)) return std::nullopt;
  return zoned(f, s, pos, zone, false);
}

std::optional<ZonedDate> pdfDate(std::string_view text, const icu::TimeZone& zone) {
  const std::string_view s = trimmed(text);
  std::size_t pos = 0;
  if (s.substr(0, 2) == "D:") pos = 2;
  Fields f;
  const auto y = digits(s, pos, 4);
  if (!y) return std::nullopt;
  f.year = *y;
  // Each later field is optional, but only in order.
  int* const later[] = {&f.month, &f.day, &f.hour, &f.minute, &f.second};
  for (int* field : later) {
    if (pos >= s.size() || !isDigit(s[pos])) break;
    const auto v = digits(s, pos, 2);
    if (!v) return std::nullopt;
    *field = *v;
  }
  return zoned(f, s, pos, zone, true);
}

}  // namespace tessane::TimeParsing
