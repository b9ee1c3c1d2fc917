#include "SafeRenamer.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "RenameEngine/NameKey.h"
#include "RenameIO/TemporaryName.h"

namespace tessane::SafeRenamer {
namespace {

// The standard folder of each file, computed once per distinct spelling of a folder: a batch's
// files nearly always share one.
class FolderCache {
 public:
  const std::string& of(const std::filesystem::path& file) {
    std::string_view native = file.native();
    const std::size_t slash = native.rfind('/');
    const std::string_view raw = slash == std::string_view::npos ? "" : native.substr(0, slash);
    if (!valid_ || raw != raw_) {
      raw_.assign(raw);
      folder_ = folderOf(file);
      valid_ = true;
    }
    return folder_;
  }

 private:
  bool valid_ = false;
  std::string raw_;
  std::string folder_;
};

// The key under which the renamer compares locations: the folder, exactly, and the name's key.
std::string keyOf(const std::string& folder, const std::filesystem::path& file) {
  std::string key = folder;
  key.push_back('\0');
  key.append(NameKey::of(file.filename().native()).value);
  return key;
}

// A folder's path without "." and empty components, which never change where it leads ("..",
// which can, stays).
std::filesystem::path withoutDots(const std::filesystem::path& folder) {
  std::filesystem::path out;
  for (const std::filesystem::path& part : folder) {
    if (part != "." && !part.empty()) out /= part;
  }
  return out;
}

// Whether a move stays in its folder. The same spelling of the folder (up to "." components) is
// the same folder; any other spelling is asked of the disk, since tidied text can lie: "d/x/.." is
// "d" as text but, with x a link to another folder, the folder above that one. Both must be one
// directory. Unknown when the disk couldn't tell.
Presence staysInFolder(const FileMove& move, SystemFileRenaming& fs) {
  const std::filesystem::path from = move.source.parent_path();
  const std::filesystem::path to = move.destination.parent_path();
  if (from.native() == to.native() || withoutDots(from) == withoutDots(to)) {
    return Presence::present();
  }
  const IdentityLookup a = fs.identity(from / ".");
  if (!a.presence.isPresent()) return a.presence;
  const IdentityLookup b = fs.identity(to / ".");
  if (b.presence.isUnknown()) return b.presence;
  return a.found() == b.found() ? Presence::present() : Presence::absent();
}

// The refusal of a batch whose checks couldn't tell whether `path` is there.
SafeRenameError couldNotTell(const std::filesystem::path& path, const Presence& presence) {
  return SafeRenameError::failed(
      path, {}, IOError::fromErrno(presence.code(), IOError::Operation::find, path));
}

enum class Phase : unsigned char { park, place };

struct Step {
  std::size_t index;
  Phase phase;  // park: the file came from its source; place: from its temporary location
};

}  // namespace

std::string folderOf(const std::filesystem::path& file) {
  std::string folder = file.parent_path().lexically_normal().native();
  while (folder.size() > 1 && folder.back() == '/')
    folder.pop_back();
  if (folder.empty()) folder.push_back('.');
  return folder;
}

std::filesystem::path temporaryLocation(const FileMove& move, std::string_view tag,
                                        std::size_t index) {
  return move.source.parent_path() /
         TemporaryName::make(tag, index, move.source.filename().native());
}

namespace {

// What a folder holds, listed once for the whole batch: each exact name with its identity when
// the listing knows it, and the keys of all names, since a volume that ignores case or form
// finds a file under any spelling with the same key.
class FolderView {
 public:
  FolderView(const std::string& folder, SystemFileRenaming& fs) {
    std::optional<std::vector<FolderEntry>> entries = fs.list(folder);
    if (!entries) return;
    listed_ = true;
    exact_.reserve(entries->size());
    keys_.reserve(entries->size());
    for (FolderEntry& e : *entries) {
      keys_.insert(NameKey::of(e.name).value);
      exact_.emplace(std::move(e.name), e.identity);
    }
  }

  IdentityLookup identity(const std::filesystem::path& file, SystemFileRenaming& fs) const {
    if (listed_) {
      const auto it = exact_.find(file.filename().native());
      if (it != exact_.end() && it->second) return IdentityLookup::of(*it->second);
    }
    return fs.identity(file);
  }

  bool isListed() const { return listed_; }
  bool listsExactly(const std::filesystem::path& file) const {
    return exact_.contains(file.filename().native());
  }

  // Only a name that the listing lacks exactly but holds under its key needs the disk's word.
  Presence exists(const std::filesystem::path& file, std::string_view key,
                  SystemFileRenaming& fs) const {
    if (!listed_) return fs.fileExists(file);
    if (exact_.contains(file.filename().native())) return Presence::present();
    if (!keys_.contains(std::string(key))) return Presence::absent();
    return fs.fileExists(file);
  }

 private:
  bool listed_ = false;
  std::unordered_map<std::string, std::optional<FileIdentity>> exact_;
  std::unordered_set<std::string> keys_;
};

std::optional<SafeRenameError> checkMoves(std::span<const FileMove> moves, SystemFileRenaming& fs,
                                          std::vector<FileIdentity>& identities) {
  identities.reserve(moves.size());
  FolderCache sourceFolders;
  // The moves whose sources hold each key.
  std::unordered_map<std::string, std::vector<std::size_t>> sources;
  sources.reserve(moves.size());
  for (std::size_t i = 0; i < moves.size(); ++i)
    sources[keyOf(sourceFolders.of(moves[i].source), moves[i].source)].push_back(i);

  // Whether the entry at an existing destination is one of the sources `owners` (which share its
  // key), so that it moves away before the name is taken: under the source's exact name, or
  // under another spelling on a volume that ignores case, where the folder lists the source's
  // name and not the destination's. Another file whose name only shares the key ("p.jpg" beside
  // a moved "P.jpg" on a case-sensitive disk) stays where it is. Without a listing, the files'
  // identities tell (FUSE volumes, whose inode numbers can differ by spelling, list).
  auto heldBySource = [&](const std::filesystem::path& destination,
                          const std::vector<std::size_t>& owners, const FolderView& view) {
    for (std::size_t j : owners) {
      if (moves[j].source.filename().native() == destination.filename().native()) return true;
    }
    if (view.isListed()) return !view.listsExactly(destination);
    const std::optional<FileIdentity> held = fs.identity(destination).found();
    return held && std::any_of(owners.begin(), owners.end(), [&](std::size_t j) {
             return fs.identity(moves[j].source).found() == held;
           });
  };

  std::unordered_map<std::string, FolderView> views;
  std::unordered_set<std::string> destinations;
  destinations.reserve(moves.size());
  for (const FileMove& m : moves) {
    const std::string& sourceFolder = sourceFolders.of(m.source);
    const FolderView& view = views.try_emplace(sourceFolder, sourceFolder, fs).first->second;
    const IdentityLookup source = view.identity(m.source, fs);
    if (source.presence.isUnknown()) return couldNotTell(m.source, source.presence);
    if (source.presence.isAbsent()) return SafeRenameError::sourceMissing(m.source);
    identities.push_back(source.identity);
    const Presence inFolder = staysInFolder(m, fs);
    if (inFolder.isUnknown()) return couldNotTell(m.destination.parent_path(), inFolder);
    if (inFolder.isAbsent()) return SafeRenameError::notSameFolder(m);
    const std::string& folder = sourceFolder;  // the destination's, resolved above
    const std::string nameKey = NameKey::of(m.destination.filename().native()).value;
    std::string key = folder;
    key.push_back('\0');
    key.append(nameKey);
    const auto owners = sources.find(key);
    if (!destinations.insert(std::move(key)).second) {
      return SafeRenameError::duplicateDestination(m.destination);
    }
    const Presence taken = view.exists(m.destination, nameKey, fs);
    if (taken.isUnknown()) return couldNotTell(m.destination, taken);
    if (taken.isAbsent()) continue;
    if (owners == sources.end() || !heldBySource(m.destination, owners->second, view)) {
      return SafeRenameError::destinationExists(m.destination);
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<SafeRenameError> check(std::span<const FileMove> moves, SystemFileRenaming& fs) {
  std::vector<FileIdentity> identities;
  return checkMoves(moves, fs, identities);
}

Result<AppliedBatch, SafeRenameError> apply(std::span<const FileMove> moves, SystemFileRenaming& fs,
                                            Date date, const ApplyHooks& hooks) {
  std::vector<FileIdentity> identities;
  if (std::optional<SafeRenameError> refused = checkMoves(moves, fs, identities)) {
    return std::move(*refused);
  }

  AppliedBatch batch{Uuid::random(), date, std::vector<FileMove>(moves.begin(), moves.end())};
  if (moves.empty()) return batch;

  const std::string tag = batch.id.string().substr(0, 8);
  const std::size_t n = moves.size();
  std::vector<std::filesystem::path> temporary;
  temporary.reserve(n);
  for (std::size_t i = 0; i < n; ++i)
    temporary.push_back(temporaryLocation(moves[i], tag, i));

  if (hooks.beforeFirstMove) {
    if (std::optional<IOError> refused = hooks.beforeFirstMove(batch, temporary, identities)) {
      return SafeRenameError::failed(moves[0].source, {}, std::move(refused));
    }
  }

  // Where each file is now, as a pointer into the sources, the temporaries or the destinations.
  std::vector<const std::filesystem::path*> current(n);
  for (std::size_t i = 0; i < n; ++i)
    current[i] = &moves[i].source;
  std::vector<Step> done;
  done.reserve(2 * n);

  std::optional<IOError> error;
  std::size_t failedIndex = 0;
  for (Phase phase : {Phase::park, Phase::place}) {
    for (std::size_t i = 0; i < n && !error; ++i) {
      const std::filesystem::path& target =
          phase == Phase::park ? temporary[i] : moves[i].destination;
      error = fs.moveItem(*current[i], target);
      if (error) {
        failedIndex = i;
      } else {
        current[i] = &target;
        done.push_back(Step{i, phase});
      }
    }
    if (error) break;
  }
  if (!error) return batch;

  // Undo every step from the last to the first. A file whose step back fails stays where it is.
  std::vector<bool> stuck(n, false);
  for (auto step = done.rbegin(); step != done.rend(); ++step) {
    const std::size_t i = step->index;
    if (stuck[i]) continue;
    const std::filesystem::path& previous =
        step->phase == Phase::park ? moves[i].source : temporary[i];
    if (fs.moveItem(*current[i], previous)) {
      stuck[i] = true;
    } else {
      current[i] = &previous;
    }
  }
  std::vector<FileMove> stranded;
  for (std::size_t i = 0; i < n; ++i) {
    if (stuck[i]) stranded.push_back(FileMove{*current[i], moves[i].source});
  }
  if (hooks.afterRollback) hooks.afterRollback(stranded);
  return SafeRenameError::failed(moves[failedIndex].source, std::move(stranded), std::move(error));
}

}  // namespace tessane::SafeRenamer
