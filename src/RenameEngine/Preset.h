// A preset: a named rule stack kept in a file ("Wedding.tessanepreset"), to use again on the
// next shoot. The file is JSON, pretty-printed with sorted keys and slashes not escaped. A file
// from a newer version is recognised by its header before anything else is read, and is never
// loaded half-way.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "RuleStack.h"

namespace tessane {

struct Preset {
  static constexpr std::int64_t kSchemaVersion = 1;  // what this version writes
  static constexpr std::string_view kExtension = "tessanepreset";

  std::int64_t schemaVersion = kSchemaVersion;
  std::string name;
  RuleStack stack;

  friend bool operator==(const Preset&, const Preset&) = default;
};

class PresetError {
 public:
  enum class Case { unsupportedVersion, unreadable };
  static PresetError unsupportedVersion(std::int64_t version) {
    return PresetError(Case::unsupportedVersion, version, {});
  }
  static PresetError unreadable(std::string detail = {}) {
    return PresetError(Case::unreadable, 0, std::move(detail));
  }

  Case kind() const { return case_; }
  std::int64_t version() const { return version_; }      // unsupportedVersion
  const std::string& detail() const { return detail_; }  // unreadable: what the decoder said

  friend bool operator==(const PresetError& a, const PresetError& b) {
    return a.case_ == b.case_ && a.version_ == b.version_;
  }

 private:
  PresetError(Case c, std::int64_t version, std::string detail)
      : case_(c), version_(version), detail_(std::move(detail)) {}
  Case case_;
  std::int64_t version_;
  std::string detail_;
};

// The file's text; every schemaVersion below 2 is read (1, 0, even negative).
std::variant<Preset, PresetError> decodePreset(std::string_view bytes);
std::string encodePreset(const Preset& preset);
Json toJson(const Preset& preset);

// The file name of a preset without its extension: "/", ":" and control characters become
// "-", white space of every kind is trimmed from both ends, leading dots removed; "Preset" when
// nothing is left.
std::string presetFileStem(std::string_view name);

}  // namespace tessane
