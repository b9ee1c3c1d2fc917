// Reading back what a test left on disk.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>

namespace tessane::testing {

inline std::string contentsOf(const std::filesystem::path& p) {
  std::string out;
  const int fd = ::open(p.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return "(unreadable)";
  char buffer[4096];
  for (ssize_t got; (got = ::read(fd, buffer, sizeof buffer)) > 0;)
    out.append(buffer, static_cast<std::size_t>(got));
  ::close(fd);
  return out;
}

// Every entry of a folder, by its name as stored, with its contents.
inline std::map<std::string, std::string> folderContents(const std::filesystem::path& folder) {
  std::map<std::string, std::string> out;
  for (const std::filesystem::directory_entry& e : std::filesystem::directory_iterator(folder))
    out[e.path().filename().native()] = contentsOf(e.path());
  return out;
}

inline std::size_t entriesIn(const std::filesystem::path& folder) {
  std::error_code ec;
  std::size_t n = 0;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
    ++n;
  return n;
}

}  // namespace tessane::testing
