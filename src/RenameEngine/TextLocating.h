// Where an operation acts inside a base name: an anchor (text looked for), a block (by position
// or text) or an insert position. Positions and ranges count characters (grapheme clusters),
// never bytes. Names and anchor texts are compared in NFC.
//
// A position that resolves to nothing is not an error: the operation leaves that name as it is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "BlockedName.h"
#include "JsonCoding.h"

namespace tessane {

enum class Occurrence { first, last, all };

struct Anchor {
  std::string text;  // never found when empty
  bool caseSensitive = true;
  Occurrence occurrence = Occurrence::first;

  friend bool operator==(const Anchor&, const Anchor&) = default;
};

// A block of a name: by its position among the blocks (negative counts from the end) or by its
// whole text (case-sensitive, compared in NFC).
struct BlockRef {
  struct Index {
    std::int64_t value;  // no initializer here: the variant below must be able to make one
    friend bool operator==(const Index&, const Index&) = default;
  };
  struct Text {
    std::string value;
    friend bool operator==(const Text&, const Text&) = default;
  };
  std::variant<Index, Text> ref;

  static BlockRef index(std::int64_t n) { return BlockRef{Index{n}}; }
  static BlockRef text(std::string s) { return BlockRef{Text{std::move(s)}}; }

  friend bool operator==(const BlockRef&, const BlockRef&) = default;
};

struct InsertPosition {
  enum class Kind { index, before, after, beforeBlock, afterBlock, start, end };
  Kind kind = Kind::start;
  std::int64_t offset = 0;  // index
  Anchor anchor;            // before, after
  BlockRef block;           // beforeBlock, afterBlock

  static InsertPosition atIndex(std::int64_t n) { return {Kind::index, n, {}, {}}; }
  static InsertPosition before(Anchor a) { return {Kind::before, 0, std::move(a), {}}; }
  static InsertPosition after(Anchor a) { return {Kind::after, 0, std::move(a), {}}; }
  static InsertPosition beforeBlock(BlockRef r) { return {Kind::beforeBlock, 0, {}, std::move(r)}; }
  static InsertPosition afterBlock(BlockRef r) { return {Kind::afterBlock, 0, {}, std::move(r)}; }
  static InsertPosition start() { return {Kind::start, 0, {}, {}}; }
  static InsertPosition end() { return {Kind::end, 0, {}, {}}; }

  // Only the fields of the kind take part.
  friend bool operator==(const InsertPosition& a, const InsertPosition& b);
};

// A half-open range of characters [lower, upper).
struct CharRange {
  std::size_t lower = 0;
  std::size_t upper = 0;
  friend bool operator==(const CharRange&, const CharRange&) = default;
};

// A name prepared for locating: its NFC text and where its characters start.
class LocatedName {
 public:
  explicit LocatedName(std::string_view name);

  const std::string& text() const { return text_; }
  std::size_t length() const { return bounds_.size() - 1; }  // in characters
  std::size_t byteOffset(std::size_t character) const { return bounds_[character]; }
  // The character that starts at `byte`, or nullopt when `byte` is inside a character.
  std::optional<std::size_t> characterAt(std::size_t byte) const;

 private:
  std::string text_;
  std::vector<std::size_t> bounds_;
};

// An anchor made ready for many names: its text in NFC and, when it ignores case, its pattern
// compiled once. Safe to share between threads.
class AnchorFinder {
 public:
  explicit AnchorFinder(const Anchor& anchor);
  ~AnchorFinder();
  AnchorFinder(AnchorFinder&&) noexcept;
  AnchorFinder& operator=(AnchorFinder&&) noexcept;

  // Every hit, left to right, never overlapping, before the occurrence filter.
  std::vector<CharRange> hits(const LocatedName& name) const;
  // The hits the occurrence keeps.
  std::vector<CharRange> ranges(const LocatedName& name) const;
  // One hit: the last for `last`, else the first.
  std::optional<CharRange> range(const LocatedName& name) const;

 private:
  struct Pattern;
  std::string text_;
  Occurrence occurrence_;
  bool caseSensitive_;
  std::unique_ptr<Pattern> pattern_;
};

namespace TextLocating {

std::vector<CharRange> ranges(const Anchor& anchor, std::string_view name);
std::optional<CharRange> range(const Anchor& anchor, std::string_view name);
// The position in `tokens` (separators counted) of the block `ref` names.
std::optional<std::size_t> blockIndex(const BlockRef& ref, const std::vector<NameToken>& tokens);
// The characters of token `position` within the joined tokens.
CharRange blockRange(std::size_t position, const std::vector<NameToken>& tokens);
// Where an insertion goes, in characters; nullopt when the anchor or block is not there.
std::optional<std::size_t> insertionIndex(const InsertPosition& position, std::string_view name,
                                          const std::vector<NameToken>& tokens);

}  // namespace TextLocating

// JSON forms.
Json toJson(Occurrence occurrence);
Json toJson(const Anchor& anchor);
Json toJson(const BlockRef& ref);
Json toJson(const InsertPosition& position);
std::string_view caseName(Occurrence occurrence);

}  // namespace tessane
