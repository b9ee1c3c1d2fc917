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
#include "Tool.h"

namespace tessane::cli {
namespace {

// The listing of the store, or nullopt (and the message printed) when the folder can't be read.
std::optional<PresetStore::Listing> listing(const Tool& tool) {
  Result<PresetStore::Listing> listed = tool.presets().list();
  if (!listed) {
    std::string message(PresetStore::kListingFailed);
    message.append(" ").append(listed.error().message());
    tool.error(message);
    return std::nullopt;
  }
  return std::move(listed).value();
}

// What NAME stands for: a preset of the store by its name (exactly, else ignoring case), a file
// of the store that doesn't decode by its file name, or a preset file given by its path.
struct Found {
  std::optional<Preset> preset;
  std::filesystem::path file;
  std::string failure;  // the message when the file doesn't decode or can't be read
};

std::optional<Found> find(const PresetStore::Listing& listed, const std::string& name) {
  for (const PresetStore::Entry& entry : listed.presets) {
    if (entry.preset.name == name) return Found{entry.preset, entry.file, {}};
  }
  const std::string folded = unicode::foldCase(name);
  for (const PresetStore::Entry& entry : listed.presets) {
    if (unicode::foldCase(entry.preset.name) == folded) return Found{entry.preset, entry.file, {}};
  }
  for (const PresetStore::Failure& failure : listed.failures) {
    if (failure.file.stem() == name || failure.file.filename() == name) {
      return Found{std::nullopt, failure.file, failure.message()};
    }
  }
  return std::nullopt;
}

std::string noPreset(const std::string& name) {
  return "There’s no preset named " + inQuotes(name) + ".";
}

int listPresets(const Tool& tool) {
  const std::optional<PresetStore::Listing> listed = listing(tool);
  if (!listed) return kExitRefused;
  for (const PresetStore::Entry& entry : listed->presets)
    std::printf("%s\n", unicode::toDisplayable(entry.preset.name).c_str());
  std::fflush(stdout);
  for (const PresetStore::Failure& failure : listed->failures)
    tool.error(failure.message());
  return kExitOk;
}

int showPreset(const Tool& tool, const std::string& name) {
  const std::optional<PresetStore::Listing> listed = listing(tool);
  if (!listed) return kExitRefused;
  std::optional<Found> found = find(*listed, name);
  if (!found) {
    std::error_code error;
    if (!std::filesystem::exists(name, error)) {
      tool.error(noPreset(name));
      return kExitRefused;
    }
    auto read = PresetStore::read(name);
    if (const Preset* preset = std::get_if<Preset>(&read)) {
      found = Found{*preset, name, {}};
    } else {
      std::string message = inQuotes(std::filesystem::path(name).filename().native()) + ": ";
      if (const auto* presetError = std::get_if<PresetError>(&read)) {
        message.append(presetError->message());
      } else {
        message.append(std::get<IOError>(read).message());
      }
      tool.error(message);
      return kExitRefused;
    }
  }
  if (!found->preset) {
    tool.error(found->failure);
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
    tool.error(saved.error().message());
    return kExitRefused;
  }
  std::printf("Saved %s as %s\n", inQuotes(options.name).c_str(),
              unicode::toDisplayable(saved.value().native()).c_str());
  return kExitOk;
}

int deletePreset(const Tool& tool, const std::string& name) {
  const std::optional<PresetStore::Listing> listed = listing(tool);
  if (!listed) return kExitRefused;
  const std::optional<Found> found = find(*listed, name);
  if (!found) {
    tool.error(noPreset(name));
    return kExitRefused;
  }
  if (const std::optional<IOError> failed = tool.presets().remove(found->file)) {
    tool.error(failed->message());
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
