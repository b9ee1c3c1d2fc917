// The changes below the name builder: the rules of a stack after its top format rule (the
// builder's own), numbered from 0 as the changes panel lists them. Every edit the panel offers is
// one call here on a copy of the folder model's stack, which the window then hands back.
//
// A stack without a format rule on top gets the builder's rule, turned off, before its first
// change is added: a "New name" change added later stays a change and never becomes the builder.
#pragma once

#include <optional>
#include <string_view>

#include <QString>

#include "RenameEngine/RuleStack.h"

namespace tessane {

namespace ChangeList {

// Where the changes start in `stack.rules`: 1 below a format rule, else 0.
std::size_t offset(const RuleStack& stack);
int count(const RuleStack& stack);
const Rule& at(const RuleStack& stack, int index);
Rule& at(RuleStack& stack, int index);

// Inserts `rule` after the change `after` (at the end without one); returns its index.
int add(RuleStack& stack, Rule rule, std::optional<int> after, std::string_view separator);
// A copy with a new id, just below; returns its index.
int duplicate(RuleStack& stack, int index);
// Moves a change so that it ends up at `to` (clamped); false when nothing moves.
bool move(RuleStack& stack, int from, int to);
void remove(RuleStack& stack, int index);
void setEnabled(RuleStack& stack, int index, bool on);
void setAllEnabled(RuleStack& stack, bool on);
void removeAll(RuleStack& stack);

// One line that says what a change does: "“IMG” → “Rome”", "lower case", "at the end"…
QString summary(const Rule& rule);
// The problem of a regular expression as the user reads it; empty when it compiles.
QString regexProblem(const std::string& pattern);

}  // namespace ChangeList

}  // namespace tessane
