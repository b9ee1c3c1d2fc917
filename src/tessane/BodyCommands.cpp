// tessane bodies list|set|export|import|sync: the camera-body table the application keeps, with
// each camera's tag and clock offset.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "MediaMetadata/MetadataProvider.h"
#include "RenameEngine/CameraBodies.h"
#include "RenameEngine/FileKind.h"
#include "RenameEngine/RuleStack.h"
#include "RenameEngine/Unicode.h"
#include "TessaneRename/BodyTable.h"
#include "TessaneRename/Messages.h"
#include "Tool.h"

namespace tessane::cli {
namespace {

std::string padded(std::string_view text, std::size_t width) {
  std::string out(text);
  const std::size_t shown = unicode::displayWidth(text);
  if (shown < width) out.append(width - shown, ' ');
  return out;
}

// The table's rows, one per body: keys are kept as typed but name the same body whatever their
// case and surrounding blanks.
struct BodyRow {
  std::string key;  // as first typed
  std::string tag;
  double offset = 0;
};

std::map<std::string, BodyRow> rowsOf(const CameraBodies& bodies) {
  std::map<std::string, BodyRow> rows;
  for (const auto& [key, tag] : bodies.tags) {
    BodyRow& row = rows[CameraBodies::normalizedKey(key)];
    if (row.key.empty()) row.key = key;
    row.tag = tag;
  }
  for (const auto& [key, offset] : bodies.clockOffsets) {
    BodyRow& row = rows[CameraBodies::normalizedKey(key)];
    if (row.key.empty()) row.key = key;
    row.offset = offset;
  }
  return rows;
}

int listBodies(Tool& tool) {
  const std::map<std::string, BodyRow> rows = rowsOf(tool.bodies().bodies());
  if (rows.empty()) {
    std::printf("No camera bodies yet. Add one with: tessane bodies set KEY --tag TAG\n");
    return kExitOk;
  }
  std::size_t keyWidth = 4, tagWidth = 3;
  for (const auto& [normalized, row] : rows) {
    keyWidth = std::max(keyWidth, unicode::displayWidth(row.key));
    tagWidth = std::max(tagWidth, unicode::displayWidth(row.tag));
  }
  std::printf("%s  %s  %s\n", padded("Body", keyWidth).c_str(), padded("Tag", tagWidth).c_str(),
              "Offset");
  for (const auto& [normalized, row] : rows) {
    std::printf("%s  %s  %s\n", padded(row.key, keyWidth).c_str(),
                padded(row.tag, tagWidth).c_str(), formatClockOffset(row.offset).c_str());
  }
  return kExitOk;
}

struct SetOptions {
  std::string key;
  std::optional<std::string> tag;
  std::optional<std::string> offset;
};

int setBody(Tool& tool, const SetOptions& options) {
  if (!options.tag && !options.offset) {
    tool.error("bodies set: give --tag, --offset or both.");
    return kExitUsage;
  }
  if (CameraBodies::normalizedKey(options.key).empty()) {
    tool.error("A camera body needs a serial number or a model name.");
    return kExitRefused;
  }
  // Both are checked first, so that a refused value leaves the other alone too.
  if (options.offset && !parseClockOffset(*options.offset)) {
    tool.error(inQuotes(*options.offset) +
               " isn’t a clock offset: write hours, minutes and seconds, as in +0:02:00.");
    return kExitRefused;
  }
  if (options.tag && !CameraBodies::isUsableTag(*options.tag)) {
    tool.error(inQuotes(unicode::toDisplayable(*options.tag)) +
               " can’t be a tag: names can’t hold “/”, “:” or control characters.");
    return kExitRefused;
  }
  // Keys and tags are stored trimmed, as the engine compares and uses them.
  const std::string key = CameraBodies::trimmed(options.key);
  BodyTable& table = tool.bodies();
  if (options.offset) table.setOffset(key, *options.offset);
  if (options.tag) table.setTag(key, CameraBodies::trimmed(*options.tag));

  const std::map<std::string, BodyRow> rows = rowsOf(table.bodies());
  const auto row = rows.find(CameraBodies::normalizedKey(key));
  const BodyRow shown = row == rows.end() ? BodyRow{} : row->second;
  std::printf("%s: tag %s, clock %s\n", unicode::toDisplayable(key).c_str(),
              shown.tag.empty() ? "none" : inQuotes(shown.tag).c_str(),
              formatClockOffset(shown.offset).c_str());
  return kExitOk;
}

int exportBodies(Tool& tool, const std::string& target) {
  std::filesystem::path file = target.empty() ? std::filesystem::path(BodyTable::kExportName)
                                              : std::filesystem::path(target);
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) file /= BodyTable::kExportName;
  if (const std::optional<IOError> failed = tool.bodies().exportTo(file)) {
    tool.error(Messages::of(*failed));
    return kExitRefused;
  }
  std::printf("Exported the camera bodies to %s\n", unicode::toDisplayable(file.native()).c_str());
  return kExitOk;
}

int importBodies(Tool& tool, const std::string& source) {
  if (!tool.bodies().importFrom(source)) {
    tool.error(Messages::notABodyTable(source));
    return kExitRefused;
  }
  std::printf("Imported %s. Imported rows are added; for the same body the imported one wins.\n",
              inQuotes(std::filesystem::path(source).filename().native()).c_str());
  return kExitOk;
}

int syncBodies(Tool& tool, const std::string& rightFile, const std::string& wrongFile,
               const std::string& timeZone) {
  for (const std::string& file : {rightFile, wrongFile}) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
      tool.error(unicode::toDisplayable(file) + ": " +
                 (error ? error.message() : std::generic_category().message(ENOENT)));
      return kExitRefused;
    }
  }
  // A video's time is UTC and a camera's is its clock's reading: they meet in the zone given.
  const std::optional<NamingContext> naming =
      timeZone.empty() ? NamingContext::systemDefault() : NamingContext::inZone(timeZone);
  if (!naming) {
    tool.error("“" + timeZone + "” isn’t a time zone (try Europe/Rome or UTC).");
    return kExitRefused;
  }
  const MetadataProvider provider(*naming->zone);
  const auto read = [&provider](const std::string& file) {
    const std::filesystem::path path(file);
    return provider.metadata(path, fileKindOf(path.filename().native()));
  };
  const MetadataMap right = read(rightFile);
  const MetadataMap wrong = read(wrongFile);
  const auto name = [](const std::string& file) {
    return inQuotes(std::filesystem::path(file).filename().native());
  };
  if (!CameraBodies::bodyKey(wrong)) {
    tool.error(name(wrongFile) +
               " has no camera serial number or model, so its clock can’t be lined up.");
    return kExitRefused;
  }
  if (CameraBodies::sameBody(right, wrong)) {
    tool.error(name(rightFile) + " and " + name(wrongFile) +
               " come from the same camera: choose a photo from each of two cameras.");
    return kExitRefused;
  }
  for (const auto& [file, metadata] :
       {std::pair{&rightFile, &right}, std::pair{&wrongFile, &wrong}}) {
    if (metadata->find(MetadataKey::date) == nullptr) {
      tool.error(name(*file) + " has no capture time, so the clocks can’t be lined up.");
      return kExitRefused;
    }
  }
  const std::optional<ClockSyncResult> result = tool.bodies().syncClocks(right, wrong);
  if (!result) {
    tool.error("The clocks couldn’t be lined up.");
    return kExitRefused;
  }
  std::printf("%s\n%s\n", result->line.c_str(), std::string(ClockSyncResult::kNote).c_str());
  return kExitOk;
}

}  // namespace

void addBodyCommands(CLI::App& app, Tool& tool, int& exitCode) {
  auto* bodies = app.add_subcommand(
      "bodies", "The camera bodies: the tag each camera puts in names and its clock offset");
  bodies->require_subcommand(1);

  bodies->add_subcommand("list", "Each body’s key, tag and clock offset")
      ->callback([&tool, &exitCode] { exitCode = listBodies(tool); });

  auto* set = bodies->add_subcommand("set", "Set a body’s tag or clock offset");
  auto setOptions = std::make_shared<SetOptions>();
  set->add_option("KEY", setOptions->key, "The body: its serial number, or its model")->required();
  set->add_option("--tag", setOptions->tag, "The tag {body} puts in names (empty: none)");
  set->add_option("--offset", setOptions->offset,
                  "Added to the camera’s times, as +0:02:00 for a clock 2 minutes behind");
  set->callback([&tool, &exitCode, setOptions] { exitCode = setBody(tool, *setOptions); });

  auto* exporting = bodies->add_subcommand("export", "Write the table to a JSON file");
  auto exportFile = std::make_shared<std::string>();
  exporting->add_option("FILE", *exportFile,
                        "The file (default: “Tessane camera bodies.json” here)");
  exporting->callback(
      [&tool, &exitCode, exportFile] { exitCode = exportBodies(tool, *exportFile); });

  auto* importing = bodies->add_subcommand("import", "Merge a JSON file into the table");
  auto importFile = std::make_shared<std::string>();
  importing->add_option("FILE", *importFile, "A table exported before")->required();
  importing->callback(
      [&tool, &exitCode, importFile] { exitCode = importBodies(tool, *importFile); });

  auto* sync = bodies->add_subcommand(
      "sync", "Line up a camera’s clock from two photos taken at the same instant");
  auto files = std::make_shared<std::array<std::string, 3>>();  // right, wrong, time zone
  sync->add_option("RIGHT_FILE", (*files)[0], "A photo from the camera with the right time")
      ->required();
  sync->add_option("WRONG_FILE", (*files)[1], "A photo from the camera whose clock is off")
      ->required();
  sync->add_option("--time-zone", (*files)[2],
                   "Where the cameras’ clocks are read (default: the system’s)");
  sync->callback([&tool, &exitCode, files] {
    exitCode = syncBodies(tool, (*files)[0], (*files)[1], (*files)[2]);
  });
}

}  // namespace tessane::cli
