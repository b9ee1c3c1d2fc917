// Notices that the previous run ended without quitting, and keeps the last words of a crash.
//
// start(), at launch: when the marker file ("Running" and a process id) is there and that process
// is gone, the previous run ended suddenly, and what it left in "Crash.txt" becomes the crash
// text. Then the marker is written for this process, "Crash.txt" is opened anew and handlers are
// installed for SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV and SIGTRAP and for uncaught
// exceptions. A signal handler only writes a fixed text and the stack's return addresses with
// their symbols to the file opened in advance, then restores the default action and raises the
// signal again, so the system's own crash handling still runs. stop(), at a normal quit, removes
// the marker and the crash file.
//
// One watch per process: the handlers are the process's.
#pragma once

#include <QString>

#include <filesystem>
#include <optional>
#include <string>

namespace tessane {

class CrashWatch {
 public:
  explicit CrashWatch(std::filesystem::path directory);
  ~CrashWatch();
  CrashWatch(const CrashWatch&) = delete;
  CrashWatch& operator=(const CrashWatch&) = delete;

  const std::filesystem::path& directory() const { return directory_; }
  int processID() const { return processID_; }

  void start();
  void stop();

  bool previousRunEndedSuddenly() const { return suddenQuit_; }
  // What the previous run left when it ended suddenly: its crash file, or a note that nothing was
  // written (a run that was killed leaves no words).
  const std::optional<QString>& crashText() const { return crashText_; }

  std::filesystem::path markerFile() const { return directory_ / "Running"; }
  std::filesystem::path crashFile() const { return directory_ / "Crash.txt"; }

 private:
  std::filesystem::path directory_;
  int processID_;
  bool started_ = false;
  bool suddenQuit_ = false;
  std::optional<QString> crashText_;
};

}  // namespace tessane
