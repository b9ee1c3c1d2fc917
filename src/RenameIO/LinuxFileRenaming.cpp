#include "LinuxFileRenaming.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "RenameIO/FileSystemKind.h"

namespace tessane {

std::optional<IOError> LinuxFileRenaming::moveItem(const std::filesystem::path& from,
                                                   const std::filesystem::path& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
    return std::nullopt;
  }
  const int code = errno;
  if (code != EINVAL && code != ENOSYS)
    return IOError::fromErrno(code, IOError::Operation::rename, from);
  return moveByReservation(from, to);
}

std::optional<IOError> LinuxFileRenaming::moveByReservation(const std::filesystem::path& from,
                                                            const std::filesystem::path& to) {
  // The source must be there before a reservation is made, or a missing source would leave an
  // empty file behind under the new name for the short while until it is removed.
  struct stat source {};
  if (::lstat(from.c_str(), &source) != 0)
    return IOError::fromErrno(errno, IOError::Operation::rename, from);

  const int fd = ::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (fd < 0) return IOError::fromErrno(errno, IOError::Operation::rename, from);
  struct stat reserved {};
  const bool known = ::fstat(fd, &reserved) == 0;
  ::close(fd);

  if (::rename(from.c_str(), to.c_str()) == 0) return std::nullopt;
  const int code = errno;
  struct stat now {};
  if (known && ::lstat(to.c_str(), &now) == 0 && now.st_dev == reserved.st_dev &&
      now.st_ino == reserved.st_ino && now.st_size == 0 && S_ISREG(now.st_mode)) {
    ::unlink(to.c_str());
  }
  return IOError::fromErrno(code, IOError::Operation::rename, from);
}

Presence LinuxFileRenaming::fileExists(const std::filesystem::path& at) {
  struct stat st {};
  return ::lstat(at.c_str(), &st) == 0 ? Presence::present() : Presence::ofErrno(errno);
}

IdentityLookup LinuxFileRenaming::identity(const std::filesystem::path& at) {
  struct stat st {};
  if (::lstat(at.c_str(), &st) != 0) return IdentityLookup::without(Presence::ofErrno(errno));
  return IdentityLookup::of(FileIdentity{st.st_dev, st.st_ino});
}

std::optional<std::vector<FolderEntry>> LinuxFileRenaming::list(
    const std::filesystem::path& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return std::nullopt;
  struct stat st {};
  const bool realInodes = ::fstat(fd, &st) == 0 && FileSystemKind::ofDescriptor(fd).listsRealInodes;
  DIR* dir = ::fdopendir(fd);
  if (dir == nullptr) {
    ::close(fd);
    return std::nullopt;
  }
  std::vector<FolderEntry> entries;
  errno = 0;
  while (const dirent* e = ::readdir(dir)) {
    const std::string_view name(e->d_name);
    if (name == "." || name == "..") continue;
    FolderEntry entry{std::string(name), std::nullopt};
    if (realInodes) entry.identity = FileIdentity{st.st_dev, e->d_ino};
    entries.push_back(std::move(entry));
  }
  const bool complete = errno == 0;
  ::closedir(dir);
  if (!complete) return std::nullopt;
  return entries;
}

}  // namespace tessane
