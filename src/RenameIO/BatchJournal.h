// The journal of a batch under way, so that a batch survives the process being killed or the
// machine losing power between its first and its last move.
//
// Before the first move, begin() writes the batch (its id, its date, and for every move the
// source, the destination and the file's device and inode; the temporary locations follow from
// the id) to
// "<journal folder>/<batch UUID>.json", flushed to the disk together with the folder, and keeps the
// file locked (flock) for as long as the BatchJournal lives. finish() removes it, once the batch is
// recorded in the history or completely rolled back. A process that dies leaves the journal
// behind, unlocked; the next start finds it (see CrashRecovery). The lock tells a batch that is
// still running in another process from one whose process is gone: the kernel drops it with the
// process, even on SIGKILL.
//
// The file is written under a hidden temporary name and locked before it takes its final name, so
// a journal is never seen half-written nor unlocked while its batch runs.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "RenameIO/AppliedBatch.h"
#include "RenameIO/IOError.h"
#include "RenameIO/SystemFileRenaming.h"

namespace tessane {

struct JournalRecord {
  struct Item {
    FileMove move;
    std::filesystem::path temporary;
    FileIdentity identity;
  };
  Uuid batch;
  Date date;
  std::vector<Item> items;

  std::string encode() const;
  static std::optional<JournalRecord> decode(std::string_view json);
};

class BatchJournal {
 public:
  // Records the batch durably; fails (and leaves nothing behind) when it can't be written or a
  // source has vanished.
  static Result<BatchJournal> begin(const std::filesystem::path& folder, const AppliedBatch& batch,
                                    SystemFileRenaming& fs);
  // The same with the files' identities already known, one per move.
  static Result<BatchJournal> begin(const std::filesystem::path& folder, const AppliedBatch& batch,
                                    const std::vector<FileIdentity>& identities);

  BatchJournal(BatchJournal&& other) noexcept;
  BatchJournal& operator=(BatchJournal&& other) noexcept;
  BatchJournal(const BatchJournal&) = delete;
  BatchJournal& operator=(const BatchJournal&) = delete;
  // Releases the lock; the file stays unless finish() was called.
  ~BatchJournal();

  // Removes the journal for good.
  std::optional<IOError> finish();

  const std::filesystem::path& file() const noexcept { return file_; }

  // The journal file of a batch.
  static std::filesystem::path fileFor(const std::filesystem::path& folder, const Uuid& batch);

 private:
  BatchJournal(std::filesystem::path file, int fd) : file_(std::move(file)), fd_(fd) {}
  std::filesystem::path file_;
  int fd_ = -1;
};

}  // namespace tessane
