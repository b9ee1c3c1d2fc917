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

Applied apply(const std::vector<FileMove>& moves, Date date, SystemFileRenaming& fs,
              const std::filesystem::path& journalFolder,
              std::optional<OriginalNames> keepOriginals) {
  Applied applied;
  applied.result = applyJournaled(moves, date, fs, journalFolder, applied.journal);
  if (!applied.result) {
    // What could not be put back stays recorded, so that it can be gone back from later.
    applied.toRecord = movesLeftMade(applied.result.error().stranded);
    return applied;
  }
  applied.toRecord = moves;
  // Each file keeps the name it had before its first rename, where the setting allows.
  if (!moves.empty() && keepOriginals && *keepOriginals != OriginalNames::never) {
    OriginalName::rememberAll(moves, *keepOriginals == OriginalNames::macDisksOnly);
  }
  return applied;
}

Applied applyGoingBack(const std::vector<RenameHistory::Entry>& chain, Date date,
                       SystemFileRenaming& fs, const std::filesystem::path& journalFolder) {
  Applied applied;
  const std::vector<FileMove> moves = RenameHistory::reversal(chain);
  applied.result = applyJournaled(moves, date, fs, journalFolder, applied.journal);
  if (applied.result) {
    for (const RenameHistory::Entry& e : chain)
      applied.revertedEntries.push_back(e.id);
  }
  return applied;
}

std::shared_future<bool> record(const Applied& applied, RenameHistory::Kind kind, Date date,
                                RenameHistory& history) {
  if (!applied.revertedEntries.empty()) {
    history.markReverted(applied.revertedEntries);
  } else if (!applied.toRecord.empty()) {
    history.add(kind, applied.toRecord, date);
  } else {
    std::promise<bool> nothing;
    nothing.set_value(true);
    return nothing.get_future().share();
  }
  return history.lastSave();
}

Result<Done, Failure> settle(Applied applied, const std::shared_future<bool>& saved) {
  const bool historySaved = !saved.valid() || saved.get();
  if (!applied.result) return renamerFailure(std::move(applied.result.error()));
  if (applied.journal && historySaved) (void)applied.journal->finish();
  return Done{std::move(applied.result.value()), historySaved};
}

Result<Done, Failure> run(const std::vector<FileMove>& moves, RenameHistory::Kind kind, Date date,
                          SystemFileRenaming& fs, RenameHistory& history,
                          const std::filesystem::path& journalFolder,
                          std::optional<OriginalNames> keepOriginals) {
  Applied applied = apply(moves, date, fs, journalFolder, keepOriginals);
  const std::shared_future<bool> saved = record(applied, kind, date, history);
  return settle(std::move(applied), saved);
}

Result<Done, Failure> goBack(const Uuid& entry, Date date, SystemFileRenaming& fs,
                             RenameHistory& history, const std::filesystem::path& journalFolder) {
  const RenameHistory::Entry* found = nullptr;
  for (const RenameHistory::Entry& e : history.entries()) {
    if (e.id == entry) found = &e;
  }
  if (found == nullptr) return Failure{Failure::Kind::unknownEntry, {}};
  if (found->isReverted) return Failure{Failure::Kind::alreadyReverted, {}};
  Applied applied = applyGoingBack(history.goingBackChain(entry), date, fs, journalFolder);
  const std::shared_future<bool> saved =
      record(applied, RenameHistory::Kind::rename, date, history);
  return settle(std::move(applied), saved);
}

}  // namespace tessane::BatchRunner
