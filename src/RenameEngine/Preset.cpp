#include "Preset.h"

#include "JsonDecoders.h"
#include "Unicode.h"

namespace tessane {

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
  // Every key is one this version writes: a misspelt one ("enabled" for "isEnabled") would
  // otherwise be read as the value left out, and the rule would silently do something else.
  if (const auto unknown = json::firstUnknownKey(*parsed, toJson(*preset.value))) {
    return PresetError::unreadable("Unknown key “" + *unknown + "”.");
  }
  return std::move(*preset.value);
}

Json toJson(const Preset& preset) {
  return Json{{"name", preset.name},
              {"schemaVersion", preset.schemaVersion},
              {"stack", toJson(preset.stack)}};
}

std::string encodePreset(const Preset& preset) {
  const Json document = toJson(preset);
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
  // Every kind of white space goes from both ends (no-break, em and ideographic spaces too), so
  // that no preset is stored as " .tessanepreset".
  std::size_t first = out.size();
  std::size_t last = 0;
  for (std::size_t offset = 0; offset < out.size();) {
    const std::size_t start = offset;
    if (unicode::isWhitespace(unicode::nextScalar(out, offset))) continue;
    first = std::min(first, start);
    last = offset;
  }
  if (first >= last) return "Preset";
  out = out.substr(first, last - first);
  out.erase(0, out.find_first_not_of('.'));
  if (out.find_first_not_of('.') == std::string::npos) return "Preset";
  return out;
}

}  // namespace tessane
