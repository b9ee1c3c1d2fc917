// Images and RAW files through Exiv2: camera, lens, exposure, capture time, pixel size and the
// IPTC descriptive fields.
//
// What is read, and from where:
//   make, model        IFD0 Make, Model
//   serial             EXIF BodySerialNumber, else IFD0 CameraSerialNumber, else the maker
//                      note's (Canon, Nikon's SerialNumber then SerialNO without its "NO="
//                      label, Fujifilm, Olympus's three, Pentax, Panasonic, Sigma; the first
//                      that is not empty; of a number list the first, as a CRW file's)
//   lens               EXIF LensModel, else the maker note's lens as Exiv2 names it
//   iso                EXIF ISOSpeedRatings (first value), else ISOSpeed
//   shutter, aperture, focal   EXIF ExposureTime, FNumber, FocalLength
//   author             IFD0 Artist, else IPTC By-line
//   city, location, title, headline   IPTC City, Sub-location, Object Name, Headline
// The IPTC texts are read in the character set record 1:90 names; when none is named and a text
// is not ASCII, the image's own XMP (dc:creator, photoshop:City, Iptc4xmpCore:Location,
// dc:title, photoshop:Headline) takes the place of each one it has (IptcFields).
//   width, height      the photo's size (see below)
//   date               DateTimeOriginal + SubSecTimeOriginal, else DateTimeDigitized +
//                      SubSecTimeDigitized, else DateTime + SubSecTime: the first the file
//                      gives (blanks, EXIF's "unknown", give nothing) decides, and when it
//                      doesn't parse there is no date
// Pixel size: the decoded image's size for ordinary images. For RAW files Exiv2's own size is
// often the sensor's or a preview's, so the size a photographer would call the photo's comes first:
// a DNG's default crop, else the EXIF pixel dimensions, else the size in Panasonic's maker note,
// else Exiv2's size.
//
// JPEG files go through a quick path (JpegSegments) that gives the same values without Exiv2's full
// parse, and falls back to it whenever it can't be sure to.
//
// Exiv2 throws on damaged files; nothing leaves this reader, and what was read before the
// exception is kept. When Exiv2 finds no EXIF in an ISO base media file (a damaged CR3 or HEIC),
// the EXIF found through the boxes (BmffExif) is decoded instead.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include <unicode/uversion.h>

#include "RenameEngine/FileKind.h"
#include "RenameEngine/MetadataValue.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane::ImageReader {

// Which way a file was read: one of the quick paths (with or without Exiv2's EXIF parser on the
// maker note or the EXIF block), Exiv2's whole parse, or not at all (no regular file).
enum class Path {
  none,
  quickJpeg,         // segments and EXIF read here alone
  jpegMakerNote,     // the same, and the maker note alone through Exiv2's EXIF parser
  jpegExifParser,    // the EXIF block through Exiv2's EXIF parser
  quickTiffRaw,      // a TIFF-based RAW file's IFD0 and EXIF IFD read here alone
  tiffRawMakerNote,  // the same, and the maker note alone through Exiv2's EXIF parser
  quickBmff,         // HEIF, CR3: the EXIF found through the boxes, read here
  wholeParse,        // Exiv2's whole parse of the file
};

Path read(const std::filesystem::path& path, FileKind kind, const icu::TimeZone& zone,
          MetadataMap& out);

// The same from bytes in memory (used by tests and the fuzzing target). `quickPath` false reads
// through Exiv2 alone, which is what the quick path must agree with.
Path readBytes(std::span<const std::uint8_t> bytes, FileKind kind, const icu::TimeZone& zone,
               MetadataMap& out, bool quickPath = true);

}  // namespace tessane::ImageReader
