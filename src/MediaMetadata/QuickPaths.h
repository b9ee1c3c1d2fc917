// The quick paths of the image reader: a file read from its head, by what its bytes are, not by
// its name (a JPEG under a RAW file's name takes the JPEG path), without Exiv2's whole parse.
//   JPEG               the segments (JpegSegments), the maker note alone through Exiv2's EXIF
//                      parser when it could add the lens, the serial number or, for a RAW name,
//                      the size; the EXIF block through that parser when read here is not sure
//   TIFF-based RAW     IFD0 and the EXIF IFD, when the photo's size is in EXIF (not DNG files,
//                      whose size is the raw image's default crop), the maker note as for a JPEG
//   ISO base media     HEIF and CR3: the EXIF found through the boxes (BmffExif)
// Each gives exactly what Exiv2's whole parse gives, or nothing so that the caller takes it.
// Per-thread buffers are reused from file to file; safe on any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "ImageReader.h"

namespace tessane::QuickPaths {

// A regular file open as `fd`, at `path`.
std::optional<ImageReader::Path> readFile(int fd, const std::filesystem::path& path, FileKind kind,
                                          const icu::TimeZone& zone, MetadataMap& out);

// The same from bytes in memory.
std::optional<ImageReader::Path> readBytes(std::span<const std::uint8_t> bytes, FileKind kind,
                                           const icu::TimeZone& zone, MetadataMap& out);

}  // namespace tessane::QuickPaths
