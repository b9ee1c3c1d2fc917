// One rename: a file and the name it must end with, in the same folder.
//
// Paths are bytes on Linux: a source is the path exactly as the folder listed it, so a name stored
// decomposed, or one that is not UTF-8, is moved by its own bytes.
#pragma once

#include <filesystem>

namespace tessane {

struct FileMove {
  std::filesystem::path source;       // where the file is now
  std::filesystem::path destination;  // where it must end; same folder as `source`

  friend bool operator==(const FileMove&, const FileMove&) = default;
};

}  // namespace tessane
