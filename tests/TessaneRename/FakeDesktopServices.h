// A desktop for tests: records what the models asked of it and never opens a window, a mail
// or the user's Trash. Trashed files are moved into a folder of the test's own.
#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

#include "TessaneRename/DesktopServices.h"

namespace tessane::testing {

class FakeDesktopServices : public DesktopServices {
 public:
  explicit FakeDesktopServices(std::filesystem::path trash = {}) : trash_(std::move(trash)) {}

  bool revealFiles(const std::vector<std::filesystem::path>& files) override {
    revealed.push_back(files);
    return true;
  }
  bool showFolder(const std::filesystem::path& folder) override {
    shownFolders.push_back(folder);
    return true;
  }
  std::optional<QString> moveToTrash(const std::filesystem::path& file) override {
    if (trashFailure) return trashFailure;
    std::error_code error;
    if (!trash_.empty()) std::filesystem::rename(file, trash_ / file.filename(), error);
    if (error) return QString::fromStdString(error.message());
    trashed.push_back(file);
    return std::nullopt;
  }
  bool openUrl(const QUrl& url) override {
    opened.push_back(url);
    return true;
  }
  bool composeMail(const MailDraft& draft) override {
    mails.push_back(draft);
    return mailAccepted;
  }

  std::vector<std::vector<std::filesystem::path>> revealed;
  std::vector<std::filesystem::path> shownFolders;
  std::vector<std::filesystem::path> trashed;
  std::vector<QUrl> opened;
  std::vector<MailDraft> mails;
  std::optional<QString> trashFailure;  // set: every move to the Trash fails with it
  bool mailAccepted = true;

 private:
  std::filesystem::path trash_;
};

}  // namespace tessane::testing
