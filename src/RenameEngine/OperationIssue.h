// The problems that operations, templates and counters report beside a usable name, as kinds with
// their data; the texts users read are made by the application's message layer.
#pragma once

#include <string>
#include <string_view>

namespace tessane {

class OperationIssue {
 public:
  enum class Case {
    invalidPattern,
    protectedBlock,
    counterOverflow,
    missingVariable,
    unknownVariable,
    invalidFormat,
    invalidTemplate,
    patternTooSlow
  };

  static OperationIssue invalidPattern() { return OperationIssue(Case::invalidPattern, {}); }
  static OperationIssue protectedBlock() { return OperationIssue(Case::protectedBlock, {}); }
  static OperationIssue counterOverflow() { return OperationIssue(Case::counterOverflow, {}); }
  static OperationIssue missingVariable(std::string name) {
    return OperationIssue(Case::missingVariable, std::move(name));
  }
  static OperationIssue unknownVariable(std::string name) {
    return OperationIssue(Case::unknownVariable, std::move(name));
  }
  static OperationIssue invalidFormat(std::string name) {
    return OperationIssue(Case::invalidFormat, std::move(name));
  }
  static OperationIssue invalidTemplate() { return OperationIssue(Case::invalidTemplate, {}); }
  // A regular expression stopped on this name before it finished (it backtracks without end, as
  // "(a+)+$" does on a long run of "a"): the name stays as it was.
  static OperationIssue patternTooSlow() { return OperationIssue(Case::patternTooSlow, {}); }

  Case kind() const noexcept { return case_; }
  // The variable's name for missingVariable, unknownVariable and invalidFormat; else empty.
  const std::string& variable() const noexcept { return variable_; }

  friend bool operator==(const OperationIssue&, const OperationIssue&) = default;

 private:
  OperationIssue(Case c, std::string variable) : case_(c), variable_(std::move(variable)) {}

  Case case_;
  std::string variable_;
};

}  // namespace tessane
