// Pictures of the real windows for the documentation: the main window on the demo shoot in light
// and dark (and with a clash), each settings tab, the history, the report and the guide, written
// as "<window>-<light|dark>-<language>.png" into the folder given (the build folder's
// "screenshots" by default). scripts/screenshots.sh runs it and refreshes docs/screenshots.
// Runs on the offscreen platform, or on a display when QT_QPA_PLATFORM says so (xvfb-run with
// QT_QPA_PLATFORM=xcb). TESSANE_SCREENSHOT_LANGUAGE=it takes them in Italian; QT_SCALE_FACTOR=2
// takes them at 200%.
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSettings>
#include <QTabWidget>
#include <QTest>
#include <QTranslator>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <iostream>

#include "EventLoop.h"
#include "TempFolder.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/AppLanguage.h"
#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/FakeDesktopServices.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/TestApplication.h"
#include "TessaneRename/Windows/AppWindows.h"
#include "TessaneRename/Windows/Appearance.h"
#include "TessaneRename/Windows/GuideWindow.h"
#include "TessaneRename/Windows/HistoryWindow.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/ReportWindow.h"
#include "TessaneRename/Windows/SettingsWindow.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;
using testing::waitFor;

// Stops the program with a message: a picture that can't be taken is not replaced.
void require(bool ok, const std::string& what) {
  if (ok) return;
  std::cerr << "WindowScreenshots: " << what << "\n";
  std::exit(1);
}

QString language() {
  const QString chosen = qEnvironmentVariable("TESSANE_SCREENSHOT_LANGUAGE");
  return chosen.isEmpty() ? QStringLiteral("en") : chosen;
}

class Screenshots {
 public:
  explicit Screenshots(QString out) : out_(std::move(out)) {
    app_ = testing::contextIn(home_.path());
    storeLanguage(app_->settings(),
                  appLanguageFromRawValue(language().toStdString()).value_or(AppLanguage::system));
    reporter_ = std::make_unique<BetaReporter>(home_.path() / "beta", QStringLiteral("0.1.0"),
                                               desktop_, home_.path());
    reporter_->launch();
    windows_ = std::make_unique<AppWindows>(*app_, desktop_, *reporter_, false);
    QDir().mkpath(out_);
  }

  // The demo shoot, made by the command-line tool.
  fs::path demoShoot() {
    const fs::path shoot = photos_.path() / "Wedding";
    QProcess tool;
    tool.start(QStringLiteral(TESSANE_TOOL),
               {QStringLiteral("demo"), QString::fromStdString(shoot.string())});
    require(tool.waitForFinished(30'000) && tool.exitCode() == 0,
            "the demo shoot wasn't made: " + tool.readAllStandardError().toStdString());
    return shoot;
  }

  void type(MainWindow& window, const QString& text) {
    QLineEdit* field = window.templateField();
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClicks(field, text);
  }

  // Waits for every file's data to be read and the preview to be made of it.
  static void settle(FolderModel& model) {
    require(waitFor([&] {
              const auto& files = model.files();
              return model.previewBuildCount() == 0 && model.preview() != nullptr &&
                     !model.isRenaming() && model.previewSources().size() == files.size() &&
                     std::all_of(files.begin(), files.end(),
                                 [](const FolderFile& f) { return !f.metadata.empty(); }) &&
                     std::all_of(model.previewSources().begin(), model.previewSources().end(),
                                 [](const auto& s) { return !s.metadata.empty(); });
            }),
            "the preview didn't settle");
  }

  void setAppearance(Appearance appearance) {
    Preferences preferences = app_->preferences();
    preferences.setAppearance(appearance);
    windows_->appearance().apply(appearance);
    QCoreApplication::processEvents();
  }

  // Writes `widget` as "<name>-<light|dark>-<language>[@2x].png".
  void save(QWidget& widget, const QString& name) {
    widget.show();
    QCoreApplication::processEvents();
    QTest::qWait(50);
    const QString file =
        QStringLiteral("%1/%2-%3-%4.png")
            .arg(out_, name,
                 windows_->appearance().isDark() ? QStringLiteral("dark") : QStringLiteral("light"),
                 language());
    require(widget.grab().save(file), "couldn't write " + file.toStdString());
    std::cout << file.toStdString() << "\n";
  }

  void takeAll();

 private:
  TempFolder home_, photos_;
  testing::FakeDesktopServices desktop_;
  std::unique_ptr<AppContext> app_;
  std::unique_ptr<BetaReporter> reporter_;
  std::unique_ptr<AppWindows> windows_;
  const QString out_;
};

void Screenshots::takeAll() {
  const fs::path shoot = demoShoot();
  // The demo's two cameras, one of them two minutes behind.
  CameraBodies bodies;
  bodies.tags = {{"3018842", "Z6"}, {"ILCE-7RM5", "A7R"}};
  bodies.clockOffsets = {{"3018842", 120}};
  app_->bodies().setBodies(bodies);
  MainWindow& window = windows_->newWindow();
  window.resize(1280, 800);
  window.model().open({shoot});
  type(window, QStringLiteral("{date:yyyy-MM-dd}_{body}_{counter}"));
  settle(window.model());

  for (Appearance appearance : {Appearance::light, Appearance::dark}) {
    setAppearance(appearance);
    save(window, QStringLiteral("main-window"));

    SettingsWindow& settings = windows_->showSettings();
    // One box unticked, to show both states.
    settings.findChild<QCheckBox*>("resumesSession")->setChecked(false);
    const char* tabs[] = {"settings-general", "settings-names", "settings-bodies",
                          "settings-files"};
    for (int tab = 0; tab < settings.tabs()->count(); ++tab) {
      settings.showTab(static_cast<SettingsWindow::Tab>(tab));
      save(settings, QString::fromLatin1(tabs[tab]));
    }
    settings.close();
    GuideWindow& guide = windows_->showGuide();
    guide.showTopic(0);
    save(guide, QStringLiteral("guide"));
    guide.showTopic(4);
    save(guide, QStringLiteral("guide-bodies"));
    guide.close();
  }

  // A clash, a rename for the history, then the history and the report.
  setAppearance(Appearance::light);
  type(window, QStringLiteral("{date:yyyy-MM-dd_HHmm}_{body}"));
  settle(window.model());
  save(window, QStringLiteral("main-window-errors"));
  // Three batches, the newest gone back from.
  for (const char* name : {"{date:yyyy-MM-dd_HHmmss}_{name}", "Wedding_{name}", "{name}_x"}) {
    type(window, QString::fromUtf8(name));
    settle(window.model());
    window.model().rename();
    settle(window.model());
  }
  window.model().undo();
  settle(window.model());
  require(app_->history().entries().size() >= 3, "the renames weren't recorded");
  for (Appearance appearance : {Appearance::light, Appearance::dark}) {
    setAppearance(appearance);
    save(windows_->showHistory(), QStringLiteral("history"));
    ReportWindow& report = windows_->showReport();
    report.comment()->setPlainText(
        QStringLiteral("The Nikon's photos came out two minutes early in the names."));
    save(report, QStringLiteral("report"));
  }
}

}  // namespace
}  // namespace tessane

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The demo wedding is in Rome: its cameras' clock times and the video's UTC time meet there.
  qputenv("TZ", "Europe/Rome");
  tzset();
  QApplication app(argc, argv);
  QTranslator translator;
  const QString language = tessane::language();
  if (language != QLatin1String("en")) {
    tessane::require(translator.load(QStringLiteral(":/i18n/tessane_") + language),
                     "no translation built in for " + language.toStdString());
    QApplication::installTranslator(&translator);
    QLocale::setDefault(QLocale(language));
  }
  tessane::Screenshots(argc > 1 ? QString::fromLocal8Bit(argv[1])
                                : QStringLiteral(TESSANE_SCREENSHOTS))
      .takeAll();
  return 0;
}
