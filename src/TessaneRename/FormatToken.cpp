#include "FormatToken.h"

#include <QCoreApplication>

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

// A date pattern without day, month or year shows a time of day.
bool isTimePattern(std::string_view pattern) {
  return !pattern.empty() && pattern.find_first_of("yYuMLdDEe") == std::string_view::npos;
}

}  // namespace

QString variableTitle(std::string_view name) {
  const std::optional<TemplateVariable> variable = templateVariableNamed(name);
  if (!variable) {
    if (Template::isCounterName(name)) return QCoreApplication::translate("FormatToken", "Counter");
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  }
  switch (*variable) {
    case TemplateVariable::name:
      return QCoreApplication::translate("FormatToken", "Current name");
    case TemplateVariable::original:
      return QCoreApplication::translate("FormatToken", "Original name");
    case TemplateVariable::folder:
      return QCoreApplication::translate("FormatToken", "Folder");
    case TemplateVariable::ext:
      return QCoreApplication::translate("FormatToken", "Extension");
    case TemplateVariable::body:
      return QCoreApplication::translate("FormatToken", "Camera body");
    case TemplateVariable::resolution:
      return QCoreApplication::translate("FormatToken", "Resolution");
    case TemplateVariable::frame:
      return QCoreApplication::translate("FormatToken", "Frame number");
    case TemplateVariable::created:
      return QCoreApplication::translate("FormatToken", "Created");
    case TemplateVariable::modified:
      return QCoreApplication::translate("FormatToken", "Modified");
    case TemplateVariable::date:
      return QCoreApplication::translate("FormatToken", "Date");
    case TemplateVariable::make:
      return QCoreApplication::translate("FormatToken", "Make");
    case TemplateVariable::model:
      return QCoreApplication::translate("FormatToken", "Model");
    case TemplateVariable::lens:
      return QCoreApplication::translate("FormatToken", "Lens");
    case TemplateVariable::serial:
      return QCoreApplication::translate("FormatToken", "Serial number");
    case TemplateVariable::iso:
      return QCoreApplication::translate("FormatToken", "ISO");
    case TemplateVariable::shutter:
      return QCoreApplication::translate("FormatToken", "Shutter speed");
    case TemplateVariable::aperture:
      return QCoreApplication::translate("FormatToken", "Aperture");
    case TemplateVariable::focal:
      return QCoreApplication::translate("FormatToken", "Focal length");
    case TemplateVariable::city:
      return QCoreApplication::translate("FormatToken", "City");
    case TemplateVariable::location:
      return QCoreApplication::translate("FormatToken", "Location");
    case TemplateVariable::author:
      return QCoreApplication::translate("FormatToken", "Author");
    case TemplateVariable::title:
      return QCoreApplication::translate("FormatToken", "Title");
    case TemplateVariable::headline:
      return QCoreApplication::translate("FormatToken", "Headline");
    case TemplateVariable::duration:
      return QCoreApplication::translate("FormatToken", "Duration");
    case TemplateVariable::width:
      return QCoreApplication::translate("FormatToken", "Width");
    case TemplateVariable::height:
      return QCoreApplication::translate("FormatToken", "Height");
    case TemplateVariable::fps:
      return QCoreApplication::translate("FormatToken", "Frame rate");
    case TemplateVariable::codec:
      return QCoreApplication::translate("FormatToken", "Codec");
    case TemplateVariable::artist:
      return QCoreApplication::translate("FormatToken", "Artist");
    case TemplateVariable::album:
      return QCoreApplication::translate("FormatToken", "Album");
    case TemplateVariable::track:
      return QCoreApplication::translate("FormatToken", "Track");
    case TemplateVariable::year:
      return QCoreApplication::translate("FormatToken", "Year");
    case TemplateVariable::pages:
      return QCoreApplication::translate("FormatToken", "Pages");
  }
  return {};
}

std::vector<PieceGroup> pieceGroups() {
  return {PieceGroup::dateTime,       PieceGroup::camera, PieceGroup::exposure,
          PieceGroup::placeAndPeople, PieceGroup::media,  PieceGroup::file};
}

QString title(PieceGroup group) {
  switch (group) {
    case PieceGroup::dateTime:
      return QCoreApplication::translate("FormatToken", "Date and time");
    case PieceGroup::camera:
      return QCoreApplication::translate("FormatToken", "Camera");
    case PieceGroup::exposure:
      return QCoreApplication::translate("FormatToken", "Exposure");
    case PieceGroup::placeAndPeople:
      return QCoreApplication::translate("FormatToken", "Place and people");
    case PieceGroup::media:
      return QCoreApplication::translate("FormatToken", "Media");
    case PieceGroup::file:
      return QCoreApplication::translate("FormatToken", "File");
  }
  return {};
}

std::vector<FormatToken> piecesIn(PieceGroup group, std::string_view timePattern) {
  const auto list = [](std::initializer_list<const char*> names) {
    std::vector<FormatToken> out;
    for (const char* name : names)
      out.push_back(FormatToken::variable(name));
    return out;
  };
  switch (group) {
    case PieceGroup::dateTime: {
      std::vector<FormatToken> out = list({"date"});
      out.push_back(FormatToken::variable("date:" + std::string(timePattern)));
      for (FormatToken& t : list({"created", "modified"}))
        out.push_back(std::move(t));
      return out;
    }
    case PieceGroup::camera:
      return list({"body", "make", "model", "serial", "lens"});
    case PieceGroup::exposure:
      return list({"iso", "shutter", "aperture", "focal"});
    case PieceGroup::placeAndPeople:
      return list({"city", "location", "author", "title", "headline", "artist"});
    case PieceGroup::media:
      return list({"resolution", "width", "height", "duration", "fps", "codec", "album", "track",
                   "year", "pages"});
    case PieceGroup::file:
      return list({"original", "name", "frame", "folder"});
  }
  return {};
}

QString FormatToken::title() const {
  switch (kind) {
    case Kind::text:
      return QCoreApplication::translate("FormatToken", "“%1”").arg(QString::fromStdString(value));
    case Kind::counter:
      return QCoreApplication::translate("FormatToken", "Counter");
    case Kind::variable: {
      const std::size_t colon = value.find(':');
      const std::string name = value.substr(0, colon);
      if (colon == std::string::npos) return variableTitle(name);
      const std::string format = value.substr(colon + 1);
      if (templateVariableNamed(name) == TemplateVariable::date && isTimePattern(format))
        return QCoreApplication::translate("FormatToken", "Time");
      return QCoreApplication::translate("FormatToken", "%1 (%2)")
          .arg(variableTitle(name), QString::fromStdString(format));
    }
  }
  return {};
}

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
