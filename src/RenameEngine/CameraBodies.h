// Camera bodies: the tag each camera puts into names ({body}) and the clock offset that corrects
// its capture times, by body key (the serial number, else the model). Keys compare trimmed and
// lower-cased. The files themselves are never changed: only the values used for names are.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "JsonCoding.h"
#include "MetadataValue.h"

namespace tessane {

struct CameraBodies {
  std::map<std::string, std::string> tags;     // body key -> tag
  std::map<std::string, double> clockOffsets;  // body key -> seconds to add to capture times

  // The key a body is known by: the serial, trimmed, when not empty; else the model; else none.
  static std::optional<std::string> bodyKey(const MetadataMap& metadata);
  // The form keys are compared in: trimmed, lower-cased.
  static std::string normalizedKey(std::string_view key);
  // A key or a tag as it is stored and used: without Unicode white space at either end.
  static std::string trimmed(std::string_view text);
  // Whether a tag, trimmed, can go into names: no "/", ":" or control character (an empty tag
  // is no tag, and usable).
  static bool isUsableTag(std::string_view tag);
  // Whether two files come from one body: both have a key, and the keys name the same body.
  static bool sameBody(const MetadataMap& a, const MetadataMap& b);

  // The tag for a file's body, trimmed: by its serial, else by its model. A tag that is only
  // white space counts as none.
  std::optional<std::string> tag(const MetadataMap& metadata) const;
  // The serial's offset when the serial has a tag or an offset of its own; else the model's.
  double clockOffset(const MetadataMap& metadata) const;
  // The capture time plus the body's clock offset.
  std::optional<Date> correctedCaptureTime(const MetadataMap& metadata) const;
  // The normalised keys of the bodies without a tag, once each, in the order first met.
  std::vector<std::string> bodiesWithoutTag(const std::vector<MetadataMap>& files) const;
  // `imported` merged in; for the same key the imported value wins.
  CameraBodies merged(const CameraBodies& imported) const;

  friend bool operator==(const CameraBodies&, const CameraBodies&) = default;
};

// "+0:02:00" for 120 seconds behind, "0:00:00" for none, "-1:00:00" for an hour ahead.
std::string formatClockOffset(double seconds);
// The reverse; nullopt for text that is not an offset (a lone sign, 60 minutes, letters).
std::optional<double> parseClockOffset(std::string_view text);

// Lining up two clocks from two photos of the same instant.
struct ClockSyncResult {
  std::string bodyKey;
  double offset = 0;  // seconds stored for the wrong camera (0: the entry was removed)
  std::string line;   // "A7R5 clock: +0:02:00", or "A7R5 was already in time"
  static constexpr std::string_view kNote =
      "The difference goes in Settings › Camera Bodies, where you can change it. The files aren’t "
      "changed.";
};
// `right` is the photo of the camera with the right time; both times as recorded. Returns the
// updated tables and the result, or nullopt when the wrong camera has no body key, either photo
// has no capture time, or both come from one body (whose offset would only grow on every run).
std::optional<std::pair<CameraBodies, ClockSyncResult>> syncClocks(const CameraBodies& bodies,
                                                                   const MetadataMap& right,
                                                                   const MetadataMap& wrong);

Json toJson(const CameraBodies& bodies);
Decoded<CameraBodies> decodeCameraBodies(const Json& value);

}  // namespace tessane
