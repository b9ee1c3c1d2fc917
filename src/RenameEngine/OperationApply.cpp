// Applying a rename operation to one name: the 21 operations and the protection of locked blocks.
#include <unicode/regex.h>
#include <unicode/utext.h>

#include <algorithm>
#include <limits>

#include "RenameOperation.h"
#include "Unicode.h"

namespace tessane {
namespace {

template <typename... F>
struct Overloaded : F... {
  using F::operator()...;
};
template <typename... F>
Overloaded(F...) -> Overloaded<F...>;

using Kind = NameToken::Kind;

// The result of an operation on a base name, before locked blocks are put back.
struct BaseResult {
  std::string text;
  std::optional<OperationIssue> patternIssue = std::nullopt;  // replaceRegex: name unchanged
};

// How long one regular expression may run on one name, in the matcher's time units (about a tenth
// of a millisecond each). Ordinary patterns on a name of 255 bytes need a few microseconds; a
// pattern that backtracks without end ("(a+)+$") would run for minutes on every keystroke.
constexpr int32_t kRegexTimeLimit = 50;

std::string joinTokens(const std::vector<NameToken>& tokens) {
  std::string out;
  for (const NameToken& t : tokens)
    out += t.text;
  return out;
}

// Replaces each range (left to right, not overlapping) with `replacement`.
std::string replaceRanges(const LocatedName& name, const std::vector<CharRange>& ranges,
                          std::string_view replacement) {
  const std::string& text = name.text();
  std::string out;
  out.reserve(text.size() + ranges.size() * replacement.size());
  std::size_t at = 0;
  for (const CharRange& r : ranges) {
    const std::size_t begin = name.byteOffset(r.lower);
    out.append(text, at, begin - at).append(replacement);
    at = name.byteOffset(r.upper);
  }
  out.append(text, at, std::string::npos);
  return out;
}

std::string slice(const LocatedName& name, std::size_t from, std::size_t to) {
  const std::size_t begin = name.byteOffset(from);
  return name.text().substr(begin, name.byteOffset(to) - begin);
}

std::size_t clampToLength(std::int64_t value, std::size_t length) {
  return static_cast<std::size_t>(
      std::clamp<std::int64_t>(value, 0, static_cast<std::int64_t>(length)));
}

std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) {
  std::int64_t sum;
  if (__builtin_add_overflow(a, b, &sum)) {
    return b > 0 ? std::numeric_limits<std::int64_t>::max()
                 : std::numeric_limits<std::int64_t>::min();
  }
  return sum;
}

// The block token that `ref` names (its text already in NFC), by position among the tokens.
std::optional<std::size_t> findBlock(const BlockRef& ref, const std::vector<NameToken>& tokens) {
  return TextLocating::blockIndex(ref, tokens);
}

BlockRef normalized(BlockRef ref) {
  if (auto* text = std::get_if<BlockRef::Text>(&ref.ref)) text->value = unicode::toNfc(text->value);
  return ref;
}

std::string applyCase(CaseStyle style, std::string_view text, const SeparatorSet& separators) {
  switch (style) {
    case CaseStyle::upper:
      return unicode::toUpper(text);
    case CaseStyle::lower:
      return unicode::toLower(text);
    case CaseStyle::title: {
      BlockedName blocked = BlockedName::split(text, separators);
      std::string out;
      out.reserve(text.size());
      for (const NameToken& t : blocked.tokens()) {
        out += t.kind == Kind::block ? unicode::toTitle(t.text) : t.text;
      }
      return out;
    }
  }
  return std::string(text);
}

// The characters of a text with their byte ranges.
template <typename Visit>
void forEachCharacter(std::string_view text, Visit visit) {
  const std::vector<std::size_t> bounds = unicode::graphemeBoundaries(text);
  for (std::size_t i = 0; i + 1 < bounds.size(); ++i) {
    visit(text.substr(bounds[i], bounds[i + 1] - bounds[i]));
  }
}

bool isWhitespaceCharacter(std::string_view character) {
  std::size_t offset = 0;
  return !character.empty() && unicode::isWhitespace(unicode::nextScalar(character, offset));
}

bool isInvalidCharacter(std::string_view character) {
  for (std::size_t offset = 0; offset < character.size();) {
    const char32_t c = unicode::nextScalar(character, offset);
    if (c == U'/' || c == U':' || unicode::isControl(c)) return true;
  }
  return false;
}

bool isEmojiCharacter(std::string_view character) {
  bool first = true;
  bool firstIsEmoji = false;
  bool presentedAsEmoji = false;
  for (std::size_t offset = 0; offset < character.size();) {
    const char32_t c = unicode::nextScalar(character, offset);
    if (unicode::isEmojiPresentation(c)) return true;
    if (first) firstIsEmoji = unicode::isEmoji(c);
    if (c == 0xFE0F || c == 0x20E3) presentedAsEmoji = true;
    first = false;
  }
  return firstIsEmoji && presentedAsEmoji;
}

// Expands "$0", "$1"… against a match; "\x" is a literal x; any other "$" is itself.
void expandTemplate(std::string_view replacement, const icu::RegexMatcher& matcher,
                    const std::string& text, std::string& out) {
  const int32_t groups = matcher.groupCount();
  for (std::size_t i = 0; i < replacement.size(); ++i) {
    const char c = replacement[i];
    if (c == '\\' && i + 1 < replacement.size()) {
      out.push_back(replacement[++i]);
      continue;
    }
    if (c != '$' || i + 1 >= replacement.size() || replacement[i + 1] < '0' ||
        replacement[i + 1] > '9') {
      out.push_back(c);
      continue;
    }
    // The longest run of digits that still names a group ("$12" is group 1 then "2" when there
    // are fewer than twelve groups).
    int32_t group = replacement[i + 1] - '0';
    std::size_t j = i + 2;
    while (j < replacement.size() && replacement[j] >= '0' && replacement[j] <= '9') {
      const int32_t longer = group * 10 + (replacement[j] - '0');
      if (longer > groups) break;
      group = longer;
      ++j;
    }
    i = j - 1;
    if (group > groups) continue;  // a group the pattern does not have stands for nothing
    UErrorCode status = U_ZERO_ERROR;
    const int64_t start = matcher.start64(group, status);
    const int64_t end = matcher.end64(group, status);
    if (U_SUCCESS(status) && start >= 0 && end >= start) {
      out.append(text, static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
    }
  }
}

}  // namespace

// Everything an operation needs prepared once: texts in NFC, anchors and patterns compiled.
struct PreparedOperation {
  std::vector<AnchorFinder> finders;
  Occurrence endOccurrence = Occurrence::first;  // deleteBetween's end anchor
  std::string text;                              // insert text, "with", replacement, extension
  BlockRef block;                                // block operations, beforeBlock / afterBlock
  std::unique_ptr<icu::RegexPattern> regex;
  bool invalidPattern = false;
};

CompiledOperation::CompiledOperation(RenameOperation operation)
    : operation_(std::move(operation)), state_(std::make_unique<PreparedOperation>()) {
  PreparedOperation& s = *state_;
  std::visit(
      Overloaded{
          [&](const op::Insert& o) {
            s.text = unicode::toNfc(o.text);
            if (o.at.kind == InsertPosition::Kind::before ||
                o.at.kind == InsertPosition::Kind::after) {
              s.finders.emplace_back(o.at.anchor);
            }
            s.block = normalized(o.at.block);
          },
          [&](const op::DeleteBlock& o) { s.block = normalized(o.block); },
          [&](const op::DeleteText& o) { s.finders.emplace_back(o.anchor); },
          [&](const op::DeleteCharacters&) {},
          [&](const op::DeleteBetween& o) {
            s.finders.emplace_back(o.start);
            s.finders.emplace_back(o.end);
            s.endOccurrence = o.end.occurrence;
          },
          [&](const op::DeleteBefore& o) { s.finders.emplace_back(o.anchor); },
          [&](const op::DeleteAfter& o) { s.finders.emplace_back(o.anchor); },
          [&](const op::Replace& o) {
            s.finders.emplace_back(o.anchor);
            s.text = unicode::toNfc(o.with);
          },
          [&](const op::ReplaceRegex& o) {
            s.text = unicode::toNfc(o.replacement);
            UErrorCode status = U_ZERO_ERROR;
            UParseError parseError;
            const uint32_t flags =
                o.caseSensitive ? 0u : static_cast<uint32_t>(UREGEX_CASE_INSENSITIVE);
            s.regex.reset(
                icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(unicode::toNfc(o.pattern)),
                                           flags, parseError, status));
            if (U_FAILURE(status) || !s.regex) {
              s.regex.reset();
              s.invalidPattern = true;
            }
          },
          [&](const op::ReplaceBlock& o) {
            s.block = normalized(o.block);
            s.text = unicode::toNfc(o.with);
          },
          [&](const op::ReplaceBefore& o) {
            s.finders.emplace_back(o.anchor);
            s.text = unicode::toNfc(o.with);
          },
          [&](const op::ReplaceAfter& o) {
            s.finders.emplace_back(o.anchor);
            s.text = unicode::toNfc(o.with);
          },
          [&](const op::MoveBlock& o) { s.block = normalized(o.block); },
          [&](const op::ChangeCase&) {},
          [&](const op::CollapseWhitespace&) {},
          [&](const op::RemoveAccents&) {},
          [&](const op::RemoveInvalidCharacters& o) { s.text = unicode::toNfc(o.replacement); },
          [&](const op::Truncate&) {},
          [&](const op::RemoveEmoji&) {},
          [&](const op::SetExtension& o) {
            std::string ext = unicode::toNfc(o.ext);
            ext.erase(0, ext.find_first_not_of('.'));
            s.text = ext.find_first_not_of('.') == std::string::npos ? std::string() : ext;
          },
          [&](const op::ChangeExtensionCase&) {},
      },
      operation_.value);
}

CompiledOperation::~CompiledOperation() = default;
CompiledOperation::CompiledOperation(CompiledOperation&&) noexcept = default;
CompiledOperation& CompiledOperation::operator=(CompiledOperation&&) noexcept = default;

namespace {

// The operation on a base name already in NFC: one function per kind of operation.
struct OnBase {
  const PreparedOperation& prepared;
  std::string_view stateText;
  const std::string& base;
  const SeparatorSet& separators;
  const std::vector<AnchorFinder>& finders = prepared.finders;
  const BlockRef& stateBlock = prepared.block;

  BaseResult unchanged() const { return BaseResult{base, std::nullopt}; }
  BaseResult operator()(const op::Insert& o) const;
  BaseResult operator()(const op::DeleteBlock&) const;
  BaseResult operator()(const op::DeleteText&) const;
  BaseResult operator()(const op::DeleteCharacters& o) const;
  BaseResult operator()(const op::DeleteBetween& o) const;
  BaseResult operator()(const op::DeleteBefore& o) const;
  BaseResult operator()(const op::DeleteAfter& o) const;
  BaseResult operator()(const op::Replace&) const;
  BaseResult operator()(const op::ReplaceRegex& o) const;
  BaseResult operator()(const op::ReplaceBlock&) const;
  BaseResult operator()(const op::ReplaceBefore&) const;
  BaseResult operator()(const op::ReplaceAfter&) const;
  BaseResult operator()(const op::MoveBlock& o) const;
  BaseResult operator()(const op::ChangeCase& o) const;
  BaseResult operator()(const op::CollapseWhitespace&) const;
  BaseResult operator()(const op::RemoveAccents&) const;
  BaseResult operator()(const op::RemoveInvalidCharacters&) const;
  BaseResult operator()(const op::Truncate& o) const;
  BaseResult operator()(const op::RemoveEmoji&) const;
  BaseResult operator()(const op::SetExtension&) const;
  BaseResult operator()(const op::ChangeExtensionCase&) const;
};

BaseResult OnBase::operator()(const op::Insert& o) const {
  const LocatedName name(base);
  std::optional<std::size_t> at;
  switch (o.at.kind) {
    case InsertPosition::Kind::index:
      at = clampToLength(o.at.offset, name.length());
      break;
    case InsertPosition::Kind::before:
    case InsertPosition::Kind::after:
      if (const auto r = finders[0].range(name)) {
        at = o.at.kind == InsertPosition::Kind::before ? r->lower : r->upper;
      }
      break;
    case InsertPosition::Kind::beforeBlock:
    case InsertPosition::Kind::afterBlock: {
      const BlockedName blocked = BlockedName::split(base, separators);
      if (const auto index = findBlock(stateBlock, blocked.tokens())) {
        const CharRange r = TextLocating::blockRange(*index, blocked.tokens());
        at = o.at.kind == InsertPosition::Kind::beforeBlock ? r.lower : r.upper;
      }
      break;
    }
    case InsertPosition::Kind::start:
      at = 0;
      break;
    case InsertPosition::Kind::end:
      at = name.length();
      break;
  }
  if (!at) return unchanged();
  std::string out = base;
  out.insert(name.byteOffset(*at), stateText);
  return {std::move(out)};
}

BaseResult OnBase::operator()(const op::DeleteBlock&) const {
  BlockedName blocked = BlockedName::split(base, separators);
  std::vector<NameToken> tokens = blocked.tokens();
  const auto index = findBlock(stateBlock, tokens);
  if (!index) return unchanged();
  const auto i = static_cast<std::ptrdiff_t>(*index);
  if (*index + 1 < tokens.size()) {
    tokens.erase(tokens.begin() + i, tokens.begin() + i + 2);
  } else if (*index > 0) {
    tokens.erase(tokens.begin() + i - 1, tokens.begin() + i + 1);
  } else {
    tokens.erase(tokens.begin() + i);
  }
  return {joinTokens(tokens)};
}

BaseResult OnBase::operator()(const op::DeleteText&) const {
  const LocatedName name(base);
  return {replaceRanges(name, finders[0].ranges(name), {})};
}

BaseResult OnBase::operator()(const op::DeleteCharacters& o) const {
  const LocatedName name(base);
  // The start is clamped into the name first, then `count` characters go from there:
  // deleting two characters "from -5" deletes the first two.
  const std::size_t start = clampToLength(o.from, name.length());
  const std::size_t end = clampToLength(
      saturatingAdd(static_cast<std::int64_t>(start), std::max<std::int64_t>(o.count, 0)),
      name.length());
  if (end <= start) return unchanged();
  return {replaceRanges(name, {CharRange{start, end}}, {})};
}

BaseResult OnBase::operator()(const op::DeleteBetween& o) const {
  const LocatedName name(base);
  const auto start = finders[0].range(name);
  if (!start) return unchanged();
  std::optional<CharRange> end;
  for (const CharRange& hit : finders[1].hits(name)) {
    if (hit.lower < start->upper) continue;
    end = hit;
    if (prepared.endOccurrence != Occurrence::last) break;
  }
  if (!end) return unchanged();
  const CharRange cut =
      o.inclusive ? CharRange{start->lower, end->upper} : CharRange{start->upper, end->lower};
  return {replaceRanges(name, {cut}, {})};
}

BaseResult OnBase::operator()(const op::DeleteBefore& o) const {
  const LocatedName name(base);
  const auto r = finders[0].range(name);
  if (!r) return unchanged();
  return {slice(name, o.inclusive ? r->upper : r->lower, name.length())};
}

BaseResult OnBase::operator()(const op::DeleteAfter& o) const {
  const LocatedName name(base);
  const auto r = finders[0].range(name);
  if (!r) return unchanged();
  return {slice(name, 0, o.inclusive ? r->lower : r->upper)};
}

BaseResult OnBase::operator()(const op::Replace&) const {
  const LocatedName name(base);
  return {replaceRanges(name, finders[0].ranges(name), stateText)};
}

BaseResult OnBase::operator()(const op::ReplaceRegex& o) const {
  const icu::RegexPattern* regex = prepared.regex.get();
  if (prepared.invalidPattern || regex == nullptr) {
    return {base, OperationIssue::invalidPattern()};
  }
  UErrorCode status = U_ZERO_ERROR;
  UText ut = UTEXT_INITIALIZER;
  utext_openUTF8(&ut, base.data(), static_cast<int64_t>(base.size()), &status);
  std::unique_ptr<icu::RegexMatcher> matcher(regex->matcher(status));
  if (U_FAILURE(status) || !matcher) {
    utext_close(&ut);
    return {base, OperationIssue::invalidPattern()};
  }
  matcher->reset(&ut);
  matcher->setTimeLimit(kRegexTimeLimit, status);
  struct Match {
    std::size_t begin, end;
    std::string replacement;
  };
  std::vector<Match> matches;
  while (matcher->find(status) && U_SUCCESS(status)) {
    Match m{static_cast<std::size_t>(matcher->start64(status)),
            static_cast<std::size_t>(matcher->end64(status)),
            {}};
    if (U_FAILURE(status)) break;
    // Only the kept matches need their replacement; `last` keeps overwriting.
    expandTemplate(stateText, *matcher, base, m.replacement);
    if (o.occurrence == Occurrence::last) matches.clear();
    matches.push_back(std::move(m));
    if (o.occurrence == Occurrence::first) break;
  }
  utext_close(&ut);
  // Out of time (or of backtracking stack): no half-done replacement.
  if (status == U_REGEX_TIME_OUT || status == U_REGEX_STACK_OVERFLOW) {
    return {base, OperationIssue::patternTooSlow()};
  }
  std::string out;
  std::size_t at = 0;
  for (const Match& m : matches) {
    out.append(base, at, m.begin - at).append(m.replacement);
    at = m.end;
  }
  out.append(base, at, std::string::npos);
  return {std::move(out)};
}

BaseResult OnBase::operator()(const op::ReplaceBlock&) const {
  BlockedName blocked = BlockedName::split(base, separators);
  std::vector<NameToken> tokens = blocked.tokens();
  const auto index = findBlock(stateBlock, tokens);
  if (!index) return unchanged();
  tokens[*index].text = std::string(stateText);
  return {joinTokens(tokens)};
}

BaseResult OnBase::operator()(const op::ReplaceBefore&) const {
  const LocatedName name(base);
  const auto r = finders[0].range(name);
  if (!r) return unchanged();
  std::string out(stateText);
  return {out.append(slice(name, r->lower, name.length()))};
}

BaseResult OnBase::operator()(const op::ReplaceAfter&) const {
  const LocatedName name(base);
  const auto r = finders[0].range(name);
  if (!r) return unchanged();
  return {slice(name, 0, r->upper).append(stateText)};
}

BaseResult OnBase::operator()(const op::MoveBlock& o) const {
  BlockedName blocked = BlockedName::split(base, separators);
  std::vector<NameToken> tokens = blocked.tokens();
  const auto index = findBlock(stateBlock, tokens);
  if (!index) return unchanged();
  std::vector<std::string> blocks;
  std::size_t moved = 0;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].kind != Kind::block) continue;
    if (i == *index) moved = blocks.size();
    blocks.push_back(tokens[i].text);
  }
  std::string text = std::move(blocks[moved]);
  blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(moved));
  const std::size_t to = clampToLength(o.toIndex, blocks.size());
  blocks.insert(blocks.begin() + static_cast<std::ptrdiff_t>(to), std::move(text));
  std::size_t next = 0;
  for (NameToken& t : tokens) {
    if (t.kind == Kind::block) t.text = std::move(blocks[next++]);
  }
  return {joinTokens(tokens)};
}

BaseResult OnBase::operator()(const op::ChangeCase& o) const {
  return {applyCase(o.style, base, separators)};
}

BaseResult OnBase::operator()(const op::CollapseWhitespace&) const {
  std::string out;
  bool pendingSpace = false;
  forEachCharacter(base, [&](std::string_view c) {
    if (isWhitespaceCharacter(c)) {
      pendingSpace = !out.empty();
      return;
    }
    if (pendingSpace) out.push_back(' ');
    pendingSpace = false;
    out.append(c);
  });
  return {std::move(out)};
}

BaseResult OnBase::operator()(const op::RemoveAccents&) const {
  return {unicode::foldDiacritics(base)};
}

BaseResult OnBase::operator()(const op::RemoveInvalidCharacters&) const {
  std::string out;
  forEachCharacter(base,
                   [&](std::string_view c) { out.append(isInvalidCharacter(c) ? stateText : c); });
  return {std::move(out)};
}

BaseResult OnBase::operator()(const op::Truncate& o) const {
  const LocatedName name(base);
  std::size_t keep = clampToLength(o.maxCharacters, name.length());
  while (keep > 0 && isWhitespaceCharacter(slice(name, keep - 1, keep)))
    --keep;
  return {slice(name, 0, keep)};
}

BaseResult OnBase::operator()(const op::RemoveEmoji&) const {
  std::string out;
  forEachCharacter(base, [&](std::string_view c) {
    if (!isEmojiCharacter(c)) out.append(c);
  });
  return {std::move(out)};
}

BaseResult OnBase::operator()(const op::SetExtension&) const {
  return unchanged();
}

BaseResult OnBase::operator()(const op::ChangeExtensionCase&) const {
  return unchanged();
}

BaseResult applyToBase(const RenameOperation& operation, const PreparedOperation& prepared,
                       std::string_view stateText, const std::string& base,
                       const SeparatorSet& separators) {
  return std::visit(OnBase{prepared, stateText, base, separators}, operation.value);
}

}  // namespace

OperationOutcome CompiledOperation::apply(const FileName& name,
                                          const OperationContext& context) const {
  return applyWithText(name, context, state_->text);
}

OperationOutcome CompiledOperation::applyInserting(const FileName& name,
                                                   const OperationContext& context,
                                                   std::string_view text) const {
  return applyWithText(name, context, unicode::toNfc(text));
}

OperationOutcome CompiledOperation::applyWithText(const FileName& name,
                                                  const OperationContext& context,
                                                  std::string_view text) const {
  const PreparedOperation& s = *state_;
  const SeparatorSet& separators = context.separatorSet();

  if (std::holds_alternative<op::SetExtension>(operation_.value)) {
    return {FileName{name.base, std::string(text)}, std::nullopt};
  }
  if (const auto* change = std::get_if<op::ChangeExtensionCase>(&operation_.value)) {
    return {FileName{name.base, applyCase(change->style, unicode::toNfc(name.ext), separators)},
            std::nullopt};
  }

  // Names inside the rule stack are NFC already: only a name from elsewhere is copied.
  std::string normalized;
  const bool composed = unicode::isNfc(name.base);
  if (!composed) normalized = unicode::toNfc(name.base);
  const std::string& base = composed ? name.base : normalized;
  auto run = [&](const std::string& current) {
    BaseResult r = applyToBase(operation_, s, text, current, separators);
    unicode::normalizeInPlace(r.text);  // joins can leave a mark after a letter uncomposed
    return r;
  };

  const BaseResult plain = run(base);
  auto outcome = [&](std::string newBase, bool protectedIssue,
                     const std::optional<OperationIssue>& patternIssue) {
    std::optional<OperationIssue> issue = patternIssue;
    if (!issue && protectedIssue) {
      issue = OperationIssue::protectedBlock();
    }
    return OperationOutcome{FileName{std::move(newBase), name.ext}, std::move(issue)};
  };
  // A pattern that could not run on the name: running it again around the locks would not help.
  if (context.protectedBlocks.empty() || plain.patternIssue) {
    return outcome(plain.text, false, plain.patternIssue);
  }

  // Locked blocks: each becomes one private-use character while the operation runs, then its
  // text is put back. An operation that deleted or doubled a placeholder cannot be undone around
  // the lock, so the name stays as it was.
  BlockedName blocked = BlockedName::split(base, separators);
  std::vector<NameToken> tokens = blocked.tokens();
  std::vector<std::pair<std::string, std::string>> masks;  // placeholder, block text
  std::vector<std::size_t> masked;
  for (const BlockRef& ref : context.protectedBlocks) {
    const auto index = TextLocating::blockIndex(ref, tokens);
    if (!index || std::find(masked.begin(), masked.end(), *index) != masked.end()) continue;
    std::string placeholder;
    unicode::appendUtf8(placeholder, static_cast<char32_t>(0xE000 + masks.size()));
    masks.emplace_back(placeholder, tokens[*index].text);
    tokens[*index].text = placeholder;
    masked.push_back(*index);
  }
  if (masks.empty()) return outcome(plain.text, false, plain.patternIssue);

  const BaseResult result = run(joinTokens(tokens));
  std::string restored = result.text;
  for (const auto& [placeholder, locked] : masks) {
    const std::size_t first = restored.find(placeholder);
    if (first == std::string::npos ||
        restored.find(placeholder, first + placeholder.size()) != std::string::npos) {
      return outcome(base, true, result.patternIssue);
    }
  }
  for (const auto& [placeholder, locked] : masks) {
    restored.replace(restored.find(placeholder), placeholder.size(), locked);
  }
  const bool changedByLock = restored != plain.text;
  return outcome(std::move(restored), changedByLock, result.patternIssue);
}

OperationOutcome apply(const RenameOperation& operation, const FileName& name,
                       const OperationContext& context) {
  return CompiledOperation(operation).apply(name, context);
}

}  // namespace tessane
