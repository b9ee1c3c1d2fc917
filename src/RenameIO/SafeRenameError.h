// Why a batch was refused before anything moved, or failed halfway.
//
// The first four cases come from the checks and mean nothing changed on disk. `failed` means a
// move failed after the checks passed; everything was put back except the files in `stranded`,
// each given as a move from where the file now is to where it was before the batch. The checks
// give `failed` too, with nothing stranded and a `find` error as the cause, when the disk couldn't
// tell whether a name is there: nothing moved then either.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "RenameIO/FileMove.h"
#include "RenameIO/IOError.h"

namespace tessane {

struct SafeRenameError {
  enum class Case { sourceMissing, notSameFolder, duplicateDestination, destinationExists, failed };

  Case kind = Case::failed;
  // sourceMissing: the source; duplicateDestination, destinationExists: the destination;
  // failed: the source of the file whose move failed; notSameFolder: the move's source.
  std::filesystem::path url;
  FileMove move;                   // notSameFolder: the offending move
  std::vector<FileMove> stranded;  // failed: files not put back, ascending batch order
  std::optional<IOError> cause;    // failed: what the system answered (always given)

  static SafeRenameError sourceMissing(std::filesystem::path source);
  static SafeRenameError notSameFolder(FileMove move);
  static SafeRenameError duplicateDestination(std::filesystem::path destination);
  static SafeRenameError destinationExists(std::filesystem::path destination);
  static SafeRenameError failed(std::filesystem::path file, std::vector<FileMove> stranded,
                                std::optional<IOError> cause);
};

}  // namespace tessane
