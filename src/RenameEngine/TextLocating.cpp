#include "TextLocating.h"

#include <unicode/regex.h>
#include <unicode/utext.h>

#include <algorithm>

#include "JsonDecoders.h"
#include "StoredText.h"
#include "Unicode.h"

namespace tessane {

// ---------------------------------------------------------------------------------------------
// Locating

LocatedName::LocatedName(std::string_view name)
    : text_(unicode::toNfc(name)), bounds_(unicode::graphemeBoundaries(text_)) {}

std::optional<std::size_t> LocatedName::characterAt(std::size_t byte) const {
  const auto it = std::lower_bound(bounds_.begin(), bounds_.end(), byte);
  if (it == bounds_.end() || *it != byte) return std::nullopt;
  return static_cast<std::size_t>(it - bounds_.begin());
}

struct AnchorFinder::Pattern {
  std::unique_ptr<icu::RegexPattern> regex;
};

AnchorFinder::AnchorFinder(const Anchor& anchor)
    : text_(unicode::toNfc(anchor.text)),
      occurrence_(anchor.occurrence),
      caseSensitive_(anchor.caseSensitive) {
  if (caseSensitive_ || text_.empty()) return;
  UErrorCode status = U_ZERO_ERROR;
  UParseError parseError;
  const icu::UnicodeString pattern = icu::UnicodeString::fromUTF8(text_);
  std::unique_ptr<icu::RegexPattern> regex(icu::RegexPattern::compile(
      pattern, UREGEX_LITERAL | UREGEX_CASE_INSENSITIVE, parseError, status));
  if (U_SUCCESS(status)) pattern_ = std::make_unique<Pattern>(Pattern{std::move(regex)});
}

AnchorFinder::~AnchorFinder() = default;
AnchorFinder::AnchorFinder(AnchorFinder&&) noexcept = default;
AnchorFinder& AnchorFinder::operator=(AnchorFinder&&) noexcept = default;

std::vector<CharRange> AnchorFinder::hits(const LocatedName& name) const {
  std::vector<CharRange> out;
  if (text_.empty()) return out;
  const std::string& text = name.text();
  // A hit counts only when it starts and ends between characters: "e" is not found in "é".
  auto record = [&](std::size_t begin, std::size_t end) {
    const auto lower = name.characterAt(begin);
    const auto upper = name.characterAt(end);
    if (!lower || !upper) return false;
    out.push_back(CharRange{*lower, *upper});
    return true;
  };

  if (caseSensitive_) {
    std::size_t from = 0;
    while (from <= text.size()) {
      const std::size_t at = text.find(text_, from);
      if (at == std::string::npos) break;
      from = record(at, at + text_.size()) ? at + text_.size() : at + 1;
    }
    return out;
  }

  // ASCII anchor in an ASCII name: no scalar outside ASCII can fold onto an ASCII letter here,
  // so comparing ASCII letters without case finds exactly what the pattern would.
  if (unicode::isAscii(text_) && unicode::isAscii(text)) {
    auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c; };
    std::size_t from = 0;
    while (from + text_.size() <= text.size()) {
      std::size_t i = 0;
      while (i < text_.size() && lower(text[from + i]) == lower(text_[i]))
        ++i;
      if (i == text_.size() && record(from, from + text_.size())) {
        from += text_.size();
      } else {
        ++from;
      }
    }
    return out;
  }

  if (!pattern_) return out;
  UErrorCode status = U_ZERO_ERROR;
  UText ut = UTEXT_INITIALIZER;
  utext_openUTF8(&ut, text.data(), static_cast<int64_t>(text.size()), &status);
  std::unique_ptr<icu::RegexMatcher> matcher(pattern_->regex->matcher(status));
  if (U_SUCCESS(status) && matcher) {
    matcher->reset(&ut);
    while (matcher->find(status) && U_SUCCESS(status)) {
      const int64_t begin = matcher->start64(status);
      const int64_t end = matcher->end64(status);
      if (U_FAILURE(status)) break;
      record(static_cast<std::size_t>(begin), static_cast<std::size_t>(end));
    }
  }
  utext_close(&ut);
  return out;
}

std::vector<CharRange> AnchorFinder::ranges(const LocatedName& name) const {
  std::vector<CharRange> all = hits(name);
  if (all.empty() || occurrence_ == Occurrence::all) return all;
  return {occurrence_ == Occurrence::first ? all.front() : all.back()};
}

std::optional<CharRange> AnchorFinder::range(const LocatedName& name) const {
  const std::vector<CharRange> all = hits(name);
  if (all.empty()) return std::nullopt;
  return occurrence_ == Occurrence::last ? all.back() : all.front();
}

namespace TextLocating {

std::vector<CharRange> ranges(const Anchor& anchor, std::string_view name) {
  return AnchorFinder(anchor).ranges(LocatedName(name));
}

std::optional<CharRange> range(const Anchor& anchor, std::string_view name) {
  return AnchorFinder(anchor).range(LocatedName(name));
}

std::optional<std::size_t> blockIndex(const BlockRef& ref, const std::vector<NameToken>& tokens) {
  if (const auto* index = std::get_if<BlockRef::Index>(&ref.ref)) {
    std::vector<std::size_t> blocks;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      if (tokens[i].kind == NameToken::Kind::block) blocks.push_back(i);
    }
    const auto count = static_cast<std::int64_t>(blocks.size());
    const std::int64_t n = index->value < 0 ? count + index->value : index->value;
    if (n < 0 || n >= count) return std::nullopt;
    return blocks[static_cast<std::size_t>(n)];
  }
  const std::string wanted = unicode::toNfc(std::get<BlockRef::Text>(ref.ref).value);
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].kind == NameToken::Kind::block && tokens[i].text == wanted) return i;
  }
  return std::nullopt;
}

CharRange blockRange(std::size_t position, const std::vector<NameToken>& tokens) {
  std::size_t lower = 0;
  for (std::size_t i = 0; i < position && i < tokens.size(); ++i) {
    lower += unicode::graphemeCount(tokens[i].text);
  }
  const std::size_t length =
      position < tokens.size() ? unicode::graphemeCount(tokens[position].text) : 0;
  return CharRange{lower, lower + length};
}

std::optional<std::size_t> insertionIndex(const InsertPosition& position, std::string_view name,
                                          const std::vector<NameToken>& tokens) {
  using Kind = InsertPosition::Kind;
  switch (position.kind) {
    case Kind::index: {
      const auto length = static_cast<std::int64_t>(unicode::graphemeCount(unicode::toNfc(name)));
      return static_cast<std::size_t>(std::clamp<std::int64_t>(position.offset, 0, length));
    }
    case Kind::before:
    case Kind::after: {
      const auto r = range(position.anchor, name);
      if (!r) return std::nullopt;
      return position.kind == Kind::before ? r->lower : r->upper;
    }
    case Kind::beforeBlock:
    case Kind::afterBlock: {
      const auto index = blockIndex(position.block, tokens);
      if (!index) return std::nullopt;
      const CharRange r = blockRange(*index, tokens);
      return position.kind == Kind::beforeBlock ? r.lower : r.upper;
    }
    case Kind::start:
      return 0;
    case Kind::end:
      return unicode::graphemeCount(unicode::toNfc(name));
  }
  return std::nullopt;
}

}  // namespace TextLocating

bool operator==(const InsertPosition& a, const InsertPosition& b) {
  if (a.kind != b.kind) return false;
  switch (a.kind) {
    case InsertPosition::Kind::index:
      return a.offset == b.offset;
    case InsertPosition::Kind::before:
    case InsertPosition::Kind::after:
      return a.anchor == b.anchor;
    case InsertPosition::Kind::beforeBlock:
    case InsertPosition::Kind::afterBlock:
      return a.block == b.block;
    case InsertPosition::Kind::start:
    case InsertPosition::Kind::end:
      return true;
  }
  return false;
}

// ---------------------------------------------------------------------------------------------
// JSON

namespace {
constexpr std::pair<Occurrence, std::string_view> kOccurrences[] = {
    {Occurrence::first, "first"}, {Occurrence::last, "last"}, {Occurrence::all, "all"}};
}  // namespace

std::string_view caseName(Occurrence occurrence) {
  return storedText(kOccurrences, occurrence);
}

Json toJson(Occurrence occurrence) {
  return std::string(caseName(occurrence));
}

Json toJson(const Anchor& anchor) {
  return Json{{"text", anchor.text},
              {"caseSensitive", anchor.caseSensitive},
              {"occurrence", toJson(anchor.occurrence)}};
}

Json toJson(const BlockRef& ref) {
  if (const auto* index = std::get_if<BlockRef::Index>(&ref.ref)) {
    return json::enumCase("index", Json{{"_0", index->value}});
  }
  return json::enumCase("text", Json{{"_0", std::get<BlockRef::Text>(ref.ref).value}});
}

Json toJson(const InsertPosition& position) {
  using Kind = InsertPosition::Kind;
  switch (position.kind) {
    case Kind::index:
      return json::enumCase("index", Json{{"_0", position.offset}});
    case Kind::before:
      return json::enumCase("before", Json{{"_0", toJson(position.anchor)}});
    case Kind::after:
      return json::enumCase("after", Json{{"_0", toJson(position.anchor)}});
    case Kind::beforeBlock:
      return json::enumCase("beforeBlock", Json{{"_0", toJson(position.block)}});
    case Kind::afterBlock:
      return json::enumCase("afterBlock", Json{{"_0", toJson(position.block)}});
    case Kind::start:
      return json::enumCase("start");
    case Kind::end:
      return json::enumCase("end");
  }
  return json::enumCase("start");
}

namespace json {

Occurrence decodeOccurrence(const Json& value, std::string_view key) {
  const std::string name = decodeString(value, key);
  if (const std::optional<Occurrence> o = fromStoredText(kOccurrences, name)) return *o;
  throw DecodeError(unknownCase("occurrence", name));
}

Anchor decodeAnchor(const Json& value) {
  if (!value.is_object()) throw DecodeError("Expected an object for an anchor.");
  return Anchor{decodeString(member(value, "text"), "text"),
                decodeBool(member(value, "caseSensitive"), "caseSensitive"),
                decodeOccurrence(member(value, "occurrence"), "occurrence")};
}

BlockRef decodeBlockRef(const Json& value) {
  const auto [name, payload] = decodeCase(value, "a block reference");
  if (name == "index") return BlockRef::index(decodeInteger(member(*payload, "_0"), "_0"));
  if (name == "text") return BlockRef::text(decodeString(member(*payload, "_0"), "_0"));
  throw DecodeError(unknownCase("block reference", name));
}

InsertPosition decodeInsertPosition(const Json& value) {
  const auto [name, payload] = decodeCase(value, "an insert position");
  if (name == "index") return InsertPosition::atIndex(decodeInteger(member(*payload, "_0"), "_0"));
  if (name == "before") return InsertPosition::before(decodeAnchor(member(*payload, "_0")));
  if (name == "after") return InsertPosition::after(decodeAnchor(member(*payload, "_0")));
  if (name == "beforeBlock") {
    return InsertPosition::beforeBlock(decodeBlockRef(member(*payload, "_0")));
  }
  if (name == "afterBlock") {
    return InsertPosition::afterBlock(decodeBlockRef(member(*payload, "_0")));
  }
  if (name == "start") return InsertPosition::start();
  if (name == "end") return InsertPosition::end();
  throw DecodeError(unknownCase("insert position", name));
}

}  // namespace json
}  // namespace tessane
