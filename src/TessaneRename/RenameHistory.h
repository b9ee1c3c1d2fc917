// Every batch the system performed, newest first, so that the user can go back to the names the
// files had before it. Shared by the application and the command-line tool through one file,
// History.json in the data folder.
//
// Rules kept here:
//   - add: a new entry (fresh id, the date, not reverted) goes in front; then the oldest leave
//     until at most 50 remain, and, while at least two remain, until the moves of all entries
//     number at most 20,000. The newest entry always stays, however large.
//   - markReverted: the entries with those ids are reverted; an unknown id changes nothing.
//   - clear: no entries.
//
// Several processes share the file (a window open while the tool renames). Every change takes an
// exclusive lock on History.lock beside the file, reads the file again when another process wrote
// it since this history last did, and merges by entry id before changing anything: an entry either
// side added stays, one marked reverted on either side is reverted, and one this history had read
// from the file and no longer finds there was removed by the other process (trimmed or cleared)
// and goes. The lock is held until the change is written, so no write is lost between two
// processes. reload() merges the file the same way without changing anything.
//
// Saves run in the background, one after another (each waits for the previous), so the last
// written is the newest; each is written atomically and durably. A failed save leaves the file as
// it was and the history in memory as it is; waitForSaves tells of it.
//
// The file: a JSON array of {"id", "date", "kind", "moves": [{"source", "destination"}],
// "isReverted"}, newest first, on one line; the id an upper-case UUID, the date seconds since
// 2001-01-01 00:00:00 UTC as a number, each location a "file://" URL. Loading a file that is
// missing, unreadable or anything but such an array gives an empty history, without a message;
// such a file met while merging is left out of the merge.
//
// A reference type owned by one thread; only saving happens elsewhere. The destructor waits for
// the last save.
#pragma once

#include <filesystem>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "RenameEngine/MetadataValue.h"
#include "RenameEngine/Uuid.h"
#include "RenameIO/FileMove.h"

namespace tessane {

class RenameHistory {
 public:
  enum class Kind { rename, restoreOriginals };

  struct Move {
    std::filesystem::path source;       // before the move
    std::filesystem::path destination;  // after it
    friend bool operator==(const Move&, const Move&) = default;
  };

  struct Entry {
    Uuid id;
    Date date;
    Kind kind = Kind::rename;
    std::vector<Move> moves;  // in the order performed
    bool isReverted = false;
    friend bool operator==(const Entry&, const Entry&) = default;
  };

  static constexpr std::size_t kMaxEntries = 50;
  static constexpr std::size_t kMaxMoves = 20000;

  // Without a file the history is kept in memory only.
  explicit RenameHistory(std::optional<std::filesystem::path> file = std::nullopt,
                         std::vector<Entry> entries = {});
  // The history kept in `file`, empty when the file can't be read as one.
  static RenameHistory load(const std::filesystem::path& file);
  ~RenameHistory();
  RenameHistory(const RenameHistory&) = delete;
  RenameHistory& operator=(const RenameHistory&) = delete;
  RenameHistory(RenameHistory&&) = default;
  RenameHistory& operator=(RenameHistory&&) = default;

  const std::vector<Entry>& entries() const noexcept { return entries_; }
  const std::optional<std::filesystem::path>& file() const noexcept { return file_; }

  // Records a batch and returns its entry's id.
  Uuid add(Kind kind, const std::vector<FileMove>& moves, Date date);
  Uuid add(Kind kind, const std::vector<FileMove>& moves);  // dated now
  void markReverted(const Uuid& id);
  void markReverted(const std::vector<Uuid>& ids);  // one change, one save
  void clear();
  // Takes in what other processes wrote to the file since this history last read or wrote it;
  // true when the entries changed. Without a file, or when the file can't be read, nothing changes.
  bool reload();

  // The newest entry not yet reverted: what Undo goes back from.
  const Entry* newestNotReverted() const;
  // The distinct folders of an entry's sources, in order of first appearance.
  static std::vector<std::filesystem::path> foldersOf(const Entry& entry);
  // What going back from an entry takes: the later batches not gone back from that moved one of
  // the files it would move back, or took one of the names it would give back (and so on, for the
  // batches those depend on), newest first, then the entry itself. Empty for an unknown id or an
  // entry already gone back from; the entry alone when nothing later is in the way.
  std::vector<Entry> goingBackChain(const Uuid& id) const;
  // The moves that go back from an entry: each destination to its source, the last move made
  // first.
  static std::vector<FileMove> reversal(const Entry& entry);
  // The moves that go back from a chain (newest first) as one batch: each file from where it is
  // now straight to where it was before the oldest, in the order the chain's moves are undone.
  static std::vector<FileMove> reversal(const std::vector<Entry>& chain);
  // "12 files back to their previous names" or "… to their original names".
  static std::string goBackLabel(const Entry& entry);

  // Blocks until every save started so far has finished; false when the last one could not be
  // written (the file then holds an older history). True without a file.
  bool waitForSaves();
  // The last save started (true once written; true at once without a file), for a caller that
  // waits for it on another thread.
  std::shared_future<bool> lastSave() const;

  // The file's form, for the file and for tests.
  static std::string encode(const std::vector<Entry>& entries);
  static std::optional<std::vector<Entry>> decode(std::string_view json);

  static std::string_view rawValue(Kind kind) noexcept;

  // The lock file both front ends take around a change of `historyFile`.
  static std::filesystem::path lockFileOf(const std::filesystem::path& historyFile);

 private:
  class FileLock;
  struct FileState;

  // Under the lock: the file's newer entries merged in. True when the entries changed.
  bool mergeFromFile();
  // Writes the entries in the background, holding `lock` until the write is done.
  void save(std::shared_ptr<FileLock> lock);
  std::shared_ptr<FileLock> lockFile() const;

  std::vector<Entry> entries_;
  std::optional<std::filesystem::path> file_;
  std::shared_future<bool> saveTask_;
  // What the file held when this history last read or wrote it, shared with the saving thread.
  std::shared_ptr<FileState> fileState_;
};

}  // namespace tessane
