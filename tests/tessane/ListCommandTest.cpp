#include <gtest/gtest.h>

#include "ToolRunner.h"

namespace tessane::testing {
namespace {

TEST(Tool, UsageErrorsAndListing) {
  ToolRunner tool;
  EXPECT_EQ(tool.run({}).exitCode, 2);
  EXPECT_EQ(tool.run({"--no-such-option"}).exitCode, 2);
  EXPECT_EQ(tool.run({"--help"}).exitCode, 0);

  TempFolder shoot;
  shoot.file("DSC_0001.ARW");
  shoot.file("DSC_0001.ARW.xmp");
  const ToolResult listed = tool.run({"list", shoot.path().string()});
  EXPECT_EQ(listed.exitCode, 0) << listed.err;
  EXPECT_NE(listed.out.find("ARW.xmp  sidecar"), std::string::npos) << listed.out;
  const ToolResult missing = tool.run({"list", (shoot.path() / "gone").string()});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.err.find("No such file or directory"), std::string::npos) << missing.err;
}

}  // namespace
}  // namespace tessane::testing
