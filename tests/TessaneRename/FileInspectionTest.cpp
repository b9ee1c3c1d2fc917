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
  const fs::path phone = photos_.file("phone.jpg", testing::tinyJpeg(60, 40));
  testing::writeMetadata(phone, {{"Exif.Photo.DateTimeOriginal", "2025:06:14 11:25:40"},
                                 {"Exif.Photo.OffsetTimeOriginal", "+03:00"}});
  open({});
  std::map<QString, QString> fields;
  for (const FileInspection::Field& f : FileInspection::of(*model_, file("a.jpg")).fields) {
    fields[f.label] = f.value;
  }
  EXPECT_EQ(fields[displayLabel(MetadataKey::shutter)], "1/250 s");
  EXPECT_EQ(fields[displayLabel(MetadataKey::aperture)], "f/2.8");
  EXPECT_EQ(fields[displayLabel(MetadataKey::model)], "X-T5");
  EXPECT_EQ(fields[displayLabel(MetadataKey::date)], "2024-05-01 12:00:00");

  // A time that says its offset shows on its own clock, in the panel and in the list alike.
  fields.clear();
  for (const FileInspection::Field& f : FileInspection::of(*model_, file("phone.jpg")).fields)
    fields[f.label] = f.value;
  EXPECT_EQ(fields[displayLabel(MetadataKey::date)], "2025-06-14 11:25:40");
  EXPECT_TRUE(shotTimeText(*file("phone.jpg").captureDate, 3 * 3600).contains("25:40"))
      << "with its seconds";
  EXPECT_EQ(displayText(MetadataKey::duration, MetadataValue::number(3725)), "1:02:05");
  EXPECT_EQ(displayText(MetadataKey::shutter, MetadataValue::number(2)), "2 s");
}

// A twin takes its primary's name but shows its own camera and time; a RAW that can't be read
// takes its capture time from a twin, so the shot keeps its place in the order.
TEST_F(Inspection, TwinsShowTheirOwnDataAndLendADateToAnUnreadableRaw) {
  photo("IMG_1.DNG", "X-T5", "A-1", "2024:05:01 10:00:00");  // a JPEG inside: read all the same
  photo("IMG_1.JPG", "iPhone 15 Pro", "", "2024:05:01 10:00:05");
  photos_.file("IMG_2.CR3", "a body newer than the reader");
  photo("IMG_2.JPG", "X-T5", "A-1", "2024:05:01 11:00:00");
  photo("a.jpg", "X-T5", "A-1", "2024:05:01 12:00:00");
  RuleStack stack;
  stack.rules.push_back(formatRule("{date:HH-mm}_{counter:1}"));
  open(stack);
  const FileInspection twin = FileInspection::of(*model_, file("IMG_1.JPG"));
  EXPECT_EQ(twin.follows, QString("IMG_1.DNG"));
  std::map<QString, QString> fields;
  for (const FileInspection::Field& f : twin.fields)
    fields[f.label] = f.value;
  EXPECT_EQ(fields[displayLabel(MetadataKey::model)], "iPhone 15 Pro");
  EXPECT_EQ(fields[displayLabel(MetadataKey::date)], "2024-05-01 10:00:05");
  EXPECT_EQ(*twin.newName, "10-00_1.JPG") << "the primary's name all the same";

  ASSERT_TRUE(waitFor([&] {
    const PlannedRename* row = model_->previewRow(file("a.jpg").url);
    return row != nullptr && row->newName.fullName() == "12-00_3.jpg";
  })) << "the unreadable RAW's shot comes second, at 11:00";
  EXPECT_EQ(model_->previewRow(file("IMG_2.CR3").url)->newName.fullName(), "11-00_2.CR3");
}

// A file whose name is not UTF-8 is left alone, says why, and still shows its data.
TEST_F(Inspection, ANameThatIsNotTextIsLeftAloneWithItsDataShown) {
  photo("caf\xE9.jpg", "X-T5", "A-1", "2024:05:01 10:00:00");
  photo("b.jpg", "X-T5", "A-1", "2024:05:01 11:00:00");
  open({});
  const FolderFile* notText = nullptr;
  for (const FolderFile& f : model_->files())
    if (!f.nameIsText) notText = &f;
  ASSERT_NE(notText, nullptr);
  ASSERT_TRUE(waitFor([&] {
    for (const FolderFile& f : model_->files())
      if (!f.nameIsText && !f.metadata.empty()) return true;
    return false;
  }));
  for (const FolderFile& f : model_->files())
    if (!f.nameIsText) notText = &f;
  const FileInspection in = FileInspection::of(*model_, *notText);
  EXPECT_TRUE(in.leftAlone);
  EXPECT_FALSE(in.newName.has_value());
  ASSERT_EQ(in.warnings.size(), 1);
  EXPECT_TRUE(in.warnings.front().contains("UTF-8"));
  bool model = false;
  for (const FileInspection::Field& f : in.fields)
    model = model || (f.label == displayLabel(MetadataKey::model) && f.value == "X-T5");
  EXPECT_TRUE(model) << "its shooting data, read like any other file's";
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
