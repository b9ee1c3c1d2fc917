#include "Messages.h"

#include <QCoreApplication>
#include <QString>

#include <cstring>
#include <system_error>

#include "RenameEngine/Unicode.h"

namespace tessane::Messages {
namespace {

std::string tr(const char* text) {
  return QCoreApplication::translate("Messages", text).toStdString();
}

// A text with "%1" (and "%2") filled in.
std::string tr(const char* text, std::string_view first, std::string_view second = {}) {
  QString out = QCoreApplication::translate("Messages", text)
                    .arg(QString::fromUtf8(first.data(), static_cast<qsizetype>(first.size())));
  if (std::strstr(text, "%2") != nullptr) {
    out = out.arg(QString::fromUtf8(second.data(), static_cast<qsizetype>(second.size())));
  }
  return out.toStdString();
}

std::string count(std::int64_t n) {
  return std::to_string(n);
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
      return tr("The name is too long");
    case NameError::Case::existingFile:
      return tr("There’s already %1 in the folder", Messages::quoted(e.name()));
    case NameError::Case::empty:
      return tr("The name is empty");
    case NameError::Case::startsWithDot:
      return tr("The name can’t start with a dot");
    case NameError::Case::invalidCharacters:
      return tr("The name contains characters that aren’t allowed (/ :)");
    case NameError::Case::duplicateInBatch:
      return tr("Same name as another file in the batch");
  }
  return {};
}

std::string of(const OperationIssue& issue, std::string_view missingText) {
  const std::string variable = "{" + issue.variable() + "}";
  switch (issue.kind()) {
    case OperationIssue::Case::invalidPattern:
      return tr("The regular expression isn’t valid");
    case OperationIssue::Case::protectedBlock:
      return tr("A locked part of the name was left as it is");
    case OperationIssue::Case::counterOverflow:
      return tr("The counter went past its limit");
    case OperationIssue::Case::missingVariable:
      if (missingText.empty()) return tr("%1 is missing: nothing goes in its place", variable);
      return tr("%1 is missing: %2 goes in its place", variable, Messages::quoted(missingText));
    case OperationIssue::Case::unknownVariable:
      return tr("%1 isn’t a known value", variable);
    case OperationIssue::Case::invalidFormat:
      return tr("The format doesn’t apply to %1: the plain value is used", variable);
    case OperationIssue::Case::invalidTemplate:
      return tr("A “{” has no closing “}”");
    case OperationIssue::Case::patternTooSlow:
      return tr("The regular expression takes too long on this name: it was left as it is");
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
      return tr("%1 is outside the batch: it won’t be renamed", names);
    }
    case PreviewWarning::Kind::folderNotListed:
      return tr("Can’t read the folder: existing names weren’t checked");
  }
  return {};
}

std::string of(const PresetError& e) {
  if (e.kind() == PresetError::Case::unsupportedVersion) {
    return tr("This preset was made by a newer version of Tessane Rename (format %1)",
              count(e.version()));
  }
  if (e.detail().empty()) return tr("This file isn’t a preset that can be read");
  return tr("This file isn’t a preset that can be read: %1", e.detail());
}

std::string of(const PresetStore::Failure& failure) {
  std::string text = nameOf(failure.file) + ": ";
  if (const auto* p = std::get_if<PresetError>(&failure.error)) return text.append(of(*p));
  return text.append(std::generic_category().message(std::get<IOError>(failure.error).code));
}

std::string of(const IOError& e) {
  const std::string path = Messages::quoted(e.path.native());
  const std::string why = std::generic_category().message(e.code);
  using Op = IOError::Operation;
  switch (e.operation) {
    case Op::open:
      return tr("Couldn’t open %1: %2", path, why);
    case Op::create:
      return tr("Couldn’t create %1: %2", path, why);
    case Op::createFolder:
      return tr("Couldn’t create the folder %1: %2", path, why);
    case Op::openFolder:
      return tr("Couldn’t open the folder %1: %2", path, why);
    case Op::readFolder:
      return tr("Couldn’t read the folder %1: %2", path, why);
    case Op::write:
      return tr("Couldn’t write %1: %2", path, why);
    case Op::flush:
      return tr("Couldn’t write %1 to the disk: %2", path, why);
    case Op::replace:
      return tr("Couldn’t replace %1: %2", path, why);
    case Op::rename:
      return tr("Couldn’t rename %1: %2", path, why);
    case Op::remove:
      return tr("Couldn’t remove %1: %2", path, why);
    case Op::lock:
      return tr("Couldn’t lock %1: %2", path, why);
    case Op::find:
      return tr("Couldn’t find %1: %2", path, why);
    case Op::readPreset:
      return tr("Couldn’t read the preset %1: %2", path, why);
    case Op::savePreset:
      return tr("Couldn’t save the preset %1: %2", path, why);
    case Op::deletePreset:
      return tr("Couldn’t delete the preset %1: %2", path, why);
  }
  return {};
}

std::string of(const SafeRenameError& e) {
  switch (e.kind) {
    case SafeRenameError::Case::sourceMissing:
      return tr("%1 is no longer in the folder.", nameOf(e.url));
    case SafeRenameError::Case::notSameFolder:
      return tr("Couldn’t rename %1.", nameOf(e.move.source));
    case SafeRenameError::Case::duplicateDestination:
      return tr("Two files would be called %1.", nameOf(e.url));
    case SafeRenameError::Case::destinationExists:
      return tr("There’s already a file called %1 in the folder. Rename or move it and try again.",
                nameOf(e.url));
    case SafeRenameError::Case::failed:
      break;
  }
  if (!e.stranded.empty()) return someFilesStuck();
  return tr("Couldn’t rename %1. It may be in use by another app: close it and try again.",
            nameOf(e.url));
}

std::string of(const BatchRunner::Failure& failure) {
  switch (failure.kind) {
    case BatchRunner::Failure::Kind::renamer:
      return of(failure.error);
    case BatchRunner::Failure::Kind::unknownEntry:
      return tr("That rename is no longer in the history.");
    case BatchRunner::Failure::Kind::alreadyReverted:
      return tr("These files are already back to the names they had before this rename.");
  }
  return {};
}

std::string of(const PlanProblem& p) {
  using Kind = PlanProblem::Kind;
  switch (p.kind) {
    case Kind::noRules:
      return tr("Give the new names with a template or a preset.");
    case Kind::unknownZone:
      return tr("“%1” isn’t a time zone (try Europe/Rome or UTC).", p.text);
    case Kind::presetListing:
      return tr("Couldn’t read the presets.") + " " + of(p.io);
    case Kind::presetNotFound:
      return tr("There’s no preset named %1.", Messages::quoted(p.text));
    case Kind::presetUnreadable:
      return p.preset ? of(*p.preset) : tr("Couldn’t read the presets.");
    case Kind::shoot:
      return p.shoot ? of(*p.shoot) : std::string();
    case Kind::nothingToRename:
      return nothingToRename();
    case Kind::previewErrors:
      return fixErrorsFirst();
    case Kind::noOriginalNames:
      return alreadyOriginalNames();
    case Kind::unknownEntry:
      return tr("There’s no rename %1 in the history.", Messages::quoted(p.text));
    case Kind::ambiguousEntry:
      return tr("%1 names more than one rename; give more of its id.", Messages::quoted(p.text));
    case Kind::alreadyReverted:
      return tr("These files are already back to the names they had before this rename.");
  }
  return {};
}

std::string of(const ShootProblem& p) {
  switch (p.kind) {
    case ShootProblem::Kind::pathMissing:
      return tr("%1 doesn’t exist.", Messages::quoted(p.path.native()));
    case ShootProblem::Kind::notRenamable:
      return tr("%1 isn’t a file or a folder that can be renamed.",
                Messages::quoted(p.path.native()));
    case ShootProblem::Kind::folderUnreadable:
      return folderUnreadable(p.path) + " " + std::generic_category().message(p.code);
    case ShootProblem::Kind::stopped:
      return tr("Stopped: nothing was renamed.");
  }
  return {};
}

std::string of(const ShootNotice& n) {
  switch (n.kind) {
    case ShootNotice::Kind::nameNotText:
      return tr("%1: This file’s name can’t be read as text, so it won’t be renamed",
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
      out.append(home == 1 ? tr("A rename was interrupted; its file is back at the name it had "
                                "before it.")
                           : tr("A rename was interrupted; its %1 files are back at the names "
                                "they had before it.",
                                count(static_cast<std::int64_t>(home))))
          .append("\n");
      continue;
    }
    out.append(tr("A rename was interrupted and not every file could be put back (%1 of %2 are "
                  "back). Another try is made at the next start.",
                  count(static_cast<std::int64_t>(home)),
                  count(static_cast<std::int64_t>(home + b.notPutBack.size()))))
        .append("\n");
    for (const FileMove& m : b.notPutBack) {
      const std::string where = Messages::quoted(m.destination.native());
      out.append("  ")
          .append(m.source.empty() ? tr("%1 can’t be found.", where)
                                   : tr("%1 is still called %2.", where,
                                        Messages::quoted(m.source.filename().native())))
          .append("\n");
    }
  }
  for (const std::filesystem::path& p : report.unreadableJournals) {
    out.append(tr("The record of an interrupted rename can’t be read: %1.",
                  Messages::quoted(p.native())))
        .append("\n");
  }
  return out;
}

std::string dropSomething() {
  return tr("Drop a folder or some files.");
}
std::string folderUnreadable(const std::filesystem::path& folder) {
  return tr("Couldn’t open the folder %1.", nameOf(folder));
}
std::string folderAccessPrompt(const std::filesystem::path& folder) {
  return tr("To see all the photos in %1, let Tessane Rename open the folder.", nameOf(folder));
}
std::string nothingToRename() {
  return tr("There’s nothing to rename.");
}
std::string fixErrorsFirst() {
  return tr("Fix the errors before renaming.");
}
std::string nothingToUndo() {
  return tr("There’s nothing to undo.");
}
std::string alreadyOriginalNames() {
  return tr("These files already have their original names.");
}
std::string addFolderToGoBack() {
  return tr("Add the folder to the list to go back.");
}
std::string historyNotSaved() {
  return tr(
      "The files were renamed, but the history couldn’t be saved (is the disk full?). Until it "
      "can be, their batch is kept aside: the next start puts the files back to their names.");
}
std::string notABodyTable(const std::filesystem::path& file) {
  return tr("%1 isn’t a table of camera bodies.", nameOf(file));
}
std::string foldersSelected(std::int64_t n) {
  return tr("%1 folders selected", count(n));
}
std::string filesRenamed(std::int64_t n) {
  return tr("%1 files renamed", count(n));
}
std::string filesBackToPrevious(std::int64_t n) {
  return tr("%1 files back to their previous names", count(n));
}
std::string filesBackToOriginal(std::int64_t n) {
  return tr("%1 files back to their original names", count(n));
}
std::string noFileChanged() {
  return tr("No file was changed");
}
std::string someFilesStuck() {
  return tr("Some files couldn’t go back to their names");
}

std::string updateAvailable(std::string_view version, std::string_view current) {
  return tr("Tessane Rename %1 is available. You have %2.", version, current);
}
std::string upToDate(std::string_view current) {
  return tr("Tessane Rename %1 is the newest version.", current);
}
std::string updateCheckFailed(std::string_view reason) {
  return tr("Couldn’t check for updates: %1", reason);
}
std::string updateServerTooSlow() {
  return tr("the server took too long to answer");
}
std::string updateFeedUnreadable() {
  return tr("the update information can’t be read");
}

}  // namespace tessane::Messages
