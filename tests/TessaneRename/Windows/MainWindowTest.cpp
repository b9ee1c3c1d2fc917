// The main window driven as a user would, on the offscreen platform: a folder dropped on it, a
// template typed, the new names and their problems read back from the list, Rename and Undo.
#include "TessaneRename/Windows/MainWindow.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QUrl>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "FileContents.h"
#include "WindowTest.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::folderContents;
using testing::TempFolder;
using testing::waitFor;

class Window : public testing::WindowTest {
 protected:
  Window() {
    makeWindow();
    model_->setRevealer(
        [this](const std::vector<fs::path>& files) { desktop_.revealFiles(files); });
  }

  // Drops `paths` on the window as a file manager would.
  void drop(const std::vector<fs::path>& paths) {
    QMimeData mime;
    QList<QUrl> urls;
    for (const fs::path& p : paths)
      urls << QUrl::fromLocalFile(QString::fromStdString(p.string()));
    mime.setUrls(urls);
    const QPointF at(window_->width() / 2.0, window_->height() / 2.0);
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window_.get(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent dropped(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window_.get(), &dropped);
  }

  // Types a pattern by hand ("Write by hand" turned on first).
  void type(const QString& text) {
    auto* byHand = child<QToolButton>("writeByHand");
    if (!byHand->isChecked()) QTest::mouseClick(byHand, Qt::LeftButton);
    testing::typeTemplate(*window_, text);
  }

  bool settled() { return testing::settled(*model_); }

  // The list as shown: current name → (new name, status tooltip).
  std::map<QString, std::pair<QString, QString>> shownList() const {
    std::map<QString, std::pair<QString, QString>> out;
    const auto tips = testing::shownNames(*window_, FileListModel::status, Qt::ToolTipRole);
    for (const auto& [name, newName] : testing::shownNames(*window_))
      out[name] = {newName, tips.at(name)};
    return out;
  }
};

TEST_F(Window, TypedTemplateShowsNewNamesAndRenameMovesTheFiles) {
  photos_.file("b.jpg", "b");
  photos_.file("a.jpg", "a");
  EXPECT_EQ(child<QLabel>("dropHint")->isVisibleTo(window_.get()), true) << "empty window";

  drop({photos_.path()});
  type("new_{name}");
  ASSERT_TRUE(settled());
  EXPECT_FALSE(child<QLabel>("templateProblems")->isVisibleTo(window_.get()));
  EXPECT_TRUE(window_->fileView()->isVisibleTo(window_.get()));
  using Row = std::pair<QString, QString>;
  EXPECT_EQ(shownList(),
            (std::map<QString, Row>{{"a.jpg", {"new_a.jpg", ""}}, {"b.jpg", {"new_b.jpg", ""}}}));

  auto* rename = child<QPushButton>("rename");
  ASSERT_TRUE(rename->isEnabled());
  QTest::mouseClick(rename, Qt::LeftButton);
  ASSERT_TRUE(settled());
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"new_a.jpg", "a"}, {"new_b.jpg", "b"}}));
  EXPECT_EQ(desktop_.revealed.size(), 1u) << "renamed files shown in the file manager";

  // The toast reports the batch and offers Undo, which puts the names back.
  ASSERT_TRUE(child<QWidget>("toast")->isVisibleTo(window_.get()));
  EXPECT_EQ(child<QLabel>("toastText")->text(), "2 files renamed");
  auto* undo = child<QPushButton>("toastAction");
  ASSERT_TRUE(undo->isVisibleTo(window_.get()));
  QTest::mouseClick(undo, Qt::LeftButton);
  ASSERT_TRUE(settled());
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"a.jpg", "a"}, {"b.jpg", "b"}}));
  EXPECT_EQ(child<QLabel>("toastText")->text(), "2 files back to their previous names");
}

TEST_F(Window, AFirstNameCountsAsTheSettingsSay) {
  app_->preferences().setCounterStart(7);
  app_->preferences().setCounterDigits(2);
  photos_.file("a.jpg", "a");
  photos_.file("b.jpg", "b");
  drop({photos_.path()});
  type("shot_{counter}");
  ASSERT_TRUE(settled());
  std::set<QString> names;
  for (const auto& [current, row] : shownList())
    names.insert(row.first);
  EXPECT_EQ(names, (std::set<QString>{"shot_07.jpg", "shot_08.jpg"}));
}

TEST_F(Window, ProblemsAreShownAndRenameIsRefused) {
  photos_.file("a.jpg", "a");
  photos_.file("b.jpg", "b");
  drop({photos_.path()});

  type("{nope");
  EXPECT_TRUE(child<QLabel>("templateProblems")->isVisibleTo(window_.get()))
      << "an unclosed brace is shown as it is typed";
  type("{nope}");
  EXPECT_TRUE(child<QLabel>("templateProblems")->text().contains("nope"));

  // Two files with one name: both rows red with the clash as their tooltip; Rename is off, and
  // its shortcut gets the model's message in the error strip.
  type("same");
  ASSERT_TRUE(settled());
  EXPECT_FALSE(child<QLabel>("templateProblems")->isVisibleTo(window_.get()));
  for (const auto& [name, row] : shownList()) {
    EXPECT_EQ(row.first, "same.jpg");
    EXPECT_FALSE(row.second.isEmpty()) << name.toStdString() << " has its problem as a tooltip";
  }
  const QModelIndex first = window_->fileList().index(0, FileListModel::newName);
  EXPECT_EQ(first.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(0xc6, 0x28, 0x28));
  EXPECT_FALSE(child<QPushButton>("rename")->isEnabled());
  EXPECT_FALSE(child<QWidget>("errorStrip")->isVisibleTo(window_.get()));
  QTest::keyClick(window_->templateField(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_TRUE(child<QWidget>("errorStrip")->isVisibleTo(window_.get()));
  EXPECT_EQ(child<QLabel>("errorText")->text(), "Fix the errors before renaming.");

  // Go to the First Error selects the row in the list.
  window_->action(CommandID::goToFirstError)->trigger();
  EXPECT_EQ(window_->fileView()->selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(folderContents(photos_.path()).size(), 2u);
}

// A keystroke rebuilds the preview of the same files: the list repaints its cells in place
// rather than resetting (which would drop the selection and the scroll of a long list).
TEST_F(Window, NewPreviewKeepsTheRowsAndTheSelection) {
  for (int i = 0; i < 50; ++i)
    photos_.file(QStringLiteral("f%1.jpg").arg(i).toStdString());
  drop({photos_.path()});
  type("x_{name}");
  ASSERT_TRUE(settled());
  window_->fileView()->selectRow(7);
  QSignalSpy resets(&window_->fileList(), &QAbstractItemModel::modelReset);
  type("y_{name}");
  ASSERT_TRUE(settled());
  EXPECT_EQ(resets.count(), 0);
  EXPECT_EQ(window_->fileView()->selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(window_->fileList().index(7, FileListModel::newName).data().toString().left(2), "y_");
}

// A long list keeps its selection through the previews that typing brings, and every row gets
// its new name. (How long the main thread stalls is measured in bench/, not here.)
TEST_F(Window, TenThousandFilesGetTheirNamesAsTheTemplateIsTyped) {
  // In memory where there is such a place: making 10,000 files on a disk takes seconds.
  const TempFolder many(fs::is_directory("/dev/shm") ? fs::path("/dev/shm")
                                                     : fs::temp_directory_path());
  for (int i = 0; i < 10'000; ++i)
    many.file(QStringLiteral("IMG_%1.jpg").arg(i).toStdString());
  drop({many.path()});
  ASSERT_TRUE(settled());
  window_->fileView()->selectAll();  // a selection as big as the list, kept through the previews
  QCoreApplication::processEvents();

  child<QToolButton>("writeByHand")->click();
  QLineEdit* field = window_->templateField();
  field->clear();
  field->setFocus();
  // Each key's preview is let start before the next key, however slow the machine.
  for (QChar c : QStringLiteral("x_{name}")) {
    QTest::keyClick(field, c.toLatin1());
    QCoreApplication::processEvents();
  }
  ASSERT_TRUE(settled());
  EXPECT_EQ(window_->fileView()->selectionModel()->selectedRows().size(), 10'000);
  EXPECT_EQ(window_->fileList().index(9'999, FileListModel::newName).data().toString().left(6),
            "x_IMG_");
}

// The filter buttons show their counts, hide when they have nothing to show, and follow the
// preview: the errors filter picks up the files that a new template makes clash.
TEST_F(Window, FiltersByKindAndStatus) {
  photos_.file("a.jpg");
  photos_.file("b.jpg");
  photos_.file("c.NEF");
  drop({photos_.path()});
  type("{name}");
  ASSERT_TRUE(settled());
  const auto shown = [&] {
    QStringList names;
    for (int row = 0; row < window_->fileList().rowCount(); ++row)
      names << window_->fileList().index(row, FileListModel::currentName).data().toString();
    names.sort();
    return names.join(' ');
  };
  auto* raw = child<QToolButton>("rawFilter");
  auto* errors = child<QToolButton>("errorFilter");
  EXPECT_EQ(raw->text(), "RAW 1");
  EXPECT_FALSE(child<QToolButton>("videoFilter")->isVisibleTo(window_.get()));
  EXPECT_FALSE(errors->isVisibleTo(window_.get()));

  raw->click();
  EXPECT_EQ(shown(), "c.NEF");
  raw->click();
  EXPECT_EQ(shown(), "a.jpg b.jpg c.NEF");

  type("same");
  ASSERT_TRUE(settled());
  ASSERT_TRUE(errors->isVisibleTo(window_.get()));
  EXPECT_EQ(errors->text(), "Errors 2");
  errors->click();
  EXPECT_EQ(shown(), "a.jpg b.jpg");
  type("{name}");
  ASSERT_TRUE(settled());
  EXPECT_EQ(shown(), "") << "no errors left to show";
  EXPECT_TRUE(errors->isVisibleTo(window_.get())) << "on, so that it can be turned off";
}

TEST_F(Window, SidebarSelectsAndRemovesFolders) {
  TempFolder other;
  other.file("c.jpg");
  photos_.file("a.jpg");
  drop({photos_.path(), other.path()});
  ASSERT_TRUE(waitFor([&] { return window_->fileList().rowCount() == 2; }));
  auto* folders = child<QListWidget>("folders");
  ASSERT_EQ(folders->count(), 2);
  EXPECT_EQ(child<QLabel>("listTitle")->text(), "2 folders selected");

  folders->clearSelection();
  folders->item(1)->setSelected(true);
  ASSERT_TRUE(waitFor([&] { return window_->fileList().rowCount() == 1; }));
  EXPECT_EQ(window_->fileList().index(0, 0).data().toString(), "c.jpg");

  window_->action(CommandID::removeFromList)->trigger();
  EXPECT_EQ(folders->count(), 1);
  EXPECT_EQ(model_->folders(), std::vector<fs::path>{photos_.path()});
}

}  // namespace
}  // namespace tessane
