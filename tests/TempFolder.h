// A folder of its own for one test, removed with everything in it afterwards.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace tessane::testing {

class TempFolder {
 public:
  explicit TempFolder(
      const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
    std::string pattern = (parent / "tessane-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
  }
  ~TempFolder() {
    std::error_code ignored;
    // Give back permissions a test took away so that everything can be removed.
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Creates a file holding `contents` and returns its path.
  std::filesystem::path file(const std::string& name, const std::string& contents = {}) const {
    const std::filesystem::path p = path_ / name;
    const int fd = ::open(p.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) std::abort();
    if (!contents.empty() && ::write(fd, contents.data(), contents.size()) < 0) std::abort();
    ::close(fd);
    return p;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tessane::testing
