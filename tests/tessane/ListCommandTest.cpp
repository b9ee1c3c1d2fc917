#include <gtest/gtest.h>

#include "ToolRunner.h"

namespace tessane::testing {
namespace {

// Wrong usage of every command is exit code 2 and changes nothing; a template that doesn't parse
// is refused (1) with its message.
TEST(Tool, UsageErrors) {
  ToolRunner tool;
  EXPECT_EQ(tool.run({"--help"}).exitCode, 0);
  const std::vector<std::vector<std::string>> usages = {
      {},
      {"--no-such-option"},
      {"bodies"},
      {"presets"},
      {"presets", "save", "X"},
      {"presets", "save", "X", "--template", "{name}", "--counter-reset", "weekly"},
      {"presets", "save", "X", "--template", "{name}", "--counter-digits", "many"},
      {"meta"},
  };
  for (const auto& args : usages)
    EXPECT_EQ(tool.run(args).exitCode, 2) << (args.empty() ? "" : args.back());
  const ToolResult unclosed = tool.run({"presets", "save", "X", "--template", "{date"});
  EXPECT_EQ(unclosed.exitCode, 1);
  EXPECT_NE(unclosed.err.find("A “{” has no closing “}”"), std::string::npos) << unclosed.err;
  EXPECT_EQ(tool.run({"presets", "list"}).out, "");
}

TEST(Tool, Listing) {
  ToolRunner tool;
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
