// What kind of file system a path or an open folder lives on, as statfs tells it, and the two
// questions the system asks of that kind. One table, so that a file system added for one question
// is considered for the other.
//
//   keepsAttributes: the file system stores extended attributes itself (ext2/3/4, btrfs, xfs,
//     f2fs, zfs, bcachefs, tmpfs, hfsplus, apfs); memory cards and exchange or network drives
//     (vfat, exfat, ntfs, FUSE, SMB, NFS) don't.
//   listsRealInodes: readdir gives each entry the inode number lstat gives (ext2/3/4, xfs, btrfs,
//     f2fs, tmpfs); overlay, FAT and FUSE volumes may number their listings otherwise.
//
// Unknown kinds and calls that fail answer false to both.
#pragma once

#include <sys/statfs.h>

#include <cstdint>
#include <filesystem>

namespace tessane::FileSystemKind {

struct Answers {
  bool keepsAttributes = false;
  bool listsRealInodes = false;
};

Answers of(std::uint32_t statfsType);
Answers ofPath(const std::filesystem::path& path);
Answers ofDescriptor(int fd);

}  // namespace tessane::FileSystemKind
