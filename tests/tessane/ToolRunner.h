// Runs the built `tessane` program the way a user would, in a home of its own: a fresh
// XDG_CONFIG_HOME and XDG_DATA_HOME under a temporary folder, no terminal, NO_COLOR set.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "TempFolder.h"

namespace tessane::testing {

struct ToolResult {
  int exitCode = -1;
  std::string out;  // standard output
  std::string err;  // standard error
};

class ToolRunner {
 public:
  ToolRunner();

  // Runs `tessane args...` with `input` on standard input.
  ToolResult run(const std::vector<std::string>& args, const std::string& input = {}) const;

  const std::filesystem::path& home() const { return home_.path(); }
  std::filesystem::path dataFolder() const { return home() / "data" / "Tessane Rename"; }
  std::filesystem::path configFile() const {
    return home() / "config" / "Tessane" / "Tessane Rename.conf";
  }
  // Extra environment for the runs ("TZ" -> "Europe/Rome").
  std::map<std::string, std::string> environment;
  // Where the runs start; empty: this process's current folder.
  std::filesystem::path workingFolder;

 private:
  TempFolder home_;
};

}  // namespace tessane::testing
