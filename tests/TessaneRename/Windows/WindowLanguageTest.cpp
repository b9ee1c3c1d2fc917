// The main window built after the Italian translation is installed, as the application starts:
// the texts of the window's own classes reach it (their translation contexts are the ones the
// translation file was made with), and so do the command table's.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSettings>

#include "TempFolder.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/FakeDesktopServices.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/InterfaceTranslation.h"
#include "TessaneRename/Windows/FileListModel.h"
#include "TessaneRename/Windows/MainWindow.h"

namespace tessane {
namespace {

TEST(WindowLanguage, AnItalianStartShowsTheWindowInItalian) {
  static int argc = 1;
  static char name[] = "WindowLanguageTest";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  testing::TempFolder home;
  AppContext app(
      std::make_unique<QSettings>(QString::fromStdString((home.path() / "t.conf").string()),
                                  QSettings::IniFormat),
      home.path() / "data");
  const InterfaceTranslation italian(AppLanguage::italian, QLocale("en_US"));
  FolderModel model(app);
  testing::FakeDesktopServices desktop;
  MainWindow window(model, app, desktop);

  QStringList menus;
  for (const QAction* menu : window.menuBar()->actions())
    menus << menu->text();
  EXPECT_TRUE(menus.contains("Modifica")) << menus.join(", ").toStdString();
  EXPECT_TRUE(menus.contains("Aiuto")) << menus.join(", ").toStdString();
  EXPECT_EQ(window.action(CommandID::rename)->text(), "Rinomina");
  EXPECT_EQ(window.fileList()
                .headerData(FileListModel::newName, Qt::Horizontal, Qt::DisplayRole)
                .toString(),
            "Nuovo nome");
  EXPECT_EQ(window.templateField()->placeholderText(), "{data:yyyy-MM-dd}_{corpo}_{contatore}");
  const auto* counts = window.findChild<QLabel*>("counts");
  ASSERT_NE(counts, nullptr);
  EXPECT_EQ(counts->text(), "Nessuna cartella");
}

}  // namespace
}  // namespace tessane
