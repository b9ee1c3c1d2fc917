#include "JsonCoding.h"

#include <cmath>
#include <limits>

#include "JsonDecoders.h"

namespace tessane::json {
namespace {

std::string inQuotes(std::string_view key) {
  std::string out("“");
  out.append(key).append("”");
  return out;
}

}  // namespace

Json enumCase(std::string_view name, Json payload) {
  Json object = Json::object();
  object[std::string(name)] = std::move(payload);
  return object;
}

std::pair<std::string, const Json*> decodeCase(const Json& value, std::string_view typeName) {
  if (!value.is_object()) {
    throw DecodeError(std::string("Expected an object for ").append(typeName).append("."));
  }
  if (value.size() != 1) throw DecodeError(std::string(kWrongKeyCount));
  const auto it = value.begin();
  if (!it.value().is_object()) {
    throw DecodeError(
        std::string("Expected an object under ").append(inQuotes(it.key())).append("."));
  }
  return {it.key(), &it.value()};
}

const Json& member(const Json& object, std::string_view key) {
  if (!object.is_object()) throw DecodeError("Expected an object.");
  const auto it = object.find(key);
  if (it == object.end()) {
    throw DecodeError(std::string("No value for the key ").append(inQuotes(key)).append("."));
  }
  return *it;
}

std::string decodeString(const Json& value, std::string_view key) {
  if (!value.is_string()) {
    throw DecodeError(std::string("Expected text for ").append(inQuotes(key)).append("."));
  }
  return value.get<std::string>();
}

std::int64_t decodeInteger(const Json& value, std::string_view key) {
  if (value.is_number_integer()) {
    if (value.is_number_unsigned() &&
        value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX)) {
      throw DecodeError(
          std::string("The number for ").append(inQuotes(key)).append(" is too large."));
    }
    return value.get<std::int64_t>();
  }
  if (value.is_number_float()) {
    // 3.0 is a whole number written as a real one; 3.5 is not a whole number.
    const double d = value.get<double>();
    if (std::isfinite(d) && std::trunc(d) == d && d >= -9.2233720368547758e18 &&
        d < 9.2233720368547758e18) {
      return static_cast<std::int64_t>(d);
    }
  }
  throw DecodeError(std::string("Expected a whole number for ").append(inQuotes(key)).append("."));
}

bool decodeBool(const Json& value, std::string_view key) {
  if (!value.is_boolean()) {
    throw DecodeError(std::string("Expected true or false for ").append(inQuotes(key)).append("."));
  }
  return value.get<bool>();
}

namespace {

std::optional<std::string> unknownKeyAt(const Json& given, const Json& known,
                                        const std::string& where) {
  if (given.is_object() && known.is_object()) {
    for (auto it = given.begin(); it != given.end(); ++it) {
      const std::string path = where.empty() ? it.key() : where + "." + it.key();
      const auto match = known.find(it.key());
      if (match == known.end()) return path;
      if (auto inner = unknownKeyAt(it.value(), *match, path)) return inner;
    }
  } else if (given.is_array() && known.is_array()) {
    for (std::size_t i = 0; i < given.size() && i < known.size(); ++i) {
      if (auto inner = unknownKeyAt(given[i], known[i], where + "[" + std::to_string(i) + "]")) {
        return inner;
      }
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> firstUnknownKey(const Json& given, const Json& known) {
  return unknownKeyAt(given, known, {});
}

std::string unknownCase(std::string_view typeName, std::string_view caseName) {
  return std::string("Unknown ")
      .append(typeName)
      .append(" ")
      .append(inQuotes(caseName))
      .append(".");
}

std::optional<Json> parse(std::string_view text) noexcept {
  try {
    Json value = Json::parse(text.begin(), text.end(), nullptr, false);
    if (value.is_discarded()) return std::nullopt;
    return value;
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace tessane::json
