// The desktop around the application, behind one seam: showing files in the file manager, the
// Trash, opening addresses and composing mail. The application uses systemDesktopServices(); tests
// give the models a fake. The command-line tool never opens windows of other programs, so it has
// no use for this.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace tessane {

struct MailDraft {
  QString recipient;
  QString subject;
  QString body;                                     // a short text beside the attachment
  std::optional<std::filesystem::path> attachment;  // the full text, as a file
};

class DesktopServices {
 public:
  virtual ~DesktopServices() = default;

  // Shows the files selected in their folder in the file manager (all in one folder); false when
  // nothing could be shown.
  virtual bool revealFiles(const std::vector<std::filesystem::path>& files) = 0;
  // Opens a folder in the file manager.
  virtual bool showFolder(const std::filesystem::path& folder) = 0;
  // Moves a file to the Trash; the reason when it could not.
  virtual std::optional<QString> moveToTrash(const std::filesystem::path& file) = 0;
  // Opens an address with the application the desktop chooses for it.
  virtual bool openUrl(const QUrl& url) = 0;
  // Hands a new message with its attachment to the user's mail application, which sends nothing
  // without the user; false when no mail application can take it (the caller then opens a
  // "mailto:" address instead).
  virtual bool composeMail(const MailDraft& draft) = 0;
};

// The desktop's own services:
// - files are shown by the file manager's D-Bus service (org.freedesktop.FileManager1: ShowItems,
//   ShowFolders, which GNOME Files, Dolphin, Nemo, Caja and Thunar offer); without one the
//   folder is opened with xdg-open;
// - the Trash is the freedesktop one of the user's data folder (created when missing, as a fresh
//   account has none), or the one at the top of the file's own volume;
// - addresses open with xdg-open;
// - mail goes to xdg-email with the attachment; it counts as taken once xdg-email has started
//   (what the mail application does then is its own).
// Programs are started detached, so they outlive a quitting application.
std::unique_ptr<DesktopServices> systemDesktopServices();

// The same over a given bus and a given way of starting programs (tests pass a private bus and a
// recorder). `launch` starts `program` with `arguments` and tells whether it started.
using ProgramLauncher = std::function<bool(const QString& program, const QStringList& arguments)>;
std::unique_ptr<DesktopServices> systemDesktopServices(QDBusConnection bus, ProgramLauncher launch);

}  // namespace tessane
