// The problem report's model: owns the diary and the crash watch, keeps the crash text found at
// launch and what the main window supplies (the error on screen, the folders in the list, the
// rules being built), and makes, sends and saves the report. Nothing is sent without the user:
// sending hands the report to the mail application (with the full text as an attached file), or,
// when none can take it, opens a "mailto:" address with the text as the body. Only a build given a
// report address (Distribution) sends; any other saves or copies the report.
//
// The diagnostics live in the data folder's "Beta": Diary.log, Crash.txt and the marker.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <memory>
#include <optional>

#include "TessaneRename/BetaDiary.h"
#include "TessaneRename/BetaReport.h"
#include "TessaneRename/CrashWatch.h"

namespace tessane {

class DesktopServices;
class FolderModel;

class BetaReporter : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY statusMessageChanged)

 public:
  static constexpr const char* kSaveName = "Tessane Rename report.txt";

  // "$XDG_DATA_HOME/Tessane Rename/Beta".
  static std::filesystem::path standardFolder();

  // `temporaryFolder` receives the file attached to the mail.
  BetaReporter(std::filesystem::path folder, QString version, DesktopServices& desktop,
               std::filesystem::path temporaryFolder, QObject* parent = nullptr);
  ~BetaReporter() override;

  // At launch: starts the crash watch and writes the launch line.
  void launch();
  // At a normal quit.
  void quit();
  // The diary notes, in English for the developers, what a main window's model does: each folder
  // that joins or leaves its list, each batch's outcome (renames, going back, original names, files
  // left stuck) and each error it shows. Until the model is destroyed.
  void follow(FolderModel& model);

  BetaDiary& diary() { return *diary_; }
  const CrashWatch& watch() const { return *watch_; }
  const std::optional<QString>& crash() const { return crash_; }

  // What the main window shows, for the report's details.
  void setContext(const QString& errorOnScreen, const QStringList& folders, const QString& rules);
  const QString& context() const { return context_; }

  // Where reports are sent; the build's address unless set (empty: reports aren't sent).
  void setAddress(const QString& address) { address_ = address; }
  const QString& address() const { return address_; }
  bool sends() const { return !address_.isEmpty(); }

  BetaReport report(const QString& comment, bool includesDetails) const;
  // Hands the report to the mail application; "Report sent to your mail app" then. False, and
  // nothing done, without an address.
  bool send(const QString& comment, bool includesDetails);
  // Writes the report atomically in UTF-8 (the save panel proposes kSaveName).
  bool save(const std::filesystem::path& file, const QString& comment, bool includesDetails);

  QString statusMessage() const { return statusMessage_; }

 signals:
  void statusMessageChanged();

 private:
  void setStatusMessage(const QString& message);

  QString version_;
  QString address_;
  DesktopServices& desktop_;
  std::filesystem::path temporaryFolder_;
  std::unique_ptr<BetaDiary> diary_;
  std::unique_ptr<CrashWatch> watch_;
  std::optional<QString> crash_;
  QString context_;
  QString rules_;
  QString statusMessage_;
};

}  // namespace tessane
