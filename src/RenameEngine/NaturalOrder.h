// The natural order of names, as a file manager shows them. Pure functions; each thread keeps its
// own collator, so they may run on several threads at once.
#pragma once

#include <string>
#include <string_view>

namespace tessane::unicode {

// The order a file manager shows names in: case-insensitive, accents after plain letters, digit
// runs compared by value ("IMG_2" before "IMG_10"), in the user's locale. Names that compare equal
// under those rules are ordered by their bytes, so the order is total and repeatable.
int naturalCompare(std::string_view a, std::string_view b);
inline bool naturalLess(std::string_view a, std::string_view b) {
  return naturalCompare(a, b) < 0;
}

// A byte string whose plain comparison gives the same order as naturalCompare: for sorting many
// names, build each key once and compare keys.
std::string naturalSortKey(std::string_view text);

}  // namespace tessane::unicode
