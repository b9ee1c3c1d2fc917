#include "SessionMemory.h"

#include <QSettings>
#include <QStringList>

#include <system_error>

namespace tessane {

namespace {

// Paths are bytes: kept as they are, whatever their encoding.
QString stored(const std::filesystem::path& path) {
  return QString::fromLocal8Bit(path.native().data(), static_cast<qsizetype>(path.native().size()));
}

std::filesystem::path unstored(const QString& text) {
  const QByteArray bytes = text.toLocal8Bit();
  return std::filesystem::path(
      std::string(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

QStringList storedList(const QVariant& value) {
  if (value.typeId() == QMetaType::QStringList) return value.toStringList();
  return value.isValid() ? QStringList{value.toString()} : QStringList{};
}

}  // namespace

void SessionMemory::save(const std::vector<std::filesystem::path>& folders, const RuleStack& stack,
                         const std::set<std::filesystem::path>& selected) {
  QStringList paths, selectedPaths;
  for (const auto& folder : folders) {
    paths.append(stored(folder));
    if (selected.count(folder) > 0) selectedPaths.append(stored(folder));
  }
  settings_.setValue("openFolders", paths);
  settings_.setValue("selectedFolders", selectedPaths);
  const std::string rules = toJson(stack).dump(-1, ' ', false, Json::error_handler_t::replace);
  settings_.setValue("lastRules", QByteArray(rules.data(), static_cast<qsizetype>(rules.size())));
  // Written out by the store itself, at its next turn of the event loop or when it closes: this
  // runs on every edit of the rules.
}

SessionMemory::Session SessionMemory::restore(bool resumesSession) const {
  Session session;
  if (!resumesSession) return session;
  const QStringList selected = storedList(settings_.value("selectedFolders"));
  for (const QString& p : storedList(settings_.value("openFolders"))) {
    const std::filesystem::path folder = unstored(p);
    std::error_code error;
    if (p.isEmpty() || !std::filesystem::is_directory(folder, error)) continue;
    session.folders.push_back(folder);
    if (selected.contains(p)) session.selected.insert(folder);
  }
  const QByteArray rules = settings_.value("lastRules").toByteArray();
  if (auto parsed = json::parse(
          std::string_view(rules.constData(), static_cast<std::size_t>(rules.size())))) {
    if (Decoded<RuleStack> stack = decodeRuleStack(*parsed); stack.ok())
      session.stack = std::move(*stack.value);
  }
  return session;
}

}  // namespace tessane
