// tessane presets list|show|save|delete: the presets folder the application uses.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <optional>
#include <string>
#include <variant>

#include "RenameEngine/NameFormat.h"
#include "RenameEngine/Preset.h"
#include "RenameEngine/Rule.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/PresetStore.h"
#include "TessaneRename/Messages.h"
#include "Tool.h"

namespace tessane::cli {
namespace {

// The listing of the store, or nullopt (and the message printed) when the folder can't be read.
std::optional<PresetStore::Listing> listing(const Tool& tool) {
  Result<PresetStore::Listing> listed = tool.presets().list();
  if (!listed) {
    std::string message(PresetStore::kListingFailed);
    message.append(" ").append(Messages::of(listed.error()));
    tool.error(message);
    return std::nullopt;
  }
  return std::move(listed).value();
}

// What NAME stands for (see PresetStore::find), or nullopt after the problem was reported.
std::optional<PresetStore::Found> find(const Tool& tool, const std::string& name) {
  Result<PresetStore::Found, PresetStore::LookupError> found = tool.presets().find(name);
  if (found) return std::move(found).value();
  if (found.error().kind == PresetStore::LookupError::Kind::listingFailed) {
    std::string message(PresetStore::kListingFailed);
    tool.error(message.append(" ").append(Messages::of(found.error().listing)));
  } else {
    tool.error("There’s no preset named " + inQuotes(name) + ".");
  }
  return std::nullopt;
}

int listPresets(const Tool& tool) {
  const std::optional<PresetStore::Listing> listed = listing(tool);
  if (!listed) return kExitRefused;
  for (const PresetStore::Entry& entry : listed->presets)
    std::printf("%s\n", unicode::toDisplayable(entry.preset.name).c_str());
  std::fflush(stdout);
  for (const PresetStore::Failure& failure : listed->failures)
    tool.error(Messages::of(failure));
  return kExitOk;
}

int showPreset(const Tool& tool, const std::string& name) {
  const std::optional<PresetStore::Found> found = find(tool, name);
  if (!found) return kExitRefused;
  if (!found->preset) {
    tool.error(Messages::of(*found->failure));
    return kExitRefused;
  }
  const std::string text = encodePreset(*found->preset);
  std::fwrite(text.data(), 1, text.size(), stdout);
  if (text.empty() || text.back() != '\n') std::fputc('\n', stdout);
  return kExitOk;
}

struct SaveOptions {
  std::string name;
  std::string templateText;
  std::optional<std::int64_t> start, step, digits;
  std::string reset = "never";
};

int savePreset(Tool& tool, const SaveOptions& options) {
  if (!Template::parse(options.templateText).isValid) {
    tool.error("A “{” has no closing “}”");
    return kExitRefused;
  }
  const Preferences preferences = tool.preferences();
  NameFormat format;
  format.templateText = options.templateText;
  format.counter.start = options.start.value_or(preferences.counterStart());
  format.counter.step = options.step.value_or(1);
  format.counter.padding = options.digits.value_or(preferences.counterDigits());
  format.counter.reset = counterResetFromRawValue(options.reset).value_or(CounterReset::never);
  Rule rule;
  rule.action.value = RuleAction::Format{std::move(format)};
  Preset preset;
  preset.name = options.name;
  preset.stack.rules.push_back(std::move(rule));

  const Result<std::filesystem::path> saved = tool.presets().save(preset);
  if (!saved) {
    tool.error(Messages::of(saved.error()));
    return kExitRefused;
  }
  std::printf("Saved %s as %s\n", inQuotes(options.name).c_str(),
              unicode::toDisplayable(saved.value().native()).c_str());
  return kExitOk;
}

int deletePreset(const Tool& tool, const std::string& name) {
  const std::optional<PresetStore::Found> found = find(tool, name);
  if (!found) return kExitRefused;
  // Only the presets folder's own files are deleted, never a file named by its path elsewhere.
  if (found->file.parent_path() != tool.presets().directory()) {
    tool.error("There’s no preset named " + inQuotes(name) + ".");
    return kExitRefused;
  }
  if (const std::optional<IOError> failed = tool.presets().remove(found->file)) {
    tool.error(Messages::of(*failed));
    return kExitRefused;
  }
  std::printf("Deleted %s (%s)\n", inQuotes(found->preset ? found->preset->name : name).c_str(),
              unicode::toDisplayable(found->file.filename().native()).c_str());
  return kExitOk;
}

}  // namespace

void addPresetCommands(CLI::App& app, Tool& tool, int& exitCode) {
  auto* presets = app.add_subcommand("presets", "List, show, save and delete presets");
  presets->require_subcommand(1);

  presets->add_subcommand("list", "The presets by name, then the files that couldn’t be read")
      ->callback([&tool, &exitCode] { exitCode = listPresets(tool); });

  auto* show = presets->add_subcommand("show", "Print a preset’s file (JSON)");
  auto showName = std::make_shared<std::string>();
  show->add_option("NAME", *showName, "A preset’s name, or a preset file")->required();
  show->callback([&tool, &exitCode, showName] { exitCode = showPreset(tool, *showName); });

  auto* save = presets->add_subcommand("save", "Save a name template as a preset");
  auto options = std::make_shared<SaveOptions>();
  save->add_option("NAME", options->name, "The preset’s name")->required();
  save->add_option("--template", options->templateText, "The name template")->required();
  save->add_option("--counter-start", options->start, "The counter’s first number");
  save->add_option("--counter-step", options->step, "What the counter adds each time");
  save->add_option("--counter-digits", options->digits, "The counter’s minimum digits")
      ->check(CLI::Range(0, 20));
  save->add_option("--counter-reset", options->reset, "When the counter starts again")
      ->check(CLI::IsMember({"never", "perFolder", "perDay"}));
  save->callback([&tool, &exitCode, options] { exitCode = savePreset(tool, *options); });

  auto* remove = presets->add_subcommand("delete", "Delete a preset’s file");
  auto removeName = std::make_shared<std::string>();
  remove->add_option("NAME", *removeName, "The preset’s name")->required();
  remove->callback([&tool, &exitCode, removeName] { exitCode = deletePreset(tool, *removeName); });
}

}  // namespace tessane::cli
