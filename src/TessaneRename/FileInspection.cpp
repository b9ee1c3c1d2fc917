#include "TessaneRename/FileInspection.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

#include <array>
#include <cmath>

#include "RenameEngine/Unicode.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/RuleKind.h"

namespace tessane {

namespace {

QString text(const std::string& s) {
  return QString::fromStdString(s);
}

QString number(double value, int decimals) {
  // "2.8", "35", never "35.0".
  QString s = QLocale().toString(value, 'f', decimals);
  if (s.contains(QLocale().decimalPoint())) {
    while (s.endsWith('0'))
      s.chop(1);
    if (s.endsWith(QLocale().decimalPoint())) s.chop(QLocale().decimalPoint().size());
  }
  return s;
}

QString dateText(Date date, std::optional<std::int32_t> offset) {
  return shotClock(date, offset).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

// Capture time first, then the camera, the exposure, the media, the place and people, the file.
constexpr std::array kFieldOrder{
    MetadataKey::date,    MetadataKey::make,     MetadataKey::model,    MetadataKey::serial,
    MetadataKey::lens,    MetadataKey::iso,      MetadataKey::shutter,  MetadataKey::aperture,
    MetadataKey::focal,   MetadataKey::width,    MetadataKey::height,   MetadataKey::duration,
    MetadataKey::fps,     MetadataKey::codec,    MetadataKey::city,     MetadataKey::location,
    MetadataKey::author,  MetadataKey::title,    MetadataKey::headline, MetadataKey::artist,
    MetadataKey::album,   MetadataKey::track,    MetadataKey::year,     MetadataKey::pages,
    MetadataKey::created, MetadataKey::modified,
};
static_assert(kFieldOrder.size() == kMetadataKeyCount);

const Rule* ruleWithID(const RuleStack& stack, const Uuid& id) {
  for (const Rule& rule : stack.rules) {
    if (rule.id == id) return &rule;
  }
  return nullptr;
}

void addTrace(FileInspection& out, const FolderModel& model, const FolderFile& file,
              const PlannedRename& row) {
  FileInspection::Step start;
  start.title = QCoreApplication::translate("FileInspection", "Current name");
  start.name = text(file.name.base);
  out.trace.push_back(std::move(start));
  for (const RuleStep& step : row.steps) {
    FileInspection::Step s;
    const Rule* rule = ruleWithID(model.rules(), step.ruleID);
    s.title = rule != nullptr ? title(kindOf(*rule))
                              : QCoreApplication::translate("FileInspection", "Change");
    if (rule != nullptr) {
      if (const auto* format = std::get_if<RuleAction::Format>(&rule->action.value)) {
        s.detail = text(format->format.templateText);
      }
    }
    s.name = text(step.name);
    s.changed = step.changed;
    for (const PreviewWarning& w : row.warnings) {
      if (w.issue && w.issue->ruleID == step.ruleID) {
        s.problems << text(Messages::of(w, model.previewMissingText()));
      }
    }
    out.trace.push_back(std::move(s));
  }
}

}  // namespace

QDateTime shotClock(Date date, std::optional<std::int32_t> offset) {
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch());
  if (offset) {
    return QDateTime::fromMSecsSinceEpoch(ms.count(), QTimeZone(*offset));
  }
  return QDateTime::fromMSecsSinceEpoch(ms.count());
}

QString shotTimeText(Date date, std::optional<std::int32_t> offset) {
  const QDateTime when = shotClock(date, offset);
  QString time = QLocale().timeFormat(QLocale::ShortFormat);
  if (!time.contains(QLatin1Char('s'))) time.replace(QStringLiteral("mm"), QStringLiteral("mm:ss"));
  return QLocale().toString(when.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
         QLocale().toString(when.time(), time);
}

std::vector<DiffPiece> readablePieces(const std::vector<DiffPiece>& pieces) {
  std::vector<DiffPiece> out;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    DiffPiece piece = pieces[i];
    const bool between = i > 0 && i + 1 < pieces.size();
    if (piece.kind == DiffPiece::Kind::same && between && unicode::graphemeCount(piece.text) < 3) {
      piece.kind = pieces[i - 1].kind;  // the change around it
    }
    if (!out.empty() && out.back().kind == piece.kind) {
      out.back().text += piece.text;
    } else {
      out.push_back(std::move(piece));
    }
  }
  return out;
}

QString displayLabel(MetadataKey key) {
  switch (key) {
    case MetadataKey::created:
      return QCoreApplication::translate("FileInspection", "File created");
    case MetadataKey::modified:
      return QCoreApplication::translate("FileInspection", "File modified");
    case MetadataKey::date:
      return QCoreApplication::translate("FileInspection", "Taken");
    case MetadataKey::make:
      return QCoreApplication::translate("FileInspection", "Camera maker");
    case MetadataKey::model:
      return QCoreApplication::translate("FileInspection", "Camera model");
    case MetadataKey::lens:
      return QCoreApplication::translate("FileInspection", "Lens");
    case MetadataKey::serial:
      return QCoreApplication::translate("FileInspection", "Serial number");
    case MetadataKey::iso:
      return QCoreApplication::translate("FileInspection", "ISO");
    case MetadataKey::shutter:
      return QCoreApplication::translate("FileInspection", "Shutter speed");
    case MetadataKey::aperture:
      return QCoreApplication::translate("FileInspection", "Aperture");
    case MetadataKey::focal:
      return QCoreApplication::translate("FileInspection", "Focal length");
    case MetadataKey::city:
      return QCoreApplication::translate("FileInspection", "City");
    case MetadataKey::location:
      return QCoreApplication::translate("FileInspection", "Place");
    case MetadataKey::author:
      return QCoreApplication::translate("FileInspection", "Author");
    case MetadataKey::title:
      return QCoreApplication::translate("FileInspection", "Title");
    case MetadataKey::headline:
      return QCoreApplication::translate("FileInspection", "Headline");
    case MetadataKey::duration:
      return QCoreApplication::translate("FileInspection", "Duration");
    case MetadataKey::width:
      return QCoreApplication::translate("FileInspection", "Width");
    case MetadataKey::height:
      return QCoreApplication::translate("FileInspection", "Height");
    case MetadataKey::fps:
      return QCoreApplication::translate("FileInspection", "Frame rate");
    case MetadataKey::codec:
      return QCoreApplication::translate("FileInspection", "Codec");
    case MetadataKey::artist:
      return QCoreApplication::translate("FileInspection", "Artist");
    case MetadataKey::album:
      return QCoreApplication::translate("FileInspection", "Album");
    case MetadataKey::track:
      return QCoreApplication::translate("FileInspection", "Track");
    case MetadataKey::year:
      return QCoreApplication::translate("FileInspection", "Year");
    case MetadataKey::pages:
      return QCoreApplication::translate("FileInspection", "Pages");
  }
  return {};
}

QString displayText(MetadataKey key, const MetadataValue& value) {
  if (const Date* d = value.asDate()) return dateText(*d, std::nullopt);
  if (const std::string* s = value.asText()) return text(*s);
  double v = 0;
  if (const std::int64_t* i = value.asInteger()) {
    v = static_cast<double>(*i);
  } else if (const double* n = value.asNumber()) {
    v = *n;
  }
  switch (key) {
    case MetadataKey::shutter:
      if (v > 0 && v < 0.5)
        return QCoreApplication::translate("FileInspection", "1/%1 s").arg(std::llround(1.0 / v));
      return QCoreApplication::translate("FileInspection", "%1 s").arg(number(v, 1));
    case MetadataKey::aperture:
      return QCoreApplication::translate("FileInspection", "f/%1").arg(number(v, 1));
    case MetadataKey::focal:
      return QCoreApplication::translate("FileInspection", "%1 mm").arg(number(v, 1));
    case MetadataKey::fps:
      return QCoreApplication::translate("FileInspection", "%1 fps").arg(number(v, 2));
    case MetadataKey::duration: {
      const long long s = std::llround(v);
      return s >= 3600 ? QStringLiteral("%1:%2:%3")
                             .arg(s / 3600)
                             .arg(s / 60 % 60, 2, 10, QChar('0'))
                             .arg(s % 60, 2, 10, QChar('0'))
                       : QStringLiteral("%1:%2").arg(s / 60).arg(s % 60, 2, 10, QChar('0'));
    }
    case MetadataKey::width:
    case MetadataKey::height:
      return QCoreApplication::translate("FileInspection", "%1 px").arg(std::llround(v));
    case MetadataKey::year:
    case MetadataKey::track:
      return QString::number(std::llround(v));  // no thousands separator in a year
    default:
      if (const std::int64_t* i = value.asInteger()) {
        return QLocale().toString(static_cast<qlonglong>(*i));
      }
      return number(v, 2);
  }
}

FileInspection FileInspection::of(const FolderModel& model, const FolderFile& file) {
  FileInspection out;
  out.currentName = text(file.name.fullName());
  if (file.originalName) out.originalName = text(*file.originalName);

  if (const PlannedRename* row = model.previewRow(file.url)) {
    out.newName = text(row->newName.fullName());
    out.diff = NameDiff::compare(file.name.fullName(), row->newName.fullName());
    out.diff.oldPieces = readablePieces(out.diff.oldPieces);
    out.diff.newPieces = readablePieces(out.diff.newPieces);
    out.status = row->status;
    for (const NameError& e : row->errors)
      out.errors << text(Messages::of(e));
    for (const PreviewWarning& w : row->warnings)
      out.warnings << text(Messages::of(w, model.previewMissingText()));
    const PlannedRename* traced = row;
    if (file.primaryURL != file.url) {
      if (const PlannedRename* primary = model.previewRow(file.primaryURL)) traced = primary;
      out.follows = text(file.primaryURL.filename().string());
    }
    const FolderFile* tracedFile = &file;
    if (traced != row) {
      for (const FolderFile& f : model.files()) {
        if (f.url == file.primaryURL) tracedFile = &f;
      }
    }
    addTrace(out, model, *tracedFile, *traced);
  }

  if (!file.nameIsText) {
    out.leftAlone = true;
    out.warnings << QCoreApplication::translate(
        "FileInspection",
        "Left alone: its name isn’t written in UTF-8, so it can’t be shown or renamed safely. "
        "Rename it in the file manager first.");
  }

  // The file's own data, a twin's too: it takes its primary's name, not its camera or its date.
  const MetadataMap& metadata = model.ownMetadata(file);
  const std::optional<std::string> tag =
      &metadata == &file.metadata ? file.bodyTag : model.cameraBodies().tag(metadata);
  if (tag)
    out.fields.push_back({QCoreApplication::translate("FileInspection", "Body"), text(*tag)});
  for (MetadataKey key : kFieldOrder) {
    const MetadataValue* value = metadata.find(key);
    if (value == nullptr) continue;
    const std::optional<std::int32_t> offset = metadata.shotOffset();
    if (key == MetadataKey::date && value->asDate()) {
      // The shot's own clock where the file says it, as the names write it.
      out.fields.push_back({displayLabel(key), dateText(*value->asDate(), offset)});
    } else {
      out.fields.push_back({displayLabel(key), displayText(key, *value)});
    }
    if (key == MetadataKey::date && file.captureDate && value->asDate() &&
        *value->asDate() != *file.captureDate) {
      out.fields.push_back({QCoreApplication::translate("FileInspection", "Time in names"),
                            dateText(*file.captureDate, offset)});
    }
  }
  return out;
}

}  // namespace tessane
