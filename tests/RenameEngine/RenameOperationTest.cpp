#include "RenameEngine/RenameOperation.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "RenameEngine/Unicode.h"

namespace tessane {
namespace {

Anchor anchor(std::string text, Occurrence o = Occurrence::first, bool caseSensitive = true) {
  return Anchor{std::move(text), caseSensitive, o};
}

// The new base of `base` (extension "jpg") after the operation.
std::string on(std::string_view base, RenameOperation::Value op, OperationContext context = {}) {
  return apply(RenameOperation{std::move(op)}, FileName{std::string(base), "jpg"}, context)
      .name.base;
}

TEST(RenameOperation, InsertAndDeletions) {
  EXPECT_EQ(on("ab", op::Insert{"X", InsertPosition::atIndex(1)}), "aXb");
  EXPECT_EQ(on("ab", op::Insert{"X", InsertPosition::end()}), "abX");
  EXPECT_EQ(on("a_b_c", op::Insert{"X", InsertPosition::after(anchor("_", Occurrence::all))}),
            "a_Xb_c");
  EXPECT_EQ(on("a_b", op::Insert{"X", InsertPosition::before(anchor(""))}), "a_b");
  EXPECT_EQ(on("2024_Rome", op::Insert{"-01", InsertPosition::afterBlock(BlockRef::index(0))}),
            "2024-01_Rome");

  EXPECT_EQ(on("A_B_C", op::DeleteBlock{BlockRef::index(1)}), "A_C");
  EXPECT_EQ(on("A_B_C", op::DeleteBlock{BlockRef::index(-1)}), "A_B");
  EXPECT_EQ(on("A", op::DeleteBlock{BlockRef::index(0)}), "");
  EXPECT_EQ(on("A_B", op::DeleteBlock{BlockRef::index(5)}), "A_B");

  EXPECT_EQ(on("a-b-c", op::DeleteText{anchor("-", Occurrence::all)}), "abc");
  EXPECT_EQ(on("a-b-c", op::DeleteText{anchor("-", Occurrence::last)}), "a-bc");

  EXPECT_EQ(on("abcdef", op::DeleteCharacters{2, 100}), "ab");
  EXPECT_EQ(on("abcdef", op::DeleteCharacters{-5, 2}), "cdef");
  EXPECT_EQ(on("abcdef", op::DeleteCharacters{9, 1}), "abcdef");
  EXPECT_EQ(on("abcdef", op::DeleteCharacters{1, -3}), "abcdef");
  EXPECT_EQ(on("abcdef", op::DeleteCharacters{INT64_MAX, INT64_MAX}), "abcdef");
  EXPECT_EQ(on("abcdef", op::DeleteCharacters{INT64_MIN, INT64_MAX}), "");

  EXPECT_EQ(on("x(1)(2)", op::DeleteBetween{anchor("("), anchor(")"), false}), "x()(2)");
  EXPECT_EQ(on("x(1)(2)", op::DeleteBetween{anchor("("), anchor(")"), true}), "x(2)");
  EXPECT_EQ(on("x(1)(2)", op::DeleteBetween{anchor("("), anchor(")", Occurrence::last), true}),
            "x");
  EXPECT_EQ(on(")x(", op::DeleteBetween{anchor("("), anchor(")"), true}), ")x(");

  EXPECT_EQ(on("a_b_c", op::DeleteBefore{anchor("_"), false}), "_b_c");
  EXPECT_EQ(on("a_b_c", op::DeleteBefore{anchor("_"), true}), "b_c");
  EXPECT_EQ(on("a_b_c", op::DeleteAfter{anchor("_", Occurrence::last), true}), "a_b");
  EXPECT_EQ(on("a_b_c", op::DeleteAfter{anchor("_", Occurrence::last), false}), "a_b_");
}

TEST(RenameOperation, Replacements) {
  EXPECT_EQ(on("IMG_IMG", op::Replace{anchor("img", Occurrence::all, false), "Rome"}), "Rome_Rome");
  EXPECT_EQ(on("a_b", op::Replace{anchor("z"), "Q"}), "a_b");
  EXPECT_EQ(on("a_b_c", op::ReplaceBefore{anchor("_", Occurrence::last), "X"}), "X_c");
  EXPECT_EQ(on("a_b_c", op::ReplaceAfter{anchor("_"), "X"}), "a_X");
  EXPECT_EQ(on("2024_Paris_001", op::ReplaceBlock{BlockRef::text("Paris"), "Roma"}),
            "2024_Roma_001");
  EXPECT_EQ(on("2024_Paris_001", op::ReplaceBlock{BlockRef::index(1), ""}), "2024__001");
}

TEST(RenameOperation, RegularExpressions) {
  EXPECT_EQ(on("a1b22", op::ReplaceRegex{"(\\d+)", "#$1", Occurrence::all, true}), "a#1b#22");
  EXPECT_EQ(on("a1b22", op::ReplaceRegex{"(\\d+)", "#$1", Occurrence::last, true}), "a1b#22");
  EXPECT_EQ(on("a1b22", op::ReplaceRegex{"(\\d+)", "#$1", Occurrence::first, true}), "a#1b22");
  EXPECT_EQ(on("DSC_0001", op::ReplaceRegex{"dsc", "Rome", Occurrence::all, false}), "Rome_0001");
  EXPECT_EQ(on("DSC_0001", op::ReplaceRegex{"dsc", "Rome", Occurrence::all, true}), "DSC_0001");
  EXPECT_EQ(
      on("2024-05-01", op::ReplaceRegex{"(\\d+)-(\\d+)-(\\d+)", "$3.$2.$1", Occurrence::all, true}),
      "01.05.2024");
  // $0 is the whole match; "\$" and a "$" not followed by a digit stay literal; $9 is nothing.
  EXPECT_EQ(on("ab", op::ReplaceRegex{"b", "[$0]\\$1$x$9", Occurrence::all, true}), "a[b]$1$x");
  EXPECT_EQ(on("a_b", op::ReplaceRegex{"_", "", Occurrence::all, true}), "ab");
  EXPECT_EQ(on("\xC3\x89t\xC3\xA9", op::ReplaceRegex{"\xC3\xA9", "e", Occurrence::all, false}),
            "ete");

  const OperationOutcome bad =
      apply(RenameOperation{op::ReplaceRegex{"(", "x", Occurrence::all, true}},
            FileName{"a(b", "jpg"}, {});
  EXPECT_EQ(bad.name, (FileName{"a(b", "jpg"}));
  EXPECT_EQ(bad.issue, OperationIssue::invalidPattern());
}

// A pattern that backtracks without end ("(a+)+$" needs 2^n steps on n "a" and a "b") is stopped
// on that name, which stays as it was; the same pattern still works where it is quick, and a
// locked block does not make it run twice.
TEST(RenameOperation, RegexThatRunsTooLongLeavesTheNameAsItIs) {
  const RenameOperation slow{op::ReplaceRegex{"(a+)+$", "x", Occurrence::all, true}};
  const std::string hostile = std::string(40, 'a') + "b";
  const OperationOutcome stopped = apply(slow, FileName{hostile, "jpg"}, {});
  EXPECT_EQ(stopped.name, (FileName{hostile, "jpg"}));
  EXPECT_EQ(stopped.issue, OperationIssue::patternTooSlow());

  EXPECT_EQ(apply(slow, FileName{"baaa", "jpg"}, {}).name.base, "bx");
  OperationContext locked;
  locked.protectedBlocks = {BlockRef::index(0)};
  const OperationOutcome lockedOutcome = apply(slow, FileName{hostile + "_c", "jpg"}, locked);
  EXPECT_EQ(lockedOutcome.name.base, hostile + "_c");
  EXPECT_EQ(lockedOutcome.issue, OperationIssue::patternTooSlow());
}

TEST(RenameOperation, BlocksMoveAndSeparatorsStay) {
  EXPECT_EQ(on("A_B-C", op::MoveBlock{BlockRef::index(0), 2}), "B_C-A");
  EXPECT_EQ(on("2024_Paris_001", op::MoveBlock{BlockRef::index(-1), 0}), "001_2024_Paris");
  EXPECT_EQ(on("2024_Paris_001", op::MoveBlock{BlockRef::index(0), 99}), "Paris_001_2024");
  EXPECT_EQ(on("2024_Paris_001", op::MoveBlock{BlockRef::text("nope"), 0}), "2024_Paris_001");
  // The context's separators decide what a block is.
  OperationContext dashes;
  dashes.separators = std::make_shared<SeparatorSet>(std::vector<std::string>{"--"});
  EXPECT_EQ(on("a_b--c", op::MoveBlock{BlockRef::index(0), 1}, dashes), "c--a_b");
}

TEST(RenameOperation, CaseAndCleaning) {
  EXPECT_EQ(on("pARIS_bY-night", op::ChangeCase{CaseStyle::title}), "Paris_By-Night");
  EXPECT_EQ(on("stra\xC3\x9F"
               "e",
               op::ChangeCase{CaseStyle::upper}),
            "STRASSE");
  EXPECT_EQ(on("\xC3\x89T\xC3\x89", op::ChangeCase{CaseStyle::lower}), "\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(on("  a \t b  ", op::CollapseWhitespace{}), "a b");
  EXPECT_EQ(on("a\xE3\x80\x80\xC2\xA0"
               "b",
               op::CollapseWhitespace{}),
            "a b");
  EXPECT_EQ(on("Cr\xC3\xA8me br\xC3\xBBl\xC3\xA9"
               "e \xC3\x85",
               op::RemoveAccents{}),
            "Creme brulee A");
  EXPECT_EQ(on("a/b:c", op::RemoveInvalidCharacters{"-"}), "a-b-c");
  EXPECT_EQ(on("a\tb\x7F"
               "c",
               op::RemoveInvalidCharacters{""}),
            "abc");
  EXPECT_EQ(on("ab  cdef", op::Truncate{4}), "ab");
  EXPECT_EQ(on("abc", op::Truncate{0}), "");
  EXPECT_EQ(on("abc  ", op::Truncate{10}), "abc");
  EXPECT_EQ(on("abc", op::Truncate{-1}), "");
  // Emoji: presented as emoji goes, text-style digits and symbols stay.
  EXPECT_EQ(on("a\xF0\x9F\x8C\x8A"
               "b#1*",
               op::RemoveEmoji{}),
            "ab#1*");
  EXPECT_EQ(on("1\xEF\xB8\x8F\xE2\x83\xA3x\xE2\x9D\xA4\xEF\xB8\x8F", op::RemoveEmoji{}), "x");
  EXPECT_EQ(on("\xE2\x9D\xA4", op::RemoveEmoji{}), "\xE2\x9D\xA4");  // ❤ without VS16 is text
  EXPECT_EQ(on("\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9_Roma", op::RemoveEmoji{}), "_Roma");
}

TEST(RenameOperation, ExtensionOperationsLeaveTheBase) {
  const OperationContext context;
  auto run = [&](RenameOperation::Value op, FileName name) {
    return apply(RenameOperation{std::move(op)}, name, context).name;
  };
  EXPECT_EQ(run(op::SetExtension{"..jpg"}, {"A_b", "JPEG"}), (FileName{"A_b", "jpg"}));
  EXPECT_EQ(run(op::SetExtension{"..."}, {"A_b", "JPEG"}), (FileName{"A_b", ""}));
  EXPECT_EQ(run(op::ChangeExtensionCase{CaseStyle::lower}, {"A_B", "CR2.XMP"}),
            (FileName{"A_B", "cr2.xmp"}));
  EXPECT_EQ(run(op::ChangeExtensionCase{CaseStyle::title}, {"x", "jPG"}), (FileName{"x", "Jpg"}));
  EXPECT_EQ(run(op::ChangeCase{CaseStyle::lower}, {"A_B", "JPG"}), (FileName{"a_b", "JPG"}));
}

TEST(RenameOperation, LockedBlocks) {
  OperationContext locked;
  locked.protectedBlocks = {BlockRef::index(0)};
  auto run = [&](std::string base, RenameOperation::Value op) {
    return apply(RenameOperation{std::move(op)}, FileName{std::move(base), "jpg"}, locked);
  };
  const OperationOutcome upper = run("abc_def", op::ChangeCase{CaseStyle::upper});
  EXPECT_EQ(upper.name.base, "abc_DEF");
  EXPECT_EQ(upper.issue, OperationIssue::protectedBlock());

  const OperationOutcome deleted = run("abc_def", op::DeleteBlock{BlockRef::index(0)});
  EXPECT_EQ(deleted.name.base, "abc_def");
  EXPECT_EQ(deleted.issue, OperationIssue::protectedBlock());

  const OperationOutcome already = run("ABC_def", op::ChangeCase{CaseStyle::upper});
  EXPECT_EQ(already.name.base, "ABC_DEF");
  EXPECT_FALSE(already.issue.has_value());

  // A locked block moves with the others and keeps its text; duplicating it is refused.
  const OperationOutcome moved = run("abc_def_ghi", op::MoveBlock{BlockRef::index(0), 2});
  EXPECT_EQ(moved.name.base, "def_ghi_abc");
  EXPECT_FALSE(moved.issue.has_value());
  const OperationOutcome doubled =
      run("abc_def", op::ReplaceRegex{"^(.*)$", "$1$1", Occurrence::all, true});
  EXPECT_EQ(doubled.name.base, "abc_def");
  EXPECT_EQ(doubled.issue, OperationIssue::protectedBlock());

  // Locks never touch the extension, and a lock on a missing block changes nothing.
  EXPECT_EQ(run("abc", op::SetExtension{"png"}).name, (FileName{"abc", "png"}));
  locked.protectedBlocks = {BlockRef::text("zzz")};
  EXPECT_EQ(run("abc_def", op::ChangeCase{CaseStyle::upper}).name.base, "ABC_DEF");
}

// Every operation gives the same result for a name stored composed or decomposed, and never
// returns text that is not UTF-8, whatever the script or emoji sequence.
TEST(RenameOperation, ComposedAndDecomposedInputAgreeForEveryOperation) {
  const std::vector<std::pair<std::string, std::string>> names = {
      {"\xC3\x89t\xC3\xA9_\xC3\xA0_Paris-001", "E\xCC\x81te\xCC\x81_a\xCC\x80_Paris-001"},
      {"\xED\x95\x9C\xEA\xB8\x80 \xE1\x84\x92",
       "\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB\xE1\x84\x80\xE1\x85\xB3\xE1\x86\xAF \xE1\x84\x92"},
      {"\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7_"
       "\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9_1\xEF\xB8\x8F\xE2\x83\xA3_\xC3\xB1",
       "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7_"
       "\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9_1\xEF\xB8\x8F\xE2\x83\xA3_n\xCC\x83"},
      {"\xD0\x99\xD0\xBE\xD0\xB3\xD0\xB0 \xE6\x9D\xB1\xE4\xBA\xAC-\xE0\xA4\xB9\xE0\xA4\xBF",
       "\xD0\x98\xCC\x86\xD0\xBE\xD0\xB3\xD0\xB0 "
       "\xE6\x9D\xB1\xE4\xBA\xAC-\xE0\xA4\xB9\xE0\xA4\xBF"},
  };
  const Anchor accented = anchor("\xC3\xA0", Occurrence::all, false);
  const std::vector<RenameOperation::Value> operations = {
      op::Insert{"e\xCC\x81", InsertPosition::atIndex(2)},
      op::Insert{"\xE2\x9C\xA8", InsertPosition::afterBlock(BlockRef::index(1))},
      op::DeleteBlock{BlockRef::index(-1)},
      op::DeleteText{accented},
      op::DeleteCharacters{1, 3},
      op::DeleteBetween{anchor("_"), anchor("-", Occurrence::last), false},
      op::DeleteBefore{anchor("_", Occurrence::last), true},
      op::DeleteAfter{anchor("_"), false},
      op::Replace{accented, "a"},
      op::ReplaceRegex{"(\\p{L})", "<$1>", Occurrence::all, false},
      op::ReplaceRegex{".", "", Occurrence::first, true},
      op::ReplaceBlock{BlockRef::text("e\xCC\x81t\xC3\xA9"), "summer"},
      op::ReplaceBefore{anchor("_"), "X"},
      op::ReplaceAfter{anchor("_", Occurrence::last), "Y"},
      op::MoveBlock{BlockRef::index(0), 5},
      op::ChangeCase{CaseStyle::upper},
      op::ChangeCase{CaseStyle::lower},
      op::ChangeCase{CaseStyle::title},
      op::CollapseWhitespace{},
      op::RemoveAccents{},
      op::RemoveInvalidCharacters{"/"},
      op::Truncate{3},
      op::RemoveEmoji{},
  };
  for (const auto& [composed, decomposed] : names) {
    for (const auto& operation : operations) {
      const RenameOperation o{operation};
      const CompiledOperation compiled(o);
      const OperationOutcome a = compiled.apply(FileName{composed, "jpg"}, {});
      const OperationOutcome b = compiled.apply(FileName{decomposed, "jpg"}, {});
      EXPECT_EQ(a, b) << o.caseName() << " on " << composed;
      EXPECT_TRUE(unicode::isValidUtf8(a.name.base)) << o.caseName() << " on " << composed;
      EXPECT_TRUE(unicode::isNfc(a.name.base)) << o.caseName() << " on " << composed;
    }
  }
}

}  // namespace
}  // namespace tessane
