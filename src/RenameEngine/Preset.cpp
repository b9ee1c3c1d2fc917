#include "Preset.h"

#include "Unicode.h"

namespace tessane {

std::string PresetError::message() const {
  if (case_ == Case::unsupportedVersion) {
    return "This preset was made by a newer version of Tessane Rename (format " +
           std::to_string(version_) + ")";
  }
  return "This file isn’t a preset that can be read";
}

std::variant<Preset, PresetError> decodePreset(std::string_view bytes) {
  const std::optional<Json> parsed = json::parse(bytes);
  if (!parsed || !parsed->is_object()) return PresetError::unreadable("The file isn’t JSON.");
  const auto header = json::decodeSafely<std::int64_t>(
      [&] { return json::decodeInteger(json::member(*parsed, "schemaVersion"), "schemaVersion"); });
  if (!header.ok()) return PresetError::unreadable(header.error);
  if (*header.value >= 2) return PresetError::unsupportedVersion(*header.value);
  Decoded<Preset> preset = json::decodeSafely<Preset>([&] {
    Preset p;
    p.schemaVersion = *header.value;
    p.name = json::decodeString(json::member(*parsed, "name"), "name");
    p.stack = json::decodeStack(json::member(*parsed, "stack"));
    return p;
  });
  if (!preset.ok()) return PresetError::unreadable(preset.error);
  return std::move(*preset.value);
}

std::string encodePreset(const Preset& preset) {
  const Json document{{"name", preset.name},
                      {"schemaVersion", preset.schemaVersion},
                      {"stack", toJson(preset.stack)}};
  // Keys come out sorted (the JSON object is ordered); text that is not UTF-8 is replaced
  // rather than failing the save.
  return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string presetFileStem(std::string_view name) {
  std::string out;
  const std::vector<std::size_t> bounds = unicode::graphemeBoundaries(name);
  for (std::size_t i = 0; i + 1 < bounds.size(); ++i) {
    const std::string_view c = name.substr(bounds[i], bounds[i + 1] - bounds[i]);
    bool replace = false;
    for (std::size_t offset = 0; offset < c.size();) {
      const char32_t s = unicode::nextScalar(c, offset);
      replace = replace || s == U'/' || s == U':' || unicode::isControl(s);
    }
    out.append(replace ? std::string_view("-") : c);
  }
  const std::size_t first = out.find_first_not_of(" \t");
  if (first == std::string::npos) return "Preset";
  out = out.substr(first, out.find_last_not_of(" \t") - first + 1);
  out.erase(0, out.find_first_not_of('.'));
  if (out.find_first_not_of('.') == std::string::npos) return "Preset";
  return out;
}

}  // namespace tessane
