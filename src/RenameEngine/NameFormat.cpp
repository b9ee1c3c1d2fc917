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

RenderedName PreparedTemplate::render(const VariableContext& context, const Counter& counter,
                                      std::optional<std::int64_t> counterValue,
                                      std::string_view missingText) const {
  RenderedName out;
  bool overflowReported = false;
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    const TemplatePart& part = parsed_.parts[i];
    const Piece& piece = pieces_[i];
    switch (piece.kind) {
      case Piece::Kind::text:
        out.text += part.text;
        break;
      case Piece::Kind::unknown:
        out.issues.push_back(OperationIssue::unknownVariable(part.text));
        break;
      case Piece::Kind::counter:
        if (!counterValue) {
          if (!overflowReported) out.issues.push_back(OperationIssue::counterOverflow());
          overflowReported = true;
          break;
        }
        if (piece.badFormat) out.issues.push_back(OperationIssue::invalidFormat(part.text));
        out.text += Counter::text(*counterValue, piece.padding.value_or(counter.padding));
        break;
      case Piece::Kind::variable: {
        VariableValue value = variableValue(piece.variable, part.format, context);
        switch (value.kind) {
          case VariableValue::Kind::value:
            out.text += value.text;
            break;
          case VariableValue::Kind::invalidFormat:
            out.text += value.text;
            out.issues.push_back(OperationIssue::invalidFormat(part.text));
            break;
          case VariableValue::Kind::missing:
            out.text += missingText;
            out.issues.push_back(OperationIssue::missingVariable(part.text));
            break;
        }
        break;
      }
    }
  }
  if (!parsed_.isValid) out.issues.push_back(OperationIssue::invalidTemplate());
  out.text = unicode::toNfc(out.text);
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
