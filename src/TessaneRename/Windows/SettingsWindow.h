// The settings window, four tabs over the settings store: General (appearance, language, resuming
// the last session, showing renamed files, thumbnails), Names (date and time patterns with a live
// example, separator, counter, extension case, text for missing data, duplicates, order, twins),
// Camera Bodies (BodiesPane) and Files (when the camera's name is kept in each file).
//
// Every change is stored at once, as the user makes it, and announced with what it touches, so
// that whoever owns the main windows brings their previews up to date. A date or time pattern
// that ICU can't write is not stored: the last good one stays in force while the field says why.
// The language is stored for the next start: the windows already open keep theirs.
#pragma once

#include <QWidget>

#include <functional>
#include <vector>

#include "RenameEngine/MetadataValue.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTabWidget;

namespace tessane {

class AppContext;
class BodiesPane;

class SettingsWindow : public QWidget {
  Q_OBJECT

 public:
  enum class Change {
    appearance,
    naming,
    counter,
    order,
    duplicates,
    twins,
    display,
    bodies,
    updates
  };
  enum Tab { general, names, cameraBodies, files };
  // The metadata of the files the open windows show (for "Add from open files").
  using OpenFiles = std::function<std::vector<MetadataMap>()>;

  SettingsWindow(AppContext& app, OpenFiles openFiles, QWidget* parent = nullptr);

  QTabWidget* tabs() const { return tabs_; }
  void showTab(Tab tab);
  BodiesPane& bodies() const { return *bodies_; }
  // Shows the stored values again (after a change made elsewhere: a menu, the clock-sync card).
  void reload();
  // Whether the daily update check is offered (only by a build that checks for updates; hidden
  // until told).
  void setOffersUpdateCheck(bool offers);
  QCheckBox* updateCheck() const { return checksUpdates_; }

  // `pattern` written for a sample moment (14 June 2025, 14:03:05); nullopt when ICU can't.
  static std::optional<QString> sampleDate(const QString& pattern);

 signals:
  void changed(tessane::SettingsWindow::Change change);

 private:
  QWidget* makeGeneral();
  QWidget* makeNames();
  QWidget* makeNamesCounter(QFormLayout* form);
  void makeNamesBatch(QFormLayout* form);
  QWidget* makeFiles();
  QLineEdit* patternField(const char* name, QLabel*& example, bool isDate);
  void patternEdited(QLineEdit* field, QLabel* example, bool isDate);
  void showCounterExample();
  void store(Change change, const std::function<void()>& write);

  AppContext& app_;
  bool loading_ = false;  // the controls are being set from the store, not by the user
  QTabWidget* tabs_ = nullptr;
  BodiesPane* bodies_ = nullptr;

  QComboBox* appearance_ = nullptr;
  QComboBox* language_ = nullptr;
  QCheckBox* resumes_ = nullptr;
  QCheckBox* reveals_ = nullptr;
  QCheckBox* thumbnails_ = nullptr;
  QCheckBox* checksUpdates_ = nullptr;
  QLabel* updatesNote_ = nullptr;

  QLineEdit* dateFormat_ = nullptr;
  QLabel* dateExample_ = nullptr;
  QLineEdit* timeFormat_ = nullptr;
  QLabel* timeExample_ = nullptr;
  QComboBox* separator_ = nullptr;
  QSpinBox* counterStart_ = nullptr;
  QSpinBox* counterDigits_ = nullptr;
  QLabel* counterExample_ = nullptr;
  QComboBox* extensionCase_ = nullptr;
  QLineEdit* missingText_ = nullptr;
  QComboBox* duplicates_ = nullptr;
  QComboBox* order_ = nullptr;
  QCheckBox* twinImages_ = nullptr;
  QCheckBox* twinVideo_ = nullptr;
  QCheckBox* twinSidecars_ = nullptr;

  QButtonGroup* originalNames_ = nullptr;
};

}  // namespace tessane
