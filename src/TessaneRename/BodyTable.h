// The camera-body table as the application keeps it: the tags and clock offsets of the user's
// cameras (under "cameraBodies", as JSON) in the settings store. The text for missing data, which
// the settings window shows beside the bodies, is the preferences' "missingText": read and
// written through them, never cached here, so that the newest value always wins. Every change is
// written back at once and then announced, so that whoever shows a preview rebuilds it. A stored
// table that does not decode reads as empty.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "RenameEngine/CameraBodies.h"
#include "RenameIO/IOError.h"

class QSettings;

namespace tessane {

class BodyTable {
 public:
  static constexpr std::string_view kExportName = "Tessane camera bodies.json";

  explicit BodyTable(QSettings& settings);

  const CameraBodies& bodies() const { return bodies_; }
  std::string missingText() const;
  void setOnChange(std::function<void()> onChange) { onChange_ = std::move(onChange); }

  void setBodies(CameraBodies bodies);
  void setMissingText(std::string text);
  void setTag(const std::string& key, const std::string& tag);  // an empty tag removes it
  // The text form of an offset ("+0:02:00"); false, and nothing changed, when it isn't one.
  bool setOffset(const std::string& key, std::string_view offsetText);

  // Lines up the wrong camera's clock with the right one's; nullopt when the wrong camera has no
  // body key or either photo has no capture time.
  std::optional<ClockSyncResult> syncClocks(const MetadataMap& right, const MetadataMap& wrong);

  // Writes the table pretty-printed with sorted keys; the error when the write fails.
  std::optional<IOError> exportTo(const std::filesystem::path& file) const;
  // Merges a file's table into this one (imported rows win). False, and nothing changed, when
  // the file isn't a table of camera bodies.
  bool importFrom(const std::filesystem::path& file);

 private:
  void save();

  QSettings& settings_;
  CameraBodies bodies_;
  std::function<void()> onChange_;
};

}  // namespace tessane
