// The rule stack: the ordered rules the user builds, and the separators that cut names into
// blocks. Applied to a batch, it gives each file its new name, the issues met, and the trace of
// which rules changed it.
//
// The stack runs rule by rule over the whole batch, files in the order given: each rule has its
// own counter state, so the same files in the same order always get the same names, and a
// counter counts only the files its rule's conditions select. No rule ever stops the stack: an
// issue is recorded and the next rule goes on from the name as it stands.
//
// Threads: RuleStack and the result types are plain values. A CompiledRuleStack is immutable
// once made, so one may be shared by any number of threads; the free functions are pure and
// may run anywhere. Nothing here fails as a whole: problems are RuleIssues on their files, and a
// stack that can't be decoded is a Decoded<RuleStack> with its reason. Nothing throws.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <unicode/uversion.h>

#include "FileName.h"
#include "JsonCoding.h"
#include "OperationIssue.h"
#include "RenameSubject.h"
#include "Rule.h"
#include "Template.h"
#include "Uuid.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane {

struct RuleStack {
  std::vector<std::string> separators = BlockedName::defaultSeparators();
  std::vector<Rule> rules;

  friend bool operator==(const RuleStack&, const RuleStack&) = default;
};

struct RuleStep {
  Uuid ruleID;
  std::string name;  // the base name after the rule
  bool changed = false;
  friend bool operator==(const RuleStep&, const RuleStep&) = default;
};

struct RuleIssue {
  Uuid ruleID;
  OperationIssue issue;
  friend bool operator==(const RuleIssue&, const RuleIssue&) = default;
};

struct RuleResult {
  std::size_t subjectIndex = 0;  // the subject's place in the batch it was computed for
  FileName newName;
  std::vector<RuleIssue> issues;         // in the order raised
  std::vector<RuleStep> changedBy;       // one step per rule that ran on the file
  std::vector<Uuid> changedExtensionBy;  // the rules whose operation changed the extension
};

// What naming needs beyond the files and the rules.
struct NamingContext {
  std::shared_ptr<const icu::TimeZone> zone;  // dates are formatted and days cut here
  std::string missingText;                    // put in place of a value a file lacks
  std::string datePattern = "yyyy-MM-dd";     // a date variable written without a format

  // The system's time zone and no text for missing values.
  static NamingContext systemDefault();
  // A named zone ("Europe/Rome"); nullopt when ICU does not know it.
  static std::optional<NamingContext> inZone(std::string_view zoneID, std::string missingText = {});
};

// A stack made ready for many runs: operations compiled, templates parsed, conditions prepared.
// Immutable once made: apply may run from several threads at once.
class CompiledRuleStack {
 public:
  explicit CompiledRuleStack(const RuleStack& stack);
  ~CompiledRuleStack();
  CompiledRuleStack(CompiledRuleStack&&) noexcept;
  CompiledRuleStack& operator=(CompiledRuleStack&&) noexcept;

  // One result per subject, in the subjects' order; every rule runs over every subject its
  // conditions select. Requires: `context.zone` set (NamingContext's factories set it).
  std::vector<RuleResult> apply(const std::vector<RenameSubject>& subjects,
                                const NamingContext& context) const;
  // The same over subjects held elsewhere; subjectIndex is the place in `subjects`.
  std::vector<RuleResult> apply(const std::vector<const RenameSubject*>& subjects,
                                const NamingContext& context) const;

  // The new extension of a twin that takes the new base of its primary (see Twins.h): the
  // extension changes of the stack (setExtension, changeExtensionCase) whose conditions hold for
  // the twin itself, applied to its own extension. A twin whose extension begins with its
  // primary's ("IMG_1.CR2.xmp" beside "IMG_1.CR2") keeps that part in step with the primary's new
  // extension, and the changes act on the rest.
  std::string twinExtension(const RenameSubject& twin, std::string_view primaryExtension,
                            std::string_view primaryNewExtension) const;

 private:
  struct Compiled;
  std::unique_ptr<Compiled> compiled_;
};

std::vector<RuleResult> applyRuleStack(const RuleStack& stack,
                                       const std::vector<RenameSubject>& subjects,
                                       const NamingContext& context);
// The variables the stack's enabled format rules name: what has to be read from the files.
std::set<TemplateVariable> variablesUsed(const RuleStack& stack);

// The stack for one file alone (the inspector): counters start afresh.
RuleResult applyRuleStack(const RuleStack& stack, const RenameSubject& subject,
                          const NamingContext& context);

Json toJson(const RuleStack& stack);
Decoded<RuleStack> decodeRuleStack(const Json& value);

}  // namespace tessane
