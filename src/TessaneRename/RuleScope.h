// The editor's choice of the files a rule acts on, and the rule conditions it stands for.
//
//   all                 no condition
//   raw                 one kind condition {raw}
//   jpeg                one extension condition ["jpg", "jpeg"]
//   video               one kind condition {video}
//   body(tag)           one body-tag condition
//   nameContains(text)  one name-contains condition: the text composed (NFC), ignoring case,
//                       first occurrence
//
// Conditions of any other shape (a camera model, several conditions, a case-sensitive search,
// other kinds or extensions) have no scope: the editor shows none and the rule keeps them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "RenameEngine/Rule.h"

namespace tessane {

struct RuleScope {
  enum class Kind { all, raw, jpeg, video, body, nameContains };
  Kind kind = Kind::all;
  std::string text;  // body: the tag; nameContains: the text

  static RuleScope all() { return {Kind::all, {}}; }
  static RuleScope raw() { return {Kind::raw, {}}; }
  static RuleScope jpeg() { return {Kind::jpeg, {}}; }
  static RuleScope video() { return {Kind::video, {}}; }
  static RuleScope body(std::string tag) { return {Kind::body, std::move(tag)}; }
  static RuleScope nameContains(std::string text) { return {Kind::nameContains, std::move(text)}; }

  std::vector<RuleCondition> conditions() const;
  // nullopt when the conditions have none of the shapes above.
  static std::optional<RuleScope> of(const std::vector<RuleCondition>& conditions);

  // "All files", "RAW files", "Camera body “A”"…
  QString title() const;

  friend bool operator==(const RuleScope&, const RuleScope&) = default;
};

}  // namespace tessane
