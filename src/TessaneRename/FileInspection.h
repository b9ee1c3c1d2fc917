// What the file panel shows of one file, made from the folder model: its names (current, original,
// new with the difference), its problems, the step-by-step trace of how its new name was made and
// its shooting data as readable lines. A twin shows its primary's trace, since it takes its
// primary's name, and its own shooting data. Built on the main thread from the model's current
// preview; a file the preview does not hold yet has no new name and an empty trace.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

#include "RenameEngine/NameDiff.h"
#include "RenameEngine/RenamePreview.h"

namespace tessane {

class FolderModel;
struct FolderFile;

struct FileInspection {
  struct Step {
    QString title;   // "Current name", or the change's title ("Build a name")
    QString detail;  // what the change does, where it says more than its title (a template)
    QString name;    // the base name after the step
    bool changed = false;
    QStringList problems;  // what the change met (a missing value, a pattern that can't work)
  };
  struct Field {
    QString label;
    QString value;
  };

  QString currentName;
  std::optional<QString> originalName;  // the camera's name kept with the file
  std::optional<QString> newName;       // absent until the preview holds the file
  NameDiff diff;                        // current against new, made readable (readablePieces)
  PreviewStatus status = PreviewStatus::unchanged;
  QStringList errors;
  QStringList warnings;
  std::optional<QString> follows;  // a twin: the name of the file whose new name it takes
  bool leftAlone = false;          // never renamed: its name is not text (the warning says so)
  std::vector<Step> trace;
  std::vector<Field> fields;  // shooting data, capture time first

  static FileInspection of(const FolderModel& model, const FolderFile& file);
};

// A difference as people read it: a stretch of one or two characters left in common between two
// changes ("DSC0" → "2025" keeps a "0" in the middle) counts as changed too, so that a new name
// built from scratch shows as one change rather than confetti. Neighbours of one kind are merged.
std::vector<DiffPiece> readablePieces(const std::vector<DiffPiece>& pieces);

// A capture time on the shot's own clock when the file says its UTC offset, else on the
// system's, which is the zone names are written in: the time the names show.
QDateTime shotClock(Date date, std::optional<std::int32_t> offset);
// The same as the file list shows it: the locale's short date and time, with seconds.
QString shotTimeText(Date date, std::optional<std::int32_t> offset);

// One metadata value as the panel shows it ("1/250 s", "f/2.8", "35 mm").
QString displayText(MetadataKey key, const MetadataValue& value);
// The label of a metadata key ("Shutter speed").
QString displayLabel(MetadataKey key);

}  // namespace tessane
