// The application's windows driven as a user would, on the offscreen platform: a setting changed
// in the settings window reaches the open windows' previews, the history window lists a batch and
// goes back from it, New Window opens a window of its own, and the report shows what it will send.
#include "TessaneRename/Windows/AppWindows.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QNetworkProxy>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

#include "FileContents.h"
#include "TempFolder.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/Distribution.h"
#include "TessaneRename/FakeDesktopServices.h"
#include "TessaneRename/FeedServer.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/QtPrinting.h"
#include "TessaneRename/Windows/Appearance.h"
#include "TessaneRename/Windows/BodiesPane.h"
#include "TessaneRename/Windows/FileListModel.h"
#include "TessaneRename/Windows/GuideWindow.h"
#include "TessaneRename/Windows/HistoryWindow.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/ReportWindow.h"
#include "TessaneRename/Windows/SettingsWindow.h"
#include "WindowTest.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::folderContents;
using testing::TempFolder;
using testing::waitFor;

using testing::settled;

class Windows : public testing::WindowTest {
 protected:
  Windows() {
    reporter_ = std::make_unique<BetaReporter>(home_.path() / "beta", QStringLiteral("0.1.0"),
                                               desktop_, home_.path());
    windows_ = std::make_unique<AppWindows>(*app_, desktop_, *reporter_, false);
  }

  MainWindow& openWindow(const fs::path& folder, const QString& name) {
    MainWindow& window = windows_->newWindow();
    window.model().open({folder});
    type(window, name);
    EXPECT_TRUE(settled(window.model()));
    return window;
  }

  static void type(MainWindow& window, const QString& text) { testing::typeTemplate(window, text); }
  static std::map<QString, QString> newNames(MainWindow& window) {
    return testing::shownNames(window);
  }

  std::unique_ptr<BetaReporter> reporter_;
  std::unique_ptr<AppWindows> windows_;
};

TEST_F(Windows, SettingsReachEveryOpenPreview) {
  photos_.file("a.jpg");
  photos_.file("b.jpg");
  TempFolder other;
  other.file("c.jpg");
  MainWindow& first = openWindow(photos_.path(), QStringLiteral("{name}_{lens}"));
  MainWindow& second = openWindow(other.path(), QStringLiteral("x_{lens}"));
  SettingsWindow& settings = windows_->showSettings();

  QTest::keyClicks(settings.findChild<QLineEdit*>("missingText"), QStringLiteral("nolens"));
  auto* extensions = settings.findChild<QComboBox*>("extensionCase");
  extensions->setCurrentIndex(extensions->findData(QStringLiteral("upper")));
  ASSERT_TRUE(settled(first.model()) && settled(second.model()));
  EXPECT_EQ(newNames(first),
            (std::map<QString, QString>{{"a.jpg", "a_nolens.JPG"}, {"b.jpg", "b_nolens.JPG"}}));
  EXPECT_EQ(newNames(second), (std::map<QString, QString>{{"c.jpg", "x_nolens.JPG"}}));

  // The counter's start and width go into the name being built.
  type(second, QStringLiteral("x_{counter}"));
  settings.findChild<QSpinBox*>("counterStart")->setValue(7);
  settings.findChild<QSpinBox*>("counterDigits")->setValue(2);
  ASSERT_TRUE(settled(second.model()));
  EXPECT_EQ(newNames(second), (std::map<QString, QString>{{"c.jpg", "x_07.JPG"}}));

  // Two files, one name: errors, until the settings say to number the second.
  type(first, QStringLiteral("same"));
  ASSERT_TRUE(settled(first.model()));
  EXPECT_EQ(first.model().fileCounts().errors, 2);
  auto* duplicates = settings.findChild<QComboBox*>("duplicates");
  duplicates->setCurrentIndex(duplicates->findData(QStringLiteral("addSuffix")));
  ASSERT_TRUE(settled(first.model()));
  EXPECT_EQ(first.model().fileCounts().errors, 0);

  // A pattern ICU can't write is refused; the last good one stays.
  auto* date = settings.findChild<QLineEdit*>("dateFormat");
  date->selectAll();
  QTest::keyClicks(date, QStringLiteral("yyyy-foo"));
  EXPECT_EQ(app_->preferences().dateFormat(), "yyyy-") << "as far as it was a pattern";
  EXPECT_TRUE(settings.findChild<QLabel*>("dateFormatExample")->text().contains("yyyy-foo"));
  date->selectAll();
  QTest::keyClicks(date, QStringLiteral("yyyyMMdd"));
  EXPECT_EQ(app_->preferences().dateFormat(), "yyyyMMdd");
  EXPECT_EQ(settings.findChild<QLabel*>("dateFormatExample")->text(), "Example: 20250614");
}

TEST_F(Windows, AppearanceAppliesToTheWholeApplication) {
  SettingsWindow& settings = windows_->showSettings();
  auto* appearance = settings.findChild<QComboBox*>("appearance");
  appearance->setCurrentIndex(appearance->findData(QStringLiteral("dark")));
  EXPECT_EQ(app_->preferences().appearance(), Appearance::dark);
  EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 128);
  appearance->setCurrentIndex(appearance->findData(QStringLiteral("light")));
  EXPECT_GT(QApplication::palette().color(QPalette::Window).lightness(), 128);
}

TEST_F(Windows, BodiesTableKeepsGoodOffsetsAndRefusesBadOnes) {
  photos_.file("a.jpg");
  MainWindow& window = openWindow(photos_.path(), QStringLiteral("{name}"));
  BodiesPane& bodies = windows_->showSettings().bodies();
  bodies.addRow(QStringLiteral("ILCE-7RM5"));
  QTableWidget* table = bodies.table();
  table->item(0, BodiesPane::tag)->setText(QStringLiteral("A7R"));
  table->item(0, BodiesPane::offset)->setText(QStringLiteral("2:00"));
  EXPECT_EQ(app_->bodies().bodies().tags.at("ILCE-7RM5"), "A7R");
  EXPECT_EQ(app_->bodies().bodies().clockOffsets.at("ILCE-7RM5"), 120.0);
  EXPECT_EQ(table->item(0, BodiesPane::offset)->text(), "+0:02:00");

  table->item(0, BodiesPane::offset)->setText(QStringLiteral("1:60:00"));
  EXPECT_EQ(table->item(0, BodiesPane::offset)->text(), "+0:02:00") << "the previous one stays";
  EXPECT_EQ(app_->bodies().bodies().clockOffsets.at("ILCE-7RM5"), 120.0);
  EXPECT_TRUE(bodies.message()->text().contains("1:60:00"));

  const fs::path notATable = photos_.file("notes.json", "[1, 2]");
  bodies.importFrom(QString::fromStdString(notATable.string()));
  EXPECT_EQ(bodies.message()->text(), "“notes.json” isn’t a table of camera bodies.");
  EXPECT_EQ(app_->bodies().bodies().tags.size(), 1u);
  EXPECT_TRUE(settled(window.model())) << "the table's change rebuilds the preview";
}

TEST_F(Windows, HistoryListsABatchAndGoesBackFromIt) {
  photos_.file("a.jpg", "a");
  photos_.file("b.jpg", "b");
  MainWindow& window = openWindow(photos_.path(), QStringLiteral("new_{name}"));
  window.model().rename();
  ASSERT_TRUE(settled(window.model()));
  ASSERT_EQ(folderContents(photos_.path()).count("new_a.jpg"), 1u);

  window.action(CommandID::history)->trigger();
  HistoryWindow& history = windows_->showHistory();
  EXPECT_EQ(history.isVisible(), true);
  ASSERT_EQ(history.list()->topLevelItemCount(), 1);
  EXPECT_EQ(history.list()->topLevelItem(0)->text(HistoryWindow::files), "2");
  EXPECT_EQ(history.list()->topLevelItem(0)->text(HistoryWindow::folder),
            QString::fromStdString(photos_.path().filename().string()));
  EXPECT_EQ(history.goBackButton()->text(), "2 files back to their previous names");

  QTest::mouseClick(history.goBackButton(), Qt::LeftButton);
  ASSERT_TRUE(settled(window.model()));
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"a.jpg", "a"}, {"b.jpg", "b"}}));
  EXPECT_EQ(history.list()->topLevelItem(0)->text(HistoryWindow::state), "Gone back");
  EXPECT_FALSE(history.goBackButton()->isEnabled());
  EXPECT_EQ(history.message()->text(), "2 files back to their previous names");

  // A batch whose folder is in no window's list waits for the folder.
  window.model().rename();
  ASSERT_TRUE(settled(window.model()));
  window.model().removeFolder(photos_.path());
  history.list()->setCurrentItem(history.list()->topLevelItem(0));
  EXPECT_EQ(history.goBackButton()->text(), "Add the folder to the list to go back");
  EXPECT_FALSE(history.goBackButton()->isEnabled());
  window.model().undo();

  // What happened, as the diary tells it in a problem report.
  std::vector<std::string> diary;
  for (const std::string& line : reporter_->diary().lines())
    diary.push_back(line.substr(line.find(' ') + 1));  // without the time
  const std::string folder = photos_.path().string();
  EXPECT_EQ(diary,
            (std::vector<std::string>{"Opened " + folder, "Renamed 2 files",
                                      "Went back: 2 files back to their previous names",
                                      "Renamed 2 files", "Removed " + folder + " from the list",
                                      "Error: " + window.model().errorMessage().value_or("none")}));
}

// An older batch whose files a later one renamed again: the state says so, and Go Back asks once,
// naming the later batch, before going back through both.
TEST_F(Windows, GoingBackFromAnOlderBatchAsksToGoThroughTheLaterOne) {
  photos_.file("a.jpg", "a");
  photos_.file("b.jpg", "b");
  MainWindow& window = openWindow(photos_.path(), QStringLiteral("one_{name}"));
  window.model().rename();
  ASSERT_TRUE(settled(window.model()));
  type(window, QStringLiteral("two_{name}"));
  ASSERT_TRUE(settled(window.model()));
  window.model().rename();
  ASSERT_TRUE(settled(window.model()));
  ASSERT_EQ(folderContents(photos_.path()).count("two_one_a.jpg"), 1u);

  HistoryWindow& history = windows_->showHistory();
  ASSERT_EQ(history.list()->topLevelItemCount(), 2);
  EXPECT_EQ(history.list()->topLevelItem(0)->text(HistoryWindow::state), "Renamed");
  EXPECT_EQ(history.list()->topLevelItem(1)->text(HistoryWindow::state), "Renamed again since");
  std::vector<QString> asked;
  bool agree = false;
  history.setAsk([&](const QString& question, const QString& details) {
    asked.push_back(question + '\n' + details);
    return agree;
  });
  history.list()->setCurrentItem(history.list()->topLevelItem(1));
  QTest::mouseClick(history.goBackButton(), Qt::LeftButton);
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_TRUE(asked[0].contains(QString::fromStdString(photos_.path().filename().string()) +
                                QStringLiteral(": 2 files")))
      << asked[0].toStdString();
  EXPECT_FALSE(window.model().isRenaming()) << "declined: nothing happens";

  agree = true;
  QTest::mouseClick(history.goBackButton(), Qt::LeftButton);
  ASSERT_TRUE(settled(window.model()));
  EXPECT_EQ(folderContents(photos_.path()),
            (std::map<std::string, std::string>{{"a.jpg", "a"}, {"b.jpg", "b"}}));
  EXPECT_EQ(history.list()->topLevelItem(0)->text(HistoryWindow::state), "Gone back");
  EXPECT_EQ(history.list()->topLevelItem(1)->text(HistoryWindow::state), "Gone back");
  EXPECT_EQ(history.message()->text(), "2 files back to their previous names");

  // A rename the tool makes meanwhile shows up in the open window.
  RenameHistory tool = RenameHistory::load(*app_->history().file());
  tool.add(RenameHistory::Kind::rename, {{"/elsewhere/a.jpg", "/elsewhere/b.jpg"}});
  ASSERT_TRUE(tool.waitForSaves());
  EXPECT_TRUE(waitFor([&] { return history.list()->topLevelItemCount() == 3; }));
}

TEST_F(Windows, NewWindowIsIndependentAndAuxiliaryWindowsOpenOnce) {
  photos_.file("a.jpg");
  MainWindow& first = openWindow(photos_.path(), QStringLiteral("{name}"));
  first.action(CommandID::newWindow)->trigger();
  ASSERT_EQ(windows_->mainWindows().size(), 2u);
  MainWindow* second = windows_->mainWindows().front();
  ASSERT_NE(second, &first);
  EXPECT_NE(&second->model(), &first.model());
  EXPECT_TRUE(second->model().folders().empty()) << "a new window starts empty";
  EXPECT_EQ(first.model().folders().size(), 1u);

  first.action(CommandID::settings)->trigger();
  SettingsWindow* settings = &windows_->showSettings();
  second->action(CommandID::settings)->trigger();
  EXPECT_EQ(&windows_->showSettings(), settings) << "raised, not opened again";

  // Closing a window lets its model go; the other goes on.
  second->close();
  ASSERT_TRUE(waitFor([&] { return windows_->mainWindows().size() == 1; }));
  EXPECT_EQ(windows_->mainWindows().front(), &first);
}

TEST_F(Windows, ClosingTheLastMainWindowClosesTheOthers) {
  MainWindow& window = windows_->newWindow();
  HistoryWindow& history = windows_->showHistory();
  ASSERT_TRUE(history.isVisible());
  window.close();
  ASSERT_TRUE(waitFor([&] { return windows_->mainWindows().empty(); }));
  EXPECT_FALSE(history.isVisible());
}

TEST_F(Windows, ReportShowsTheCommentAndDetailsOnlyWhenAsked) {
  photos_.file("a.jpg");
  openWindow(photos_.path(), QStringLiteral("{name}"));
  reporter_->setAddress("problems@example.org");
  ReportWindow& report = windows_->showReport();
  ASSERT_NE(report.sendButton(), nullptr);
  report.comment()->setPlainText(QStringLiteral("The names came out wrong."));
  const QString folder = QString::fromStdString(photos_.path().string());
  EXPECT_TRUE(report.reportText()->toPlainText().contains("The names came out wrong."));
  EXPECT_TRUE(report.reportText()->toPlainText().contains(folder)) << "details by default";

  report.includesDetails()->setChecked(false);
  EXPECT_TRUE(report.reportText()->toPlainText().contains("The names came out wrong."));
  EXPECT_FALSE(report.reportText()->toPlainText().contains(folder));

  report.send();
  ASSERT_EQ(desktop_.mails.size(), 1u);
  ASSERT_TRUE(desktop_.mails[0].attachment.has_value());
  QFile sent(QString::fromStdString(desktop_.mails[0].attachment->string()));
  ASSERT_TRUE(sent.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(sent.readAll());
  EXPECT_TRUE(text.contains("The names came out wrong."));
  EXPECT_FALSE(text.contains(folder)) << "no details: none sent";
  EXPECT_EQ(report.status()->text(), "Report sent to your mail app");
}

// A build without a report address offers Save and Copy: nothing can be sent.
TEST_F(Windows, WithoutAReportAddressTheReportIsSavedOrCopied) {
  reporter_->setAddress({});
  openWindow(photos_.path(), QStringLiteral("{name}"));
  ReportWindow& report = windows_->showReport();
  EXPECT_EQ(report.sendButton(), nullptr);
  QStringList buttons;
  for (QPushButton* b : report.findChildren<QPushButton*>())
    buttons << b->text().remove('&');
  buttons.sort();
  EXPECT_EQ(buttons, (QStringList{"Copy", "Save…"}));
  report.comment()->setPlainText(QStringLiteral("Names out of order"));
  report.findChild<QPushButton*>("copyReport")->click();
  EXPECT_EQ(QApplication::clipboard()->text(), report.reportText()->toPlainText());
  EXPECT_TRUE(QApplication::clipboard()->text().contains("Names out of order"));
  EXPECT_EQ(report.status()->text(), "Report copied");
  EXPECT_TRUE(desktop_.mails.empty());
}

// A build without an update feed (this one) has no update command, no setting for it and no update
// check: nothing it does reaches the network. The trap is the application's HTTP proxy, on the
// loopback interface: every request Qt would make goes there.
TEST_F(Windows, ABuildWithoutAFeedOffersNoUpdateCheckAndMakesNoRequest) {
  const Distribution& build = Distribution::ofThisBuild();
  if (!build.updateFeed.isEmpty()) GTEST_SKIP() << "this build was given an update feed";
  testing::FeedServer trap("");
  QNetworkProxy::setApplicationProxy(
      QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), trap.port()));
  struct NoProxyAfter {
    ~NoProxyAfter() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }
  } restore;

  // As the application starts.
  const std::unique_ptr<AppUpdater> updater =
      AppUpdater::forBuild(app_->settings(), QVersionNumber(0, 1), build);
  EXPECT_EQ(updater, nullptr);
  MainWindow& window = openWindow(photos_.path(), QStringLiteral("{name}"));
  windows_->setUpdater(updater.get());
  QStringList titles;
  for (QAction* a : window.menuBar()->actions()) {
    for (QAction* item : a->menu()->actions()) {
      if (item->isVisible()) titles << item->text();
    }
  }
  EXPECT_FALSE(titles.contains("Check for Updates…")) << titles.join(", ").toStdString();
  EXPECT_FALSE(titles.contains("Tessane Rename Website"));
  EXPECT_TRUE(titles.contains("About Tessane Rename"));
  SettingsWindow& settings = windows_->showSettings();
  EXPECT_TRUE(settings.updateCheck()->isHidden());
  window.action(CommandID::checkForUpdates)->trigger();  // a shortcut can't reach it either
  QCoreApplication::processEvents();
  EXPECT_EQ(trap.requests, 0);

  // The same window given a feed: the command, the setting, and the trap sees its request.
  Distribution withFeed;
  withFeed.updateFeed = QUrl("http://updates.example.org/feed.json");
  withFeed.updateKey = QByteArray(32, 'k');
  const std::unique_ptr<AppUpdater> checking =
      AppUpdater::forBuild(app_->settings(), QVersionNumber(0, 1), withFeed);
  ASSERT_NE(checking, nullptr);
  windows_->setUpdater(checking.get());
  EXPECT_TRUE(window.action(CommandID::checkForUpdates)->isVisible());
  EXPECT_FALSE(settings.updateCheck()->isHidden());
  window.action(CommandID::checkForUpdates)->trigger();
  EXPECT_TRUE(waitFor([&] { return trap.requests == 1 && checking->canCheck(); }));
  windows_->setUpdater(nullptr);
}

// About names the version, the build and the licence.
TEST_F(Windows, AboutNamesTheVersionBuildAndLicence) {
  QMessageBox& about = windows_->showAbout();
  EXPECT_EQ(about.text(), QString("Tessane Rename %1 (build %2)")
                              .arg(TESSANE_VERSION, Distribution::ofThisBuild().buildNumber));
  EXPECT_TRUE(
      about.informativeText().contains("GNU General Public License, version 3 or any later"));
  EXPECT_TRUE(about.informativeText().contains("GPL-3.0-or-later"));
  EXPECT_FALSE(about.isModal());
}

// The Files tab names the setting as it works: the name is kept inside the files, and history
// undoes a rename wherever the files are.
TEST_F(Windows, TheOriginalNamesSettingSaysWhatItKeepsAndWhere) {
  SettingsWindow& settings = windows_->showSettings();
  settings.showTab(SettingsWindow::files);
  const auto* title = settings.findChild<QLabel*>("originalNamesTitle");
  ASSERT_NE(title, nullptr);
  EXPECT_EQ(title->text(), "Remember the original name in the files");
  const QString explanation = settings.findChild<QLabel*>("originalNamesExplanation")->text();
  EXPECT_TRUE(explanation.contains("History can always undo a rename, wherever the files are."));
  EXPECT_TRUE(explanation.contains("exFAT"));
  EXPECT_FALSE(explanation.contains("macOS")) << "true for Linux";
}

// Every control a user can reach with Tab says what it is to a screen reader.
TEST_F(Windows, EveryControlHasAName) {
  photos_.file("a.jpg");
  openWindow(photos_.path(), QStringLiteral("{name}"));
  std::vector<QWidget*> windows;
  int checked = 0;
  SettingsWindow& settings = windows_->showSettings();
  windows.push_back(&windows_->showHistory());
  windows.push_back(&windows_->showGuide());
  windows.push_back(&windows_->showReport());
  for (int tab = 0; tab < settings.tabs()->count(); ++tab) {
    settings.showTab(static_cast<SettingsWindow::Tab>(tab));
    windows.push_back(&settings);
    for (QWidget* window : windows) {
      for (QWidget* control : window->findChildren<QWidget*>()) {
        if (!control->isVisibleTo(window) || !(control->focusPolicy() & Qt::TabFocus)) continue;
        if (control->focusProxy() != nullptr) continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
        ASSERT_NE(accessible, nullptr);
        ++checked;
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
            << window->objectName().toStdString() << ": " << control->metaObject()->className()
            << " " << control->objectName().toStdString();
      }
    }
    windows.pop_back();
  }
  EXPECT_GT(checked, 40);
}

}  // namespace
}  // namespace tessane
