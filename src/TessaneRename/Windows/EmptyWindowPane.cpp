#include "TessaneRename/Windows/EmptyWindowPane.h"

#include <QLabel>
#include <QLayoutItem>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "TessaneRename/FolderModel.h"
#include "TessaneRename/PresetLibrary.h"
#include "TessaneRename/RecentFolders.h"

namespace tessane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kShown = 5;

void clearLayout(QVBoxLayout* layout) {
  while (QLayoutItem* item = layout->takeAt(0)) {
    delete item->widget();
    delete item;
  }
}

QPushButton* linkButton(const QIcon& icon, const QString& text, const QString& tip) {
  auto* b = new QPushButton(icon, text);
  b->setFlat(true);
  b->setToolTip(tip);
  b->setAccessibleName(text);
  b->setStyleSheet("text-align: left; padding: 3px 6px;");
  b->setCursor(Qt::PointingHandCursor);
  return b;
}

}  // namespace

EmptyWindowPane::EmptyWindowPane(FolderModel& model, QSettings& settings, PresetLibrary* presets,
                                 QWidget* parent)
    : QWidget(parent), model_(model), settings_(settings), presets_(presets) {
  setObjectName("emptyWindow");
  auto* hint = new QLabel(tr("Drop a folder or some files here\n\nor choose File ▸ Add Folder…"));
  hint->setObjectName("dropHint");
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  hint->setMinimumHeight(160);
  hint->setStyleSheet(
      "QLabel#dropHint { color: palette(mid); font-size: 15px; border: 2px dashed palette(mid);"
      " border-radius: 10px; padding: 24px; }");

  recentBox_ = new QWidget;
  auto* columns = new QHBoxLayout(recentBox_);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->setSpacing(24);
  const auto column = [columns](QLabel*& title, QVBoxLayout*& list, const QString& text) {
    auto* box = new QVBoxLayout;
    box->setSpacing(2);
    title = new QLabel(text);
    title->setStyleSheet("font-weight: 600;");
    list = new QVBoxLayout;
    list->setSpacing(0);
    box->addWidget(title);
    box->addLayout(list);
    box->addStretch(1);
    columns->addLayout(box, 1);
  };
  column(foldersTitle_, folders_, tr("Recent Folders"));
  column(presetsTitle_, presetList_, tr("Start from a Preset"));

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(18);
  layout->addWidget(hint, 1);
  layout->addWidget(recentBox_);
  if (presets_ != nullptr)
    connect(presets_, &PresetLibrary::presetsChanged, this, [this] {
      if (isVisible()) refresh();
    });
}

void EmptyWindowPane::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh();
}

void EmptyWindowPane::refresh() {
  clearLayout(folders_);
  clearLayout(presetList_);
  std::vector<fs::path> recent = RecentFolders(settings_).list();
  if (recent.size() > kShown) recent.resize(kShown);
  for (const fs::path& folder : recent) {
    const std::string name = folder.filename().string();
    auto* b = linkButton(style()->standardIcon(QStyle::SP_DirIcon),
                         QString::fromStdString(name.empty() ? folder.string() : name),
                         QString::fromStdString(folder.string()));
    connect(b, &QPushButton::clicked, this, [this, folder] { model_.open({folder}); });
    folders_->addWidget(b);
  }
  std::vector<Preset> presets;
  if (presets_ != nullptr) presets = presets_->recent(kShown);
  for (const Preset& preset : presets) {
    const QString name = QString::fromStdString(preset.name);
    auto* b = linkButton(style()->standardIcon(QStyle::SP_FileIcon), name,
                         tr("Use the preset “%1”").arg(name));
    connect(b, &QPushButton::clicked, this, [this, preset] {
      if (presets_ != nullptr) model_.setRules(presets_->load(preset));
    });
    presetList_->addWidget(b);
  }
  foldersTitle_->setVisible(!recent.empty());
  presetsTitle_->setVisible(!presets.empty());
  recentBox_->setVisible(!recent.empty() || !presets.empty());
}

}  // namespace tessane
