#include "MetadataKey.h"

namespace tessane {
namespace {

constexpr std::array<std::string_view, kMetadataKeyCount> kNames{
    "created", "modified", "date",     "make",  "model",  "lens",     "serial",
    "iso",     "shutter",  "aperture", "focal", "city",   "location", "author",
    "title",   "headline", "duration", "width", "height", "fps",      "codec",
    "artist",  "album",    "track",    "year",  "pages"};

constexpr std::array<MetadataKey, kMetadataKeyCount> kKeys = [] {
  std::array<MetadataKey, kMetadataKeyCount> keys{};
  for (std::size_t i = 0; i < kMetadataKeyCount; ++i)
    keys[i] = static_cast<MetadataKey>(i);
  return keys;
}();

}  // namespace

const std::array<MetadataKey, kMetadataKeyCount>& allMetadataKeys() noexcept {
  return kKeys;
}

std::string_view rawValue(MetadataKey key) noexcept {
  const auto i = static_cast<std::size_t>(key);
  return i < kNames.size() ? kNames[i] : std::string_view();
}

std::optional<MetadataKey> metadataKeyFromRawValue(std::string_view text) noexcept {
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    if (kNames[i] == text) return static_cast<MetadataKey>(i);
  }
  return std::nullopt;
}

}  // namespace tessane
