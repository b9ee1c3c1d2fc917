// The name template language: literal text and {variable} or {variable:format} pieces, as in
// "{date:yyyy-MM-dd}_{original}_{counter}". "{{" and "}}" stand for literal braces. Variable
// names are matched after NFC and lower-casing, in English or Italian ({data} is {date}).
//
// Parsing never fails: a "{" without its "}" makes the rest literal text and the template
// invalid. Rendering a variable gives its text, the plain text when its format does not apply,
// or nothing when the file lacks the data.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/uversion.h>

#include "RenameSubject.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane {

class DateFormatterCache;

struct TemplatePart {
  enum class Kind { text, variable };
  Kind kind = Kind::text;
  std::string text;                   // text: the literal text; variable: the name as typed
  std::optional<std::string> format;  // variable: what follows the first ":", if there was one

  friend bool operator==(const TemplatePart&, const TemplatePart&) = default;
};

struct Template {
  std::vector<TemplatePart> parts;
  bool isValid = true;  // false when a "{" was never closed

  static Template parse(std::string_view text);
  // Whether a variable is the counter ({counter}, {contatore}, any case).
  static bool isCounterName(std::string_view name);
  bool usesCounter() const;

  friend bool operator==(const Template&, const Template&) = default;
};

enum class TemplateVariable {
  name,
  original,
  folder,
  ext,
  body,
  resolution,
  frame,
  // The metadata keys, in their order.
  created,
  modified,
  date,
  make,
  model,
  lens,
  serial,
  iso,
  shutter,
  aperture,
  focal,
  city,
  location,
  author,
  title,
  headline,
  duration,
  width,
  height,
  fps,
  codec,
  artist,
  album,
  track,
  year,
  pages
};

std::string_view rawValue(TemplateVariable variable);
// The variable a typed name stands for, in English or Italian; nullopt when unknown.
std::optional<TemplateVariable> templateVariableNamed(std::string_view typed);
// The known variables a template names (not the counter), each once.
std::set<TemplateVariable> variablesOf(const Template& parsed);

struct VariableValue {
  enum class Kind { value, invalidFormat, missing };
  Kind kind = Kind::missing;
  std::string text;  // value: the text; invalidFormat: the plain value, used anyway

  static VariableValue value(std::string text) { return {Kind::value, std::move(text)}; }
  static VariableValue invalidFormat(std::string plain) {
    return {Kind::invalidFormat, std::move(plain)};
  }
  static VariableValue missing() { return {Kind::missing, {}}; }

  friend bool operator==(const VariableValue&, const VariableValue&) = default;
};

struct VariableContext {
  const RenameSubject& subject;
  std::string_view currentName;  // the base name as it stands at this point of the rule stack
  const icu::TimeZone& zone;     // where dates are broken into days and formatted
  DateFormatterCache& dates;     // formatters for `zone`
  std::string_view defaultDatePattern = "yyyy-MM-dd";  // a date variable without a format
  // Formatters in UTC, for the capture time of a file that says its own UTC offset: {date} is
  // then the shot's local time, and `zone` serves only files that don't say. Null: `zone` for all.
  DateFormatterCache* shotDates = nullptr;
};

// The value of `variable` for one file, with an optional format.
VariableValue variableValue(TemplateVariable variable, const std::optional<std::string>& format,
                            const VariableContext& context);

// Number texts as they go into names: at most `digits` fraction digits, trailing zeros and a
// trailing point dropped ("2.50" -> "2.5", "8.0" -> "8"). Locale-free.
std::string decimalText(double value, int digits);
// An exposure time as it goes into a name: "1-" and the nearest whole reciprocal when that is
// 2 or more and within 3% ("1-250" for 0.004 s, "1-15" for 0.0666667 s), else a decimal with
// one fraction digit at most ("0.3", "2").
std::string shutterText(double seconds);

}  // namespace tessane
