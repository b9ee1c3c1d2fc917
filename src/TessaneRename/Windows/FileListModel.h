// The file list of a main window as a table over a FolderModel: one row per file shown (under
// the model's filter), with the current name, the new name, the capture date, the camera body,
// the status and the folder (for when several are shown). Errors are red and warnings amber,
// their messages in the tooltip; rows outside the batch Rename would make are grey and say so;
// the first column carries the file's tick.
//
// It keeps only pointers to the model's files and asks the model for each visible cell, so a
// new preview over 10,000 files costs one dataChanged, not a copy of the rows.
#pragma once

#include <QAbstractTableModel>

#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

#include "TessaneRename/FolderModel.h"

namespace tessane {

class ThumbnailCache;

class FileListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { currentName, newName, date, body, folder, status, columnCount_ };
  // The file's path, as text, under this role.
  static constexpr int pathRole = Qt::UserRole + 1;
  // The grid's thumbnail (a QPixmap, null while it loads or when the file has none).
  static constexpr int thumbnailRole = Qt::UserRole + 2;
  // The row's PreviewStatus, as an int; absent before the preview holds the file.
  static constexpr int statusRole = Qt::UserRole + 3;

  explicit FileListModel(FolderModel& model, QObject* parent = nullptr);

  // The filter is the model's: with the scope "all", what is shown is what is renamed.
  void setFilter(ListFilter filter);
  // Thumbnails beside the names (and in the grid); null turns them off.
  void setThumbnails(ThumbnailCache* thumbnails);
  ThumbnailCache* thumbnails() const { return thumbnails_; }
  const ListFilter& filter() const { return model_.filter(); }

  // The row that shows `file`; -1 when it is not shown.
  int rowOf(const std::filesystem::path& file) const;
  const FolderFile* fileAt(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void refilter();
  void previewChanged();
  bool filterDependsOnPreview() const;

  void thumbnailsArrived(const QStringList& paths);

  FolderModel& model_;
  ThumbnailCache* thumbnails_ = nullptr;
  std::vector<const FolderFile*> rows_;
  mutable std::unordered_map<std::string, int> rowOfPath_;  // made on first use after a change
};

}  // namespace tessane
