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
// Not safe to use from several threads at once on one history; the history belongs to the
// caller's thread.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "RenameIO/AppliedBatch.h"
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

// Applies `moves` and records them as an entry of `kind`. With `keepOriginals`, each file's name
// before the move is remembered in it where the setting allows (a name it already remembers
// stays).
Result<Done, Failure> run(const std::vector<FileMove>& moves, RenameHistory::Kind kind, Date date,
                          SystemFileRenaming& fs, RenameHistory& history,
                          const std::filesystem::path& journalFolder,
                          std::optional<OriginalNames> keepOriginals = std::nullopt);

// Goes back from a history entry: its moves reversed, as one batch, then the entry is marked
// reverted. The going back is not itself recorded as a new entry. Refused for an id the history
// doesn't hold and for an entry already gone back from.
Result<Done, Failure> goBack(const Uuid& entry, Date date, SystemFileRenaming& fs,
                             RenameHistory& history, const std::filesystem::path& journalFolder);

}  // namespace tessane::BatchRunner
