// A regular file mapped read-only, whole; empty when it can't be (not a regular file, empty,
// or the mapping fails). Unmapped when it goes.
#pragma once

#include <sys/mman.h>

#include <cstdint>
#include <filesystem>
#include <span>

#include "RenameIO/RegularFile.h"

namespace tessane {

class MappedFile {
 public:
  explicit MappedFile(const std::filesystem::path& path) {
    const RegularFile file = RegularFile::open(path);
    if (!file || file.size() <= 0) return;
    const auto size = static_cast<std::size_t>(file.size());
    void* p = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.fd(), 0);
    if (p != MAP_FAILED) {
      data_ = static_cast<const std::uint8_t*>(p);
      size_ = size;
    }
  }
  ~MappedFile() {
    if (data_ != nullptr) ::munmap(const_cast<std::uint8_t*>(data_), size_);
  }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  std::span<const std::uint8_t> bytes() const { return {data_, size_}; }

 private:
  const std::uint8_t* data_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace tessane
