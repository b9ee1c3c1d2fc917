// A file for the engine's tests: its name, folder and (when it has one) corrected capture time.
#pragma once

#include <optional>
#include <string>

#include "RenameEngine/RenameSubject.h"

namespace tessane::testing {

inline RenameSubject subject(std::string name, std::string folder = "/card",
                             std::optional<Date> when = std::nullopt) {
  RenameSubject s;
  s.name = std::move(name);
  s.folder = std::move(folder);
  s.captureDate = when;
  return s;
}

}  // namespace tessane::testing
