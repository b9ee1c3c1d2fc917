// A version feed for the update check, served over HTTP on the loopback interface by the test
// itself.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

namespace tessane::testing {

// A version feed served over HTTP on the loopback interface. Silent, it takes the request and
// never answers; closed, nothing listens on its port. As a trap (the application's HTTP proxy), it
// counts every request the program makes, whatever its address.
class FeedServer {
 public:
  enum class Mode { answers, silent, closed };

  explicit FeedServer(QByteArray body, Mode mode = Mode::answers) : body_(std::move(body)) {
    server_.listen(QHostAddress::LocalHost, 0);
    port_ = server_.serverPort();
    if (mode == Mode::closed) server_.close();
    QObject::connect(&server_, &QTcpServer::newConnection, [this, mode] {
      while (QTcpSocket* socket = server_.nextPendingConnection()) {
        ++requests;
        if (mode == Mode::silent) continue;
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
          request_ += socket->readAll();
          if (!request_.contains("\r\n\r\n")) return;
          socket->write("HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
                        QByteArray::number(body_.size()) + "\r\nConnection: close\r\n\r\n" + body_);
          socket->disconnectFromHost();
        });
      }
    });
  }

  QUrl url() const { return QUrl(QString("http://127.0.0.1:%1/updates.json").arg(port_)); }
  quint16 port() const { return port_; }
  int requests = 0;

 private:
  QTcpServer server_;
  QByteArray body_, request_;
  quint16 port_ = 0;
};

}  // namespace tessane::testing
