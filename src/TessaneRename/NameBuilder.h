// The name builder: the format rule at the top of the stack, seen as the editor shows it. It has
// three ways:
//   pieces             the user's pieces joined with the separator ("{date}_{body}_{counter}");
//   startFromOriginal  "Start from the Original Name": the camera's name ("{original}") with the
//                      user's pieces after it;
//   byHand             "Write by hand": the pattern as the user typed it.
// With "Use the new name" off the format rule stays in the stack but is turned off, so the names
// stay as they are and only the changes below it apply.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "RenameEngine/RuleStack.h"
#include "TessaneRename/FormatToken.h"

namespace tessane {

struct NameBuilder {
  enum class Way { pieces, startFromOriginal, byHand };

  Way way = Way::pieces;
  std::vector<FormatToken> pieces{FormatToken::variable("date"), FormatToken::variable("body"),
                                  FormatToken::counter()};
  std::string pattern;  // byHand
  bool usesNewName = true;

  std::string templateText(std::string_view separator) const;

  // Makes the top of `stack` this builder's format rule: the format rule already there keeps its
  // id and counter; otherwise one is put on top with `counter`.
  void applyTo(RuleStack& stack, std::string_view separator, const Counter& counter = {}) const;
  // The builder a stack's top rule shows: its pieces when the template is a join of pieces, else
  // the pattern by hand. A stack without a format rule on top gives the default pieces with
  // "Use the new name" off.
  static NameBuilder of(const RuleStack& stack, std::string_view separator);

  friend bool operator==(const NameBuilder&, const NameBuilder&) = default;
};

}  // namespace tessane
