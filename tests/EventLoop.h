// Runs the Qt event loop in a test until a condition holds: what the models publish from their
// threads arrives through it.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <chrono>
#include <thread>

namespace tessane::testing {

// Turns the event loop until `done` holds; false after a minute without it (a limit for a hung
// test, far above what a loaded machine or a sanitizer build needs).
template <typename Predicate>
bool waitFor(Predicate done) {
  QElapsedTimer timer;
  timer.start();
  while (!done()) {
    if (timer.elapsed() > 60'000) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace tessane::testing
