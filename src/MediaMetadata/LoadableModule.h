// A part of the program kept in a shared module of its own and loaded the first time it is
// needed: a run that never meets a video or a PDF doesn't pay for loading FFmpeg (well over a
// hundred libraries) or poppler, which would otherwise cost every start of the program more than
// the rest of its start-up together.
//
// A module is found like the program's own libraries, through the run path that the build gives
// every executable (see the top-level CMakeLists.txt). Loading happens once, whichever thread asks
// first; a module that can't be loaded stays unloaded, and `problem` says why.
#pragma once

#include <mutex>
#include <string>

namespace tessane {

class LoadableModule {
 public:
  explicit LoadableModule(std::string file) : file_(std::move(file)) {}
  LoadableModule(const LoadableModule&) = delete;
  LoadableModule& operator=(const LoadableModule&) = delete;

  // The address of the module's symbol `name`, or null when the module or the symbol is missing.
  // Thread-safe.
  void* symbol(const char* name);

  // Why the module couldn't be loaded; empty while it loads or hasn't been asked for.
  std::string problem();

 private:
  void load();

  std::string file_;
  std::once_flag once_;
  void* handle_ = nullptr;
  std::mutex mutex_;  // guards problem_
  std::string problem_;
};

}  // namespace tessane
