// Runs work that must not block in a child process with a deadline, so that a regression that
// waits forever (opening a FIFO for reading waits for a writer) fails its test instead of hanging
// the suite. The child gets a process group of its own, and the whole group (with any program the
// work started) is killed at the deadline. The child's answer is its exit status.
#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <ostream>
#include <thread>

namespace tessane::testing {

enum class Finished { inTime, wrongly, never };

inline std::ostream& operator<<(std::ostream& out, Finished f) {
  return out << (f == Finished::inTime ? "in time" : f == Finished::wrongly ? "wrongly" : "never");
}

// `work` runs in a forked child; its result true within `limit` is `inTime`.
inline Finished finishesInTime(std::chrono::seconds limit, const std::function<bool()>& work) {
  const pid_t child = ::fork();
  if (child < 0) return Finished::wrongly;
  if (child == 0) {
    ::setpgid(0, 0);
    ::_exit(work() ? 0 : 1);
  }
  ::setpgid(child, child);  // also here, so that the group exists before any kill
  const auto deadline = std::chrono::steady_clock::now() + limit;
  int status = 0;
  while (::waitpid(child, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > deadline) {
      ::kill(-child, SIGKILL);
      ::waitpid(child, &status, 0);
      return Finished::never;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Finished::inTime : Finished::wrongly;
}

}  // namespace tessane::testing
