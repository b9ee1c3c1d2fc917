// The keys of the metadata dictionary each file carries.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tessane {

enum class MetadataKey {
  created,   // file system creation time
  modified,  // file system modification time
  date,      // capture time from the file's own metadata
  make,
  model,
  lens,
  serial,  // camera body serial number
  iso,
  shutter,   // exposure time in seconds
  aperture,  // f-number
  focal,     // focal length in millimetres
  city,
  location,
  author,
  title,
  headline,
  duration,  // seconds
  width,
  height,
  fps,
  codec,
  artist,
  album,
  track,
  year,
  pages,
};

inline constexpr std::size_t kMetadataKeyCount = 26;

// Every key in declaration order.
const std::array<MetadataKey, kMetadataKeyCount>& allMetadataKeys() noexcept;

// The stored form of a key, equal to its case name ("created", "focal", ...).
std::string_view rawValue(MetadataKey key) noexcept;
std::optional<MetadataKey> metadataKeyFromRawValue(std::string_view text) noexcept;

}  // namespace tessane
