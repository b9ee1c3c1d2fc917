// The form under which two file names are the same name: NFC, then case folding without a
// locale. "IMG_0001.JPG" and "img_0001.jpg" share a key, as do composed and decomposed accents;
// "cafe" and "café" do not. Every "same name" test in the system compares keys.
#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>

namespace tessane {

struct NameKey {
  std::string value;

  // The key of a full file name (base and extension).
  static NameKey of(std::string_view name);

  friend bool operator==(const NameKey&, const NameKey&) = default;
  friend auto operator<=>(const NameKey&, const NameKey&) = default;
};

}  // namespace tessane

template <>
struct std::hash<tessane::NameKey> {
  std::size_t operator()(const tessane::NameKey& k) const noexcept {
    return std::hash<std::string>{}(k.value);
  }
};
