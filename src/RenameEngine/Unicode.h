// The text layer: every piece of the system that looks inside a name goes through here.
//
// All functions take and return UTF-8. Camera names are nearly always ASCII, so each function
// answers pure ASCII input without calling ICU; anything else goes through ICU 72 without a
// detour through UTF-16 where ICU offers a UTF-8 entry point.
//
// Input that is not valid UTF-8 never crashes anything: normalisation and case mapping return it
// unchanged, scalar iteration reports each bad byte as U+FFFD, and grapheme functions treat each
// bad byte as a character of its own. Names that are not UTF-8 are kept out of the engine by the
// folder listing; this is a safety net, not a feature.
//
// All functions are thread-safe. ICU objects that are expensive to build (break iterators,
// collators) are made once per thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessane::unicode {

// True when every byte is below 0x80.
bool isAscii(std::string_view text) noexcept;

// True when `text` is well-formed UTF-8 (no overlong forms, surrogates or values past U+10FFFF).
bool isValidUtf8(std::string_view text) noexcept;

// The text with every byte that is not part of well-formed UTF-8 shown as U+FFFD, for display.
std::string toDisplayable(std::string_view text);

// Canonical composition (NFC). Text that is already NFC is returned as it is.
std::string toNfc(std::string_view text);
bool isNfc(std::string_view text);
// Brings `text` to NFC where it isn't already; text that is NFC is neither copied nor touched.
void normalizeInPlace(std::string& text);

// Full case folding without a locale: "Straße" and "STRASSE" fold alike. Accents are kept.
std::string foldCase(std::string_view text);

// Case mappings without a locale (full mappings: "ß" upper-cases to "SS").
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);
// Upper-cases the first character and lower-cases the rest ("pARIS" -> "Paris", "1ST" -> "1st").
std::string toTitle(std::string_view text);

// Removes diacritics without a locale: "è" -> "e", "Å" -> "A", "Łódź" -> "Lodz". Letters that are
// not a base letter plus a mark ("ß", "æ") and other scripts' marks (Indic vowel signs, kana
// voicing marks) stay as they are. The result is NFC.
std::string foldDiacritics(std::string_view text);

// Grapheme clusters (user-perceived characters), by the extended rules of UAX #29.
// The byte offsets where clusters start, followed by text.size(); {0} for empty text.
std::vector<std::size_t> graphemeBoundaries(std::string_view text);
std::size_t graphemeCount(std::string_view text);
// The clusters [from, from + count) of `text`, clamped to its length.
std::string_view graphemeSlice(std::string_view text, std::size_t from, std::size_t count);

// The columns a terminal gives the text: two for each wide character (East Asian wide and
// full-width characters, emoji presented as emoji), one for the others.
std::size_t displayWidth(std::string_view text);

// Unicode scalar decoding. Returns the scalar at `offset` and advances `offset` past it; a byte
// that does not start a well-formed sequence yields U+FFFD and advances by one.
char32_t nextScalar(std::string_view text, std::size_t& offset) noexcept;
void appendUtf8(std::string& out, char32_t scalar);

// Scalar properties as the Unicode Character Database gives them.
bool isControl(char32_t scalar) noexcept;            // General Category Cc
bool isEmoji(char32_t scalar) noexcept;              // Emoji
bool isEmojiPresentation(char32_t scalar) noexcept;  // Emoji_Presentation
bool isWhitespace(char32_t scalar) noexcept;         // White_Space

}  // namespace tessane::unicode
