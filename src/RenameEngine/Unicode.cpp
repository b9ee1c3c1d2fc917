#include "Unicode.h"

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/stringoptions.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace tessane::unicode {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

icu::StringPiece piece(std::string_view text) {
  return icu::StringPiece(text.data(), static_cast<int32_t>(text.size()));
}

char asciiLower(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c;
}
char asciiUpper(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c;
}

std::string mapAscii(std::string_view text, char (*map)(char)) {
  std::string out(text);
  for (char& c : out)
    c = map(c);
  return out;
}

// Runs one of ICU's UTF-8 case mappings; on failure (or text that is not UTF-8) the text is
// returned unchanged.
template <typename Mapping>
std::string mapUtf8(std::string_view text, Mapping mapping) {
  if (!isValidUtf8(text)) return std::string(text);
  std::string out;
  out.reserve(text.size() + 4);
  icu::StringByteSink<std::string> sink(&out);
  UErrorCode status = U_ZERO_ERROR;
  mapping(piece(text), sink, status);
  if (U_FAILURE(status)) return std::string(text);
  return out;
}

const icu::Normalizer2* normalizer(bool compose) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* n =
      compose ? icu::Normalizer2::getNFCInstance(status) : icu::Normalizer2::getNFDInstance(status);
  return U_SUCCESS(status) ? n : nullptr;
}

std::string normalize(std::string_view text, bool compose) {
  const icu::Normalizer2* n = normalizer(compose);
  if (n == nullptr) return std::string(text);
  std::string out;
  out.reserve(text.size() + 8);
  icu::StringByteSink<std::string> sink(&out);
  UErrorCode status = U_ZERO_ERROR;
  n->normalizeUTF8(0, piece(text), sink, nullptr, status);
  if (U_FAILURE(status)) return std::string(text);
  return out;
}

// The character break iterator of this thread, built once.
icu::BreakIterator* characterBreaks() {
  thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> it(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) it.reset();
    return it;
  }();
  return iterator.get();
}

// Fallback when ICU cannot segment: every scalar (every bad byte) is a cluster.
std::vector<std::size_t> scalarBoundaries(std::string_view text) {
  std::vector<std::size_t> out;
  std::size_t offset = 0;
  while (offset < text.size()) {
    out.push_back(offset);
    nextScalar(text, offset);
  }
  out.push_back(text.size());
  return out;
}

// ASCII clusters: one per byte, except that CR LF is one cluster.
std::vector<std::size_t> asciiBoundaries(std::string_view text) {
  std::vector<std::size_t> out;
  out.reserve(text.size() + 1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i > 0 && text[i] == '\n' && text[i - 1] == '\r') continue;
    out.push_back(i);
  }
  out.push_back(text.size());
  return out;
}

// Letters whose stroke or bar is part of the letter rather than a combining mark; folded like
// accented letters because that is what someone removing accents from a name expects.
char32_t foldStrokeLetter(char32_t c) {
  switch (c) {
    case U'ø':
      return U'o';
    case U'Ø':
      return U'O';
    case U'ł':
      return U'l';
    case U'Ł':
      return U'L';
    case U'đ':
      return U'd';
    case U'Đ':
      return U'D';
    case U'ħ':
      return U'h';
    case U'Ħ':
      return U'H';
    case U'ŧ':
      return U't';
    case U'Ŧ':
      return U'T';
    case U'ƀ':
      return U'b';
    case U'Ɨ':
      return U'I';
    case U'ɨ':
      return U'i';
    case U'ƶ':
      return U'z';
    case U'Ƶ':
      return U'Z';
    default:
      return c;
  }
}

// Marks of the combining diacritical blocks, the ones that turn a letter into an accented letter.
bool isCombiningDiacritic(char32_t c) {
  return (c >= 0x0300 && c <= 0x036F) || (c >= 0x1AB0 && c <= 0x1AFF) ||
         (c >= 0x1DC0 && c <= 0x1DFF) || (c >= 0xFE20 && c <= 0xFE2F);
}

}  // namespace

bool isAscii(std::string_view text) noexcept {
  const char* p = text.data();
  std::size_t n = text.size();
  while (n >= 8) {
    std::uint64_t word;
    std::memcpy(&word, p, 8);
    if (word & 0x8080808080808080ULL) return false;
    p += 8;
    n -= 8;
  }
  for (; n > 0; --n, ++p) {
    if (static_cast<unsigned char>(*p) & 0x80) return false;
  }
  return true;
}

char32_t nextScalar(std::string_view text, std::size_t& offset) noexcept {
  const auto* s = reinterpret_cast<const unsigned char*>(text.data());
  const std::size_t n = text.size();
  const unsigned char b0 = s[offset];
  if (b0 < 0x80) {
    ++offset;
    return b0;
  }
  auto continuation = [&](std::size_t i) { return i < n && (s[i] & 0xC0) == 0x80; };
  std::size_t length = 0;
  char32_t c = 0;
  char32_t minimum = 0;
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    length = 2;
    c = b0 & 0x1F;
    minimum = 0x80;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    length = 3;
    c = b0 & 0x0F;
    minimum = 0x800;
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    length = 4;
    c = b0 & 0x07;
    minimum = 0x10000;
  } else {
    ++offset;
    return kReplacement;
  }
  for (std::size_t i = 1; i < length; ++i) {
    if (!continuation(offset + i)) {
      ++offset;
      return kReplacement;
    }
    c = (c << 6) | (s[offset + i] & 0x3F);
  }
  if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
    ++offset;
    return kReplacement;
  }
  offset += length;
  return c;
}

bool isValidUtf8(std::string_view text) noexcept {
  std::size_t offset = 0;
  while (offset < text.size()) {
    const auto b = static_cast<unsigned char>(text[offset]);
    if (b < 0x80) {
      ++offset;
      continue;
    }
    const std::size_t start = offset;
    const char32_t c = nextScalar(text, offset);
    // A real U+FFFD in the text is three bytes long; a replacement for a bad byte advances one.
    if (c == kReplacement && offset - start == 1) return false;
  }
  return true;
}

void appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

std::string toDisplayable(std::string_view text) {
  if (isValidUtf8(text)) return std::string(text);
  std::string out;
  out.reserve(text.size() + 8);
  std::size_t offset = 0;
  while (offset < text.size())
    appendUtf8(out, nextScalar(text, offset));
  return out;
}

bool isNfc(std::string_view text) {
  if (isAscii(text)) return true;
  if (!isValidUtf8(text)) return false;
  const icu::Normalizer2* n = normalizer(true);
  if (n == nullptr) return true;
  UErrorCode status = U_ZERO_ERROR;
  const bool normalized = n->isNormalizedUTF8(piece(text), status);
  return U_SUCCESS(status) && normalized;
}

std::string toNfc(std::string_view text) {
  if (isAscii(text) || !isValidUtf8(text)) return std::string(text);
  if (isNfc(text)) return std::string(text);
  return normalize(text, true);
}

void normalizeInPlace(std::string& text) {
  if (isNfc(text) || !isValidUtf8(text)) return;
  text = normalize(text, true);
}

std::string foldCase(std::string_view text) {
  if (isAscii(text)) return mapAscii(text, asciiLower);
  return mapUtf8(text, [](icu::StringPiece s, icu::ByteSink& sink, UErrorCode& status) {
    icu::CaseMap::utf8Fold(U_FOLD_CASE_DEFAULT, s, sink, nullptr, status);
  });
}

std::string toUpper(std::string_view text) {
  if (isAscii(text)) return mapAscii(text, asciiUpper);
  return mapUtf8(text, [](icu::StringPiece s, icu::ByteSink& sink, UErrorCode& status) {
    icu::CaseMap::utf8ToUpper("", 0, s, sink, nullptr, status);
  });
}

std::string toLower(std::string_view text) {
  if (isAscii(text)) return mapAscii(text, asciiLower);
  return mapUtf8(text, [](icu::StringPiece s, icu::ByteSink& sink, UErrorCode& status) {
    icu::CaseMap::utf8ToLower("", 0, s, sink, nullptr, status);
  });
}

std::string toTitle(std::string_view text) {
  if (isAscii(text)) {
    std::string out(text);
    for (std::size_t i = 0; i < out.size(); ++i) {
      out[i] = i == 0 ? asciiUpper(out[i]) : asciiLower(out[i]);
    }
    return out;
  }
  return mapUtf8(text, [](icu::StringPiece s, icu::ByteSink& sink, UErrorCode& status) {
    icu::CaseMap::utf8ToTitle("", U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_BREAK_ADJUSTMENT,
                              nullptr, s, sink, nullptr, status);
  });
}

std::string foldDiacritics(std::string_view text) {
  if (isAscii(text) || !isValidUtf8(text)) return std::string(text);
  const std::string decomposed = normalize(text, false);
  std::string stripped;
  stripped.reserve(decomposed.size());
  std::size_t offset = 0;
  while (offset < decomposed.size()) {
    const char32_t c = nextScalar(decomposed, offset);
    if (isCombiningDiacritic(c)) continue;
    appendUtf8(stripped, foldStrokeLetter(c));
  }
  return toNfc(stripped);
}

namespace {

// Text whose every scalar is ASCII or of Grapheme_Cluster_Break class Other (most letters of
// Latin, Greek, Cyrillic, CJK ideographs in NFC) breaks before every scalar: all the rules that
// join scalars into one character involve another class (CR LF aside). Such text, which is what
// most accented names are, needs no break iterator. Fills `bounds` and returns true when it is.
bool simpleBoundaries(std::string_view text, std::vector<std::size_t>& bounds) {
  bounds.clear();
  bounds.reserve(text.size() + 1);
  std::size_t offset = 0;
  while (offset < text.size()) {
    const std::size_t start = offset;
    const char32_t c = nextScalar(text, offset);
    if (c >= 0x80 && u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_GRAPHEME_CLUSTER_BREAK) !=
                         U_GCB_OTHER) {
      return false;
    }
    if (!(c == '\n' && start > 0 && text[start - 1] == '\r')) bounds.push_back(start);
  }
  bounds.push_back(text.size());
  return true;
}

}  // namespace

std::vector<std::size_t> graphemeBoundaries(std::string_view text) {
  if (isAscii(text)) return asciiBoundaries(text);
  if (!isValidUtf8(text)) return scalarBoundaries(text);
  {
    std::vector<std::size_t> bounds;
    if (simpleBoundaries(text, bounds)) return bounds;
  }
  icu::BreakIterator* it = characterBreaks();
  if (it == nullptr) return scalarBoundaries(text);
  UErrorCode status = U_ZERO_ERROR;
  UText ut = UTEXT_INITIALIZER;
  utext_openUTF8(&ut, text.data(), static_cast<int64_t>(text.size()), &status);
  it->setText(&ut, status);
  if (U_FAILURE(status)) {
    utext_close(&ut);
    return scalarBoundaries(text);
  }
  std::vector<std::size_t> out;
  out.reserve(text.size() + 1);
  for (int32_t b = it->first(); b != icu::BreakIterator::DONE; b = it->next()) {
    out.push_back(static_cast<std::size_t>(b));
  }
  utext_close(&ut);
  if (out.empty() || out.back() != text.size()) out.push_back(text.size());
  return out;
}

std::size_t graphemeCount(std::string_view text) {
  return graphemeBoundaries(text).size() - 1;
}

std::string_view graphemeSlice(std::string_view text, std::size_t from, std::size_t count) {
  const std::vector<std::size_t> bounds = graphemeBoundaries(text);
  const std::size_t clusters = bounds.size() - 1;
  const std::size_t first = std::min(from, clusters);
  const std::size_t last = first + std::min(count, clusters - first);
  return text.substr(bounds[first], bounds[last] - bounds[first]);
}

std::size_t displayWidth(std::string_view text) {
  if (isAscii(text)) return graphemeCount(text);
  const std::vector<std::size_t> bounds = graphemeBoundaries(text);
  std::size_t width = 0;
  for (std::size_t i = 0; i + 1 < bounds.size(); ++i) {
    std::size_t columns = 1;
    for (std::size_t offset = bounds[i]; offset < bounds[i + 1];) {
      const auto c = static_cast<UChar32>(nextScalar(text, offset));
      const auto eaw = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
      if (eaw == U_EA_WIDE || eaw == U_EA_FULLWIDTH || c == 0xFE0F ||
          u_hasBinaryProperty(c, UCHAR_EMOJI_PRESENTATION)) {
        columns = 2;
      }
    }
    width += columns;
  }
  return width;
}

bool isControl(char32_t c) noexcept {
  return u_charType(static_cast<UChar32>(c)) == U_CONTROL_CHAR;
}

bool isEmoji(char32_t c) noexcept {
  return u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_EMOJI);
}

bool isEmojiPresentation(char32_t c) noexcept {
  return u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_EMOJI_PRESENTATION);
}

bool isWhitespace(char32_t c) noexcept {
  return u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_WHITE_SPACE);
}

}  // namespace tessane::unicode
