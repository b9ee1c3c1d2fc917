#include "RenameIO/OriginalName.h"

#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <cerrno>
#include <string>
#include <vector>

#include "TempFolder.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;

std::string rawValue(const fs::path& p) {
  char buffer[512];
  const ssize_t got = ::lgetxattr(p.c_str(), OriginalName::kAttribute, buffer, sizeof buffer);
  return got < 0 ? std::string("(none)") : std::string(buffer, static_cast<std::size_t>(got));
}

class OriginalNameTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const fs::path probe = dir_.file("probe");
    if (::lsetxattr(probe.c_str(), "user.probe", "1", 1, 0) != 0) {
      GTEST_SKIP() << "the test folder's file system refuses user attributes (errno " << errno
                   << ")";
    }
  }
  TempFolder dir_;
};

TEST_F(OriginalNameTest, FirstNameWinsThroughRenames) {
  fs::path file = dir_.file("_QM19581.ARW", "raw");
  EXPECT_FALSE(OriginalName::read(file));
  for (const char* next : {"2024-05-01.ARW", "Rome.ARW", "final.ARW"}) {
    OriginalName::remember(file, file.filename().native());
    const fs::path renamed = dir_.path() / next;
    fs::rename(file, renamed);
    file = renamed;
  }
  EXPECT_EQ(OriginalName::read(file), "_QM19581.ARW");
  EXPECT_EQ(rawValue(file), "_QM19581.ARW") << "no terminating zero, no length prefix";
}

TEST_F(OriginalNameTest, ABatchRemembersEveryFilesFirstNameOnAllCores) {
  // Enough files for the work to be split; every tenth already keeps a name of its own.
  std::vector<FileMove> moves;
  for (int i = 0; i < 3000; ++i) {
    const std::string n = std::to_string(i);
    const fs::path now = dir_.file("Trip_" + n + ".jpg");
    if (i % 10 == 0) OriginalName::remember(now, "CAMERA_" + n + ".JPG");
    moves.push_back(FileMove{dir_.path() / ("DSC_" + n + ".JPG"), now});
  }
  for (bool nativeOnly : {true, false}) {
    OriginalName::rememberAll(moves, nativeOnly);
    for (int i = 0; i < 3000; ++i) {
      const std::string n = std::to_string(i);
      ASSERT_EQ(OriginalName::read(moves[static_cast<std::size_t>(i)].destination),
                (i % 10 == 0 ? "CAMERA_" : "DSC_") + n + ".JPG")
          << i;
    }
  }
}

TEST_F(OriginalNameTest, NonAsciiNamesComeBackByteForByte) {
  const std::string decomposed = "E\u0301te\u0301 \U0001F30A.jpg";
  const fs::path file = dir_.file("a.jpg");
  OriginalName::remember(file, decomposed);
  EXPECT_EQ(OriginalName::read(file), decomposed) << "kept as given, not brought to NFC";
}

TEST_F(OriginalNameTest, ValuesThatAreNotNamesReadAsNothingAndStay) {
  const fs::path latin1 = dir_.file("latin1.jpg");
  ASSERT_EQ(::lsetxattr(latin1.c_str(), OriginalName::kAttribute, "caf\xe9", 4, 0), 0);
  EXPECT_FALSE(OriginalName::read(latin1));
  OriginalName::remember(latin1, "latin1.jpg");
  EXPECT_EQ(rawValue(latin1), "caf\xe9") << "an existing value is never replaced";

  const fs::path empty = dir_.file("empty.jpg");
  ASSERT_EQ(::lsetxattr(empty.c_str(), OriginalName::kAttribute, "", 0, 0), 0);
  EXPECT_FALSE(OriginalName::read(empty));

  OriginalName::remember(dir_.path() / "missing.jpg", "x");  // silently nothing

  // Anyone can write the attribute: only a single plain name that passes the name checks is a name
  // to go back to. A path would move the file out of its folder, a leading dot hide it.
  const fs::path file = dir_.file("hostile.jpg");
  for (const std::string& value :
       {std::string("x/../y.jpg"), std::string("/tmp/y.jpg"), std::string(".hidden.jpg"),
        std::string(".."), std::string("line\nbreak.jpg"), std::string("nul\0.jpg", 8),
        std::string("a:b.jpg"), std::string(300, 'a') + ".jpg"}) {
    ASSERT_EQ(::lremovexattr(file.c_str(), OriginalName::kAttribute) == 0 || errno == ENODATA,
              true);
    ASSERT_EQ(::lsetxattr(file.c_str(), OriginalName::kAttribute, value.data(), value.size(), 0),
              0);
    EXPECT_FALSE(OriginalName::read(file)) << value;
  }
}

TEST_F(OriginalNameTest, SymbolicLinksAreNeverFollowed) {
  const fs::path target = dir_.file("target.jpg");
  OriginalName::remember(target, "CAMERA.JPG");
  const fs::path link = dir_.path() / "link.jpg";
  fs::create_symlink("target.jpg", link);
  EXPECT_FALSE(OriginalName::read(link)) << "the target's attribute is not the link's";
  OriginalName::remember(link, "link.jpg");
  EXPECT_EQ(OriginalName::read(target), "CAMERA.JPG");
  fs::remove(target);
  OriginalName::remember(link, "dangling.jpg");  // a dangling link is no error either
}

TEST(OriginalNameVolume, NativeAttributeDisksByFileSystemType) {
  TempFolder dir;
  EXPECT_FALSE(OriginalName::keepsAttributesNatively("/proc/self/status"));
  EXPECT_FALSE(OriginalName::keepsAttributesNatively(dir.path() / "missing" / "a.jpg"));
  EXPECT_TRUE(OriginalName::keepsAttributesNatively("/dev/shm") || !fs::exists("/dev/shm"));
}

}  // namespace
}  // namespace tessane
