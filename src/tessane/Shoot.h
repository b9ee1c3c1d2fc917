// The files a command works on, gathered from the paths it was given, with everything the
// name engine needs to know of them: their metadata (read on all cores, with progress on a
// terminal, stopped cleanly by Ctrl-C), their camera bodies' tags and corrected capture times,
// their remembered original names, and what else their folders hold.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "MediaMetadata/MetadataProvider.h"
#include "RenameEngine/CameraBodies.h"
#include "RenameEngine/RenamePreview.h"
#include "Tool.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane::cli {

struct Shoot {
  std::vector<RenameSubject> subjects;       // in the order given, folders in listing order
  std::vector<std::filesystem::path> paths;  // each subject's path, its bytes as listed
  std::unordered_map<std::string, FolderContents> folders;  // by resolved folder path
};

struct ShootRequest {
  std::vector<std::string> paths;  // folders (one level deep) or single files
  bool readMetadata = true;
  const icu::TimeZone* zone = nullptr;  // camera clock times without an offset; null: the system's
  const CameraBodies* bodies = nullptr;
  // When given, only each twin group's primary is read: its twins take its metadata, since only
  // the primary's values build names, and so sort beside it. Saves reading the JPEG, sidecar and
  // video of every RAW.
  const TwinOptions* twins = nullptr;
  MetadataScope scope;            // what is read beyond each file's own contents
  bool readOriginalNames = true;  // the camera names remembered in the files
};

// Each subject's folder is its resolved folder (FolderListing::resolvedFolder), so one folder
// spelt two ways is one folder, and a file given twice counts once.
// The shoot, or nullopt after the problem was reported (a path that doesn't exist, a folder that
// can't be read, a read stopped by Ctrl-C). Files whose names are not text are left out, with a
// warning; their names still count as taken.
std::optional<Shoot> gatherShoot(const ShootRequest& request, const Tool& tool);

}  // namespace tessane::cli
