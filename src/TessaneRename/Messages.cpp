#include "Messages.h"

#include <QCoreApplication>
#include <QString>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "RenameEngine/CameraBodies.h"
#include "RenameEngine/Unicode.h"

namespace tessane::Messages {
namespace {

// Every text below is marked QT_TRANSLATE_NOOP("Messages", …) where it is written: lupdate can't
// tell the context of a free function's call, and finds the texts by the mark.
std::string translated(const char* text) {
  return QCoreApplication::translate("Messages", text).toStdString();
}

// A text with "%1" (and "%2") filled in.
std::string translated(const char* text, std::string_view first, std::string_view second = {}) {
  const auto q = [](std::string_view s) {
    return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size()));
  };
  // Both at once, so that a name holding "%2" stays as it is.
  const QString translation = QCoreApplication::translate("Messages", text);
  if (std::strstr(text, "%2") != nullptr) return translation.arg(q(first), q(second)).toStdString();
  return translation.arg(q(first)).toStdString();
}

// The system's reason for a failure, in the interface's language for the usual ones (the English
// texts are the C library's own); any other in the C library's words.
std::string reason(int code) {
  static const std::pair<int, const char*> known[] = {
      {ENOENT, QT_TRANSLATE_NOOP("Messages", "No such file or directory")},
      {EACCES, QT_TRANSLATE_NOOP("Messages", "Permission denied")},
      {EPERM, QT_TRANSLATE_NOOP("Messages", "Operation not permitted")},
      {EEXIST, QT_TRANSLATE_NOOP("Messages", "File exists")},
      {ENOSPC, QT_TRANSLATE_NOOP("Messages", "No space left on device")},
      {EDQUOT, QT_TRANSLATE_NOOP("Messages", "Disk quota exceeded")},
      {EROFS, QT_TRANSLATE_NOOP("Messages", "Read-only file system")},
      {EBUSY, QT_TRANSLATE_NOOP("Messages", "Device or resource busy")},
      {EIO, QT_TRANSLATE_NOOP("Messages", "Input/output error")},
      {ENOTDIR, QT_TRANSLATE_NOOP("Messages", "Not a directory")},
      {EISDIR, QT_TRANSLATE_NOOP("Messages", "Is a directory")},
      {ENOTEMPTY, QT_TRANSLATE_NOOP("Messages", "Directory not empty")},
      {ENAMETOOLONG, QT_TRANSLATE_NOOP("Messages", "File name too long")},
      {EXDEV, QT_TRANSLATE_NOOP("Messages", "Invalid cross-device link")},
      {EMFILE, QT_TRANSLATE_NOOP("Messages", "Too many open files")},
  };
  for (const auto& [knownCode, text] : known)
    if (knownCode == code) return translated(text);
  return std::generic_category().message(code);
}

// Why the system refused to rename a file, in a photographer's words for the usual reasons; any
// other in the system's own.
std::string refusal(int code) {
  switch (code) {
    case EROFS:
      return translated(QT_TRANSLATE_NOOP(
          "Messages",
          "the disk is read-only (a memory card’s lock switch, or a disk mounted read-only)"));
    case EACCES:
      return translated(QT_TRANSLATE_NOOP(
          "Messages", "you don’t have permission to change names in this folder"));
    case EPERM:
      return translated(QT_TRANSLATE_NOOP(
          "Messages", "the file is locked against changes (immutable, or owned by another user)"));
    case ENOSPC:
    case EDQUOT:
      return translated(QT_TRANSLATE_NOOP("Messages", "the disk is full"));
    case ENAMETOOLONG:
      return translated(QT_TRANSLATE_NOOP("Messages", "the new name is too long for this disk"));
    default:
      return reason(code);
  }
}

std::string count(std::int64_t n) {
  return std::to_string(n);
}

// "1 file" or "%1 files". English and Italian both take the singular for one alone and the plural
// for every other count, zero included, so the form is chosen here and each one is translated.
std::string counted(std::int64_t n, const char* one, const char* many) {
  return n == 1 ? translated(one) : translated(many, count(n));
}

std::string nameOf(const std::filesystem::path& path) {
  const std::filesystem::path name = path.filename();
  return Messages::quoted((name.empty() ? path : name).native());
}

}  // namespace

std::string quoted(std::string_view name) {
  std::string out = "“";
  return out.append(unicode::toDisplayable(name)).append("”");
}

std::string of(const NameError& e) {
  switch (e.kind()) {
    case NameError::Case::tooLong:
      return translated(QT_TRANSLATE_NOOP("Messages", "The name is too long"));
    case NameError::Case::existingFile:
      return translated(QT_TRANSLATE_NOOP("Messages", "There’s already %1 in the folder"),
                        Messages::quoted(e.name()));
    case NameError::Case::empty:
      return translated(QT_TRANSLATE_NOOP("Messages", "The name is empty"));
    case NameError::Case::startsWithDot:
      return translated(QT_TRANSLATE_NOOP("Messages", "The name can’t start with a dot"));
    case NameError::Case::invalidCharacters:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "The name contains characters that aren’t allowed (/ :)"));
    case NameError::Case::duplicateInBatch:
      return translated(QT_TRANSLATE_NOOP("Messages", "Same name as another file in the batch"));
    case NameError::Case::refused:
      return translated(QT_TRANSLATE_NOOP("Messages", "Can’t be renamed: %1"),
                        refusal(e.systemCode()));
    case NameError::Case::spaceAtEdge:
      return translated(QT_TRANSLATE_NOOP("Messages", "The name can’t start or end with a space"));
  }
  return {};
}

std::string of(const OperationIssue& issue, std::string_view missingText) {
  const std::string variable = "{" + issue.variable() + "}";
  switch (issue.kind()) {
    case OperationIssue::Case::invalidPattern:
      return translated(QT_TRANSLATE_NOOP("Messages", "The regular expression isn’t valid"));
    case OperationIssue::Case::protectedBlock:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "A locked part of the name was left as it is"));
    case OperationIssue::Case::counterOverflow:
      return translated(QT_TRANSLATE_NOOP("Messages", "The counter went past its limit"));
    case OperationIssue::Case::missingVariable:
      if (missingText.empty())
        return translated(QT_TRANSLATE_NOOP("Messages", "%1 is missing: nothing goes in its place"),
                          variable);
      return translated(QT_TRANSLATE_NOOP("Messages", "%1 is missing: %2 goes in its place"),
                        variable, Messages::quoted(missingText));
    case OperationIssue::Case::unknownVariable:
      return translated(QT_TRANSLATE_NOOP("Messages", "%1 isn’t a known value"), variable);
    case OperationIssue::Case::invalidFormat:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "The format doesn’t apply to %1: the plain value is used"),
          variable);
    case OperationIssue::Case::invalidTemplate:
      return translated(QT_TRANSLATE_NOOP("Messages", "A “{” has no closing “}”"));
    case OperationIssue::Case::patternTooSlow:
      return translated(QT_TRANSLATE_NOOP(
          "Messages", "The regular expression takes too long on this name: it was left as it is"));
  }
  return {};
}

std::string of(const PreviewWarning& w, std::string_view missingText) {
  switch (w.kind) {
    case PreviewWarning::Kind::rule:
      return w.issue ? of(w.issue->issue, missingText) : std::string();
    case PreviewWarning::Kind::incompleteTwins: {
      std::string names;
      for (const std::string& twin : w.twins) {
        if (!names.empty()) names.append(", ");
        names.append(Messages::quoted(twin));
      }
      return translated(
          QT_TRANSLATE_NOOP("Messages", "%1 is outside the batch: it won’t be renamed"), names);
    }
    case PreviewWarning::Kind::folderNotListed:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "Can’t read the folder: existing names weren’t checked"));
  }
  return {};
}

std::string of(const PresetError& e) {
  if (e.kind() == PresetError::Case::unsupportedVersion) {
    return translated(
        QT_TRANSLATE_NOOP("Messages",
                          "This preset was made by a newer version of Tessane Rename (format %1)"),
        count(e.version()));
  }
  if (e.detail().empty())
    return translated(QT_TRANSLATE_NOOP("Messages", "This file isn’t a preset that can be read"));
  return translated(QT_TRANSLATE_NOOP("Messages", "This file isn’t a preset that can be read: %1"),
                    e.detail());
}

std::string of(const PresetStore::Failure& failure) {
  std::string text = nameOf(failure.file) + ": ";
  if (const auto* p = std::get_if<PresetError>(&failure.error)) return text.append(of(*p));
  return text.append(reason(std::get<IOError>(failure.error).code));
}

std::string of(const IOError& e) {
  const std::string path = Messages::quoted(e.path.native());
  const std::string why = reason(e.code);
  using Op = IOError::Operation;
  switch (e.operation) {
    case Op::open:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t open %1: %2"), path, why);
    case Op::create:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t create %1: %2"), path, why);
    case Op::createFolder:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t create the folder %1: %2"), path,
                        why);
    case Op::openFolder:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t open the folder %1: %2"), path,
                        why);
    case Op::readFolder:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t read the folder %1: %2"), path,
                        why);
    case Op::write:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t write %1: %2"), path, why);
    case Op::flush:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t write %1 to the disk: %2"), path,
                        why);
    case Op::replace:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t replace %1: %2"), path, why);
    case Op::rename:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t rename %1: %2"), path, why);
    case Op::remove:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t remove %1: %2"), path, why);
    case Op::lock:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t lock %1: %2"), path, why);
    case Op::find:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t find %1: %2"), path, why);
    case Op::readPreset:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t read the preset %1: %2"), path,
                        why);
    case Op::savePreset:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t save the preset %1: %2"), path,
                        why);
    case Op::deletePreset:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t delete the preset %1: %2"), path,
                        why);
  }
  return {};
}

std::string of(const SafeRenameError& e) {
  switch (e.kind) {
    case SafeRenameError::Case::sourceMissing:
      return translated(QT_TRANSLATE_NOOP("Messages", "%1 is no longer in the folder."),
                        nameOf(e.url));
    case SafeRenameError::Case::notSameFolder:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t rename %1."),
                        nameOf(e.move.source));
    case SafeRenameError::Case::duplicateDestination:
      return translated(QT_TRANSLATE_NOOP("Messages", "Two files would be called %1."),
                        nameOf(e.url));
    case SafeRenameError::Case::destinationExists:
      return translated(
          QT_TRANSLATE_NOOP(
              "Messages",
              "There’s already a file called %1 in the folder. Rename or move it and try again."),
          nameOf(e.url));
    case SafeRenameError::Case::failed:
      break;
  }
  if (!e.stranded.empty()) return someFilesStuck();
  if (!e.cause || e.cause->code == 0) {
    return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t rename %1."), nameOf(e.url));
  }
  return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t rename %1: %2. Nothing was changed."),
                    nameOf(e.url), refusal(e.cause->code));
}

std::string of(const BatchRunner::Failure& failure) {
  switch (failure.kind) {
    case BatchRunner::Failure::Kind::renamer:
      return of(failure.error);
    case BatchRunner::Failure::Kind::unknownEntry:
      return translated(QT_TRANSLATE_NOOP("Messages", "That rename is no longer in the history."));
    case BatchRunner::Failure::Kind::alreadyReverted:
      return translated(QT_TRANSLATE_NOOP(
          "Messages", "These files are already back to the names they had before this rename."));
  }
  return {};
}

std::string of(const PlanProblem& p) {
  using Kind = PlanProblem::Kind;
  switch (p.kind) {
    case Kind::noRules:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "Give the new names with a template or a preset."));
    case Kind::unknownZone:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "“%1” isn’t a time zone (try Europe/Rome or UTC)."),
          p.text);
    case Kind::presetListing:
      return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t read the presets.")) + " " +
             of(p.io);
    case Kind::presetNotFound:
      return translated(QT_TRANSLATE_NOOP("Messages", "There’s no preset named %1."),
                        Messages::quoted(p.text));
    case Kind::presetUnreadable:
      return p.preset ? of(*p.preset)
                      : translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t read the presets."));
    case Kind::shoot:
      return p.shoot ? of(*p.shoot) : std::string();
    case Kind::nothingToRename:
      return nothingToRename();
    case Kind::previewErrors:
      return fixErrorsFirst();
    case Kind::noOriginalNames:
      return alreadyOriginalNames();
    case Kind::unknownEntry:
      return translated(QT_TRANSLATE_NOOP("Messages", "There’s no rename %1 in the history."),
                        Messages::quoted(p.text));
    case Kind::ambiguousEntry:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "%1 names more than one rename; give more of its id."),
          Messages::quoted(p.text));
    case Kind::alreadyReverted:
      return translated(QT_TRANSLATE_NOOP(
          "Messages", "These files are already back to the names they had before this rename."));
  }
  return {};
}

std::string of(const ShootProblem& p) {
  switch (p.kind) {
    case ShootProblem::Kind::pathMissing:
      return translated(QT_TRANSLATE_NOOP("Messages", "%1 doesn’t exist."),
                        Messages::quoted(p.path.native()));
    case ShootProblem::Kind::notRenamable:
      return translated(
          QT_TRANSLATE_NOOP("Messages", "%1 isn’t a file or a folder that can be renamed."),
          Messages::quoted(p.path.native()));
    case ShootProblem::Kind::folderUnreadable:
      return folderUnreadable(p.path) + " " + reason(p.code);
    case ShootProblem::Kind::stopped:
      return translated(QT_TRANSLATE_NOOP("Messages", "Stopped: nothing was renamed."));
  }
  return {};
}

std::string of(const ShootNotice& n) {
  switch (n.kind) {
    case ShootNotice::Kind::nameNotText:
      return translated(
          QT_TRANSLATE_NOOP("Messages",
                            "%1: This file’s name can’t be read as text, so it won’t be renamed"),
          Messages::quoted(n.path.filename().native()));
    case ShootNotice::Kind::readerUnavailable:
      return n.text;
  }
  return {};
}

std::string of(const RecoveryReport& report) {
  std::string out;
  for (const RecoveredBatch& b : report.batches) {
    const std::size_t home = b.putBack + b.alreadyHome;
    if (b.notPutBack.empty()) {
      out.append(home == 1 ? translated(QT_TRANSLATE_NOOP(
                                 "Messages",
                                 "A rename was interrupted; its file is back at the name it had "
                                 "before it."))
                           : translated(
                                 QT_TRANSLATE_NOOP(
                                     "Messages",
                                     "A rename was interrupted; its %1 files are back at the names "
                                     "they had before it."),
                                 count(static_cast<std::int64_t>(home))))
          .append("\n");
      continue;
    }
    out
        .append(translated(
            QT_TRANSLATE_NOOP(
                "Messages",
                "A rename was interrupted and not every file could be put back (%1 of %2 are "
                "back). Another try is made at the next start."),
            count(static_cast<std::int64_t>(home)),
            count(static_cast<std::int64_t>(home + b.notPutBack.size()))))
        .append("\n");
    for (const FileMove& m : b.notPutBack) {
      const std::string where = Messages::quoted(m.destination.native());
      out.append("  ")
          .append(m.source.empty()
                      ? translated(QT_TRANSLATE_NOOP("Messages", "%1 can’t be found."), where)
                      : translated(QT_TRANSLATE_NOOP("Messages", "%1 is still called %2."), where,
                                   Messages::quoted(m.source.filename().native())))
          .append("\n");
    }
  }
  for (const std::filesystem::path& p : report.unreadableJournals) {
    out.append(translated(QT_TRANSLATE_NOOP(
                              "Messages", "The record of an interrupted rename can’t be read: %1."),
                          Messages::quoted(p.native())))
        .append("\n");
  }
  return out;
}

std::string dropSomething() {
  return translated(QT_TRANSLATE_NOOP("Messages", "Drop a folder or some files."));
}
std::string folderUnreadable(const std::filesystem::path& folder) {
  return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t open the folder %1."), nameOf(folder));
}
std::string folderAccessPrompt(const std::filesystem::path& folder) {
  return translated(
      QT_TRANSLATE_NOOP("Messages",
                        "To see all the photos in %1, let Tessane Rename open the folder."),
      nameOf(folder));
}
std::string nothingToRename() {
  return translated(QT_TRANSLATE_NOOP("Messages", "There’s nothing to rename."));
}
std::string stillReading() {
  return translated(QT_TRANSLATE_NOOP(
      "Messages", "The shooting data is still being read: Rename waits until every date is in."));
}
std::string filesToRename(std::int64_t n) {
  return counted(n, QT_TRANSLATE_NOOP("Messages", "Rename 1 file"),
                 QT_TRANSLATE_NOOP("Messages", "Rename %1 files"));
}
std::string shotsSplit(std::int64_t n) {
  return counted(n, QT_TRANSLATE_NOOP("Messages", "1 shot leaves a file out of the batch"),
                 QT_TRANSLATE_NOOP("Messages", "%1 shots leave files out of the batch"));
}
std::string fixErrorsFirst() {
  return translated(QT_TRANSLATE_NOOP("Messages", "Fix the errors before renaming."));
}
std::string nothingToUndo() {
  return translated(QT_TRANSLATE_NOOP("Messages", "There’s nothing to undo."));
}
std::string alreadyOriginalNames() {
  return translated(
      QT_TRANSLATE_NOOP("Messages", "These files already have their original names."));
}
std::string addFolderToGoBack() {
  return translated(QT_TRANSLATE_NOOP("Messages", "Add the folder to the list to go back."));
}
std::string historyNotSaved() {
  return translated(QT_TRANSLATE_NOOP(
      "Messages",
      "The files were renamed, but the history couldn’t be saved (is the disk full?). Until it "
      "can be, their batch is kept aside: the next start puts the files back to their names."));
}
std::string notABodyTable(const std::filesystem::path& file) {
  return translated(QT_TRANSLATE_NOOP("Messages", "%1 isn’t a table of camera bodies."),
                    nameOf(file));
}
std::string clockSynced(std::string_view body, double offset) {
  if (offset == 0) return translated(QT_TRANSLATE_NOOP("Messages", "%1 was already in time"), body);
  return translated(QT_TRANSLATE_NOOP("Messages", "%1 clock: %2"), body, formatClockOffset(offset));
}
std::string clockSyncNote() {
  return translated(QT_TRANSLATE_NOOP("Messages",
                                      "The difference goes in Settings › Camera Bodies, where you "
                                      "can change it. The files aren’t changed."));
}
std::string foldersSelected(std::int64_t n) {
  return counted(n, QT_TRANSLATE_NOOP("Messages", "1 folder selected"),
                 QT_TRANSLATE_NOOP("Messages", "%1 folders selected"));
}
std::string filesRenamed(std::int64_t n) {
  return counted(n, QT_TRANSLATE_NOOP("Messages", "1 file renamed"),
                 QT_TRANSLATE_NOOP("Messages", "%1 files renamed"));
}
std::string filesBackToPrevious(std::int64_t n) {
  return counted(n, QT_TRANSLATE_NOOP("Messages", "1 file back to its previous name"),
                 QT_TRANSLATE_NOOP("Messages", "%1 files back to their previous names"));
}
std::string filesBackToOriginal(std::int64_t n) {
  return counted(n, QT_TRANSLATE_NOOP("Messages", "1 file back to its original name"),
                 QT_TRANSLATE_NOOP("Messages", "%1 files back to their original names"));
}
std::string noFileChanged() {
  return translated(QT_TRANSLATE_NOOP("Messages", "No file was changed"));
}
std::string someFilesStuck() {
  return translated(QT_TRANSLATE_NOOP("Messages", "Some files couldn’t go back to their names"));
}

std::string updateAvailable(std::string_view version, std::string_view current) {
  return translated(QT_TRANSLATE_NOOP("Messages", "Tessane Rename %1 is available. You have %2."),
                    version, current);
}
std::string upToDate(std::string_view current) {
  return translated(QT_TRANSLATE_NOOP("Messages", "Tessane Rename %1 is the newest version."),
                    current);
}
std::string updateCheckFailed(std::string_view reason) {
  return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t check for updates: %1"), reason);
}
std::string updateServerTooSlow() {
  return translated(QT_TRANSLATE_NOOP("Messages", "the server took too long to answer"));
}
std::string updateFeedUnreadable() {
  return translated(QT_TRANSLATE_NOOP("Messages", "the update information can’t be read"));
}

std::string presetNotSaved(std::string_view name, const IOError& error) {
  return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t save the preset %1: %2"),
                    Messages::quoted(name), reason(error.code));
}

std::string presetNotTrashed(std::string_view name, std::string_view why) {
  return translated(QT_TRANSLATE_NOOP("Messages", "Couldn’t move %1 to the Trash: %2"),
                    Messages::quoted(name), why);
}

std::string updateFeedNotSigned() {
  return translated(QT_TRANSLATE_NOOP(
      "Messages",
      "the update information isn’t signed with this version’s key, so it was ignored"));
}

}  // namespace tessane::Messages
