// A file's own dates from the file system: `created` (the birth time, where the file system
// keeps one) and `modified` (the content modification time).
#pragma once

#include <filesystem>

#include "RenameEngine/MetadataValue.h"

namespace tessane::FileDates {

// Adds `created` and `modified` for the file at `path` when the file system gives them. A file
// that is gone, or a call the system refuses, adds nothing. Symbolic links are followed.
void read(const std::filesystem::path& path, MetadataMap& out);

}  // namespace tessane::FileDates
