#include "BetaReporter.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "RenameIO/DataFolder.h"
#include "TessaneRename/DesktopServices.h"
#include "TessaneRename/Distribution.h"
#include "TessaneRename/FolderModel.h"

namespace tessane {
namespace {

QString pathText(const std::filesystem::path& path) {
  return QFile::decodeName(path.c_str());
}

bool writeAtomically(const std::filesystem::path& file, const QString& text) {
  QSaveFile out(pathText(file));
  if (!out.open(QIODevice::WriteOnly)) return false;
  out.write(text.toUtf8());
  return out.commit();
}

// A batch's outcome as the diary tells it.
std::string diaryLine(const Toast& toast) {
  const std::string count = std::to_string(toast.count);
  std::string batch;
  switch (toast.after) {
    case Toast::After::rename:
      batch = "Rename";
      break;
    case Toast::After::goingBack:
      batch = "Going back";
      break;
    case Toast::After::originalNames:
      batch = "Restoring original names";
      break;
  }
  switch (toast.outcome) {
    case RenameOutcome::renamed:
      break;
    case RenameOutcome::nothingChanged:
      return batch + ": no file changed";
    case RenameOutcome::partlyStuck: {
      constexpr std::size_t kNamed = 5;
      std::string line =
          batch + " stopped, " + std::to_string(toast.stuck.size()) + " files left stuck:";
      for (std::size_t i = 0; i < toast.stuck.size() && i < kNamed; ++i) {
        line += ' ' + toast.stuck[i].source.filename().string() + " (belongs at " +
                toast.stuck[i].destination.filename().string() + ')';
      }
      if (toast.stuck.size() > kNamed) line += " …";
      return line;
    }
  }
  switch (toast.after) {
    case Toast::After::rename:
      return "Renamed " + count + " files";
    case Toast::After::goingBack:
      return "Went back: " + count + " files back to their previous names";
    case Toast::After::originalNames:
      break;
  }
  return "Restored original names: " + count + " files";
}

}  // namespace

std::filesystem::path BetaReporter::standardFolder() {
  return DataFolder::location() / "Beta";
}

BetaReporter::BetaReporter(std::filesystem::path folder, QString version, DesktopServices& desktop,
                           std::filesystem::path temporaryFolder, QObject* parent)
    : QObject(parent),
      version_(std::move(version)),
      address_(Distribution::ofThisBuild().reportAddress),
      desktop_(desktop),
      temporaryFolder_(std::move(temporaryFolder)),
      diary_(std::make_unique<BetaDiary>(folder / "Diary.log")),
      watch_(std::make_unique<CrashWatch>(folder)) {}

BetaReporter::~BetaReporter() = default;

void BetaReporter::launch() {
  watch_->start();
  crash_ = watch_->crashText();
  diary_->writeLaunch(version_.toStdString(), watch_->previousRunEndedSuddenly());
}

void BetaReporter::quit() {
  diary_->write("Quit");
  watch_->stop();
}

void BetaReporter::follow(FolderModel& model) {
  auto listed = std::make_shared<std::vector<std::filesystem::path>>(model.folders());
  connect(&model, &FolderModel::foldersChanged, this, [this, &model, listed] {
    const std::vector<std::filesystem::path>& now = model.folders();
    for (const std::filesystem::path& folder : now) {
      if (std::find(listed->begin(), listed->end(), folder) == listed->end())
        diary_->write("Opened " + folder.string());
    }
    for (const std::filesystem::path& folder : *listed) {
      if (std::find(now.begin(), now.end(), folder) == now.end())
        diary_->write("Removed " + folder.string() + " from the list");
    }
    *listed = now;
  });
  connect(&model, &FolderModel::toastChanged, this, [this, &model] {
    if (model.toast()) diary_->write(diaryLine(*model.toast()));
  });
  connect(&model, &FolderModel::errorMessageChanged, this, [this, &model] {
    if (model.errorMessage()) diary_->write("Error: " + *model.errorMessage());
  });
}

// In English whatever the interface's language, like the rest of the report: its readers are the
// developers.
void BetaReporter::setContext(const QString& errorOnScreen, const QStringList& folders,
                              const QString& rules) {
  const QString none = QStringLiteral("(none)");
  context_ =
      QStringLiteral("Error on screen: ") + (errorOnScreen.isEmpty() ? none : errorOnScreen) +
      QStringLiteral("\nFolders in the list: ") + (folders.isEmpty() ? none : folders.join(", "));
  rules_ = rules;
}

BetaReport BetaReporter::report(const QString& comment, bool includesDetails) const {
  BetaReport r;
  r.comment = comment;
  r.system = BetaReport::System::current(version_, Distribution::ofThisBuild().buildNumber);
  r.context = context_;
  for (const std::string& line : diary_->lines())
    r.diary << QString::fromStdString(line);
  r.rules = rules_;
  r.crash = crash_;
  r.includesDetails = includesDetails;
  return r;
}

bool BetaReporter::send(const QString& comment, bool includesDetails) {
  if (!sends()) return false;
  const QString text = report(comment, includesDetails).text();
  const QString subject =
      QCoreApplication::translate("BetaReporter", "Tessane Rename %1: problem report")
          .arg(version_);
  const std::filesystem::path attachment = temporaryFolder_ / kSaveName;
  bool handed = false;
  if (writeAtomically(attachment, text)) {
    MailDraft draft;
    draft.recipient = address_;
    draft.subject = subject;
    draft.body =
        QCoreApplication::translate("BetaReporter", "The details are in the attached file.");
    draft.attachment = attachment;
    handed = desktop_.composeMail(draft);
  }
  if (!handed) {
    QUrl mail;
    mail.setScheme("mailto");
    mail.setPath(address_);
    QUrlQuery query;
    query.addQueryItem("subject", QString::fromUtf8(QUrl::toPercentEncoding(subject)));
    query.addQueryItem("body", QString::fromUtf8(QUrl::toPercentEncoding(text)));
    mail.setQuery(query);
    handed = desktop_.openUrl(mail);
  }
  if (!handed) {
    setStatusMessage(QCoreApplication::translate(
        "BetaReporter", "No mail app could take the report: save it and send the file."));
    return false;
  }
  diary_->write("Problem report sent");
  setStatusMessage(QCoreApplication::translate("BetaReporter", "Report sent to your mail app"));
  return true;
}

bool BetaReporter::save(const std::filesystem::path& file, const QString& comment,
                        bool includesDetails) {
  return writeAtomically(file, report(comment, includesDetails).text());
}

void BetaReporter::setStatusMessage(const QString& message) {
  if (message == statusMessage_) return;
  statusMessage_ = message;
  emit statusMessageChanged();
}

}  // namespace tessane
