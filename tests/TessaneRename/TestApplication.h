// The one Qt application of a test program, made on first use and shared by every test in it:
// a QCoreApplication for the model's tests, or an offscreen QApplication for the windows' tests
// (WindowTestApplication.h). Whichever a program makes first is the one it keeps. And the
// application's context over a settings file and a data folder in a test's own folder.
#pragma once

#include <QCoreApplication>
#include <QSettings>

#include <filesystem>
#include <memory>

#include "TessaneRename/AppContext.h"

namespace tessane::testing {

inline QCoreApplication& coreApplication() {
  if (QCoreApplication* made = QCoreApplication::instance()) return *made;
  static int argc = 1;
  static char name[] = "tessane-test";
  static char* argv[] = {name, nullptr};
  return *new QCoreApplication(argc, argv);
}

// Settings in `home`/t.conf, history and presets under `home`/data.
inline std::unique_ptr<AppContext> contextIn(const std::filesystem::path& home) {
  return std::make_unique<AppContext>(
      std::make_unique<QSettings>(QString::fromStdString((home / "t.conf").string()),
                                  QSettings::IniFormat),
      home / "data");
}

}  // namespace tessane::testing
