#include "RenameIO/TemporaryName.h"

#include <gtest/gtest.h>

#include <string>

#include "RenameEngine/Unicode.h"

namespace tessane {
namespace {

TEST(TemporaryName, CarriesTheOriginalNameAndReadsBack) {
  const std::string t = TemporaryName::make("3F2A9C01", 0, "_QM19581.ARW");
  EXPECT_EQ(t, ".tessane-3F2A9C01-0-_QM19581.ARW");
  std::optional<TemporaryName> back = TemporaryName::parse(".tessane-3F2A9C01-17-a-b-.jpg");
  ASSERT_TRUE(back);
  EXPECT_EQ(back->tag, "3F2A9C01");
  EXPECT_EQ(back->index, 17u);
  EXPECT_EQ(back->name, "a-b-.jpg");
  EXPECT_FALSE(back->mayBeCut);

  for (const char* notOne :
       {"IMG_0001.JPG", ".tessane-3F2A9C0-0-a.jpg", ".tessane-3f2a9c01-0-a",
        ".tessane-3F2A9C01--a.jpg", ".tessane-3F2A9C01-0-", ".tessane-3F2A9C01-0a.jpg",
        ".tessane-3F2A9C01-99999999999999999999-a"}) {
    EXPECT_FALSE(TemporaryName::parse(notOne)) << notOne;
  }
}

TEST(TemporaryName, LongNamesAreCutToFitWithoutSplittingACharacter) {
  std::string name;
  for (int i = 0; i < 120; ++i)
    name += "\u00e9";  // 240 bytes
  const std::string t = TemporaryName::make("ABCDEF01", 12345, name);
  EXPECT_LE(t.size(), 255u);
  EXPECT_GE(t.size(), 254u);
  EXPECT_TRUE(unicode::isValidUtf8(t));
  std::optional<TemporaryName> back = TemporaryName::parse(t);
  ASSERT_TRUE(back);
  EXPECT_TRUE(back->mayBeCut);
  EXPECT_TRUE(name.starts_with(back->name));
}

}  // namespace
}  // namespace tessane
