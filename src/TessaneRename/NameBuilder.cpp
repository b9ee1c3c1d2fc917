#include "NameBuilder.h"

#include <algorithm>

#include "RenameEngine/Template.h"

namespace tessane {
namespace {

constexpr std::string_view kOriginal = "{original}";

RuleAction::Format* topFormat(RuleStack& stack) {
  if (stack.rules.empty()) return nullptr;
  return std::get_if<RuleAction::Format>(&stack.rules.front().action.value);
}

}  // namespace

std::vector<FormatToken> NameBuilder::defaultPieces(bool bodiesTagged) {
  if (bodiesTagged) {
    return {FormatToken::variable("date"), FormatToken::variable("body"), FormatToken::counter()};
  }
  return {FormatToken::variable("date"), FormatToken::counter()};
}

NameBuilder NameBuilder::firstStart(bool bodiesTagged) {
  NameBuilder builder;
  builder.pieces = defaultPieces(bodiesTagged);
  builder.usesNewName = true;
  return builder;
}

bool NameBuilder::takeBodyIn(RuleStack& stack, std::string_view separator) {
  RuleAction::Format* format = topFormat(stack);
  if (format == nullptr || format->format.templateText != firstStart(false).templateText(separator))
    return false;
  format->format.templateText = firstStart(true).templateText(separator);
  return true;
}

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

bool NameBuilder::movePiece(std::size_t from, std::size_t to) {
  if (from >= pieces.size()) return false;
  to = std::min(to, pieces.size() - 1);
  if (from == to) return false;
  FormatToken moved = std::move(pieces[from]);
  pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(from));
  pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
  return true;
}

void NameBuilder::changeSeparator(RuleStack& stack, std::string_view from, std::string_view to) {
  if (topFormat(stack) == nullptr) return;
  const NameBuilder builder = of(stack, from);
  if (builder.way == Way::byHand) return;
  builder.applyTo(stack, to);
}

std::optional<TypedVariable> variableBeingTyped(const QString& text, qsizetype cursor) {
  cursor = std::clamp<qsizetype>(cursor, 0, text.size());
  for (qsizetype i = cursor - 1; i >= 0; --i) {
    const QChar c = text[i];
    if (c == '{') {
      if (i > 0 && text[i - 1] == '{') return std::nullopt;  // a literal brace
      return TypedVariable{i + 1, text.mid(i + 1, cursor - i - 1)};
    }
    if (!c.isLetterOrNumber() && c != '_') return std::nullopt;
  }
  return std::nullopt;
}

QStringList variableNames() {
  QStringList names;
  for (int v = 0; v <= static_cast<int>(TemplateVariable::pages); ++v) {
    const std::string_view name = rawValue(static_cast<TemplateVariable>(v));
    names << QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  }
  names << QStringLiteral("counter");
  return names;
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
