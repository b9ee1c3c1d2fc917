#include "RenameIO/SafeRenamer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "BatchShapes.h"
#include "FakeFileRenaming.h"

namespace tessane {
namespace {

using testing::at;
using testing::FakeFileRenaming;
using testing::mv;

const Date kDate{std::chrono::seconds(1'700'000'000)};

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

}  // namespace
}  // namespace tessane
