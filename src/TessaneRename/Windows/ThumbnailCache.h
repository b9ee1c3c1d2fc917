// The thumbnails of a window's files, loaded off the main thread and kept in a bounded cache.
//
// A view asks for a file's thumbnail while it paints the file's row, so only rows on screen are
// ever asked for. A cached thumbnail comes back at once; otherwise the file joins the queue and a
// null pixmap comes back. The queue is served newest first and keeps only the most recent
// requests, so that rows scrolled past are not loaded at all. Each load makes both sizes; what
// arrives is announced in batches (`arrived`), at most once per frame, so the main thread does
// one repaint for many thumbnails. The main thread only turns the finished images into pixmaps.
//
// Used on the main thread; loads run on the cache's own pool. Destroying it drops the queue and
// waits for the loads under way.
#pragma once

#include <QCache>
#include <QIcon>
#include <QObject>
#include <QPixmap>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

#include <QSet>
#include <deque>
#include <filesystem>
#include <mutex>

namespace tessane {

class ThumbnailCache : public QObject {
  Q_OBJECT

 public:
  enum class Size { list, grid };
  // The side of the square each size fits in, in device-independent pixels.
  static int sideOf(Size size);
  // A list-sized square showing `icon` small in its middle (transparent for a null icon).
  static QPixmap placeholder(const QIcon& icon);

  explicit ThumbnailCache(QObject* parent = nullptr);
  ~ThumbnailCache() override;

  // The thumbnail when it has been loaded; else a null pixmap, and the file is queued. A file
  // without a picture stays null (and is not loaded again).
  QPixmap thumbnail(const std::filesystem::path& file, Size size);
  // Whether the file has been loaded (with or without a picture).
  bool isLoaded(const std::filesystem::path& file) const;
  // Forgets every thumbnail and the queue (the files changed on disk).
  void clear();
  // Files waiting to load, for tests and the benchmark.
  int pending() const;

 signals:
  // The paths whose thumbnails arrived since the last announcement.
  void arrived(const QStringList& paths);

 private:
  struct Entry {
    QPixmap list, grid;
  };
  void enqueue(const QString& path);
  void drain();
  void deliver(const QString& path, const QImage& list, const QImage& grid);

  QThreadPool pool_;
  qreal pixelRatio_ = 1;
  QCache<QString, Entry> cache_;
  QSet<QString> queued_;  // main thread: asked for, not yet arrived
  QStringList arrived_;
  QTimer announce_;

  mutable std::mutex mutex_;   // guards what the loading threads share with the main thread
  std::deque<QString> queue_;  // newest at the back
  int running_ = 0;
  bool stopping_ = false;
};

}  // namespace tessane
