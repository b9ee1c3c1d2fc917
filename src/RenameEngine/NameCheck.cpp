#include "NameCheck.h"

#include "Unicode.h"

namespace tessane {

namespace NameCheck {

bool hasInvalidCharacters(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      // ASCII controls are 0x00-0x1F and 0x7F.
      if (byte == '/' || byte == ':' || byte < 0x20 || byte == 0x7F) return true;
      ++i;
      continue;
    }
    if (unicode::isControl(unicode::nextScalar(text, i))) return true;  // C1 controls
  }
  return false;
}

bool hasSpaceAtEdge(std::string_view base) {
  if (base.empty()) return false;
  std::size_t offset = 0;
  if (unicode::isWhitespace(unicode::nextScalar(base, offset))) return true;
  std::size_t last = base.size() - 1;
  while (last > 0 && (static_cast<unsigned char>(base[last]) & 0xC0) == 0x80)
    --last;
  return unicode::isWhitespace(unicode::nextScalar(base, last));
}

std::vector<NameError> problems(std::string_view base, std::string_view ext) {
  const std::size_t bytes = base.size() + (ext.empty() ? 0 : 1 + ext.size());
  if (bytes == 0) return {NameError::empty()};
  std::vector<NameError> out;
  const bool dotFirst = base.empty() ? true : base.front() == '.';
  if (dotFirst) out.push_back(NameError::startsWithDot());
  if (hasInvalidCharacters(base) || hasInvalidCharacters(ext)) {
    out.push_back(NameError::invalidCharacters());
  }
  if (hasSpaceAtEdge(base)) out.push_back(NameError::spaceAtEdge());
  if (bytes > kMaxNameBytes) out.push_back(NameError::tooLong(static_cast<std::int64_t>(bytes)));
  return out;
}

}  // namespace NameCheck
}  // namespace tessane
