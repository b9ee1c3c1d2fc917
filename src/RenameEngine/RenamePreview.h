// The plan of a batch before anything touches the disk: for every file its new name, the errors
// that forbid the rename and the warnings to show, and which files actually change.
//
// The preview orders the batch, groups twins, runs the rule stack over the primaries, gives the
// twins their primary's base, then finds clashes within the batch and with each folder's other
// names (by name key: IMG_1.JPG and img_1.jpg clash). Files of the batch never count against
// themselves, so swaps plan cleanly. It never fails as a whole: every problem is attached to
// its row. This runs on every keystroke in the name field: its cost grows as n log n.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "NameCheck.h"
#include "RenameSubject.h"
#include "RuleStack.h"
#include "Twins.h"

namespace tessane {

enum class BatchOrder { captureTime, asGiven, name };
enum class DuplicatePolicy { markError, addSuffix };
enum class PreviewStatus { unchanged, ok, warning, error };

std::string_view rawValue(BatchOrder order);
std::optional<BatchOrder> batchOrderFromRawValue(std::string_view text);
std::string_view rawValue(DuplicatePolicy policy);
std::optional<DuplicatePolicy> duplicatePolicyFromRawValue(std::string_view text);
std::string_view caseName(PreviewStatus status);

struct PreviewWarning {
  enum class Kind { rule, incompleteTwins, folderNotListed };
  Kind kind = Kind::rule;
  std::optional<RuleIssue> issue;  // rule
  std::vector<std::string> twins;  // incompleteTwins: the names outside the batch

  friend bool operator==(const PreviewWarning&, const PreviewWarning&) = default;
};

struct PlannedRename {
  std::size_t subjectIndex = 0;  // the subject's place in the batch as handed in
  FileName newName;
  std::size_t primaryIndex = 0;  // the row (in items) of its twin group's primary
  std::vector<NameError> errors;
  std::vector<PreviewWarning> warnings;
  std::vector<RuleStep> steps;  // the rules' trace; for a twin, see its primary's row
  bool changes = false;         // the new name differs from the current one (case counts)
  PreviewStatus status = PreviewStatus::unchanged;
};

struct RenamePreview {
  std::vector<PlannedRename> items;       // in batch order
  std::vector<std::size_t> changedFiles;  // rows that change and have no error

  bool hasErrors() const;
};

// What the preview knows of a folder holding files of the batch.
struct FolderContents {
  bool listed = true;              // false: its names could not be read
  std::vector<std::string> names;  // every entry's name, as FolderListing::names gives them
  std::vector<std::string> files;  // its regular files' names, for twins outside the batch
  // Why names can't change here, as an errno value (EROFS, EACCES); 0 when they may. And the
  // files that can't take a new name in a folder where others can (by name, with the reason).
  int refusal = 0;
  std::unordered_map<std::string, int> refusedFiles;
};

struct PreviewRequest {
  std::vector<RenameSubject> subjects;  // the batch, in the order handed in
  RuleStack stack;
  TwinOptions twins;
  BatchOrder order = BatchOrder::captureTime;
  DuplicatePolicy duplicates = DuplicatePolicy::markError;
  std::unordered_map<std::string, FolderContents> folders;  // by folder path; absent: unlisted
  NamingContext naming = NamingContext::systemDefault();
};

// The batch order: a permutation of the subjects' indices.
std::vector<std::size_t> orderBatch(const std::vector<RenameSubject>& subjects, BatchOrder order);

// What a preview needs that doesn't depend on the rules: each file's parsed name and key, its
// folder, the batch order, the twin groups, the names already taken in each folder and the twins
// outside the batch. The application keeps one while the user edits the rules, so that an edit
// rebuilds only what the rules change. Move-only; immutable once made, so one may be shared by
// several threads building previews with different rules.
//
// Requires: `folders` keys equal the subjects' folder paths byte for byte (`RenameSubject::folder`
// as given); a folder without an entry counts as unlisted. The subjects are shared, not copied.
class PreparedBatch {
 public:
  PreparedBatch(std::shared_ptr<const std::vector<RenameSubject>> subjects,
                const TwinOptions& twins, BatchOrder order,
                const std::unordered_map<std::string, FolderContents>& folders);
  ~PreparedBatch();
  PreparedBatch(PreparedBatch&&) noexcept;
  PreparedBatch& operator=(PreparedBatch&&) noexcept;

  const std::vector<RenameSubject>& subjects() const;
  // The batch order: the subject of each row of every preview built over this batch.
  const std::vector<std::size_t>& order() const;

  struct Data;

 private:
  std::unique_ptr<Data> d_;
  friend RenamePreview buildPreview(const PreparedBatch&, const CompiledRuleStack&,
                                    const NamingContext&, DuplicatePolicy);
};

// The preview of a batch. Pure: it reads its arguments only, so it may run on any thread, several
// at once (it spreads one batch over the cores itself). Requires: `request.folders` keys equal
// the subjects' folder paths byte for byte; a folder without an entry counts as unlisted (its
// rows are warned and no name already in it is checked). Never fails as a whole.
RenamePreview buildPreview(const PreviewRequest& request);
// The same with a stack compiled beforehand (the application keeps it while only files change).
RenamePreview buildPreview(const PreviewRequest& request, const CompiledRuleStack& stack);
// The same over a batch prepared beforehand: what runs on an edit of the rules.
RenamePreview buildPreview(const PreparedBatch& batch, const CompiledRuleStack& stack,
                           const NamingContext& naming, DuplicatePolicy duplicates);

}  // namespace tessane
