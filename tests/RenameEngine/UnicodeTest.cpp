#include "RenameEngine/NaturalOrder.h"
#include "RenameEngine/Unicode.h"

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/utext.h>

#include <memory>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace tessane::unicode {
namespace {

const std::string kComposed = "\xC3\xA9t\xC3\xA9";      // "été", precomposed
const std::string kDecomposed = "e\xCC\x81te\xCC\x81";  // "été", e + U+0301

TEST(Unicode, NormalisationComposesAndLeavesOtherTextAlone) {
  EXPECT_EQ(toNfc(kDecomposed), kComposed);
  EXPECT_EQ(toNfc(kComposed), kComposed);
  EXPECT_TRUE(isNfc(kComposed));
  EXPECT_FALSE(isNfc(kDecomposed));
  EXPECT_EQ(toNfc("DSC_0001.ARW"), "DSC_0001.ARW");
  // Hangul jamo compose; an emoji sequence is untouched.
  EXPECT_EQ(toNfc("\xE1\x84\x92\xE1\x85\xA1"), "\xED\x95\x98");
  EXPECT_EQ(toNfc("\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9"),
            "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9");
}

TEST(Unicode, TextThatIsNotUtf8PassesThroughByteForByte) {
  const std::string bad = "caf\xE9.jpg";  // Latin-1 é
  EXPECT_FALSE(isValidUtf8(bad));
  EXPECT_EQ(toNfc(bad), bad);
  EXPECT_EQ(foldCase(bad), bad);
  EXPECT_EQ(toUpper(bad), bad);
  EXPECT_EQ(foldDiacritics(bad), bad);
  EXPECT_EQ(toDisplayable(bad), "caf\xEF\xBF\xBD.jpg");
  EXPECT_EQ(graphemeCount(bad), 8u);
}

TEST(Unicode, Utf8ValidationRejectsEveryMalformedShape) {
  EXPECT_TRUE(isValidUtf8(""));
  EXPECT_TRUE(isValidUtf8("\xEF\xBF\xBD"));       // a real U+FFFD
  EXPECT_TRUE(isValidUtf8("\xF4\x8F\xBF\xBF"));   // U+10FFFF
  EXPECT_FALSE(isValidUtf8("\xC0\xAF"));          // overlong "/"
  EXPECT_FALSE(isValidUtf8("\xE0\x80\xAF"));      // overlong, three bytes
  EXPECT_FALSE(isValidUtf8("\xED\xA0\x80"));      // a surrogate
  EXPECT_FALSE(isValidUtf8("\xF4\x90\x80\x80"));  // past U+10FFFF
  EXPECT_FALSE(isValidUtf8("ab\xE2\x82"));        // cut short
  EXPECT_FALSE(isValidUtf8("\x80"));              // a lone continuation byte
}

TEST(Unicode, CaseFoldingIsFullAndLocaleFree) {
  EXPECT_EQ(foldCase("IMG_0001.JPG"), "img_0001.jpg");
  EXPECT_EQ(foldCase("Stra\xC3\x9F"
                     "e"),
            foldCase("STRASSE"));
  EXPECT_EQ(foldCase("\xC3\x89T\xC3\x89"), "\xC3\xA9t\xC3\xA9");  // ÉTÉ -> été, accents kept
  EXPECT_EQ(foldCase("\xE2\x84\xAA"), "k");                       // KELVIN SIGN
  // Without a locale, dotless and dotted i do not merge with plain i the Turkish way.
  EXPECT_NE(foldCase("\xC4\xB1"), foldCase("I"));
}

TEST(Unicode, DiacriticFoldingRemovesAccentsOnly) {
  EXPECT_EQ(foldDiacritics("\xC3\xA8"), "e");  // è
  EXPECT_EQ(foldDiacritics("\xC3\x85"), "A");  // Å
  EXPECT_EQ(foldDiacritics(kDecomposed), "ete");
  EXPECT_EQ(foldDiacritics("\xC5\x81\xC3\xB3\x64\xC5\xBA"), "Lodz");  // Łódź
  EXPECT_EQ(foldDiacritics("\xC3\x98resund"), "Oresund");             // Øresund
  EXPECT_EQ(foldDiacritics("Stra\xC3\x9F"
                           "e"),
            "Stra\xC3\x9F"
            "e");                                                    // ß is a letter
  EXPECT_EQ(foldDiacritics("\xE3\x81\x8C"), "\xE3\x81\x8C");         // が keeps its voicing mark
  EXPECT_EQ(foldDiacritics("\xE0\xA4\xB9\xE0\xA4\xBF\xE0\xA4\x82"),  // हिं keeps its signs
            "\xE0\xA4\xB9\xE0\xA4\xBF\xE0\xA4\x82");
  EXPECT_EQ(foldDiacritics("1\xEF\xB8\x8F\xE2\x83\xA3"), "1\xEF\xB8\x8F\xE2\x83\xA3");  // 1️⃣
}

TEST(Unicode, GraphemeClustersAreUserPerceivedCharacters) {
  EXPECT_EQ(graphemeCount(""), 0u);
  EXPECT_EQ(graphemeCount("DSC_0001"), 8u);
  EXPECT_EQ(graphemeCount("a\r\nb"), 3u);  // CR LF is one character
  EXPECT_EQ(graphemeCount(kDecomposed), 3u);
  EXPECT_EQ(graphemeCount("\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9"), 1u);  // flag of Italy
  // Family: man, ZWJ, woman, ZWJ, girl.
  EXPECT_EQ(
      graphemeCount("\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7"),
      1u);
  EXPECT_EQ(graphemeCount("1\xEF\xB8\x8F\xE2\x83\xA3"), 1u);  // keycap one
  EXPECT_EQ(graphemeCount("\xED\x95\x9C\xEA\xB8\x80"), 2u);   // 한글

  const std::vector<std::size_t> bounds = graphemeBoundaries(kDecomposed);
  EXPECT_EQ(bounds, (std::vector<std::size_t>{0, 3, 4, 7}));
  EXPECT_EQ(graphemeBoundaries(""), std::vector<std::size_t>{0});
}

// ICU's break iterator over the whole text: the reference for every shortcut.
std::vector<std::size_t> icuBoundaries(const std::string& text) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::BreakIterator> it(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  UText ut = UTEXT_INITIALIZER;
  utext_openUTF8(&ut, text.data(), static_cast<int64_t>(text.size()), &status);
  it->setText(&ut, status);
  std::vector<std::size_t> out;
  for (int32_t b = it->first(); b != icu::BreakIterator::DONE; b = it->next()) {
    out.push_back(static_cast<std::size_t>(b));
  }
  utext_close(&ut);
  return out;
}

TEST(Unicode, GraphemeShortcutsAgreeWithIcu) {
  const std::vector<std::string> pieces{"a",
                                        "Z",
                                        "_",
                                        "\r",
                                        "\n",
                                        "\xC3\xA9",
                                        "e",
                                        "\xCC\x81",
                                        "\xC3\x9F",
                                        "\xC2\xAD" /* soft hyphen */,
                                        "\xC2\xA9" /* copyright, pictographic */,
                                        "\xE2\x80\x8D" /* ZWJ */,
                                        "\xF0\x9F\x87\xAE",
                                        "\xF0\x9F\x87\xB9",
                                        "\xF0\x9F\x91\xA8",
                                        "\xEF\xB8\x8F",
                                        "\xE1\x84\x92",
                                        "\xE1\x85\xA1",
                                        "\xE6\x97\xA5",
                                        "\xD8\x80" /* Arabic number sign, prepended */,
                                        "\xE0\xA4\xB9",
                                        "\xE0\xA4\xBF",
                                        "\xE1\xBA\xA1" /* Vietnamese a with dot */,
                                        "\xD0\x96"};
  std::mt19937 random(5);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    const int length = static_cast<int>(random() % 8);
    // Half the texts are drawn from ASCII and precomposed letters only, the shortcut's case.
    const std::size_t range = round % 2 ? pieces.size() : 6;
    for (int j = 0; j < length; ++j)
      text += pieces[random() % range];
    ASSERT_EQ(graphemeBoundaries(text), icuBoundaries(text)) << text;
  }
}

TEST(Unicode, GraphemeSlicesNeverCutACharacter) {
  EXPECT_EQ(graphemeSlice(kDecomposed, 1, 2), "te\xCC\x81");
  EXPECT_EQ(graphemeSlice("abc", 1, 100), "bc");
  EXPECT_EQ(graphemeSlice("abc", 5, 1), "");
  const std::string flags = "\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9\xF0\x9F\x87\xAB\xF0\x9F\x87\xB7";
  EXPECT_EQ(graphemeSlice(flags, 1, 1), "\xF0\x9F\x87\xAB\xF0\x9F\x87\xB7");
}

TEST(Unicode, DisplayWidthCountsTerminalColumns) {
  EXPECT_EQ(displayWidth("DSC_0001.JPG"), 12u);
  EXPECT_EQ(displayWidth(kDecomposed), 3u);
  EXPECT_EQ(displayWidth("\xE6\x9D\xB1\xE4\xBA\xAC"), 4u);  // 東京
  EXPECT_EQ(displayWidth("\xF0\x9F\x8C\x8A surf"), 7u);     // 🌊 takes two columns
  EXPECT_EQ(displayWidth("\xE2\x9D\xA4\xEF\xB8\x8F"), 2u);  // ❤️ presented as emoji
}

TEST(Unicode, NaturalOrderIsCaseInsensitiveWithNumbersByValue) {
  std::vector<std::string> names{"IMG_10.JPG", "img_3.jpg", "IMG_2.JPG", "IMG_1.JPG",
                                 "b.jpg",      "A.jpg",     "a.jpg",     "\xC3\xA9t\xC3\xA9.jpg",
                                 "ete.jpg"};
  std::sort(names.begin(), names.end(), naturalLess);
  EXPECT_EQ(names,
            (std::vector<std::string>{"a.jpg", "A.jpg", "b.jpg", "ete.jpg", "\xC3\xA9t\xC3\xA9.jpg",
                                      "IMG_1.JPG", "IMG_2.JPG", "img_3.jpg", "IMG_10.JPG"}));
  // Composed and decomposed forms collate alike; their bytes still order them.
  EXPECT_NE(naturalCompare(kComposed, kDecomposed), 0);
  EXPECT_EQ(naturalCompare("x", "x"), 0);
}

// ICU's own comparison, the reference for the ASCII shortcut.
int icuNatural(const std::string& a, const std::string& b) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> c(icu::Collator::createInstance(icu::Locale::getRoot(), status));
  c->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
  const UCollationResult r = c->compareUTF8(a, b, status);
  if (r != UCOL_EQUAL) return r == UCOL_LESS ? -1 : 1;
  return a < b ? -1 : (a > b ? 1 : 0);
}

TEST(Unicode, AsciiNaturalOrderIsIcusOrder) {
  const std::string alphabet = "aAbBzZ_- .,;:!?'()[]{}@*/&#%+<=>|~$`^\"0123456789\t\x01";
  std::mt19937 random(3);
  for (int round = 0; round < 20000; ++round) {
    std::string a, b;
    for (std::string* s : {&a, &b}) {
      const int length = static_cast<int>(random() % 7);
      for (int j = 0; j < length; ++j)
        s->push_back(alphabet[random() % alphabet.size()]);
    }
    if (round % 3 == 0) b = a.substr(0, a.size() / 2) + b;  // shared beginnings
    ASSERT_EQ(naturalCompare(a, b), icuNatural(a, b)) << "“" << a << "” vs “" << b << "”";
  }
}

TEST(Unicode, SortKeysOrderExactlyLikeTheComparison) {
  const std::vector<std::string> pieces{"IMG",
                                        "img",
                                        "_",
                                        "-",
                                        " ",
                                        "0",
                                        "1",
                                        "2",
                                        "10",
                                        "007",
                                        "\xC3\xA9",
                                        "e\xCC\x81",
                                        "Z",
                                        "\xF0\x9F\x98\x80",
                                        "\xE6\x97\xA5",
                                        "\xE9"};
  std::mt19937 random(7);
  std::vector<std::string> names;
  for (int i = 0; i < 300; ++i) {
    std::string name;
    const int length = 1 + static_cast<int>(random() % 5);
    for (int j = 0; j < length; ++j)
      name += pieces[random() % pieces.size()];
    names.push_back(name);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string ki = naturalSortKey(names[i]);
    for (std::size_t j = 0; j < names.size(); ++j) {
      const int byCompare = naturalCompare(names[i], names[j]);
      const int byKey = ki.compare(naturalSortKey(names[j]));
      ASSERT_EQ(byCompare < 0, byKey < 0) << names[i] << " vs " << names[j];
      ASSERT_EQ(byCompare == 0, byKey == 0) << names[i] << " vs " << names[j];
    }
  }
}

}  // namespace
}  // namespace tessane::unicode
