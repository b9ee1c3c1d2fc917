#include "TessaneRename/Windows/BodiesPane.h"

#include <QAction>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <map>

#include "TessaneRename/BodyTable.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/Windows/Appearance.h"

namespace tessane {
namespace {

QString q(const std::string& s) {
  return QString::fromStdString(s);
}

std::filesystem::path pathOf(const QString& s) {
  return std::filesystem::path(s.toStdString());
}

}  // namespace

BodiesPane::BodiesPane(BodyTable& table, OpenFiles openFiles, QWidget* parent)
    : QWidget(parent), bodies_(table), openFiles_(std::move(openFiles)) {
  setObjectName("bodiesPane");
  auto* intro = new QLabel(
      tr("Give each camera a short tag for {body}, and line up a clock that was wrong. The times "
         "in the names are corrected; the files aren’t changed."));
  intro->setWordWrap(true);

  makeTable();

  auto* offsetNote =
      new QLabel(tr("Clock offset: what to add to the camera’s times, as +h:mm:ss. “+0:02:00” "
                    "means its clock was 2 minutes behind."));
  offsetNote->setWordWrap(true);
  offsetNote->setForegroundRole(QPalette::PlaceholderText);
  message_ = new QLabel;
  message_->setObjectName("bodiesMessage");
  message_->setWordWrap(true);
  message_->hide();

  QHBoxLayout* buttons = makeButtons();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(18, 18, 18, 18);
  layout->setSpacing(8);
  layout->addWidget(intro);
  layout->addWidget(table_, 1);
  layout->addWidget(message_);
  layout->addLayout(buttons);
  layout->addWidget(offsetNote);
  reload();
}

void BodiesPane::makeTable() {
  table_ = new QTableWidget(0, 3);
  table_->setObjectName("bodiesTable");
  table_->setAccessibleName(tr("Camera bodies"));
  table_->setHorizontalHeaderLabels({tr("Serial number or model"), tr("Tag"), tr("Clock offset")});
  table_->verticalHeader()->hide();
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setAlternatingRowColors(true);
  table_->setTabKeyNavigation(false);  // Tab leaves the table; the arrows move inside it
  table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
  QHeaderView* header = table_->horizontalHeader();
  header->setSectionResizeMode(key, QHeaderView::Stretch);
  header->setSectionResizeMode(tag, QHeaderView::Interactive);
  // Tag and offset as wide as their titles (longer in some languages) or their values.
  header->setSectionResizeMode(tag, QHeaderView::ResizeToContents);
  header->setSectionResizeMode(offset, QHeaderView::ResizeToContents);
  connect(table_, &QTableWidget::itemChanged, this, &BodiesPane::itemChanged);
}

// Add, Remove, from the open files, Import, Export.
QHBoxLayout* BodiesPane::makeButtons() {
  auto* add = new QPushButton(tr("&Add"));
  add->setObjectName("addBody");
  connect(add, &QPushButton::clicked, this, [this] { addRow(); });
  remove_ = new QPushButton(tr("&Remove"));
  remove_->setObjectName("removeBody");
  connect(remove_, &QPushButton::clicked, this, &BodiesPane::removeSelectedRows);
  auto* deleteKey = new QAction(table_);
  deleteKey->setShortcut(QKeySequence::Delete);
  deleteKey->setShortcutContext(Qt::WidgetShortcut);
  connect(deleteKey, &QAction::triggered, this, &BodiesPane::removeSelectedRows);
  table_->addAction(deleteKey);
  connect(table_, &QTableWidget::itemSelectionChanged, this,
          [this] { remove_->setEnabled(!table_->selectedItems().isEmpty()); });
  remove_->setEnabled(false);
  fromOpenFiles_ = new QPushButton;
  fromOpenFiles_->setObjectName("addFromOpenFiles");
  connect(fromOpenFiles_, &QPushButton::clicked, this, &BodiesPane::addFromOpenFiles);
  auto* import = new QPushButton(tr("&Import…"));
  import->setObjectName("importBodies");
  import->setToolTip(tr("Imported rows are added; for the same body the imported one wins."));
  connect(import, &QPushButton::clicked, this, [this] {
    const QString file = QFileDialog::getOpenFileName(this, tr("Import Camera Bodies"), QString(),
                                                      tr("Camera bodies (*.json)"));
    if (!file.isEmpty()) importFrom(file);
  });
  auto* exportButton = new QPushButton(tr("&Export…"));
  exportButton->setObjectName("exportBodies");
  connect(exportButton, &QPushButton::clicked, this, [this] {
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Export Camera Bodies"), QString::fromUtf8(BodyTable::kExportName.data()),
        tr("Camera bodies (*.json)"));
    if (!file.isEmpty()) exportTo(file);
  });
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(add);
  buttons->addWidget(remove_);
  buttons->addWidget(fromOpenFiles_);
  buttons->addStretch(1);
  buttons->addWidget(import);
  buttons->addWidget(exportButton);
  return buttons;
}

void BodiesPane::showEvent(QShowEvent* event) {
  updateAddFromOpenFiles();
  QWidget::showEvent(event);
}

void BodiesPane::reload() {
  loading_ = true;
  // One row per body, by its normalised key; the key shown as typed.
  std::map<std::string, std::pair<std::string, std::string>> rows;  // norm -> (key, tag)
  std::map<std::string, double> offsets;
  const CameraBodies& b = bodies_.bodies();
  for (const auto& [k, t] : b.tags)
    rows[CameraBodies::normalizedKey(k)] = {k, t};
  for (const auto& [k, seconds] : b.clockOffsets) {
    const std::string norm = CameraBodies::normalizedKey(k);
    if (rows.count(norm) == 0) rows[norm] = {k, std::string()};
    offsets[norm] = seconds;
  }
  table_->setRowCount(0);
  for (const auto& [norm, row] : rows) {
    const int r = table_->rowCount();
    table_->insertRow(r);
    table_->setItem(r, key, new QTableWidgetItem(q(row.first)));
    table_->setItem(r, tag, new QTableWidgetItem(q(row.second)));
    const auto found = offsets.find(norm);
    table_->setItem(
        r, offset,
        new QTableWidgetItem(q(formatClockOffset(found == offsets.end() ? 0.0 : found->second))));
  }
  loading_ = false;
  updateAddFromOpenFiles();
}

void BodiesPane::tableChanged() {
  if (!loading_) reload();
}

void BodiesPane::addRow(const QString& k) {
  loading_ = true;
  const int r = table_->rowCount();
  table_->insertRow(r);
  table_->setItem(r, key, new QTableWidgetItem(k));
  table_->setItem(r, tag, new QTableWidgetItem);
  table_->setItem(r, offset, new QTableWidgetItem(q(formatClockOffset(0))));
  loading_ = false;
  const int column = k.isEmpty() ? key : tag;
  table_->setCurrentCell(r, column);
  table_->setFocus();
  if (isVisible()) table_->editItem(table_->item(r, column));
}

void BodiesPane::removeSelectedRows() {
  std::set<int> rows;
  for (const QModelIndex& index : table_->selectionModel()->selectedIndexes())
    rows.insert(index.row());
  loading_ = true;
  for (auto it = rows.rbegin(); it != rows.rend(); ++it)
    table_->removeRow(*it);
  loading_ = false;
  storeRows();
}

void BodiesPane::itemChanged(QTableWidgetItem* item) {
  if (loading_) return;
  if (item->column() == offset) {
    const QString text = item->text();
    if (!parseClockOffset(text.toStdString())) {
      // Put back the offset in force for that body.
      const QString k =
          table_->item(item->row(), key) ? table_->item(item->row(), key)->text() : QString();
      double previous = 0;
      const std::string wanted = CameraBodies::normalizedKey(k.toStdString());
      for (const auto& [stored, seconds] : bodies_.bodies().clockOffsets) {
        if (CameraBodies::normalizedKey(stored) == wanted) previous = seconds;
      }
      loading_ = true;
      item->setText(q(formatClockOffset(previous)));
      loading_ = false;
      showMessage(tr("“%1” isn’t a clock offset. Write it as +h:mm:ss, such as +0:02:00 for a "
                     "clock 2 minutes behind, or -1:00:00 for one an hour ahead.")
                      .arg(text),
                  true);
      return;
    }
    loading_ = true;
    item->setText(q(formatClockOffset(*parseClockOffset(text.toStdString()))));
    loading_ = false;
  }
  if (item->column() == tag && !CameraBodies::isUsableTag(item->text().toStdString())) {
    showMessage(tr("A tag can’t hold “/”, “:” or control characters."), true);
    loading_ = true;
    item->setText(QString());
    loading_ = false;
  } else {
    message_->hide();
  }
  storeRows();
}

void BodiesPane::storeRows() {
  CameraBodies table;
  for (int r = 0; r < table_->rowCount(); ++r) {
    const auto text = [&](int c) {
      return table_->item(r, c) ? table_->item(r, c)->text().toStdString() : std::string();
    };
    const std::string k = CameraBodies::trimmed(text(key));
    if (k.empty()) continue;
    const std::string t = CameraBodies::trimmed(text(tag));
    if (!t.empty()) table.tags[k] = t;
    const double seconds = parseClockOffset(text(offset)).value_or(0);
    if (seconds != 0) table.clockOffsets[k] = seconds;
  }
  if (table == bodies_.bodies()) return;
  loading_ = true;  // the table's own announcement must not rebuild the rows being edited
  bodies_.setBodies(std::move(table));
  loading_ = false;
  updateAddFromOpenFiles();
}

void BodiesPane::addFromOpenFiles() {
  const std::vector<MetadataMap> files = openFiles_ ? openFiles_() : std::vector<MetadataMap>();
  for (const std::string& k : bodies_.bodies().bodiesWithoutTag(files)) {
    bool shown = false;
    for (int r = 0; r < table_->rowCount(); ++r) {
      const QTableWidgetItem* item = table_->item(r, key);
      shown = shown ||
              (item != nullptr && CameraBodies::normalizedKey(item->text().toStdString()) == k);
    }
    if (!shown) addRow(q(k));
  }
}

void BodiesPane::updateAddFromOpenFiles() {
  const std::vector<MetadataMap> files = openFiles_ ? openFiles_() : std::vector<MetadataMap>();
  const auto count = static_cast<int>(bodies_.bodies().bodiesWithoutTag(files).size());
  fromOpenFiles_->setText(tr("Add from open files (%1)").arg(count));
  fromOpenFiles_->setAccessibleName(fromOpenFiles_->text());
  fromOpenFiles_->setEnabled(count > 0);
}

void BodiesPane::importFrom(const QString& file) {
  if (!bodies_.importFrom(pathOf(file))) {
    showMessage(q(Messages::notABodyTable(pathOf(file))), true);
    return;
  }
  reload();
  showMessage(tr("Imported rows are added; for the same body the imported one wins."), false);
}

void BodiesPane::exportTo(const QString& file) {
  if (const std::optional<IOError> error = bodies_.exportTo(pathOf(file))) {
    showMessage(q(Messages::of(*error)), true);
    return;
  }
  message_->hide();
}

void BodiesPane::showMessage(const QString& text, bool isProblem) {
  message_->setText(text);
  showAsProblem(message_, isProblem);
  message_->show();
}

}  // namespace tessane
