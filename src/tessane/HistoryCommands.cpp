// tessane undo, history, revert ID and restore-originals PATH...: going back, from the history
// the application shares, and to the names the camera gave.
#include <CLI/CLI.hpp>

#include <chrono>
#include <ctime>
#include <iostream>

#include "RenameEngine/Unicode.h"
#include "RenameIO/FileUrl.h"
#include "RenameIO/OriginalName.h"
#include "TessaneRename/BatchRunner.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/RenamePlan.h"
#include "TessaneRename/Shoot.h"
#include "TextTable.h"
#include "Tool.h"

namespace tessane::cli {
namespace {

Date now() {
  return std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now());
}

std::string isoUtc(Date date) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(
      std::chrono::time_point_cast<std::chrono::seconds>(date));
  std::tm tm{};
  ::gmtime_r(&seconds, &tm);
  char buffer[32];
  std::strftime(buffer, sizeof buffer, "%Y-%m-%dT%H:%M:%SZ", &tm);
  return buffer;
}

std::string localTime(Date date) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(
      std::chrono::time_point_cast<std::chrono::seconds>(date));
  std::tm tm{};
  ::localtime_r(&seconds, &tm);
  char buffer[32];
  std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M", &tm);
  return buffer;
}

int goBack(Tool& tool, const RenameHistory::Entry& entry, bool yes) {
  // Later renames that moved the same files are gone back from first, once the user agrees.
  const std::vector<RenameHistory::Entry> chain = tool.history().goingBackChain(entry.id);
  if (chain.size() > 1 && !yes) {
    std::cout << "These files were renamed again since. Going back from "
              << entry.id.string().substr(0, 8) << " first goes back from the later renames:\n";
    TextTable table({"Id", "Date", "Files", "Folder"});
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
      const auto folders = RenameHistory::foldersOf(chain[i]);
      table.add({chain[i].id.string().substr(0, 8), localTime(chain[i].date),
                 std::to_string(chain[i].moves.size()),
                 folders.empty() ? "" : folders.front().native()});
    }
    table.print(std::cout, tool.terminal());
    const bool interactive = ::isatty(STDIN_FILENO) == 1 && tool.terminal().errIsTerminal;
    if (!interactive) {
      tool.error("Without a terminal to confirm on, give --yes to go back from them all.");
      return kExitUsage;
    }
    if (!tool.confirm("Go back from all " + std::to_string(chain.size()) + " renames?")) {
      tool.error("Nothing was renamed.");
      return kExitRefused;
    }
  }
  SystemFileRenaming& system = tool.fileSystem();
  Result<BatchRunner::Done, BatchRunner::Failure> result = [&] {
    HoldInterrupts hold;
    return BatchRunner::goBack(entry.id, now(), system, tool.history(), tool.journalFolder());
  }();
  if (!result) return reportBatchFailure(tool, result.error());
  if (!result.value().historySaved) tool.error(Messages::historyNotSaved());
  std::cout << Messages::filesBackToPrevious(
                   static_cast<std::int64_t>(result.value().batch.moves.size()))
            << "\n";
  return kExitOk;
}

int undo(Tool& tool) {
  const std::optional<RenameHistory::Entry> entry = entryToUndo(tool.history());
  if (!entry) {
    tool.error(Messages::nothingToUndo());
    return kExitRefused;
  }
  return goBack(tool, *entry, true);
}

int revert(Tool& tool, const std::string& id, bool yes) {
  // A whole id or the start of one, as `tessane history` shows them.
  Planned<RenameHistory::Entry> entry = entryToRevert(tool.history(), id);
  if (!entry) return reportProblem(tool, entry.error());
  return goBack(tool, entry.value(), yes);
}

int history(Tool& tool, bool json) {
  const std::vector<RenameHistory::Entry>& entries = tool.history().entries();
  if (json) {
    Json out = Json::array();
    for (const RenameHistory::Entry& e : entries) {
      Json moves = Json::array();
      for (const RenameHistory::Move& m : e.moves) {
        moves.push_back(
            Json{{"source", m.source.native()}, {"destination", m.destination.native()}});
      }
      out.push_back(Json{{"id", e.id.string()},
                         {"date", isoUtc(e.date)},
                         {"kind", std::string(RenameHistory::rawValue(e.kind))},
                         {"files", e.moves.size()},
                         {"isReverted", e.isReverted},
                         {"moves", std::move(moves)}});
    }
    std::cout << out.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
    return kExitOk;
  }
  if (entries.empty()) {
    std::cout << "No renames yet.\n";
    return kExitOk;
  }
  TextTable table({"Id", "Date", "Files", "Going back", "Folder"});
  for (const RenameHistory::Entry& e : entries) {
    const auto folders = RenameHistory::foldersOf(e);
    std::string folder = folders.empty() ? "" : folders.front().native();
    if (folders.size() > 1) folder += " (+" + std::to_string(folders.size() - 1) + ")";
    table.add({e.id.string().substr(0, 8), localTime(e.date), std::to_string(e.moves.size()),
               e.isReverted ? "undone" : RenameHistory::goBackLabel(e), folder},
              e.isReverted ? "2" : nullptr);
  }
  table.print(std::cout, tool.terminal());
  return kExitOk;
}

int restoreOriginals(Tool& tool, const std::vector<std::string>& paths, bool yes) {
  const bool interactive = ::isatty(STDIN_FILENO) == 1 && tool.terminal().errIsTerminal;
  if (!yes && !interactive) {
    tool.error("Without a terminal to confirm on, give --yes to rename.");
    return kExitUsage;
  }
  ShootRequest request;
  request.paths.assign(paths.begin(), paths.end());
  request.readMetadata = false;
  GatheredShoot gathered = gatherShoot(request);
  for (const ShootNotice& notice : gathered.notices)
    tool.error(Messages::of(notice));
  if (gathered.problem) {
    tool.error(Messages::of(*gathered.problem));
    return kExitRefused;
  }
  Planned<std::vector<FileMove>> planned = originalNameMoves(*gathered.shoot);
  if (!planned) return reportProblem(tool, planned.error());
  const std::vector<FileMove>& moves = planned.value();
  if (!yes) {
    TextTable table({"Name", "Original name"});
    for (const FileMove& m : moves)
      table.add({m.source.filename().native(), m.destination.filename().native()});
    table.print(std::cout, tool.terminal());
    if (!tool.confirm("Give " + std::to_string(moves.size()) + " files their original names?")) {
      tool.error("Nothing was renamed.");
      return kExitRefused;
    }
  }
  SystemFileRenaming& system = tool.fileSystem();
  Result<BatchRunner::Done, BatchRunner::Failure> result = [&] {
    HoldInterrupts hold;
    return BatchRunner::run(moves, RenameHistory::Kind::restoreOriginals, now(), system,
                            tool.history(), tool.journalFolder());
  }();
  if (!result) return reportBatchFailure(tool, result.error());
  if (!result.value().historySaved) tool.error(Messages::historyNotSaved());
  std::cout << Messages::filesBackToOriginal(static_cast<std::int64_t>(moves.size())) << "\n";
  return kExitOk;
}

}  // namespace

void addHistoryCommands(CLI::App& app, Tool& tool, int& exitCode) {
  app.add_subcommand("undo", "Put back the names the files had before the last rename")
      ->callback([&tool, &exitCode] { exitCode = undo(tool); });

  auto json = std::make_shared<bool>(false);
  CLI::App* list = app.add_subcommand("history", "The renames made, newest first");
  list->add_flag("--json", *json, "One JSON array instead of the table");
  list->callback([json, &tool, &exitCode] { exitCode = history(tool, *json); });

  auto id = std::make_shared<std::string>();
  auto throughLater = std::make_shared<bool>(false);
  CLI::App* back = app.add_subcommand("revert", "Put back the names from before a given rename");
  back->add_option("ID", *id, "The rename's id, or its first characters, from `tessane history`")
      ->required();
  back->add_flag("-y,--yes", *throughLater,
                 "Go back from later renames of the same files without asking");
  back->callback(
      [id, throughLater, &tool, &exitCode] { exitCode = revert(tool, *id, *throughLater); });

  auto paths = std::make_shared<std::vector<std::string>>();
  auto yes = std::make_shared<bool>(false);
  CLI::App* originals =
      app.add_subcommand("restore-originals", "Give files the names their cameras gave them");
  originals->add_option("PATH", *paths, "Folders (their files, one level deep) or single files")
      ->required();
  originals->add_flag("-y,--yes", *yes, "Don't ask before renaming");
  originals->callback(
      [paths, yes, &tool, &exitCode] { exitCode = restoreOriginals(tool, *paths, *yes); });
}

}  // namespace tessane::cli
