#include "Uuid.h"

#include <random>

#include "HexDigit.h"

namespace tessane {

Uuid Uuid::random() {
  // The system's entropy source, seeded once per thread into a 64-bit generator.
  thread_local std::mt19937_64 generator = [] {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(),
                       device(), device(), device(), device()};
    return std::mt19937_64(seed);
  }();
  Uuid u;
  for (std::size_t i = 0; i < 16; i += 8) {
    std::uint64_t word = generator();
    for (std::size_t j = 0; j < 8; ++j, word >>= 8) {
      u.bytes_[i + j] = static_cast<std::uint8_t>(word & 0xFF);
    }
  }
  u.bytes_[6] = static_cast<std::uint8_t>((u.bytes_[6] & 0x0F) | 0x40);  // version 4
  u.bytes_[8] = static_cast<std::uint8_t>((u.bytes_[8] & 0x3F) | 0x80);  // RFC 4122 variant
  return u;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
  if (text.size() != 36) return std::nullopt;
  Uuid u;
  std::size_t byte = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (i == 8 || i == 13 || i == 18 || i == 23) {
      if (text[i] != '-') return std::nullopt;
      ++i;
      continue;
    }
    const int hi = hexDigitValue(text[i]);
    const int lo = hexDigitValue(text[i + 1]);
    if (hi < 0 || lo < 0) return std::nullopt;
    u.bytes_[byte++] = static_cast<std::uint8_t>(hi * 16 + lo);
    i += 2;
  }
  return u;
}

std::string Uuid::string() const {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(36);
  for (std::size_t i = 0; i < 16; ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) out.push_back('-');
    out.push_back(kDigits[bytes_[i] >> 4]);
    out.push_back(kDigits[bytes_[i] & 0x0F]);
  }
  return out;
}

bool Uuid::isNil() const noexcept {
  for (std::uint8_t b : bytes_) {
    if (b != 0) return false;
  }
  return true;
}

}  // namespace tessane
