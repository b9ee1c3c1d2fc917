// A file name split into base and extension.
//
// The split normalises to NFC first, so a name read from disk in decomposed form and the same
// name typed by the user give equal values. A sidecar's double extension stays whole:
// "IMG_0001.CR2.xmp" is base "IMG_0001", ext "CR2.xmp".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "FileKind.h"

namespace tessane {

struct FileName {
  std::string base;
  std::string ext;  // without its leading dot, in the case it had; empty when there is none

  // Splits a whole name (the last path component). Total: never fails.
  static FileName parse(std::string_view name);

  // base alone when ext is empty, else base + "." + ext.
  std::string fullName() const;
  // The extension lower-cased ("CR2.xmp" -> "cr2.xmp").
  std::string lowerExt() const;
  FileKind kind() const { return fileKindOf(ext); }

  friend bool operator==(const FileName&, const FileName&) = default;
};

}  // namespace tessane

template <>
struct std::hash<tessane::FileName> {
  std::size_t operator()(const tessane::FileName& n) const noexcept {
    const std::size_t h = std::hash<std::string>{}(n.base);
    return h ^ (std::hash<std::string>{}(n.ext) + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2));
  }
};
