#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>

#include <memory>
#include <vector>

#include "QtPrinting.h"
#include "TempFolder.h"
#include "TessaneRename/SingleInstance.h"

namespace tessane {
namespace {

using testing::TempFolder;

// One launch of the application, as a real process (SingleInstanceChild).
class Launch {
 public:
  Launch(const QString& socket, const QStringList& paths) {
    process_.setProgram(TESSANE_SINGLE_INSTANCE_CHILD);
    process_.setArguments(QStringList{socket} + paths);
    process_.start();
  }
  ~Launch() {
    if (process_.state() != QProcess::NotRunning) {
      process_.kill();
      process_.waitForFinished();
    }
  }

  // The next line it prints; empty when none comes in time.
  QString line() {
    while (!process_.canReadLine()) {
      if (!process_.waitForReadyRead(10'000)) return {};
    }
    return QString::fromUtf8(process_.readLine()).trimmed();
  }
  bool finishes() { return process_.waitForFinished(10'000); }
  int exitCode() const { return process_.exitCode(); }
  void crash() {
    process_.kill();  // SIGKILL: nothing is cleaned up
    process_.waitForFinished();
  }

 private:
  QProcess process_;
};

class SingleInstanceTest : public ::testing::Test {
 protected:
  TempFolder dir;
  QString socket = QString::fromStdString((dir.path() / "app.socket").string());
};

TEST_F(SingleInstanceTest, ASecondLaunchHandsItsFilesToTheRunningOne) {
  Launch running(socket, {});
  ASSERT_EQ(running.line(), "running");

  Launch second(socket, {"/photos/Rome", "/photos/été 1.jpg"});
  ASSERT_TRUE(second.finishes());
  EXPECT_EQ(second.line(), "handed over");
  EXPECT_EQ(second.exitCode(), 0);
  EXPECT_EQ(running.line(), R"(received ["/photos/Rome","/photos/été 1.jpg"])");

  // Without files a launch only brings the running one to the front.
  Launch third(socket, {});
  ASSERT_TRUE(third.finishes());
  EXPECT_EQ(third.line(), "handed over");
  EXPECT_EQ(running.line(), "received []");

  Launch quit(socket, {"quit"});
  ASSERT_TRUE(quit.finishes());
  ASSERT_TRUE(running.finishes());
  EXPECT_EQ(running.exitCode(), 0);
  EXPECT_FALSE(QFileInfo::exists(socket)) << "a quit leaves no socket behind";
}

TEST_F(SingleInstanceTest, LaunchesAtOnceMakeOneRunningInstance) {
  std::vector<std::unique_ptr<Launch>> launches;
  for (int i = 0; i < 4; ++i)
    launches.push_back(std::make_unique<Launch>(socket, QStringList{QString("/p/%1").arg(i)}));
  Launch* running = nullptr;
  int handedOver = 0;
  for (auto& launch : launches) {
    const QString said = launch->line();
    if (said == "running") {
      EXPECT_EQ(running, nullptr) << "two running instances";
      running = launch.get();
    } else {
      EXPECT_EQ(said, "handed over");
      ++handedOver;
    }
  }
  ASSERT_NE(running, nullptr);
  EXPECT_EQ(handedOver, 3);
  QStringList received;
  for (int i = 0; i < 3; ++i)
    received << running->line();
  received.sort();
  EXPECT_EQ(received.size(), 3);
  for (const QString& line : received)
    EXPECT_TRUE(line.startsWith(R"(received ["/p/)")) << line.toStdString();
}

TEST_F(SingleInstanceTest, ASocketLeftByACrashIsTakenOver) {
  {
    Launch crashed(socket, {});
    ASSERT_EQ(crashed.line(), "running");
    crashed.crash();
  }
  ASSERT_TRUE(QFileInfo::exists(socket)) << "the crash should leave its socket";

  Launch next(socket, {"/photos/a.jpg"});
  ASSERT_EQ(next.line(), "running");
  Launch another(socket, {"/photos/b.jpg"});
  ASSERT_TRUE(another.finishes());
  EXPECT_EQ(another.line(), "handed over");
  EXPECT_EQ(next.line(), R"(received ["/photos/b.jpg"])");
}

TEST(LaunchPathsTest, UrlsAndRelativePathsBecomeAbsolutePaths) {
  EXPECT_EQ(launchPaths({"file:///photos/Rome/a%20b.jpg", "IMG_1.CR2", "../Milan/", "/abs/x.jpg",
                         "-platform", "https://example.org/x.jpg", "file:///photos/%C3%A9t%C3%A9"},
                        "/home/me/shoot"),
            (QStringList{"/photos/Rome/a b.jpg", "/home/me/shoot/IMG_1.CR2", "/home/me/Milan",
                         "/abs/x.jpg", "/photos/été"}));
}

}  // namespace
}  // namespace tessane
