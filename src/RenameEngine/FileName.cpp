#include "FileName.h"

#include <algorithm>
#include <vector>

#include "Unicode.h"

namespace tessane {
namespace {

// Whether the dot at `dot` is a character of its own: a combining mark after it would make the
// two one character, and that is not an extension dot.
bool isWholeCharacter(std::string_view name, std::size_t dot) {
  if (dot + 1 >= name.size() || !(static_cast<unsigned char>(name[dot + 1]) & 0x80)) return true;
  const std::vector<std::size_t> bounds = unicode::graphemeBoundaries(name);
  return std::binary_search(bounds.begin(), bounds.end(), dot + 1);
}

// Splits at the last dot, unless that dot is the first or the last character.
bool splitAtLastDot(std::string_view name, std::string_view& base, std::string_view& ext) {
  std::size_t dot = name.rfind('.');
  while (dot != std::string_view::npos && dot > 0 && !isWholeCharacter(name, dot)) {
    dot = name.rfind('.', dot - 1);
  }
  if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) return false;
  base = name.substr(0, dot);
  ext = name.substr(dot + 1);
  return true;
}

}  // namespace

FileName FileName::parse(std::string_view name) {
  const std::string normalized = unicode::toNfc(name);
  std::string_view base;
  std::string_view ext;
  if (!splitAtLastDot(normalized, base, ext)) return FileName{normalized, {}};

  if (isSidecarExtension(unicode::toLower(ext))) {
    std::string_view innerBase;
    std::string_view innerExt;
    if (splitAtLastDot(base, innerBase, innerExt) &&
        isSidecarCarrierExtension(unicode::toLower(innerExt))) {
      std::string doubled;
      doubled.reserve(innerExt.size() + 1 + ext.size());
      doubled.append(innerExt).append(".").append(ext);
      return FileName{std::string(innerBase), std::move(doubled)};
    }
  }
  return FileName{std::string(base), std::string(ext)};
}

std::string FileName::fullName() const {
  if (ext.empty()) return base;
  std::string out;
  out.reserve(base.size() + 1 + ext.size());
  out.append(base).append(".").append(ext);
  return out;
}

std::string FileName::lowerExt() const {
  return unicode::toLower(ext);
}

}  // namespace tessane
