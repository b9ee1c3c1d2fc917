// The seam between the renamer and the file system, so that the renamer's logic runs against a
// fake one in tests. Everything the renamer, the crash journal and their recovery ask of the disk
// goes through here.
//
// Threads: LinuxFileRenaming holds no state and may be used from several threads at once; the
// tests' in-memory fake and fault wrapper may not. Every call reports failure as a value and never
// throws.
//
// A question about one name has three answers: something is there, nothing is there, or the
// system couldn't tell (EACCES on a folder on the way, EIO from a failing card). Callers never
// take "couldn't tell" for "absent": a batch that can't tell whether a name is free is refused.
#pragma once

#include <sys/types.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "RenameIO/IOError.h"

namespace tessane {

// Which file a name leads to, independent of its name: device and inode.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

// What the file system answered about one name.
class Presence {
 public:
  static Presence present() { return Presence(State::present, 0); }
  static Presence absent() { return Presence(State::absent, 0); }
  static Presence unknown(int code) { return Presence(State::unknown, code); }
  // From the errno of a failed lookup: ENOENT and ENOTDIR (a part of the path is no folder) mean
  // nothing is there; every other error means the system couldn't tell.
  static Presence ofErrno(int code) {
    return code == ENOENT || code == ENOTDIR ? absent() : unknown(code);
  }

  bool isPresent() const { return state_ == State::present; }
  bool isAbsent() const { return state_ == State::absent; }
  bool isUnknown() const { return state_ == State::unknown; }
  int code() const { return code_; }  // the errno value when unknown, else 0

 private:
  enum class State : unsigned char { present, absent, unknown };
  Presence(State state, int code) : state_(state), code_(code) {}
  State state_;
  int code_;
};

// The identity of the entry at a name, when the answer is that something is there.
struct IdentityLookup {
  Presence presence = Presence::absent();
  FileIdentity identity;  // meaningful only when presence.isPresent()

  static IdentityLookup of(FileIdentity id) { return {Presence::present(), id}; }
  static IdentityLookup without(Presence p) { return {p, {}}; }
  std::optional<FileIdentity> found() const {
    return presence.isPresent() ? std::optional<FileIdentity>(identity) : std::nullopt;
  }
};

// One entry of a folder as a listing gives it; the identity where the listing can tell it.
struct FolderEntry {
  std::string name;
  std::optional<FileIdentity> identity;
};

class SystemFileRenaming {
 public:
  virtual ~SystemFileRenaming() = default;

  // Renames one entry. Fails, and changes nothing, when anything already exists at `to`: never
  // overwrites. Nothing on success; on failure the error (operation rename, path `from`) and
  // both names as they were. Requires `from` and `to` in one folder.
  virtual std::optional<IOError> moveItem(const std::filesystem::path& from,
                                          const std::filesystem::path& to) = 0;

  // Whether anything exists at `at`: present, absent, or unknown with the errno. A final symbolic
  // link is not followed, so a link whose target is gone still occupies its name.
  virtual Presence fileExists(const std::filesystem::path& at) = 0;

  // The identity of the entry at `at` (not following a final symbolic link), with the same three
  // answers as fileExists.
  virtual IdentityLookup identity(const std::filesystem::path& at) = 0;

  // Every entry of `folder`, hidden ones included, in one call: what fileExists and identity
  // answer name by name, for a whole batch at once. An entry's identity is left out where the
  // listing can't vouch for it being the one `identity` gives. Nothing when the folder can't be
  // listed; callers then ask name by name.
  virtual std::optional<std::vector<FolderEntry>> list(const std::filesystem::path& folder) = 0;
};

}  // namespace tessane
