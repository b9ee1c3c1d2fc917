#include "TessaneRename/Windows/ChangesPanel.h"

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <set>

#include "TessaneRename/AppCommands.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/ChangeList.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/PresetLibrary.h"
#include "TessaneRename/Windows/ChangeEditor.h"

namespace tessane {
namespace {

QString q(const std::string& s) {
  return QString::fromStdString(s);
}

// The list of changes: Delete removes the selected one.
class ChangeListView : public QListWidget {
 public:
  std::function<void()> onDelete;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if ((event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) && onDelete) {
      onDelete();
      return;
    }
    QListWidget::keyPressEvent(event);
  }
};

QToolButton* smallButton(const QString& text, const QString& tip, const char* name) {
  auto* b = new QToolButton;
  b->setObjectName(name);
  b->setText(text);
  b->setToolTip(tip);
  b->setAccessibleName(tip);
  b->setAutoRaise(true);
  return b;
}

}  // namespace

ChangesPanel::ChangesPanel(FolderModel& model, AppContext& app, PresetLibrary& presets,
                           QWidget* parent)
    : QWidget(parent), model_(model), app_(app), presets_(presets) {
  setObjectName("changesPanel");
  askName_ = [this](const QString& suggested) {
    return QInputDialog::getText(this, tr("Save Preset As"), tr("Name of the preset:"),
                                 QLineEdit::Normal, suggested);
  };

  QHBoxLayout* header = makeHeader();
  // The list.
  makeList();
  makeListBox();
  // The selected change: the files it applies to, then its editor.
  makeEditorArea();

  auto* body = new QHBoxLayout;
  body->setSpacing(12);
  body->addWidget(listBox_, 2);
  body->addWidget(editorArea_, 3);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(6);
  layout->addLayout(header);
  layout->addLayout(body, 1);

  connect(&model_, &FolderModel::rulesChanged, this, &ChangesPanel::showRules);
  connect(&presets_, &PresetLibrary::currentChanged, this, &ChangesPanel::showPresets);
  connect(&presets_, &PresetLibrary::presetsChanged, this, &ChangesPanel::showPresets);
  showRules();
}

// The heading, adding a change (the kinds in their three groups), the presets.
QHBoxLayout* ChangesPanel::makeHeader() {
  auto* heading = new QLabel(tr("Changes"));
  heading->setStyleSheet("font-weight: 600;");
  heading->setToolTip(
      tr("Changes are applied from top to bottom. You can turn one off without deleting it, "
         "move it up or down and duplicate it (%1)")
          .arg(QKeySequence(
                   QString::fromUtf8(AppCommands::command(CommandID::duplicateChange).shortcut))
                   .toString(QKeySequence::NativeText)));

  // Adding a change: the kinds in their three groups.
  auto* add = new QPushButton(tr("Add a Change"));
  add->setObjectName("addChange");
  add->setAccessibleName(tr("Add a change"));
  auto* addMenu = new QMenu(add);
  for (RuleKindGroup group : {RuleKindGroup::build, RuleKindGroup::modify, RuleKindGroup::tidy}) {
    addMenu->addSection(title(group));
    for (RuleKind kind : kindsIn(group)) {
      QAction* a = addMenu->addAction(tessane::title(kind));
      a->setToolTip(explanation(kind));
      a->setData(static_cast<int>(kind));
      connect(a, &QAction::triggered, this, [this, kind] { this->add(kind); });
    }
  }
  add->setMenu(addMenu);

  presetButton_ = new QPushButton;
  presetButton_->setObjectName("presets");
  presetButton_->setAccessibleName(tr("Presets"));
  presetButton_->setToolTip(
      tr("A preset keeps the name and the changes you set up, to use them again on the next "
         "shoot."));
  presetMenu_ = new QMenu(presetButton_);
  presetButton_->setMenu(presetMenu_);
  connect(presetMenu_, &QMenu::aboutToShow, this, &ChangesPanel::fillPresetMenu);

  auto* header = new QHBoxLayout;
  header->setSpacing(8);
  header->addWidget(heading);
  header->addWidget(add);
  header->addStretch(1);
  header->addWidget(presetButton_);
  return header;
}

void ChangesPanel::makeList() {
  auto* view = new ChangeListView;
  view->onDelete = [this] { deleteSelected(); };
  list_ = view;
  list_->setObjectName("changes");
  list_->setAccessibleName(tr("Changes"));
  list_->setDragDropMode(QAbstractItemView::InternalMove);
  list_->setDefaultDropAction(Qt::MoveAction);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->setTextElideMode(Qt::ElideRight);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  list_->setMinimumWidth(240);
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (syncing_) return;
    selectedID_ = row >= 0 && row < count() ? std::optional(ChangeList::at(model_.rules(), row).id)
                                            : std::nullopt;
    showEditor();
    emit changed();
  });
  connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
    if (syncing_) return;
    const int row = list_->row(item);
    const bool on = item->checkState() == Qt::Checked;
    if (row < 0 || row >= count() || ChangeList::at(model_.rules(), row).isEnabled == on) return;
    edit([row, on](RuleStack& s) {
      ChangeList::setEnabled(s, row, on);
      return std::optional(row);
    });
  });
  // A drag has moved an item: the rules follow once the view is done with its drop.
  connect(list_->model(), &QAbstractItemModel::rowsMoved, this,
          [this](const QModelIndex&, int start, int, const QModelIndex&, int row) {
            if (syncing_) return;
            const int to = row > start ? row - 1 : row;
            QTimer::singleShot(0, this, [this, start, to] { rowsDragged(start, to); });
          });
  connect(list_, &QListWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    if (!selected()) return;
    QMenu menu;
    CommandState state;
    state.selectedChangeIsOn = selectedIsOn();
    menu.addAction(AppCommands::title(CommandID::toggleChange, state), this,
                   &ChangesPanel::toggleSelected);
    menu.addAction(AppCommands::title(CommandID::duplicateChange), this,
                   &ChangesPanel::duplicateSelected);
    menu.addAction(AppCommands::title(CommandID::moveChangeUp), this, [this] { moveSelected(-1); })
        ->setEnabled(*selected() > 0);
    menu.addAction(AppCommands::title(CommandID::moveChangeDown), this, [this] { moveSelected(1); })
        ->setEnabled(*selected() + 1 < count());
    menu.addSeparator();
    fillScopeMenu();
    menu.addMenu(scopeMenu_)->setText(tr("Apply To"));
    menu.addSeparator();
    menu.addAction(tr("Delete Change"), this, &ChangesPanel::deleteSelected);
    menu.exec(list_->viewport()->mapToGlobal(at));
  });
}

// The list with its buttons below it.
void ChangesPanel::makeListBox() {
  upButton_ =
      smallButton(QStringLiteral("↑"), AppCommands::title(CommandID::moveChangeUp), "moveChangeUp");
  downButton_ = smallButton(QStringLiteral("↓"), AppCommands::title(CommandID::moveChangeDown),
                            "moveChangeDown");
  duplicateButton_ = smallButton(tr("Duplicate"), AppCommands::title(CommandID::duplicateChange),
                                 "duplicateChange");
  deleteButton_ = smallButton(tr("Delete"), tr("Delete Change"), "deleteChange");
  connect(upButton_, &QToolButton::clicked, this, [this] { moveSelected(-1); });
  connect(downButton_, &QToolButton::clicked, this, [this] { moveSelected(1); });
  connect(duplicateButton_, &QToolButton::clicked, this, &ChangesPanel::duplicateSelected);
  connect(deleteButton_, &QToolButton::clicked, this, &ChangesPanel::deleteSelected);
  auto* listButtons = new QHBoxLayout;
  listButtons->setSpacing(2);
  listButtons->addWidget(upButton_);
  listButtons->addWidget(downButton_);
  listButtons->addStretch(1);
  listButtons->addWidget(duplicateButton_);
  listButtons->addWidget(deleteButton_);
  listBox_ = new QWidget;
  auto* listColumn = new QVBoxLayout(listBox_);
  listColumn->setContentsMargins(0, 0, 0, 0);
  listColumn->setSpacing(2);
  listColumn->addWidget(list_, 1);
  listColumn->addLayout(listButtons);
}

void ChangesPanel::makeEditorArea() {
  scopeButton_ = new QPushButton;
  scopeButton_->setObjectName("scope");
  scopeButton_->setAccessibleName(tr("Files this change applies to"));
  scopeMenu_ = new QMenu(scopeButton_);
  scopeButton_->setMenu(scopeMenu_);
  connect(scopeMenu_, &QMenu::aboutToShow, this, &ChangesPanel::fillScopeMenu);
  nameContains_ = new QLineEdit;
  nameContains_->setObjectName("nameContains");
  nameContains_->setPlaceholderText(tr("Text in the name"));
  nameContains_->setAccessibleName(tr("Only names containing"));
  connect(nameContains_, &QLineEdit::textEdited, this,
          [this](const QString& s) { setScope(RuleScope::nameContains(s.toStdString())); });
  auto* scopeRow = new QHBoxLayout;
  scopeRow->setSpacing(6);
  auto* appliesTo = new QLabel(tr("Applies to:"));
  appliesTo->setBuddy(scopeButton_);
  scopeRow->addWidget(appliesTo);
  scopeRow->addWidget(scopeButton_);
  scopeRow->addWidget(nameContains_, 1);
  scopeRow->addStretch(0);

  editorPage_ = new QWidget;
  auto* editorColumn = new QVBoxLayout(editorPage_);
  editorColumn->setContentsMargins(0, 0, 0, 0);
  editorColumn->setSpacing(6);
  editorColumn->addLayout(scopeRow);
  editorColumn->addStretch(1);
  emptyHint_ = new QLabel(
      tr("Changes are applied from top to bottom, after the new name. Add one to replace, remove "
         "or move text, change the case or tidy the names up."));
  emptyHint_->setObjectName("changesHint");
  emptyHint_->setWordWrap(true);
  emptyHint_->setAlignment(Qt::AlignCenter);
  emptyHint_->setStyleSheet("color: palette(dark);");
  editorArea_ = new QStackedWidget;
  editorArea_->addWidget(emptyHint_);
  auto* scroll = new QScrollArea;
  scroll->setWidget(editorPage_);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  editorArea_->addWidget(scroll);
}

// ---- State ----

int ChangesPanel::count() const {
  return ChangeList::count(model_.rules());
}

std::optional<int> ChangesPanel::selected() const {
  if (!selectedID_) return std::nullopt;
  const RuleStack& rules = model_.rules();
  for (int i = 0; i < ChangeList::count(rules); ++i)
    if (ChangeList::at(rules, i).id == *selectedID_) return i;
  return std::nullopt;
}

void ChangesPanel::select(int index) {
  list_->setCurrentRow(index);
}

bool ChangesPanel::selectedIsOn() const {
  const std::optional<int> i = selected();
  return !i || ChangeList::at(model_.rules(), *i).isEnabled;
}

// ---- Gestures ----

void ChangesPanel::edit(const std::function<std::optional<int>(RuleStack&)>& change) {
  RuleStack rules = model_.rules();
  const std::optional<int> select = change(rules);
  selectedID_ = select && *select >= 0 && *select < ChangeList::count(rules)
                    ? std::optional(ChangeList::at(rules, *select).id)
                    : std::nullopt;
  model_.setRules(std::move(rules));  // shows them again
}

void ChangesPanel::add(RuleKind kind) {
  const std::string separator = app_.preferences().nameSeparator();
  std::optional<Rule> rule = newRule(kind);
  if (!rule) return;
  const std::optional<int> after = selected();
  edit([&](RuleStack& s) { return std::optional(ChangeList::add(s, *rule, after, separator)); });
  // The keyboard goes on in the new change's first field.
  if (editor_ != nullptr) {
    if (QWidget* first = editor_->findChild<QLineEdit*>()) first->setFocus();
  }
}

void ChangesPanel::toggleSelected() {
  const std::optional<int> i = selected();
  if (!i) return;
  const bool on = !selectedIsOn();
  edit([&](RuleStack& s) {
    ChangeList::setEnabled(s, *i, on);
    return i;
  });
}

void ChangesPanel::duplicateSelected() {
  const std::optional<int> i = selected();
  if (!i) return;
  edit([&](RuleStack& s) { return std::optional(ChangeList::duplicate(s, *i)); });
}

void ChangesPanel::moveSelected(int by) {
  const std::optional<int> i = selected();
  if (!i) return;
  edit([&](RuleStack& s) {
    ChangeList::move(s, *i, *i + by);
    return std::optional(std::clamp(*i + by, 0, ChangeList::count(s) - 1));
  });
}

void ChangesPanel::rowsDragged(int from, int to) {
  edit([&](RuleStack& s) {
    ChangeList::move(s, from, to);
    return std::optional(std::clamp(to, 0, ChangeList::count(s) - 1));
  });
  list_->setFocus();
}

void ChangesPanel::deleteSelected() {
  const std::optional<int> i = selected();
  if (!i) return;
  edit([&](RuleStack& s) {
    ChangeList::remove(s, *i);
    const int n = ChangeList::count(s);
    return n == 0 ? std::nullopt : std::optional(std::min(*i, n - 1));
  });
}

void ChangesPanel::setAllEnabled(bool on) {
  const std::optional<int> i = selected();
  edit([&](RuleStack& s) {
    ChangeList::setAllEnabled(s, on);
    return i;
  });
}

void ChangesPanel::deleteAll() {
  edit([](RuleStack& s) {
    ChangeList::removeAll(s);
    return std::nullopt;
  });
}

void ChangesPanel::setScope(const RuleScope& scope) {
  const std::optional<int> i = selected();
  if (!i) return;
  edit([&](RuleStack& s) {
    ChangeList::at(s, *i).conditions = scope.conditions();
    return i;
  });
}

// ---- Presets ----

void ChangesPanel::loadPreset(int index) {
  const auto& entries = presets_.entries();
  if (index < 0 || index >= static_cast<int>(entries.size())) return;
  const Preset preset = entries[static_cast<std::size_t>(index)].preset;
  selectedID_.reset();
  model_.setRules(presets_.load(preset));
}

void ChangesPanel::savePreset() {
  if (!presets_.current()) return savePresetAs();
  presets_.save(model_.rules());
  showPresets();
}

void ChangesPanel::savePresetAs() {
  const QString suggested = presets_.currentName();
  const QString name = askName_ ? askName_(suggested).trimmed() : QString();
  if (name.isEmpty()) return;
  presets_.saveAs(name, model_.rules());
  showPresets();
}

void ChangesPanel::showPresets() {
  const QString name = presets_.currentName();
  if (name.isEmpty()) {
    presetButton_->setText(tr("Presets"));
  } else if (presets_.isModified(model_.rules())) {
    presetButton_->setText(tr("%1 (modified)").arg(name));
  } else {
    presetButton_->setText(name);
  }
  presetButton_->setAccessibleDescription(presetButton_->text());
}

void ChangesPanel::fillPresetMenu() {
  presetMenu_->clear();
  const auto& entries = presets_.entries();
  if (entries.empty()) presetMenu_->addAction(tr("No presets yet"))->setEnabled(false);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    QAction* a = presetMenu_->addAction(q(entries[i].preset.name));
    a->setCheckable(true);
    a->setChecked(presets_.current() && presets_.current()->name == entries[i].preset.name);
    connect(a, &QAction::triggered, this, [this, i] { loadPreset(static_cast<int>(i)); });
  }
  for (const QString& unreadable : presets_.unreadable())
    presetMenu_->addAction(unreadable)->setEnabled(false);
  presetMenu_->addSeparator();
  presetMenu_->addAction(AppCommands::title(CommandID::savePreset), this,
                         &ChangesPanel::savePreset);
  presetMenu_->addAction(AppCommands::title(CommandID::savePresetAs), this,
                         &ChangesPanel::savePresetAs);
  presetMenu_->addAction(AppCommands::title(CommandID::showPresets), this,
                         [this] { presets_.showFolder(); });
}

// ---- Scope ----

void ChangesPanel::fillScopeMenu() {
  scopeMenu_->clear();
  const std::optional<int> i = selected();
  const std::optional<RuleScope> current =
      i ? RuleScope::of(ChangeList::at(model_.rules(), *i).conditions) : std::nullopt;
  const auto item = [&](QMenu* menu, const RuleScope& scope, const QString& text) {
    QAction* a = menu->addAction(text);
    a->setCheckable(true);
    a->setChecked(current == scope);
    connect(a, &QAction::triggered, this, [this, scope] { setScope(scope); });
  };
  for (const RuleScope& scope :
       {RuleScope::all(), RuleScope::raw(), RuleScope::jpeg(), RuleScope::video()})
    item(scopeMenu_, scope, scope.title());
  std::set<std::string> tags;
  for (const FolderFile& file : model_.files())
    if (file.bodyTag && !file.bodyTag->empty()) tags.insert(*file.bodyTag);
  if (current && current->kind == RuleScope::Kind::body) tags.insert(current->text);
  if (!tags.empty()) {
    QMenu* bodies = scopeMenu_->addMenu(tr("Camera Body"));
    for (const std::string& tag : tags)
      item(bodies, RuleScope::body(tag), q(tag));
  }
  QAction* contains = scopeMenu_->addAction(tr("Names Containing…"));
  contains->setCheckable(true);
  contains->setChecked(current && current->kind == RuleScope::Kind::nameContains);
  connect(contains, &QAction::triggered, this, [this] {
    setScope(RuleScope::nameContains(nameContains_->text().toStdString()));
    nameContains_->setFocus();
  });
}

void ChangesPanel::showScope() {
  const std::optional<int> i = selected();
  if (!i) return;
  const std::optional<RuleScope> scope =
      RuleScope::of(ChangeList::at(model_.rules(), *i).conditions);
  scopeButton_->setText(scope ? scope->title() : tr("Chosen files (set outside this window)"));
  const bool contains = scope && scope->kind == RuleScope::Kind::nameContains;
  nameContains_->setVisible(contains);
  if (contains && nameContains_->text() != q(scope->text)) nameContains_->setText(q(scope->text));
}

// ---- Showing the rules ----

void ChangesPanel::showRules() {
  const RuleStack& rules = model_.rules();
  const int n = ChangeList::count(rules);
  syncing_ = true;
  if (list_->count() != n) {
    list_->clear();
    for (int i = 0; i < n; ++i)
      list_->addItem(new QListWidgetItem);
  }
  int current = -1;
  for (int i = 0; i < n; ++i) {
    const Rule& rule = ChangeList::at(rules, i);
    QListWidgetItem* item = list_->item(i);
    const std::optional<RuleScope> scope = RuleScope::of(rule.conditions);
    QString text = tr("%1: %2").arg(title(kindOf(rule)), ChangeList::summary(rule));
    if (!scope) {
      text += tr("  · chosen files");
    } else if (scope->kind != RuleScope::Kind::all) {
      text += tr("  · %1").arg(scope->title());
    }
    item->setText(text);
    item->setToolTip(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                   Qt::ItemIsDragEnabled);
    item->setCheckState(rule.isEnabled ? Qt::Checked : Qt::Unchecked);
    item->setForeground(rule.isEnabled ? palette().text()
                                       : palette().brush(QPalette::PlaceholderText));
    if (selectedID_ && rule.id == *selectedID_) current = i;
  }
  // Something is always chosen while there are changes, so that the editor is never empty.
  if (current < 0 && n > 0) {
    current = 0;
    selectedID_ = ChangeList::at(rules, 0).id;
  }
  if (current < 0) selectedID_.reset();
  list_->setCurrentRow(current);
  syncing_ = false;
  showEditor();
  showPresets();
  emit changed();
}

void ChangesPanel::showEditor() {
  const std::optional<int> i = selected();
  listBox_->setVisible(count() > 0);  // without changes, the hint says how to add one
  upButton_->setEnabled(i && *i > 0);
  downButton_->setEnabled(i && *i + 1 < count());
  duplicateButton_->setEnabled(i.has_value());
  deleteButton_->setEnabled(i.has_value());
  if (!i) {
    if (editor_ != nullptr) editor_->deleteLater();
    editor_ = nullptr;
    emptyHint_->setText(
        count() == 0 ? tr("Changes are applied from top to bottom, after the new name. Add one to "
                          "replace, remove or move text, change the case or tidy the names up.")
                     : tr("Choose a change to edit it."));
    editorArea_->setCurrentIndex(0);
    return;
  }
  editorArea_->setCurrentIndex(1);
  showScope();
  const Rule& rule = ChangeList::at(model_.rules(), *i);
  // The editor that made this rule keeps its fields and its focus.
  if (editor_ != nullptr && editor_->rule().id == rule.id && editor_->rule().action == rule.action)
    return;
  if (editor_ != nullptr) editor_->deleteLater();
  editor_ = new ChangeEditor(rule);
  auto* column = static_cast<QVBoxLayout*>(editorPage_->layout());
  column->insertWidget(1, editor_);
  editor_->show();
  connect(editor_, &ChangeEditor::edited, this, [this](const Rule& edited) {
    const std::optional<int> at = selected();
    if (!at) return;
    edit([&](RuleStack& s) {
      ChangeList::at(s, *at).action = edited.action;
      return at;
    });
  });
}

}  // namespace tessane
