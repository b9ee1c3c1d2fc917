#include "BatchRunner.h"

#include <optional>
#include <utility>

#include "RenameIO/BatchJournal.h"
#include "RenameIO/OriginalName.h"
#include "TessaneRename/Preferences.h"

namespace tessane::BatchRunner {
namespace {

Result<AppliedBatch, SafeRenameError> applyJournaled(const std::vector<FileMove>& moves, Date date,
                                                     SystemFileRenaming& fs,
                                                     const std::filesystem::path& journalFolder,
                                                     std::optional<BatchJournal>& journal) {
  ApplyHooks hooks;
  hooks.beforeFirstMove = [&](const AppliedBatch& batch, const std::vector<std::filesystem::path>&,
                              const std::vector<FileIdentity>& identities) {
    Result<BatchJournal> begun = BatchJournal::begin(journalFolder, batch, identities);
    if (!begun) return std::optional<IOError>(begun.error());
    journal.emplace(std::move(begun).value());
    return std::optional<IOError>();
  };
  hooks.afterRollback = [&](const std::vector<FileMove>& stranded) {
    if (stranded.empty() && journal) (void)journal->finish();
  };
  return SafeRenamer::apply(moves, fs, date, hooks);
}

// The moves a failed batch left made: every file the rollback could not put back, from the name
// it belongs at to the one it is at (its new name, or a temporary one).
std::vector<FileMove> movesLeftMade(const std::vector<FileMove>& stranded) {
  std::vector<FileMove> made;
  for (const FileMove& s : stranded) {
    if (!s.source.empty()) made.push_back(FileMove{s.destination, s.source});
  }
  return made;
}

Failure renamerFailure(SafeRenameError error) {
  return Failure{Failure::Kind::renamer, std::move(error)};
}

}  // namespace

Result<Done, Failure> run(const std::vector<FileMove>& moves, RenameHistory::Kind kind, Date date,
                          SystemFileRenaming& fs, RenameHistory& history,
                          const std::filesystem::path& journalFolder,
                          std::optional<OriginalNames> keepOriginals) {
  std::optional<BatchJournal> journal;
  Result<AppliedBatch, SafeRenameError> result =
      applyJournaled(moves, date, fs, journalFolder, journal);
  if (!result) {
    // What could not be put back stays recorded, so that it can be gone back from later.
    const std::vector<FileMove> made = movesLeftMade(result.error().stranded);
    if (!made.empty()) {
      history.add(kind, made, date);
      (void)history.waitForSaves();
    }
    return renamerFailure(std::move(result.error()));
  }
  Done done{std::move(result.value()), true};
  if (moves.empty()) return done;
  // Each file keeps the name it had before its first rename, where the setting allows.
  if (keepOriginals && *keepOriginals != OriginalNames::never) {
    OriginalName::rememberAll(moves, *keepOriginals == OriginalNames::macDisksOnly);
  }
  history.add(kind, moves, date);
  done.historySaved = history.waitForSaves();
  if (journal && done.historySaved) (void)journal->finish();
  return done;
}

Result<Done, Failure> goBack(const Uuid& entry, Date date, SystemFileRenaming& fs,
                             RenameHistory& history, const std::filesystem::path& journalFolder) {
  const RenameHistory::Entry* found = nullptr;
  for (const RenameHistory::Entry& e : history.entries()) {
    if (e.id == entry) found = &e;
  }
  if (found == nullptr) return Failure{Failure::Kind::unknownEntry, {}};
  if (found->isReverted) return Failure{Failure::Kind::alreadyReverted, {}};
  const std::vector<FileMove> moves = RenameHistory::reversal(*found);
  std::optional<BatchJournal> journal;
  Result<AppliedBatch, SafeRenameError> result =
      applyJournaled(moves, date, fs, journalFolder, journal);
  if (!result) return renamerFailure(std::move(result.error()));
  Done done{std::move(result.value()), true};
  history.markReverted(entry);
  done.historySaved = history.waitForSaves();
  if (journal && done.historySaved) (void)journal->finish();
  return done;
}

}  // namespace tessane::BatchRunner
