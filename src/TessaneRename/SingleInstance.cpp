#include "SingleInstance.h"

#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QUrl>

#include <memory>

namespace tessane {
namespace {

// The message: the paths as one compact JSON array and a line feed; the answer "ok" and a line
// feed. JSON escapes any line feed inside a path.
constexpr char kAnswer[] = "ok\n";
constexpr qsizetype kMostBytes = 16 * 1024 * 1024;

int ms(std::chrono::milliseconds d) {
  return static_cast<int>(d.count());
}

QByteArray encode(const QStringList& paths) {
  return QJsonDocument(QJsonArray::fromStringList(paths)).toJson(QJsonDocument::Compact) + '\n';
}

QStringList decode(const QByteArray& line) {
  QStringList out;
  const QJsonDocument document = QJsonDocument::fromJson(line);
  for (const QJsonValue& value : document.array()) {
    if (value.isString()) out << value.toString();
  }
  return out;
}

}  // namespace

SingleInstance::SingleInstance(QString socketPath, QObject* parent)
    : QObject(parent), socketPath_(std::move(socketPath)) {}

SingleInstance::~SingleInstance() {
  if (server_ != nullptr) server_->close();  // removes the socket file
}

QString SingleInstance::defaultSocketPath() {
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!runtime.isEmpty() && QDir(runtime).exists()) return runtime + "/tessane-rename.socket";
  return QDir::tempPath() + "/tessane-rename-" + QString::number(::getuid()) + ".socket";
}

SingleInstance::Role SingleInstance::start(const QStringList& paths,
                                           std::chrono::milliseconds timeout) {
  if (handOver(paths, timeout) == HandOver::taken) return Role::handedOver;

  QLockFile lock(socketPath_ + ".lock");
  if (!lock.tryLock(ms(timeout))) return Role::alone;
  // Another launch may have started listening while this one waited for the lock.
  switch (handOver(paths, timeout)) {
    case HandOver::taken:
      return Role::handedOver;
    case HandOver::noAnswer:
      return Role::alone;
    case HandOver::noInstance:
      break;
  }
  QLocalServer::removeServer(socketPath_);  // what a crashed run left
  auto server = std::make_unique<QLocalServer>(this);
  server->setSocketOptions(QLocalServer::UserAccessOption);
  if (!server->listen(socketPath_)) return Role::alone;
  server_ = server.release();
  connect(server_, &QLocalServer::newConnection, this, &SingleInstance::accept);
  return Role::running;
}

SingleInstance::HandOver SingleInstance::handOver(const QStringList& paths,
                                                  std::chrono::milliseconds timeout) {
  QLocalSocket socket;
  socket.connectToServer(socketPath_);
  if (!socket.waitForConnected(ms(timeout))) return HandOver::noInstance;
  socket.write(encode(paths));
  QElapsedTimer clock;
  clock.start();
  QByteArray answer;
  while (!answer.endsWith('\n')) {
    const auto left = timeout.count() - clock.elapsed();
    if (left <= 0) return HandOver::noAnswer;
    if (socket.bytesToWrite() > 0) {
      socket.waitForBytesWritten(static_cast<int>(left));
      continue;
    }
    if (!socket.waitForReadyRead(static_cast<int>(left))) {
      // Refused or gone before answering: a socket nobody serves any more.
      return socket.state() == QLocalSocket::UnconnectedState && answer.isEmpty()
                 ? HandOver::noInstance
                 : HandOver::noAnswer;
    }
    answer += socket.readAll();
  }
  return answer == kAnswer ? HandOver::taken : HandOver::noAnswer;
}

void SingleInstance::accept() {
  while (QLocalSocket* socket = server_->nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
      if (!socket->canReadLine()) {
        if (socket->bytesAvailable() > kMostBytes) socket->abort();
        return;
      }
      const QStringList paths = decode(socket->readLine());
      socket->write(kAnswer);
      socket->flush();
      socket->disconnectFromServer();
      emit pathsReceived(paths);
    });
  }
}

QStringList launchPaths(const QStringList& arguments, const QString& workingDirectory) {
  QStringList out;
  const QDir base(workingDirectory);
  for (const QString& argument : arguments) {
    if (argument.isEmpty() || argument.startsWith('-')) continue;
    QString path = argument;
    if (argument.contains(QLatin1String("://")) || argument.startsWith(QLatin1String("file:"))) {
      const QUrl url(argument);
      if (!url.isLocalFile()) continue;
      path = url.toLocalFile();
    }
    out << QDir::cleanPath(base.absoluteFilePath(path));
  }
  return out;
}

}  // namespace tessane
