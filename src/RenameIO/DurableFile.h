// Writing a small file of our own so that a crash or a power cut leaves either the old contents or
// the new, never a mix: the data goes to a hidden temporary file in the same folder, is flushed to
// the disk, renamed over the file, and then the folder itself is flushed so that the rename is
// kept. Missing folders are created. On failure the previous file is left as it was and the
// temporary file is removed.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "RenameIO/IOError.h"

namespace tessane::DurableFile {

std::optional<IOError> write(const std::filesystem::path& file, std::string_view data);

// Flushes a folder's entries (after a rename or an unlink in it).
std::optional<IOError> syncFolder(const std::filesystem::path& folder);

// Writes the whole of `data` to `fd`, going on after partial writes and interruptions.
bool writeAll(int fd, std::string_view data);

}  // namespace tessane::DurableFile
