#include "NameFormat.h"

#include "JsonDecoders.h"
#include "Unicode.h"

namespace tessane {

PreparedTemplate::PreparedTemplate(std::string_view text) : parsed_(Template::parse(text)) {
  for (const TemplatePart& part : parsed_.parts) {
    Piece piece;
    if (part.kind == TemplatePart::Kind::text) {
      piece.kind = Piece::Kind::text;
    } else if (Template::isCounterName(part.text)) {
      piece.kind = Piece::Kind::counter;
      usesCounter_ = true;
      if (part.format) {
        const std::string& f = *part.format;
        if (!f.empty() && f.size() <= 3 && f.find_first_not_of("0123456789") == std::string::npos) {
          piece.padding = std::stoll(f);
        } else {
          piece.badFormat = true;
        }
      }
    } else if (const auto variable = templateVariableNamed(part.text)) {
      piece.kind = Piece::Kind::variable;
      piece.variable = *variable;
    } else {
      piece.kind = Piece::Kind::unknown;
    }
    pieces_.push_back(piece);
  }
}

namespace {

// The characters that stand between the pieces of a name.
bool isSeparatorByte(char c) {
  return c == '_' || c == '-' || c == ' ' || c == '.';
}

// A value as it can stand in a name: "/" and ":" become "-" (a lens "f/1.8D" gives "f-1.8D", a
// time "12:30" gives "12-30", as an exposure "1/250" is written "1-250"); control characters go.
bool fitsInAName(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte == '/' || byte == ':' || byte < 0x20 || byte == 0x7F) return false;
    // C1 controls, U+0080 to U+009F, are 0xC2 0x80 to 0xC2 0x9F.
    if (byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0)
      return false;
  }
  return true;
}

std::string nameSafe(std::string text) {
  if (fitsInAName(text)) return text;
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      if (byte == '/' || byte == ':') {
        out.push_back('-');
      } else if (byte >= 0x20 && byte != 0x7F) {
        out.push_back(static_cast<char>(byte));
      }
      ++i;
      continue;
    }
    const std::size_t start = i;
    if (!unicode::isControl(unicode::nextScalar(text, i))) out.append(text, start, i - start);
  }
  return out;
}

// White space at either end of a name: trimmed, by whole characters.
std::string trimmedSpace(std::string text) {
  const auto plainEnd = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte > 0x20 && byte < 0x80;
  };
  if (text.empty() || (plainEnd(text.front()) && plainEnd(text.back()))) return text;
  std::size_t begin = 0;
  while (begin < text.size()) {
    std::size_t next = begin;
    if (!unicode::isWhitespace(unicode::nextScalar(text, next))) break;
    begin = next;
  }
  std::size_t end = text.size();
  while (end > begin) {
    std::size_t start = end - 1;
    while (start > begin && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80)
      --start;
    std::size_t at = start;
    if (!unicode::isWhitespace(unicode::nextScalar(text, at))) break;
    end = start;
  }
  return text.substr(begin, end - begin);
}

}  // namespace

RenderedName PreparedTemplate::render(const VariableContext& context, const Counter& counter,
                                      std::optional<std::int64_t> counterValue,
                                      std::string_view missingText) const {
  RenderedName out;
  // A piece that leaves nothing takes its separator with it: where one vanished, the literal
  // text after it loses its leading separators when the name so far is empty or already ends
  // with one, and at the end the literal before it loses its trailing ones. So
  // "{date}_{body}_{counter}" without a body gives "2025-06-14_0001", not "2025-06-14__0001",
  // and "{body} {counter}" gives "0001", not " 0001".
  bool vanished = false;
  std::size_t lastLiteral = std::string::npos;  // where the last text appended began, if literal
  auto append = [&](std::string_view text, bool literal) {
    if (vanished && literal) {
      const bool joins = out.text.empty() || isSeparatorByte(out.text.back());
      std::size_t lead = 0;
      while (joins && lead < text.size() && isSeparatorByte(text[lead]))
        ++lead;
      text.remove_prefix(lead);
    }
    if (text.empty()) return;
    vanished = false;
    lastLiteral = literal ? out.text.size() : std::string::npos;
    out.text += text;
  };
  bool overflowReported = false;
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    const TemplatePart& part = parsed_.parts[i];
    const Piece& piece = pieces_[i];
    switch (piece.kind) {
      case Piece::Kind::text:
        append(part.text, true);
        break;
      case Piece::Kind::unknown:
        out.issues.push_back(OperationIssue::unknownVariable(part.text));
        vanished = true;
        break;
      case Piece::Kind::counter:
        if (!counterValue) {
          if (!overflowReported) out.issues.push_back(OperationIssue::counterOverflow());
          overflowReported = true;
          vanished = true;
          break;
        }
        if (piece.badFormat) out.issues.push_back(OperationIssue::invalidFormat(part.text));
        append(Counter::text(*counterValue, piece.padding.value_or(counter.padding)), false);
        break;
      case Piece::Kind::variable: {
        VariableValue value = variableValue(piece.variable, part.format, context);
        std::string text;
        switch (value.kind) {
          case VariableValue::Kind::value:
            text = nameSafe(std::move(value.text));
            break;
          case VariableValue::Kind::invalidFormat:
            text = nameSafe(std::move(value.text));
            out.issues.push_back(OperationIssue::invalidFormat(part.text));
            break;
          case VariableValue::Kind::missing:
            text = nameSafe(std::string(missingText));
            out.issues.push_back(OperationIssue::missingVariable(part.text));
            break;
        }
        if (text.empty()) {
          vanished = true;
        } else {
          append(text, false);
        }
        break;
      }
    }
  }
  if (vanished && lastLiteral != std::string::npos) {
    while (out.text.size() > lastLiteral && isSeparatorByte(out.text.back()))
      out.text.pop_back();
  }
  if (!parsed_.isValid) out.issues.push_back(OperationIssue::invalidTemplate());
  out.text = trimmedSpace(unicode::toNfc(out.text));
  return out;
}

Json toJson(const NameFormat& format) {
  return Json{{"template", format.templateText}, {"counter", toJson(format.counter)}};
}

namespace json {

NameFormat decodeNameFormat(const Json& value) {
  if (!value.is_object()) throw DecodeError("Expected an object for a name format.");
  NameFormat f;
  f.templateText = decodeString(member(value, "template"), "template");
  if (value.contains("counter")) f.counter = decodeCounter(value["counter"]);
  return f;
}

}  // namespace json
}  // namespace tessane
