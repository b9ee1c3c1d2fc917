// The commands that reach the desktop from the main window: "Show Presets in File Manager" and
// "Check for Updates…" with its notice, on the offscreen platform.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

#include "EventLoop.h"
#include "TempFolder.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/FakeDesktopServices.h"
#include "TessaneRename/FeedServer.h"
#include "TessaneRename/FeedSigner.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/UpdateNotice.h"
#include "TessaneRename/Windows/WindowTestApplication.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::FeedServer;
using testing::TempFolder;
using testing::waitFor;

void needApplication() {
  testing::offscreenApplication();
}

QMessageBox* updateNotice() {
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (w->objectName() == "updateNotice" && w->isVisible()) return qobject_cast<QMessageBox*>(w);
  }
  return nullptr;
}

class DesktopCommands : public ::testing::Test {
 protected:
  DesktopCommands() {
    needApplication();
    app = testing::contextIn(home.path());
    model = std::make_unique<FolderModel>(*app);
    window = std::make_unique<MainWindow>(*model, *app, desktop);
    window->show();
  }
  ~DesktopCommands() override {
    while (QMessageBox* box = updateNotice())
      box->close();
  }

  TempFolder home;
  testing::FakeDesktopServices desktop;
  std::unique_ptr<AppContext> app;
  std::unique_ptr<FolderModel> model;
  std::unique_ptr<MainWindow> window;
};

TEST_F(DesktopCommands, ShowPresetsMakesTheFolderOfANewUserAndShowsIt) {
  const fs::path presets = app->presets().directory();
  fs::remove_all(presets);  // the window's preset menu may have made it already
  QAction* show = window->action(CommandID::showPresets);
  ASSERT_TRUE(show->isEnabled());
  show->trigger();
  EXPECT_TRUE(fs::is_directory(presets));
  EXPECT_EQ(desktop.shownFolders, std::vector<fs::path>{presets});
}

TEST_F(DesktopCommands, CheckForUpdatesShowsACalmNoticeWithTheDownloadPage) {
  QAction* check = window->action(CommandID::checkForUpdates);
  EXPECT_FALSE(check->isVisible()) << "no updater, no command";
  EXPECT_FALSE(check->isEnabled());

  testing::FeedSigner signer;
  FeedServer server(signer.sign(
      R"({"version": "9.0", "notes": "Faster previews", "url": "https://example.org/get"})"));
  AppUpdater updater(app->settings(), QVersionNumber(0, 1), server.url(), signer.publicKey());
  window->setUpdater(&updater);
  EXPECT_TRUE(check->isVisible());
  QObject::connect(
      &updater, &AppUpdater::checked, window.get(),
      [this](const UpdateCheckResult& r) { showUpdateNotice(window.get(), r, desktop); });
  ASSERT_TRUE(check->isEnabled());
  check->trigger();
  EXPECT_FALSE(check->isEnabled()) << "disabled while it checks";
  ASSERT_TRUE(waitFor([] { return updateNotice() != nullptr; }));
  EXPECT_TRUE(check->isEnabled());

  QMessageBox* notice = updateNotice();
  EXPECT_EQ(notice->text(), "Tessane Rename 9.0 is available. You have 0.1.");
  EXPECT_EQ(notice->informativeText(), "Faster previews");
  EXPECT_FALSE(notice->isModal()) << "the window stays usable";
  QPushButton* download = nullptr;
  for (QAbstractButton* b : notice->buttons()) {
    if (b->text() == "Open the Download Page") download = qobject_cast<QPushButton*>(b);
  }
  ASSERT_NE(download, nullptr);
  EXPECT_TRUE(desktop.opened.empty()) << "nothing opens by itself";
  download->click();
  EXPECT_EQ(desktop.opened, std::vector<QUrl>{QUrl("https://example.org/get")});
}

// A build without a web site has no Website command; one with it opens it.
TEST_F(DesktopCommands, TheWebsiteCommandOnlyWithAWebsite) {
  QAction* website = window->action(CommandID::website);
  EXPECT_FALSE(website->isVisible());
  website->trigger();
  EXPECT_TRUE(desktop.opened.empty());
  window->setWebsite(QUrl("https://example.org/rename"));
  EXPECT_TRUE(website->isVisible());
  website->trigger();
  EXPECT_EQ(desktop.opened, std::vector<QUrl>{QUrl("https://example.org/rename")});
}

}  // namespace
}  // namespace tessane
