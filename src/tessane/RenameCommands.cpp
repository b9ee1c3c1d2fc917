// tessane preview PATH... and tessane rename PATH...: plan a batch with the rules given (a
// template, a preset, or both) and the settings for everything not given; show the plan, or
// carry it out through the safe renamer and record it in the history.
#include <CLI/CLI.hpp>

#include <unicode/timezone.h>
#include <chrono>
#include <cstdio>
#include <iostream>

#include "RenameEngine/Unicode.h"
#include "RenameIO/LinuxFileRenaming.h"
#include "RenameIO/OriginalName.h"
#include "Shoot.h"
#include "TessaneRename/BatchRunner.h"
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

struct Plan {
  Shoot shoot;
  RenamePreview preview;
  NamingContext naming;
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

// The rules: a format rule from --template on top of the preset's rules.
std::optional<RuleStack> stackFor(const PlanOptions& o, Tool& tool, const Preferences& prefs) {
  RuleStack stack;
  if (!o.preset.empty()) {
    std::filesystem::path file(o.preset);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
      const Result<PresetStore::Listing> listing = tool.presets().list();
      if (!listing) {
        tool.error(PresetStore::kListingFailed);
        return std::nullopt;
      }
      file.clear();
      for (const auto& entry : listing.value().presets) {
        if (entry.preset.name == o.preset) file = entry.file;
      }
      for (const auto& entry : listing.value().presets) {
        if (file.empty() && unicode::foldCase(entry.preset.name) == unicode::foldCase(o.preset)) {
          file = entry.file;
        }
      }
      if (file.empty()) {
        tool.error("There’s no preset called “" + o.preset + "”.");
        return std::nullopt;
      }
    }
    auto read = PresetStore::read(file);
    if (auto* problem = std::get_if<PresetError>(&read)) {
      tool.error("“" + unicode::toDisplayable(file.filename().native()) +
                 "”: " + problem->message());
      return std::nullopt;
    }
    if (auto* problem = std::get_if<IOError>(&read)) {
      tool.error(problem->message());
      return std::nullopt;
    }
    stack = std::get<Preset>(std::move(read)).stack;
  }
  if (!o.templateText.empty()) {
    Counter counter;
    counter.start = o.startOption->count() > 0 ? o.counterStart : prefs.counterStart();
    counter.step = o.counterStep;
    counter.padding = o.digitsOption->count() > 0 ? o.counterDigits : prefs.counterDigits();
    counter.reset = counterResetFromRawValue(o.counterReset).value_or(CounterReset::never);
    Rule format;
    format.action = {RuleAction::Format{NameFormat{o.templateText, counter}}};
    stack.rules.insert(stack.rules.begin(), format);
  }
  return stack;
}

std::optional<Plan> plan(const PlanOptions& o, Tool& tool) {
  if (o.templateText.empty() && o.preset.empty()) {
    tool.error("Give the new names with --template or --preset.");
    return std::nullopt;
  }
  const Preferences prefs = tool.preferences();
  std::optional<RuleStack> stack = stackFor(o, tool, prefs);
  if (!stack) return std::nullopt;

  Plan p;
  const std::string missing =
      o.missingOption->count() > 0 ? o.missingText : tool.bodies().missingText();
  if (o.timeZone.empty()) {
    p.naming = NamingContext::systemDefault();
    p.naming.missingText = missing;
  } else if (auto zone = NamingContext::inZone(o.timeZone, missing)) {
    p.naming = std::move(*zone);
  } else {
    tool.error("“" + o.timeZone + "” isn’t a time zone (try Europe/Rome or UTC).");
    return std::nullopt;
  }

  const Preferences& settings = prefs;
  std::set<TwinKind> kinds = settings.twinKinds();
  if (o.twinKindsOption->count() > 0) {
    kinds.clear();
    for (const std::string& k : o.twinKinds)
      kinds.insert(*twinKindFromRawValue(k));
  }
  TwinOptions twins =
      TwinOptions::forKinds(kinds.count(TwinKind::images) > 0, kinds.count(TwinKind::video) > 0,
                            kinds.count(TwinKind::sidecars) > 0);
  twins.isEnabled = !o.noTwins;

  ShootRequest request;
  request.paths = o.paths;
  request.zone = p.naming.zone.get();
  request.bodies = &tool.bodies().bodies();
  request.twins = &twins;
  const std::set<TemplateVariable> variables = variablesUsed(*stack);
  request.scope = MetadataScope::forVariables(variables);
  request.readOriginalNames = variables.count(TemplateVariable::original) > 0;
  std::optional<Shoot> shoot = gatherShoot(request, tool);
  if (!shoot) return std::nullopt;
  p.shoot = std::move(*shoot);

  PreviewRequest preview;
  preview.subjects = p.shoot.subjects;
  preview.stack = std::move(*stack);
  preview.twins = twins;
  preview.order = !o.order.empty() ? *batchOrderFromRawValue(o.order)
                                   : prefs.batchOrder().value_or(BatchOrder::captureTime);
  preview.duplicates =
      !o.duplicates.empty() ? *duplicatePolicyFromRawValue(o.duplicates) : prefs.duplicatePolicy();
  preview.folders = p.shoot.folders;
  preview.naming = p.naming;
  p.preview = buildPreview(preview);
  return p;
}

std::vector<std::string> messagesOf(const PlannedRename& row, std::string_view missingText) {
  std::vector<std::string> out;
  for (const NameError& e : row.errors)
    out.push_back(e.message());
  for (const PreviewWarning& w : row.warnings)
    out.push_back(w.message(missingText));
  return out;
}

void printJson(const Plan& p) {
  Json items = Json::array();
  std::size_t changed = 0;
  std::size_t errors = 0;
  for (const PlannedRename& row : p.preview.items) {
    Json errorTexts = Json::array();
    for (const NameError& e : row.errors)
      errorTexts.push_back(e.message());
    Json warningTexts = Json::array();
    for (const PreviewWarning& w : row.warnings)
      warningTexts.push_back(w.message(p.naming.missingText));
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

void printTable(const Plan& p, const Terminal& terminal) {
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
    const std::vector<std::string> messages = messagesOf(row, p.naming.missingText);
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
  std::optional<Plan> p = plan(o, tool);
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
  std::optional<Plan> p = plan(o, tool);
  if (!p) return kExitRefused;
  if (p->preview.hasErrors()) {
    printTable(*p, tool.terminal());
    tool.error("Fix the errors before renaming.");
    return kExitRefused;
  }
  // The moves name absolute paths in the resolved folders the preview compared.
  std::vector<FileMove> moves;
  for (std::size_t r : p->preview.changedFiles) {
    const PlannedRename& row = p->preview.items[r];
    const RenameSubject& s = p->shoot.subjects[row.subjectIndex];
    moves.push_back(FileMove{s.folder / s.name, s.folder / row.newName.fullName()});
  }
  if (moves.empty()) {
    tool.error("There’s nothing to rename.");
    return kExitRefused;
  }
  if (!o.yes) {
    printTable(*p, tool.terminal());
    if (!tool.confirm("Rename " + std::to_string(moves.size()) + " files?")) {
      tool.error("Nothing was renamed.");
      return kExitRefused;
    }
  }

  const Preferences prefs = tool.preferences();
  const OriginalNames keepOriginals = !o.originalNames.empty()
                                          ? *originalNamesFromRawValue(o.originalNames)
                                          : prefs.originalNames();
  LinuxFileRenaming system;
  Result<AppliedBatch, SafeRenameError> result = [&] {
    HoldInterrupts hold;
    return BatchRunner::run(
        moves, RenameHistory::Kind::rename,
        std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now()),
        system, tool.history(), tool.journalFolder());
  }();
  if (!result) return reportBatchFailure(tool, result.error());
  // Each file keeps the name it had before its first rename, where the setting allows.
  if (keepOriginals != OriginalNames::never) {
    OriginalName::rememberAll(moves, keepOriginals == OriginalNames::macDisksOnly);
  }
  std::cout << moves.size() << " files renamed\n";
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
