#include "TessaneRename/Windows/FileListModel.h"

#include <QApplication>
#include <QBrush>
#include <QColor>
#include <QDateTime>
#include <QIcon>
#include <QLocale>
#include <QPixmap>
#include <QStyle>

#include "RenameEngine/Unicode.h"
#include "TessaneRename/FileInspection.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/Windows/ThumbnailCache.h"

namespace tessane {

namespace fs = std::filesystem;

namespace {

QString text(const std::string& s) {
  return QString::fromStdString(s);
}

// The row's problems, one per line: errors first.
QString problemsOf(const PlannedRename& row, std::string_view missingText) {
  QStringList lines;
  for (const NameError& e : row.errors)
    lines << text(Messages::of(e));
  for (const PreviewWarning& w : row.warnings)
    lines << text(Messages::of(w, missingText));
  return lines.join('\n');
}

QString statusText(const PlannedRename* row, std::string_view missingText) {
  if (row == nullptr) return {};
  switch (row->status) {
    case PreviewStatus::unchanged:
      return FileListModel::tr("Unchanged");
    case PreviewStatus::ok:
      return FileListModel::tr("Ready");
    case PreviewStatus::warning:
      return row->warnings.empty() ? FileListModel::tr("Warning")
                                   : text(Messages::of(row->warnings.front(), missingText));
    case PreviewStatus::error:
      return row->errors.empty() ? FileListModel::tr("Error")
                                 : text(Messages::of(row->errors.front()));
  }
  return {};
}

}  // namespace

FileListModel::FileListModel(FolderModel& model, QObject* parent)
    : QAbstractTableModel(parent), model_(model) {
  connect(&model_, &FolderModel::filesChanged, this, &FileListModel::refilter);
  connect(&model_, &FolderModel::previewChanged, this, &FileListModel::previewChanged);
  connect(&model_, &FolderModel::filterChanged, this, &FileListModel::refilter);
  // A tick or a scope moves rows in or out of the batch, and may split a shot.
  for (auto signal : {&FolderModel::checkedChanged, &FolderModel::scopeChanged}) {
    connect(&model_, signal, this, [this] {
      if (!rows_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount_ - 1));
    });
  }
  refilter();
}

void FileListModel::setFilter(ListFilter filter) {
  model_.setFilter(std::move(filter));
}

void FileListModel::setThumbnails(ThumbnailCache* thumbnails) {
  if (thumbnails_ != nullptr) disconnect(thumbnails_, nullptr, this, nullptr);
  thumbnails_ = thumbnails;
  if (thumbnails_ != nullptr) {
    connect(thumbnails_, &ThumbnailCache::arrived, this, &FileListModel::thumbnailsArrived);
  }
  if (!rows_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, 0));
}

// One change over the rows that got their thumbnails: the views repaint what is on screen.
void FileListModel::thumbnailsArrived(const QStringList& paths) {
  int first = -1, last = -1;
  for (const QString& path : paths) {
    const int row = rowOf(fs::path(path.toStdString()));
    if (row < 0) continue;
    first = first < 0 ? row : std::min(first, row);
    last = std::max(last, row);
  }
  if (first >= 0) {
    emit dataChanged(index(first, 0), index(last, 0), {Qt::DecorationRole, thumbnailRole});
  }
}

bool FileListModel::filterDependsOnPreview() const {
  return !filter().statuses.empty() || !filter().search.empty();
}

// A new listing, or the same files with their shooting data read: when the rows are the same
// files in the same order only the cells change, so the selection and the scroll stay.
void FileListModel::refilter() {
  std::vector<const FolderFile*> rows = model_.visibleFiles(filter());
  const bool sameFiles =
      rows.size() == rows_.size() && std::equal(rows.begin(), rows.end(), rows_.begin(),
                                                [](const FolderFile* a, const FolderFile* b) {
                                                  return a == b || a->url == b->url;
                                                });
  rowOfPath_.clear();
  if (sameFiles) {
    rows_ = std::move(rows);
    if (!rows_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount_ - 1));
    return;
  }
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

void FileListModel::previewChanged() {
  if (filterDependsOnPreview()) {
    refilter();
  } else if (!rows_.empty()) {
    emit dataChanged(index(0, newName), index(rowCount() - 1, columnCount_ - 1));
  }
}

int FileListModel::rowOf(const fs::path& file) const {
  if (rowOfPath_.empty() && !rows_.empty()) {
    rowOfPath_.reserve(rows_.size());
    for (std::size_t i = 0; i < rows_.size(); ++i)
      rowOfPath_.emplace(rows_[i]->url.native(), static_cast<int>(i));
  }
  const auto it = rowOfPath_.find(file.native());
  return it == rowOfPath_.end() ? -1 : it->second;
}

const FolderFile* FileListModel::fileAt(int row) const {
  if (row < 0 || static_cast<std::size_t>(row) >= rows_.size()) return nullptr;
  return rows_[static_cast<std::size_t>(row)];
}

int FileListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int FileListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columnCount_;
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
  const FolderFile* file = fileAt(index.row());
  if (file == nullptr) return {};
  const PlannedRename* row = model_.previewRow(file->url);
  const int column = index.column();
  const bool outside = row != nullptr && !model_.isInScope(file->url);

  switch (role) {
    case Qt::DisplayRole:
      switch (column) {
        case currentName:
          return text(file->name.fullName());
        case newName:
          return row != nullptr ? text(row->newName.fullName()) : QString();
        case date:
          if (!file->captureDate) return {};
          return shotTimeText(*file->captureDate, file->metadata.shotOffset());
        case body:
          return file->bodyTag ? text(*file->bodyTag) : QString();
        case status:
          if (!file->nameIsText) return tr("Left alone: the name isn’t UTF-8");
          if (outside) return tr("Not ticked: left as it is");
          return statusText(row, model_.previewMissingText());
        case folder:
          return text(unicode::toDisplayable(file->url.parent_path().filename().native()));
        default:
          return {};
      }
    case Qt::DecorationRole:
      if (column == currentName && thumbnails_ != nullptr) {
        const QPixmap p = thumbnails_->thumbnail(file->url, ThumbnailCache::Size::list);
        if (!p.isNull()) return p;
        // A square of the same size while it loads, or the kind's icon, so the names stay level.
        static const QPixmap blank = ThumbnailCache::placeholder(QIcon());
        static const QPixmap icon =
            ThumbnailCache::placeholder(QApplication::style()->standardIcon(QStyle::SP_FileIcon));
        return thumbnails_->isLoaded(file->url) ? icon : blank;
      }
      if (column != status || row == nullptr || outside) return {};
      if (row->status == PreviewStatus::error) {
        static const QIcon icon =
            QApplication::style()->standardIcon(QStyle::SP_MessageBoxCritical);
        return icon;
      }
      if (row->status == PreviewStatus::warning) {
        static const QIcon icon = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
        return icon;
      }
      return {};
    case Qt::ToolTipRole:
      if (row != nullptr && (column == newName || column == status)) {
        const QString problems = problemsOf(*row, model_.previewMissingText());
        if (!problems.isEmpty()) return problems;
      }
      if (column == currentName && file->originalName) {
        return tr("Original name: %1").arg(text(*file->originalName));
      }
      if (column == folder) return text(unicode::toDisplayable(file->url.parent_path().native()));
      return {};
    case Qt::ForegroundRole:
      if (outside) return QBrush(QColor(0x80, 0x80, 0x80));
      if (row == nullptr || (column != newName && column != status)) return {};
      if (row->status == PreviewStatus::error) return QBrush(QColor(0xc6, 0x28, 0x28));
      if (row->status == PreviewStatus::warning) return QBrush(QColor(0xb2, 0x6a, 0x00));
      if (row->status == PreviewStatus::unchanged) {
        return QBrush(QColor(0x80, 0x80, 0x80));
      }
      return {};
    case Qt::CheckStateRole:
      if (column != currentName) return {};
      return model_.checked().count(file->url) > 0 ? Qt::Checked : Qt::Unchecked;
    case pathRole:
      return text(file->url.string());
    case thumbnailRole:
      if (thumbnails_ == nullptr) return {};
      return thumbnails_->thumbnail(file->url, ThumbnailCache::Size::grid);
    case statusRole:
      return row != nullptr ? QVariant(static_cast<int>(row->status)) : QVariant();
    default:
      return {};
  }
}

bool FileListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const FolderFile* file = fileAt(index.row());
  if (file == nullptr || role != Qt::CheckStateRole || index.column() != currentName) return false;
  model_.setTicked(file->url, value.toInt() == Qt::Checked);
  return true;
}

Qt::ItemFlags FileListModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags f = QAbstractTableModel::flags(index);
  if (index.column() == currentName) f |= Qt::ItemIsUserCheckable;
  return f;
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case currentName:
      return tr("Name");
    case newName:
      return tr("New Name");
    case date:
      return tr("Date");
    case body:
      return tr("Body");
    case status:
      return tr("Status");
    case folder:
      return tr("Folder");
    default:
      return {};
  }
}

}  // namespace tessane
