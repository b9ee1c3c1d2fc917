// One change in the rule stack: a pure function from a file name to a new file name.
//
// Base-name operations change the base and pass the extension through; setExtension and
// changeExtensionCase change the extension only. Operations never touch the disk and never
// throw: a problem is an OperationIssue beside a usable name. A missing anchor or block leaves the
// name as it is, without an issue.
//
// For a rule applied to many names, build a CompiledOperation once: it normalises the
// operation's texts and compiles its patterns a single time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "BlockedName.h"
#include "FileName.h"
#include "JsonCoding.h"
#include "OperationIssue.h"
#include "TextLocating.h"

namespace tessane {

enum class CaseStyle { upper, lower, title };

namespace op {
struct Insert {
  std::string text;
  InsertPosition at;
  friend bool operator==(const Insert&, const Insert&) = default;
};
struct DeleteBlock {
  BlockRef block;
  friend bool operator==(const DeleteBlock&, const DeleteBlock&) = default;
};
struct DeleteText {
  Anchor anchor;
  friend bool operator==(const DeleteText&, const DeleteText&) = default;
};
struct DeleteCharacters {
  std::int64_t from = 0;
  std::int64_t count = 0;
  friend bool operator==(const DeleteCharacters&, const DeleteCharacters&) = default;
};
struct DeleteBetween {
  Anchor start;
  Anchor end;
  bool inclusive = false;
  friend bool operator==(const DeleteBetween&, const DeleteBetween&) = default;
};
struct DeleteBefore {
  Anchor anchor;
  bool inclusive = false;
  friend bool operator==(const DeleteBefore&, const DeleteBefore&) = default;
};
struct DeleteAfter {
  Anchor anchor;
  bool inclusive = false;
  friend bool operator==(const DeleteAfter&, const DeleteAfter&) = default;
};
struct Replace {
  Anchor anchor;
  std::string with;
  friend bool operator==(const Replace&, const Replace&) = default;
};
struct ReplaceRegex {
  std::string pattern;
  std::string replacement;  // the JSON key is "template": "$0" the match, "$1"… its groups
  Occurrence occurrence = Occurrence::all;
  bool caseSensitive = true;
  friend bool operator==(const ReplaceRegex&, const ReplaceRegex&) = default;
};
struct ReplaceBlock {
  BlockRef block;
  std::string with;
  friend bool operator==(const ReplaceBlock&, const ReplaceBlock&) = default;
};
struct ReplaceBefore {
  Anchor anchor;
  std::string with;
  friend bool operator==(const ReplaceBefore&, const ReplaceBefore&) = default;
};
struct ReplaceAfter {
  Anchor anchor;
  std::string with;
  friend bool operator==(const ReplaceAfter&, const ReplaceAfter&) = default;
};
struct MoveBlock {
  BlockRef block;
  std::int64_t toIndex = 0;
  friend bool operator==(const MoveBlock&, const MoveBlock&) = default;
};
struct ChangeCase {
  CaseStyle style = CaseStyle::upper;
  friend bool operator==(const ChangeCase&, const ChangeCase&) = default;
};
struct CollapseWhitespace {
  friend bool operator==(const CollapseWhitespace&, const CollapseWhitespace&) = default;
};
struct RemoveAccents {
  friend bool operator==(const RemoveAccents&, const RemoveAccents&) = default;
};
struct RemoveInvalidCharacters {
  std::string replacement;
  friend bool operator==(const RemoveInvalidCharacters&, const RemoveInvalidCharacters&) = default;
};
struct Truncate {
  std::int64_t maxCharacters = 0;
  friend bool operator==(const Truncate&, const Truncate&) = default;
};
struct RemoveEmoji {
  friend bool operator==(const RemoveEmoji&, const RemoveEmoji&) = default;
};
struct SetExtension {
  std::string ext;
  friend bool operator==(const SetExtension&, const SetExtension&) = default;
};
struct ChangeExtensionCase {
  CaseStyle style = CaseStyle::upper;
  friend bool operator==(const ChangeExtensionCase&, const ChangeExtensionCase&) = default;
};
}  // namespace op

// The 21 operations, in their declaration order.
struct RenameOperation {
  using Value =
      std::variant<op::Insert, op::DeleteBlock, op::DeleteText, op::DeleteCharacters,
                   op::DeleteBetween, op::DeleteBefore, op::DeleteAfter, op::Replace,
                   op::ReplaceRegex, op::ReplaceBlock, op::ReplaceBefore, op::ReplaceAfter,
                   op::MoveBlock, op::ChangeCase, op::CollapseWhitespace, op::RemoveAccents,
                   op::RemoveInvalidCharacters, op::Truncate, op::RemoveEmoji, op::SetExtension,
                   op::ChangeExtensionCase>;
  Value value;

  // The case name: "insert", "deleteBlock", ...
  std::string_view caseName() const;
  // Whether it changes the extension (setExtension, changeExtensionCase) rather than the base.
  bool touchesExtension() const;

  friend bool operator==(const RenameOperation&, const RenameOperation&) = default;
};

// What the rule stack hands every operation.
struct OperationContext {
  std::shared_ptr<const SeparatorSet> separators;  // null means the default separators
  std::vector<BlockRef> protectedBlocks;           // locked by earlier protect rules

  const SeparatorSet& separatorSet() const {
    return separators ? *separators : SeparatorSet::defaults();
  }
};

struct OperationOutcome {
  FileName name;
  std::optional<OperationIssue> issue;

  friend bool operator==(const OperationOutcome&, const OperationOutcome&) = default;
};

struct PreparedOperation;  // internal: what CompiledOperation prepares once

// An operation made ready for many names. Immutable after construction; safe to share between
// threads.
class CompiledOperation {
 public:
  explicit CompiledOperation(RenameOperation operation);
  ~CompiledOperation();
  CompiledOperation(CompiledOperation&&) noexcept;
  CompiledOperation& operator=(CompiledOperation&&) noexcept;

  const RenameOperation& operation() const { return operation_; }
  OperationOutcome apply(const FileName& name, const OperationContext& context) const;
  // For an insert: inserts `text` instead of the operation's own text (a counter rule inserts
  // a different number into each name but finds its position once).
  OperationOutcome applyInserting(const FileName& name, const OperationContext& context,
                                  std::string_view text) const;

 private:
  OperationOutcome applyWithText(const FileName& name, const OperationContext& context,
                                 std::string_view text) const;

  RenameOperation operation_;
  std::unique_ptr<PreparedOperation> state_;
};

// One operation on one name (compiles it first; use CompiledOperation for many names).
OperationOutcome apply(const RenameOperation& operation, const FileName& name,
                       const OperationContext& context);

// JSON forms.
std::string_view caseName(CaseStyle style);
Json toJson(CaseStyle style);
Json toJson(const RenameOperation& operation);
Decoded<RenameOperation> decodeRenameOperation(const Json& value);

}  // namespace tessane
