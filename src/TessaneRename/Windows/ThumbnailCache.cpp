#include "TessaneRename/Windows/ThumbnailCache.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "TessaneRename/Windows/ThumbnailLoader.h"

namespace tessane {

namespace {

constexpr std::size_t kQueueLimit = 200;    // about two screens of grid
constexpr int kCacheKilobytes = 96 * 1024;  // some 1,500 grid thumbnails with their list ones
constexpr int kAnnounceMs = 16;

QString key(const std::filesystem::path& file) {
  return QString::fromStdString(file.string());
}

int kilobytes(const QPixmap& p) {
  return static_cast<int>(static_cast<qint64>(p.width()) * p.height() * 4 / 1024) + 1;
}

}  // namespace

int ThumbnailCache::sideOf(Size size) {
  return size == Size::list ? 32 : 160;
}

// The list's thumbnails are square, the picture centred, so that every name starts at one place.
static QImage squared(const QImage& picture, int side) {
  QImage out(side, side, QImage::Format_ARGB32_Premultiplied);
  out.fill(Qt::transparent);
  const QImage scaled = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QPainter painter(&out);
  painter.drawImage((side - scaled.width()) / 2, (side - scaled.height()) / 2, scaled);
  return out;
}

QPixmap ThumbnailCache::placeholder(const QIcon& icon) {
  const qreal ratio = qApp != nullptr ? qApp->devicePixelRatio() : 1.0;
  const int side = sideOf(Size::list);
  QPixmap out(static_cast<int>(side * ratio), static_cast<int>(side * ratio));
  out.setDevicePixelRatio(ratio);
  out.fill(Qt::transparent);
  if (!icon.isNull()) {
    QPainter painter(&out);
    icon.paint(&painter, QRect(side / 4, side / 4, side / 2, side / 2));
  }
  return out;
}

ThumbnailCache::ThumbnailCache(QObject* parent) : QObject(parent), cache_(kCacheKilobytes) {
  pixelRatio_ = qApp != nullptr ? qApp->devicePixelRatio() : 1.0;
  // Leave a core to the main thread and the previews.
  pool_.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1));
  announce_.setSingleShot(true);
  announce_.setInterval(kAnnounceMs);
  connect(&announce_, &QTimer::timeout, this, [this] {
    QStringList paths;
    paths.swap(arrived_);
    if (!paths.isEmpty()) emit arrived(paths);
  });
}

ThumbnailCache::~ThumbnailCache() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    queue_.clear();
  }
  pool_.waitForDone();
}

QPixmap ThumbnailCache::thumbnail(const std::filesystem::path& file, Size size) {
  const QString path = key(file);
  if (const Entry* e = cache_.object(path)) return size == Size::list ? e->list : e->grid;
  enqueue(path);
  return {};
}

bool ThumbnailCache::isLoaded(const std::filesystem::path& file) const {
  return cache_.contains(key(file));
}

int ThumbnailCache::pending() const {
  return static_cast<int>(queued_.size());
}

void ThumbnailCache::clear() {
  {
    const std::lock_guard lock(mutex_);
    queue_.clear();
  }
  cache_.clear();
  queued_.clear();
}

void ThumbnailCache::enqueue(const QString& path) {
  if (queued_.contains(path)) return;
  queued_.insert(path);
  bool start = false;
  {
    const std::lock_guard lock(mutex_);
    queue_.push_back(path);
    while (queue_.size() > kQueueLimit) {
      queued_.remove(queue_.front());  // scrolled past: asked for again if it comes back
      queue_.pop_front();
    }
    if (running_ < pool_.maxThreadCount()) {
      ++running_;
      start = true;
    }
  }
  if (start) pool_.start([this] { drain(); });
}

// On a loading thread: serves the queue, newest first, until it is empty.
void ThumbnailCache::drain() {
  for (;;) {
    QString path;
    {
      const std::lock_guard lock(mutex_);
      if (queue_.empty() || stopping_) {
        --running_;
        return;
      }
      path = std::move(queue_.back());
      queue_.pop_back();
    }
    const int gridSide = static_cast<int>(sideOf(Size::grid) * pixelRatio_);
    const int listSide = static_cast<int>(sideOf(Size::list) * pixelRatio_);
    const QImage grid = ThumbnailLoader::load(path.toStdString(), gridSide);
    const QImage list = grid.isNull() ? QImage() : squared(grid, listSide);
    QMetaObject::invokeMethod(
        this, [this, path, list, grid] { deliver(path, list, grid); }, Qt::QueuedConnection);
  }
}

void ThumbnailCache::deliver(const QString& path, const QImage& list, const QImage& grid) {
  if (!queued_.remove(path)) return;  // cleared meanwhile
  auto* entry = new Entry;
  if (!grid.isNull()) {
    entry->grid = QPixmap::fromImage(grid);
    entry->list = QPixmap::fromImage(list);
    entry->grid.setDevicePixelRatio(pixelRatio_);
    entry->list.setDevicePixelRatio(pixelRatio_);
  }
  cache_.insert(path, entry, kilobytes(entry->grid) + kilobytes(entry->list));
  arrived_ << path;
  if (!announce_.isActive()) announce_.start();
}

}  // namespace tessane
