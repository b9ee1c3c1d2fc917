#include "AppUpdater.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSettings>
#include <QTimer>

#include <sodium.h>

#include "TessaneRename/Distribution.h"
#include "TessaneRename/Messages.h"

namespace tessane {
namespace {

constexpr qint64 kMostFeedBytes = 1024 * 1024;
constexpr const char* kTooLarge = "tooLarge";  // a property of the reply that was cut short
constexpr auto kDay = std::chrono::hours(24);
constexpr auto kLookAgain = std::chrono::hours(1);
constexpr auto kFirstLook = std::chrono::seconds(20);  // after start-up, not during it

QString text(const std::string& s) {
  return QString::fromStdString(s);
}

std::string utf8(const QString& s) {
  return s.toStdString();
}

}  // namespace

std::optional<UpdateFeed> parseUpdateFeed(const QByteArray& text) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(text, &error);
  if (error.error != QJsonParseError::NoError || !document.isObject()) return std::nullopt;
  const QJsonObject object = document.object();
  UpdateFeed feed;
  qsizetype end = 0;
  const QString version = object.value("version").toString();
  feed.version = QVersionNumber::fromString(version, &end);
  if (feed.version.isNull() || end != version.size()) return std::nullopt;
  feed.date = QDate::fromString(object.value("date").toString(), Qt::ISODate);
  feed.notes = object.value("notes").toString();
  feed.download = QUrl(object.value("url").toString(), QUrl::StrictMode);
  if (!feed.download.isEmpty() &&
      (!feed.download.isValid() ||
       (feed.download.scheme() != "https" && feed.download.scheme() != "http"))) {
    return std::nullopt;
  }
  return feed;
}

std::optional<QByteArray> openSignedFeed(const QByteArray& envelope, const QByteArray& publicKey) {
  if (publicKey.size() != crypto_sign_PUBLICKEYBYTES || sodium_init() < 0) return std::nullopt;
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(envelope, &error);
  if (error.error != QJsonParseError::NoError || !document.isObject()) return std::nullopt;
  const QJsonObject object = document.object();
  const auto decoded = [&](const char* key) -> std::optional<QByteArray> {
    const QJsonValue value = object.value(QLatin1String(key));
    if (!value.isString()) return std::nullopt;
    auto bytes = QByteArray::fromBase64Encoding(value.toString().toLatin1(),
                                                QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes) return std::nullopt;
    return *bytes;
  };
  const std::optional<QByteArray> feed = decoded("feed");
  const std::optional<QByteArray> signature = decoded("signature");
  if (!feed || !signature || signature->size() != crypto_sign_BYTES) return std::nullopt;
  const bool good = crypto_sign_verify_detached(
                        reinterpret_cast<const unsigned char*>(signature->constData()),
                        reinterpret_cast<const unsigned char*>(feed->constData()),
                        static_cast<unsigned long long>(feed->size()),
                        reinterpret_cast<const unsigned char*>(publicKey.constData())) == 0;
  if (!good) return std::nullopt;
  return feed;
}

AppUpdater::AppUpdater(QSettings& settings, QVersionNumber current, QUrl feed, QByteArray publicKey,
                       QObject* parent)
    : QObject(parent),
      settings_(settings),
      current_(std::move(current)),
      feed_(std::move(feed)),
      publicKey_(std::move(publicKey)),
      network_(new QNetworkAccessManager(this)) {}

std::unique_ptr<AppUpdater> AppUpdater::forBuild(QSettings& settings, QVersionNumber current,
                                                 const Distribution& distribution) {
  if (!distribution.checksForUpdates()) return nullptr;
  return std::make_unique<AppUpdater>(settings, std::move(current), distribution.updateFeed,
                                      distribution.updateKey);
}

AppUpdater::~AppUpdater() {
  if (reply_ != nullptr) {
    reply_->disconnect(this);
    reply_->abort();
  }
}

void AppUpdater::setTimeout(std::chrono::milliseconds timeout) {
  timeout_ = timeout;
}

bool AppUpdater::automaticChecksEnabledIn(const QSettings& settings) {
  const QVariant value = settings.value(kAutomaticKey);
  return value.typeId() == QMetaType::Bool ? value.toBool()
                                           : value.toString() != QLatin1String("false");
}

void AppUpdater::setAutomaticChecksEnabled(bool enabled) {
  settings_.setValue(kAutomaticKey, enabled);
  if (!enabled && daily_ != nullptr) daily_->stop();
}

bool AppUpdater::isUnderTest() {
  const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
  return platform.startsWith(QLatin1String("offscreen")) ||
         platform.startsWith(QLatin1String("minimal")) ||
         qEnvironmentVariableIsSet("TESSANE_TESTING");
}

bool AppUpdater::startAutomaticChecks() {
  if (isUnderTest() || !automaticChecksEnabled()) return false;
  if (daily_ == nullptr) {
    daily_ = new QTimer(this);
    connect(daily_, &QTimer::timeout, this, &AppUpdater::checkIfDue);
  }
  daily_->start(kLookAgain);
  QTimer::singleShot(kFirstLook, this, &AppUpdater::checkIfDue);
  return true;
}

void AppUpdater::checkIfDue() {
  if (!automaticChecksEnabled() || !canCheck()) return;
  const QDateTime last = settings_.value(kLastCheckKey).toDateTime();
  const QDateTime now = QDateTime::currentDateTimeUtc();
  // A last check "in the future" (a clock set back) counts as due.
  if (last.isValid() && last <= now && last.secsTo(now) < std::chrono::seconds(kDay).count()) {
    return;
  }
  check(false);
}

void AppUpdater::checkNow() {
  if (canCheck()) check(true);
}

void AppUpdater::check(bool manual) {
  QNetworkRequest request(feed_);
  request.setHeader(QNetworkRequest::UserAgentHeader, "Tessane Rename/" + current_.toString());
  request.setTransferTimeout(static_cast<int>(timeout_.count()));
  reply_ = network_->get(request);
  connect(reply_, &QNetworkReply::downloadProgress, this, [this](qint64 received, qint64) {
    if (received > kMostFeedBytes) {
      reply_->setProperty(kTooLarge, true);
      reply_->abort();
    }
  });
  connect(reply_, &QNetworkReply::finished, this, [this, manual] { finished(manual); });
  // The transfer timeout restarts whenever bytes arrive: a feed that trickles in is cut here.
  QTimer::singleShot(timeout_, reply_, [reply = reply_] { reply->abort(); });
  emit canCheckChanged();
}

void AppUpdater::finished(bool manual) {
  QNetworkReply* reply = reply_;
  reply_ = nullptr;
  reply->deleteLater();
  settings_.setValue(kLastCheckKey, QDateTime::currentDateTimeUtc());

  UpdateCheckResult result;
  result.manual = manual;
  const QNetworkReply::NetworkError error = reply->error();
  if (reply->property(kTooLarge).toBool()) {
    result.message = text(Messages::updateCheckFailed(Messages::updateFeedUnreadable()));
  } else if (error == QNetworkReply::OperationCanceledError ||
             error == QNetworkReply::TimeoutError) {
    result.message = text(Messages::updateCheckFailed(Messages::updateServerTooSlow()));
  } else if (error != QNetworkReply::NoError) {
    result.message = text(Messages::updateCheckFailed(utf8(reply->errorString())));
  } else if (const std::optional<QByteArray> bytes =
                 openSignedFeed(reply->read(kMostFeedBytes), publicKey_);
             !bytes) {
    result.message = text(Messages::updateCheckFailed(Messages::updateFeedNotSigned()));
  } else if (auto feed = parseUpdateFeed(*bytes)) {
    result.feed = std::move(feed);
    const bool newer = result.feed->version > current_;
    result.outcome =
        newer ? UpdateCheckResult::Outcome::newer : UpdateCheckResult::Outcome::upToDate;
    result.message = newer ? text(Messages::updateAvailable(utf8(result.feed->version.toString()),
                                                            utf8(current_.toString())))
                           : text(Messages::upToDate(utf8(current_.toString())));
  } else {
    result.message = text(Messages::updateCheckFailed(Messages::updateFeedUnreadable()));
  }
  emit canCheckChanged();
  if (manual || result.outcome == UpdateCheckResult::Outcome::newer) emit checked(result);
}

}  // namespace tessane
