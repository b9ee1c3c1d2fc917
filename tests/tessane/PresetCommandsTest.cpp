#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <string>

#include "ToolRunner.h"

namespace tessane::testing {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

void write(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
}

TEST(Presets, SaveListShowAndDelete) {
  ToolRunner tool;
  const fs::path folder = tool.dataFolder() / "Presets";
  const ToolResult saved =
      tool.run({"presets", "save", "Wedding 10", "--template", "{date:yyyy-MM-dd}_{counter}",
                "--counter-start", "5", "--counter-step", "2", "--counter-digits", "3",
                "--counter-reset", "perDay"});
  ASSERT_EQ(saved.exitCode, 0) << saved.err;
  EXPECT_EQ(saved.out,
            "Saved “Wedding 10” as " + (folder / "Wedding 10.tessanepreset").string() + "\n");
  ASSERT_EQ(tool.run({"presets", "save", "wedding 2", "--template", "{name}"}).exitCode, 0);

  const ToolResult listed = tool.run({"presets", "list"});
  EXPECT_EQ(listed.exitCode, 0) << listed.err;
  EXPECT_EQ(listed.out, "wedding 2\nWedding 10\n");  // natural order, case aside

  // A name finds its preset ignoring case; the JSON is the preset file's.
  const ToolResult shown = tool.run({"presets", "show", "WEDDING 10"});
  ASSERT_EQ(shown.exitCode, 0) << shown.err;
  const json preset = json::parse(shown.out);
  EXPECT_EQ(preset["name"], "Wedding 10");
  const json& format = preset["stack"]["rules"][0]["action"]["format"]["_0"];
  EXPECT_EQ(format["template"], "{date:yyyy-MM-dd}_{counter}");
  EXPECT_EQ(format["counter"], json::parse(R"({"start": 5, "step": 2, "padding": 3,
                                                "reset": "perDay", "position": {"end": {}}})"));

  // A preset file given by its path.
  const ToolResult byFile =
      tool.run({"presets", "show", (folder / "wedding 2.tessanepreset").string()});
  EXPECT_EQ(byFile.exitCode, 0) << byFile.err;
  EXPECT_EQ(json::parse(byFile.out)["name"], "wedding 2");

  const ToolResult deleted = tool.run({"presets", "delete", "Wedding 10"});
  EXPECT_EQ(deleted.exitCode, 0) << deleted.err;
  EXPECT_FALSE(fs::exists(folder / "Wedding 10.tessanepreset"));
  EXPECT_EQ(tool.run({"presets", "list"}).out, "wedding 2\n");

  const ToolResult again = tool.run({"presets", "delete", "Wedding 10"});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_NE(again.err.find("There’s no preset named “Wedding 10”."), std::string::npos)
      << again.err;
}

TEST(Presets, FilesThatDoNotDecodeAreReportedAndRefused) {
  ToolRunner tool;
  const fs::path folder = tool.dataFolder() / "Presets";
  write(folder / "Broken.tessanepreset", "{ not json");
  write(folder / "Future.tessanepreset", R"({"schemaVersion": 2, "name": "Future"})");
  ASSERT_EQ(tool.run({"presets", "save", "Portraits", "--template", "{name}"}).exitCode, 0);

  const ToolResult listed = tool.run({"presets", "list"});
  EXPECT_EQ(listed.exitCode, 0);
  EXPECT_EQ(listed.out, "Portraits\n");
  EXPECT_NE(listed.err.find("“Broken.tessanepreset”"), std::string::npos) << listed.err;
  EXPECT_NE(listed.err.find("newer version"), std::string::npos) << listed.err;

  const ToolResult broken = tool.run({"presets", "show", "Broken"});
  EXPECT_EQ(broken.exitCode, 1);
  EXPECT_NE(broken.err.find("This file isn’t a preset that can be read"), std::string::npos)
      << broken.err;
  // An unreadable file can still be deleted by its name.
  EXPECT_EQ(tool.run({"presets", "delete", "Broken"}).exitCode, 0);
  EXPECT_FALSE(fs::exists(folder / "Broken.tessanepreset"));
}

}  // namespace
}  // namespace tessane::testing
