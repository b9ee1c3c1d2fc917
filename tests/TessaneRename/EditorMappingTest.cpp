#include <gtest/gtest.h>

#include "RenameEngine/RuleStack.h"
#include "RenameEngine/Subjects.h"
#include "Rules.h"
#include "TessaneRename/FormatToken.h"
#include "TessaneRename/NameBuilder.h"
#include "TessaneRename/RuleKind.h"
#include "TessaneRename/RuleScope.h"

namespace tessane {
namespace {

using testing::operationRule;
using testing::subject;

TEST(RuleKindTest, EveryOfferedKindMakesARuleShownUnderItAgain) {
  std::vector<RuleKind> offered;
  for (RuleKindGroup g : {RuleKindGroup::build, RuleKindGroup::modify, RuleKindGroup::tidy}) {
    for (RuleKind k : kindsIn(g)) {
      EXPECT_EQ(groupOf(k), g);
      offered.push_back(k);
    }
  }
  EXPECT_EQ(offered.size(), 10u);  // every kind but `advanced`, each in one group
  for (RuleKind k : offered) {
    const std::optional<Rule> rule = newRule(k);
    ASSERT_TRUE(rule.has_value());
    EXPECT_EQ(kindOf(*rule), k) << title(k).toStdString();
  }
  EXPECT_EQ(newRule(RuleKind::advanced), std::nullopt);
  EXPECT_EQ(groupOf(RuleKind::advanced), std::nullopt);
  EXPECT_FALSE(explanation(RuleKind::advanced).isEmpty());
}

TEST(RuleKindTest, RulesWithoutAnEditorOfTheirOwnAreAdvanced) {
  EXPECT_EQ(kindOf(operationRule(op::DeleteCharacters{0, 2})), RuleKind::remove);
  EXPECT_EQ(kindOf(operationRule(op::RemoveEmoji{})), RuleKind::clean);
  EXPECT_EQ(kindOf(operationRule(op::Truncate{8})), RuleKind::advanced);
  EXPECT_EQ(kindOf(operationRule(op::ReplaceAfter{Anchor{"_"}, "x"})), RuleKind::advanced);
  Rule protect;
  protect.action = {RuleAction::Protect{BlockRef::index(1)}};
  EXPECT_EQ(kindOf(protect), RuleKind::advanced);
}

TEST(RuleScopeTest, EveryScopeComesBackFromItsConditions) {
  for (const RuleScope& scope :
       {RuleScope::all(), RuleScope::raw(), RuleScope::jpeg(), RuleScope::video(),
        RuleScope::body("A7"), RuleScope::nameContains("party")}) {
    EXPECT_EQ(RuleScope::of(scope.conditions()), scope) << scope.title().toStdString();
  }

  // The jpeg scope selects both spellings, and nothing else.
  const RuleConditions jpeg(RuleScope::jpeg().conditions());
  EXPECT_TRUE(jpeg.hold(subject("a.JPG")));
  EXPECT_TRUE(jpeg.hold(subject("a.jpeg")));
  EXPECT_FALSE(jpeg.hold(subject("a.heic")));
}

TEST(RuleScopeTest, NameContainsIsComposedAndIgnoresCase) {
  const std::string decomposed = "Fe\xCC\x81te";  // "Féte" with a combining accent
  const RuleScope scope = RuleScope::nameContains(decomposed);
  const auto conditions = scope.conditions();
  ASSERT_EQ(conditions.size(), 1u);
  const auto& anchor = std::get<RuleCondition::NameContains>(conditions[0].value).anchor;
  EXPECT_EQ(anchor.text, "F\xC3\xA9te");
  EXPECT_FALSE(anchor.caseSensitive);
  EXPECT_EQ(anchor.occurrence, Occurrence::first);
  EXPECT_EQ(RuleScope::of(conditions), RuleScope::nameContains("F\xC3\xA9te"));
  EXPECT_TRUE(RuleConditions(conditions).hold(subject("DSC_1 F\xC3\x89TE.jpg")));
}

TEST(RuleScopeTest, OtherShapesHaveNoScope) {
  const RuleCondition raw{RuleCondition::Kind{{FileKind::raw}}};
  const std::vector<std::vector<RuleCondition>> shapes{
      {RuleCondition{RuleCondition::CameraModel{"ILCE-7RM5"}}},
      {raw, RuleCondition{RuleCondition::BodyTag{"A"}}},
      {RuleCondition{RuleCondition::FileExtension{{"jpeg", "jpg"}}}},
      {RuleCondition{RuleCondition::NameContains{Anchor{"x", true, Occurrence::first}}}},
  };
  for (const auto& conditions : shapes)
    EXPECT_EQ(RuleScope::of(conditions), std::nullopt);
}

TEST(FormatTokenTest, PiecesJoinWithTheSeparatorAndSplitBack) {
  const std::vector<FormatToken> pieces{FormatToken::variable("date:yyyy"),
                                        FormatToken::text("Rome{2}"), FormatToken::counter()};
  EXPECT_EQ(FormatToken::join(pieces, "_"), "{date:yyyy}_Rome{{2}}_{counter}");
  EXPECT_EQ(FormatToken::join(pieces, ""), "{date:yyyy}Rome{{2}}{counter}");
  for (std::string_view separator : {"_", "-", " ", ""}) {
    EXPECT_EQ(FormatToken::split(FormatToken::join(pieces, separator), separator), pieces)
        << "separator “" << separator << "”";
  }
  // The braces of a text piece stay braces in the name.
  const Template parsed = Template::parse(FormatToken::join({FormatToken::text("a{b}")}, "_"));
  ASSERT_EQ(parsed.parts.size(), 1u);
  EXPECT_EQ(parsed.parts[0].text, "a{b}");
}

TEST(FormatTokenTest, PatternsThatAreNoJoinOfPiecesDoNotSplit) {
  EXPECT_EQ(FormatToken::split("{date}-{body}", "_"), std::nullopt);
  EXPECT_EQ(FormatToken::split("IMG{counter}", "_"), std::nullopt);
  EXPECT_EQ(FormatToken::split("{date}__{counter}", "_"), std::nullopt);
  EXPECT_EQ(FormatToken::split("{date}_a_b", "_"),
            (std::vector<FormatToken>{FormatToken::variable("date"), FormatToken::text("a"),
                                      FormatToken::text("b")}));
}

TEST(NameBuilderTest, TheThreeWaysMakeTheTopFormatRule) {
  RuleStack stack;
  stack.rules.push_back(operationRule(op::ChangeCase{CaseStyle::lower}));
  NameBuilder builder;
  builder.pieces = {FormatToken::text("Rome"), FormatToken::counter()};
  builder.applyTo(stack, "-");
  ASSERT_EQ(stack.rules.size(), 2u);
  const Uuid formatID = stack.rules[0].id;
  EXPECT_EQ(
      applyRuleStack(stack, subject("DSC_0001.ARW"), NamingContext::systemDefault()).newName.base,
      "rome-0001");
  EXPECT_EQ(NameBuilder::of(stack, "-"), builder);

  builder.way = NameBuilder::Way::startFromOriginal;
  builder.pieces = {FormatToken::text("Rome")};
  builder.applyTo(stack, "_");
  ASSERT_EQ(stack.rules.size(), 2u);
  EXPECT_EQ(stack.rules[0].id, formatID);
  EXPECT_EQ(std::get<RuleAction::Format>(stack.rules[0].action.value).format.templateText,
            "{original}_Rome");
  EXPECT_EQ(NameBuilder::of(stack, "_"), builder);

  builder.way = NameBuilder::Way::byHand;
  builder.pattern = "{date}_{body}-{counter}";
  builder.applyTo(stack, "_");
  const NameBuilder shown = NameBuilder::of(stack, "_");
  EXPECT_EQ(shown.way, NameBuilder::Way::byHand);
  EXPECT_EQ(shown.pattern, "{date}_{body}-{counter}");

  // "Use the new name" off: the name stays and only the changes apply.
  builder.usesNewName = false;
  builder.applyTo(stack, "_");
  EXPECT_FALSE(stack.rules[0].isEnabled);
  EXPECT_EQ(
      applyRuleStack(stack, subject("DSC_0001.ARW"), NamingContext::systemDefault()).newName.base,
      "dsc_0001");
  EXPECT_FALSE(NameBuilder::of(stack, "_").usesNewName);

  // A stack without a format rule on top shows the builder off, with its default pieces.
  RuleStack changesOnly;
  changesOnly.rules.push_back(operationRule(op::RemoveEmoji{}));
  const NameBuilder off = NameBuilder::of(changesOnly, "_");
  EXPECT_FALSE(off.usesNewName);
  EXPECT_EQ(off.templateText("_"), "{date}_{counter}");
}

}  // namespace
}  // namespace tessane
