// Videos through libavformat: capture date, make, model, title, duration, and the first video
// track's width, height, frame rate and codec.
//
// The capture date is the QuickTime creation date ("com.apple.quicktime.creationdate"), else
// the container's creation time. Its offset, when it names one other than zero, is kept as the
// shot's own time zone; a zero or absent offset leaves the provider's. The codec is the first
// video track's: named from its four-character code by the table (avc1 "H264", hvc1 and hev1
// "HEVC", the ProRes family); H.264 and HEVC under any other code (an AVCHD clip's "HDMV"
// registration, a Matroska track's none) by the table's names too; else the code's four
// characters when it names the codec as QuickTime and AVI files do ("mp4v", "MJPG"), else FFmpeg's
// codec name ("mpeg2video").
//
// The header is read without the slow stream probe; the probe runs only when the header leaves
// the video track's size or codec unknown (MPEG transport streams, for one). FFmpeg lives in the
// module tessane-video, loaded by the first read; without it, videos give no values.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include <unicode/uversion.h>

#include "ContainerFacts.h"
#include "RenameEngine/MetadataValue.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane::VideoReader {

// The codec text for a four-character code, or nothing when the table doesn't list it.
std::optional<std::string_view> codecName(std::string_view fourcc) noexcept;

// The codec text of a video track as the container describes it; nothing when it says nothing.
std::optional<std::string> codecText(const VideoFacts& facts);

// Why videos can't be read, when the module that reads them can't be loaded; else empty.
std::string problem();

// Fills `out`; returns the shot's UTC offset in seconds when the capture date names one.
std::optional<std::int32_t> read(const std::filesystem::path& path, const icu::TimeZone& zone,
                                 MetadataMap& out);

}  // namespace tessane::VideoReader
