// preview, rename, undo, history, revert and restore-originals, run as a user would.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <map>

#include "../MediaMetadata/Fixtures.h"
#include "TessaneRename/RenameHistory.h"
#include "ToolRunner.h"

namespace tessane::testing {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

std::vector<std::string> namesIn(const fs::path& folder) {
  std::vector<std::string> out;
  for (const auto& e : fs::directory_iterator(folder))
    out.push_back(e.path().filename().string());
  std::sort(out.begin(), out.end());
  return out;
}

// Three shots from one camera: a RAW+JPEG pair, then two JPEGs in the same second.
void makeShoot(const TempFolder& dir) {
  const std::pair<const char*, const char*> shots[] = {{"DSC_0001.ARW", "2024:05:01 10:00:00"},
                                                       {"DSC_0001.JPG", "2024:05:01 10:00:00"},
                                                       {"DSC_0002.JPG", "2024:05:01 10:05:30"},
                                                       {"DSC_0003.JPG", "2024:05:01 10:05:30"}};
  for (const auto& [name, when] : shots) {
    dir.file(name, tinyJpeg(64, 48));
    writeMetadata(dir.path() / name, {{"Exif.Image.Make", "SONY"},
                                      {"Exif.Image.Model", "ILCE-7RM5"},
                                      {"Exif.Photo.DateTimeOriginal", when}});
  }
}

class RenameCommands : public ::testing::Test {
 protected:
  RenameCommands() {
    tool_.environment["TZ"] = "UTC";
    makeShoot(shoot_);
  }
  ToolResult run(std::vector<std::string> args) { return tool_.run(args); }
  std::string folder() const { return shoot_.path().string(); }

  ToolRunner tool_;
  TempFolder shoot_;
};

TEST_F(RenameCommands, PreviewShowsEveryRowAsJson) {
  const ToolResult r =
      run({"preview", folder(), "--template", "{date:yyyy-MM-dd_HH-mm-ss}", "--json"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  const Json doc = Json::parse(r.out);
  ASSERT_EQ(doc["items"].size(), 4u);
  std::vector<std::string> newNames;
  for (const Json& item : doc["items"])
    newNames.push_back(item["newName"]);
  EXPECT_EQ(newNames,
            (std::vector<std::string>{"2024-05-01_10-00-00.ARW", "2024-05-01_10-00-00.JPG",
                                      "2024-05-01_10-05-30.JPG", "2024-05-01_10-05-30.JPG"}));
  EXPECT_EQ(doc["items"][2]["status"], "error");
  EXPECT_EQ(doc["items"][2]["errors"][0], "Same name as another file in the batch");
  EXPECT_EQ(doc["errors"], 2);
  EXPECT_EQ(doc["changed"], 4);

  // Numbered clashes instead of errors, and the table on standard output.
  const ToolResult table = run({"preview", folder(), "--template", "{date:yyyy-MM-dd_HH-mm-ss}",
                                "--duplicates", "addSuffix"});
  ASSERT_EQ(table.exitCode, 0) << table.err;
  EXPECT_NE(table.out.find("2024-05-01_10-05-30-2.JPG"), std::string::npos) << table.out;
  EXPECT_NE(table.out.find("4 files: 4 to rename"), std::string::npos) << table.out;
}

TEST_F(RenameCommands, SidecarFieldsAndFileDatesAreReadWhenATemplateNamesThem) {
  shoot_.file("DSC_0002.xmp",
              "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
              "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\" "
              "xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><rdf:Description rdf:about=\"\">"
              "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">Harbour</rdf:li></rdf:Alt>"
              "</dc:title></rdf:Description></rdf:RDF></x:xmpmeta>");
  const ToolResult r = run({"preview", folder(), "--template", "{title}-{modified:yyyy}", "--json",
                            "--missing-text", "none"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  std::map<std::string, std::string> newNames;
  const Json doc = Json::parse(r.out);
  for (const Json& item : doc["items"])
    newNames[item["name"].get<std::string>()] = item["newName"].get<std::string>();
  const std::string year = std::to_string(
      static_cast<int>(std::chrono::year_month_day(
                           std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()))
                           .year()));
  EXPECT_EQ(newNames["DSC_0002.JPG"], "Harbour-" + year + ".JPG");
  EXPECT_EQ(newNames["DSC_0003.JPG"], "none-" + year + ".JPG");
}

TEST_F(RenameCommands, RenameUndoRevertAndTheHistoryFile) {
  // Refusals first: errors in the preview, no --yes without a terminal.
  ToolResult refused = run({"rename", folder(), "--template", "{date:yyyy-MM-dd}", "--yes"});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_NE(refused.err.find("Fix the errors before renaming."), std::string::npos) << refused.err;
  EXPECT_EQ(run({"rename", folder(), "--template", "x_{counter}"}).exitCode, 2);
  const std::vector<std::string> before = namesIn(shoot_.path());

  const ToolResult renamed =
      run({"rename", folder(), "--template", "Rome_{counter}", "--counter-digits", "2", "--yes"});
  ASSERT_EQ(renamed.exitCode, 0) << renamed.err;
  EXPECT_EQ(renamed.out, "4 files renamed\n");
  EXPECT_EQ(namesIn(shoot_.path()),
            (std::vector<std::string>{"Rome_01.ARW", "Rome_01.JPG", "Rome_02.JPG", "Rome_03.JPG"}));
  EXPECT_TRUE(fs::exists(tool_.dataFolder() / "History.json"));
  EXPECT_TRUE(fs::is_empty(tool_.dataFolder() / "Journal")) << "no journal left behind";

  const ToolResult again =
      run({"rename", folder(), "--template", "Rome_{counter}", "--counter-digits", "2", "--yes"});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_NE(again.err.find("There’s nothing to rename."), std::string::npos);

  const ToolResult history = run({"history", "--json"});
  ASSERT_EQ(history.exitCode, 0);
  const Json entries = Json::parse(history.out);
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0]["files"], 4);

  const ToolResult undone = run({"undo"});
  ASSERT_EQ(undone.exitCode, 0) << undone.err;
  EXPECT_EQ(undone.out, "4 files back to their previous names\n");
  EXPECT_EQ(namesIn(shoot_.path()), before);
  const ToolResult nothing = run({"undo"});
  EXPECT_EQ(nothing.exitCode, 1);
  EXPECT_NE(nothing.err.find("There’s nothing to undo."), std::string::npos);

  // A second rename, reverted by the start of its id.
  ASSERT_EQ(run({"rename", folder(), "--template", "Milan_{counter}", "--yes"}).exitCode, 0);
  const std::string id = Json::parse(run({"history", "--json"}).out)[0]["id"];
  EXPECT_EQ(run({"revert", id.substr(0, 8)}).exitCode, 0);
  EXPECT_EQ(namesIn(shoot_.path()), before);
  EXPECT_EQ(run({"revert", "FFFFFFFF"}).exitCode, 1);

  // Two renames in a row: going back from the first goes back from the second too, once agreed.
  ASSERT_EQ(run({"rename", folder(), "--template", "a_{counter}", "--yes"}).exitCode, 0);
  ASSERT_EQ(run({"rename", folder(), "--template", "b_{counter}", "--yes"}).exitCode, 0);
  const Json two = Json::parse(run({"history", "--json"}).out);
  const std::string older = two[1]["id"];
  const ToolResult asked = run({"revert", older});
  EXPECT_EQ(asked.exitCode, 2);
  EXPECT_NE(asked.out.find(two[0]["id"].get<std::string>().substr(0, 8)), std::string::npos)
      << "the later rename is named: " << asked.out;
  const ToolResult through = run({"revert", older, "--yes"});
  ASSERT_EQ(through.exitCode, 0) << through.err;
  EXPECT_EQ(through.out, "4 files back to their previous names\n");
  EXPECT_EQ(namesIn(shoot_.path()), before);
  const Json after = Json::parse(run({"history", "--json"}).out);
  EXPECT_TRUE(after[0]["isReverted"] && after[1]["isReverted"]);
}

// A window keeps its history open from its start; the tool writes the same file meanwhile, and
// neither loses the other's batches.
TEST_F(RenameCommands, TheToolAndAnOpenWindowShareTheHistory) {
  RenameHistory window = RenameHistory::load(tool_.dataFolder() / "History.json");
  ASSERT_EQ(run({"rename", folder(), "--template", "a_{counter}", "--yes"}).exitCode, 0);
  const Uuid mine = window.add(RenameHistory::Kind::rename,
                               {{shoot_.path() / "elsewhere.jpg", shoot_.path() / "there.jpg"}});
  ASSERT_TRUE(window.waitForSaves());
  ASSERT_EQ(window.entries().size(), 2u) << "the tool's batch is read in before the change";
  const std::string theirs = window.entries()[1].id.string();

  ASSERT_EQ(run({"revert", theirs}).exitCode, 0);
  window.markReverted(mine);
  ASSERT_TRUE(window.waitForSaves());
  const Json entries = Json::parse(run({"history", "--json"}).out);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0]["id"], mine.string());
  EXPECT_EQ(entries[1]["id"], theirs);
  EXPECT_TRUE(entries[0]["isReverted"] && entries[1]["isReverted"]) << entries.dump();
}

TEST_F(RenameCommands, RestoreOriginalsAfterSeveralRenames) {
  ASSERT_EQ(run({"rename", folder(), "--template", "a_{counter}", "--yes"}).exitCode, 0);
  // The camera's names are read back from the files only when a template asks for them.
  ASSERT_EQ(run({"rename", folder(), "--template", "{original}_c", "--yes"}).exitCode, 0);
  EXPECT_EQ(namesIn(shoot_.path()), (std::vector<std::string>{"DSC_0001_c.ARW", "DSC_0001_c.JPG",
                                                              "DSC_0002_c.JPG", "DSC_0003_c.JPG"}));
  const ToolResult restored = run({"restore-originals", folder(), "--yes"});
  ASSERT_EQ(restored.exitCode, 0) << restored.err;
  EXPECT_EQ(restored.out, "4 files back to their original names\n");
  EXPECT_EQ(namesIn(shoot_.path()), (std::vector<std::string>{"DSC_0001.ARW", "DSC_0001.JPG",
                                                              "DSC_0002.JPG", "DSC_0003.JPG"}));
  const ToolResult again = run({"restore-originals", folder(), "--yes"});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_NE(again.err.find("These files already have their original names."), std::string::npos);
}

TEST_F(RenameCommands, BadInputIsRefusedWithAClearMessage) {
  const TempFolder presets;
  const fs::path broken =
      presets.file("broken.tessanepreset", "{\"schemaVersion\": 1, \"name\": 3}");
  const struct {
    std::vector<std::string> args;
    int exitCode;
    const char* message;
  } cases[] = {
      {{"preview", folder()}, 1, "template"},
      {{"preview", folder(), "--template", "x", "--order", "random"}, 2, "random"},
      {{"preview", folder(), "--template", "x", "--bogus"}, 2, "--bogus"},
      {{"preview", (shoot_.path() / "gone").string(), "--template", "x"}, 1, "doesn’t exist"},
      {{"preview", folder(), "--template", "x", "--time-zone", "Mars/Olympus"},
       1,
       "“Mars/Olympus” isn’t a time zone"},
      {{"preview", folder(), "--preset", broken.string()}, 1, "isn’t a preset that can be read"},
      {{"preview", folder(), "--preset", "No such preset"}, 1, "No such preset"},
  };
  for (const auto& c : cases) {
    const ToolResult r = run(c.args);
    EXPECT_EQ(r.exitCode, c.exitCode) << c.args[2];
    EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
  }

  // A name that is not UTF-8 is never renamed, and said so.
  shoot_.file("caf\xE9.jpg", "x");
  const ToolResult latin = run({"rename", folder(), "--template", "z_{counter}", "--yes"});
  ASSERT_EQ(latin.exitCode, 0) << latin.err;
  EXPECT_NE(latin.err.find("can’t be read as text"), std::string::npos);
  EXPECT_TRUE(fs::exists(shoot_.path() / "caf\xE9.jpg"));
}

// Each row of `preview --json` as "name -> newName status".
std::vector<std::string> previewRows(const ToolRunner& tool, std::vector<std::string> args) {
  args.insert(args.begin(), "preview");
  args.push_back("--json");
  const ToolResult r = tool.run(args);
  EXPECT_EQ(r.exitCode, 0) << r.err;
  if (r.exitCode != 0) return {};
  const Json doc = Json::parse(r.out);
  std::vector<std::string> rows;
  for (const Json& item : doc["items"]) {
    rows.push_back(item["name"].get<std::string>() + " -> " + item["newName"].get<std::string>() +
                   " " + item["status"].get<std::string>());
  }
  return rows;
}

// ".", "Rome/", a link to Rome, a relative and an absolute path: one folder, with its own name
// for {folder}, one counter, one set of clashes; a file given twice counts once.
TEST(RenamePaths, OneFolderSpeltManyWaysIsOneFolder) {
  ToolRunner tool;
  TempFolder root;
  const fs::path rome = root.path() / "Rome";
  fs::create_directory(rome);
  root.file("Rome/a.txt");
  root.file("Rome/b.txt");
  fs::create_directory_symlink(rome, root.path() / "link");
  tool.workingFolder = rome;
  const std::vector<std::string> named{"a.txt -> Rome_0001.txt ok", "b.txt -> Rome_0002.txt ok"};
  EXPECT_EQ(previewRows(tool, {".", "--template", "{folder}_{counter}"}), named);
  tool.workingFolder = root.path();
  EXPECT_EQ(previewRows(tool, {"Rome/", "--template", "{folder}_{counter}"}), named);

  EXPECT_EQ(previewRows(tool, {"Rome/a.txt", (rome / "b.txt").string(), "--template", "{counter}",
                               "--counter-reset", "perFolder"}),
            (std::vector<std::string>{"a.txt -> 0001.txt ok", "b.txt -> 0002.txt ok"}));
  EXPECT_EQ(previewRows(tool, {"Rome/a.txt", "./link/b.txt", "--template", "x"}),
            (std::vector<std::string>{"a.txt -> x.txt error", "b.txt -> x.txt error"}));
  EXPECT_EQ(previewRows(tool, {"Rome/a.txt", "./Rome/a.txt", "link/a.txt", "--template", "x"}),
            (std::vector<std::string>{"a.txt -> x.txt ok"}));

  // Through the link, the files are renamed in the folder itself.
  const ToolResult renamed =
      tool.run({"rename", "link/", "--template", "{folder}_{counter}", "--yes"});
  ASSERT_EQ(renamed.exitCode, 0) << renamed.err;
  EXPECT_EQ(namesIn(rome), (std::vector<std::string>{"Rome_0001.txt", "Rome_0002.txt"}));
}

}  // namespace
}  // namespace tessane::testing
