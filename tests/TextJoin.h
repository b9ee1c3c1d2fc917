// Joins pieces of text; written this way rather than with "literal" + std::string, on which GCC 12
// gives false -Wrestrict warnings in some inlined paths.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace tessane::testing {

inline std::string join(std::initializer_list<std::string_view> pieces) {
  std::string out;
  for (std::string_view p : pieces)
    out.append(p);
  return out;
}

}  // namespace tessane::testing
