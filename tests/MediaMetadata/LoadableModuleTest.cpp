#include "MediaMetadata/LoadableModule.h"

#include <gtest/gtest.h>

#include "MediaMetadata/ContainerFacts.h"

namespace tessane {
namespace {

TEST(LoadableModule, TheBuildsModulesAreFoundThroughTheProgramsRunPath) {
  // Under the sanitizers dlopen is called from their runtime, whose run path is not the program's.
  LoadableModule video("libtessane-video.so");
  const auto read = reinterpret_cast<TessaneReadVideoFacts>(video.symbol("tessaneReadVideoFacts"));
  ASSERT_NE(read, nullptr) << video.problem();
  VideoFacts facts;
  read("/nonexistent/clip.mp4", &facts);
  EXPECT_FALSE(facts.opened);
  EXPECT_EQ(video.problem(), "");

  EXPECT_EQ(video.symbol("noSuchFunction"), nullptr);
  EXPECT_NE(video.problem().find("noSuchFunction"), std::string::npos);
}

TEST(LoadableModule, AMissingModuleSaysWhy) {
  LoadableModule missing("libtessane-missing.so");
  EXPECT_EQ(missing.symbol("anything"), nullptr);
  EXPECT_EQ(missing.symbol("anything"), nullptr) << "asked twice, loaded once";
  EXPECT_NE(missing.problem().find("libtessane-missing.so"), std::string::npos);
}

}  // namespace
}  // namespace tessane
