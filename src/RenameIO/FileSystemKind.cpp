#include "FileSystemKind.h"

#include <array>

namespace tessane::FileSystemKind {
namespace {

struct Known {
  std::uint32_t type;  // statfs f_type
  Answers answers;
};

constexpr std::array<Known, 9> kKnown{{
    {0xEF53, {true, true}},       // ext2, ext3, ext4
    {0x9123683E, {true, true}},   // btrfs
    {0x58465342, {true, true}},   // xfs
    {0xF2F52010, {true, true}},   // f2fs
    {0x01021994, {true, true}},   // tmpfs
    {0x2FC12FC1, {true, false}},  // zfs
    {0xCA451A4E, {true, false}},  // bcachefs
    {0x482B, {true, false}},      // hfsplus
    {0x42535041, {true, false}},  // apfs
}};

}  // namespace

Answers of(std::uint32_t statfsType) {
  for (const Known& k : kKnown) {
    if (k.type == statfsType) return k.answers;
  }
  return {};
}

Answers ofPath(const std::filesystem::path& path) {
  struct statfs st {};
  if (::statfs(path.c_str(), &st) != 0) return {};
  return of(static_cast<std::uint32_t>(st.f_type));
}

Answers ofDescriptor(int fd) {
  struct statfs st {};
  if (::fstatfs(fd, &st) != 0) return {};
  return of(static_cast<std::uint32_t>(st.f_type));
}

}  // namespace tessane::FileSystemKind
