#include "OriginalName.h"

#include <sys/xattr.h>

#include "RenameEngine/FileName.h"
#include "RenameEngine/NameCheck.h"
#include "RenameEngine/Parallel.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/FileSystemKind.h"

namespace tessane::OriginalName {

std::optional<std::string> read(const std::filesystem::path& file) {
  const ssize_t size = ::lgetxattr(file.c_str(), kAttribute, nullptr, 0);
  if (size <= 0) return std::nullopt;
  std::string value(static_cast<std::size_t>(size), '\0');
  const ssize_t got = ::lgetxattr(file.c_str(), kAttribute, value.data(), value.size());
  if (got != size) return std::nullopt;
  if (!unicode::isValidUtf8(value)) return std::nullopt;
  // The value is text anyone can write: only a plain name that could be given as a new name is a
  // name to go back to. A "/" would move the file out of its folder ("x/../y.jpg" through a link),
  // a leading dot would hide it, a line break or NUL would go into its name.
  const FileName name = FileName::parse(value);
  if (!NameCheck::problems(name.base, name.ext).empty()) return std::nullopt;
  return value;
}

void remember(const std::filesystem::path& file, std::string_view name) {
  if (name.empty()) return;
  // XATTR_CREATE: the kernel refuses when the file already has the attribute (whatever its value),
  // which is the whole check, made atomically. Any refusal is deliberately ignored.
  (void)::lsetxattr(file.c_str(), kAttribute, name.data(), name.size(), XATTR_CREATE);
}

void rememberAll(std::span<const FileMove> moves, bool nativeVolumesOnly) {
  parallelFor(moves.size(), 1000, [&](std::size_t begin, std::size_t end) {
    std::filesystem::path askedFolder;
    bool folderKeeps = !nativeVolumesOnly;
    for (std::size_t i = begin; i < end; ++i) {
      const FileMove& m = moves[i];
      if (nativeVolumesOnly && (i == begin || m.destination.parent_path() != askedFolder)) {
        askedFolder = m.destination.parent_path();
        folderKeeps = keepsAttributesNatively(askedFolder);
      }
      if (folderKeeps) remember(m.destination, m.source.filename().native());
    }
  });
}

bool keepsAttributesNatively(const std::filesystem::path& file) {
  return FileSystemKind::ofPath(file).keepsAttributes;
}

}  // namespace tessane::OriginalName
