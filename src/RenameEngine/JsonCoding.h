// The JSON form of the engine's values, shared by presets, the history, camera bodies and the
// session memory.
//
// Enumerations without payload are stored as their case name ("first"). Enumerations with payload
// are an object with exactly one key, the case name, whose value is an object of the case's
// values: unnamed ones under "_0", "_1", labelled ones under their labels, and {} for a case
// without values:  {"index":{"_0":-1}}  {"after":{"_0":{...}}}  {"start":{}}
//
// Decoders report problems as values (`Decoded<T>`): that is all this header offers outside the
// engine. Inside it, the decoders are built from throwing helpers (JsonDecoders.h, which nothing
// outside the engine includes) and `decodeSafely` turns any failure into a value, so no exception
// leaves the engine.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tessane {

using Json = nlohmann::json;

// A decoded value, or the reason there is none.
template <typename T>
struct Decoded {
  std::optional<T> value;
  std::string error;

  bool ok() const { return value.has_value(); }
};

namespace json {

// {"name": payload}; the payload is an object ({} by default).
Json enumCase(std::string_view name, Json payload = Json::object());

// The first key of `given` that its re-encoded form `known` lacks, with where it sits
// ("stack.rules[0].enabled"); nullopt when every key was read. Objects are compared key by key and
// arrays item by item, so a misspelt key is found at any depth instead of being read as absent.
std::optional<std::string> firstUnknownKey(const Json& given, const Json& known);

// Parses JSON text without throwing; nullopt when the text is not JSON.
std::optional<Json> parse(std::string_view text) noexcept;

}  // namespace json
}  // namespace tessane
