// Numbering the files of a batch: the counter's settings, the text of a value, and the running
// counts of one rule, kept per reset group (the batch, a folder, or a day).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include <unicode/uversion.h>

#include "JsonCoding.h"
#include "RenameSubject.h"
#include "TextLocating.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane {

enum class CounterReset { never, perFolder, perDay };

std::string_view rawValue(CounterReset reset);
std::optional<CounterReset> counterResetFromRawValue(std::string_view text);

struct Counter {
  static constexpr int kMaxPadding = 20;

  // The defaults of a new counter, of a preset that leaves them out and of the settings
  // "counterStart" and "counterDigits": one value each, everywhere.
  std::int64_t start = 1;
  std::int64_t step = 1;
  std::int64_t padding = 4;  // minimum digits; above 20 counts as 20, zero or less is none
  CounterReset reset = CounterReset::never;
  InsertPosition position = InsertPosition::end();  // where a counter rule puts the number

  // The text of a value: its digits left-padded with "0" to the padding, then the sign
  // (-7 with padding 3 is "-007").
  static std::string text(std::int64_t value, std::int64_t padding);
  std::string text(std::int64_t value) const { return text(value, padding); }

  // The reset group of a subject: "" for never, the folder for perFolder, the capture day
  // ("2024-05-01") or "undated" for perDay, the day taken in `zone`.
  std::string groupKey(const RenameSubject& subject, const icu::TimeZone& zone) const;

  friend bool operator==(const Counter&, const Counter&) = default;
};

// The running counts of one rule over one batch. next() gives start + k × step for the k-th
// subject of its group (k from 0), or nullopt when that passes the 64-bit range; k advances
// either way.
class CounterState {
 public:
  CounterState(const Counter& counter, const icu::TimeZone& zone)
      : counter_(counter), zone_(zone) {}
  std::optional<std::int64_t> next(const RenameSubject& subject);

 private:
  const Counter& counter_;
  const icu::TimeZone& zone_;
  std::unordered_map<std::string, std::int64_t> counts_;
};

Json toJson(const Counter& counter);

}  // namespace tessane
