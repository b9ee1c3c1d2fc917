#include "TessaneRename/ClockSync.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include "TessaneRename/FolderModel.h"

namespace tessane {

namespace {

const Date* recordedTime(const FolderFile& file) {
  const MetadataValue* v = file.metadata.find(MetadataKey::date);
  return v != nullptr ? v->asDate() : nullptr;
}

// A body as the user knows it: its tag, else its key (serial number or model).
QString bodyLabel(const CameraBodies& bodies, const MetadataMap& metadata) {
  if (auto tag = bodies.tag(metadata)) return QString::fromStdString(*tag);
  if (auto key = CameraBodies::bodyKey(metadata)) return QString::fromStdString(*key);
  return {};
}

}  // namespace

ClockSync::State ClockSync::stateOf(const FolderFile* a, const FolderFile* b) {
  if (a == nullptr || b == nullptr || a->url == b->url) return State::chooseTwo;
  if (!CameraBodies::bodyKey(a->metadata) || !CameraBodies::bodyKey(b->metadata)) {
    return State::noBody;
  }
  if (CameraBodies::sameBody(a->metadata, b->metadata)) return State::sameBody;
  if (recordedTime(*a) == nullptr || recordedTime(*b) == nullptr) return State::noTime;
  return State::ready;
}

QString ClockSync::explanation(State state) {
  switch (state) {
    case State::chooseTwo:
      return QCoreApplication::translate(
          "ClockSync",
          "Select two photos taken at the same instant by two cameras to line up their "
          "clocks.");
    case State::sameBody:
      return QCoreApplication::translate(
          "ClockSync",
          "These two photos come from the same camera. Select one photo from each camera.");
    case State::noBody:
      return QCoreApplication::translate(
          "ClockSync",
          "A camera can only be told apart by its serial number or model, and one of these "
          "photos has neither.");
    case State::noTime:
      return QCoreApplication::translate("ClockSync",
                                         "One of these photos doesn’t say when it was taken.");
    case State::ready:
      return QCoreApplication::translate(
          "ClockSync",
          "If these two photos were taken at the same instant, the clocks can be lined up. "
          "Choose the camera with the right time.");
  }
  return {};
}

ClockSync::Photo ClockSync::photoOf(FolderModel& model, const FolderFile& file) {
  Photo photo;
  photo.name = QString::fromStdString(file.name.fullName());
  photo.body = bodyLabel(model.bodies().bodies(), file.metadata);
  if (const Date* t = recordedTime(file)) {
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(t->time_since_epoch());
    photo.time = QLocale().toString(QDateTime::fromMSecsSinceEpoch(ms.count()),
                                    QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  }
  return photo;
}

std::optional<ClockSync::Result> ClockSync::apply(FolderModel& model, const FolderFile& right,
                                                  const FolderFile& wrong) {
  if (stateOf(&right, &wrong) != State::ready) return std::nullopt;
  const QString label = bodyLabel(model.bodies().bodies(), wrong.metadata);
  const std::optional<ClockSyncResult> synced =
      model.bodies().syncClocks(right.metadata, wrong.metadata);
  if (!synced) return std::nullopt;
  model.settingsChanged();  // the corrected times reach the names
  Result result;
  result.offset = synced->offset;
  result.line = synced->offset != 0
                    ? QCoreApplication::translate("ClockSync", "%1 clock: %2")
                          .arg(label, QString::fromStdString(formatClockOffset(synced->offset)))
                    : QCoreApplication::translate("ClockSync", "%1 was already in time").arg(label);
  result.note = QCoreApplication::translate(
      "ClockSync",
      "The difference goes in Settings › Camera Bodies, where you can change it. The "
      "files aren’t changed.");
  return result;
}

}  // namespace tessane
