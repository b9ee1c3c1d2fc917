#include "TessaneRename/Windows/SettingsWindow.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include <chrono>

#include "RenameEngine/DateFormatterCache.h"
#include "RenameEngine/RuleStack.h"
#include "TessaneRename/AppCommands.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/AppLanguage.h"
#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/InterfaceTranslation.h"
#include "TessaneRename/Preferences.h"
#include "TessaneRename/Windows/Appearance.h"
#include "TessaneRename/Windows/BodiesPane.h"

namespace tessane {
namespace {

QString q(const std::string& s) {
  return QString::fromStdString(s);
}

// A note under a control: smaller, dimmer, wrapped.
QLabel* note(const QString& text) {
  auto* label = new QLabel(text);
  label->setWordWrap(true);
  label->setForegroundRole(QPalette::PlaceholderText);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * 0.92);
  label->setFont(font);
  return label;
}

QComboBox* choice(const char* name, const QString& accessibleName,
                  const std::vector<std::pair<QString, QVariant>>& items) {
  auto* box = new QComboBox;
  box->setObjectName(name);
  box->setAccessibleName(accessibleName);
  for (const auto& [label, value] : items)
    box->addItem(label, value);
  return box;
}

void select(QComboBox* box, const QVariant& value) {
  const int i = box->findData(value);
  box->setCurrentIndex(i < 0 ? 0 : i);
}

QCheckBox* check(const char* name, const QString& label) {
  auto* box = new QCheckBox(label);
  box->setObjectName(name);
  box->setAccessibleName(QString(label).remove('&'));
  return box;
}

// A page of a tab: its form at the top, the rest of the height empty.
QWidget* page(QLayout* content) {
  auto* widget = new QWidget;
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(18, 18, 18, 18);
  column->addLayout(content);
  column->addStretch(1);
  return widget;
}

}  // namespace

SettingsWindow::SettingsWindow(AppContext& app, OpenFiles openFiles, QWidget* parent)
    : QWidget(parent, Qt::Window), app_(app) {
  setObjectName("settingsWindow");
  setWindowTitle(tr("Settings"));
  tabs_ = new QTabWidget;
  tabs_->setObjectName("settingsTabs");
  tabs_->setAccessibleName(tr("Settings"));
  tabs_->setDocumentMode(true);
  bodies_ = new BodiesPane(app_.bodies(), std::move(openFiles));
  tabs_->addTab(makeGeneral(), tr("General"));
  tabs_->addTab(makeNames(), tr("Names"));
  tabs_->addTab(bodies_, tr("Camera Bodies"));
  tabs_->addTab(makeFiles(), tr("Files"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 6, 0, 0);
  layout->addWidget(tabs_);
  reload();
  resize(640, 560);
}

void SettingsWindow::showTab(Tab tab) {
  tabs_->setCurrentIndex(tab);
}

void SettingsWindow::store(Change change, const std::function<void()>& write) {
  if (loading_) return;
  write();
  app_.settings().sync();
  emit changed(change);
}

// ---- General ----

QWidget* SettingsWindow::makeGeneral() {
  auto* form = new QFormLayout;
  form->setRowWrapPolicy(QFormLayout::WrapLongRows);
  form->setVerticalSpacing(10);
  appearance_ = choice("appearance", tr("Appearance"),
                       {{tr("As the system"), q(std::string(rawValue(Appearance::system)))},
                        {tr("Light"), q(std::string(rawValue(Appearance::light)))},
                        {tr("Dark"), q(std::string(rawValue(Appearance::dark)))}});
  connect(appearance_, &QComboBox::currentIndexChanged, this, [this] {
    store(Change::appearance, [this] {
      const auto value =
          appearanceFromRawValue(appearance_->currentData().toString().toStdString());
      app_.preferences().setAppearance(value.value_or(Appearance::system));
    });
  });
  form->addRow(tr("&Appearance:"), appearance_);

  language_ = choice("language", tr("Language"),
                     {{InterfaceTranslation::title(AppLanguage::system),
                       q(std::string(rawValue(AppLanguage::system)))},
                      {InterfaceTranslation::title(AppLanguage::english),
                       q(std::string(rawValue(AppLanguage::english)))},
                      {InterfaceTranslation::title(AppLanguage::italian),
                       q(std::string(rawValue(AppLanguage::italian)))}});
  connect(language_, &QComboBox::currentIndexChanged, this, [this] {
    store(Change::display, [this] {
      const auto value = appLanguageFromRawValue(language_->currentData().toString().toStdString());
      storeLanguage(app_.settings(), value.value_or(AppLanguage::system));
    });
  });
  form->addRow(tr("&Language:"), language_);
  form->addRow(QString(),
               note(tr("The new language is used the next time Tessane Rename starts.")));

  resumes_ = check("resumesSession", tr("&Resume the last session"));
  connect(resumes_, &QCheckBox::toggled, this, [this](bool on) {
    store(Change::display, [this, on] { app_.preferences().setResumesSession(on); });
  });
  form->addRow(resumes_);
  form->addRow(
      note(tr("At launch, reopen the folders and the name you were building. Turned off, "
              "the window starts empty.")));

  reveals_ = check("revealAfterRename", AppCommands::title(CommandID::showAfterRenaming));
  connect(reveals_, &QCheckBox::toggled, this, [this](bool on) {
    store(Change::display, [this, on] { app_.preferences().setRevealAfterRename(on); });
  });
  form->addRow(reveals_);
  form->addRow(note(
      tr("After renaming, open the folder in the file manager with the renamed files selected")));

  thumbnails_ = check("showsThumbnails", tr("Show &thumbnails in the file list"));
  connect(thumbnails_, &QCheckBox::toggled, this, [this](bool on) {
    store(Change::display, [this, on] { app_.preferences().setShowsThumbnails(on); });
  });
  form->addRow(thumbnails_);

  checksUpdates_ = check("checksForUpdates", tr("Check for &updates once a day"));
  connect(checksUpdates_, &QCheckBox::toggled, this, [this](bool on) {
    store(Change::updates, [this, on] { app_.settings().setValue(AppUpdater::kAutomaticKey, on); });
  });
  form->addRow(checksUpdates_);
  updatesNote_ =
      note(tr("Only a short notice appears when a new version is out; nothing is "
              "downloaded without you."));
  form->addRow(updatesNote_);
  setOffersUpdateCheck(false);
  return page(form);
}

void SettingsWindow::setOffersUpdateCheck(bool offers) {
  checksUpdates_->setVisible(offers);
  updatesNote_->setVisible(offers);
}

// ---- Names ----

std::optional<QString> SettingsWindow::sampleDate(const QString& pattern) {
  static const std::optional<NamingContext> utc = NamingContext::inZone("UTC");
  if (!utc) return std::nullopt;
  DateFormatterCache dates(*utc->zone);
  using namespace std::chrono;
  const Date moment = sys_days(year(2025) / June / 14) + hours(14) + minutes(3) + seconds(5);
  const std::optional<std::string> text = dates.format(moment, pattern.toStdString());
  if (!text) return std::nullopt;
  return q(*text);
}

QLineEdit* SettingsWindow::patternField(const char* name, QLabel*& example, bool isDate) {
  auto* field = new QLineEdit;
  field->setObjectName(name);
  field->setAccessibleName(isDate ? tr("Date pattern") : tr("Time pattern"));
  example = note(QString());
  example->setObjectName(QByteArray(name) + "Example");
  connect(field, &QLineEdit::textEdited, this,
          [this, field, example, isDate] { patternEdited(field, example, isDate); });
  return field;
}

void SettingsWindow::patternEdited(QLineEdit* field, QLabel* example, bool isDate) {
  const QString pattern = field->text().trimmed();
  const std::optional<QString> sample = pattern.isEmpty() ? std::nullopt : sampleDate(pattern);
  if (!sample) {
    example->setText(
        tr("“%1” can’t be written as a date: the last good pattern stays in use.").arg(pattern));
    showAsProblem(example, true);
    return;
  }
  example->setText(tr("Example: %1").arg(*sample));
  showAsProblem(example, false);
  store(Change::naming, [this, pattern, isDate] {
    Preferences preferences = app_.preferences();
    if (isDate) {
      preferences.setDateFormat(pattern.toStdString());
    } else {
      preferences.setTimeFormat(pattern.toStdString());
    }
  });
}

QWidget* SettingsWindow::makeNames() {
  auto* form = new QFormLayout;
  form->setRowWrapPolicy(QFormLayout::WrapLongRows);
  form->setVerticalSpacing(8);

  dateFormat_ = patternField("dateFormat", dateExample_, true);
  form->addRow(tr("&Date:"), dateFormat_);
  form->addRow(QString(), dateExample_);
  timeFormat_ = patternField("timeFormat", timeExample_, false);
  form->addRow(tr("&Time:"), timeFormat_);
  form->addRow(QString(), timeExample_);
  form->addRow(QString(), note(tr("Patterns use yyyy for the year, MM month, dd day, HH hour, mm "
                                  "minutes, ss seconds. Text in 'single quotes' stays as it is.")));

  separator_ = choice("separator", tr("Separator between pieces"),
                      {{AppCommands::title(CommandID::separatorUnderscore), QStringLiteral("_")},
                       {AppCommands::title(CommandID::separatorDash), QStringLiteral("-")},
                       {AppCommands::title(CommandID::separatorSpace), QStringLiteral(" ")},
                       {AppCommands::title(CommandID::separatorNothing), QString()}});
  connect(separator_, &QComboBox::currentIndexChanged, this, [this] {
    store(Change::naming, [this] {
      app_.preferences().setNameSeparator(separator_->currentData().toString().toStdString());
    });
  });
  form->addRow(tr("&Separator:"), separator_);
  makeNamesCounter(form);

  extensionCase_ = choice("extensionCase", tr("Extensions"),
                          {{tr("Keep as they are"), QStringLiteral("keep")},
                           {tr("lower case (.jpg)"), QStringLiteral("lower")},
                           {tr("UPPER CASE (.JPG)"), QStringLiteral("upper")}});
  connect(extensionCase_, &QComboBox::currentIndexChanged, this, [this] {
    store(Change::naming, [this] {
      const auto value =
          extensionCaseFromRawValue(extensionCase_->currentData().toString().toStdString());
      app_.preferences().setExtensionCase(value.value_or(ExtensionCase::keep));
    });
  });
  form->addRow(tr("E&xtensions:"), extensionCase_);
  makeNamesBatch(form);
  return page(form);
}

// The rest of the Names tab: the text for missing data, duplicates, order and twins.
void SettingsWindow::makeNamesBatch(QFormLayout* form) {
  missingText_ = new QLineEdit;
  missingText_->setObjectName("missingText");
  missingText_->setAccessibleName(tr("Text for missing data"));
  missingText_->setPlaceholderText(tr("left out"));
  connect(missingText_, &QLineEdit::textEdited, this, [this](const QString& text) {
    store(Change::naming, [this, text] { app_.bodies().setMissingText(text.toStdString()); });
  });
  form->addRow(tr("Text for &missing data:"), missingText_);
  form->addRow(QString(), note(tr("Used when a file doesn’t have the data a rule asks for, such "
                                  "as {lens} on a phone photo.")));

  duplicates_ = choice("duplicates", tr("Two files with one name"),
                       {{tr("Mark them as errors"), QStringLiteral("markError")},
                        {tr("Add a number to the second"), QStringLiteral("addSuffix")}});
  connect(duplicates_, &QComboBox::currentIndexChanged, this, [this] {
    store(Change::duplicates, [this] {
      app_.preferences().setDuplicatePolicy(duplicates_->currentIndex() == 0
                                                ? DuplicatePolicy::markError
                                                : DuplicatePolicy::addSuffix);
    });
  });
  form->addRow(tr("Two files, one &name:"), duplicates_);

  order_ =
      choice("order", tr("Number in order of"),
             {{AppCommands::title(CommandID::orderByCaptureTime), QStringLiteral("captureTime")},
              {AppCommands::title(CommandID::orderByName), QStringLiteral("name")}});
  connect(order_, &QComboBox::currentIndexChanged, this, [this] {
    store(Change::order, [this] {
      app_.preferences().setBatchOrder(order_->currentIndex() == 0 ? BatchOrder::captureTime
                                                                   : BatchOrder::name);
    });
  });
  form->addRow(tr("Number in &order of:"), order_);

  auto* twins = new QVBoxLayout;
  twins->setSpacing(4);
  twinImages_ = check("twinImages", tr("JPEG and other &images"));
  twinVideo_ = check("twinVideo", tr("&Videos"));
  twinSidecars_ = check("twinSidecars", tr("&XMP sidecars"));
  for (QCheckBox* box : {twinImages_, twinVideo_, twinSidecars_}) {
    twins->addWidget(box);
    connect(box, &QCheckBox::toggled, this, [this] {
      store(Change::twins, [this] {
        std::set<TwinKind> kinds;
        if (twinImages_->isChecked()) kinds.insert(TwinKind::images);
        if (twinVideo_->isChecked()) kinds.insert(TwinKind::video);
        if (twinSidecars_->isChecked()) kinds.insert(TwinKind::sidecars);
        app_.preferences().setTwinKinds(kinds);
      });
    });
  }
  twins->addWidget(
      note(tr("Files of one shot that share the name before the dot get the RAW’s "
              "new name.")));
  form->addRow(tr("Twins that follow the RAW:"), twins);
}

QWidget* SettingsWindow::makeNamesCounter(QFormLayout* form) {
  counterStart_ = new QSpinBox;
  counterStart_->setObjectName("counterStart");
  counterStart_->setAccessibleName(tr("Counter starts at"));
  counterStart_->setRange(0, 999'999);
  counterDigits_ = new QSpinBox;
  counterDigits_->setObjectName("counterDigits");
  counterDigits_->setAccessibleName(tr("Counter digits"));
  counterDigits_->setRange(1, 9);
  counterExample_ = note(QString());
  counterExample_->setObjectName("counterExample");
  auto* row = new QHBoxLayout;
  auto* startLabel = new QLabel(tr("starts at"));
  startLabel->setBuddy(counterStart_);
  auto* digitsLabel = new QLabel(tr("&digits"));
  digitsLabel->setBuddy(counterDigits_);
  row->addWidget(startLabel);
  row->addWidget(counterStart_);
  row->addSpacing(12);
  row->addWidget(digitsLabel);
  row->addWidget(counterDigits_);
  row->addSpacing(12);
  row->addWidget(counterExample_, 1);
  auto* container = new QWidget;
  container->setLayout(row);
  row->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(tr("&Counter:"));
  label->setBuddy(counterStart_);
  form->addRow(label, container);
  for (QSpinBox* box : {counterStart_, counterDigits_}) {
    connect(box, &QSpinBox::valueChanged, this, [this] {
      showCounterExample();
      store(Change::counter, [this] {
        Preferences preferences = app_.preferences();
        preferences.setCounterStart(counterStart_->value());
        preferences.setCounterDigits(counterDigits_->value());
      });
    });
  }
  return container;
}

void SettingsWindow::showCounterExample() {
  const int start = counterStart_->value();
  const auto number = [this](int n) {
    return QStringLiteral("%1").arg(n, counterDigits_->value(), 10, QLatin1Char('0'));
  };
  counterExample_->setText(
      tr("%1, %2, %3…").arg(number(start)).arg(number(start + 1)).arg(number(start + 2)));
}

// ---- Files ----

QWidget* SettingsWindow::makeFiles() {
  auto* column = new QVBoxLayout;
  column->setSpacing(8);
  auto* title = new QLabel(tr("Remember the original name in the files"));
  title->setObjectName("originalNamesTitle");
  makeBold(title);
  column->addWidget(title);
  auto* explanation = new QLabel(
      tr("Each renamed file keeps its camera name inside, as an extended attribute, for Restore "
         "Original Names; the picture and its metadata are never changed. Memory cards, drives "
         "shared with other systems (FAT, exFAT, NTFS) and network shares can lose it when a file "
         "is copied, so with “On disks that keep attributes natively” those files are left alone. "
         "History can always undo a rename, wherever the files are."));
  explanation->setObjectName("originalNamesExplanation");
  explanation->setWordWrap(true);
  column->addWidget(explanation);
  column->addSpacing(6);

  originalNames_ = new QButtonGroup(this);
  const auto option = [&](OriginalNames value, const char* name, const QString& label,
                          const QString& detail) {
    auto* button = new QRadioButton(label);
    button->setObjectName(name);
    button->setAccessibleName(QString(label).remove('&'));
    button->setAccessibleDescription(detail);
    originalNames_->addButton(button, static_cast<int>(value));
    column->addWidget(button);
    auto* text = note(detail);
    text->setContentsMargins(24, 0, 0, 6);
    column->addWidget(text);
  };
  option(OriginalNames::always, "originalAlways", tr("&Always"),
         tr("On every disk that accepts extended attributes."));
  option(OriginalNames::macDisksOnly, "originalNativeDisks",
         tr("On disks that keep &attributes natively"),
         tr("Linux disks (ext4, Btrfs, XFS, F2FS, ZFS) keep the name with the file; nothing is "
            "written on memory cards, exchange drives and network shares (FAT, exFAT, NTFS, SMB, "
            "NFS)."));
  option(OriginalNames::never, "originalNever", tr("&Never"),
         tr("Nothing is written. Restore Original Names still knows the names kept before."));
  connect(originalNames_, &QButtonGroup::idClicked, this, [this](int id) {
    store(Change::display,
          [this, id] { app_.preferences().setOriginalNames(static_cast<OriginalNames>(id)); });
  });
  return page(column);
}

// ---- Showing the store ----

void SettingsWindow::reload() {
  loading_ = true;
  const Preferences p = app_.preferences();
  select(appearance_, q(std::string(rawValue(p.appearance()))));
  select(language_, q(std::string(rawValue(storedLanguage(app_.settings())))));
  resumes_->setChecked(p.resumesSession());
  reveals_->setChecked(p.revealAfterRename());
  thumbnails_->setChecked(p.showsThumbnails());
  checksUpdates_->setChecked(AppUpdater::automaticChecksEnabledIn(app_.settings()));

  dateFormat_->setText(q(p.dateFormat()));
  timeFormat_->setText(q(p.timeFormat()));
  for (auto [field, example] :
       {std::pair{dateFormat_, dateExample_}, {timeFormat_, timeExample_}}) {
    const std::optional<QString> sample = sampleDate(field->text());
    example->setText(sample ? tr("Example: %1").arg(*sample) : QString());
    showAsProblem(example, false);
  }
  select(separator_, q(p.nameSeparator()));
  counterStart_->setValue(static_cast<int>(p.counterStart()));
  counterDigits_->setValue(static_cast<int>(p.counterDigits()));
  showCounterExample();
  select(extensionCase_, q(std::string(rawValue(p.extensionCase()))));
  missingText_->setText(q(p.missingText()));
  duplicates_->setCurrentIndex(p.duplicatePolicy() == DuplicatePolicy::markError ? 0 : 1);
  order_->setCurrentIndex(p.batchOrder().value_or(BatchOrder::captureTime) == BatchOrder::name);
  const std::set<TwinKind> kinds = p.twinKinds();
  twinImages_->setChecked(kinds.count(TwinKind::images) > 0);
  twinVideo_->setChecked(kinds.count(TwinKind::video) > 0);
  twinSidecars_->setChecked(kinds.count(TwinKind::sidecars) > 0);

  if (QAbstractButton* b = originalNames_->button(static_cast<int>(p.originalNames()))) {
    b->setChecked(true);
  }
  bodies_->reload();
  loading_ = false;
}

}  // namespace tessane
