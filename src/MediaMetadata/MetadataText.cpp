#include "MetadataText.h"

#include "RenameEngine/Unicode.h"

namespace tessane::MetadataText {
namespace {

bool isPadding(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\0' || c == '\v' || c == '\f';
}

std::string latin1ToUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size() * 2);
  for (const char c : text) {
    unicode::appendUtf8(out, static_cast<char32_t>(static_cast<unsigned char>(c)));
  }
  return out;
}

}  // namespace

std::optional<std::string> clean(std::string_view raw) {
  // A value written into a fixed-size field ends at its first NUL.
  if (const std::size_t nul = raw.find('\0'); nul != std::string_view::npos) {
    raw = raw.substr(0, nul);
  }
  while (!raw.empty() && isPadding(raw.front()))
    raw.remove_prefix(1);
  while (!raw.empty() && isPadding(raw.back()))
    raw.remove_suffix(1);
  if (raw.empty()) return std::nullopt;
  if (unicode::isValidUtf8(raw)) return std::string(raw);
  return latin1ToUtf8(raw);
}

bool setText(MetadataMap& map, MetadataKey key, std::string_view raw) {
  std::optional<std::string> text = clean(raw);
  if (!text) return false;
  map.set(key, MetadataValue::text(std::move(*text)));
  return true;
}

}  // namespace tessane::MetadataText
