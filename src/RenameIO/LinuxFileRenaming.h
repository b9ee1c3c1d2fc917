// The real file system behind SystemFileRenaming.
//
// moveItem is renameat2 with RENAME_NOREPLACE: the kernel refuses atomically when the destination
// exists. Some file systems (exFAT, FUSE, some network shares) refuse the flag with EINVAL; there
// the destination is first reserved with open(O_CREAT | O_EXCL), which fails when the name is
// taken, and the file is renamed onto its own reservation. A plain rename onto a name that was not
// reserved is never made. If that rename fails, the reservation is removed again, but only while
// it is still the empty file this call created.
//
// fileExists and identity use lstat; ENOENT and ENOTDIR are "absent", any other error "unknown".
// list reads the folder once; its entries carry the inode numbers of the listing only where
// FileSystemKind says those are lstat's. Stateless and thread-safe.
#pragma once

#include "RenameIO/SystemFileRenaming.h"

namespace tessane {

class LinuxFileRenaming final : public SystemFileRenaming {
 public:
  std::optional<IOError> moveItem(const std::filesystem::path& from,
                                  const std::filesystem::path& to) override;
  Presence fileExists(const std::filesystem::path& at) override;
  IdentityLookup identity(const std::filesystem::path& at) override;
  std::optional<std::vector<FolderEntry>> list(const std::filesystem::path& folder) override;

  // The reserve-then-rename path alone, as used where the flag is refused; public for tests.
  static std::optional<IOError> moveByReservation(const std::filesystem::path& from,
                                                  const std::filesystem::path& to);
};

}  // namespace tessane
