#include "RenameAccess.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>

namespace tessane::RenameAccess {

int ofFolder(const std::filesystem::path& folder) {
  struct statvfs volume;
  if (::statvfs(folder.c_str(), &volume) == 0 && (volume.f_flag & ST_RDONLY) != 0) return EROFS;
  // The effective ids, as the rename itself will be judged.
  if (::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    if (errno == EACCES || errno == EROFS || errno == EPERM) return errno;
  }
  return 0;
}

std::unordered_map<std::string, int> ofFiles(const std::filesystem::path& folder,
                                             std::span<const std::string> names) {
  std::unordered_map<std::string, int> refused;
  const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir < 0) return refused;
  struct stat self;
  const bool sticky = ::fstat(dir, &self) == 0 && (self.st_mode & S_ISVTX) != 0;
  const uid_t user = ::geteuid();
  for (const std::string& name : names) {
    struct statx st;
    if (::statx(dir, name.c_str(), AT_SYMLINK_NOFOLLOW | AT_STATX_DONT_SYNC, STATX_UID, &st) != 0)
      continue;
    constexpr std::uint64_t locked = STATX_ATTR_IMMUTABLE | STATX_ATTR_APPEND;
    const bool isLocked = (st.stx_attributes_mask & st.stx_attributes & locked) != 0;
    const bool othersInSticky = sticky && user != 0 && st.stx_uid != user && self.st_uid != user;
    if (isLocked || othersInSticky) refused.emplace(name, EPERM);
  }
  ::close(dir);
  return refused;
}

void describe(const std::filesystem::path& folder, FolderContents& contents) {
  contents.refusal = ofFolder(folder);
  if (contents.refusal == 0) contents.refusedFiles = ofFiles(folder, contents.files);
}

}  // namespace tessane::RenameAccess
