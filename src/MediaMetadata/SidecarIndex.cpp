#include "SidecarIndex.h"

#include <algorithm>

#include "RenameEngine/Unicode.h"
#include "RenameIO/FolderListing.h"

namespace tessane {
namespace {

std::optional<std::vector<std::string>> listFolder(const std::filesystem::path& folder) {
  Result<std::vector<std::string>> names = FolderListing::names(folder);
  if (!names) return std::nullopt;
  return std::move(names).value();
}

}  // namespace

SidecarIndex::SidecarIndex() : lister_(listFolder) {}

SidecarIndex::SidecarIndex(FolderLister lister) : lister_(std::move(lister)) {}

std::string SidecarIndex::lookupKey(std::string_view name) {
  // Camera names are ASCII: already NFC, and lower-cased byte by byte, without ICU.
  const bool ascii = std::all_of(name.begin(), name.end(),
                                 [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (!ascii) return unicode::toLower(unicode::toNfc(name));
  std::string key(name);
  for (char& c : key)
    c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return key;
}

std::shared_ptr<const SidecarIndex::Listing> SidecarIndex::listing(
    const std::filesystem::path& folder) {
  {
    const std::lock_guard lock(mutex_);
    if (const auto it = listings_.find(folder.native()); it != listings_.end()) return it->second;
  }
  auto built = std::make_shared<Listing>();
  if (std::optional<std::vector<std::string>> names = lister_(folder)) {
    for (std::string& name : *names) {
      std::string key = lookupKey(name);
      const auto [it, inserted] = built->try_emplace(std::move(key), name);
      if (!inserted && name < it->second) it->second = std::move(name);
    }
  }
  std::shared_ptr<const Listing> stored = std::move(built);
  const std::lock_guard lock(mutex_);
  listings_[folder.native()] = stored;
  return stored;
}

std::optional<std::filesystem::path> SidecarIndex::sidecar(const std::filesystem::path& file) {
  std::filesystem::path folder = file.parent_path();
  if (folder.empty()) folder = ".";
  const std::string name = file.filename().native();
  const std::shared_ptr<const Listing> names = listing(folder);
  if (names->empty()) return std::nullopt;

  const std::size_t dot = name.rfind('.');
  const bool hasExtension = dot != std::string::npos && dot != 0 && dot + 1 != name.size();
  std::string first = hasExtension ? name.substr(0, dot) : name;
  first += ".xmp";
  std::string second = name;
  second += ".xmp";
  for (const std::string* candidate : {&first, &second}) {
    if (const auto it = names->find(lookupKey(*candidate)); it != names->end()) {
      return file.parent_path() / it->second;
    }
  }
  return std::nullopt;
}

}  // namespace tessane
