// What changed between an old and a new name, character by character, for the preview.
//
// The old name's pieces are `same` or `removed`, the new name's `same` or `added`; neighbouring
// pieces never share a kind, and each list's texts join to its name. Characters are grapheme
// clusters compared exactly (case-sensitive, no normalisation). Where several alignments are
// equally long, removals come before additions in name order.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessane {

struct DiffPiece {
  enum class Kind { same, removed, added };
  Kind kind = Kind::same;
  std::string text;

  friend bool operator==(const DiffPiece&, const DiffPiece&) = default;
};

struct NameDiff {
  std::vector<DiffPiece> oldPieces;
  std::vector<DiffPiece> newPieces;

  // Longest common subsequence over characters. Quadratic in the lengths; names are short.
  static NameDiff compare(std::string_view oldName, std::string_view newName);

  friend bool operator==(const NameDiff&, const NameDiff&) = default;
};

}  // namespace tessane
