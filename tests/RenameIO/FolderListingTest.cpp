#include "RenameIO/FolderListing.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "FileContents.h"
#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

std::vector<std::string> namesOf(const std::vector<ListedFile>& files) {
  std::vector<std::string> out;
  for (const ListedFile& f : files)
    out.push_back(f.name);
  return out;
}

std::vector<std::string> sorted(std::vector<std::string> v) {
  std::sort(v.begin(), v.end());
  return v;
}

TEST(FolderListing, FilesAreTheVisibleRegularFilesNamesAreEverything) {
  TempFolder dir;
  dir.file("a.JPG");
  dir.file(".DS_Store");
  dir.file("b.ARW");
  fs::create_directory(dir.path() / "Sub");
  fs::create_directory(dir.path() / "Library.photoslibrary");
  fs::create_symlink("a.JPG", dir.path() / "link.JPG");
  fs::create_symlink("Sub", dir.path() / "link-to-folder");
  fs::create_symlink("gone.JPG", dir.path() / "dangling.JPG");
  ASSERT_EQ(::mkfifo((dir.path() / "pipe.jpg").c_str(), 0644), 0);

  Result<std::vector<ListedFile>> files = FolderListing::files(dir.path());
  ASSERT_TRUE(files.ok()) << files.error().code;
  EXPECT_EQ(namesOf(files.value()), (std::vector<std::string>{"a.JPG", "b.ARW"}));
  EXPECT_EQ(files.value()[0].path, dir.path() / "a.JPG");

  Result<std::vector<std::string>> names = FolderListing::names(dir.path());
  ASSERT_TRUE(names.ok());
  EXPECT_EQ(sorted(names.value()),
            (std::vector<std::string>{".DS_Store", "Library.photoslibrary", "Sub", "a.JPG", "b.ARW",
                                      "dangling.JPG", "link-to-folder", "link.JPG", "pipe.jpg"}));
}

TEST(FolderListing, FilesComeInNaturalOrder) {
  TempFolder dir;
  for (const char* n :
       {"IMG_10.JPG", "IMG_2.JPG", "img_3.jpg", "IMG_1.JPG", "Zebra.jpg", "apple.jpg"}) {
    dir.file(n);
  }
  Result<std::vector<ListedFile>> files = FolderListing::files(dir.path());
  ASSERT_TRUE(files.ok());
  EXPECT_EQ(namesOf(files.value()),
            (std::vector<std::string>{"apple.jpg", "IMG_1.JPG", "IMG_2.JPG", "img_3.jpg",
                                      "IMG_10.JPG", "Zebra.jpg"}));
}

TEST(FolderListing, NamesKeepTheirBytesWhateverTheirForm) {
  TempFolder dir;
  const std::string decomposed = "e\xCC\x81t\xC3\xA9.jpg";  // one é decomposed, one composed
  const std::string notText = "caf\xE9.jpg";                // Latin-1, not UTF-8
  const std::string emoji = "\xF0\x9F\x8C\x8A surf.JPG";
  dir.file(decomposed, "decomposed");
  dir.file(notText, "latin-1");
  dir.file(emoji, "emoji");

  Result<std::vector<ListedFile>> files = FolderListing::files(dir.path());
  ASSERT_TRUE(files.ok());
  ASSERT_EQ(files.value().size(), 3u);
  for (const ListedFile& f : files.value()) {
    // Every listed path opens the very file: no byte of a name was changed on the way.
    const std::string contents = testing::contentsOf(f.path);
    if (f.name == decomposed) {
      EXPECT_EQ(contents, "decomposed");
      EXPECT_TRUE(f.nameIsText);
    } else if (f.name == notText) {
      EXPECT_EQ(contents, "latin-1");
      EXPECT_FALSE(f.nameIsText);
      EXPECT_EQ(f.displayName(), "caf\xEF\xBF\xBD.jpg");
    } else {
      EXPECT_EQ(f.name, emoji);
      EXPECT_EQ(contents, "emoji");
    }
  }
  Result<std::vector<std::string>> names = FolderListing::names(dir.path());
  ASSERT_TRUE(names.ok());
  EXPECT_EQ(sorted(names.value()), sorted({decomposed, notText, emoji}));
}

TEST(FolderListing, FoldersThatCannotBeReadGiveErrors) {
  TempFolder dir;
  const fs::path vanished = dir.path() / "card";
  fs::create_directory(vanished);
  fs::remove(vanished);
  Result<std::vector<ListedFile>> missing = FolderListing::files(vanished);
  ASSERT_FALSE(missing.ok());
  EXPECT_EQ(missing.error().code, ENOENT);
  EXPECT_EQ(missing.error().path, vanished);

  const fs::path file = dir.file("photo.jpg");
  Result<std::vector<std::string>> notFolder = FolderListing::names(file);
  ASSERT_FALSE(notFolder.ok());
  EXPECT_EQ(notFolder.error().code, ENOTDIR);

  // A link to a folder is followed when it is the folder asked for: that is what the user chose.
  fs::create_directory(dir.path() / "real");
  dir.file("real/x.jpg");
  fs::create_symlink("real", dir.path() / "alias");
  Result<std::vector<ListedFile>> viaLink = FolderListing::files(dir.path() / "alias");
  ASSERT_TRUE(viaLink.ok());
  EXPECT_EQ(namesOf(viaLink.value()), std::vector<std::string>{"x.jpg"});

  if (::geteuid() == 0) return;  // root reads every folder
  fs::permissions(dir.path() / "real", fs::perms::none);
  Result<std::vector<ListedFile>> locked = FolderListing::files(dir.path() / "real");
  fs::permissions(dir.path() / "real", fs::perms::owner_all);
  ASSERT_FALSE(locked.ok());
  EXPECT_EQ(locked.error().code, EACCES);
}

}  // namespace
}  // namespace tessane
