#include "TessaneRename/Windows/RecentFoldersList.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

#include "TessaneRename/FolderModel.h"
#include "TessaneRename/RecentFolders.h"

namespace tessane {

namespace fs = std::filesystem;

namespace {

QString label(const fs::path& folder) {
  const std::string name = folder.filename().string();
  return QString::fromStdString(name.empty() ? folder.string() : name);
}

}  // namespace

RecentFoldersList::RecentFoldersList(FolderModel& model, QSettings& settings, QWidget* parent)
    : QWidget(parent), model_(model), settings_(settings) {
  setObjectName("recentFolders");
  title_ = new QLabel(tr("Recent"));
  title_->setStyleSheet("font-weight: 600;");
  list_ = new QListWidget;
  list_->setObjectName("recentFolderList");
  list_->setAccessibleName(tr("Recent folders"));
  list_->setTextElideMode(Qt::ElideMiddle);
  list_->setIconSize(QSize(16, 16));
  list_->setMaximumHeight(130);
  title_->setBuddy(list_);
  const auto open = [this](QListWidgetItem* item) {
    model_.open({fs::path(item->data(Qt::UserRole).toString().toStdString())});
  };
  connect(list_, &QListWidget::itemClicked, this, open);
  connect(list_, &QListWidget::itemActivated, this, open);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 6, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(title_);
  layout->addWidget(list_);

  connect(&model_, &FolderModel::foldersChanged, this, [this] {
    // The newest folder of the window first.
    std::vector<fs::path> folders(model_.folders().rbegin(), model_.folders().rend());
    if (!folders.empty()) RecentFolders(settings_).note(folders);
    refresh();
  });
  refresh();
}

void RecentFoldersList::refresh() {
  list_->clear();
  const std::vector<fs::path>& open = model_.folders();
  for (const fs::path& folder : RecentFolders(settings_).list()) {
    if (std::find(open.begin(), open.end(), folder) != open.end()) continue;
    auto* item =
        new QListWidgetItem(style()->standardIcon(QStyle::SP_DirIcon), label(folder), list_);
    item->setData(Qt::UserRole, QString::fromStdString(folder.string()));
    item->setToolTip(QString::fromStdString(folder.string()));
    if (list_->count() == 5) break;
  }
  setVisible(list_->count() > 0);
}

QMenu* RecentFoldersList::makeMenu(FolderModel& model, QSettings& settings, QWidget* parent) {
  auto* menu = new QMenu(tr("Open Recent"), parent);
  menu->setObjectName("openRecentMenu");
  connect(menu, &QMenu::aboutToShow, menu, [menu, &model, &settings] {
    menu->clear();
    const std::vector<fs::path> folders = RecentFolders(settings).list();
    for (const fs::path& folder : folders) {
      QAction* a =
          menu->addAction(QApplication::style()->standardIcon(QStyle::SP_DirIcon), label(folder));
      a->setToolTip(QString::fromStdString(folder.string()));
      connect(a, &QAction::triggered, menu, [&model, folder] { model.open({folder}); });
    }
    if (folders.empty()) menu->addAction(tr("No recent folders"))->setEnabled(false);
    menu->addSeparator();
    QAction* clear = menu->addAction(tr("Clear Menu"));
    clear->setEnabled(!folders.empty());
    connect(clear, &QAction::triggered, menu, [&settings] { RecentFolders(settings).clear(); });
  });
  return menu;
}

}  // namespace tessane
