#include "SafeRenameError.h"

#include <utility>

namespace tessane {

SafeRenameError SafeRenameError::sourceMissing(std::filesystem::path source) {
  SafeRenameError e;
  e.kind = Case::sourceMissing;
  e.url = std::move(source);
  return e;
}

SafeRenameError SafeRenameError::notSameFolder(FileMove m) {
  SafeRenameError e;
  e.kind = Case::notSameFolder;
  e.url = m.source;
  e.move = std::move(m);
  return e;
}

SafeRenameError SafeRenameError::duplicateDestination(std::filesystem::path destination) {
  SafeRenameError e;
  e.kind = Case::duplicateDestination;
  e.url = std::move(destination);
  return e;
}

SafeRenameError SafeRenameError::destinationExists(std::filesystem::path destination) {
  SafeRenameError e;
  e.kind = Case::destinationExists;
  e.url = std::move(destination);
  return e;
}

SafeRenameError SafeRenameError::failed(std::filesystem::path file, std::vector<FileMove> stranded,
                                        std::optional<IOError> cause) {
  SafeRenameError e;
  e.kind = Case::failed;
  e.url = std::move(file);
  e.stranded = std::move(stranded);
  e.cause = std::move(cause);
  return e;
}

}  // namespace tessane
