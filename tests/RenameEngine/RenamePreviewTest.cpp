#include "RenameEngine/RenamePreview.h"

#include <gtest/gtest.h>

#include "Rules.h"
#include "Subjects.h"

namespace tessane {
namespace {

using testing::formatRule;
using testing::operationRule;

using namespace std::chrono;

using testing::subject;

Date at(int second) {
  return Date(sys_days(year_month_day(year(2026), month(10), day(23))) + hours(9) +
              seconds(second));
}

PreviewRequest request(std::vector<RenameSubject> files, std::string templateText) {
  PreviewRequest q;
  q.subjects = std::move(files);
  q.stack.rules.push_back(formatRule(std::move(templateText)));
  q.twins = TwinOptions::forKinds(true, true, true);
  q.naming = *NamingContext::inZone("Europe/Rome");
  for (const RenameSubject& s : q.subjects) {
    FolderContents& folder = q.folders[s.folder.native()];
    folder.names.push_back(s.name);
    folder.files.push_back(s.name);
  }
  return q;
}

std::vector<std::string> newNames(const RenamePreview& p) {
  std::vector<std::string> out;
  for (const PlannedRename& r : p.items)
    out.push_back(r.newName.fullName());
  return out;
}

std::vector<PreviewStatus> statuses(const RenamePreview& p) {
  std::vector<PreviewStatus> out;
  for (const PlannedRename& r : p.items)
    out.push_back(r.status);
  return out;
}

TEST(Twins, GroupsShareTheRawsNewBase) {
  PreviewRequest q =
      request({subject("_QM19581.JPG", "/card", at(0)), subject("_QM19581.ARW", "/card", at(0)),
               subject("_QM19581.xmp", "/card", at(0)), subject("_QM19581.pdf", "/card", at(0)),
               subject("_QM19582.ARW", "/card", at(1))},
              "{date:yyyy-MM-dd}_{counter}");
  q.order = BatchOrder::asGiven;
  const RenamePreview p = buildPreview(q);
  EXPECT_EQ(newNames(p), (std::vector<std::string>{"2026-10-23_0001.JPG", "2026-10-23_0001.ARW",
                                                   "2026-10-23_0001.xmp", "2026-10-23_0002.pdf",
                                                   "2026-10-23_0003.ARW"}));
  EXPECT_EQ(p.items[0].primaryIndex, 1u);  // the RAW is the primary
  EXPECT_EQ(p.items[2].primaryIndex, 1u);
  EXPECT_EQ(p.items[3].primaryIndex, 3u);  // a PDF is never a twin
  EXPECT_FALSE(p.items[1].steps.empty());

  q.twins.isEnabled = false;
  EXPECT_EQ(
      newNames(buildPreview(q)),
      (std::vector<std::string>{"2026-10-23_0001.JPG", "2026-10-23_0002.ARW", "2026-10-23_0003.xmp",
                                "2026-10-23_0004.pdf", "2026-10-23_0005.ARW"}));
}

// Extension changes reach each twin as their scope says, and a sidecar named after its RAW with the
// RAW's extension keeps matching it; the twins still share the RAW's base.
TEST(Twins, ExtensionChangesReachTwinsByTheirOwnScope) {
  const std::vector<RenameSubject> shot{
      subject("IMG_1.CR2", "/card", at(0)), subject("IMG_1.JPG", "/card", at(0)),
      subject("IMG_1.CR2.xmp", "/card", at(0)), subject("IMG_1.xmp", "/card", at(0))};
  const RuleCondition jpeg{RuleCondition::FileExtension{{"jpg", "jpeg"}}};
  const RuleCondition raw{RuleCondition::Kind{{FileKind::raw}}};
  const auto namesWith = [&](std::vector<Rule> rules) {
    PreviewRequest q = request(shot, "n_{counter}");
    q.order = BatchOrder::asGiven;
    for (Rule& r : rules)
      q.stack.rules.push_back(std::move(r));
    return newNames(buildPreview(q));
  };
  using Names = std::vector<std::string>;

  EXPECT_EQ(namesWith({operationRule(op::ChangeExtensionCase{CaseStyle::lower})}),
            (Names{"n_0001.cr2", "n_0001.jpg", "n_0001.cr2.xmp", "n_0001.xmp"}));
  EXPECT_EQ(namesWith({operationRule(op::ChangeExtensionCase{CaseStyle::lower}, {jpeg})}),
            (Names{"n_0001.CR2", "n_0001.jpg", "n_0001.CR2.xmp", "n_0001.xmp"}));
  EXPECT_EQ(namesWith({operationRule(op::SetExtension{"dng"}, {raw})}),
            (Names{"n_0001.dng", "n_0001.JPG", "n_0001.dng.xmp", "n_0001.xmp"}));
  EXPECT_EQ(namesWith({operationRule(op::SetExtension{""}, {raw}),
                       operationRule(op::ChangeExtensionCase{CaseStyle::upper})}),
            (Names{"n_0001", "n_0001.JPG", "n_0001.XMP", "n_0001.XMP"}))
      << "a RAW left without an extension takes its sidecar's named part with it";
  // A base change scoped to JPEG does not split the shot: the JPEG follows the RAW's base.
  Rule suffix = operationRule(op::Insert{"_j", InsertPosition::end()}, {jpeg});
  EXPECT_EQ(namesWith({suffix}),
            (Names{"n_0001.CR2", "n_0001.JPG", "n_0001.CR2.xmp", "n_0001.xmp"}));
}

TEST(Twins, PrimaryByKindThenNameAndOnlyWithinOneFolder) {
  const std::vector<RenameSubject> files{subject("IMG_1.JPEG"), subject("IMG_1.JPG"),
                                         subject("img_1.cr2.xmp"), subject("IMG_1.JPG", "/other")};
  const TwinOptions options = TwinOptions::forKinds(true, false, true);
  const auto groups = groupTwins(files, {0, 1, 2, 3}, options);
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(groups[0].members, (std::vector<std::size_t>{0, 1, 2}));
  EXPECT_EQ(groups[0].primary, 0u);  // IMG_1.JPEG sorts before IMG_1.JPG
  EXPECT_EQ(groups[1].members, std::vector<std::size_t>{3});
  EXPECT_FALSE(twinKey("clip.MP4", "/card", options).has_value()) << "video not chosen";
  EXPECT_FALSE(twinKey("README", "/card", options).has_value());
}

TEST(RenamePreview, ClashesInTheBatchMarkErrorOrTakeASuffix) {
  PreviewRequest q = request({subject("a.JPG", "/card", at(0)), subject("b.JPG", "/card", at(0)),
                              subject("c.JPG", "/card", at(0))},
                             "{date:yyyy-MM-dd}_0001");
  const RenamePreview marked = buildPreview(q);
  EXPECT_EQ(statuses(marked), std::vector<PreviewStatus>(3, PreviewStatus::error));
  EXPECT_EQ(marked.items[1].errors, std::vector<NameError>{NameError::duplicateInBatch()});
  EXPECT_TRUE(marked.changedFiles.empty());
  EXPECT_TRUE(marked.hasErrors());

  q.duplicates = DuplicatePolicy::addSuffix;
  const RenamePreview suffixed = buildPreview(q);
  EXPECT_EQ(newNames(suffixed),
            (std::vector<std::string>{"2026-10-23_0001.JPG", "2026-10-23_0001-2.JPG",
                                      "2026-10-23_0001-3.JPG"}));
  EXPECT_EQ(statuses(suffixed), std::vector<PreviewStatus>(3, PreviewStatus::ok));
  EXPECT_EQ(suffixed.changedFiles, (std::vector<std::size_t>{0, 1, 2}));
}

TEST(RenamePreview, ATwinGroupWhoseJpegAloneClashesTakesOneSuffix) {
  PreviewRequest q =
      request({subject("_QM1.ARW", "/card", at(0)), subject("_QM1.JPG", "/card", at(0))}, "Rome");
  q.folders["/card"].names.push_back("Rome.jpg");  // an outside file, other case
  q.duplicates = DuplicatePolicy::addSuffix;
  EXPECT_EQ(newNames(buildPreview(q)), (std::vector<std::string>{"Rome-2.ARW", "Rome-2.JPG"}));
  q.duplicates = DuplicatePolicy::markError;
  const RenamePreview marked = buildPreview(q);
  EXPECT_EQ(marked.items[0].status, PreviewStatus::ok);
  EXPECT_EQ(marked.items[1].errors, std::vector<NameError>{NameError::existingFile("Rome.JPG")});
}

TEST(RenamePreview, SwapsCaseChangesAndCompositionAgainstTheFolder) {
  // Two files trading names: neither counts against the other, both change.
  PreviewRequest swap = request({subject("a.jpg"), subject("b.jpg")}, "{name}");
  swap.order = BatchOrder::asGiven;
  swap.stack.rules = {operationRule(op::ReplaceRegex{"^(a|b)$", "x$1", Occurrence::all, true}),
                      operationRule(op::ReplaceRegex{"^xa$", "b", Occurrence::all, true}),
                      operationRule(op::ReplaceRegex{"^xb$", "a", Occurrence::all, true})};
  const RenamePreview swapped = buildPreview(swap);
  EXPECT_EQ(newNames(swapped), (std::vector<std::string>{"b.jpg", "a.jpg"}));
  EXPECT_EQ(statuses(swapped), (std::vector<PreviewStatus>{PreviewStatus::ok, PreviewStatus::ok}));

  // A case change alone is a change; a name that differs from an outside file only by case or
  // by composition clashes with it.
  PreviewRequest q = request({subject("img_0001.jpg"), subject("x.jpg")}, "{name}");
  q.order = BatchOrder::asGiven;
  Rule upper = operationRule(
      op::ChangeCase{CaseStyle::upper},
      {RuleCondition{RuleCondition::NameContains{Anchor{"img", true, Occurrence::first}}}});
  Rule accent;
  accent.action = {RuleAction::Operation{
      RenameOperation{op::ReplaceBlock{BlockRef::text("x"), "\xC3\xA9t\xC3\xA9"}}}};
  q.stack.rules = {upper, accent};
  q.folders["/card"].names.push_back("E\xCC\x81TE\xCC\x81.JPG");
  const RenamePreview p = buildPreview(q);
  EXPECT_EQ(p.items[0].newName.fullName(), "IMG_0001.jpg");
  EXPECT_EQ(p.items[0].status, PreviewStatus::ok);
  EXPECT_EQ(p.items[1].status, PreviewStatus::error);
  EXPECT_EQ(p.items[1].errors[0].kind(), NameError::Case::existingFile);
}

// A stack of one rule that replaces the block `from` of each name by `to`.
RuleStack replacing(std::string from, std::string to) {
  Rule r;
  r.action = {RuleAction::Operation{
      RenameOperation{op::ReplaceBlock{BlockRef::text(std::move(from)), std::move(to)}}}};
  RuleStack stack;
  stack.rules = {r};
  return stack;
}

TEST(RenamePreview, AnEntryOnlySharingABatchFilesKeyIsAnotherFile) {
  // A case-sensitive disk holds "P.jpg" and "p.jpg"; only "P.jpg" is in the batch.
  PreviewRequest q = request({subject("P.jpg"), subject("x.jpg")}, "{name}");
  q.order = BatchOrder::asGiven;
  q.stack = replacing("x", "p");
  q.stack.rules.push_back(replacing("P", "q").rules[0]);
  q.folders["/card"].names.push_back("p.jpg");
  const RenamePreview p = buildPreview(q);
  EXPECT_EQ(p.items[0].status, PreviewStatus::ok);
  EXPECT_EQ(p.items[1].errors, std::vector<NameError>{NameError::existingFile("p.jpg")});
}

TEST(RenamePreview, ARowThatKeepsItsNameClashesWithNothingAndKeepsIt) {
  // Names that already differ only in case, left as they are, can be in one batch.
  PreviewRequest q = request({subject("IMG.jpg"), subject("img.jpg"), subject("c.jpg")}, "{name}");
  q.order = BatchOrder::asGiven;
  q.stack = replacing("c", "Img");
  const RenamePreview p = buildPreview(q);
  EXPECT_EQ(statuses(p),
            (std::vector<PreviewStatus>{PreviewStatus::unchanged, PreviewStatus::unchanged,
                                        PreviewStatus::error}));
  EXPECT_EQ(p.items[2].errors, std::vector<NameError>{NameError::duplicateInBatch()});

  // Under addSuffix the file that changes takes the number, wherever it comes in the batch.
  PreviewRequest s = request({subject("b.txt"), subject("a.txt")}, "{name}");
  s.order = BatchOrder::asGiven;
  s.duplicates = DuplicatePolicy::addSuffix;
  s.stack = replacing("b", "a");
  const RenamePreview suffixed = buildPreview(s);
  EXPECT_EQ(newNames(suffixed), (std::vector<std::string>{"a-2.txt", "a.txt"}));
  EXPECT_EQ(suffixed.changedFiles, std::vector<std::size_t>{0});
}

TEST(RenamePreview, FolderNotListedAndTwinsOutsideTheBatch) {
  PreviewRequest q =
      request({subject("_QM19581.JPG", "/card", at(0))}, "{date:yyyy-MM-dd}_{counter}");
  q.folders["/card"].files = {"_QM19581.ARW", "_QM19581.JPG", "_QM19581.XMP", "notes.txt"};
  q.folders["/card"].names = q.folders["/card"].files;
  const RenamePreview p = buildPreview(q);
  ASSERT_EQ(p.items[0].warnings.size(), 1u);
  EXPECT_EQ(p.items[0].warnings[0].kind, PreviewWarning::Kind::incompleteTwins);
  EXPECT_EQ(p.items[0].warnings[0].twins,
            (std::vector<std::string>{"_QM19581.ARW", "_QM19581.XMP"}));
  EXPECT_EQ(p.items[0].status, PreviewStatus::warning);
  EXPECT_EQ(p.changedFiles, std::vector<std::size_t>{0});

  q.folders["/card"].listed = false;
  q.folders["/card"].names = {"2026-10-23_0001.JPG"};
  const RenamePreview unlisted = buildPreview(q);
  EXPECT_TRUE(unlisted.items[0].errors.empty()) << "no folder check without a listing";
  EXPECT_EQ(unlisted.items[0].warnings.back().kind, PreviewWarning::Kind::folderNotListed);
}

TEST(RenamePreview, NameChecksRuleWarningsAndUnchangedRows) {
  PreviewRequest q = request({subject("keep.jpg"), subject("b.jpg"), subject("c.jpg")}, "{name}");
  q.order = BatchOrder::name;
  Rule colon = operationRule(
      op::Insert{"a:", InsertPosition::start()},
      {RuleCondition{RuleCondition::NameContains{Anchor{"b", true, Occurrence::first}}}});
  Rule lens = formatRule("{name}{lens}");
  lens.conditions = {
      RuleCondition{RuleCondition::NameContains{Anchor{"c", true, Occurrence::first}}}};
  q.stack.rules = {colon, lens};
  const RenamePreview p = buildPreview(q);
  EXPECT_EQ(newNames(p), (std::vector<std::string>{"a:b.jpg", "c.jpg", "keep.jpg"}));
  EXPECT_EQ(p.items[0].errors, std::vector<NameError>{NameError::invalidCharacters()});
  EXPECT_EQ(p.items[1].status, PreviewStatus::warning) << "a missing value warns even unchanged";
  EXPECT_EQ(p.items[1].warnings[0].issue->issue, OperationIssue::missingVariable("lens"));
  EXPECT_EQ(p.items[2].status, PreviewStatus::unchanged);
  EXPECT_TRUE(p.changedFiles.empty());
}

TEST(RenamePreview, CaptureTimeOrderNumbersUndatedFilesLast) {
  PreviewRequest q = request({subject("z.jpg"), subject("b.jpg", "/card", at(5)),
                              subject("a.jpg", "/card", at(5)), subject("c.jpg", "/card", at(1))},
                             "{counter}");
  const RenamePreview p = buildPreview(q);
  EXPECT_EQ(newNames(p),
            (std::vector<std::string>{"0001.jpg", "0002.jpg", "0003.jpg", "0004.jpg"}));
  std::vector<std::size_t> order;
  for (const PlannedRename& r : p.items)
    order.push_back(r.subjectIndex);
  EXPECT_EQ(order, (std::vector<std::size_t>{3, 2, 1, 0}));
}

}  // namespace
}  // namespace tessane

namespace tessane {
namespace {

// One batch prepared once serves every edit of the rules: each build over it equals a whole
// build of the same request, and the batch itself is left as it was.
TEST(PreparedBatch, EveryEditOfTheRulesGivesTheWholeBuildsPreview) {
  std::vector<RenameSubject> files;
  for (int i = 0; i < 40; ++i) {
    const std::string base = "DSC_" + std::to_string(1000 + i / 2);
    files.push_back(
        subject(base + (i % 2 ? ".ARW" : ".JPG"), i < 20 ? "/card/a" : "/card/b", at(i / 4)));
  }
  PreviewRequest q = request(files, "{date:yyyy-MM-dd_HHmmss}");
  q.folders["/card/a"].names.push_back("2026-10-23_090000.JPG");  // taken by an outsider
  q.folders["/card/b"].files.push_back("DSC_2000.XMP");           // a twin outside the batch
  q.duplicates = DuplicatePolicy::addSuffix;
  const PreparedBatch batch(std::make_shared<const std::vector<RenameSubject>>(q.subjects), q.twins,
                            q.order, q.folders);

  for (const char* templateText :
       {"{date:yyyy-MM-dd_HHmmss}", "{name}_{counter}", "same", "{name}"}) {
    q.stack.rules = {formatRule(templateText)};
    for (DuplicatePolicy policy : {DuplicatePolicy::addSuffix, DuplicatePolicy::markError}) {
      q.duplicates = policy;
      const RenamePreview whole = buildPreview(q);
      const RenamePreview edited =
          buildPreview(batch, CompiledRuleStack(q.stack), q.naming, policy);
      EXPECT_EQ(newNames(edited), newNames(whole)) << templateText;
      EXPECT_EQ(statuses(edited), statuses(whole)) << templateText;
      EXPECT_EQ(edited.changedFiles, whole.changedFiles) << templateText;
      ASSERT_EQ(edited.items.size(), whole.items.size());
      for (std::size_t r = 0; r < whole.items.size(); ++r) {
        EXPECT_EQ(edited.items[r].errors, whole.items[r].errors);
        EXPECT_EQ(edited.items[r].warnings, whole.items[r].warnings);
      }
    }
  }
}

}  // namespace
}  // namespace tessane
