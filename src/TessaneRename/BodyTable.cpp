#include "BodyTable.h"

#include <QSettings>

#include <fstream>
#include <sstream>

#include "RenameEngine/Unicode.h"
#include "RenameIO/DurableFile.h"
#include "TessaneRename/Preferences.h"

namespace tessane {

BodyTable::BodyTable(QSettings& settings) : settings_(settings) {
  const QByteArray stored = settings_.value("cameraBodies").toByteArray();
  if (auto parsed = json::parse(
          std::string_view(stored.constData(), static_cast<std::size_t>(stored.size())))) {
    if (Decoded<CameraBodies> decoded = decodeCameraBodies(*parsed); decoded.ok()) {
      bodies_ = std::move(*decoded.value);
    }
  }
}

std::string BodyTable::missingText() const {
  return Preferences(settings_).missingText();
}

void BodyTable::save() {
  const std::string text = toJson(bodies_).dump(-1, ' ', false, Json::error_handler_t::replace);
  settings_.setValue("cameraBodies", QByteArray(text.data(), static_cast<qsizetype>(text.size())));
  settings_.sync();
  if (onChange_) onChange_();
}

void BodyTable::setBodies(CameraBodies bodies) {
  bodies_ = std::move(bodies);
  save();
}

void BodyTable::setMissingText(std::string text) {
  Preferences(settings_).setMissingText(text);
  settings_.sync();
  if (onChange_) onChange_();
}

void BodyTable::setTag(const std::string& key, const std::string& tag) {
  const std::string wanted = CameraBodies::normalizedKey(key);
  for (auto it = bodies_.tags.begin(); it != bodies_.tags.end();) {
    it = CameraBodies::normalizedKey(it->first) == wanted ? bodies_.tags.erase(it) : std::next(it);
  }
  if (!tag.empty()) bodies_.tags[key] = tag;
  save();
}

bool BodyTable::setOffset(const std::string& key, std::string_view offsetText) {
  const std::optional<double> seconds = parseClockOffset(offsetText);
  if (!seconds) return false;
  const std::string wanted = CameraBodies::normalizedKey(key);
  for (auto it = bodies_.clockOffsets.begin(); it != bodies_.clockOffsets.end();) {
    it = CameraBodies::normalizedKey(it->first) == wanted ? bodies_.clockOffsets.erase(it)
                                                          : std::next(it);
  }
  if (*seconds != 0) bodies_.clockOffsets[key] = *seconds;
  save();
  return true;
}

std::optional<ClockSyncResult> BodyTable::syncClocks(const MetadataMap& right,
                                                     const MetadataMap& wrong) {
  auto synced = tessane::syncClocks(bodies_, right, wrong);
  if (!synced) return std::nullopt;
  bodies_ = std::move(synced->first);
  save();
  return std::move(synced->second);
}

std::optional<IOError> BodyTable::exportTo(const std::filesystem::path& file) const {
  const std::string text =
      toJson(bodies_).dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  if (auto error = DurableFile::write(file, text)) return error;
  return std::nullopt;
}

bool BodyTable::importFrom(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return false;
  std::ostringstream contents;
  contents << in.rdbuf();
  const std::optional<Json> parsed = json::parse(contents.str());
  if (!parsed) return false;
  Decoded<CameraBodies> decoded = decodeCameraBodies(*parsed);
  if (!decoded.ok()) return false;
  bodies_ = bodies_.merged(*decoded.value);
  save();
  return true;
}

}  // namespace tessane
