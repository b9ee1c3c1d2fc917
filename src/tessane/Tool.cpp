#include "Tool.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <QSettings>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "RenameIO/DataFolder.h"

namespace tessane::cli {

Terminal Terminal::detect() {
  Terminal t;
  t.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
  t.errIsTerminal = ::isatty(STDERR_FILENO) == 1;
  const char* noColor = std::getenv("NO_COLOR");
  t.color = t.outIsTerminal && (noColor == nullptr || noColor[0] == '\0');
  winsize size{};
  if (t.outIsTerminal && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 20) {
    t.width = size.ws_col;
  } else if (const char* columns = std::getenv("COLUMNS")) {
    const int n = std::atoi(columns);
    if (n > 20) t.width = n;
  }
  return t;
}

std::string Terminal::paint(std::string_view text, const char* code) const {
  if (!color) return std::string(text);
  std::string out = "\x1b[";
  out.append(code).append("m").append(text).append("\x1b[0m");
  return out;
}

Tool::Tool() : terminal_(Terminal::detect()) {}
Tool::~Tool() {
  if (history_) history_->waitForSaves();
  if (settings_) settings_->sync();
}

QSettings& Tool::settings() {
  if (!settings_) settings_ = openAppSettings();
  return *settings_;
}

Preferences Tool::preferences() {
  return Preferences(settings());
}

BodyTable& Tool::bodies() {
  if (!bodies_) bodies_ = std::make_unique<BodyTable>(settings());
  return *bodies_;
}

RenameHistory& Tool::history() {
  if (!history_)
    history_ = std::make_unique<RenameHistory>(RenameHistory::load(DataFolder::historyFile()));
  return *history_;
}

PresetStore Tool::presets() const {
  return PresetStore::standard();
}

std::filesystem::path Tool::journalFolder() const {
  return DataFolder::journalFolder();
}

void Tool::error(std::string_view message) const {
  std::cerr << "tessane: " << message << "\n";
}

bool Tool::confirm(std::string_view question) const {
  if (::isatty(STDIN_FILENO) != 1) return false;
  std::cerr << question << " [y/N] " << std::flush;
  std::string answer;
  if (!std::getline(std::cin, answer)) return false;
  return answer == "y" || answer == "Y" || answer == "yes" || answer == "Yes";
}

}  // namespace tessane::cli
