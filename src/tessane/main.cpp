// tessane: the command-line tool over the name engine, for scripting renames and for machines
// without a display. It shares the application's settings, history, presets and camera bodies.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

#include "TessaneRename/Messages.h"
#include "Tool.h"

using namespace tessane;

int main(int argc, char** argv) {
  cli::Tool tool;
  // A batch that a killed process left half done is put back before anything else happens.
  if (const RecoveryReport report = tool.app().start(); !report.empty()) {
    std::fprintf(stderr, "tessane: %s", Messages::of(report).c_str());
  }
  int exitCode = cli::kExitOk;
  CLI::App app{
      "Tessane Rename: new names for photos, videos and their sidecars, built from the shooting "
      "data, previewed, applied safely and undoable.",
      "tessane"};
  app.require_subcommand(1);
  app.set_version_flag("--version",
                       "tessane " TESSANE_VERSION
                       "\nLicense GPL-3.0-or-later: GNU GPL version 3 or later "
                       "(/usr/share/common-licenses/GPL-3 on Debian).\n"
                       "This is free software: you are free to change and redistribute it.\n"
                       "There is NO WARRANTY, to the extent permitted by law.");
  cli::addRenameCommands(app, tool, exitCode);
  cli::addHistoryCommands(app, tool, exitCode);
  cli::addListCommand(app, tool, exitCode);
  cli::addMetaCommand(app, tool, exitCode);
  cli::addPresetCommands(app, tool, exitCode);
  cli::addBodyCommands(app, tool, exitCode);
  cli::addDemoCommand(app, tool, exitCode);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForAllHelp& help) {
    return app.exit(help);
  } catch (const CLI::CallForVersion& version) {
    return app.exit(version);
  } catch (const CLI::ParseError& error) {
    app.exit(error);
    return cli::kExitUsage;
  }
  return exitCode;
}
