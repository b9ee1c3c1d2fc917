// How long the main window's thread goes without a turn of its event loop, which is what a user
// feels as a stall (a frame is 16 ms). The real window runs on the offscreen platform (it paints
// as on a screen) over TESSANE_BENCH_FILES files (default 10,000): JPEGs with an embedded
// preview like a camera's, hard links to a few pictures so that making them is quick (in memory
// where /dev/shm is).
//
//   typing     a template typed into the name field a key every 60 ms while the previews of
//              10,000 files rebuild behind it;
//   scrolling  the list, thumbnails on, a page every frame (TESSANE_BENCH_FRAMES, default 300),
//              then the grid the same way.
//
// A timer ticks every millisecond on the main thread; the longest gap between two ticks, and
// the time a key or a scroll step takes to be handled, is the stall reported.
#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <exiv2/exiv2.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "TempFolder.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Windows/FileGridView.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/ThumbnailCache.h"

namespace {

namespace fs = std::filesystem;
using namespace tessane;

int setting(const char* name, int fallback) {
  const char* v = std::getenv(name);
  return v != nullptr ? std::atoi(v) : fallback;
}

// A 3000 × 2000 JPEG with a 160 × 107 preview in its EXIF, like a camera's.
void writePhoto(const fs::path& path, int seed) {
  QImage picture(3000, 2000, QImage::Format_RGB32);
  picture.fill(QColor::fromHsv((seed * 37) % 360, 120, 220));
  QPainter(&picture).fillRect(0, 1300, 3000, 700, QColor(60, 140, 60));
  picture.save(QString::fromStdString(path.string()), "JPEG", 80);
  QByteArray thumb;
  QBuffer buffer(&thumb);
  picture.scaled(160, 107, Qt::KeepAspectRatio, Qt::SmoothTransformation).save(&buffer, "JPEG");
  auto image = Exiv2::ImageFactory::open(path.string());
  image->readMetadata();
  Exiv2::ExifData& exif = image->exifData();
  exif["Exif.Image.Model"] = "X-T5";
  exif["Exif.Photo.DateTimeOriginal"] = "2024:05:01 12:00:00";
  Exiv2::ExifThumb(exif).setJpegThumbnail(reinterpret_cast<const Exiv2::byte*>(thumb.constData()),
                                          static_cast<long>(thumb.size()));
  image->writeMetadata();
}

// The longest gap between two turns of the main thread's event loop since the last reset.
class StallMeter {
 public:
  StallMeter() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(1);
    QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
    timer_.start();
    clock_.start();
    last_ = clock_.nsecsElapsed();
  }
  void reset() {
    last_ = clock_.nsecsElapsed();
    longest_ = 0;
    over_ = 0;
  }
  // Something run on the main thread outside the event loop (a key handled) counts too.
  void note(qint64 nanoseconds) { record(nanoseconds); }
  double longestMs() const { return static_cast<double>(longest_) / 1e6; }
  int framesMissed() const { return over_; }

 private:
  void tick() {
    const qint64 now = clock_.nsecsElapsed();
    record(now - last_);
    last_ = now;
  }
  void record(qint64 gap) {
    longest_ = std::max(longest_, gap);
    if (gap > 16'000'000) ++over_;
  }
  QTimer timer_;
  QElapsedTimer clock_;
  qint64 last_ = 0, longest_ = 0;
  int over_ = 0;
};

// Turns the event loop for `ms` milliseconds.
void spin(int ms) {
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < ms)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
}

bool settle(FolderModel& model, int limitMs) {
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < limitMs) {
    spin(20);
    if (model.previewBuildCount() == 0 && model.preview() != nullptr &&
        model.previewSources().size() == model.files().size() && !model.files().empty() &&
        !model.files().back().metadata.empty()) {
      return true;
    }
  }
  return false;
}

void scroll(QAbstractItemView* view, StallMeter& meter, int frames, const char* what,
            ThumbnailCache* thumbnails) {
  QScrollBar* bar = view->verticalScrollBar();
  bar->setValue(0);
  spin(200);
  meter.reset();
  const int step = std::max(1, bar->pageStep());
  for (int f = 0; f < frames && bar->value() < bar->maximum(); ++f) {
    QElapsedTimer t;
    t.start();
    bar->setValue(bar->value() + step);
    view->viewport()->repaint();  // the frame, painted now: what scrolling costs the thread
    meter.note(t.nsecsElapsed());
    spin(16);
  }
  std::printf("%-28s longest stall %6.1f ms, %3d frames over 16 ms, %d thumbnails waiting\n", what,
              meter.longestMs(), meter.framesMissed(),
              thumbnails != nullptr ? thumbnails->pending() : 0);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const int files = setting("TESSANE_BENCH_FILES", 10'000);
  const int frames = setting("TESSANE_BENCH_FRAMES", 300);

  const testing::TempFolder shoot(fs::is_directory("/dev/shm") ? fs::path("/dev/shm")
                                                               : fs::temp_directory_path());
  const testing::TempFolder home;
  constexpr int kPictures = 24;
  // The pictures beside the shoot (hard links stay on one file system), in a folder of its own.
  const testing::TempFolder pictures(shoot.path().parent_path());
  for (int i = 0; i < kPictures; ++i)
    writePhoto(pictures.path() / ("model" + std::to_string(i) + ".jpg"), i);
  for (int i = 0; i < files; ++i) {
    char name[32];
    std::snprintf(name, sizeof name, "DSC_%05d.jpg", i);
    fs::create_hard_link(pictures.path() / ("model" + std::to_string(i % kPictures) + ".jpg"),
                         shoot.path() / name);
  }

  AppContext app(
      std::make_unique<QSettings>(QString::fromStdString((home.path() / "bench.conf").string()),
                                  QSettings::IniFormat),
      home.path() / "data");
  const std::unique_ptr<DesktopServices> desktop = systemDesktopServices();
  FolderModel model(app);
  MainWindow window(model, app, *desktop);
  window.resize(1280, 800);
  window.show();
  StallMeter meter;

  QElapsedTimer opened;
  opened.start();
  model.open({shoot.path()});
  if (!settle(model, 120'000)) {
    std::fprintf(stderr, "the folder did not settle\n");
    return 1;
  }
  std::printf("%d files listed, read and previewed in %lld ms (longest stall %.1f ms)\n", files,
              static_cast<long long>(opened.elapsed()), meter.longestMs());

  // Typing, the previews rebuilding behind every key.
  QLineEdit* field = window.templateField();
  field->setFocus();
  field->clear();
  spin(200);
  settle(model, 60'000);
  meter.reset();
  for (const QChar c : QStringLiteral("{date:yyyy-MM-dd}_{model}_{counter}")) {
    QElapsedTimer t;
    t.start();
    QTest::keyClick(field, c.toLatin1());
    meter.note(t.nsecsElapsed());
    spin(60);
  }
  settle(model, 60'000);
  std::printf("%-28s longest stall %6.1f ms, %3d frames over 16 ms\n", "typing (previews rebuild)",
              meter.longestMs(), meter.framesMissed());

  window.showGrid(false);
  scroll(window.fileView(), meter, frames, "scrolling the list", window.thumbnails());
  window.showGrid(true);
  scroll(window.gridView(), meter, frames, "scrolling the grid", window.thumbnails());
  return 0;
}
