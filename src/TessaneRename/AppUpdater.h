// The check for a newer version: a small JSON feed over HTTPS, read with Qt Network.
//
//   {"version": "0.2.0", "date": "2026-12-01", "notes": "What changed", "url": "https://…"}
//
// "Check for Updates…" (checkNow) always ends with `checked`: a newer version, this version is the
// newest, or the failure in plain words. The automatic check runs once a day (at start when the
// last one is a day old, then every hour it looks again), and only a newer version reaches the
// user: its failures are silent. Nothing is ever downloaded; the notice offers the feed's address.
//
// The automatic check never starts under tests: on Qt's offscreen or minimal platform, with
// TESSANE_TESTING set, or with the setting "automaticallyChecksForUpdates" off (on by default).
// "lastUpdateCheck" keeps when the last check ended. Main thread only.
#pragma once

#include <QDate>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QVersionNumber>

#include <chrono>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;
class QSettings;
class QTimer;

namespace tessane {

struct UpdateFeed {
  QVersionNumber version;
  QDate date;  // null when the feed gives none
  QString notes;
  QUrl download;  // where the user can get it (http or https)
};

// The feed's entry; nullopt when the text is not such a feed (no readable version, a download
// address that is not http or https).
std::optional<UpdateFeed> parseUpdateFeed(const QByteArray& text);

struct UpdateCheckResult {
  enum class Outcome { newer, upToDate, failed };
  Outcome outcome = Outcome::failed;
  bool manual = false;
  std::optional<UpdateFeed> feed;  // newer and upToDate
  QString message;                 // what the user reads (translated)
};

class AppUpdater : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool canCheck READ canCheck NOTIFY canCheckChanged)

 public:
  static constexpr const char* kAutomaticKey = "automaticallyChecksForUpdates";
  static constexpr const char* kLastCheckKey = "lastUpdateCheck";

  static QUrl defaultFeed();  // https://tessane.app/updates.json

  AppUpdater(QSettings& settings, QVersionNumber current, QUrl feed = defaultFeed(),
             QObject* parent = nullptr);
  ~AppUpdater() override;

  // How long a check may wait for the server (15 s unless set).
  void setTimeout(std::chrono::milliseconds timeout);

  // False while a check runs: "Check for Updates…" is disabled then.
  bool canCheck() const { return reply_ == nullptr; }
  void checkNow();

  bool automaticChecksEnabled() const;
  void setAutomaticChecksEnabled(bool enabled);
  static bool isUnderTest();
  // Starts the daily check unless it is turned off or the process runs under tests; true when it
  // started.
  bool startAutomaticChecks();
  // Checks now when the last check is a day old or there was none (what the daily timer calls).
  void checkIfDue();

 signals:
  void canCheckChanged();
  // After every manual check; after an automatic one only when a newer version exists.
  void checked(const tessane::UpdateCheckResult& result);

 private:
  void check(bool manual);
  void finished(bool manual);

  QSettings& settings_;
  QVersionNumber current_;
  QUrl feed_;
  std::chrono::milliseconds timeout_{15'000};
  QNetworkAccessManager* network_;
  QNetworkReply* reply_ = nullptr;
  QTimer* daily_ = nullptr;
};

}  // namespace tessane
