#include "BetaDiary.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <system_error>

namespace tessane {
namespace {

QString pathText(const std::filesystem::path& path) {
  return QFile::decodeName(path.c_str());
}

}  // namespace

BetaDiary::BetaDiary(std::filesystem::path file) : file_(std::move(file)) {
  QFile in(pathText(file_));
  if (!in.open(QIODevice::ReadOnly)) return;
  for (const QByteArray& line : in.readAll().split('\n'))
    if (!line.isEmpty()) lines_.push_back(line.toStdString());
  if (lines_.size() > kKeptLines)
    lines_.erase(lines_.begin(), lines_.end() - static_cast<std::ptrdiff_t>(kKeptLines));
}

void BetaDiary::writeLaunch(std::string_view version, bool afterSuddenQuit, const QDateTime& when) {
  std::string line = "Tessane ";
  line.append(version).append(", started ");
  line.append(when.toString(Qt::ISODate).toStdString());
  if (afterSuddenQuit) line.append(" after a sudden quit");
  lastEvent_.clear();
  append(std::move(line));
}

void BetaDiary::write(std::string_view event, const QDateTime& when) {
  std::string text(event);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  if (text == lastEvent_) return;
  lastEvent_ = text;
  append(when.toString(Qt::ISODate).toStdString() + " " + text);
}

void BetaDiary::append(std::string line) {
  lines_.push_back(line);
  std::error_code ignored;
  std::filesystem::create_directories(file_.parent_path(), ignored);
  if (lines_.size() <= kKeptLines) {
    QFile out(pathText(file_));
    if (out.open(QIODevice::WriteOnly | QIODevice::Append)) out.write((line + "\n").c_str());
    return;
  }
  // Past the limit the file is written again with the recent lines only.
  lines_.erase(lines_.begin(), lines_.end() - static_cast<std::ptrdiff_t>(kKeptLines));
  QSaveFile out(pathText(file_));
  if (!out.open(QIODevice::WriteOnly)) return;
  for (const std::string& kept : lines_)
    out.write((kept + "\n").c_str());
  out.commit();
}

}  // namespace tessane
