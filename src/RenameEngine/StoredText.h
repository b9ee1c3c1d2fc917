// The texts that store an enumeration's values (in presets, journals, the history and settings),
// written once per enumeration as a table of pairs that both directions read:
//
//   constexpr std::pair<CounterReset, std::string_view> kResets[] = {
//       {CounterReset::never, "never"}, {CounterReset::perFolder, "perFolder"}, ...};
//   storedText(kResets, reset);      // "perFolder"
//   fromStoredText(kResets, "perDay");  // CounterReset::perDay, or nothing for an unknown text
//
// A table lists every value of its enumeration once; storedText of a value missing from it gives
// the first entry's text. Pure, constexpr and thread-safe.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace tessane {

template <typename E, std::size_t N>
constexpr std::string_view storedText(const std::pair<E, std::string_view> (&table)[N],
                                      E value) noexcept {
  for (const auto& [v, text] : table) {
    if (v == value) return text;
  }
  return table[0].second;
}

template <typename E, std::size_t N>
constexpr std::optional<E> fromStoredText(const std::pair<E, std::string_view> (&table)[N],
                                          std::string_view text) noexcept {
  for (const auto& [value, t] : table) {
    if (t == text) return value;
  }
  return std::nullopt;
}

}  // namespace tessane
