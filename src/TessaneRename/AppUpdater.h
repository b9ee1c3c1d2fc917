// The check for a newer version: a small signed JSON feed, read with Qt Network. A build has one
// only when its builder gives the feed's address and public key (Distribution): without them no
// AppUpdater is made, so there is no check, no command and no setting.
//
// The feed is the exact bytes of a JSON object:
//
//   {"version": "0.2.0", "date": "2026-12-01", "notes": "What changed", "url": "https://…"}
//
// and it is served inside a signed envelope, a JSON object of two base64 texts:
//
//   {"feed": "<base64 of the feed's bytes>", "signature": "<base64 of their Ed25519 signature>"}
//
// The signature is Ed25519 (libsodium's detached signature, RFC 8032) over exactly the bytes that
// "feed" decodes to, checked against the public key the build was given; base64 keeps those bytes
// whole whatever the server does to the envelope's spacing. scripts/sign-feed.sh makes the key
// pair and the envelope; the secret key never enters the repository. An envelope that is not
// signed, or signed with another key, or whose feed is not newer than this version (an old feed
// served again) brings no notice.
//
// "Check for Updates…" (checkNow) always ends with `checked`: a newer version, this version is the
// newest, or the failure in plain words (an unsigned feed is one). The automatic check runs once a
// day (at start when the last one is a day old, then every hour it looks again), and only a newer
// version reaches the user: its failures are silent. Nothing is ever downloaded; the notice offers
// the feed's address.
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
#include <memory>
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

struct Distribution;

// The feed's entry; nullopt when the text is not such a feed (no readable version, a download
// address that is not http or https).
std::optional<UpdateFeed> parseUpdateFeed(const QByteArray& text);

// The feed's bytes from a signed envelope (above) when its signature is good for `publicKey` (32
// bytes); nullopt for anything else: not an envelope, no signature, another key, a changed byte.
std::optional<QByteArray> openSignedFeed(const QByteArray& envelope, const QByteArray& publicKey);

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

  // `feed` is the signed envelope's address, `publicKey` the 32 bytes its signature is checked
  // against.
  AppUpdater(QSettings& settings, QVersionNumber current, QUrl feed, QByteArray publicKey,
             QObject* parent = nullptr);
  // The build's update check; none when the build has no feed.
  static std::unique_ptr<AppUpdater> forBuild(QSettings& settings, QVersionNumber current,
                                              const Distribution& distribution);
  ~AppUpdater() override;

  // How long a check may wait for the server (15 s unless set).
  void setTimeout(std::chrono::milliseconds timeout);

  // False while a check runs: "Check for Updates…" is disabled then.
  bool canCheck() const { return reply_ == nullptr; }
  void checkNow();

  bool automaticChecksEnabled() const { return automaticChecksEnabledIn(settings_); }
  // The setting as stored (on when absent).
  static bool automaticChecksEnabledIn(const QSettings& settings);
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
  QByteArray publicKey_;
  std::chrono::milliseconds timeout_{15'000};
  QNetworkAccessManager* network_;
  QNetworkReply* reply_ = nullptr;
  QTimer* daily_ = nullptr;
};

}  // namespace tessane
