#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>

#include "FileContents.h"
#include "ToolRunner.h"

namespace tessane::testing {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

TEST(Bodies, SetListAndRefuseABadOffset) {
  ToolRunner tool;
  EXPECT_NE(tool.run({"bodies", "list"}).out.find("No camera bodies yet."), std::string::npos);

  const ToolResult set =
      tool.run({"bodies", "set", "3018842", "--tag", "Z6", "--offset", "+0:02:00"});
  ASSERT_EQ(set.exitCode, 0) << set.err;
  EXPECT_EQ(set.out, "3018842: tag “Z6”, clock +0:02:00\n");
  ASSERT_EQ(tool.run({"bodies", "set", "ILCE-7RM5", "--tag", "A7R", "--offset=-0:00:30"}).exitCode,
            0);

  const ToolResult listed = tool.run({"bodies", "list"});
  EXPECT_EQ(listed.exitCode, 0);
  EXPECT_EQ(listed.out,
            "Body       Tag  Offset\n"
            "3018842    Z6   +0:02:00\n"
            "ILCE-7RM5  A7R  -0:00:30\n")
      << listed.out;

  // A refused offset changes nothing, not even the tag given with it.
  const ToolResult bad =
      tool.run({"bodies", "set", "3018842", "--tag", "Other", "--offset", "1:60:00"});
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_NE(bad.err.find("“1:60:00” isn’t a clock offset"), std::string::npos) << bad.err;
  EXPECT_EQ(tool.run({"bodies", "list"}).out, listed.out);

  EXPECT_EQ(tool.run({"bodies", "set", "3018842"}).exitCode, 2);
}

TEST(Bodies, ExportImportRoundTripAndRefuseWhatIsNotATable) {
  ToolRunner tool;
  TempFolder folder;
  ASSERT_EQ(tool.run({"bodies", "set", "3018842", "--tag", "Z6", "--offset", "+0:02:00"}).exitCode,
            0);
  // A folder gets the suggested name inside it.
  const ToolResult exported = tool.run({"bodies", "export", folder.path().string()});
  ASSERT_EQ(exported.exitCode, 0) << exported.err;
  const fs::path file = folder.path() / "Tessane camera bodies.json";
  const std::string text = contentsOf(file);
  EXPECT_EQ(json::parse(text), json::parse(R"({"clockOffsets": {"3018842": 120},
                                               "tags": {"3018842": "Z6"}})"));
  EXPECT_LT(text.find("clockOffsets"), text.find("tags"));  // sorted keys
  EXPECT_NE(text.find("\n  "), std::string::npos);          // pretty

  // Into another home (how rows merge is the table's own affair).
  ToolRunner other;
  const ToolResult imported = other.run({"bodies", "import", file.string()});
  EXPECT_EQ(imported.exitCode, 0) << imported.err;
  const std::string merged = other.run({"bodies", "list"}).out;
  EXPECT_NE(merged.find("3018842  Z6   +0:02:00"), std::string::npos) << merged;

  const fs::path notATable = folder.file("list.json", "[1, 2, 3]");
  const ToolResult refused = other.run({"bodies", "import", notATable.string()});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_EQ(refused.err, "tessane: “list.json” isn’t a table of camera bodies.\n");
  EXPECT_EQ(other.run({"bodies", "list"}).out, merged);
}

TEST(Bodies, SyncLinesUpTheClocksOfTwoPhotosOfTheSameInstant) {
  ToolRunner tool;
  TempFolder folder;
  const fs::path shoot = folder.path() / "shoot";
  ASSERT_EQ(tool.run({"demo", shoot.string()}).exitCode, 0);
  // The Sony's DSC01201 and the Nikon's DSC_4410 were taken together; the Nikon is 2 min behind.
  const ToolResult synced = tool.run(
      {"bodies", "sync", (shoot / "DSC01201.JPG").string(), (shoot / "DSC_4410.JPG").string()});
  ASSERT_EQ(synced.exitCode, 0) << synced.err;
  EXPECT_NE(synced.out.find(" clock: +0:02:00\n"), std::string::npos) << synced.out;
  EXPECT_NE(synced.out.find("The files aren’t changed."), std::string::npos) << synced.out;
  EXPECT_NE(tool.run({"bodies", "list"}).out.find("3018842       +0:02:00"), std::string::npos);

  const fs::path plain = folder.file("plain.JPG", "not a photo");
  const ToolResult noBody =
      tool.run({"bodies", "sync", (shoot / "DSC01201.JPG").string(), plain.string()});
  EXPECT_EQ(noBody.exitCode, 1);
  EXPECT_NE(noBody.err.find("“plain.JPG” has no camera serial number or model"), std::string::npos)
      << noBody.err;
  EXPECT_EQ(tool.run({"bodies", "sync", plain.string()}).exitCode, 2);
}

TEST(Bodies, SyncReadsTheClocksInTheZoneGiven) {
  ToolRunner tool;
  tool.environment["TZ"] = "UTC";
  TempFolder folder;
  const fs::path shoot = folder.path() / "shoot";
  ASSERT_EQ(tool.run({"demo", shoot.string()}).exitCode, 0);
  // The video says 12:20 UTC; the Nikon's clock read 14:08:55 in Rome (12:08:55 UTC).
  const ToolResult synced =
      tool.run({"bodies", "sync", (shoot / "C0001.MP4").string(), (shoot / "DSC_4413.JPG").string(),
                "--time-zone", "Europe/Rome"});
  ASSERT_EQ(synced.exitCode, 0) << synced.err;
  EXPECT_NE(synced.out.find(" clock: +0:11:05\n"), std::string::npos) << synced.out;
}

}  // namespace
}  // namespace tessane::testing
