// Putting back the batches that a killed process or a power cut left half done.
//
//   recoverJournals: at start-up (of the application or the command-line tool), every journal
//     left in the journal folder whose batch is not running (its lock is free) is read and its
//     batch put back to its original names. Each file is found by its identity among the three
//     names it can have (temporary, destination, source; a temporary name is the batch's own, so
//     a file found there is taken as the batch's even when the volume gives new inode numbers
//     after a remount). Files at a destination are first parked under their temporary names, then
//     every parked file goes back to its source, always by exclusive renames: a name taken by
//     something else is never overwritten. The journal is removed once every file is back; when
//     some file can't be put back (it is missing, its original name is taken, the disk is not
//     there), the journal stays so that the next start tries again, and the report says which.
//     Of several journals the newest batch goes back first.
//   restoreTemporaryNames: the way back without a journal. Every entry of a folder (as
//     SystemFileRenaming::list gives it) whose name is a temporary name of a batch that is not
//     running goes back to the name it carries, when that name is free and was not cut to fit.
//     Meant for after recoverJournals, when a folder is opened. A folder that can't be listed
//     restores nothing.
//
// Recovery is itself safe to interrupt: a file is always at one of its three names, and the next
// run takes it from there.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "RenameEngine/Uuid.h"
#include "RenameIO/FileMove.h"
#include "RenameIO/SystemFileRenaming.h"

namespace tessane {

struct RecoveredBatch {
  Uuid batch;
  std::size_t putBack = 0;      // files moved back to their original names
  std::size_t alreadyHome = 0;  // files that had not moved yet
  // Files not put back: from where each is (empty when it could not be found) to where it belongs.
  std::vector<FileMove> notPutBack;
  bool journalKept = false;
};

struct RecoveryReport {
  std::vector<RecoveredBatch> batches;
  std::vector<std::filesystem::path> unreadableJournals;  // left in place, for a person to look at

  bool empty() const { return batches.empty() && unreadableJournals.empty(); }
};

namespace CrashRecovery {

RecoveryReport recoverJournals(const std::filesystem::path& journalFolder, SystemFileRenaming& fs);

// Moves found under temporary names back, from -> to.
std::vector<FileMove> restoreTemporaryNames(const std::filesystem::path& folder,
                                            const std::filesystem::path& journalFolder,
                                            SystemFileRenaming& fs);

}  // namespace CrashRecovery
}  // namespace tessane
