#include "BetaReport.h"

#include <QFile>
#include <QLocale>
#include <QSysInfo>

namespace tessane {
namespace {

QString firstLineOf(const std::filesystem::path& file) {
  QFile in(QFile::decodeName(file.c_str()));
  if (!in.open(QIODevice::ReadOnly)) return {};
  // The device tree ends its strings with a NUL.
  return QString::fromUtf8(in.readAll().split('\n').value(0)).remove(QChar(0)).trimmed();
}

QString section(const char* title, const QString& body) {
  return QStringLiteral("\n\n— ") + QLatin1String(title) + "\n" + body;
}

}  // namespace

QString hardwareModel(const std::filesystem::path& root) {
  const QString product = firstLineOf(root / "sys/class/dmi/id/product_name");
  if (!product.isEmpty()) {
    const QString vendor = firstLineOf(root / "sys/class/dmi/id/sys_vendor");
    return vendor.isEmpty() || product.startsWith(vendor) ? product : vendor + " " + product;
  }
  const QString model = firstLineOf(root / "proc/device-tree/model");
  return model.isEmpty() ? QStringLiteral("?") : model;
}

BetaReport::System BetaReport::System::current(const QString& version, const QString& build,
                                               const std::filesystem::path& root) {
  System s;
  s.app = "Tessane " + version;
  if (!build.isEmpty()) s.app += " (" + build + ")";
  s.os = QSysInfo::prettyProductName();
  s.machine = hardwareModel(root);
  s.architecture = QSysInfo::currentCpuArchitecture();
  s.languages = QLocale::system().uiLanguages();
  return s;
}

QString BetaReport::headerLine() const {
  return QStringList{system.app, system.os, system.machine, system.architecture,
                     system.languages.join(' ')}
      .join(", ");
}

QString BetaReport::text() const {
  QString out = headerLine();
  out += section("What happened", comment.trimmed().isEmpty() ? QStringLiteral("(none)") : comment);
  if (!includesDetails) return out + "\n";
  out += section("On screen", context);
  out += section("Rules", rules);
  out += section("Diary", diary.join('\n'));
  if (crash) out += section("Crash", *crash);
  return out + "\n";
}

}  // namespace tessane
