#include "Tool.h"

#include <pthread.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QSettings>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "RenameEngine/Unicode.h"
#include "RenameIO/DataFolder.h"
#include "RenameIO/SafeRenameError.h"

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

std::string inQuotes(std::string_view text) {
  std::string out = "“";
  return out.append(unicode::toDisplayable(text)).append("”");
}

struct HoldInterrupts::Saved {
  struct sigaction previous {};
};

HoldInterrupts::HoldInterrupts() : saved_(std::make_unique<Saved>()) {
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  sigemptyset(&ignore.sa_mask);
  ::sigaction(SIGINT, &ignore, &saved_->previous);
}

HoldInterrupts::~HoldInterrupts() {
  ::sigaction(SIGINT, &saved_->previous, nullptr);
}

InterruptWatch::InterruptWatch() {
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  pthread_sigmask(SIG_BLOCK, &interrupt, &previous_);
  watcher_ = std::thread([this, interrupt] {
    const timespec tick{0, 50'000'000};
    while (!done_.load()) {
      if (sigtimedwait(&interrupt, nullptr, &tick) == SIGINT) {
        interrupted_.store(true);
        stop_.request_stop();
        return;
      }
    }
  });
}

InterruptWatch::~InterruptWatch() {
  done_.store(true);
  watcher_.join();
  pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
}

int reportBatchFailure(const Tool& tool, const SafeRenameError& e) {
  const std::string name = inQuotes(e.url.filename().native());
  switch (e.kind) {
    case SafeRenameError::Case::sourceMissing:
      tool.error(name + " is no longer in the folder.");
      return kExitRefused;
    case SafeRenameError::Case::notSameFolder:
      tool.error("Couldn’t rename " + name + ".");
      return kExitRefused;
    case SafeRenameError::Case::duplicateDestination:
      tool.error("Two files would be called " + name + ".");
      return kExitRefused;
    case SafeRenameError::Case::destinationExists:
      tool.error("There’s already a file called " + name +
                 " in the folder. Rename or move it and try again.");
      return kExitRefused;
    case SafeRenameError::Case::failed:
      break;
  }
  if (e.stranded.empty()) {
    tool.error("Couldn’t rename " + name +
               ". It may be in use by another app: close it and try again.");
    return kExitRefused;
  }
  tool.error("Some files couldn’t go back to their names");
  for (const FileMove& m : e.stranded) {
    std::cerr << unicode::toDisplayable(m.source.native()) << " → "
              << unicode::toDisplayable(m.destination.filename().native()) << "\n";
  }
  return kExitPartial;
}

}  // namespace tessane::cli
