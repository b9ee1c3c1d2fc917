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
#include "TessaneRename/BatchRunner.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/RenamePlan.h"

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
  return Messages::quoted(text);
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

int reportBatchFailure(const Tool& tool, const BatchRunner::Failure& failure) {
  tool.error(Messages::of(failure));
  const std::vector<FileMove>& stranded = failure.error.stranded;
  if (failure.kind != BatchRunner::Failure::Kind::renamer || stranded.empty()) return kExitRefused;
  for (const FileMove& m : stranded) {
    std::cerr << unicode::toDisplayable(m.source.native()) << " → "
              << unicode::toDisplayable(m.destination.filename().native()) << "\n";
  }
  return kExitPartial;
}

int reportProblem(const Tool& tool, const PlanProblem& problem) {
  tool.error(Messages::of(problem));
  return problem.kind == PlanProblem::Kind::ambiguousEntry ? kExitUsage : kExitRefused;
}

}  // namespace tessane::cli
