#include "CaptureTime.h"

#include <unicode/timezone.h>

namespace tessane::CaptureTime {

std::optional<Date> of(const std::optional<Date>& captureDate, const MetadataMap& metadata) {
  if (captureDate) return captureDate;
  if (const MetadataValue* v = metadata.find(MetadataKey::date)) {
    if (const Date* d = v->asDate()) return *d;
  }
  return std::nullopt;
}

CalendarDay dayOf(Date date, const icu::TimeZone& zone) {
  using namespace std::chrono;
  // The zone's offset at that instant, then plain civil arithmetic: no calendar object per call.
  const double millis = static_cast<double>(floor<milliseconds>(date).time_since_epoch().count());
  int32_t rawOffset = 0;
  int32_t dstOffset = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(millis, false, rawOffset, dstOffset, status);
  if (U_FAILURE(status)) rawOffset = dstOffset = 0;
  const auto local = date + milliseconds(static_cast<int64_t>(rawOffset) + dstOffset);
  const year_month_day ymd{floor<days>(local)};
  return CalendarDay{static_cast<int>(ymd.year()), static_cast<unsigned>(ymd.month()),
                     static_cast<unsigned>(ymd.day())};
}

}  // namespace tessane::CaptureTime
