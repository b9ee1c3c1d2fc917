// Runs a batch the way both the application and the command-line tool must: through the safe
// renamer, with the crash journal written before the first move, the batch recorded in the
// history, and the journal removed only once the history file holds the batch (or the batch was
// completely rolled back). A batch that strands files keeps its journal, so the next start tries
// once more to put them back.
#pragma once

#include <filesystem>
#include <vector>

#include "RenameIO/AppliedBatch.h"
#include "RenameIO/SafeRenameError.h"
#include "RenameIO/SafeRenamer.h"
#include "RenameIO/SystemFileRenaming.h"
#include "TessaneRename/RenameHistory.h"

namespace tessane::BatchRunner {

Result<AppliedBatch, SafeRenameError> run(const std::vector<FileMove>& moves,
                                          RenameHistory::Kind kind, Date date,
                                          SystemFileRenaming& fs, RenameHistory& history,
                                          const std::filesystem::path& journalFolder);

// Goes back from a history entry: its moves reversed, as one batch, then the entry is marked
// reverted. The going back is not itself recorded as a new entry.
Result<AppliedBatch, SafeRenameError> goBack(const Uuid& entry, Date date, SystemFileRenaming& fs,
                                             RenameHistory& history,
                                             const std::filesystem::path& journalFolder);

}  // namespace tessane::BatchRunner
