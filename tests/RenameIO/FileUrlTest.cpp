#include "RenameIO/FileUrl.h"

#include <gtest/gtest.h>

#include <string>

#include "RenameIO/DataFolder.h"
#include "RenameIO/DurableFile.h"
#include "ScopedEnvironment.h"
#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;

TEST(FileUrl, PercentEncodesTheBytesOfAPath) {
  EXPECT_EQ(FileUrl::fromPath("/photos/My Trip/\u00e9t\u00e9 #1?.jpg"),
            "file:///photos/My%20Trip/%C3%A9t%C3%A9%20%231%3F.jpg");
  EXPECT_EQ(FileUrl::fromPath("/a/_QM19581.ARW"), "file:///a/_QM19581.ARW");
  EXPECT_EQ(FileUrl::fromPath("/a/100%.jpg"), "file:///a/100%25.jpg");

  // Every byte a name can hold, including those that are not UTF-8, comes back as it was.
  std::string name;
  for (int c = 1; c < 256; ++c) {
    if (c != '/') name.push_back(static_cast<char>(c));
  }
  const fs::path odd = fs::path("/card") / name;
  EXPECT_EQ(FileUrl::toPath(FileUrl::fromPath(odd)), odd);
}

TEST(FileUrl, ReadsOnlyLocalFileUrls) {
  EXPECT_EQ(FileUrl::toPath("file:///a/b%20c.jpg"), fs::path("/a/b c.jpg"));
  EXPECT_EQ(FileUrl::toPath("FILE://localhost/a/b.jpg"), fs::path("/a/b.jpg"));
  EXPECT_EQ(FileUrl::toPath("file:///a/%c3%a9.jpg"), fs::path("/a/\u00e9.jpg"));
  for (const char* bad : {"http:///a.jpg", "file://server/a.jpg", "file:a.jpg", "/a.jpg",
                          "file:///a%2", "file:///a%zz.jpg", "file:///a%00b", ""}) {
    EXPECT_FALSE(FileUrl::toPath(bad)) << bad;
  }
}

TEST(DataFolder, FollowsTheXdgRules) {
  testing::ScopedEnvironment environment;
  environment.set("XDG_DATA_HOME", "/data/home");
  EXPECT_EQ(DataFolder::historyFile(), fs::path("/data/home/Tessane Rename/History.json"));
  environment.set("XDG_DATA_HOME", "relative/path");  // not absolute: ignored
  EXPECT_TRUE(DataFolder::location().native().ends_with("/.local/share/Tessane Rename"));
}

TEST(DurableFile, ReplacesWholeOrNotAtAll) {
  testing::TempFolder dir;
  const fs::path file = dir.path() / "deep" / "er" / "History.json";
  ASSERT_FALSE(DurableFile::write(file, "first"));
  ASSERT_FALSE(DurableFile::write(file, "second"));
  EXPECT_EQ(fs::file_size(file), 6u);
  EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), fs::directory_iterator()), 1)
      << "no temporary file left behind";
  // A folder where the file should be: the write fails and leaves everything as it was.
  fs::create_directory(dir.path() / "taken");
  EXPECT_TRUE(DurableFile::write(dir.path() / "taken", "x"));
  EXPECT_TRUE(fs::is_directory(dir.path() / "taken"));
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 2);
}

}  // namespace
}  // namespace tessane
