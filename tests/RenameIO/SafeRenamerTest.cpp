#include "RenameIO/SafeRenamer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "BatchShapes.h"
#include "FakeFileRenaming.h"
#include "TextJoin.h"

namespace tessane {
namespace {

using testing::at;
using testing::FakeFileRenaming;
using testing::join;
using testing::mv;
using testing::Shape;
using testing::shapesOf;

const Date kDate{std::chrono::seconds(1'700'000'000)};

// Runs one shape with the given failures and checks that nothing was lost: every file is at its
// destination (success) or at its original name or listed as stranded with its exact place.
void runAndVerify(const Shape& shape, bool caseInsensitive, const std::set<std::size_t>& failing,
                  std::size_t diesAt) {
  FakeFileRenaming fs(caseInsensitive);
  for (const std::string& f : shape.files)
    fs.add(at(f), join({"contents of ", f}));
  fs.failing = failing;
  fs.diesAt = diesAt;
  const std::vector<FileMove> moves = shape.fileMoves();
  const std::map<std::string, std::string> before = fs.snapshot();

  Result<AppliedBatch, SafeRenameError> result = SafeRenamer::apply(moves, fs, kDate);
  const std::map<std::string, std::string> after = fs.snapshot();
  std::string context = join({shape.label, " n=", std::to_string(shape.moves.size()),
                              caseInsensitive ? " case-insensitive" : "", " failing:"});
  for (std::size_t k : failing)
    context.append(" ").append(std::to_string(k));
  context.append(" dies at ").append(std::to_string(diesAt));
  SCOPED_TRACE(context);

  std::map<std::string, std::string> expected = before;
  const std::size_t firstFailure =
      std::min(failing.empty() ? SIZE_MAX : *failing.begin(), diesAt == 0 ? SIZE_MAX : diesAt);
  if (firstFailure > 2 * moves.size()) {
    ASSERT_TRUE(result.ok()) << static_cast<int>(result.error().kind);
    EXPECT_EQ(result.value().moves, moves);
    for (const FileMove& m : moves)
      expected.erase(m.source.native());
    for (const FileMove& m : moves)
      expected[m.destination.native()] = before.at(m.source.native());
    EXPECT_EQ(after, expected);
    return;
  }
  ASSERT_FALSE(result.ok());
  const SafeRenameError& error = result.error();
  ASSERT_EQ(error.kind, SafeRenameError::Case::failed);
  ASSERT_TRUE(error.cause.has_value());
  if (diesAt == 0 && failing.size() == 1) {
    EXPECT_TRUE(error.stranded.empty());
  }
  // Stranded files: each listed once, in batch order, from where it is to where it was.
  std::vector<std::size_t> indices;
  for (const FileMove& s : error.stranded) {
    auto m = std::find_if(moves.begin(), moves.end(),
                          [&](const FileMove& mv) { return mv.source == s.destination; });
    ASSERT_NE(m, moves.end()) << s.destination;
    EXPECT_NE(s.source, s.destination) << "a file listed as stranded is back home";
    indices.push_back(static_cast<std::size_t>(m - moves.begin()));
    expected.erase(s.destination.native());
  }
  EXPECT_TRUE(std::is_sorted(indices.begin(), indices.end()) &&
              std::adjacent_find(indices.begin(), indices.end()) == indices.end());
  for (const FileMove& s : error.stranded)
    expected[s.source.native()] = before.at(s.destination.native());
  EXPECT_EQ(after, expected);
}

TEST(SafeRenamer, NothingIsLostWhateverMoveFails) {
  for (std::size_t n = 1; n <= 20; ++n) {
    for (const Shape& shape : shapesOf(n)) {
      for (bool caseInsensitive : {false, true}) {
        const std::size_t calls = 2 * n;
        runAndVerify(shape, caseInsensitive, {}, 0);
        for (std::size_t k = 1; k <= calls; ++k) {
          runAndVerify(shape, caseInsensitive, {k}, 0);
          // Every move from k on fails: the rollback can put nothing back.
          runAndVerify(shape, caseInsensitive, {}, k);
          // A second failure during the rollback, at each of its steps (small batches only: the
          // larger ones add nothing new and the count grows with the square).
          if (n > 8) continue;
          for (std::size_t j = k + 1; j <= k + calls; ++j) {
            runAndVerify(shape, caseInsensitive, {k, j}, 0);
            if (HasFatalFailure()) return;
          }
        }
      }
    }
  }
}

// The checks answer alike whether the folder is listed once or asked file by file.
class SafeRenamerChecks : public ::testing::TestWithParam<bool> {};

TEST_P(SafeRenamerChecks, RefuseBeforeAnythingMoves) {
  FakeFileRenaming fs(true);
  fs.listable = GetParam();
  fs.add(at("a.jpg"), "a");
  fs.add(at("b.jpg"), "b");
  fs.add(at("Caf\u00e9.jpg"), "outside");
  fs.add(at("IMG.jpg"), "outside too");
  const auto refusal = [&](std::vector<FileMove> moves) {
    const std::size_t before = fs.moveCount();
    Result<AppliedBatch, SafeRenameError> r = SafeRenamer::apply(moves, fs, kDate);
    EXPECT_EQ(fs.moveCount(), before) << "a refused batch moves nothing";
    EXPECT_FALSE(r.ok());
    return r.ok() ? SafeRenameError{} : r.error();
  };

  SafeRenameError e = refusal({mv(at("a.jpg"), at("x.jpg")), mv(at("gone.jpg"), at("y.jpg"))});
  EXPECT_EQ(e.kind, SafeRenameError::Case::sourceMissing);
  EXPECT_EQ(e.url, at("gone.jpg"));

  e = refusal({mv(at("a.jpg"), "/elsewhere/a.jpg")});
  EXPECT_EQ(e.kind, SafeRenameError::Case::notSameFolder);
  EXPECT_EQ(e.move.destination, "/elsewhere/a.jpg");

  e = refusal({mv(at("a.jpg"), at("IMG.jpg"))});  // the same name up to case, held by an outsider
  EXPECT_EQ(e.kind, SafeRenameError::Case::destinationExists);
  e = refusal({mv(at("a.jpg"), at("img.JPG"))});
  EXPECT_EQ(e.kind, SafeRenameError::Case::destinationExists);
  e = refusal({mv(at("a.jpg"), at("Cafe\u0301.JPG"))});  // decomposed against composed
  EXPECT_EQ(e.kind, SafeRenameError::Case::destinationExists);
  EXPECT_EQ(e.url, at("Cafe\u0301.JPG"));

  e = refusal({mv(at("a.jpg"), at("NEW.jpg")), mv(at("b.jpg"), at("new.JPG"))});
  EXPECT_EQ(e.kind, SafeRenameError::Case::duplicateDestination);
  EXPECT_EQ(e.url, at("new.JPG"));

  // Equivalent spellings of one folder are the same folder.
  EXPECT_FALSE(SafeRenamer::check(std::vector<FileMove>{mv(at("a.jpg"), "/card/./z.jpg")}, fs));
  // An empty batch applies nothing.
  Result<AppliedBatch, SafeRenameError> empty = SafeRenamer::apply({}, fs, kDate);
  ASSERT_TRUE(empty.ok());
  EXPECT_TRUE(empty.value().moves.empty());
}

TEST_P(SafeRenamerChecks, ACaseSensitiveVolumeHoldsNamesThatDifferOnlyInCase) {
  FakeFileRenaming fs(false);
  fs.listable = GetParam();
  fs.add(at("a.jpg"), "a");
  fs.add(at("IMG.jpg"), "outside");
  EXPECT_FALSE(SafeRenamer::check(std::vector<FileMove>{mv(at("a.jpg"), at("img.JPG"))}, fs));
  EXPECT_TRUE(SafeRenamer::check(std::vector<FileMove>{mv(at("a.jpg"), at("IMG.jpg"))}, fs));
  ASSERT_TRUE(SafeRenamer::apply(std::vector<FileMove>{mv(at("a.jpg"), at("img.JPG"))}, fs, kDate));
  EXPECT_EQ(fs.snapshot().size(), 2u);

  // "p.jpg" beside a moved "P.jpg" is another file: its name is not freed by the batch.
  fs.add(at("P.jpg"), "P");
  fs.add(at("p.jpg"), "p");
  const std::optional<SafeRenameError> e = SafeRenamer::check(
      std::vector<FileMove>{mv(at("P.jpg"), at("q.jpg")), mv(at("img.JPG"), at("p.jpg"))}, fs);
  ASSERT_TRUE(e);
  EXPECT_EQ(e->kind, SafeRenameError::Case::destinationExists);
  EXPECT_EQ(e->url, at("p.jpg"));
}

INSTANTIATE_TEST_SUITE_P(ListedOrAsked, SafeRenamerChecks, ::testing::Bool());

TEST(SafeRenamer, AFailureNamesTheFileWhenNothingIsStranded) {
  FakeFileRenaming fs;
  fs.add(at("a.jpg"), "a");
  fs.add(at("b.jpg"), "b");
  fs.failing = {4};  // the second file's move to its destination
  Result<AppliedBatch, SafeRenameError> r = SafeRenamer::apply(
      std::vector<FileMove>{{at("a.jpg"), at("c.jpg")}, {at("b.jpg"), at("d.jpg")}}, fs, kDate);
  ASSERT_FALSE(r.ok());
  EXPECT_EQ(r.error().url, at("b.jpg"));
  EXPECT_TRUE(r.error().stranded.empty());

  FakeFileRenaming second;
  second.add(at("a.jpg"), "a");
  second.add(at("b.jpg"), "b");
  second.failing = {2, 3};  // b cannot be parked, then a cannot go back
  r = SafeRenamer::apply(
      std::vector<FileMove>{{at("a.jpg"), at("c.jpg")}, {at("b.jpg"), at("d.jpg")}}, second, kDate);
  ASSERT_FALSE(r.ok());
  ASSERT_EQ(r.error().stranded.size(), 1u);
  EXPECT_EQ(r.error().stranded[0].destination, at("a.jpg"));
  EXPECT_TRUE(r.error().stranded[0].source.filename().native().starts_with(".tessane-"));
}

}  // namespace
}  // namespace tessane
