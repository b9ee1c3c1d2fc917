// Tessane Rename, the desktop application: main windows over folder models, one per set of
// folders. Files and folders given on the command line (paths, or the "file:" URLs that the
// desktop entry's %U gives) are opened as if they had been dropped on the first window. One
// instance runs per user: a later launch hands what it was given to the running one, which
// brings its active window to the front and opens them there.
//
// Only a build given an update feed checks for updates (Distribution): without one no update
// check exists, so nothing here ever reaches the network.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTimer>
#include <QVersionNumber>

#include <filesystem>
#include <string>
#include <vector>

#include "TessaneRename/AppContext.h"
#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/Distribution.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/InterfaceTranslation.h"
#include "TessaneRename/QuitSignals.h"
#include "TessaneRename/SingleInstance.h"
#include "TessaneRename/Windows/AppWindows.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/UpdateNotice.h"

namespace {

std::vector<std::filesystem::path> localPaths(const QStringList& paths) {
  std::vector<std::filesystem::path> out;
  for (const QString& path : paths)
    out.emplace_back(QFile::encodeName(path).toStdString());
  return out;
}

// Quits once no window is in the middle of a batch, so a logout never leaves one half done.
void quitWhenNoBatchRuns(tessane::AppWindows& windows) {
  auto* wait = new QTimer(&windows);
  QObject::connect(wait, &QTimer::timeout, &windows, [&windows, wait] {
    for (const tessane::MainWindow* window : windows.mainWindows()) {
      if (window->model().isRenaming()) return;
    }
    wait->stop();
    QApplication::quit();
  });
  wait->start(50);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Tessane Rename");
  QApplication::setOrganizationName("Tessane");
  QApplication::setApplicationVersion(TESSANE_VERSION);
  QGuiApplication::setDesktopFileName("app.tessane.Rename");

  const QStringList given =
      tessane::launchPaths(QApplication::arguments().mid(1), QDir::currentPath());
  tessane::SingleInstance instance(tessane::SingleInstance::defaultSocketPath());
  if (instance.start(given) == tessane::SingleInstance::Role::handedOver) return 0;

  tessane::AppContext app;
  // The interface speaks the chosen language from the first text on.
  const tessane::InterfaceTranslation language(tessane::storedLanguage(app.settings()));
  // First of all: put back any batch that a killed run left half done.
  const tessane::RecoveryReport recovery = app.start();
  const std::unique_ptr<tessane::DesktopServices> desktop = tessane::systemDesktopServices();
  tessane::BetaReporter reporter(tessane::BetaReporter::standardFolder(), TESSANE_VERSION, *desktop,
                                 QDir::tempPath().toStdString());
  reporter.launch();

  tessane::AppWindows windows(app, *desktop, reporter);
  tessane::FolderModel& model = windows.newWindow().model();
  model.showRecovery(recovery);

  const std::unique_ptr<tessane::AppUpdater> updater =
      tessane::AppUpdater::forBuild(app.settings(), QVersionNumber::fromString(TESSANE_VERSION),
                                    tessane::Distribution::ofThisBuild());
  if (updater) {
    windows.setUpdater(updater.get());
    QObject::connect(updater.get(), &tessane::AppUpdater::checked, &windows,
                     [&windows, &desktop](const tessane::UpdateCheckResult& result) {
                       tessane::showUpdateNotice(windows.activeWindow(), result, *desktop);
                     });
  }
  QObject::connect(&instance, &tessane::SingleInstance::pathsReceived, &windows,
                   [&windows](const QStringList& paths) {
                     tessane::MainWindow* window = windows.activeWindow();
                     if (window == nullptr) window = &windows.newWindow();
                     if (!paths.isEmpty()) window->model().open(localPaths(paths));
                     window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
                     window->show();
                     window->raise();
                     window->activateWindow();
                   });

  // A logout (SIGTERM), a closed terminal (SIGHUP) or Ctrl+C ends the application as Quit does.
  tessane::QuitSignals quitSignals;
  bool quitting = false;
  QObject::connect(&quitSignals, &tessane::QuitSignals::quitRequested, &windows,
                   [&windows, &reporter, &quitting](int signal) {
                     reporter.diary().write(std::string("Asked to quit (") +
                                            tessane::QuitSignals::name(signal) + ")");
                     if (quitting) return;
                     quitting = true;
                     quitWhenNoBatchRuns(windows);
                   });

  model.resumeSession();
  if (!given.isEmpty()) model.open(localPaths(given));
  if (updater) updater->startAutomaticChecks();

  const int status = QApplication::exec();
  reporter.quit();
  return status;
}
