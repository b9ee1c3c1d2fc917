// One running application per user session. The first launch listens on a local socket; a later
// launch connects, hands over the files and folders it was given (an empty list: just come to the
// front), waits for the running one to confirm, and quits. The running one publishes what it
// receives through pathsReceived, on the main thread.
//
// Launches racing each other take turns on a lock file beside the socket, so that two launches at
// once never make two running instances: the one that gets the lock first tries to hand over once
// more, and only then listens. A socket left behind by a crashed run refuses connections; it is
// removed and listened on afresh (a lock left by a crashed run is found stale by its process id).
// When a running instance accepts the connection but does not answer in time, the launch runs on
// its own rather than lose the user's files (start() says `alone`).
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <chrono>

class QLocalServer;

namespace tessane {

class SingleInstance : public QObject {
  Q_OBJECT

 public:
  enum class Role {
    running,     // this process is the running instance and listens
    handedOver,  // another instance took the paths: this launch should quit
    alone,       // neither (no answer, or the socket can't be made): run without listening
  };

  // `socketPath`: where the running instance listens (defaultSocketPath() for the application).
  explicit SingleInstance(QString socketPath, QObject* parent = nullptr);
  ~SingleInstance() override;

  // `$XDG_RUNTIME_DIR/tessane-rename.socket`, else one named after the user in the temporary
  // folder.
  static QString defaultSocketPath();

  // `paths` are absolute (launchPaths makes them so): the running instance has another working
  // folder. `timeout` bounds each wait: the lock, the connection, the answer.
  Role start(const QStringList& paths,
             std::chrono::milliseconds timeout = std::chrono::milliseconds(10'000));

 signals:
  void pathsReceived(const QStringList& paths);

 private:
  enum class HandOver { taken, noInstance, noAnswer };
  HandOver handOver(const QStringList& paths, std::chrono::milliseconds timeout);
  void accept();

  QString socketPath_;
  QLocalServer* server_ = nullptr;
};

// The files and folders named on a launch's command line, as absolute local paths: "file:" URLs
// (what a desktop entry's %U gives) are turned into paths, relative paths are resolved against
// `workingDirectory`, and other URLs and options ("-…") are left out.
QStringList launchPaths(const QStringList& arguments, const QString& workingDirectory);

}  // namespace tessane
