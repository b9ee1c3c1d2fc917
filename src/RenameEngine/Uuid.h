// A random (version 4) UUID: the identity of rules, history entries and batches.
// Its text form is the usual 8-4-4-4-12 hexadecimal groups, upper case on output; parsing takes
// either case.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessane {

class Uuid {
 public:
  Uuid() = default;  // the nil UUID, all zero
  static Uuid random();
  static std::optional<Uuid> parse(std::string_view text);

  std::string string() const;
  bool isNil() const noexcept;
  const std::array<std::uint8_t, 16>& bytes() const noexcept { return bytes_; }

  friend bool operator==(const Uuid&, const Uuid&) = default;
  friend auto operator<=>(const Uuid&, const Uuid&) = default;

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace tessane

template <>
struct std::hash<tessane::Uuid> {
  std::size_t operator()(const tessane::Uuid& u) const noexcept {
    std::size_t h = 0;
    for (std::uint8_t b : u.bytes())
      h = h * 131 + b;
    return h;
  }
};
