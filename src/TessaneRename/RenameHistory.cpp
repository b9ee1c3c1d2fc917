#include "RenameHistory.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <exception>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "RenameEngine/StoredText.h"
#include "RenameIO/DurableFile.h"
#include "RenameIO/FileUrl.h"

namespace tessane {
namespace {

using Json = nlohmann::ordered_json;

// 2001-01-01 00:00:00 UTC, the origin of the file's dates, in seconds since 1970.
constexpr std::int64_t kReferenceDate = 978307200;

double secondsSinceReference(Date date) {
  const auto micros = date.time_since_epoch().count() - kReferenceDate * 1'000'000;
  return static_cast<double>(micros) / 1e6;
}

std::optional<Date> dateFrom(double seconds) {
  if (!std::isfinite(seconds) || std::fabs(seconds) > 1e12) return std::nullopt;
  const auto micros = static_cast<std::int64_t>(std::llround(seconds * 1e6));
  return Date(std::chrono::microseconds(micros + kReferenceDate * 1'000'000));
}

constexpr std::pair<RenameHistory::Kind, std::string_view> kKinds[] = {
    {RenameHistory::Kind::rename, "rename"},
    {RenameHistory::Kind::restoreOriginals, "restoreOriginals"}};

std::optional<RenameHistory::Kind> kindFrom(std::string_view text) {
  return fromStoredText(kKinds, text);
}

std::optional<std::filesystem::path> urlAt(const Json& object, const char* key) {
  auto it = object.find(key);
  if (it == object.end() || !it->is_string()) return std::nullopt;
  return FileUrl::toPath(it->get_ref<const std::string&>());
}

std::optional<RenameHistory::Entry> entryFrom(const Json& j) {
  if (!j.is_object()) return std::nullopt;
  const auto id = j.find("id");
  const auto date = j.find("date");
  const auto kind = j.find("kind");
  const auto moves = j.find("moves");
  const auto reverted = j.find("isReverted");
  if (id == j.end() || !id->is_string() || date == j.end() || !date->is_number() ||
      kind == j.end() || !kind->is_string() || moves == j.end() || !moves->is_array() ||
      reverted == j.end() || !reverted->is_boolean()) {
    return std::nullopt;
  }
  RenameHistory::Entry e;
  std::optional<Uuid> uuid = Uuid::parse(id->get_ref<const std::string&>());
  std::optional<Date> when = dateFrom(date->get<double>());
  std::optional<RenameHistory::Kind> k = kindFrom(kind->get_ref<const std::string&>());
  if (!uuid || !when || !k) return std::nullopt;
  e.id = *uuid;
  e.date = *when;
  e.kind = *k;
  e.isReverted = reverted->get<bool>();
  e.moves.reserve(moves->size());
  for (const Json& m : *moves) {
    if (!m.is_object()) return std::nullopt;
    std::optional<std::filesystem::path> source = urlAt(m, "source");
    std::optional<std::filesystem::path> destination = urlAt(m, "destination");
    if (!source || !destination) return std::nullopt;
    e.moves.push_back(RenameHistory::Move{std::move(*source), std::move(*destination)});
  }
  return e;
}

// The file as the system sees it: every write replaces it (another inode) with another size or
// time, so an unchanged stamp means the contents last read or written are still those on disk.
struct Stamp {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::int64_t modified = 0, changed = 0;  // nanoseconds
  friend bool operator==(const Stamp&, const Stamp&) = default;
};

Stamp stampOf(const struct stat& st) {
  constexpr std::int64_t kNano = 1'000'000'000;
  return Stamp{st.st_dev, st.st_ino, st.st_size,
               static_cast<std::int64_t>(st.st_mtim.tv_sec) * kNano + st.st_mtim.tv_nsec,
               static_cast<std::int64_t>(st.st_ctim.tv_sec) * kNano + st.st_ctim.tv_nsec};
}

struct FileRead {
  enum class Outcome { read, missing, unreadable };
  Outcome outcome = Outcome::unreadable;
  Stamp stamp;
  std::string text;
};

// The file's contents and the stamp of the very file they were read from. `skipIfStamp`: when the
// file still has that stamp its contents are not read (the outcome is `read`, the text empty).
FileRead readFile(const std::filesystem::path& file, const std::optional<Stamp>& skipIfStamp) {
  FileRead out;
  const int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    if (errno == ENOENT || errno == ENOTDIR) out.outcome = FileRead::Outcome::missing;
    return out;
  }
  struct stat st {};
  if (::fstat(fd, &st) == 0) {
    out.stamp = stampOf(st);
    out.outcome = FileRead::Outcome::read;
    if (out.stamp != skipIfStamp) {
      char buffer[65536];
      for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n > 0) {
          out.text.append(buffer, static_cast<std::size_t>(n));
        } else if (n == 0) {
          break;
        } else if (errno != EINTR) {
          out.outcome = FileRead::Outcome::unreadable;
          break;
        }
      }
    }
  }
  ::close(fd);
  return out;
}

std::unordered_set<std::string> idsOf(const std::vector<RenameHistory::Entry>& entries) {
  std::unordered_set<std::string> out;
  for (const RenameHistory::Entry& e : entries)
    out.insert(e.id.string());
  return out;
}

}  // namespace

// What the file held when this history last read or wrote it: its stamp (none while it is missing
// or was never read) and the ids of its entries. The saving thread sets it after a write, before
// its future is ready; the owner reads it only after waiting for that future.
struct RenameHistory::FileState {
  std::optional<Stamp> stamp;
  std::unordered_set<std::string> ids;
};

// An exclusive flock on the lock file, released when the last holder lets go of it.
class RenameHistory::FileLock {
 public:
  explicit FileLock(int fd) : fd_(fd) {}
  ~FileLock() { ::close(fd_); }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  int fd_;
};

std::filesystem::path RenameHistory::lockFileOf(const std::filesystem::path& historyFile) {
  return std::filesystem::path(historyFile).replace_extension(".lock");
}

std::shared_ptr<RenameHistory::FileLock> RenameHistory::lockFile() const {
  if (!file_) return nullptr;
  std::error_code ignored;
  std::filesystem::create_directories(file_->parent_path(), ignored);
  const int fd = ::open(lockFileOf(*file_).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  // Without a lock (a folder that can't be written) the change goes on: its save fails too.
  if (fd < 0) return nullptr;
  while (::flock(fd, LOCK_EX) != 0) {
    if (errno != EINTR) {
      ::close(fd);
      return nullptr;
    }
  }
  return std::make_shared<FileLock>(fd);
}

std::string_view RenameHistory::rawValue(Kind kind) noexcept {
  return storedText(kKinds, kind);
}

RenameHistory::RenameHistory(std::optional<std::filesystem::path> file, std::vector<Entry> entries)
    : entries_(std::move(entries)),
      file_(std::move(file)),
      fileState_(std::make_shared<FileState>()) {}

RenameHistory RenameHistory::load(const std::filesystem::path& file) {
  const FileRead read = readFile(file, std::nullopt);
  std::optional<std::vector<Entry>> entries;
  if (read.outcome == FileRead::Outcome::read) entries = decode(read.text);
  RenameHistory history(file, entries ? std::move(*entries) : std::vector<Entry>{});
  if (entries) {
    history.fileState_->stamp = read.stamp;
    history.fileState_->ids = idsOf(history.entries_);
  }
  return history;
}

bool RenameHistory::mergeFromFile() {
  if (!file_) return false;
  // This history's own last save has set what it wrote once it is done.
  if (saveTask_.valid()) saveTask_.wait();
  FileState& known = *fileState_;
  FileRead read = readFile(*file_, known.stamp);
  if (read.outcome == FileRead::Outcome::unreadable) return false;
  if (read.outcome == FileRead::Outcome::read && read.stamp == known.stamp) return false;
  if (read.outcome == FileRead::Outcome::missing && !known.stamp) return false;
  std::vector<Entry> theirs;
  if (read.outcome == FileRead::Outcome::read) {
    std::optional<std::vector<Entry>> decoded = decode(read.text);
    if (!decoded) return false;  // not a history: this one's next save replaces it
    theirs = std::move(*decoded);
  }

  std::unordered_map<std::string, const Entry*> mine;
  for (const Entry& e : entries_)
    mine.emplace(e.id.string(), &e);
  std::unordered_set<std::string> inFile;
  std::vector<Entry> merged;
  merged.reserve(theirs.size() + entries_.size());
  for (Entry& e : theirs) {
    std::string id = e.id.string();
    if (auto it = mine.find(id); it != mine.end() && it->second->isReverted) e.isReverted = true;
    inFile.insert(std::move(id));
    merged.push_back(std::move(e));
  }
  // An entry the file never held (its save failed or is yet to come) stays; one it held and holds
  // no longer was removed there.
  for (const Entry& e : entries_) {
    const std::string id = e.id.string();
    if (inFile.count(id) == 0 && known.ids.count(id) == 0) merged.push_back(e);
  }
  std::stable_sort(merged.begin(), merged.end(),
                   [](const Entry& a, const Entry& b) { return a.date > b.date; });

  known.stamp = read.outcome == FileRead::Outcome::read ? std::optional(read.stamp) : std::nullopt;
  known.ids = std::move(inFile);
  if (merged == entries_) return false;
  entries_ = std::move(merged);
  return true;
}

bool RenameHistory::reload() {
  // The file is always replaced whole, so reading it needs no lock.
  return mergeFromFile();
}

RenameHistory::~RenameHistory() {
  waitForSaves();
}

Uuid RenameHistory::add(Kind kind, const std::vector<FileMove>& moves) {
  return add(
      kind, moves,
      std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now()));
}

Uuid RenameHistory::add(Kind kind, const std::vector<FileMove>& moves, Date date) {
  std::shared_ptr<FileLock> lock = lockFile();
  mergeFromFile();
  Entry e{Uuid::random(), date, kind, {}, false};
  e.moves.reserve(moves.size());
  for (const FileMove& m : moves)
    e.moves.push_back(Move{m.source, m.destination});
  const Uuid id = e.id;
  entries_.insert(entries_.begin(), std::move(e));
  if (entries_.size() > kMaxEntries) entries_.resize(kMaxEntries);
  std::size_t total = 0;
  for (const Entry& entry : entries_)
    total += entry.moves.size();
  while (entries_.size() >= 2 && total > kMaxMoves) {
    total -= entries_.back().moves.size();
    entries_.pop_back();
  }
  save(std::move(lock));
  return id;
}

void RenameHistory::markReverted(const Uuid& id) {
  markReverted(std::vector<Uuid>{id});
}

void RenameHistory::markReverted(const std::vector<Uuid>& ids) {
  std::shared_ptr<FileLock> lock = lockFile();
  mergeFromFile();
  bool changed = false;
  for (Entry& e : entries_) {
    if (!e.isReverted && std::find(ids.begin(), ids.end(), e.id) != ids.end()) {
      e.isReverted = true;
      changed = true;
    }
  }
  if (changed) save(std::move(lock));
}

void RenameHistory::clear() {
  std::shared_ptr<FileLock> lock = lockFile();
  mergeFromFile();
  entries_.clear();
  save(std::move(lock));
}

const RenameHistory::Entry* RenameHistory::newestNotReverted() const {
  for (const Entry& e : entries_) {
    if (!e.isReverted) return &e;
  }
  return nullptr;
}

std::vector<std::filesystem::path> RenameHistory::foldersOf(const Entry& entry) {
  std::vector<std::filesystem::path> out;
  std::unordered_set<std::string> seen;
  for (const Move& m : entry.moves) {
    std::filesystem::path folder = m.source.parent_path();
    if (seen.insert(folder.native()).second) out.push_back(std::move(folder));
  }
  return out;
}

std::vector<FileMove> RenameHistory::reversal(const Entry& entry) {
  std::vector<FileMove> out;
  out.reserve(entry.moves.size());
  // The last move made is the first undone.
  for (auto m = entry.moves.rbegin(); m != entry.moves.rend(); ++m)
    out.push_back(FileMove{m->destination, m->source});
  return out;
}

std::vector<RenameHistory::Entry> RenameHistory::goingBackChain(const Uuid& id) const {
  const auto target =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.id == id; });
  if (target == entries_.end() || target->isReverted) return {};
  std::unordered_set<std::string> at;      // where the chain's files are now
  std::unordered_set<std::string> wanted;  // the names going back gives back
  std::vector<const Entry*> chain;
  const auto join = [&](const Entry& e) {
    chain.push_back(&e);
    for (const Move& m : e.moves) {
      at.erase(m.source.native());
      wanted.insert(m.source.native());
    }
    for (const Move& m : e.moves)
      at.insert(m.destination.native());
  };
  join(*target);
  // The later entries, oldest first.
  for (auto later = std::make_reverse_iterator(target); later != entries_.rend(); ++later) {
    if (later->isReverted) continue;
    const bool inTheWay = std::any_of(later->moves.begin(), later->moves.end(), [&](const Move& m) {
      return at.count(m.source.native()) > 0 || wanted.count(m.destination.native()) > 0;
    });
    if (inTheWay) join(*later);
  }
  std::vector<Entry> out;
  out.reserve(chain.size());
  for (auto e = chain.rbegin(); e != chain.rend(); ++e)
    out.push_back(**e);
  return out;
}

std::vector<FileMove> RenameHistory::reversal(const std::vector<Entry>& chain) {
  std::vector<FileMove> out;  // each file: where it is now, where it is after the steps so far
  std::unordered_map<std::string, std::size_t> byPlace;  // a file's place so far -> its move
  for (const Entry& entry : chain) {
    // A batch's moves happen together: each file is found where it was before any of them.
    std::vector<std::pair<std::size_t, std::filesystem::path>> steps;
    for (FileMove& back : reversal(entry)) {
      std::size_t index = out.size();
      if (auto found = byPlace.find(back.source.native()); found != byPlace.end()) {
        index = found->second;
        byPlace.erase(found);
      } else {
        out.push_back(FileMove{back.source, back.source});
      }
      steps.emplace_back(index, std::move(back.destination));
    }
    for (auto& [index, to] : steps) {
      byPlace[to.native()] = index;
      out[index].destination = std::move(to);
    }
  }
  std::erase_if(out, [](const FileMove& m) { return m.source == m.destination; });
  return out;
}

std::string RenameHistory::goBackLabel(const Entry& entry) {
  std::string out = std::to_string(entry.moves.size());
  out.append(entry.kind == Kind::rename ? " files back to their previous names"
                                        : " files back to their original names");
  return out;
}

std::shared_future<bool> RenameHistory::lastSave() const {
  if (saveTask_.valid()) return saveTask_;
  std::promise<bool> none;
  none.set_value(true);
  return none.get_future().share();
}

bool RenameHistory::waitForSaves() {
  if (!saveTask_.valid()) return true;
  return saveTask_.get();
}

std::string RenameHistory::encode(const std::vector<Entry>& entries) {
  Json array = Json::array();
  for (const Entry& e : entries) {
    Json moves = Json::array();
    for (const Move& m : e.moves) {
      Json move = Json::object();
      move["source"] = FileUrl::fromPath(m.source);
      move["destination"] = FileUrl::fromPath(m.destination);
      moves.push_back(std::move(move));
    }
    Json entry = Json::object();
    entry["id"] = e.id.string();
    entry["date"] = secondsSinceReference(e.date);
    entry["kind"] = rawValue(e.kind);
    entry["moves"] = std::move(moves);
    entry["isReverted"] = e.isReverted;
    array.push_back(std::move(entry));
  }
  // Paths that are not UTF-8 are percent-encoded in their URLs, so the text is always valid.
  return array.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<std::vector<RenameHistory::Entry>> RenameHistory::decode(std::string_view json) {
  try {
    const Json j = Json::parse(json.begin(), json.end(), nullptr, false);
    if (!j.is_array()) return std::nullopt;
    std::vector<Entry> out;
    out.reserve(j.size());
    for (const Json& item : j) {
      std::optional<Entry> e = entryFrom(item);
      if (!e) return std::nullopt;
      out.push_back(std::move(*e));
    }
    return out;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

void RenameHistory::save(std::shared_ptr<FileLock> lock) {
  if (!file_) return;
  std::shared_future<bool> previous = std::move(saveTask_);
  // The task's state outlives it in the future that the next save waits on: what it holds is
  // taken out when it runs, so that every save doesn't keep its copy and its forerunner's alive.
  auto task = [previous = std::move(previous), entries = entries_, file = *file_,
               state = fileState_, lock = std::move(lock)]() mutable {
    if (previous.valid()) std::exchange(previous, {}).wait();
    const std::vector<Entry> mine = std::move(entries);
    entries = {};
    bool written = false;
    try {
      const std::string data = encode(mine);
      // A failed save leaves the previous file in place.
      written = !DurableFile::write(file, data).has_value();
      if (written) {
        struct stat st {};
        state->stamp = ::stat(file.c_str(), &st) == 0 ? std::optional(stampOf(st)) : std::nullopt;
        state->ids = idsOf(mine);
      }
    } catch (const std::exception&) {
      // out of memory while encoding: dropped like any other failed save
    }
    lock.reset();  // the next writer, here or in another process, may go on
    return written;
  };
  auto job = std::make_shared<std::packaged_task<bool()>>(std::move(task));
  saveTask_ = job->get_future().share();
  try {
    std::thread([job] { (*job)(); }).detach();
  } catch (const std::exception&) {
    (*job)();  // no thread to be had: save on this one
  }
}

}  // namespace tessane
