// Runs a batch the way both the application and the command-line tool must: through the safe
// renamer, with the crash journal written before the first move, the batch recorded in the
// history, the camera's names remembered in the files where the setting allows, and the journal
// removed only once the history file holds the batch (or the batch was completely rolled back).
//
// A batch that strands files keeps its journal, so the next start tries once more to put them
// back; the moves it made are recorded in the history all the same, so that they can be gone back
// from there too. When the history can't be saved (a full disk), the journal is kept too and the
// outcome says so: the next start then puts the files back, since nothing else could undo them.
//
// run and goBack do it all on the caller's thread, which must own the history. A window, whose
// history lives on the main thread, splits the same steps: apply (any thread: the moves, the
// journal, the remembered names), record (the history's thread: the entry), settle (any thread:
// waits for the history's save, then drops the journal if the file holds the batch).
#pragma once

#include <filesystem>
#include <future>
#include <optional>
#include <vector>

#include "RenameIO/AppliedBatch.h"
#include "RenameIO/BatchJournal.h"
#include "RenameIO/SafeRenameError.h"
#include "RenameIO/SafeRenamer.h"
#include "RenameIO/SystemFileRenaming.h"
#include "TessaneRename/RenameHistory.h"

namespace tessane {
enum class OriginalNames;
}

namespace tessane::BatchRunner {

struct Done {
  AppliedBatch batch;
  bool historySaved = true;  // false: the journal was kept, see above
};

struct Failure {
  enum class Kind { renamer, unknownEntry, alreadyReverted };
  Kind kind = Kind::renamer;
  SafeRenameError error;  // renamer: what the safe renamer refused or could not finish
};

// A batch applied but not yet recorded. Move-only: it holds the batch's journal.
struct Applied {
  Result<AppliedBatch, SafeRenameError> result = SafeRenameError::failed({}, {}, std::nullopt);
  std::vector<FileMove> toRecord;  // what the history must hold: every move, or those left made
  std::optional<BatchJournal> journal;
  std::vector<Uuid> revertedEntries;  // going back: the entries to mark reverted
};

Applied apply(const std::vector<FileMove>& moves, Date date, SystemFileRenaming& fs,
              const std::filesystem::path& journalFolder,
              std::optional<OriginalNames> keepOriginals = std::nullopt);
// The moves back from a chain of entries, newest first, as one batch (the chain looked up on the
// history's thread: RenameHistory::goingBackChain).
Applied applyGoingBack(const std::vector<RenameHistory::Entry>& chain, Date date,
                       SystemFileRenaming& fs, const std::filesystem::path& journalFolder);
// On the history's thread: the entry added (or those gone back from marked reverted); the save
// that must land.
std::shared_future<bool> record(const Applied& applied, RenameHistory::Kind kind, Date date,
                                RenameHistory& history);
// Any thread: waits for the save, finishes the journal when it landed, and gives the outcome.
Result<Done, Failure> settle(Applied applied, const std::shared_future<bool>& saved);

// Applies `moves` and records them as an entry of `kind`. With `keepOriginals`, each file's name
// before the move is remembered in it where the setting allows (a name it already remembers
// stays).
Result<Done, Failure> run(const std::vector<FileMove>& moves, RenameHistory::Kind kind, Date date,
                          SystemFileRenaming& fs, RenameHistory& history,
                          const std::filesystem::path& journalFolder,
                          std::optional<OriginalNames> keepOriginals = std::nullopt);

// Goes back from a history entry, through the later entries in its way (goingBackChain): their
// moves reversed, newest first, as one batch, then every one of them is marked reverted. The going
// back is not itself recorded as a new entry. Refused for an id the history doesn't hold and for
// an entry already gone back from.
Result<Done, Failure> goBack(const Uuid& entry, Date date, SystemFileRenaming& fs,
                             RenameHistory& history, const std::filesystem::path& journalFolder);

}  // namespace tessane::BatchRunner
