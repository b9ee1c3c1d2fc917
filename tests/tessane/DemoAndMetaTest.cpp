#include <gtest/gtest.h>
#include <sys/stat.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "../MediaMetadata/Fixtures.h"
#include "FinishesInTime.h"
#include "ToolRunner.h"

namespace tessane::testing {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

class DemoShoot : public ::testing::Test {
 protected:
  void SetUp() override {
    tool_.environment["TZ"] = "Europe/Rome";
    const ToolResult made = tool_.run({"demo", shoot().string()});
    ASSERT_EQ(made.exitCode, 0) << made.err;
    made_ = made.out;
  }
  fs::path shoot() const { return folder_.path() / "Wedding"; }
  std::string file(const std::string& name) const { return (shoot() / name).string(); }

  // `meta --json` of the named files, by file name.
  std::map<std::string, json> meta(const std::vector<std::string>& names) const {
    std::vector<std::string> args{"meta", "--json"};
    for (const std::string& n : names)
      args.push_back(file(n));
    const ToolResult r = tool_.run(args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    std::map<std::string, json> byName;
    for (const json& entry : json::parse(r.out))
      byName[fs::path(entry["path"].get<std::string>()).filename().string()] = entry;
    return byName;
  }

  ToolRunner tool_;
  TempFolder folder_;
  std::string made_;
};

TEST_F(DemoShoot, MakesEveryKindOfFileAndRefusesAFolderWithFiles) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(shoot()))
    names.insert(entry.path().filename().string());
  for (const char* expected : {"DSC01201.JPG", "DSC01201.ARW", "DSC01203.xmp", "DSC_4410.JPG",
                               "DSC_4410.NEF", "DSC_4411.JPG", "C0001.MP4"}) {
    EXPECT_TRUE(names.count(expected)) << expected;
    EXPECT_NE(made_.find(expected), std::string::npos) << made_;
  }
  EXPECT_FALSE(names.count("DSC_4411.NEF"));

  const ToolResult again = tool_.run({"demo", shoot().string()});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_NE(again.err.find("already holds files"), std::string::npos) << again.err;
  EXPECT_EQ(static_cast<std::size_t>(std::distance(fs::directory_iterator(shoot()), {})),
            names.size());
}

TEST_F(DemoShoot, MetaJsonGivesCaseNamesNumbersAndUtcDates) {
  auto read = meta({"DSC01202.JPG", "DSC_4410.NEF", "DSC01203.JPG", "C0001.MP4"});
  ASSERT_EQ(read.size(), 4u);

  const json& sony = read["DSC01202.JPG"];
  EXPECT_EQ(sony["kind"], "image");
  const json& m = sony["metadata"];
  EXPECT_EQ(m["serial"], "5021884");
  // 14:03:05.20 on the camera, read in Rome (summer time), is 12:03:05.2 UTC.
  EXPECT_EQ(m["date"], "2025-06-14T12:03:05.200Z");
  EXPECT_TRUE(m["iso"].is_number_integer()) << m.dump();
  EXPECT_EQ(m["iso"], 200);
  EXPECT_TRUE(m["aperture"].is_number_float()) << m.dump();
  EXPECT_DOUBLE_EQ(m["aperture"].get<double>(), 2.8);
  EXPECT_DOUBLE_EQ(m["shutter"].get<double>(), 1.0 / 250);
  EXPECT_TRUE(m.contains("modified"));

  const json& raw = read["DSC_4410.NEF"];
  EXPECT_EQ(raw["kind"], "raw");
  EXPECT_EQ(raw["metadata"]["serial"], "3018842");
  EXPECT_EQ(raw["metadata"]["date"], "2025-06-14T12:01:05.300Z");     // two minutes behind
  EXPECT_EQ(read["DSC01203.JPG"]["metadata"]["title"], "The rings");  // from the sidecar

  const json& video = read["C0001.MP4"];
  EXPECT_EQ(video["kind"], "video");
  EXPECT_EQ(video["metadata"]["date"], "2025-06-14T12:20:00Z");
}

TEST_F(DemoShoot, MetaTextShowsLocalDatesAndReportsMissingFilesLast) {
  const ToolResult r = tool_.run({"meta", "--time-zone", "Asia/Tokyo", file("DSC01202.JPG"),
                                  file("gone.JPG"), file("DSC_4411.JPG")});
  EXPECT_EQ(r.exitCode, 1);
  // Camera times without an offset are read in the given zone and shown in it.
  EXPECT_NE(r.out.find("  date: 2025-06-14 14:03:05.200 +09:00\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("DSC_4411.JPG  (image)\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("  make: NIKON CORPORATION\n"), std::string::npos) << r.out;
  EXPECT_EQ(r.out.find("gone.JPG"), std::string::npos);
  EXPECT_NE(r.err.find("gone.JPG: No such file or directory"), std::string::npos) << r.err;
}

TEST(Meta, FilesThatAreNotMediaStillGiveTheirDates) {
  ToolRunner tool;
  TempFolder folder;
  const auto broken = folder.file("broken.JPG", "\xFF\xD8 not really a JPEG");
  const auto notes = folder.file("notes\xE9.txt", "hello");  // a name that isn't UTF-8
  const ToolResult r = tool.run({"meta", "--json", broken.string(), notes.string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  const json all = json::parse(r.out);
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0]["kind"], "image");
  EXPECT_EQ(all[1]["kind"], "other");
  EXPECT_EQ(fs::path(all[1]["path"].get<std::string>()).filename(), "notes\uFFFD.txt");
  for (const json& entry : all) {
    EXPECT_TRUE(entry["metadata"].contains("modified")) << entry.dump();
    EXPECT_FALSE(entry["metadata"].contains("make")) << entry.dump();
  }
}

// Pipes named like a sidecar and a video beside a photo: `preview` (which reads the sidecar for
// {title}) and `meta` finish instead of waiting for a writer. Each run is in a child that an alarm
// stops, so a regression fails here instead of hanging.
TEST(Meta, PipesNamedLikeMediaFilesNeverHangPreviewOrMeta) {
  ToolRunner tool;
  TempFolder folder;
  folder.file("a.jpg", "\xFF\xD8 not really a JPEG");
  for (const char* name : {"a.xmp", "p.mov"})
    ASSERT_EQ(::mkfifo((folder.path() / name).c_str(), 0600), 0) << name;
  const std::vector<std::vector<std::string>> runs{
      {"preview", folder.path().string(), "--template", "{title}_{counter}"},
      {"meta", (folder.path() / "p.mov").string(), (folder.path() / "a.jpg").string()}};
  for (const std::vector<std::string>& args : runs) {
    EXPECT_EQ(
        finishesInTime(std::chrono::seconds(10), [&] { return tool.run(args).exitCode == 0; }),
        Finished::inTime)
        << args[0];
  }
}

TEST(Meta, AClipsOwnUtcOffsetIsShownBesideItsValues) {
  ToolRunner tool;
  TempFolder folder;
  const auto clip = folder.path() / "clip.mov";
  writeMovie(clip, "apch", 64, 48, 25,
             {{"com.apple.quicktime.creationdate", "2024-05-01T14:03:22-0500"}});
  const auto photo = folder.file("photo.jpg", tinyJpeg(8, 8));

  const ToolResult text = tool.run({"meta", "--time-zone", "Europe/Rome", clip.string()});
  ASSERT_EQ(text.exitCode, 0) << text.err;
  // The moment, shown in the chosen zone as every date is, and the clip's own offset.
  EXPECT_NE(text.out.find("  date: 2024-05-01 21:03:22 +02:00\n"), std::string::npos) << text.out;
  EXPECT_NE(text.out.find("  shotUtcOffset: -05:00\n"), std::string::npos) << text.out;

  const ToolResult r = tool.run({"meta", "--json", clip.string(), photo.string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  const json all = json::parse(r.out);
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0]["shotUtcOffset"], "-05:00") << all[0].dump();
  EXPECT_EQ(all[0]["metadata"]["date"], "2024-05-01T19:03:22Z");
  EXPECT_FALSE(all[1].contains("shotUtcOffset")) << all[1].dump();
}

}  // namespace
}  // namespace tessane::testing
