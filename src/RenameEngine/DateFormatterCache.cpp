#include "DateFormatterCache.h"

#include <unicode/fpositer.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <vector>

namespace tessane {
namespace {

// One piece of a numeric pattern: literal text, or a field letter repeated `count` times.
struct Piece {
  char field = 0;  // 0 for literal text
  int count = 0;
  std::string literal;
};

// Splits a pattern into pieces when every field is numeric; nullopt otherwise.
std::optional<std::vector<Piece>> numericPattern(std::string_view pattern) {
  std::vector<Piece> pieces;
  auto literal = [&](char c) {
    if (pieces.empty() || pieces.back().field != 0) pieces.push_back(Piece{});
    pieces.back().literal.push_back(c);
  };
  for (std::size_t i = 0; i < pattern.size();) {
    const char c = pattern[i];
    if (c == '\'') {
      if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {  // '' is a quote
        literal('\'');
        i += 2;
        continue;
      }
      // Quoted text runs to the next lone quote; '' inside it is a quote.
      std::size_t j = i + 1;
      while (j < pattern.size()) {
        if (pattern[j] == '\'') {
          if (j + 1 < pattern.size() && pattern[j + 1] == '\'') {
            literal('\'');
            j += 2;
            continue;
          }
          break;
        }
        literal(pattern[j++]);
      }
      if (j >= pattern.size()) return std::nullopt;  // unclosed quote: let ICU decide
      i = j + 1;
      continue;
    }
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (!letter) {
      literal(c);
      ++i;
      continue;
    }
    std::size_t j = i;
    while (j < pattern.size() && pattern[j] == c)
      ++j;
    const int count = static_cast<int>(j - i);
    switch (c) {
      case 'y':
      case 'd':
      case 'H':
      case 'h':
      case 'k':
      case 'K':
      case 'm':
      case 's':
      case 'S':
        break;
      case 'M':
        if (count > 2) return std::nullopt;  // month names
        break;
      default:
        return std::nullopt;
    }
    if (count > 9) return std::nullopt;
    pieces.push_back(Piece{c, count, {}});
    i = j;
  }
  return pieces;
}

void appendPadded(std::string& out, long long value, int width) {
  const std::string digits = std::to_string(value);
  if (static_cast<int>(digits.size()) < width) {
    out.append(static_cast<std::size_t>(width) - digits.size(), '0');
  }
  out.append(digits);
}

}  // namespace

struct DateFormatterCache::Formatter {
  std::optional<std::vector<Piece>> numeric;
  std::unique_ptr<icu::SimpleDateFormat> icu;  // null when ICU refused the pattern
};

DateFormatterCache::DateFormatterCache(const icu::TimeZone& zone) : zone_(zone) {}
DateFormatterCache::~DateFormatterCache() = default;

namespace {

// ICU's formatter for `pattern` in `zone`; null when ICU refuses the pattern.
std::unique_ptr<icu::SimpleDateFormat> icuFormatter(std::string_view pattern,
                                                    const icu::TimeZone& zone) {
  UErrorCode status = U_ZERO_ERROR;
  auto formatter = std::make_unique<icu::SimpleDateFormat>(
      icu::UnicodeString::fromUTF8(
          icu::StringPiece(pattern.data(), static_cast<int32_t>(pattern.size()))),
      icu::Locale("en_US_POSIX"), status);
  if (U_SUCCESS(status)) {
    // ICU builds a formatter from any pattern and stops writing at a letter that is no field
    // ("yyyy-foo" gives "2025-"): only formatting reports it, the same way for every date.
    status = U_ZERO_ERROR;
    icu::UnicodeString trial;
    icu::FieldPositionIterator fields;
    formatter->format(0.0, trial, &fields, status);
  }
  if (U_FAILURE(status)) return nullptr;
  formatter->setTimeZone(zone);
  return formatter;
}

// One piece of a numeric pattern, for a local date and time of day.
void appendPiece(std::string& out, const Piece& p, const std::chrono::year_month_day& ymd,
                 const std::chrono::hh_mm_ss<std::chrono::milliseconds>& time) {
  const int y = static_cast<int>(ymd.year());
  const long long hour = time.hours().count();
  switch (p.field) {
    case 0:
      out.append(p.literal);
      break;
    case 'y':
      appendPadded(out, p.count == 2 ? y % 100 : y, p.count);
      break;
    case 'M':
      appendPadded(out, static_cast<unsigned>(ymd.month()), p.count);
      break;
    case 'd':
      appendPadded(out, static_cast<unsigned>(ymd.day()), p.count);
      break;
    case 'H':
      appendPadded(out, hour, p.count);
      break;
    case 'k':
      appendPadded(out, hour == 0 ? 24 : hour, p.count);
      break;
    case 'K':
      appendPadded(out, hour % 12, p.count);
      break;
    case 'h':
      appendPadded(out, hour % 12 == 0 ? 12 : hour % 12, p.count);
      break;
    case 'm':
      appendPadded(out, time.minutes().count(), p.count);
      break;
    case 's':
      appendPadded(out, time.seconds().count(), p.count);
      break;
    case 'S': {
      // Fractional seconds: the milliseconds cut or extended to `count` digits.
      std::string ms;
      appendPadded(ms, time.subseconds().count(), 3);
      ms.resize(static_cast<std::size_t>(p.count), '0');
      out.append(ms);
      break;
    }
    default:
      break;
  }
}

// A numeric pattern written without ICU; nothing when the zone can't say its offset or the year
// is outside the range the quick path writes as ICU does.
std::optional<std::string> formatNumeric(const std::vector<Piece>& pieces,
                                         std::chrono::sys_time<std::chrono::milliseconds> millis,
                                         const icu::TimeZone& zone) {
  using namespace std::chrono;
  int32_t rawOffset = 0;
  int32_t dstOffset = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(static_cast<UDate>(millis.time_since_epoch().count()), false, rawOffset, dstOffset,
                 status);
  const auto local = millis + milliseconds(static_cast<long long>(rawOffset) + dstOffset);
  const auto day = floor<days>(local);
  const year_month_day ymd{day};
  const int y = static_cast<int>(ymd.year());
  if (U_FAILURE(status) || y < 1600 || y > 9999) return std::nullopt;
  const hh_mm_ss<milliseconds> time{local - day};
  std::string out;
  for (const Piece& p : pieces)
    appendPiece(out, p, ymd, time);
  return out;
}

}  // namespace

std::optional<std::string> DateFormatterCache::format(Date date, std::string_view pattern) {
  auto it = formatters_.find(std::string(pattern));
  if (it == formatters_.end()) {
    auto formatter = std::make_unique<Formatter>();
    formatter->icu = icuFormatter(pattern, zone_);
    if (formatter->icu) formatter->numeric = numericPattern(pattern);
    it = formatters_.emplace(std::string(pattern), std::move(formatter)).first;
  }
  const Formatter& f = *it->second;
  if (!f.icu) return std::nullopt;

  const auto millis = std::chrono::floor<std::chrono::milliseconds>(date);
  if (f.numeric) {
    if (std::optional<std::string> out = formatNumeric(*f.numeric, millis, zone_)) return out;
  }
  icu::UnicodeString text;
  f.icu->format(static_cast<UDate>(millis.time_since_epoch().count()), text);
  std::string out;
  text.toUTF8String(out);
  return out;
}

}  // namespace tessane
