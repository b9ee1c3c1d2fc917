// A small picture of a file for the list, the grid and the file panel. RAW and JPEG files (and
// the other formats Exiv2 reads) give their embedded preview, the smallest one that is still big
// enough, turned as the file's orientation says; other images, and images without a preview, are
// decoded by Qt's image reader at a reduced size. Videos, audio, PDF and unknown files give a
// null image (the views show the kind's icon). Never throws; safe on any thread.
#pragma once

#include <QImage>

#include <filesystem>

namespace tessane::ThumbnailLoader {

// The picture scaled to fit a square of `maxSide` pixels; null when the file has none.
QImage load(const std::filesystem::path& file, int maxSide);

}  // namespace tessane::ThumbnailLoader
