// The demo shoot's pictures and video, made in the module tessane-demo so that only `tessane demo`
// loads Qt's painting and FFmpeg's writers. Each entry point returns an empty text on success and
// the reason otherwise; none throws.
#pragma once

#include <string>

extern "C" {
// A 480 × 320 JPEG at `path`: a sky, a lawn and a few coloured shapes that `seed` varies.
using TessaneDemoPicture = std::string (*)(const char* path, int seed) noexcept;
// A two-second MP4 at `path` with one 640 × 360 MPEG-4 video track at 25 frames a second, its
// creation time (ISO 8601, UTC), make and model.
using TessaneDemoMovie = std::string (*)(const char* path, const char* creationTime,
                                         const char* make, const char* model) noexcept;
}

namespace tessane::cli {

inline constexpr int kDemoPictureWidth = 480;
inline constexpr int kDemoPictureHeight = 320;

}  // namespace tessane::cli
