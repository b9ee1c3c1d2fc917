// Linux: the collator of the user's locale from ICU; pure ASCII names take a path that reads the
// collator's order once per thread and then needs no ICU call.
#include "NaturalOrder.h"

#include <unicode/coll.h>
#include <unicode/ucol.h>
#include <unicode/uniset.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "Unicode.h"

namespace tessane::unicode {
namespace {

icu::StringPiece piece(std::string_view text) {
  return icu::StringPiece(text.data(), static_cast<int32_t>(text.size()));
}

bool isPosixLocale(const icu::Locale& locale) {
  const char* language = locale.getLanguage();
  return language == nullptr || language[0] == '\0' ||
         std::strcmp(locale.getVariant(), "POSIX") == 0;
}

// The natural-order collator of this thread: the user's locale (the root order when the process
// runs in the C/POSIX locale, whose collation is byte order), digits by value.
icu::Collator* naturalCollator() {
  thread_local std::unique_ptr<icu::Collator> collator = [] {
    icu::Locale locale = icu::Locale::getDefault();
    if (isPosixLocale(locale)) locale = icu::Locale::getRoot();
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> c(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status) || !c) {
      status = U_ZERO_ERROR;
      c.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
    }
    if (c) {
      c->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
      // Tertiary strength: letters first, then accents, then case, so that "a" and "A" are
      // neighbours but still ordered.
      c->setAttribute(UCOL_STRENGTH, UCOL_TERTIARY, status);
    }
    return c;
  }();
  return collator.get();
}

// The natural order of pure ASCII names without ICU: what the collator does to ASCII text is read
// off the collator itself once per thread (the rank of each character at the first level, which
// characters it ignores), then names are compared unit by unit, a run of digits being one unit
// compared by value. This gives ICU's order exactly for collators that tailor no ASCII character
// (no "ch" contraction as in Czech, say); for the others every name goes through ICU.
struct AsciiCollation {
  bool usable = false;
  std::uint8_t rank[128] = {};  // 0: ignorable; else the first-level rank, from 2 up
};

const AsciiCollation& asciiCollation() {
  thread_local const AsciiCollation table = [] {
    AsciiCollation t;
    icu::Collator* collator = naturalCollator();
    if (collator == nullptr) return t;
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::UnicodeSet> tailored(collator->getTailoredSet(status));
    if (U_FAILURE(status) || !tailored || tailored->containsSome(0, 0x7F)) return t;
    std::unique_ptr<icu::Collator> primary(collator->clone());
    if (!primary) return t;
    primary->setStrength(icu::Collator::PRIMARY);
    std::vector<char> chars;
    for (int c = 0; c < 128; ++c) {
      const char ch = static_cast<char>(c);
      if (primary->compareUTF8(icu::StringPiece(&ch, 1), icu::StringPiece(""), status) !=
          UCOL_EQUAL) {
        chars.push_back(ch);
      }
    }
    std::stable_sort(chars.begin(), chars.end(), [&](char a, char b) {
      return primary->compareUTF8(icu::StringPiece(&a, 1), icu::StringPiece(&b, 1), status) ==
             UCOL_LESS;
    });
    int rank = 1;
    for (std::size_t i = 0; i < chars.size(); ++i) {
      if (i == 0 || primary->compareUTF8(icu::StringPiece(&chars[i - 1], 1),
                                         icu::StringPiece(&chars[i], 1), status) != UCOL_EQUAL) {
        ++rank;
      }
      if (rank > 255) return t;
      t.rank[static_cast<unsigned char>(chars[i])] = static_cast<std::uint8_t>(rank);
    }
    t.usable = U_SUCCESS(status);
    return t;
  }();
  return table;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// One unit of an ASCII name: a character, or a run of digits without its leading zeros.
struct AsciiUnit {
  bool digits = false;
  std::uint8_t rank = 0;
  std::string_view run;  // digits: the run without leading zeros
  bool upper = false;
};

// The next unit at or after `i`, skipping ignorable characters; false at the end.
bool nextUnit(const AsciiCollation& t, std::string_view s, std::size_t& i, AsciiUnit& unit) {
  while (i < s.size() && t.rank[static_cast<unsigned char>(s[i])] == 0)
    ++i;
  if (i >= s.size()) return false;
  if (isDigit(s[i])) {
    std::size_t end = i;
    while (end < s.size() && isDigit(s[end]))
      ++end;
    std::size_t first = i;
    while (first + 1 < end && s[first] == '0')
      ++first;
    unit = AsciiUnit{true, t.rank[static_cast<unsigned char>('0')], s.substr(first, end - first),
                     false};
    i = end;
    return true;
  }
  unit = AsciiUnit{false, t.rank[static_cast<unsigned char>(s[i])], {}, s[i] >= 'A' && s[i] <= 'Z'};
  ++i;
  return true;
}

int asciiCompare(const AsciiCollation& t, std::string_view a, std::string_view b) {
  // First level: units by rank, digit runs by value; a name that is a prefix comes first.
  std::size_t i = 0;
  std::size_t j = 0;
  AsciiUnit ua, ub;
  while (true) {
    const bool moreA = nextUnit(t, a, i, ua);
    const bool moreB = nextUnit(t, b, j, ub);
    if (!moreA || !moreB) {
      if (moreA != moreB) return moreA ? 1 : -1;
      break;
    }
    if (ua.rank != ub.rank) return ua.rank < ub.rank ? -1 : 1;
    if (ua.digits && ub.digits) {
      if (ua.run.size() != ub.run.size()) return ua.run.size() < ub.run.size() ? -1 : 1;
      const int c = ua.run.compare(ub.run);
      if (c != 0) return c < 0 ? -1 : 1;
    }
  }
  // Third level: lower case before upper case, unit by unit.
  i = j = 0;
  while (nextUnit(t, a, i, ua) && nextUnit(t, b, j, ub)) {
    if (ua.upper != ub.upper) return ua.upper ? 1 : -1;
  }
  return 0;
}

int byteCompare(std::string_view a, std::string_view b) {
  int c = a.compare(b);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

}  // namespace

int naturalCompare(std::string_view a, std::string_view b) {
  if (isAscii(a) && isAscii(b)) {
    if (const AsciiCollation& t = asciiCollation(); t.usable) {
      const int c = asciiCompare(t, a, b);
      return c != 0 ? c : byteCompare(a, b);
    }
  }
  icu::Collator* collator = naturalCollator();
  if (collator != nullptr) {
    UErrorCode status = U_ZERO_ERROR;
    // Ill-formed bytes collate as U+FFFD here; the byte comparison below keeps such names apart.
    const UCollationResult r = collator->compareUTF8(piece(a), piece(b), status);
    if (U_SUCCESS(status) && r != UCOL_EQUAL) return r == UCOL_LESS ? -1 : 1;
  }
  return byteCompare(a, b);
}

std::string naturalSortKey(std::string_view text) {
  std::string key;
  if (icu::Collator* collator = naturalCollator()) {
    const icu::UnicodeString u = icu::UnicodeString::fromUTF8(piece(text));
    std::uint8_t buffer[256];
    int32_t length = collator->getSortKey(u, buffer, sizeof buffer);
    if (length > static_cast<int32_t>(sizeof buffer)) {
      std::vector<std::uint8_t> big(static_cast<std::size_t>(length));
      length = collator->getSortKey(u, big.data(), length);
      key.assign(reinterpret_cast<const char*>(big.data()), static_cast<std::size_t>(length));
    } else if (length > 0) {
      key.assign(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(length));
    }
  }
  // ICU keys end in their only zero byte; the raw bytes after it break ties like naturalCompare.
  if (key.empty() || key.back() != '\0') key.push_back('\0');
  key.append(text);
  return key;
}

}  // namespace tessane::unicode
