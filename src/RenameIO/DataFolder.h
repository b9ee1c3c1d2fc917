// Where the system keeps its own files: "$XDG_DATA_HOME/Tessane Rename", or
// "~/.local/share/Tessane Rename" when XDG_DATA_HOME is unset, empty or not absolute (as the XDG
// base directory rules say). The folder is not created here; whoever writes into it does.
#pragma once

#include <filesystem>

namespace tessane::DataFolder {

std::filesystem::path location();
// The rename history, "History.json".
std::filesystem::path historyFile();
// The journals of batches under way, "Journal/".
std::filesystem::path journalFolder();
// The presets, "Presets/".
std::filesystem::path presetFolder();

}  // namespace tessane::DataFolder
