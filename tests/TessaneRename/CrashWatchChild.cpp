// A stand-in for the application's start, for the crash-watch tests: launches the diagnostics in
// the given folder, prints the report it would offer, then quits, waits to be killed, runs its
// event loop until a signal asks it to quit (as the application does), crashes or throws, as
// asked.
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>

#include <cstdio>
#include <optional>
#include <stdexcept>
#include <string>

#include "FakeDesktopServices.h"
#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/QuitSignals.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const rlimit noCore{0, 0};
  ::setrlimit(RLIMIT_CORE, &noCore);  // a crash here is on purpose: no core file
  QCoreApplication app(argc, argv);
  const std::filesystem::path folder = argv[1];
  const std::string mode = argv[2];

  tessane::testing::FakeDesktopServices desktop;
  tessane::BetaReporter reporter(folder, "0.1.0", desktop, folder);
  reporter.launch();
  std::optional<tessane::QuitSignals> quitSignals;
  if (mode == "loop") {
    quitSignals.emplace();
    QObject::connect(&*quitSignals, &tessane::QuitSignals::quitRequested, &app,
                     [&reporter](int signal) {
                       reporter.diary().write(std::string("Asked to quit (") +
                                              tessane::QuitSignals::name(signal) + ")");
                       QCoreApplication::quit();
                     });
  }
  std::printf("%s\n", reporter.report({}, true).text().toUtf8().constData());
  std::printf("ready\n");
  std::fflush(stdout);

  if (mode == "quit") {
    reporter.quit();
    return 0;
  }
  if (mode == "loop") {
    const int status = QCoreApplication::exec();
    reporter.quit();
    return status;
  }
  if (mode == "wait") {
    for (;;)
      ::pause();
  }
  if (mode == "segv") ::raise(SIGSEGV);
  if (mode == "throw") throw std::runtime_error("boom in the preview");
  return 3;
}
