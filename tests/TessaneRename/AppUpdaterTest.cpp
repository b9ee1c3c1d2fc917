#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSettings>

#include <memory>
#include <optional>
#include <vector>

#include "EventLoop.h"
#include "FeedServer.h"
#include "FeedSigner.h"
#include "QtPrinting.h"
#include "TempFolder.h"
#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/Distribution.h"
#include "TessaneRename/TestApplication.h"

namespace tessane {
namespace {

using testing::FeedServer;
using testing::FeedSigner;
using testing::TempFolder;
using testing::waitFor;
using Outcome = UpdateCheckResult::Outcome;

void needApplication() {
  testing::coreApplication();
}

class AppUpdaterTest : public ::testing::Test {
 protected:
  AppUpdaterTest() { needApplication(); }

  // The updater's own timeout stays long (a loaded machine may take its time to answer on the
  // loopback interface) except where a test waits for it to give up.
  std::unique_ptr<AppUpdater> updater(
      const FeedServer& server,
      std::chrono::milliseconds timeout = std::chrono::milliseconds(15'000)) {
    auto out = std::make_unique<AppUpdater>(settings, QVersionNumber(0, 1, 0), server.url(),
                                            signer.publicKey());
    out->setTimeout(timeout);
    QObject::connect(out.get(), &AppUpdater::checked,
                     [this](const UpdateCheckResult& r) { results.push_back(r); });
    return out;
  }

  // Runs a manual check to its end and gives its result.
  UpdateCheckResult checkNow(const FeedServer& server, std::chrono::milliseconds timeout =
                                                           std::chrono::milliseconds(15'000)) {
    auto u = updater(server, timeout);
    u->checkNow();
    EXPECT_FALSE(u->canCheck()) << "the command is disabled while a check runs";
    EXPECT_TRUE(waitFor([&] { return !results.empty(); }));
    EXPECT_TRUE(u->canCheck());
    return results.empty() ? UpdateCheckResult{} : results.back();
  }

  FeedSigner signer;
  TempFolder dir;
  QSettings settings{QString::fromStdString((dir.path() / "settings.ini").string()),
                     QSettings::IniFormat};
  std::vector<UpdateCheckResult> results;
};

TEST_F(AppUpdaterTest, ManualCheckSaysWhatItFound) {
  FeedServer newer(signer.sign(
      R"({"version": "0.2.0", "date": "2026-12-01", "notes": "Faster previews",
          "url": "https://downloads.example.org/tessane"})"));
  const UpdateCheckResult found = checkNow(newer);
  EXPECT_EQ(found.outcome, Outcome::newer);
  EXPECT_TRUE(found.manual);
  EXPECT_EQ(found.message, "Tessane Rename 0.2.0 is available. You have 0.1.0.");
  ASSERT_TRUE(found.feed);
  EXPECT_EQ(found.feed->notes, "Faster previews");
  EXPECT_EQ(found.feed->date, QDate(2026, 12, 1));
  EXPECT_EQ(found.feed->download, QUrl("https://downloads.example.org/tessane"));

  results.clear();
  FeedServer same(signer.sign(R"({"version": "0.1.0"})"));
  const UpdateCheckResult current = checkNow(same);
  EXPECT_EQ(current.outcome, Outcome::upToDate);
  EXPECT_EQ(current.message, "Tessane Rename 0.1.0 is the newest version.");
}

// Only a feed signed with the build's key, byte for byte, and newer than this version brings a
// notice; a manual check says plainly why anything else brought none.
TEST_F(AppUpdaterTest, OnlyAFeedSignedWithTheBuildsKeyCounts) {
  const QByteArray feed = R"({"version": "0.2.0", "notes": "Faster previews"})";
  const QByteArray notSigned =
      "Couldn’t check for updates: the update information isn’t signed with this version’s key, "
      "so it was ignored";

  QByteArray tampered = feed;
  tampered.replace("0.2.0", "0.3.0");  // one byte changed after signing
  FeedSigner stranger;
  const std::vector<std::pair<const char*, QByteArray>> refused{
      {"a changed byte", FeedSigner::envelope(tampered, signer.signature(feed))},
      {"another key", stranger.sign(feed)},
      {"no signature", FeedSigner::envelope(feed, QByteArray())},
      {"the bare feed", feed},
      {"a signature cut short", FeedSigner::envelope(feed, signer.signature(feed).left(63))},
  };
  for (const auto& [what, served] : refused) {
    results.clear();
    FeedServer server(served);
    const UpdateCheckResult r = checkNow(server);
    EXPECT_EQ(r.outcome, Outcome::failed) << what;
    EXPECT_EQ(r.message, QString::fromUtf8(notSigned)) << what;
    EXPECT_FALSE(r.feed) << what;

    results.clear();
    auto u = updater(server);
    settings.remove(AppUpdater::kLastCheckKey);
    u->checkIfDue();
    ASSERT_TRUE(waitFor([&] { return u->canCheck(); }));
    EXPECT_TRUE(results.empty()) << what << ": the daily check shows nothing";
  }

  // An older feed, rightly signed, served again in place of the current one.
  results.clear();
  FeedServer replayed(signer.sign(R"({"version": "0.0.9", "url": "https://old.example.org"})"));
  const UpdateCheckResult old = checkNow(replayed);
  EXPECT_EQ(old.outcome, Outcome::upToDate);
  EXPECT_EQ(old.message, "Tessane Rename 0.1.0 is the newest version.");
  results.clear();
  auto u = updater(replayed);
  settings.remove(AppUpdater::kLastCheckKey);
  u->checkIfDue();
  ASSERT_TRUE(waitFor([&] { return u->canCheck(); }));
  EXPECT_TRUE(results.empty()) << "an old feed brings no notice";

  // The same bytes, rightly signed: the notice.
  results.clear();
  FeedServer good(signer.sign(feed));
  EXPECT_EQ(checkNow(good).outcome, Outcome::newer);
}

TEST(SignedFeedTest, TheEnvelopeOpensOnlyWithItsKey) {
  FeedSigner signer;
  const QByteArray feed = "{\"version\": \"1.0\"}\n";  // the trailing line feed is signed too
  EXPECT_EQ(openSignedFeed(signer.sign(feed), signer.publicKey()), feed);
  EXPECT_FALSE(openSignedFeed(signer.sign(feed), FeedSigner().publicKey()));
  EXPECT_FALSE(openSignedFeed(FeedSigner::envelope(feed.chopped(1), signer.signature(feed)),
                              signer.publicKey()));
  EXPECT_FALSE(openSignedFeed(signer.sign(feed), signer.publicKey().left(31)));
  EXPECT_FALSE(
      openSignedFeed(R"({"feed": "not base64!", "signature": "AAAA"})", signer.publicKey()));
  EXPECT_FALSE(openSignedFeed("", signer.publicKey()));
}

// scripts/sign-feed.sh, as the one who publishes a feed runs it: its key pair and envelope are what
// the check accepts.
TEST(SignedFeedTest, TheSigningScriptMakesWhatTheCheckAccepts) {
  if (QProcess::execute("openssl", {"version"}) != 0) GTEST_SKIP() << "openssl is not installed";
  TempFolder dir;
  const QString key = QString::fromStdString((dir.path() / "secret.pem").string());
  const QString feedFile = QString::fromStdString((dir.path() / "feed.json").string());
  const QByteArray feed = R"({"version": "3.1", "notes": "Signed by the script"})";
  QFile out(feedFile);
  ASSERT_TRUE(out.open(QIODevice::WriteOnly));
  out.write(feed);
  out.close();

  const auto run = [](const QStringList& arguments) {
    QProcess script;
    script.start("bash", QStringList{TESSANE_SIGN_FEED_SCRIPT} + arguments);
    EXPECT_TRUE(script.waitForFinished());
    EXPECT_EQ(script.exitCode(), 0) << script.readAllStandardError().toStdString();
    return script.readAllStandardOutput();
  };
  const QByteArray publicKey = QByteArray::fromBase64(run({"--new-key", key}).trimmed());
  ASSERT_EQ(publicKey.size(), 32);
  EXPECT_EQ(QByteArray::fromBase64(run({"--public-key", key}).trimmed()), publicKey);
  const QByteArray envelope = run({key, feedFile});
  EXPECT_EQ(openSignedFeed(envelope, publicKey), feed);
  EXPECT_FALSE(openSignedFeed(envelope, FeedSigner().publicKey()));
}

TEST_F(AppUpdaterTest, ManualCheckSaysPlainlyWhatWentWrong) {
  FeedServer malformed(signer.sign(R"({"version": "0.2.0", "url": )"));
  UpdateCheckResult r = checkNow(malformed);
  EXPECT_EQ(r.outcome, Outcome::failed);
  EXPECT_EQ(r.message, "Couldn’t check for updates: the update information can’t be read");

  results.clear();
  FeedServer huge(signer.sign(QByteArray(2 * 1024 * 1024, ' ') + R"({"version": "9.0"})"));
  EXPECT_EQ(checkNow(huge).message,
            "Couldn’t check for updates: the update information can’t be read");

  results.clear();
  FeedServer closed("", FeedServer::Mode::closed);
  r = checkNow(closed);
  EXPECT_EQ(r.outcome, Outcome::failed);
  EXPECT_TRUE(r.message.startsWith("Couldn’t check for updates: ")) << r.message.toStdString();
  EXPECT_GT(r.message.size(), QString("Couldn’t check for updates: ").size()) << "with the reason";

  // A server that never answers is given up on (after the updater's own timeout, not the test's).
  results.clear();
  FeedServer silent("", FeedServer::Mode::silent);
  r = checkNow(silent, std::chrono::milliseconds(300));
  EXPECT_EQ(silent.requests, 1);
  EXPECT_EQ(r.outcome, Outcome::failed);
  EXPECT_EQ(r.message, "Couldn’t check for updates: the server took too long to answer");
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

  FeedServer newer(signer.sign(R"({"version": "1.0"})"));
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
  FeedServer newer(signer.sign(R"({"version": "1.0"})"));
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

// A build is given its feed and key, or has no update check at all: this one (the tests' build)
// has none.
TEST_F(AppUpdaterTest, ABuildWithoutAFeedHasNoUpdateCheck) {
  Distribution none;
  EXPECT_EQ(AppUpdater::forBuild(settings, QVersionNumber(0, 1), none), nullptr);
  Distribution keyless;
  keyless.updateFeed = QUrl("https://updates.example.org/feed.json");
  EXPECT_EQ(AppUpdater::forBuild(settings, QVersionNumber(0, 1), keyless), nullptr)
      << "a feed that can't be checked is not read";
  Distribution given = keyless;
  given.updateKey = signer.publicKey();
  EXPECT_NE(AppUpdater::forBuild(settings, QVersionNumber(0, 1), given), nullptr);

  const Distribution& build = Distribution::ofThisBuild();
  if (!build.updateFeed.isEmpty()) GTEST_SKIP() << "this build was given an update feed";
  EXPECT_EQ(AppUpdater::forBuild(settings, QVersionNumber(0, 1), build), nullptr);
  EXPECT_TRUE(build.reportAddress.isEmpty());
  EXPECT_TRUE(build.website.isEmpty());
  EXPECT_FALSE(build.buildNumber.isEmpty());
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
