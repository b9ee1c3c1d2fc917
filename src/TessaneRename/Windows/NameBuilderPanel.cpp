#include "TessaneRename/Windows/NameBuilderPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

#include "TessaneRename/AppCommands.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Windows/ChipBar.h"
#include "TessaneRename/Windows/NameField.h"

namespace tessane {
namespace {

constexpr CommandID kSeparators[] = {CommandID::separatorUnderscore, CommandID::separatorDash,
                                     CommandID::separatorSpace, CommandID::separatorNothing};
constexpr const char* kSeparatorValues[] = {"_", "-", " ", ""};

}  // namespace

NameBuilderPanel::NameBuilderPanel(FolderModel& model, AppContext& app, QWidget* parent)
    : QWidget(parent), model_(model), app_(app) {
  setObjectName("nameBuilder");

  auto* title = new QLabel(tr("New name"));
  title->setStyleSheet("font-weight: 600;");

  chips_ = new ChipBar;
  chips_->setObjectName("pieces");
  connect(chips_, &ChipBar::moved, this, &NameBuilderPanel::movePiece);
  connect(chips_, &ChipBar::removed, this, &NameBuilderPanel::removePiece);
  connect(chips_, &ChipBar::editRequested, this, &NameBuilderPanel::editPiece);
  field_ = new NameField(model_, app_);
  stack_ = new QStackedWidget;
  stack_->addWidget(chips_);
  stack_->addWidget(field_);
  title->setBuddy(field_->lineEdit());

  // Adding a piece: the variables by group, the counter, and the user's own text typed in place.
  makeNewTextField(makeAddMenu());

  // The way the name is made.
  QHBoxLayout* ways = makeWays();

  auto* top = new QHBoxLayout;
  top->setSpacing(8);
  top->addWidget(title, 0, Qt::AlignTop);
  top->addWidget(stack_, 1);
  top->addWidget(newText_, 0, Qt::AlignTop);
  top->addWidget(add_, 0, Qt::AlignTop);
  title->setMinimumHeight(field_->lineEdit()->sizeHint().height());
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(6);
  layout->addLayout(top);
  layout->addLayout(ways);

  connect(&model_, &FolderModel::rulesChanged, this, &NameBuilderPanel::showRules);
  builder_ = NameBuilder::of(model_.rules(), separator());
  byHand_ = builder_.way == NameBuilder::Way::byHand;
  showBuilder();
}

// The button and its menu; the "Your Text…" action, which shows the field for the text.
QAction* NameBuilderPanel::makeAddMenu() {
  add_ = new QPushButton(tr("Add a Piece"));
  add_->setObjectName("addPiece");
  add_->setAccessibleName(tr("Add a piece to the name"));
  add_->setToolTip(tr("Add a value from the shooting data, your own text or a counter"));
  auto* menu = new QMenu(add_);
  const std::string timePattern = app_.preferences().timeFormat();
  for (PieceGroup group : pieceGroups()) {
    QMenu* sub = menu->addMenu(tessane::title(group));
    for (const FormatToken& piece : piecesIn(group, timePattern)) {
      QAction* a = sub->addAction(piece.title());
      a->setToolTip(QString::fromStdString(piece.templateText()));
      connect(a, &QAction::triggered, this, [this, piece] { addPiece(piece); });
    }
  }
  menu->addSeparator();
  QAction* text = menu->addAction(tr("Your Text…"));
  text->setObjectName("addText");
  QAction* counter = menu->addAction(tr("Counter"));
  connect(counter, &QAction::triggered, this, [this] { addPiece(FormatToken::counter()); });
  add_->setMenu(menu);
  return text;
}

void NameBuilderPanel::makeNewTextField(QAction* text) {
  newText_ = new QLineEdit;
  newText_->setObjectName("newPieceText");
  newText_->setPlaceholderText(tr("Your text, then Return"));
  newText_->setAccessibleName(tr("Text of the new piece"));
  newText_->setMaximumWidth(200);
  newText_->hide();
  connect(text, &QAction::triggered, this, [this] {
    editing_ = -1;
    newText_->clear();
    newText_->show();
    newText_->setFocus();
  });
  connect(newText_, &QLineEdit::returnPressed, this, [this] {
    const std::string typed = newText_->text().toStdString();
    const int editing = std::exchange(editing_, -1);
    newText_->clear();
    newText_->hide();
    if (typed.empty()) return;
    if (editing >= 0 && editing < static_cast<int>(builder_.pieces.size())) {
      builder_.pieces[static_cast<std::size_t>(editing)] = FormatToken::text(typed);
      apply();
    } else {
      addPiece(FormatToken::text(typed));
    }
  });
  connect(newText_, &QLineEdit::editingFinished, this, [this] {
    if (newText_->text().isEmpty()) {
      editing_ = -1;
      newText_->hide();
    }
  });
}

// The separator, "Start from the Original Name", "Write by Hand", "Use the new name".
QHBoxLayout* NameBuilderPanel::makeWays() {
  auto* separatorLabel = new QLabel(tr("Between pieces:"));
  separator_ = new QComboBox;
  separator_->setObjectName("separator");
  separator_->setAccessibleName(tr("Separator between pieces"));
  for (CommandID id : kSeparators)
    separator_->addItem(AppCommands::title(id));
  separatorLabel->setBuddy(separator_);
  connect(separator_, &QComboBox::activated, this, &NameBuilderPanel::chooseSeparator);

  fromOriginal_ = new QToolButton;
  fromOriginal_->setObjectName("startFromOriginal");
  fromOriginal_->setText(AppCommands::title(CommandID::startFromOriginalName));
  fromOriginal_->setCheckable(true);
  fromOriginal_->setToolTip(tr("Keep the camera's name and add your pieces after it"));
  fromOriginal_->setAccessibleName(AppCommands::title(CommandID::startFromOriginalName));
  connect(fromOriginal_, &QToolButton::clicked, this, &NameBuilderPanel::setStartsFromOriginal);

  byHandButton_ = new QToolButton;
  byHandButton_->setObjectName("writeByHand");
  byHandButton_->setText(tr("Write by Hand"));
  byHandButton_->setCheckable(true);
  byHandButton_->setToolTip(tr("Type the pattern, such as {date}_{body}_{counter}"));
  byHandButton_->setAccessibleName(tr("Write by hand"));
  connect(byHandButton_, &QToolButton::clicked, this, &NameBuilderPanel::setWritesByHand);

  usesNewName_ = new QCheckBox(tr("Use the new name"));
  usesNewName_->setObjectName("useNewName");
  usesNewName_->setToolTip(tr("Turned off, the names stay as they are and only the changes apply"));
  connect(usesNewName_, &QCheckBox::clicked, this, &NameBuilderPanel::setUsesNewName);
  auto* ways = new QHBoxLayout;
  ways->setSpacing(8);
  ways->addWidget(usesNewName_);
  ways->addSpacing(12);
  ways->addWidget(fromOriginal_);
  ways->addWidget(byHandButton_);
  ways->addStretch(1);
  ways->addWidget(separatorLabel);
  ways->addWidget(separator_);
  return ways;
}

std::string NameBuilderPanel::separator() const {
  return app_.preferences().nameSeparator();
}

bool NameBuilderPanel::writesByHand() const {
  return byHand_ || builder_.way == NameBuilder::Way::byHand;
}

// ---- Gestures ----

void NameBuilderPanel::addPiece(const FormatToken& piece) {
  if (builder_.way == NameBuilder::Way::byHand) builder_.way = NameBuilder::Way::pieces;
  byHand_ = false;
  builder_.pieces.push_back(piece);
  builder_.usesNewName = true;
  apply();
}

void NameBuilderPanel::removePiece(int index) {
  if (index < 0 || index >= static_cast<int>(builder_.pieces.size())) return;
  builder_.pieces.erase(builder_.pieces.begin() + index);
  apply();
}

void NameBuilderPanel::editPiece(int index) {
  if (index < 0 || index >= static_cast<int>(builder_.pieces.size())) return;
  const FormatToken& piece = builder_.pieces[static_cast<std::size_t>(index)];
  if (piece.kind != FormatToken::Kind::text) return;
  editing_ = index;
  newText_->setText(QString::fromStdString(piece.value));
  newText_->show();
  newText_->setFocus();
  newText_->selectAll();
}

void NameBuilderPanel::movePiece(int from, int to) {
  if (from < 0 || to < 0) return;
  if (builder_.movePiece(static_cast<std::size_t>(from), static_cast<std::size_t>(to))) apply();
}

void NameBuilderPanel::setStartsFromOriginal(bool on) {
  byHand_ = false;
  builder_.way = on ? NameBuilder::Way::startFromOriginal : NameBuilder::Way::pieces;
  builder_.usesNewName = true;
  apply();
}

void NameBuilderPanel::setWritesByHand(bool on) {
  byHand_ = on;
  if (on) {
    showBuilder();
    field_->lineEdit()->setFocus();
    emit changed();
    return;
  }
  // Back to the chips: the pattern's own pieces when it is a join of them, else the pieces the
  // builder had before the pattern was typed.
  const NameBuilder shown = NameBuilder::of(model_.rules(), separator());
  if (shown.way != NameBuilder::Way::byHand) {
    builder_ = shown;
    showBuilder();
    emit changed();
    return;
  }
  if (builder_.way == NameBuilder::Way::byHand) {
    builder_.way = NameBuilder::Way::pieces;
    builder_.pieces = NameBuilder::defaultPieces(!app_.bodies().bodies().tags.empty());
  }
  apply();
}

void NameBuilderPanel::setUsesNewName(bool on) {
  builder_.usesNewName = on;
  if (builder_.way == NameBuilder::Way::byHand)
    builder_.pattern = field_->lineEdit()->text().toStdString();
  apply();
}

void NameBuilderPanel::chooseSeparator(int index) {
  if (index < 0 || index >= static_cast<int>(std::size(kSeparators))) return;
  Preferences preferences = app_.preferences();
  const std::string before = preferences.nameSeparator();
  AppCommands::applySetting(kSeparators[index], preferences);
  separatorChanged(before);
}

void NameBuilderPanel::separatorChanged(const std::string& before) {
  RuleStack rules = model_.rules();
  NameBuilder::changeSeparator(rules, before, separator());
  applying_ = true;
  model_.setRules(std::move(rules));
  applying_ = false;
  showBuilder();
  emit changed();
}

// ---- Showing ----

void NameBuilderPanel::apply() {
  RuleStack rules = model_.rules();
  builder_.applyTo(rules, separator(), app_.preferences().nameCounter());
  applying_ = true;
  model_.setRules(std::move(rules));
  applying_ = false;
  showBuilder();
  emit changed();
}

// The rules changed elsewhere (the field, a preset, a resumed session, the Changes menu): the
// builder shows them, unless they are what it already shows.
void NameBuilderPanel::showRules() {
  if (applying_) return;
  const std::string sep = separator();
  const NameBuilder shown = NameBuilder::of(model_.rules(), sep);
  if (shown.templateText(sep) == builder_.templateText(sep) &&
      shown.usesNewName == builder_.usesNewName)
    return;
  builder_ = shown;
  if (shown.way == NameBuilder::Way::byHand) byHand_ = true;
  showBuilder();
  emit changed();
}

void NameBuilderPanel::showBuilder() {
  const bool byHand = writesByHand();
  stack_->setCurrentWidget(byHand ? static_cast<QWidget*>(field_) : chips_);
  if (!byHand) {
    chips_->setPieces(builder_.pieces, builder_.way == NameBuilder::Way::startFromOriginal
                                           ? tr("Original name")
                                           : QString());
  }
  // The chips' row is as tall as the field, so that the window doesn't jump between the two.
  chips_->setMinimumHeight(field_->lineEdit()->sizeHint().height());
  add_->setEnabled(!byHand);
  byHandButton_->setChecked(byHand);
  fromOriginal_->setChecked(!byHand && builder_.way == NameBuilder::Way::startFromOriginal);
  usesNewName_->setChecked(builder_.usesNewName);
  const std::string sep = separator();
  for (int i = 0; i < static_cast<int>(std::size(kSeparatorValues)); ++i) {
    if (sep == kSeparatorValues[i]) separator_->setCurrentIndex(i);
  }
}

}  // namespace tessane
