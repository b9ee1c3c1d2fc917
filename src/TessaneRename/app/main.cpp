// Tessane Rename, the desktop application: one main window over one folder model. Files and
// folders given on the command line are opened as if they had been dropped on the window.
#include <QApplication>
#include <QStringList>

#include <filesystem>
#include <vector>

#include "TessaneRename/AppContext.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/InterfaceTranslation.h"
#include "TessaneRename/Windows/MainWindow.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Tessane Rename");
  QApplication::setOrganizationName("Tessane");
  QApplication::setApplicationVersion(TESSANE_VERSION);

  tessane::AppContext app;
  // The interface speaks the chosen language from the first text on.
  const tessane::InterfaceTranslation language(tessane::storedLanguage(app.settings()));
  // First of all: put back any batch that a killed run left half done.
  const tessane::RecoveryReport recovery = app.start();
  const std::unique_ptr<tessane::DesktopServices> desktop = tessane::systemDesktopServices();

  tessane::FolderModel model(app);
  model.setRevealer(
      [&desktop](const std::vector<std::filesystem::path>& files) { desktop->revealFiles(files); });
  model.showRecovery(recovery);

  tessane::MainWindow window(model, app, *desktop);
  window.show();

  model.resumeSession();
  std::vector<std::filesystem::path> given;
  const QStringList arguments = QApplication::arguments().mid(1);
  for (const QString& argument : arguments) {
    given.push_back(std::filesystem::absolute(argument.toStdString()));
  }
  if (!given.empty()) model.open(given);

  return QApplication::exec();
}
