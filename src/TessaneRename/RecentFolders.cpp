#include "TessaneRename/RecentFolders.h"

#include <QSettings>
#include <QStringList>

#include <system_error>

namespace tessane {

namespace fs = std::filesystem;

namespace {

constexpr const char* kKey = "recentFolders";

std::vector<fs::path> stored(const QSettings& settings) {
  std::vector<fs::path> out;
  const QVariant value = settings.value(kKey);
  if (value.typeId() != QMetaType::QStringList && value.typeId() != QMetaType::QVariantList &&
      value.typeId() != QMetaType::QString) {
    return out;
  }
  for (const QString& s : value.toStringList()) {
    if (!s.isEmpty()) out.emplace_back(s.toStdString());
  }
  return out;
}

}  // namespace

std::vector<fs::path> RecentFolders::list() const {
  std::vector<fs::path> out;
  for (fs::path& p : stored(settings_)) {
    std::error_code error;
    if (fs::is_directory(p, error)) out.push_back(std::move(p));
  }
  return out;
}

void RecentFolders::note(const std::vector<fs::path>& folders) {
  std::vector<fs::path> all = folders;
  for (fs::path& p : stored(settings_))
    all.push_back(std::move(p));
  QStringList kept;
  for (const fs::path& p : all) {
    const QString s = QString::fromStdString(p.string());
    if (s.isEmpty() || kept.contains(s)) continue;
    kept << s;
    if (static_cast<std::size_t>(kept.size()) == kLimit) break;
  }
  settings_.setValue(kKey, kept);
}

void RecentFolders::clear() {
  settings_.remove(kKey);
}

}  // namespace tessane
