// One rule of the stack: an action, the conditions that choose the files it acts on (all must
// hold; none means every file), and whether it is on.
#pragma once

#include <set>
#include <string>
#include <variant>
#include <vector>

#include "Counter.h"
#include "FileKind.h"
#include "JsonCoding.h"
#include "NameFormat.h"
#include "RenameOperation.h"
#include "RenameSubject.h"
#include "TextLocating.h"
#include "Uuid.h"

namespace tessane {

struct RuleAction {
  struct Operation {
    RenameOperation operation;
    friend bool operator==(const Operation&, const Operation&) = default;
  };
  struct Protect {  // locks a block against the rules after this one
    BlockRef block;
    friend bool operator==(const Protect&, const Protect&) = default;
  };
  struct Numbering {  // inserts the counter's number at its position
    Counter counter;
    friend bool operator==(const Numbering&, const Numbering&) = default;
  };
  struct Format {  // builds the base name from a template
    NameFormat format;
    friend bool operator==(const Format&, const Format&) = default;
  };
  std::variant<Operation, Protect, Numbering, Format> value;

  std::string_view caseName() const;  // "operation", "protect", "counter", "format"
  friend bool operator==(const RuleAction&, const RuleAction&) = default;
};

struct RuleCondition {
  struct Kind {  // the file's kind, from its extension, is one of these
    std::set<FileKind> kinds;
    friend bool operator==(const Kind&, const Kind&) = default;
  };
  struct FileExtension {  // ".ARW" and "arw" both match "DSC1.arw"; "x.arw.xmp" is "arw.xmp"
    std::vector<std::string> extensions;
    friend bool operator==(const FileExtension&, const FileExtension&) = default;
  };
  struct CameraModel {  // equal ignoring case; a file without a model never matches
    std::string model;
    friend bool operator==(const CameraModel&, const CameraModel&) = default;
  };
  struct BodyTag {  // equal ignoring case; a file without a tag never matches
    std::string tag;
    friend bool operator==(const BodyTag&, const BodyTag&) = default;
  };
  struct NameContains {  // the anchor has a hit in the file's name; occurrence does not matter
    Anchor anchor;
    friend bool operator==(const NameContains&, const NameContains&) = default;
  };
  std::variant<Kind, FileExtension, CameraModel, BodyTag, NameContains> value;

  std::string_view caseName() const;
  friend bool operator==(const RuleCondition&, const RuleCondition&) = default;
};

struct Rule {
  Uuid id = Uuid::random();
  RuleAction action;
  std::vector<RuleCondition> conditions;
  bool isEnabled = true;

  friend bool operator==(const Rule&, const Rule&) = default;
};

// A rule's conditions made ready for many files (extensions normalised, anchors compiled).
class RuleConditions {
 public:
  explicit RuleConditions(const std::vector<RuleCondition>& conditions);
  bool hold(const RenameSubject& subject) const;

 private:
  std::vector<RuleCondition> conditions_;
  std::vector<std::vector<std::string>> extensions_;  // per condition, lower-cased, no dots
  std::vector<std::string> folded_;                   // per condition, case-folded text
  std::vector<AnchorFinder> finders_;                 // one per nameContains, in order
};

Json toJson(const RuleAction& action);
Json toJson(const RuleCondition& condition);
Json toJson(const Rule& rule);

}  // namespace tessane
