// Tessane Rename, the desktop application: main windows over folder models, one per set of
// folders. Files and folders given on the command line are opened as if they had been dropped on
// the first window.
#include <QApplication>
#include <QDir>
#include <QStringList>

#include <filesystem>
#include <vector>

#include "TessaneRename/AppContext.h"
#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Windows/AppWindows.h"
#include "TessaneRename/Windows/MainWindow.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Tessane Rename");
  QApplication::setOrganizationName("Tessane");
  QApplication::setApplicationVersion(TESSANE_VERSION);

  tessane::AppContext app;
  // First of all: put back any batch that a killed run left half done.
  const tessane::RecoveryReport recovery = app.start();
  const std::unique_ptr<tessane::DesktopServices> desktop = tessane::systemDesktopServices();
  tessane::BetaReporter reporter(tessane::BetaReporter::standardFolder(), TESSANE_VERSION, *desktop,
                                 QDir::tempPath().toStdString());
  reporter.launch();

  tessane::AppWindows windows(app, *desktop, reporter);
  tessane::FolderModel& model = windows.newWindow().model();
  model.showRecovery(recovery);

  model.resumeSession();
  std::vector<std::filesystem::path> given;
  const QStringList arguments = QApplication::arguments().mid(1);
  for (const QString& argument : arguments) {
    given.push_back(std::filesystem::absolute(argument.toStdString()));
  }
  if (!given.empty()) model.open(given);

  const int status = QApplication::exec();
  reporter.quit();
  return status;
}
