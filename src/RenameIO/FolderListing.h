// The one place where the system asks a folder what it holds. Two questions, answered apart:
//
//   files(folder): which files can be renamed? The folder's own regular files, one level deep.
//     Entries whose name starts with a dot are hidden and left out; so are folders, symbolic links
//     (judged by their own type, never their target's), devices, sockets and pipes, and any entry
//     whose type can't be read. Sorted in the order a file manager shows them.
//   names(folder): which names are taken? Every entry, hidden or not, of any type, in the order
//     the file system gives them. A hidden file or a subfolder blocks a name as well as a photo.
//
// Names are bytes on Linux. A name that is not valid UTF-8 is listed with its bytes kept exactly,
// flagged so that it is shown with a warning and never renamed.
//
// Stateless, synchronous and reentrant. Errors (a missing folder, no permission, not a folder)
// come back as values.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "RenameIO/IOError.h"

namespace tessane {

struct ListedFile {
  std::filesystem::path path;  // the folder with the entry's name appended, bytes as listed
  std::string name;            // the entry's name, bytes as listed
  bool nameIsText = true;      // false when the name is not valid UTF-8

  // The name for display: bytes that are not UTF-8 shown as U+FFFD.
  std::string displayName() const;
};

namespace FolderListing {

// The warning shown beside a file whose name is not valid UTF-8.
inline constexpr std::string_view kNameNotTextWarning =
    "This file’s name can’t be read as text, so it won’t be renamed";

Result<std::vector<ListedFile>> files(const std::filesystem::path& folder);
Result<std::vector<std::string>> names(const std::filesystem::path& folder);

// The folder as every comparison of folders takes it: absolute, its symbolic links, "." and ".."
// resolved, no trailing "/". "d/", "./d" and a link to d are one folder, and its name is the
// last component of this path (the current folder's own name for "."). A path that can't be
// resolved (a part of it can't be searched) is made absolute and tidied instead.
std::filesystem::path resolvedFolder(const std::filesystem::path& folder);

}  // namespace FolderListing
}  // namespace tessane
