#include "FormatToken.h"

#include "RenameEngine/Template.h"

namespace tessane {
namespace {

std::string escaped(std::string_view text) {
  std::string out;
  for (char c : text) {
    out.push_back(c);
    if (c == '{' || c == '}') out.push_back(c);
  }
  return out;
}

// Literal text cut at each separator; empty pieces are kept so that the caller can refuse them.
std::vector<std::string> cut(std::string_view text, std::string_view separator) {
  std::vector<std::string> out;
  if (separator.empty()) {
    out.emplace_back(text);
    return out;
  }
  for (std::size_t from = 0;;) {
    const std::size_t at = text.find(separator, from);
    out.emplace_back(text.substr(from, at == std::string_view::npos ? at : at - from));
    if (at == std::string_view::npos) break;
    from = at + separator.size();
  }
  return out;
}

}  // namespace

std::string FormatToken::templateText() const {
  switch (kind) {
    case Kind::variable:
      return "{" + value + "}";
    case Kind::text:
      return escaped(value);
    case Kind::counter:
      return "{counter}";
  }
  return {};
}

std::string FormatToken::join(const std::vector<FormatToken>& tokens, std::string_view separator) {
  std::string out;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (i > 0) out.append(separator);
    out.append(tokens[i].templateText());
  }
  return out;
}

std::optional<std::vector<FormatToken>> FormatToken::split(std::string_view templateText,
                                                           std::string_view separator) {
  const Template parsed = Template::parse(templateText);
  if (!parsed.isValid) return std::nullopt;
  std::vector<FormatToken> tokens;
  const auto& parts = parsed.parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const TemplatePart& part = parts[i];
    if (part.kind == TemplatePart::Kind::variable) {
      if (Template::isCounterName(part.text) && !part.format) {
        tokens.push_back(counter());
      } else {
        tokens.push_back(variable(part.format ? part.text + ":" + *part.format : part.text));
      }
      continue;
    }
    std::vector<std::string> pieces = cut(part.text, separator);
    // The separators next to a variable belong to the join, not to a piece of text.
    if (i > 0 && !separator.empty()) {
      if (!pieces.front().empty()) return std::nullopt;
      pieces.erase(pieces.begin());
    }
    if (i + 1 < parts.size() && !separator.empty()) {
      if (pieces.empty() || !pieces.back().empty()) return std::nullopt;
      pieces.pop_back();
    }
    for (std::string& piece : pieces)
      tokens.push_back(text(std::move(piece)));
  }
  // Whatever the cutting could not tell apart (empty pieces, separators inside a text) shows
  // here: only a template that the pieces give back exactly is a join of them.
  for (const FormatToken& t : tokens)
    if (t.kind == Kind::text && t.value.empty()) return std::nullopt;
  if (join(tokens, separator) != templateText) return std::nullopt;
  return tokens;
}

}  // namespace tessane
