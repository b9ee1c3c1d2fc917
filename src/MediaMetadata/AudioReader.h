// Audio files through TagLib: artist, album, title, track number, year and duration.
//
// TagLib picks its parser by the extension; a file whose contents are something else gives
// whatever TagLib can still read from it, or nothing.
#pragma once

#include <filesystem>

#include "RenameEngine/MetadataValue.h"

namespace tessane::AudioReader {

void read(const std::filesystem::path& path, MetadataMap& out);

}  // namespace tessane::AudioReader
