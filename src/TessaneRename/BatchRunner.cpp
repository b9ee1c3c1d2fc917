#include "BatchRunner.h"

#include <optional>
#include <utility>

#include "RenameIO/BatchJournal.h"

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

}  // namespace

Result<AppliedBatch, SafeRenameError> run(const std::vector<FileMove>& moves,
                                          RenameHistory::Kind kind, Date date,
                                          SystemFileRenaming& fs, RenameHistory& history,
                                          const std::filesystem::path& journalFolder) {
  std::optional<BatchJournal> journal;
  Result<AppliedBatch, SafeRenameError> result =
      applyJournaled(moves, date, fs, journalFolder, journal);
  if (result && !moves.empty()) {
    history.add(kind, moves, date);
    history.waitForSaves();
    if (journal) (void)journal->finish();
  }
  return result;
}

Result<AppliedBatch, SafeRenameError> goBack(const Uuid& entry, Date date, SystemFileRenaming& fs,
                                             RenameHistory& history,
                                             const std::filesystem::path& journalFolder) {
  const RenameHistory::Entry* found = nullptr;
  for (const RenameHistory::Entry& e : history.entries()) {
    if (e.id == entry) found = &e;
  }
  if (found == nullptr) return SafeRenameError::failed({}, {}, std::nullopt);
  const std::vector<FileMove> moves = RenameHistory::reversal(*found);
  std::optional<BatchJournal> journal;
  Result<AppliedBatch, SafeRenameError> result =
      applyJournaled(moves, date, fs, journalFolder, journal);
  if (result) {
    history.markReverted(entry);
    history.waitForSaves();
    if (journal) (void)journal->finish();
  }
  return result;
}

}  // namespace tessane::BatchRunner
