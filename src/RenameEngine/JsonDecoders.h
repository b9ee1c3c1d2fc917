// Inside the engine only: the decoders that the public `Decoded<T>` decoders are built from. They
// throw DecodeError (or a JSON library error) on the first problem; decodeSafely, at the public
// decoder, turns that into a value. No header outside the engine includes this one.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "Counter.h"
#include "JsonCoding.h"
#include "NameFormat.h"
#include "RenameOperation.h"
#include "Rule.h"
#include "RuleStack.h"
#include "TextLocating.h"

namespace tessane::json {

inline constexpr std::string_view kWrongKeyCount = "Invalid number of keys found, expected one.";

class DecodeError : public std::exception {
 public:
  explicit DecodeError(std::string message) : message_(std::move(message)) {}
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  std::string message_;
};

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

// Counter
Counter decodeCounter(const Json& value);  // absent keys take the defaults

// RenameOperation
CaseStyle decodeCaseStyle(const Json& value, std::string_view key);
RenameOperation decodeOperation(const Json& value);

// RuleStack
RuleStack decodeStack(const Json& value);  // absent separators: the defaults

// NameFormat
NameFormat decodeNameFormat(const Json& value);

// TextLocating
Occurrence decodeOccurrence(const Json& value, std::string_view key);
Anchor decodeAnchor(const Json& value);
BlockRef decodeBlockRef(const Json& value);
InsertPosition decodeInsertPosition(const Json& value);

// Rule
// A rule without an "id" gets a new one; absent "conditions" mean every file, absent
// "isEnabled" means on.
RuleAction decodeRuleAction(const Json& value);
RuleCondition decodeRuleCondition(const Json& value);
Rule decodeRule(const Json& value);

}  // namespace tessane::json
