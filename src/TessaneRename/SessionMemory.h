// What the user was doing, for the next start: the folders in the list ("openFolders", their
// paths), those of them whose files were shown ("selectedFolders") and the rule stack being built
// ("lastRules", JSON). Restoring drops folders that no longer open and a stack that no longer
// decodes, without a message.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <vector>

#include "RenameEngine/RuleStack.h"

class QSettings;

namespace tessane {

class SessionMemory {
 public:
  explicit SessionMemory(QSettings& settings) : settings_(settings) {}

  void save(const std::vector<std::filesystem::path>& folders, const RuleStack& stack,
            const std::set<std::filesystem::path>& selected = {});

  struct Session {
    std::vector<std::filesystem::path> folders;  // those that still open as folders
    std::set<std::filesystem::path> selected;    // of those, the ones that were selected
    std::optional<RuleStack> stack;              // nullopt: use the default rule
  };
  // Nothing when the user turned "Resume the last session" off.
  Session restore(bool resumesSession) const;

 private:
  QSettings& settings_;
};

}  // namespace tessane
