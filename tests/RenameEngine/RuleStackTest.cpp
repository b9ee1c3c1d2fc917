#include "RenameEngine/RuleStack.h"
#include "Subjects.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <memory>

#include "Rules.h"
#include "Subjects.h"

namespace tessane {
namespace {

using testing::formatRule;
using testing::operationRule;
using testing::utc;

using namespace std::chrono;

using testing::subject;

std::vector<std::string> namesOf(const std::vector<RuleResult>& results) {
  std::vector<std::string> out;
  for (const RuleResult& r : results)
    out.push_back(r.newName.fullName());
  return out;
}

const NamingContext& rome() {
  static const NamingContext context = *NamingContext::inZone("Europe/Rome", "unknown");
  return context;
}

TEST(Counter, TextIsPaddedDigitsThenSign) {
  EXPECT_EQ(Counter::text(1, 3), "001");
  EXPECT_EQ(Counter::text(999, 3), "999");
  EXPECT_EQ(Counter::text(1000, 3), "1000");
  EXPECT_EQ(Counter::text(-5, 3), "-005");
  EXPECT_EQ(Counter::text(7, 0), "7");
  EXPECT_EQ(Counter::text(7, -4), "7");
  EXPECT_EQ(Counter::text(7, 25), std::string(19, '0') + "7");
  EXPECT_EQ(Counter::text(INT64_MIN, 0), "-9223372036854775808");
}

TEST(Counter, NumbersPerGroupAndStopsAtThe64BitLimit) {
  std::unique_ptr<icu::TimeZone> gmt(icu::TimeZone::createTimeZone("GMT"));
  Counter c;
  c.start = 10;
  c.step = -5;
  CounterState down(c, *gmt);
  EXPECT_EQ(down.next(subject("a")), 10);
  EXPECT_EQ(down.next(subject("b")), 5);
  EXPECT_EQ(down.next(subject("c")), 0);
  EXPECT_EQ(down.next(subject("d")), -5);

  c.start = INT64_MAX - 1;
  c.step = 1;
  CounterState edge(c, *gmt);
  EXPECT_EQ(edge.next(subject("a")), INT64_MAX - 1);
  EXPECT_EQ(edge.next(subject("b")), INT64_MAX);
  EXPECT_EQ(edge.next(subject("c")), std::nullopt);
  EXPECT_EQ(edge.next(subject("d")), std::nullopt) << "past the limit stays past it";

  c.start = INT64_MIN;
  c.step = INT64_MIN;
  CounterState wide(c, *gmt);
  EXPECT_EQ(wide.next(subject("a")), INT64_MIN);
  EXPECT_EQ(wide.next(subject("b")), std::nullopt);

  c = Counter{};
  c.reset = CounterReset::perFolder;
  CounterState folders(c, *gmt);
  EXPECT_EQ(folders.next(subject("a", "/A")), 1);
  EXPECT_EQ(folders.next(subject("b", "/B")), 1);
  EXPECT_EQ(folders.next(subject("c", "/B")), 2);
  EXPECT_EQ(folders.next(subject("d", "/A")), 2);
}

TEST(Counter, PerDayFollowsTheTimeZoneAndKeepsUndatedFilesTogether) {
  Counter c;
  c.reset = CounterReset::perDay;
  const RenameSubject late = subject("a", "/a", utc(2024, 5, 1, 22, 30));  // 2 May in Rome
  const RenameSubject morning = subject("b", "/a", utc(2024, 5, 2, 8));
  EXPECT_EQ(c.groupKey(late, *rome().zone), "2024-05-02");
  EXPECT_EQ(c.groupKey(morning, *rome().zone), "2024-05-02");
  std::unique_ptr<icu::TimeZone> gmt(icu::TimeZone::createTimeZone("GMT"));
  EXPECT_EQ(c.groupKey(late, *gmt), "2024-05-01");
  EXPECT_EQ(c.groupKey(subject("x"), *gmt), "undated");
}

TEST(RuleStack, NoRulesOrOnlyDisabledRulesChangeNothing) {
  RuleStack stack;
  const std::vector<RenameSubject> files{subject("DSC_0001.ARW"), subject("b.jpg")};
  for (int round = 0; round < 2; ++round) {
    const auto results = applyRuleStack(stack, files, rome());
    EXPECT_EQ(namesOf(results), (std::vector<std::string>{"DSC_0001.ARW", "b.jpg"}));
    for (const RuleResult& r : results) {
      EXPECT_TRUE(r.changedBy.empty());
      EXPECT_TRUE(r.issues.empty());
    }
    Rule off = operationRule(op::ChangeCase{CaseStyle::upper});
    off.isEnabled = false;
    stack.rules.push_back(off);
  }
}

TEST(RuleStack, FormatWithPerDayCounterThenChanges) {
  RuleStack stack;
  Counter daily;
  daily.padding = 3;
  daily.reset = CounterReset::perDay;
  stack.rules.push_back(formatRule("{date:yyyy-MM-dd}_{body}_{counter}", daily));
  stack.rules.push_back(operationRule(op::Replace{Anchor{"_", true, Occurrence::all}, "-"}));
  stack.rules.push_back(operationRule(op::ChangeExtensionCase{CaseStyle::lower},
                                      {RuleCondition{RuleCondition::Kind{{FileKind::raw}}}}));

  std::vector<RenameSubject> files{subject("DSC_0001.ARW", "/a", utc(2024, 5, 1, 10)),
                                   subject("DSC_0002.ARW", "/a", utc(2024, 5, 1, 22, 30)),
                                   subject("DSC_0003.JPG", "/a", utc(2024, 5, 2, 9)),
                                   subject("scan.JPG")};
  files[0].bodyTag = "A";
  files[1].bodyTag = "A";
  files[2].bodyTag = "B";
  const auto results = applyRuleStack(stack, files, rome());
  EXPECT_EQ(namesOf(results),
            (std::vector<std::string>{"2024-05-01-A-001.arw", "2024-05-02-A-001.arw",
                                      "2024-05-02-B-002.JPG", "unknown-unknown-001.JPG"}));
  // The trace: three rules ran on the RAW files, two on the JPEGs.
  EXPECT_EQ(results[0].changedBy.size(), 3u);
  EXPECT_EQ(results[2].changedBy.size(), 2u);
  EXPECT_EQ(results[0].changedBy[0].name, "2024-05-01_A_001");
  EXPECT_FALSE(results[0].changedBy[2].changed) << "only the extension changed";
  EXPECT_EQ(results[0].changedExtensionBy, std::vector<Uuid>{stack.rules[2].id});
  ASSERT_EQ(results[3].issues.size(), 2u);
  EXPECT_EQ(results[3].issues[0].issue, OperationIssue::missingVariable("date"));
  EXPECT_EQ(results[3].issues[0].ruleID, stack.rules[0].id);

  // The same subjects in the same order always give the same names.
  EXPECT_EQ(namesOf(applyRuleStack(stack, files, rome())), namesOf(results));
}

TEST(RuleStack, ConditionsSelectFiles) {
  auto upperWhen = [](RuleCondition condition) {
    RuleStack stack;
    stack.rules.push_back(operationRule(op::ChangeCase{CaseStyle::upper}, {condition}));
    return stack;
  };
  std::vector<RenameSubject> files{subject("x.arw"), subject("x.ARW"), subject("x.arw.xmp"),
                                   subject("y.jpg")};
  files[0].cameraModel = "ILCE-7RM5";
  files[1].bodyTag = "Sony A";
  EXPECT_EQ(
      namesOf(applyRuleStack(upperWhen({RuleCondition::FileExtension{{".ARW"}}}), files, rome())),
      (std::vector<std::string>{"X.arw", "X.ARW", "x.arw.xmp", "y.jpg"}));
  EXPECT_EQ(
      namesOf(applyRuleStack(upperWhen({RuleCondition::Kind{{FileKind::sidecar, FileKind::image}}}),
                             files, rome())),
      (std::vector<std::string>{"x.arw", "x.ARW", "X.arw.xmp", "Y.jpg"}));
  EXPECT_EQ(
      namesOf(applyRuleStack(upperWhen({RuleCondition::CameraModel{"ilce-7rm5"}}), files, rome())),
      (std::vector<std::string>{"X.arw", "x.ARW", "x.arw.xmp", "y.jpg"}));
  EXPECT_EQ(namesOf(applyRuleStack(upperWhen({RuleCondition::BodyTag{"SONY A"}}), files, rome())),
            (std::vector<std::string>{"x.arw", "X.ARW", "x.arw.xmp", "y.jpg"}));
  EXPECT_EQ(namesOf(applyRuleStack(
                upperWhen({RuleCondition::NameContains{Anchor{"XMP", false, Occurrence::last}}}),
                files, rome())),
            (std::vector<std::string>{"x.arw", "x.ARW", "X.arw.xmp", "y.jpg"}));
  EXPECT_EQ(namesOf(applyRuleStack(
                upperWhen({RuleCondition::NameContains{Anchor{"", false, Occurrence::all}}}), files,
                rome())),
            (std::vector<std::string>{"x.arw", "x.ARW", "x.arw.xmp", "y.jpg"}));
  // A rule whose condition does not hold leaves no step.
  EXPECT_TRUE(applyRuleStack(upperWhen({RuleCondition::BodyTag{"none"}}), files[0], rome())
                  .changedBy.empty());
}

TEST(RuleStack, LocksHoldOnlyForTheRulesAfterThem) {
  RuleStack stack;
  stack.rules.push_back(operationRule(op::Replace{Anchor{"a", true, Occurrence::all}, "A"}));
  Rule lock;
  lock.action = {RuleAction::Protect{BlockRef::index(0)}};
  stack.rules.push_back(lock);
  stack.rules.push_back(operationRule(op::ChangeCase{CaseStyle::upper}));
  const RuleResult r = applyRuleStack(stack, subject("abc_def.jpg"), rome());
  EXPECT_EQ(r.newName.fullName(), "Abc_DEF.jpg");
  ASSERT_EQ(r.issues.size(), 1u);
  EXPECT_EQ(r.issues[0], (RuleIssue{stack.rules[2].id, OperationIssue::protectedBlock()}));
}

TEST(RuleStack, CounterRulesInsertTheirNumberAndCountOnlyTheirFiles) {
  RuleStack stack;
  Rule numbering;
  Counter c;
  c.padding = 2;
  c.position = InsertPosition::start();
  c.reset = CounterReset::perFolder;
  numbering.action = {RuleAction::Numbering{c}};
  numbering.conditions = {RuleCondition{RuleCondition::Kind{{FileKind::raw}}}};
  stack.rules.push_back(numbering);
  const std::vector<RenameSubject> files{subject("a.ARW", "/A"), subject("b.JPG", "/A"),
                                         subject("c.ARW", "/B"), subject("d.ARW", "/A")};
  EXPECT_EQ(namesOf(applyRuleStack(stack, files, rome())),
            (std::vector<std::string>{"01a.ARW", "b.JPG", "01c.ARW", "02d.ARW"}));

  stack.rules[0].action = {
      RuleAction::Numbering{Counter{INT64_MAX, 1, 0, CounterReset::never, InsertPosition::end()}}};
  const auto overflow = applyRuleStack(stack, files, rome());
  EXPECT_EQ(namesOf(overflow),
            (std::vector<std::string>{"a9223372036854775807.ARW", "b.JPG", "c.ARW", "d.ARW"}));
  EXPECT_EQ(overflow[2].issues[0].issue, OperationIssue::counterOverflow());
}

TEST(RuleStack, TemplateIssuesTravelWithTheName) {
  RuleStack stack;
  stack.rules.push_back(formatRule("{nope}_{frame:x}_{lens}_{date"));
  const RuleResult r = applyRuleStack(stack, subject("IMG_0042.JPG"), rome());
  EXPECT_EQ(r.newName.fullName(), "0042_unknown_{date.JPG") << "an unknown name takes its _";
  std::vector<OperationIssue> issues;
  for (const RuleIssue& i : r.issues)
    issues.push_back(i.issue);
  EXPECT_EQ(issues,
            (std::vector<OperationIssue>{
                OperationIssue::unknownVariable("nope"), OperationIssue::invalidFormat("frame"),
                OperationIssue::missingVariable("lens"), OperationIssue::invalidTemplate()}));
}

// A value a file lacks, with nothing put in its place, takes one separator with it; values lose
// the characters a name can't hold; the name never begins or ends with white space.
TEST(RuleStack, VanishedPiecesTakeTheirSeparatorAndValuesFitInAName) {
  const NamingContext nothing = *NamingContext::inZone("Europe/Rome");
  Counter three;
  three.padding = 3;
  auto named = [&](std::string templateText, const RenameSubject& file) {
    RuleStack stack;
    stack.rules.push_back(formatRule(std::move(templateText), three));
    return applyRuleStack(stack, file, nothing).newName.fullName();
  };
  RenameSubject untagged = subject("IMG_0001.MP4", "/a", utc(2025, 6, 14, 10));
  EXPECT_EQ(named("{date}_{body}_{counter}", untagged), "2025-06-14_001.MP4");
  EXPECT_EQ(named("{body}_{date}_{counter}", untagged), "2025-06-14_001.MP4");
  EXPECT_EQ(named("{date}_{counter}_{body}", untagged), "2025-06-14_001.MP4");
  EXPECT_EQ(named("{date} - {body} - {lens} - {counter}", untagged), "2025-06-14 - 001.MP4");
  EXPECT_EQ(named("IMG_{body}_x", untagged), "IMG_x.MP4");
  EXPECT_EQ(named("{body}{counter}", untagged), "001.MP4");
  EXPECT_EQ(named("a__{counter}", untagged), "a__001.MP4") << "the user's own text stays";
  RenameSubject undated = subject("IMG_0020.CR3");
  EXPECT_EQ(named("{date} {body} {counter}", undated), "001.CR3");
  EXPECT_EQ(named("{date} {body} {frame}{lens} ", undated), "0020.CR3");
  EXPECT_EQ(named("  {counter}", undated), "001.CR3");
  RenameSubject missingEverything = subject("x.cr2");
  EXPECT_EQ(named("{date}_{body}", missingEverything), ".cr2")
      << "nothing left: the name check says it is empty";

  // "/" and ":" in a value become "-", with no issue; a control character goes.
  RenameSubject nikon = subject("DSC_0001.NEF", "/a", utc(2025, 6, 14, 10, 5));
  nikon.metadata.set(MetadataKey::lens, MetadataValue::text("AF Nikkor 50mm f/1.8D"));
  nikon.metadata.set(MetadataKey::model, MetadataValue::text("D70s\t:x"));
  RuleStack stack;
  stack.rules.push_back(formatRule("{lens}_{model}_{date:HH:mm}"));
  const RuleResult r = applyRuleStack(stack, nikon, nothing);
  EXPECT_EQ(r.newName.fullName(), "AF Nikkor 50mm f-1.8D_D70s-x_12-05.NEF");
  EXPECT_TRUE(r.issues.empty());
}

// A file that says its UTC offset is named in its own local time; the naming zone serves the
// files that don't say. A phone's video (11:25:40+03:00) and its photo (11:25:40 in a camera
// without an offset, named in Istanbul) get the same time, and the same day for the counter.
TEST(RuleStack, DatesAreTheShotsOwnClockWhereTheFileSaysIt) {
  const NamingContext rome = *NamingContext::inZone("Europe/Rome");
  Counter daily;
  daily.reset = CounterReset::perDay;
  RuleStack stack;
  stack.rules.push_back(formatRule("{date:yyyy-MM-dd_HH-mm-ss}_{counter}", daily));
  RenameSubject video = subject("IMG_0002.MOV", "/a", utc(2025, 6, 14, 8, 25));
  video.metadata.setShotOffset(3 * 3600);
  RenameSubject photo = subject("IMG_0001.JPG", "/a", utc(2025, 6, 14, 9, 25));  // 11:25 Rome
  RenameSubject lateVideo = subject("IMG_0003.MOV", "/a", utc(2025, 6, 14, 22, 30));
  lateVideo.metadata.setShotOffset(3 * 3600);  // 01:30 on the 15th, where it was shot
  RenameSubject nextDay = subject("IMG_0004.JPG", "/a", utc(2025, 6, 15, 7, 0));
  EXPECT_EQ(
      namesOf(applyRuleStack(stack, {video, photo, lateVideo, nextDay}, rome)),
      (std::vector<std::string>{"2025-06-14_11-25-00_0001.MOV", "2025-06-14_11-25-00_0002.JPG",
                                "2025-06-15_01-30-00_0001.MOV", "2025-06-15_09-00-00_0002.JPG"}));
}

TEST(RuleStackJson, HandWrittenStackDecodesAndEveryStackRoundTrips) {
  const Json written = Json::parse(R"({
    "rules" : [
      {
        "action" : { "operation" : { "_0" : { "changeCase" : { "_0" : "lower" } } } },
        "conditions" : [ { "fileExtension" : { "_0" : [ "arw" ] } } ],
        "id" : "0F9B6C2E-5B7A-4C1D-9E3F-2A8B7C6D5E4F",
        "isEnabled" : true
      },
      { "action" : { "format" : { "_0" : { "template" : "{date}_{counter}" } } } }
    ],
    "separators" : [ "_", "-", " ", "." ]
  })");
  const Decoded<RuleStack> decoded = decodeRuleStack(written);
  ASSERT_TRUE(decoded.ok()) << decoded.error;
  const RuleStack& stack = *decoded.value;
  ASSERT_EQ(stack.rules.size(), 2u);
  EXPECT_EQ(stack.rules[0].id.string(), "0F9B6C2E-5B7A-4C1D-9E3F-2A8B7C6D5E4F");
  EXPECT_TRUE(stack.rules[1].isEnabled);
  EXPECT_EQ(std::get<RuleAction::Format>(stack.rules[1].action.value).format.counter, Counter{});

  RuleStack full = stack;
  Rule lock;
  lock.action = {RuleAction::Protect{BlockRef::text("Rome")}};
  lock.isEnabled = false;
  lock.conditions = {
      RuleCondition{RuleCondition::Kind{{FileKind::raw, FileKind::video}}},
      RuleCondition{RuleCondition::CameraModel{"X-T5"}}, RuleCondition{RuleCondition::BodyTag{"B"}},
      RuleCondition{RuleCondition::NameContains{Anchor{"x", false, Occurrence::all}}}};
  full.rules.push_back(lock);
  Rule numbering;
  numbering.action = {RuleAction::Numbering{
      Counter{5, -1, 4, CounterReset::perDay, InsertPosition::afterBlock(BlockRef::index(0))}}};
  full.rules.push_back(numbering);
  full.separators = {"--", "/"};
  const Decoded<RuleStack> again = decodeRuleStack(Json::parse(toJson(full).dump()));
  ASSERT_TRUE(again.ok()) << again.error;
  EXPECT_EQ(*again.value, full);

  EXPECT_FALSE(decodeRuleStack(Json::parse(R"({"rules":[{"action":{}}]})")).ok());
  EXPECT_FALSE(
      decodeRuleStack(
          Json::parse(
              R"({"rules":[{"action":{"protect":{"_0":{"index":{"_0":0}}}},"id":"nope"}]})"))
          .ok());
  EXPECT_FALSE(
      decodeRuleStack(
          Json::parse(
              R"({"rules":[{"action":{"protect":{"_0":{"index":{"_0":0}}}},"conditions":[{"kind":{"_0":["photo"]}}]}]})"))
          .ok());
  EXPECT_FALSE(decodeRuleStack(Json::parse(R"({"separators":[]})")).ok());
}

}  // namespace
}  // namespace tessane
