// What the name engine knows of one file: the shared input of templates, rules and the preview.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "MetadataValue.h"

namespace tessane {

struct RenameSubject {
  std::string name;                 // the file's current full name (base and extension)
  std::filesystem::path folder;     // the folder that holds the file
  std::optional<Date> captureDate;  // when it was shot, corrected for the camera body's clock
  std::optional<std::string> cameraModel;
  std::optional<std::string> bodyTag;       // the camera body's tag
  std::optional<std::string> originalName;  // the camera's name remembered in the file, if any
  MetadataMap metadata;
};

}  // namespace tessane
