#include "SessionMemory.h"

#include <QSettings>
#include <QStringList>

#include <system_error>

namespace tessane {

void SessionMemory::save(const std::vector<std::filesystem::path>& folders,
                         const RuleStack& stack) {
  QStringList paths;
  for (const auto& folder : folders) {
    // Paths are bytes: kept as they are, whatever their encoding.
    paths.append(QString::fromLocal8Bit(folder.native().data(),
                                        static_cast<qsizetype>(folder.native().size())));
  }
  settings_.setValue("openFolders", paths);
  const std::string rules = toJson(stack).dump(-1, ' ', false, Json::error_handler_t::replace);
  settings_.setValue("lastRules", QByteArray(rules.data(), static_cast<qsizetype>(rules.size())));
  // Written out by the store itself, at its next turn of the event loop or when it closes: this
  // runs on every edit of the rules.
}

SessionMemory::Session SessionMemory::restore(bool resumesSession) const {
  Session session;
  if (!resumesSession) return session;
  const QVariant stored = settings_.value("openFolders");
  const QStringList paths =
      stored.typeId() == QMetaType::QStringList
          ? stored.toStringList()
          : (stored.isValid() ? QStringList{stored.toString()} : QStringList{});
  for (const QString& p : paths) {
    const QByteArray bytes = p.toLocal8Bit();
    const std::filesystem::path folder(
        std::string(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    std::error_code error;
    if (!p.isEmpty() && std::filesystem::is_directory(folder, error))
      session.folders.push_back(folder);
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
