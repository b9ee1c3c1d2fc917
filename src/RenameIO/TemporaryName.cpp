#include "TemporaryName.h"

#include <charconv>

namespace tessane {
namespace {

bool isTagCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

// The longest prefix of `name` of at most `limit` bytes that does not split a UTF-8 sequence.
std::string_view cut(std::string_view name, std::size_t limit) {
  if (name.size() <= limit) return name;
  std::size_t end = limit;
  // Step back over continuation bytes so that a multi-byte character is kept whole or dropped.
  while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
    --end;
  return name.substr(0, end);
}

}  // namespace

std::string TemporaryName::make(std::string_view tag, std::size_t index, std::string_view name) {
  std::string out;
  out.reserve(kPrefix.size() + tag.size() + 24 + name.size());
  out.append(kPrefix).append(tag).push_back('-');
  out.append(std::to_string(index)).push_back('-');
  const std::size_t room = out.size() < kMaxNameBytes ? kMaxNameBytes - out.size() : 0;
  out.append(cut(name, room));
  return out;
}

std::optional<TemporaryName> TemporaryName::parse(std::string_view text) {
  if (!text.starts_with(kPrefix)) return std::nullopt;
  text.remove_prefix(kPrefix.size());
  if (text.size() < 9 || text[8] != '-') return std::nullopt;
  TemporaryName out;
  out.tag = std::string(text.substr(0, 8));
  for (char c : out.tag) {
    if (!isTagCharacter(c)) return std::nullopt;
  }
  text.remove_prefix(9);
  const char* begin = text.data();
  const char* end = text.data() + text.size();
  const auto [next, ec] = std::from_chars(begin, end, out.index);
  if (ec != std::errc() || next == begin || next == end || *next != '-') return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(next - begin) + 1);
  if (text.empty()) return std::nullopt;
  out.name = std::string(text);
  // A cut stops at most 3 bytes short of the limit (a 4-byte character that did not fit).
  out.mayBeCut =
      kPrefix.size() + 9 + static_cast<std::size_t>(next - begin) + 1 + out.name.size() + 3 >=
      kMaxNameBytes;
  return out;
}

}  // namespace tessane
