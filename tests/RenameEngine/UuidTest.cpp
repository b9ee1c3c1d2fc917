#include "RenameEngine/Uuid.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace tessane {
namespace {

TEST(Uuid, TextRoundTripAndVersionBits) {
  std::unordered_set<Uuid> seen;
  for (int i = 0; i < 1000; ++i) {
    const Uuid u = Uuid::random();
    const std::string text = u.string();
    ASSERT_EQ(text.size(), 36u);
    EXPECT_EQ(text[14], '4') << text;
    EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
    EXPECT_EQ(Uuid::parse(text), u);
    EXPECT_TRUE(seen.insert(u).second) << "a repeated UUID";
  }
}

TEST(Uuid, ParsingAcceptsEitherCaseAndRejectsMalformedText) {
  const auto u = Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
  ASSERT_TRUE(u.has_value());
  EXPECT_EQ(u->string(), "E621E1F8-C36C-495A-93FC-0C247A3E6E5F");
  EXPECT_FALSE(Uuid::parse("E621E1F8C36C495A93FC0C247A3E6E5F").has_value());
  EXPECT_FALSE(Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5").has_value());
  EXPECT_FALSE(Uuid::parse("G621E1F8-C36C-495A-93FC-0C247A3E6E5F").has_value());
  EXPECT_FALSE(Uuid::parse("E621E1F8-C36C-495A-93FC_0C247A3E6E5F").has_value());
  EXPECT_TRUE(Uuid().isNil());
  EXPECT_FALSE(u->isNil());
}

}  // namespace
}  // namespace tessane
