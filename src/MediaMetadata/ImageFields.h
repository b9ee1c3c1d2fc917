// The values of an image's EXIF, IPTC and frame that the image reader maps to metadata keys,
// found either by Exiv2's full parse or by the quick JPEG path (JpegSegments), then mapped by one
// function so that both paths give the same metadata.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <unicode/uversion.h>

#include "RenameEngine/FileKind.h"
#include "RenameEngine/MetadataValue.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane {

// One EXIF entry, in the forms the mapping uses.
struct ExifEntry {
  std::string text;                   // the value as text (ASCII up to its first NUL)
  std::optional<double> ratio;        // the first rational, when positive and finite
  std::optional<std::int64_t> first;  // the first element as a positive whole number
  std::optional<std::int64_t> second;
};

struct ImageFields {
  // IFD0
  std::optional<ExifEntry> make, model, artist, dateTime, cameraSerial, defaultCrop;
  // EXIF IFD
  std::optional<ExifEntry> exposure, fNumber, focal, isoRatings, isoSpeed, original, digitized,
      subSec, subSecOriginal, subSecDigitized, pixelX, pixelY, bodySerial, lensModel;
  // EXIF IFD: the UTC offsets of DateTime, DateTimeOriginal and DateTimeDigitized ("+03:00").
  std::optional<ExifEntry> offsetTime, offsetOriginal, offsetDigitized;
  // Maker note: the serial number, and the lens as Exiv2 names it (looked for only when the
  // EXIF lens model is missing).
  std::optional<ExifEntry> makerSerial;
  // Nikon's maker-note ISO speed ("0 200": the speed is the second number), which older bodies
  // (the D70s) write instead of EXIF's.
  std::optional<ExifEntry> makerIso;
  std::optional<std::string> makerLens;
  // The photo's size as Panasonic's maker note gives it (its RAW files carry no EXIF size).
  std::optional<ExifEntry> makerWidth, makerHeight;
  // Set by the quick paths, which don't read maker notes: the EXIF IFD has one, not read yet
  // (cleared once Exiv2 decoded it, or once it is known to hold nothing the mapping uses).
  bool makerNote = false;
  // IPTC (record 2): the first of each.
  std::optional<std::string> byline, city, subLocation, objectName, headline;
  // One of those texts is not ASCII and no character set is named for it: its reading is a guess.
  bool iptcUncertain = false;
  // The decoded image's size, 0 when unknown.
  std::int64_t imageWidth = 0;
  std::int64_t imageHeight = 0;
};

namespace ImageFieldsMapping {

// The serial number an entry holds, cleaned; nothing for an empty one or a placeholder of zeros
// ("0000000000", which some bodies write in EXIF's BodySerialNumber while IFD0 or the maker note
// holds the real number).
std::optional<std::string> serialNumber(const std::optional<ExifEntry>& entry);

// Whether an EXIF lens model text names a lens (not "n/a", "----", "Unknown (123)", a bare id).
bool isLensName(const std::string& text);

void toMetadata(const ImageFields& fields, FileKind kind, const icu::TimeZone& zone,
                MetadataMap& out);

}  // namespace ImageFieldsMapping
}  // namespace tessane
