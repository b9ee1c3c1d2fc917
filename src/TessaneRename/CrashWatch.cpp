#include "CrashWatch.h"

#include <cxxabi.h>
#include <execinfo.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <system_error>
#include <typeinfo>

namespace tessane {
namespace {

constexpr int kMaxFrames = 128;

// What the handlers touch: set up before they are installed, never freed.
int gCrashFd = -1;
std::terminate_handler gPreviousTerminate = nullptr;

struct SignalText {
  int signal;
  const char* text;
};
constexpr SignalText kSignals[] = {
    {SIGABRT, "\nSignal: SIGABRT\n"}, {SIGBUS, "\nSignal: SIGBUS\n"},
    {SIGFPE, "\nSignal: SIGFPE\n"},   {SIGILL, "\nSignal: SIGILL\n"},
    {SIGSEGV, "\nSignal: SIGSEGV\n"}, {SIGTRAP, "\nSignal: SIGTRAP\n"},
};
constexpr const char* kOtherSignal = "\nSignal: other\n";

void writeAll(int fd, const char* text, std::size_t length) {
  while (length > 0) {
    const ssize_t n = ::write(fd, text, length);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return;
    text += n;
    length -= static_cast<std::size_t>(n);
  }
}

void writeStack(int fd) {
  void* frames[kMaxFrames];
  const int count = ::backtrace(frames, kMaxFrames);
  ::backtrace_symbols_fd(frames, count, fd);
}

// Async-signal-safe: write(), backtrace() (loaded in advance), sigaction(), raise().
void onSignal(int signal) {
  const int savedErrno = errno;
  if (gCrashFd >= 0) {
    const char* text = kOtherSignal;
    for (const SignalText& s : kSignals)
      if (s.signal == signal) text = s.text;
    writeAll(gCrashFd, text, std::strlen(text));
    writeStack(gCrashFd);
  }
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigemptyset(&action.sa_mask);
  ::sigaction(signal, &action, nullptr);
  errno = savedErrno;
  ::raise(signal);
}

std::string demangled(const char* name) {
  int status = 0;
  char* readable = abi::__cxa_demangle(name, nullptr, nullptr, &status);
  std::string out = status == 0 && readable != nullptr ? readable : name;
  std::free(readable);
  return out;
}

void onTerminate() {
  if (gCrashFd >= 0) {
    std::string text = "\nException: ";
    if (const std::exception_ptr current = std::current_exception()) {
      try {
        std::rethrow_exception(current);
      } catch (const std::exception& e) {
        text.append(demangled(typeid(e).name())).append(": ").append(e.what());
      } catch (...) {
        const std::type_info* type = abi::__cxa_current_exception_type();
        text.append(type != nullptr ? demangled(type->name()) : "unknown").append(": ");
      }
    } else {
      text.append("none: std::terminate called without an exception");
    }
    text.push_back('\n');
    writeAll(gCrashFd, text.data(), text.size());
    writeStack(gCrashFd);
  }
  if (gPreviousTerminate != nullptr) gPreviousTerminate();
  std::abort();
}

// Room to run the handlers on when the stack itself overflowed.
void installAlternateStack() {
  static char stack[64 * 1024];
  stack_t alternate{};
  alternate.ss_sp = stack;
  alternate.ss_size = sizeof stack;
  ::sigaltstack(&alternate, nullptr);
}

bool processIsAlive(int pid) {
  if (pid <= 0 || pid == ::getpid()) return false;
  return ::kill(pid, 0) == 0 || errno == EPERM;
}

QString pathText(const std::filesystem::path& path) {
  return QFile::decodeName(path.c_str());
}

}  // namespace

CrashWatch::CrashWatch(std::filesystem::path directory)
    : directory_(std::move(directory)), processID_(static_cast<int>(::getpid())) {}

CrashWatch::~CrashWatch() = default;

void CrashWatch::start() {
  if (started_) return;
  started_ = true;
  std::error_code ignored;
  std::filesystem::create_directories(directory_, ignored);

  // 1. The previous run.
  QFile marker(pathText(markerFile()));
  if (marker.open(QIODevice::ReadOnly)) {
    const QList<QByteArray> words = marker.readAll().simplified().split(' ');
    bool isNumber = false;
    const int pid = words.size() >= 2 && words[0] == "Running" ? words[1].toInt(&isNumber) : 0;
    suddenQuit_ = !isNumber || !processIsAlive(pid);
  }
  if (suddenQuit_) {
    QFile crash(pathText(crashFile()));
    const QByteArray text = crash.open(QIODevice::ReadOnly) ? crash.readAll().trimmed() : "";
    crashText_ = text.isEmpty() ? QCoreApplication::translate(
                                      "CrashWatch",
                                      "The previous run ended without quitting and left no "
                                      "crash details (it may have been stopped by the system).")
                                : QString::fromUtf8(text);
  }

  // 2. This run's marker.
  QSaveFile out(pathText(markerFile()));
  if (out.open(QIODevice::WriteOnly)) {
    out.write("Running " + QByteArray::number(processID_) + "\n");
    out.commit();
  }

  // 3. The crash file, opened now, and the handlers that write into it.
  gCrashFd = ::open(crashFile().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0600);
  void* warmUp[1];
  ::backtrace(warmUp, 1);  // loads what backtrace() needs, so a handler never does
  installAlternateStack();
  struct sigaction action {};
  action.sa_handler = onSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_ONSTACK;
  for (const SignalText& s : kSignals)
    ::sigaction(s.signal, &action, nullptr);
  // 4. Uncaught exceptions.
  gPreviousTerminate = std::set_terminate(onTerminate);
}

void CrashWatch::stop() {
  if (!started_) return;
  started_ = false;
  std::set_terminate(gPreviousTerminate);
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigemptyset(&action.sa_mask);
  for (const SignalText& s : kSignals)
    ::sigaction(s.signal, &action, nullptr);
  if (gCrashFd >= 0) ::close(gCrashFd);
  gCrashFd = -1;
  std::error_code ignored;
  std::filesystem::remove(crashFile(), ignored);
  std::filesystem::remove(markerFile(), ignored);
}

}  // namespace tessane
