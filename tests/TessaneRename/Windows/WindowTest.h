// The fixture of the windows' tests: the offscreen application, a home of the test's own with the
// application's context over it, a desktop that opens nothing and, made on demand, a main window
// over a model of its own; with what a user does to a window and reads from it.
#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include <map>
#include <memory>

#include "EventLoop.h"
#include "TempFolder.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/FakeDesktopServices.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Windows/FileListModel.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/WindowTestApplication.h"

namespace tessane::testing {

// Types `text` into the window's template field in place of what it held.
inline void typeTemplate(MainWindow& window, const QString& text) {
  QLineEdit* field = window.templateField();
  field->setFocus();
  field->selectAll();
  QTest::keyClick(field, Qt::Key_Backspace);
  QTest::keyClicks(field, text);
}

// Whether the model's preview comes to be current for every file.
inline bool settled(FolderModel& model) {
  return waitFor([&] { return model.isSettled(); });
}

// Current name -> what the list shows in `column` (the new name unless told) in `role`.
inline std::map<QString, QString> shownNames(MainWindow& window,
                                             int column = FileListModel::newName,
                                             int role = Qt::DisplayRole) {
  std::map<QString, QString> out;
  const FileListModel& list = window.fileList();
  for (int row = 0; row < list.rowCount(); ++row) {
    out[list.index(row, FileListModel::currentName).data().toString()] =
        list.index(row, column).data(role).toString();
  }
  return out;
}

class WindowTest : public ::testing::Test {
 protected:
  WindowTest() {
    offscreenApplication();
    app_ = contextIn(home_.path());
  }

  // A main window over a model of its own, shown.
  void makeWindow() {
    model_ = std::make_unique<FolderModel>(*app_);
    window_ = std::make_unique<MainWindow>(*model_, *app_, desktop_);
    window_->show();
  }

  template <typename T>
  T* child(const char* name) const {
    return window_->findChild<T*>(name);
  }

  TempFolder home_, photos_;
  FakeDesktopServices desktop_;
  std::unique_ptr<AppContext> app_;
  std::unique_ptr<FolderModel> model_;
  std::unique_ptr<MainWindow> window_;
};

}  // namespace tessane::testing
