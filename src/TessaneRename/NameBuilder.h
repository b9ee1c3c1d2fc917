// The name builder: the format rule at the top of the stack, seen as the editor shows it. It has
// three ways:
//   pieces             the user's pieces joined with the separator ("{date}_{body}_{counter}");
//   startFromOriginal  "Start from the Original Name": the camera's name ("{original}") with the
//                      user's pieces after it;
//   byHand             "Write by hand": the pattern as the user typed it.
// With "Use the new name" off the format rule stays in the stack but is turned off, so the names
// stay as they are and only the changes below it apply.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "RenameEngine/RuleStack.h"
#include "TessaneRename/FormatToken.h"

namespace tessane {

struct NameBuilder {
  enum class Way { pieces, startFromOriginal, byHand };

  Way way = Way::pieces;
  std::vector<FormatToken> pieces = defaultPieces(false);
  std::string pattern;  // byHand
  bool usesNewName = true;

  std::string templateText(std::string_view separator) const;

  // The pieces a name starts from: the date and the counter, with the body between them once a
  // camera has a tag. An untagged camera has no {body}, so putting it in every name of a fresh
  // install would only leave every row amber with "{body} is missing".
  static std::vector<FormatToken> defaultPieces(bool bodiesTagged);
  // The builder of a first start (or a start that doesn't resume the last rules): the default
  // pieces with "Use the new name" on, so the list shows working new names at once.
  static NameBuilder firstStart(bool bodiesTagged);
  // A camera was tagged: a stack whose name is still the untagged default takes the body in.
  // False when the stack's name is something else, which stays as the user made it.
  static bool takeBodyIn(RuleStack& stack, std::string_view separator);

  // Moves a piece so that it ends up at `to` (clamped to the list); false when `from` is not a
  // piece or nothing moves.
  bool movePiece(std::size_t from, std::size_t to);

  // Makes the top of `stack` this builder's format rule: the format rule already there keeps its
  // id and counter; otherwise one is put on top with `counter`.
  void applyTo(RuleStack& stack, std::string_view separator, const Counter& counter = {}) const;
  // The builder a stack's top rule shows: its pieces when the template is a join of pieces, else
  // the pattern by hand. A stack without a format rule on top gives the default pieces with
  // "Use the new name" off.
  static NameBuilder of(const RuleStack& stack, std::string_view separator);

  // The separator setting changed: a template that was joined from pieces is joined again with
  // the new separator; a pattern written by hand stays as typed.
  static void changeSeparator(RuleStack& stack, std::string_view from, std::string_view to);

  friend bool operator==(const NameBuilder&, const NameBuilder&) = default;
};

// Completing variable names in a pattern typed by hand.
struct TypedVariable {
  qsizetype start = 0;  // where the name begins, just after its "{"
  QString prefix;       // what is typed of it so far
};
// The variable name the cursor is in: after a "{" that is not closed before the cursor (and is
// not a doubled "{{"), with only name characters between them; nullopt elsewhere.
std::optional<TypedVariable> variableBeingTyped(const QString& text, qsizetype cursor);
// The names a variable can be completed to: every variable, then "counter".
QStringList variableNames();

}  // namespace tessane
