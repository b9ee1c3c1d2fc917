// Turns the signals that ask a program to end (SIGTERM when the session logs out or the system
// shuts down, SIGHUP when its terminal goes away, SIGINT from Ctrl+C) into a normal quit, so that
// the next start sees no sudden quit. A handler only writes the signal's number to a pipe; the
// event loop reads it and emits quitRequested, and the owner quits the way the Quit command does.
// The signals that arrive before the event loop runs wait in the pipe.
//
// One per process: the handlers are the process's. The destructor gives the signals back their
// default action.
#pragma once

#include <QObject>

class QSocketNotifier;

namespace tessane {

class QuitSignals : public QObject {
  Q_OBJECT

 public:
  explicit QuitSignals(QObject* parent = nullptr);
  ~QuitSignals() override;
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

  // "SIGTERM", "SIGHUP", "SIGINT".
  static const char* name(int signal);

 signals:
  void quitRequested(int signal);

 private:
  void readPipe();

  QSocketNotifier* notifier_ = nullptr;
};

}  // namespace tessane
