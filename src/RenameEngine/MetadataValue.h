// One metadata value: text, a whole number, a real number or a point in time.
//
// Equality is by case and payload: "5" never equals 5, and two numbers are equal when the doubles
// compare equal (0.0 equals -0.0). Hashing agrees with that.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "MetadataKey.h"

namespace tessane {

// An absolute point in time, without a time zone, to the microsecond.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

class MetadataValue {
 public:
  enum class Case { text, integer, number, date };

  static MetadataValue text(std::string value) { return MetadataValue(std::move(value)); }
  static MetadataValue integer(std::int64_t value) { return MetadataValue(value); }
  static MetadataValue number(double value) { return MetadataValue(value); }
  static MetadataValue date(Date value) { return MetadataValue(value); }

  Case kind() const noexcept { return static_cast<Case>(value_.index()); }

  // The payload when the value is of that case, else null.
  const std::string* asText() const noexcept { return std::get_if<std::string>(&value_); }
  const std::int64_t* asInteger() const noexcept { return std::get_if<std::int64_t>(&value_); }
  const double* asNumber() const noexcept { return std::get_if<double>(&value_); }
  const Date* asDate() const noexcept { return std::get_if<Date>(&value_); }

  friend bool operator==(const MetadataValue& a, const MetadataValue& b) noexcept {
    return a.value_ == b.value_;
  }

  std::size_t hash() const noexcept;

 private:
  template <typename T>
  explicit MetadataValue(T&& value) : value_(std::forward<T>(value)) {}

  std::variant<std::string, std::int64_t, double, Date> value_;
};

// The metadata of one file: at most one value per key, kept in key order. Files carry a dozen
// values or so, so a sorted vector beats a hash map in size and speed.
class MetadataMap {
 public:
  using Entry = std::pair<MetadataKey, MetadataValue>;

  const MetadataValue* find(MetadataKey key) const noexcept;
  void set(MetadataKey key, MetadataValue value);
  bool erase(MetadataKey key);

  bool empty() const noexcept { return entries_.empty(); }
  std::size_t size() const noexcept { return entries_.size(); }
  std::vector<Entry>::const_iterator begin() const noexcept { return entries_.begin(); }
  std::vector<Entry>::const_iterator end() const noexcept { return entries_.end(); }

  // The UTC offset, in seconds, of the local time at which the file says it was shot (EXIF
  // OffsetTimeOriginal, a video's local creation date): `date` is still the moment, and the
  // offset gives back the shot's own clock time for names. Nothing when the file doesn't say.
  std::optional<std::int32_t> shotOffset() const noexcept { return shotOffset_; }
  void setShotOffset(std::optional<std::int32_t> seconds) noexcept { shotOffset_ = seconds; }

  friend bool operator==(const MetadataMap&, const MetadataMap&) = default;

 private:
  std::vector<Entry> entries_;
  std::optional<std::int32_t> shotOffset_;
};

}  // namespace tessane

template <>
struct std::hash<tessane::MetadataValue> {
  std::size_t operator()(const tessane::MetadataValue& v) const noexcept { return v.hash(); }
};
