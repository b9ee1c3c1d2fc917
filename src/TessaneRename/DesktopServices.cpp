#include "DesktopServices.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>

namespace tessane {
namespace {

constexpr const char* kFileManagerService = "org.freedesktop.FileManager1";
constexpr const char* kFileManagerPath = "/org/freedesktop/FileManager1";
constexpr int kCallTimeoutMs = 5000;

QString pathText(const std::filesystem::path& path) {
  return QFile::decodeName(path.c_str());
}

QString fileUri(const std::filesystem::path& path) {
  return QString::fromUtf8(QUrl::fromLocalFile(pathText(path)).toEncoded());
}

bool isFolder(const QString& path) {
  struct stat st;
  return ::lstat(QFile::encodeName(path).constData(), &st) == 0 && S_ISDIR(st.st_mode);
}

// Makes `trash` with its two folders, for the user alone.
bool makeTrash(const QString& trash) {
  for (const char* sub : {"/files", "/info"}) {
    if (!isFolder(trash + sub) && !QDir().mkpath(trash + sub)) return false;
  }
  ::chmod(QFile::encodeName(trash).constData(), S_IRWXU);
  return true;
}

// Qt moves a file only into a Trash that is there already, and where it finds none it uses
// "files" and "info" folders under the current directory. So the Trash the file will go to is
// made first, as the freedesktop rules place it: the user's own for files on the volume of the
// home folder, else "$topdir/.Trash/$uid" or "$topdir/.Trash-$uid" on the file's volume.
bool prepareTrashFor(const QString& file) {
  const QStorageInfo volume(file);
  if (!volume.isValid()) return false;
  if (volume == QStorageInfo(QDir::homePath())) {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return !data.isEmpty() && makeTrash(data + "/Trash");
  }
  const QString top = volume.rootPath();
  const QString uid = QString::number(::getuid());
  if (isFolder(top + "/.Trash/" + uid + "/files")) return true;
  return makeTrash(top + "/.Trash-" + uid);
}

class SystemDesktopServices : public DesktopServices {
 public:
  SystemDesktopServices(QDBusConnection bus, ProgramLauncher launch)
      : bus_(std::move(bus)), launch_(std::move(launch)) {}

  bool revealFiles(const std::vector<std::filesystem::path>& files) override {
    if (files.empty()) return false;
    QStringList uris;
    for (const auto& f : files)
      uris << fileUri(f);
    if (askFileManager("ShowItems", uris)) return true;
    return openUrl(QUrl::fromLocalFile(pathText(files.front().parent_path())));
  }

  bool showFolder(const std::filesystem::path& folder) override {
    if (askFileManager("ShowFolders", {fileUri(folder)})) return true;
    return openUrl(QUrl::fromLocalFile(pathText(folder)));
  }

  std::optional<QString> moveToTrash(const std::filesystem::path& file) override {
    QFile f(pathText(file));
    if (!f.exists())
      return QCoreApplication::translate("DesktopServices", "The file is no longer there.");
    if (!prepareTrashFor(f.fileName()))
      return QCoreApplication::translate("DesktopServices", "There’s no Trash on this disk.");
    if (f.moveToTrash()) return std::nullopt;
    return f.errorString();
  }

  bool openUrl(const QUrl& url) override {
    return launch_("xdg-open", {QString::fromUtf8(url.toEncoded())});
  }

  bool composeMail(const MailDraft& draft) override {
    if (!draft.attachment) return false;
    QStringList arguments{"--utf8",
                          "--subject",
                          draft.subject,
                          "--body",
                          draft.body,
                          "--attach",
                          pathText(*draft.attachment)};
    arguments << draft.recipient;
    return launch_("xdg-email", arguments);
  }

 private:
  bool askFileManager(const char* method, const QStringList& uris) {
    if (!bus_.isConnected()) return false;
    QDBusMessage call = QDBusMessage::createMethodCall(kFileManagerService, kFileManagerPath,
                                                       kFileManagerService, method);
    call << uris << QString();  // no start-up notification id
    const QDBusMessage reply = bus_.call(call, QDBus::Block, kCallTimeoutMs);
    return reply.type() == QDBusMessage::ReplyMessage;
  }

  QDBusConnection bus_;
  ProgramLauncher launch_;
};

bool startDetached(const QString& program, const QStringList& arguments) {
  if (QStandardPaths::findExecutable(program).isEmpty()) return false;
  return QProcess::startDetached(program, arguments);
}

}  // namespace

std::unique_ptr<DesktopServices> systemDesktopServices() {
  return systemDesktopServices(QDBusConnection::sessionBus(), startDetached);
}

std::unique_ptr<DesktopServices> systemDesktopServices(QDBusConnection bus,
                                                       ProgramLauncher launch) {
  return std::make_unique<SystemDesktopServices>(std::move(bus), std::move(launch));
}

}  // namespace tessane
