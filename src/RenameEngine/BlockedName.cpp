#include "BlockedName.h"

#include <algorithm>

#include "Unicode.h"

namespace tessane {
namespace {

void appendPiece(std::vector<NameToken>& tokens, NameToken::Kind kind, std::string_view text) {
  if (text.empty()) return;
  if (!tokens.empty() && tokens.back().kind == kind) {
    tokens.back().text.append(text);
  } else {
    tokens.push_back(NameToken{kind, std::string(text)});
  }
}

}  // namespace

SeparatorSet::SeparatorSet(const std::vector<std::string>& separators) {
  std::vector<std::pair<std::string, std::size_t>> prepared;
  for (const std::string& s : separators) {
    if (s.empty()) continue;
    std::string text = unicode::toNfc(s);
    const std::size_t characters = unicode::graphemeCount(text);
    prepared.emplace_back(std::move(text), characters);
  }
  std::stable_sort(prepared.begin(), prepared.end(),
                   [](const auto& a, const auto& b) { return a.second > b.second; });
  for (auto& [text, characters] : prepared) {
    if (text.size() != 1 || (static_cast<unsigned char>(text[0]) & 0x80)) singleAscii_ = false;
    texts_.push_back(std::move(text));
  }
}

const SeparatorSet& SeparatorSet::defaults() {
  static const SeparatorSet set(BlockedName::defaultSeparators());
  return set;
}

const std::vector<std::string>& BlockedName::defaultSeparators() {
  static const std::vector<std::string> separators{"_", "-", " ", "."};
  return separators;
}

BlockedName BlockedName::split(std::string_view name) {
  return split(name, SeparatorSet::defaults());
}

BlockedName BlockedName::split(std::string_view name, const std::vector<std::string>& separators) {
  return split(name, SeparatorSet(separators));
}

BlockedName BlockedName::split(std::string_view name, const SeparatorSet& separators) {
  BlockedName result;
  if (name.empty()) return result;
  const std::vector<std::string>& seps = separators.texts();
  std::vector<NameToken>& tokens = result.tokens_;
  tokens.reserve(8);  // camera names have three to seven tokens: one allocation, not three

  // The common case: an ASCII name and one-byte separators. Every byte is a character (CR LF is
  // the one ASCII pair that forms a single character, and it matches no one-byte separator).
  if (unicode::isAscii(name) && separators.allSingleAscii()) {
    bool isSeparator[256] = {};
    for (const std::string& s : seps)
      isSeparator[static_cast<unsigned char>(s[0])] = true;
    auto separatorAt = [&](std::size_t j, std::size_t& width) {
      const bool crlf = name[j] == '\r' && j + 1 < name.size() && name[j + 1] == '\n';
      width = crlf ? 2 : 1;
      return !crlf && isSeparator[static_cast<unsigned char>(name[j])];
    };
    std::size_t i = 0;
    while (i < name.size()) {
      std::size_t width = 1;
      const bool separator = separatorAt(i, width);
      std::size_t j = i + width;
      while (j < name.size() && separatorAt(j, width) == separator)
        j += width;
      appendPiece(tokens, separator ? NameToken::Kind::separator : NameToken::Kind::block,
                  name.substr(i, j - i));
      i = j;
    }
    return result;
  }

  const std::vector<std::size_t> bounds = unicode::graphemeBoundaries(name);
  std::size_t b = 0;  // index into bounds of the current position
  while (b + 1 < bounds.size()) {
    const std::size_t pos = bounds[b];
    const std::string_view rest = name.substr(pos);
    bool matched = false;
    for (const std::string& s : seps) {
      if (rest.substr(0, s.size()) != s) continue;
      const std::size_t end = pos + s.size();
      const auto it =
          std::lower_bound(bounds.begin() + static_cast<std::ptrdiff_t>(b), bounds.end(), end);
      if (it == bounds.end() || *it != end) continue;  // would end inside a character
      appendPiece(tokens, NameToken::Kind::separator, s);
      b = static_cast<std::size_t>(it - bounds.begin());
      matched = true;
      break;
    }
    if (!matched) {
      appendPiece(tokens, NameToken::Kind::block, name.substr(pos, bounds[b + 1] - pos));
      ++b;
    }
  }
  return result;
}

BlockedName::BlockedName(std::vector<NameToken> tokens) {
  for (NameToken& t : tokens)
    appendPiece(tokens_, t.kind, t.text);
}

std::vector<std::string> BlockedName::blocks() const {
  std::vector<std::string> out;
  for (const NameToken& t : tokens_) {
    if (t.kind == NameToken::Kind::block) out.push_back(t.text);
  }
  return out;
}

std::size_t BlockedName::blockCount() const {
  return static_cast<std::size_t>(
      std::count_if(tokens_.begin(), tokens_.end(),
                    [](const NameToken& t) { return t.kind == NameToken::Kind::block; }));
}

std::string BlockedName::joined() const {
  std::size_t size = 0;
  for (const NameToken& t : tokens_)
    size += t.text.size();
  std::string out;
  out.reserve(size);
  for (const NameToken& t : tokens_)
    out.append(t.text);
  return out;
}

std::optional<std::size_t> BlockedName::tokenIndexOfBlock(long n) const {
  const long count = static_cast<long>(blockCount());
  const long wanted = n < 0 ? count + n : n;
  if (wanted < 0 || wanted >= count) return std::nullopt;
  long seen = 0;
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    if (tokens_[i].kind != NameToken::Kind::block) continue;
    if (seen == wanted) return i;
    ++seen;
  }
  return std::nullopt;
}

}  // namespace tessane
