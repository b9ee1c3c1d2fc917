#include "Counter.h"

#include <unicode/timezone.h>

#include <algorithm>

#include "CaptureTime.h"
#include "JsonDecoders.h"
#include "StoredText.h"

namespace tessane {

namespace {
constexpr std::pair<CounterReset, std::string_view> kResets[] = {
    {CounterReset::never, "never"},
    {CounterReset::perFolder, "perFolder"},
    {CounterReset::perDay, "perDay"}};
}  // namespace

std::string_view rawValue(CounterReset reset) {
  return storedText(kResets, reset);
}

std::optional<CounterReset> counterResetFromRawValue(std::string_view text) {
  return fromStoredText(kResets, text);
}

std::string Counter::text(std::int64_t value, std::int64_t padding) {
  // The magnitude as unsigned, so that the smallest 64-bit value has one too.
  const std::uint64_t magnitude =
      value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
  std::string digits = std::to_string(magnitude);
  const auto width = static_cast<std::size_t>(std::clamp<std::int64_t>(padding, 0, kMaxPadding));
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  if (value < 0) digits.insert(0, 1, '-');
  return digits;
}

std::string Counter::groupKey(const RenameSubject& subject, const icu::TimeZone& zone) const {
  switch (reset) {
    case CounterReset::never:
      return {};
    case CounterReset::perFolder:
      return subject.folder.native();
    case CounterReset::perDay: {
      const std::optional<Date> when = CaptureTime::of(subject.captureDate, subject.metadata);
      if (!when) return "undated";
      // The day of the shot's own clock where the file says its offset, as {date} writes it.
      const std::optional<std::int32_t> offset = subject.metadata.shotOffset();
      const CalendarDay day = offset ? CaptureTime::dayOf(*when + std::chrono::seconds(*offset),
                                                          *icu::TimeZone::getGMT())
                                     : CaptureTime::dayOf(*when, zone);
      std::string key = text(day.year, 4);
      key.append(day.month < 10 ? "-0" : "-").append(std::to_string(day.month));
      key.append(day.day < 10 ? "-0" : "-").append(std::to_string(day.day));
      return key;
    }
  }
  return {};
}

std::optional<std::int64_t> CounterState::next(const RenameSubject& subject) {
  std::int64_t& k = counts_[counter_.groupKey(subject, zone_)];
  std::int64_t offset;
  std::int64_t value;
  const bool overflow = __builtin_mul_overflow(k, counter_.step, &offset) ||
                        __builtin_add_overflow(counter_.start, offset, &value);
  ++k;
  if (overflow) return std::nullopt;
  return value;
}

Json toJson(const Counter& counter) {
  return Json{{"start", counter.start},
              {"step", counter.step},
              {"padding", counter.padding},
              {"reset", std::string(rawValue(counter.reset))},
              {"position", toJson(counter.position)}};
}

namespace json {

Counter decodeCounter(const Json& value) {
  if (!value.is_object()) throw DecodeError("Expected an object for a counter.");
  Counter c;
  if (value.contains("start")) c.start = decodeInteger(value["start"], "start");
  if (value.contains("step")) c.step = decodeInteger(value["step"], "step");
  if (value.contains("padding")) c.padding = decodeInteger(value["padding"], "padding");
  if (value.contains("reset")) {
    const std::string reset = decodeString(value["reset"], "reset");
    const auto parsed = counterResetFromRawValue(reset);
    if (!parsed) throw DecodeError(unknownCase("counter reset", reset));
    c.reset = *parsed;
  }
  if (value.contains("position")) c.position = decodeInsertPosition(value["position"]);
  return c;
}

}  // namespace json
}  // namespace tessane
