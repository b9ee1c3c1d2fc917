// A piece of the name builder: a variable ("{date}"), the user's own text, or the counter
// ("{counter}"). The pieces joined with the "nameSeparator" setting make a format rule's template;
// a text piece is taken literally (its braces are doubled so that they stay braces).
#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessane {

struct FormatToken {
  enum class Kind { variable, text, counter };
  Kind kind = Kind::text;
  std::string value;  // variable: the name, with ":format" when it has one; text: the text

  static FormatToken variable(std::string name) { return {Kind::variable, std::move(name)}; }
  static FormatToken text(std::string text) { return {Kind::text, std::move(text)}; }
  static FormatToken counter() { return {Kind::counter, {}}; }

  // The piece in the template language.
  std::string templateText() const;
  // The piece as a chip shows it: "Date", "Time", “Rome”, "Counter".
  QString title() const;

  // The pieces joined with `separator`: [date, "Rome", counter] with "_" is
  // "{date}_Rome_{counter}".
  static std::string join(const std::vector<FormatToken>& tokens, std::string_view separator);
  // The pieces a template was joined from with `separator`; nullopt when it is not such a join
  // (a hand-written pattern), so that joining the result gives `templateText` back exactly.
  static std::optional<std::vector<FormatToken>> split(std::string_view templateText,
                                                       std::string_view separator);

  friend bool operator==(const FormatToken&, const FormatToken&) = default;
};

// The variables the builder offers, in groups, in the order its add-piece menu lists them.
// The time piece is the date variable with the "timeFormat" setting as its format.
enum class PieceGroup { dateTime, camera, exposure, placeAndPeople, media, file };

std::vector<PieceGroup> pieceGroups();
QString title(PieceGroup group);
std::vector<FormatToken> piecesIn(PieceGroup group, std::string_view timePattern = "HH-mm-ss");

// What a variable name is called in the interface ("shutter" is "Shutter speed"); the name itself
// when the language doesn't know it.
QString variableTitle(std::string_view name);

}  // namespace tessane
