// The windows' tests run in one QApplication per program, on the offscreen platform, made on
// first use and shared by every test in the program.
#pragma once

#include <QApplication>

#include "TessaneRename/TestApplication.h"

namespace tessane::testing {

inline QApplication& offscreenApplication() {
  if (auto* made = qobject_cast<QApplication*>(QCoreApplication::instance())) return *made;
  static int argc = 1;
  static char name[] = "tessane-window-test";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return *new QApplication(argc, argv);
}

}  // namespace tessane::testing
