#include "RuleKind.h"

#include <QCoreApplication>

#include <type_traits>

namespace tessane {
namespace {

RuleKind kindOfOperation(const RenameOperation& operation) {
  return std::visit(
      [](const auto& o) {
        using T = std::decay_t<decltype(o)>;
        if constexpr (std::is_same_v<T, op::Insert>) return RuleKind::addText;
        if constexpr (std::is_same_v<T, op::Replace>) return RuleKind::replace;
        if constexpr (std::is_same_v<T, op::DeleteBlock> || std::is_same_v<T, op::DeleteText> ||
                      std::is_same_v<T, op::DeleteCharacters> ||
                      std::is_same_v<T, op::DeleteBetween> || std::is_same_v<T, op::DeleteBefore> ||
                      std::is_same_v<T, op::DeleteAfter>)
          return RuleKind::remove;
        if constexpr (std::is_same_v<T, op::MoveBlock>) return RuleKind::moveBlock;
        if constexpr (std::is_same_v<T, op::ReplaceRegex>) return RuleKind::regex;
        if constexpr (std::is_same_v<T, op::ChangeCase>) return RuleKind::changeCase;
        if constexpr (std::is_same_v<T, op::CollapseWhitespace> ||
                      std::is_same_v<T, op::RemoveAccents> ||
                      std::is_same_v<T, op::RemoveInvalidCharacters> ||
                      std::is_same_v<T, op::RemoveEmoji>)
          return RuleKind::clean;
        if constexpr (std::is_same_v<T, op::SetExtension> ||
                      std::is_same_v<T, op::ChangeExtensionCase>)
          return RuleKind::fileExtension;
        // replaceBlock, replaceBefore, replaceAfter, truncate: no editor of their own.
        return RuleKind::advanced;
      },
      operation.value);
}

}  // namespace

std::vector<RuleKind> kindsIn(RuleKindGroup group) {
  switch (group) {
    case RuleKindGroup::build:
      return {RuleKind::format, RuleKind::counter, RuleKind::addText};
    case RuleKindGroup::modify:
      return {RuleKind::replace, RuleKind::remove, RuleKind::moveBlock, RuleKind::regex,
              RuleKind::changeCase};
    case RuleKindGroup::tidy:
      return {RuleKind::clean, RuleKind::fileExtension};
  }
  return {};
}

std::optional<RuleKindGroup> groupOf(RuleKind kind) {
  for (RuleKindGroup group : {RuleKindGroup::build, RuleKindGroup::modify, RuleKindGroup::tidy}) {
    for (RuleKind k : kindsIn(group))
      if (k == kind) return group;
  }
  return std::nullopt;
}

RuleKind kindOf(const Rule& rule) {
  const auto& action = rule.action.value;
  if (std::holds_alternative<RuleAction::Format>(action)) return RuleKind::format;
  if (std::holds_alternative<RuleAction::Numbering>(action)) return RuleKind::counter;
  if (const auto* o = std::get_if<RuleAction::Operation>(&action))
    return kindOfOperation(o->operation);
  return RuleKind::advanced;
}

std::optional<Rule> newRule(RuleKind kind, std::string_view templateText) {
  const auto operation = [](RenameOperation::Value value) {
    return RuleAction{RuleAction::Operation{RenameOperation{std::move(value)}}};
  };
  Rule rule;
  switch (kind) {
    case RuleKind::format:
      rule.action = {RuleAction::Format{NameFormat{std::string(templateText), Counter{}}}};
      break;
    case RuleKind::counter:
      rule.action = {RuleAction::Numbering{Counter{}}};
      break;
    case RuleKind::addText:
      rule.action = operation(op::Insert{"", InsertPosition::end()});
      break;
    case RuleKind::replace:
      rule.action = operation(op::Replace{Anchor{}, ""});
      break;
    case RuleKind::remove:
      rule.action = operation(op::DeleteText{Anchor{}});
      break;
    case RuleKind::moveBlock:
      rule.action = operation(op::MoveBlock{BlockRef::index(0), 0});
      break;
    case RuleKind::regex:
      rule.action = operation(op::ReplaceRegex{});
      break;
    case RuleKind::changeCase:
      rule.action = operation(op::ChangeCase{CaseStyle::lower});
      break;
    case RuleKind::clean:
      rule.action = operation(op::CollapseWhitespace{});
      break;
    case RuleKind::fileExtension:
      rule.action = operation(op::ChangeExtensionCase{CaseStyle::lower});
      break;
    case RuleKind::advanced:
      return std::nullopt;
  }
  return rule;
}

QString title(RuleKind kind) {
  switch (kind) {
    case RuleKind::format:
      return QCoreApplication::translate("RuleKind", "New name");
    case RuleKind::counter:
      return QCoreApplication::translate("RuleKind", "Counter");
    case RuleKind::addText:
      return QCoreApplication::translate("RuleKind", "Add text");
    case RuleKind::replace:
      return QCoreApplication::translate("RuleKind", "Replace text");
    case RuleKind::remove:
      return QCoreApplication::translate("RuleKind", "Remove");
    case RuleKind::moveBlock:
      return QCoreApplication::translate("RuleKind", "Move a block");
    case RuleKind::regex:
      return QCoreApplication::translate("RuleKind", "Regular expression");
    case RuleKind::changeCase:
      return QCoreApplication::translate("RuleKind", "Change case");
    case RuleKind::clean:
      return QCoreApplication::translate("RuleKind", "Clean up");
    case RuleKind::fileExtension:
      return QCoreApplication::translate("RuleKind", "Extension");
    case RuleKind::advanced:
      return QCoreApplication::translate("RuleKind", "Advanced");
  }
  return {};
}

QString title(RuleKindGroup group) {
  switch (group) {
    case RuleKindGroup::build:
      return QCoreApplication::translate("RuleKind", "Build");
    case RuleKindGroup::modify:
      return QCoreApplication::translate("RuleKind", "Modify");
    case RuleKindGroup::tidy:
      return QCoreApplication::translate("RuleKind", "Tidy");
  }
  return {};
}

QString explanation(RuleKind kind) {
  switch (kind) {
    case RuleKind::format:
      return QCoreApplication::translate("RuleKind",
                                         "A new name from date, body, text, counter and metadata");
    case RuleKind::advanced:
      return QCoreApplication::translate(
          "RuleKind", "Made with an earlier version or by hand: you can turn it on or off");
    default:
      return {};
  }
}

QString cleanChoiceTitle(const RenameOperation& operation) {
  return std::visit(
      [](const auto& o) -> QString {
        using T = std::decay_t<decltype(o)>;
        if constexpr (std::is_same_v<T, op::CollapseWhitespace>)
          return QCoreApplication::translate("RuleKind", "Extra spaces");
        if constexpr (std::is_same_v<T, op::RemoveAccents>)
          return QCoreApplication::translate("RuleKind", "Accents (è → e)");
        if constexpr (std::is_same_v<T, op::RemoveInvalidCharacters>)
          return QCoreApplication::translate("RuleKind", "Characters not allowed (/ :)");
        if constexpr (std::is_same_v<T, op::RemoveEmoji>)
          return QCoreApplication::translate("RuleKind", "Emoji");
        return {};
      },
      operation.value);
}

}  // namespace tessane
