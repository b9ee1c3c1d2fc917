#include "CameraBodies.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <set>

#include "JsonDecoders.h"
#include "NameCheck.h"
#include "Unicode.h"

namespace tessane {
namespace {

std::string_view trimmed(std::string_view s) {
  std::size_t begin = 0;
  std::size_t end = s.size();
  // Trim Unicode white space at both ends, character by character.
  while (begin < end) {
    std::size_t next = begin;
    if (!unicode::isWhitespace(unicode::nextScalar(s, next))) break;
    begin = next;
  }
  while (end > begin) {
    std::size_t start = end - 1;
    while (start > begin && (static_cast<unsigned char>(s[start]) & 0xC0) == 0x80)
      --start;
    std::size_t probe = start;
    if (!unicode::isWhitespace(unicode::nextScalar(s, probe))) break;
    end = start;
  }
  return s.substr(begin, end - begin);
}

std::optional<std::string> textOf(const MetadataMap& metadata, MetadataKey key) {
  const MetadataValue* v = metadata.find(key);
  if (v == nullptr || v->asText() == nullptr) return std::nullopt;
  std::string t(trimmed(*v->asText()));
  if (t.empty()) return std::nullopt;
  return t;
}

template <typename Map>
const typename Map::mapped_type* lookup(const Map& map, const std::optional<std::string>& key) {
  if (!key) return nullptr;
  const std::string wanted = CameraBodies::normalizedKey(*key);
  if (wanted.empty()) return nullptr;
  for (const auto& [k, v] : map) {
    if (CameraBodies::normalizedKey(k) == wanted) return &v;
  }
  return nullptr;
}

}  // namespace

std::optional<std::string> CameraBodies::bodyKey(const MetadataMap& metadata) {
  if (auto serial = textOf(metadata, MetadataKey::serial)) return serial;
  return textOf(metadata, MetadataKey::model);
}

std::string CameraBodies::normalizedKey(std::string_view key) {
  return unicode::toLower(unicode::toNfc(trimmed(key)));
}

bool CameraBodies::sameBody(const MetadataMap& a, const MetadataMap& b) {
  const std::optional<std::string> first = bodyKey(a);
  const std::optional<std::string> second = bodyKey(b);
  return first && second && normalizedKey(*first) == normalizedKey(*second);
}

std::string CameraBodies::trimmed(std::string_view text) {
  return std::string(tessane::trimmed(text));
}

bool CameraBodies::isUsableTag(std::string_view tag) {
  return !NameCheck::hasInvalidCharacters(tessane::trimmed(tag));
}

std::optional<std::string> CameraBodies::tag(const MetadataMap& metadata) const {
  for (MetadataKey key : {MetadataKey::serial, MetadataKey::model}) {
    if (const std::string* t = lookup(tags, textOf(metadata, key))) {
      std::string tag(tessane::trimmed(*t));
      if (!tag.empty()) return tag;
    }
  }
  return std::nullopt;
}

double CameraBodies::clockOffset(const MetadataMap& metadata) const {
  const std::optional<std::string> serial = textOf(metadata, MetadataKey::serial);
  if (lookup(tags, serial) != nullptr || lookup(clockOffsets, serial) != nullptr) {
    const double* offset = lookup(clockOffsets, serial);
    return offset ? *offset : 0;
  }
  const double* offset = lookup(clockOffsets, textOf(metadata, MetadataKey::model));
  return offset ? *offset : 0;
}

std::optional<Date> CameraBodies::correctedCaptureTime(const MetadataMap& metadata) const {
  const MetadataValue* v = metadata.find(MetadataKey::date);
  const Date* when = v ? v->asDate() : nullptr;
  if (when == nullptr) return std::nullopt;
  const auto shift = std::chrono::duration<double>(clockOffset(metadata));
  return *when + std::chrono::round<std::chrono::microseconds>(shift);
}

std::vector<std::string> CameraBodies::bodiesWithoutTag(
    const std::vector<MetadataMap>& files) const {
  std::vector<std::string> out;
  std::set<std::string> seen;
  for (const MetadataMap& m : files) {
    const std::optional<std::string> key = bodyKey(m);
    if (!key || tag(m)) continue;
    std::string normalized = normalizedKey(*key);
    if (seen.insert(normalized).second) out.push_back(std::move(normalized));
  }
  return out;
}

CameraBodies CameraBodies::merged(const CameraBodies& imported) const {
  CameraBodies out = *this;
  // The imported entry replaces any entry naming the same body, whatever its spelling.
  auto mergeInto = [](auto& into, const auto& from) {
    for (const auto& [key, value] : from) {
      const std::string wanted = normalizedKey(key);
      for (auto it = into.begin(); it != into.end();) {
        it = normalizedKey(it->first) == wanted ? into.erase(it) : std::next(it);
      }
      into[key] = value;
    }
  };
  mergeInto(out.tags, imported.tags);
  mergeInto(out.clockOffsets, imported.clockOffsets);
  return out;
}

std::string formatClockOffset(double seconds) {
  const double rounded = std::isfinite(seconds) ? std::round(seconds) : 0;
  const long long s = static_cast<long long>(std::clamp(rounded, -9.0e15, 9.0e15));
  const char* sign = s >= 1 ? "+" : (s < 0 ? "-" : "");
  const long long a = s < 0 ? -s : s;
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%s%lld:%02lld:%02lld", sign, a / 3600, (a % 3600) / 60,
                a % 60);
  return buffer;
}

std::optional<double> parseClockOffset(std::string_view text) {
  text = trimmed(text);
  if (text.empty()) return 0.0;
  double sign = 1;
  if (text.front() == '+' || text.front() == '-') {
    sign = text.front() == '-' ? -1 : 1;
    text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
  }
  std::vector<std::string_view> pieces;
  for (std::size_t start = 0;;) {
    const std::size_t colon = text.find(':', start);
    pieces.push_back(text.substr(start, colon == std::string_view::npos ? colon : colon - start));
    if (colon == std::string_view::npos) break;
    start = colon + 1;
  }
  if (pieces.size() > 3) return std::nullopt;
  double value = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const std::string_view p = pieces[i];
    if (p.empty() || p.find_first_not_of("0123456789") != std::string_view::npos)
      return std::nullopt;
    unsigned long long n = 0;
    const auto [end, error] = std::from_chars(p.data(), p.data() + p.size(), n);
    if (error != std::errc() || end != p.data() + p.size()) return std::nullopt;
    if (i > 0 && n >= 60) return std::nullopt;
    value = value * 60 + static_cast<double>(n);
  }
  return sign * value;
}

std::optional<std::pair<CameraBodies, ClockSyncResult>> syncClocks(const CameraBodies& bodies,
                                                                   const MetadataMap& right,
                                                                   const MetadataMap& wrong) {
  const std::optional<std::string> key = CameraBodies::bodyKey(wrong);
  if (!key || CameraBodies::sameBody(right, wrong)) return std::nullopt;
  const MetadataValue* r = right.find(MetadataKey::date);
  const MetadataValue* w = wrong.find(MetadataKey::date);
  const Date* rightTime = r ? r->asDate() : nullptr;
  const Date* wrongTime = w ? w->asDate() : nullptr;
  if (rightTime == nullptr || wrongTime == nullptr) return std::nullopt;
  const double difference = std::chrono::duration<double>(*rightTime - *wrongTime).count();
  const double offset = std::round(bodies.clockOffset(right) + difference);

  CameraBodies updated = bodies;
  const std::string wanted = CameraBodies::normalizedKey(*key);
  for (auto it = updated.clockOffsets.begin(); it != updated.clockOffsets.end();) {
    it = CameraBodies::normalizedKey(it->first) == wanted ? updated.clockOffsets.erase(it)
                                                          : std::next(it);
  }
  // A serial keeps an explicit zero while its model has an offset: without an entry of its own
  // the model's offset would apply to this camera again.
  const double* modelOffset = key == textOf(wrong, MetadataKey::serial)
                                  ? lookup(updated.clockOffsets, textOf(wrong, MetadataKey::model))
                                  : nullptr;
  if (offset != 0 || (modelOffset != nullptr && *modelOffset != 0)) {
    updated.clockOffsets[*key] = offset;
  }

  const std::string label = bodies.tag(wrong).value_or(*key);
  ClockSyncResult result{*key, offset, {}};
  result.line =
      offset != 0 ? label + " clock: " + formatClockOffset(offset) : label + " was already in time";
  return std::make_pair(std::move(updated), std::move(result));
}

Json toJson(const CameraBodies& bodies) {
  return Json{{"tags", bodies.tags}, {"clockOffsets", bodies.clockOffsets}};
}

Decoded<CameraBodies> decodeCameraBodies(const Json& value) {
  return json::decodeSafely<CameraBodies>([&] {
    if (!value.is_object()) throw json::DecodeError("Expected an object for camera bodies.");
    CameraBodies bodies;
    const Json& tags = json::member(value, "tags");
    const Json& offsets = json::member(value, "clockOffsets");
    if (!tags.is_object() || !offsets.is_object()) {
      throw json::DecodeError("Expected objects for “tags” and “clockOffsets”.");
    }
    for (const auto& [k, v] : tags.items())
      bodies.tags[k] = json::decodeString(v, k);
    for (const auto& [k, v] : offsets.items()) {
      if (!v.is_number()) throw json::DecodeError("Expected a number of seconds for “" + k + "”.");
      bodies.clockOffsets[k] = v.get<double>();
    }
    return bodies;
  });
}

}  // namespace tessane
