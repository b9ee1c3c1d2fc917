// When a file was shot, and the calendar day that makes in a given time zone.
#pragma once

#include <compare>
#include <optional>

#include <unicode/uversion.h>

#include "MetadataValue.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane {

struct CalendarDay {
  int year = 0;
  unsigned month = 0;  // 1 to 12
  unsigned day = 0;    // 1 to 31

  friend bool operator==(const CalendarDay&, const CalendarDay&) = default;
  friend auto operator<=>(const CalendarDay&, const CalendarDay&) = default;
};

namespace CaptureTime {

// A file's capture time: its own `captureDate` when it has one (already corrected for the camera
// body's clock), else the metadata `date` when that is a date value, else none.
std::optional<Date> of(const std::optional<Date>& captureDate, const MetadataMap& metadata);

// The calendar day of `date` in `zone` (Gregorian calendar), daylight saving time included.
CalendarDay dayOf(Date date, const icu::TimeZone& zone);

}  // namespace CaptureTime
}  // namespace tessane
