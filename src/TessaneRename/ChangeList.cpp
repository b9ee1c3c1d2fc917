#include "ChangeList.h"

#include <QCoreApplication>

#include <algorithm>
#include <type_traits>

#include "TessaneRename/Messages.h"
#include "TessaneRename/NameBuilder.h"
#include "TessaneRename/RuleKind.h"

namespace tessane::ChangeList {
namespace {

QString q(const std::string& text) {
  return QString::fromStdString(text);
}
QString quoted(const std::string& text) {
  return QCoreApplication::translate("ChangeList", "“%1”").arg(q(text));
}

std::ptrdiff_t place(const RuleStack& stack, int index) {
  return static_cast<std::ptrdiff_t>(offset(stack)) + index;
}

QString caseTitle(CaseStyle style) {
  switch (style) {
    case CaseStyle::upper:
      return QCoreApplication::translate("ChangeList", "UPPER CASE");
    case CaseStyle::lower:
      return QCoreApplication::translate("ChangeList", "lower case");
    case CaseStyle::title:
      return QCoreApplication::translate("ChangeList", "Title Case");
  }
  return {};
}

QString blockTitle(const BlockRef& ref) {
  if (const auto* i = std::get_if<BlockRef::Index>(&ref.ref)) {
    return i->value >= 0
               ? QCoreApplication::translate("ChangeList", "block %1").arg(i->value + 1)
               : QCoreApplication::translate("ChangeList", "block %1 from the end").arg(-i->value);
  }
  return QCoreApplication::translate("ChangeList", "block %1")
      .arg(quoted(std::get<BlockRef::Text>(ref.ref).value));
}

QString positionTitle(const InsertPosition& at) {
  switch (at.kind) {
    case InsertPosition::Kind::start:
      return QCoreApplication::translate("ChangeList", "at the start");
    case InsertPosition::Kind::end:
      return QCoreApplication::translate("ChangeList", "at the end");
    case InsertPosition::Kind::index:
      return QCoreApplication::translate("ChangeList", "after %1 characters").arg(at.offset);
    case InsertPosition::Kind::before:
      return QCoreApplication::translate("ChangeList", "before %1").arg(quoted(at.anchor.text));
    case InsertPosition::Kind::after:
      return QCoreApplication::translate("ChangeList", "after %1").arg(quoted(at.anchor.text));
    case InsertPosition::Kind::beforeBlock:
      return QCoreApplication::translate("ChangeList", "before %1").arg(blockTitle(at.block));
    case InsertPosition::Kind::afterBlock:
      return QCoreApplication::translate("ChangeList", "after %1").arg(blockTitle(at.block));
  }
  return {};
}

QString operationSummary(const RenameOperation& operation) {
  return std::visit(
      [](const auto& o) -> QString {
        using T = std::decay_t<decltype(o)>;
        if constexpr (std::is_same_v<T, op::Insert>)
          return QCoreApplication::translate("ChangeList", "%1 %2")
              .arg(quoted(o.text), positionTitle(o.at));
        if constexpr (std::is_same_v<T, op::Replace>)
          return QCoreApplication::translate("ChangeList", "%1 → %2")
              .arg(quoted(o.anchor.text), quoted(o.with));
        if constexpr (std::is_same_v<T, op::DeleteText>) return quoted(o.anchor.text);
        if constexpr (std::is_same_v<T, op::DeleteBlock>) return blockTitle(o.block);
        if constexpr (std::is_same_v<T, op::DeleteCharacters>)
          return QCoreApplication::translate("ChangeList", "%n characters from %1", nullptr,
                                             static_cast<int>(o.count))
              .arg(o.from + 1);
        if constexpr (std::is_same_v<T, op::DeleteBetween>)
          return QCoreApplication::translate("ChangeList", "between %1 and %2")
              .arg(quoted(o.start.text), quoted(o.end.text));
        if constexpr (std::is_same_v<T, op::DeleteBefore>)
          return QCoreApplication::translate("ChangeList", "before %1").arg(quoted(o.anchor.text));
        if constexpr (std::is_same_v<T, op::DeleteAfter>)
          return QCoreApplication::translate("ChangeList", "after %1").arg(quoted(o.anchor.text));
        if constexpr (std::is_same_v<T, op::MoveBlock>)
          return QCoreApplication::translate("ChangeList", "%1 to place %2")
              .arg(blockTitle(o.block))
              .arg(o.toIndex + 1);
        if constexpr (std::is_same_v<T, op::ReplaceRegex>)
          return QCoreApplication::translate("ChangeList", "%1 → %2")
              .arg(q(o.pattern), quoted(o.replacement));
        if constexpr (std::is_same_v<T, op::ChangeCase>) return caseTitle(o.style);
        if constexpr (std::is_same_v<T, op::SetExtension>)
          return QCoreApplication::translate("ChangeList", ".%1").arg(q(o.ext));
        if constexpr (std::is_same_v<T, op::ChangeExtensionCase>)
          return QCoreApplication::translate("ChangeList", "extension in %1")
              .arg(caseTitle(o.style));
        return {};
      },
      operation.value);
}

}  // namespace

std::size_t offset(const RuleStack& stack) {
  return !stack.rules.empty() &&
                 std::holds_alternative<RuleAction::Format>(stack.rules.front().action.value)
             ? 1
             : 0;
}

int count(const RuleStack& stack) {
  return static_cast<int>(stack.rules.size() - offset(stack));
}

const Rule& at(const RuleStack& stack, int index) {
  return stack.rules[static_cast<std::size_t>(place(stack, index))];
}

Rule& at(RuleStack& stack, int index) {
  return stack.rules[static_cast<std::size_t>(place(stack, index))];
}

int add(RuleStack& stack, Rule rule, std::optional<int> after, std::string_view separator) {
  if (offset(stack) == 0) NameBuilder::of(stack, separator).applyTo(stack, separator);
  const int index = after && *after >= 0 && *after < count(stack) ? *after + 1 : count(stack);
  stack.rules.insert(stack.rules.begin() + place(stack, index), std::move(rule));
  return index;
}

int duplicate(RuleStack& stack, int index) {
  Rule copy = at(stack, index);
  copy.id = Uuid::random();
  stack.rules.insert(stack.rules.begin() + place(stack, index + 1), std::move(copy));
  return index + 1;
}

bool move(RuleStack& stack, int from, int to) {
  const int n = count(stack);
  if (from < 0 || from >= n) return false;
  to = std::clamp(to, 0, n - 1);
  if (from == to) return false;
  Rule moved = std::move(at(stack, from));
  stack.rules.erase(stack.rules.begin() + place(stack, from));
  stack.rules.insert(stack.rules.begin() + place(stack, to), std::move(moved));
  return true;
}

void remove(RuleStack& stack, int index) {
  if (index < 0 || index >= count(stack)) return;
  stack.rules.erase(stack.rules.begin() + place(stack, index));
}

void setEnabled(RuleStack& stack, int index, bool on) {
  if (index >= 0 && index < count(stack)) at(stack, index).isEnabled = on;
}

void setAllEnabled(RuleStack& stack, bool on) {
  for (int i = 0; i < count(stack); ++i)
    at(stack, i).isEnabled = on;
}

void removeAll(RuleStack& stack) {
  stack.rules.resize(offset(stack));
}

QString summary(const Rule& rule) {
  const auto& action = rule.action.value;
  if (const auto* f = std::get_if<RuleAction::Format>(&action)) return q(f->format.templateText);
  if (const auto* n = std::get_if<RuleAction::Numbering>(&action)) {
    const Counter& c = n->counter;
    return QCoreApplication::translate("ChangeList", "%1, %2… %3")
        .arg(q(c.text(c.start)), q(c.text(c.start + c.step)), positionTitle(c.position));
  }
  if (const auto* p = std::get_if<RuleAction::Protect>(&action))
    return QCoreApplication::translate("ChangeList", "keeps %1").arg(blockTitle(p->block));
  const RenameOperation& operation = std::get<RuleAction::Operation>(action).operation;
  if (QString clean = cleanChoiceTitle(operation); !clean.isEmpty()) return clean;
  return operationSummary(operation);
}

QString regexProblem(const std::string& pattern) {
  if (pattern.empty()) return {};
  const RenameOperation probe{op::ReplaceRegex{pattern, "", Occurrence::all, true}};
  const OperationOutcome outcome = apply(probe, FileName{"a", ""}, OperationContext{});
  if (outcome.issue && outcome.issue->kind() == OperationIssue::Case::invalidPattern)
    return q(Messages::of(*outcome.issue));
  return {};
}

}  // namespace tessane::ChangeList
