// A stand-in for the application's start, for the crash-watch tests: launches the diagnostics in
// the given folder, prints the report it would offer, then quits, waits to be killed, crashes or
// throws, as asked.
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>

#include <cstdio>
#include <stdexcept>
#include <string>

#include "FakeDesktopServices.h"
#include "TessaneRename/BetaReporter.h"

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
  std::printf("%s\n", reporter.report({}, true).text().toUtf8().constData());
  std::printf("ready\n");
  std::fflush(stdout);

  if (mode == "quit") {
    reporter.quit();
    return 0;
  }
  if (mode == "wait") {
    for (;;)
      ::pause();
  }
  if (mode == "segv") ::raise(SIGSEGV);
  if (mode == "throw") throw std::runtime_error("boom in the preview");
  return 3;
}
