#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSettings>

#include <memory>
#include <optional>
#include <vector>

#include "EventLoop.h"
#include "FeedServer.h"
#include "QtPrinting.h"
#include "TempFolder.h"
#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/TestApplication.h"

namespace tessane {
namespace {

using testing::FeedServer;
using testing::TempFolder;
using testing::waitFor;
using Outcome = UpdateCheckResult::Outcome;

void needApplication() {
  testing::coreApplication();
}

class AppUpdaterTest : public ::testing::Test {
 protected:
  AppUpdaterTest() { needApplication(); }

  std::unique_ptr<AppUpdater> updater(const FeedServer& server) {
    auto out = std::make_unique<AppUpdater>(settings, QVersionNumber(0, 1, 0), server.url());
    out->setTimeout(std::chrono::milliseconds(400));
    QObject::connect(out.get(), &AppUpdater::checked,
                     [this](const UpdateCheckResult& r) { results.push_back(r); });
    return out;
  }

  // Runs a manual check to its end and gives its result.
  UpdateCheckResult checkNow(const FeedServer& server) {
    auto u = updater(server);
    u->checkNow();
    EXPECT_FALSE(u->canCheck()) << "the command is disabled while a check runs";
    EXPECT_TRUE(waitFor([&] { return !results.empty(); }));
    EXPECT_TRUE(u->canCheck());
    return results.empty() ? UpdateCheckResult{} : results.back();
  }

  TempFolder dir;
  QSettings settings{QString::fromStdString((dir.path() / "settings.ini").string()),
                     QSettings::IniFormat};
  std::vector<UpdateCheckResult> results;
};

TEST_F(AppUpdaterTest, ManualCheckSaysWhatItFound) {
  FeedServer newer(
      R"({"version": "0.2.0", "date": "2026-12-01", "notes": "Faster previews",
          "url": "https://tessane.app/download"})");
  const UpdateCheckResult found = checkNow(newer);
  EXPECT_EQ(found.outcome, Outcome::newer);
  EXPECT_TRUE(found.manual);
  EXPECT_EQ(found.message, "Tessane Rename 0.2.0 is available. You have 0.1.0.");
  ASSERT_TRUE(found.feed);
  EXPECT_EQ(found.feed->notes, "Faster previews");
  EXPECT_EQ(found.feed->date, QDate(2026, 12, 1));
  EXPECT_EQ(found.feed->download, QUrl("https://tessane.app/download"));

  results.clear();
  FeedServer same(R"({"version": "0.1.0"})");
  const UpdateCheckResult current = checkNow(same);
  EXPECT_EQ(current.outcome, Outcome::upToDate);
  EXPECT_EQ(current.message, "Tessane Rename 0.1.0 is the newest version.");

  results.clear();
  FeedServer older(R"({"version": "0.0.9"})");
  EXPECT_EQ(checkNow(older).outcome, Outcome::upToDate);
}

TEST_F(AppUpdaterTest, ManualCheckSaysPlainlyWhatWentWrong) {
  FeedServer malformed(R"({"version": "0.2.0", "url": )");
  UpdateCheckResult r = checkNow(malformed);
  EXPECT_EQ(r.outcome, Outcome::failed);
  EXPECT_EQ(r.message, "Couldn’t check for updates: the update information can’t be read");

  results.clear();
  FeedServer huge(QByteArray(2 * 1024 * 1024, ' ') + R"({"version": "9.0"})");
  EXPECT_EQ(checkNow(huge).message,
            "Couldn’t check for updates: the update information can’t be read");

  results.clear();
  FeedServer closed("", FeedServer::Mode::closed);
  r = checkNow(closed);
  EXPECT_EQ(r.outcome, Outcome::failed);
  EXPECT_TRUE(r.message.startsWith("Couldn’t check for updates: ")) << r.message.toStdString();
  EXPECT_GT(r.message.size(), QString("Couldn’t check for updates: ").size()) << "with the reason";

  results.clear();
  FeedServer silent("", FeedServer::Mode::silent);
  QElapsedTimer clock;
  clock.start();
  r = checkNow(silent);
  EXPECT_EQ(silent.requests, 1);
  EXPECT_EQ(r.outcome, Outcome::failed);
  EXPECT_EQ(r.message, "Couldn’t check for updates: the server took too long to answer");
  EXPECT_LT(clock.elapsed(), 5000);
}

TEST_F(AppUpdaterTest, TheDailyCheckIsSilentUnlessANewerVersionExists) {
  FeedServer closed("", FeedServer::Mode::closed);
  {
    auto u = updater(closed);
    u->checkIfDue();
    ASSERT_FALSE(u->canCheck());
    ASSERT_TRUE(waitFor([&] { return u->canCheck(); }));
  }
  EXPECT_TRUE(results.empty()) << "a failed automatic check says nothing";
  EXPECT_TRUE(settings.value(AppUpdater::kLastCheckKey).toDateTime().isValid());

  FeedServer newer(R"({"version": "1.0"})");
  auto u = updater(newer);
  u->checkIfDue();  // the last check is not a day old
  EXPECT_TRUE(u->canCheck());
  EXPECT_EQ(newer.requests, 0);

  settings.setValue(AppUpdater::kLastCheckKey, QDateTime::currentDateTimeUtc().addDays(-2));
  u->checkIfDue();
  ASSERT_TRUE(waitFor([&] { return !results.empty(); }));
  EXPECT_EQ(results[0].outcome, Outcome::newer);
  EXPECT_FALSE(results[0].manual);

  settings.setValue(AppUpdater::kLastCheckKey, QDateTime::currentDateTimeUtc().addDays(-2));
  u->setAutomaticChecksEnabled(false);
  u->checkIfDue();
  EXPECT_TRUE(u->canCheck()) << "turned off, the daily check does not run";
}

// Sets an environment variable for the test's length (unset when `value` is empty).
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const QByteArray& value)
      : name_(name), old_(qgetenv(name)), had_(qEnvironmentVariableIsSet(name)) {
    if (value.isEmpty()) {
      qunsetenv(name);
    } else {
      qputenv(name, value);
    }
  }
  ~ScopedEnv() {
    if (had_) {
      qputenv(name_, old_);
    } else {
      qunsetenv(name_);
    }
  }

 private:
  const char* name_;
  QByteArray old_;
  bool had_;
};

TEST_F(AppUpdaterTest, NoAutomaticCheckUnderTestsOrWhenTurnedOff) {
  FeedServer newer(R"({"version": "1.0"})");
  ScopedEnv testing("TESSANE_TESTING", "");
  {
    ScopedEnv offscreen("QT_QPA_PLATFORM", "offscreen");
    EXPECT_FALSE(updater(newer)->startAutomaticChecks());
  }
  ScopedEnv platform("QT_QPA_PLATFORM", "xcb");
  {
    ScopedEnv marked("TESSANE_TESTING", "1");
    EXPECT_FALSE(updater(newer)->startAutomaticChecks());
  }
  auto u = updater(newer);
  u->setAutomaticChecksEnabled(false);
  EXPECT_FALSE(u->startAutomaticChecks());
  EXPECT_FALSE(updater(newer)->automaticChecksEnabled()) << "the setting is kept";
  u->setAutomaticChecksEnabled(true);
  EXPECT_TRUE(u->startAutomaticChecks());
  EXPECT_EQ(newer.requests, 0) << "the first look waits until the application has started";
}

TEST(UpdateFeedTest, OnlyAReadableVersionAndAWebAddressMakeAFeed) {
  EXPECT_TRUE(parseUpdateFeed(R"({"version": "2.10.1"})"));
  EXPECT_EQ(parseUpdateFeed(R"({"version": "2.10.1"})")->version, QVersionNumber(2, 10, 1));
  EXPECT_FALSE(parseUpdateFeed(R"({"version": "2.x"})"));
  EXPECT_FALSE(parseUpdateFeed(R"({"version": 2})"));
  EXPECT_FALSE(parseUpdateFeed(R"({"notes": "no version"})"));
  EXPECT_FALSE(parseUpdateFeed(R"(["0.2.0"])"));
  EXPECT_FALSE(parseUpdateFeed(R"({"version": "0.2", "url": "file:///etc/passwd"})"));
  EXPECT_FALSE(parseUpdateFeed(""));
}

}  // namespace
}  // namespace tessane
