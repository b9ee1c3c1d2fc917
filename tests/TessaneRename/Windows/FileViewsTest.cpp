// The file list's views and the file panel, driven on the offscreen platform: the panel follows
// the selected file and lines up two cameras' clocks, thumbnails arrive while the main thread
// stays free, the grid and the list share one selection, and an empty window offers the recent
// folders and presets.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <exiv2/exiv2.hpp>

#include <algorithm>

#include <fstream>

#include "MediaMetadata/Fixtures.h"
#include "Rules.h"
#include "TessaneRename/PresetLibrary.h"
#include "TessaneRename/RecentFolders.h"
#include "TessaneRename/Windows/ClockSyncCard.h"
#include "TessaneRename/Windows/FileGridView.h"
#include "TessaneRename/Windows/InspectorPanel.h"
#include "TessaneRename/Windows/ThumbnailCache.h"
#include "TessaneRename/Windows/ThumbnailLoader.h"
#include "TextJoin.h"
#include "WindowTest.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;
using testing::waitFor;

// A photo whose picture is only its embedded preview: the main image is not decodable, so a
// thumbnail can only come from the preview.
void writePreviewOnlyPhoto(const fs::path& path, const QImage& preview, int orientation) {
  { std::ofstream(path, std::ios::binary) << testing::tinyJpeg(6000, 4000); }
  QByteArray jpeg;
  QBuffer buffer(&jpeg);
  preview.save(&buffer, "JPEG");
  auto image = Exiv2::ImageFactory::open(path.string());
  image->readMetadata();
  Exiv2::ExifData& exif = image->exifData();
  exif["Exif.Image.Orientation"] = static_cast<uint16_t>(orientation);
  Exiv2::ExifThumb(exif).setJpegThumbnail(reinterpret_cast<const Exiv2::byte*>(jpeg.constData()),
                                          static_cast<long>(jpeg.size()));
  image->writeMetadata();
}

class FileViews : public testing::WindowTest {
 protected:
  fs::path photo(const std::string& name, const std::string& model, const std::string& serial,
                 const std::string& when) {
    const fs::path path = photos_.file(name, testing::tinyJpeg(600, 400));
    testing::writeMetadata(path, {{"Exif.Image.Model", model},
                                  {"Exif.Photo.BodySerialNumber", serial},
                                  {"Exif.Photo.DateTimeOriginal", when}});
    return path;
  }

  void openPhotos(const QString& templateText = {}) {
    model_->open({photos_.path()});
    if (!templateText.isEmpty()) type(templateText);
    // Settled: every file's data read (the file dates at least) and the preview made of it.
    ASSERT_TRUE(waitFor([&] {
      const auto& files = model_->files();
      return !files.empty() &&
             std::all_of(files.begin(), files.end(),
                         [](const FolderFile& f) { return !f.metadata.empty(); }) &&
             model_->previewBuildCount() == 0 && model_->preview() != nullptr &&
             model_->previewSources().size() == files.size() &&
             !model_->previewSources().front().metadata.empty();
    }));
  }

  void type(const QString& text) { testing::typeTemplate(*window_, text); }

  int rowOf(const std::string& name) const {
    return window_->fileList().rowOf(photos_.path() / name);
  }

  void selectRows(std::initializer_list<int> rows) {
    QItemSelection selection;
    for (int row : rows) {
      selection.select(window_->fileList().index(row, 0),
                       window_->fileList().index(row, FileListModel::columnCount_ - 1));
    }
    window_->fileView()->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    window_->inspector()->refresh();
  }

  QString labelText(const char* name) const {
    auto* label = window_->findChild<QLabel*>(name);
    return label != nullptr && label->isVisibleTo(window_.get()) ? label->text() : QString();
  }
};

TEST_F(FileViews, PanelShowsTheSelectedFilesTraceAndHidesOnItsCommand) {
  photo("DSC_0001.jpg", "Z6", "B-2", "2024:05:01 12:00:00");
  photo("DSC_0002.jpg", "Z6", "B-2", "2024:05:01 12:00:05");
  makeWindow();
  openPhotos("{date:yyyy}_{name}");

  selectRows({rowOf("DSC_0002.jpg")});
  EXPECT_EQ(labelText("inspectorTitle").remove(QChar(0x200B)), "DSC_0002.jpg");
  const QString trace = labelText("inspectorTrace").remove(QChar(0x200B));
  EXPECT_TRUE(trace.contains("DSC_0002")) << trace.toStdString();
  EXPECT_TRUE(trace.contains("2024_DSC_0002")) << trace.toStdString();
  EXPECT_TRUE(trace.contains("{date:yyyy}_{name}")) << trace.toStdString();
  EXPECT_TRUE(labelText("inspectorFields").contains("Z6"));

  // A new template reaches the panel without a new selection.
  type("x_{name}");
  ASSERT_TRUE(waitFor(
      [&] { return labelText("inspectorTrace").remove(QChar(0x200B)).contains("x_DSC_0002"); }));

  QAction* toggle = window_->action(CommandID::toggleInspector);
  ASSERT_TRUE(toggle->isEnabled());
  toggle->trigger();
  EXPECT_FALSE(window_->inspector()->isVisible());
  toggle->trigger();
  EXPECT_TRUE(window_->inspector()->isVisible());
}

TEST_F(FileViews, ClockSyncCardSetsTheWrongCamerasOffset) {
  photo("right.jpg", "X-T5", "A-1", "2024:05:01 12:00:00");
  photo("wrong.jpg", "Z6", "B-2", "2024:05:01 11:58:00");
  makeWindow();
  openPhotos();
  ClockSyncCard* card = window_->inspector()->clockSync();
  auto* apply = card->findChild<QPushButton*>("clockSyncApply");

  selectRows({rowOf("right.jpg")});
  EXPECT_FALSE(apply->isVisibleTo(window_.get())) << "one photo is not enough";
  selectRows({rowOf("right.jpg"), rowOf("wrong.jpg")});
  ASSERT_TRUE(apply->isVisibleTo(window_.get()));
  EXPECT_FALSE(apply->isEnabled()) << "the camera with the right time is chosen first";
  // The choices follow the selection's order in the model (by path): right.jpg comes first.
  auto* firstRight = card->findChild<QRadioButton*>("clockFirstRight");
  ASSERT_TRUE(firstRight->text().contains("right.jpg"));
  firstRight->click();
  ASSERT_TRUE(apply->isEnabled());
  apply->click();

  EXPECT_EQ(card->resultLine()->text(), "B-2 clock: +0:02:00");
  EXPECT_EQ(app_->bodies().bodies().clockOffsets.at("B-2"), 120);
  // The list shows the corrected time once the model has read the files again.
  const auto dateOf = [&](const std::string& name) {
    return window_->fileList().index(rowOf(name), FileListModel::date).data().toString();
  };
  EXPECT_TRUE(waitFor([&] { return dateOf("wrong.jpg") == dateOf("right.jpg"); }));
  EXPECT_EQ(card->resultLine()->text(), "B-2 clock: +0:02:00") << "kept for its pair";
}

TEST_F(FileViews, ThumbnailsComeFromEmbeddedPreviewsTurnedUpright) {
  QImage preview(160, 120, QImage::Format_RGB32);
  preview.fill(QColor(20, 40, 220));
  const fs::path upright = photos_.path() / "upright.jpg";
  const fs::path turned = photos_.path() / "turned.jpg";
  writePreviewOnlyPhoto(upright, preview, 1);
  writePreviewOnlyPhoto(turned, preview, 6);

  const QImage a = ThumbnailLoader::load(upright, 160);
  ASSERT_FALSE(a.isNull());
  EXPECT_EQ(a.size(), QSize(160, 120));
  EXPECT_GT(QColor(a.pixel(80, 60)).blue(), 180);
  EXPECT_EQ(ThumbnailLoader::load(turned, 160).size(), QSize(120, 160));
  EXPECT_TRUE(ThumbnailLoader::load(photos_.file("clip.mp4", "not a movie"), 160).isNull());
  EXPECT_TRUE(ThumbnailLoader::load(photos_.file("broken.jpg", "not a jpeg"), 160).isNull());
}

TEST_F(FileViews, ThumbnailsArriveWithoutHoldingUpTheList) {
  QImage picture(1600, 1000, QImage::Format_RGB32);
  picture.fill(QColor(200, 60, 30));
  for (int i = 0; i < 40; ++i) {
    picture.save(
        QString::fromStdString(photos_.path().string()) + QStringLiteral("/p%1.jpg").arg(i),
        "JPEG");
  }
  makeWindow();
  ASSERT_NE(window_->thumbnails(), nullptr) << "thumbnails are on by default";
  openPhotos();

  // Asking for a thumbnail that hasn't loaded answers with nothing and queues it: no decoding on
  // the main thread. Rows off screen have never been asked for.
  const FileListModel& list = window_->fileList();
  int notLoaded = 0;
  for (int i = 0; i < 40; ++i) {
    const fs::path file = photos_.path() / testing::join({"p", std::to_string(i), ".jpg"});
    if (window_->thumbnails()->isLoaded(file)) continue;
    ++notLoaded;
    EXPECT_TRUE(list.index(rowOf(file.filename().string()), 0)
                    .data(FileListModel::thumbnailRole)
                    .value<QPixmap>()
                    .isNull())
        << file;
  }
  EXPECT_GT(notLoaded, 0);

  const QModelIndex first = list.index(0, 0);
  ASSERT_TRUE(
      waitFor([&] { return !first.data(FileListModel::thumbnailRole).value<QPixmap>().isNull(); }));
  const QPixmap grid = first.data(FileListModel::thumbnailRole).value<QPixmap>();
  EXPECT_EQ(grid.deviceIndependentSize().toSize(), QSize(160, 100));
  EXPECT_EQ(first.data(Qt::DecorationRole).value<QPixmap>().deviceIndependentSize().toSize(),
            QSize(32, 32));
}

TEST_F(FileViews, GridAndListShareTheSelection) {
  for (int i = 0; i < 6; ++i)
    photos_.file(QStringLiteral("f%1.jpg").arg(i).toStdString());
  makeWindow();
  openPhotos();
  selectRows({2});

  window_->findChild<QToolButton*>("showGrid")->click();
  ASSERT_TRUE(window_->gridView()->isVisible());
  EXPECT_FALSE(window_->fileView()->isVisible());
  EXPECT_TRUE(window_->gridView()->selectionModel()->isRowSelected(2, {}));

  // Moving in the grid with the keyboard selects the next file's whole row.
  window_->gridView()->setFocus();
  window_->gridView()->setCurrentIndex(window_->fileList().index(2, 0));
  QTest::keyClick(window_->gridView(), Qt::Key_Right);
  ASSERT_EQ(model_->selection().size(), 1u);
  EXPECT_EQ(*model_->selection().begin(), window_->fileList().fileAt(3)->url);

  window_->findChild<QToolButton*>("showList")->click();
  ASSERT_TRUE(window_->fileView()->isVisible());
  EXPECT_EQ(window_->fileView()->selectionModel()->selectedRows().size(), 1);
  EXPECT_TRUE(window_->fileView()->selectionModel()->isRowSelected(3, {}));

  // Space ticks the current file in the grid too.
  window_->showGrid(true);
  window_->gridView()->setFocus();
  QTest::keyClick(window_->gridView(), Qt::Key_Space);
  EXPECT_EQ(model_->checked().count(window_->fileList().fileAt(3)->url), 1u);
}

TEST_F(FileViews, EmptyWindowOffersRecentFoldersAndPresets) {
  photos_.file("a.jpg");
  Preset preset;
  preset.name = "Wedding";
  preset.stack.rules.push_back(testing::formatRule("w_{name}"));
  ASSERT_TRUE(app_->presets().save(preset));
  RecentFolders(app_->settings()).note({photos_.path(), home_.path() / "gone"});
  makeWindow();

  auto* pane = window_->findChild<QWidget*>("emptyWindow");
  ASSERT_TRUE(pane->isVisible());
  QPushButton* folder = nullptr;
  QPushButton* wedding = nullptr;
  for (QPushButton* b : pane->findChildren<QPushButton*>()) {
    if (b->text() == QString::fromStdString(photos_.path().filename().string())) folder = b;
    if (b->text() == "Wedding") wedding = b;
  }
  ASSERT_NE(folder, nullptr) << "a recent folder that still exists";
  ASSERT_NE(wedding, nullptr);
  wedding->click();
  EXPECT_EQ(model_->rules(), preset.stack);
  folder->click();
  EXPECT_EQ(model_->folders(), std::vector<fs::path>{photos_.path()});
  EXPECT_FALSE(pane->isVisible());

  // The folder, once removed from the list, is offered in the sidebar's recent list.
  auto* recent = window_->findChild<QListWidget*>("recentFolderList");
  EXPECT_EQ(recent->count(), 0) << "it is in the list already";
  model_->removeFolder(photos_.path());
  ASSERT_EQ(recent->count(), 1);
  EXPECT_EQ(recent->item(0)->toolTip().toStdString(), photos_.path().string());
}

}  // namespace
}  // namespace tessane
