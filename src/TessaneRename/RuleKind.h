// The kinds of change the editor offers, in three groups (build a name, modify it, tidy it up),
// the rule each kind makes, and the kind an existing rule is shown under. A rule that none of the
// offered kinds shows (a protect rule, a truncation, a replacement of a block…) is `advanced`:
// the editor can only turn it on or off, and it keeps working as it is.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include <QString>

#include "RenameEngine/Rule.h"

namespace tessane {

enum class RuleKind {
  format,
  counter,
  addText,
  replace,
  remove,
  moveBlock,
  regex,
  changeCase,
  clean,
  fileExtension,
  advanced
};

enum class RuleKindGroup { build, modify, tidy };

// The kinds of a group, in the order the editor lists them.
std::vector<RuleKind> kindsIn(RuleKindGroup group);
// nullopt for `advanced`, which the editor never offers.
std::optional<RuleKindGroup> groupOf(RuleKind kind);

// The kind an existing rule is shown under.
RuleKind kindOf(const Rule& rule);

// A new rule of a kind, on and for every file, with the kind's first choice (a format rule gets
// `templateText`); nullopt for `advanced`.
std::optional<Rule> newRule(RuleKind kind,
                            std::string_view templateText = "{date}_{body}_{counter}");

// The editor's texts.
QString title(RuleKind kind);
QString title(RuleKindGroup group);
// The explanation under a kind's title; empty where the title says it all.
QString explanation(RuleKind kind);
// The choices of a `clean` rule, by the operation's case name ("removeAccents" is
// "Accents (è → e)"); empty for other operations.
QString cleanChoiceTitle(const RenameOperation& operation);

}  // namespace tessane
