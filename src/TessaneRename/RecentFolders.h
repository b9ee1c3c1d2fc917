// The folders the user opened lately, newest first, for the empty window, the sidebar and
// File ▸ Open Recent. Kept in the settings store under "recentFolders" as their paths, at most
// `kLimit`; a folder that no longer opens is left out of the list when it is read, silently.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

class QSettings;

namespace tessane {

class RecentFolders {
 public:
  static constexpr std::size_t kLimit = 10;

  explicit RecentFolders(QSettings& settings) : settings_(settings) {}

  // Newest first; only those that are still folders.
  std::vector<std::filesystem::path> list() const;
  // Puts `folders` first, in their order, each once.
  void note(const std::vector<std::filesystem::path>& folders);
  void clear();

 private:
  QSettings& settings_;
};

}  // namespace tessane
