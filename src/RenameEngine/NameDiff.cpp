#include "NameDiff.h"

#include <algorithm>
#include <cstdint>

#include "Unicode.h"

namespace tessane {
namespace {

std::vector<std::string_view> characters(std::string_view text) {
  const std::vector<std::size_t> bounds = unicode::graphemeBoundaries(text);
  std::vector<std::string_view> out;
  out.reserve(bounds.size() - 1);
  for (std::size_t i = 0; i + 1 < bounds.size(); ++i) {
    out.push_back(text.substr(bounds[i], bounds[i + 1] - bounds[i]));
  }
  return out;
}

// Appends in reverse name order; the caller reverses once at the end.
void pushBack(std::vector<DiffPiece>& pieces, DiffPiece::Kind kind, std::string_view character) {
  if (!pieces.empty() && pieces.back().kind == kind) {
    pieces.back().text.insert(0, character);
  } else {
    pieces.push_back(DiffPiece{kind, std::string(character)});
  }
}

}  // namespace

NameDiff NameDiff::compare(std::string_view oldName, std::string_view newName) {
  const std::vector<std::string_view> a = characters(oldName);
  const std::vector<std::string_view> b = characters(newName);
  const std::size_t m = a.size();
  const std::size_t n = b.size();
  const std::size_t width = n + 1;
  std::vector<std::uint32_t> table((m + 1) * width, 0);
  auto L = [&](std::size_t i, std::size_t j) -> std::uint32_t& { return table[i * width + j]; };
  for (std::size_t i = 1; i <= m; ++i) {
    for (std::size_t j = 1; j <= n; ++j) {
      L(i, j) = a[i - 1] == b[j - 1] ? L(i - 1, j - 1) + 1 : std::max(L(i - 1, j), L(i, j - 1));
    }
  }

  NameDiff diff;
  std::size_t i = m;
  std::size_t j = n;
  while (i > 0 || j > 0) {
    if (i > 0 && j > 0 && a[i - 1] == b[j - 1] && L(i, j) == L(i - 1, j - 1) + 1) {
      pushBack(diff.oldPieces, DiffPiece::Kind::same, a[i - 1]);
      pushBack(diff.newPieces, DiffPiece::Kind::same, b[j - 1]);
      --i;
      --j;
    } else if (j > 0 && (i == 0 || L(i, j - 1) >= L(i - 1, j))) {
      pushBack(diff.newPieces, DiffPiece::Kind::added, b[j - 1]);
      --j;
    } else {
      pushBack(diff.oldPieces, DiffPiece::Kind::removed, a[i - 1]);
      --i;
    }
  }
  std::reverse(diff.oldPieces.begin(), diff.oldPieces.end());
  std::reverse(diff.newPieces.begin(), diff.newPieces.end());
  return diff;
}

}  // namespace tessane
