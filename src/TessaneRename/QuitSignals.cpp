#include "QuitSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>

#include <cerrno>

namespace tessane {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};

// The pipe the handlers write to: set up before they are installed.
int gPipe[2] = {-1, -1};

// Async-signal-safe: one write() of one byte; a full pipe already holds a request to quit.
void onSignal(int signal) {
  const int savedErrno = errno;
  const auto byte = static_cast<unsigned char>(signal);
  [[maybe_unused]] const ssize_t n = ::write(gPipe[1], &byte, 1);
  errno = savedErrno;
}

void setAction(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  for (const int s : kSignals)
    ::sigaction(s, &action, nullptr);
}

}  // namespace

QuitSignals::QuitSignals(QObject* parent) : QObject(parent) {
  if (::pipe2(gPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
    gPipe[0] = gPipe[1] = -1;
    return;  // without a pipe the signals keep their default action
  }
  notifier_ = new QSocketNotifier(gPipe[0], QSocketNotifier::Read, this);
  connect(notifier_, &QSocketNotifier::activated, this, &QuitSignals::readPipe);
  setAction(onSignal);
}

QuitSignals::~QuitSignals() {
  if (gPipe[0] < 0) return;
  setAction(SIG_DFL);
  delete notifier_;
  ::close(gPipe[0]);
  ::close(gPipe[1]);
  gPipe[0] = gPipe[1] = -1;
}

const char* QuitSignals::name(int signal) {
  switch (signal) {
    case SIGTERM:
      return "SIGTERM";
    case SIGHUP:
      return "SIGHUP";
    case SIGINT:
      return "SIGINT";
    default:
      return "another signal";
  }
}

void QuitSignals::readPipe() {
  unsigned char bytes[64];
  int last = 0;
  for (;;) {
    const ssize_t n = ::read(gPipe[0], bytes, sizeof bytes);
    if (n > 0) {
      last = bytes[n - 1];
      continue;
    }
    if (n < 0 && errno == EINTR) continue;
    break;
  }
  if (last != 0) emit quitRequested(last);
}

}  // namespace tessane
