// Small media files that the tests make for themselves.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace tessane::testing {

// A JPEG of the given size that holds no picture data worth decoding: enough segments for a
// metadata reader (start, quantisation table, frame header with the size, scan, end).
std::string tinyJpeg(int width, int height);

// Writes EXIF, IPTC and XMP values ("Exif.Image.Make" -> "Canon", "Iptc.Application2.City" ->
// "Roma", "Xmp.photoshop.City" -> "Roma")
// into the image at `path` through Exiv2. Values are given as Exiv2 reads them from text, so
// rationals are "1/250" and numbers "400".
void writeMetadata(const std::filesystem::path& path,
                   const std::map<std::string, std::string>& values);

// A tiny QuickTime or MP4 file (by the extension of `path`) with one video track of the given
// four-character code, size and frame rate, two seconds long, and these container tags.
void writeMovie(const std::filesystem::path& path, const std::string& fourcc, int width, int height,
                int fps, const std::map<std::string, std::string>& tags);

// A tiny clip of one H.264 video track in the container the extension of `path` names (".MTS"
// for an MPEG transport stream).
void writeH264Clip(const std::filesystem::path& path);

// The folder of real sample files, or empty when the environment doesn't name one that exists.
std::filesystem::path samplesFolder();

}  // namespace tessane::testing
