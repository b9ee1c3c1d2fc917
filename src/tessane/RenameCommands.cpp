// tessane preview PATH... and tessane rename PATH...: plan a batch with the rules given (a
// template, a preset, or both) and the settings for everything not given; show the plan, or
// carry it out through the safe renamer and record it in the history.
#include <CLI/CLI.hpp>

#include <unicode/timezone.h>
#include <chrono>
#include <cstdio>
#include <iostream>

#include "RenameEngine/Unicode.h"
#include "TessaneRename/BatchRunner.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/RenamePlan.h"
#include "TextTable.h"
#include "Tool.h"

namespace tessane::cli {
namespace {

struct PlanOptions {
  std::vector<std::string> paths;
  std::string templateText;
  std::string preset;
  std::int64_t counterStart = 1;
  std::int64_t counterStep = 1;
  std::int64_t counterDigits = 4;
  std::string counterReset = "never";
  std::string order;
  std::string duplicates;
  bool noTwins = false;
  std::vector<std::string> twinKinds;
  std::string timeZone;
  std::string missingText;
  std::string originalNames;
  bool json = false;
  bool yes = false;
  // Which options were given; the rest come from the settings.
  CLI::Option* startOption = nullptr;
  CLI::Option* digitsOption = nullptr;
  CLI::Option* missingOption = nullptr;
  CLI::Option* twinKindsOption = nullptr;
};

void addPlanOptions(CLI::App& command, PlanOptions& o) {
  command.add_option("PATH", o.paths, "Folders (their files, one level deep) or single files")
      ->required();
  command.add_option("--template", o.templateText,
                     "The new name, e.g. \"{date:yyyy-MM-dd}_{body}_{counter}\"");
  command.add_option("--preset", o.preset, "A preset of yours, by name, or a preset file");
  o.startOption = command.add_option("--counter-start", o.counterStart, "First counter value");
  command.add_option("--counter-step", o.counterStep, "Added for each following file");
  o.digitsOption =
      command.add_option("--counter-digits", o.counterDigits, "Counter width in digits");
  command.add_option("--counter-reset", o.counterReset, "When the counter starts again")
      ->check(CLI::IsMember({"never", "perFolder", "perDay"}));
  command.add_option("--order", o.order, "The order files are numbered in")
      ->check(CLI::IsMember({"captureTime", "asGiven", "name"}));
  command.add_option("--duplicates", o.duplicates, "Two files that would get one name")
      ->check(CLI::IsMember({"markError", "addSuffix"}));
  command.add_flag("--no-twins", o.noTwins, "Name every file on its own");
  o.twinKindsOption =
      command.add_option("--twin-kinds", o.twinKinds, "Which files follow the RAW's name")
          ->delimiter(',')
          ->check(CLI::IsMember({"images", "video", "sidecars"}));
  command.add_option("--time-zone", o.timeZone,
                     "Where dates are read and written (default: the system's)");
  o.missingOption =
      command.add_option("--missing-text", o.missingText, "Put in place of data a file lacks");
  command
      .add_option("--original-names", o.originalNames, "When the camera's name is kept in the file")
      ->check(CLI::IsMember({"always", "macDisksOnly", "never"}));
}

// The options as the workflow takes them; what wasn't given comes from the settings.
RenameOptions optionsOf(const PlanOptions& o) {
  RenameOptions r;
  r.templateText = o.templateText;
  r.preset = o.preset;
  if (o.startOption->count() > 0) r.counterStart = o.counterStart;
  r.counterStep = o.counterStep;
  if (o.digitsOption->count() > 0) r.counterDigits = o.counterDigits;
  r.counterReset = counterResetFromRawValue(o.counterReset);
  if (!o.order.empty()) r.order = batchOrderFromRawValue(o.order);
  if (!o.duplicates.empty()) r.duplicates = duplicatePolicyFromRawValue(o.duplicates);
  r.keepTwinsTogether = !o.noTwins;
  if (o.twinKindsOption->count() > 0) {
    std::set<TwinKind> kinds;
    for (const std::string& k : o.twinKinds)
      kinds.insert(*twinKindFromRawValue(k));
    r.twinKinds = std::move(kinds);
  }
  r.timeZone = o.timeZone;
  if (o.missingOption->count() > 0) r.missingText = o.missingText;
  if (!o.originalNames.empty()) r.originalNames = originalNamesFromRawValue(o.originalNames);
  return r;
}

std::optional<RenamePlan> plan(const PlanOptions& o, Tool& tool) {
  const RenameOptions options = optionsOf(o);
  Planned<RenameSettings> settings = resolveSettings(options, tool.preferences());
  if (!settings) {
    reportProblem(tool, settings.error());
    return std::nullopt;
  }
  Planned<RuleStack> stack = stackFor(options, settings.value(), tool.presets());
  if (!stack) {
    reportProblem(tool, stack.error());
    return std::nullopt;
  }
  PlanRequest request;
  request.paths.assign(o.paths.begin(), o.paths.end());
  request.stack = std::move(stack.value());
  request.settings = std::move(settings.value());
  request.bodies = &tool.bodies().bodies();

  InterruptWatch watch;
  request.stop = watch.token();
  std::size_t shown = 0;
  request.progress = [&](std::size_t done, std::size_t total) {
    if (total < 200 || !tool.terminal().errIsTerminal) return;
    if (done % 100 == 0 || done == total) {
      std::fprintf(stderr, "\rReading metadata: %zu of %zu", done, total);
      shown = done;
    }
  };
  Planned<RenamePlan> planned = planRename(request);
  if (shown > 0) std::fputs("\r\x1b[K", stderr);
  if (!planned) {
    reportProblem(tool, planned.error());
    return std::nullopt;
  }
  for (const ShootNotice& notice : planned.value().notices)
    tool.error(Messages::of(notice));
  return std::move(planned.value());
}

std::vector<std::string> messagesOf(const PlannedRename& row, std::string_view missingText) {
  std::vector<std::string> out;
  for (const NameError& e : row.errors)
    out.push_back(Messages::of(e));
  for (const PreviewWarning& w : row.warnings)
    out.push_back(Messages::of(w, missingText));
  return out;
}

void printJson(const RenamePlan& p) {
  Json items = Json::array();
  std::size_t changed = 0;
  std::size_t errors = 0;
  for (const PlannedRename& row : p.preview.items) {
    Json errorTexts = Json::array();
    for (const NameError& e : row.errors)
      errorTexts.push_back(Messages::of(e));
    Json warningTexts = Json::array();
    for (const PreviewWarning& w : row.warnings)
      warningTexts.push_back(Messages::of(w, p.settings.naming.missingText));
    items.push_back(Json{{"path", p.shoot.paths[row.subjectIndex].native()},
                         {"name", p.shoot.subjects[row.subjectIndex].name},
                         {"newName", row.newName.fullName()},
                         {"status", std::string(caseName(row.status))},
                         {"errors", std::move(errorTexts)},
                         {"warnings", std::move(warningTexts)}});
    changed += row.changes ? 1u : 0u;
    errors += row.errors.empty() ? 0u : 1u;
  }
  const Json document{{"items", std::move(items)}, {"changed", changed}, {"errors", errors}};
  std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

void printTable(const RenamePlan& p, const Terminal& terminal) {
  TextTable table({"Name", "New name", "Status", "Message"});
  std::size_t toRename = 0, unchanged = 0, warnings = 0, errors = 0;
  for (const PlannedRename& row : p.preview.items) {
    const char* color = "2";
    switch (row.status) {
      case PreviewStatus::error:
        color = "31";
        ++errors;
        break;
      case PreviewStatus::warning:
        color = "33";
        ++warnings;
        break;
      case PreviewStatus::ok:
        color = "32";
        break;
      case PreviewStatus::unchanged:
        ++unchanged;
        break;
    }
    if (row.changes && row.errors.empty()) ++toRename;
    const std::vector<std::string> messages = messagesOf(row, p.settings.naming.missingText);
    std::string message = messages.empty() ? "" : messages.front();
    if (messages.size() > 1) message += " (+" + std::to_string(messages.size() - 1) + ")";
    table.add({p.shoot.subjects[row.subjectIndex].name, row.changes ? row.newName.fullName() : "",
               std::string(caseName(row.status)), message},
              color);
  }
  table.print(std::cout, terminal);
  std::cout << "\n"
            << p.preview.items.size() << " files: " << toRename << " to rename, " << unchanged
            << " unchanged, " << warnings << " with warnings, " << errors << " with errors\n";
}

int runPreview(const PlanOptions& o, Tool& tool) {
  std::optional<RenamePlan> p = plan(o, tool);
  if (!p) return kExitRefused;
  if (o.json) {
    printJson(*p);
  } else {
    printTable(*p, tool.terminal());
  }
  return kExitOk;
}

int runRename(const PlanOptions& o, Tool& tool) {
  const bool interactive = ::isatty(STDIN_FILENO) == 1 && tool.terminal().errIsTerminal;
  if (!o.yes && !interactive) {
    tool.error("Without a terminal to confirm on, give --yes to rename.");
    return kExitUsage;
  }
  std::optional<RenamePlan> p = plan(o, tool);
  if (!p) return kExitRefused;
  if (p->preview.hasErrors()) {
    printTable(*p, tool.terminal());
    tool.error(Messages::fixErrorsFirst());
    return kExitRefused;
  }
  const std::vector<FileMove> moves = movesOf(*p);
  if (moves.empty()) {
    tool.error(Messages::nothingToRename());
    return kExitRefused;
  }
  if (!o.yes) {
    printTable(*p, tool.terminal());
    if (!tool.confirm("Rename " + std::to_string(moves.size()) + " files?")) {
      tool.error("Nothing was renamed.");
      return kExitRefused;
    }
  }

  SystemFileRenaming& system = tool.fileSystem();
  Result<BatchRunner::Done, BatchRunner::Failure> result = [&] {
    HoldInterrupts hold;
    return BatchRunner::run(
        moves, RenameHistory::Kind::rename,
        std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now()),
        system, tool.history(), tool.journalFolder(), p->settings.originalNames);
  }();
  if (!result) return reportBatchFailure(tool, result.error());
  if (!result.value().historySaved) tool.error(Messages::historyNotSaved());
  std::cout << Messages::filesRenamed(static_cast<std::int64_t>(moves.size())) << "\n";
  return kExitOk;
}

}  // namespace

void addRenameCommands(CLI::App& app, Tool& tool, int& exitCode) {
  auto previewOptions = std::make_shared<PlanOptions>();
  CLI::App* preview = app.add_subcommand("preview", "Show the new names, with errors and warnings");
  addPlanOptions(*preview, *previewOptions);
  preview->add_flag("--json", previewOptions->json, "One JSON object instead of the table");
  preview->callback(
      [previewOptions, &tool, &exitCode] { exitCode = runPreview(*previewOptions, tool); });

  auto renameOptions = std::make_shared<PlanOptions>();
  CLI::App* rename = app.add_subcommand("rename", "Rename the files, after asking (or with --yes)");
  addPlanOptions(*rename, *renameOptions);
  rename->add_flag("-y,--yes", renameOptions->yes, "Don't ask before renaming");
  rename->callback(
      [renameOptions, &tool, &exitCode] { exitCode = runRename(*renameOptions, tool); });
}

}  // namespace tessane::cli
