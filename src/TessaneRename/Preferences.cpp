#include "Preferences.h"

#include <QSettings>
#include <QStringList>

#include "RenameEngine/StoredText.h"
#include "RenameIO/OriginalName.h"

namespace tessane {
namespace {

constexpr std::pair<Appearance, std::string_view> kAppearance[] = {
    {Appearance::system, "system"}, {Appearance::light, "light"}, {Appearance::dark, "dark"}};
constexpr std::pair<ExtensionCase, std::string_view> kExtensionCase[] = {
    {ExtensionCase::keep, "keep"},
    {ExtensionCase::lower, "lower"},
    {ExtensionCase::upper, "upper"}};
constexpr std::pair<OriginalNames, std::string_view> kOriginalNames[] = {
    {OriginalNames::always, "always"},
    {OriginalNames::macDisksOnly, "macDisksOnly"},
    {OriginalNames::never, "never"}};
constexpr std::pair<TwinKind, std::string_view> kTwinKinds[] = {
    {TwinKind::images, "images"}, {TwinKind::video, "video"}, {TwinKind::sidecars, "sidecars"}};

QString q(std::string_view s) {
  return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size()));
}

}  // namespace

std::string_view rawValue(Appearance v) {
  return storedText(kAppearance, v);
}
std::string_view rawValue(ExtensionCase v) {
  return storedText(kExtensionCase, v);
}
std::string_view rawValue(OriginalNames v) {
  return storedText(kOriginalNames, v);
}
std::string_view rawValue(TwinKind v) {
  return storedText(kTwinKinds, v);
}
std::optional<Appearance> appearanceFromRawValue(std::string_view t) {
  return fromStoredText(kAppearance, t);
}
std::optional<ExtensionCase> extensionCaseFromRawValue(std::string_view t) {
  return fromStoredText(kExtensionCase, t);
}
std::optional<OriginalNames> originalNamesFromRawValue(std::string_view t) {
  return fromStoredText(kOriginalNames, t);
}
std::optional<TwinKind> twinKindFromRawValue(std::string_view t) {
  return fromStoredText(kTwinKinds, t);
}

std::unique_ptr<QSettings> openAppSettings() {
  return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, "Tessane",
                                     "Tessane Rename");
}

std::string Preferences::text(const char* key, std::string_view fallback) const {
  const QVariant v = settings_.value(key);
  if (!v.isValid() || v.typeId() == QMetaType::QStringList || !v.canConvert<QString>()) {
    return std::string(fallback);
  }
  return v.toString().toStdString();
}

bool Preferences::flag(const char* key, bool fallback) const {
  const QVariant v = settings_.value(key);
  if (!v.isValid()) return fallback;
  if (v.typeId() == QMetaType::Bool) return v.toBool();
  // Settings files keep values as text.
  const QString s = v.toString().trimmed().toLower();
  if (s == "true" || s == "1") return true;
  if (s == "false" || s == "0") return false;
  return fallback;
}

std::int64_t Preferences::integer(const char* key, std::int64_t fallback) const {
  const QVariant v = settings_.value(key);
  if (!v.isValid()) return fallback;
  bool ok = false;
  const qlonglong n = v.toString().trimmed().toLongLong(&ok);
  return ok ? n : fallback;
}

void Preferences::set(const char* key, const QVariant& value) {
  settings_.setValue(key, value);
}

Appearance Preferences::appearance() const {
  return appearanceFromRawValue(text("appearance", "system")).value_or(Appearance::system);
}
bool Preferences::resumesSession() const {
  return flag("resumesSession", true);
}
bool Preferences::revealAfterRename() const {
  return flag("revealAfterRename", true);
}
bool Preferences::showsThumbnails() const {
  return flag("showsThumbnails", true);
}
std::string Preferences::dateFormat() const {
  return text("dateFormat", "yyyy-MM-dd");
}
std::string Preferences::timeFormat() const {
  return text("timeFormat", "HH-mm-ss");
}
std::string Preferences::nameSeparator() const {
  return text("nameSeparator", "_");
}
std::int64_t Preferences::counterStart() const {
  return integer("counterStart", Counter{}.start);
}
std::int64_t Preferences::counterDigits() const {
  return integer("counterDigits", Counter{}.padding);
}
Counter Preferences::nameCounter() const {
  Counter counter;
  counter.start = counterStart();
  counter.padding = counterDigits();
  return counter;
}
ExtensionCase Preferences::extensionCase() const {
  return extensionCaseFromRawValue(text("extensionCase", "keep")).value_or(ExtensionCase::keep);
}
OriginalNames Preferences::originalNames() const {
  return originalNamesFromRawValue(text("originalNames", "macDisksOnly"))
      .value_or(OriginalNames::macDisksOnly);
}
std::optional<BatchOrder> Preferences::batchOrder() const {
  const std::string stored = text("batchOrder", "");
  if (stored == "name") return BatchOrder::name;
  if (stored == "captureTime") return BatchOrder::captureTime;
  return std::nullopt;
}
DuplicatePolicy Preferences::duplicatePolicy() const {
  return duplicatePolicyFromRawValue(text("duplicatePolicy", "markError"))
      .value_or(DuplicatePolicy::markError);
}
std::set<TwinKind> Preferences::twinKinds() const {
  // Only a missing key means all three: Qt writes an empty list as an invalid value, which reads
  // back as no kinds at all, as it was written.
  if (!settings_.contains("twinKinds"))
    return {TwinKind::images, TwinKind::video, TwinKind::sidecars};
  const QVariant v = settings_.value("twinKinds");
  if (!v.isValid()) return {};
  std::set<TwinKind> kinds;
  // A one-element list is read back from a settings file as plain text.
  const QStringList list =
      v.typeId() == QMetaType::QStringList ? v.toStringList() : QStringList{v.toString()};
  for (const QString& item : list) {
    if (auto kind = twinKindFromRawValue(item.toStdString())) kinds.insert(*kind);
  }
  return kinds;
}
std::string Preferences::missingText() const {
  return text("missingText", "");
}

void Preferences::setAppearance(Appearance v) {
  set("appearance", q(rawValue(v)));
}
void Preferences::setResumesSession(bool v) {
  set("resumesSession", v);
}
void Preferences::setRevealAfterRename(bool v) {
  set("revealAfterRename", v);
}
void Preferences::setShowsThumbnails(bool v) {
  set("showsThumbnails", v);
}
void Preferences::setDateFormat(std::string_view v) {
  set("dateFormat", q(v));
}
void Preferences::setTimeFormat(std::string_view v) {
  set("timeFormat", q(v));
}
void Preferences::setNameSeparator(std::string_view v) {
  set("nameSeparator", q(v));
}
void Preferences::setCounterStart(std::int64_t v) {
  set("counterStart", static_cast<qlonglong>(v));
}
void Preferences::setCounterDigits(std::int64_t v) {
  set("counterDigits", static_cast<qlonglong>(v));
}
void Preferences::setExtensionCase(ExtensionCase v) {
  set("extensionCase", q(rawValue(v)));
}
void Preferences::setOriginalNames(OriginalNames v) {
  set("originalNames", q(rawValue(v)));
}
void Preferences::setBatchOrder(std::optional<BatchOrder> v) {
  // Only the two orders a user chooses are stored; the engine's default is no value.
  if (!v || *v == BatchOrder::asGiven) {
    settings_.remove("batchOrder");
  } else {
    set("batchOrder", q(rawValue(*v)));
  }
}
void Preferences::setDuplicatePolicy(DuplicatePolicy v) {
  set("duplicatePolicy", q(rawValue(v)));
}
void Preferences::setTwinKinds(const std::set<TwinKind>& v) {
  QStringList list;
  for (TwinKind k : v)
    list.append(q(rawValue(k)));
  set("twinKinds", list);
}
void Preferences::setMissingText(std::string_view v) {
  set("missingText", q(v));
}

TwinOptions Preferences::twinOptions(bool keepTogether) const {
  const std::set<TwinKind> kinds = twinKinds();
  TwinOptions options =
      TwinOptions::forKinds(kinds.count(TwinKind::images) > 0, kinds.count(TwinKind::video) > 0,
                            kinds.count(TwinKind::sidecars) > 0);
  options.isEnabled = keepTogether;
  return options;
}

bool Preferences::remembersOriginalName(const std::filesystem::path& file) const {
  switch (originalNames()) {
    case OriginalNames::always:
      return true;
    case OriginalNames::never:
      return false;
    case OriginalNames::macDisksOnly:
      return OriginalName::keepsAttributesNatively(file);
  }
  return false;
}

}  // namespace tessane
