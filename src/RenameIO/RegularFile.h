// A file opened for reading only when it is a regular file.
//
// An ordinary open of a FIFO waits until something opens it for writing, and a device can be
// anything: a pipe named "a.xmp" or "p.mov" would stop a metadata read, and the batch with it,
// for good. So the file is opened without waiting (O_NONBLOCK), asked what it is (fstat), and
// kept only when it is a regular file; its reads then wait as usual. A symbolic link is followed
// (a user may name one on the command line); what it leads to must be a regular file.
//
// Every reader of file contents opens through here, or checks here before handing the path to a
// library that opens it itself (TagLib, libavformat, poppler).
#pragma once

#include <sys/types.h>

#include <filesystem>

namespace tessane {

class RegularFile {
 public:
  // The file open read-only, or a closed RegularFile (errno tells why; EINVAL: not regular).
  static RegularFile open(const std::filesystem::path& file) noexcept;
  // Whether `file` opens as a regular file; the descriptor is closed again.
  static bool is(const std::filesystem::path& file) noexcept;

  RegularFile() = default;
  ~RegularFile();
  RegularFile(RegularFile&& other) noexcept;
  RegularFile& operator=(RegularFile&& other) noexcept;
  RegularFile(const RegularFile&) = delete;
  RegularFile& operator=(const RegularFile&) = delete;

  explicit operator bool() const noexcept { return fd_ >= 0; }
  int fd() const noexcept { return fd_; }
  off_t size() const noexcept { return size_; }  // at the time of opening

 private:
  RegularFile(int fd, off_t size) : fd_(fd), size_(size) {}
  int fd_ = -1;
  off_t size_ = 0;
};

}  // namespace tessane
