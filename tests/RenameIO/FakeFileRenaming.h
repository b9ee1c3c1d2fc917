// An in-memory file system for the renamer's tests: each file has an identity and contents (faults
// come from FaultyFileRenaming wrapped around it). It may behave like a case-insensitive volume
// (names compared by NameKey, so even a case-only rename of one file onto itself is refused, as the
// exclusive rename does on such volumes).
#pragma once

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "RenameEngine/NameKey.h"
#include "RenameIO/SystemFileRenaming.h"

namespace tessane::testing {

class FakeFileRenaming : public SystemFileRenaming {
 public:
  struct File {
    std::string name;  // the exact name, as last given
    std::string contents;
    ino_t inode = 0;
  };

  explicit FakeFileRenaming(bool caseInsensitive = false) : caseInsensitive_(caseInsensitive) {}

  void add(const std::filesystem::path& at, std::string contents) {
    files_[keyOf(at)] = File{at.native(), std::move(contents), ++lastInode_};
  }

  std::size_t moveCount() const { return moves_; }

  std::optional<IOError> moveItem(const std::filesystem::path& from,
                                  const std::filesystem::path& to) override {
    ++moves_;
    auto it = files_.find(keyOf(from));
    if (it == files_.end() || (!caseInsensitive_ && it->second.name != from.native())) {
      return IOError::fromErrno(ENOENT, IOError::Operation::rename, from);
    }
    if (files_.contains(keyOf(to)))
      return IOError::fromErrno(EEXIST, IOError::Operation::rename, from);
    File f = std::move(it->second);
    files_.erase(it);
    f.name = to.native();
    files_[keyOf(to)] = std::move(f);
    return std::nullopt;
  }

  Presence fileExists(const std::filesystem::path& at) override {
    return files_.contains(keyOf(at)) ? Presence::present() : Presence::absent();
  }

  IdentityLookup identity(const std::filesystem::path& at) override {
    auto it = files_.find(keyOf(at));
    if (it == files_.end()) return IdentityLookup::without(Presence::absent());
    return IdentityLookup::of(FileIdentity{1, it->second.inode});
  }

  // Whether list answers; when it doesn't, the renamer asks file by file.
  bool listable = true;

  std::optional<std::vector<FolderEntry>> list(const std::filesystem::path& folder) override {
    if (!listable) return std::nullopt;
    std::vector<FolderEntry> out;
    for (const auto& [key, f] : files_) {
      const std::filesystem::path at(f.name);
      if (at.parent_path() == folder)
        out.push_back({at.filename().native(), FileIdentity{1, f.inode}});
    }
    return out;
  }

  void remove(const std::filesystem::path& at) { files_.erase(keyOf(at)); }

  // Every file as exact name -> contents.
  std::map<std::string, std::string> snapshot() const {
    std::map<std::string, std::string> out;
    for (const auto& [key, f] : files_)
      out[f.name] = f.contents;
    return out;
  }

 private:
  std::string keyOf(const std::filesystem::path& p) const {
    if (!caseInsensitive_) return p.native();
    return p.parent_path().native() + '/' + NameKey::of(p.filename().native()).value;
  }

  bool caseInsensitive_;
  std::map<std::string, File> files_;
  std::size_t moves_ = 0;
  ino_t lastInode_ = 0;
};

}  // namespace tessane::testing
