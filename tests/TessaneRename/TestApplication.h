// The one Qt application of a test program, made on first use and shared by every test in it:
// a QCoreApplication for the model's tests, or an offscreen QApplication for the windows' tests
// (WindowTestApplication.h). Whichever a program makes first is the one it keeps.
#pragma once

#include <QCoreApplication>

namespace tessane::testing {

inline QCoreApplication& coreApplication() {
  if (QCoreApplication* made = QCoreApplication::instance()) return *made;
  static int argc = 1;
  static char name[] = "tessane-test";
  static char* argv[] = {name, nullptr};
  return *new QCoreApplication(argc, argv);
}

}  // namespace tessane::testing
