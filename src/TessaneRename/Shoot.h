// The files a rename works on, gathered from the folders and files the user gave, with everything
// the name engine needs to know of them: their metadata (read on all cores, with progress, and
// stopped at once through a stop token), their camera bodies' tags and corrected capture times,
// their remembered original names, and what else their folders hold.
//
// Problems are values: a path that doesn't exist, a folder that can't be read or a read that was
// stopped end the gathering with a `ShootProblem`; a file whose name is not text is left out with
// a `ShootNotice` (its name still counts as taken), as is a reader that could not load.
//
// gatherShoot may be called from any thread; it touches no shared state but the metadata readers'
// own, which are safe to use side by side.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <vector>

#include "MediaMetadata/MetadataProvider.h"
#include "RenameEngine/CameraBodies.h"
#include "RenameEngine/RenamePreview.h"
#include "RenameIO/IOError.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane {

struct Shoot {
  std::vector<RenameSubject> subjects;       // in the order given, folders in listing order
  std::vector<std::filesystem::path> paths;  // each subject's path, its bytes as listed
  std::unordered_map<std::string, FolderContents> folders;  // by resolved folder path
};

struct ShootProblem {
  enum class Kind {
    pathMissing,       // `path` doesn't exist
    notRenamable,      // `path` is neither a regular file nor a folder
    folderUnreadable,  // `path` is a folder that could not be listed (`code`: errno)
    stopped,           // the stop token was triggered while reading
  };
  Kind kind = Kind::pathMissing;
  std::filesystem::path path;
  int code = 0;
};

struct ShootNotice {
  enum class Kind {
    nameNotText,        // `path`'s name is not UTF-8: left out of the batch
    readerUnavailable,  // `text` says which files can't be read and why
  };
  Kind kind = Kind::nameNotText;
  std::filesystem::path path;
  std::string text;
};

struct ShootRequest {
  std::vector<std::filesystem::path> paths;  // folders (one level deep) or single files
  bool readMetadata = true;
  const icu::TimeZone* zone = nullptr;  // camera clock times without an offset; null: the system's
  const CameraBodies* bodies = nullptr;
  // When given, only each twin group's primary is read: its twins take its metadata, since only
  // the primary's values build names, and so sort beside it. Saves reading the JPEG, sidecar and
  // video of every RAW.
  const TwinOptions* twins = nullptr;
  MetadataScope scope;            // what is read beyond each file's own contents
  bool readOriginalNames = true;  // the camera names remembered in the files
  std::function<void(std::size_t done, std::size_t total)> progress;  // from reading threads
  std::stop_token stop;
};

struct GatheredShoot {
  std::optional<Shoot> shoot;           // absent when `problem` is set
  std::optional<ShootProblem> problem;  // what ended the gathering
  std::vector<ShootNotice> notices;     // files left out, readers that could not load
};

// Each subject's folder is its resolved folder (FolderListing::resolvedFolder), so one folder
// spelt two ways is one folder, and a file given twice counts once.
GatheredShoot gatherShoot(const ShootRequest& request);

// Reads the metadata, body tags, corrected capture times and original names of subjects already
// listed (their `name` and `folder` set, `paths` beside them). False when it was stopped.
bool readShootMetadata(Shoot& shoot, const ShootRequest& request,
                       std::vector<ShootNotice>& notices);

}  // namespace tessane
