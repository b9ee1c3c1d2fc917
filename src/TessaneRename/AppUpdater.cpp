#include "AppUpdater.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSettings>
#include <QTimer>

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

QUrl AppUpdater::defaultFeed() {
  return QUrl("https://tessane.app/updates.json");
}

AppUpdater::AppUpdater(QSettings& settings, QVersionNumber current, QUrl feed, QObject* parent)
    : QObject(parent),
      settings_(settings),
      current_(std::move(current)),
      feed_(std::move(feed)),
      network_(new QNetworkAccessManager(this)) {}

AppUpdater::~AppUpdater() {
  if (reply_ != nullptr) {
    reply_->disconnect(this);
    reply_->abort();
  }
}

void AppUpdater::setTimeout(std::chrono::milliseconds timeout) {
  timeout_ = timeout;
}

bool AppUpdater::automaticChecksEnabled() const {
  const QVariant value = settings_.value(kAutomaticKey);
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
  } else if (auto feed = parseUpdateFeed(reply->read(kMostFeedBytes))) {
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
