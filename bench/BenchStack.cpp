#include "BenchStack.h"

namespace tessane::bench {

RuleStack typicalStack(const std::string& templateText) {
  Counter daily;
  daily.reset = CounterReset::perDay;
  Rule format;
  format.action = {RuleAction::Format{NameFormat{templateText, daily}}};
  Rule replace;
  replace.action = {RuleAction::Operation{
      RenameOperation{op::Replace{Anchor{"A7R5", false, Occurrence::all}, "Sony"}}}};
  Rule upper;
  upper.action = {RuleAction::Operation{RenameOperation{op::ChangeCase{CaseStyle::upper}}}};
  Rule accents;
  accents.action = {RuleAction::Operation{RenameOperation{op::RemoveAccents{}}}};
  RuleStack stack;
  stack.rules = {format, replace, upper, accents};
  return stack;
}

}  // namespace tessane::bench
