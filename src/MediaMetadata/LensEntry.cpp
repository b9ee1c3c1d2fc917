#include "LensEntry.h"

#include <cstdint>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>

namespace tessane::LensEntry {

Exiv2::ExifData::const_iterator find(const Exiv2::ExifData& exif) {
  if (Exiv2::versionNumber() >= EXIV2_MAKE_VERSION(0, 28, 0)) return Exiv2::lensName(exif);
  std::string keys;
  keys.reserve(static_cast<std::size_t>(exif.count()) * 4);
  for (const Exiv2::Exifdatum& d : exif) {
    const auto ifd = static_cast<std::uint32_t>(d.ifdId());
    const std::uint16_t tag = d.tag();
    for (const std::uint32_t byte :
         {ifd >> 8, ifd, static_cast<std::uint32_t>(tag >> 8), static_cast<std::uint32_t>(tag)}) {
      keys.push_back(static_cast<char>(byte & 0xFF));
    }
  }
  // Where the lens entry sits among the entries; the count of entries when there is none.
  thread_local std::unordered_map<std::string, std::size_t> remembered;
  if (const auto it = remembered.find(keys); it != remembered.end()) {
    return std::next(exif.begin(), static_cast<std::ptrdiff_t>(it->second));
  }
  const Exiv2::ExifData::const_iterator found = Exiv2::lensName(exif);
  if (remembered.size() >= 512) remembered.clear();
  remembered.emplace(std::move(keys), static_cast<std::size_t>(std::distance(exif.begin(), found)));
  return found;
}

}  // namespace tessane::LensEntry
