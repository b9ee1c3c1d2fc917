// Which XMP sidecar belongs to a media file, answered from one listing per folder.
//
// Shared by every read of a batch and safe to call from any number of threads. The first question
// about a folder lists it (outside the lock: two threads may list one folder at once, and the
// later store replaces the earlier with an equal listing); every later question is answered from
// memory with two look-ups. A folder that can't be read counts as empty and is not tried again
// for the life of the index. Files added to a folder after it was listed are not seen: make a new
// index when a folder is reloaded.
//
// For a file "IMG_0001.CR2" the candidates are, in this order, "IMG_0001.xmp" and
// "IMG_0001.CR2.xmp". Names are matched by their lookup key (NFC, then lower-cased), and the
// name returned is the one on disk. When two names of a folder share a key (they differ only in
// case), the one whose bytes sort first wins, so the answer does not depend on listing order.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tessane {

class SidecarIndex {
 public:
  // Lookup key -> name as on disk.
  using Listing = std::unordered_map<std::string, std::string>;
  // The names in a folder, or nothing when it can't be read. Tests give a fake one.
  using FolderLister =
      std::function<std::optional<std::vector<std::string>>(const std::filesystem::path&)>;

  SidecarIndex();  // lists folders through the file system
  explicit SidecarIndex(FolderLister lister);

  SidecarIndex(const SidecarIndex&) = delete;
  SidecarIndex& operator=(const SidecarIndex&) = delete;

  // The path of the sidecar of `file`, or nothing.
  std::optional<std::filesystem::path> sidecar(const std::filesystem::path& file);

  // The lookup listing of `folder`, from the cache or read and cached.
  std::shared_ptr<const Listing> listing(const std::filesystem::path& folder);

  // The lookup key of a name: NFC, then lower-cased.
  static std::string lookupKey(std::string_view name);

 private:
  FolderLister lister_;
  std::mutex mutex_;  // guards listings_
  std::unordered_map<std::string, std::shared_ptr<const Listing>> listings_;
};

}  // namespace tessane
