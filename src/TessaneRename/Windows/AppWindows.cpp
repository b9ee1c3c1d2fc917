#include "TessaneRename/Windows/AppWindows.h"
#include "TessaneRename/AppUpdater.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QMessageBox>

#include <algorithm>

#include "TessaneRename/AppContext.h"
#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/Distribution.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Windows/Appearance.h"
#include "TessaneRename/Windows/BodiesPane.h"
#include "TessaneRename/Windows/GuideWindow.h"
#include "TessaneRename/Windows/HistoryWindow.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/ReportWindow.h"

namespace tessane {

// One main window and the model it shows; the model outlives its window.
struct AppWindows::Main {
  std::unique_ptr<FolderModel> model;
  MainWindow* window = nullptr;  // deletes itself when closed
};

namespace {

// The rules with the name's counter starting and padded as the settings say.
RuleStack withCounterSettings(RuleStack stack, const Preferences& preferences) {
  for (Rule& rule : stack.rules) {
    if (auto* format = std::get_if<RuleAction::Format>(&rule.action.value)) {
      format->format.counter.start = preferences.counterStart();
      format->format.counter.padding = preferences.counterDigits();
    }
  }
  return stack;
}

// Raises an auxiliary window, made on first use.
template <typename W, typename Make>
W& raise(std::unique_ptr<W>& window, Make make) {
  if (!window) {
    window = make();
    auto* close = new QAction(window.get());
    close->setShortcut(QKeySequence::Close);
    QObject::connect(close, &QAction::triggered, window.get(), &QWidget::close);
    window->addAction(close);
  }
  window->show();
  window->raise();
  window->activateWindow();
  return *window;
}

}  // namespace

AppWindows::AppWindows(AppContext& app, DesktopServices& desktop, BetaReporter& reporter,
                       bool askDesktop)
    : app_(app),
      desktop_(desktop),
      reporter_(reporter),
      appearance_(std::make_unique<AppearanceStyle>(askDesktop)) {
  appearance_->apply(app_.preferences().appearance());
  // The table changes from the settings and from the clock-sync card alike.
  app_.bodies().setOnChange([this] {
    if (settings_) settings_->bodies().tableChanged();
    settingsChanged(SettingsWindow::Change::bodies);
  });
}

AppWindows::~AppWindows() {
  app_.bodies().setOnChange(nullptr);
  about_.reset();
  settings_.reset();
  history_.reset();
  guide_.reset();
  report_.reset();
  for (const auto& main : mains_) {
    main->window->removeEventFilter(this);
    disconnect(main->window, nullptr, this, nullptr);
    delete main->window;
  }
  mains_.clear();
}

MainWindow& AppWindows::newWindow() {
  auto main = std::make_unique<Main>();
  main->model = std::make_unique<FolderModel>(app_);
  main->model->setRevealer(
      [this](const std::vector<std::filesystem::path>& files) { desktop_.revealFiles(files); });
  reporter_.follow(*main->model);
  main->window = new MainWindow(*main->model, app_, desktop_);
  MainWindow* window = main->window;
  window->setUpdater(updater_);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->installEventFilter(this);
  connect(window, &MainWindow::applicationCommand, this, &AppWindows::run);
  connect(window, &QObject::destroyed, this, [this, window] { closed(window); });
  for (auto signal : {&FolderModel::isRenamingChanged, &FolderModel::toastChanged,
                      &FolderModel::foldersChanged}) {
    connect(main->model.get(), signal, this, &AppWindows::refreshHistory);
  }
  // A new window opens beside the active one rather than on top of it.
  if (const MainWindow* active = activeWindow()) window->move(active->pos() + QPoint(32, 32));
  mains_.push_back(std::move(main));
  window->show();
  refreshHistory();
  return *window;
}

void AppWindows::setUpdater(AppUpdater* updater) {
  updater_ = updater;
  for (MainWindow* window : mainWindows())
    window->setUpdater(updater);
  if (settings_) settings_->setOffersUpdateCheck(updater_ != nullptr);
}

std::vector<MainWindow*> AppWindows::mainWindows() const {
  std::vector<MainWindow*> windows;
  for (auto it = mains_.rbegin(); it != mains_.rend(); ++it)
    windows.push_back((*it)->window);
  return windows;
}

MainWindow* AppWindows::activeWindow() const {
  return mains_.empty() ? nullptr : mains_.back()->window;
}

std::vector<FolderModel*> AppWindows::models() const {
  std::vector<FolderModel*> out;
  for (auto it = mains_.rbegin(); it != mains_.rend(); ++it)
    out.push_back((*it)->model.get());
  return out;
}

bool AppWindows::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    const auto found = std::find_if(mains_.begin(), mains_.end(),
                                    [watched](const auto& m) { return m->window == watched; });
    if (found != mains_.end()) std::rotate(found, found + 1, mains_.end());
  }
  return QObject::eventFilter(watched, event);
}

void AppWindows::closed(MainWindow* window) {
  const auto found = std::find_if(mains_.begin(), mains_.end(),
                                  [window](const auto& m) { return m->window == window; });
  if (found == mains_.end()) return;
  // The window is gone; its model's tasks are stopped and waited for.
  std::unique_ptr<Main> main = std::move(*found);
  mains_.erase(found);
  main.reset();
  if (mains_.empty()) {
    for (QWidget* w : std::initializer_list<QWidget*>{settings_.get(), history_.get(), guide_.get(),
                                                      report_.get(), about_.get()}) {
      if (w != nullptr) w->close();
    }
  } else {
    refreshHistory();
  }
}

void AppWindows::run(CommandID id) {
  switch (id) {
    case CommandID::newWindow:
      newWindow();
      break;
    case CommandID::history:
      showHistory();
      break;
    case CommandID::settings:
      showSettings();
      break;
    case CommandID::guide:
      showGuide();
      break;
    case CommandID::reportProblem:
      showReport();
      break;
    case CommandID::about:
      showAbout();
      break;
    default:
      break;
  }
}

SettingsWindow& AppWindows::showSettings() {
  const bool made = settings_ != nullptr;
  SettingsWindow& window = raise(settings_, [this] {
    auto w = std::make_unique<SettingsWindow>(app_, [this] {
      std::vector<MetadataMap> files;
      for (FolderModel* model : models()) {
        for (const FolderFile& f : model->files())
          files.push_back(f.metadata);
      }
      return files;
    });
    w->setOffersUpdateCheck(updater_ != nullptr);
    connect(w.get(), &SettingsWindow::changed, this, &AppWindows::settingsChanged);
    return w;
  });
  if (made) window.reload();  // a menu may have changed a setting since
  return window;
}

HistoryWindow& AppWindows::showHistory() {
  HistoryWindow& window = raise(history_, [this] {
    return std::make_unique<HistoryWindow>(app_.history(), [this] { return models(); });
  });
  window.refresh();
  return window;
}

GuideWindow& AppWindows::showGuide() {
  return raise(guide_, [] { return std::make_unique<GuideWindow>(); });
}

ReportWindow& AppWindows::showReport() {
  // What the active window shows goes into the report's details.
  if (const MainWindow* active = activeWindow()) {
    const FolderModel& model = active->model();
    QStringList folders;
    for (const std::filesystem::path& f : model.folders())
      folders << QString::fromStdString(f.string());
    reporter_.setContext(model.errorMessageText(), folders,
                         QString::fromStdString(toJson(model.rules()).dump(2)));
  }
  ReportWindow& window =
      raise(report_, [this] { return std::make_unique<ReportWindow>(reporter_); });
  window.refresh();
  return window;
}

QMessageBox& AppWindows::showAbout() {
  return raise(about_, [] {
    const Distribution& build = Distribution::ofThisBuild();
    auto box = std::make_unique<QMessageBox>();
    box->setObjectName("aboutBox");
    box->setWindowTitle(tr("About Tessane Rename"));
    box->setIconPixmap(QApplication::windowIcon().pixmap(64, 64));
    box->setText(tr("Tessane Rename %1 (build %2)")
                     .arg(QString::fromUtf8(TESSANE_VERSION), build.buildNumber));
    QString about = tr("New names for photos, videos and their sidecars, built from the shooting "
                       "data, previewed, applied safely and undoable.") +
                    "\n\n" +
                    tr("Free software under the GNU General Public License, version 3 or any later "
                       "version (%1). It comes with absolutely no warranty.")
                        .arg(QString::fromUtf8(kLicenseName));
    if (!build.website.isEmpty()) about += "\n\n" + build.website.toString();
    box->setInformativeText(about);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse);
    box->setStandardButtons(QMessageBox::Close);
    box->setModal(false);
    return box;
  });
}

void AppWindows::settingsChanged(SettingsWindow::Change change) {
  if (change == SettingsWindow::Change::updates && updater_ != nullptr) {
    const bool on = updater_->automaticChecksEnabled();
    updater_->setAutomaticChecksEnabled(on);  // stops the daily check when turned off
    if (on) updater_->startAutomaticChecks();
  }
  const Preferences preferences = app_.preferences();
  for (FolderModel* model : models()) {
    switch (change) {
      case SettingsWindow::Change::appearance:
      case SettingsWindow::Change::display:
      case SettingsWindow::Change::updates:
        break;
      case SettingsWindow::Change::order:
        model->setOrder(preferences.batchOrder().value_or(BatchOrder::captureTime));
        break;
      case SettingsWindow::Change::duplicates:
        model->setDuplicates(preferences.duplicatePolicy());
        break;
      case SettingsWindow::Change::twins:
        model->setTwinOptions(preferences.twinOptions(model->twinOptions().isEnabled));
        break;
      case SettingsWindow::Change::counter: {
        RuleStack rules = withCounterSettings(model->rules(), preferences);
        if (rules != model->rules()) model->setRules(std::move(rules));
        break;
      }
      case SettingsWindow::Change::naming:
      case SettingsWindow::Change::bodies:
        model->settingsChanged();
        break;
    }
  }
  if (change == SettingsWindow::Change::appearance) appearance_->apply(preferences.appearance());
}

void AppWindows::refreshHistory() {
  if (history_) history_->refresh();
}

}  // namespace tessane
