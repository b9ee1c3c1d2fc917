// Carries out a batch of renames on disk without ever overwriting a file.
//
//   check: the whole batch is examined before anything moves (a missing source, a destination in
//     another folder, two moves to one name, a name taken by a file outside the batch). Names are
//     compared by their folder and their NameKey, so "IMG.jpg" and "img.JPG", or a composed and a
//     decomposed "é", are the same name. A destination that is itself a source of the batch is
//     allowed: that file moves away first. It is that source when it has the source's exact name
//     or is the same file (a volume that ignores case finds "IMG.jpg" under "img.jpg"); another
//     file whose name only shares the key is no source and is refused. Touches nothing. Whether a
//     destination is taken is asked of the file system by its exact name: on a case-sensitive disk
//     "IMG.jpg" beside "img.jpg" is no clash to the kernel, and the preview, which compares the
//     folder's names by key, is what keeps such names apart. A destination is in its source's
//     folder when both folders are spelled alike or, spelled otherwise, are one directory on disk
//     (SystemFileRenaming::identity of the folder): "d/x/../y.jpg" stays in "d" only if x is not a
//     link elsewhere. A source exists when SystemFileRenaming::identity finds it (lstat, as
//     fileExists), which also gives the crash journal each file's identity without asking twice.
//   apply: check, then two phases. Phase one parks every file under its temporary name (see
//     TemporaryName); phase two moves every file from there to its destination. Swaps, rotations
//     and case-only changes on case-insensitive volumes work because no file ever moves straight
//     onto a name another file of the batch still holds.
//
// When a move fails, every step done so far is undone from the last to the first. A file whose
// step back fails stays where it is (its earlier steps are skipped) and is reported in
// SafeRenameError::stranded, with where it is and where it belongs; every other file is back at
// its original name.
//
// Sources are used by the bytes of their names as given. Synchronous; no locks: safety against
// other programs comes from the exclusive rename of SystemFileRenaming.
//
// Threads: the functions keep no state of their own; they may run on several threads at once
// when the SystemFileRenaming they are handed may (LinuxFileRenaming may) and the batches touch
// different files. Nothing throws.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "RenameIO/AppliedBatch.h"
#include "RenameIO/FileMove.h"
#include "RenameIO/IOError.h"
#include "RenameIO/SafeRenameError.h"
#include "RenameIO/SystemFileRenaming.h"

namespace tessane {

// What the crash journal needs to hear from a batch. Both are optional.
struct ApplyHooks {
  // After the checks and before the first move, with the batch (id, date, moves), each move's
  // temporary location and the identity its source had at the checks. An error stops the batch
  // before anything moves: it fails with `failed`, nothing stranded, and that error as its cause.
  std::function<std::optional<IOError>(const AppliedBatch&,
                                       const std::vector<std::filesystem::path>& temporary,
                                       const std::vector<FileIdentity>& identities)>
      beforeFirstMove;
  // After a failure, once the rollback is over; `stranded` is what could not be put back.
  std::function<void(const std::vector<FileMove>& stranded)> afterRollback;
};

namespace SafeRenamer {

// The checks alone. Nothing when the batch may go ahead; else the first problem met, in batch
// order: sourceMissing, notSameFolder, duplicateDestination, destinationExists, or `failed`
// (nothing stranded, the cause a `find` error) when the disk couldn't tell whether a source, a
// destination or a folder is there. Reads the disk (a listing per folder, lookups by name), never
// changes it. Requires: absolute paths or paths relative to one working folder throughout.
std::optional<SafeRenameError> check(std::span<const FileMove> moves, SystemFileRenaming& fs);

// The checks, then the batch. On success: every file at its destination, and the batch (a new
// UUID, `date`, the moves as given). On failure: what check refuses (nothing moved), or `failed`
// with the cause of the first failed move (or of beforeFirstMove) and the files the rollback
// couldn't put back. An empty batch succeeds and touches nothing. Requires what check requires.
Result<AppliedBatch, SafeRenameError> apply(std::span<const FileMove> moves, SystemFileRenaming& fs,
                                            Date date, const ApplyHooks& hooks = {});

// Where a move's file is parked during a batch whose UUID starts with `tag`: the source's folder
// and a TemporaryName that carries `index` and the source's name. Pure.
std::filesystem::path temporaryLocation(const FileMove& move, std::string_view tag,
                                        std::size_t index);

// The folder of a file, in the standard form that "same folder" compares exactly: lexically
// normal, no trailing slash, "." for a bare name. Pure; never touches the disk.
std::string folderOf(const std::filesystem::path& file);

}  // namespace SafeRenamer
}  // namespace tessane
