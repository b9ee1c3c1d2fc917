// Gathering a shoot: each file once however it was given, and the values of a twin group's
// primary handed to every member.
#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "TempFolder.h"
#include "TessaneRename/Shoot.h"

namespace tessane {
namespace {

std::vector<std::string> namesOf(const GatheredShoot& gathered) {
  std::vector<std::string> out;
  if (!gathered.shoot) return out;
  for (const RenameSubject& s : gathered.shoot->subjects)
    out.push_back(s.name);
  return out;
}

TEST(Shoot, EachFileOnceHoweverItWasGiven) {
  testing::TempFolder dir;
  const auto a = dir.file("A.JPG");
  const auto b = dir.file("B.JPG");
  ShootRequest request;
  request.readMetadata = false;
  request.readOriginalNames = false;
  const auto gathered = [&](std::vector<std::filesystem::path> paths) {
    request.paths = std::move(paths);
    GatheredShoot g = gatherShoot(request);
    EXPECT_FALSE(g.problem);
    return namesOf(g);
  };
  // The folder is listed in name order.
  using Names = std::vector<std::string>;
  EXPECT_EQ(gathered({dir.path(), dir.path()}), (Names{"A.JPG", "B.JPG"}));
  EXPECT_EQ(gathered({b, dir.path()}), (Names{"B.JPG", "A.JPG"}));
  EXPECT_EQ(gathered({dir.path(), b}), (Names{"A.JPG", "B.JPG"}));
  EXPECT_EQ(gathered({a, a, dir.path() / "." / "A.JPG"}), (Names{"A.JPG"}));
}

TEST(Shoot, TwinsTakeTheirPrimarysValues) {
  testing::TempFolder dir;
  dir.file("IMG_0001.CR2");
  const auto twin = dir.file("IMG_0001.JPG");
  const auto other = dir.file("IMG_0002.JPG");
  // Three different modification times, so that whose values a file has shows.
  const auto now = std::filesystem::last_write_time(twin);
  std::filesystem::last_write_time(twin, now - std::chrono::hours(1));
  std::filesystem::last_write_time(other, now - std::chrono::hours(2));
  const std::unique_ptr<icu::TimeZone> utc(icu::TimeZone::createTimeZone("UTC"));
  const TwinOptions twins = TwinOptions::forKinds(true, false, false);
  ShootRequest request;
  request.paths = {dir.path()};
  request.zone = utc.get();
  request.twins = &twins;
  request.readOriginalNames = false;
  request.scope.fileDates = true;
  const GatheredShoot g = gatherShoot(request);
  ASSERT_TRUE(g.shoot);
  const auto& s = g.shoot->subjects;
  ASSERT_EQ(s.size(), 3u);
  // Every file has its dates; the JPEG twin has its RAW's, each other file its own.
  for (const RenameSubject& subject : s)
    EXPECT_NE(subject.metadata.find(MetadataKey::modified), nullptr) << subject.name;
  EXPECT_EQ(s[0].name, "IMG_0001.CR2");
  EXPECT_EQ(s[0].metadata, s[1].metadata);
  EXPECT_NE(s[0].metadata, s[2].metadata);
}

}  // namespace
}  // namespace tessane
