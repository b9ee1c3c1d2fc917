// A format rule's settings: the template that builds the new base name, and the counter that
// "{counter}" draws on.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Counter.h"
#include "JsonCoding.h"
#include "OperationIssue.h"
#include "Template.h"

namespace tessane {

struct NameFormat {
  std::string templateText;
  Counter counter;

  bool usesCounter() const { return Template::parse(templateText).usesCounter(); }

  friend bool operator==(const NameFormat&, const NameFormat&) = default;
};

// The template rendered for one file, with the issues met on the way.
struct RenderedName {
  std::string text;
  std::vector<OperationIssue> issues;
};

// A template parsed once with its variable names resolved once, ready to render many files.
class PreparedTemplate {
 public:
  explicit PreparedTemplate(std::string_view text);

  const Template& parsed() const { return parsed_; }
  bool usesCounter() const { return usesCounter_; }

  // Renders the template for one file. `counterValue` is the file's number when the template
  // uses the counter (nullopt when the count passed its limit: nothing is inserted and
  // counterOverflow is reported). "{counter:5}" pads to five digits instead of the counter's
  // own padding. Missing values are replaced by `missingText`; an unknown name leaves nothing.
  // A piece that leaves nothing takes one separator ("_", "-", " ", ".") with it, so no doubled
  // separator and no separator at either end is left where it was; values have "/" and ":"
  // turned into "-" and control characters dropped; white space at either end is trimmed.
  RenderedName render(const VariableContext& context, const Counter& counter,
                      std::optional<std::int64_t> counterValue, std::string_view missingText) const;

 private:
  struct Piece {
    enum class Kind { text, counter, variable, unknown };
    Kind kind = Kind::text;
    TemplateVariable variable = TemplateVariable::name;
    std::optional<std::int64_t> padding;  // counter: from its format
    bool badFormat = false;               // counter: a format that is not a digit count
  };
  Template parsed_;
  std::vector<Piece> pieces_;
  bool usesCounter_ = false;
};

Json toJson(const NameFormat& format);

}  // namespace tessane
