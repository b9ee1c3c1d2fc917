// Linux implementation over open/fdopendir/readdir. The entry type comes from readdir's d_type
// where the file system fills it in, so listing a folder of photos costs no stat per file; only
// file systems that answer DT_UNKNOWN pay an fstatat (without following links) per entry.
#include "FolderListing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "RenameEngine/NaturalOrder.h"
#include "RenameEngine/Unicode.h"

namespace tessane {
namespace {

struct DirCloser {
  void operator()(DIR* d) const { closedir(d); }
};
using DirHandle = std::unique_ptr<DIR, DirCloser>;

Result<DirHandle> openFolder(const std::filesystem::path& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return IOError::fromErrno(errno, IOError::Operation::openFolder, folder);
  DIR* dir = ::fdopendir(fd);
  if (dir == nullptr) {
    const int error = errno;
    ::close(fd);
    return IOError::fromErrno(error, IOError::Operation::openFolder, folder);
  }
  return DirHandle(dir);
}

bool isDotOrDotDot(const char* name) {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// Calls visit(entry) for every entry but "." and "..". Returns an error when reading stops early.
template <typename Visit>
Result<bool> forEachEntry(DIR* dir, const std::filesystem::path& folder, Visit visit) {
  while (true) {
    errno = 0;
    const dirent* entry = ::readdir(dir);
    if (entry == nullptr) {
      if (errno != 0) return IOError::fromErrno(errno, IOError::Operation::readFolder, folder);
      return true;
    }
    if (isDotOrDotDot(entry->d_name)) continue;
    visit(*entry);
  }
}

bool isRegularFile(DIR* dir, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_REG;
  struct stat st;
  if (::fstatat(::dirfd(dir), entry.d_name, &st, AT_SYMLINK_NOFOLLOW) != 0) return false;
  return S_ISREG(st.st_mode);
}

}  // namespace

std::string ListedFile::displayName() const {
  return unicode::toDisplayable(name);
}

namespace FolderListing {

Result<std::vector<ListedFile>> files(const std::filesystem::path& folder) {
  Result<DirHandle> dir = openFolder(folder);
  if (!dir) return dir.error();

  struct Keyed {
    std::string key;
    ListedFile file;
  };
  std::vector<Keyed> kept;
  Result<bool> read = forEachEntry(dir.value().get(), folder, [&](const dirent& entry) {
    if (entry.d_name[0] == '.') return;  // hidden
    if (!isRegularFile(dir.value().get(), entry)) return;
    std::string name(entry.d_name);
    const bool isText = unicode::isValidUtf8(name);
    kept.push_back(Keyed{unicode::naturalSortKey(name), ListedFile{folder / name, name, isText}});
  });
  if (!read) return read.error();

  std::sort(kept.begin(), kept.end(), [](const Keyed& a, const Keyed& b) { return a.key < b.key; });
  std::vector<ListedFile> out;
  out.reserve(kept.size());
  for (Keyed& k : kept)
    out.push_back(std::move(k.file));
  return out;
}

Result<std::vector<std::string>> names(const std::filesystem::path& folder) {
  Result<DirHandle> dir = openFolder(folder);
  if (!dir) return dir.error();
  std::vector<std::string> out;
  Result<bool> read = forEachEntry(dir.value().get(), folder,
                                   [&](const dirent& entry) { out.emplace_back(entry.d_name); });
  if (!read) return read.error();
  return out;
}

std::filesystem::path resolvedFolder(const std::filesystem::path& folder) {
  const std::filesystem::path given = folder.empty() ? std::filesystem::path(".") : folder;
  std::error_code error;
  std::filesystem::path resolved = std::filesystem::canonical(given, error);
  if (error) {
    resolved = std::filesystem::absolute(given, error).lexically_normal();
    if (error) resolved = given.lexically_normal();
  }
  // Tidying keeps a trailing "/" as an empty last component ("/a/b/" stays so): drop it.
  if (!resolved.has_filename() && resolved.has_relative_path()) resolved = resolved.parent_path();
  return resolved;
}

}  // namespace FolderListing
}  // namespace tessane
