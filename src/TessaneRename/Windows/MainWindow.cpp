#include "TessaneRename/Windows/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

#include "TessaneRename/AppContext.h"
#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/Distribution.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/Preferences.h"
#include "TessaneRename/PresetLibrary.h"
#include "TessaneRename/Windows/ChangesPanel.h"
#include "TessaneRename/Windows/EmptyWindowPane.h"
#include "TessaneRename/Windows/FileGridView.h"
#include "TessaneRename/Windows/FileListModel.h"
#include "TessaneRename/Windows/InspectorPanel.h"
#include "TessaneRename/Windows/NameBuilderPanel.h"
#include "TessaneRename/Windows/NameField.h"
#include "TessaneRename/Windows/NewNameDelegate.h"
#include "TessaneRename/Windows/RecentFoldersList.h"
#include "TessaneRename/Windows/ThumbnailCache.h"

namespace tessane {

namespace fs = std::filesystem;

namespace {

QString text(const std::string& s) {
  return QString::fromStdString(s);
}
fs::path pathOf(const QString& s) {
  return fs::path(s.toStdString());
}

QString folderLabel(const fs::path& folder) {
  const fs::path name = folder.filename();
  return text(name.empty() ? folder.string() : name.string());
}

std::vector<fs::path> localPaths(const QMimeData* mime) {
  std::vector<fs::path> paths;
  if (mime == nullptr || !mime->hasUrls()) return paths;
  for (const QUrl& url : mime->urls()) {
    if (url.isLocalFile()) paths.push_back(pathOf(url.toLocalFile()));
  }
  return paths;
}

// The commands this window carries out today; the others stay in the menus, disabled.
bool isAvailable(CommandID id) {
  switch (id) {
    case CommandID::addFolder:
    case CommandID::removeFromList:
    case CommandID::savePreset:
    case CommandID::savePresetAs:
    case CommandID::showPresets:
    case CommandID::restorePreviousNames:
    case CommandID::restoreOriginalNames:
    case CommandID::tickAll:
    case CommandID::untickAll:
    case CommandID::findFile:
    case CommandID::rename:
    case CommandID::scopeAll:
    case CommandID::scopeTicked:
    case CommandID::goToFirstError:
    case CommandID::orderByName:
    case CommandID::orderByCaptureTime:
    case CommandID::keepTwinsTogether:
    case CommandID::showAfterRenaming:
    case CommandID::toggleChange:
    case CommandID::duplicateChange:
    case CommandID::moveChangeUp:
    case CommandID::moveChangeDown:
    case CommandID::turnOnAllChanges:
    case CommandID::turnOffAllChanges:
    case CommandID::deleteAllChanges:
    case CommandID::useNewName:
    case CommandID::startFromOriginalName:
    case CommandID::separatorUnderscore:
    case CommandID::separatorDash:
    case CommandID::separatorSpace:
    case CommandID::separatorNothing:
    case CommandID::website:
    case CommandID::checkForUpdates:
    case CommandID::about:
    case CommandID::newWindow:
    case CommandID::history:
    case CommandID::settings:
    case CommandID::guide:
    case CommandID::reportProblem:
    case CommandID::toggleInspector:
      return true;
    default:
      return false;
  }
}

// File names lose their middle, not their end, when a column is too narrow: the counter and the
// extension stay in sight.
class NameDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = Qt::ElideMiddle;
  }
};

}  // namespace

MainWindow::MainWindow(FolderModel& model, AppContext& app, DesktopServices& desktop,
                       QWidget* parent)
    : QMainWindow(parent),
      model_(model),
      app_(app),
      desktop_(desktop),
      website_(Distribution::ofThisBuild().website) {
  setWindowTitle(tr("Tessane Rename"));
  setAcceptDrops(true);
  fileList_ = new FileListModel(model_, this);
  presets_ = new PresetLibrary(app_.presets(), app_.settings(), desktop_, this);
  presets_->reload();

  // The name and the changes.
  builder_ = new NameBuilderPanel(model_, app_);
  changes_ = new ChangesPanel(model_, app_, *presets_);
  connect(builder_, &NameBuilderPanel::changed, this, &MainWindow::updateCommands);
  connect(changes_, &ChangesPanel::changed, this, &MainWindow::updateCommands);
  connect(presets_, &PresetLibrary::errorMessageChanged, this, &MainWindow::showError);

  // The list.
  QHBoxLayout* listBar = makeListBar();
  makeFileTable();
  listStack_ = new QStackedWidget;
  listStack_->addWidget(makeEmptyHint());
  listStack_->addWidget(fileView_);
  QWidget* inspectorPane = makeFileViews(listBar);

  // The actions at the foot.
  QHBoxLayout* foot = makeFoot();

  // The editing above, the files below; the user sets the share of each.
  setCentralWidget(makeCentral(listBar, foot, inspectorPane));

  counts_ = new QLabel;
  counts_->setObjectName("counts");
  progress_ = new QLabel;
  statusBar()->addWidget(counts_, 1);
  statusBar()->addPermanentWidget(progress_);

  makeMenus();

  connectModel();

  showFolders();
  showError();
  showToast();
  showCounts();
  updateCommands();
  resize(1180, 720);
}

QHBoxLayout* MainWindow::makeListBar() {
  search_ = new QLineEdit;
  search_->setObjectName("searchField");
  search_->setPlaceholderText(tr("Find a file"));
  search_->setAccessibleName(tr("Find a file"));
  search_->setClearButtonEnabled(true);
  search_->setMaximumWidth(260);
  search_->setAcceptDrops(false);
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& s) {
    ListFilter filter = fileList_->filter();
    filter.search = s.toStdString();
    fileList_->setFilter(std::move(filter));
  });
  listTitle_ = new QLabel;
  listTitle_->setObjectName("listTitle");
  listTitle_->setStyleSheet("font-weight: 600;");
  auto* listBar = new QHBoxLayout;
  listBar->setSpacing(6);
  listBar->addWidget(listTitle_, 1);
  // The filters: each button shows only its kind of file or status; the kinds together, and the
  // statuses together, show either.
  const auto addFilter = [this, listBar](FilterButton which, const char* name, const QString& tip) {
    auto* b = new QToolButton;
    b->setObjectName(name);
    b->setCheckable(true);
    b->setToolTip(tip);
    b->setAccessibleName(tip);
    connect(b, &QToolButton::toggled, this, &MainWindow::filtersChanged);
    listBar->addWidget(b);
    filters_[which] = b;
  };
  addFilter(rawFilter, "rawFilter", tr("Show only the RAW files"));
  addFilter(imageFilter, "imageFilter", tr("Show only the images"));
  addFilter(videoFilter, "videoFilter", tr("Show only the videos"));
  addFilter(warningFilter, "warningFilter", tr("Show only the files with warnings"));
  addFilter(errorFilter, "errorFilter", tr("Show only the files with errors"));
  listBar->addSpacing(6);
  listBar->addWidget(search_);
  return listBar;
}

void MainWindow::makeFileTable() {
  fileView_ = new QTableView;
  fileView_->setObjectName("fileList");
  fileView_->setAccessibleName(tr("Files"));
  fileView_->setModel(fileList_);
  fileView_->setSelectionBehavior(QAbstractItemView::SelectRows);
  fileView_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  fileView_->setShowGrid(false);
  fileView_->setAlternatingRowColors(true);
  fileView_->setWordWrap(false);
  fileView_->setTextElideMode(Qt::ElideRight);
  auto* names = new NameDelegate(fileView_);
  fileView_->setItemDelegateForColumn(FileListModel::currentName, names);
  fileView_->setItemDelegateForColumn(FileListModel::newName, names);
  fileView_->setIconSize(QSize(16, 16));
  fileView_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  fileView_->verticalHeader()->hide();
  // Fixed row heights: the view never measures rows, which keeps 10,000 of them quick.
  fileView_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  fileView_->verticalHeader()->setDefaultSectionSize(fileView_->fontMetrics().height() + 10);
  QHeaderView* header = fileView_->horizontalHeader();
  header->setHighlightSections(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setSectionResizeMode(QHeaderView::Interactive);
  header->setStretchLastSection(true);  // the status, whose messages are the longest
  // A renamed file's name ("2024-06-14_0001.JPG") is read whole beside its tick and thumbnail.
  const int nameWidth =
      header->fontMetrics().horizontalAdvance(QStringLiteral("0000-00-00_0000_00.JPEG")) + 72;
  header->resizeSection(FileListModel::currentName, nameWidth);
  header->resizeSection(FileListModel::newName, std::max(220, nameWidth));
  header->resizeSection(
      FileListModel::date,
      header->fontMetrics().horizontalAdvance(QStringLiteral("00 May 0000 00:00:00")) + 16);
  header->resizeSection(FileListModel::body, 56);
  header->resizeSection(FileListModel::folder, 120);
  fileView_->setColumnHidden(FileListModel::folder, true);  // shown with several folders
  connect(fileView_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &MainWindow::fileSelectionChanged);
}

QHBoxLayout* MainWindow::makeFoot() {
  scope_ = new QComboBox;
  scope_->setObjectName("scope");
  scope_->addItem(tr("All files"));
  scope_->addItem(tr("Only ticked"));
  scope_->setToolTip(tr("Rename all the files shown, or only the ones you tick"));
  scope_->setAccessibleName(tr("Files to rename"));
  connect(scope_, &QComboBox::activated, this,
          [this](int i) { model_.setScope(i == 0 ? RenameScope::all : RenameScope::selected); });
  originalsButton_ = new QPushButton(AppCommands::title(CommandID::restoreOriginalNames));
  originalsButton_->setObjectName("restoreOriginals");
  connect(originalsButton_, &QPushButton::clicked, this,
          [this] { run(CommandID::restoreOriginalNames); });
  undoButton_ = new QPushButton(AppCommands::title(CommandID::restorePreviousNames));
  undoButton_->setObjectName("undo");
  undoButton_->setToolTip(
      tr("Put back the names the files had before the last rename (%1)")
          .arg(QKeySequence(QString::fromUtf8(
                                AppCommands::command(CommandID::restorePreviousNames).shortcut))
                   .toString(QKeySequence::NativeText)));
  connect(undoButton_, &QPushButton::clicked, this,
          [this] { run(CommandID::restorePreviousNames); });
  renameButton_ = new QPushButton(AppCommands::title(CommandID::rename));
  renameButton_->setObjectName("rename");
  renameButton_->setDefault(true);
  renameButton_->setMinimumWidth(110);
  connect(renameButton_, &QPushButton::clicked, this, [this] { run(CommandID::rename); });
  // A shot split by the ticks: one click ticks the rest of it.
  wholeShotsButton_ = new QPushButton(tr("Tick the Whole Shots"));
  wholeShotsButton_->setObjectName("tickWholeShots");
  wholeShotsButton_->setVisible(false);
  connect(wholeShotsButton_, &QPushButton::clicked, this, [this] { model_.tickWholeShots(); });
  auto* foot = new QHBoxLayout;
  foot->setSpacing(8);
  foot->addWidget(new QLabel(tr("Rename:")));
  foot->addWidget(scope_);
  foot->addWidget(wholeShotsButton_);
  foot->addStretch(1);
  foot->addWidget(originalsButton_);
  foot->addWidget(undoButton_);
  foot->addWidget(renameButton_);
  return foot;
}

QWidget* MainWindow::makeCentral(QHBoxLayout* listBar, QHBoxLayout* foot, QWidget* inspectorPane) {
  auto* editing = new QWidget;
  auto* editingColumn = new QVBoxLayout(editing);
  editingColumn->setContentsMargins(0, 0, 0, 6);
  editingColumn->setSpacing(10);
  editingColumn->addWidget(builder_);
  editingColumn->addWidget(changes_, 1);
  auto* files = new QWidget;
  auto* filesColumn = new QVBoxLayout(files);
  filesColumn->setContentsMargins(0, 6, 0, 0);
  filesColumn->setSpacing(8);
  filesColumn->addLayout(listBar);
  filesColumn->addWidget(listStack_, 1);
  filesColumn->addWidget(makeToast());
  auto* editingAndFiles = new QSplitter(Qt::Vertical);
  editingAndFiles->setObjectName("editingAndFiles");
  editingAndFiles->setChildrenCollapsible(false);
  editingAndFiles->addWidget(editing);
  editingAndFiles->addWidget(files);
  editingAndFiles->setStretchFactor(1, 1);
  editingAndFiles->setSizes({200, 500});

  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(12, 12, 12, 10);
  column->setSpacing(8);
  column->addWidget(makeErrorStrip());
  column->addWidget(editingAndFiles, 1);
  column->addLayout(foot);

  auto* splitter = new QSplitter;
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(makeSidebar());
  splitter->addWidget(content);
  splitter->addWidget(inspectorPane);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({180, 720, 280});
  return splitter;
}

void MainWindow::connectModel() {
  connect(&model_, &FolderModel::foldersChanged, this, &MainWindow::showFolders);
  connect(&model_, &FolderModel::selectedFoldersChanged, this, &MainWindow::showFolderSelection);
  connect(&model_, &FolderModel::errorMessageChanged, this, &MainWindow::showError);
  connect(&model_, &FolderModel::toastChanged, this, &MainWindow::showToast);
  connect(&model_, &FolderModel::previewChanged, this, &MainWindow::showCounts);
  connect(&model_, &FolderModel::filesChanged, this, &MainWindow::showCounts);
  connect(&model_, &FolderModel::selectionChanged, this, &MainWindow::showFileSelection);
  connect(&model_, &FolderModel::metadataProgress, this, [this](qint64 done, qint64 total) {
    progress_->setText(
        done < total
            ? tr("Reading shooting data… %1 of %2 (Rename waits for it)").arg(done).arg(total)
            : QString());
  });
  connect(&model_, &FolderModel::previewBuildCountChanged, this, &MainWindow::showCounts);
  for (auto signal :
       {&FolderModel::previewChanged, &FolderModel::isRenamingChanged, &FolderModel::scopeChanged,
        &FolderModel::isReadingChanged, &FolderModel::filterChanged, &FolderModel::checkedChanged,
        &FolderModel::selectedFoldersChanged, &FolderModel::twinOptionsChanged,
        &FolderModel::rulesChanged}) {
    connect(&model_, signal, this, &MainWindow::updateCommands);
  }
  connect(&model_, &FolderModel::scopeChanged, this,
          [this] { scope_->setCurrentIndex(model_.scope() == RenameScope::all ? 0 : 1); });
}

QLineEdit* MainWindow::templateField() const {
  return builder_->nameField()->lineEdit();
}

QAction* MainWindow::action(CommandID id) const {
  const auto it = actions_.find(id);
  return it == actions_.end() ? nullptr : it->second;
}

// ---- Parts of the window ----

QWidget* MainWindow::makeSidebar() {
  auto* sidebar = new QWidget;
  sidebar->setObjectName("sidebar");
  sidebar->setMinimumWidth(170);
  sidebarTitle_ = new QLabel(tr("Folders"));
  sidebarTitle_->setObjectName("sidebarTitle");
  sidebarTitle_->setStyleSheet("font-weight: 600;");
  sidebarTitle_->setWordWrap(true);

  folderList_ = new QListWidget;
  folderList_->setObjectName("folders");
  folderList_->setAccessibleName(tr("Folders"));
  folderList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  folderList_->setContextMenuPolicy(Qt::ActionsContextMenu);
  folderList_->setTextElideMode(Qt::ElideMiddle);
  folderList_->setIconSize(QSize(16, 16));
  connect(folderList_, &QListWidget::itemSelectionChanged, this, [this] {
    if (syncing_) return;
    std::set<fs::path> selected;
    for (QListWidgetItem* item : folderList_->selectedItems()) {
      selected.insert(pathOf(item->data(Qt::UserRole).toString()));
    }
    if (!selected.empty() && selected != model_.selectedFolders()) model_.selectFolders(selected);
    updateCommands();
  });

  auto* add = new QToolButton;
  add->setText("+");
  add->setToolTip(AppCommands::title(CommandID::addFolder));
  add->setAccessibleName(AppCommands::title(CommandID::addFolder));
  connect(add, &QToolButton::clicked, this, &MainWindow::addFolder);
  auto* remove = new QToolButton;
  remove->setObjectName("removeFolders");
  remove->setText("−");
  remove->setToolTip(AppCommands::title(CommandID::removeFromList));
  remove->setAccessibleName(AppCommands::title(CommandID::removeFromList));
  connect(remove, &QToolButton::clicked, this, &MainWindow::removeSelectedFolders);
  connect(folderList_, &QListWidget::itemSelectionChanged, remove,
          [this, remove] { remove->setEnabled(!folderList_->selectedItems().isEmpty()); });
  remove->setEnabled(false);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(4);
  buttons->addWidget(add);
  buttons->addWidget(remove);
  buttons->addStretch(1);

  auto* layout = new QVBoxLayout(sidebar);
  layout->setContentsMargins(10, 12, 4, 10);
  layout->setSpacing(8);
  layout->addWidget(sidebarTitle_);
  layout->addWidget(folderList_, 1);
  layout->addLayout(buttons);
  layout->addWidget(new RecentFoldersList(model_, app_.settings()));
  return sidebar;
}

QWidget* MainWindow::makeEmptyHint() {
  return new EmptyWindowPane(model_, app_.settings(), presets_);
}

QWidget* MainWindow::makeFileViews(QHBoxLayout* listBar) {
  if (app_.preferences().showsThumbnails()) {
    thumbnails_ = new ThumbnailCache(this);
    fileList_->setThumbnails(thumbnails_);
    const int side = ThumbnailCache::sideOf(ThumbnailCache::Size::list);
    fileView_->setIconSize(QSize(side, side));
    fileView_->verticalHeader()->setDefaultSectionSize(
        std::max(side + 4, fileView_->fontMetrics().height() + 10));
  }
  fileView_->setItemDelegateForColumn(FileListModel::newName,
                                      new NewNameDelegate(FileListModel::currentName, fileView_));

  gridView_ = new FileGridView;
  gridView_->setObjectName("fileGrid");
  gridView_->setAccessibleName(tr("Files"));
  gridView_->setModel(fileList_);
  gridView_->setSelectionModel(fileView_->selectionModel());  // one selection for both
  listStack_->addWidget(gridView_);

  const auto viewButton = [this, listBar](int which, const char* name, QStyle::StandardPixmap icon,
                                          const QString& label) {
    auto* b = new QToolButton;
    b->setShortcut(QKeySequence(which == 0 ? Qt::CTRL | Qt::Key_1 : Qt::CTRL | Qt::Key_2));
    b->setAccessibleName(label);
    b->setToolTip(
        QStringLiteral("%1 (%2)").arg(label, b->shortcut().toString(QKeySequence::NativeText)));
    b->setObjectName(name);
    b->setCheckable(true);
    b->setAutoExclusive(true);
    b->setIcon(style()->standardIcon(icon));
    listBar->addWidget(b);
    viewButtons_[which] = b;
  };
  listBar->addSpacing(6);
  viewButton(0, "showList", QStyle::SP_FileDialogDetailedView, tr("Show as a list"));
  viewButton(1, "showGrid", QStyle::SP_FileDialogListView, tr("Show as a grid"));
  viewButtons_[0]->setChecked(true);
  connect(viewButtons_[1], &QToolButton::toggled, this, &MainWindow::showGrid);

  inspector_ = new InspectorPanel(model_, thumbnails_);
  return inspector_;
}

bool MainWindow::showsGrid() const {
  return viewButtons_[1]->isChecked();
}

void MainWindow::showGrid(bool grid) {
  viewButtons_[grid ? 1 : 0]->setChecked(true);
  if (model_.folders().empty()) return;
  QAbstractItemView* from = grid ? static_cast<QAbstractItemView*>(fileView_) : gridView_;
  QAbstractItemView* to = grid ? static_cast<QAbstractItemView*>(gridView_) : fileView_;
  const bool hadFocus = from->hasFocus();
  listStack_->setCurrentWidget(to);
  const QModelIndex current = fileView_->selectionModel()->currentIndex();
  if (current.isValid()) to->scrollTo(current);
  if (hadFocus) to->setFocus();
}

QWidget* MainWindow::makeErrorStrip() {
  errorStrip_ = new QFrame;
  errorStrip_->setObjectName("errorStrip");
  errorStrip_->setStyleSheet(
      "QFrame#errorStrip { background: #fdecea; border: 1px solid #f5c2c0; border-radius: 6px; }"
      " QFrame#errorStrip QLabel { color: #8e1b1b; }");
  errorText_ = new QLabel;
  errorText_->setObjectName("errorText");
  errorText_->setWordWrap(true);
  errorText_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* close = new QToolButton;
  close->setText("✕");
  close->setAutoRaise(true);
  close->setToolTip(tr("Close"));
  close->setAccessibleName(tr("Close"));
  connect(close, &QToolButton::clicked, this, [this] {
    model_.dismissError();
    presets_->clearError();
  });
  auto* layout = new QHBoxLayout(errorStrip_);
  layout->setContentsMargins(10, 6, 6, 6);
  layout->addWidget(errorText_, 1);
  layout->addWidget(close, 0, Qt::AlignTop);
  return errorStrip_;
}

QWidget* MainWindow::makeToast() {
  toast_ = new QFrame;
  toast_->setObjectName("toast");
  toast_->setStyleSheet(
      "QFrame#toast { background: palette(alternate-base); border: 1px solid palette(mid);"
      " border-radius: 6px; }");
  toastText_ = new QLabel;
  toastText_->setObjectName("toastText");
  toastText_->setWordWrap(true);
  toastAction_ = new QPushButton;
  toastAction_->setObjectName("toastAction");
  connect(toastAction_, &QPushButton::clicked, this, &MainWindow::toastActionClicked);
  auto* close = new QPushButton(tr("Close"));
  connect(close, &QPushButton::clicked, this, [this] { model_.dismissToast(); });
  auto* layout = new QHBoxLayout(toast_);
  layout->setContentsMargins(12, 6, 6, 6);
  layout->addWidget(toastText_, 1);
  layout->addWidget(toastAction_);
  layout->addWidget(close);
  return toast_;
}

void MainWindow::makeMenus() {
  for (CommandMenu menu :
       {CommandMenu::file, CommandMenu::edit, CommandMenu::rename, CommandMenu::changes,
        CommandMenu::view, CommandMenu::window, CommandMenu::app, CommandMenu::help}) {
    const std::vector<CommandID> ids = AppCommands::commandsIn(menu);
    if (ids.empty()) continue;
    QMenu* m = menuBar()->addMenu(AppCommands::menuTitle(menu));
    connect(m, &QMenu::aboutToShow, this, &MainWindow::updateCommands);
    for (CommandID id : ids) {
      const Command& c = AppCommands::command(id);
      auto* a = new QAction(AppCommands::title(id), this);
      if (*c.shortcut != '\0') a->setShortcut(QKeySequence(QString::fromUtf8(c.shortcut)));
      connect(a, &QAction::triggered, this, [this, id] { run(id); });
      m->addAction(a);
      addAction(a);  // the shortcut works with the menu bar hidden too
      actions_[id] = a;
      if (id == CommandID::addFolder) {
        m->addMenu(RecentFoldersList::makeMenu(model_, app_.settings(), this));
      }
    }
  }
  // The sidebar's context menu.
  folderList_->addAction(actions_.at(CommandID::removeFromList));
}

// ---- Commands ----

CommandState MainWindow::commandState() const {
  CommandState state;
  state.hasFocusedWindow = true;
  state.hasSelectedFolder = !folderList_->selectedItems().isEmpty();
  state.renamesTickedOnly = model_.scope() == RenameScope::selected;
  state.keepsTwinsTogether = model_.twinOptions().isEnabled;
  state.changeCount = changes_->count();
  state.selectedChange = changes_->selected();
  state.selectedChangeIsOn = changes_->selectedIsOn();
  state.usesNewName = builder_->builder().usesNewName;
  state.startsFromOriginal =
      builder_->builder().way == NameBuilder::Way::startFromOriginal && !builder_->writesByHand();
  state.hasUpdater = updater_ != nullptr;
  state.updaterCanCheck = updater_ != nullptr && updater_->canCheck();
  state.hasWebsite = !website_.isEmpty();
  return state;
}

void MainWindow::setUpdater(AppUpdater* updater) {
  updater_ = updater;
  if (updater_ != nullptr)
    connect(updater_, &AppUpdater::canCheckChanged, this, &MainWindow::updateCommands);
  updateCommands();
}

void MainWindow::setWebsite(const QUrl& website) {
  website_ = website;
  updateCommands();
}

void MainWindow::updateCommands() {
  const CommandState state = commandState();
  const Preferences preferences = app_.preferences();
  for (auto& [id, a] : actions_) {
    a->setText(AppCommands::title(id, state));
    a->setVisible(AppCommands::isOffered(id, state));
    a->setEnabled(isAvailable(id) && AppCommands::isEnabled(id, state));
    const std::optional<bool> checked = AppCommands::isChecked(id, state, preferences);
    a->setCheckable(checked.has_value());
    if (checked) a->setChecked(*checked);
  }
  // The button shows whether Rename can go ahead; the command stays on while there is a preview,
  // so that Ctrl+Return on a batch with errors says what stands in the way.
  actions_.at(CommandID::rename)->setEnabled(model_.preview() != nullptr && !model_.isRenaming());
  renameButton_->setEnabled(model_.canRename());
  const QString shortcut =
      QKeySequence(QString::fromUtf8(AppCommands::command(CommandID::rename).shortcut))
          .toString(QKeySequence::NativeText);
  renameButton_->setToolTip(
      model_.isReading()
          ? text(Messages::stillReading())
          : tr("%1 (%2)").arg(text(Messages::filesToRename(model_.filesToRename())), shortcut));
  wholeShotsButton_->setVisible(model_.splitShots() > 0);
  wholeShotsButton_->setToolTip(text(Messages::shotsSplit(model_.splitShots())));
  const bool idle = !model_.isRenaming();
  undoButton_->setEnabled(idle);
  originalsButton_->setEnabled(idle && !model_.files().empty());
}

void MainWindow::run(CommandID id) {
  Preferences preferences = app_.preferences();
  const std::string separator = preferences.nameSeparator();
  if (AppCommands::applySetting(id, preferences)) {
    if (id == CommandID::orderByName || id == CommandID::orderByCaptureTime) {
      model_.setOrder(preferences.batchOrder().value_or(BatchOrder::captureTime));
    } else if (AppCommands::command(id).menu == CommandMenu::changes) {
      builder_->separatorChanged(separator);  // the separator: the pieces are joined again
    } else {
      model_.settingsChanged();
    }
    updateCommands();
    return;
  }
  if (!runFileCommand(id) && !runEditCommand(id) && !runRenameCommand(id) && !runChangesCommand(id))
    runOtherCommand(id);
  updateCommands();
}

// The File menu.
bool MainWindow::runFileCommand(CommandID id) {
  switch (id) {
    case CommandID::addFolder:
      addFolder();
      return true;
    case CommandID::removeFromList:
      removeSelectedFolders();
      return true;
    case CommandID::savePreset:
      changes_->savePreset();
      return true;
    case CommandID::savePresetAs:
      changes_->savePresetAs();
      return true;
    case CommandID::showPresets:
      presets_->showFolder();
      return true;
    default:
      return false;
  }
}

// The Edit menu.
bool MainWindow::runEditCommand(CommandID id) {
  switch (id) {
    case CommandID::restorePreviousNames:
      model_.undo();
      return true;
    case CommandID::restoreOriginalNames:
      model_.restoreOriginalNames();
      return true;
    case CommandID::tickAll:
    case CommandID::untickAll:
      tickShown(id == CommandID::tickAll);
      return true;
    case CommandID::findFile:
      search_->setFocus();
      search_->selectAll();
      return true;
    default:
      return false;
  }
}

// The Rename menu.
bool MainWindow::runRenameCommand(CommandID id) {
  switch (id) {
    case CommandID::rename:
      model_.rename();
      return true;
    case CommandID::scopeAll:
      model_.setScope(RenameScope::all);
      return true;
    case CommandID::scopeTicked:
      model_.setScope(RenameScope::selected);
      return true;
    case CommandID::goToFirstError:
      model_.goToFirstError();
      return true;
    case CommandID::keepTwinsTogether: {
      TwinOptions options = model_.twinOptions();
      options.isEnabled = !options.isEnabled;
      model_.setTwinOptions(std::move(options));
      return true;
    }
    default:
      return false;
  }
}

// The Changes menu.
bool MainWindow::runChangesCommand(CommandID id) {
  switch (id) {
    case CommandID::toggleChange:
      changes_->toggleSelected();
      return true;
    case CommandID::duplicateChange:
      changes_->duplicateSelected();
      return true;
    case CommandID::moveChangeUp:
    case CommandID::moveChangeDown:
      changes_->moveSelected(id == CommandID::moveChangeUp ? -1 : 1);
      return true;
    case CommandID::turnOnAllChanges:
    case CommandID::turnOffAllChanges:
      changes_->setAllEnabled(id == CommandID::turnOnAllChanges);
      return true;
    case CommandID::deleteAllChanges:
      changes_->deleteAll();
      return true;
    case CommandID::useNewName:
      builder_->setUsesNewName(!builder_->builder().usesNewName);
      return true;
    case CommandID::startFromOriginalName:
      builder_->setStartsFromOriginal(!commandState().startsFromOriginal);
      return true;
    default:
      return false;
  }
}

// The View, Window, application and Help menus.
bool MainWindow::runOtherCommand(CommandID id) {
  switch (id) {
    case CommandID::checkForUpdates:
      if (updater_ != nullptr) updater_->checkNow();
      return true;
    case CommandID::newWindow:
    case CommandID::history:
    case CommandID::settings:
    case CommandID::about:
    case CommandID::guide:
    case CommandID::reportProblem:
      emit applicationCommand(id);
      return true;
    case CommandID::toggleInspector:
      inspector_->setVisible(!inspector_->isVisible());
      return true;
    case CommandID::website:
      if (!website_.isEmpty()) desktop_.openUrl(website_);
      return true;
    default:
      return false;
  }
}

void MainWindow::addFolder() {
  const QString folder = QFileDialog::getExistingDirectory(this, tr("Add Folder"));
  if (!folder.isEmpty()) model_.open({pathOf(folder)});
}

void MainWindow::removeSelectedFolders() {
  std::vector<fs::path> folders;
  for (QListWidgetItem* item : folderList_->selectedItems()) {
    folders.push_back(pathOf(item->data(Qt::UserRole).toString()));
  }
  for (const fs::path& folder : folders)
    model_.removeFolder(folder);
}

void MainWindow::tickShown(bool ticked) {
  std::vector<fs::path> shown;
  shown.reserve(static_cast<std::size_t>(fileList_->rowCount()));
  for (int row = 0; row < fileList_->rowCount(); ++row)
    shown.push_back(fileList_->fileAt(row)->url);
  model_.setTicked(shown, ticked);
}

void MainWindow::filtersChanged() {
  ListFilter filter = fileList_->filter();
  filter.kinds.clear();
  filter.statuses.clear();
  if (filters_[rawFilter]->isChecked()) filter.kinds.insert(FileKind::raw);
  if (filters_[imageFilter]->isChecked()) filter.kinds.insert(FileKind::image);
  if (filters_[videoFilter]->isChecked()) filter.kinds.insert(FileKind::video);
  if (filters_[warningFilter]->isChecked()) filter.statuses.insert(PreviewStatus::warning);
  if (filters_[errorFilter]->isChecked()) filter.statuses.insert(PreviewStatus::error);
  fileList_->setFilter(std::move(filter));
}

// ---- Showing the model ----

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!localPaths(event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const std::vector<fs::path> paths = localPaths(event->mimeData());
  if (paths.empty()) return;
  event->acceptProposedAction();
  model_.open(paths);
}

void MainWindow::showFolders() {
  syncing_ = true;
  folderList_->clear();
  for (const fs::path& folder : model_.folders()) {
    auto* item = new QListWidgetItem(style()->standardIcon(QStyle::SP_DirIcon), folderLabel(folder),
                                     folderList_);
    item->setData(Qt::UserRole, text(folder.string()));
    item->setToolTip(text(folder.string()));
  }
  syncing_ = false;
  showFolderSelection();
}

void MainWindow::showFolderSelection() {
  syncing_ = true;
  const auto& selected = model_.selectedFolders();
  for (int i = 0; i < folderList_->count(); ++i) {
    QListWidgetItem* item = folderList_->item(i);
    item->setSelected(selected.count(pathOf(item->data(Qt::UserRole).toString())) > 0);
  }
  syncing_ = false;
  listTitle_->setText(model_.folders().empty() ? QString() : text(model_.selectionTitle()));
  fileView_->setColumnHidden(FileListModel::folder, model_.shownFolders().size() < 2);
  listStack_->setCurrentIndex(model_.folders().empty() ? 0 : showsGrid() ? 2 : 1);
  if (!model_.folders().empty()) {
    setWindowTitle(tr("%1 — Tessane Rename").arg(text(model_.selectionTitle())));
  } else {
    setWindowTitle(tr("Tessane Rename"));
  }
}

void MainWindow::showError() {
  const QString message =
      model_.errorMessageText().isEmpty() ? presets_->errorMessage() : model_.errorMessageText();
  errorText_->setText(message);
  errorStrip_->setVisible(!message.isEmpty());
}

void MainWindow::showToast() {
  const std::optional<Toast>& toast = model_.toast();
  toast_->setVisible(toast.has_value());
  if (!toast) return;
  QString body = text(toast->text);
  for (const FileMove& move : toast->stuck) {
    body += '\n' + text(move.source.filename().string()) + " → " +
            text(move.destination.filename().string());
  }
  toastText_->setText(body);
  switch (toast->outcome) {
    case RenameOutcome::renamed:
      toastAction_->setText(tr("Undo"));
      toastAction_->setVisible(toast->offersUndo);
      break;
    case RenameOutcome::nothingChanged:
      toastAction_->setText(tr("Try Again"));
      toastAction_->setVisible(true);
      break;
    case RenameOutcome::partlyStuck:
      toastAction_->setText(tr("Show in File Manager"));
      toastAction_->setVisible(true);
      break;
  }
}

void MainWindow::toastActionClicked() {
  const std::optional<Toast> toast = model_.toast();
  if (!toast) return;
  model_.dismissToast();
  switch (toast->outcome) {
    case RenameOutcome::renamed:
      model_.undo();
      break;
    case RenameOutcome::nothingChanged:
      model_.rename();
      break;
    case RenameOutcome::partlyStuck: {
      std::vector<fs::path> files;
      for (const FileMove& move : toast->stuck)
        files.push_back(move.source);
      desktop_.revealFiles(files);
      break;
    }
  }
}

void MainWindow::showCounts() {
  const FileCounts c = model_.fileCounts();
  const std::pair<FilterButton, QString> labels[] = {
      {rawFilter, tr("RAW %1").arg(c.raw)},
      {imageFilter, tr("Images %1").arg(c.images)},
      {videoFilter, tr("Video %1").arg(c.video)},
      {warningFilter, tr("Warnings %1").arg(c.warnings)},
      {errorFilter, tr("Errors %1").arg(c.errors)}};
  const std::int64_t counts[] = {c.raw, c.images, c.video, c.warnings, c.errors};
  for (const auto& [which, label] : labels) {
    QToolButton* b = filters_[which];
    b->setText(label);
    // A filter with nothing to show is out of the way, unless it is on (it can then be turned off).
    b->setVisible(counts[which] > 0 || b->isChecked());
  }
  if (model_.files().empty()) {
    counts_->setText(model_.folders().empty() ? tr("No folder") : tr("No files"));
  } else {
    QStringList parts;
    const auto count = [&parts](std::int64_t n, const QString& one, const QString& many) {
      if (n > 0) parts << (n == 1 ? one : many.arg(n));
    };
    count(static_cast<std::int64_t>(model_.files().size()), tr("1 file"), tr("%1 files"));
    count(c.raw, tr("1 RAW"), tr("%1 RAW"));
    count(c.images, tr("1 image"), tr("%1 images"));
    count(c.video, tr("1 video"), tr("%1 videos"));
    count(c.bodies, tr("1 camera"), tr("%1 cameras"));
    count(c.warnings, tr("1 warning"), tr("%1 warnings"));
    count(c.errors, tr("1 error"), tr("%1 errors"));
    counts_->setText(parts.join(QStringLiteral("  ·  ")));
  }
  if (model_.previewBuildCount() > 0 && progress_->text().isEmpty()) {
    progress_->setText(tr("Updating the new names…"));
  } else if (model_.previewBuildCount() == 0 &&
             progress_->text() == tr("Updating the new names…")) {
    progress_->clear();
  }
}

// The model's selection (Go to the First Error, a new listing) shown in the list.
void MainWindow::showFileSelection() {
  if (syncing_) return;
  syncing_ = true;
  QItemSelection selection;
  int first = -1;
  for (const fs::path& file : model_.selection()) {
    const int row = fileList_->rowOf(file);
    if (row < 0) continue;
    selection.select(fileList_->index(row, 0),
                     fileList_->index(row, FileListModel::columnCount_ - 1));
    if (first < 0 || row < first) first = row;
  }
  fileView_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  if (first >= 0) fileView_->scrollTo(fileList_->index(first, 0));
  syncing_ = false;
}

void MainWindow::fileSelectionChanged() {
  if (syncing_) return;
  syncing_ = true;
  std::set<fs::path> selection;
  for (const QModelIndex& index : fileView_->selectionModel()->selectedRows()) {
    if (const FolderFile* file = fileList_->fileAt(index.row())) selection.insert(file->url);
  }
  model_.setSelection(std::move(selection));
  syncing_ = false;
}

}  // namespace tessane
