// The builder's and the changes panel's model: the changes below the builder's rule, the pieces
// on offer, the separator, and completing variable names.
#include <gtest/gtest.h>

#include <set>

#include "RenameEngine/RuleStack.h"
#include "RenameEngine/Subjects.h"
#include "Rules.h"
#include "TessaneRename/ChangeList.h"
#include "TessaneRename/FormatToken.h"
#include "TessaneRename/NameBuilder.h"
#include "TessaneRename/RuleKind.h"

namespace tessane {
namespace {

using testing::operationRule;

std::string newBase(const RuleStack& stack, std::string name) {
  return applyRuleStack(stack, testing::subject(std::move(name)), NamingContext::systemDefault())
      .newName.base;
}

TEST(ChangeListTest, ChangesSitBelowTheBuildersRuleInTheOrderGiven) {
  RuleStack stack;
  // The first change of a stack without a builder brings the builder's rule, turned off.
  EXPECT_EQ(ChangeList::add(stack, *newRule(RuleKind::format, "{name}_x"), std::nullopt, "_"), 0);
  ASSERT_EQ(stack.rules.size(), 2u);
  EXPECT_FALSE(stack.rules[0].isEnabled);
  EXPECT_EQ(ChangeList::count(stack), 1) << "a “New name” change stays a change";
  EXPECT_EQ(NameBuilder::of(stack, "_").usesNewName, false);
  ChangeList::remove(stack, 0);

  const int lower =
      ChangeList::add(stack, operationRule(op::ChangeCase{CaseStyle::upper}), std::nullopt, "_");
  const int replace =
      ChangeList::add(stack, operationRule(op::Replace{Anchor{"x", true, Occurrence::first}, "y"}),
                      std::nullopt, "_");
  EXPECT_EQ(std::pair(lower, replace), std::pair(0, 1));
  EXPECT_EQ(newBase(stack, "x1.jpg"), "X1") << "upper case first: no “x” left to replace";
  EXPECT_TRUE(ChangeList::move(stack, 1, 0));
  EXPECT_EQ(newBase(stack, "x1.jpg"), "Y1");
  EXPECT_FALSE(ChangeList::move(stack, 0, -3)) << "clamped: already first";
  EXPECT_TRUE(ChangeList::move(stack, 0, 99));
  EXPECT_EQ(newBase(stack, "x1.jpg"), "X1");

  // Added after the first change, a duplicate below its original with its own id.
  ChangeList::add(stack, operationRule(op::Insert{"!", InsertPosition::end()}), 0, "_");
  EXPECT_EQ(kindOf(ChangeList::at(stack, 1)), RuleKind::addText);
  EXPECT_EQ(ChangeList::duplicate(stack, 1), 2);
  EXPECT_NE(ChangeList::at(stack, 1).id, ChangeList::at(stack, 2).id);
  EXPECT_EQ(ChangeList::at(stack, 1).action, ChangeList::at(stack, 2).action);
  EXPECT_EQ(newBase(stack, "x1.jpg"), "X1!!");

  ChangeList::setEnabled(stack, 1, false);
  EXPECT_EQ(newBase(stack, "x1.jpg"), "X1!");
  ChangeList::setAllEnabled(stack, false);
  EXPECT_EQ(newBase(stack, "x1.jpg"), "x1");
  EXPECT_EQ(ChangeList::count(stack), 4);
  ChangeList::removeAll(stack);
  EXPECT_EQ(ChangeList::count(stack), 0);
  ASSERT_EQ(stack.rules.size(), 1u) << "the builder's rule stays";
}

TEST(ChangeListTest, SummariesAndRegexProblems) {
  EXPECT_EQ(ChangeList::summary(operationRule(op::Replace{Anchor{"IMG"}, "Rome"})),
            "“IMG” → “Rome”");
  EXPECT_EQ(ChangeList::summary(operationRule(op::RemoveAccents{})), "Accents (è → e)");
  EXPECT_EQ(ChangeList::summary(*newRule(RuleKind::counter)), "0001, 0002… at the end");
  EXPECT_FALSE(ChangeList::regexProblem("IMG_(\\d+").isEmpty());
  EXPECT_TRUE(ChangeList::regexProblem("IMG_(\\d+)").isEmpty());
  EXPECT_TRUE(ChangeList::regexProblem("").isEmpty()) << "nothing typed yet is no problem";
}

TEST(PieceCatalogueTest, EveryVariableButTheExtensionIsOfferedOnce) {
  std::multiset<std::string> offered;
  for (PieceGroup group : pieceGroups()) {
    EXPECT_FALSE(title(group).isEmpty());
    for (const FormatToken& piece : piecesIn(group, "HH-mm")) {
      ASSERT_EQ(piece.kind, FormatToken::Kind::variable);
      if (piece.value != "date:HH-mm") offered.insert(piece.value);
    }
  }
  for (int v = 0; v <= static_cast<int>(TemplateVariable::pages); ++v) {
    const std::string name(rawValue(static_cast<TemplateVariable>(v)));
    EXPECT_EQ(offered.count(name), name == "ext" ? 0u : 1u) << name;
  }
  EXPECT_EQ(FormatToken::variable("date:HH-mm").title(), "Time");
  EXPECT_EQ(FormatToken::variable("date:yyyy").title(), "Date (yyyy)");
  EXPECT_EQ(FormatToken::variable("shutter").title(), "Shutter speed");
  EXPECT_EQ(FormatToken::text("Rome").title(), "“Rome”");
}

TEST(NameBuilderTest, PiecesMoveAndFollowTheSeparator) {
  NameBuilder builder = NameBuilder::firstStart(true);  // date, body, counter
  EXPECT_TRUE(builder.movePiece(2, 0));
  EXPECT_EQ(builder.templateText("_"), "{counter}_{date}_{body}");
  EXPECT_TRUE(builder.movePiece(0, 9));
  EXPECT_EQ(builder.templateText("_"), "{date}_{body}_{counter}");
  EXPECT_FALSE(builder.movePiece(3, 0));

  RuleStack stack;
  builder.applyTo(stack, "_");
  NameBuilder::changeSeparator(stack, "_", "-");
  EXPECT_EQ(std::get<RuleAction::Format>(stack.rules[0].action.value).format.templateText,
            "{date}-{body}-{counter}");
  builder.way = NameBuilder::Way::byHand;
  builder.pattern = "{date}_{body}";
  builder.applyTo(stack, "-");
  NameBuilder::changeSeparator(stack, "-", " ");
  EXPECT_EQ(std::get<RuleAction::Format>(stack.rules[0].action.value).format.templateText,
            "{date}_{body}")
      << "a pattern written by hand stays as typed";
}

TEST(NameBuilderTest, TheVariableBeingTypedIsFoundAtTheCursor) {
  const auto typed = [](const QString& text, qsizetype cursor) -> std::optional<QString> {
    const std::optional<TypedVariable> t = variableBeingTyped(text, cursor);
    if (!t) return std::nullopt;
    EXPECT_EQ(text.mid(t->start, cursor - t->start), t->prefix);
    return t->prefix;
  };
  EXPECT_EQ(typed("x_{da", 5), "da");
  EXPECT_EQ(typed("x_{", 3), "");
  EXPECT_EQ(typed("{date}_{co}", 10), "co") << "inside a closed brace too";
  EXPECT_EQ(typed("{date}_", 7), std::nullopt);
  EXPECT_EQ(typed("{{da", 4), std::nullopt) << "a literal brace";
  EXPECT_EQ(typed("{date:yy", 8), std::nullopt) << "in the format, not the name";
  EXPECT_TRUE(variableNames().contains("shutter"));
  EXPECT_TRUE(variableNames().contains("counter"));
}

}  // namespace
}  // namespace tessane
