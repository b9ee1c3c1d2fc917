#include "RenameEngine/NameCheck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessane {
namespace {

using Errors = std::vector<NameError>;

TEST(NameCheck, EmptyNameIsReportedAlone) {
  EXPECT_EQ(NameCheck::problems("", ""), Errors{NameError::empty()});
  EXPECT_EQ(NameCheck::problems("", "jpg"), Errors{NameError::startsWithDot()});
  EXPECT_TRUE(NameCheck::problems("DSC_0001", "ARW").empty());
  EXPECT_TRUE(NameCheck::problems("README", "").empty());
}

TEST(NameCheck, ForbiddenCharactersAnywhere) {
  EXPECT_EQ(NameCheck::problems("a/b", "jpg"), Errors{NameError::invalidCharacters()});
  EXPECT_EQ(NameCheck::problems("a:b", "jpg"), Errors{NameError::invalidCharacters()});
  EXPECT_EQ(NameCheck::problems("a\tb", "jpg"), Errors{NameError::invalidCharacters()});
  EXPECT_EQ(NameCheck::problems("a\nb", "jpg"), Errors{NameError::invalidCharacters()});
  EXPECT_EQ(NameCheck::problems("ab", "j:pg"), Errors{NameError::invalidCharacters()});
  EXPECT_TRUE(NameCheck::hasInvalidCharacters("a\x7F"));           // DEL
  EXPECT_TRUE(NameCheck::hasInvalidCharacters("a\xC2\x85"));       // NEXT LINE, a C1 control
  EXPECT_FALSE(NameCheck::hasInvalidCharacters("a\xE2\x80\x8B"));  // zero width space is allowed
  EXPECT_FALSE(NameCheck::hasInvalidCharacters("\xE2\x88\x95"));   // DIVISION SLASH looks alike
  EXPECT_FALSE(NameCheck::hasInvalidCharacters("2024-05-01 10.30 \xF0\x9F\x8C\x8A"));
}

TEST(NameCheck, WhiteSpaceAtEitherEndOfTheBase) {
  EXPECT_EQ(NameCheck::problems("  001", "cr2"), Errors{NameError::spaceAtEdge()});
  EXPECT_EQ(NameCheck::problems(" 020 ", "CR3"), Errors{NameError::spaceAtEdge()});
  EXPECT_EQ(NameCheck::problems("a\xC2\xA0", "jpg"), Errors{NameError::spaceAtEdge()});  // NBSP
  EXPECT_TRUE(NameCheck::problems("Rome 2024", "jpg").empty());
}

TEST(NameCheck, ProblemsComeInTheirFixedOrder) {
  EXPECT_EQ(NameCheck::problems(".a:b", ""),
            (Errors{NameError::startsWithDot(), NameError::invalidCharacters()}));
  const std::string longBase(300, 'x');
  EXPECT_EQ(NameCheck::problems("." + longBase + ":", "jpg"),
            (Errors{NameError::startsWithDot(), NameError::invalidCharacters(),
                    NameError::tooLong(306)}));
}

TEST(NameCheck, LengthLimitCountsUtf8Bytes) {
  const std::string exactly255 = std::string(251, 'a');  // + ".jpg" = 255
  EXPECT_TRUE(NameCheck::problems(exactly255, "jpg").empty());
  EXPECT_EQ(NameCheck::problems(exactly255 + "a", "jpg"), Errors{NameError::tooLong(256)});
  // 85 characters of two bytes each: 170 bytes + "." + 84 = 255 and 256.
  std::string accented;
  for (int i = 0; i < 85; ++i)
    accented += "\xC3\xA9";
  EXPECT_TRUE(NameCheck::problems(accented, std::string(84, 'e')).empty());
  EXPECT_EQ(NameCheck::problems(accented, std::string(85, 'e')), Errors{NameError::tooLong(256)});
  // 64 four-byte emoji are only 64 characters but 256 bytes.
  std::string emoji;
  for (int i = 0; i < 64; ++i)
    emoji += "\xF0\x9F\x8C\x8A";
  EXPECT_EQ(NameCheck::problems(emoji, ""), Errors{NameError::tooLong(256)});
  EXPECT_TRUE(NameCheck::problems(emoji.substr(4), "").empty());
}

}  // namespace
}  // namespace tessane
