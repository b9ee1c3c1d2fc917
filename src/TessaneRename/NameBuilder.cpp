#include "NameBuilder.h"

#include <algorithm>

namespace tessane {
namespace {

constexpr std::string_view kOriginal = "{original}";

RuleAction::Format* topFormat(RuleStack& stack) {
  if (stack.rules.empty()) return nullptr;
  return std::get_if<RuleAction::Format>(&stack.rules.front().action.value);
}

}  // namespace

std::string NameBuilder::templateText(std::string_view separator) const {
  switch (way) {
    case Way::pieces:
      return FormatToken::join(pieces, separator);
    case Way::startFromOriginal: {
      std::string text(kOriginal);
      if (!pieces.empty()) text.append(separator).append(FormatToken::join(pieces, separator));
      return text;
    }
    case Way::byHand:
      return pattern;
  }
  return {};
}

void NameBuilder::applyTo(RuleStack& stack, std::string_view separator,
                          const Counter& counter) const {
  if (RuleAction::Format* format = topFormat(stack)) {
    format->format.templateText = templateText(separator);
    stack.rules.front().isEnabled = usesNewName;
    return;
  }
  Rule rule;
  rule.action = {RuleAction::Format{NameFormat{templateText(separator), counter}}};
  rule.isEnabled = usesNewName;
  stack.rules.push_back(std::move(rule));
  std::rotate(stack.rules.begin(), stack.rules.end() - 1, stack.rules.end());
}

NameBuilder NameBuilder::of(const RuleStack& stack, std::string_view separator) {
  NameBuilder builder;
  if (stack.rules.empty()) {
    builder.usesNewName = false;
    return builder;
  }
  const auto* format = std::get_if<RuleAction::Format>(&stack.rules.front().action.value);
  if (format == nullptr) {
    builder.usesNewName = false;
    return builder;
  }
  builder.usesNewName = stack.rules.front().isEnabled;
  const std::string& text = format->format.templateText;
  if (text.starts_with(kOriginal)) {
    const std::string_view rest = std::string_view(text).substr(kOriginal.size());
    if (rest.empty()) {
      builder.way = Way::startFromOriginal;
      builder.pieces.clear();
      return builder;
    }
    if (!separator.empty() && rest.starts_with(separator)) {
      if (auto tokens = FormatToken::split(rest.substr(separator.size()), separator)) {
        builder.way = Way::startFromOriginal;
        builder.pieces = std::move(*tokens);
        return builder;
      }
    }
  }
  if (auto tokens = FormatToken::split(text, separator)) {
    builder.pieces = std::move(*tokens);
    return builder;
  }
  builder.way = Way::byHand;
  builder.pattern = text;
  return builder;
}

}  // namespace tessane
