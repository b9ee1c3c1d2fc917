#include "DurableFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace tessane::DurableFile {

bool writeAll(int fd, std::string_view data) {
  while (!data.empty()) {
    const ssize_t wrote = ::write(fd, data.data(), data.size());
    if (wrote < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data.remove_prefix(static_cast<std::size_t>(wrote));
  }
  return true;
}

std::optional<IOError> syncFolder(const std::filesystem::path& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return IOError::fromErrno(errno, IOError::Operation::open, folder);
  std::optional<IOError> error;
  if (::fsync(fd) != 0) error = IOError::fromErrno(errno, IOError::Operation::flush, folder);
  ::close(fd);
  return error;
}

std::optional<IOError> write(const std::filesystem::path& file, std::string_view data) {
  const std::filesystem::path folder = file.parent_path();
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  if (ec) return IOError::fromErrno(ec.value(), IOError::Operation::create, folder);

  std::string temporary = folder / ".";
  temporary.append(file.filename().native()).append(".XXXXXX");
  const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
  if (fd < 0) return IOError::fromErrno(errno, IOError::Operation::create, temporary);
  std::optional<IOError> error;
  if (!writeAll(fd, data)) {
    error = IOError::fromErrno(errno, IOError::Operation::write, temporary);
  } else if (::fsync(fd) != 0) {
    error = IOError::fromErrno(errno, IOError::Operation::flush, temporary);
  }
  if (::close(fd) != 0 && !error)
    error = IOError::fromErrno(errno, IOError::Operation::write, temporary);
  if (!error && ::rename(temporary.c_str(), file.c_str()) != 0) {
    error = IOError::fromErrno(errno, IOError::Operation::replace, file);
  }
  if (error) {
    ::unlink(temporary.c_str());
    return error;
  }
  return syncFolder(folder);
}

}  // namespace tessane::DurableFile
