// A base name seen as alternating blocks and separators: "2024-05-01_Rome" is the blocks 2024,
// 05, 01, Rome with "-", "-", "_" between them. Operations that work on blocks edit the tokens and
// join them back.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessane {

struct NameToken {
  enum class Kind { block, separator };
  Kind kind = Kind::block;
  std::string text;  // never empty inside a BlockedName

  friend bool operator==(const NameToken&, const NameToken&) = default;
};

// A list of separators made ready for splitting: empty ones dropped, each in NFC, longest first
// (equal lengths keep the caller's order). Build it once and split many names with it.
class SeparatorSet {
 public:
  explicit SeparatorSet(const std::vector<std::string>& separators);
  // "_", "-", " ", "." in that order.
  static const SeparatorSet& defaults();

  const std::vector<std::string>& texts() const { return texts_; }  // in matching order
  // True when every separator is a single ASCII byte (the fast path of split).
  bool allSingleAscii() const { return singleAscii_; }

 private:
  std::vector<std::string> texts_;
  bool singleAscii_ = true;
};

class BlockedName {
 public:
  // "_", "-", " ", "." in that order.
  static const std::vector<std::string>& defaultSeparators();

  // Splits `name` into tokens. Empty separators are ignored; longer separators are tried first,
  // equal lengths in the order given. A separator matches only where it ends on a character
  // boundary, so a "." carrying a combining mark is part of a block. Runs of separators make one
  // separator token; a name may begin or end with one.
  static BlockedName split(std::string_view name);
  static BlockedName split(std::string_view name, const SeparatorSet& separators);
  static BlockedName split(std::string_view name, const std::vector<std::string>& separators);

  BlockedName() = default;
  // Takes tokens as they are (after an operation edited them). Neighbours of one kind are merged
  // and empty tokens dropped, so the invariants hold whatever the caller did.
  explicit BlockedName(std::vector<NameToken> tokens);

  const std::vector<NameToken>& tokens() const { return tokens_; }
  std::vector<std::string> blocks() const;
  std::size_t blockCount() const;
  // All token texts concatenated: the name that was split.
  std::string joined() const;
  // The index in tokens() of the n-th block; negative n counts from the end (-1 is the last).
  std::optional<std::size_t> tokenIndexOfBlock(long n) const;

  friend bool operator==(const BlockedName&, const BlockedName&) = default;

 private:
  std::vector<NameToken> tokens_;
};

}  // namespace tessane
