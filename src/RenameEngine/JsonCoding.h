// The JSON form of the engine's values, shared by presets, the history, camera bodies and the
// session memory.
//
// Enumerations without payload are stored as their case name ("first"). Enumerations with payload
// are an object with exactly one key, the case name, whose value is an object of the case's
// values: unnamed ones under "_0", "_1", labelled ones under their labels, and {} for a case
// without values:  {"index":{"_0":-1}}  {"after":{"_0":{...}}}  {"start":{}}
//
// Decoders report problems as values (`Decoded<T>`). Inside the engine, decoding helpers throw
// `DecodeError`; `decodeSafely` is the one place that turns any failure into a value, so no
// exception leaves the engine.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <exception>
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

inline constexpr std::string_view kWrongKeyCount = "Invalid number of keys found, expected one.";

class DecodeError : public std::exception {
 public:
  explicit DecodeError(std::string message) : message_(std::move(message)) {}
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  std::string message_;
};

// {"name": payload}; the payload is an object ({} by default).
Json enumCase(std::string_view name, Json payload = Json::object());

// The case name and payload object of an enumeration with payload. Throws DecodeError with
// kWrongKeyCount for an object of more or fewer keys, and for anything that is not an object
// or whose payload is not an object.
std::pair<std::string, const Json*> decodeCase(const Json& value, std::string_view typeName);

// A keyed member of an object; throws when it is absent.
const Json& member(const Json& object, std::string_view key);
std::string decodeString(const Json& value, std::string_view key);
std::int64_t decodeInteger(const Json& value, std::string_view key);
bool decodeBool(const Json& value, std::string_view key);

// The message for a case name that the type does not have.
std::string unknownCase(std::string_view typeName, std::string_view caseName);

// Runs `decode` (which may throw DecodeError or a JSON library error) and returns its value, or
// the error's message. Never throws.
template <typename T, typename Decode>
Decoded<T> decodeSafely(Decode&& decode) noexcept {
  try {
    return Decoded<T>{decode(), {}};
  } catch (const std::exception& e) {
    return Decoded<T>{std::nullopt, e.what()};
  } catch (...) {
    return Decoded<T>{std::nullopt, "The data couldn’t be read."};
  }
}

// The first key of `given` that its re-encoded form `known` lacks, with where it sits
// ("stack.rules[0].enabled"); nullopt when every key was read. Objects are compared key by key and
// arrays item by item, so a misspelt key is found at any depth instead of being read as absent.
std::optional<std::string> firstUnknownKey(const Json& given, const Json& known);

// Parses JSON text without throwing; nullopt when the text is not JSON.
std::optional<Json> parse(std::string_view text) noexcept;

}  // namespace json
}  // namespace tessane
