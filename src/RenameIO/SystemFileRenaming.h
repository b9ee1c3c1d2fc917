// The seam between the renamer and the file system, so that the renamer's logic runs against a
// fake one in tests. Everything the renamer, the crash journal and their recovery ask of the disk
// goes through here.
//
// Threads: LinuxFileRenaming holds no state and may be used from several threads at once; the
// tests' in-memory fake may not. Every call reports failure as a value and never throws.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "RenameIO/IOError.h"

namespace tessane {

// Which file a name leads to, independent of its name: device and inode.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

// One entry of a folder as a listing gives it; the identity where the listing can tell it.
struct FolderEntry {
  std::string name;
  std::optional<FileIdentity> identity;
};

class SystemFileRenaming {
 public:
  virtual ~SystemFileRenaming() = default;

  // Renames one entry. Fails, and changes nothing, when anything already exists at `to`: never
  // overwrites. Nothing on success.
  virtual std::optional<IOError> moveItem(const std::filesystem::path& from,
                                          const std::filesystem::path& to) = 0;

  // Whether anything exists at `at`; a final symbolic link is not followed, so a link whose target
  // is gone still occupies its name.
  virtual bool fileExists(const std::filesystem::path& at) = 0;

  // The identity of the entry at `at` (not following a final symbolic link), or nothing.
  virtual std::optional<FileIdentity> identity(const std::filesystem::path& at) = 0;

  // Every entry of `folder`, hidden ones included, in one call: what fileExists and identity
  // answer name by name, for a whole batch at once. An entry's identity is left out where the
  // listing can't vouch for it being the one `identity` gives. Nothing when the folder can't be
  // listed; callers then ask name by name.
  virtual std::optional<std::vector<FolderEntry>> list(const std::filesystem::path& folder) = 0;
};

}  // namespace tessane
