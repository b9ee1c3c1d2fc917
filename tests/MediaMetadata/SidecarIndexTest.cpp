#include "MediaMetadata/SidecarIndex.h"
#include "RenameEngine/Unicode.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;

// A fake file system: folders and their names, counting every listing.
struct FakeFolders {
  std::map<std::string, std::vector<std::string>> folders;
  std::atomic<int> listings{0};

  SidecarIndex::FolderLister lister() {
    return [this](const fs::path& folder) -> std::optional<std::vector<std::string>> {
      ++listings;
      const auto it = folders.find(folder.string());
      if (it == folders.end()) return std::nullopt;
      return it->second;
    };
  }
};

TEST(SidecarIndex, TheBaseNameCandidateComesFirst) {
  FakeFolders fs;
  fs.folders["/card"] = {"DSC_0001.ARW",     "DSC_0001.ARW.xmp", "DSC_0001.xmp", "DSC_0002.ARW",
                         "DSC_0002.ARW.xmp", "README",           "README.xmp"};
  SidecarIndex index(fs.lister());
  EXPECT_EQ(index.sidecar("/card/DSC_0001.ARW"), fs::path("/card/DSC_0001.xmp"));
  EXPECT_EQ(index.sidecar("/card/DSC_0002.ARW"), fs::path("/card/DSC_0002.ARW.xmp"));
  EXPECT_EQ(index.sidecar("/card/README"), fs::path("/card/README.xmp"));
  EXPECT_EQ(index.sidecar("/card/DSC_0003.ARW"), std::nullopt);
  EXPECT_EQ(fs.listings, 1);  // one listing answers every question about the folder
}

TEST(SidecarIndex, NamesMatchWhateverTheirCaseOrNormalisation) {
  FakeFolders fs;
  // "É" decomposed on disk, "é" composed in the question.
  fs.folders["/card"] = {"dsc_0001.XMP", "E\xcc\x81t\xc3\xa9.xmp", "a.XMP", "A.xmp"};
  SidecarIndex index(fs.lister());
  EXPECT_EQ(index.sidecar("/card/DSC_0001.ARW"), fs::path("/card/dsc_0001.XMP"));
  EXPECT_EQ(index.sidecar("/card/\xc3\x89t\xc3\xa9.jpg"), fs::path("/card/E\xcc\x81t\xc3\xa9.xmp"));
  // Two names with one key: the one whose bytes sort first, whatever the listing order.
  EXPECT_EQ(index.sidecar("/card/a.jpg"), fs::path("/card/A.xmp"));
}

TEST(SidecarIndex, AnUnreadableFolderIsEmptyAndNotRetried) {
  FakeFolders fs;
  SidecarIndex index(fs.lister());
  EXPECT_EQ(index.sidecar("/gone/a.jpg"), std::nullopt);
  EXPECT_EQ(index.sidecar("/gone/b.jpg"), std::nullopt);
  EXPECT_EQ(fs.listings, 1);
  EXPECT_TRUE(index.listing("/gone")->empty());
}

TEST(SidecarIndex, ManyThreadsShareOneIndex) {
  FakeFolders fs;
  for (int f = 0; f < 8; ++f) {
    auto& names = fs.folders["/f" + std::to_string(f)];
    for (int i = 0; i < 50; ++i) {
      names.push_back("IMG_" + std::to_string(i) + ".CR3");
      if (i % 2 == 0) names.push_back("IMG_" + std::to_string(i) + ".xmp");
    }
  }
  SidecarIndex index(fs.lister());
  std::atomic<int> found{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int f = 0; f < 8; ++f) {
        for (int i = 0; i < 50; ++i) {
          const fs::path file = "/f" + std::to_string(f) + "/IMG_" + std::to_string(i) + ".CR3";
          if (index.sidecar(file)) ++found;
        }
      }
    });
  }
  for (auto& t : threads)
    t.join();
  EXPECT_EQ(found, 4 * 8 * 25);
  // Two threads may list one folder at the same moment, but never more than once each.
  EXPECT_GE(fs.listings, 8);
  EXPECT_LE(fs.listings, 8 * 4);
}

TEST(SidecarIndex, ListsRealFoldersAndGivesTheNameOnDisk) {
  testing::TempFolder dir;
  dir.file("IMG_0001.CR2");
  dir.file("img_0001.CR2.XMP");
  SidecarIndex index;
  EXPECT_EQ(index.sidecar(dir.path() / "IMG_0001.CR2"), dir.path() / "img_0001.CR2.XMP");
  // Files added after the folder was listed are not seen by the same index.
  dir.file("IMG_0002.xmp");
  EXPECT_EQ(index.sidecar(dir.path() / "IMG_0002.CR2"), std::nullopt);
  EXPECT_EQ(SidecarIndex().sidecar(dir.path() / "IMG_0002.CR2"), dir.path() / "IMG_0002.xmp");
}

// ASCII names take a shortcut past ICU; every name must get the key ICU gives it.
TEST(SidecarIndex, LookupKeysOfAsciiAndOtherNamesAgreeWithIcu) {
  for (const std::string name : {"IMG_0001.CR2.XMP", "dsc 12 [a]~.xmp", "", "Été.XMP",
                                 "E\u0301te\u0301.xmp", "\u0130STANBUL.xmp", "ß.XMP"}) {
    EXPECT_EQ(SidecarIndex::lookupKey(name), unicode::toLower(unicode::toNfc(name))) << name;
  }
  EXPECT_EQ(SidecarIndex::lookupKey("IMG_0001.XMP"), "img_0001.xmp");
}

}  // namespace
}  // namespace tessane
