// The application's settings, typed. Everything lives in one QSettings store (organisation
// "Tessane", application "Tessane Rename": "$XDG_CONFIG_HOME/Tessane/Tessane Rename.conf"),
// shared by the application and the command-line tool. Preferences holds only the store and
// reads each value when asked: a missing key, a value of the wrong type or an unknown text gives
// the default, so a damaged settings file never costs more than that one setting.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "RenameEngine/RenamePreview.h"

class QSettings;
class QString;
class QVariant;

namespace tessane {

enum class Appearance { system, light, dark };
enum class ExtensionCase { keep, lower, upper };
enum class OriginalNames { always, macDisksOnly, never };
enum class TwinKind { images, video, sidecars };

std::string_view rawValue(Appearance value);
std::string_view rawValue(ExtensionCase value);
std::string_view rawValue(OriginalNames value);
std::string_view rawValue(TwinKind value);
std::optional<Appearance> appearanceFromRawValue(std::string_view text);
std::optional<ExtensionCase> extensionCaseFromRawValue(std::string_view text);
std::optional<OriginalNames> originalNamesFromRawValue(std::string_view text);
std::optional<TwinKind> twinKindFromRawValue(std::string_view text);

// The store the application and the tool use.
std::unique_ptr<QSettings> openAppSettings();

class Preferences {
 public:
  explicit Preferences(QSettings& settings) : settings_(settings) {}

  Appearance appearance() const;
  bool resumesSession() const;
  bool revealAfterRename() const;
  bool showsThumbnails() const;
  std::string dateFormat() const;
  std::string timeFormat() const;
  std::string nameSeparator() const;
  std::int64_t counterStart() const;
  std::int64_t counterDigits() const;
  // The counter a new name starts with: the start and digits above.
  Counter nameCounter() const;
  ExtensionCase extensionCase() const;
  OriginalNames originalNames() const;
  std::optional<BatchOrder> batchOrder() const;  // nullopt: the engine's default order
  DuplicatePolicy duplicatePolicy() const;
  std::set<TwinKind> twinKinds() const;
  std::string missingText() const;

  void setAppearance(Appearance value);
  void setResumesSession(bool value);
  void setRevealAfterRename(bool value);
  void setShowsThumbnails(bool value);
  void setDateFormat(std::string_view value);
  void setTimeFormat(std::string_view value);
  void setNameSeparator(std::string_view value);
  void setCounterStart(std::int64_t value);
  void setCounterDigits(std::int64_t value);
  void setExtensionCase(ExtensionCase value);
  void setOriginalNames(OriginalNames value);
  void setBatchOrder(std::optional<BatchOrder> value);
  void setDuplicatePolicy(DuplicatePolicy value);
  void setTwinKinds(const std::set<TwinKind>& value);
  void setMissingText(std::string_view value);

  // The twin options the chosen kinds make (RAW always).
  TwinOptions twinOptions(bool keepTogether = true) const;
  // Whether the original name is written into `file` under the setting.
  bool remembersOriginalName(const std::filesystem::path& file) const;

 private:
  std::string text(const char* key, std::string_view fallback) const;
  bool flag(const char* key, bool fallback) const;
  std::int64_t integer(const char* key, std::int64_t fallback) const;
  void set(const char* key, const QVariant& value);

  QSettings& settings_;
};

}  // namespace tessane
