// The rename workflow that every front end shares, from the folders and the rules a user gives
// to the moves the safe renamer makes: the settings resolved in one place, the rule stack (a
// preset, a template on top of it, the extension case the user chose below it), the shoot
// gathered and read, the preview built, and the moves taken from it. Going back (Undo, a given
// history entry, the original names) is planned here too.
//
// Problems are values (`PlanProblem`); `Messages` turns them into the texts users read. Nothing
// here writes to a terminal or opens a window. Functions without a stop token are quick; those
// with one read files and may be called from any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

#include "RenameEngine/RenamePreview.h"
#include "RenameIO/FileMove.h"
#include "RenameIO/PresetStore.h"
#include "TessaneRename/Preferences.h"
#include "TessaneRename/RenameHistory.h"
#include "TessaneRename/Shoot.h"

namespace tessane {

class BodyTable;

// What a rename is asked for; every field left unset takes the user's setting.
struct RenameOptions {
  std::string templateText;  // on top of the preset's rules, as a format rule
  std::string preset;        // a preset's name, or a preset file
  std::optional<std::int64_t> counterStart;
  std::optional<std::int64_t> counterStep;
  std::optional<std::int64_t> counterDigits;
  std::optional<CounterReset> counterReset;
  std::optional<BatchOrder> order;
  std::optional<DuplicatePolicy> duplicates;
  bool keepTwinsTogether = true;
  std::optional<std::set<TwinKind>> twinKinds;
  std::string timeZone;  // a zone's id; empty: the system's
  std::optional<std::string> missingText;
  std::optional<OriginalNames> originalNames;
};

// The options with the settings filled in: everything a preview and a batch are made with.
struct RenameSettings {
  Counter counter;  // for a template given as text
  BatchOrder order = BatchOrder::captureTime;
  DuplicatePolicy duplicates = DuplicatePolicy::markError;
  TwinOptions twins;
  NamingContext naming;
  ExtensionCase extensionCase = ExtensionCase::keep;
  OriginalNames originalNames = OriginalNames::macDisksOnly;
};

struct PlanProblem {
  enum class Kind {
    noRules,         // neither a template nor a preset
    unknownZone,     // `text`: the zone asked for
    presetListing,   // the presets folder can't be read (`io`)
    presetNotFound,  // `text`: the name asked for
    presetUnreadable,
    shoot,            // `shoot` says what
    nothingToRename,  // no file would change
    previewErrors,    // the preview has errors
    noOriginalNames,  // every file already has its original name, or none is known
    unknownEntry,     // `text`: no history entry has this id
    ambiguousEntry,   // `text`: the start of more than one entry's id
    alreadyReverted,  // the entry was gone back from already
  };
  Kind kind = Kind::noRules;
  std::string text;
  std::optional<PresetStore::Failure> preset;
  IOError io;
  std::optional<ShootProblem> shoot;
};

template <typename T>
using Planned = Result<T, PlanProblem>;

// The settings for `options`, read through `preferences` where an option is unset.
Planned<RenameSettings> resolveSettings(const RenameOptions& options,
                                        const Preferences& preferences);

// The rules: the preset's, a format rule from the template on top, and, when the settings ask
// for one, a rule at the bottom that gives every extension the chosen case.
Planned<RuleStack> stackFor(const RenameOptions& options, const RenameSettings& settings,
                            const PresetStore& presets);

// `stack` with the rules the settings add: one at the bottom that gives every extension the case
// the user chose, when they chose one.
RuleStack withSettingsRules(RuleStack stack, const RenameSettings& settings);

// A preview of the files, ready to be shown or carried out.
struct RenamePlan {
  Shoot shoot;
  RenamePreview preview;
  RenameSettings settings;
  std::vector<ShootNotice> notices;
};

struct PlanRequest {
  std::vector<std::filesystem::path> paths;
  RuleStack stack;
  RenameSettings settings;
  const CameraBodies* bodies = nullptr;
  std::function<void(std::size_t done, std::size_t total)> progress;
  std::stop_token stop;
};

// Gathers and reads the files (only what the rules name), then builds the preview.
Planned<RenamePlan> planRename(const PlanRequest& request);

// The preview's moves of files that change and have no error, between absolute paths (each
// folder resolved once), as the history keeps them. `paths` are the subjects' paths; `inScope`,
// when given, holds a flag per subject and limits the moves to the flagged ones.
std::vector<FileMove> movesOf(const RenamePreview& preview,
                              const std::vector<std::filesystem::path>& paths,
                              const std::vector<bool>* inScope = nullptr);

// The same for a plan: each move between the names in the subject's resolved folder, the folder
// the preview compared names in.
std::vector<FileMove> movesOf(const RenamePlan& plan);

// Each file of the shoot to its remembered original name, for those that have one and don't
// bear it; noOriginalNames when none is left.
Planned<std::vector<FileMove>> originalNameMoves(const Shoot& shoot);

// The history entry an id names: the whole id or its start (at least 4 characters), ignoring case.
// Refused when it names none or several, or when the entry was already gone back from.
Planned<RenameHistory::Entry> entryToRevert(const RenameHistory& history, std::string_view id);
// The newest entry not yet reverted (Undo); nullopt when there is none.
std::optional<RenameHistory::Entry> entryToUndo(const RenameHistory& history);

}  // namespace tessane
