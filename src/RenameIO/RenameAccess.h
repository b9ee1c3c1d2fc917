// Whether the system will let names change, asked before a batch so that the preview can say why
// a file can't be renamed instead of a batch failing halfway through its checks.
//
//   ofFolder: 0 when entries of the folder may be renamed; otherwise the errno a rename would
//     meet: EROFS on a read-only file system (a card's lock switch, a disk mounted read-only),
//     EACCES for a folder the user may not write to or search.
//   ofFiles: the files of a folder that can't be renamed although the folder allows it, with
//     their errno: EPERM for a file marked immutable or append-only, or a file in a sticky folder
//     (as /tmp) that belongs to another user. One statx per file, no open.
//
//   describe: both, into what the preview knows of the folder (its `files` already listed).
//
// A question the system can't answer counts as allowed: the batch's own checks still stand.
// Stateless and reentrant.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <unordered_map>

#include "RenameEngine/RenamePreview.h"

namespace tessane::RenameAccess {

int ofFolder(const std::filesystem::path& folder);
std::unordered_map<std::string, int> ofFiles(const std::filesystem::path& folder,
                                             std::span<const std::string> names);
void describe(const std::filesystem::path& folder, FolderContents& contents);

}  // namespace tessane::RenameAccess
