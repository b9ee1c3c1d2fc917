// What the window says after an update check: a calm notice that a newer version exists, with its
// notes and a button that opens its download page in the browser (nothing is downloaded here), or
// the manual check's answer: this is the newest version, or what went wrong. The notice does not
// block the window.
#pragma once

class QMessageBox;
class QWidget;

namespace tessane {

class DesktopServices;
struct UpdateCheckResult;

// Shows the notice over `parent` and returns it (it deletes itself when closed).
QMessageBox* showUpdateNotice(QWidget* parent, const UpdateCheckResult& result,
                              DesktopServices& desktop);

}  // namespace tessane
