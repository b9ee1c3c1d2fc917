#include "TessaneRename/Windows/UpdateNotice.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

#include "TessaneRename/AppUpdater.h"
#include "TessaneRename/DesktopServices.h"

namespace tessane {

QMessageBox* showUpdateNotice(QWidget* parent, const UpdateCheckResult& result,
                              DesktopServices& desktop) {
  const bool failed = result.outcome == UpdateCheckResult::Outcome::failed;
  auto* box = new QMessageBox(parent);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setObjectName("updateNotice");
  box->setWindowModality(Qt::NonModal);
  box->setIcon(failed ? QMessageBox::Warning : QMessageBox::Information);
  box->setWindowTitle(QCoreApplication::translate("UpdateNotice", "Check for Updates"));
  box->setText(result.message);
  if (result.outcome == UpdateCheckResult::Outcome::newer && result.feed) {
    if (!result.feed->notes.isEmpty()) box->setInformativeText(result.feed->notes);
    const QUrl page = result.feed->download;
    if (!page.isEmpty()) {
      QPushButton* download =
          box->addButton(QCoreApplication::translate("UpdateNotice", "Open the Download Page"),
                         QMessageBox::AcceptRole);
      QObject::connect(download, &QPushButton::clicked, box,
                       [&desktop, page] { desktop.openUrl(page); });
    }
    box->addButton(QCoreApplication::translate("UpdateNotice", "Later"), QMessageBox::RejectRole);
  } else {
    box->setStandardButtons(QMessageBox::Ok);
  }
  box->show();
  return box;
}

}  // namespace tessane
