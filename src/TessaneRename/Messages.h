// The texts users read about the workflow, made in one place so that every front end says the
// same thing and the interface's translations reach all of them. Each goes through
// QCoreApplication::translate (context "Messages"); with no translation installed the English
// text is returned. Names are shown in curly quotes, with bytes that are not UTF-8 as U+FFFD.
// Counts say "1 file renamed" and "2 files renamed": the singular is for one alone.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "RenameEngine/NameCheck.h"
#include "RenameEngine/OperationIssue.h"
#include "RenameEngine/Preset.h"
#include "RenameEngine/RenamePreview.h"
#include "RenameIO/CrashRecovery.h"
#include "RenameIO/PresetStore.h"
#include "RenameIO/SafeRenameError.h"
#include "TessaneRename/BatchRunner.h"
#include "TessaneRename/RenamePlan.h"
#include "TessaneRename/Shoot.h"

namespace tessane::Messages {

// “name”, the name displayable.
std::string quoted(std::string_view name);

// A name's problem and a preview row's warning; `missingText` is what a missing value is replaced
// with (the "Text for missing data" setting), named in the missing-value warning.
std::string of(const NameError& error);
std::string of(const OperationIssue& issue, std::string_view missingText = {});
std::string of(const PreviewWarning& warning, std::string_view missingText = {});
// A preset file that can't be used, with the decoder's reason when there is one.
std::string of(const PresetError& error);
std::string of(const PresetStore::Failure& failure);  // "“x.tessanepreset”: …"

// "Couldn’t open “/photos/card”: No such file or directory".
std::string of(const IOError& error);
std::string of(const SafeRenameError& error);
std::string of(const BatchRunner::Failure& failure);
std::string of(const PlanProblem& problem);
std::string of(const ShootProblem& problem);
std::string of(const ShootNotice& notice);
// What the crash journal's recovery did, in a few lines; empty when there was nothing to do.
std::string of(const RecoveryReport& report);

// The folder model's own.
std::string dropSomething();  // nothing usable was opened
std::string folderUnreadable(const std::filesystem::path& folder);
std::string folderAccessPrompt(const std::filesystem::path& folder);
std::string nothingToRename();
std::string fixErrorsFirst();
std::string stillReading();                     // Rename waits for the shooting data
std::string filesToRename(std::int64_t count);  // what Rename will do, for its button
// Some shots of the batch leave a file out; the one-click fix.
std::string shotsSplit(std::int64_t count);
std::string nothingToUndo();
std::string alreadyOriginalNames();
std::string addFolderToGoBack();
std::string historyNotSaved();  // the batch was made, its record could not be written
std::string foldersSelected(std::int64_t count);
std::string notABodyTable(const std::filesystem::path& file);
// The preset library's: "Couldn’t save the preset “Beach”: Permission denied", with the system's
// reason in the interface's language, and a preset that couldn't go to the Trash.
std::string presetNotSaved(std::string_view name, const IOError& error);
std::string presetNotTrashed(std::string_view name, std::string_view reason);

// The clock-sync card: "Z6 clock: +0:02:00", or "Z6 was already in time", for the body shown
// as `body` (its tag, else its key); and the note under it.
std::string clockSynced(std::string_view body, double offset);
std::string clockSyncNote();

// Toasts after a batch.
std::string filesRenamed(std::int64_t count);
std::string filesBackToPrevious(std::int64_t count);
std::string filesBackToOriginal(std::int64_t count);
std::string noFileChanged();
std::string someFilesStuck();

// The update check.
std::string updateAvailable(std::string_view version, std::string_view current);
std::string upToDate(std::string_view current);
std::string updateCheckFailed(std::string_view reason);  // "Couldn’t check for updates: …"
std::string updateServerTooSlow();
std::string updateFeedUnreadable();
std::string updateFeedNotSigned();  // not signed with the key this build trusts

}  // namespace tessane::Messages
