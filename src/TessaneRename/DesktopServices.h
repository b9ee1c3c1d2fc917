// The desktop around the application, behind one seam: showing files in the file manager, the
// Trash, opening addresses and composing mail. The application uses systemDesktopServices(); tests
// give the models a fake. The command-line tool never opens windows of other programs, so it has
// no use for this.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include <QString>
#include <QUrl>

namespace tessane {

struct MailDraft {
  QString recipient;
  QString subject;
  QString body;                                     // a short text beside the attachment
  std::optional<std::filesystem::path> attachment;  // the full text, as a file
  QString fullText;                                 // the body when no attachment can be given
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
  // Opens a new message in the user's mail application; nothing is sent without the user.
  virtual bool composeMail(const MailDraft& draft) = 0;
};

// The desktop's own services: the file manager over D-Bus, the freedesktop Trash, xdg-open and
// xdg-email.
std::unique_ptr<DesktopServices> systemDesktopServices();

}  // namespace tessane
