#include "OperationIssue.h"

namespace tessane {

std::string OperationIssue::message(std::string_view missingText) const {
  std::string out;
  switch (case_) {
    case Case::invalidPattern:
      return "The regular expression isn’t valid";
    case Case::protectedBlock:
      return "A locked part of the name was left as it is";
    case Case::counterOverflow:
      return "The counter went past its limit";
    case Case::missingVariable:
      out.append("{").append(variable_).append("} is missing: ");
      if (missingText.empty()) return out.append("nothing goes in its place");
      return out.append("“").append(missingText).append("” goes in its place");
    case Case::unknownVariable:
      return out.append("{").append(variable_).append("} isn’t a known value");
    case Case::invalidFormat:
      return out.append("The format doesn’t apply to {")
          .append(variable_)
          .append("}: the plain value is used");
    case Case::invalidTemplate:
      return "A “{” has no closing “}”";
    case Case::patternTooSlow:
      return "The regular expression takes too long on this name: it was left as it is";
  }
  return out;
}

}  // namespace tessane
