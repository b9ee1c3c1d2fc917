#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "ToolRunner.h"

namespace tessane::testing {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

std::string read(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(Bodies, SetListAndRefuseABadOffset) {
  ToolRunner tool;
  EXPECT_NE(tool.run({"bodies", "list"}).out.find("No camera bodies yet."), std::string::npos);

  const ToolResult set =
      tool.run({"bodies", "set", "3018842", "--tag", "Z6", "--offset", "+0:02:00"});
  ASSERT_EQ(set.exitCode, 0) << set.err;
  EXPECT_EQ(set.out, "3018842: tag “Z6”, clock +0:02:00\n");
  ASSERT_EQ(tool.run({"bodies", "set", "ILCE-7RM5", "--tag", "A7R"}).exitCode, 0);
  // Keys are the same body whatever their case and blanks.
  ASSERT_EQ(tool.run({"bodies", "set", " ilce-7rm5 ", "--offset=-0:00:30"}).exitCode, 0);

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

  // Tags are trimmed like keys; a tag that would break a name is refused.
  ASSERT_EQ(tool.run({"bodies", "set", "3018842", "--tag", " Z6 "}).exitCode, 0);
  EXPECT_EQ(tool.run({"bodies", "list"}).out, listed.out);
  const ToolResult slash = tool.run({"bodies", "set", "3018842", "--tag", "Z/6"});
  EXPECT_EQ(slash.exitCode, 1);
  EXPECT_NE(slash.err.find("can’t be a tag"), std::string::npos) << slash.err;
  EXPECT_EQ(tool.run({"bodies", "set", "3018842", "--tag",
                      "Z\x7f"
                      "6"})
                .exitCode,
            1);
  EXPECT_EQ(tool.run({"bodies", "list"}).out, listed.out);

  EXPECT_EQ(tool.run({"bodies", "set", "3018842"}).exitCode, 2);
  EXPECT_EQ(tool.run({"bodies"}).exitCode, 2);
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
  const std::string text = read(file);
  EXPECT_EQ(json::parse(text), json::parse(R"({"clockOffsets": {"3018842": 120},
                                               "tags": {"3018842": "Z6"}})"));
  EXPECT_LT(text.find("clockOffsets"), text.find("tags"));  // sorted keys
  EXPECT_NE(text.find("\n  "), std::string::npos);          // pretty

  // Merging into another home: imported rows are added, the same body takes the imported row.
  ToolRunner other;
  ASSERT_EQ(other.run({"bodies", "set", "3018842", "--tag", "Old"}).exitCode, 0);
  ASSERT_EQ(other.run({"bodies", "set", "5021884", "--tag", "A7R"}).exitCode, 0);
  const ToolResult imported = other.run({"bodies", "import", file.string()});
  EXPECT_EQ(imported.exitCode, 0) << imported.err;
  const std::string merged = other.run({"bodies", "list"}).out;
  EXPECT_NE(merged.find("3018842  Z6   +0:02:00"), std::string::npos) << merged;
  EXPECT_NE(merged.find("5021884  A7R  0:00:00"), std::string::npos) << merged;

  const fs::path notATable = folder.file("list.json", "[1, 2, 3]");
  const ToolResult refused = other.run({"bodies", "import", notATable.string()});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_EQ(refused.err, "tessane: “list.json” isn’t a table of camera bodies.\n");
  EXPECT_EQ(other.run({"bodies", "list"}).out, merged);
  EXPECT_EQ(other.run({"bodies", "import", (folder.path() / "gone.json").string()}).exitCode, 1);
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

  // Once the offset is stored the same pair is in time.
  const ToolResult again = tool.run(
      {"bodies", "sync", (shoot / "DSC01201.JPG").string(), (shoot / "DSC_4410.JPG").string()});
  EXPECT_EQ(again.exitCode, 0);
  EXPECT_NE(again.out.find(" clock: +0:02:00"), std::string::npos) << again.out;

  const fs::path plain = folder.file("plain.JPG", "not a photo");
  const ToolResult noBody =
      tool.run({"bodies", "sync", (shoot / "DSC01201.JPG").string(), plain.string()});
  EXPECT_EQ(noBody.exitCode, 1);
  EXPECT_NE(noBody.err.find("“plain.JPG” has no camera serial number or model"), std::string::npos)
      << noBody.err;
  EXPECT_EQ(tool.run({"bodies", "sync", plain.string()}).exitCode, 2);

  // Two photos of one camera line up nothing: refused, and the table stays as it was.
  const std::string table = tool.run({"bodies", "list"}).out;
  const ToolResult oneBody = tool.run(
      {"bodies", "sync", (shoot / "DSC01201.JPG").string(), (shoot / "DSC01202.JPG").string()});
  EXPECT_EQ(oneBody.exitCode, 1);
  EXPECT_NE(oneBody.err.find("come from the same camera"), std::string::npos) << oneBody.err;
  EXPECT_EQ(tool.run({"bodies", "list"}).out, table);
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
  EXPECT_EQ(tool.run({"bodies", "sync", (shoot / "C0001.MP4").string(),
                      (shoot / "DSC_4413.JPG").string(), "--time-zone", "Mars/Olympus"})
                .exitCode,
            1);
}

}  // namespace
}  // namespace tessane::testing
