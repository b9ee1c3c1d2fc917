#include "TessaneRename/Windows/HistoryWindow.h"

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/Windows/Appearance.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;

QString q(const std::string& s) {
  return QString::fromStdString(s);
}

QString dateText(const Date& date) {
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch());
  const QDateTime when = QDateTime::fromMSecsSinceEpoch(ms.count()).toLocalTime();
  return QLocale().toString(when, QLocale::ShortFormat);
}

QString goBackLabel(const RenameHistory::Entry& entry) {
  const auto n = static_cast<std::int64_t>(entry.moves.size());
  return q(entry.kind == RenameHistory::Kind::rename ? Messages::filesBackToPrevious(n)
                                                     : Messages::filesBackToOriginal(n));
}

constexpr int kIdRole = Qt::UserRole;

}  // namespace

HistoryWindow::HistoryWindow(RenameHistory& history, Models models, QWidget* parent)
    : QWidget(parent, Qt::Window), history_(history), models_(std::move(models)) {
  setObjectName("historyWindow");
  setWindowTitle(tr("History"));
  auto* intro = new QLabel(
      tr("Every rename you make shows up here, and you can go back to the names before it."));
  intro->setWordWrap(true);

  list_ = new QTreeWidget;
  list_->setObjectName("historyList");
  list_->setAccessibleName(tr("Renames, newest first"));
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  list_->setHeaderLabels({tr("Date"), tr("Folder"), tr("Files"), tr("State")});
  list_->header()->setStretchLastSection(true);
  list_->header()->setSectionResizeMode(date, QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(files, QHeaderView::ResizeToContents);
  list_->setColumnWidth(folder, 200);
  connect(list_, &QTreeWidget::itemSelectionChanged, this, &HistoryWindow::selectionChanged);
  connect(list_, &QTreeWidget::itemActivated, this, [this] { goBack(); });
  auto* empty = new QLabel(tr("Nothing renamed yet"));
  empty->setObjectName("historyEmpty");
  empty->setAlignment(Qt::AlignCenter);
  empty->setForegroundRole(QPalette::PlaceholderText);
  stack_ = new QStackedWidget;
  stack_->addWidget(empty);
  stack_->addWidget(list_);

  message_ = new QLabel;
  message_->setObjectName("historyMessage");
  message_->setWordWrap(true);
  message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  message_->hide();

  clear_ = new QPushButton(tr("Clear History…"));
  clear_->setObjectName("clearHistory");
  connect(clear_, &QPushButton::clicked, this, [this] {
    QMessageBox ask(QMessageBox::Question, tr("Clear the history?"), tr("Clear the history?"),
                    QMessageBox::Cancel, this);
    ask.setInformativeText(
        tr("The files keep their names; you can no longer go back from here. "
           "Original names stay remembered in each file."));
    QPushButton* yes = ask.addButton(tr("Clear History"), QMessageBox::DestructiveRole);
    ask.setDefaultButton(QMessageBox::Cancel);
    ask.exec();
    if (ask.clickedButton() == yes) clearHistory();
  });
  goBack_ = new QPushButton(tr("Go Back"));
  goBack_->setObjectName("goBack");
  goBack_->setToolTip(tr("Put back the names these files had before this rename"));
  goBack_->setDefault(true);
  connect(goBack_, &QPushButton::clicked, this, &HistoryWindow::goBack);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(clear_);
  buttons->addStretch(1);
  buttons->addWidget(goBack_);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(14, 14, 14, 12);
  layout->setSpacing(8);
  layout->addWidget(intro);
  layout->addWidget(stack_, 1);
  layout->addWidget(message_);
  layout->addLayout(buttons);
  resize(760, 440);

  // The tool writes the same history: show its batches as they come.
  if (const std::optional<fs::path>& file = history_.file()) {
    auto* watcher = new QFileSystemWatcher(this);
    std::error_code ignored;
    fs::create_directories(file->parent_path(), ignored);
    watcher->addPath(QString::fromStdString(file->parent_path().string()));
    connect(watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
      if (history_.reload()) refresh();
    });
  }
  refresh();
}

HistoryWindow::~HistoryWindow() {
  disconnect(watchingToast_);
  disconnect(watchingError_);
}

void HistoryWindow::refresh() {
  std::optional<QString> selected;
  if (const QTreeWidgetItem* item = list_->currentItem()) {
    selected = item->data(date, kIdRole).toString();
  }
  history_.reload();
  list_->clear();
  QTreeWidgetItem* current = nullptr;
  for (const RenameHistory::Entry& entry : history_.entries()) {
    QStringList folders;
    for (const fs::path& f : RenameHistory::foldersOf(entry)) {
      folders << q(f.filename().empty() ? f.string() : f.filename().string());
    }
    QString stateText;
    if (entry.isReverted) {
      stateText = tr("Gone back");
    } else if (history_.goingBackChain(entry.id).size() > 1) {
      stateText = tr("Renamed again since");
    } else {
      stateText =
          entry.kind == RenameHistory::Kind::rename ? tr("Renamed") : tr("Original names restored");
    }
    auto* item = new QTreeWidgetItem(
        list_, {dateText(entry.date), folders.join(QStringLiteral(", ")),
                QLocale().toString(static_cast<qlonglong>(entry.moves.size())), stateText});
    const QString id = q(entry.id.string());
    item->setData(date, kIdRole, id);
    item->setToolTip(folder, folders.join('\n'));
    if (entry.isReverted) {
      for (int c = 0; c < list_->columnCount(); ++c)
        item->setForeground(c, palette().brush(QPalette::Disabled, QPalette::Text));
    }
    if (selected && *selected == id) current = item;
  }
  if (current == nullptr && list_->topLevelItemCount() > 0) current = list_->topLevelItem(0);
  if (current != nullptr) list_->setCurrentItem(current);
  stack_->setCurrentIndex(history_.entries().empty() ? 0 : 1);
  clear_->setEnabled(!history_.entries().empty());
  selectionChanged();
}

const RenameHistory::Entry* HistoryWindow::selectedEntry() const {
  const QTreeWidgetItem* item = list_->currentItem();
  if (item == nullptr) return nullptr;
  const std::string id = item->data(date, kIdRole).toString().toStdString();
  for (const RenameHistory::Entry& entry : history_.entries()) {
    if (entry.id.string() == id) return &entry;
  }
  return nullptr;
}

FolderModel* HistoryWindow::modelFor(const std::vector<RenameHistory::Entry>& chain) const {
  if (chain.empty()) return nullptr;
  std::vector<fs::path> needed;
  for (const RenameHistory::Entry& entry : chain) {
    for (fs::path& f : RenameHistory::foldersOf(entry))
      needed.push_back(std::move(f));
  }
  for (FolderModel* model : models_ ? models_() : std::vector<FolderModel*>()) {
    const std::vector<fs::path>& listed = model->folders();
    const bool holds = std::all_of(needed.begin(), needed.end(), [&](const fs::path& f) {
      return std::find(listed.begin(), listed.end(), f) != listed.end();
    });
    if (holds) return model;
  }
  return nullptr;
}

void HistoryWindow::selectionChanged() {
  const RenameHistory::Entry* entry = selectedEntry();
  if (entry == nullptr) {
    goBack_->setText(tr("Go Back"));
    goBack_->setEnabled(false);
    return;
  }
  FolderModel* model = entry->isReverted ? nullptr : modelFor(history_.goingBackChain(entry->id));
  goBack_->setText(entry->isReverted || model != nullptr
                       ? goBackLabel(*entry)
                       : tr("Add the folder to the list to go back"));
  goBack_->setAccessibleName(goBack_->text());
  goBack_->setEnabled(model != nullptr && !model->isRenaming());
}

void HistoryWindow::goBack() {
  const RenameHistory::Entry* entry = selectedEntry();
  if (entry == nullptr || entry->isReverted) return;
  const Uuid id = entry->id;
  const std::vector<RenameHistory::Entry> chain = history_.goingBackChain(id);
  FolderModel* model = modelFor(chain);
  if (model == nullptr) {
    showMessage(q(Messages::addFolderToGoBack()), true);
    return;
  }
  if (chain.size() > 1 && !askToGoBackThrough(chain)) return;
  message_->hide();
  watch(model);
  model->revert(id);
  if (!model->isRenaming()) batchEnded(model, true);  // refused at once
}

// The batch's end shows as its toast, or as the model's message when it failed.
void HistoryWindow::watch(FolderModel* model) {
  disconnect(watchingToast_);
  disconnect(watchingError_);
  watchingToast_ = connect(model, &FolderModel::toastChanged, this, [this, model] {
    if (!model->isRenaming() && model->toast()) batchEnded(model, false);
  });
  watchingError_ = connect(model, &FolderModel::errorMessageChanged, this, [this, model] {
    if (!model->isRenaming() && model->errorMessage()) batchEnded(model, true);
  });
}

void HistoryWindow::batchEnded(FolderModel* model, bool failed) {
  disconnect(watchingToast_);
  disconnect(watchingError_);
  refresh();
  if (failed) {
    showMessage(model->errorMessageText(), true);
    return;
  }
  const std::optional<Toast>& toast = model->toast();
  if (!toast) return;
  if (toast->outcome == RenameOutcome::partlyStuck) {
    QString text = q(Messages::someFilesStuck());
    for (const FileMove& move : toast->stuck) {
      text += '\n' + q(move.source.filename().string()) + QStringLiteral(" → ") +
              q(move.destination.filename().string());
    }
    showMessage(text, true);
  } else {
    showMessage(q(toast->text), false);
  }
}

// One question naming the later batches that going back goes through first.
bool HistoryWindow::askToGoBackThrough(const std::vector<RenameHistory::Entry>& chain) {
  QStringList later;
  for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
    const RenameHistory::Entry& e = chain[i];
    QStringList folders;
    for (const fs::path& f : RenameHistory::foldersOf(e))
      folders << q(f.filename().empty() ? f.string() : f.filename().string());
    later << tr("%1, %2: %3 files")
                 .arg(dateText(e.date), folders.join(QStringLiteral(", ")),
                      QLocale().toString(static_cast<qlonglong>(e.moves.size())));
  }
  const QString question = tr("Go back from the later renames too?");
  const QString details =
      tr("These files were renamed again since. To give them back the names they had before this "
         "rename, these later renames are gone back from first:") +
      QStringLiteral("\n") + later.join('\n');
  if (ask_) return ask_(question, details);
  QMessageBox box(QMessageBox::Question, tr("Go Back"), question, QMessageBox::Cancel, this);
  box.setInformativeText(details);
  QPushButton* yes = box.addButton(tr("Go Back from All"), QMessageBox::AcceptRole);
  box.setDefaultButton(yes);
  box.exec();
  return box.clickedButton() == yes;
}

void HistoryWindow::clearHistory() {
  history_.clear();
  message_->hide();
  refresh();
}

void HistoryWindow::showMessage(const QString& text, bool isProblem) {
  message_->setText(text);
  showAsProblem(message_, isProblem);
  message_->show();
}

}  // namespace tessane
