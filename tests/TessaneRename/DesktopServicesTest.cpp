#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QObject>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>

#include <filesystem>
#include <mutex>

#include "QtPrinting.h"
#include "ScopedEnvironment.h"
#include "TempFolder.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/TestApplication.h"

namespace tessane {
namespace {

using testing::TempFolder;

// What the tests' desktop was asked to start.
struct Launches {
  std::vector<std::pair<QString, QStringList>> calls;
  ProgramLauncher launcher() {
    return [this](const QString& program, const QStringList& arguments) {
      calls.emplace_back(program, arguments);
      return true;
    };
  }
};

// Points HOME and the XDG data folder at a test folder for the test's length.
struct ScopedHome : testing::ScopedEnvironment {
  explicit ScopedHome(const std::filesystem::path& home) {
    set("HOME", home.string());
    set("XDG_DATA_HOME", (home / "data").string());
  }
};

QDBusConnection noBus() {
  return QDBusConnection::connectToBus("unix:path=/nonexistent/tessane-bus", "tessane-no-bus");
}

TEST(DesktopServicesTest, TrashWorksOnAFreshAccountWithoutATrashFolder) {
  TempFolder home;
  ScopedHome scoped(home.path());
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  ASSERT_TRUE(data.startsWith(QString::fromStdString(home.path().string())))
      << "would touch the user's own Trash";
  Launches launches;
  auto desktop = systemDesktopServices(noBus(), launches.launcher());

  const auto file = home.file("old preset.tessanepreset", "{}");
  EXPECT_EQ(desktop->moveToTrash(file), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_TRUE(std::filesystem::exists(home.path() / "data/Trash/files/old preset.tessanepreset"));
  EXPECT_TRUE(
      std::filesystem::exists(home.path() / "data/Trash/info/old preset.tessanepreset.trashinfo"));

  EXPECT_NE(desktop->moveToTrash(home.path() / "gone"), std::nullopt);
  EXPECT_TRUE(launches.calls.empty());
}

TEST(DesktopServicesTest, WithoutAFileManagerServiceTheFolderIsOpened) {
  Launches launches;
  auto desktop = systemDesktopServices(noBus(), launches.launcher());
  EXPECT_TRUE(desktop->revealFiles({"/photos/Rome/a b.jpg", "/photos/Rome/c.jpg"}));
  EXPECT_TRUE(desktop->showFolder("/photos/Presets"));
  ASSERT_EQ(launches.calls.size(), 2u);
  EXPECT_EQ(launches.calls[0].first, "xdg-open");
  EXPECT_EQ(launches.calls[0].second, QStringList{"file:///photos/Rome"});
  EXPECT_EQ(launches.calls[1].second, QStringList{"file:///photos/Presets"});
}

TEST(DesktopServicesTest, MailGoesToXdgEmailOnlyWithAnAttachment) {
  Launches launches;
  auto desktop = systemDesktopServices(noBus(), launches.launcher());
  MailDraft draft{"help@example.org", "Problem report", "See the file.", {}};
  EXPECT_FALSE(desktop->composeMail(draft));  // the caller then opens a mailto: address
  draft.attachment = "/tmp/report.txt";
  EXPECT_TRUE(desktop->composeMail(draft));
  ASSERT_EQ(launches.calls.size(), 1u);
  const QStringList& args = launches.calls[0].second;
  EXPECT_EQ(launches.calls[0].first, "xdg-email");
  EXPECT_EQ(args[args.indexOf("--attach") + 1], "/tmp/report.txt");
}

// A file manager on a private bus of the test's own.
class FakeFileManager : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

 public:
  std::mutex lock;
  std::vector<std::pair<QString, QStringList>> calls;

 public slots:
  Q_SCRIPTABLE void ShowItems(const QStringList& uris, const QString&) { note("ShowItems", uris); }
  Q_SCRIPTABLE void ShowFolders(const QStringList& uris, const QString&) {
    note("ShowFolders", uris);
  }

 private:
  void note(const QString& method, const QStringList& uris) {
    std::lock_guard guard(lock);
    calls.emplace_back(method, uris);
  }
};

TEST(DesktopServicesTest, FilesAreShownThroughTheFileManagerService) {
  if (QStandardPaths::findExecutable("dbus-daemon").isEmpty())
    GTEST_SKIP() << "dbus-daemon is not installed";
  testing::coreApplication();

  TempFolder dir;
  const QString address = "unix:path=" + QString::fromStdString((dir.path() / "bus").string());
  QProcess daemon;
  daemon.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--address=" + address,
                               "--print-address=1"});
  ASSERT_TRUE(daemon.waitForStarted());
  ASSERT_TRUE(daemon.waitForReadyRead(10000));

  QDBusConnection serviceBus = QDBusConnection::connectToBus(address, "tessane-fm");
  ASSERT_TRUE(serviceBus.isConnected());
  QThread thread;
  FakeFileManager manager;
  manager.moveToThread(&thread);
  thread.start();
  ASSERT_TRUE(serviceBus.registerObject("/org/freedesktop/FileManager1", &manager,
                                        QDBusConnection::ExportScriptableSlots));
  ASSERT_TRUE(serviceBus.registerService("org.freedesktop.FileManager1"));

  Launches launches;
  {
    auto desktop = systemDesktopServices(QDBusConnection::connectToBus(address, "tessane-app"),
                                         launches.launcher());
    EXPECT_TRUE(desktop->revealFiles({"/photos/Rome/été 1.jpg", "/photos/Rome/b.jpg"}));
    EXPECT_TRUE(desktop->showFolder("/photos/Presets"));
  }
  EXPECT_TRUE(launches.calls.empty());
  {
    std::lock_guard guard(manager.lock);
    ASSERT_EQ(manager.calls.size(), 2u);
    EXPECT_EQ(manager.calls[0].first, "ShowItems");
    EXPECT_EQ(manager.calls[0].second, (QStringList{"file:///photos/Rome/%C3%A9t%C3%A9%201.jpg",
                                                    "file:///photos/Rome/b.jpg"}));
    EXPECT_EQ(manager.calls[1],
              (std::pair<QString, QStringList>{"ShowFolders", {"file:///photos/Presets"}}));
  }

  serviceBus.unregisterObject("/org/freedesktop/FileManager1");
  QDBusConnection::disconnectFromBus("tessane-fm");
  QDBusConnection::disconnectFromBus("tessane-app");
  thread.quit();
  thread.wait();
  daemon.terminate();
  daemon.waitForFinished();
}

}  // namespace
}  // namespace tessane

#include "DesktopServicesTest.moc"
