#include "DataFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace tessane::DataFolder {
namespace {

std::filesystem::path home() {
  if (const char* h = std::getenv("HOME"); h != nullptr && h[0] == '/') return h;
  if (const passwd* pw = ::getpwuid(::getuid()); pw != nullptr && pw->pw_dir != nullptr) {
    return pw->pw_dir;
  }
  return "/";
}

}  // namespace

std::filesystem::path location() {
  std::filesystem::path base;
  if (const char* x = std::getenv("XDG_DATA_HOME"); x != nullptr && x[0] == '/') {
    base = x;
  } else {
    base = home() / ".local" / "share";
  }
  return base / "Tessane Rename";
}

std::filesystem::path historyFile() {
  return location() / "History.json";
}

std::filesystem::path journalFolder() {
  return location() / "Journal";
}

std::filesystem::path presetFolder() {
  return location() / "Presets";
}

}  // namespace tessane::DataFolder
