// The file panel's model: how one file's new name was made, its shooting data as the panel shows
// it, and lining up two cameras' clocks from two photos of one instant.
#include "TessaneRename/FileInspection.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSettings>

#include "EventLoop.h"
#include "MediaMetadata/Fixtures.h"
#include "Rules.h"
#include "TempFolder.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/ClockSync.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/TestApplication.h"

namespace tessane {
namespace {

using testing::formatRule;
using testing::operationRule;

namespace fs = std::filesystem;
using testing::TempFolder;
using testing::waitFor;

QCoreApplication& application() {
  return testing::coreApplication();
}

class Inspection : public ::testing::Test {
 protected:
  Inspection() {
    application();
    app_ = testing::contextIn(home_.path());
    model_ = std::make_unique<FolderModel>(*app_);
  }

  // A photo from a camera (its model and serial number) taken at `when` ("2024:05:01 12:00:00").
  fs::path photo(const std::string& name, const std::string& model, const std::string& serial,
                 const std::string& when) {
    const fs::path path = photos_.file(name, testing::tinyJpeg(600, 400));
    std::map<std::string, std::string> values{{"Exif.Image.Model", model},
                                              {"Exif.Photo.DateTimeOriginal", when},
                                              {"Exif.Photo.ExposureTime", "1/250"},
                                              {"Exif.Photo.FNumber", "28/10"}};
    if (!serial.empty()) values["Exif.Photo.BodySerialNumber"] = serial;
    testing::writeMetadata(path, values);
    return path;
  }

  void open(RuleStack stack) {
    model_->setRules(std::move(stack));
    model_->open({photos_.path()});
    ASSERT_TRUE(waitFor([&] {
      return model_->previewBuildCount() == 0 && model_->preview() != nullptr &&
             !model_->files().empty() && !model_->files().front().metadata.empty() &&
             model_->previewSources().size() == model_->files().size();
    }));
  }

  const FolderFile& file(const std::string& name) const {
    for (const FolderFile& f : model_->files()) {
      if (f.name.fullName() == name) return f;
    }
    throw std::runtime_error("no file " + name);
  }

  TempFolder home_, photos_;
  std::unique_ptr<AppContext> app_;
  std::unique_ptr<FolderModel> model_;
};

TEST_F(Inspection, TraceFollowsEachChangeAndTwinsShowTheirPrimarysTrace) {
  photo("IMG_0001.JPG", "X-T5", "A-1", "2024:05:01 12:00:00");
  photos_.file("IMG_0001.xmp", "<x:xmpmeta xmlns:x='adobe:ns:meta/'/>");
  RuleStack stack;
  stack.rules.push_back(formatRule("{date:yyyyMMdd}_{name}"));
  stack.rules.push_back(operationRule(op::ChangeCase{CaseStyle::lower}));
  stack.rules.push_back(operationRule(op::Replace{Anchor{"zzz"}, "y"}));  // finds nothing
  open(stack);

  const FileInspection in = FileInspection::of(*model_, file("IMG_0001.JPG"));
  EXPECT_EQ(in.currentName, "IMG_0001.JPG");
  ASSERT_TRUE(in.newName.has_value());
  EXPECT_EQ(*in.newName, "20240501_img_0001.JPG");
  ASSERT_EQ(in.trace.size(), 4u);
  EXPECT_EQ(in.trace[0].name, "IMG_0001");
  EXPECT_EQ(in.trace[1].detail, "{date:yyyyMMdd}_{name}");
  EXPECT_EQ(in.trace[1].name, "20240501_IMG_0001");
  EXPECT_TRUE(in.trace[1].changed);
  EXPECT_EQ(in.trace[2].name, "20240501_img_0001");
  EXPECT_FALSE(in.trace[3].changed);
  EXPECT_NE(in.trace[1].title, in.trace[2].title);
  // Only "20240501_" is new and "IMG" became "img": the rest is the same.
  std::string added;
  for (const DiffPiece& p : in.diff.newPieces) {
    if (p.kind == DiffPiece::Kind::added) added += p.text;
  }
  EXPECT_EQ(added, "20240501_img");

  const FileInspection twin = FileInspection::of(*model_, file("IMG_0001.xmp"));
  EXPECT_EQ(twin.follows, QString("IMG_0001.JPG"));
  EXPECT_EQ(twin.newName, QString("20240501_img_0001.xmp"));
  ASSERT_EQ(twin.trace.size(), 4u);
  EXPECT_EQ(twin.trace[0].name, "IMG_0001") << "the primary's steps";
}

TEST(ReadableDiff, StraySameCharactersBetweenChangesCountAsChanged) {
  using K = DiffPiece::Kind;
  const auto kinds = [](std::string_view a, std::string_view b) {
    std::vector<std::pair<K, std::string>> out;
    for (const DiffPiece& p : readablePieces(NameDiff::compare(a, b).newPieces))
      out.emplace_back(p.kind, p.text);
    return out;
  };
  using Pieces = std::vector<std::pair<K, std::string>>;
  EXPECT_EQ(kinds("DSC01201.JPG", "2025-06-14_0003.JPG"),
            (Pieces{{K::added, "2025-06-14_0003"}, {K::same, ".JPG"}}));
  EXPECT_EQ(kinds("IMG_0001", "2024_IMG_0001"),
            (Pieces{{K::added, "2024_"}, {K::same, "IMG_0001"}}));
  EXPECT_EQ(kinds("a_b", "a_b_c"), (Pieces{{K::same, "a_b"}, {K::added, "_c"}}))
      << "a short piece at either end stays";
}

TEST_F(Inspection, ShootingDataReadsAsPhotographersWriteIt) {
  photo("a.jpg", "X-T5", "A-1", "2024:05:01 12:00:00");
  open({});
  std::map<QString, QString> fields;
  for (const FileInspection::Field& f : FileInspection::of(*model_, file("a.jpg")).fields) {
    fields[f.label] = f.value;
  }
  EXPECT_EQ(fields[displayLabel(MetadataKey::shutter)], "1/250 s");
  EXPECT_EQ(fields[displayLabel(MetadataKey::aperture)], "f/2.8");
  EXPECT_EQ(fields[displayLabel(MetadataKey::model)], "X-T5");
  EXPECT_EQ(fields[displayLabel(MetadataKey::date)], "2024-05-01 12:00:00");
  EXPECT_EQ(displayText(MetadataKey::duration, MetadataValue::number(3725)), "1:02:05");
  EXPECT_EQ(displayText(MetadataKey::shutter, MetadataValue::number(2)), "2 s");
}

TEST_F(Inspection, ClockSyncStoresTheOffsetAndCorrectsTheTimes) {
  photo("right.jpg", "X-T5", "A-1", "2024:05:01 12:00:00");
  photo("wrong.jpg", "Z6", "B-2", "2024:05:01 11:58:00");
  photo("same.jpg", "Z6", "B-2", "2024:05:01 11:58:30");
  photo("nobody.jpg", "", "", "2024:05:01 11:58:30");
  open({});
  const FolderFile& right = file("right.jpg");
  const FolderFile& wrong = file("wrong.jpg");
  EXPECT_EQ(ClockSync::stateOf(&right, nullptr), ClockSync::State::chooseTwo);
  EXPECT_EQ(ClockSync::stateOf(&wrong, &file("same.jpg")), ClockSync::State::sameBody);
  EXPECT_EQ(ClockSync::stateOf(&right, &file("nobody.jpg")), ClockSync::State::noBody);
  ASSERT_EQ(ClockSync::stateOf(&right, &wrong), ClockSync::State::ready);

  app_->bodies().setTag("B-2", "Z");
  const std::optional<ClockSync::Result> result = ClockSync::apply(*model_, right, wrong);
  ASSERT_TRUE(result.has_value());
  EXPECT_EQ(result->line, "Z clock: +0:02:00");
  EXPECT_EQ(result->offset, 120);
  EXPECT_EQ(app_->bodies().bodies().clockOffsets.at("B-2"), 120);
  // The model reads the times again: the wrong camera's photos now carry the corrected time.
  ASSERT_TRUE(waitFor([&] {
    const FolderFile& w = file("wrong.jpg");
    return w.captureDate && *w.captureDate == *file("right.jpg").captureDate;
  }));
  EXPECT_EQ(*ClockSync::apply(*model_, file("right.jpg"), file("wrong.jpg")), *result)
      << "recorded times are compared, not corrected ones: a second run changes nothing";
  EXPECT_EQ(ClockSync::apply(*model_, file("wrong.jpg"), file("same.jpg")), std::nullopt);
}

}  // namespace
}  // namespace tessane
