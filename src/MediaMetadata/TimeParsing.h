// Strict parsing of the date texts that media files carry.
//
// Every parser takes the whole text (spaces around it are trimmed) and gives nothing when a field
// is out of range, the day is not in its month, or any text is left over: a malformed date is no
// date, never an approximated one. Thread-safe; no ICU formatter is built per call.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

#include <unicode/uversion.h>

#include "RenameEngine/MetadataValue.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane::TimeParsing {

using LocalTime = std::chrono::local_time<std::chrono::microseconds>;

// A point in time and, when the text named one that is not zero, its UTC offset in seconds.
struct ZonedDate {
  Date date;
  std::optional<std::int32_t> offsetSeconds;

  friend bool operator==(const ZonedDate&, const ZonedDate&) = default;
};

// The instant a wall-clock time in `zone` stands for. A time that a daylight-saving change skips
// is read with the offset before the change; a time it repeats is the later of the two.
Date fromLocal(LocalTime local, const icu::TimeZone& zone);

// EXIF "yyyy:MM:dd HH:mm:ss", a camera clock time without offset, read in `zone`.
std::optional<Date> exifDate(std::string_view text, const icu::TimeZone& zone);

// The digits of an EXIF sub-second text as a decimal fraction ("81" is 0.81 s), to the
// microsecond. Nothing unless the trimmed text is one or more digits.
std::optional<std::chrono::microseconds> subSeconds(std::string_view text);

// ISO 8601 as containers write it: "yyyy-MM-ddTHH:mm:ss", an optional fraction, then "Z",
// "+hhmm", "+hh:mm" or nothing (then the time is read in `zone`). An explicit offset other than
// zero is kept as the shot's own.
std::optional<ZonedDate> isoDate(std::string_view text, const icu::TimeZone& zone);

// A PDF date "D:YYYYMMDDHHmmSSOHH'mm'" (the prefix optional, fields after the year optional, the
// offset "Z", "+HH'mm'" or absent, then `zone`). A non-zero offset is kept.
std::optional<ZonedDate> pdfDate(std::string_view text, const icu::TimeZone& zone);

}  // namespace tessane::TimeParsing
