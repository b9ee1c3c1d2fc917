// The name a file had before this system first renamed it, kept inside the file itself as the
// extended attribute "user.com.tessane.originalName" (its value: the name's UTF-8 bytes, nothing
// more), so that "Restore Original Names" works after the history is cleared or the files have
// moved to another computer.
//
//   read: the remembered name, or nothing (no attribute, an empty or unreadable one, a value that
//     is not UTF-8, or one that is not a single plain file name passing the name checks: with a
//     "/", a leading dot, a control character, over 255 bytes). Never fails.
//   remember: records the name unless the file already has one. The first name wins, even against
//     a concurrent writer (XATTR_CREATE). A refusal (read-only volume, no permission, a file
//     system without user attributes) is silent: the history can always undo a rename.
//
// Symbolic links are never followed: a link's own attribute is read and written (Linux refuses
// user attributes on links, so a link simply has no original name).
//
//   rememberAll: remember for a whole batch that has just been applied: each move's source name in
//     its destination, on every volume or (with `nativeVolumesOnly`) on the volumes that keep
//     attributes natively, asked once per folder. Spread over the machine's cores: the kernel
//     writes attributes of different files side by side.
//
//   keepsAttributesNatively: whether the file's volume stores extended attributes itself
//     (FileSystemKind::keepsAttributes). This is what the setting value "macDisksOnly" asks about.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "RenameIO/FileMove.h"

namespace tessane::OriginalName {

inline constexpr char kAttribute[] = "user.com.tessane.originalName";

std::optional<std::string> read(const std::filesystem::path& file);
void remember(const std::filesystem::path& file, std::string_view name);
void rememberAll(std::span<const FileMove> moves, bool nativeVolumesOnly);
bool keepsAttributesNatively(const std::filesystem::path& file);

}  // namespace tessane::OriginalName
