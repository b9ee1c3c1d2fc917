#include "ToolRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#ifndef TESSANE_TOOL
#error "TESSANE_TOOL must name the built tessane program"
#endif

namespace tessane::testing {

ToolRunner::ToolRunner() {
  std::filesystem::create_directories(home() / "config");
  std::filesystem::create_directories(home() / "data");
}

ToolResult ToolRunner::run(const std::vector<std::string>& args, const std::string& input) const {
  int in[2], out[2], err[2];
  if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0 || ::pipe2(err, O_CLOEXEC) != 0) {
    std::abort();
  }
  std::vector<std::string> env{"HOME=" + home().string(),
                               "XDG_CONFIG_HOME=" + (home() / "config").string(),
                               "XDG_DATA_HOME=" + (home() / "data").string(),
                               "NO_COLOR=1",
                               "LANG=C.UTF-8",
                               "PATH=/usr/bin:/bin"};
  for (const auto& [key, value] : environment)
    env.push_back(key + "=" + value);
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::dup2(in[0], STDIN_FILENO);
    ::dup2(out[1], STDOUT_FILENO);
    ::dup2(err[1], STDERR_FILENO);
    if (!workingFolder.empty() && ::chdir(workingFolder.c_str()) != 0) ::_exit(127);
    std::vector<char*> argv{const_cast<char*>(TESSANE_TOOL)};
    for (const std::string& a : args)
      argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    std::vector<char*> envp;
    for (const std::string& e : env)
      envp.push_back(const_cast<char*>(e.c_str()));
    envp.push_back(nullptr);
    ::execve(TESSANE_TOOL, argv.data(), envp.data());
    ::_exit(127);
  }
  ::close(in[0]);
  ::close(out[1]);
  ::close(err[1]);
  if (!input.empty() && ::write(in[1], input.data(), input.size()) < 0) {
    // The program may have ended without reading its input; its output tells the story.
  }
  ::close(in[1]);

  ToolResult result;
  pollfd fds[2] = {{out[0], POLLIN, 0}, {err[0], POLLIN, 0}};
  int open = 2;
  char buffer[65536];
  while (open > 0) {
    if (::poll(fds, 2, -1) < 0) break;
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      const ssize_t n = ::read(fds[i].fd, buffer, sizeof buffer);
      if (n <= 0) {
        ::close(fds[i].fd);
        fds[i].fd = -1;
        --open;
        continue;
      }
      (i == 0 ? result.out : result.err).append(buffer, static_cast<std::size_t>(n));
    }
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

}  // namespace tessane::testing
