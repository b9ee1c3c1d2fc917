// A launch of the application, as far as the single instance goes, for the tests to start as a
// real process: SingleInstanceChild SOCKET [PATH...]. It prints "handed over" (exit 0) or "alone"
// (exit 3), or "running" and then one "received [JSON]" line per hand-over, until it is handed
// the single path "quit".
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>

#include "TessaneRename/SingleInstance.h"

namespace {

void say(const QByteArray& line) {
  std::fputs(line.constData(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() < 2) return 2;
  tessane::SingleInstance instance(arguments[1]);
  switch (instance.start(arguments.mid(2), std::chrono::milliseconds(5000))) {
    case tessane::SingleInstance::Role::handedOver:
      say("handed over");
      return 0;
    case tessane::SingleInstance::Role::alone:
      say("alone");
      return 3;
    case tessane::SingleInstance::Role::running:
      break;
  }
  QObject::connect(
      &instance, &tessane::SingleInstance::pathsReceived, [](const QStringList& paths) {
        say("received " +
            QJsonDocument(QJsonArray::fromStringList(paths)).toJson(QJsonDocument::Compact));
        if (paths == QStringList{"quit"}) QCoreApplication::quit();
      });
  say("running");
  return QCoreApplication::exec();
}
