// An exFAT file system in an image on a loop device, mounted through FUSE as a camera card is on
// many desktops. Needs root, exfatprogs and exfat-fuse: mount() says why it couldn't, and the test
// skips with that. Unmounted and detached when it goes.
#pragma once

#include <sys/mount.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "TextJoin.h"

namespace tessane::testing {

class ExfatImage {
 public:
  explicit ExfatImage(std::filesystem::path work) : work_(std::move(work)) {}
  ~ExfatImage() {
    if (mounted_) {
      for (int attempt = 0; attempt < 50 && ::umount(mount_.c_str()) != 0; ++attempt)
        ::usleep(100'000);
    }
    if (!device_.empty()) (void)run(join({"losetup -d '", device_, "'"}));
  }
  ExfatImage(const ExfatImage&) = delete;
  ExfatImage& operator=(const ExfatImage&) = delete;

  // Makes and mounts the card; nothing when it is mounted, else why it couldn't be.
  std::optional<std::string> mount() {
    if (::geteuid() != 0) return "mounting an exFAT image needs root";
    const std::filesystem::path image = work_ / "card.img";
    mount_ = work_ / "card";
    std::filesystem::create_directory(mount_);
    if (!run(join({"truncate -s 32M '", image.native(), "'"})) ||
        !run(join({"mkfs.exfat '", image.native(), "' >/dev/null"}))) {
      return "can't make an exFAT image (is exfatprogs installed?)";
    }
    std::optional<std::string> device = run(join({"losetup -f --show '", image.native(), "'"}));
    if (!device || device->empty()) return "no loop device available";
    device_ = *device;
    if (!run(join({"mount.exfat-fuse '", device_, "' '", mount_.native(), "' >/dev/null"}))) {
      return "can't mount exFAT through FUSE (is exfat-fuse installed?)";
    }
    mounted_ = true;
    return std::nullopt;
  }

  const std::filesystem::path& root() const { return mount_; }

  // Runs a shell command; its first line of output, or nothing when it fails.
  static std::optional<std::string> run(const std::string& command) {
    std::FILE* pipe = ::popen(join({command, " 2>/dev/null"}).c_str(), "r");
    if (pipe == nullptr) return std::nullopt;
    char line[512] = {};
    const bool got = std::fgets(line, sizeof line, pipe) != nullptr;
    const int status = ::pclose(pipe);
    if (status != 0) return std::nullopt;
    std::string out = got ? line : "";
    while (!out.empty() && (out.back() == '\n' || out.back() == '\r'))
      out.pop_back();
    return out;
  }

 private:
  std::filesystem::path work_;
  std::filesystem::path mount_;
  std::string device_;
  bool mounted_ = false;
};

}  // namespace tessane::testing
