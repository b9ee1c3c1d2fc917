#include "RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace tessane {

RegularFile RegularFile::open(const std::filesystem::path& file) noexcept {
  const int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (fd < 0) return {};
  struct stat st {};
  int error = 0;
  if (::fstat(fd, &st) != 0) {
    error = errno;
  } else if (!S_ISREG(st.st_mode)) {
    error = EINVAL;
  } else if (const int flags = ::fcntl(fd, F_GETFL);
             flags < 0 || ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK) != 0) {
    error = errno;
  }
  if (error != 0) {
    ::close(fd);
    errno = error;
    return {};
  }
  return RegularFile(fd, st.st_size);
}

bool RegularFile::is(const std::filesystem::path& file) noexcept {
  return static_cast<bool>(open(file));
}

RegularFile::~RegularFile() {
  if (fd_ >= 0) ::close(fd_);
}

RegularFile::RegularFile(RegularFile&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)), size_(other.size_) {}

RegularFile& RegularFile::operator=(RegularFile&& other) noexcept {
  if (this != &other) {
    if (fd_ >= 0) ::close(fd_);
    fd_ = std::exchange(other.fd_, -1);
    size_ = other.size_;
  }
  return *this;
}

}  // namespace tessane
