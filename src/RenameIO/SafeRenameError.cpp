#include "SafeRenameError.h"

#include <utility>

#include "RenameEngine/Unicode.h"

namespace tessane {
namespace {

std::string nameOf(const std::filesystem::path& p) {
  return unicode::toDisplayable(p.filename().native());
}

}  // namespace

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

std::string SafeRenameError::message() const {
  std::string out;
  switch (kind) {
    case Case::sourceMissing:
      out.append("“").append(nameOf(url)).append("” is no longer in the folder.");
      break;
    case Case::notSameFolder:
      out.append("Couldn’t rename “").append(nameOf(move.source)).append("”.");
      break;
    case Case::duplicateDestination:
      out.append("Two files would be called “").append(nameOf(url)).append("”.");
      break;
    case Case::destinationExists:
      out.append("There’s already a file called “")
          .append(nameOf(url))
          .append("” in the folder. Rename or move it and try again.");
      break;
    case Case::failed:
      if (stranded.empty()) {
        out.append("Couldn’t rename “")
            .append(nameOf(url))
            .append("”. It may be in use by another app: close it and try again.");
      }
      break;
  }
  return out;
}

}  // namespace tessane
